#include "tests/database/fake_engines.h"
#include "zarbo/database/bodies.h"
#include "zarbo/frame/variant_values.h"

namespace {

class Bodies : public FakeEngines {
 protected:
  void SetUp() override {
    FakeEngines::SetUp();
    connect(L"/proc/self/maps");
    engines[0].log.clear();
  }
  std::wstring call(int (*body)(), resbuf* arguments) {
    return served(arguments, [&] { code = body(); });
  }
  static std::vector<COleVariant> row(LONG index) {
    return {COleVariant(L"ix"), COleVariant(index), COleVariant(L"s_note"), COleVariant(L" x ")};
  }
};

TEST_F(Bodies, SeekChoosesTheCallByTheFormOfItsKeys) {
  const ads_point point = {1, 2, 3};
  struct Case {
    resbuf* arguments;
    int code;
    const wchar_t* log;  // variant types: 0 empty, 3 integer, 5 real, 8 text
  };
  for (const Case& each : {
           Case{nullptr, 1, L""},
           Case{acutBuildList(RTNIL, RTNONE), 0, L""},
           Case{acutBuildList(RTSHORT, 5, RTNONE), 0, L"Seek1 3 "},
           Case{acutBuildList(RTSTR, L"A", RTNONE), 0, L"Seek1 8 "},
           Case{acutBuildList(RTPOINT, point, RTNONE), 0, L"Seek2 5 5 "},
           Case{acutBuildList(RT3DPOINT, point, RTNONE), 0, L"Seek3 5 5 5 "},
           Case{acutBuildList(RTSTR, L"A", RTNIL, RTNONE), 0, L"SeekN 2: 8 0 0 0 0 0 0 0 0 0 "},
           Case{acutBuildList(RTLB, RTSTR, L"A", RTSTR, L"B", RTLE, RTNONE), 0,
                L"SeekN 2: 8 8 0 0 0 0 0 0 0 0 "},
           Case{acutBuildList(RTSHORT, 1, RTSHORT, 2, RTSHORT, 3, RTSHORT, 4, RTSHORT, 5, RTSHORT, 6, RTSHORT,
                              7, RTSHORT, 8, RTSHORT, 9, RTSHORT, 10, RTSHORT, 11, RTSHORT, 12, RTNONE),
                0, L"SeekN 10: 3 3 3 3 3 3 3 3 3 3 "},
           Case{acutBuildList(RTENAME, point, RTNONE), 2, L""},
           Case{acutBuildList(RTSTR, L"A", RTLB, RTLE, RTNONE), 2, L""},
       }) {
    engines[0].log.clear();
    EXPECT_EQ(call(zbSeek, each.arguments), L"nil ");
    EXPECT_EQ(code, each.code);
    EXPECT_EQ(engines[0].log, each.log);
  }
}

TEST_F(Bodies, AppendWithIndexBurnsNumbersUpToTheWantedOne) {
  const auto append = [&](int wanted) {
    return call(zbAppendWithindex, acutBuildList(RTSHORT, wanted, RTSTR, L"a", RTSHORT, 1, RTNONE));
  };
  engines[0].records = {row(4), row(5)};
  EXPECT_EQ(append(5), L"( ( ix . 5 ) ( s_note .  x  ) ) ");
  EXPECT_EQ(engines[0].log, L"Append ");
  engines[0].log.clear();
  engines[0].records = {row(4), row(5), row(6), row(7)};
  EXPECT_EQ(append(7), L"( ( ix . 7 ) ( s_note .  x  ) ) ");
  EXPECT_EQ(engines[0].log, L"Append DeleteRecord Append DeleteRecord Append ");
  engines[0].log.clear();
  engines[0].records = {row(4), row(6)};
  EXPECT_EQ(append(5), L"error - unable to match index ");
  EXPECT_EQ(engines[0].log, L"Append DeleteRecord ");
  engines[0].log.clear();
  engines[0].records = {row(4)};
  EXPECT_EQ(append(3), L"error - unable to match index ");
  EXPECT_EQ(engines[0].log, L"");
  EXPECT_EQ(call(zbAppendWithindex, acutBuildList(RTSTR, L"a", RTSHORT, 1, RTNONE)), L"nil ");
  EXPECT_EQ(code, 2);
}

/// The array as text: the type and, for texts, the value of each element.
std::wstring fieldsOf(resbuf* list) {
  ArgCursor cursor = list;
  COleVariant fields;
  std::wstring text = fieldListToArray(cursor, fields) ? L"" : L"failed";
  for (const VARIANT& each : VariantElements(fields)) {
    text += std::to_wstring(each.vt) + (each.vt == VT_BSTR ? std::wstring(viewOf(each.bstrVal)) : L"") + L" ";
  }
  acutRelRb(list);
  return text;
}

TEST(FieldList, PairsAndFlatListsAreTheSame) {
  EXPECT_EQ(fieldsOf(acutBuildList(RTLB, RTLB, RTSTR, L"a", RTDOTE, RTSHORT, 1, RTLE, RTLB, RTSTR, L"b",
                                   RTDOTE, RTT, RTLE, RTLE, RTNONE)),
            L"8a 3 8b 11 ");
  EXPECT_EQ(fieldsOf(acutBuildList(RTLB, RTSTR, L"a", RTREAL, 1.0, RTSTR, L"b", RTSTR, L"c", RTLE, RTNONE)),
            L"8a 5 8b 8c ");
  EXPECT_EQ(
      fieldsOf(acutBuildList(RTLB, RTLB, RTSTR, L"a", RTLE, RTLB, RTSTR, L"b", RTNIL, RTLE, RTLE, RTNONE)),
      L"8a 1 8b 0 ")
      << "a name before a parenthesis is Null, a nil is empty";
  const ads_point point = {1, 2, 3};
  for (resbuf* bad : {acutBuildList(RTLB, RTLE, RTNONE), acutBuildList(RTSTR, L"a", RTNONE),
                      acutBuildList(RTSTR, L"a", RT3DPOINT, point, RTNONE),
                      acutBuildList(RTSHORT, 1, RTSHORT, 2, RTNONE)}) {
    EXPECT_EQ(fieldsOf(bad), L"failed");
  }
}

std::wstring valueOf(const COleVariant& value, bool trim) {
  return served(nullptr, [&] {
    resbuf* const made = variantToResbuf(value, trim);
    acedRetVal(made);
    acutRelRb(made);
  });
}

TEST(VariantValues, BecomeLispValues) {
  COleVariant byte(BYTE{200});
  EXPECT_EQ(valueOf(byte, true), L"200 ");
  EXPECT_EQ(valueOf(COleVariant(SHORT{-3}), true), L"-3 ");
  EXPECT_EQ(valueOf(COleVariant::boolean(true), true), L"-1 ");
  EXPECT_EQ(valueOf(COleVariant::boolean(false), true), L"0 ");
  EXPECT_EQ(valueOf(COleVariant(std::numeric_limits<double>::quiet_NaN()), true), L"0.000000 ");
  EXPECT_EQ(valueOf(COleVariant::null(), true), L"nil ");
  EXPECT_EQ(valueOf(COleVariant(), true), L"nil ");
  EXPECT_EQ(valueOf(COleVariant(L" x \t\n"), true), L" x ");
  EXPECT_EQ(valueOf(COleVariant(L" x "), false), L" x  ");
  EXPECT_EQ(valueOf(COleVariant(L" "), false), L" ");
  EXPECT_EQ(valueOf(COleVariant(L"  "), false), L"   ");
  EXPECT_EQ(valueOf(COleVariant::dateOf(1e9), true), L"Invalid DateTime ");
}

TEST(RowSets, BecomeListsOfRecords) {
  const auto rows = [](std::vector<COleVariant> values) {
    COleSafeArray array;
    array.CreateOneDim(VT_VARIANT, static_cast<ULONG>(values.size()));
    const VariantElements slots(array);
    for (ULONG i = 0; i < slots.size(); ++i) slots[i] = values[i].Detach();
    return served(nullptr, [&] { rowsToList(array); });
  };
  EXPECT_EQ(rows({newRecordMark, L"a", LONG{1}, L"b", LONG{2}, newRecordMark, L"a", LONG{3}}),
            L"( ( ( a . 1 ) ( b . 2 ) ) ( ( a . 3 ) ) ) ");
  EXPECT_EQ(rows({L"a", LONG{1}}), L"( a 1 ) ");
  EXPECT_EQ(rows({L"n", newRecordMark, newRecordMark, L"a"}), L"( n ( ) ( ) ) ") << "a name without a value";
  EXPECT_EQ(rows({}), L"( ) ");
}

TEST(Trees, KeepTheirShape) {
  resbuf* const list = acutBuildList(RTLB, RTSTR, L"a", RTDOTE, RTT, RTLE, RTNONE);
  ArgCursor cursor = list;
  COleVariant tree;
  ASSERT_TRUE(treeToArray(cursor, tree));
  EXPECT_EQ(served(nullptr, [&] { arrayToList(tree); }), L"( *RTLB* a *RTDOTE* -1 *RTLE* ) ");
  acutRelRb(list);
}

}  // namespace
