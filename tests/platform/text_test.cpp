#include <gtest/gtest.h>

#include "platform/text/hex.h"
#include "platform/text/quotes.h"
#include "platform/text/trim.h"

namespace {

using namespace std::string_view_literals;

TEST(Hex, ReadsDigitsFromTheFirstCharacterToTheLast) {
  EXPECT_EQ(readHex("0"sv), 0u);
  EXPECT_EQ(readHex("1aF"sv), 0x1AFu);
  EXPECT_EQ(readHex(L"FFFFFFFFFFFFFFFF"), UINT64_MAX);
  EXPECT_EQ(readHex("0000000000000000000001"sv), 1u);
  for (const auto text : {""sv, " 1"sv, "1 "sv, "0x1"sv, "-1"sv, "G"sv, "10000000000000000"sv, "1\0"sv}) {
    EXPECT_FALSE(readHex(text)) << text;
  }
  EXPECT_FALSE(readHex(L"\u0661")) << "digits of other scripts are none";
}

TEST(Hex, WritesWhatItReads) {
  for (const uint64_t value : {uint64_t{0}, uint64_t{9}, uint64_t{0x10}, uint64_t{0xABC}, UINT64_MAX}) {
    EXPECT_EQ(readHex(std::string_view(hexText<char>(value))), value);
  }
  EXPECT_EQ(hexText(0xABC), L"ABC");
  EXPECT_EQ(hexText(0), L"0");
  std::string bytes;
  for (const unsigned char each : {0x00, 0x7F, 0xFF}) appendHex(bytes, each);
  EXPECT_EQ(bytes, "007FFF");
}

TEST(Quotes, AreDoubledInside) {
  EXPECT_EQ(inQuotes("it's"sv, '\''), "'it''s'");
  EXPECT_EQ(inQuotes(""sv, '"'), "\"\"");
  EXPECT_EQ(inQuotes(L"\"\""sv, L'"'), L"\"\"\"\"\"\"");
}

TEST(Trim, TakesBlanksOffTheEndsAlone) {
  EXPECT_EQ(trimmed(" \t a b \r\n"sv), "a b");
  EXPECT_EQ(trimmed(L"\u00A0a"sv), L"\u00A0a") << "a space that doesn't break is a letter";
  EXPECT_EQ(trimmed(" \n "sv), "");
  EXPECT_EQ(trimmedRight("  a "sv), "  a");
}

}  // namespace
