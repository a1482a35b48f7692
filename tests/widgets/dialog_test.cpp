#include "zarbo/widgets/dialog.h"

#include <gtest/gtest.h>

#include "host/documents/documents.h"
#include "platform/desktop/scripted.h"

namespace {

TEST(ModuleDialog, RunsUnderTheModulesResources) {
  auto made = std::make_unique<platform::ScriptedDesktop>(nullptr);
  platform::ScriptedDesktop& desktop = *made;
  platform::setDesktop(std::move(made));
  platform::Form form(L"Title");
  size_t pushed = 0;
  form.addButton(3, L"&Third", [&] {
    pushed = host::documents().pushedResources();
    form.close(3);
  });
  desktop.queueDialog({{L"click", {3}}});
  EXPECT_EQ(runModuleDialog(form), platform::okButton);
  EXPECT_EQ(pushed, 1u);
  EXPECT_EQ(form.endedBy(), 3);
  EXPECT_TRUE(desktop.takeBoxes().empty()) << "a button's number is no failure";
  for (const int failure : {-1, 3}) {
    desktop.queueDialog({{L"fail", {failure}}});
    desktop.queueAnswer(platform::BoxAnswer::no);
    EXPECT_EQ(runModuleDialog(form), failure);
    EXPECT_EQ(desktop.takeBoxes().size(), 1u);
  }
  // A handler's exception leaves nothing pushed.
  form.control(3).onPress = [] { throw std::runtime_error("handler"); };
  desktop.queueDialog({{L"click", {3}}});
  EXPECT_THROW(runModuleDialog(form), std::runtime_error);
  EXPECT_EQ(host::documents().pushedResources(), 0u);
  EXPECT_NE(acDocManagerPtr()->popResourceHandle(), Acad::eOk);
  platform::setDesktop(nullptr);
}

}  // namespace
