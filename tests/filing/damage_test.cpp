#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include "brx/db_proxy.h"
#include "host/database/stubs.h"
#include "host/filing/files.h"
#include "host/filing/snapshot_chunks.h"
#include "tests/filing/drawings.h"
#include "tests/filing/mixed_drawing.h"
#include "tests/support/temporary_folder.h"

namespace {

std::string smallDrawing() {
  AcDbDatabase drawing;
  drawMixed(drawing, 10);
  return written(drawing);
}

TEST(DxfDamage, CutOffAnywhereKeepsWhatStoodBefore) {
  const std::string whole = smallDrawing();
  const size_t entitiesStart = whole.find("  2\nENTITIES\n"), objectsStart = whole.find("  2\nOBJECTS\n");
  // Every byte of some objects, and steps through the rest.
  for (size_t length = 0;
       length<whole.size(); length += length> entitiesStart && length < entitiesStart + 400 ? 1 : 97) {
    const ReadDrawing read(std::string_view(whole).substr(0, length));
    EXPECT_TRUE(read.report.count() || read.status != Acad::eOk) << length;
    if (length > objectsStart) {
      EXPECT_EQ(read.space().entityIds().size(), 15u) << length;
    }
    if (read.status == Acad::eOk) {
      const ReadDrawing again(written(*read.drawing));
      EXPECT_EQ(again.space().entityIds().size(), read.space().entityIds().size()) << length;
    }
  }
}

TEST(DxfDamage, ChangedBytesNeverDoHarm) {
  const std::string whole = smallDrawing();
  unsigned random = 1;
  const auto next = [&](size_t below) { return (random = random * 1103515245u + 12345u) / 7 % below; };
  for (int round = 0; round < 300; ++round) {
    std::string changed = whole;
    for (int i = 0; i < 5; ++i) changed[next(changed.size())] = "\n0 9A-.\xFF{"[next(9)];
    const ReadDrawing read(changed);
    if (read.status == Acad::eOk) {
      EXPECT_EQ(ReadDrawing(written(*read.drawing)).status, Acad::eOk);
    }
  }
}

struct Fault {
  const char* entities;
  const wchar_t* message;
  size_t kept;  // entities in model space
};

TEST(DxfDamage, FaultsAreToldAndMended) {
  const Fault faults[] = {
      {"0 CIRCLE|5 A1|8 0|10 nan|20 inf|30 0|40 1.0", L"a finite number is expected", 1},
      {"0 CIRCLE|5 A1|8 0|10 1e999|20 0|30 0|40 abc", L"a finite number is expected", 1},
      {"0 POINT|5 A1|8 0|10 0|20 0|0 POINT|5 A1|8 0|10 1|20 1", L"another object has this handle", 2},
      {"0 POINT|5 FFFFFFFFFFFFFFFF|8 0|10 0|20 0", L"another object has this handle", 1},
      {"0 POINT|8 nowhere|10 0|20 0", L"layer 'nowhere' is in no table", 1},
      {"0 LINE|8 0|6 dotted|10 0|20 0|11 1|21 1", L"linetype 'dotted' is in no table", 1},
      {"0 INSERT|8 0|2 missing|10 0|20 0", L"block 'missing' is in no table", 1},
      {"0 POLYLINE|8 0|66 1|70 0|0 VERTEX|8 0|10 0|20 0|0 POINT|8 0|10 0|20 0", L"the end of the sequence",
       2},
      {"0 VERTEX|8 0|10 0|20 0|0 POINT|8 0|10 0|20 0", L"belongs to no entity", 1},
      {"0 LINE|100 AcDbEntity|8 0|100 AcDbOther|10 0|20 0", L"can't be read as what it is", 1},
      {"0 POINT|8 0|10 0|20 0|70 x|62 1.5", L"a whole number is expected", 1},
      {"0 POINT|8 0|10 0|20 0|1072 0|0 POINT|8 0|10 0|20 0", L"a group code is expected", 2},
      {"0 POINT|8 0|10 0|20 0|1001 NEWAPP|1000 x", L"application 'NEWAPP' is in no table", 1},
  };
  for (const Fault& fault : faults) {
    const ReadDrawing read(entities(fault.entities));
    EXPECT_TRUE(read.says(fault.message)) << fault.entities << "\n" << read.messages();
    EXPECT_EQ(read.space().entityIds().size(), fault.kept) << fault.entities;
    if (!read.says(L"kept as it came")) {
      EXPECT_EQ(ReadDrawing(written(*read.drawing)).messages(), "") << fault.entities;
    }
  }
}

TEST(DxfDamage, BlocksThatContainThemselvesLoseTheReference) {
  const auto block = [](std::string_view name, std::string_view holds) {
    return "0 BLOCK|8 0|2 " + std::string(name) + "|70 0|10 0|20 0|0 INSERT|8 0|2 " + std::string(holds) +
           "|10 0|20 0|0 ENDBLK|8 0|";
  };
  std::string blocks = block("A", "B") + block("B", "C") + block("C", "A") + block("SELF", "SELF");
  blocks.pop_back();
  const ReadDrawing read(section("BLOCKS", blocks) + entities("0 INSERT|8 0|2 A|10 0|20 0"));
  EXPECT_TRUE(read.says(L"would contain itself"));
  EXPECT_EQ(read.report.count(), 2u) << read.messages();
  AcDbExtents extents;
  EXPECT_EQ(read.entity(0)->getGeomExtents(extents), Acad::eInvalidExtents) << "and is not endless";
}

TEST(DxfDamage, LongLinesAndDeepNesting) {
  const std::string longText(10'000'000, 'x');
  const ReadDrawing read(entities("0 TEXT|8 0|10 0|20 0|40 1|1 " + longText));
  ASSERT_TRUE(read.entity<AcDbText>(0));
  EXPECT_EQ(std::wcslen(read.entity<AcDbText>(0)->textString()), longText.size());
  std::string blocks;
  for (int i = 0; i < 20000; ++i) {
    blocks += "0 BLOCK|8 0|2 N" + std::to_string(i) + "|70 0|10 0|20 0|0 INSERT|8 0|2 N" +
              std::to_string(i + 1) + "|10 0|20 0|0 ENDBLK|8 0|";
  }
  blocks.pop_back();
  EXPECT_EQ(ReadDrawing(section("BLOCKS", blocks) + entities("0 INSERT|8 0|2 N0|10 0|20 0")).status,
            Acad::eOk);
}

class SnapshotDamage : public testing::Test {
 protected:
  void SetUp() override {
    AcDbDatabase drawing;
    drawMixed(drawing, 10);
    ASSERT_EQ(host::writeDrawingFile(drawing, folder.wide("a.dwg")), Acad::eOk);
    bytes = folder.read("a.dwg");
  }
  /// What the reading of changed bytes answers; nothing may be filled in unless it is done.
  Acad::ErrorStatus read(const std::string& changed) {
    folder.write("b.dwg", changed);
    AcDbDatabase drawing(false);
    const Acad::ErrorStatus status = host::readDrawingFile(drawing, folder.wide("b.dwg"), report);
    if (status != Acad::eOk) {
      EXPECT_TRUE(drawing.modelSpaceId().isNull());
    }
    return status;
  }
  TemporaryFolder folder;
  std::string bytes;
  host::FilingReport report;
};

TEST_F(SnapshotDamage, AnyCutOrChangeIsRefused) {
  for (size_t length = 0; length < bytes.size(); length += 1 + length / 50) {
    EXPECT_NE(read(bytes.substr(0, length)), Acad::eOk) << length;
  }
  for (size_t at = 0; at < bytes.size(); at += 1 + at / 50) {
    std::string changed = bytes;
    changed[at] = static_cast<char>(changed[at] ^ 0x10);
    EXPECT_NE(read(changed), Acad::eOk) << at;
  }
}

TEST_F(SnapshotDamage, OtherFilesAreToldApart) {
  EXPECT_EQ(read("AC1032\0\0\0\0genuine"), Acad::eNotImplementedYet);
  EXPECT_NE(report.messages().back().text.find(L"DWG"), std::wstring::npos);
  EXPECT_EQ(read("no drawing at all"), Acad::eFilerError);
  EXPECT_EQ(read(""), Acad::eFilerError);
  std::string newer = bytes;
  newer[8] = static_cast<char>(host::snapshotVersion + 1);
  EXPECT_EQ(read(newer), Acad::eInvalidDwgVersion);
  AcDbDatabase drawing(false);
  EXPECT_EQ(host::readDrawingFile(drawing, folder.wide("none.dwg"), report), Acad::eFileNotFound);
  EXPECT_EQ(host::readDrawingFile(drawing, folder.path().wstring(), report), Acad::eFileAccessErr);
}

/// A process that saves without end is killed at many moments; one of its files is always there, whole.
TEST_F(SnapshotDamage, AKilledWriterLosesNeitherOldNorNew) {
  for (const char* const name : {"a.dwg", "a.dxf"}) {
    AcDbDatabase drawing;
    drawMixed(drawing, 500);
    ASSERT_EQ(host::writeDrawingFile(drawing, folder.wide(name)), Acad::eOk);
    for (useconds_t wait = 500; wait < 30000; wait += 1500) {
      const pid_t child = fork();
      if (child == 0) {
        for (;;) host::writeDrawingFile(drawing, folder.wide(name));
      }
      usleep(wait);
      kill(child, SIGKILL);
      waitpid(child, nullptr, 0);
      AcDbDatabase again(false);
      ASSERT_EQ(host::readDrawingFile(again, folder.wide(name), report), Acad::eOk) << wait;
      const auto& space = static_cast<AcDbBlockTableRecord&>(*again.modelSpaceId().stub()->object);
      ASSERT_EQ(space.entityIds().size(), 505u);
      ASSERT_EQ(report.count(), 0u);
    }
  }
}

TEST_F(SnapshotDamage, AFullOrForbiddenPlaceLeavesTheOldFile) {
  AcDbDatabase drawing;
  EXPECT_EQ(host::writeDrawingFile(drawing, folder.wide("nowhere/a.dwg")), Acad::eFileAccessErr);
  EXPECT_EQ(host::writeDrawingFile(drawing, folder.path().wstring()), Acad::eFileAccessErr);
}

class TestMark : public AcDbPoint {
 public:
  ACRX_DECLARE_MEMBERS(TestMark)
};
ACRX_DEFINE_MEMBERS(TestMark)

/// A module's class of entities, known to drawing files as TESTMARK.
struct ModuleClass {
  ModuleClass() {
    TestMark::gpDesc = newAcRxClass(
        L"TestMark", L"AcDbPoint", []() -> AcRxObject* { return new TestMark; }, L"TESTMARK");
    acrxBuildClassHierarchy();
  }
  ~ModuleClass() { deleteAcRxClass(TestMark::gpDesc); }
};

TEST(DxfDamage, AModulesClassRevivesWhatIsItsOwnAlone) {
  const ReadDrawing read(
      section("HEADER", "9 $ACADVER|1 AC1027") +
      section("ENTITIES",
              "0 TESTMARK|5 51|100 AcDbEntity|8 0|100 AcDbPoint|10 1|20 2|30 3|"
              "0 DICTIONARY|5 52|100 AcDbDictionary|281 1|"
              "0 POLYLINE|5 53|100 AcDbEntity|8 0|66 1|100 AcDbPolygonMesh|10 0|20 0|70 16|71 2|72 2|"
              "0 VERTEX|5 54|100 AcDbEntity|8 0|100 AcDbVertex|10 7|20 0|30 0|70 64|"
              "0 SEQEND|5 55|100 AcDbEntity|8 0") +
      section("OBJECTS",
              "0 LINE|5 40|100 AcDbEntity|8 0|100 AcDbLine|10 0|20 0|11 1|21 1|"
              "0 TESTMARK|5 41|100 AcDbEntity|8 0|100 AcDbPoint|10 1|20 2|30 3|"
              "0 LAYER|5 42|100 AcDbSymbolTableRecord|2 x") +
      groups("0 EOF"));
  const std::string before = written(*read.drawing);
  {
    const ModuleClass here;
    ASSERT_TRUE(read.entity<AcDbPoint>(0));
    EXPECT_EQ(read.entity<AcDbPoint>(0)->position(), AcGePoint3d(1, 2, 3));
    EXPECT_TRUE(read.entity<AcDbProxyEntity>(1)) << "a dictionary is no entity";
    EXPECT_TRUE(read.entity<AcDbProxyEntity>(2)) << "what the host has kept is none of the module's";
    for (const AcDbHandle handle : {0x40, 0x41, 0x42}) {
      EXPECT_TRUE(AcDbProxyObject::cast(read.drawing->imp().find(handle)->object)) << handle;
    }
  }
  EXPECT_EQ(written(*read.drawing), before);
}

}  // namespace
