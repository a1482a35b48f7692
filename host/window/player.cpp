#include "host/window/player.h"

#include <QAbstractButton>
#include <QApplication>
#include <QEventLoop>
#include <QKeySequence>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QProgressBar>
#include <QWheelEvent>
#include <algorithm>

#include "host/window/picture_compare.h"

namespace host {
namespace {

/// How often a dialog that is open is looked after, in milliseconds.
constexpr int dialogRound = 10;

/// Letters of what a deed takes: a place (two numbers of pixels or a point of the drawing), a number, a text;
/// behind a "?" what may be missing.
struct Verb {
  const wchar_t* name;
  const wchar_t* takes;
};
constexpr Verb verbs[] = {
    {L"click", L"p?t"},   {L"double", L"p?t"}, {L"move", L"p"},   {L"drag", L"pp?t"},  {L"press", L"p?t"},
    {L"release", L"p?t"}, {L"wheel", L"np"},   {L"key", L"t"},    {L"type", L"t"},     {L"keyword", L"t"},
    {L"menu", L"t"},      {L"switch", L"t"},   {L"layer", L"tn"}, {L"tab", L"n"},      {L"size", L"nn"},
    {L"close", L""},      {L"button", L"t"},   {L"shot", L"t"},   {L"compare", L"tn"}, {L"tell", L"t"},
    {L"leave", L""},      {L"wait", L"n"},
};

const Verb* verbNamed(const std::wstring& name) {
  const auto found =
      std::find_if(std::begin(verbs), std::end(verbs), [&](const Verb& each) { return each.name == name; });
  return found == std::end(verbs) ? nullptr : found;
}

bool isNumber(const Deed& deed, size_t at) {
  return at < deed.values.size() && std::holds_alternative<double>(deed.values[at]);
}
double number(const Deed& deed, size_t at) { return std::get<double>(deed.values[at]); }
const std::wstring& wordOf(const Deed& deed, size_t at) { return std::get<std::wstring>(deed.values[at]); }

Qt::MouseButton buttonOf(const std::wstring& words) {
  if (words.find(L"right") != std::wstring::npos) return Qt::RightButton;
  return words.find(L"middle") != std::wstring::npos ? Qt::MiddleButton : Qt::LeftButton;
}

Qt::KeyboardModifiers modifiersOf(const std::wstring& words) {
  return words.find(L"shift") != std::wstring::npos ? Qt::ShiftModifier : Qt::NoModifier;
}

}  // namespace

std::wstring Player::problemOf(const Deed& deed) {
  const Verb* const verb = verbNamed(deed.verb);
  if (!verb) return L"no deed of a person: " + deed.verb;
  const std::wstring problem = L"bad values of the deed: " + deed.verb;
  size_t at = 0;
  bool optional = false;
  for (const wchar_t each : std::wstring_view(verb->takes)) {
    if (each == L'?') {
      optional = true;
    } else if (at >= deed.values.size()) {
      if (!optional) return problem;
    } else if (each == L'p' && std::holds_alternative<AcGePoint3d>(deed.values[at])) {
      ++at;
    } else if (each == L'p') {
      if (!isNumber(deed, at) || !isNumber(deed, at + 1)) return problem;
      at += 2;
    } else if (each == L'n' ? !isNumber(deed, at) : !std::holds_alternative<std::wstring>(deed.values[at])) {
      return problem;
    } else {
      ++at;
    }
  }
  return at == deed.values.size() ? std::wstring() : problem;
}

Player::Player(MainWindow& window, bool isAlone) : window_(window), isAlone_(isAlone) {
  QObject::connect(&dialogs_, &QTimer::timeout, &window_, [this] {
    if (deeds_.empty() && !isAlone_) return dialogs_.stop();
    QWidget* const dialog = QApplication::activeModalWidget();
    if (!dialog || !dialog->isVisible()) return;
    if (!playNext()) dialog->close();
  });
  if (isAlone_) dialogs_.start(dialogRound);
}

void Player::add(Deed deed) {
  const bool isBusy = deed.verb.starts_with(L"busy ");
  if (isBusy) deed.verb.erase(0, 5);
  (isBusy ? busyDeeds_ : deeds_).push_back(std::move(deed));
  if (!dialogs_.isActive()) dialogs_.start(dialogRound);
}

bool Player::playNext() {
  if (deeds_.empty()) return false;
  const Deed deed = std::move(deeds_.front());
  deeds_.pop_front();
  play(deed);
  QCoreApplication::processEvents();
  return true;
}

void Player::playBusy() {
  if (busyDeeds_.empty()) return;
  const Deed deed = std::move(busyDeeds_.front());
  busyDeeds_.pop_front();
  play(deed);
}

void Player::play(const Deed& deed) {
  const std::wstring& verb = deed.verb;
  if (verb == L"key") return key(wordOf(deed, 0));
  if (verb == L"tell") return tell(wordOf(deed, 0));
  if (verb == L"compare") return compare(wordOf(deed, 0), number(deed, 1));
  if (verb == L"shot") {
    const QString file = QString::fromStdWString(wordOf(deed, 0));
    if (!pictureWithDialogs().save(file)) note(L"no picture: " + wordOf(deed, 0));
    return;
  }
  if (verb == L"button") return pressEntry(wordOf(deed, 0));
  if (verb == L"size")
    return window_.resize(static_cast<int>(number(deed, 0)), static_cast<int>(number(deed, 1)));
  if (verb == L"wait") {
    QEventLoop loop;
    QTimer::singleShot(static_cast<int>(number(deed, 0)), &loop, [&] { loop.quit(); });
    loop.exec();
    return;
  }
  if (verb == L"close") {
    window_.close();
    return;
  }
  if (isBlocked()) return note(L"a dialog is open: " + verb);
  if (verb == L"type") return type(wordOf(deed, 0));
  if (verb == L"menu" || verb == L"switch") return pressEntry(wordOf(deed, 0));
  if (verb == L"keyword") {
    if (!window_.commands().pressKeyword(QString::fromStdWString(wordOf(deed, 0))))
      note(L"no keyword: " + wordOf(deed, 0));
  } else if (verb == L"layer") {
    if (!window_.layers().click(wordOf(deed, 0), static_cast<int>(number(deed, 1))))
      note(L"no layer: " + wordOf(deed, 0));
  } else if (verb == L"tab") {
    if (window_.tabs().isEnabled()) window_.tabs().setCurrentIndex(static_cast<int>(number(deed, 0)));
  } else if (verb == L"leave") {
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&window_.viewport(), &leave);
  } else {
    playMouse(deed);
  }
}

