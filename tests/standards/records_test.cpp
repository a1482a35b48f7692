#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "platform/com/call_trace.h"
#include "platform/com/class_objects.h"
#include "platform/text/utf.h"
#include "zarbo/standards/layer_records.h"
#include "zarbo/standards/value_records.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::IsEmpty;

ComPtr<IZbEngine> connectTo(const fs::path& database) {
  ComPtr<IZbEngine> engine = createObject<IZbEngine>(engineClassId);
  if (!engine) throw std::runtime_error("the engine's class can't be made");
  Bstr status;
  engine->Connect(Bstr(fromUtf8(database.string())).get(), 0, 0, status.put());
  EXPECT_EQ(status.str(), L"OK");
  return engine;
}

/// A copy of the sample standards that a test may change, and a connection to it whose calls are traced.
class RecordsTest : public testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "zarbo-records-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
    fs::copy_file(SAMPLE_STANDARDS, database());
    setCallTrace(true);
    engine = connectTo(database());
    calls();
  }
  void TearDown() override {
    engine.reset();
    setCallTrace(false);
    fs::remove_all(folder_);
  }
  fs::path database() const { return folder_ / "standards.kv"; }

  /// "Method argument argument" of the calls since the last time.
  std::vector<std::string> calls() {
    std::vector<std::string> lines;
    for (const TracedCall& call : takeTracedCalls()) {
      std::string line = toUtf8(call.method);
      for (const COleVariant& argument : call.arguments) {
        COleVariant text = argument;
        if (SUCCEEDED(VariantChangeType(&text, &text, 0, VT_BSTR))) line += " " + toUtf8(text.text());
      }
      lines.push_back(line);
    }
    return lines;
  }

  int32_t rows(const wchar_t* table) {
    VARIANT_BOOL ok = 0;
    LONG count = 0;
    engine->SetTable(Bstr(table).get(), Bstr(L"").get(), &ok);
    engine->RecordCount(&count, &ok);
    return count;
  }

  ComPtr<IZbEngine> engine;

 private:
  fs::path folder_;
};

TEST_F(RecordsTest, ReadsARowByItsTextAndByItsNumber) {
  tblLayer layer(true, engine.get());
  ASSERT_TRUE(layer.FindByKey(L"h-sa-cntr"));
  EXPECT_THAT(calls(), ElementsAre("SetTable tblLayer sName", "Seek1 h-sa-cntr"));
  EXPECT_EQ(layer.sName.get(), L"H-SA-CNTR");
  EXPECT_EQ(layer.sLinetype.get(), L"CENTER");
  EXPECT_TRUE(layer.bPlot.get());
  int32_t color = 0;
  EXPECT_TRUE(layer.iColor.get(color));
  EXPECT_EQ(color, 8);
  std::wstring plotStyle = L"before";
  EXPECT_FALSE(layer.sPlotstyle.get(plotStyle));
  EXPECT_EQ(plotStyle, L"");  // a text is assigned also when it is null
  int32_t red = 77;
  EXPECT_FALSE(layer.iRed.get(red));
  EXPECT_EQ(red, 77);

  tblLayer again(true, engine.get());
  ASSERT_TRUE(again.FindByIndex(layer.ixLayer.get()));
  EXPECT_EQ(again.sName.get(), L"H-SA-CNTR");
  EXPECT_FALSE(again.FindByKey(L"NO SUCH LAYER"));
  EXPECT_EQ(again.sName.get(), L"H-SA-CNTR");
}

TEST_F(RecordsTest, ReadsNumbersOfEveryWidth) {
  for (const wchar_t* type : {L"SHORT", L"DOUBLE", L"SINGLE", L"BYTE"}) {
    VARIANT_BOOL ok = 0;
    const std::wstring change = std::wstring(L"ALTER TABLE tblLayer ALTER COLUMN iColor ") + type;
    engine->ExecuteStatement(Bstr(change).get(), &ok);
    ASSERT_EQ(ok, VARIANT_TRUE) << toUtf8(change);
    tblLayer layer(true, engine.get());
    ASSERT_TRUE(layer.FindByKey(L"H-SA-CNTR"));
    EXPECT_EQ(layer.iColor.get(), 8) << toUtf8(type);
  }
}

