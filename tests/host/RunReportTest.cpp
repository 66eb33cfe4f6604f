// The run driver end to end: a PDF with the right page count, values from JSON and NAME=VALUE,
// and every failure leaving no file behind.

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <sstream>

#include "platform/host/ParameterDialogue.h"
#include "platform/host/run/RunReport.h"
#include "tests/host/HostFixture.h"
#include "tests/support/TempFolder.h"

namespace trellin::host::testing {
namespace {

class RunReportTest : public HostTest {
 protected:
  RunRequest Request(const std::string& key, std::vector<std::string> assignments,
                     const std::string& file) {
    RunRequest request;
    request.key = key;
    request.assignments = std::move(assignments);
    request.output = folder_ / file;
    return request;
  }
};

// The page count pdfinfo reads from the file, -1 when it cannot.
int PdfPages(const std::filesystem::path& pdf) {
  std::string command = "pdfinfo '" + pdf.string() + "' 2>/dev/null";
  FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return -1;
  char line[512];
  int pages = -1;
  while (fgets(line, sizeof line, pipe) != nullptr) {
    std::sscanf(line, "Pages: %d", &pages);
  }
  pclose(pipe);
  return pages;
}

using trellin::testing::ReadFile;

TEST_F(RunReportTest, PdfHasOnePagePerPageBreakGroup) {
  RunRequest request = Request("CustomersByType", {"Groupings=Type [Page Break]"}, "types.pdf");
  RunResult result = RunReportToFile(*service_, request);
  EXPECT_TRUE(result.completed);
  EXPECT_EQ(result.pages, 3);
  EXPECT_EQ(result.rows, 4);
  EXPECT_EQ(result.subreport_rows, 0);
  EXPECT_TRUE(result.errors.empty());
  ASSERT_EQ(result.outputs, std::vector<std::filesystem::path>{request.output});
  EXPECT_EQ(PdfPages(request.output), 3);
}

TEST_F(RunReportTest, RowsCountTheMainReportAndSubreportRowsTheRest) {
  // Two types, RETAIL with C1 and C2 and TRADE with C3, each type's customers in a sub-report.
  RunRequest request = Request("CustomerTypes", {}, "types.txt");
  RunResult result = RunReportToFile(*service_, request);
  ASSERT_TRUE(result.completed);
  EXPECT_EQ(result.rows, 2);
  EXPECT_EQ(result.subreport_rows, 3);
  std::string text = ReadFile(request.output);
  EXPECT_NE(text.find("C3"), std::string::npos) << text;
}

TEST_F(RunReportTest, PngListsExactlyTheFilesItWrites) {
  // The target as given, whether the format was named, and the page files expected.
  struct Case {
    const char* target;
    bool format_named;
    std::vector<std::string> files;
  };
  const Case cases[] = {
      {"types.png", false, {"types-1.png", "types-2.png", "types-3.png"}},
      {"types", true, {"types-1.png", "types-2.png", "types-3.png"}},
      {"types.v2.png", false, {"types.v2-1.png", "types.v2-2.png", "types.v2-3.png"}},
  };
  int n = 0;
  for (const Case& c : cases) {
    SCOPED_TRACE(c.target);
    // A folder of its own, so what is in it afterwards is what this run wrote.
    std::filesystem::path folder = folder_ / ("png" + std::to_string(++n));
    std::filesystem::create_directories(folder);
    RunRequest request = Request("CustomersByType", {"Groupings=Type [Page Break]"}, "");
    request.output = folder / c.target;
    if (c.format_named) request.format = render::Format::Png;
    RunResult result = RunReportToFile(*service_, request);
    ASSERT_TRUE(result.completed);
    std::vector<std::filesystem::path> expected;
    for (const std::string& file : c.files) expected.push_back(folder / file);
    EXPECT_EQ(result.outputs, expected);
    std::vector<std::filesystem::path> written;
    for (const auto& entry : std::filesystem::directory_iterator(folder))
      written.push_back(entry.path());
    std::sort(written.begin(), written.end());
    EXPECT_EQ(written, expected);
  }
}

TEST_F(RunReportTest, AssignmentsWinOverJson) {
  RunRequest request = Request("CustomersByType", {"Groupings=Type"}, "types.txt");
  request.parameters_json = R"({"Groupings": "Category", "Summary": true})";
  RunResult result = RunReportToFile(*service_, request);
  ASSERT_TRUE(result.completed);
  EXPECT_EQ(result.rows, 0) << "summary mode prints no detail";
  std::string text = ReadFile(request.output);
  EXPECT_NE(text.find("Total RETAIL  Retail customers"), std::string::npos) << text;
  EXPECT_EQ(text.find("Category A"), std::string::npos) << text;
}

TEST_F(RunReportTest, CancelledRunReportsItsErrorAndWritesNothing) {
  RunRequest request = Request("CustomersByType", {"Fail=ReportStart"}, "cancelled.pdf");
  RunResult result = RunReportToFile(*service_, request);
  EXPECT_FALSE(result.completed);
  EXPECT_EQ(result.pages, 0);
  ASSERT_EQ(result.errors.size(), 1u);
  EXPECT_EQ(result.errors[0].source, "ActiveReport_ReportStart");
  EXPECT_TRUE(result.outputs.empty());
  EXPECT_FALSE(std::filesystem::exists(request.output));
}

TEST_F(RunReportTest, BadRequestsAreRefusedWithTheirReasonAndNoFile) {
  struct Case {
    const char* key;
    std::vector<std::string> assignments;
    const char* file;
    const char* message;  // a part of the error's text
  };
  const Case cases[] = {
      {"Customers",
       {},
       "a.pdf",
       "There is no report named \"Customers\". Did you mean CustomersByType?"},
      {"NotBuilt", {}, "b.pdf", "The report \"NotBuilt\" (arNotBuilt) is not available"},
      {"CustomersByType", {"Summary=maybe"}, "c.pdf", "Summary"},
      {"CustomersByType", {"DateAsAt=31/02/2025"}, "d.pdf", "Date As At"},
      {"CustomersByType", {"Nothing=1"}, "e.pdf", "Nothing"},
      {"CustomersByType", {}, "f.doc", "does not say its format"},
  };
  for (const Case& c : cases) {
    RunRequest request = Request(c.key, c.assignments, c.file);
    try {
      (void)RunReportToFile(*service_, request);
      ADD_FAILURE() << "accepted: " << c.key << " " << c.file;
    } catch (const Error& e) {
      EXPECT_EQ(e.Kind(), ErrorKind::Input) << c.message;
      EXPECT_NE(std::string(e.what()).find(c.message), std::string::npos)
          << "expected \"" << c.message << "\" in: " << e.what();
    }
    EXPECT_FALSE(std::filesystem::exists(request.output)) << c.file;
    // The check alone says the same of the key and the values, and does not look at the output.
    if (std::string(c.file) == "f.doc") {
      EXPECT_NO_THROW(CheckRunValues(*service_, request));
      continue;
    }
    try {
      CheckRunValues(*service_, request);
      ADD_FAILURE() << "the check accepted: " << c.key << " " << c.file;
    } catch (const Error& e) {
      EXPECT_NE(std::string(e.what()).find(c.message), std::string::npos) << e.what();
    }
  }
}

TEST_F(RunReportTest, OneRunWritesEveryFormatAskedFor) {
  RunRequest request = Request("CustomersByType", {"Groupings=Type [Page Break]"}, "types.pdf");
  request.also = {folder_ / "types.csv", folder_ / "types.png", folder_ / "types.txt"};
  RunResult result = RunReportToFile(*service_, request);
  ASSERT_TRUE(result.completed);
  EXPECT_EQ(result.pages, 3);
  const std::vector<std::filesystem::path> expected = {
      folder_ / "types.pdf",   folder_ / "types.csv",   folder_ / "types-1.png",
      folder_ / "types-2.png", folder_ / "types-3.png", folder_ / "types.txt"};
  EXPECT_EQ(result.outputs, expected);
  for (const auto& file : expected) EXPECT_TRUE(std::filesystem::exists(file)) << file;
  EXPECT_EQ(PdfPages(request.output), 3);
  EXPECT_NE(ReadFile(folder_ / "types.csv").find("C3"), std::string::npos);
  EXPECT_NE(ReadFile(folder_ / "types.txt").find("C3"), std::string::npos);
}

TEST(NearReportKeysTest, SuggestsKeysOfTheBuiltInCatalogue) {
  struct Case {
    const char* asked;
    const char* first;  // "" for no suggestion
  };
  const Case cases[] = {
      {"ledgerar", "LedgerAR"},
      {"LedgerXR", "LedgerAR"},
      {"TrialBalanse", "TrialBalance"},
      {"zzzzqqqq", ""},
  };
  for (const Case& c : cases) {
    std::vector<std::string> near = NearReportKeys(Catalogue(), c.asked);
    if (*c.first == '\0') {
      EXPECT_TRUE(near.empty()) << c.asked << " -> " << (near.empty() ? "" : near[0]);
    } else {
      ASSERT_FALSE(near.empty()) << c.asked;
      EXPECT_EQ(near[0], c.first) << c.asked;
    }
  }
}

}  // namespace
}  // namespace trellin::host::testing

