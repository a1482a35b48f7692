#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace jet {

enum class TokenKind { End, Name, Bracketed, Text, Integer, Real, Date, Guid, Symbol };

struct Token {
  TokenKind kind = TokenKind::End;
  size_t place = 0;   ///< byte offset of its first character in the statement
  std::string text;   ///< name without brackets, text without quotes, symbol, digits
  double number = 0;  ///< value of an Integer, Real or Date

  bool isSymbol(std::string_view symbol) const { return kind == TokenKind::Symbol && text == symbol; }
  /// A bare word in this sense; `word` is upper-case. A bracketed name is never a word.
  bool isWord(std::string_view word) const;
};

/// Cuts a statement into tokens; the last one is End. Throws `Failure` (3075) at text that is no token.
std::vector<Token> tokenize(std::string_view statement);

}  // namespace jet
