#include "zarbo/widgets/browse_cells.h"

#include <gtest/gtest.h>

#include "platform/desktop/grid_person.h"
#include "platform/desktop/scripted.h"
#include "tests/support/temporary_folder.h"

namespace {

using platform::Grid;

/// Keeps what choosers were asked, and answers them.
class Choosers : public platform::ScriptedDesktop {
 public:
  Choosers() : ScriptedDesktop(nullptr) {}
  std::optional<std::wstring> chooseFile(const platform::FileChoice& choice) override {
    asked.push_back(choice);
    return answer;
  }
  std::vector<platform::FileChoice> asked;
  std::optional<std::wstring> answer;
};

class Browse : public testing::Test {
 protected:
  Browse() {
    auto made = std::make_unique<Choosers>();
    choosers = made.get();
    platform::setDesktop(std::move(made));
    grid.setColumnChoices(0, browseChoices);
    grid.insertRow();
    folder.write("first.dwg", "");
    folder.write("first.sld", "");
  }
  ~Browse() override { platform::setDesktop(nullptr); }
  /// What the cell holds after "Browse. . ." was chosen.
  std::wstring browse(const std::wstring& before, auto body) {
    grid.setText(1, 0, before);
    grid.onChoice = [&](int row, int column, const std::wstring& chosen) {
      body(grid, row, column, chosen, folder.path().wstring());
    };
    platform::GridPerson person(grid);
    EXPECT_TRUE(person.open(1, 0) && person.choose(L"Browse. . ."));
    return grid.text(1, 0);
  }
  TemporaryFolder folder;
  Choosers* choosers = nullptr;
  Grid grid{1};
};

TEST_F(Browse, StartsFromTheCellsNameOrTheFirstFile) {
  struct Case {
    const wchar_t *before, *name;
  };
  for (const Case& each : {Case{L"door ", L"door"},
                           {L"a:<b>\"c\\d/e|", L"abcde"},
                           {L"<2D Block Name>-3d", L"first.dwg"},
                           {L"", L"first.dwg"}}) {
    choosers->answer = L"C:\\Blocks\\win.dow.dwg";
    EXPECT_EQ(browse(each.before, BrowseBlockCell), L"win.dow");
    const platform::FileChoice& asked = choosers->asked.back();
    EXPECT_EQ(asked.name, each.name);
    EXPECT_EQ(asked.folder, folder.path().wstring());
    EXPECT_TRUE(asked.open && asked.mustExist);
    EXPECT_EQ(asked.defaultExtension, L"dwg");
    EXPECT_EQ(asked.filters.at(0).first, L"Drawing (*.dwg)");
  }
}

TEST_F(Browse, SlidesKeepTheirNameAsItIs) {
  choosers->answer = L"/slides/one.sld";
  EXPECT_EQ(browse(L"a<b ", BrowseSlideCell), L"one");
  EXPECT_EQ(choosers->asked.back().name, L"a<b");
  EXPECT_EQ(choosers->asked.back().filters.at(0).first, L"Slide Files (*.sld)");
  browse(L"", BrowseSlideCell);
  EXPECT_EQ(choosers->asked.back().name, L"first.sld");
}

TEST_F(Browse, WithoutAFileTheCellKeepsItsText) {
  EXPECT_EQ(browse(L"door ", BrowseBlockCell), L"door ");
  EXPECT_EQ(browse(L"", BrowseSlideCell), L"");
  choosers->asked.clear();
  BrowseSlideCell(grid, 1, 0, L"Select custom block. . .", L"");
  BrowseBlockCell(grid, 1, 0, L"door", L"");
  EXPECT_TRUE(choosers->asked.empty());
}

}  // namespace