bool Player::isBlocked() const {
  const QWidget* const dialog = QApplication::activeModalWidget();
  return dialog && dialog->isVisible() && dialog != &window_;
}

// Mouse

QPointF Player::placeOf(const Deed& deed, size_t& at) {
  if (const auto* const point = std::get_if<AcGePoint3d>(&deed.values[at])) {
    ++at;
    return window_.viewport().placeOf(*point).value_or(QPointF());
  }
  at += 2;
  return {number(deed, at - 2), number(deed, at - 1)};
}

void Player::send(QEvent::Type type, Qt::MouseButton button, const QPointF& place,
                  Qt::KeyboardModifiers keys) {
  Viewport& viewport = window_.viewport();
  QMouseEvent event(type, place, viewport.mapToGlobal(place), button, held_, keys);
  QApplication::sendEvent(&viewport, &event);
}

void Player::press(Qt::MouseButton button, const QPointF& place, Qt::KeyboardModifiers keys) {
  send(QEvent::MouseMove, Qt::NoButton, place, keys);
  held_ = button;
  send(QEvent::MouseButtonPress, button, place, keys);
}

void Player::release(const QPointF& place, Qt::KeyboardModifiers keys) {
  const auto button = static_cast<Qt::MouseButton>(held_.toInt());
  held_ = Qt::NoButton;
  send(QEvent::MouseButtonRelease, button, place, keys);
}

void Player::wheel(double notches, const QPointF& place) {
  Viewport& viewport = window_.viewport();
  QWheelEvent event(place, viewport.mapToGlobal(place), QPoint(), QPoint(0, static_cast<int>(notches * 120)),
                    Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
  QApplication::sendEvent(&viewport, &event);
}

void Player::playMouse(const Deed& deed) {
  size_t at = 0;
  if (deed.verb == L"wheel") return wheel(number(deed, 0), placeOf(deed, ++at));
  const QPointF place = placeOf(deed, at);
  const QPointF end = deed.verb == L"drag" ? placeOf(deed, at) : place;
  const std::wstring words = at < deed.values.size() ? wordOf(deed, at) : std::wstring();
  const Qt::MouseButton button = buttonOf(words);
  const Qt::KeyboardModifiers keys = modifiersOf(words);
  if (deed.verb == L"move") return send(QEvent::MouseMove, Qt::NoButton, place, keys);
  if (deed.verb == L"release") return release(place, keys);
  press(button, place, keys);
  if (deed.verb == L"press") return;
  if (deed.verb == L"drag") {
    // The press may be the answer to a prompt, and the release that to the next one.
    const Deed::Value x = (place.x() + end.x()) / 2, y = (place.y() + end.y()) / 2, text = words;
    deeds_.push_front({L"release", {end.x(), end.y(), text}});
    deeds_.push_front({L"move", {end.x(), end.y()}});
    deeds_.push_front({L"move", {x, y}});
    return;
  }
  release(end, keys);
  if (deed.verb != L"double") return;
  held_ = button;
  send(QEvent::MouseButtonDblClick, button, place, keys);
  release(place, keys);
}

// Keys

void Player::key(const std::wstring& name) {
  QWidget* target = QApplication::activeModalWidget();
  if (!target) target = &window_.commands().line();
  if (QWidget* const inside = target->window()->focusWidget(); inside && target->isWindow()) target = inside;
  const QKeySequence keys(QString::fromStdWString(name));
  if (keys.isEmpty()) return note(L"no key: " + name);
  const QKeyCombination combination = keys[0];
  for (QAction* const each : window_.findChildren<QAction*>()) {
    if (!isBlocked() && each->shortcut() == keys && window_.isEnabled() && each->isEnabled())
      return each->trigger();
  }
  for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
    QKeyEvent event(type, combination.key(), combination.keyboardModifiers());
    QApplication::sendEvent(target, &event);
  }
}

