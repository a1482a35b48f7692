#include <cmath>

#include "tests/engine/engine_support.h"

namespace {

class ValuesTest : public testing::Test {
 protected:
  TemporaryFolder folder;
  std::string path = folder.file("values.mdb");
  TestEngine engine = TestEngine::fresh(path, L"Kinds",
                                        {{L"id", L"counter"},
                                         {L"l", L"long"},
                                         {L"i", L"integer"},
                                         {L"b", L"byte"},
                                         {L"s", L"single"},
                                         {L"d", L"double"},
                                         {L"c", L"currency"},
                                         {L"when", L"date"},
                                         {L"t", L"text(5)"},
                                         {L"m", L"memo"},
                                         {L"y", L"yesno"},
                                         {L"g", L"guid"},
                                         {L"bin", L"binary"},
                                         {L"r", L"text(9) required default 'dflt'"},
                                         {L"n", L"text noempty"},
                                         {L"id", L"index primary"},
                                         {L"l", L"index(l) unique"}});
  void SetUp() override { ASSERT_EQ(engine.table(L"kinds", L"ID"), 0); }
};

struct Case {
  std::wstring column;
  COleVariant value;
  int code;
  VARTYPE type = VT_EMPTY;  // of what comes back
  std::wstring text = {};   // of what comes back, as a text
};

TEST_F(ValuesTest, KeepsValuesInTheTypeOfTheColumn) {
  const std::wstring nul(L"a\0b", 3);
  const std::vector<Case> cases = {
      {L"l", number(-5), 0, VT_I4, L"-5"},
      {L"l", COleVariant(2.6), 0, VT_I4, L"3"},
      {L"l", COleVariant(L" 17"), 0, VT_I4, L"17"},
      {L"l", COleVariant(3e9), 3349},
      {L"l", COleVariant(L"seven"), 3421},
      {L"i", number(40000), 3349},
      {L"i", number(-32768), 0, VT_I2, L"-32768"},
      {L"b", number(255), 0, VT_UI1, L"255"},
      {L"b", number(256), 3349},
      {L"b", number(-1), 3349},
      {L"s", COleVariant(0.5), 0, VT_R4, L"0.5"},
      {L"s", COleVariant(1e300), 3349},
      {L"d", COleVariant(0.1), 0, VT_R8, L"0.1"},
      {L"d", COleVariant(std::nan("")), 3421},
      {L"d", COleVariant(INFINITY), 3421},
      {L"c", COleVariant(12.34567), 0, VT_R8, L"12.3457"},
      {L"c", COleVariant(1e18), 3349},
      {L"when", COleVariant(L"2023-03-15 18:00"), 0, VT_DATE, L"3/15/2023 6:00:00 PM"},
      {L"when", COleVariant(L"soon"), 3421},
      {L"when", COleVariant(1e9), 3349},
      {L"t", COleVariant(L"ÄÖÜẞé"), 0, VT_BSTR, L"ÄÖÜẞé"},
      {L"t", COleVariant(L"sixsix"), 3163},
      {L"t", number(12345), 0, VT_BSTR, L"12345"},
      {L"t", COleVariant(nul), 0, VT_BSTR, nul},
      {L"t", COleVariant(), 0, VT_NULL},
      {L"m", COleVariant(std::wstring(100'000, L'x') + L" "), 0, VT_BSTR, std::wstring(100'000, L'x') + L" "},
      {L"y", COleVariant::boolean(true), 0, VT_BOOL, L"True"},
      {L"y", number(7), 0, VT_BOOL, L"True"},
      {L"y", COleVariant(), 0, VT_BOOL, L"False"},
      {L"y", COleVariant(L"maybe"), 3421},
      {L"g", COleVariant(L"{4d6fdf05-a48b-43b0-b640-64b299548bc4}"), 0, VT_BSTR,
       L"{4D6FDF05-A48B-43B0-B640-64B299548BC4}"},
      {L"g", COleVariant(L"{4d6f}"), 3421},
      {L"bin", COleVariant(L"text"), 3421},
      {L"r", COleVariant::null(), 3314},
      {L"n", COleVariant(L""), 3315},
      {L"n", COleVariant::null(), 0, VT_NULL},
      {L"id", number(1), 3022},
      {L"nothing", number(1), 3265},
  };
  setenv("LC_ALL", "C", 1);
  ASSERT_EQ(engine.append({}), 0);
  LONG rows = 1;
  for (const Case& each : cases) {
    SCOPED_TRACE(testing::Message() << toUtf8(each.column) << ", case " << &each - cases.data());
    EXPECT_EQ(engine.append({{each.column, each.value}}), each.code);
    if (each.code == 0) {
      ++rows;
      COleVariant back = engine.field(each.column);
      EXPECT_EQ(back.vt, each.type);
      if (back.vt == VT_NULL) continue;
      back.ChangeType(VT_BSTR);
      EXPECT_EQ(back.text(), each.text);
      EXPECT_EQ(engine.text(L"r"), L"dflt");
      if (each.column == L"l") {
        EXPECT_EQ(engine.append({{L"l", each.value}}), 3022);
      }
    }
    EXPECT_EQ(engine.count(), rows);
  }
}

TEST_F(ValuesTest, BinaryComesBackAsItWas) {
  const unsigned char bytes[] = {0, 1, 255};
  COleSafeArray array;
  array.CreateOneDim(VT_UI1, 3, bytes);
  ASSERT_EQ(engine.append({{L"bin", COleVariant(static_cast<VARIANT&>(array))}}), 0);
  const COleSafeArray back(engine.field(L"bin"));
  unsigned char last = 0;
  back.GetElement(2, &last);
  EXPECT_EQ(back.GetOneDimSize(), 3u);
  EXPECT_EQ(last, 255);
}

TEST_F(ValuesTest, AStructureMakesTheSameTable) {
  const auto pairsOf = [](TestEngine& from) {
    COleVariant pairs;
    VARIANT_BOOL ok;
    from->Structure(pairs.put(), &ok);
    std::vector<std::pair<std::wstring, std::wstring>> result;
    const VariantElements elements(pairs);
    for (ULONG i = 0; i + 1 < elements.size(); i += 2) {
      result.emplace_back(viewOf(elements[i].bstrVal), viewOf(elements[i + 1].bstrVal));
    }
    return result;
  };
  const auto structure = pairsOf(engine);
  ASSERT_EQ(structure.size(), 15u);
  EXPECT_EQ(structure[13].second, L"text(9) required default 'dflt'");
  ASSERT_EQ(engine.createTable(L"Copy", structure), 0);
  ASSERT_EQ(engine.table(L"Copy"), 0);
  EXPECT_EQ(pairsOf(engine), structure);
  EXPECT_EQ(engine.createTable(L"COPY", structure), 3010);
}

TEST_F(ValuesTest, RefusesBadDefinitions) {
  const std::vector<std::pair<std::vector<std::pair<std::wstring, std::wstring>>, int>> cases = {
      {{}, 3292},
      {{{L"a", L"colour"}}, 3292},
      {{{L"a", L"text(300)"}}, 3292},
      {{{L"a", L"text(9"}}, 3292},
      {{{L"a", L"long"}, {L"A", L"text"}}, 3191},
      {{{L"a", L"counter"}, {L"b", L"counter"}}, 3292},
      {{{L"a", L"long"}, {L"x", L"index(b)"}}, 3381},
      {{{L"a.b", L"long"}}, 3125},
      {{{L"", L"long"}}, 3125},
      {{{L"a", L"long wide"}}, 3292},
  };
  for (const auto& [entries, code] : cases) {
    EXPECT_EQ(engine.createTable(L"New", entries), code) << toUtf8(engine.errorText());
    VARIANT_BOOL exists, ok;
    engine->Exists(Bstr(L"New").get(), &exists, &ok);
    EXPECT_FALSE(exists);
  }
  // Names that the storage keeps for itself are names like any other.
  for (const wchar_t* name : {L"sqlite_master", L"zb_tables", L"rowid", L"a \"quoted\" name", L"Größe"}) {
    EXPECT_EQ(engine.createTable(name, {{L"rowid", L"long"}, {L"zb_row", L"text"}}), 0);
    ASSERT_EQ(engine.table(name), 0);
    EXPECT_EQ(engine.append({{L"rowid", number(5)}}), 0);
    EXPECT_EQ(engine.number(L"rowid"), 5);
  }
}

TEST_F(ValuesTest, KeepsRelations) {
  // Relations are made by SQL; asking and deleting work without one.
  VARIANT_BOOL exists, ok;
  engine->RelationExists(Bstr(L"none").get(), &exists, &ok);
  EXPECT_FALSE(exists);
  engine->RelationDelete(Bstr(L"Kinds").get(), Bstr(L"none").get(), &ok);
  EXPECT_FALSE(ok);
  EXPECT_EQ(engine.error(), 3265);
  VARIANT_BOOL pending;
  engine->ErrorPending(&pending);
  EXPECT_FALSE(pending);
}

}  // namespace
