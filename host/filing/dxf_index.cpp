#include "host/filing/dxf_index.h"

#include <algorithm>

#include "host/filing/handles.h"

namespace host {

void DxfIndex::build(DxfTokens& tokens, FilingReport& report) {
  DxfGroup group;
  bool inSection = false, awaitsName = false, complained = false;
  while (tokens.next(group)) {
    if (group.code == 0) {
      awaitsName = group.raw == "SECTION";
      if (awaitsName && inSection) report.add(group.place, 0, L"the section before has no end");
      if (group.raw == "EOF") return;
      inSection = awaitsName || (inSection && group.raw != "ENDSEC");
    } else if (awaitsName && group.code == 2) {
      sections.push_back({group.raw, tokens.position()});
      awaitsName = false;
    } else if ((group.code == 5 || group.code == 105) && inSection) {
      uint64_t handle = 0;
      if (group.handle(handle) && handle < handleLimit) highestHandle = std::max(highestHandle, handle);
    }
    if (!inSection && !complained && group.raw != "ENDSEC") {
      report.add(group.place, 0, L"groups outside of any section are left out");
      complained = true;
    }
  }
  report.add(0, 0, L"the file has no end mark; it may be cut off");
}

}  // namespace host
