#include "engine/jet_sql/token.h"

#include <cctype>
#include <charconv>

#include "engine/errors/error.h"
#include "engine/jet_sql/date.h"

namespace jet {
namespace {

bool startsName(char c) {
  return std::isalpha(static_cast<unsigned char>(c)) || c == '_' || static_cast<unsigned char>(c) >= 0x80;
}
bool isDigit(char c) { return c >= '0' && c <= '9'; }
bool continuesName(char c) { return startsName(c) || isDigit(c) || c == '$' || c == '@'; }

class Tokenizer {
 public:
  explicit Tokenizer(std::string_view statement) : text_(statement) {}

  std::vector<Token> run() {
    std::vector<Token> tokens;
    do tokens.push_back(next(tokens.empty() ? nullptr : &tokens.back()));
    while (tokens.back().kind != TokenKind::End);
    return tokens;
  }

 private:
  [[noreturn]] void fail(std::string what, size_t place) const {
    throw Failure{errorAt(expressionSyntax, std::move(what), text_, place)};
  }

  char at(size_t i) const { return i < text_.size() ? text_[i] : '\0'; }

  Token next(const Token* previous) {
    while (at_ < text_.size() && std::isspace(static_cast<unsigned char>(text_[at_]))) ++at_;
    if (at_ >= text_.size()) return {TokenKind::End, at_, "", 0};
    const char c = text_[at_];
    if (startsName(c)) return name();
    if (isDigit(c) || (c == '.' && isDigit(at(at_ + 1)) && !followsName(previous))) return number();
    switch (c) {
      case '[':
        return enclosed(TokenKind::Bracketed, ']', false);
      case '`':
        return enclosed(TokenKind::Bracketed, '`', false);
      case '\'':
      case '"':
        return enclosed(TokenKind::Text, c, true);
      case '#':
        return date();
      case '{':
        return guid();
      case '&':
        if (!endsOperand(previous) && (at(at_ + 1) | 0x20) == 'h') return hexadecimal();
        break;
      default:
        break;
    }
    return symbol();
  }

  static bool followsName(const Token* previous) {
    return previous && (previous->kind == TokenKind::Name || previous->kind == TokenKind::Bracketed);
  }

  static bool endsOperand(const Token* previous) {
    return previous && (previous->kind != TokenKind::Symbol || previous->text == ")");
  }

  Token name() {
    const size_t start = at_;
    while (at_ < text_.size() && continuesName(text_[at_])) ++at_;
    return {TokenKind::Name, start, std::string(text_.substr(start, at_ - start)), 0};
  }

  Token number() {
    const size_t start = at_;
    bool real = false;
    while (isDigit(at(at_))) ++at_;
    if (at(at_) == '.') {
      real = true;
      do ++at_;
      while (isDigit(at(at_)));
    }
    if ((at(at_) | 0x20) == 'e') {
      const size_t sign = at(at_ + 1) == '+' || at(at_ + 1) == '-' ? 1 : 0;
      if (isDigit(at(at_ + 1 + sign))) {
        real = true;
        at_ += 1 + sign;
        while (isDigit(at(at_))) ++at_;
      }
    }
    if (startsName(at(at_))) fail("Syntax error (missing operator)", at_);
    Token token{TokenKind::Integer, start, std::string(text_.substr(start, at_ - start)), 0};
    const auto result =
        std::from_chars(token.text.data(), token.text.data() + token.text.size(), token.number);
    if (result.ec != std::errc()) throw Failure{errorAt(overflow, "Overflow", text_, start)};
    if (real || token.number > INT32_MAX) token.kind = TokenKind::Real;
    return token;
  }

  Token hexadecimal() {
    const size_t start = at_;
    at_ += 2;
    const size_t digits = at_;
    while (std::isxdigit(static_cast<unsigned char>(at(at_)))) ++at_;
    uint32_t value = 0;
    const auto result = std::from_chars(text_.data() + digits, text_.data() + at_, value, 16);
    if (at_ == digits || result.ec != std::errc()) fail("Syntax error in number", start);
    // Four digits are a whole number of 16 bits with its sign, as &HFFFF is -1.
    const double number = at_ - digits <= 4 ? static_cast<int16_t>(value) : static_cast<int32_t>(value);
    return {TokenKind::Integer, start, std::string(text_.substr(start, at_ - start)), number};
  }

  Token enclosed(TokenKind kind, char closing, bool doubled) {
    const size_t start = at_++;
    std::string content;
    for (;; ++at_) {
      const size_t end = text_.find(closing, at_);
      if (end == std::string_view::npos) {
        fail(kind == TokenKind::Text ? "Syntax error in string" : "Invalid bracketing of name", start);
      }
      content.append(text_.substr(at_, end - at_));
      at_ = end + 1;
      if (!doubled || at(at_) != closing) break;
      content += closing;
    }
    if (content.find('\0') != std::string::npos) fail("Syntax error in string", start);
    if (kind == TokenKind::Bracketed && content.empty()) fail("Invalid bracketing of name", start);
    return {kind, start, std::move(content), 0};
  }

  Token date() {
    const size_t start = at_++;
    const size_t end = text_.find('#', at_);
    if (end == std::string_view::npos) fail("Syntax error in date", start);
    const auto value = parseDate(text_.substr(at_, end - at_));
    if (!value) fail("Syntax error in date", start);
    at_ = end + 1;
    return {TokenKind::Date, start, std::string(text_.substr(start, at_ - start)), *value};
  }

  // {guid {8-4-4-4-12}} or the inner braces alone.
  Token guid() {
    const size_t start = at_;
    const bool outer = text_.substr(at_, 6).size() == 6 && (text_[at_ + 1] | 0x20) == 'g';
    const size_t open = outer ? text_.find('{', at_ + 1) : at_;
    const size_t close = text_.find('}', at_);
    if (open == std::string_view::npos || close != open + 37) fail("Syntax error in GUID", start);
    std::string content(text_.substr(open, 38));
    for (size_t i = 1; i < 37; ++i) {
      char& c = content[i];
      const bool dash = i == 9 || i == 14 || i == 19 || i == 24;
      if (dash ? c != '-' : !std::isxdigit(static_cast<unsigned char>(c)))
        fail("Syntax error in GUID", start);
      c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    at_ = close + 1;
    if (outer && at(at_++) != '}') fail("Syntax error in GUID", start);
    return {TokenKind::Guid, start, std::move(content), 0};
  }

  Token symbol() {
    const size_t start = at_;
    const std::string_view two = text_.substr(at_, 2);
    if (two == "<>" || two == "<=" || two == ">=") {
      at_ += 2;
      return {TokenKind::Symbol, start, std::string(two), 0};
    }
    const char c = text_[at_];
    if (c == '\0' || std::string_view("+-*/\\^&=<>(),.!;").find(c) == std::string_view::npos) {
      fail("Syntax error", start);
    }
    ++at_;
    return {TokenKind::Symbol, start, std::string(1, c), 0};
  }

  std::string_view text_;
  size_t at_ = 0;
};

}  // namespace

bool Token::isWord(std::string_view word) const {
  if (kind != TokenKind::Name || text.size() != word.size()) return false;
  for (size_t i = 0; i < word.size(); ++i) {
    if (std::toupper(static_cast<unsigned char>(text[i])) != word[i]) return false;
  }
  return true;
}

std::vector<Token> tokenize(std::string_view statement) { return Tokenizer(statement).run(); }

}  // namespace jet
