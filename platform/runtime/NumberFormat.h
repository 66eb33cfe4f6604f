#pragma once
// The numeric side of a format mask: up to four ';' sections (positive; negative; zero; null) of
// digit placeholders and literals. Internal to the runtime library.

#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/DecimalNumber.h"

namespace trellin {

class NumberFormat {
 public:
  // Never fails: characters without a meaning in a number mask print as themselves.
  [[nodiscard]] static NumberFormat Compile(std::string_view mask);

  // True when some section has a digit placeholder (0 # ?).
  [[nodiscard]] bool HasPlaceholders() const { return has_placeholders_; }
  [[nodiscard]] bool HasSections() const { return sections_.size() > 1; }
  // The value through its section; rounding is half away from zero at the section's decimals.
  [[nodiscard]] std::string Apply(decimal::DecimalNumber value) const;
  // The null section's text, or "" when the mask has none.
  [[nodiscard]] std::string ApplyNull() const;

 private:
  enum class TokenKind { Literal, Digit, Point, Exponent };
  struct Token {
    TokenKind kind;
    char placeholder;  // '0', '#' or '?' for a digit
    std::string text;  // for a literal; for an exponent its letter and sign ("E+", "e-")
  };
  struct Section {
    std::vector<Token> tokens;
    bool empty = true;      // nothing between the semicolons: fall back to the positive section
    bool grouping = false;  // thousands separators in the integer part
    int shift = 0;          // powers of ten applied first: +2 for each %, -3 for each scaling comma
    int decimals = 0;       // placeholders after the point
    int min_integer_digits = 0;
    int integer_placeholders = 0;
    bool scientific = false;
    int exponent_digits = 0;  // the least number of exponent digits
  };

  static Section CompileSection(std::string_view text);
  // `exponent` is the power of ten shown by a scientific section.
  static void Render(const Section& section, const decimal::DecimalNumber& magnitude, bool minus,
                     int exponent, std::string& out);

  std::vector<Section> sections_;
  bool has_placeholders_ = false;
};

}  // namespace trellin