void Player::type(const std::wstring& text) {
  for (const QChar each : QString::fromStdWString(text)) {
    const int key = each == QLatin1Char('\n') ? int(Qt::Key_Return) : each.toUpper().unicode();
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, key == Qt::Key_Return ? QString() : QString(each));
    QApplication::sendEvent(&window_.commands().line(), &event);
  }
}

void Player::pressEntry(const std::wstring& name) {
  const QString wanted = QString::fromStdWString(name);
  QWidget* const dialog = QApplication::activeModalWidget();
  for (QAbstractButton* const each : (dialog ? dialog : &window_)->findChildren<QAbstractButton*>()) {
    QString shown = each->text();
    if (shown.remove(QLatin1Char('&')) == wanted || each->objectName() == wanted) return each->click();
  }
  QAction* const entry = dialog ? nullptr : window_.findChild<QAction*>(wanted);
  if (!entry) return note(L"no entry: " + name);
  if (window_.isEnabled()) entry->trigger();
}

// What is to be seen

QImage Player::pictureWithDialogs() {
  window_.viewport().finish();
  QImage picture = window_.grab().toImage();
  QPainter painter(&picture);
  for (QWidget* const each : QApplication::topLevelWidgets()) {
    const bool isDialog = each != &window_ && each->isVisible() && each->isWindow();
    if (!isDialog) continue;
    const QRect frame(each->geometry().center() - window_.geometry().topLeft() - each->rect().center(),
                      each->size());
    // A title bar is the desktop's, which nobody draws off screen.
    const QRect bar(frame.left(), frame.top() - 24, frame.width(), 24);
    painter.fillRect(bar.adjusted(-1, -1, 1, 0), QColor(70, 74, 80));
    painter.setPen(Qt::white);
    painter.drawText(bar.adjusted(8, 0, 0, 0), Qt::AlignVCenter, each->windowTitle());
    painter.setPen(QColor(70, 74, 80));
    painter.drawRect(frame.adjusted(-1, -1, 0, 0));
    painter.drawPixmap(frame.topLeft(), each->grab());
  }
  return picture;
}

void Player::compare(const std::wstring& file, double tolerance) {
  const std::wstring difference =
      comparePicture(window_.viewport().picture(), QString::fromStdWString(file), tolerance);
  if (difference.empty()) {
    log_.emplace_back(true);
  } else {
    note(difference);
  }
}

void Player::tell(const std::wstring& what) {
  CommandPanel& commands = window_.commands();
  if (what == L"prompt") return note(commands.prompt().toStdWString());
  if (what == L"keywords") return note(commands.keywords().join(QLatin1Char(' ')).toStdWString());
  if (what == L"layers") return note(window_.layers().shownNames().join(QLatin1Char('|')).toStdWString());
  if (what == L"line") return note(commands.line().text().toStdWString());
  if (what == L"title") return note(window_.windowTitle().toStdWString());
  if (what == L"cursor") return note(window_.cursorText().toStdWString());
  if (what == L"enabled") return log_.emplace_back(window_.isEnabled()), void();
  if (what == L"progress") {
    const auto* const meter = window_.findChild<QProgressBar*>();
    return note(meter && meter->isVisibleTo(&window_)
                    ? QStringLiteral("%1 of %2").arg(meter->value()).arg(meter->maximum()).toStdWString()
                    : L"");
  }
  if (what == L"snap") {
    const auto& snap = window_.viewport().snap();
    return note(snap ? std::to_wstring(snap->mode) : L"");
  }
  if (what == L"tabs") {
    QStringList names;
    for (int i = 0; i < window_.tabs().count(); ++i) {
      names << (i == window_.tabs().currentIndex() ? QStringLiteral("[%1]") : QStringLiteral("%1"))
                   .arg(window_.tabs().tabText(i));
    }
    return note(names.join(QLatin1Char(' ')).toStdWString());
  }
  if (what == L"said") {
    const std::wstring said = commands.said();
    return note(said.substr(said.rfind(L'\n', said.size() - std::min<size_t>(said.size(), 2)) + 1));
  }
  note(L"nothing to tell: " + what);
}

}  // namespace host
