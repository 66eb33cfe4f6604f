// The standard cheque on a small company built for it (cheque.sql: 25 and 26 bills, cents alone,
// an empty cheque name, a branch the list lacks, a credit allocated from its own side): each
// cheque's amount and stub against the books read with plain SQL, and its golden dumps.

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

#include "platform/host/run/ReportService.h"
#include "platform/runtime/Strings.h"
#include "tests/reports/ReportFixture.h"
#include "tests/support/FixtureCompany.h"

namespace trellin::reports::testing {
namespace {

// The dump with each row on one line: a text of several lines (an address) has them joined by
// " / ".
std::string Unfolded(const std::string& dump) {
  std::string out;
  bool open = false;  // inside a quoted text
  for (const char c : dump) {
    if (c == '"') open = !open;
    if (c == '\n' && open) {
      out += " / ";
    } else {
      out += c;
    }
  }
  return out;
}

std::string Printed(const DumpRow& row, const std::string& name) {
  const auto found = row.find(name);
  return found == row.end() ? std::string() : found->second.second;
}

// One cheque as printed: its page's fields and the stub's lines.
struct PrintedCheque {
  DumpRow cheque;
  std::vector<DumpRow> stub;
};

class ChequeStandard : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    company_ =
        std::make_unique<trellin::testing::FixtureCompany>(std::initializer_list<std::string_view>{
            "reports/ledger/fixture.sql", "reports/ledger/bank.sql", "reports/ledger/cheque.sql"});
    service_ = host::ReportService::Open(company_->Path().string());
  }
  static void TearDownTestSuite() {
    service_.reset();
    company_.reset();
  }
  static std::string Dump(const std::vector<std::string>& assignments) {
    return Join(DumpPages(OpenWithValues(*service_, "ChequeStandard", assignments)), "\n");
  }
  // The cheques of a run by their number, each with its stub's lines. An address's lines are
  // one row's text: they are joined by " / " first.
  static std::map<std::string, PrintedCheque> Cheques(const std::string& dump) {
    // The cheque is its group's header; its Detail row opens the stub, whose lines follow.
    const std::string rows = Unfolded(dump);
    const std::vector<DumpRow> headers = RowsOf(rows, "GroupHeader");
    std::map<std::string, PrintedCheque> cheques;
    PrintedCheque* current = nullptr;
    std::size_t next = 0;
    for (const DumpRow& row : RowsOf(rows, "Detail")) {
      if (row.count("numStubAmount") == 0) {
        if (next >= headers.size()) break;
        current = &cheques[Printed(headers[next], "txtReference")];
        current->cheque = headers[next++];
      } else if (current != nullptr) {
        current->stub.push_back(row);
      }
    }
    return cheques;
  }
  // Money from the company with plain SQL: the first column of the first row.
  static Currency Books(const std::string& sql) {
    auto rs = company_->Database()->Query(sql);
    return rs->Eof() || rs->Value(0).IsNull() ? Currency() : rs->Value(0).ToCurrency();
  }

  static std::unique_ptr<trellin::testing::FixtureCompany> company_;
  static std::unique_ptr<host::ReportService> service_;
};

std::unique_ptr<trellin::testing::FixtureCompany> ChequeStandard::company_;
std::unique_ptr<host::ReportService> ChequeStandard::service_;

TEST_F(ChequeStandard, MatchesItsGoldenDumps) {
  ExpectGoldenRuns(*service_, "ledger", "reports/ledger/cheque_golden_runs.tsv");
}

// Every cheque's amount is the sum of its entry's lines but the bank's own, and its stub's lines
// with "And Others" add up to what it paid: the allocations of its payment, each counted once
// whichever side made it, or its ledger lines with their tax but without those of category "*".
TEST_F(ChequeStandard, AmountsAndStubsAgreeWithTheBooks) {
  const std::map<std::string, PrintedCheque> cheques = Cheques(Dump({}));
  // The four of cheque.sql, and the two entries of bank.sql, which carry no number, under "".
  ASSERT_EQ(cheques.size(), 5U);
  for (const auto& [number, printed] : cheques) {
    SCOPED_TRACE(number);
    const std::string entry =
        "(SELECT glBankTransactionId FROM glBankTransaction WHERE Reference='" + number + "'" +
        (number.empty() ? " OR Reference Is Null)" : ")");
    if (number.empty()) continue;  // bank.sql's entries carry no number
    EXPECT_EQ(DumpedAmount(printed.cheque, "numAmount"),
              Books("SELECT Sum(Value) FROM glTransaction WHERE glBankTransactionId=" + entry +
                    " AND glBankTransactionSequence<>0"));
    Currency stub;
    for (const DumpRow& line : printed.stub) stub += DumpedAmount(line, "numStubAmount");
    const std::string payment =
        "(SELECT TransactionId FROM Transactions WHERE glBankTransactionId=" + entry + ")";
    const Currency paid =
        number == "000127"
            ? Books("SELECT Sum(Value+TaxValue) FROM glTransaction WHERE glBankTransactionId=" +
                    entry + " AND glBankTransactionSequence<>0 AND TaxCategory<>'*'")
            : Books("SELECT Sum(-ValueAllocated) FROM TransactionAllocation WHERE TransactionId1=" +
                    payment + " OR TransactionId2=" + payment);
    EXPECT_EQ(stub, paid);
    EXPECT_EQ(stub, DumpedAmount(printed.cheque, "numAmount"));
  }
}

