#include "host/window/command_panel.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

namespace host {
namespace {

constexpr int mostLines = 5000, mostHistory = 500, mostShownCompletions = 60;

QString commonBegin(const std::vector<std::string>& words) {
  QString common = QString::fromStdString(words.front());
  for (const std::string& each : words) {
    const QString word = QString::fromStdString(each);
    qsizetype length = 0;
    while (length < common.size() && length < word.size() && common[length] == word[length]) ++length;
    common.truncate(length);
  }
  return common;
}

}  // namespace

CommandPanel::CommandPanel(Listeners listeners)
    : listeners_(std::move(listeners)),
      said_(new QPlainTextEdit(this)),
      prompt_(new QLabel(this)),
      line_(new QLineEdit(this)) {
  said_->setReadOnly(true);
  said_->setFocusPolicy(Qt::ClickFocus);
  said_->setMaximumBlockCount(mostLines);
  said_->setMinimumSize(1, 1);
  said_->setFrameShape(QFrame::NoFrame);
  line_->setObjectName(QStringLiteral("line"));
  line_->setFrame(false);
  line_->setMinimumWidth(1);
  line_->installEventFilter(this);
  prompt_->setTextFormat(Qt::RichText);
  prompt_->setFocusPolicy(Qt::NoFocus);
  prompt_->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Preferred);
  connect(prompt_, &QLabel::linkActivated, this, [this](const QString& link) {
    const size_t place = link.toUInt();
    if (place < keywords_.size()) listeners_.onKeyword(keywords_[place]);
  });
  auto* const row = new QHBoxLayout;
  row->setSpacing(6);
  row->addWidget(prompt_);
  row->addWidget(line_, 1);
  row->setContentsMargins(4, 2, 4, 2);
  auto* const column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(said_, 1);
  column->addLayout(row);
  setFocusProxy(line_);
  showPrompt(nullptr);
}

// What is said

void CommandPanel::append(const std::wstring& text) {
  QScrollBar* const bar = said_->verticalScrollBar();
  QTextCursor end(said_->document());
  end.movePosition(QTextCursor::End);
  end.insertText(QString::fromStdWString(text).remove(QLatin1Char('\r')));
  bar->setValue(bar->maximum());
}

std::wstring CommandPanel::said() const { return said_->toPlainText().toStdWString(); }
QString CommandPanel::prompt() const { return shownPrompt_; }

// The prompt

/// The prompt with each keyword between its brackets as a link; keywords that it doesn't name stand behind.
QString CommandPanel::linked(const QString& prompt, const KeywordList& keywords) {
  std::vector<bool> named(keywords.size());
  const auto link = [&](size_t place, const QString& text) {
    named[place] = true;
    shownKeywords_ << text;
    keywords_.push_back(L"_" + keywords.nameAt(place));
    return QStringLiteral("<a href=\"%1\">%2</a>").arg(keywords_.size() - 1).arg(text.toHtmlEscaped());
  };
  const qsizetype open = prompt.indexOf(QLatin1Char('[')), close = prompt.indexOf(QLatin1Char(']'), open + 1);
  QString text;
  if (open >= 0 && close > open) {
    QStringList parts;
    for (const QString& part : prompt.mid(open + 1, close - open - 1).split(QLatin1Char('/'))) {
      const auto place = keywords.find(part.trimmed().toStdWString());
      parts << (place && !named[*place] ? link(*place, part) : part.toHtmlEscaped());
    }
    text = prompt.left(open + 1).toHtmlEscaped() + parts.join(QLatin1Char('/')) +
           prompt.mid(close).toHtmlEscaped();
  } else {
    text = prompt.toHtmlEscaped();
  }
  for (size_t i = 0; i < keywords.size(); ++i) {
    if (!named[i]) text += QLatin1Char(' ') + link(i, QString::fromStdWString(keywords.shownAt(i)));
  }
  return text;
}

