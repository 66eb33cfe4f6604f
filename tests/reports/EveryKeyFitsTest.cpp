// Every key that runs, on the demo company with the values a user gets by default: no figure or
// caption may be printed cut, wider than its box, or broken inside a word.

#include <gtest/gtest.h>

#include "core/Catalogue.h"
#include "platform/engine/DumpPage.h"
#include "platform/engine/ReportEngine.h"
#include "platform/runtime/Strings.h"
#include "reports/Designers.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

class MisfitSink : public engine::PageSink {
 public:
  void Begin(const engine::DocumentInfo&) override {}
  void AddPage(const engine::Page& page) override {
    ++pages;
    for (std::string& misfit : engine::Misfits(page)) misfits.push_back(std::move(misfit));
  }
  void End() override {}
  void Abort() override {}

  int pages = 0;
  std::vector<std::string> misfits;
};

class EveryKey : public DemoReports {};

TEST_F(EveryKey, PrintsNoTextCutOrWiderThanItsBox) {
  int keys = 0;
  for (const CatalogueEntry& entry : Catalogue()) {
    if (FindKeyFactory(Designers(), entry) == nullptr) continue;
    ++keys;
    SCOPED_TRACE(entry.key);
    DesignerPtr designer = Open(entry.key, {});
    MisfitSink sink;
    engine::RunReport(*designer, sink);
    designer->TLReport()->SetArReport(nullptr);
    designer->SetTLReport(nullptr);
    EXPECT_GT(sink.pages, 0);
    EXPECT_TRUE(sink.misfits.empty()) << Join(sink.misfits, "\n");
  }
  EXPECT_GT(keys, 20);
}

}  // namespace
}  // namespace trellin::reports::testing
