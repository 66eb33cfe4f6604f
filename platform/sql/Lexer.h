#pragma once
// Splits Jet SQL text into tokens. Jet has no comments: "--" is two minus signs.

#include <string>
#include <string_view>
#include <vector>

namespace trellin::sql {

enum class TokenKind {
  kName,    // a word or a [bracketed name]; keywords are names the parser recognises
  kNumber,  // 12, 12.5, .5, 1E3
  kText,    // 'it''s' or "it's", text holds the content without quotes
  kDate,    // #2024-03-31#, text holds what stands between the hashes
  kSymbol,  // operators and punctuation: = <> < > <= >= + - * / \ & ^ ( ) , . ;
  kEnd,
};

struct Token {
  TokenKind kind = TokenKind::kEnd;
  std::string text;
  int position = 0;         // 1-based offset of the first character
  bool bracketed = false;   // a [name], never a keyword
  std::string_view source;  // the token as written, for messages
  bool reserved = false;    // a word the grammar reserves; set by the parser
};

// The tokens of `text`, ending in one kEnd token. `text` must outlive the tokens. Throws
// SqlError for an unterminated quote, bracket or date, and for a character Jet does not use.
[[nodiscard]] std::vector<Token> Tokenize(std::string_view text);

}  // namespace trellin::sql
