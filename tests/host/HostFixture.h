#pragma once
// A small company file, two designers written for the host tests (a grouped customer list and a
// column-driven one), and a sink that keeps the pages.

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "core/Catalogue.h"
#include "core/Designer.h"
#include "platform/engine/PageModel.h"
#include "platform/host/ReportHost.h"
#include "platform/host/run/ReportService.h"

#include "tests/support/TempFolder.h"

namespace trellin::host::testing {

// Keeps every page, for the tests to read.
class KeepingSink : public engine::PageSink {
 public:
  void Begin(const engine::DocumentInfo&) override {}
  void AddPage(const engine::Page& page) override { pages.push_back(page); }
  void End() override { ended = true; }
  // A cancelled run that printed nothing never begins the sink, so it is not told either.
  void Abort() override { pages.clear(); }

  // The printed lines of one page, or of every page when `page` is -1, in drawing order.
  [[nodiscard]] std::vector<std::string> Texts(int page = -1) const;
  // True when some printed line equals `text`.
  [[nodiscard]] bool Printed(const std::string& text, int page = -1) const;

  std::vector<engine::Page> pages;
  bool ended = false;
};

// Customers C1..C4 (types RETAIL, TRADE and none; category A or none) and a supplier S1; the
// company "Harbour Test Co" of the product "Trellin Accounts".
void WriteTestCompany(const std::filesystem::path& path);

// The catalogue of the host tests: "CustomersByType" (arTestCustomers, captioned "Customers By
// Type"), "CustomerColumns" (arTestColumns), "CustomerTypes" (arTestTypes, each type with its
// customers in a sub-report) and "NotBuilt" with no designer.
[[nodiscard]] std::span<const CatalogueEntry> TestCatalogue();
[[nodiscard]] std::span<const DesignerEntry> TestDesigners();

class HostTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // Opens `key`, sets `values` as the user's, runs it into a keeping sink and unties host and
  // designer. The host is kept for its errors.
  KeepingSink Run(const std::string& key, const std::map<std::string, std::string>& values = {});
  // The designer of `key`, tied to its host, with `values` set as the user's; nothing run yet.
  DesignerPtr Prepare(const std::string& key,
                      const std::map<std::string, std::string>& values = {});

  trellin::testing::TempFolder folder_{"trellin-host"};
  std::filesystem::path company_;
  std::unique_ptr<ReportService> service_;
  std::shared_ptr<TLReport> host_;
  std::vector<DesignerPtr> prepared_;
};

}  // namespace trellin::host::testing
