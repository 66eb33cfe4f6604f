// The post code list's bookmarks on a company that keeps states: a branch a country, a leaf a
// state. The demo company is copied and given states of its own for this.

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <unistd.h>

#include <filesystem>

#include "platform/host/run/RunReport.h"
#include "platform/runtime/Strings.h"
#include "tests/reports/ReportFixture.h"

namespace trellin::reports::testing {
namespace {

namespace fs = std::filesystem;

void Execute(const std::string& path, const std::string& sql) {
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(path.c_str(), &db), SQLITE_OK);
  char* message = nullptr;
  int rc = sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &message);
  std::string error = message != nullptr ? message : "";
  sqlite3_free(message);
  sqlite3_close(db);
  ASSERT_EQ(rc, SQLITE_OK) << error;
}

std::vector<std::string> Bookmarks(const std::vector<std::string>& pages) {
  std::vector<std::string> marks;
  for (const std::string& page : pages) {
    for (const std::string& line : Split(page, "\n")) {
      if (line.rfind("bookmark ", 0) == 0) marks.push_back(line.substr(0, line.find(" @")));
    }
  }
  return marks;
}

TEST(PostcodeBookmarks, OneBranchACountryOneLeafAState) {
  const fs::path folder =
      fs::temp_directory_path() / ("trellin-postcodes-" + std::to_string(getpid()));
  fs::create_directories(folder);
  const std::string path = (folder / "states.db").string();
  fs::copy_file(DemoCompanyPath(), path, fs::copy_options::overwrite_existing);
  Execute(path,
          "INSERT INTO PostCodes (City, State, Country, Postcode) VALUES "
          "('Sydney','NSW','AU','2000'),('Newcastle','NSW','AU','2300'),"
          "('Melbourne','VIC','AU','3000'),('Geelong','VIC','AU','3220')");
  {
    std::unique_ptr<host::ReportService> service = host::ReportService::Open(path);
    DesignerPtr designer = host::OpenReport(*service, "PostCodeList");
    const std::vector<std::string> pages = DumpPages(designer);
    const std::vector<std::string> expected = {"bookmark \"AU\\NSW\"", "bookmark \"AU\\VIC\"",
                                               "bookmark \"NZ\""};
    EXPECT_EQ(Bookmarks(pages), expected);

    // The states filter narrows the query and the bookmarks with it.
    designer = host::OpenReport(*service, "PostCodeList");
    designer->TLReport()->Parameters().SetValue("States", Variant(std::string("VIC")));
    const std::vector<std::string> filtered = {"bookmark \"AU\\VIC\""};
    EXPECT_EQ(Bookmarks(DumpPages(designer)), filtered);
  }
  fs::remove_all(folder);
}

}  // namespace
}  // namespace trellin::reports::testing
