#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host {

/// The keywords that a prompt takes, and the rule by which a person may shorten them.
class KeywordList {
 public:
  KeywordList() = default;
  /// Words apart by blanks: "eXit" (the capitals must be typed), "EXIT,X" (what follows the comma must),
  /// "Ja Nein _Yes No" (behind the first "_": the names that the program gets, in the same order).
  explicit KeywordList(std::wstring_view text);

  bool empty() const { return words_.empty(); }
  size_t size() const { return words_.size(); }
  /// As a person sees it in prompts.
  const std::wstring& shownAt(size_t place) const { return words_[place].text; }
  /// The name of the keyword that was typed, in any case, whole or shortened; "_" before it asks for the
  /// program's name. Nothing when it is none or too short.
  std::optional<std::wstring> match(std::wstring_view typed) const;
  /// The same, as the place in the list from 0.
  std::optional<size_t> find(std::wstring_view typed) const;
  /// The name that the program gets.
  const std::wstring& nameAt(size_t place) const;

 private:
  struct Word {
    std::wstring text, required;
    /// Characters that reach to the end of what is required.
    size_t fewest = 0;
    bool means(const std::wstring& typed) const;
  };
  static Word wordOf(std::wstring_view text);

  std::vector<Word> words_, programNames_;
};

}  // namespace host
