#include "host/lisp/reader.h"

#include <cctype>
#include <charconv>
#include <cmath>
#include <vector>

#include "platform/text/utf.h"

namespace lisp {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

bool endsToken(char c) {
  return c == '\0' || static_cast<unsigned char>(c) <= ' ' || c == '(' || c == ')' || c == '"' || c == '\'' ||
         c == ';';
}

bool isDigit(char c) { return c >= '0' && c <= '9'; }

size_t skipDigits(std::string_view text, size_t at) {
  while (at < text.size() && isDigit(text[at])) ++at;
  return at;
}

enum class Token { integer, real, misplacedDot, symbol };

// [+-]digits, or [+-]digits[.digits][e[+-]digits]; a point needs a digit before it.
Token classify(std::string_view text) {
  size_t at = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
  const size_t whole = at;
  at = skipDigits(text, at);
  if (at == whole) {
    if (at < text.size() && text[at] == '.' && skipDigits(text, at + 1) > at + 1 &&
        skipDigits(text, at + 1) == text.size()) {
      return Token::misplacedDot;
    }
    return Token::symbol;
  }
  if (at == text.size()) return Token::integer;
  if (text[at] == '.') at = skipDigits(text, at + 1);
  if (at == text.size()) return Token::real;
  if (text[at] != 'e' && text[at] != 'E') return Token::symbol;
  ++at;
  if (at < text.size() && (text[at] == '+' || text[at] == '-')) ++at;
  const size_t exponent = at;
  at = skipDigits(text, at);
  return at == text.size() && at > exponent ? Token::real : Token::symbol;
}

double toReal(std::string_view text) {
  if (text[0] == '+') text.remove_prefix(1);
  double value = 0.0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    return text.find("e-") != std::string_view::npos || text.find("E-") != std::string_view::npos ? 0.0
           : text[0] == '-'                                                                       ? -HUGE_VAL
                                                                                                  : HUGE_VAL;
  }
  return value;
}

}  // namespace

Value readToken(Interpreter& lisp, std::string_view token) {
  switch (classify(token)) {
    case Token::integer: {
      const std::string_view digits = token[0] == '+' ? token.substr(1) : token;
      int32_t value = 0;
      const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), value);
      return result.ec == std::errc() ? Value(value) : Value(toReal(token));
    }
    case Token::real:
      return Value(toReal(token));
    case Token::misplacedDot:
      throw LispError(L"misplaced dot on input");
    case Token::symbol:
      break;
  }
  const std::wstring name = fromUtf8(token);
  if (name.size() == 3 && (name[0] | 32) == L'n' && (name[1] | 32) == L'i' && (name[2] | 32) == L'l')
    return {};
  return Value(lisp.intern(name));
}

Reader::Reader(Interpreter& lisp, std::string_view source, std::wstring fileName)
    : lisp_(lisp), source_(source), fileName_(std::move(fileName)), quote_(lisp.intern(L"QUOTE")) {
  if (source_.substr(0, 3) == byteOrderMark) source_.remove_prefix(3);
}

void Reader::fail(const wchar_t* message) {
  std::wstring text = message;
  if (!fileName_.empty()) text += L": " + fileName_ + L", line " + std::to_wstring(line_);
  throw LispError(text);
}

void Reader::skipLine() {
  while (at_ < source_.size() && source_[at_] != '\n') ++at_;
}

bool Reader::skipBlockComment() {
  while (at_ < source_.size()) {
    if (peek() == '|' && peek(1) == ';') {
      at_ += 2;
      return true;
    }
    advance();
  }
  return false;
}

/// False at the end of the source.
bool Reader::skipBlanks() {
  while (at_ < source_.size()) {
    const char c = peek();
    if (c == ';' && peek(1) == '|') {
      at_ += 2;
      if (!skipBlockComment()) fail(L"malformed comment on input");
    } else if (c == ';') {
      skipLine();
    } else if (static_cast<unsigned char>(c) <= ' ') {
      advance();
    } else {
      return true;
    }
  }
  return false;
}

