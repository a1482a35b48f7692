#include <gtest/gtest.h>

#include <cmath>

#include "host/text/layout.h"

namespace {

using namespace host::text;

LayoutSettings settings(double width = 0, Column column = Column::left, Row row = Row::top) {
  LayoutSettings made;
  made.base.font = &fontNamed(L"txt");
  made.base.height = 2;
  made.width = width, made.column = column, made.row = row;
  return made;
}
double widthOf(std::wstring_view letters) { return measure(letters, settings().base).advance; }

TEST(Fonts, HaveCapitalsOfHeightOneAndTheLettersOfOthers) {
  for (const wchar_t* name : {L"txt", L"simplex.shx", L"Arial", L"Times New Roman", L"courier.ttf", L""}) {
    EXPECT_NEAR(fontNamed(name).glyph(L'H').top, 1, 1e-6) << name;
    EXPECT_EQ(&fontNamed(fontNamed(name).name()), &fontNamed(name));
  }
  EXPECT_GT(fontNamed(L"txt").glyph(L'p').advance, 0.3);
  EXPECT_LT(fontNamed(L"txt").glyph(L'p').bottom, -0.1);
  // Ohm comes from the other font, an unassigned letter is a box.
  EXPECT_FALSE(fontNamed(L"txt").glyph(0x2126).blank());
  EXPECT_NEAR(fontNamed(L"txt").glyph(0x10FFFE).top, 1, 1e-6);
  EXPECT_TRUE(fontNamed(L"txt").glyph(L' ').blank());
}

TEST(Layout, BreaksLinesAtBlanks) {
  const double aa = widthOf(L"aa"), blank = widthOf(L" ");
  const struct {
    const wchar_t* contents;
    double width;
    std::vector<std::wstring> lines;
  } cases[] = {
      {L"aa aa aa", 0, {L"aa aa aa"}},
      {L"aa aa aa", 2 * aa + blank + 1e-6, {L"aa aa", L"aa"}},
      {L"aa aa aa", 2 * aa + blank - 1e-6, {L"aa", L"aa", L"aa"}},
      {L"aa   aa", aa, {L"aa", L"aa"}},
      {L"aaaaaa aa", aa, {L"aaaaaa", L"aa"}},
      {L"aa\\~aa aa", aa, {L"aa\u00A0aa", L"aa"}},
      {L"aa\\P\\Paa", 0, {L"aa", L"aa"}},
      {L"\u4E00\u4E01\u4E02", 1e-3, {L"\u4E00", L"\u4E01", L"\u4E02"}},
  };
  for (const auto& each : cases) {
    const Layout layout = layOut(each.contents, settings(each.width));
    std::vector<std::wstring> lines;
    for (const auto& run : layout.letters) lines.push_back(run.letters);
    EXPECT_EQ(lines, each.lines);
  }
}

TEST(Layout, HasTheMeasuresOfCadHosts) {
  const double line = 2 * 5.0 / 3;
  LayoutSettings wide = settings();
  wide.lineSpacing = 1.5;
  LayoutSettings exact = settings();
  exact.exactSpacing = true;
  const struct {
    const wchar_t* contents;
    LayoutSettings settings;
    double height;
  } cases[] = {
      {L"", settings(), 0},
      {L"A", settings(), 2},
      {L"A\\PB", settings(), 2 + line},
      {L"A\\P\\PB", settings(), 2 + 2 * line},
      {L"A\\P", settings(), 2},
      {L"A\\PB", wide, 2 + 1.5 * line},
      {L"A\\P{\\H2x;B}", settings(), 2 + 2 * line},
      {L"A\\P{\\H2x;B}", exact, 2 + line},
      {L"{\\H2x;B}", settings(), 4},
  };
  for (const auto& each : cases) {
    EXPECT_NEAR(layOut(each.contents, each.settings).height, each.height, 1e-9) << &each - cases;
  }
  const Layout letters = layOut(L"Ag\\PA", settings());
  EXPECT_NEAR(letters.descent, 0, 0.01);
  EXPECT_NEAR(letters.ascent, 2, 0.1);
  EXPECT_GT(layOut(L"\u00C4", settings()).ascent, 2.1);
  EXPECT_GT(layOut(L"A\\Pg", settings()).descent, 0.3);
  EXPECT_NEAR(layOut(L"aa  ", settings()).width, widthOf(L"aa"), 1e-9);
}

TEST(Layout, StandsAboutItsAttachment) {
  const double width = widthOf(L"aa");
  const struct {
    Column column;
    Row row;
    double boxWidth, x, y;
  } cases[] = {
      {Column::left, Row::top, 0, 0, -2},
      {Column::centre, Row::middle, 0, -width / 2, -1},
      {Column::right, Row::bottom, 0, -width, 0},
      {Column::left, Row::top, 20, 0, -2},
      {Column::centre, Row::top, 20, -width / 2, -2},
      {Column::right, Row::top, 20, -width, -2},
  };
  for (const auto& each : cases) {
    const Layout layout = layOut(L"aa", settings(each.boxWidth, each.column, each.row));
    EXPECT_NEAR(layout.letters[0].x, each.x, 1e-9) << &each - cases;
    EXPECT_NEAR(layout.letters[0].y, each.y, 1e-9) << &each - cases;
  }
  // The paragraph's own alignment goes before that of the attachment; indents are heights.
  EXPECT_NEAR(layOut(L"\\pqr;aa", settings(20)).letters[0].x, 20 - width, 1e-9);
  EXPECT_NEAR(layOut(L"\\pi1,l2;aa", settings(20)).letters[0].x, 6, 1e-9);
}

TEST(Layout, PlacesTabsStacksAndRules) {
  const double x = widthOf(L"x");
  EXPECT_NEAR(layOut(L"x^Ix", settings()).letters[1].x, 8, 1e-9);
  EXPECT_NEAR(layOut(L"\\pt3,6;x^Ix^Ix", settings()).letters[2].x, 12, 1e-9);
  EXPECT_NEAR(layOut(L"\\ptr10;x^Ix", settings()).letters[1].x, 20 - x, 1e-9);
  EXPECT_NEAR(layOut(L"\\ptc10;x^Ix", settings()).letters[1].x, 20 - x / 2, 1e-9);
  const Layout fraction = layOut(L"\\A1;\\S1/2;", settings());
  ASSERT_EQ(fraction.letters.size(), 2U);
  ASSERT_EQ(fraction.rules.size(), 1U);
  EXPECT_GT(fraction.letters[0].y, fraction.rules[0].y1);
  EXPECT_LT(fraction.letters[1].y + 2, fraction.rules[0].y1);
  const Layout underlined = layOut(L"a {\\Lb c}", settings());
  double length = 0;
  for (const PlacedRule& each : underlined.rules) length += each.x2 - each.x1;
  EXPECT_NEAR(length, widthOf(L"b c"), 1e-9);
  // A line that fills the width ends at its right side; the last one of a paragraph stays as it is.
  const Layout spread = layOut(L"\\pqj;aa aa aa", settings(2 * widthOf(L"aa") + 2 * widthOf(L" ")));
  EXPECT_NEAR(spread.letters.back().x, 0, 1e-9);
  EXPECT_NEAR(spread.letters[spread.letters.size() - 2].x, widthOf(L"aa") + 2 * widthOf(L" "), 1e-9);
}

TEST(Layout, EndsOnHugeContents) {
  std::wstring many(200000, L'{'), codes;
  for (int i = 0; i < 50000; ++i) codes += L"\\H2x;\\S1/2;^I x";
  EXPECT_EQ(layOut(many, settings(5)).lines, 0U);
  const Layout layout = layOut(codes, settings(5));
  EXPECT_TRUE(std::isfinite(layout.height) && std::isfinite(layout.width));
}

}  // namespace