TEST(Columns, TakeANumberOfAnyType) {
  IntegerColumn integer(L"i");
  RealColumn real(L"d");
  VARIANT single{};
  single.vt = VT_R4;
  single.fltVal = 2.0F;
  VARIANT byte{};
  byte.vt = VT_UI1;
  byte.bVal = 2;
  for (const COleVariant& two : {COleVariant(SHORT{2}), COleVariant(LONG{2}), COleVariant(2.0),
                                 COleVariant(single), COleVariant(byte)}) {
    integer.load(two);
    real.load(two);
    EXPECT_EQ(integer.get(), 2) << two.vt;
    EXPECT_EQ(real.get(), 2.0) << two.vt;
  }
  integer.load(COleVariant(1e10));
  EXPECT_EQ(integer.get(), 0);
}

TEST_F(RecordsTest, AppendsTheChangedColumnsAndReadsTheRowBack) {
  tblLayer layer(true, engine.get());
  layer.AddNew();
  layer.sName.set(L"NEW-LAYER");
  layer.iColor.set(3);
  layer.iMasterDatabaseIndex.set(9);  // left out: the database is opened for its own sake
  calls();
  layer.Update();
  EXPECT_THAT(calls(), ElementsAre("SetTable tblLayer ixLayer", testing::StartsWith("Append")));
  EXPECT_FALSE(layer.adding());
  EXPECT_EQ(layer.ixLayer.get(), 241);
  EXPECT_FALSE(layer.sName.changed());
  tblLayer again(true, engine.get());
  ASSERT_TRUE(again.FindByIndex(241));
  EXPECT_EQ(again.sName.get(), L"NEW-LAYER");
}

TEST_F(RecordsTest, ReplacesTheChangedColumnsOfTheRowThatEditFound) {
  tblLayer layer(true, engine.get());
  ASSERT_TRUE(layer.FindByKey(L"G-NOTE"));
  layer.Edit();
  layer.iColor.SetNull();
  layer.sLineweight.set(L"35");
  calls();
  layer.Update();
  EXPECT_THAT(calls(), ElementsAre("SetTable tblLayer ixLayer", "Seek1 3", testing::StartsWith("Replace")));
  EXPECT_FALSE(layer.editing());
  tblLayer again(true, engine.get());
  ASSERT_TRUE(again.FindByKey(L"G-NOTE"));
  EXPECT_TRUE(again.iColor.isNull());
  EXPECT_EQ(again.sLineweight.get(), L"35");
  EXPECT_EQ(again.sLinetype.get(), L"CONTINUOUS");
}

TEST_F(RecordsTest, WithNothingChangedTheEngineIsNotCalledAndTheModeStays) {
  tblLayer layer(true, engine.get());
  ASSERT_TRUE(layer.FindByKey(L"G-NOTE"));
  layer.Edit();
  calls();
  layer.Update();
  EXPECT_THAT(calls(), IsEmpty());
  EXPECT_TRUE(layer.editing());
}

TEST_F(RecordsTest, ARowThatSomebodyDeletedIsNotWritten) {
  tblLayer layer(true, engine.get());
  ASSERT_TRUE(layer.FindByKey(L"G-NOTE"));
  layer.Edit();
  layer.iColor.set(1);
  const int32_t before = rows(L"tblLayer");
  {
    const ComPtr<IZbEngine> other = connectTo(database());
    tblLayer theirs(true, other.get());
    ASSERT_TRUE(theirs.FindByKey(L"G-NOTE"));
    theirs.Delete();
  }
  calls();
  layer.Update();
  EXPECT_THAT(calls(), ElementsAre("SetTable tblLayer ixLayer", "Seek1 3"));
  EXPECT_FALSE(layer.editing());
  EXPECT_FALSE(layer.iColor.changed());
  EXPECT_EQ(rows(L"tblLayer"), before - 1);
}

TEST_F(RecordsTest, ASetterOutsideOfAModeWritesNothing) {
  tblLayer layer(true, engine.get());
  ASSERT_TRUE(layer.FindByKey(L"G-NOTE"));
  layer.sName.set(L"LOST");
  calls();
  layer.Update();
  EXPECT_THAT(calls(), IsEmpty());
  EXPECT_FALSE(layer.sName.changed());
  EXPECT_FALSE(layer.FindByKey(L"LOST"));
}

