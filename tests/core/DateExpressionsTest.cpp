// InterpretDate and ResolveParameters.

#include <gtest/gtest.h>

#include <optional>

#include "Fakes.h"
#include "platform/runtime/Clock.h"
#include "tests/support/CaseFile.h"

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

// date_expressions.tsv: the financial years, the expression, Date As At, the date it gives.
TEST_F(DateExpressions, KeywordsDatesModifiersAndFinancialYearsAsListed) {
  const auto rows = ReadCases("core/date_expressions.tsv", 4);
  ASSERT_GT(rows.size(), 30u);
  for (const CaseRow& row : rows) {
    fixture_.application->calendar.years.clear();
    if (row.fields[0] == "april") UseYearAprilToMarch();
    std::optional<Date> as_at;
    if (row.fields[2] != "-") as_at = Date::FromIso(row.fields[2]);
    const Variant result = Interpret(row.fields[1], as_at);
    const std::string given = result.IsNull()   ? "null"
                              : result.IsDate() ? result.Get<Date>()->ToIso()
                                                : "not a date: " + result.Text();
    EXPECT_EQ(given, row.fields[3]) << row.Where() << ": '" << row.fields[1] << "'";
  }
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
  EXPECT_EQ(fixture_.service.InterpretDate(Variant("BOM"), &parameters),
            Variant(DateOf(2024, 7, 1)));
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
