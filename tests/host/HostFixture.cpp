#include "tests/host/HostFixture.h"

#include <algorithm>

#include "platform/engine/ReportEngine.h"
#include "platform/host/ParameterDialogue.h"
#include "platform/host/run/RunReport.h"
#include "tests/support/FixtureCompany.h"

namespace trellin::host::testing {

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
  trellin::testing::WriteCompany(path, {"host/company.sql"});
}

void HostTest::SetUp() {
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
