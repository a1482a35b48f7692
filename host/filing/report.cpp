#include "host/filing/report.h"

#include <cstdio>

#include "platform/text/hex.h"

namespace host {

void FilingReport::add(size_t place, AcDbHandle handle, std::wstring text) {
  if (++count_ <= mostKept) messages_.push_back({place, handle, std::move(text)});
}

std::wstring FilingReport::text(const std::wstring& file, size_t most) const {
  std::wstring all;
  for (size_t i = 0; i < messages_.size() && i < most; ++i) {
    const FilingMessage& each = messages_[i];
    all += file;
    if (each.place) all += L", line " + std::to_wstring(each.place);
    if (each.handle) all += L", handle " + hexText(each.handle);
    all += L": " + each.text + L"\n";
  }
  if (count_ > most) all += file + L": " + std::to_wstring(count_ - most) + L" more messages\n";
  return all;
}

}  // namespace host
