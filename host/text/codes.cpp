#include "host/text/codes.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "host/text/single_line.h"
#include "platform/text/letters.h"

namespace host::text {
namespace {

/// Factors and heights of codes stay in a range in which products of them can be drawn.
constexpr double smallest = 1e-6, largest = 1e6;
constexpr double degree = 0.017453292519943296;

class CodeReader {
 public:
  CodeReader(std::wstring_view contents, const Format& base) : text_(contents), baseHeight_(base.height) {
    document_.formats.push_back(base);
    document_.paragraphs.emplace_back();
  }

  Document read() {
    while (at_ < text_.size()) step();
    endLetters();
    return std::move(document_);
  }

 private:
  struct State {
    size_t format, settings;
  };

  void step() {
    const wchar_t letter = text_[at_];
    if (letter == L'\\') return backslash();
    if (letter == L'^' && at_ + 1 < text_.size()) return caret();
    if (letter == L'%' && percent()) return;
    ++at_;
    if (letter == L'{') {
      endLetters(), saved_.push_back({format_, settings_});
    } else if (letter == L'}' && !saved_.empty()) {
      endLetters();
      format_ = saved_.back().format, settings_ = saved_.back().settings;
      saved_.pop_back();
    } else if (letter != L'}') {
      control(letter);
    }
  }

  void control(wchar_t letter) {
    if (letter == L'\t') return add(Piece::tab);
    if (letter == L'\n') return add(Piece::paragraph);
    if (letter != L'\r') letters_ += std::max(letter, L' ');
  }

  /// ^I, ^J and ^M are controls, "^ " is the sign itself, and others give nothing.
  void caret() {
    const wchar_t next = text_[at_ + 1];
    at_ += 2;
    if (next == L' ') {
      letters_ += L'^';
    } else if (next >= L'@' && next <= L'_') {
      const auto code = static_cast<wchar_t>(next - L'@');
      if (code == L'\t' || code == L'\n') control(code);
    } else {
      --at_, letters_ += L'^';
    }
  }

  bool percent() {
    const size_t start = at_;
    if (text_.substr(at_, 2) != L"%%" || at_ + 2 >= text_.size()) return false;
    switch (lowerLetter(text_[at_ + 2])) {
      case L'u':
        change([](Format& f) { f.underlined = !f.underlined; });
        break;
      case L'o':
        change([](Format& f) { f.overlined = !f.overlined; });
        break;
      case L'k':
        change([](Format& f) { f.struck = !f.struck; });
        break;
      default:
        if (const wchar_t letter = letterOfCode(text_, at_)) letters_ += letter;
        return at_ != start;
    }
    at_ += 3;
    return true;
  }

  void backslash() {
    if (const wchar_t letter = letterOfCode(text_, at_)) {
      letters_ += letter;
      return;
    }
    if (at_ + 1 >= text_.size()) {
      letters_ += text_[at_++];
      return;
    }
    const wchar_t code = text_[at_ + 1];
    at_ += 2;
    if (!letterCode(code) && !lineCode(code) && !valueCode(code)) letters_ += {L'\\', code};
  }

  bool letterCode(wchar_t code) {
    switch (code) {
      case L'\\':
      case L'{':
      case L'}':
        letters_ += code;
        return true;
      case L'~':
        letters_ += L'\u00A0';
        return true;
      case L'P':
      case L'X':
        add(Piece::paragraph);
        return true;
      case L'N':
        add(Piece::column);
        return true;
      case L'S':
        stack(argument());
        return true;
      default:
        return false;
    }
  }

  bool lineCode(wchar_t code) {
    const bool on = lowerLetter(code) != code;
    switch (code) {
      case L'L':
      case L'l':
        change([on](Format& f) { f.underlined = on; });
        return true;
      case L'O':
      case L'o':
        change([on](Format& f) { f.overlined = on; });
        return true;
      case L'K':
      case L'k':
        change([on](Format& f) { f.struck = on; });
        return true;
      default:
        return false;
    }
  }

