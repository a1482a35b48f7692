#include "platform/desktop/qt/control_view.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalBlocker>

#include "platform/desktop/form_person.h"
#include "platform/desktop/qt/shown_text.h"
#include "platform/desktop/qt/swatches.h"
#include "platform/desktop/qt/texts.h"

namespace platform {

namespace {

/// What every view of a control has at hand.
struct Place {
  Form& form;
  Control& control;
  Act act;
  QWidget* parent;
};

/// To break lines between words takes the toolkit time by the square of a word's length.
QTextOption::WrapMode wrapModeFor(const QString& text) {
  constexpr qsizetype longest = 2000;
  qsizetype letters = 0;
  for (const QChar c : text) {
    letters = c.isSpace() ? 0 : letters + 1;
    if (letters > longest) return QTextOption::WrapAnywhere;
  }
  return QTextOption::WrapAtWordBoundaryOrAnywhere;
}

class LabelView : public ControlView {
 public:
  explicit LabelView(const Place& place) : control_(place.control), label_(new QLabel(place.parent)) {
    label_->setTextFormat(Qt::PlainText);
    label_->setAlignment(Qt::AlignLeft | (control_.lines() > 1 ? Qt::AlignTop : Qt::AlignVCenter));
    label_->setWordWrap(control_.lines() > 1);
    const QFontMetrics letters = label_->fontMetrics();
    if (control_.lines() > 0) label_->setMinimumHeight(control_.lines() * letters.lineSpacing());
    if (control_.letters() > 0) label_->setMinimumWidth(control_.letters() * letters.averageCharWidth());
    setWidget(label_);
    update();
  }
  void update() override { label_->setText(withoutMnemonics(shownText(control_.text()))); }

 private:
  Control& control_;
  QLabel* label_;
};

/// Of so many lines that it is scrolled, so that the window stays on the screen.
class LongLabelView : public ControlView {
 public:
  static constexpr int shownLines = 24;

  explicit LongLabelView(const Place& place)
      : control_(place.control), text_(new QPlainTextEdit(place.parent)) {
    text_->setReadOnly(true);
    text_->setFocusPolicy(Qt::NoFocus);
    text_->setFrameShape(QFrame::NoFrame);
    text_->viewport()->setAutoFillBackground(false);
    text_->document()->setDocumentMargin(0);
    const QFontMetrics letters = text_->fontMetrics();
    text_->setMinimumSize(control_.letters() * letters.averageCharWidth(),
                          shownLines * letters.lineSpacing());
    setWidget(text_);
    update();
  }
  void update() override {
    const QString text = withoutMnemonics(shownText(control_.text()));
    text_->setWordWrapMode(wrapModeFor(text));
    text_->setPlainText(text);
  }

 private:
  Control& control_;
  QPlainTextEdit* text_;
};

class EditView : public ControlView {
 public:
  explicit EditView(const Place& place) : control_(place.control), edit_(new QLineEdit(place.parent)) {
    edit_->setMaxLength(INT_MAX);
    if (control_.letters() > 0)
      edit_->setMinimumWidth(control_.letters() * edit_->fontMetrics().averageCharWidth());
    setWidget(edit_);
    QObject::connect(edit_, &QLineEdit::textEdited, edit_, [this, place](const QString& now) {
      text_.edit(now);
      text_.setSeen(now);
      place.act([&] { return FormPerson(place.form).type(control_.number(), text_.model()); });
    });
    show();
  }
  // The caret goes to the end of a text that is new.
  void update() override {
    if (text_.model() != control_.text()) show();
  }
  void selectText() override { edit_->selectAll(); }

 private:
  void show() {
    text_.set(control_.text());
    edit_->setText(text_.shown());
    text_.setSeen(edit_->text());
  }

  Control& control_;
  QLineEdit* edit_;
  ShownText text_{ShownText::Lines::one};
};

class LinesView : public ControlView {
 public:
  explicit LinesView(const Place& place) : control_(place.control), edit_(new QPlainTextEdit(place.parent)) {
    edit_->setTabChangesFocus(true);
    if (control_.letters() > 0 && control_.lines() > 0) {
      const QFontMetrics letters = edit_->fontMetrics();
      edit_->setMinimumSize(20 * letters.averageCharWidth(), 2 * letters.lineSpacing());
    }
    setWidget(edit_);
    QObject::connect(edit_, &QPlainTextEdit::textChanged, edit_, [this, place] {
      const QString now = edit_->toPlainText();
      text_.edit(now);
      text_.setSeen(now);
      place.act([&] { return FormPerson(place.form).type(control_.number(), text_.model()); });
    });
    show();
  }
  void update() override {
    if (text_.model() != control_.text()) show();
  }
  void selectText() override { edit_->selectAll(); }

