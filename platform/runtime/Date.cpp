#include "platform/runtime/Date.h"

#include <algorithm>
#include <cstdio>
#include <stdexcept>
#include <string>

namespace trellin {
namespace {

constexpr int kMinYear = 1;
constexpr int kMaxYear = 9999;

// Days since 1 January 1970 of a proleptic Gregorian date (Howard Hinnant's algorithm).
constexpr std::int64_t DaysFromCivil(std::int64_t y, int m, int d) {
  y -= m <= 2;
  const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
  const std::int64_t yoe = y - era * 400;
  const std::int64_t doy = (153 * (m > 2 ? m - 3 : m + 9) + 2) / 5 + d - 1;
  const std::int64_t doe = yoe * 365 + yoe / 4 - yoe / 100 + doy;
  return era * 146097 + doe - 719468;
}

struct Ymd {
  int year;
  int month;
  int day;
};

constexpr Ymd CivilFromDays(std::int64_t z) {
  z += 719468;
  const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const std::int64_t doe = z - era * 146097;
  const std::int64_t yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const std::int64_t doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const std::int64_t mp = (5 * doy + 2) / 153;
  const int d = static_cast<int>(doy - (153 * mp + 2) / 5 + 1);
  const int m = static_cast<int>(mp < 10 ? mp + 3 : mp - 9);
  return {static_cast<int>(yoe + era * 400 + (m <= 2)), m, d};
}

// Serial day 0 is 30 December 1899.
constexpr std::int64_t kEpoch = DaysFromCivil(1899, 12, 30);
static_assert(DaysFromCivil(1900, 1, 1) - kEpoch == 2);

Ymd YmdOf(std::int32_t serial) { return CivilFromDays(serial + kEpoch); }

std::int32_t SerialOf(int year, int month, int day) {
  return static_cast<std::int32_t>(DaysFromCivil(year, month, day) - kEpoch);
}

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

// Reads exactly `width` digits at `pos`.
bool ReadFixed(std::string_view s, std::size_t pos, std::size_t width, int& out) {
  if (pos + width > s.size()) return false;
  int value = 0;
  for (std::size_t i = pos; i < pos + width; ++i) {
    if (!IsDigit(s[i])) return false;
    value = value * 10 + (s[i] - '0');
  }
  out = value;
  return true;
}

}  // namespace

bool IsLeapYear(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int DaysInMonth(int year, int month) {
  static constexpr int kDays[12] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  if (month < 1 || month > 12) throw std::invalid_argument("No month " + std::to_string(month));
  return month == 2 && IsLeapYear(year) ? 29 : kDays[month - 1];
}

std::optional<Date> Date::TryFromYmd(int year, int month, int day) {
  if (year < kMinYear || year > kMaxYear || month < 1 || month > 12 || day < 1 ||
      day > DaysInMonth(year, month)) {
    return std::nullopt;
  }
  return FromSerial(SerialOf(year, month, day));
}

Date Date::FromYmd(int year, int month, int day) {
  std::optional<Date> d = TryFromYmd(year, month, day);
  if (!d) {
    throw std::invalid_argument("No such date: day " + std::to_string(day) + " of month " +
                                std::to_string(month) + " of " + std::to_string(year));
  }
  return *d;
}

Date Date::FromYmdHms(int year, int month, int day, int hour, int minute, int second) {
  if (hour < 0 || hour > 23 || minute < 0 || minute > 59 || second < 0 || second > 59) {
    throw std::invalid_argument("No such time: " + std::to_string(hour) + ":" +
                                std::to_string(minute) + ":" + std::to_string(second));
  }
  return FromSerial(FromYmd(year, month, day).Serial(), hour * 3600 + minute * 60 + second);
}

std::optional<Date> Date::FromIso(std::string_view text) {
  int year = 0, month = 0, day = 0;
  if (!ReadFixed(text, 0, 4, year) || text.size() < 10 || text[4] != '-' ||
      !ReadFixed(text, 5, 2, month) || text[7] != '-' || !ReadFixed(text, 8, 2, day)) {
    return std::nullopt;
  }
  std::optional<Date> date = TryFromYmd(year, month, day);
  if (!date || text.size() == 10) return date;
  int hour = 0, minute = 0, second = 0;
  if ((text[10] != ' ' && text[10] != 'T') || !ReadFixed(text, 11, 2, hour) || text.size() < 16 ||
      text[13] != ':' || !ReadFixed(text, 14, 2, minute)) {
    return std::nullopt;
  }
  std::size_t pos = 16;
  if (pos < text.size() && text[pos] == ':') {
    if (!ReadFixed(text, pos + 1, 2, second)) return std::nullopt;
    pos += 3;
    // Fractions of a second, as some tools write them, are dropped: times are whole seconds.
    if (pos < text.size() && text[pos] == '.') {
      ++pos;
      if (pos == text.size() || !IsDigit(text[pos])) return std::nullopt;
      while (pos < text.size() && IsDigit(text[pos])) ++pos;
    }
  }
  if (pos != text.size() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
  return FromSerial(date->Serial(), hour * 3600 + minute * 60 + second);
}

int Date::Year() const { return YmdOf(day_).year; }
int Date::Month() const { return YmdOf(day_).month; }
int Date::Day() const { return YmdOf(day_).day; }

Weekday Date::DayOfWeek() const {
  // Day 0 was a Saturday, day 1 a Sunday.
  int offset = ((day_ % 7) + 7 + 6) % 7;
  return static_cast<Weekday>(offset + 1);
}

Date Date::AddMonths(int n) const {
  Ymd ymd = YmdOf(day_);
  std::int64_t months = static_cast<std::int64_t>(ymd.year) * 12 + (ymd.month - 1) + n;
  std::int64_t year = months >= 0 ? months / 12 : (months - 11) / 12;
  int month = static_cast<int>(months - year * 12) + 1;
  if (year < kMinYear || year > kMaxYear) {
    throw std::out_of_range("Date out of range after adding " + std::to_string(n) + " months");
  }
  int y = static_cast<int>(year);
  // The day is kept where the month has it, else the month's last day: 31 January + 1 month
  // is the end of February, and 29 February + 1 year is 28 February.
  int day = std::min(ymd.day, DaysInMonth(y, month));
  return FromSerial(SerialOf(y, month, day), seconds_);
}

Date Date::FirstOfMonth() const {
  Ymd ymd = YmdOf(day_);
  return FromSerial(SerialOf(ymd.year, ymd.month, 1));
}

Date Date::LastOfMonth() const {
  Ymd ymd = YmdOf(day_);
  return FromSerial(SerialOf(ymd.year, ymd.month, DaysInMonth(ymd.year, ymd.month)));
}

std::string Date::ToIso() const {
  Ymd ymd = YmdOf(day_);
  char buf[64];
  if (HasTime()) {
    std::snprintf(buf, sizeof buf, "%04d-%02d-%02d %02d:%02d:%02d", ymd.year, ymd.month, ymd.day,
                  Hour(), Minute(), Second());
  } else {
    std::snprintf(buf, sizeof buf, "%04d-%02d-%02d", ymd.year, ymd.month, ymd.day);
  }
  return buf;
}

}  // namespace trellin
