#include <gtest/gtest.h>

#include <cmath>

#include "host/filing/dxf_in_filer.h"
#include "host/filing/dxf_out_filer.h"
#include "host/filing/dxf_sink.h"
#include "host/filing/dxf_text.h"

namespace {

using host::DxfGroup;
using host::DxfTextDecoder;

TEST(DxfText, MarksAreResolvedAndMadeAgain) {
  struct Row {
    const char* inFile;
    const wchar_t* text;
  };
  const Row rows[] = {
      {"plain", L"plain"},
      {"a^Jb^Ic", L"a\nb\tc"},
      {"\\S1^ 2;", L"\\S1^2;"},
      {"^ J", L"^J"},
      {"x^ ", L"x^"},
      {"x^", L"x^"},
      {"^a", L"^a"},
      {"L\xC3\xBC"
       "ftung \xF0\x9F\x98\x80",
       L"Lüftung 😀"},
      {"%%c 12^ ^ ", L"%%c 12^^"},
  };
  DxfTextDecoder decoder;
  for (const Row& row : rows) {
    EXPECT_EQ(decoder.decode(row.inFile), row.text);
    std::string bytes;
    host::encodeDxfText(row.text, bytes);
    EXPECT_EQ(decoder.decode(bytes), row.text) << row.inFile;
  }
}

TEST(DxfText, UnicodeMarksAndCodePages) {
  struct Row {
    const char* page;
    const char* inFile;
    const wchar_t* text;
  };
  const Row rows[] = {
      {"ANSI_1252", "\xD8 12\xBD", L"Ø 12½"},    {"dos850", "\x9D 12\xAB", L"Ø 12½"},
      {"ANSI_1251", "\xCF\xE2", L"Пв"},          {"ANSI_932", "\x83\x5C", L"ソ"},
      {"ANSI_1252", "\\U+00D8\\U+4E2D", L"Ø中"}, {"ANSI_1252", "\\U+D83D\\U+DE00", L"😀"},
      {"ANSI_1252", "\\U+D83D!", L"\\U+D83D!"},  {"ANSI_1252", "\\U+00G1\\U+1", L"\\U+00G1\\U+1"},
      {"ansi_936", "\xD6\xD0\xFF", L"中\xFFFD"},
  };
  for (const Row& row : rows) {
    DxfTextDecoder decoder;
    EXPECT_TRUE(decoder.useCodePage(row.page)) << row.page;
    EXPECT_EQ(decoder.decode(row.inFile), row.text) << row.inFile;
  }
  DxfTextDecoder decoder;
  EXPECT_FALSE(decoder.useCodePage("klingon"));
  EXPECT_EQ(decoder.decode("\xD8"), L"Ø");
  decoder.useUtf8();
  EXPECT_EQ(decoder.decode("\xC3\x98"), L"Ø");
  EXPECT_EQ(decoder.decode("\xD8"), L"Ø") << "bytes that aren't UTF-8 are read in the code page";
}

TEST(DxfText, NumbersAreWrittenShortAndExact) {
  host::DxfSink sink;
  for (const double value : {0.1, 1.0, -2.5e-9, 1e20, 0.1 + 0.2, std::nan(""), 1.0 / 3}) sink.real(40, value);
  EXPECT_EQ(sink.bytes(),
            " 40\n0.1\n 40\n1.0\n 40\n-2.5e-09\n 40\n1e+20\n 40\n0.30000000000000004\n 40\n0.0\n 40\n"
            "0.3333333333333333\n");
}

TEST(DxfText, AnglesComeBackAsTheyWere) {
  for (const double degrees : {0.0, 45.0, 30.1, 359.9999999, 57.29577951308232, 0.000001, -12.345678901234}) {
    EXPECT_EQ(host::degreesOf(degrees * host::radiansOfDegree), degrees);
  }
}

TEST(DxfTokens, NumbersOfAllForms) {
  double real = 0;
  int64_t whole = 0;
  uint64_t handle = 0;
  const auto group = [](std::string_view text) { return DxfGroup{0, false, text, 1}; };
  EXPECT_TRUE(group("  +1.5E3 ").real(real) && real == 1500);
  EXPECT_TRUE(group("  64.0").integer(whole) && whole == 64);
  EXPECT_TRUE(group("\t1aF ").handle(handle) && handle == 0x1AF);
  for (const char* const wrong : {"", "nan", "inf", "1e999", "1,5", "--1", "0x10"}) {
    EXPECT_FALSE(group(wrong).real(real)) << wrong;
    EXPECT_EQ(real, 0);
  }
  EXPECT_FALSE(group("1.5").integer(whole));
  EXPECT_FALSE(group("11111111111111111").handle(handle));
}

TEST(DxfTokens, DamageIsPassedOver) {
  host::FilingReport report;
  host::DxfTokens tokens("  0\r\nLINE\r\n999\r\nnote\r\nrubbish\r\n 8\r\n  0\r\nCIRCLE\r\n  5", report);
  DxfGroup group;
  EXPECT_TRUE(tokens.next(group) && group.is(0, "LINE"));
  EXPECT_TRUE(tokens.next(group) && group.is(0, "CIRCLE"));
  EXPECT_EQ(group.place, 8u);
  EXPECT_FALSE(tokens.next(group));
  ASSERT_EQ(report.count(), 2u);
  EXPECT_EQ(report.messages()[0].place, 5u);
}

}  // namespace
