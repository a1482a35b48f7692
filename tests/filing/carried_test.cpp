#include <gtest/gtest.h>

#include <cmath>

#include "brx/db_calls.h"
#include "brx/db_dictionary.h"
#include "brx/db_proxy.h"
#include "brx/db_text.h"
#include "host/filing/files.h"
#include "host/filing/snapshot.h"
#include "tests/filing/drawings.h"
#include "tests/support/temporary_folder.h"

/// What drawings of other programs hold, read and written again.

namespace {

/// The written groups, without the blanks before codes.
std::string plain(AcDbDatabase& drawing) {
  std::string text = written(drawing);
  for (size_t at = 0; (at = text.find("\n ", at)) != std::string::npos;) text.erase(at + 1, 1);
  return text;
}

void expectGroups(const std::string& text, std::initializer_list<const char*> expected) {
  for (const char* const each : expected) EXPECT_NE(text.find(groups(each)), std::string::npos) << each;
}

TEST(Carried, GenuineProxiesComeThrough) {
  const ReadDrawing read(
      section("HEADER", "9 $ACADVER|1 AC1027") +
      section("ENTITIES",
              "0 ACAD_PROXY_ENTITY|5 21|330 1F|100 AcDbEntity|8 0|100 AcDbProxyEntity|90 498|91 500|92 4|310 "
              "0A0B0C0D|93 0|94 0") +
      section("OBJECTS",
              "0 DICTIONARY|5 C|330 0|100 AcDbDictionary|281 1|3 MINE|350 30|"
              "0 ACAD_PROXY_OBJECT|5 30|330 C|100 AcDbProxyObject|90 499|91 501|93 8|310 FFEE|94 0") +
      groups("0 EOF"));
  EXPECT_EQ(read.messages(), "");
  expectGroups(plain(*read.drawing),
               {"0 ACAD_PROXY_ENTITY|5 21", "100 AcDbProxyEntity|90 498|91 500|92 4|310 0A0B0C0D|93 0|94 0",
                "0 ACAD_PROXY_OBJECT|5 30", "100 AcDbProxyObject|90 499|91 501|93 8|310 FFEE|94 0"});
}

TEST(Carried, LinetypesKeepTheirTextsAndShapes) {
  const char* const gas =
      "49 0.5|74 0|49 -0.2|74 2|75 0|340 11|46 0.1|50 90.0|44 -0.1|45 -0.05|9 GAS|49 -0.25|74 0";
  const char* const fence =
      "49 0.25|74 0|49 -0.1|74 4|75 132|340 12|46 0.1|50 0.0|44 -0.1|45 0.0|49 -0.1|74 0";
  const std::string record = "330 5|100 AcDbSymbolTableRecord|100 AcDbLinetypeTableRecord|";
  const ReadDrawing read(
      section("HEADER", "9 $ACADVER|1 AC1027") +
      section("TABLES",
              "0 TABLE|2 LTYPE|5 5|330 0|100 AcDbSymbolTable|70 2|0 LTYPE|5 15|" + record +
                  "2 GAS|70 0|3 Gas ----GAS----|72 65|73 3|40 0.95|" + gas + "|0 LTYPE|5 16|" + record +
                  "2 FENCE|70 0|3 Fence|72 65|73 3|40 0.45|" + fence +
                  "|0 ENDTAB|0 TABLE|2 STYLE|5 3|330 0|100 AcDbSymbolTable|70 2|"
                  "0 STYLE|5 11|330 3|100 AcDbSymbolTableRecord|100 AcDbTextStyleTableRecord|2 Notes|70 0|71 "
                  "4|3 txt|"
                  "0 STYLE|5 12|330 3|100 AcDbSymbolTableRecord|100 AcDbTextStyleTableRecord|2|70 1|3 "
                  "ltypeshp.shx|"
                  "0 ENDTAB|0 TABLE|2 LAYER|5 2|330 0|100 AcDbSymbolTable|70 1|"
                  "0 LAYER|5 10|330 2|100 AcDbSymbolTableRecord|100 AcDbLayerTableRecord|2 pipes|70 0|62 1|6 "
                  "FENCE|0 ENDTAB") +
      section("ENTITIES",
              "0 LINE|5 20|100 AcDbEntity|8 pipes|6 GAS|100 AcDbLine|10 0.0|20 0.0|11 9.0|21 0.0") +
      groups("0 EOF"));
  EXPECT_EQ(read.messages(), "");
  expectGroups(plain(*read.drawing), {gas, fence, "3 txt|4|71 4"});
  // Into another drawing the text's style and the shape's file go along.
  AcDbDatabase other;
  AcDbObjectId block;
  ASSERT_EQ(other.insert(block, L"pipes", read.drawing.get()), Acad::eOk);
  for (const auto& [name, style, file] :
       {std::tuple(L"GAS", L"Notes", L"txt"), std::tuple(L"FENCE", L"", L"ltypeshp.shx")}) {
    AcDbObjectPointer<AcDbLinetypeTable> table(other.linetypeTableId());
    AcDbLinetypeTableRecord* linetype = nullptr;
    ASSERT_EQ(table->getAt(name, linetype, AcDb::kForRead), Acad::eOk);
    ASSERT_EQ(linetype->signs().size(), 1u);
    AcDbObjectPointer<AcDbTextStyleTableRecord> used(linetype->signs()[0].style);
    ASSERT_TRUE(used.object());
    EXPECT_EQ(used->getName(), style);
    EXPECT_EQ(used->fileName(), file);
    linetype->close();
  }
}

TEST(Carried, ExactColoursStandBesideTheirIndex) {
  const std::string layer =
      "0 TABLE|2 LAYER|5 2|330 0|100 AcDbSymbolTable|70 1|"
      "0 LAYER|5 10|330 2|100 AcDbSymbolTableRecord|100 AcDbLayerTableRecord|2 sky|70 0|62 -151|420 "
      "7190250|6 "
      "Continuous|0 ENDTAB";
  const ReadDrawing read(
      section("HEADER", "9 $ACADVER|1 AC1027") + section("TABLES", layer) +
      section("ENTITIES",
              "0 POINT|5 20|100 AcDbEntity|8 sky|62 30|420 16711422|100 AcDbPoint|10 0.0|20 0.0|"
              "0 POINT|5 21|100 AcDbEntity|8 sky|420 16711422|100 AcDbPoint|10 0.0|20 0.0|"
              "0 MTEXT|5 22|100 AcDbEntity|8 sky|100 AcDbMText|10 0.0|20 0.0|40 1.0|1 x|90 1|63 5|421 99|45 "
              "1.5") +
      groups("0 EOF"));
  const auto expected = {"62 -151|420 7190250", "62 30|420 16711422", "62 7|420 16711422", "63 5|421 99"};
  expectGroups(plain(*read.drawing), expected);
  const TemporaryFolder folder;
  ASSERT_EQ(host::writeDrawingFile(*read.drawing, folder.wide("a.dwg")), Acad::eOk);
  AcDbDatabase again(false);
  host::FilingReport report;
  ASSERT_EQ(host::readDrawingFile(again, folder.wide("a.dwg"), report), Acad::eOk);
  expectGroups(plain(again), expected);
  // A colour that is set anew has the nearest index.
  AcDbEntity& point = *read.entity(0);
  EXPECT_EQ(point.colorIndex(), 30);
  AcCmColor blue;
  blue.setRGB(1, 2, 250);
  EXPECT_EQ(blue.colorIndex(), 5);
}

TEST(Carried, LayersGetTheLinetypesThatTheyName) {
  const ReadDrawing read(
      section("HEADER", "9 $ACADVER|1 AC1027") +
      section("TABLES",
              "0 TABLE|2 LAYER|5 2|330 0|100 AcDbSymbolTable|70 1|0 LAYER|5 10|330 2|100 "
              "AcDbSymbolTableRecord|100 AcDbLayerTableRecord|2 a|70 0|62 5|6 Lost|0 ENDTAB") +
      groups("0 EOF"));
  EXPECT_TRUE(read.says(L"linetype 'Lost' is in no table: made"));
  expectGroups(plain(*read.drawing), {"2 a|70 0|62 5|6 Lost"});
}

TEST(Carried, NamesAreOneWhateverTheirCase) {
  const std::string record = "330 2|100 AcDbSymbolTableRecord|100 AcDbLayerTableRecord|";
  const ReadDrawing read(
      section("HEADER", "9 $ACADVER|1 AC1027") +
      section("TABLES", "0 TABLE|2 LAYER|5 2|330 0|100 AcDbSymbolTable|70 2|0 LAYER|5 10|" + record +
                            "2 Wände|70 0|62 5|6 Continuous|0 LAYER|5 11|" + record +
                            "2 WÄNDE|70 0|62 6|6 Continuous|0 ENDTAB") +
      section("ENTITIES", "0 POINT|5 20|100 AcDbEntity|8 wÄNDE|100 AcDbPoint|10 0.0|20 0.0") +
      groups("0 EOF"));
  EXPECT_TRUE(read.says(L"the second record of the name 'WÄNDE' is left out"));
  ASSERT_TRUE(read.entity(0));
  EXPECT_EQ(read.entity(0)->layer(), L"Wände");
  EXPECT_EQ(read.entity(0)->layerId().handle(), 0x10u);
}

/// The block and the layout of a sheet under these handles, each with what it tells of the other.
std::string sheet(const char* block, const char* blockTells, const char* layout, const char* layoutTells,
                  const char* more = "") {
  const std::string record = "|330 1|100 AcDbSymbolTableRecord|100 AcDbBlockTableRecord|2 ";
  return section("HEADER", "9 $ACADVER|1 AC1027") +
         section("TABLES", "0 TABLE|2 BLOCK_RECORD|5 1|330 0|100 AcDbSymbolTable|70 2|0 BLOCK_RECORD|5 50" +
                               record + "*Model_Space|0 BLOCK_RECORD|5 " + block + record + "*Paper_Space" +
                               blockTells + more + "|0 ENDTAB") +
         section("OBJECTS",
                 std::string("0 DICTIONARY|5 C|330 0|100 AcDbDictionary|3 ACAD_LAYOUT|350 D|"
                             "0 DICTIONARY|5 D|330 C|100 AcDbDictionary|3 Plan|350 ") +
                     layout + "|0 LAYOUT|5 " + layout +
                     "|330 D|100 AcDbPlotSettings|1|2 none|70 688|100 AcDbLayout|1 Plan|70 1|71 1" +
                     layoutTells) +
         groups("0 EOF");
}

TEST(Carried, LayoutsAndTheirBlocksFindOneAnother) {
  const std::string cases[] = {
      sheet("51", "|340 61", "61", "|330 0"), sheet("51", "|340 61", "61", ""),
      sheet("51", "", "61", "|330 51"),       sheet("51", "|340 0", "61", "|330 0"),
      sheet("51", "", "61", "|330 999"),
  };
  for (const std::string& each : cases) {
    const ReadDrawing read(each);
    const std::string text = plain(*read.drawing);
    EXPECT_NE(text.find(groups("2 *Paper_Space|340 61")), std::string::npos) << &each - cases;
    const size_t layout = text.find(groups("100 AcDbLayout|1 Plan"));
    ASSERT_NE(layout, std::string::npos);
    EXPECT_NE(text.find("\n330\n51\n", layout), std::string::npos) << &each - cases;
    EXPECT_EQ(text.find("Layout1"), std::string::npos) << &each - cases;
  }
}

TEST(Carried, EntitiesOfOldFilesGetMarks) {
  const ReadDrawing read(
      section("HEADER", "9 $ACADVER|1 AC1009") +
      section("BLOCKS",
              "0 BLOCK|8 0|2 *D1|70 1|10 0.0|20 0.0|30 0.0|3 *D1|0 LINE|8 0|10 0.0|20 2.0|11 4.0|21 "
              "2.0|0 ENDBLK|8 0") +
      section(
          "ENTITIES",
          "0 DIMENSION|8 dims|62 3|2 *D1|3 STANDARD|10 4.0|20 2.0|30 0.0|11 2.0|21 2.1|31 0.0|70 0|1 <>|13 "
          "0.0|23 0.0|33 0.0|14 4.0|24 0.0|34 0.0|50 0.0|"
          "0 DIMENSION|8 dims|2 *D1|10 0.0|20 0.0|30 0.0|11 1.0|21 1.0|31 0.0|70 36|15 3.0|25 4.0|35 0.0|40 "
          "0.5|"
          "0 POLYLINE|8 mesh|66 1|70 64|71 2|72 1|10 0.0|20 0.0|30 0.0|"
          "0 VERTEX|8 mesh|10 1.0|20 2.0|30 3.0|70 192|"
          "0 VERTEX|8 mesh|10 0.0|20 0.0|30 0.0|70 128|71 1|72 2|0 SEQEND|8 mesh|"
          "0 SHAPE|8 0|10 1.0|20 1.0|30 0.0|40 2.0|2 TRACK") +
      groups("0 EOF"));
  expectGroups(
      plain(*read.drawing),
      {"100 AcDbEntity|8 dims|62 3|100 AcDbDimension|2 *D1|3 STANDARD|10 4.0|20 2.0|30 0.0|11 2.0|21 "
       "2.1|31 0.0|70 0|1 <>|100 AcDbAlignedDimension|13 0.0|23 0.0|33 0.0|14 4.0|24 0.0|34 0.0|50 "
       "0.0|100 AcDbRotatedDimension",
       "70 36|100 AcDbRadialDimension|15 3.0|25 4.0|35 0.0|40 0.5", "100 AcDbPolyFaceMesh|66 1|70 64",
       "100 AcDbVertex|100 AcDbPolyFaceMeshVertex|10 1.0|20 2.0|30 3.0|70 192",
       "100 AcDbFaceRecord|10 0.0|20 0.0|30 0.0|70 128|71 1|72 2", "0 SEQEND",
       "100 AcDbShape|10 1.0|20 1.0|30 0.0|40 2.0|2 TRACK"});
}

TEST(Carried, ObjectsOutOfPlaceStayAsTheyCameWhenModulesCome) {
  const ReadDrawing read(
      section("HEADER", "9 $ACADVER|1 AC1021") +
      section("OBJECTS",
              "0 LINE|5 40|100 AcDbEntity|8 0|100 AcDbLine|10 0.0|20 0.0|11 1.0|21 1.0|"
              "0 LAYER|5 41|100 AcDbSymbolTableRecord|100 AcDbLayerTableRecord|2 stray|70 0") +
      groups("0 EOF"));
  newAcRxClass(L"AcDbOfSomeModule", L"AcDbEntity", nullptr);
  acrxBuildClassHierarchy();
  expectGroups(plain(*read.drawing), {"0 LINE|5 40", "0 LAYER|5 41"});
}

TEST(Carried, ReferencesToNothingAreLeftOut) {
  AcDbDatabase drawing;
  AcDbObjectId id;
  {
    AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
    auto* const reference = new AcDbBlockReference({1, 2, 0}, AcDbObjectId());
    ASSERT_EQ(space->appendAcDbEntity(id, reference), Acad::eOk);
    AcDbVoidPtrArray parts;
    EXPECT_EQ(reference->explode(parts), Acad::eOk);
    EXPECT_EQ(parts.length(), 0);
    reference->close();
  }
  EXPECT_EQ(plain(drawing).find("\nINSERT\n"), std::string::npos);
}

TEST(Carried, GridsKeepTheirMarkAndReachAllTheirPlaces) {
  const std::string block =
      "0 BLOCK|5 30|330 31|100 AcDbEntity|8 0|100 AcDbBlockBegin|2 B|70 0|10 0.0|20 0.0|3 B|"
      "0 LINE|5 32|100 AcDbEntity|8 0|100 AcDbLine|10 0.0|20 0.0|11 1.0|21 1.0|"
      "0 ENDBLK|5 33|330 31|100 AcDbEntity|8 0|100 AcDbBlockEnd";
  const ReadDrawing read(
      section("HEADER", "9 $ACADVER|1 AC1027") + section("BLOCKS", block) +
      section("ENTITIES",
              "0 INSERT|5 20|100 AcDbEntity|8 0|100 AcDbMInsertBlock|2 B|10 0.0|20 0.0|30 0.0|70 3|71 2|44 "
              "10.0|45 "
              "5.0|"
              "0 INSERT|5 21|100 AcDbEntity|8 0|100 AcDbBlockReference|2 B|10 0.0|20 0.0|30 0.0") +
      groups("0 EOF"));
  auto* const grid = read.entity<AcDbBlockReference>(0);
  ASSERT_TRUE(grid);
  const std::string text = plain(*read.drawing);
  EXPECT_NE(text.find("AcDbMInsertBlock\n2\nB"), std::string::npos);
  EXPECT_NE(text.find("AcDbBlockReference\n2\nB"), std::string::npos);
  EXPECT_EQ(text.find("\n44\n10.0\n", text.find("\n44\n10.0\n") + 1), std::string::npos) << "kept twice";
  AcDbExtents extents;
  EXPECT_EQ(grid->getGeomExtents(extents), Acad::eOk);
  EXPECT_TRUE(extents.minPoint().isEqualTo({0, 0, 0}) && extents.maxPoint().isEqualTo({21, 6, 0}));
  AcDbVoidPtrArray parts;
  EXPECT_EQ(grid->explode(parts), Acad::eOk);
  EXPECT_EQ(parts.length(), 6);
  for (void* const each : parts) delete static_cast<AcDbEntity*>(each);
}

TEST(Carried, ParagraphsComeOutAsTheyCame) {
  // Stacks, tabs and signs of their own codes; in single lines the sign has a mark in files.
  const char* const contents = "1 \\S1^ 2;a^Ib^ c^ad";
  const ReadDrawing read(
      entities("0 MTEXT|5 20|100 AcDbEntity|8 0|100 AcDbMText|10 0.0|20 0.0|40 1.0|" + std::string(contents) +
               "|0 TEXT|5 21|100 AcDbEntity|8 0|100 AcDbText|10 0.0|20 0.0|40 1.0|1 a^ b"));
  EXPECT_EQ(std::wstring(read.entity<AcDbMText>(0)->contents()), L"\\S1^ 2;a^Ib^ c^ad");
  EXPECT_EQ(std::wstring(read.entity<AcDbText>(1)->textString()), L"a^b");
  expectGroups(plain(*read.drawing), {contents, "1 a^ b"});
}

TEST(Carried, DrawingsOfTheHostHaveExtentsAndAView) {
  AcDbDatabase drawing;
  {
    AcDbObjectPointer<AcDbBlockTableRecord> space(drawing.modelSpaceId(), AcDb::kForWrite);
    auto* const line = new AcDbLine({1, 2, 3}, {-4, 5, 6});
    space->appendAcDbEntity(line);
    line->close();
  }
  expectGroups(plain(drawing), {"9 $EXTMAX|10 1.0|20 5.0|30 6.0", "9 $EXTMIN|10 -4.0|20 2.0|30 3.0",
                                "100 AcDbViewportTableRecord|2 *Active|70 0|10 0.0|20 0.0|11 1.0|21 1.0"});
}

}  // namespace
