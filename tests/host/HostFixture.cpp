#include "tests/host/HostFixture.h"

#include <sqlite3.h>

#include <algorithm>
#include <random>

#include "platform/data/CompanyFile.h"
#include "platform/engine/ReportEngine.h"
#include "platform/host/ParameterDialogue.h"
#include "platform/host/run/RunReport.h"

namespace trellin::host::testing {

namespace {

constexpr char kCompanyRows[] = R"sql(
INSERT INTO CompanySetting VALUES ('Company', 'Name', 'Harbour Test Co');
INSERT INTO CompanySetting VALUES ('Company', 'ProductName', 'Trellin Accounts');
INSERT INTO FinancialYear VALUES (1, '2024/25', '2024-04-01', '2025-03-31');
INSERT INTO CustomerType VALUES ('RETAIL', 'Retail customers');
INSERT INTO CustomerType VALUES ('TRADE', 'Trade accounts');
INSERT INTO CustomerCategory VALUES ('A', 'Category A');
INSERT INTO OtherParty (OtherPartyId, Name, IsCustomer, CustomerTypeId, CustomerCategoryId,
                        CustomerCreditLimit, CustomerDiscRate)
  VALUES ('C1', 'Alpha Ltd', 1, 'RETAIL', 'A', 1000000, 12.345),
         ('C2', 'Beta Ltd', 1, 'RETAIL', NULL, 2505000, -3.3333),
         ('C3', 'Gamma Ltd', 1, 'TRADE', 'A', 10000000, NULL),
         ('C4', 'Delta Ltd', 1, NULL, 'A', 50000, 1.5);
INSERT INTO OtherParty (OtherPartyId, Name, IsSupplier) VALUES ('S1', 'Supplies Ltd', 1);
)sql";

}  // namespace

std::vector<std::string> KeepingSink::Texts(int page) const {
  std::vector<std::string> texts;
  for (std::size_t i = 0; i < pages.size(); ++i) {
    if (page >= 0 && static_cast<std::size_t>(page) != i) continue;
    for (const engine::PageItem& item : pages[i].items) {
      if (const auto* run = std::get_if<engine::TextRun>(&item)) texts.push_back(run->text);
    }
  }
  return texts;
}

bool KeepingSink::Printed(const std::string& text, int page) const {
  std::vector<std::string> texts = Texts(page);
  return std::find(texts.begin(), texts.end(), text) != texts.end();
}

void WriteTestCompany(const std::filesystem::path& path) {
  std::unique_ptr<data::CompanyFileWriter> writer = data::CreateCompanyFile(path.string());
  char* error = nullptr;
  if (sqlite3_exec(writer->Handle(), kCompanyRows, nullptr, nullptr, &error) != SQLITE_OK) {
    std::string message = error ? error : "unknown error";
    sqlite3_free(error);
    throw std::runtime_error("test company: " + message);
  }
  writer->Commit();
}

void HostTest::SetUp() {
  std::random_device random;
  folder_ = std::filesystem::temp_directory_path() /
            ("trellin-host-" + std::to_string(random()) + "-" + std::to_string(random()));
  std::filesystem::create_directories(folder_);
  company_ = folder_ / "harbour.db";
  WriteTestCompany(company_);
  service_ = ReportService::Open(company_.string());
  service_->SetCatalogue(TestCatalogue(), TestDesigners());
}

void HostTest::TearDown() {
  for (DesignerPtr& designer : prepared_) {
    if (designer->TLReport()) designer->TLReport()->SetArReport(nullptr);
    designer->SetTLReport(nullptr);
  }
  prepared_.clear();
  if (host_) host_->SetArReport(nullptr);
  host_.reset();
  service_.reset();
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

DesignerPtr HostTest::Prepare(const std::string& key,
                              const std::map<std::string, std::string>& values) {
  DesignerPtr designer = OpenReport(*service_, key);
  host_ = designer->TLReport();
  ParameterDialogue dialogue(host_->Parameters(), service_->DatabasePtr(),
                             [this](const Variant& expression, const Parameters& parameters) {
                               return service_->Reports().InterpretDate(expression, &parameters);
                             });
  for (const auto& [name, value] : values) dialogue.SetFromText(name, value);
  EXPECT_TRUE(dialogue.Validate());
  prepared_.push_back(designer);
  return designer;
}

KeepingSink HostTest::Run(const std::string& key,
                          const std::map<std::string, std::string>& values) {
  DesignerPtr designer = Prepare(key, values);
  KeepingSink sink;
  engine::RunReport(*designer, sink);
  return sink;
}

}  // namespace trellin::host::testing
