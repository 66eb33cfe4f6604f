#pragma once
// The date side of a format mask: d dd ddd dddd m mm mmm mmmm yy yyyy h hh n nn s ss, AM/PM,
// am/pm, A/P, a/p, q, and literals. Internal to the runtime library.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/Date.h"

namespace trellin {

class DateFormat {
 public:
  // The date reading of `mask`; nullopt when it holds no date part at all (letters are matched
  // in any case, so "DD/MM/YYYY" works).
  [[nodiscard]] static std::optional<DateFormat> Compile(std::string_view mask);

  [[nodiscard]] std::string Apply(const Date& date) const;

 private:
  enum class Part {
    Literal,
    Day,
    Day2,
    DayName3,
    DayName,
    ShortDate,
    LongDate,
    Month,
    Month2,
    MonthName3,
    MonthName,
    Year2,
    Year4,
    DayOfYear,
    Quarter,
    Hour,
    Hour2,
    Minute,
    Minute2,
    Second,
    Second2,
    AmPm,
  };
  struct Token {
    Part part;
    std::string text;     // a literal, or the "am" spelling of an AM/PM marker
    std::string pm_text;  // the "pm" spelling
  };

  std::vector<Token> tokens_;
  bool twelve_hour_ = false;
};

}  // namespace trellin
