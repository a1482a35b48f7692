#include "zarbo/dialogs/linetype_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include "brx/db_services.h"
#include "brx/db_tables.h"
#include "host/documents/documents.h"
#include "platform/desktop/scripted.h"

namespace {

using testing::ElementsAre;

class Linetypes : public testing::Test {
 protected:
  Linetypes() {
    auto made = std::make_unique<platform::ScriptedDesktop>(nullptr);
    desktop = made.get();
    platform::setDesktop(std::move(made));
    host::documents().create(L"");
    add(L"Dashed", L"Dashed __ __");
    add(L"Dotted", L"Dotted . . .");
  }
  ~Linetypes() override {
    host::documents().closeAll();
    host::documents().discardClosed();
    platform::setDesktop(nullptr);
  }
  static AcDbLinetypeTable* table(AcDb::OpenMode mode) {
    AcDbLinetypeTable* opened = nullptr;
    acdbHostApplicationServices()->workingDatabase()->getSymbolTable(opened, mode);
    return opened;
  }
  static void add(const wchar_t* name, const wchar_t* comments) {
    AcDbLinetypeTable* const types = table(AcDb::kForWrite);
    auto* const record = new AcDbLinetypeTableRecord;
    record->setName(name);
    record->setPattern(comments, {1, -1});
    types->add(record);
    record->close();
    types->close();
  }
  std::wstring choose(const std::wstring& current, platform::FormScript script) {
    desktop->queueDialog(std::move(script));
    CAcadLinetypeDialog dialog(current);
    dialog.doModal();
    return dialog.linetype();
  }
  platform::ScriptedDesktop* desktop = nullptr;
};

std::vector<std::wstring> firstColumn(const platform::ScriptValue& grid) {
  std::vector<std::wstring> texts;
  for (const auto& row : std::get<platform::ScriptList>(grid)) {
    texts.push_back(std::get<std::wstring>(std::get<platform::ScriptList>(row).at(0)));
  }
  return texts;
}

TEST_F(Linetypes, OffersThoseOfTheDrawingAndPreselectsTheCurrent) {
  EXPECT_EQ(choose(L"DOTTED", {{L"title", {}}, {L"grid", {1048}}, {L"edit", {1048, 1, 0}}, {L"click", {1}}}),
            L"Continuous")
      << "to edit goes to the row, and nothing more";
  const platform::ScriptList log = desktop->takeDialogLog();
  EXPECT_EQ(std::get<std::wstring>(log.at(0)), L"Select Linetype");
  EXPECT_THAT(firstColumn(log.at(1)), ElementsAre(L"Linetype", L"Continuous", L"Dashed", L"Dotted"));
  EXPECT_EQ(choose(L"DOTTED", {{L"click", {1}}}), L"Dotted");
  // For people to look at.
  if (const char* const folder = std::getenv("ZARBO_SHOTS")) {
    const std::wstring shots(folder, folder + std::strlen(folder));
    choose(L"Dotted", {{L"shot", {shots + L"/linetypes.png"}},
                       {L"shot", {shots + L"/linetypes_dark.png", 380, 240, std::wstring(L"dark")}}});
  }
  EXPECT_EQ(choose(L"none of them", {{L"click", {1}}}), L"Continuous");
  EXPECT_EQ(choose(L"Dotted", {{L"select", {1048, 2}}, {L"click", {1}}}), L"Dashed");
  EXPECT_EQ(choose(L"given", {{L"select", {1048, 2}}, {L"click", {2}}}), L"given");
}

TEST_F(Linetypes, ErasedOnesAreGone) {
  AcDbLinetypeTable* const types = table(AcDb::kForRead);
  for (const AcDbObjectId& id : types->recordIds()) {
    AcDbObjectPointer<AcDbLinetypeTableRecord> record(id, AcDb::kForWrite);
    if (record->getName() == L"Dashed") record->erase();
  }
  types->close();
  EXPECT_EQ(choose(L"Dashed", {{L"grid", {1048}}, {L"click", {1}}}), L"Continuous");
  EXPECT_THAT(firstColumn(desktop->takeDialogLog().at(0)),
              ElementsAre(L"Linetype", L"Continuous", L"Dotted"));
}

TEST_F(Linetypes, WithoutADrawingThereIsNothingToChoose) {
  AcDbDatabase* const former = acdbHostApplicationServices()->workingDatabase();
  acdbHostApplicationServices()->setWorkingDatabase(nullptr);
  EXPECT_EQ(choose(L"Dashed", {{L"click", {1}}}), L"");
  acdbHostApplicationServices()->setWorkingDatabase(former);
}

}  // namespace
