#include "platform/runtime/NumberFormat.h"

#include <algorithm>

namespace trellin {
namespace {

bool IsPlaceholder(char c) { return c == '0' || c == '#' || c == '?'; }

// Splits on ';' outside quotes and escapes.
std::vector<std::string_view> SplitSections(std::string_view mask) {
  std::vector<std::string_view> parts;
  std::size_t start = 0;
  bool quoted = false;
  for (std::size_t i = 0; i < mask.size(); ++i) {
    char c = mask[i];
    if (quoted) {
      quoted = c != '"';
    } else if (c == '"') {
      quoted = true;
    } else if (c == '\\') {
      ++i;
    } else if (c == ';') {
      parts.push_back(mask.substr(start, i - start));
      start = i + 1;
    }
  }
  parts.push_back(mask.substr(start));
  return parts;
}

}  // namespace

NumberFormat NumberFormat::Compile(std::string_view mask) {
  NumberFormat format;
  std::vector<std::string_view> parts = SplitSections(mask);
  // A fifth section and beyond mean nothing; they are ignored.
  if (parts.size() > 4) parts.resize(4);
  for (std::string_view part : parts) {
    format.sections_.push_back(CompileSection(part));
    format.has_placeholders_ = format.has_placeholders_ ||
                               format.sections_.back().integer_placeholders > 0 ||
                               format.sections_.back().decimals > 0;
  }
  return format;
}

NumberFormat::Section NumberFormat::CompileSection(std::string_view text) {
  Section s;
  s.empty = text.empty();
  bool after_point = false;
  bool seen_zero = false;
  const auto literal = [&s](std::string_view t) {
    if (!s.tokens.empty() && s.tokens.back().kind == TokenKind::Literal) {
      s.tokens.back().text.append(t);
    } else {
      s.tokens.push_back({TokenKind::Literal, 0, std::string(t)});
    }
  };
  for (std::size_t i = 0; i < text.size(); ++i) {
    char c = text[i];
    if (IsPlaceholder(c)) {
      s.tokens.push_back({TokenKind::Digit, c, {}});
      if (after_point) {
        ++s.decimals;
      } else {
        ++s.integer_placeholders;
        // Every placeholder from the first '0' on must print a digit: "#,##0" shows "0".
        seen_zero = seen_zero || c == '0';
        if (seen_zero) ++s.min_integer_digits;
      }
    } else if (c == '.' && !after_point) {
      after_point = true;
      s.tokens.push_back({TokenKind::Point, 0, {}});
    } else if (c == ',' && !after_point && s.integer_placeholders > 0) {
      // Between placeholders a comma asks for thousands separators; after the last integer
      // placeholder each comma divides by a thousand ("#,##0," shows thousands).
      std::size_t next = i + 1;
      while (next < text.size() && text[next] == ',') ++next;
      if (next < text.size() && IsPlaceholder(text[next])) {
        s.grouping = true;
      } else {
        s.shift -= 3 * static_cast<int>(next - i);
      }
      i = next - 1;
    } else if ((c == 'E' || c == 'e') && !s.scientific && i + 1 < text.size() &&
               (text[i + 1] == '+' || text[i + 1] == '-')) {
      // "0.00E+00": the placeholders after the sign are the exponent's digits. "E+" always
      // shows its sign, "E-" only a minus.
      s.scientific = true;
      s.tokens.push_back({TokenKind::Exponent, 0, std::string(text.substr(i, 2))});
      i += 2;
      while (i < text.size() && IsPlaceholder(text[i])) {
        if (text[i] == '0') ++s.exponent_digits;
        ++i;
      }
      --i;
      after_point = true;  // nothing after the exponent belongs to the mantissa
    } else if (c == '%') {
      s.shift += 2;
      literal("%");
    } else if (c == '\\' && i + 1 < text.size()) {
      literal(text.substr(++i, 1));
    } else if (c == '"') {
      std::size_t end = text.find('"', i + 1);
      if (end == std::string_view::npos) end = text.size();
      literal(text.substr(i + 1, end - i - 1));
      i = end;
    } else {
      literal(text.substr(i, 1));
    }
  }
  return s;
}

std::string NumberFormat::Apply(decimal::DecimalNumber value) const {
  // Section choice: a negative value takes the negative section (without a sign of its own)
  // when there is one. Whatever the section, a value that rounds to zero at its number of
  // decimals prints with the zero section when there is one, else with the positive section
  // and no sign: -0.4 in "#,###,##0;(#,###,##0)" prints "0", never "(0)" or "-0".
  const Section* section = &sections_[0];
  bool minus = false;
  if (value.negative) {
    if (sections_.size() >= 2 && !sections_[1].empty) {
      section = &sections_[1];
    } else {
      minus = true;
    }
  }
  value.negative = false;
  value.exponent += section->shift;
  int exponent = 0;
  if (section->scientific && !value.IsZero()) {
    // Scale so that the mantissa has as many whole digits as the mask has integer placeholders.
    const int whole_digits = std::max(section->integer_placeholders, 1);
    exponent = value.count + value.exponent - whole_digits;
    value.exponent -= exponent;
    decimal::RoundTo(value, section->decimals);
    if (value.count + value.exponent > whole_digits) {  // 9.999 rounded up to 10.00
      value.exponent -= 1;
      exponent += 1;
    }
  }
  decimal::RoundTo(value, section->decimals);
  std::string out;
  out.reserve(32);
  if (value.IsZero()) {
    section = sections_.size() >= 3 && !sections_[2].empty ? &sections_[2] : &sections_[0];
    Render(*section, decimal::DecimalNumber{}, false, 0, out);
    return out;
  }
  Render(*section, value, minus, exponent, out);
  return out;
}

std::string NumberFormat::ApplyNull() const {
  if (sections_.size() < 4 || sections_[3].empty) return "";
  std::string out;
  Render(sections_[3], decimal::DecimalNumber{}, false, 0, out);
  return out;
}

void NumberFormat::Render(const Section& section, const decimal::DecimalNumber& n, bool minus,
                          int exponent, std::string& out) {
  // Split the rounded magnitude into integer and fraction digits.
  std::string integer;
  std::string fraction(static_cast<std::size_t>(section.decimals), '0');
  if (n.count > 0) {
    const int point = n.count + n.exponent;  // digits before the decimal point
    for (int i = 0; i < point; ++i) integer += i < n.count ? n.digits[i] : '0';
    for (int i = std::max(point, 0); i < n.count; ++i) {
      const int at = i - point;
      if (at < section.decimals) fraction[static_cast<std::size_t>(at)] = n.digits[i];
    }
  }
  // Leading zeros up to the mask's minimum number of integer digits.
  if (static_cast<int>(integer.size()) < section.min_integer_digits) {
    integer.insert(0, static_cast<std::size_t>(section.min_integer_digits) - integer.size(), '0');
  }
  const int integer_len = static_cast<int>(integer.size());
  // Optional fraction places ('#', '?') drop trailing zeros.
  int shown_fraction = section.decimals;
  {
    int k = section.decimals;
    for (auto it = section.tokens.rbegin(); it != section.tokens.rend() && k > 0; ++it) {
      if (it->kind != TokenKind::Digit) continue;
      if (it->placeholder == '0' || fraction[static_cast<std::size_t>(k - 1)] != '0') break;
      --shown_fraction;
      --k;
    }
  }

  if (minus) out += '-';
  const auto emit_integer_digit = [&](int index) {
    out += integer[static_cast<std::size_t>(index)];
    int remaining = integer_len - index - 1;
    if (section.grouping && remaining > 0 && remaining % 3 == 0) out += ',';
  };
  // The leftmost integer placeholder takes every digit that has no placeholder of its own.
  int offset = integer_len - section.integer_placeholders;
  int placeholder_index = 0;
  int fraction_index = 0;
  bool after_point = false;
  for (const Token& token : section.tokens) {
    switch (token.kind) {
      case TokenKind::Literal:
        out += token.text;
        break;
      case TokenKind::Point:
        // A mask with no integer placeholder still shows the whole part: ".00" of 5.25 is 5.25.
        if (section.integer_placeholders == 0) {
          for (int i = 0; i < integer_len; ++i) emit_integer_digit(i);
        }
        out += '.';
        after_point = true;
        break;
      case TokenKind::Exponent: {
        out += token.text[0];
        if (exponent < 0) {
          out += '-';
        } else if (token.text[1] == '+') {
          out += '+';
        }
        std::string digits = std::to_string(exponent < 0 ? -exponent : exponent);
        if (static_cast<int>(digits.size()) < section.exponent_digits) {
          out.append(static_cast<std::size_t>(section.exponent_digits) - digits.size(), '0');
        }
        out += digits;
        break;
      }
      case TokenKind::Digit:
        if (after_point) {
          if (fraction_index < shown_fraction) {
            out += fraction[static_cast<std::size_t>(fraction_index)];
          } else if (token.placeholder == '?') {
            out += ' ';
          }
          ++fraction_index;
        } else {
          int index = placeholder_index + offset;
          if (placeholder_index == 0) {
            for (int i = 0; i <= index; ++i) emit_integer_digit(i);
          } else if (index >= 0) {
            emit_integer_digit(index);
          } else if (token.placeholder == '?') {
            out += ' ';
          }
          ++placeholder_index;
        }
        break;
    }
  }
}

}  // namespace trellin
