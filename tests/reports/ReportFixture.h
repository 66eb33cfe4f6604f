#pragma once
// The reports run end to end on the scale-1 demo company: a service over the company, a report
// opened by key with values applied, its pages as text dumps, and golden files to compare them
// with.

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/Designer.h"
#include "platform/host/run/ReportService.h"
#include "platform/runtime/Currency.h"

struct sqlite3;

namespace trellin::reports::testing {

// The demo company (built once per test binary and cached beside the temporary files) and a
// service over it, with the clock fixed so that "Printed on" lines stay the same from run to run.
class DemoReports : public ::testing::Test {
 protected:
  static void SetUpTestSuite();
  static void TearDownTestSuite();

  [[nodiscard]] static host::ReportService& Service();

  // The report `key` with "NAME=VALUE" assignments applied and validated; fails the test on
  // parameter errors.
  [[nodiscard]] static DesignerPtr Open(const std::string& key,
                                        const std::vector<std::string>& assignments);
  // Runs an opened report and returns every page's dump, one string a page; the report's
  // errors, when there are any, come back as the last item, starting "errors:".
  [[nodiscard]] static std::vector<std::string> RunPages(const DesignerPtr& designer);
  // Each party's money by `sql` (Jet, through the service's database), which gives a code and
  // one money column; a Null figure leaves its code out.
  [[nodiscard]] static std::map<std::string, Currency> ByParty(const std::string& sql);

 private:
  static std::unique_ptr<host::ReportService> service_;
};

// The report `key` from `service`, with "NAME=VALUE" assignments applied and validated; fails the
// test on parameter errors.
[[nodiscard]] DesignerPtr OpenWithValues(host::ReportService& service, const std::string& key,
                                         const std::vector<std::string>& assignments);

// The path of the cached scale-1 demo company, building it when it is not there yet.
[[nodiscard]] std::string DemoCompanyPath();

// Runs an opened report into page dumps (see DemoReports::RunPages).
[[nodiscard]] std::vector<std::string> DumpPages(const DesignerPtr& designer);

// Compares `actual` with tests/reports/<area>/golden/<name>.txt. With TRELLIN_UPDATE_GOLDEN=1 in
// the environment the file is written instead, and the test notes it.
void ExpectGolden(const std::string& area, const std::string& name, const std::string& actual);

// Runs each row of the case table tests/<table> (golden name, key, then one "NAME=VALUE" a
// field) on `service` and compares its pages, joined by `separator`, with the area's golden file
// of that name, as ExpectGolden; a run that reports errors fails.
void ExpectGoldenRuns(host::ReportService& service, const std::string& area, std::string_view table,
                      const std::string& separator = "\n");

// One printed row of a dump: control name -> (value as dumped, printed text).
using DumpRow = std::map<std::string, std::pair<std::string, std::string>>;
// The rows of one kind ("Detail", "ReportFooter", ...) of a dump, in order.
[[nodiscard]] std::vector<DumpRow> RowsOf(const std::string& dump, const std::string& kind);
// The printed text of every control named `name` (in the "row" lines of a dump), in order.
[[nodiscard]] std::vector<std::string> TextsOf(const std::string& dump, const std::string& name);
// The money a dumped field holds ("1234.5@"); 0 when it did not print or holds no money.
[[nodiscard]] Currency DumpedAmount(const DumpRow& row, const std::string& name);
// The printed lines of a dump (texts only), for searching.
[[nodiscard]] std::vector<std::string> PrintedTexts(const std::string& dump);

// The demo company read with plain SQL, beside the reports: what a report prints is checked
// against what the books hold. A query that does not prepare fails the test.
class BooksSql {
 public:
  BooksSql();
  ~BooksSql();
  BooksSql(const BooksSql&) = delete;
  BooksSql& operator=(const BooksSql&) = delete;
  // Every row, each column as text ("" for Null).
  [[nodiscard]] std::vector<std::vector<std::string>> Rows(const std::string& sql) const;
  // The first column of every row, as text.
  [[nodiscard]] std::vector<std::string> Texts(const std::string& sql) const;
  // Rows of a text key and a number, by key (a Null number as 0).
  [[nodiscard]] std::map<std::string, double> Numbers(const std::string& sql) const;
  // The first column of the first row as a number, 0 without a row or for Null.
  [[nodiscard]] double Number(const std::string& sql) const;
  // The first column of the first row as stored money (ten-thousandths), 0 without a row.
  [[nodiscard]] Currency Money(const std::string& sql) const;
  // The same in cents.
  [[nodiscard]] std::int64_t Cents(const std::string& sql) const { return Money(sql).Raw() / 100; }

 private:
  ::sqlite3* db_ = nullptr;
};

}  // namespace trellin::reports::testing
