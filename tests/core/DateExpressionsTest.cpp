// InterpretDate and ResolveParameters.

#include <gtest/gtest.h>

#include <optional>

#include "Fakes.h"
#include "platform/runtime/Clock.h"

namespace trellin::testing {
namespace {

Date DateOf(int y, int m, int d) { return Date::FromYmd(y, m, d); }

// Today is 15 July 2024, mid-morning.
class DateExpressions : public ::testing::Test {
 protected:
  void SetUp() override { SetClockForTesting(Date::FromYmdHms(2024, 7, 15, 10, 30, 0)); }
  void TearDown() override { SetClockForTesting(std::nullopt); }

  Variant Interpret(const std::string& expression, std::optional<Date> as_at) {
    Parameters parameters;
    if (as_at) {
      parameters.AddDate("DateAsAt", Variant(*as_at), true, "Date As At", Variant("EOM"), false,
                         "Date As At");
    }
    return fixture_.service.InterpretDate(Variant(expression), &parameters);
  }

  void UseYearAprilToMarch() {
    fixture_.application->calendar.years = {
        {7, "2023/24", DateOf(2023, 4, 1), DateOf(2024, 3, 31)},
        {8, "2024/25", DateOf(2024, 4, 1), DateOf(2025, 3, 31)},
    };
  }

