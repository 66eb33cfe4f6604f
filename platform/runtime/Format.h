#pragma once
// The format-mask engine behind OutputFormat and Format(value, mask).

#include <memory>
#include <string>
#include <string_view>

#include "platform/runtime/Variant.h"

namespace trellin {

// The money mask when the business layer names none; also what the named format "Currency" means.
inline constexpr std::string_view kDefaultCurrencyFormat = "$#,##0.00;($#,##0.00)";

// A compiled mask.
//
// Number masks have up to four ';' sections (positive; negative; zero; null) of 0 # ? digit
// placeholders, '.', ',' (thousands separators between placeholders; after the last one each
// comma divides by a thousand), '%' (times a hundred), E+00 / E-00 exponents, literals, \x and
// "quoted" text. A negative value takes the negative section without a sign of its own, or the
// positive section with a leading '-' when there is none (or it is empty). Numbers round half
// away from zero at the section's decimals, and a value that rounds to zero there prints with
// the zero section when there is one, else with the positive section and no sign: -0.4 in
// "#,###,##0;(#,###,##0)" is "0", never "(0)" or "-0". Null prints the null section, or "".
//
// Date masks use d dd ddd dddd m mm mmm mmmm yy yyyy h hh n nn s ss q, AM/PM am/pm A/P a/p
// (a 12-hour clock, written as the mask spells it), letters in any case; "m" right after an hour
// or right before seconds is minutes. Month and day names are English ("Mar", "Tuesday").
//
// Named formats, in any case: "Currency" (kDefaultCurrencyFormat), "Percent" ("0.00%"), "Fixed"
// ("0.00"), "Standard" ("#,##0.00"), "Scientific" ("0.00E+00"), "General Number" (the number's
// general form, as Variant::ToString), "General Date", "Short Date" ("dd/mm/yyyy"), "Medium Date"
// ("dd-mmm-yy"), "Long Date" ("d mmmm yyyy"), "Short Time", "Medium Time", "Long Time", "Yes/No",
// "True/False".
//
// What a value meets: a date goes through the date reading of the mask (through the number
// reading, as its serial, when the mask has no date part); a number, Boolean (True is -1) or
// numeric text through the number reading, unless the mask is only a date mask, when it is taken
// as a date serial; other text passes through unchanged unless it reads as a date under a date
// mask. Empty and Missing print "". An object throws TypeMismatch.
//
// "Round", "(auto)" and the empty mask are no masks: a value passes through them in its general
// form (Variant::Text), for the code that owns them to deal with.
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
