// Settings files with anything in them: a change stores its value and loses none of the other lines.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include "platform/settings/settings_text.h"

namespace {

void check(bool holds) {
  if (!holds) std::abort();
}

size_t linesOf(const std::string& text) {
  return static_cast<size_t>(std::count(text.begin(), text.end(), '\n'));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using platform::SettingsText;
  SettingsText settings({reinterpret_cast<const char*>(data), size});
  const std::string before = settings.toText();
  check(SettingsText(before).toText() == before);
  const auto other = settings.value(L"S", L"other");
  settings.addSection(L"S\\T");
  check(settings.hasSection(L"s") && settings.hasSection(L"S\\t"));
  const std::wstring value(data, data + size);
  settings.setValue(L"S\\T", L"na\"me\n", value);
  const SettingsText again(settings.toText());
  check(again.value(L"s\\t", L"NA\"ME\n") == settings.value(L"S\\T", L"na\"me\n"));
  check(again.value(L"S\\T", L"na\"me\n") == value);
  check(again.value(L"S", L"other") == other);
  check(linesOf(settings.toText()) >= linesOf(before));
  again.subsections(L"");
  return 0;
}
