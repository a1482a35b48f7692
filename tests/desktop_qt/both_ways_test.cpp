// One form with every kind of control, played by the same scripts on the description and on widgets: what the
// actions ask and what the handlers hear must be the same.
#include <gtest/gtest.h>

#include <memory>

#include "platform/desktop/form_script.h"
#include "platform/desktop/toolkit.h"

extern "C" platform::FormStage* makeFormStage();

namespace {

using namespace platform;

enum Number { name = 10, notes, box, list, colours, table, move, more, status };

/// A form that writes down what its handlers hear, among what the script asks.
class Sample {
 public:
  explicit Sample(std::function<int(Form&)> run) : run_(std::move(run)) {
    form_.addEdit(name, L"first").onChange = [this] { hear(L"name " + form_.text(name)); };
    form_.addMultiLineEdit(notes, L"a\r\nb").onChange = [this] { hear(L"notes " + form_.text(notes)); };
    form_.addCheckBox(box, L"&Box").onChange = [this] {
      hear(L"box");
      form_.control(move).setEnabled(!form_.control(box).isChecked());
    };
    form_.addListBox(list, {L"x", L"y", L"z"}).onChange = [this] { hear(L"list"); };
    form_.addSwatches(colours, {0xFF0000, 0x00FF00}, {L"red", L"green"}, 2).onChange = [this] {
      hear(L"colours");
    };
    form_.addLabel(status, L"&Status: R&&D");
    fillTable();
    form_.addButton(move, L"&Move Up", [this] { moveUp(); });
    form_.addButton(more, L"M&ore. . .", [this] { openMore(); });
    form_.addOkAndCancel();
    form_.setLayout(column({fields({field(L"&Name:", name), field(L"No&tes:", notes)}), box,
                            row({list, colours}), table, row({move, more, status}), okAndCancel()}));
    form_.setFocus(name);
  }

  ScriptList heard;
  Form& form() { return form_; }

 private:
  void hear(const std::wstring& what) { heard.emplace_back(L"heard: " + what); }

  void fillTable() {
    Grid& grid = form_.addGrid(table, 6, 1, 1);
    grid.setColumnHidden(5);
    grid.setColumnKind(2, CellKind::checkBox);
    grid.setColumnChoices(3, L"|Pick. . .|plain");
    grid.setColumnChoices(4, {L"Left", L"Right"}, {1, 2});
    for (const wchar_t each : std::wstring(L"abc")) {
      const int at = grid.insertRow();
      grid.setText(at, 0, L"fixed");
      grid.setText(at, 1, std::wstring(1, each));
      grid.setText(at, 5, L"hidden");
    }
    grid.setReadOnly(1, 1);
    grid.setWholeRows(true);
    grid.setFocus(1, 1);
    const auto place = [](int at, int column) {
      return std::to_wstring(at) + L" " + std::to_wstring(column);
    };
    grid.onBeginEdit = [=, this](int at, int column) {
      return hear(L"begin " + place(at, column)), at != 3 || column != 1;
    };
    grid.onChoice = [=, this, &grid](int at, int column, const std::wstring& chosen) {
      hear(L"choice " + chosen + L" over " + grid.text(at, column));
      if (chosen == L"Pick. . .") openMore(), grid.setText(at, column, L"picked");
    };
    grid.onEndEdit = [=, this, &grid](int at, int column) {
      hear(L"end " + place(at, column) + L" " + grid.textBeforeEdit(at, column) + L">" +
           grid.text(at, column));
      if (grid.text(at, column) == L"bad") grid.setText(at, column, grid.textBeforeEdit(at, column));
    };
    grid.onSelectionChanged = [this](int at) { hear(L"row " + std::to_wstring(at)); };
  }

  void moveUp() {
    Grid& grid = form_.grid(table);
    hear(L"move");
    if (grid.focusRow() < 2) return;
    grid.swapRows(grid.focusRow(), grid.focusRow() - 1);
    grid.setFocus(grid.focusRow() - 1, 1);
  }

  void openMore() {
    Form inner(L"More");
    inner.addEdit(name);
    inner.addOkAndCancel();
    const int result = run_(inner);
    hear(L"more " + std::to_wstring(result) + L" " + inner.text(name));
  }

