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
    kLiteral,
    kDay,
    kDay2,
    kDayName3,
    kDayName,
    kShortDate,
    kLongDate,
    kMonth,
    kMonth2,
    kMonthName3,
    kMonthName,
    kYear2,
    kYear4,
    kDayOfYear,
    kQuarter,
    kHour,
    kHour2,
    kMinute,
    kMinute2,
    kSecond,
    kSecond2,
    kAmPm,
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
