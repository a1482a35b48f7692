#include "platform/desktop/grid.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace platform {

namespace {

// Of a front end without pixels.
constexpr int letterWidth = 7, cellMargin = 12, widestColumn = 480, usualColumn = 80, usualClient = 480;

const std::wstring noText;
const std::wstring checked = L"-1", unchecked = L"0";

int estimatedWidth(const std::wstring& text) {
  constexpr size_t most = widestColumn / letterWidth;
  return static_cast<int>(std::min(text.size(), most)) * letterWidth + cellMargin;
}

}  // namespace

Grid::Grid(int columns, int fixedRows, int fixedColumns)
    : fixedRows_(std::max(fixedRows, 0)), fixedColumns_(std::max(fixedColumns, 0)) {
  setColumnCount(columns);
  setRowCount(fixedRows_);
}

Grid::~Grid() = default;

bool Grid::contains(GridCell cell) const {
  return cell.row >= 0 && cell.row < rows() && cell.column >= 0 && cell.column < columns();
}

const Grid::Cell* Grid::find(int row, int column) const {
  return contains({row, column}) ? &rows_[static_cast<size_t>(row)].cells[static_cast<size_t>(column)]
                                 : nullptr;
}

Grid::Cell* Grid::find(int row, int column) {
  return const_cast<Cell*>(std::as_const(*this).find(row, column));
}

const Grid::Extra& Grid::extra(int row, int column) const {
  static const Extra plain;
  const Cell* const cell = find(row, column);
  return cell && cell->extra ? *cell->extra : plain;
}

Grid::Extra* Grid::extraToChange(int row, int column) {
  Cell* const cell = find(row, column);
  if (!cell) return nullptr;
  if (!cell->extra) cell->extra = std::make_unique<Extra>();
  return cell->extra.get();
}

void Grid::tellCell(GridCell cell) {
  if (redrawOff_ > 0) {
    changedUnseen_ = true;
  } else if (view_) {
    view_->cellChanged(cell);
  }
}

void Grid::tellAll() {
  if (redrawOff_ > 0) {
    changedUnseen_ = true;
  } else if (view_) {
    view_->gridChanged();
  }
}

void Grid::setRedraw(bool on) {
  if (!on) {
    ++redrawOff_;
  } else if (redrawOff_ > 0 && --redrawOff_ == 0 && std::exchange(changedUnseen_, false)) {
    tellAll();
  }
}

// Rows

void Grid::rowsMoved(const std::function<int(int)>& newRow) {
  for (GridCell* const cell : {&choosing_, &lastEdited_}) {
    if (cell->row >= 0) cell->row = newRow(cell->row);
  }
  if (open_) {
    open_->cell.row = newRow(open_->cell.row);
    if (open_->cell.row < 0) dropOpenCell();
  }
  clampFocus();
  tellAll();
}

void Grid::clampFocus() {
  focus_.row = std::min(focus_.row, rows() - 1);
  if (focus_.row < fixedRows_ || focus_.column >= columns()) focus_ = {};
}

void Grid::dropOpenCell() {
  open_.reset();
  if (view_) view_->openCellChanged();
}

void Grid::setRowCount(int rows) {
  const int wanted = std::max(rows, fixedRows_);
  const auto former = static_cast<size_t>(this->rows());
  rows_.resize(static_cast<size_t>(wanted));
  for (size_t i = former; i < rows_.size(); ++i) rows_[i].cells.resize(columns_.size());
  rowsMoved([&](int row) { return row < wanted ? row : -1; });
}

int Grid::insertRow(int before) {
  const int at = before < 0 || before > rows() ? rows() : std::max(before, fixedRows_);
  const auto row = rows_.emplace(rows_.begin() + at);
  row->cells.resize(columns_.size());
  rowsMoved([&](int each) { return each < at ? each : each + 1; });
  return at;
}

void Grid::deleteRow(int row) {
  if (row < fixedRows_ || row >= rows()) return;
  rows_.erase(rows_.begin() + row);
  rowsMoved([&](int each) { return each == row ? -1 : each < row ? each : each - 1; });
}

void Grid::swapRows(int first, int second) {
  if (!contains({first, 0}) || !contains({second, 0}) || first == second) return;
  std::swap(rows_[static_cast<size_t>(first)], rows_[static_cast<size_t>(second)]);
  rowsMoved([&](int each) { return each == first ? second : each == second ? first : each; });
}

