#pragma once

#include "brx/db_filers.h"

namespace host {

/// Groups of a drawing file kept as they came: a list of result buffers with its texts and bytes.
/// Objects that handles name stand as stubs in `rlname[0]`, so that they follow copies.
class GroupList {
 public:
  GroupList() = default;
  GroupList(const GroupList& other);
  GroupList(GroupList&& other) noexcept : head_(other.head_), end_(other.end_) {
    other.head_ = other.end_ = nullptr;
  }
  GroupList& operator=(GroupList other) noexcept;
  ~GroupList();

  /// Copies one buffer, not what follows it.
  void append(const resbuf& item);
  void append(int code, const ACHAR* text);
  void clear() { *this = GroupList(); }
  bool empty() const { return !head_; }
  const resbuf* head() const { return head_; }
  /// Values may be changed in place, texts and bytes among them not.
  resbuf* head() { return head_; }
  /// First buffer of the code; null without one.
  const resbuf* find(int code) const;
  /// A list of its own for a caller that frees it.
  resbuf* copy() const;
  /// Gives the list away.
  resbuf* release();

  void dwgOut(AcDbDwgFiler& filer) const;
  void dwgIn(AcDbDwgFiler& filer);
  void dxfOut(AcDbDxfFiler& filer) const;

 private:
  resbuf* head_ = nullptr;
  resbuf* end_ = nullptr;
};

/// Extended data of one object above this is refused, as the file format has 16 bits for it.
constexpr size_t mostXdata = 16383;
/// Bytes that extended data take in files.
size_t xdataSize(const resbuf* data);

/// One buffer with text and bytes of its own.
resbuf* copyGroup(const resbuf& item);

}  // namespace host
