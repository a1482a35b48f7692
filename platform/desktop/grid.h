#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/desktop/choices.h"

namespace platform {

/// A table that a person edits in a dialog: its cells and everything that can be told about them without
/// drawing one. Rows and columns count from 0; row 0 is the header where there is one, and can be read and
/// written like any other.
///
/// What the program does to the grid is silent. Only what a person does is notified, in `grid_person.h`'s
/// words: a front end calls `GridPerson`, the handlers here hear of it.

enum class CellKind {
  text,
  /// Reads as "-1" or "0"; any text but "0" that is written to it sets the check.
  checkBox,
  /// A text with a list of proposals.
  editableList,
  dropDownList,
  /// A text, indented by the row's level, before which the rows below it can be folded away. A column's kind.
  tree,
};

/// A place in the grid; `row` is -1 where there is none.
struct GridCell {
  int row = -1, column = -1;
  bool operator==(const GridCell&) const = default;
};

/// What shows a grid. It asks the grid for what it draws; these calls only tell that something is new.
class GridView {
 public:
  virtual ~GridView() = default;
  virtual void cellChanged(GridCell cell) = 0;
  /// Number, order or folding of rows, a kind or look of a column, or anything at all.
  virtual void gridChanged() = 0;
  virtual void focusMoved() = 0;
  virtual void scrolled(GridCell cell) = 0;
  /// The control of the open cell goes away, or comes up, or has another text.
  virtual void openCellChanged() = 0;
  /// The width that a column needs for its texts, in pixels.
  virtual int neededWidth(int column) = 0;
  /// Of the room that the columns share, in pixels.
  virtual int clientWidth() = 0;
};

class Grid {
 public:
  /// An empty grid, in which only the fixed rows are there.
  explicit Grid(int columns = 0, int fixedRows = 1, int fixedColumns = 0);
  ~Grid();
  Grid(const Grid&) = delete;
  Grid& operator=(const Grid&) = delete;

  // Notifications. What a handler does to the grid is silent, too.

  /// A person begins to edit a cell. False refuses it.
  std::function<bool(int row, int column)> onBeginEdit;
  /// A person chose an entry of a list cell. The cell still holds its former text, and its control is closed,
  /// so that the handler may open a dialog. What it writes to the cell stays; else the entry goes in.
  std::function<void(int row, int column, const std::wstring& chosen)> onChoice;
  /// The cell holds the new text.
  std::function<void(int row, int column)> onEndEdit;
  /// The focus went to another row, or, where rows aren't selected as a whole, to another cell.
  std::function<void(int row)> onSelectionChanged;

  // Shape

  int rows() const { return static_cast<int>(rows_.size()); }
  int columns() const { return static_cast<int>(columns_.size()); }
  int fixedRows() const { return fixedRows_; }
  int fixedColumns() const { return fixedColumns_; }
  bool contains(GridCell cell) const;
  bool isFixed(GridCell cell) const { return cell.row < fixedRows_ || cell.column < fixedColumns_; }
  /// New rows are empty; a smaller number cuts rows off. Fixed rows stay.
  void setRowCount(int rows);
  void setColumnCount(int columns);
  /// Before `before`, or at the end; gives the new row, which has level 0.
  int insertRow(int before = -1);
  /// Fixed rows and rows that aren't there stay.
  void deleteRow(int row);
  void swapRows(int first, int second);
  /// By the texts of the column, compared character by character; fixed rows stay, equal rows keep their
  /// order.
  void sort(int column, bool ascending = true);

  // Columns

  void setColumnKind(int column, CellKind kind);
  /// "Yes|No" makes drop-down lists, "|Browse. . ." editable ones.
  void setColumnChoices(int column, std::wstring_view choices);
  /// Drop-down lists; numbers are the program's, one for each text.
  void setColumnChoices(int column, std::vector<std::wstring> texts, std::vector<int64_t> numbers);
  /// By which `column` finds it. The header's text does not name a column.
  void setColumnName(int column, std::wstring name);
  /// -1 when no column has the name.
  int column(std::wstring_view name) const;
  void setColumnHidden(int column, bool hidden = true);
  /// In pixels; a column of width 0 is hidden.
  void setColumnWidth(int column, int width);
  int columnWidth(int column) const;
  bool isHidden(int column) const { return columnWidth(column) == 0; }
  /// Widths by the texts; hidden columns stay hidden.
  void autoSize();
  /// Of the room that the columns share, in pixels.
  int clientWidth() const;

  // Cells. Reading outside the grid gives "" and nothing, writing there does nothing.

