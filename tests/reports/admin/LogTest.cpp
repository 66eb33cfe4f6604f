// The log on the demo company: golden page dumps of every key, short and full, grouped, with
// the omit flags and date ranges (log_golden_runs.tsv); and the owners and notes
// it prints checked against plain SQL over the same notes.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "platform/runtime/Strings.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

class LogReports : public DemoReports {};

TEST_F(LogReports, PageDumps) {
  ExpectGoldenRuns(Service(), "admin", "reports/admin/log_golden_runs.tsv");
}

// One owner's line as printed, with the note rows beneath it.
struct PrintedOwner {
  std::string code;
  DumpRow row;
  std::vector<DumpRow> notes;
};

// The owners of a run in print order: a Detail row with a code opens an owner, the note rows of
// the sub-report follow it.
std::vector<PrintedOwner> OwnersOf(const std::vector<std::string>& pages) {
  std::vector<PrintedOwner> owners;
  for (DumpRow& row : RowsOf(Join(pages, "\n"), "Detail")) {
    const auto code = row.find("txtCode");
    if (code != row.end()) {
      owners.push_back({code->second.second, std::move(row), {}});
    } else if (!owners.empty()) {
      owners.back().notes.push_back(std::move(row));
    }
  }
  return owners;
}

// The printed text of `name` in a row; "" when absent.
std::string Printed(const DumpRow& row, const std::string& name) {
  const auto found = row.find(name);
  return found == row.end() ? std::string() : found->second.second;
}

struct OwnerCheck {
  const char* key;
  std::vector<std::string> assignments;
  const char* notes;  // the note table, aliased n
  const char* owner;  // the owner table, aliased o
  const char* code;   // the owner's key column in both
  const char* where;  // the same conditions in plain SQL
};

TEST_F(LogReports, OwnersAndTheirNotesAreThoseOfPlainSqlOverTheSameConditions) {
  const OwnerCheck checks[] = {
      {"OtherPartyLog", {}, "OtherPartyLog", "OtherParty", "OtherPartyId", "1"},
      // An owner whose notes of 2024 are all completed falls away.
      {"OtherPartyLog",
       {"DatedFrom=01/01/2024", "DatedTo=31/12/2024", "OmitCompletedNotes=True"},
       "OtherPartyLog",
       "OtherParty",
       "OtherPartyId",
       "n.Date>='2024-01-01' AND n.Date<'2025-01-01' AND n.CompleteDate IS NULL"},
      {"OtherPartyLog",
       {"Contacts=2"},
       "OtherPartyLog",
       "OtherParty",
       "OtherPartyId",
       "n.ContactId=2"},
      // Customers only, suppliers only.
      {"LogAR", {}, "OtherPartyLog", "OtherParty", "OtherPartyId", "o.IsCustomer"},
      {"LogAP",
       {"OmitActionedNotes=True"},
       "OtherPartyLog",
       "OtherParty",
       "OtherPartyId",
       "o.IsSupplier AND n.ActionDate IS NULL"},
      {"ItemLog",
       {"Subjects=Quality issue"},
       "ItemLog",
       "Item",
       "ItemId",
       "n.Subject='Quality issue'"},
      {"JobLog",
       {"ActionedDateFrom=01/01/2025"},
       "JobLog",
       "Job",
       "JobId",
       "n.ActionDate>='2025-01-01'"},
      {"AssetLog",
       {"Employees=TK", "CompletedDateTo=30/06/2025"},
       "AssetLog",
       "Asset",
       "AssetId",
       "n.EmployeeId='TK' AND n.CompleteDate<'2025-07-01'"},
  };
  const BooksSql sql;
  for (const OwnerCheck& c : checks) {
    SCOPED_TRACE(std::string(c.key) + " " + c.where);
    const std::map<std::string, double> expected = sql.Numbers(
        std::string("SELECT n.") + c.code + ", count(*) FROM " + c.notes + " n JOIN " + c.owner +
        " o ON o." + c.code + "=n." + c.code + " WHERE " + c.where + " GROUP BY n." + c.code);
    ASSERT_FALSE(expected.empty());
    const std::vector<std::string> pages = RunPages(Open(c.key, c.assignments));
    std::map<std::string, double> printed;
    std::vector<std::string> order;
    for (const PrintedOwner& owner : OwnersOf(pages)) {
      EXPECT_EQ(printed.count(owner.code), 0u) << owner.code << " printed twice";
      printed[owner.code] = static_cast<double>(owner.notes.size());
      order.push_back(owner.code);
    }
    EXPECT_EQ(printed, expected);
    EXPECT_TRUE(std::is_sorted(order.begin(), order.end())) << "owners in code order";
  }
}