  bool valueCode(wchar_t code) {
    switch (code) {
      case L'H':
        change([this](Format& f) { f.height = sized(f.height); });
        return true;
      case L'W':
        change([this](Format& f) { f.widthFactor = sized(f.widthFactor); });
        return true;
      case L'T':
        change([this](Format& f) { f.tracking = sized(f.tracking); });
        return true;
      case L'Q':
        if (const auto angle = number())
          change([&](Format& f) { f.oblique = std::clamp(*angle, -85.0, 85.0) * degree; });
        endValue();
        return true;
      case L'A':
        place();
        return true;
      case L'C':
        if (const auto index = number(); index && *index >= 0 && *index <= 256)
          setColour(Colour::indexed, *index);
        endValue();
        return true;
      case L'c':
        // The lowest byte is red.
        if (const auto value = number(); value && *value >= 0 && *value <= 0xFFFFFF) {
          const auto bgr = static_cast<std::uint32_t>(*value);
          setColour(Colour::exact, (bgr & 0xFF) << 16 | (bgr & 0xFF00) | bgr >> 16);
        }
        endValue();
        return true;
      case L'f':
      case L'F':
        font(argument());
        return true;
      case L'p':
        paragraph(argument());
        return true;
      default:
        return false;
    }
  }

  void setColour(Colour::Kind kind, double value) {
    change([&](Format& f) { f.colour = {kind, static_cast<std::uint32_t>(value)}; });
  }

  void place() {
    const auto value = number();
    change([&](Format& f) {
      f.inLine = value == 1.0 ? InLine::centre : value == 2.0 ? InLine::top : InLine::bottom;
    });
    endValue();
  }

  /// The new value of a code that gives one or, with an x behind, a factor on the old one.
  double sized(double old) {
    const auto value = number();
    double result = old;
    if (value && *value != 0) result = std::abs(*value);
    if (at_ < text_.size() && (text_[at_] == L'x' || text_[at_] == L'X')) {
      ++at_;
      if (value) result = old * std::abs(*value);
    }
    endValue();
    return std::clamp(result, std::min(smallest, baseHeight_), std::max(largest, baseHeight_ * largest));
  }

  static std::optional<double> numberAt(std::wstring_view text, size_t& at) {
    std::string digits;
    size_t end = at;
    bool point = false, any = false;
    for (; end < text.size() && digits.size() < 40; ++end) {
      const wchar_t letter = text[end];
      const bool sign = (letter == L'-' || letter == L'+') && end == at;
      const bool digit = letter >= L'0' && letter <= L'9';
      if (!sign && !digit && (letter != L'.' || point)) break;
      point = point || letter == L'.';
      any = any || digit;
      digits += static_cast<char>(letter);
    }
    if (!any) return std::nullopt;
    at = end;
    return std::strtod(digits.c_str(), nullptr);
  }
  std::optional<double> number() { return numberAt(text_, at_); }
  void endValue() {
    if (at_ < text_.size() && text_[at_] == L';') ++at_;
  }

  /// To the next semicolon without a backslash before it, which is skipped.
  std::wstring_view argument() {
    const size_t start = at_;
    while (at_ < text_.size() && text_[at_] != L';') at_ += text_[at_] == L'\\' ? 2 : 1;
    const size_t end = std::min(at_, text_.size());
    at_ = std::min(end + 1, text_.size());
    return text_.substr(start, end - start);
  }

  void font(std::wstring_view words) {
    const std::wstring_view name = words.substr(0, words.find(L'|'));
    if (name.empty()) return;
    const bool bold = words.find(L"|b1") != std::wstring_view::npos;
    const bool italic = words.find(L"|i1") != std::wstring_view::npos;
    change([&](Format& f) { f.font = &fontNamed(name, bold, italic); });
  }

