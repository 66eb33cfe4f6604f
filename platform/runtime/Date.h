#pragma once
// Calendar dates with an optional time of day, as serial day numbers.

#include <compare>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace trellin {

enum class Weekday { Sunday = 1, Monday, Tuesday, Wednesday, Thursday, Friday, Saturday };

// A date and time of day. The day is a serial number counted from 30 December 1899 (day 0), so
// that 1 January 1900 is day 2 and serials agree with the spreadsheet convention used by XLSX.
// The time is a whole number of seconds since midnight, kept exact (no floating fractions).
class Date {
 public:
  constexpr Date() = default;

  // Throws std::invalid_argument for a day that does not exist (31 April, 29 February 2023) or a
  // year outside 1 to 9999; FromYmdHms also for a time outside 00:00:00 to 23:59:59.
  static Date FromYmd(int year, int month, int day);
  static Date FromYmdHms(int year, int month, int day, int hour, int minute, int second);
  [[nodiscard]] static std::optional<Date> TryFromYmd(int year, int month, int day);
  static constexpr Date FromSerial(std::int32_t day, std::int32_t seconds = 0) {
    Date d;
    d.day_ = day;
    d.seconds_ = seconds;
    return d;
  }
  // ISO "yyyy-mm-dd" or "yyyy-mm-dd hh:mm[:ss[.fff]]" (also with a 'T'; fractions of a second
  // are dropped); nullopt for anything else.
  [[nodiscard]] static std::optional<Date> FromIso(std::string_view text);

  [[nodiscard]] constexpr std::int32_t Serial() const { return day_; }
  [[nodiscard]] constexpr std::int32_t SecondsOfDay() const { return seconds_; }
  [[nodiscard]] constexpr bool HasTime() const { return seconds_ != 0; }
  // Days plus the fraction of the day, as a spreadsheet stores it.
  [[nodiscard]] double ToDouble() const { return day_ + seconds_ / 86400.0; }

  [[nodiscard]] int Year() const;
  [[nodiscard]] int Month() const;
  [[nodiscard]] int Day() const;
  [[nodiscard]] int Hour() const { return seconds_ / 3600; }
  [[nodiscard]] int Minute() const { return seconds_ / 60 % 60; }
  [[nodiscard]] int Second() const { return seconds_ % 60; }
  [[nodiscard]] Weekday DayOfWeek() const;

  // The same date at midnight.
  [[nodiscard]] constexpr Date DateOnly() const { return FromSerial(day_); }
  [[nodiscard]] Date AddDays(int n) const { return FromSerial(day_ + n, seconds_); }
  // Adds calendar months keeping the day where the target month has it, else its last day:
  // 31 January + 1 month is 28 (or 29) February. The time of day is kept. Throws
  // std::out_of_range past the year 9999 or before the year 1.
  [[nodiscard]] Date AddMonths(int n) const;
  [[nodiscard]] Date AddYears(int n) const { return AddMonths(12 * n); }
  // The first and last day of this date's month, at midnight.
  [[nodiscard]] Date FirstOfMonth() const;
  [[nodiscard]] Date LastOfMonth() const;

  // "yyyy-mm-dd", with " hh:mm:ss" when there is a time part: the storage form.
  [[nodiscard]] std::string ToIso() const;

  constexpr auto operator<=>(const Date&) const = default;

 private:
  std::int32_t day_ = 0;
  std::int32_t seconds_ = 0;
};

[[nodiscard]] bool IsLeapYear(int year);
[[nodiscard]] int DaysInMonth(int year, int month);

}  // namespace trellin
