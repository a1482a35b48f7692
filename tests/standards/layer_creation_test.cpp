#include "zarbo/standards/layer_creation.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

#include "brx/db_database.h"
#include "host/documents/documents.h"
#include "platform/com/call_trace.h"
#include "platform/text/utf.h"
#include "tests/support/recording_call.h"
#include "zarbo/database/connections.h"
#include "zarbo/frame/guarded_call.h"
#include "zarbo/standards/layer_records.h"
#include "zarbo/support/current_drawing.h"

namespace {

namespace fs = std::filesystem;

/// A drawing that is connected to a copy of the sample standards.
class LayerCreation : public testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = (fs::temp_directory_path() / "zarbo-layers-XXXXXX").string();
    folder_ = mkdtemp(pattern.data());
    fs::copy_file(SAMPLE_STANDARDS, folder_ / "standards.kv");
    host::documents().create(L"A.dwg");
    addDrawingRecord();
    ensureConnection();
    const std::wstring path = fromUtf8((folder_ / "standards.kv").string());
    ASSERT_EQ(served(acutBuildList(RTSTR, path.c_str(), RTSTR, L"w", RTNONE), [] { zbConnect(); }), L"T ");
    ensureConnection();
  }
  void TearDown() override {
    setCallTrace(false);
    dropHeadRecord();
    closeAllConnections();
    host::documents().closeAll();
    host::documents().discardClosed();
    fs::remove_all(folder_);
  }

  static std::wstring createLayer(const wchar_t* name) {
    return served(acutBuildList(RTSTR, name, RTNONE), [] { EXPECT_EQ(kvCreateLayer(), done); });
  }
  static AcDbObjectId idOf(const wchar_t* name) {
    AcDbObjectPointer<AcDbLayerTable> layers(currentDatabase()->tableId(AcDbLayerTable::desc()));
    AcDbObjectId id;
    layers->getAt(name, id);
    return id;
  }
  /// A layer of which nothing was set but the name.
  static AcDbObjectId bareLayer() {
    AcDbObjectPointer<AcDbLayerTable> layers(currentDatabase()->tableId(AcDbLayerTable::desc()),
                                             AcDb::kForWrite);
    auto* const layer = new AcDbLayerTableRecord;
    layer->setName(L"BARE");
    AcDbObjectId id;
    layers->add(id, layer);
    layer->close();
    return id;
  }
  /// Gives the sample's layer of that name other values.
  static void change(const wchar_t* name, const std::function<void(tblLayer&)>& set) {
    tblLayer row(true, &activeConnection().object());
    ASSERT_TRUE(row.FindByKey(name));
    row.Edit();
    set(row);
    row.Update();
  }

 private:
  fs::path folder_;
};

using Layer = AcDbObjectPointer<AcDbLayerTableRecord>;

TEST_F(LayerCreation, TakesTheRowsSpellingAndAppearance) {
  EXPECT_EQ(createLayer(L"h-sa-patt"), L"T ");
  const Layer layer(idOf(L"H-SA-PATT"));
  ASSERT_TRUE(layer.object());
  EXPECT_EQ(layer->getName(), L"H-SA-PATT");
  EXPECT_EQ(layer->color().colorIndex(), 8);
  EXPECT_EQ(layer->lineWeight(), 9);
  EXPECT_TRUE(layer->isPlottable());
  EXPECT_FALSE(layer->isLocked());
  EXPECT_EQ(createLayer(L"G-VIEWPORT"), L"T ");
  const Layer unplotted(idOf(L"G-VIEWPORT"));
  EXPECT_FALSE(unplotted->isPlottable());
  EXPECT_EQ(unplotted->lineWeight(), -3) << "null is the default";
}