  const std::wstring& text(int row, int column) const;
  const std::wstring& text(int row, std::wstring_view column) const {
    return text(row, this->column(column));
  }
  void setText(int row, int column, std::wstring_view text);
  void setText(int row, std::wstring_view column, std::wstring_view text) {
    setText(row, this->column(column), text);
  }
  /// Of the cell that is or was edited last, what it held before; of others, what they hold.
  const std::wstring& textBeforeEdit(int row, int column) const;
  /// A cell's own kind goes before its column's. Fixed cells are always texts.
  CellKind kind(int row, int column) const;
  void setCellKind(int row, int column, CellKind kind);
  void setCellChoices(int row, int column, std::wstring_view choices);
  void setCellChoices(int row, int column, std::vector<std::wstring> texts, std::vector<int64_t> numbers);
  /// Null when the cell offers none.
  SharedChoices choices(int row, int column) const;
  /// The number that belongs to the cell's text among its choices; 0 when it is none of them.
  int64_t choiceNumber(int row, int column) const;
  bool isReadOnly(int row, int column) const;
  void setReadOnly(int row, int column, bool readOnly = true);
  /// A picture's file, or a colour like "#ff8000", shown before the text; "" for none.
  const std::wstring& image(int row, int column) const;
  void setImage(int row, int column, std::wstring image);
  /// The colours of fixed cells, for a cell that isn't one; it can't be edited either.
  bool looksFixed(int row, int column) const;
  void setLooksFixed(int row, int column, bool fixed = true);
  /// The cells from `column` on are one, which shows the first's text and isn't edited. 1 undoes it.
  void merge(int row, int column, int count);
  /// 1 for a cell that stands alone, 0 for one that is covered by a merged one.
  int span(int row, int column) const;

  // Tree. A row belongs to the next one above it that has a lower level above 0; level 0 is outside the tree.

  int level(int row) const;
  void setLevel(int row, int level);
  bool hasRowsBelow(int row) const;
  bool isFolded(int row) const;
  void setFolded(int row, bool folded);
  /// Whether a row above it has folded it away.
  bool isFoldedAway(int row) const;
  /// The rows that aren't, in order, fixed ones too.
  std::vector<int> shownRows() const;

  // Focus and sight

  /// No in-place editing at all.
  void setEditable(bool editable) { editable_ = editable; }
  bool isEditable() const { return editable_; }
  void setWholeRows(bool whole) { wholeRows_ = whole; }
  bool hasWholeRows() const { return wholeRows_; }
  /// A cell that is fixed or isn't there leaves the focus where it is. The focus keeps its place when rows
  /// come, go and move, and leaves the grid with the last row.
  void setFocus(int row, int column);
  GridCell focus() const { return focus_; }
  int focusRow() const { return focus_.row; }
  void scrollTo(int row, int column);
  /// Where `scrollTo` last went.
  GridCell scrolledTo() const { return scrolledTo_; }
  /// Makes the grid the control that has the focus.
  void grabFocus();
  /// While off, nothing is shown of what changes. Calls nest.
  void setRedraw(bool on);

  // For front ends

  /// What `grabFocus` does; the form's.
  void setFocusGrabber(std::function<void()> grabber) { grabber_ = std::move(grabber); }
  /// Null takes it away; the grid doesn't own it. Widths that stem from texts are taken anew.
  void setView(GridView* view);
  /// The cell that a person is editing, with the text in its control.
  struct OpenCell {
    GridCell cell;
    std::wstring text;
  };
  const std::optional<OpenCell>& openCell() const { return open_; }

 private:
  friend class GridPerson;

  struct Extra {
    std::optional<CellKind> kind;
    SharedChoices choices;
    std::wstring image;
    bool readOnly = false, looksFixed = false;
    int span = 1;
  };
  struct Cell {
    std::wstring text;
    std::unique_ptr<Extra> extra;
  };
  struct Row {
    std::vector<Cell> cells;
    int level = 0;
    bool folded = false;
  };
  struct Column {
    CellKind kind = CellKind::text;
    SharedChoices choices;
    std::wstring name;
    int width;
  };

  const Cell* find(int row, int column) const;
  Cell* find(int row, int column);
  const Extra& extra(int row, int column) const;
  Extra* extraToChange(int row, int column);
  int levelEnd(int row) const;
  void tellCell(GridCell cell);
  void tellAll();
  void rowsMoved(const std::function<int(int)>& newRow);
  void clampFocus();
  void dropOpenCell();

  int fixedRows_, fixedColumns_;
  bool editable_ = true, wholeRows_ = false;
  std::vector<Column> columns_;
  std::vector<Row> rows_;
  GridCell focus_, scrolledTo_;
  std::optional<OpenCell> open_;
  /// The cell whose choice handler runs, and whether the handler has written to it.
  GridCell choosing_;
  bool chosenWritten_ = false;
  GridCell lastEdited_;
  std::wstring before_;
  std::function<void()> grabber_;
  GridView* view_ = nullptr;
  int redrawOff_ = 0;
  bool changedUnseen_ = false;
  bool autoSized_ = false;
};

/// Redraw is off as long as this lives.
class RedrawOff {
 public:
  explicit RedrawOff(Grid& grid) : grid_(grid) { grid_.setRedraw(false); }
  ~RedrawOff() { grid_.setRedraw(true); }
  RedrawOff(const RedrawOff&) = delete;
  RedrawOff& operator=(const RedrawOff&) = delete;

 private:
  Grid& grid_;
};

}  // namespace platform
