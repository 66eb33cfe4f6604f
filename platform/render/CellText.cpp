#include "platform/render/CellText.h"

#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstdio>

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
  const auto result = plain ? std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed)
                            : std::to_chars(buffer, buffer + sizeof buffer, value);
  return std::string(buffer, result.ptr);
}

std::string PlainCellText(const engine::DataCell& cell) {
  const Variant& v = cell.value;
  if (v.IsEmpty()) return cell.text;
  if (const auto* money = v.Get<Currency>()) return MoneyText(*money);
  if (const auto* date = v.Get<Date>()) return IsoDateText(*date);
  if (const auto* number = v.Get<std::int64_t>()) return std::to_string(*number);
  if (const auto* real = v.Get<double>()) return NumberText(*real);
  if (const auto* flag = v.Get<bool>()) return *flag ? "True" : "False";
  if (const auto* text = v.Get<std::string>()) return *text;
  return {};  // Null, Missing, objects
}

}  // namespace trellin::render
