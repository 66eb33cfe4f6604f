#include "platform/render/CellText.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace trellin::render {
namespace {

struct Civil {
  int year;
  unsigned month, day;
};

// The proleptic Gregorian date of a count of days since 1970-01-01.
Civil CivilFromDays(std::int64_t z) {
  z += 719468;
  const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
  const auto doe = static_cast<unsigned>(z - era * 146097);
  const unsigned yoe = (doe - doe / 1460 + doe / 36524 - doe / 146096) / 365;
  const unsigned doy = doe - (365 * yoe + yoe / 4 - yoe / 100);
  const unsigned mp = (5 * doy + 2) / 153;
  const unsigned d = doy - (153 * mp + 2) / 5 + 1;
  const unsigned m = mp < 10 ? mp + 3 : mp - 9;
  return {static_cast<int>(yoe + era * 400 + (m <= 2 ? 1 : 0)), m, d};
}

// Serial day 0 is 30 December 1899; 1 January 1970 is day 25569.
constexpr std::int64_t kUnixEpochSerial = 25569;

}  // namespace

std::string MoneyText(Currency amount) {
  const std::int64_t raw = amount.Raw();
  const std::uint64_t magnitude =
      raw < 0 ? static_cast<std::uint64_t>(-(raw + 1)) + 1 : static_cast<std::uint64_t>(raw);
  std::uint64_t fraction = magnitude % Currency::kScale;
  int digits = 4;
  while (digits > 2 && fraction % 10 == 0) {
    fraction /= 10;
    --digits;
  }
  char buffer[48];
  std::snprintf(buffer, sizeof buffer, "%s%llu.%0*llu", raw < 0 ? "-" : "",
                static_cast<unsigned long long>(magnitude / Currency::kScale), digits,
                static_cast<unsigned long long>(fraction));
  return buffer;
}

std::string IsoDateText(Date date) {
  const Civil c = CivilFromDays(date.Serial() - kUnixEpochSerial);
  char buffer[40];
  if (date.HasTime()) {
    std::snprintf(buffer, sizeof buffer, "%04d-%02u-%02u %02d:%02d:%02d", c.year, c.month, c.day,
                  date.Hour(), date.Minute(), date.Second());
  } else {
    std::snprintf(buffer, sizeof buffer, "%04d-%02u-%02u", c.year, c.month, c.day);
  }
  return buffer;
}

std::string NumberText(double value) {
  if (!std::isfinite(value)) return {};
  char buffer[64];
  // Plain digits for the magnitudes figures have ("500000", not "5e+05"), still the shortest
  // text that reads back as the same double; exponents only for the very large and very small.
  const double magnitude = std::fabs(value);
  const bool plain = magnitude == 0 || (magnitude >= 1e-6 && magnitude < 1e15);
  const auto result =
      plain ? std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed)
            : std::to_chars(buffer, buffer + sizeof buffer, value);
  return std::string(buffer, result.ptr);
}

bool PrintedSomething(const engine::DataCell& cell) {
  return cell.value.Get<bool>() != nullptr ||
         cell.text.find_first_not_of(" \t\r\n") != std::string::npos;
}

std::optional<std::string> PrintedFigure(const engine::DataCell& cell) {
  double value = 0;
  if (const auto* money = cell.value.Get<Currency>()) {
    value = money->ToDouble();
  } else if (const auto* real = cell.value.Get<double>()) {
    value = *real;
  } else if (const auto* integer = cell.value.Get<std::int64_t>()) {
    value = static_cast<double>(*integer);
  } else {
    return std::nullopt;
  }
  std::string_view text = cell.text;
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  bool negative = false;
  if (text.size() >= 2 && text.front() == '(' && text.back() == ')') {
    negative = true;
    text = text.substr(1, text.size() - 2);
  }
  if (!text.empty() && text.front() == '-') {
    negative = !negative;
    text.remove_prefix(1);
  }
  if (!text.empty() && text.front() == '$') text.remove_prefix(1);
  std::string digits;
  int decimals = -1;
  for (char c : text) {
    if (c >= '0' && c <= '9') {
      digits += c;
      if (decimals >= 0) ++decimals;
    } else if (c == '.' && decimals < 0) {
      digits += c;
      decimals = 0;
    } else if (c != ',' || decimals >= 0) {
      return std::nullopt;
    }
  }
  if (digits.empty() || digits == "." || digits.size() > 30) return std::nullopt;
  if (decimals == 0) digits.pop_back();  // "12." prints as 12
  const double printed = std::strtod(digits.c_str(), nullptr) * (negative ? -1 : 1);
  // Half a unit of the last printed digit, and a little more for the value's own binary error.
  const double half_unit = 0.5 * std::pow(10.0, -std::max(decimals, 0));
  if (std::fabs(printed - value) > half_unit * (1 + 1e-9) + std::fabs(value) * 1e-12) {
    return std::nullopt;
  }
  if (std::strtod(digits.c_str(), nullptr) == 0) negative = false;  // "(0.00)" is nought
  return (negative ? "-" : "") + digits;
}

std::string PlainCellText(const engine::DataCell& cell) {
  const Variant& v = cell.value;
  if (!PrintedSomething(cell)) return {};
  if (v.IsEmpty()) return cell.text;
  if (auto figure = PrintedFigure(cell)) return *figure;
  if (const auto* money = v.Get<Currency>()) return MoneyText(*money);
  if (const auto* date = v.Get<Date>()) return IsoDateText(*date);
  if (const auto* number = v.Get<std::int64_t>()) return std::to_string(*number);
  if (const auto* real = v.Get<double>()) return NumberText(*real);
  if (const auto* flag = v.Get<bool>()) return *flag ? "True" : "False";
  // Text as it printed: a mask or a text set over the value is what the reader saw.
  if (v.Get<std::string>() != nullptr) return cell.text;
  return {};  // Null, Missing, objects
}

}  // namespace trellin::render
