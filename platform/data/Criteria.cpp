#include "platform/data/Criteria.h"

#include <cctype>
#include <optional>

#include "platform/runtime/DateText.h"
#include "platform/runtime/Strings.h"

namespace trellin::data {

enum class CompareOp { Equal, NotEqual, Less, LessEqual, Greater, GreaterEqual };

struct Criteria::Node {
  enum class Kind { And, Or, Not, Compare, IsNull, Like };
  Kind kind = Kind::Compare;
  std::shared_ptr<const Node> left, right;
  int field = -1;
  CompareOp op = CompareOp::Equal;
  Variant literal;
  std::string pattern;  // upper-cased, for LIKE
};

namespace {

using Node = Criteria::Node;

enum class TokenKind { Name, Text, Number, Date, Operator, Open, Close, End };

struct Token {
  TokenKind kind = TokenKind::End;
  std::string text;
};

struct OperatorSpelling {
  std::string_view text;
  CompareOp op;
};

// Two-character spellings first, so that "<=" is not read as "<" and "=".
constexpr OperatorSpelling kOperators[] = {
    {"<>", CompareOp::NotEqual}, {"<=", CompareOp::LessEqual}, {">=", CompareOp::GreaterEqual},
    {"=", CompareOp::Equal},     {"<", CompareOp::Less},       {">", CompareOp::Greater},
};

bool IsNameChar(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '.' || c == '$';
}

class Parser {
 public:
  Parser(std::string_view text, const std::vector<FieldInfo>& fields)
      : text_(text), fields_(fields) {
    Advance();
  }

  std::shared_ptr<const Node> ParseAll() {
    auto root = ParseOr();
    if (token_.kind != TokenKind::End) Fail("unexpected '" + token_.text + "'");
    return root;
  }

 private:
  [[noreturn]] void Fail(const std::string& why) const {
    throw RecordsetError("cannot use the criteria \"" + std::string(text_) + "\": " + why);
  }

  bool IsWord(std::string_view word) const {
    return token_.kind == TokenKind::Name && EqualsIgnoreCase(token_.text, word);
  }

  void Advance() {
    while (pos_ < text_.size() && std::isspace(static_cast<unsigned char>(text_[pos_]))) ++pos_;
    token_ = Token{};
    if (pos_ >= text_.size()) return;
    char c = text_[pos_];
    if (c == '(' || c == ')') {
      token_ = {c == '(' ? TokenKind::Open : TokenKind::Close, std::string(1, c)};
      ++pos_;
    } else if (c == '\'' || c == '"') {
      token_ = {TokenKind::Text, ReadQuoted(c)};
    } else if (c == '#') {
      std::size_t end = text_.find('#', pos_ + 1);
      if (end == std::string_view::npos) Fail("a date has no closing '#'");
      token_ = {TokenKind::Date, std::string(text_.substr(pos_ + 1, end - pos_ - 1))};
      pos_ = end + 1;
    } else if (c == '[') {
      std::size_t end = text_.find(']', pos_ + 1);
      if (end == std::string_view::npos) Fail("a field name has no closing ']'");
      token_ = {TokenKind::Name, std::string(text_.substr(pos_ + 1, end - pos_ - 1))};
      pos_ = end + 1;
    } else if (std::isdigit(static_cast<unsigned char>(c)) || c == '-' || c == '+' || c == '.') {
      std::size_t start = pos_++;
      while (pos_ < text_.size() &&
             (std::isdigit(static_cast<unsigned char>(text_[pos_])) || text_[pos_] == '.')) {
        ++pos_;
      }
      token_ = {TokenKind::Number, std::string(text_.substr(start, pos_ - start))};
    } else if (IsNameChar(c)) {
      std::size_t start = pos_;
      while (pos_ < text_.size() && IsNameChar(text_[pos_])) ++pos_;
      token_ = {TokenKind::Name, std::string(text_.substr(start, pos_ - start))};
    } else {
      for (const auto& spelling : kOperators) {
        if (text_.substr(pos_, spelling.text.size()) == spelling.text) {
          token_ = {TokenKind::Operator, std::string(spelling.text)};
          pos_ += spelling.text.size();
          return;
        }
      }
      Fail(std::string("unexpected '") + c + "'");
    }
  }