  std::function<int(Form&)> run_;
  Form form_{L"Sample", L"test:Sample"};
};

struct Outcome {
  int result;
  ScriptList log, heard;
};

/// Plays the scripts, the first on the sample and each further one on the next dialog from inside.
Outcome play(const std::vector<FormScript>& scripts, FormStage* stage) {
  Outcome outcome{};
  size_t next = 0;
  std::function<int(Form&)> run = [&](Form& form) {
    const FormScript script = next < scripts.size() ? scripts[next] : FormScript();
    ++next;
    return stage ? stage->play(form, script, outcome.log) : playOnForm(form, script, nullptr, outcome.log);
  };
  Sample sample(run);
  outcome.result = run(sample.form());
  outcome.heard = sample.heard;
  return outcome;
}

std::wstring shown(const ScriptList& values) {
  std::wstring text;
  for (const ScriptValue& each : values) {
    if (const auto* const list = std::get_if<ScriptList>(&each)) text += L"(" + shown(*list) + L")";
    if (const auto* const number = std::get_if<int>(&each)) text += std::to_wstring(*number);
    if (const auto* const flag = std::get_if<bool>(&each)) text += *flag ? L"T" : L"nil";
    if (const auto* const word = std::get_if<std::wstring>(&each)) text += L'"' + *word + L'"';
    text += L'\n';
  }
  return text;
}

std::wstring w(const wchar_t* text) { return text; }

TEST(BothWays, SayTheSame) {
  const std::unique_ptr<FormStage> stage(makeFormStage());
  const FormScript readAll = {
      {L"title", {}},     {L"get", {name}},     {L"get", {notes}},     {L"get", {box}},    {L"get", {list}},
      {L"items", {list}}, {L"get", {colours}},  {L"get", {status}},    {L"grid", {table}}, {L"get", {table}},
      {L"get", {move}},   {L"enabled", {move}}, {L"visible", {notes}}, {L"focus", {}}};
  const std::vector<std::vector<FormScript>> cases = {
      {readAll},
      {{{L"set", {name, w(L"new Λ")}},
        {L"type", {name, w(L"er")}},
        {L"get", {name}},
        {L"focus", {}},
        {L"click", {1}}}},
      {{{L"type", {notes, w(L"\r\nc")}},
        {L"get", {notes}},
        {L"set", {notes, w(L"")}},
        {L"get", {notes}},
        {L"key", {w(L"Escape")}}}},
      {{{L"check", {box, true}},
        {L"check", {box, true}},
        {L"click", {move}},
        {L"click", {box}},
        {L"get", {box}},
        {L"click", {move}}}},
      {{{L"select", {list, 2}},
        {L"get", {list}},
        {L"select", {list, 3}},
        {L"select", {colours, 1}},
        {L"get", {colours}},
        {L"focus", {}}}},
      {{{L"select", {table, 3}},
        {L"click", {move}},
        {L"get", {table}},
        {L"click", {move}},
        {L"click", {move}},
        {L"grid", {table}}}},
      {{{L"cell", {table, 2, 1, w(L"B")}},
        {L"cell", {table, 1, 1, w(L"x")}},
        {L"cell", {table, 3, 1, w(L"x")}},
        {L"cell", {table, 2, 0, w(L"x")}},
        {L"cell", {table, 2, 5, w(L"x")}},
        {L"cell", {table, 2, 1, w(L"bad")}},
        {L"grid", {table}}}},
      {{{L"cell", {table, 2, 2, w(L"-1")}},
        {L"cell", {table, 2, 2, w(L"-1")}},
        {L"edit", {table, 2, 2}},
        {L"grid", {table}}}},
      {{{L"choice", {table, 2, 4, w(L"Right")}},
        {L"cell", {table, 2, 4, w(L"Left")}},
        {L"choice", {table, 2, 4, w(L"None")}},
        {L"type", {table, w(L"x")}},
        {L"key", {w(L"Escape")}},
        {L"grid", {table}}}},
      {{{L"choice", {table, 2, 3, w(L"Pick. . .")}},
        {L"cell", {table, 1, 3, w(L"typed")}},
        {L"choice", {table, 3, 3, w(L"plain")}},
        {L"grid", {table}}},
       {{L"set", {name, w(L"inside")}}, {L"key", {w(L"Enter")}}}},
      {{{L"edit", {table, 2, 1}},
        {L"type", {table, w(L"open")}},
        {L"click", {more}},
        {L"grid", {table}},
        {L"click", {1}}},
       {{L"title", {}}}},
      {{{L"edit", {table, 2, 1}}, {L"type", {table, w(L"gone")}}, {L"click", {2}}}},
      {{{L"edit", {table, 2, 1}},
        {L"type", {table, w(L"a")}},
        {L"edit", {table, 3, 4}},
        {L"key", {w(L"Enter")}},
        {L"key", {w(L"Enter")}}}},
      {{{L"fold", {table, 1, true}}, {L"fail", {-1}}}},
  };
  for (size_t i = 0; i < cases.size(); ++i) {
    const Outcome plain = play(cases[i], nullptr), widgets = play(cases[i], stage.get());
    EXPECT_EQ(plain.result, widgets.result) << i;
    EXPECT_EQ(shown(plain.log), shown(widgets.log)) << i;
    EXPECT_EQ(shown(plain.heard), shown(widgets.heard)) << i;
  }
  // And it is what was meant.
  const Outcome picked = play(cases[9], stage.get());
  EXPECT_EQ(
      shown(picked.heard),
      L"\"heard: row 2\"\n\"heard: begin 2 3\"\n\"heard: choice Pick. . . over \"\n\"heard: more 1 inside\"\n"
      L"\"heard: end 2 3 >picked\"\n\"heard: row 1\"\n\"heard: begin 1 3\"\n\"heard: end 1 3 >typed\"\n"
      L"\"heard: row 3\"\n\"heard: begin 3 3\"\n\"heard: choice plain over \"\n\"heard: end 3 3 >plain\"\n");
  EXPECT_EQ(play(cases[13], stage.get()).result, -1);
}

}  // namespace
