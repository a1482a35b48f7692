#include "platform/desktop/form_person.h"
#include "platform/desktop/form_script.h"
#include "platform/desktop/grid_person.h"

namespace platform {

namespace {

/// Works on the description itself.
class PlainHands : public FormHands {
 public:
  PlainHands(Form& form, const DrawForm& draw) : form_(form), draw_(draw) {}

  bool press(int button) override { return person().press(button); }
  bool setText(int edit, const std::wstring& text) override { return person().type(edit, text); }
  bool check(int box, bool checked) override { return person().check(box, checked); }
  bool select(int list, int index) override { return person().select(list, index); }
  bool moveTo(int grid, GridCell cell) override {
    return person().focusOn(grid) && at(grid).moveTo(cell.row, cell.column);
  }
  bool openCell(int grid, GridCell cell) override {
    return person().focusOn(grid) && at(grid).open(cell.row, cell.column);
  }
  bool typeInCell(int grid, const std::wstring& text) override { return at(grid).type(text); }
  bool commitCell(int grid) override { return at(grid).commit(); }
  bool choose(int grid, const std::wstring& entry) override { return at(grid).choose(entry); }
  bool fold(int grid, int row, bool folded) override {
    const int column = form_.grid(grid).fixedColumns();
    return moveTo(grid, {row, column}) && at(grid).fold(row, folded);
  }
  bool key(const std::wstring& name) override;
  void cancel() override { person().cancel(); }
  std::wstring shot(const std::wstring& file, int width, int height, bool dark) override {
    return draw_ ? draw_(form_, file, width, height, dark) : L"there is nothing to draw with";
  }

  std::wstring title() override { return form_.title(); }
  std::wstring text(int control) override { return form_.text(control); }
  bool isChecked(int box) override { return form_.control(box).isChecked(); }
  int selected(int list) override { return form_.control(list).selected(); }
  bool isEnabled(int control) override { return form_.control(control).isEnabled(); }
  bool isVisible(int control) override { return form_.control(control).isVisible(); }
  int focus() override { return form_.focus(); }
  std::wstring cellText(int grid, GridCell cell) override {
    return form_.grid(grid).text(cell.row, cell.column);
  }

 private:
  FormPerson person() { return FormPerson(form_); }
  GridPerson at(int grid) { return GridPerson(form_.grid(grid)); }
  Grid* openGrid();

  Form& form_;
  const DrawForm& draw_;
};

Grid* PlainHands::openGrid() {
  for (Control& each : form_.controls()) {
    if (each.grid() && each.grid()->openCell()) return each.grid();
  }
  return nullptr;
}

bool PlainHands::key(const std::wstring& name) {
  Grid* const open = openGrid();
  if (name == L"Enter") return open ? GridPerson(*open).commit() : person().pressEnter();
  if (name != L"Escape") return false;
  if (open) return GridPerson(*open).abandon();
  cancel();
  return form_.isClosed();
}

}  // namespace

int playOnForm(Form& form, const FormScript& script, const DrawForm& draw, ScriptList& log) {
  form.open();
  if (form.onStart) form.onStart();
  PlainHands hands(form, draw);
  return playScript(form, script, hands, log);
}

}  // namespace platform
