// The code lists, the contact and script lists and the role permission list end to end on the
// demo company: golden page dumps read against what each list must print, and the checks that
// tie a printed figure or tick to the rows behind it.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <map>
#include <regex>
#include <set>
#include <sstream>
#include <tuple>

#include "platform/runtime/Strings.h"
#include "reports/admin/arCodeLists.h"
#include "reports/admin/arGridContent.h"
#include "reports/admin/arOtherPartyList.h"
#include "reports/admin/arScriptList.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

class AdminCodeLists : public DemoReports {};

TEST_F(AdminCodeLists, PageDumps) {
  const struct {
    const char* name;
    const char* key;
    std::vector<std::string> assignments;
  } cases[] = {
      {"PaymentTermList", "PaymentTermList", {}},
      {"PaymentTermList-description", "PaymentTermList", {"OrderBy=Description"}},
      {"PenaltyInterestTypeList", "PenaltyInterestTypeList", {}},
      {"SupplierCategoryList", "SupplierCategoryList", {}},
      {"SupplierTypeList", "SupplierTypeList", {"OrderBy=Description"}},
      {"ItemCategoryList", "ItemCategoryList", {}},
      {"ItemTypeList", "ItemTypeList", {"ItemTypes=BATCH..MISC"}},
      {"ContactList", "ContactList", {}},
      {"ContactList-by-party", "ContactList", {"OrderBy=Party", "Groupings=Other Party"}},
      {"ScriptList", "ScriptList", {}},
      {"ScriptList-text", "ScriptList", {"ShowScriptText=True", "ActiveOnly=True"}},
      {"UserRolePermissionList", "UserRolePermissionList", {}},
      {"UserRolePermissionList-denied",
       "UserRolePermissionList",
       {"ShowDenied=True", "Users=sam", "Areas=Jobs,Stock", "NewPagePerRole=True"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    std::vector<std::string> pages = RunPages(Open(c.key, c.assignments));
    ASSERT_FALSE(pages.empty());
    EXPECT_EQ(pages.back().rfind("errors:", 0), std::string::npos) << pages.back();
    ExpectGolden("admin", c.name, Join(pages, "\n"));
  }
}

TEST(PaymentTermDue, SaysWhenADocumentFallsDue) {
  const struct {
    long days;
    bool following;
    const char* due;
  } cases[] = {
      {20, true, "20th of the month following"},
      {1, true, "1st of the month following"},
      {2, true, "2nd of the month following"},
      {3, true, "3rd of the month following"},
      {11, true, "11th of the month following"},
      {22, true, "22nd of the month following"},
      {7, false, "7 days"},
      {1, false, "1 day"},
      {0, false, "On delivery"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(PaymentTermDue(c.days, c.following), c.due) << c.days << " " << c.following;
  }
}

TEST(ScriptLineCount, CountsALastLineWithoutABreak) {
  EXPECT_EQ(ScriptLineCount(""), 0);
  EXPECT_EQ(ScriptLineCount("a"), 1);
  EXPECT_EQ(ScriptLineCount("a\nb"), 2);
  EXPECT_EQ(ScriptLineCount("a\nb\n"), 2);
}

// Reads rows of the demo company as text, tab-separated.
std::vector<std::string> DemoRows(const std::string& sql) {
  sqlite3* db = nullptr;
  std::vector<std::string> rows;
  if (sqlite3_open_v2(DemoCompanyPath().c_str(), &db, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK) {
    ADD_FAILURE() << "cannot open the demo company";
    return rows;
  }
  sqlite3_stmt* stmt = nullptr;
  sqlite3_prepare_v2(db, sql.c_str(), -1, &stmt, nullptr);
  while (sqlite3_step(stmt) == SQLITE_ROW) {
    std::string row;
    for (int i = 0; i < sqlite3_column_count(stmt); ++i) {
      const unsigned char* text = sqlite3_column_text(stmt, i);
      row += (i == 0 ? "" : "\t") + std::string(text ? reinterpret_cast<const char*>(text) : "");
    }
    rows.push_back(row);
  }
  sqlite3_finalize(stmt);
  sqlite3_close(db);
  return rows;
}

// The value a dump line gives control `name`: `name=VALUE "text"`; "" when absent.
std::string DumpValue(const std::string& line, const std::string& name) {
  const std::string tag = " " + name + "=";
  const std::size_t at = line.find(tag);
  if (at == std::string::npos) return {};
  const std::size_t from = at + tag.size();
  if (line[from] == '"') return line.substr(from + 1, line.find('"', from + 1) - from - 1);
  return line.substr(from, line.find(' ', from) - from);
}

TEST_F(AdminCodeLists, EachDemoPaymentTermPrintsItsDueRule) {
  const std::string dump = Join(RunPages(Open("PaymentTermList", {})), "\n");
  for (const std::string& row :
       DemoRows("SELECT PaymentTermId,Days,FollowingMonth FROM PaymentTerm ORDER BY 1")) {
    std::istringstream fields(row);
    std::string id, days, following;
    std::getline(fields, id, '\t');
    std::getline(fields, days, '\t');
    std::getline(fields, following, '\t');
    const std::string due = PaymentTermDue(std::stol(days), following == "1");
    bool found = false;
    std::istringstream lines(dump);
    for (std::string line; std::getline(lines, line);) {
      if (line.find("\"" + id + "\"") != std::string::npos &&
          line.find("\"" + due + "\"") != std::string::npos) {
        found = true;
      }
    }
    EXPECT_TRUE(found) << id << " should print \"" << due << "\"\n" << dump;
  }
}

// With the denied functions shown, every permission row prints once, under its role and area,
// with its five ticks as stored.
TEST_F(AdminCodeLists, TicksMatchThePermissionRows) {
  const std::string dump =
      Join(RunPages(Open("UserRolePermissionList", {"ShowDenied=True", "ShowUsers=False"})), "\n");
  std::map<std::string, std::string> printed;  // role, area, function -> the ticks
  std::string role, area;
  std::istringstream lines(dump);
  for (std::string line; std::getline(lines, line);) {
    if (const std::string r = DumpValue(line, "txtRoleId"); !r.empty()) role = r;
    if (const std::string a = DumpValue(line, "txtArea"); !a.empty()) area = a;
    const std::string function = DumpValue(line, "txtFunction");
    if (function.empty()) continue;
    std::string ticks;
    for (const char* name : {"chkView", "chkAdd", "chkEdit", "chkDelete", "chkPrint"}) {
      ticks += DumpValue(line, name) == "True" ? "1" : "0";
    }
    EXPECT_TRUE(printed.emplace(role + "\t" + area + "\t" + function, ticks).second) << line;
  }
  const std::vector<std::string> rows = DemoRows(
      "SELECT RoleId,Area,FunctionName,CanView||CanAdd||CanEdit||CanDelete||CanPrint "
      "FROM UserRolePermission");
  ASSERT_EQ(printed.size(), rows.size());
  for (const std::string& row : rows) {
    const std::size_t last = row.rfind('\t');
    EXPECT_EQ(printed[row.substr(0, last)], row.substr(last + 1)) << row;
  }
}

TEST_F(AdminCodeLists, PartyListPageDumps) {
  const struct {
    const char* name;
    const char* key;
    std::vector<std::string> assignments;
  } cases[] = {
      {"CustomerList", "CustomerList", {"Customers=A..C"}},
      {"CustomerList-balances-by-category",
       "CustomerList",
       {"Columns=Code,Name,Category,Terms,CreditLimit,Status,Balance",
        "Groupings=Customer Category", "DateAsAt=2025-06-30", "CustomerCategories=EXPORT..MARINA"}},
      {"SupplierList", "SupplierList", {"OrderBy=Name", "SupplierCategories=SERV"}},
      {"OtherPartyList-by-type",
       "OtherPartyList",
       {"Groupings=Other Party Type", "Columns=Code,Name,Type,Customer,Supplier,Receivable,Payable",
        "OtherParties=H..HZ"}},
      {"DocumentList", "DocumentList", {"DatedFrom=2025-09-01"}},
      {"DocumentList-by-owner-type",
       "DocumentList",
       {"OrderBy=Owner", "Groupings=Owner Type", "OwnerItems=False", "OwnerAssets=False"}},
      {"ContactDetailsList", "ContactDetailsList", {}},
      {"ContactDetailsList-party-no-notes",
       "ContactDetailsList",
       {"OrderBy=Party", "ShowNotes=False", "Contacts=1..2"}},
      {"OtherPartyDetails",
       "OtherPartyDetails",
       {"OtherParties=HARBO008..HARBO010", "DatedFrom=2025-10-01", "DateAsAt=2025-10-31"}},
      {"OtherPartyDetails-no-documents",
       "OtherPartyDetails",
       {"ShowTransactions=False", "OrderBy=Name", "OtherParties=H..HF"}},
      {"GridContent",
       "GridContent",
       {"GridTitle=Open invoices",
        "GridSQL=SELECT TOP 12 TransactionId,Reference,[Date],Value,"
        "Held FROM Transactions WHERE Type=30 ORDER BY TransactionId"}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    std::vector<std::string> pages = RunPages(Open(c.key, c.assignments));
    ASSERT_FALSE(pages.empty());
    EXPECT_EQ(pages.back().rfind("errors:", 0), std::string::npos) << pages.back();
    ExpectGolden("admin", c.name, Join(pages, "\n"));
  }
}

// The total of what a side's parties owe or are owed as at a date is the ledger's closing total
// for its outstanding items on that date.
TEST_F(AdminCodeLists, BalanceTotalIsTheLedgersClosingTotal) {
  // A past month end: what is open today is rebuilt back to it on both sides of the check.
  const std::string as_at = "DateAsAt=2025-06-30";
  const std::string ledger = Join(RunPages(Open("LedgerAR", {"Period=Outstanding", as_at})), "\n");
  const std::string list =
      Join(RunPages(Open("CustomerList", {"Columns=Code,Balance", as_at})), "\n");
  std::smatch ledger_total, list_total;
  ASSERT_TRUE(std::regex_search(ledger, ledger_total, std::regex(R"(rfBalance=(\S+)@)")));
  ASSERT_TRUE(
      std::regex_search(list, list_total, std::regex(R"(ReportFooterSummaryBalance=(\S+)@)")));
  EXPECT_EQ(list_total[1].str(), ledger_total[1].str());
}

// Addresses keeps exactly the parties that have an address of that kind.
TEST_F(AdminCodeLists, AnAddressesFilterKeepsOnlyPartiesWithThatAddress) {
  const std::string dump =
      Join(RunPages(Open("OtherPartyList", {"Addresses=Delivery", "Columns=Code,Name"})), "\n");
  std::set<std::string> printed;
  for (const std::string& code : TextsOf(dump, "txtCode")) printed.insert(code);
  std::set<std::string> expected;
  for (const std::string& code :
       DemoRows("SELECT OtherPartyId FROM OtherPartyAddress WHERE AddressId='Delivery'")) {
    expected.insert(code);
  }
  EXPECT_FALSE(expected.empty());
  EXPECT_EQ(printed, expected);
}

TEST(CreditStatusName, NamesTheFiveStatuses) {
  EXPECT_EQ(CreditStatusName(Variant(1)), "None");
  EXPECT_EQ(CreditStatusName(Variant(3)), "Caution");
  EXPECT_EQ(CreditStatusName(Variant(5)), "Adverse");
  EXPECT_EQ(CreditStatusName(Variant(0)), "");
  EXPECT_EQ(CreditStatusName(Variant::Null()), "");
}

TEST(GridSQLRefusal, RunsOneSelectThatReadsAndRefusesTheRest) {
  const struct {
    const char* sql;
    const char* refusal;  // "" when the query runs
  } cases[] = {
      {"SELECT * FROM Item", ""},
      {"  select ItemId FROM Item;  ", ""},
      // Words inside quotes and brackets are data, not statements.
      {"SELECT 'x; DELETE' AS [Update] FROM Item", ""},
      {"UPDATE Item SET Description='x'",
       "The grid's query must be a SELECT: it starts with UPDATE."},
      {"SELECT * FROM Item; DELETE FROM Item",
       "The grid's query must be one statement: it holds more than one."},
      {"SELECT * FROM Item;;", "The grid's query must be one statement: it holds more than one."},
      {"SELECT * INTO Copy FROM Item", "The grid's query may only read: it holds INTO."},
      {"", "The grid gave no query to print."},
  };
  for (const auto& c : cases) {
    const std::optional<std::string> refusal = GridSQLRefusal(c.sql);
    EXPECT_EQ(refusal.value_or(""), c.refusal) << c.sql;
  }
}

TEST_F(AdminCodeLists, GridContentRefusesAnUpdateWithItsMessage) {
  const std::vector<std::string> pages =
      RunPages(Open("GridContent", {"GridSQL=UPDATE Item SET Active=False"}));
  ASSERT_FALSE(pages.empty());
  EXPECT_NE(pages.back().find("The grid's query must be a SELECT: it starts with UPDATE."),
            std::string::npos)
      << pages.back();
}

}  // namespace
}  // namespace trellin::reports::testing
