#include "brx/db_calls.h"
#include "brx/db_proxy.h"
#include "brx/db_text.h"
#include "host/filing/dxf_tokens.h"
#include "host/filing/files.h"
#include "tests/filing/drawings.h"
#include "tests/filing/mixed_drawing.h"
#include "tests/support/temporary_folder.h"

namespace {

TEST(DxfRoundTrip, SecondWritingIsTheFirst) {
  AcDbDatabase drawing;
  drawMixed(drawing, 200);
  const std::string first = written(drawing);
  const ReadDrawing read(first);
  EXPECT_EQ(read.messages(), "");
  EXPECT_TRUE(written(*read.drawing) == first);
}

TEST(DxfRoundTrip, WhatTheHostDoesNotKnowComesThrough) {
  const std::string file =
      section("HEADER", "9 $ACADVER|1 AC1027|9 $NOVELTY|40 2.5") +
      section("CLASSES", "0 CLASS|1 WIDGET|2 AcDbWidget|3 Somebody|90 0|91 1|280 0|281 1") +
      section("TABLES",
              "0 TABLE|2 LAYER|5 2|330 0|100 AcDbSymbolTable|70 1|"
              "0 LAYER|5 10|330 2|100 AcDbSymbolTableRecord|100 AcDbLayerTableRecord|2 xref$0$a|70 0|62 3|6 "
              "Continuous|348 77|"
              "0 ENDTAB|0 TABLE|2 GADGETS|5 3|330 0|100 AcDbSymbolTable|70 1|0 GADGET|5 11|330 3|2 one|0 "
              "ENDTAB") +
      section("ENTITIES",
              "0 LINE|5 20|102 {MYAPP|40 1.5|102 }|330 1F|100 AcDbEntity|8 xref$0$a|440 33554559|100 "
              "AcDbLine|10 1.0|20 2.0|"
              "30 0.0|11 3.0|21 4.0|31 0.0|1001 MYAPP|1000 text|1004 0AFF|"
              "0 WIDGET|5 21|330 1F|100 AcDbEntity|8 0|92 3|310 ABCDEF|100 AcDbWidget|10 5.0|20 6.0|50 "
              "30.5|340 20|290 1|160 5000000000") +
      section("OBJECTS",
              "0 DICTIONARY|5 C|330 0|100 AcDbDictionary|281 1|3 MINE|350 30|"
              "0 WIDGETDATA|5 30|330 C|100 AcDbWidgetData|91 -5|1 a^Jb|340 21|40 1e300") +
      section("ACDSDATA", "70 2|71 6|0 ACDSSCHEMA|90 0|1 Prototype") + groups("0 EOF");
  const ReadDrawing read(file);
  EXPECT_EQ(read.status, Acad::eOk);
  const std::string second = written(*read.drawing);
  for (const char* const expected :
       {"9 $NOVELTY|40 2.5", "1 WIDGET|2 AcDbWidget|3 Somebody", "2 GADGETS|", "0 GADGET|5 11", "348 0",
        "102 {MYAPP|40 1.5|102 }", "440 33554559", "1004 0AFF", "92 3|310 ABCDEF",
        "100 AcDbWidget|10 5.0|20 6.0|50 30.5|340 20|290 1|160 5000000000", "3 MINE|350 30",
        "0 WIDGETDATA|5 30|330 C|100 AcDbWidgetData|91 -5|1 a^Jb|340 21|40 1e+300",
        "2 ACDSDATA|70 2|71 6|0 ACDSSCHEMA|90 0|1 Prototype"}) {
    std::string plain = second;
    // Codes are padded with blanks.
    for (size_t at = 0; (at = plain.find("\n ", at)) != std::string::npos;) plain.erase(at + 1, 1);
    EXPECT_NE(plain.find(groups(expected)), std::string::npos) << expected;
  }
}

TEST(DxfRoundTrip, KnownPropertiesWinOverKeptGroups) {
  const ReadDrawing read(
      entities("0 LINE|100 AcDbEntity|8 0|62 256|100 AcDbLine|10 0.0|20 0.0|11 1.0|21 1.0"));
  ASSERT_TRUE(read.entity<AcDbLine>(0));
  AcDbObjectPointer<AcDbLine>(read.space().entityIds()[0], AcDb::kForWrite)->setColorIndex(3);
  const std::string second = written(*read.drawing);
  EXPECT_NE(second.find(" 62\n3\n"), std::string::npos);
  EXPECT_EQ(second.find(" 62\n256\n", second.find("ENTITIES")), std::string::npos);
}

TEST(DxfRoundTrip, OldFilesAreBroughtUpToDate) {
  const std::string file =
      section("HEADER", "9 $ACADVER|1 AC1009|9 $DWGCODEPAGE|3 ANSI_1252") +
      section("TABLES", "0 TABLE|2 LAYER|70 1|0 LAYER|2 W\xE4nde|70 0|62 5|6 CONTINUOUS|0 ENDTAB") +
      section("BLOCKS",
              "0 BLOCK|8 0|2 B1|70 0|10 1.0|20 2.0|30 0.0|3 B1|0 CIRCLE|8 W\xE4nde|10 0.0|20 0.0|30 0.0|40 "
              "2.5|0 ENDBLK|8 0") +
      section("ENTITIES",
              "0 INSERT|8 0|2 B1|10 5.0|20 5.0|30 0.0|50 90.0|"
              "0 POLYLINE|8 W\xE4nde|66 1|70 1|10 0.0|20 0.0|30 0.0|0 VERTEX|8 0|10 0.0|20 0.0|30 0.0|0 "
              "VERTEX|8 0|10 4.0|20 0.0|"
              "30 0.0|42 0.5|0 SEQEND|8 0|0 TEXT|8 0|10 0.0|20 0.0|30 0.0|40 1.0|1 \xD8 100") +
      groups("0 EOF");
  const ReadDrawing read(file);
  EXPECT_EQ(read.messages(), "");
  ASSERT_TRUE(read.entity<AcDbBlockReference>(0) && read.entity(1) && read.entity<AcDbText>(2));
  EXPECT_EQ(read.entity(1)->layer(), L"Wände");
  EXPECT_EQ(std::wstring(read.entity<AcDbText>(2)->textString()), L"Ø 100");
  EXPECT_TRUE(AcDbObjectPointer<AcDbBlockTableRecord>(read.entity<AcDbBlockReference>(0)->blockTableRecord())
                  ->origin()
                  .isEqualTo({1, 2, 0}));
  const std::string second = written(*read.drawing);
  EXPECT_NE(second.find("AC1021"), std::string::npos);
  EXPECT_NE(second.find("100\nAcDb2dVertex\n"), std::string::npos);
  EXPECT_EQ(ReadDrawing(second).messages(), "");
}

/// The groups of a text file in the binary form, with codes of two bytes (or one, as old files have it).
std::string binaryForm(std::string_view text, bool old) {
  std::string made("AutoCAD Binary DXF\r\n\x1a\0", 22);
  host::FilingReport report;
  host::DxfTokens tokens(text, report);
  const auto put = [&](const void* value, size_t size) {
    made.append(static_cast<const char*>(value), size);
  };
  for (host::DxfGroup group; tokens.next(group);) {
    const auto code = static_cast<uint16_t>(group.code);
    if (old && code >= 255) made += '\xFF';
    put(&code, old && code < 255 ? 1 : 2);
    int64_t whole = 0;
    double real = 0;
    switch (host::wireKind(group.code)) {
      case host::WireKind::real:
        group.real(real), put(&real, 8);
        break;
      case host::WireKind::int16:
        group.integer(whole), put(&whole, 2);
        break;
      case host::WireKind::int32:
        group.integer(whole), put(&whole, 4);
        break;
      case host::WireKind::int64:
        group.integer(whole), put(&whole, 8);
        break;
      case host::WireKind::boolean:
        group.integer(whole), put(&whole, 1);
        break;
      default:
        made += std::string(group.raw) + '\0';
    }
  }
  return made;
}

TEST(DxfRoundTrip, BinaryFilesAreReadLikeTextFiles) {
  AcDbDatabase drawing;
  drawMixed(drawing, 50);
  const std::string text = written(drawing);
  for (const bool old : {false, true}) {
    const ReadDrawing read(binaryForm(text, old));
    EXPECT_EQ(read.messages(), "");
    EXPECT_TRUE(written(*read.drawing) == text);
  }
}

TEST(Files, SnapshotsKeepAll) {
  const TemporaryFolder folder;
  AcDbDatabase drawing;
  drawMixed(drawing, 200);
  drawing.setDimscale(48);
  const std::string before = written(drawing);
  ASSERT_EQ(host::writeDrawingFile(drawing, folder.wide("a.dwg")), Acad::eOk);
  AcDbDatabase again(false);
  host::FilingReport report;
  ASSERT_EQ(host::readDrawingFile(again, folder.wide("a.dwg"), report), Acad::eOk);
  EXPECT_EQ(report.count(), 0u);
  EXPECT_TRUE(written(again) == before);
  EXPECT_EQ(again.dimscale(), 48);
  EXPECT_EQ(host::readDrawingFile(again, folder.wide("a.dwg"), report), Acad::eNotApplicable);
}

}  // namespace