// Exactly 25 items fill the stub; a 26th is rolled into "And Others" with a blank date and
// reference. The credit allocated from its own side shows once.
TEST_F(ChequeStandard, TheStubHoldsTwentyFiveLinesThenAndOthers) {
  const std::map<std::string, PrintedCheque> cheques = Cheques(Dump({}));
  const std::vector<DumpRow>& exactly = cheques.at("000125").stub;
  ASSERT_EQ(exactly.size(), 25U);
  EXPECT_NE(Printed(exactly.back(), "txtStubComment"), "And Others");
  const std::vector<DumpRow>& more = cheques.at("000126").stub;
  ASSERT_EQ(more.size(), 26U);
  EXPECT_EQ(Printed(more.back(), "txtStubComment"), "And Others");
  EXPECT_EQ(Trim(Printed(more.back(), "txtStubDate")), "");
  EXPECT_EQ(Trim(Printed(more.back(), "txtStubReference")), "");
  EXPECT_EQ(DumpedAmount(more.back(), "numStubAmount"), Currency::Parse("260.26").value());
  const std::vector<DumpRow>& sides = cheques.at("000128").stub;
  ASSERT_EQ(sides.size(), 3U);
  EXPECT_EQ(
      std::count_if(sides.begin(), sides.end(),
                    [](const DumpRow& row) { return Printed(row, "txtStubReference") == "C3"; }),
      1);
}

// The payee, the address, the words and the branch of each cheque as printed.
TEST_F(ChequeStandard, PayeeAddressWordsAndBranch) {
  const std::map<std::string, PrintedCheque> cheques = Cheques(Dump({}));
  struct Case {
    const char* number;
    const char* payee;
    const char* address;  // its first line
    const char* branch;
  };
  const Case kCases[] = {
      // A cheque name of no length prints the name; its postal address.
      {"000125", "Twenty Five Ltd", "PO Box 25", "North"},
      // A cheque name of its own; no postal address, so the default one.
      {"000126", "Twenty Six Trust Account", "26 Quay Street", "North"},
      // No cheque name at all; no address; a branch the list lacks prints blank.
      {"000127", "Small Change", "", ""},
      // A blank postal address gives way to the default one.
      {"000128", "Both Sides Ltd", "9 Wharf Road", "North"},
  };
  for (const Case& c : kCases) {
    SCOPED_TRACE(c.number);
    const DumpRow& row = cheques.at(c.number).cheque;
    EXPECT_EQ(Printed(row, "txtName2"), c.payee);
    EXPECT_EQ(Split(Printed(row, "txtAddress"), "\r").front(), c.address);
    EXPECT_EQ(Trim(Printed(row, "txtBranch")), c.branch);
  }
  // Under a dollar the words are cents alone, behind the five blanks.
  EXPECT_EQ(Printed(cheques.at("000127").cheque, "txtAmountInWords"), "     Forty-five cents");
  EXPECT_EQ(Printed(cheques.at("000125").cheque, "txtAmountInWords"),
            "     Three thousand two hundred and fifty dollars");
}

// WHERE text that picks cheques narrows the run; text that does not read stops it with a message
// quoting the text.
TEST_F(ChequeStandard, TheWhereTextPicksTheChequesOrStopsTheRun) {
  EXPECT_EQ(Cheques(Dump({"SQLWhere= WHERE glBankTransaction.Reference='000126'"})).size(), 1U);
  const std::string bad = " WHERE glBankTransaction.Reference=='";
  DesignerPtr designer = OpenWithValues(*service_, "ChequeStandard", {"SQLWhere=" + bad});
  try {
    (void)DumpPages(designer);
    ADD_FAILURE() << "the run went on";
  } catch (const Error& e) {
    EXPECT_EQ(e.Kind(), ErrorKind::Input);
    EXPECT_NE(std::string(e.what()).find("'" + bad + "'"), std::string::npos) << e.what();
  }
}

}  // namespace
}  // namespace trellin::reports::testing