  ServiceFixture fixture_;
};

struct Case {
  std::string expression;
  std::optional<Date> as_at;
  std::optional<Date> expected;  // nullopt: Null
};

void Check(const Variant& result, const Case& c) {
  if (!c.expected) {
    EXPECT_TRUE(result.IsNull()) << "'" << c.expression << "' gave " << result.Text();
    return;
  }
  ASSERT_TRUE(result.IsDate()) << "'" << c.expression << "' gave " << result.Text();
  EXPECT_EQ(*result.Get<Date>(), *c.expected)
      << "'" << c.expression << "' gave " << result.Get<Date>()->ToIso();
}

TEST_F(DateExpressions, KeywordsDatesAndModifiers) {
  const std::optional<Date> none;
  const Date feb_leap = DateOf(2024, 2, 15);
  const Case cases[] = {
      {"", feb_leap, none},
      {"   ", feb_leap, none},
      {"31/12/2030", feb_leap, DateOf(2030, 12, 31)},
      // Not a date to the parser and no keyword: the date before the sign, plus a day.
      {"31/12/2030+1D", feb_leap, DateOf(2031, 1, 1)},
      {"eom", feb_leap, DateOf(2024, 2, 29)},
      {"EOM", DateOf(2023, 2, 15), DateOf(2023, 2, 28)},
      {"EOM", none, DateOf(2024, 7, 31)},
      {"BOM", feb_leap, DateOf(2024, 2, 1)},
      {"NOW", feb_leap, DateOf(2024, 7, 15)},
      {"now-1", none, DateOf(2024, 7, 14)},
      {"BOM+1", feb_leap, DateOf(2024, 2, 2)},
      {"EOM+1Q", feb_leap, DateOf(2024, 2, 29)},
      {"EOM+1E", DateOf(2024, 1, 15), DateOf(2024, 2, 29)},
      {"EOM + 1e", DateOf(2024, 3, 10), DateOf(2024, 4, 30)},
      {"BOM-1D", DateOf(2024, 3, 10), DateOf(2024, 2, 29)},
      {"EOM-3m", DateOf(2024, 5, 31), DateOf(2024, 2, 29)},
      {"EOM+1Y", feb_leap, DateOf(2025, 2, 28)},
      {"BOY", feb_leap, DateOf(2024, 1, 1)},
      {"EOY", feb_leap, DateOf(2024, 12, 31)},
      {"BOY+1Y-1D", feb_leap, DateOf(2024, 12, 31)},
      {"EOM+1D+1M", DateOf(2024, 1, 15), DateOf(2024, 3, 1)},
      // A sign with nothing after it does nothing; one that ends the text spoils the modifier
      // before it.
      {"EOM+", feb_leap, DateOf(2024, 2, 29)},
      {"EOM+1D+", feb_leap, DateOf(2024, 2, 29)},
      {"EOM+D", feb_leap, DateOf(2024, 2, 29)},
      {"EOM+99999999Y", feb_leap, DateOf(2024, 2, 29)},
      {"+1D", feb_leap, none},
      {"soon", feb_leap, none},
      {"APCURRENT", feb_leap, DateOf(2024, 5, 31)},
      {"arcurrent-1m", feb_leap, DateOf(2024, 5, 30)},
      {"GLCURRENT+1E", feb_leap, DateOf(2024, 4, 30)},
  };
  for (const Case& c : cases) Check(Interpret(c.expression, c.as_at), c);
}

TEST_F(DateExpressions, FinancialYearKeywords) {
  UseYearAprilToMarch();
  const Case cases[] = {
      {"BOY", DateOf(2024, 2, 15), DateOf(2023, 4, 1)},
      {"EOY", DateOf(2024, 2, 15), DateOf(2024, 3, 31)},
      {"EOY+1D", DateOf(2024, 2, 15), DateOf(2024, 4, 1)},
      {"BOY+1Y-1D", DateOf(2024, 2, 15), DateOf(2024, 3, 31)},
      {"BOY", DateOf(2024, 4, 1), DateOf(2024, 4, 1)},
      // Outside the calendar's years: the calendar year.
      {"BOY", DateOf(2026, 2, 15), DateOf(2026, 1, 1)},
      {"EOY", DateOf(2022, 6, 1), DateOf(2022, 12, 31)},
  };
  for (const Case& c : cases) Check(Interpret(c.expression, c.as_at), c);
}

TEST_F(DateExpressions, DatesAreReturnedAsTheyAre) {
  Parameters parameters;
  parameters.AddDate("DateAsAt", Variant(DateOf(2024, 2, 15)), true, "Date As At", Variant("EOM"),
                     false, "Date As At");
  const Date timed = Date::FromYmdHms(2024, 3, 5, 9, 0, 0);
  EXPECT_EQ(fixture_.service.InterpretDate(Variant(timed), &parameters), Variant(timed));
  EXPECT_EQ(fixture_.service.InterpretDate(Variant("5/03/2024"), &parameters),
            Variant(DateOf(2024, 3, 5)));
  EXPECT_TRUE(fixture_.service.InterpretDate(Variant::Null(), &parameters).IsNull());
  EXPECT_EQ(fixture_.service.InterpretDate(Variant("EOM"), nullptr), Variant(DateOf(2024, 7, 31)));
}

TEST_F(DateExpressions, ParameterNamesAsKeywords) {
  Parameters parameters;
  parameters.AddDate("DateTo", Variant(DateOf(2024, 3, 31)), false, "", Variant("EOM"), false,
                     "Dated To");
  parameters.AddDate("DateFrom", Variant("EOM"), false, "", Variant("BOM"), false, "Dated From");
  parameters.AddDate("Nothing", Variant::Null(), false, "", Variant(""), false, "Nothing");
  struct Row {
    std::string expression;
    std::optional<Date> expected;
  } rows[] = {
      {"DateTo-1M", DateOf(2024, 2, 29)},
      {"dateto", DateOf(2024, 3, 31)},
      {"DateTo+1E", DateOf(2024, 4, 30)},
      // A parameter whose value is itself an expression is not interpreted a second time.
      {"DateFrom", std::nullopt},
      {"Nothing+1D", std::nullopt},
      {"Missing+1D", std::nullopt},
  };
  for (const Row& row : rows) {
    Check(fixture_.service.InterpretDate(Variant(row.expression), &parameters),
          {row.expression, std::nullopt, row.expected});
  }
  parameters.SetValue("DateTo", Variant(DateOf(2023, 3, 31)));
  Check(fixture_.service.InterpretDate(Variant("DateTo-1M"), &parameters),
        {"DateTo-1M", std::nullopt, DateOf(2023, 2, 28)});
}

TEST_F(DateExpressions, AsAtThatIsNoDateMeansToday) {
  Parameters parameters;
  parameters.AddString("DateAsAt", Variant("whenever"), true, "", Variant(""), false, "As At");
  EXPECT_EQ(fixture_.service.InterpretDate(Variant("BOM"), &parameters), Variant(DateOf(2024, 7, 1)));
}

TEST_F(DateExpressions, LedgerKeywordsNeedTheApplication) {
  fixture_.service.Dispose();
  EXPECT_THROW((void)fixture_.service.InterpretDate(Variant("APCURRENT"), nullptr), ObjectNotSet);
  EXPECT_EQ(fixture_.service.InterpretDate(Variant("EOM"), nullptr), Variant(DateOf(2024, 7, 31)));
}

class ResolveParameters : public DateExpressions {
 protected:
  void SetUp() override {
    DateExpressions::SetUp();
    parameters_.AddDate("DateAsAt", Variant::Missing(), true, "Date As At", Variant("EOM"), false,
                        "Date As At");
    parameters_.AddDate("DatedFrom", Variant::Missing(), false, "", Variant("BOM"), false,
                        "Dated From");
    parameters_.AddDate("DatedTo", Variant::Missing(), false, "", Variant("DateAsAt-1M"), false,
                        "Dated To");
    parameters_.AddDate("Bad", Variant(DateOf(2000, 1, 1)), false, "", Variant("whenever"), false,
                        "Bad");
    parameters_.AddString("Title", Variant("EOM"), false, "", Variant("EOM"), false, "Title");
  }
  Parameters parameters_;
};

TEST_F(ResolveParameters, InCollectionOrderSoOneBuildsOnAnother) {
  fixture_.service.ResolveParameters(parameters_, true, true);
  EXPECT_EQ(parameters_.Value("DateAsAt"), Variant(DateOf(2024, 7, 31)));
  EXPECT_EQ(parameters_.Value("DatedFrom"), Variant(DateOf(2024, 7, 1)));
  EXPECT_EQ(parameters_.Value("DatedTo"), Variant(DateOf(2024, 6, 30)));
  EXPECT_TRUE(parameters_.Value("Bad").IsNull());
  EXPECT_EQ(parameters_.Value("Title"), Variant("EOM"));
}

TEST_F(ResolveParameters, PromptedAndUnpromptedApart) {
  struct Row {
    bool prompted, unprompted, as_at_resolved, dated_from_resolved;
  } rows[] = {
      {true, false, true, false},
      {false, true, false, true},
      {false, false, false, false},
  };
  for (const Row& row : rows) {
    SetUp();
    fixture_.service.ResolveParameters(parameters_, row.prompted, row.unprompted);
    EXPECT_EQ(parameters_.Value("DateAsAt").IsDate(), row.as_at_resolved)
        << row.prompted << row.unprompted;
    EXPECT_EQ(parameters_.Value("DatedFrom").IsDate(), row.dated_from_resolved)
        << row.prompted << row.unprompted;
  }
}

}  // namespace
}  // namespace trellin::testing
