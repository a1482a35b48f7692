#include <gtest/gtest.h>

#include <limits>

#include "platform/text/digits.h"
#include "zarbo/support/byte_list.h"
#include "zarbo/support/feet_inches.h"
#include "zarbo/support/identifiers.h"
#include "zarbo/support/number_text.h"
#include "zarbo/support/paths.h"
#include "zarbo/support/utilities.h"

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();

TEST(Digits, RoundTheExactBinaryValue) {
  struct Case {
    double value;
    int places;
    const char* digits;
    int point;
  };
  const Case cases[] = {{0.125, 2, "13", 0},   {2.5, 0, "3", 1},
                        {2.675, 2, "267", 1},  {-0.125, 2, "13", 0},
                        {0.0, 2, "00", 0},     {0.0, 0, "", 0},
                        {0.004, 2, "", -2},    {0.0004, 2, "", -3},
                        {0.005, 2, "1", -1},   {9.999, 2, "1000", 2},
                        {0.5, 0, "1", 1},      {0.04, 0, "", -1},
                        {5e-324, 10, "", -11}, {1e22, 0, "10000000000000000000000", 23}};
  for (const Case& each : cases) {
    const FixedDigits got = fixedDigits(each.value, each.places);
    EXPECT_EQ(got.digits, each.digits) << each.value;
    EXPECT_EQ(got.point, each.point) << each.value;
    EXPECT_EQ(got.negative, each.value < 0);
  }
  EXPECT_FALSE(fixedDigits(-0.0, 2).negative);
}

TEST(Digits, ReadNumbersAtTheStartOfATextOnly) {
  const std::pair<const wchar_t*, double> cases[] = {
      {L"12abc", 12},
      {L"", 0},
      {L"1d3", 1000},
      {L" \t-1.5E-1x", -0.15},
      {L".5", 0.5},
      {L"5.", 5},
      {L"0x10", 0},
      {L"inf", 0},
      {L"nan", 0},
      {L"1e", 1},
      {L"1e+", 1},
      {L".", 0},
      {L"- 5", 0},
      {L"--5", 0},
      {L"+7", 7},
      {L"1e400", infinite},
      {L"-1e400", -infinite},
      {L"1e-400", 0},
      {L"0e999", 0},
      {L"1e99999999999999999999", infinite},
      {L"1.7976931348623157e308", 1.7976931348623157e308},
  };
  for (const auto& [text, value] : cases) EXPECT_EQ(readReal(text), value) << text;
}

