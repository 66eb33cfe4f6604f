// Expressions, by Jet's precedence from lowest to highest: Or, Xor, And, Not, comparisons
// (= <> < > <= >= Like Is Between In), &, + -, Mod, \, * /, unary minus, ^.

#include "platform/sql/DateLiteral.h"
#include "platform/sql/Names.h"
#include "platform/sql/Parser.h"
#include "platform/sql/SqlError.h"

namespace trellin::sql {
namespace {

std::unique_ptr<Expr> MakeBinary(Op op, std::unique_ptr<Expr> left, std::unique_ptr<Expr> right) {
  auto expr = std::make_unique<Expr>();
  expr->kind = ExprKind::kBinary;
  expr->op = op;
  expr->position = left->position;
  expr->args.push_back(std::move(left));
  expr->args.push_back(std::move(right));
  return expr;
}

// Operators whose chains become one node. Comparisons chain too rarely to need it.
bool Flattens(Op op) {
  switch (op) {
    case Op::kOr:
    case Op::kXor:
    case Op::kAnd:
    case Op::kJoin:
    case Op::kAdd:
    case Op::kSub:
    case Op::kMul:
    case Op::kDiv:
    case Op::kIntDiv:
    case Op::kMod:
    case Op::kPow:
      return true;
    default:
      return false;
  }
}

// Or, And and & are written as balanced trees however long; other chains are written as they
// read, and SQLite takes no expression deeper than a thousand.
bool Balanced(Op op) { return op == Op::kOr || op == Op::kAnd || op == Op::kJoin; }

struct SymbolOp {
  std::string_view symbol;
  Op op;
};

constexpr SymbolOp kComparisons[] = {{"=", Op::kEq},  {"<>", Op::kNe}, {"<", Op::kLt},
                                     {"<=", Op::kLe}, {">", Op::kGt},  {">=", Op::kGe}};

}  // namespace

std::unique_ptr<Expr> Parser::Extend(Chain& chain, Op op, std::unique_ptr<Expr> left,
                                     std::unique_ptr<Expr> right) {
  const bool own = chain.node != nullptr && chain.node == left.get();
  if (own && left->op == op && Flattens(op)) {
    if (!Balanced(op) && left->args.size() >= kMaxArithmeticOperands) {
      throw SqlError("expression too long: more than " + std::to_string(kMaxArithmeticOperands) +
                         " terms in one sum or product",
                     right->position, "", ErrorKind::Input);
    }
    left->args.push_back(std::move(right));
    return left;
  }
  // A new operator over the chain so far nests it one deeper, as a bracket would.
  if (own && ++chain.wraps + depth_ > kMaxDepth) {
    throw SqlError("statement nested too deeply", right->position, "", ErrorKind::Input);
  }
  auto node = MakeBinary(op, std::move(left), std::move(right));
  chain.node = node.get();
  return node;
}

std::unique_ptr<Expr> Parser::ParseExpr() {
  DepthGuard guard(*this);
  Chain chain;
  auto left = ParseXor();
  while (AcceptKeyword("OR")) left = Extend(chain, Op::kOr, std::move(left), ParseXor());
  return left;
}

std::unique_ptr<Expr> Parser::ParseXor() {
  Chain chain;
  auto left = ParseAnd();
  while (AcceptKeyword("XOR")) left = Extend(chain, Op::kXor, std::move(left), ParseAnd());
  return left;
}

std::unique_ptr<Expr> Parser::ParseAnd() {
  Chain chain;
  auto left = ParseNot();
  while (AcceptKeyword("AND")) left = Extend(chain, Op::kAnd, std::move(left), ParseNot());
  return left;
}

std::unique_ptr<Expr> Parser::ParseNot() {
  DepthGuard guard(*this);
  if (PeekKeyword("NOT")) {
    auto expr = std::make_unique<Expr>();
    expr->position = Advance().position;
    expr->kind = ExprKind::kUnary;
    expr->op = Op::kNot;
    expr->args.push_back(ParseNot());
    return expr;
  }
  return ParseComparison();
}

std::unique_ptr<Expr> Parser::ParseComparison() {
  Chain chain;
  auto left = ParseJoin();
  while (true) {
    bool matched = false;
    for (const SymbolOp& comparison : kComparisons) {
      if (AcceptSymbol(comparison.symbol)) {
        left = Extend(chain, comparison.op, std::move(left), ParseJoin());
        matched = true;
        break;
      }
    }
    if (matched) continue;
    auto expr = std::make_unique<Expr>();
    expr->position = left->position;
    if (AcceptKeyword("IS")) {
      expr->kind = ExprKind::kIsNull;
      expr->negated = AcceptKeyword("NOT");
      ExpectKeyword("NULL");
      expr->args.push_back(std::move(left));
      left = std::move(expr);
      continue;
    }
    bool negated = false;
    if (PeekKeyword("NOT") &&
        (PeekKeyword("LIKE", 1) || PeekKeyword("BETWEEN", 1) || PeekKeyword("IN", 1))) {
      Advance();
      negated = true;
    }
    expr->negated = negated;
    if (AcceptKeyword("LIKE")) {
      expr->kind = ExprKind::kLike;
      expr->args.push_back(std::move(left));
      expr->args.push_back(ParseJoin());
    } else if (AcceptKeyword("BETWEEN")) {
      expr->kind = ExprKind::kBetween;
      expr->args.push_back(std::move(left));
      expr->args.push_back(ParseJoin());
      ExpectKeyword("AND");
      expr->args.push_back(ParseJoin());
    } else if (AcceptKeyword("IN")) {
      expr->args.push_back(std::move(left));
      if (PeekSymbol("(") && PeekKeyword("SELECT", 1)) {
        expr->kind = ExprKind::kInQuery;
        expr->query = ParseParenthesisedQuery();
      } else {
        expr->kind = ExprKind::kInList;
        ExpectSymbol("(");
        do {
          expr->args.push_back(ParseExpr());
        } while (AcceptSymbol(","));
        ExpectSymbol(")");
      }
    } else {
      return left;
    }
    left = std::move(expr);
    chain.node = left.get();
    if (++chain.wraps + depth_ > kMaxDepth) {
      throw SqlError("statement nested too deeply", left->position, "", ErrorKind::Input);
    }
  }
}

std::unique_ptr<Expr> Parser::ParseJoin() {
  Chain chain;
  auto left = ParseAdditive();
  while (AcceptSymbol("&")) left = Extend(chain, Op::kJoin, std::move(left), ParseAdditive());
  return left;
}

std::unique_ptr<Expr> Parser::ParseAdditive() {
  Chain chain;
  auto left = ParseMod();
  while (true) {
    if (AcceptSymbol("+")) {
      left = Extend(chain, Op::kAdd, std::move(left), ParseMod());
    } else if (AcceptSymbol("-")) {
      left = Extend(chain, Op::kSub, std::move(left), ParseMod());
    } else {
      return left;
    }
  }
}

std::unique_ptr<Expr> Parser::ParseMod() {
  Chain chain;
  auto left = ParseIntDiv();
  while (AcceptKeyword("MOD")) left = Extend(chain, Op::kMod, std::move(left), ParseIntDiv());
  return left;
}

std::unique_ptr<Expr> Parser::ParseIntDiv() {
  Chain chain;
  auto left = ParseMultiplicative();
  while (AcceptSymbol("\\")) {
    left = Extend(chain, Op::kIntDiv, std::move(left), ParseMultiplicative());
  }
  return left;
}

std::unique_ptr<Expr> Parser::ParseMultiplicative() {
  Chain chain;
  auto left = ParseUnary();
  while (true) {
    if (AcceptSymbol("*")) {
      left = Extend(chain, Op::kMul, std::move(left), ParseUnary());
    } else if (AcceptSymbol("/")) {
      left = Extend(chain, Op::kDiv, std::move(left), ParseUnary());
    } else {
      return left;
    }
  }
}

std::unique_ptr<Expr> Parser::ParseUnary() {
  DepthGuard guard(*this);
  if (PeekSymbol("-") || PeekSymbol("+")) {
    auto expr = std::make_unique<Expr>();
    expr->kind = ExprKind::kUnary;
    expr->op = Peek().text == "-" ? Op::kNeg : Op::kPlus;
    expr->position = Advance().position;
    expr->args.push_back(ParseUnary());
    return expr;
  }
  return ParsePower();
}

std::unique_ptr<Expr> Parser::ParsePower() {
  Chain chain;
  auto left = ParsePrimary();
  while (AcceptSymbol("^")) left = Extend(chain, Op::kPow, std::move(left), ParsePrimary());
  return left;
}

std::unique_ptr<Expr> Parser::ParsePrimary() {
  DepthGuard guard(*this);
  const Token& token = Peek();
  auto expr = std::make_unique<Expr>();
  expr->position = token.position;
  switch (token.kind) {
    case TokenKind::kNumber:
      expr->kind = ExprKind::kNumber;
      expr->text = Advance().text;
      return expr;
    case TokenKind::kText:
      expr->kind = ExprKind::kText;
      expr->text = Advance().text;
      return expr;
    case TokenKind::kDate: {
      auto iso = JetDateToIso(token.text);
      if (!iso) {
        throw SqlError("invalid date literal '" + std::string(token.source) + "'", token.position,
                       std::string(token.source));
      }
      Advance();
      expr->kind = ExprKind::kDate;
      expr->text = *iso;
      return expr;
    }
    case TokenKind::kName:
      return ParseNamePrimary();
    case TokenKind::kSymbol:
      if (token.text == "(") {
        if (PeekKeyword("SELECT", 1)) {
          expr->kind = ExprKind::kSubquery;
          expr->query = ParseParenthesisedQuery();
          return expr;
        }
        Advance();
        auto inner = ParseExpr();
        ExpectSymbol(")");
        return inner;
      }
      break;
    case TokenKind::kEnd:
      break;
  }
  Unexpected(token);
}

std::unique_ptr<Expr> Parser::ParseNamePrimary() {
  const Token& token = Peek();
  auto expr = std::make_unique<Expr>();
  expr->position = token.position;
  if (!token.bracketed) {
    if (IsKeyword(token, "TRUE") || IsKeyword(token, "FALSE")) {
      expr->kind = ExprKind::kBoolean;
      expr->text = IsKeyword(token, "TRUE") ? "True" : "False";
      Advance();
      return expr;
    }
    if (IsKeyword(token, "NULL")) {
      expr->kind = ExprKind::kNull;
      Advance();
      return expr;
    }
    if (IsKeyword(token, "EXISTS")) {
      Advance();
      expr->kind = ExprKind::kExists;
      if (!(PeekSymbol("(") && PeekKeyword("SELECT", 1))) Unexpected(Peek(PeekSymbol("(") ? 1 : 0));
      expr->query = ParseParenthesisedQuery();
      return expr;
    }
    // Left( and Right( are the text functions, not joins.
    bool text_function = IsKeyword(token, "LEFT") || IsKeyword(token, "RIGHT");
    if (PeekSymbol("(", 1) && (text_function || !IsReserved(token))) {
      const Token& name = Advance();
      return ParseCall(name);
    }
    if (IsReserved(token)) Unexpected(token);
  }
  expr->kind = ExprKind::kColumn;
  expr->text = Advance().text;
  if (AcceptSymbol(".")) {
    const Token& column = Peek();
    if (column.kind != TokenKind::kName) Unexpected(column);
    expr->qualifier = std::move(expr->text);
    expr->text = Advance().text;
  }
  return expr;
}

std::unique_ptr<Expr> Parser::ParseCall(const Token& name) {
  auto expr = std::make_unique<Expr>();
  expr->kind = ExprKind::kCall;
  expr->position = name.position;
  expr->text = name.text;
  ExpectSymbol("(");
  if (AcceptSymbol("*")) {
    expr->star = true;
  } else if (!PeekSymbol(")")) {
    do {
      expr->args.push_back(ParseExpr());
    } while (AcceptSymbol(","));
  }
  ExpectSymbol(")");
  return expr;
}

}  // namespace trellin::sql
