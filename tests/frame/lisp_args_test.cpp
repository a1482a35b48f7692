#include "zarbo/frame/lisp_args.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

/// Owns a list for the length of a test.
struct List {
  resbuf* head;
  ArgCursor cursor;
  explicit List(resbuf* list) : head(list), cursor(list) {}
  ~List() { acutRelRb(head); }
  /// How many buffers the cursor has moved on.
  int consumed() const {
    int count = 0;
    for (const resbuf* each = head; each && each != cursor; each = each->rbnext) ++count;
    return count;
  }
};

resbuf* real(double value) { return acutBuildList(RTREAL, value, RTNONE); }
resbuf* shortInt(int value) { return acutBuildList(RTSHORT, value, RTNONE); }
resbuf* longInt(int value) { return acutBuildList(RTLONG, value, RTNONE); }
resbuf* text(const wchar_t* value) { return acutBuildList(RTSTR, value, RTNONE); }
resbuf* mark(int type) { return acutBuildList(type, RTNONE); }

TEST(GetLong, TakesNumbersAndCutsRealsTowardZero) {
  constexpr int32_t most = std::numeric_limits<int32_t>::max();
  struct Case {
    resbuf* list;
    int32_t value;
  };
  for (const Case& each :
       {Case{shortInt(-5), -5}, Case{longInt(70000), 70000}, Case{real(3.9), 3}, Case{real(-3.9), -3},
        Case{real(1e300), most}, Case{real(2147483647.5), most}, Case{real(-1e300), -most - 1},
        Case{real(std::numeric_limits<double>::quiet_NaN()), 0}}) {
    List list(each.list);
    int32_t value = 1;
    EXPECT_TRUE(getLong(list.cursor, value));
    EXPECT_EQ(value, each.value);
    EXPECT_EQ(list.consumed(), 1);
  }
  List huge(real(9.3e18));
  int64_t value = 0;
  EXPECT_TRUE(getLong64(huge.cursor, value));
  EXPECT_EQ(value, std::numeric_limits<int64_t>::max());
}

TEST(GetLong, GroupCodesSucceedAndStay) {
  List list(acutBuildList(70, 4, RTNONE));
  int32_t value = 0;
  double number = 0;
  EXPECT_TRUE(getLong(list.cursor, value));
  EXPECT_EQ(value, 70);
  EXPECT_TRUE(getNumber(list.cursor, number));
  EXPECT_EQ(number, 70);
  EXPECT_EQ(list.consumed(), 0);
  for (resbuf* other : {text(L"5"), acutBuildList(1070, 5, RTNONE), mark(RTNIL), mark(RTLB)}) {
    List refused(other);
    EXPECT_FALSE(getLong(refused.cursor, value));
    EXPECT_EQ(refused.consumed(), 0);
  }
}

TEST(GetFlag, ReadsPresenceAndStaysAtTheListsEnd) {
  struct Case {
    resbuf* list;
    bool success, flag;
    int consumed;
  };
  for (const Case& each : {Case{mark(RTNIL), true, false, 1}, Case{mark(RTT), true, true, 1},
                           Case{shortInt(0), true, true, 1}, Case{text(L""), true, true, 1},
                           Case{mark(RTLE), true, false, 0}, Case{mark(RTLB), false, false, 0}}) {
    List list(each.list);
    bool flag = !each.flag;
    EXPECT_EQ(getFlag(list.cursor, flag), each.success);
    if (each.success) {
      EXPECT_EQ(flag, each.flag);
    }
    EXPECT_EQ(list.consumed(), each.consumed);
  }
  List yes(mark(RTT));
  int16_t flag = 0;
  EXPECT_TRUE(getVariantFlag(yes.cursor, flag));
  EXPECT_EQ(static_cast<uint16_t>(flag), 65535);
}