 private:
  void show() {
    const QSignalBlocker silent(edit_);
    text_.set(control_.text());
    edit_->setWordWrapMode(wrapModeFor(text_.shown()));
    edit_->setPlainText(text_.shown());
    edit_->moveCursor(QTextCursor::End);
    text_.setSeen(edit_->toPlainText());
  }

  Control& control_;
  QPlainTextEdit* edit_;
  ShownText text_{ShownText::Lines::many};
};

class CheckView : public ControlView {
 public:
  explicit CheckView(const Place& place) : control_(place.control), box_(new QCheckBox(place.parent)) {
    setWidget(box_);
    update();
    QObject::connect(box_, &QCheckBox::toggled, box_, [this, place](bool checked) {
      place.act([&] { return FormPerson(place.form).check(control_.number(), checked); });
    });
  }
  void update() override {
    const QSignalBlocker silent(box_);
    box_->setText(shownText(control_.text()));
    box_->setChecked(control_.isChecked());
  }

 private:
  Control& control_;
  QCheckBox* box_;
};

class ButtonView : public ControlView {
 public:
  explicit ButtonView(const Place& place) : control_(place.control), button_(new QPushButton(place.parent)) {
    button_->setAutoDefault(false);
    button_->setDefault(place.form.defaultButton() == control_.number());
    setWidget(button_);
    update();
    QObject::connect(button_, &QPushButton::clicked, button_, [this, place] {
      place.act([&] { return FormPerson(place.form).press(control_.number()); });
    });
  }
  void update() override { button_->setText(shownText(control_.text())); }

 private:
  Control& control_;
  QPushButton* button_;
};

class ListView : public ControlView {
 public:
  explicit ListView(const Place& place) : control_(place.control), list_(new QListWidget(place.parent)) {
    list_->setUniformItemSizes(true);
    setWidget(list_);
    update();
    // Not of the current row, which the toolkit sets when the list gets the focus.
    QObject::connect(list_, &QListWidget::itemSelectionChanged, list_, [this, place] {
      const int row = list_->selectedItems().isEmpty() ? -1 : list_->currentRow();
      place.act([&] { return FormPerson(place.form).select(control_.number(), row); });
    });
  }
  void update() override {
    const QSignalBlocker silent(list_);
    if (items_ != control_.items()) {
      items_ = control_.items();
      list_->clear();
      for (const std::wstring& each : items_) list_->addItem(shownText(each));
    }
    list_->setCurrentRow(control_.selected());
    if (control_.selected() < 0) list_->clearSelection();
  }

 private:
  Control& control_;
  QListWidget* list_;
  std::vector<std::wstring> items_;
};

class SwatchesView : public ControlView {
 public:
  explicit SwatchesView(const Place& place) {
    const int number = place.control.number();
    setWidget(new Swatches(
        place.control,
        [place, number](int index) {
          place.act([&] { return FormPerson(place.form).select(number, index); });
        },
        place.parent));
  }
  void update() override { widget()->update(); }
};

class GridControlView : public ControlView {
 public:
  explicit GridControlView(const Place& place) {
    setWidget(new GridTable(*place.control.grid(), place.act, place.parent));
  }
  void update() override {}
};

std::unique_ptr<ControlView> make(const Place& place) {
  switch (place.control.kind()) {
    case ControlKind::label:
      if (place.control.lines() > LongLabelView::shownLines) return std::make_unique<LongLabelView>(place);
      return std::make_unique<LabelView>(place);
    case ControlKind::edit:
      return std::make_unique<EditView>(place);
    case ControlKind::multiLineEdit:
      return std::make_unique<LinesView>(place);
    case ControlKind::checkBox:
      return std::make_unique<CheckView>(place);
    case ControlKind::button:
      return std::make_unique<ButtonView>(place);
    case ControlKind::listBox:
      return std::make_unique<ListView>(place);
    case ControlKind::swatches:
      return std::make_unique<SwatchesView>(place);
    case ControlKind::grid:
      return std::make_unique<GridControlView>(place);
  }
  return nullptr;
}

}  // namespace

std::unique_ptr<ControlView> makeControlView(Form& form, Control& control, const Act& act, QWidget* parent) {
  auto made = make({form, control, act, parent});
  made->widget()->setObjectName(QString::number(control.number()));
  made->widget()->setToolTip(plainTip(control.tip()));
  return made;
}

}  // namespace platform
