#include "platform/engine/Expression.h"

#include <cctype>
#include <charconv>
#include <vector>

#include "platform/runtime/Strings.h"

namespace trellin::engine {

struct Expression::Node {
  enum class Kind { Literal, Name, Page, Join, Add, Subtract, Negate };
  Kind kind = Kind::Literal;
  Variant value;
  std::string name;
  std::unique_ptr<Node> left, right;
};

Expression::~Expression() = default;

namespace {

using Node = Expression::Node;

class Parser {
 public:
  explicit Parser(std::string_view text) : text_(text) {}

  std::unique_ptr<Node> ParseAll(bool& uses_page) {
    auto node = ParseJoin();
    SkipBlanks();
    if (pos_ < text_.size()) Fail("unexpected '" + std::string(1, text_[pos_]) + "'");
    uses_page = uses_page_;
    return node;
  }

 private:
  [[noreturn]] void Fail(const std::string& what) const {
    throw ExpressionError("expression '" + std::string(text_) + "', at " +
                          std::to_string(pos_ + 1) + ": " + what);
  }

  void SkipBlanks() {
    while (pos_ < text_.size() && (text_[pos_] == ' ' || text_[pos_] == '\t')) ++pos_;
  }

  bool Accept(char c) {
    SkipBlanks();
    if (pos_ < text_.size() && text_[pos_] == c) {
      ++pos_;
      return true;
    }
    return false;
  }

  static std::unique_ptr<Node> Binary(Node::Kind kind, std::unique_ptr<Node> l,
                                      std::unique_ptr<Node> r) {
    auto n = std::make_unique<Node>();
    n->kind = kind;
    n->left = std::move(l);
    n->right = std::move(r);
    return n;
  }

  // `&` binds looser than `+` and `-`, as in the report language.
  std::unique_ptr<Node> ParseJoin() {
    auto node = ParseSum();
    while (Accept('&')) node = Binary(Node::Kind::Join, std::move(node), ParseSum());
    return node;
  }

  std::unique_ptr<Node> ParseSum() {
    auto node = ParseUnary();
    while (true) {
      if (Accept('+'))
        node = Binary(Node::Kind::Add, std::move(node), ParseUnary());
      else if (Accept('-'))
        node = Binary(Node::Kind::Subtract, std::move(node), ParseUnary());
      else
        return node;
    }
  }

  std::unique_ptr<Node> ParseUnary() {
    if (Accept('-')) {
      auto n = std::make_unique<Node>();
      n->kind = Node::Kind::Negate;
      n->left = ParseUnary();
      return n;
    }
    return ParsePrimary();
  }

  std::unique_ptr<Node> ParsePrimary() {
    SkipBlanks();
    if (pos_ >= text_.size()) Fail("a value is missing");
    char c = text_[pos_];
    if (c == '(') {
      ++pos_;
      auto node = ParseJoin();
      if (!Accept(')')) Fail("')' expected");
      return node;
    }
    auto node = std::make_unique<Node>();
    if (c == '"') {
      // A doubled quote stands for one quote inside the text.
      std::string s;
      ++pos_;
      while (true) {
        if (pos_ >= text_.size()) Fail("text not closed with '\"'");
        if (text_[pos_] == '"') {
          if (pos_ + 1 < text_.size() && text_[pos_ + 1] == '"') {
            s += '"';
            pos_ += 2;
            continue;
          }
          ++pos_;
          break;
        }
        s += text_[pos_++];
      }
      node->value = Variant(std::move(s));
      return node;
    }
    if (std::isdigit(static_cast<unsigned char>(c)) || c == '.') {
      std::size_t start = pos_;
      while (pos_ < text_.size() &&
             (std::isdigit(static_cast<unsigned char>(text_[pos_])) || text_[pos_] == '.'))
        ++pos_;
      std::string_view digits = text_.substr(start, pos_ - start);
      if (digits.find('.') == std::string_view::npos) {
        std::int64_t n = 0;
        auto [p, ec] = std::from_chars(digits.data(), digits.data() + digits.size(), n);
        if (ec != std::errc() || p != digits.data() + digits.size()) Fail("bad number");
        node->value = Variant(n);
      } else {
        try {
          node->value = Variant(std::stod(std::string(digits)));
        } catch (const std::exception&) {
          Fail("bad number");
        }
      }
      return node;
    }
    if (std::isalpha(static_cast<unsigned char>(c)) || c == '_' || c == '[') {
      bool bracketed = c == '[';
      if (bracketed) ++pos_;
      std::size_t start = pos_;
      while (pos_ < text_.size()) {
        char ch = text_[pos_];
        if (bracketed ? ch == ']'
                      : !(std::isalnum(static_cast<unsigned char>(ch)) || ch == '_' || ch == '.'))
          break;
        ++pos_;
      }
      std::string name(text_.substr(start, pos_ - start));
      if (bracketed) {
        if (pos_ >= text_.size()) Fail("']' expected");
        ++pos_;
      }
      if (EqualsIgnoreCase(name, "rpt.PageNumber") || EqualsIgnoreCase(name, "PageNumber")) {
        node->kind = Node::Kind::Page;
        uses_page_ = true;
      } else if (name.find('.') != std::string::npos && !bracketed) {
        Fail("unknown name '" + name + "'");
      } else {
        node->kind = Node::Kind::Name;
        node->name = std::move(name);
      }
      return node;
    }
    Fail("unexpected '" + std::string(1, c) + "'");
  }

  std::string_view text_;
  std::size_t pos_ = 0;
  bool uses_page_ = false;
};

Variant Eval(const Node& n, const ExpressionScope& scope) {
  switch (n.kind) {
    case Node::Kind::Literal:
      return n.value;
    case Node::Kind::Page:
      return Variant(static_cast<std::int64_t>(scope.page_number));
    case Node::Kind::Name: {
      const ReportField* f = scope.fields ? scope.fields->Find(n.name) : nullptr;
      if (!f) throw ExpressionError("the report has no field named '" + n.name + "'");
      return f->Value();
    }
    case Node::Kind::Join:
      return Concat(Eval(*n.left, scope), Eval(*n.right, scope));
    case Node::Kind::Add:
      return Add(Eval(*n.left, scope), Eval(*n.right, scope));
    case Node::Kind::Subtract:
      return Subtract(Eval(*n.left, scope), Eval(*n.right, scope));
    case Node::Kind::Negate:
      return Negate(Eval(*n.left, scope));
  }
  return {};
}

}  // namespace

std::shared_ptr<const Expression> Expression::Compile(std::string_view text) {
  std::string_view body = text;
  while (!body.empty() && body.front() == ' ') body.remove_prefix(1);
  if (!body.empty() && body.front() == '=') body.remove_prefix(1);
  std::shared_ptr<Expression> e(new Expression());
  Parser parser(body);
  e->root_ = parser.ParseAll(e->uses_page_);
  return e;
}

Variant Expression::Evaluate(const ExpressionScope& scope) const {
  try {
    return Eval(*root_, scope);
  } catch (const TypeMismatch& e) {
    throw ExpressionError(e.what());
  } catch (const std::domain_error& e) {
    throw ExpressionError(e.what());
  }
}

}  // namespace trellin::engine