namespace {

/// A list that is open while it is read, or a quote that waits for its form.
struct Open {
  enum class Rest { elements, dotted, complete };
  bool isQuote = false;
  Rest rest = Rest::elements;
  int line = 1;
  ListBuilder list;
};

}  // namespace

std::optional<Value> Reader::next() {
  std::vector<Open> open;
  if (!skipBlanks()) return {};
  formStart_ = at_;
  for (;;) {
    if (!skipBlanks()) {
      line_ = open.front().line;
      fail(L"malformed list on input");
    }
    std::optional<Value> complete;
    const char c = peek();
    if (c == '(') {
      advance();
      open.push_back({});
      open.back().line = line_;
    } else if (c == '\'') {
      advance();
      open.push_back({});
      open.back().isQuote = true;
      open.back().line = line_;
    } else if (c == ')') {
      advance();
      if (open.empty()) fail(L"extra right paren on input");
      if (open.back().isQuote || open.back().rest == Open::Rest::dotted) fail(L"malformed list on input");
      complete = open.back().list.take();
      open.pop_back();
    } else if (c == '.' && endsToken(peek(1)) && !open.empty()) {
      advance();
      if (open.back().isQuote || open.back().rest != Open::Rest::elements) fail(L"misplaced dot on input");
      open.back().rest = Open::Rest::dotted;
    } else {
      complete = c == '"' ? readText() : readAtom();
    }
    while (complete) {
      if (open.empty()) return complete;
      Open& outer = open.back();
      if (outer.isQuote) {
        complete = cons(Value(quote_), cons(std::move(*complete), Value()));
        open.pop_back();
        continue;
      }
      if (outer.rest == Open::Rest::complete) fail(L"extra form after dot on input");
      if (outer.rest == Open::Rest::dotted) {
        outer.list.end(std::move(*complete));
        outer.rest = Open::Rest::complete;
      } else {
        outer.list.add(std::move(*complete));
      }
      complete.reset();
    }
  }
}

Value Reader::readAtom() {
  const size_t start = at_;
  while (!endsToken(peek())) ++at_;
  if (at_ == start) {
    ++at_;
    fail(L"bad character read (octal): 0");
  }
  try {
    return readToken(lisp_, source_.substr(start, at_ - start));
  } catch (const LispError& error) {
    fail(error.message.c_str());
  }
}

Value Reader::readText() {
  const int startLine = line_;
  advance();
  std::string bytes;
  while (at_ < source_.size()) {
    const char c = peek();
    if (c == '"') {
      ++at_;
      return Value(std::wstring_view(fromUtf8(bytes)));
    }
    if (c != '\\') {
      bytes += c;
      advance();
      continue;
    }
    ++at_;
    const wchar_t escaped = readEscape(bytes);
    if (escaped) bytes += toUtf8(std::wstring_view(&escaped, 1));
  }
  line_ = startLine;
  fail(L"malformed string on input");
}

/// The character behind a backslash, or 0 when it was put into `bytes` as it stands.
wchar_t Reader::readEscape(std::string& bytes) {
  const char c = peek();
  if (at_ >= source_.size()) return 0;
  if (c >= '0' && c <= '7') {
    wchar_t value = 0;
    for (int digits = 0; digits < 3 && peek() >= '0' && peek() <= '7'; ++digits, ++at_) {
      value = static_cast<wchar_t>(value * 8 + (peek() - '0'));
    }
    return value;
  }
  if ((c == 'U' || c == 'u') && peek(1) == '+') {
    uint32_t value = 0;
    const char* const first = source_.data() + at_ + 2;
    const char* const last = std::min(first + 4, source_.data() + source_.size());
    const auto result = std::from_chars(first, last, value, 16);
    if (result.ptr == first + 4) {
      at_ += 6;
      return static_cast<wchar_t>(value);
    }
  }
  switch (c) {
    case 'n':
      ++at_;
      return L'\n';
    case 't':
      ++at_;
      return L'\t';
    case 'r':
      ++at_;
      return L'\r';
    case 'e':
      ++at_;
      return 27;
    default:
      bytes += c;
      advance();
      return 0;
  }
}

}  // namespace lisp
