#pragma once
// Recursive-descent parser for the Jet SELECT statements reports write.

#include <memory>
#include <string_view>
#include <vector>

#include "platform/sql/Ast.h"
#include "platform/sql/Lexer.h"

namespace trellin::sql {

// The syntax tree of `text`: one SELECT or a UNION of them, ORDER BY, an optional ';'.
// Throws SqlError naming the first token that does not fit. Text longer than kMaxTokens tokens,
// nested deeper than kMaxDepth, or with a chain of more than kMaxArithmeticOperands operands of
// one arithmetic operator is refused with an SqlError of ErrorKind::Input: only a user's filter
// of thousands of codes grows a statement so, and SQLite could not take it.
[[nodiscard]] std::unique_ptr<Query> ParseStatement(std::string_view text);

// The caps on one statement: tokens in all (an account filter of 8,000 ranges is about 90,000),
// nesting of parentheses, sub-queries and mixed operators, and operands of one chain of
// arithmetic (SQLite takes no expression deeper than 1,000). Chains of Or, And and & are not
// capped apart from the tokens: the emitter writes them as balanced trees.
inline constexpr std::size_t kMaxTokens = 250'000;
inline constexpr int kMaxDepth = 200;
inline constexpr std::size_t kMaxArithmeticOperands = 500;

class Parser {
 public:
  explicit Parser(std::string_view text);

  std::unique_ptr<Query> Statement();

 private:
  friend class DepthGuard;

  // Statements and FROM (Parser.cpp).
  std::unique_ptr<Query> ParseQuery();
  Select ParseSelect();
  void ParseSelectItems(Select& select);
  std::unique_ptr<TableRef> ParseJoinChain();
  std::unique_ptr<TableRef> ParseTablePrimary();
  std::string ParseOptionalAlias();
  std::vector<OrderItem> ParseOrderBy();

  // Expressions, lowest precedence first (ParserExpr.cpp).
  // The node a loop over one precedence level is building, and how many times it has wrapped a
  // node of its own in a new one (a + b - c is Sub over Add: one wrap).
  struct Chain {
    Expr* node = nullptr;
    int wraps = 0;
  };
  // `left` op `right`, joining the chain's node when it has the same operator.
  std::unique_ptr<Expr> Extend(Chain& chain, Op op, std::unique_ptr<Expr> left,
                               std::unique_ptr<Expr> right);
  std::unique_ptr<Expr> ParseExpr();
  std::unique_ptr<Expr> ParseXor();
  std::unique_ptr<Expr> ParseAnd();
  std::unique_ptr<Expr> ParseNot();
  std::unique_ptr<Expr> ParseComparison();
  std::unique_ptr<Expr> ParseJoin();
  std::unique_ptr<Expr> ParseAdditive();
  std::unique_ptr<Expr> ParseMod();
  std::unique_ptr<Expr> ParseIntDiv();
  std::unique_ptr<Expr> ParseMultiplicative();
  std::unique_ptr<Expr> ParseUnary();
  std::unique_ptr<Expr> ParsePower();
  std::unique_ptr<Expr> ParsePrimary();
  std::unique_ptr<Expr> ParseNamePrimary();
  std::unique_ptr<Expr> ParseCall(const Token& name);
  std::unique_ptr<Query> ParseParenthesisedQuery();

  // Tokens.
  [[nodiscard]] const Token& Peek(std::size_t ahead = 0) const {
    std::size_t index = pos_ + ahead;
    return index < tokens_.size() ? tokens_[index] : tokens_.back();
  }
  const Token& Advance();
  [[nodiscard]] bool IsKeyword(const Token& token, std::string_view word) const;
  [[nodiscard]] bool PeekKeyword(std::string_view word, std::size_t ahead = 0) const;
  // Symbols are one or two characters.
  [[nodiscard]] bool PeekSymbol(std::string_view symbol, std::size_t ahead = 0) const {
    const Token& token = Peek(ahead);
    return token.kind == TokenKind::kSymbol && token.text.size() == symbol.size() &&
           token.text[0] == symbol[0] && (symbol.size() == 1 || token.text[1] == symbol[1]);
  }
  bool AcceptKeyword(std::string_view word);
  bool AcceptSymbol(std::string_view symbol);
  void ExpectKeyword(std::string_view word);
  void ExpectSymbol(std::string_view symbol);
  // True for a plain (unbracketed) word the grammar reserves.
  [[nodiscard]] bool IsReserved(const Token& token) const;
  [[noreturn]] void Unexpected(const Token& token) const;

  std::vector<Token> tokens_;
  std::size_t pos_ = 0;
  int depth_ = 0;
};

// Counts nesting while it lives, so that deeply nested text fails cleanly instead of
// exhausting the stack.
class DepthGuard {
 public:
  explicit DepthGuard(Parser& parser);
  ~DepthGuard() { --parser_.depth_; }
  DepthGuard(const DepthGuard&) = delete;
  DepthGuard& operator=(const DepthGuard&) = delete;

 private:
  Parser& parser_;
};

}  // namespace trellin::sql
