#include <gtest/gtest.h>

#include "zarbo/standards/user_units.h"

namespace {

TEST(UserUnits, LineweightsInBothDirections) {
  const struct {
    std::optional<std::wstring> stored;
    const wchar_t* shown;
  } out[] = {{L"25", L"0.25 mm"}, {L"50", L"0.5 mm"}, {L"100", L"1 mm"}, {L"", L"Default"}, {{}, L"Default"}};
  for (const auto& each : out) EXPECT_EQ(lineweightText(each.stored), each.shown);

  const struct {
    const wchar_t* typed;
    std::optional<std::wstring> stored;
  } in[] = {{L"0.25 mm", L"25"}, {L"Default", {}}, {L"", {}}, {L"0.359", L"35"}, {L"thick", L"0"}};
  for (const auto& each : in) EXPECT_EQ(lineweightFromText(each.typed), each.stored);
}

TEST(UserUnits, AnglesScalesAndOverhangs) {
  EXPECT_EQ(hatchAngleText(0.7853981625), L"45");
  EXPECT_EQ(hatchAngleText(0.3), L"17.19");
  EXPECT_DOUBLE_EQ(hatchAngleFromText(L"45 degrees"), 45 * 3.14159265 / 180.0);
  EXPECT_EQ(hatchScaleText(1.5), L"1.5");
  EXPECT_EQ(hatchScaleText(2.0), L"2");
  EXPECT_DOUBLE_EQ(hatchScaleFromText(L"12.25"), 12.25);
  EXPECT_EQ(overhangText(0.03125), L"0.0313");
  EXPECT_DOUBLE_EQ(overhangFromText(L"x"), 0.0);
}

}  // namespace
