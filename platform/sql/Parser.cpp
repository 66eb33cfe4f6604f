#include "platform/sql/Parser.h"

#include <array>
#include <charconv>
#include <unordered_set>

#include "platform/sql/Names.h"
#include "platform/sql/SqlError.h"

namespace trellin::sql {
namespace {

// Words that end an expression or a name list; they can't stand as a bare alias or column.
constexpr std::array<std::string_view, 33> kReserved{
    "ALL",    "AND",    "AS",   "ASC",   "BETWEEN", "BY",   "DESC",  "DISTINCT", "DISTINCTROW",
    "EXISTS", "FALSE",  "FROM", "GROUP", "HAVING",  "IN",   "INNER", "IS",       "JOIN",
    "LEFT",   "LIKE",   "MOD",  "NOT",   "NULL",    "ON",   "OR",    "ORDER",    "OUTER",
    "RIGHT",  "SELECT", "TOP",  "TRUE",  "UNION",   "WHERE"};

}  // namespace

std::unique_ptr<Query> ParseStatement(std::string_view text) { return Parser(text).Statement(); }

DepthGuard::DepthGuard(Parser& parser) : parser_(parser) {
  if (++parser_.depth_ > kMaxDepth) {
    const Token& token = parser_.Peek();
    throw SqlError("statement nested too deeply", token.position, std::string(token.source),
                   ErrorKind::Input);
  }
}

Parser::Parser(std::string_view text) : tokens_(Tokenize(text)) {
  if (tokens_.size() > kMaxTokens) {
    throw SqlError("the filters make the query too long (more than " + std::to_string(kMaxTokens) +
                       " words and signs)",
                   1, "", ErrorKind::Input);
  }
  static const std::unordered_set<std::string_view, NameHash, NameEqual> reserved(kReserved.begin(),
                                                                                  kReserved.end());
  for (Token& token : tokens_) {
    token.reserved =
        token.kind == TokenKind::kName && !token.bracketed && reserved.count(token.text) > 0;
  }
}

std::unique_ptr<Query> Parser::Statement() {
  auto query = ParseQuery();
  AcceptSymbol(";");
  if (Peek().kind != TokenKind::kEnd) Unexpected(Peek());
  return query;
}

std::unique_ptr<Query> Parser::ParseQuery() {
  DepthGuard guard(*this);
  auto query = std::make_unique<Query>();
  query->position = Peek().position;
  query->selects.push_back(ParseSelect());
  while (AcceptKeyword("UNION")) {
    query->union_all.push_back(AcceptKeyword("ALL"));
    query->selects.push_back(ParseSelect());
  }
  if (PeekKeyword("ORDER")) query->order_by = ParseOrderBy();
  return query;
}

Select Parser::ParseSelect() {
  Select select;
  select.position = Peek().position;
  ExpectKeyword("SELECT");
  if (AcceptKeyword("DISTINCT")) {
    select.distinct = true;
  } else if (!AcceptKeyword("DISTINCTROW")) {
    AcceptKeyword("ALL");
  }
  if (AcceptKeyword("TOP")) {
    const Token& count = Peek();
    std::int64_t value = 0;
    auto [end, error] =
        std::from_chars(count.text.data(), count.text.data() + count.text.size(), value);
    if (count.kind != TokenKind::kNumber || error != std::errc() ||
        end != count.text.data() + count.text.size()) {
      Unexpected(count);
    }
    Advance();
    if (PeekKeyword("PERCENT")) {
      throw SqlError("TOP n PERCENT is not supported", Peek().position, std::string(Peek().source));
    }
    select.top = value;
  }
  ParseSelectItems(select);
  if (AcceptKeyword("FROM")) {
    do {
      select.from.push_back(ParseJoinChain());
    } while (AcceptSymbol(","));
  }
  if (AcceptKeyword("WHERE")) select.where = ParseExpr();
  if (AcceptKeyword("GROUP")) {
    ExpectKeyword("BY");
    do {
      select.group_by.push_back(ParseExpr());
    } while (AcceptSymbol(","));
  }
  if (AcceptKeyword("HAVING")) select.having = ParseExpr();
  return select;
}

void Parser::ParseSelectItems(Select& select) {
  do {
    SelectItem item;
    item.position = Peek().position;
    if (AcceptSymbol("*")) {
      select.items.push_back(std::move(item));
      continue;
    }
    if (Peek().kind == TokenKind::kName && PeekSymbol(".", 1) && PeekSymbol("*", 2)) {
      item.star_qualifier = Advance().text;
      Advance();
      Advance();
      select.items.push_back(std::move(item));
      continue;
    }
    item.expr = ParseExpr();
    item.alias = ParseOptionalAlias();
    select.items.push_back(std::move(item));
  } while (AcceptSymbol(","));
}

std::string Parser::ParseOptionalAlias() {
  if (AcceptKeyword("AS")) {
    const Token& name = Peek();
    if (name.kind != TokenKind::kName && name.kind != TokenKind::kText) Unexpected(name);
    return Advance().text;
  }
  if (Peek().kind == TokenKind::kName && !IsReserved(Peek())) return Advance().text;
  return {};
}

std::vector<OrderItem> Parser::ParseOrderBy() {
  ExpectKeyword("ORDER");
  ExpectKeyword("BY");
  std::vector<OrderItem> items;
  do {
    OrderItem item;
    item.expr = ParseExpr();
    if (AcceptKeyword("DESC")) {
      item.descending = true;
    } else {
      AcceptKeyword("ASC");
    }
    items.push_back(std::move(item));
  } while (AcceptSymbol(","));
  return items;
}

std::unique_ptr<TableRef> Parser::ParseJoinChain() {
  DepthGuard guard(*this);
  auto left = ParseTablePrimary();
  while (true) {
    JoinKind kind;
    int position = Peek().position;
    if (AcceptKeyword("INNER")) {
      kind = JoinKind::kInner;
    } else if (AcceptKeyword("LEFT")) {
      kind = JoinKind::kLeft;
      AcceptKeyword("OUTER");
    } else if (AcceptKeyword("RIGHT")) {
      kind = JoinKind::kRight;
      AcceptKeyword("OUTER");
    } else if (PeekKeyword("JOIN")) {
      kind = JoinKind::kInner;
    } else {
      return left;
    }
    ExpectKeyword("JOIN");
    auto join = std::make_unique<TableRef>();
    join->kind = TableRef::Kind::kJoin;
    join->position = position;
    join->join = kind;
    join->left = std::move(left);
    join->right = ParseTablePrimary();
    ExpectKeyword("ON");
    join->on = ParseExpr();
    left = std::move(join);
  }
}

std::unique_ptr<TableRef> Parser::ParseTablePrimary() {
  DepthGuard guard(*this);
  const Token& token = Peek();
  if (token.kind == TokenKind::kSymbol && token.text == "(") {
    if (PeekKeyword("SELECT", 1)) {
      auto derived = std::make_unique<TableRef>();
      derived->kind = TableRef::Kind::kDerived;
      derived->position = token.position;
      derived->query = ParseParenthesisedQuery();
      derived->alias = ParseOptionalAlias();
      return derived;
    }
    Advance();
    auto inner = ParseJoinChain();
    ExpectSymbol(")");
    return inner;
  }
  if (token.kind != TokenKind::kName || IsReserved(token)) Unexpected(token);
  auto table = std::make_unique<TableRef>();
  table->kind = TableRef::Kind::kTable;
  table->position = token.position;
  table->name = Advance().text;
  table->alias = ParseOptionalAlias();
  return table;
}

std::unique_ptr<Query> Parser::ParseParenthesisedQuery() {
  ExpectSymbol("(");
  auto query = ParseQuery();
  ExpectSymbol(")");
  return query;
}

const Token& Parser::Advance() {
  const Token& token = tokens_[pos_];
  if (pos_ + 1 < tokens_.size()) ++pos_;
  return token;
}

bool Parser::IsKeyword(const Token& token, std::string_view word) const {
  return token.kind == TokenKind::kName && !token.bracketed && SameName(token.text, word);
}

bool Parser::PeekKeyword(std::string_view word, std::size_t ahead) const {
  return IsKeyword(Peek(ahead), word);
}

bool Parser::AcceptKeyword(std::string_view word) {
  if (!PeekKeyword(word)) return false;
  Advance();
  return true;
}

bool Parser::AcceptSymbol(std::string_view symbol) {
  if (!PeekSymbol(symbol)) return false;
  Advance();
  return true;
}

void Parser::ExpectKeyword(std::string_view word) {
  if (!AcceptKeyword(word)) Unexpected(Peek());
}

void Parser::ExpectSymbol(std::string_view symbol) {
  if (!AcceptSymbol(symbol)) Unexpected(Peek());
}

bool Parser::IsReserved(const Token& token) const { return token.reserved; }

void Parser::Unexpected(const Token& token) const {
  if (token.kind == TokenKind::kEnd) {
    throw SqlError("unexpected end of text", token.position, "");
  }
  throw SqlError("unexpected '" + std::string(token.source) + "'", token.position,
                 std::string(token.source));
}

}  // namespace trellin::sql