TEST(Digits, ReadIntegersAtTheStartOfATextOnly) {
  const std::pair<const wchar_t*, int32_t> cases[] = {{L" 25 mm", 25},
                                                      {L"-7.9", -7},
                                                      {L"", 0},
                                                      {L"x5", 0},
                                                      {L"99999999999", INT32_MAX},
                                                      {L"-99999999999", INT32_MIN}};
  for (const auto& [text, value] : cases) EXPECT_EQ(readInteger(text), value) << text;
  EXPECT_EQ(truncated(-infinite), INT32_MIN);
  EXPECT_EQ(truncated(std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(NumberText, WritesTheStatedForms) {
  EXPECT_EQ(realToText(0.0004, 2, true), L"0.00");
  EXPECT_EQ(realToText(-0.0004, 0, true), L"0");
  EXPECT_EQ(realToText(1.50, 2, true), L"1.5");
  EXPECT_EQ(realToText(2.0, 2, true), L"2");
  EXPECT_EQ(realToText(2.0, 2, false), L"2.00");
  EXPECT_EQ(realToText(0.0, 3, false), L"0.000");
  EXPECT_EQ(realToText(-0.0, 3, true), L"0");
  EXPECT_EQ(realToText(-0.05, 1, false), L"-0.1");
  EXPECT_EQ(realToText(0.1, 20, false), L"0.1000000000");
  EXPECT_EQ(realToText(-infinite, 2, true), L"-inf");
  EXPECT_EQ(realToText(std::numeric_limits<double>::quiet_NaN(), 2, true), L"nan");
  EXPECT_EQ(realToText(1e300, 2, true).size(), 301u);
  EXPECT_EQ(groupThousands(L"-123"), L"-123");
  EXPECT_EQ(groupThousands(L"1234567.5"), L"1,234,567.5");
  EXPECT_EQ(groupThousands(L"-123456"), L"-123,456");
  EXPECT_EQ(groupThousands(L""), L"");
  EXPECT_EQ(realToGroupedText(-1234.5, 2), L"-1,234.5");
  EXPECT_EQ(roundedNumberText(999.4), L"999");
  EXPECT_EQ(roundedNumberText(1000.0), L"1,000");
  EXPECT_EQ(roundedNumberText(123456.0), L"123,000");
}

TEST(FeetInches, RoundTrip) {
  EXPECT_EQ(feetInchesText(66.5), L"5-6.5");
  EXPECT_EQ(feetInchesText(-13.0), L"-1-1");
  EXPECT_EQ(feetInchesText(0), L"0-0");
  EXPECT_EQ(parseFeetInches(L"-1-1"), -13.0);
  EXPECT_EQ(parseFeetInches(L"5-6.5"), 66.5);
  EXPECT_EQ(parseFeetInches(L"2"), 24.0);
  EXPECT_EQ(parseFeetInches(L"1e-1-3"), 0.1 * 12.0 + 1.0) << "the feet are read from the whole text";
}

TEST(Paths, SplitAtTheLastBackslashBeforeASlashCounts) {
  EXPECT_EQ(folderOfPath(L"C:\\a/b\\c/d"), L"C:\\a/b");
  EXPECT_EQ(fileOfPath(L"C:\\a/b\\c/d"), L"c/d");
  EXPECT_EQ(folderOfPath(L"/a/b"), L"/a");
  EXPECT_EQ(fileOfPath(L"name"), L"");
}

TEST(GroupCodes, KeepTheOrderOfTheRanges) {
  const std::pair<int, int> cases[] = {{0, 5005},    {17, 5009},   {18, 5000},   {39, 5001},   {70, 5003},
                                       {90, 5010},   {102, 5005},  {103, 5000},  {330, 5006},  {999, 5005},
                                       {1004, 1004}, {1005, 5005}, {1040, 5001}, {1071, 5010}, {-1, -1},
                                       {5003, 5003}, {1014, 5000}};
  for (const auto& [code, type] : cases) EXPECT_EQ(resultTypeOfGroupCode(code), type) << code;
}

TEST(Identifiers, GoThereAndBack) {
  const GUID guid = {0x12345678, 0x9ABC, 0xDEF0, {0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0xFF}};
  wchar_t text[40], other[40];
  GUID back{};
  ASSERT_EQ(guidToString64(guid, text, 23), 22);
  EXPECT_STREQ(text, L"0ID5PuchpUy14YCqHLPdV$");
  ASSERT_TRUE(string64ToGuid(text, back));
  EXPECT_EQ(back, guid);
  ASSERT_EQ(string64ToString85(text, other, 21), 20);
  back = {};
  ASSERT_TRUE(string85ToGuid(other, back));
  EXPECT_EQ(back, guid);
  EXPECT_EQ(string85ToString64(other, text, 22), 0) << "no room";
  ASSERT_EQ(string85ToString64(other, text, 23), 22);
  EXPECT_EQ(string64ToBraceString(text, other, 39), 38);
  EXPECT_STREQ(other, L"{12345678-9ABC-DEF0-1122-3344556677FF}");
  EXPECT_FALSE(string64ToGuid(std::wstring(21, L'0'), back));
  EXPECT_FALSE(string64ToGuid(std::wstring(23, L'0'), back));
  EXPECT_FALSE(string64ToGuid(L"4000000000000000000000", back)) << "beyond 255";
  EXPECT_FALSE(string64ToGuid(L"000000000000000000000-", back));
  EXPECT_FALSE(string85ToGuid(L"_____000000000000000", back)) << "beyond 32 bits";
  EXPECT_EQ(createGuidString64(text, 22), 0);
  ASSERT_EQ(createGuidString64(text, 23), 22);
  ASSERT_TRUE(string64ToGuid(text, back));
}

TEST(ByteLists, TakeWhatTheCountAllows) {
  using Bytes = std::vector<uint8_t>;
  EXPECT_EQ(byteListText({1, 2, 255}), L"3,1,2,255");
  EXPECT_EQ(byteListText({}), L"0");
  const std::pair<const wchar_t*, Bytes> cases[] = {
      {L"3,1,2,255", {1, 2, 255}},
      {L"2,1,2,3,4", {1, 2}},
      {L"9,1,2", {1, 2}},
      {L"", {}},
      {L"0,5", {}},
      {L"x,1", {}},
      {L"2,a,7", {0, 7}},
      {L"4294967295,1", {1}},
      {L"1,257", {1}},
      {L"-1,1", {}},
  };
  for (const auto& [text, bytes] : cases) EXPECT_EQ(bytesOfListText(text), bytes) << text;
  EXPECT_EQ(bytesOfText(L"a\u00ff\u0100\u0101"), (Bytes{'a', 255, 255, 255}));
  EXPECT_EQ(bytesOfText(L"\uffff\U00010000z"), (Bytes{255, 255, 255, 'z'}));
}

}  // namespace
