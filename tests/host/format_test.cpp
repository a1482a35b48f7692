#include "host/calls/format.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

template <class... Values>
std::wstring formatted(const wchar_t* format, const Values&... values) {
  const AcutPrintValue list[] = {AcutPrintValue(values)..., AcutPrintValue(0)};
  return host::formatValues(format, list, sizeof...(Values));
}

TEST(Format, PrintsValuesAsTheCLibraryDoes) {
  EXPECT_EQ(formatted(L"(%ld) %s", 3021, L"No record"), L"(3021) No record");
  EXPECT_EQ(formatted(L"%5d|%-5d|%05d|%+d", 42, 42, 42, 42), L"   42|42   |00042|+42");
  EXPECT_EQ(formatted(L"%.2f %g %8.3lf", 1.005, 0.5, 2.0), L"1.00 0.5    2.000");
  EXPECT_EQ(formatted(L"%x %X %u", -1, 255u, uint16_t{65535}), L"ffffffff FF 65535");
  EXPECT_EQ(formatted(L"%lld", std::numeric_limits<int64_t>::min()), L"-9223372036854775808");
  EXPECT_EQ(formatted(L"[%6s|%-6s|%.2s]", L"abc", L"abc", L"abc"), L"[   abc|abc   |ab]");
  EXPECT_EQ(formatted(L"%*d %-*d.", 4, 1, 4, 2), L"   1 2   .");
  EXPECT_EQ(formatted(L"%c%c %s", L'\u00e9', 65, "\xc3\xa9"), L"\u00e9A \u00e9");
  EXPECT_EQ(formatted(L"100%% of %d", 7), L"100% of 7");
}

TEST(Format, MarksWithoutAFittingValuePrintNothing) {
  EXPECT_EQ(formatted(L"a%sb%dc%n"), L"abc");
  EXPECT_EQ(formatted(L"%s|%d|%f", 1, L"x", 2), L"||");
  EXPECT_EQ(formatted(L"%s|%s", static_cast<const wchar_t*>(nullptr), L"x"), L"|x");
  EXPECT_EQ(formatted(L"%k%d", 1, 2), L"2") << "an unknown mark takes its value along";
  EXPECT_EQ(formatted(L"50%"), L"50");
  EXPECT_EQ(formatted(L"%9999999999d", 1).size(), 1000u);
  EXPECT_EQ(host::formatValues(nullptr, nullptr, 0), L"");
}

}  // namespace