TEST_F(RecordsTest, WalksAnIndexFromEndToEnd) {
  tblLayerSystem system(true, engine.get());
  system.SetIndex(L"iSortOrder");
  int32_t expected = 1;
  for (system.MoveFirst(); !system.IsEnd(); system.MoveNext()) EXPECT_EQ(system.iSortOrder.get(), expected++);
  EXPECT_EQ(expected, 21);
  tblLayer layer(true, engine.get());
  layer.SetIndex(L"sName");
  layer.MoveLast();
  EXPECT_EQ(layer.sName.get(), L"P-VT-VALV");
  EXPECT_FALSE(layer.IsEnd());
  EXPECT_FALSE(layer.IsFirst());
}

TEST_F(RecordsTest, AnEmptyTableHasBothEnds) {
  VARIANT_BOOL ok = 0;
  engine->ExecuteStatement(Bstr(L"DELETE FROM tblTextStyle").get(), &ok);
  ASSERT_NE(ok, 0);
  tblTextStyle style(true, engine.get());
  EXPECT_TRUE(style.IsEnd());
  EXPECT_TRUE(style.IsFirst());
}

TEST_F(RecordsTest, FindsKeysOfASystemAndOfThePseudoSystem) {
  tblLayerKey key(true, engine.get());
  ASSERT_TRUE(key.FindBySystemAndKey(0, L"Title Text"));
  EXPECT_THAT(calls(),
              ElementsAre("SetTable tblLayerKey isxLayerSystemKey", testing::EndsWith("Title Text")));
  EXPECT_TRUE(key.ixLayerSystem.isNull());
  ASSERT_TRUE(key.FindBySystemAndKey(1, L"Duct"));
  EXPECT_EQ(key.ixLayerSystem.get(), 1);
  EXPECT_FALSE(key.FindBySystemAndKey(1, L"Title Text"));
}

TEST_F(RecordsTest, ReadsHatchesOfALayerSystem) {
  tblLayerSystem system(true, engine.get());
  ASSERT_TRUE(system.FindByIndex(1));
  EXPECT_EQ(system.sDescription.get(), L"Supply Air");
  EXPECT_TRUE(system.bSolid.get());
  EXPECT_TRUE(system.supply.on.get());
  EXPECT_EQ(system.supply.pattern.get(), L"ANSI31");
  EXPECT_NEAR(system.supply.angle.get(), 0.7853981625, 1e-12);
  EXPECT_FALSE(system.exhaust.on.get());
}

TEST_F(RecordsTest, GlobalValuesKeepTheOtherKindOfValue) {
  tblGlobal values(engine.get());
  EXPECT_EQ(GetGlobalText(&values, L"units"), L"Imperial");
  EXPECT_EQ(GetGlobalNumber(&values, L"Plot Scale"), 48.0);
  EXPECT_EQ(GetGlobalText(&values, L"Plot Scale"), L"");
  EXPECT_EQ(GetGlobalNumber(&values, L"no such key"), 0.0);
  SetGlobalNumber(&values, L"Units", 25.4);
  ASSERT_TRUE(values.FindByKey(L"Units"));
  EXPECT_TRUE(values.bNumeric.get());
  EXPECT_EQ(values.sText.get(), L"Imperial");
  EXPECT_EQ(values.dNumber.get(), 25.4);
  SetGlobalText(&values, L"New Key", L"trailing  ");
  EXPECT_EQ(GetGlobalText(&values, L"New Key"), L"trailing");
  SetGlobalText(nullptr, L"Units", L"x");
  EXPECT_EQ(GetGlobalText(nullptr, L"Units"), L"");
}

TEST(RecordsWithoutConnection, DoNothing) {
  tblLayer layer(true, nullptr);
  EXPECT_FALSE(layer.FindByKey(L"x"));
  EXPECT_FALSE(layer.FindByIndex(1));
  EXPECT_TRUE(layer.IsFirst());
  EXPECT_TRUE(layer.IsEnd());
  layer.AddNew();
  EXPECT_FALSE(layer.adding());
  layer.sName.set(L"x");
  layer.Update();
  layer.Delete();
  layer.MoveFirst();
  EXPECT_EQ(layer.sName.get(), L"x");
}

}  // namespace
