#pragma once

#include <string>
#include <string_view>

namespace host::text {

/// Turns bytes of a code page into text; what isn't valid in it becomes U+FFFD.
class CodePage {
 public:
  /// By a name that drawings ("ANSI_1252", "dos437"), editors ("windows-1250", "latin-1") or standards
  /// ("iso-8859-2", "utf-16") have for it, in any case.
  explicit CodePage(std::string_view name);
  ~CodePage();
  CodePage(CodePage&& other) noexcept;
  CodePage& operator=(CodePage&& other) noexcept;

  bool isKnown() const;
  /// Only of a known one.
  std::wstring decode(std::string_view bytes) const;

 private:
  void* converter_;  // of iconv, to UTF-8
};

}  // namespace host::text
