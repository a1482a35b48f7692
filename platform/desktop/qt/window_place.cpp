#include "platform/desktop/qt/window_place.h"

#include <QGuiApplication>
#include <QScreen>
#include <QStringList>

#include "platform/settings/settings.h"

namespace platform {

namespace {

constexpr wchar_t section[] = L"Dialogs";
constexpr int smallest = 40, largest = 20000;

bool isOnScreen(const QRect& place) {
  for (const QScreen* const screen : QGuiApplication::screens()) {
    if (screen->availableGeometry().intersects(place)) return true;
  }
  return false;
}

}  // namespace

std::optional<QRect> keptPlace(const std::wstring& name) {
  const auto stored = name.empty() ? std::nullopt : readSetting(section, name);
  const QStringList words = QString::fromStdWString(stored.value_or(L"")).split(QLatin1Char(' '));
  if (words.size() != 4) return std::nullopt;
  const QRect place(words[0].toInt(), words[1].toInt(), words[2].toInt(), words[3].toInt());
  const auto fits = [](int length) { return length >= smallest && length <= largest; };
  if (!fits(place.width()) || !fits(place.height()) || !isOnScreen(place)) return std::nullopt;
  return place;
}

void keepPlace(const std::wstring& name, const QRect& place) {
  if (name.empty()) return;
  const std::wstring text = std::to_wstring(place.x()) + L" " + std::to_wstring(place.y()) + L" " +
                            std::to_wstring(place.width()) + L" " + std::to_wstring(place.height());
  if (writeSetting(section, name, text) == SettingStatus::missingSection &&
      makeSection(section) == SettingStatus::done)
    writeSetting(section, name, text);
}

}  // namespace platform
