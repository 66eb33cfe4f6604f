#include "platform/sql/Lexer.h"

#include <array>
#include <cmath>
#include <cstdlib>

#include "platform/sql/SqlError.h"

namespace trellin::sql {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsWordStart(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' ||
         static_cast<unsigned char>(c) >= 0x80;
}
bool IsWordChar(char c) { return IsWordStart(c) || IsDigit(c); }

constexpr std::array<std::string_view, 3> kTwoCharSymbols{"<>", "<=", ">="};
constexpr std::string_view kOneCharSymbols = "=<>+-*/\\&^(),.;";

class Lexer {
 public:
  explicit Lexer(std::string_view text) : text_(text) {}

  std::vector<Token> Run() {
    // SQLite reads statement text up to a NUL, so one inside a literal would cut it short.
    std::size_t nul = text_.find('\0');
    if (nul != std::string_view::npos) {
      throw SqlError("unexpected NUL character", Position(nul), std::string(1, '\0'));
    }
    std::vector<Token> tokens;
    while (true) {
      SkipBlanks();
      if (pos_ >= text_.size()) {
        tokens.push_back(Token{TokenKind::kEnd, "", Position(pos_), false, {}});
        return tokens;
      }
      tokens.push_back(Next());
    }
  }

 private:
  static int Position(std::size_t offset) { return static_cast<int>(offset) + 1; }

  void SkipBlanks() {
    while (pos_ < text_.size()) {
      char c = text_[pos_];
      if (c != ' ' && c != '\t' && c != '\r' && c != '\n' && c != '\f' && c != '\v') break;
      ++pos_;
    }
  }

  Token Make(TokenKind kind, std::size_t start, std::string text, bool bracketed = false) {
    return Token{kind, std::move(text), Position(start), bracketed,
                 text_.substr(start, pos_ - start)};
  }

  Token Next() {
    std::size_t start = pos_;
    char c = text_[pos_];
    if (IsWordStart(c)) {
      while (pos_ < text_.size() && IsWordChar(text_[pos_])) ++pos_;
      return Make(TokenKind::kName, start, std::string(text_.substr(start, pos_ - start)));
    }
    if (IsDigit(c) || (c == '.' && pos_ + 1 < text_.size() && IsDigit(text_[pos_ + 1]))) {
      return Number(start);
    }
    switch (c) {
      case '[':
        return Closed(start, ']', TokenKind::kName, "unterminated name");
      case '\'':
      case '"':
        return Quoted(start, c);
      case '#':
        return Closed(start, '#', TokenKind::kDate, "unterminated date literal");
      default:
        break;
    }
    for (std::string_view symbol : kTwoCharSymbols) {
      if (text_.substr(pos_, 2) == symbol) {
        pos_ += 2;
        return Make(TokenKind::kSymbol, start, std::string(symbol));
      }
    }
    if (kOneCharSymbols.find(c) != std::string_view::npos) {
      ++pos_;
      return Make(TokenKind::kSymbol, start, std::string(1, c));
    }
    throw SqlError("unexpected character '" + std::string(1, c) + "'", Position(start),
                   std::string(1, c));
  }

  Token Number(std::size_t start) {
    while (pos_ < text_.size() && IsDigit(text_[pos_])) ++pos_;
    if (pos_ < text_.size() && text_[pos_] == '.') {
      ++pos_;
      while (pos_ < text_.size() && IsDigit(text_[pos_])) ++pos_;
    }
    if (pos_ < text_.size() && (text_[pos_] == 'e' || text_[pos_] == 'E')) {
      std::size_t mark = pos_++;
      if (pos_ < text_.size() && (text_[pos_] == '+' || text_[pos_] == '-')) ++pos_;
      if (pos_ < text_.size() && IsDigit(text_[pos_])) {
        while (pos_ < text_.size() && IsDigit(text_[pos_])) ++pos_;
      } else {
        pos_ = mark;  // "1E" followed by a name: the number ends before the E
      }
    }
    if (pos_ < text_.size() && IsWordStart(text_[pos_])) {
      // "12abc" is no number and no name.
      while (pos_ < text_.size() && IsWordChar(text_[pos_])) ++pos_;
      std::string bad(text_.substr(start, pos_ - start));
      throw SqlError("invalid number '" + bad + "'", Position(start), bad);
    }
    std::string number(text_.substr(start, pos_ - start));
    if (!std::isfinite(std::strtod(number.c_str(), nullptr))) {
      throw SqlError("number out of range '" + number + "'", Position(start), number);
    }
    return Make(TokenKind::kNumber, start, std::move(number));
  }

  // [name] and #date#: everything up to the closing character, which has no escape.
  Token Closed(std::size_t start, char close, TokenKind kind, std::string_view problem) {
    std::size_t end = text_.find(close, start + 1);
    if (end == std::string_view::npos) {
      throw SqlError(problem, Position(start), std::string(text_.substr(start, 20)));
    }
    pos_ = end + 1;
    return Make(kind, start, std::string(text_.substr(start + 1, end - start - 1)),
                kind == TokenKind::kName);
  }

  // 'text' or "text", a doubled quote standing for one.
  Token Quoted(std::size_t start, char quote) {
    std::string content;
    ++pos_;
    while (true) {
      if (pos_ >= text_.size()) {
        throw SqlError("unterminated text literal", Position(start),
                       std::string(text_.substr(start, 20)));
      }
      char c = text_[pos_++];
      if (c == quote) {
        if (pos_ < text_.size() && text_[pos_] == quote) {
          content += quote;
          ++pos_;
          continue;
        }
        break;
      }
      content += c;
    }
    return Make(TokenKind::kText, start, std::move(content));
  }

  std::string_view text_;
  std::size_t pos_ = 0;
};

}  // namespace

std::vector<Token> Tokenize(std::string_view text) { return Lexer(text).Run(); }

}  // namespace trellin::sql
