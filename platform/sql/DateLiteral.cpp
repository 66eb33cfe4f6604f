#include "platform/sql/DateLiteral.h"

#include <cstdio>

#include "platform/sql/Names.h"

namespace trellin::sql {
namespace {

class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  void SkipBlanks() {
    while (pos_ < text_.size() && text_[pos_] == ' ') ++pos_;
  }
  // Up to `max_digits` digits, at least one.
  std::optional<int> Digits(std::size_t max_digits) {
    int value = 0;
    std::size_t count = 0;
    while (pos_ < text_.size() && count < max_digits && text_[pos_] >= '0' && text_[pos_] <= '9') {
      value = value * 10 + (text_[pos_] - '0');
      ++pos_;
      ++count;
    }
    if (count == 0) return std::nullopt;
    return value;
  }
  bool Accept(char c) {
    if (pos_ < text_.size() && text_[pos_] == c) {
      ++pos_;
      return true;
    }
    return false;
  }
  bool AcceptWord(std::string_view word) {
    if (SameName(text_.substr(pos_, word.size()), word)) {
      pos_ += word.size();
      return true;
    }
    return false;
  }
  [[nodiscard]] bool AtEnd() const { return pos_ >= text_.size(); }

 private:
  std::string_view text_;
  std::size_t pos_ = 0;
};

bool IsLeap(int year) { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int DaysInMonth(int year, int month) {
  static constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && IsLeap(year) ? 29 : kDays[month - 1];
}

struct Time {
  int hour = 0, minute = 0, second = 0;
};

// "hh:nn[:ss] [AM|PM]" after the date, or nothing.
std::optional<Time> ReadTime(Reader& reader) {
  Time time;
  reader.SkipBlanks();
  if (reader.AtEnd()) return time;
  auto hour = reader.Digits(2);
  if (!hour || !reader.Accept(':')) return std::nullopt;
  auto minute = reader.Digits(2);
  if (!minute) return std::nullopt;
  int second = 0;
  if (reader.Accept(':')) {
    auto s = reader.Digits(2);
    if (!s) return std::nullopt;
    second = *s;
  }
  reader.SkipBlanks();
  int h = *hour;
  if (reader.AcceptWord("AM")) {
    if (h < 1 || h > 12) return std::nullopt;
    if (h == 12) h = 0;
  } else if (reader.AcceptWord("PM")) {
    if (h < 1 || h > 12) return std::nullopt;
    if (h != 12) h += 12;
  }
  reader.SkipBlanks();
  if (!reader.AtEnd() || h > 23 || *minute > 59 || second > 59) return std::nullopt;
  return Time{h, *minute, second};
}

}  // namespace

std::optional<std::string> JetDateToIso(std::string_view text) {
  Reader reader(text);
  reader.SkipBlanks();
  auto first = reader.Digits(4);
  if (!first) return std::nullopt;
  int year = 0, month = 0, day = 0;
  if (reader.Accept('-')) {
    auto m = reader.Digits(2);
    if (!m || !reader.Accept('-')) return std::nullopt;
    auto d = reader.Digits(2);
    if (!d) return std::nullopt;
    year = *first, month = *m, day = *d;
  } else if (reader.Accept('/')) {
    auto d = reader.Digits(2);
    if (!d || !reader.Accept('/')) return std::nullopt;
    auto y = reader.Digits(4);
    if (!y) return std::nullopt;
    month = *first, day = *d, year = *y;
  } else {
    return std::nullopt;
  }
  if (year < 100 || month < 1 || month > 12 || day < 1 || day > DaysInMonth(year, month)) {
    return std::nullopt;
  }
  auto time = ReadTime(reader);
  if (!time) return std::nullopt;
  char buffer[64];
  if (time->hour == 0 && time->minute == 0 && time->second == 0) {
    std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d", year, month, day);
  } else {
    std::snprintf(buffer, sizeof buffer, "%04d-%02d-%02d %02d:%02d:%02d", year, month, day,
                  time->hour, time->minute, time->second);
  }
  return std::string(buffer);
}

}  // namespace trellin::sql
