#include "tests/reports/stock/StockCompany.h"

#include "platform/host/ParameterDialogue.h"
#include "platform/host/run/RunReport.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Strings.h"

namespace trellin::reports::testing {

std::unique_ptr<trellin::testing::FixtureCompany> StockCompany::company_;
std::unique_ptr<host::ReportService> StockCompany::service_;

void StockCompany::SetUpTestSuite() {
  SetClockForTesting(Date::FromYmdHms(2025, 7, 1, 9, 30, 0));
  company_ = std::make_unique<trellin::testing::FixtureCompany>(
      std::initializer_list<std::string_view>{"business/stock.sql"});
  service_ = host::ReportService::Open(company_->Path().string());
}

void StockCompany::TearDownTestSuite() {
  service_.reset();
  company_.reset();
  SetClockForTesting(std::nullopt);
}

std::vector<std::string> StockCompany::Run(const std::string& key,
                                           const std::vector<std::string>& assignments) {
  std::vector<std::string> pages = DumpPages(OpenWithValues(*service_, key, assignments));
  EXPECT_FALSE(pages.empty());
  if (!pages.empty()) {
    EXPECT_EQ(pages.back().rfind("errors:", 0), std::string::npos) << pages.back();
  }
  return pages;
}

std::string StockCompany::RunErrors(const std::string& key,
                                    const std::vector<std::string>& assignments) {
  const std::vector<std::string> pages = DumpPages(OpenWithValues(*service_, key, assignments));
  if (pages.empty() || pages.back().rfind("errors:\n", 0) != 0) return {};
  std::string errors = pages.back().substr(8);  // a line an error
  if (errors.ends_with('\n')) errors.pop_back();
  return errors;
}

std::vector<std::string> StockCompany::Refusals(const std::string& key,
                                                const std::vector<std::string>& assignments) {
  DesignerPtr designer = host::OpenReport(*service_, key);
  host::ParameterDialogue dialogue(
      designer->TLReport()->Parameters(), service_->DatabasePtr(),
      [](const Variant& e, const Parameters& p) {
        return service_->Reports().InterpretDate(e, &p);
      },
      &service_->BusinessLayer().Utilities().RangeBuilder());
  // A value that cannot be read is refused as it is given; the rest when they are checked.
  std::vector<std::string> errors;
  try {
    for (const std::string& a : assignments) dialogue.SetFromAssignment(a);
    if (!dialogue.Validate()) errors = dialogue.Errors();
  } catch (const std::exception& e) {
    errors.emplace_back(e.what());
  }
  designer->TLReport()->SetArReport(nullptr);
  designer->SetTLReport(nullptr);
  return errors;
}

std::vector<std::map<std::string, std::string>> PrintedRows(const std::vector<std::string>& pages,
                                                            const std::string& section) {
  std::vector<std::map<std::string, std::string>> rows;
  for (const DumpRow& row : RowsOf(Join(pages, "\n"), section)) {
    std::map<std::string, std::string> texts;
    for (const auto& [name, cell] : row) texts[name] = cell.second;
    rows.push_back(std::move(texts));
  }
  return rows;
}

std::map<std::string, std::map<std::string, std::string>> RowsByCode(
    const std::vector<std::string>& pages, const std::string& code_control) {
  std::map<std::string, std::map<std::string, std::string>> by_code;
  for (auto& row : PrintedRows(pages, "Detail")) {
    const auto code = row.find(code_control);
    if (code != row.end()) by_code[code->second] = row;
  }
  return by_code;
}

double NumberIn(const DumpRow& row, const std::string& control) {
  const auto found = row.find(control);
  if (found == row.end()) return 0;
  std::string value = found->second.first;
  if (!value.empty() && value.back() == '@') value.pop_back();
  if (const auto money = Currency::Parse(value)) return money->ToDouble();
  return 0;
}

}  // namespace trellin::reports::testing
