#include "platform/desktop/form_script.h"

#include <algorithm>

namespace platform {

namespace {

class Player {
 public:
  Player(Form& form, FormHands& hands, ScriptList& log) : form_(form), hands_(hands), log_(log) {}

  void play(const ScriptAction& action);
  const std::optional<int>& failure() const { return failure_; }

 private:
  friend struct Verb;

  int number(size_t i) const {
    return i < action_->arguments.size() ? std::get<int>(action_->arguments[i]) : 0;
  }
  const std::wstring& text(size_t i) const { return std::get<std::wstring>(action_->arguments[i]); }
  bool flag(size_t i) const {
    return i < action_->arguments.size() && !(action_->arguments[i] == ScriptValue(false));
  }
  bool has(size_t i) const { return i < action_->arguments.size(); }
  GridCell cell() const { return {number(1), number(2)}; }
  Control* target() const { return form_.find(number(0)); }

  void tell(const std::wstring& what) { log_.emplace_back(form_.title() + L": " + what); }
  std::wstring name() const;
  /// A line in the log unless the control is there and of one of the kinds.
  bool reaches(std::initializer_list<ControlKind> kinds);
  void require(bool done, const wchar_t* otherwise);
  bool openCell();

  void set();
  void type();
  void check();
  void click();
  void select();
  void setCell();
  void chooseInCell();
  void edit();
  void fold();
  void key();
  void fail() { failure_ = number(0); }
  void get();
  void items();
  void grid();
  void title() { log_.emplace_back(hands_.title()); }
  void enabled();
  void visible();
  void focus() { log_.emplace_back(hands_.focus()); }
  void shot();

  Form& form_;
  FormHands& hands_;
  ScriptList& log_;
  const ScriptAction* action_ = nullptr;
  std::optional<int> failure_;
};

/// Arguments: n a number, t a text, f anything as a flag; those behind "?" may be left out.
struct Verb {
  std::wstring_view name;
  const wchar_t* arguments;
  void (Player::*play)();