void CommandPanel::showPrompt(const Request* request, bool goesOn) {
  const QString plain = request  ? QString::fromStdWString(request->prompt).trimmed()
                        : goesOn ? QStringLiteral("(_>")
                                 : QStringLiteral("Command:");
  takesText_ = request && request->wanted == Wanted::text;
  shownKeywords_.clear();
  keywords_.clear();
  const QString shown = request ? linked(plain, request->rules.keywords) : plain.toHtmlEscaped();
  shownPrompt_ = plain;
  if (prompt_->text() != shown) prompt_->setText(shown);
}

bool CommandPanel::pressKeyword(const QString& shown) {
  const qsizetype place = shownKeywords_.indexOf(shown);
  if (place < 0) return false;
  listeners_.onKeyword(keywords_[static_cast<size_t>(place)]);
  return true;
}

// The line

bool CommandPanel::eventFilter(QObject* watched, QEvent* event) {
  if (watched != line_) return QWidget::eventFilter(watched, event);
  const auto* const pressed = event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride
                                  ? static_cast<QKeyEvent*>(event)
                                  : nullptr;
  if (!pressed) return false;
  const bool withModifier = pressed->modifiers() & (Qt::ControlModifier | Qt::AltModifier);
  if (event->type() == QEvent::ShortcutOverride) {
    // Undo and redo are the drawing's where nothing is typed.
    return line_->text().isEmpty() && withModifier && pressed->key() != Qt::Key_V;
  }
  return takeKey(pressed->key(), withModifier);
}

bool CommandPanel::takeKey(int key, bool withModifier) {
  if (withModifier) return false;
  switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return endLine(), true;
    case Qt::Key_Space:
      return blankEnds() && (endLine(), true);
    case Qt::Key_Escape:
      line_->clear();
      listeners_.onEscape();
      return true;
    case Qt::Key_Up:
      return recall(at_ - 1), true;
    case Qt::Key_Down:
      return recall(at_ + 1), true;
    case Qt::Key_Tab:
      return complete(), true;
    default:
      return (key != Qt::Key_Delete || line_->text().isEmpty()) && listeners_.onKey(key);
  }
}

/// A blank ends commands and answers, but not texts and LISP.
bool CommandPanel::blankEnds() const {
  const QString text = line_->text();
  if (takesText_ || shownPrompt_ == QStringLiteral("(_>")) return false;
  return text.isEmpty() || !QStringLiteral("(!\"';").contains(text.front());
}

void CommandPanel::endLine() {
  const QString text = line_->text();
  line_->clear();
  if (!text.trimmed().isEmpty() && (history_.isEmpty() || history_.back() != text)) {
    history_ << text;
    if (history_.size() > mostHistory) history_.removeFirst();
  }
  at_ = history_.size();
  listeners_.onLine(text.toStdWString());
}

void CommandPanel::recall(qsizetype place) {
  if (place < 0 || place > history_.size()) return;
  at_ = place;
  line_->setText(place == history_.size() ? QString() : history_[place]);
}

void CommandPanel::complete() {
  const QString before = line_->text().left(line_->cursorPosition());
  qsizetype begin = before.size();
  while (begin > 0 && !QStringLiteral(" \t\"'()").contains(before[begin - 1])) --begin;
  const auto found =
      listeners_.completions(before.left(begin).toStdString(), before.mid(begin).toStdString());
  if (found.empty()) return;
  const QString common = commonBegin(found);
  if (common.size() > before.size() - begin) {
    line_->setText(before.left(begin) + common + line_->text().mid(before.size()));
    line_->setCursorPosition(static_cast<int>(begin + common.size()));
  } else if (found.size() > 1) {
    QStringList shown;
    for (const std::string& each : found) {
      if (shown.size() == mostShownCompletions) break;
      shown << QString::fromStdString(each);
    }
    if (found.size() > mostShownCompletions)
      shown << QStringLiteral("and %1 more").arg(found.size() - mostShownCompletions);
    append((QLatin1Char('\n') + shown.join(QStringLiteral("  ")) + QLatin1Char('\n')).toStdWString());
  }
}

}  // namespace host