TEST_F(LayerCreation, LeavesDefaultsForWhatTheRowOrTheDrawingLacks) {
  change(L"G-NOTE", [](tblLayer& row) {
    row.iColor.SetNull();
    row.sLineweight.set(L"");
    row.sLinetype.set(L"Continuous");
  });
  EXPECT_EQ(createLayer(L"G-NOTE"), L"T ");
  const Layer plain(idOf(L"G-NOTE"));
  const Layer bare(bareLayer());
  EXPECT_EQ(plain->color().colorIndex(), bare->color().colorIndex());
  EXPECT_EQ(plain->lineWeight(), bare->lineWeight());
  EXPECT_EQ(plain->linetypeObjectId(), bare->linetypeObjectId());

  change(L"G-GRID", [](tblLayer& row) { row.sLinetype.set(L"NO SUCH LINETYPE"); });
  EXPECT_EQ(createLayer(L"G-GRID"), L"T ");
  EXPECT_EQ(Layer(idOf(L"G-GRID"))->linetypeObjectId(), bare->linetypeObjectId());
}

TEST_F(LayerCreation, FindsTheLinetypeInTheDrawing) {
  {
    AcDbObjectPointer<AcDbLinetypeTable> linetypes(currentDatabase()->tableId(AcDbLinetypeTable::desc()),
                                                   AcDb::kForWrite);
    auto* const center = new AcDbLinetypeTableRecord;
    center->setName(L"Center");
    center->setPattern(L"long and short", {1.25, -0.25, 0.25, -0.25});
    ASSERT_EQ(linetypes->add(center), Acad::eOk);
    center->close();
  }
  EXPECT_EQ(createLayer(L"H-SA-CNTR"), L"T ");
  const AcDbObjectPointer<AcDbLinetypeTableRecord> found(Layer(idOf(L"H-SA-CNTR"))->linetypeObjectId());
  EXPECT_EQ(found->getName(), L"Center");
}

TEST_F(LayerCreation, OnlyUnlocksALayerThatIsThere) {
  ASSERT_EQ(createLayer(L"H-SA-DUCT"), L"T ");
  {
    const Layer layer(idOf(L"H-SA-DUCT"), AcDb::kForWrite);
    layer->setIsLocked(true);
    layer->setIsFrozen(true);
    layer->setIsOff(true);
  }
  setCallTrace(true);
  takeTracedCalls();
  EXPECT_EQ(createLayer(L"h-sa-duct"), L"T ");
  EXPECT_TRUE(takeTracedCalls().empty()) << "the standards aren't asked";
  const Layer layer(idOf(L"H-SA-DUCT"), AcDb::kForWrite);
  EXPECT_FALSE(layer->isLocked());
  EXPECT_TRUE(layer->isFrozen());
  EXPECT_TRUE(layer->isOff());
  layer->setIsLocked(true);
  EXPECT_EQ(createLayer(L"H-SA-DUCT"), L"T ") << "somebody has it open; nothing changes";
  EXPECT_TRUE(layer->isLocked());
}

TEST_F(LayerCreation, MakesNothingWithoutARow) {
  const size_t objects = currentDatabase()->objectCount();
  EXPECT_EQ(createLayer(L"NO SUCH LAYER"), L"nil ");
  EXPECT_EQ(createLayer(L""), L"nil ");
  {
    const AcDbObjectPointer<AcDbLayerTable> reader(currentDatabase()->tableId(AcDbLayerTable::desc()));
    EXPECT_EQ(createLayer(L"G-NOTE"), L"nil ") << "the table can't be opened for write";
  }
  {
    const AcDbObjectPointer<AcDbLinetypeTable> writer(currentDatabase()->tableId(AcDbLinetypeTable::desc()),
                                                      AcDb::kForWrite);
    EXPECT_EQ(createLayer(L"H-SA-CNTR"), L"nil ") << "the linetypes can't be read";
  }
  {
    const AcDbObjectPointer<AcDbLayerTable> writer(currentDatabase()->tableId(AcDbLayerTable::desc()),
                                                   AcDb::kForWrite);
    EXPECT_EQ(createLayer(L"0"), L"nil ") << "the layers can't be read";
  }
  EXPECT_EQ(currentDatabase()->objectCount(), objects);
  closeAllConnections();
  ensureConnection();
  EXPECT_EQ(createLayer(L"G-NOTE"), L"nil ") << "no standards are connected";
  EXPECT_EQ(createLayer(L"0"), L"T ");
}

}  // namespace
