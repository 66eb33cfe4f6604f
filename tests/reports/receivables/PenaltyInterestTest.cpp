// Interest on an overdue item: the value at the yearly rate for the days past grace, to the cent.

#include <gtest/gtest.h>

#include "reports/receivables/ardsPenaltyInterests.h"

namespace trellin {
namespace {

TEST(PenaltyInterest, IsTheYearlyRateForTheDaysPastGraceToTheCent) {
  struct Case {
    double outstanding;
    double rate;
    long days;
    double interest;
  };
  const Case cases[] = {
      {1000.00, 18, 30, 14.79},                           // 1000 x 0.18 x 30 / 365 = 14.794...
      {1000.00, 18, 365, 180.00}, {100.00, 18, 1, 0.05},  // 0.0493 rounds up
      {100.00, 18, 0, 0.00},                              // due today after grace: nothing yet
      {100.00, 18, -4, 0.00},                             // still within grace
      {2500.50, 12.5, 45, 38.54},                         // 2500.50 x 0.125 x 45 / 365 = 38.535...
  };
  for (const Case& c : cases) {
    EXPECT_EQ(PenaltyInterestOn(Currency::FromDouble(c.outstanding), c.rate, c.days),
              Currency::FromDouble(c.interest))
        << c.outstanding << " at " << c.rate << "% for " << c.days << " days";
  }
}

}  // namespace
}  // namespace trellin