void Grid::sort(int column, bool ascending) {
  if (column < 0 || column >= columns()) return;
  std::vector<int> order(rows_.size());
  std::iota(order.begin(), order.end(), 0);
  std::stable_sort(order.begin() + fixedRows_, order.end(), [&](int first, int second) {
    const int result = text(first, column).compare(text(second, column));
    return ascending ? result < 0 : result > 0;
  });
  std::vector<Row> sorted;
  sorted.reserve(rows_.size());
  std::vector<int> places(rows_.size());
  for (const int row : order) {
    places[static_cast<size_t>(row)] = static_cast<int>(sorted.size());
    sorted.push_back(std::move(rows_[static_cast<size_t>(row)]));
  }
  rows_ = std::move(sorted);
  rowsMoved([&](int each) { return places[static_cast<size_t>(each)]; });
}

// Columns

void Grid::setColumnCount(int columns) {
  columns_.resize(static_cast<size_t>(std::max(columns, 0)), {CellKind::text, nullptr, L"", usualColumn});
  for (Row& each : rows_) each.cells.resize(columns_.size());
  if (open_ && !contains(open_->cell)) dropOpenCell();
  clampFocus();
  tellAll();
}

void Grid::setColumnKind(int column, CellKind kind) {
  if (column < 0 || column >= columns()) return;
  columns_[static_cast<size_t>(column)].kind = kind;
  tellAll();
}

void Grid::setColumnChoices(int column, std::wstring_view choices) {
  if (column < 0 || column >= columns()) return;
  setColumnChoices(column, splitChoices(choices), {});
  if (choices.starts_with(L'|')) setColumnKind(column, CellKind::editableList);
}

void Grid::setColumnChoices(int column, std::vector<std::wstring> texts, std::vector<int64_t> numbers) {
  if (column < 0 || column >= columns()) return;
  columns_[static_cast<size_t>(column)].choices =
      std::make_shared<const Choices>(std::move(texts), std::move(numbers));
  setColumnKind(column, CellKind::dropDownList);
}

void Grid::setColumnName(int column, std::wstring name) {
  if (column >= 0 && column < columns()) columns_[static_cast<size_t>(column)].name = std::move(name);
}

int Grid::column(std::wstring_view name) const {
  const auto found = std::find_if(columns_.begin(), columns_.end(),
                                  [&](const Column& each) { return each.name == name && !name.empty(); });
  return found == columns_.end() ? -1 : static_cast<int>(found - columns_.begin());
}

void Grid::setColumnHidden(int column, bool hidden) {
  if (hidden || isHidden(column)) setColumnWidth(column, hidden ? 0 : usualColumn);
}

void Grid::setColumnWidth(int column, int width) {
  if (column < 0 || column >= columns()) return;
  columns_[static_cast<size_t>(column)].width = std::max(width, 0);
  autoSized_ = false;
  tellAll();
}

int Grid::columnWidth(int column) const {
  return column < 0 || column >= columns() ? 0 : columns_[static_cast<size_t>(column)].width;
}

void Grid::autoSize() {
  const RedrawOff off(*this);
  for (int column = 0; column < columns(); ++column) {
    if (isHidden(column)) continue;
    int width = view_ ? view_->neededWidth(column) : 0;
    if (!view_) {
      for (int row = 0; row < rows(); ++row) {
        if (span(row, column) == 1) width = std::max(width, estimatedWidth(text(row, column)));
      }
    }
    setColumnWidth(column, std::max(width, 1));
  }
  autoSized_ = true;
}

void Grid::setView(GridView* view) {
  view_ = view;
  if (view_ && autoSized_) autoSize();
}

int Grid::clientWidth() const { return view_ ? view_->clientWidth() : usualClient; }

// Cells

const std::wstring& Grid::text(int row, int column) const {
  const Cell* const cell = find(row, column);
  if (!cell) return noText;
  if (kind(row, column) != CellKind::checkBox) return cell->text;
  return cell->text.empty() || cell->text == unchecked ? unchecked : checked;
}

void Grid::setText(int row, int column, std::wstring_view text) {
  Cell* const cell = find(row, column);
  if (!cell) return;
  if (choosing_ == GridCell{row, column}) chosenWritten_ = true;
  cell->text = kind(row, column) == CellKind::checkBox ? (text == unchecked ? unchecked : checked) : text;
  if (open_ && open_->cell == GridCell{row, column}) {
    open_->text = cell->text;
    if (view_) view_->openCellChanged();
  }
  tellCell({row, column});
}

const std::wstring& Grid::textBeforeEdit(int row, int column) const {
  return lastEdited_ == GridCell{row, column} ? before_ : text(row, column);
}

CellKind Grid::kind(int row, int column) const {
  if (!contains({row, column}) || isFixed({row, column})) return CellKind::text;
  return extra(row, column).kind.value_or(columns_[static_cast<size_t>(column)].kind);
}