TEST(GetPoint, TakesPointsGroupsAndNumbersInARow) {
  const ads_point point = {1, 2, 3};
  struct Case {
    resbuf* list;
    double z;
    int consumed3, consumed2;  // 0: refused
  };
  for (const Case& each : {
           Case{acutBuildList(RT3DPOINT, point, RTNONE), 3, 1, 1},
           Case{acutBuildList(RTPOINT, point, RTNONE), 0, 1, 1},
           Case{acutBuildList(17, point, RTNONE), 3, 1, 1},
           Case{acutBuildList(210, point, RTNONE), 0, 0, 0},
           Case{acutBuildList(RTREAL, 1., RTREAL, 2., RTREAL, 3., RTREAL, 4., RTNONE), 3, 3, 2},
           Case{acutBuildList(RTREAL, 1., RTREAL, 2., RTSTR, L"x", RTNONE), 0, 2, 2},
           Case{acutBuildList(RTSHORT, 1, RTLONG, 2, RTREAL, 3., RTNONE), 3, 3, 0},
           Case{acutBuildList(RTREAL, 1., RTNONE), 0, 0, 0},
           Case{acutBuildList(RTREAL, 1., 70, 2, RTNONE), 0, 0, 0},
       }) {
    List list(each.list);
    double xyz[3] = {0, 0, 9}, xy[2] = {0, 0};
    EXPECT_EQ(getPoint3d(list.cursor, xyz), each.consumed3 > 0);
    EXPECT_EQ(list.consumed(), each.consumed3);
    if (each.consumed3) {
      EXPECT_EQ(xyz[0], 1);
      EXPECT_EQ(xyz[1], 2);
      EXPECT_EQ(xyz[2], each.z);
    }
    list.cursor = list.head;
    EXPECT_EQ(getPoint2d(list.cursor, xy), each.consumed2 > 0);
    EXPECT_EQ(list.consumed(), each.consumed2);
  }
}

TEST(GetNamedPair, RefusesATrueDottedPairAndGoesBack) {
  std::wstring name = L"kept";
  int32_t value = 0;
  List dotted(acutBuildList(RTLB, RTSTR, L"a", RTDOTE, RTLONG, 1, RTLE, RTNONE));
  EXPECT_TRUE(isNamedPair(dotted.cursor));
  EXPECT_FALSE(getNamedPair(dotted.cursor, name, value));
  EXPECT_EQ(dotted.consumed(), 0);
  EXPECT_EQ(name, L"kept");
  List plain(acutBuildList(RTLB, RTSTR, L"a", RTLONG, 1, RTLE, RTNONE));
  EXPECT_FALSE(isNamedPair(plain.cursor));
  EXPECT_FALSE(getNamedPair(plain.cursor, name, value));
}

TEST(Getters, RefuseTheEmptyCursorAndOtherTypes) {
  ArgCursor none = nullptr;
  std::wstring words;
  std::unique_ptr<char[]> bytes;
  int32_t number;
  int64_t wide;
  double value, xyz[3], xy[2];
  bool flag;
  int16_t variantFlag;
  ads_name name;
  EXPECT_FALSE(getString(none, words) || getStringToChars(none, bytes) || getLong(none, number) ||
               getLong64(none, wide) || getReal(none, value) || getNumber(none, value) ||
               getEntityName(none, name) || getPickSet(none, name) || getFlag(none, flag) ||
               getVariantFlag(none, variantFlag) || getPoint3d(none, xyz) || getPoint2d(none, xy) ||
               getNamedPair(none, words, number) || skipListBegin(none) || skipListEnd(none) ||
               skipItem(none) || isNamedPair(none));
  const ads_name set = {7, 0};
  List picks(acutBuildList(RTPICKS, set, RTNONE));
  EXPECT_FALSE(getEntityName(picks.cursor, name));
  EXPECT_TRUE(getPickSet(picks.cursor, name));
  EXPECT_EQ(name[0], 7);
  List whole(shortInt(1));
  EXPECT_FALSE(getReal(whole.cursor, value));
  List word(text(L"\x141z"));
  EXPECT_TRUE(getStringToChars(word.cursor, bytes));
  EXPECT_STREQ(bytes.get(), "Az");
}

}  // namespace
