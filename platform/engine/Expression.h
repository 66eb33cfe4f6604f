#pragma once
// The expressions a field may hold instead of a data field: `="Page " & rpt.PageNumber`.
// Text and number literals, `&` (join as text), `+` and `-` (arithmetic, `+` joins two texts),
// parentheses, field names and rpt.PageNumber.

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include "core/host/Fields.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Variant.h"

namespace trellin::engine {

class ExpressionError : public Error {
 public:
  explicit ExpressionError(const std::string& message) : Error(ErrorKind::Report, message) {}
};

struct ExpressionScope {
  const Fields* fields = nullptr;
  int page_number = 0;
};

class Expression {
 public:
  // Compiles `text`, with or without its leading "=". Throws ExpressionError naming the position
  // and the problem.
  [[nodiscard]] static std::shared_ptr<const Expression> Compile(std::string_view text);

  // Throws ExpressionError for a field name the report does not have.
  [[nodiscard]] Variant Evaluate(const ExpressionScope& scope) const;
  // True when the value depends on the page it prints on.
  [[nodiscard]] bool UsesPage() const { return uses_page_; }

  struct Node;
  ~Expression();

 private:
  Expression() = default;
  std::unique_ptr<Node> root_;
  bool uses_page_ = false;
};

}  // namespace trellin::engine
