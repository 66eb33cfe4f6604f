#include "platform/runtime/Clock.h"

#include <ctime>
#include <mutex>

namespace trellin {
namespace {

std::mutex& ClockMutex() {
  static std::mutex mutex;
  return mutex;
}

std::optional<Date>& FixedMoment() {
  static std::optional<Date> moment;
  return moment;
}

}  // namespace

Date Now() {
  {
    std::lock_guard lock(ClockMutex());
    if (FixedMoment()) return *FixedMoment();
  }
  std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  // A leap second (tm_sec 60) is folded into the minute's last second.
  return Date::FromYmdHms(local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                          local.tm_min, local.tm_sec > 59 ? 59 : local.tm_sec);
}

Date Today() { return Now().DateOnly(); }

void SetClockForTesting(std::optional<Date> moment) {
  std::lock_guard lock(ClockMutex());
  FixedMoment() = moment;
}

}  // namespace trellin
