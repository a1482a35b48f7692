#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace platform {

/// The entries that a list cell offers, each with a number of the program's. Never changed once made, so that
/// all cells of a column share one.
class Choices {
 public:
  /// Entries beyond the numbers given have 0.
  explicit Choices(std::vector<std::wstring> texts, std::vector<int64_t> numbers = {});
  Choices(const Choices&) = delete;
  Choices& operator=(const Choices&) = delete;

  const std::vector<std::wstring>& texts() const { return texts_; }
  /// Of the first entry with exactly this text.
  std::optional<int64_t> numberOf(std::wstring_view text) const;
  bool has(std::wstring_view text) const { return places_.contains(text); }

 private:
  std::vector<std::wstring> texts_;
  std::vector<int64_t> numbers_;
  std::unordered_map<std::wstring_view, size_t> places_;
};

using SharedChoices = std::shared_ptr<const Choices>;

/// The entries of a text like "Yes|No" or "|Browse. . .": what stands before the first "|" may be empty, and
/// then is none.
std::vector<std::wstring> splitChoices(std::wstring_view text);

}  // namespace platform
