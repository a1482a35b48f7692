#include "platform/desktop/qt/shown_text.h"

#include <algorithm>

namespace platform {

void ShownText::set(std::wstring model) {
  model_ = std::move(model);
  shown_.clear();
  shown_.reserve(static_cast<qsizetype>(model_.size()));
  places_.clear();
  places_.reserve(model_.size() + 1);
  // What isn't shown belongs to what follows it.
  size_t begin = 0;
  for (size_t i = 0; i < model_.size(); ++i) {
    const auto c = static_cast<char32_t>(model_[i]);
    if (lines_ == Lines::many && c == U'\r') continue;
    if (QChar::requiresSurrogates(c)) {
      shown_ += QChar(QChar::highSurrogate(c));
      places_.push_back(begin);
    }
    shown_ += QChar(QChar::requiresSurrogates(c) ? QChar::lowSurrogate(c) : static_cast<char16_t>(c));
    places_.push_back(begin);
    begin = i + 1;
  }
  places_.push_back(model_.size());
  seen_ = shown_;
}

std::wstring ShownText::typed(const QString& text) const {
  std::wstring made;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const QChar c = text[i];
    if (c.isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
      made += static_cast<wchar_t>(QChar::surrogateToUcs4(c, text[++i]));
    } else if (lines_ == Lines::many && c == QLatin1Char('\n')) {
      made += L"\r\n";
    } else {
      made += static_cast<wchar_t>(c.unicode());
    }
  }
  return made;
}

void ShownText::edit(const QString& now) {
  if (now == seen_) return;
  // A widget that shows another number of units than it was given leaves nothing to compare.
  if (seen_.size() != shown_.size()) return set(typed(now));
  const qsizetype most = std::min(now.size(), seen_.size());
  qsizetype before = 0, behind = 0;
  while (before < most && now[before] == seen_[before]) ++before;
  while (before > 0 && now[before - 1].isHighSurrogate()) --before;
  while (behind < most - before && now[now.size() - 1 - behind] == seen_[seen_.size() - 1 - behind]) ++behind;
  while (behind > 0 && now[now.size() - behind].isLowSurrogate()) --behind;
  const size_t from = places_[static_cast<size_t>(before)];
  const size_t to = places_[static_cast<size_t>(seen_.size() - behind)];
  std::wstring changed = model_.substr(0, from) + typed(now.mid(before, now.size() - before - behind));
  changed.append(model_, to);
  set(std::move(changed));
}

}  // namespace platform
