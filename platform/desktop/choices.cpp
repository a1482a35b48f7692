#include "platform/desktop/choices.h"

#include <algorithm>

namespace platform {

Choices::Choices(std::vector<std::wstring> texts, std::vector<int64_t> numbers)
    : texts_(std::move(texts)), numbers_(std::move(numbers)) {
  places_.reserve(texts_.size());
  for (size_t i = 0; i < texts_.size(); ++i) places_.emplace(texts_[i], i);
}

std::optional<int64_t> Choices::numberOf(std::wstring_view text) const {
  const auto place = places_.find(text);
  if (place == places_.end()) return std::nullopt;
  return place->second < numbers_.size() ? numbers_[place->second] : 0;
}

std::vector<std::wstring> splitChoices(std::wstring_view text) {
  std::vector<std::wstring> entries;
  if (text.empty()) return entries;
  if (text.front() == L'|') text.remove_prefix(1);
  for (size_t at = 0; at <= text.size();) {
    const size_t end = std::min(text.find(L'|', at), text.size());
    entries.emplace_back(text.substr(at, end - at));
    at = end + 1;
  }
  return entries;
}

}  // namespace platform