// The balances' dumped value: "-418@" is -418.
TEST_F(LogReports, OutstandingIsTheLedgersRemainderAndAllOfItOverdueOnceTheBooksHaveStopped) {
  const struct {
    const char* key;
    const char* sum;  // the sign the side turns its remainder with
    const char* types;
  } sides[] = {{"LogAR", "-", "30 AND 39"}, {"LogAP", "", "20 AND 29"}};
  const BooksSql sql;
  for (const auto& side : sides) {
    SCOPED_TRACE(side.key);
    const std::map<std::string, double> remaining =
        sql.Numbers(std::string("SELECT OtherPartyId, ") + side.sum +
                    "Sum(ValueRemaining)/10000.0 FROM Transactions WHERE Type BETWEEN " +
                    side.types + " GROUP BY OtherPartyId");
    const std::vector<PrintedOwner> owners =
        OwnersOf(RunPages(Open(side.key, {"ShowOutstanding=True"})));
    ASSERT_FALSE(owners.empty());
    int with_balance = 0;
    for (const PrintedOwner& owner : owners) {
      const auto found = remaining.find(owner.code);
      const double expected = found == remaining.end() ? 0 : found->second;
      const double total = DumpedAmount(owner.row, "numTotal").ToDouble();
      EXPECT_NEAR(total, expected, 0.005) << owner.code;
      // The fixed clock stands after the demo company's last day: every open item is overdue.
      EXPECT_NEAR(DumpedAmount(owner.row, "numOverdue").ToDouble(), total, 0.005) << owner.code;
      EXPECT_NEAR(DumpedAmount(owner.row, "numCurrent").ToDouble(), 0, 0.005) << owner.code;
      if (expected != 0) ++with_balance;
    }
    EXPECT_GT(with_balance, 0);
  }
  // Without the flag the balances and their labels do not print.
  const std::string plain = Join(RunPages(Open("LogAR", {})), "\n");
  for (const char* hidden :
       {"numTotal", "numOverdue", "numCurrent", "\"Overdue\"", "\"Current\""}) {
    EXPECT_EQ(plain.find(hidden), std::string::npos) << hidden;
  }
}

TEST_F(LogReports, UnderASubjectGroupAnOwnerPrintsOncePerSubjectWithThatSubjectsNotesOnly) {
  const BooksSql sql;
  const std::map<std::string, double> expected = sql.Numbers(
      "SELECT OtherPartyId || '/' || Subject, count(*) FROM OtherPartyLog GROUP BY OtherPartyId, "
      "Subject");
  std::map<std::string, double> printed;
  for (const PrintedOwner& owner :
       OwnersOf(RunPages(Open("OtherPartyLog", {"Groupings=Subject"})))) {
    ASSERT_FALSE(owner.notes.empty()) << owner.code;
    const std::string subject = Printed(owner.notes.front(), "txtSubject");
    for (const DumpRow& note : owner.notes) {
      EXPECT_EQ(Printed(note, "txtSubject"), subject) << owner.code;
    }
    const std::string pair = owner.code + "/" + subject;
    EXPECT_EQ(printed.count(pair), 0u) << pair << " printed twice";
    printed[pair] = static_cast<double>(owner.notes.size());
  }
  EXPECT_EQ(printed, expected);
}

TEST_F(LogReports, NotesRunNewestFirstWhenDescending) {
  const struct {
    const char* order;
    const char* control;
  } orders[] = {{"Date", "txtDate"}, {"ActionDate", "txtActionDate"}};
  for (const auto& o : orders) {
    SCOPED_TRACE(o.order);
    int several = 0;
    for (const PrintedOwner& owner : OwnersOf(RunPages(Open(
             "JobLog", {"NotesOrderDescending=True", std::string("NotesOrderBy=") + o.order})))) {
      std::vector<std::string> dates;
      // Dumped as #yyyy-mm-dd#; Null sorts below every date, so last when descending.
      for (const DumpRow& note : owner.notes) {
        const std::string& date = note.at(o.control).first;
        dates.push_back(date == "Null" ? std::string() : date);
      }
      EXPECT_TRUE(std::is_sorted(dates.rbegin(), dates.rend())) << owner.code;
      if (dates.size() > 1 && dates.front() != dates.back()) ++several;
    }
    EXPECT_GT(several, 0);
  }
}

TEST_F(LogReports, TheShortFormLeavesOutContactsEmployeesAndDocuments) {
  // Employee lines read "TK, Name" and contacts stand on the subject's cell; no other text of
  // the demo notes holds ", ".
  auto count = [](const std::vector<std::string>& pages, auto&& test) {
    int n = 0;
    for (const std::string& text : PrintedTexts(Join(pages, "\n"))) n += test(text) ? 1 : 0;
    return n;
  };
  auto document = [](const std::string& text) { return text.rfind("DOC", 0) == 0; };
  auto employee = [](const std::string& text) { return text.find(", ") != std::string::npos; };
  for (const char* key : {"OtherPartyLog", "ItemLog", "JobLog", "AssetLog"}) {
    SCOPED_TRACE(key);
    const std::vector<std::string> full = RunPages(Open(key, {"NotesShowFull=True"}));
    EXPECT_GT(count(full, document), 0);
    EXPECT_GT(count(full, employee), 0);
    const std::vector<std::string> short_form = RunPages(Open(key, {}));
    EXPECT_EQ(count(short_form, document), 0);
    EXPECT_EQ(count(short_form, employee), 0);
  }
}

TEST_F(LogReports, ASubjectNoNoteHasGivesAnEmptyReportWithItsHeadings) {
  for (const char* key : {"OtherPartyLog", "LogAR", "ItemLog", "JobLog", "AssetLog"}) {
    const std::vector<std::string> pages = RunPages(Open(key, {"Subjects=No such subject"}));
    ASSERT_EQ(pages.size(), 1u) << key << "\n" << Join(pages, "\n");
    EXPECT_EQ(pages[0].find("txtCode"), std::string::npos) << key;
    for (const char* heading : {"\"Date\"", "\"Subject\"", "\"Notes\"", "Page 1"}) {
      EXPECT_NE(pages[0].find(heading), std::string::npos) << key << " " << heading;
    }
  }
}

}  // namespace
}  // namespace trellin::reports::testing