  static const Verb* find(const std::wstring& name);
};

const Verb* Verb::find(const std::wstring& name) {
  static constexpr Verb verbs[] = {
      {L"set", L"nt", &Player::set},
      {L"type", L"nt", &Player::type},
      {L"check", L"nf", &Player::check},
      {L"click", L"n", &Player::click},
      {L"select", L"nn?n", &Player::select},
      {L"cell", L"nnnt", &Player::setCell},
      {L"choice", L"nnnt", &Player::chooseInCell},
      {L"edit", L"nnn", &Player::edit},
      {L"fold", L"nnf", &Player::fold},
      {L"key", L"t", &Player::key},
      {L"fail", L"n", &Player::fail},
      {L"get", L"n", &Player::get},
      {L"items", L"n", &Player::items},
      {L"grid", L"n", &Player::grid},
      {L"title", L"", &Player::title},
      {L"enabled", L"n", &Player::enabled},
      {L"visible", L"n", &Player::visible},
      {L"focus", L"", &Player::focus},
      {L"shot", L"t?nnt", &Player::shot},
  };
  const auto found =
      std::find_if(std::begin(verbs), std::end(verbs), [&](const Verb& each) { return each.name == name; });
  return found == std::end(verbs) ? nullptr : found;
}

bool fits(const ScriptValue& value, wchar_t kind) {
  return kind == L'n'   ? std::holds_alternative<int>(value)
         : kind == L't' ? std::holds_alternative<std::wstring>(value)
                        : true;
}

void Player::play(const ScriptAction& action) {
  action_ = &action;
  if (const Verb* const verb = Verb::find(action.verb)) (this->*verb->play)();
}

std::wstring Player::name() const {
  std::wstring made = action_->verb;
  for (const ScriptValue& each : action_->arguments) {
    if (const int* const number = std::get_if<int>(&each)) made += L" " + std::to_wstring(*number);
  }
  return made;
}

bool Player::reaches(std::initializer_list<ControlKind> kinds) {
  const Control* const found = target();
  if (!found) {
    tell(name() + L": there is no such control");
  } else if (kinds.size() > 0 && std::find(kinds.begin(), kinds.end(), found->kind()) == kinds.end()) {
    tell(name() + L": the control is of another kind");
  } else {
    return true;
  }
  return false;
}

void Player::require(bool done, const wchar_t* otherwise) {
  if (done) return;
  const Control* const found = target();
  const bool blocked = found && (!found->isEnabled() || !found->isVisible());
  tell(name() + L": " +
       (blocked ? found->isVisible() ? L"the control is disabled" : L"the control is hidden" : otherwise));
}

void Player::set() {
  if (reaches({ControlKind::edit, ControlKind::multiLineEdit}))
    require(hands_.setText(number(0), text(1)), L"not possible");
}

void Player::type() {
  if (!reaches({ControlKind::edit, ControlKind::multiLineEdit, ControlKind::grid})) return;
  if (target()->kind() == ControlKind::grid) {
    require(hands_.typeInCell(number(0), text(1)), L"no cell is open for typing");
  } else {
    require(hands_.setText(number(0), hands_.text(number(0)) + text(1)), L"not possible");
  }
}

void Player::check() {
  if (reaches({ControlKind::checkBox})) require(hands_.check(number(0), flag(1)), L"not possible");
}

void Player::click() {
  if (!reaches({ControlKind::button, ControlKind::checkBox})) return;
  const bool isBox = target()->kind() == ControlKind::checkBox;
  require(isBox ? hands_.check(number(0), !hands_.isChecked(number(0))) : hands_.press(number(0)),
          L"not possible");
}

void Player::select() {
  if (!reaches({ControlKind::listBox, ControlKind::swatches, ControlKind::grid})) return;
  Grid* const grid = target()->grid();
  if (!grid) return require(hands_.select(number(0), number(1)), L"there is no such entry");
  int column = has(2) ? number(2) : grid->fixedColumns();
  while (!has(2) && column + 1 < grid->columns() && grid->isHidden(column)) ++column;
  require(hands_.moveTo(number(0), {number(1), column}), L"there is no such cell to go to");
}

bool Player::openCell() {
  const bool opened = hands_.openCell(number(0), cell());
  require(opened, L"the cell can't be edited");
  return opened;
}

void Player::setCell() {
  if (!reaches({ControlKind::grid})) return;
  Grid& grid = *target()->grid();
  const CellKind kind = grid.kind(cell().row, cell().column);
  if (kind == CellKind::dropDownList) return chooseInCell();
  if (kind == CellKind::checkBox) {
    const bool wanted = text(3) != L"0";
    if ((grid.text(cell().row, cell().column) != L"0") != wanted) openCell();
  } else if (openCell()) {
    require(hands_.typeInCell(number(0), text(3)) && hands_.commitCell(number(0)),
            L"the cell can't be typed into");
  }
}

void Player::chooseInCell() {
  if (reaches({ControlKind::grid}) && openCell())
    require(hands_.choose(number(0), text(3)), L"the cell doesn't offer that entry");
}

void Player::edit() {
  if (reaches({ControlKind::grid})) openCell();
}

void Player::fold() {
  if (reaches({ControlKind::grid}))
    require(hands_.fold(number(0), number(1), flag(2)), L"there is nothing to fold");
}

void Player::key() {
  if (!hands_.key(text(0))) tell(L"key " + text(0) + L": nothing happened");
}

void Player::get() {
  if (!reaches({})) return;
  switch (target()->kind()) {
    case ControlKind::checkBox:
      log_.emplace_back(hands_.isChecked(number(0)));
      break;
    case ControlKind::listBox:
    case ControlKind::swatches:
      log_.emplace_back(hands_.selected(number(0)));
      break;
    case ControlKind::grid:
      log_.emplace_back(ScriptList{target()->grid()->focus().row, target()->grid()->focus().column});
      break;
    default:
      log_.emplace_back(hands_.text(number(0)));
  }
}

void Player::items() {
  if (!reaches({ControlKind::listBox, ControlKind::swatches})) return;
  ScriptList items;
  for (const std::wstring& each : target()->items()) items.emplace_back(each);
  log_.emplace_back(std::move(items));
}

void Player::grid() {
  if (!reaches({ControlKind::grid})) return;
  const Grid& grid = *target()->grid();
  ScriptList rows;
  for (int row = 0; row < grid.rows(); ++row) {
    ScriptList cells;
    for (int column = 0; column < grid.columns(); ++column)
      cells.emplace_back(hands_.cellText(number(0), {row, column}));
    rows.emplace_back(std::move(cells));
  }
  log_.emplace_back(std::move(rows));
}

void Player::enabled() {
  if (reaches({})) log_.emplace_back(hands_.isEnabled(number(0)));
}

void Player::visible() {
  if (reaches({})) log_.emplace_back(hands_.isVisible(number(0)));
}

void Player::shot() {
  const bool dark = has(3) && text(3) == L"dark";
  const std::wstring problem = hands_.shot(text(0), number(1), number(2), dark);
  if (!problem.empty()) tell(L"shot " + text(0) + L": " + problem);
}

}  // namespace

std::wstring problemOf(const ScriptAction& action) {
  const Verb* const verb = Verb::find(action.verb);
  if (!verb) return L"no action of a dialog: " + action.verb;
  size_t given = 0;
  bool optional = false;
  for (const wchar_t* kind = verb->arguments; *kind; ++kind) {
    if (*kind == L'?') {
      optional = true;
    } else if (given < action.arguments.size()) {
      if (!fits(action.arguments[given++], *kind)) return action.verb + L": wrong type of arguments";
    } else if (!optional) {
      return action.verb + L": too few arguments";
    }
  }
  return given < action.arguments.size() ? action.verb + L": too many arguments" : std::wstring();
}

int playScript(Form& form, const FormScript& script, FormHands& hands, ScriptList& log) {
  Player player(form, hands, log);
  for (const ScriptAction& action : script) {
    if (form.isClosed() || player.failure()) break;
    player.play(action);
  }
  if (player.failure()) return *player.failure();
  if (!form.isClosed()) hands.cancel();
  if (!form.isClosed()) form.close(cancelButton);
  return form.result();
}

}  // namespace platform
