// The control report on the demo company (its pages are golden runs of golden_runs.tsv): its
// figures against plain SQL: the month end is the side's balance by process date, the control
// account the account's sum, and the variance the company's deliberate difference at the present
// and nothing at every earlier month end.

#include <gtest/gtest.h>

#include "platform/demo/DemoCompany.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/ardscrControlReport.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

class ControlDemo : public DemoReports {};

struct ControlSide {
  const char* key;
  const char* balance;  // the side's balance, turned so that what is owed shows positive
  const char* range;
  const char* account;
  const char* account_sign;
  std::int64_t difference;  // what the control account holds beyond the sub-ledger at present
};

// The demo company's accounts hold 250.45 more debit (receivables) and 87.50 more credit
// (payables) than the sub-ledgers, each shown in the sub-ledger's own sense.
constexpr ControlSide kControlSides[] = {
    {"ControlReportAR", "-Value", "30 And 39", "3100", "", demo::kReceivablesControlDifference},
    {"ControlReportAP", "Value", "20 And 29", "4010", "-", -demo::kPayablesControlDifference},
};

TEST_F(ControlDemo, FiguresAgreeWithPlainSql) {
  Database& db = Service().Database();
  for (const ControlSide& side : kControlSides) {
    SCOPED_TRACE(side.key);
    // Every month end of the books: the sub-ledger and its account agree until the hand journal
    // three days before the present.
    const Date first = db.Query("SELECT Min(DateProcess) FROM Transactions")->Value(0).ToDate();
    const Date last = db.Query("SELECT Max(DateProcess) FROM Transactions")->Value(0).ToDate();
    std::vector<Date> ends;
    for (Date m = first.FirstOfMonth(); m <= last; m = m.AddMonths(1)) {
      ends.push_back(m.AddMonths(1).AddDays(-1));
    }
    ASSERT_GT(ends.size(), 60U);
    for (const Date& end : ends) {
      const std::string bound = Database::SQLDate(end.AddDays(1));
      const Currency ledger = db.ExecuteScalarCurrency(
          std::string("SELECT Sum(") + side.balance + ") FROM Transactions WHERE Type Between " +
              side.range + " AND DateProcess<" + bound,
          Currency());
      const Currency account = db.ExecuteScalarCurrency(
          std::string("SELECT Sum(") + side.account_sign + "Value) FROM glTransaction WHERE " +
              "AccountId='" + side.account + "' AND Date<" + bound,
          Currency());
      const bool present = end == ends.back();
      EXPECT_EQ(account - ledger, present ? Currency::FromRaw(side.difference) : Currency())
          << end.ToIso();
    }
    // The report at the present and at two earlier month ends, against the same sums.
    for (const Date& end : {ends.back(), ends[ends.size() - 2], ends[ends.size() - 14]}) {
      SCOPED_TRACE(end.ToIso());
      DesignerPtr designer = Open(side.key, {"DateAsAt=" + end.ToIso()});
      auto& report = dynamic_cast<ardscrControlReport&>(*designer);
      report.SetUp();
      report.Detail_Format();
      const std::string bound = Database::SQLDate(end.AddDays(1));
      EXPECT_EQ(report.MonthEnd(),
                db.ExecuteScalarCurrency(std::string("SELECT Sum(") + side.balance +
                                             ") FROM Transactions WHERE Type Between " +
                                             side.range + " AND DateProcess<" + bound,
                                         Currency()));
      EXPECT_EQ(report.ControlAccount(),
                db.ExecuteScalarCurrency(std::string("SELECT Sum(") + side.account_sign +
                                             "Value) FROM glTransaction WHERE AccountId='" +
                                             side.account + "' AND Date<" + bound,
                                         Currency()));
      EXPECT_EQ(report.Variance(),
                end == ends.back() ? Currency::FromRaw(-side.difference) : Currency());
      EXPECT_EQ(report.AgeingNow().Total(), report.CurrentBalance());
      EXPECT_EQ(report.AgeingMonthEnd().Total(), report.MonthEnd());
      designer->TLReport()->SetArReport(nullptr);
    }
  }
}

}  // namespace
}  // namespace trellin::reports::testing