  std::string ReadQuoted(char quote) {
    std::string out;
    for (++pos_; pos_ < text_.size(); ++pos_) {
      if (text_[pos_] == quote) {
        if (pos_ + 1 < text_.size() && text_[pos_ + 1] == quote) {
          out += quote;
          ++pos_;
          continue;
        }
        ++pos_;
        return out;
      }
      out += text_[pos_];
    }
    Fail("a text has no closing quote");
  }

  std::shared_ptr<const Node> Join(Node::Kind kind, std::shared_ptr<const Node> left,
                                   std::shared_ptr<const Node> right) {
    auto node = std::make_shared<Node>();
    node->kind = kind;
    node->left = std::move(left);
    node->right = std::move(right);
    return node;
  }

  std::shared_ptr<const Node> ParseOr() {
    auto left = ParseAnd();
    while (IsWord("OR")) {
      Advance();
      left = Join(Node::Kind::Or, left, ParseAnd());
    }
    return left;
  }

  std::shared_ptr<const Node> ParseAnd() {
    auto left = ParseUnary();
    while (IsWord("AND")) {
      Advance();
      left = Join(Node::Kind::And, left, ParseUnary());
    }
    return left;
  }

  std::shared_ptr<const Node> ParseUnary() {
    if (IsWord("NOT")) {
      Advance();
      return Join(Node::Kind::Not, ParseUnary(), nullptr);
    }
    if (token_.kind == TokenKind::Open) {
      Advance();
      auto inner = ParseOr();
      if (token_.kind != TokenKind::Close) Fail("a '(' is not closed");
      Advance();
      return inner;
    }
    return ParseComparison();
  }

  std::shared_ptr<const Node> ParseComparison() {
    if (token_.kind != TokenKind::Name) {
      Fail(token_.kind == TokenKind::End ? "a field name is missing"
                                         : "expected a field name at '" + token_.text + "'");
    }
    auto node = std::make_shared<Node>();
    node->field = FindField(fields_, token_.text);
    if (node->field < 0) Fail("there is no field named '" + token_.text + "'");
    Advance();
    if (IsWord("IS")) {
      Advance();
      bool negated = IsWord("NOT");
      if (negated) Advance();
      if (!IsWord("NULL")) Fail("expected Null after Is");
      Advance();
      node->kind = Node::Kind::IsNull;
      return negated ? Join(Node::Kind::Not, node, nullptr) : node;
    }
    bool negated = IsWord("NOT");
    if (negated) Advance();
    if (IsWord("LIKE")) {
      Advance();
      if (token_.kind != TokenKind::Text) Fail("Like needs a quoted pattern");
      node->kind = Node::Kind::Like;
      node->pattern = UCase(token_.text);
      Advance();
      return negated ? Join(Node::Kind::Not, node, nullptr) : node;
    }
    if (negated) Fail("expected Like after Not");
    if (token_.kind != TokenKind::Operator) Fail("expected a comparison after the field name");
    for (const auto& spelling : kOperators) {
      if (spelling.text == token_.text) node->op = spelling.op;
    }
    Advance();
    if (IsWord("NULL")) {
      // "Field=Null" asks for Null values, "Field<>Null" for the others.
      if (node->op != CompareOp::Equal && node->op != CompareOp::NotEqual) {
        Fail("Null can only be compared with = or <>");
      }
      bool not_null = node->op == CompareOp::NotEqual;
      Advance();
      node->kind = Node::Kind::IsNull;
      return not_null ? Join(Node::Kind::Not, node, nullptr) : node;
    }
    node->literal = Literal(fields_[node->field]);
    Advance();
    return node;
  }

  [[noreturn]] void Misfit(const FieldInfo& field, std::string_view kind) const {
    Fail("'" + token_.text + "' is not " + std::string(kind) + " for the field '" + field.name +
         "'");
  }

