// The code lists, the contact and script lists, the role permission list and the party lists on
// the demo company: golden page dumps (code_list_golden_runs.tsv), the checks that tie a printed
// figure or tick to the rows behind it, and the lists' own wording.

#include <gtest/gtest.h>

#include <map>
#include <regex>
#include <set>
#include <sstream>

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
  ExpectGoldenRuns(Service(), "admin", "reports/admin/code_list_golden_runs.tsv");
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
  for (const std::vector<std::string>& row :
       BooksSql().Rows("SELECT PaymentTermId,Days,FollowingMonth FROM PaymentTerm ORDER BY 1")) {
    const std::string& id = row[0];
    const std::string due = PaymentTermDue(std::stol(row[1]), row[2] == "1");
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
  const std::vector<std::vector<std::string>> rows = BooksSql().Rows(
      "SELECT RoleId,Area,FunctionName,CanView||CanAdd||CanEdit||CanDelete||CanPrint "
      "FROM UserRolePermission");
  ASSERT_EQ(printed.size(), rows.size());
  for (const std::vector<std::string>& row : rows) {
    EXPECT_EQ(printed[row[0] + "\t" + row[1] + "\t" + row[2]], row[3]) << row[2];
  }
}

// Addresses keeps exactly the parties that have an address of that kind.
TEST_F(AdminCodeLists, AnAddressesFilterKeepsOnlyPartiesWithThatAddress) {
  const std::string dump =
      Join(RunPages(Open("OtherPartyList", {"Addresses=Delivery", "Columns=Code,Name"})), "\n");
  std::set<std::string> printed;
  for (const std::string& code : TextsOf(dump, "txtCode")) printed.insert(code);
  const std::vector<std::string> codes =
      BooksSql().Texts("SELECT OtherPartyId FROM OtherPartyAddress WHERE AddressId='Delivery'");
  const std::set<std::string> expected(codes.begin(), codes.end());
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
