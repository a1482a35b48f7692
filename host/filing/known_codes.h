#pragma once

#include <bitset>
#include <string>
#include <unordered_map>
#include <vector>

#include "brx/db_object.h"
#include "host/database/group_list.h"
#include "host/filing/dxf_in_filer.h"

namespace host {

/// Which groups the classes file by themselves. It is learned from what their objects write, so that
/// no class has to tell it: what an object has read and doesn't write is kept beside it.
class KnownCodes {
 public:
  /// Appends to `kept` the groups of a record that `object`, which has read it, doesn't know: with the
  /// marks of their subclasses; those of a record without marks come first and without one.
  void keepUnknown(const AcDbObject& object, const DxfRecord& record, DxfInFiler& filer, GroupList& kept);

 private:
  using Codes = std::bitset<lastGroupCode + 1>;
  struct Section {
    std::string name;
    Codes codes;
  };
  using Sections = std::vector<Section>;
  class Probe;

  static bool knowsAll(const Sections& known, const DxfRecord& record);
  static bool knows(const Sections& known, std::string_view section, int code);

  std::unordered_map<const AcRxClass*, Sections> classes_;
};

}  // namespace host