  // The current token as a value of the field's type.
  Variant Literal(const FieldInfo& field) {
    const std::string& text = token_.text;
    if (token_.kind == TokenKind::End) Fail("a value is missing after the comparison");
    if (token_.kind == TokenKind::Open || token_.kind == TokenKind::Close ||
        token_.kind == TokenKind::Operator) {
      Fail("expected a value at '" + text + "'");
    }
    bool word = token_.kind == TokenKind::Name;
    std::optional<bool> boolean;
    if (EqualsIgnoreCase(text, "True")) boolean = true;
    if (EqualsIgnoreCase(text, "False")) boolean = false;
    if (word && !boolean) Fail("expected a value at '" + text + "'");
    switch (field.type) {
      case FieldType::Text:
        return Variant(text);
      case FieldType::Boolean:
        if (boolean) return Variant(*boolean);
        if (EqualsIgnoreCase(text, "0")) return Variant(false);
        if (IsNumeric(text)) return Variant(true);
        Misfit(field, "True or False");
      case FieldType::Date: {
        std::optional<Date> date = Date::FromIso(text);
        if (!date) date = ParseDateText(text);
        if (!date) Misfit(field, "a date");
        return Variant(*date);
      }
      case FieldType::Currency: {
        auto money = Currency::Parse(text);
        if (!money) Misfit(field, "an amount");
        return Variant(*money);
      }
      case FieldType::Long:
      case FieldType::Double:
        if (!IsNumeric(text)) Misfit(field, "a number");
        try {
          Variant number(text);
          return text.find_first_of(".eE") == std::string::npos ? Variant(number.ToLong())
                                                                : Variant(number.ToDouble());
        } catch (const std::exception&) {
          Misfit(field, "a number");
        }
    }
    Misfit(field, "a value");
  }

  std::string_view text_;
  const std::vector<FieldInfo>& fields_;
  std::size_t pos_ = 0;
  Token token_;
};

// '*' and '%' stand for any run of characters, '?' and '_' for one; `text` is upper-cased.
bool LikeMatch(std::string_view text, std::string_view pattern) {
  std::size_t t = 0, p = 0, star_p = std::string_view::npos, star_t = 0;
  while (t < text.size()) {
    if (p < pattern.size() && (pattern[p] == '*' || pattern[p] == '%')) {
      star_p = p++;
      star_t = t;
    } else if (p < pattern.size() &&
               (pattern[p] == '?' || pattern[p] == '_' || pattern[p] == text[t])) {
      ++p;
      ++t;
    } else if (star_p != std::string_view::npos) {
      p = star_p + 1;
      t = ++star_t;
    } else {
      return false;
    }
  }
  while (p < pattern.size() && (pattern[p] == '*' || pattern[p] == '%')) ++p;
  return p == pattern.size();
}

bool Holds(CompareOp op, int order) {
  switch (op) {
    case CompareOp::Equal:
      return order == 0;
    case CompareOp::NotEqual:
      return order != 0;
    case CompareOp::Less:
      return order < 0;
    case CompareOp::LessEqual:
      return order <= 0;
    case CompareOp::Greater:
      return order > 0;
    case CompareOp::GreaterEqual:
      return order >= 0;
  }
  return false;
}

bool Evaluate(const Node& node, const std::vector<Variant>& row, const std::string& text) {
  switch (node.kind) {
    case Node::Kind::And:
      return Evaluate(*node.left, row, text) && Evaluate(*node.right, row, text);
    case Node::Kind::Or:
      return Evaluate(*node.left, row, text) || Evaluate(*node.right, row, text);
    case Node::Kind::Not:
      return !Evaluate(*node.left, row, text);
    case Node::Kind::IsNull:
      return row[node.field].IsNull() || row[node.field].IsEmpty();
    case Node::Kind::Like:
      return !row[node.field].IsNull() && LikeMatch(UCase(row[node.field].Text()), node.pattern);
    case Node::Kind::Compare:
      break;
  }
  try {
    std::optional<int> order = Compare(row[node.field], node.literal, /*ignore_case=*/true);
    return order.has_value() && Holds(node.op, *order);
  } catch (const TypeMismatch& e) {
    throw RecordsetError("cannot use the criteria \"" + text + "\": " + e.what());
  }
}

}  // namespace

int FindField(const std::vector<FieldInfo>& fields, std::string_view name) {
  if (name.size() >= 2 && name.front() == '[' && name.back() == ']') {
    name = name.substr(1, name.size() - 2);
  }
  for (std::size_t i = 0; i < fields.size(); ++i) {
    if (EqualsIgnoreCase(fields[i].name, name)) return static_cast<int>(i);
  }
  // Report code often names a column as the query wrote it ("Transactions.Date"); the
  // recordset's field is the bare column name.
  std::size_t dot = name.rfind('.');
  if (dot != std::string_view::npos && dot + 1 < name.size()) {
    return FindField(fields, name.substr(dot + 1));
  }
  return -1;
}

Criteria Criteria::Parse(std::string_view text, const std::vector<FieldInfo>& fields) {
  Parser parser(text, fields);
  return Criteria(std::string(text), parser.ParseAll());
}

bool Criteria::Matches(const std::vector<Variant>& row) const {
  return Evaluate(*root_, row, text_);
}

}  // namespace trellin::data