void Grid::setCellKind(int row, int column, CellKind kind) {
  if (Extra* const change = extraToChange(row, column)) {
    change->kind = kind;
    tellCell({row, column});
  }
}

void Grid::setCellChoices(int row, int column, std::wstring_view choices) {
  setCellChoices(row, column, splitChoices(choices), {});
  if (choices.starts_with(L'|')) setCellKind(row, column, CellKind::editableList);
}

void Grid::setCellChoices(int row, int column, std::vector<std::wstring> texts,
                          std::vector<int64_t> numbers) {
  if (Extra* const change = extraToChange(row, column)) {
    change->choices = std::make_shared<const Choices>(std::move(texts), std::move(numbers));
    setCellKind(row, column, CellKind::dropDownList);
  }
}

SharedChoices Grid::choices(int row, int column) const {
  const CellKind kind = this->kind(row, column);
  if (kind != CellKind::dropDownList && kind != CellKind::editableList) return nullptr;
  const SharedChoices& own = extra(row, column).choices;
  return own ? own : columns_[static_cast<size_t>(column)].choices;
}

int64_t Grid::choiceNumber(int row, int column) const {
  const SharedChoices offered = choices(row, column);
  return offered ? offered->numberOf(text(row, column)).value_or(0) : 0;
}

bool Grid::isReadOnly(int row, int column) const { return extra(row, column).readOnly; }

void Grid::setReadOnly(int row, int column, bool readOnly) {
  if (Extra* const change = extraToChange(row, column)) change->readOnly = readOnly;
}

const std::wstring& Grid::image(int row, int column) const { return extra(row, column).image; }

void Grid::setImage(int row, int column, std::wstring image) {
  if (image.empty() && this->image(row, column).empty()) return;
  if (Extra* const change = extraToChange(row, column)) {
    change->image = std::move(image);
    tellCell({row, column});
  }
}

bool Grid::looksFixed(int row, int column) const { return extra(row, column).looksFixed; }

void Grid::setLooksFixed(int row, int column, bool fixed) {
  if (Extra* const change = extraToChange(row, column)) {
    change->looksFixed = fixed;
    tellCell({row, column});
  }
}

void Grid::merge(int row, int column, int count) {
  const int former = span(row, column);
  for (int i = 0; i < std::max(count, former); ++i) {
    if (Extra* const change = extraToChange(row, column + i))
      change->span = i == 0 ? count : i < count ? 0 : 1;
  }
  tellAll();
}

int Grid::span(int row, int column) const { return extra(row, column).span; }

// Tree

int Grid::level(int row) const { return contains({row, 0}) ? rows_[static_cast<size_t>(row)].level : 0; }

void Grid::setLevel(int row, int level) {
  if (!contains({row, 0})) return;
  rows_[static_cast<size_t>(row)].level = level;
  tellAll();
}

// The row behind the last that belongs to this one.
int Grid::levelEnd(int row) const {
  int end = row + 1;
  while (level(row) > 0 && level(end) > level(row)) ++end;
  return end;
}

bool Grid::hasRowsBelow(int row) const { return levelEnd(row) > row + 1; }

bool Grid::isFolded(int row) const { return contains({row, 0}) && rows_[static_cast<size_t>(row)].folded; }

void Grid::setFolded(int row, bool folded) {
  if (!contains({row, 0})) return;
  rows_[static_cast<size_t>(row)].folded = folded;
  if (folded && focus_.row > row && focus_.row < levelEnd(row)) setFocus(row, focus_.column);
  tellAll();
}

bool Grid::isFoldedAway(int row) const {
  int wanted = level(row);
  for (int above = row - 1; wanted > 1 && above >= 0; --above) {
    const int its = level(above);
    if (its == 0) return false;
    if (its >= wanted) continue;
    if (isFolded(above)) return true;
    wanted = its;
  }
  return false;
}

std::vector<int> Grid::shownRows() const {
  std::vector<int> shown;
  shown.reserve(rows_.size());
  for (int row = 0; row < rows();) {
    shown.push_back(row);
    row = isFolded(row) ? levelEnd(row) : row + 1;
  }
  return shown;
}

// Focus and sight

void Grid::setFocus(int row, int column) {
  const GridCell cell{row, column};
  if (!contains(cell) || isFixed(cell) || cell == focus_) return;
  focus_ = cell;
  if (view_) view_->focusMoved();
}

void Grid::grabFocus() {
  if (grabber_) grabber_();
}

void Grid::scrollTo(int row, int column) {
  if (!contains({row, column})) return;
  scrolledTo_ = {row, column};
  if (view_) view_->scrolled(scrolledTo_);
}

}  // namespace platform
