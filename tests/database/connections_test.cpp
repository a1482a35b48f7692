#include "tests/database/fake_engines.h"

namespace {

// The file has to be there; what it is doesn't matter to an engine without data.
const wchar_t* const fileA = L"/proc/self/maps";
const wchar_t* const fileB = L"/proc/self/status";

using Connections = FakeEngines;

TEST_F(Connections, TheSamePathAndAccessTouchNothing) {
  EXPECT_EQ(connect(fileA), L"T ");
  EXPECT_EQ(connect(L"\\PROC/self\\MAPS"), L"T ") << "case and kind of slash don't matter";
  EXPECT_EQ(engines.size(), 1u);
  EXPECT_EQ(engines[0].log, L"Connect ");
}

TEST_F(Connections, OtherAccessClosesAndOpensAnew) {
  connect(fileA, L"w");
  EXPECT_EQ(connect(fileA, L"W"), L"T ") << "any other word than w is read-only";
  ASSERT_EQ(engines.size(), 2u);
  EXPECT_EQ(engines[0].log, L"Connect CloseDatabase ");
  EXPECT_FALSE(engines[1].writable);
  EXPECT_EQ(engines[0].references, 0u);
}

TEST_F(Connections, EachDrawingGetsItsOwnBackWithoutConnecting) {
  connect(fileA);
  openDrawing(L"B.dwg");
  EXPECT_EQ(activeName(), L"nil ");
  connect(fileB);
  EXPECT_EQ(activeName(), L"/data//proc/self/status ");
  activate(L"A.dwg");
  EXPECT_EQ(activeName(), L"/data//proc/self/maps ");
  activate(L"B.dwg");
  EXPECT_EQ(activeName(), L"/data//proc/self/status ");
  for (const FakeEngine& each : engines) EXPECT_EQ(each.log, L"Connect ");
}

TEST_F(Connections, MissingFilesAndClassesAreQuiet) {
  EXPECT_EQ(connect(L"/nowhere/at all.kv"), L"nil ");
  EXPECT_EQ(code, 0);
  EXPECT_EQ(host::commandLine().takeRecord(), L"");
  EXPECT_EQ(served(acutBuildList(RTREAL, 1.0, RTNONE), [] { code = zbConnect(); }), L"nil ");
  EXPECT_EQ(code, 2);
}

TEST_F(Connections, AFailureIsReportedAndRaisedWhenAskedFor) {
  prepare = [](FakeEngine& engine) {
    engine.connectAnswers = {L""};
    engine.errors = {{3343, L"Not a database."}};
  };
  EXPECT_EQ(connect(fileA), L"nil ");
  EXPECT_EQ(code, 0);
  EXPECT_EQ(host::commandLine().takeRecord(), L"\nZarbo Error: (3343) Not a database.");
  EXPECT_EQ(lastErrorText(), L"(3343) Not a database.");
  resbuf* const arguments = acutBuildList(RTSTR, fileA, RTSTR, L"w", RTT, RTNONE);
  EXPECT_EQ(served(arguments, [] { code = zbConnect(); }), L"nil ");
  EXPECT_EQ(code, 4);
  EXPECT_EQ(activeName(), L"nil ");
}

TEST_F(Connections, ARefusalWithoutAnErrorGoesOn) {
  prepare = [](FakeEngine& engine) { engine.connectAnswers = {L""}; };
  EXPECT_EQ(connect(fileA), L"T ");
}

TEST_F(Connections, LostServersAreForgottenEverywhere) {
  connect(fileA);
  openDrawing(L"B.dwg");
  connect(fileB);
  for (FakeEngine& each : engines) each.connected = false;
  EXPECT_EQ(activeName(), L"nil ");
  for (const FakeEngine& each : engines) EXPECT_EQ(each.references, 0u);
  activate(L"A.dwg");
  EXPECT_EQ(activeName(), L"nil ");
}

TEST_F(Connections, ADatabaseThatWasClosedStaysClosed) {
  connect(fileA);
  served(nullptr, [] { zbCloseDb(); });
  EXPECT_EQ(served(nullptr, [] { zbReadonly(); }), L"nil ") << "the engine is still asked";
  engines[0].log.clear();
  ensureConnection();
  EXPECT_EQ(engines[0].log, L"CloseDatabase ") << "each later call closes once more";
  EXPECT_EQ(connect(fileB), L"T ");
}

TEST_F(Connections, SavingUnderAnotherNameCloses) {
  connect(fileA);
  closeWhenRenamed(L"A.dwg");
  EXPECT_TRUE(engines[0].open);
  closeWhenRenamed(L"/drawings/a.dwg");
  EXPECT_FALSE(engines[0].open);
  host::documents().current()->setFileName(L"/drawings/a.dwg");
  EXPECT_EQ(activeName(), L"nil ") << "no record knows the new name";
  EXPECT_EQ(connect(fileA), L"T ");
}

TEST_F(Connections, ClosingADrawingReleasesItsConnection) {
  connect(fileA);
  openDrawing(L"B.dwg");
  connect(fileB);
  ensureConnection();
  dropHeadRecord();
  EXPECT_EQ(engines[1].log, L"Connect CloseDatabase ");
  EXPECT_EQ(engines[1].references, 0u);
  host::documents().close(*host::documents().current());
  EXPECT_EQ(activeName(), L"/data//proc/self/maps ");
}

TEST_F(Connections, ErrorsArePrintedByTheirCode) {
  connect(fileA);
  struct Case {
    long error;
    const wchar_t* printed;
  };
  for (const Case& each :
       {Case{3021, L""}, Case{3022, L"\nZarbo Error: (3022) x%s"},
        Case{3043,
             L"\nA disk or network error occurred while trying to access the database."
             L"Try the command again. If it continues to not work, try restarting AutoCAD. If that does "
             L"not fix the error, try restarting your computer."}}) {
    engines[0].errors = {{each.error, L"x%s"}};
    EXPECT_EQ(served(nullptr, [] { EXPECT_TRUE(reportEngineFailure()); }), L"nil ");
    EXPECT_EQ(host::commandLine().takeRecord(), each.printed);
    EXPECT_EQ(lastErrorText(), L"(" + std::to_wstring(each.error) + L") x%s");
  }
  EXPECT_FALSE(reportEngineFailure());
  EXPECT_EQ(lastErrorText(), L"(3043) x%s") << "nothing pending leaves the text";
}

}  // namespace
