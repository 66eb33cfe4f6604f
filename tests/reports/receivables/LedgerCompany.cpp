#include "tests/reports/receivables/LedgerCompany.h"

#include "platform/runtime/Clock.h"
#include "platform/runtime/Strings.h"

namespace trellin::reports::testing {

namespace {

std::string TextOf(const DumpRow& row, const char* name) {
  auto found = row.find(name);
  return found == row.end() ? std::string() : found->second.second;
}

}  // namespace

std::unique_ptr<trellin::testing::FixtureCompany> SmallCompany::company_;
std::unique_ptr<host::ReportService> SmallCompany::service_;

void SmallCompany::StartCompany(std::string_view rows_file) {
  SetClockForTesting(Date::FromYmdHms(2025, 4, 2, 9, 30, 0));
  company_ = std::make_unique<trellin::testing::FixtureCompany>(
      std::initializer_list<std::string_view>{rows_file});
  service_ = host::ReportService::Open(company_->Path().string());
}

void SmallCompany::StopCompany() {
  service_.reset();
  company_.reset();
  SetClockForTesting(std::nullopt);
}

std::vector<PrintedParty> PartiesOf(const std::vector<std::string>& pages) {
  std::vector<PrintedParty> parties;
  for (const DumpRow& row : RowsOf(Join(pages, ""), "Detail")) {
    if (row.count("txtOtherPartyId") != 0) {
      parties.push_back({TextOf(row, "txtOtherPartyId"),
                         TextOf(row, "txtClosing"),
                         {},
                         DumpedAmount(row, "txtClosing"),
                         Currency()});
      continue;
    }
    if (parties.empty() || row.count("txtReference") == 0) continue;
    std::vector<std::string> texts;
    for (const char* name : {"txtReference", "txtDebit", "txtCredit", "txtBalance"}) {
      texts.push_back(TextOf(row, name));
    }
    parties.back().rows.push_back(Join(texts, " "));
    parties.back().last_balance = DumpedAmount(row, "txtBalance");
  }
  return parties;
}

std::vector<PrintedPage> PagesOf(const std::vector<std::string>& dumps) {
  std::vector<PrintedPage> pages;
  for (const std::string& dump : dumps) {
    EXPECT_EQ(dump.rfind("errors:", 0), std::string::npos) << dump;
    pages.push_back({PrintedTexts(dump)});
  }
  return pages;
}

}  // namespace trellin::reports::testing
