#pragma once

#include <glib.h>
#include <mdbtools.h>

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/mdb/jet_bytes.h"

namespace mdb {

/// An entry of the file's catalog.
struct JetObject {
  std::string name;
  int kind = 0;  ///< `MDB_TABLE`, `MDB_QUERY` and so on
  bool system = false;
  MdbCatalogEntry* entry = nullptr;  ///< owned by the file
};

/// A Jet database (versions 3 and 4, and ACE without encryption), opened for reading through libmdb.
/// libmdb may crash on a damaged file, so this is used in a process that may go (see `runGuarded`).
/// Everything throws `JetError`.
class JetFile {
 public:
  explicit JetFile(const std::string& path);
  /// Reads from memory; nothing is copied.
  explicit JetFile(std::span<uint8_t> content);

  MdbHandle* handle() const { return handle_.get(); }
  bool isJet3() const { return handle_->f->jet_version == MDB_VER_JET3; }
  const char* versionName() const;
  const std::vector<JetObject>& objects() const { return objects_; }
  const JetObject* findTable(std::string_view name) const;

  ByteView page(uint32_t number);  ///< valid until the next page is read
  /// Text of the file's own encoding as UTF-8.
  std::string text(ByteView bytes) const;
  /// A memo or long binary value: `head` is what its row holds of it. `what` names it in an error.
  std::string longValue(ByteView head);

 private:
  struct Close {
    void operator()(MdbHandle* handle) const { mdb_close(handle); }
  };
  void readCatalog();
  ByteView rowAt(uint32_t pageAndRow);

  std::unique_ptr<MdbHandle, Close> handle_;
  std::vector<JetObject> objects_;
  std::string path_;
};

}  // namespace mdb
