#pragma once

#include <string>
#include <vector>

#include "host/filing/dxf_tokens.h"

namespace host {

/// The groups of one object, sorted by their use. Views into the file's bytes.
struct DxfRecord {
  std::string_view name;  // behind code 0
  size_t place = 0;
  AcDbHandle handle = 0, owner = 0;  // 0 where the file has none
  bool paperSpace = false;
  std::vector<DxfGroup> head;   // groups in braces ("{ACAD_REACTORS") before the first subclass
  std::vector<DxfGroup> body;   // fields with their subclass marks
  std::vector<DxfGroup> xdata;  // from the first code above 999 on

  /// Takes the groups up to the next code 0, at which `next` then stands; false at the file's end. The
  /// object's own code 0 is `next` before.
  bool read(DxfTokens& tokens, DxfGroup& next);
  const DxfGroup* find(int code) const;
  /// As a whole number; 0 without one.
  int64_t integer(int code) const;
};

/// Grids of a block have the fields of a single reference under another mark. The name by which the sections
/// of both are known here.
inline std::wstring sectionName(const wchar_t* mark) {
  return std::wstring_view(mark) == L"AcDbMInsertBlock" ? L"AcDbBlockReference" : mark;
}

}  // namespace host
