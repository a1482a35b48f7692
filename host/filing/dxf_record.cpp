#include "host/filing/dxf_record.h"

#include <algorithm>

namespace host {

bool DxfRecord::read(DxfTokens& tokens, DxfGroup& next) {
  name = next.raw;
  place = next.place;
  handle = owner = 0;
  paperSpace = false;
  head.clear(), body.clear(), xdata.clear();
  // Old dimension styles have a field under the code of handles.
  const int handleCode = name == "DIMSTYLE" ? 105 : 5;
  bool marked = false, inEntity = false, inBraces = false, hasOwner = false;
  while (tokens.next(next)) {
    if (next.code == 0) return true;
    if (next.code >= 1000 || !xdata.empty()) {
      xdata.push_back(next);
    } else if (inBraces) {
      head.push_back(next);
      inBraces = !next.is(102, "}");
    } else if (next.code == 67 && (inEntity || !marked)) {
      int64_t flag = 0;
      paperSpace = next.integer(flag) && flag == 1;
    } else if (marked || next.code == 100) {
      marked = true;
      if (next.code == 100) inEntity = next.raw == "AcDbEntity";
      if (next.is(100, "AcDbMInsertBlock")) next.raw = "AcDbBlockReference";
      body.push_back(next);
    } else if (next.code == handleCode && !handle) {
      next.handle(handle);
    } else if (next.code == 102 && next.raw.starts_with('{')) {
      inBraces = true;
      head.push_back(next);
    } else if (next.code == 330 && !hasOwner) {
      hasOwner = next.handle(owner);
    } else {
      body.push_back(next);
    }
  }
  return false;
}

const DxfGroup* DxfRecord::find(int code) const {
  const auto found =
      std::find_if(body.begin(), body.end(), [&](const DxfGroup& each) { return each.code == code; });
  return found == body.end() ? nullptr : &*found;
}

int64_t DxfRecord::integer(int code) const {
  int64_t value = 0;
  if (const DxfGroup* const group = find(code)) group->integer(value);
  return value;
}

}  // namespace host
