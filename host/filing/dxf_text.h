#pragma once

#include <string>
#include <string_view>

#include "host/text/code_page.h"

namespace host {

/// Texts of a drawing exchange file. In files, control characters stand as `^` and a letter ("^J" for
/// a new line, "^ " for `^` itself), and characters beyond the file's code page as `\U+XXXX`.

/// Paragraphs have codes of their own with the sign; in their contents it stands as it is.
enum class Carets { marks, plain };

/// Turns a file's bytes into text. Bytes that are not valid in the code page become U+FFFD.
class DxfTextDecoder {
 public:
  // UTF-8 to begin with.

  /// By the file's name for it ("ANSI_1252", "dos437", …). False for an unknown one: western is taken.
  bool useCodePage(std::string_view name);
  /// Bytes that aren't valid UTF-8 are still read in the code page that was set before.
  void useUtf8() { utf8_ = true; }

  void decode(std::string_view bytes, std::wstring& text, Carets carets = Carets::marks);
  std::wstring decode(std::string_view bytes) {
    std::wstring text;
    decode(bytes, text);
    return text;
  }

 private:
  text::CodePage page_{"ANSI_1252"};
  bool utf8_ = true;
};

/// The text as it stands in a UTF-8 file, appended to `bytes`.
void encodeDxfText(std::wstring_view text, std::string& bytes, Carets carets = Carets::marks);

}  // namespace host
