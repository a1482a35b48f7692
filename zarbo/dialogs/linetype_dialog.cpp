#include "zarbo/dialogs/linetype_dialog.h"

#include <memory>

#include "brx/db_services.h"
#include "brx/db_tables.h"
#include "zarbo/support/utilities.h"
#include "zarbo/widgets/dialog.h"

namespace {

using platform::Form;
using platform::Grid;

constexpr int linetypes = 1048;
enum Column { name, description, columnCount };

/// Null, for an iterator that can't be had; the table stays open as long as this lives.
class LinetypeWalk {
 public:
  LinetypeWalk() {
    AcDbDatabase* const drawing = acdbHostApplicationServices()->workingDatabase();
    if (!drawing || drawing->getSymbolTable(table_, AcDb::kForRead) != Acad::eOk) return;
    AcDbSymbolTableIterator* made = nullptr;
    if (table_->newIterator(made) == Acad::eOk) iterator_.reset(made);
  }
  ~LinetypeWalk() {
    if (table_) table_->close();
  }
  AcDbSymbolTableIterator* iterator() const { return iterator_.get(); }

 private:
  AcDbLinetypeTable* table_ = nullptr;
  std::unique_ptr<AcDbSymbolTableIterator> iterator_;
};

bool readRecord(const AcDbSymbolTableIterator& at, std::wstring& recordName, std::wstring& comments) {
  AcDbLinetypeTableRecord* record = nullptr;
  if (at.getRecord(record, AcDb::kForRead) != Acad::eOk) return false;
  comments = record->comments();
  recordName = record->getName();
  record->close();
  return recordName != L"ByLayer" && recordName != L"ByBlock";
}

void fill(Grid& grid, const std::wstring& current) {
  const LinetypeWalk walk;
  AcDbSymbolTableIterator* const at = walk.iterator();
  for (; at && !at->done(); at->step()) {
    std::wstring recordName, comments;
    if (!readRecord(*at, recordName, comments)) continue;
    const int row = grid.insertRow();
    grid.setText(row, name, recordName);
    grid.setText(row, description, comments);
    if (row == 1 || equalNoCase(recordName, current)) grid.setFocus(row, name);
  }
  grid.autoSize();
}

}  // namespace

int CAcadLinetypeDialog::doModal() {
  // The host keeps sizes under the name as it is, one letter shorter than the others'.
  Form form(L"Select Linetype", L"kv_zarb:AcadLinetype");
  Grid& grid = form.addGrid(linetypes, columnCount);
  form.addOkAndCancel();
  form.setLayout(platform::column({linetypes, platform::okAndCancel()}));
  form.control(linetypes).size(60, 12);
  grid.setText(0, name, L"Linetype");
  grid.setText(0, description, L"Description");
  grid.setWholeRows(true);
  grid.setEditable(false);
  form.setFocus(linetypes);
  form.onStart = [&] { fill(grid, linetype_); };
  const int result = runModuleDialog(form);
  if (result == platform::okButton) linetype_ = grid.text(grid.focusRow(), name);
  return result;
}