  void stack(std::wstring_view words) {
    Piece::Kind kind = Piece::letters;
    std::wstring parts[2];
    for (size_t at = 0; at < words.size(); ++at) {
      wchar_t letter = words[at];
      const bool literal = letter == L'\\' && at + 1 < words.size();
      if (literal) letter = words[++at];
      if (!literal && kind == Piece::letters && (letter == L'/' || letter == L'#' || letter == L'^')) {
        kind = letter == L'/' ? Piece::fraction : letter == L'#' ? Piece::diagonal : Piece::limits;
      } else {
        parts[kind == Piece::letters ? 0 : 1] += std::max(letter, L' ');
      }
    }
    // A blank stands behind the sign only to hold it.
    for (std::wstring& each : parts) each.erase(0, std::min(each.find_first_not_of(L' '), each.size()));
    if (kind == Piece::letters) {
      letters_ += parts[0];
    } else {
      add(kind, std::move(parts[0]), std::move(parts[1]));
    }
  }

  void paragraph(std::wstring_view words) {
    endLetters();
    Paragraph next = document_.paragraphs[settings_];
    for (size_t at = 0; at < words.size();) {
      const wchar_t code = words[at++];
      if (code == L'q') {
        next.align = alignOf(at < words.size() ? words[at++] : L' ');
      } else if (code == L't') {
        readTabs(words, at, next);
      } else if (double* const field = code == L'i'   ? &next.indent
                                       : code == L'l' ? &next.left
                                       : code == L'r' ? &next.right
                                                      : nullptr) {
        *field = std::clamp(numberAt(words, at).value_or(0), -largest, largest);
      }
    }
    next.left = std::max(next.left, 0.0), next.right = std::max(next.right, 0.0);
    if (next == document_.paragraphs[settings_]) return;
    settings_ = document_.paragraphs.size();
    document_.paragraphs.push_back(std::move(next));
  }

  static Align alignOf(wchar_t code) {
    switch (code) {
      case L'l':
        return Align::left;
      case L'c':
        return Align::centre;
      case L'r':
        return Align::right;
      case L'j':
      case L'd':
        return Align::justified;
      default:
        return Align::byAttachment;
    }
  }

  static void readTabs(std::wstring_view words, size_t& at, Paragraph& next) {
    constexpr size_t most = 100;
    next.tabs.clear();
    while (at < words.size()) {
      if (words[at] == L',') ++at;
      Align align = Align::left;
      if (at < words.size() && (words[at] == L'c' || words[at] == L'r')) align = alignOf(words[at++]);
      const auto position = numberAt(words, at);
      if (!position) break;
      if (next.tabs.size() < most && *position > 0 && *position < largest)
        next.tabs.push_back({*position, align});
    }
    std::sort(next.tabs.begin(), next.tabs.end(),
              [](const TabStop& a, const TabStop& b) { return a.position < b.position; });
  }

  template <class Change>
  void change(Change edit) {
    endLetters();
    Format next = document_.formats[format_];
    edit(next);
    if (next == document_.formats[format_]) return;
    format_ = document_.formats.size();
    document_.formats.push_back(next);
  }

  void endLetters() {
    if (letters_.empty()) return;
    document_.pieces.push_back({Piece::letters, std::move(letters_), {}, format_, settings_});
    letters_.clear();
  }
  void add(Piece::Kind kind, std::wstring text = {}, std::wstring lower = {}) {
    endLetters();
    document_.pieces.push_back({kind, std::move(text), std::move(lower), format_, settings_});
  }

  std::wstring_view text_;
  double baseHeight_;
  size_t at_ = 0;
  std::wstring letters_;
  size_t format_ = 0, settings_ = 0;
  std::vector<State> saved_;
  Document document_;
};

}  // namespace

Document readCodes(std::wstring_view contents, const Format& base) {
  return CodeReader(contents, base).read();
}

}  // namespace host::text
