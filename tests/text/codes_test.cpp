#include <gtest/gtest.h>

#include "host/text/codes.h"
#include "host/text/single_line.h"
#include "platform/text/utf.h"

namespace {

using namespace host::text;

Format base() {
  Format format;
  format.font = &fontNamed(L"txt");
  format.height = 2;
  return format;
}

/// Pieces as a text: letters as they are, others between angle brackets.
std::wstring told(const Document& document) {
  std::wstring all;
  for (const Piece& each : document.pieces) {
    const std::wstring both = each.text + L"|" + each.lower;
    all += each.kind == Piece::letters     ? each.text
           : each.kind == Piece::tab       ? L"<tab>"
           : each.kind == Piece::paragraph ? L"<p>"
           : each.kind == Piece::column    ? L"<col>"
           : each.kind == Piece::fraction  ? L"<" + both + L"/>"
           : each.kind == Piece::diagonal  ? L"<" + both + L"#>"
                                           : L"<" + both + L"^>";
  }
  return all;
}

TEST(Codes, GiveLettersBreaksAndStacks) {
  const struct {
    const wchar_t *contents, *pieces;
  } cases[] = {
      {L"a\\Pb\\Nc\\Xd", L"a<p>b<col>c<p>d"},
      {L"\\\\ \\{x\\} a\\~b", L"\\ {x} a\u00A0b"},
      {L"a^Ib^Jc^Md^ e", L"a<tab>b<p>cd^e"},
      {L"45%%d %%c20 %%p1 100%%% %%065 %%z", L"45\u00B0 \u230020 \u00B11 100% A %%z"},
      {L"\\U+00E4\\M+18270\\U+D800\\U+12", L"\u00E4\uFF31\uFFFD\\U+12"},
      {L"\\S1/2;\\S3#4;\\S+0.1^ -0.2;\\Sa\\/b\\;c;", L"<1|2/><3|4#><+0.1|-0.2^>a/b;c"},
      {L"{\\H0.5x;small} big}", L"small big"},
      {L"\\H", L""},
      {L"\\", L"\\"},
      {L"\\S1/2", L"<1|2/>"},
      {L"\\fArial|b1|i0|c0;x\\Ftxt.shx;y\\C1;z\\c255;q\\A1;\\T1.5;\\Q15;\\W0.8;r", L"xyzqr"},
      {L"\\pi-2,l2,t2;x\\pqc;y", L"xy"},
      {L"\\y\\5", L"\\y\\5"},
      {L"%%uon%%u off", L"on off"},
  };
  for (const auto& each : cases)
    EXPECT_EQ(told(readCodes(each.contents, base())), each.pieces) << toUtf8(each.contents);
}

TEST(Codes, SetFormatsUntilTheGroupEnds) {
  const Document document = readCodes(
      L"a{\\H1.5x;\\L\\C1;\\A2;\\fTimes New "
      L"Roman|b1|i1;b\\c16711680;\\H3;c}\\W0.5;\\Q-20;d\\H99999999999999x;e",
      base());
  ASSERT_EQ(document.pieces.size(), 5U);
  const auto format = [&](size_t piece) { return document.formats[document.pieces[piece].format]; };
  EXPECT_EQ(format(1).height, 3);
  EXPECT_TRUE(format(1).underlined && format(1).inLine == InLine::top);
  EXPECT_EQ(format(1).colour, (Colour{Colour::indexed, 1}));
  EXPECT_TRUE(format(1).font->bold() && format(1).font->italic() &&
              format(1).font->name() == L"DejaVu Serif");
  EXPECT_EQ(format(2).colour, (Colour{Colour::exact, 0x0000FF}));
  EXPECT_EQ(format(3).height, 2);
  EXPECT_FALSE(format(3).underlined);
  EXPECT_EQ(format(3).widthFactor, 0.5);
  EXPECT_NEAR(format(3).oblique, -0.349, 1e-3);
  EXPECT_LE(format(4).height, 2e6);
}

TEST(Codes, SetParagraphs) {
  const Document document = readCodes(L"\\pxi-1.5,l2,r1,qr,tc4,8,r12;a\\Pb\\pi0,ql;\\Pc", base());
  const auto settings = [&](size_t piece) { return document.paragraphs[document.pieces[piece].settings]; };
  EXPECT_EQ(settings(0).indent, -1.5);
  EXPECT_EQ(settings(0).left, 2);
  EXPECT_EQ(settings(0).right, 1);
  EXPECT_EQ(settings(0).align, Align::right);
  EXPECT_EQ(settings(0).tabs,
            (std::vector<TabStop>{{4, Align::centre}, {8, Align::left}, {12, Align::right}}));
  EXPECT_EQ(settings(4).align, Align::left);
}

TEST(Lines, SwitchTheirRulesByPercentCodes) {
  const auto parts = partsOf(L"%%ua%%o%%UB%%127%%");
  ASSERT_EQ(parts.size(), 2U);
  EXPECT_TRUE(parts[0].underlined && !parts[0].overlined && parts[0].letters == L"a");
  EXPECT_TRUE(!parts[1].underlined && parts[1].overlined && parts[1].letters == L"B\u007F%%");
}

}  // namespace
