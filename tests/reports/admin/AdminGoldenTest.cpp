// The master lists end to end on the demo company: every key, every order, with and without
// filters, as page dumps compared with golden files read against what each list must print
// (golden_runs.tsv), and a list with no rows.

#include <gtest/gtest.h>

#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "platform/host/run/RunReport.h"
#include "platform/runtime/Strings.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

class AdminGolden : public DemoReports {};

TEST_F(AdminGolden, PageDumps) {
  ExpectGoldenRuns(Service(), "admin", "reports/admin/golden_runs.tsv");
}

TEST_F(AdminGolden, AListWithNoRowsPrintsItsHeadingsOnly) {
  const struct {
    const char* key;
    const char* filter;
  } cases[] = {{"BankList", "Banks=ZZZ"},
               {"DepartmentList", "Departments=ZZZ"},
               {"PostCodeList", "Countries=ZZ"},
               {"EmployeeList", "Employees=ZZZ"}};
  for (const auto& c : cases) {
    std::vector<std::string> pages = RunPages(Open(c.key, {c.filter}));
    ASSERT_EQ(pages.size(), 1u) << c.key << "\n" << Join(pages, "\n");
    EXPECT_EQ(pages[0].find("row Detail"), std::string::npos) << c.key;
    EXPECT_EQ(pages[0].find("rect "), std::string::npos) << c.key << ": a shaded empty row";
    EXPECT_NE(pages[0].find("Page 1"), std::string::npos) << c.key;
  }
}

TEST_F(AdminGolden, PostcodeStatesAreBookmarksUnderTheirCountry) {
  std::vector<std::string> pages = RunPages(Open("PostCodeList", {}));
  ASSERT_FALSE(pages.empty());
  // The demo company keeps its post codes without states: each country is a branch alone.
  EXPECT_NE(pages.front().find("bookmark \"NZ\""), std::string::npos) << pages.front();
  EXPECT_EQ(pages.front().find("bookmark \"NZ\\"), std::string::npos) << pages.front();
}

// With TRELLIN_KEEP_OUTPUT naming a folder the files stay there, PNG pages beside them, for a
// reader to look at.
TEST_F(AdminGolden, RendersToPdfAndXlsx) {
  const char* keep = std::getenv("TRELLIN_KEEP_OUTPUT");
  const std::filesystem::path folder = keep != nullptr
                                           ? std::filesystem::path(keep)
                                           : std::filesystem::temp_directory_path() /
                                                 ("trellin-admin-out-" + std::to_string(getpid()));
  std::filesystem::create_directories(folder);
  std::vector<const char*> extensions = {".pdf", ".xlsx"};
  if (keep != nullptr) extensions.push_back(".png");
  const char* keys[] = {
      "AssetCategoryList",    "AssetSiteList", "AssetTypeList",   "BankList",       "BranchList",
      "CustomerCategoryList", "EmployeeList",  "JobCategoryList", "DepartmentList", "PostCodeList"};
  for (const char* key : keys) {
    for (const char* extension : extensions) {
      SCOPED_TRACE(std::string(key) + extension);
      host::RunRequest request;
      request.key = key;
      request.output = folder / (std::string(key) + extension);
      host::RunResult result = host::RunReportToFile(Service(), request);
      EXPECT_TRUE(result.completed);
      EXPECT_TRUE(result.errors.empty()) << result.errors.front().message;
      EXPECT_GE(result.pages, 1);
      EXPECT_GT(result.rows, 0);
      ASSERT_FALSE(result.outputs.empty());
      ASSERT_TRUE(std::filesystem::exists(result.outputs.front()));
      EXPECT_GT(std::filesystem::file_size(result.outputs.front()), 500u);
    }
  }
  if (keep == nullptr) std::filesystem::remove_all(folder);
}

}  // namespace
}  // namespace trellin::reports::testing
