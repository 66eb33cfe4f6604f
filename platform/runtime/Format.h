#pragma once
// The format-mask engine behind OutputFormat and Format(value, mask).

#include <memory>
#include <string>
#include <string_view>

#include "platform/runtime/Variant.h"

namespace trellin {

// The money mask when the business layer names none; also what the named format "Currency" means.
inline constexpr std::string_view kDefaultCurrencyFormat = "$#,##0.00;($#,##0.00)";

// A compiled mask. Numeric masks have up to four ';' sections (positive; negative; zero; null)
// with 0 # . , % placeholders, literals, \x and "quoted" text; date masks use d dd ddd dddd m mm
// mmm mmmm yy yyyy h hh n nn s ss AM/PM am/pm A/P ("m" right after "h" is minutes); the named
// formats are "Currency", "Percent", "Fixed", "Standard", "General Number", "Short Date",
// "Long Date". "Round", "(auto)" and the empty mask are no masks: a value passes through them in
// its general form (Variant::Text), for the code that owns them to deal with.
class FormatMask {
 public:
  // The compiled mask for `mask`, from a process-wide cache. Never fails: text that is not a
  // recognised mask is taken as literals and placeholders, as the report language does.
  [[nodiscard]] static std::shared_ptr<const FormatMask> Get(std::string_view mask);

  [[nodiscard]] std::string Apply(const Variant& value) const;
  [[nodiscard]] const std::string& Mask() const { return mask_; }
  // True for "Round", "(auto)" and the empty mask.
  [[nodiscard]] bool IsPassThrough() const { return pass_through_; }

  virtual ~FormatMask() = default;

 protected:
  FormatMask(std::string mask, bool pass_through)
      : mask_(std::move(mask)), pass_through_(pass_through) {}
  [[nodiscard]] virtual std::string DoApply(const Variant& value) const = 0;

 private:
  std::string mask_;
  bool pass_through_;
};

// Format(value, mask) of the report language: FormatMask::Get(mask)->Apply(value).
[[nodiscard]] std::string Format(const Variant& value, std::string_view mask);

}  // namespace trellin
