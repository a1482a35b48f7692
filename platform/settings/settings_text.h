#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// The text of a settings store, line by line:
///
///     # a comment
///     [Software\Korvane Software\Shared]
///     "Name"="A text, with \" \\ \n \r and \0 escaped"
///
/// Lines that can't be read stay where they are and have no meaning. Of two values with one name, the
/// last counts. A section is there when its heading is, or that of one below it.
class SettingsText {
 public:
  explicit SettingsText(std::string_view text);
  std::string toText() const;

  bool hasSection(std::wstring_view section) const;
  std::optional<std::wstring> value(std::wstring_view section, std::wstring_view name) const;
  /// The section must be there.
  void setValue(std::wstring_view section, std::wstring_view name, std::wstring_view value);
  void addSection(std::wstring_view section);
  /// Each name once, in the order of their capital letters.
  std::vector<std::wstring> subsections(std::wstring_view section) const;

 private:
  struct Line {
    enum Kind { other, heading, value } kind = other;
    std::string raw;
    std::wstring name;   ///< of the section or the value
    std::wstring text;   ///< of the value
    std::wstring upper;  ///< the name in capital letters
  };
  static Line parse(std::string_view raw);
  static Line headingLine(std::wstring_view section);
  static Line valueLine(std::wstring_view name, std::wstring_view value);

  std::vector<Line> lines_;
};

}  // namespace platform
