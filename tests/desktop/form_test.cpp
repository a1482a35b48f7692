#include "platform/desktop/form.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/desktop/form_person.h"
#include "platform/desktop/grid_person.h"
#include "platform/desktop/scripted.h"

namespace {

using namespace platform;
using testing::ElementsAre;

TEST(Form, ButtonsEndItAndTellWhich) {
  Form form(L"Title");
  form.addOkAndCancel();
  form.addButton(3, L"&Third", [&] { form.close(3); });
  form.addButton(4, L"F&ourth");
  FormPerson person(form);
  const std::pair<int, int> results[] = {{1, okButton}, {2, cancelButton}, {3, okButton}};
  for (const auto& [button, result] : results) {
    form.open();
    EXPECT_TRUE(person.press(4)) << "without a handler it does nothing";
    EXPECT_FALSE(form.isClosed());
    EXPECT_TRUE(person.press(button));
    EXPECT_EQ(form.endedBy(), button);
    EXPECT_EQ(form.result(), result) << "never a failure's number";
    EXPECT_FALSE(person.press(button)) << "closed";
  }
  form.open();
  form.control(2).setEnabled(false);
  person.cancel();
  EXPECT_FALSE(form.isClosed());
  EXPECT_THROW(form.addEdit(3), std::logic_error);
  EXPECT_THROW(form.control(99), std::logic_error);
  EXPECT_THROW(form.grid(1), std::logic_error);
}

TEST(Form, CommitsAnOpenCellBeforeAButtonActs) {
  Form form(L"Title");
  Grid& grid = form.addGrid(1048, 1);
  grid.insertRow();
  form.addOkAndCancel();
  std::wstring atOk;
  form.control(okButton).onPress = [&] { atOk = grid.text(1, 0); };
  FormPerson person(form);
  GridPerson(grid).open(1, 0);
  GridPerson(grid).type(L"typed");
  EXPECT_TRUE(person.press(okButton));
  EXPECT_EQ(atOk, L"typed");
  // What hears of the commit may still stop the button.
  grid.onEndEdit = [&](int, int) { form.control(okButton).setEnabled(false); };
  atOk.clear();
  GridPerson(grid).open(1, 0);
  EXPECT_FALSE(person.pressEnter());
  EXPECT_EQ(atOk, L"");
  GridPerson(grid).open(1, 0);
  GridPerson(grid).type(L"lost");
  EXPECT_TRUE(person.press(cancelButton));
  EXPECT_EQ(grid.text(1, 0), L"typed");
}

TEST(Form, ListsFindAndFollowTheirEntries) {
  Form form(L"Title");
  Control& list = form.addListBox(1013, {L"Alpha", L"b", L"c"});
  int changes = 0;
  list.onChange = [&] { ++changes; };
  list.select(2);
  EXPECT_EQ(changes, 0);
  EXPECT_TRUE(FormPerson(form).select(1013, 1));
  EXPECT_FALSE(FormPerson(form).select(1013, 3));
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(list.findItem(L"ALPHA"), 0);
  EXPECT_EQ(list.findItem(L"Alph"), -1);
  list.removeItem(0);
  EXPECT_EQ(list.selected(), 0);
  list.removeItem(0);
  EXPECT_EQ(list.selected(), -1);
  list.removeItem(5);
  EXPECT_THAT(list.items(), ElementsAre(L"c"));
}

FormScript script(std::initializer_list<ScriptAction> actions) { return actions; }

TEST(ScriptedDialogs, NestAndRunOut) {
  ScriptedDesktop desktop(nullptr);
  Form outer(L"Outer"), inner(L"Inner");
  outer.addOkAndCancel();
  inner.addOkAndCancel();
  int innerResult = 0;
  outer.control(okButton).onPress = [&] {
    innerResult = desktop.runDialog(inner);
    outer.close();
  };
  desktop.queueDialog(script({{L"click", {1}}, {L"title", {}}}));
  desktop.queueDialog(script({{L"title", {}}}));
  EXPECT_EQ(desktop.runDialog(outer), okButton);
  EXPECT_EQ(innerResult, cancelButton) << "its actions ran out";
  EXPECT_EQ(std::get<std::wstring>(desktop.takeDialogLog().at(0)), L"Inner");
  testing::internal::CaptureStderr();
  EXPECT_EQ(desktop.runDialog(outer), cancelButton);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "dialog needs a window or answers, cancelled: Outer\n");
}

TEST(ScriptedDialogs, GiveFailuresAndWhatHandlersThrow) {
  ScriptedDesktop desktop(nullptr);
  Form form(L"Title");
  form.addButton(1, L"&OK", [] { throw std::runtime_error("handler"); });
  desktop.queueDialog(script({{L"fail", {-1}}}));
  EXPECT_EQ(desktop.runDialog(form), dialogFailed);
  desktop.queueDialog(script({{L"click", {1}}}));
  EXPECT_THROW(desktop.runDialog(form), std::runtime_error);
}

}  // namespace