namespace trellin::host::testing {
namespace {

// The accounts application's side: a second connection that writes to the company file.
void Write(const std::filesystem::path& company, const std::string& sql) {
  sqlite3* db = nullptr;
  ASSERT_EQ(sqlite3_open(company.c_str(), &db), SQLITE_OK);
  sqlite3_busy_timeout(db, 5000);
  char* error = nullptr;
  EXPECT_EQ(sqlite3_exec(db, sql.c_str(), nullptr, nullptr, &error), SQLITE_OK) << error;
  sqlite3_free(error);
  sqlite3_close(db);
}

TEST_F(RunReportTest, AWholeRunReadsOneSnapshotWhileTheCompanyIsWritten) {
  // Enough types for several pages; each type's customers are read by a query of its own as its
  // row prints, so a write between pages would show in a later row but for the snapshot.
  std::string types = "BEGIN;";
  for (int i = 1; i <= 150; ++i) {
    types += "INSERT INTO CustomerType VALUES ('T" + std::to_string(1000 + i) + "', 'Type');";
  }
  Write(company_, types + "COMMIT;");
  const std::string late =
      "INSERT INTO OtherParty (OtherPartyId, Name, IsCustomer, CustomerTypeId) "
      "VALUES ('LATE1', 'Written meanwhile', 1, 'T1150')";

  RunRequest request = Request("CustomerTypes", {}, "types.txt");
  bool written = false;
  request.on_page = [&](int pages, std::int64_t) {
    if (pages == 1 && !written) {
      Write(company_, late);
      written = true;
    }
  };
  RunResult result = RunReportToFile(*service_, request);
  ASSERT_TRUE(written) << "the report printed on one page only";
  ASSERT_GT(result.pages, 1);
  EXPECT_NE(ReadFile(request.output).find("T1150"), std::string::npos);
  EXPECT_EQ(ReadFile(request.output).find("LATE1"), std::string::npos)
      << "a later row saw a write made after the run began";

  // The write is there for the next run: the snapshot, not chance, kept it out.
  RunRequest again = Request("CustomerTypes", {}, "again.txt");
  (void)RunReportToFile(*service_, again);
  EXPECT_NE(ReadFile(again.output).find("LATE1"), std::string::npos);
}

}  // namespace
}  // namespace trellin::host::testing
