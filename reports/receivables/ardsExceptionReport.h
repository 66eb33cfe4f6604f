#pragma once
// "OtherPartyExceptions" ("Exception Report"): the customers and suppliers that need looking at,
// a row for each party and each thing found: codes that are not on file, a balance over the
// credit limit, credit stopped, a balance the wrong way round, an inactive party with a balance,
// no postal address, no way to reach the party, a bad or adverse credit status. A column list on
// the list base; each check is a box ("Check" and its name), all ticked at first. Balances are
// those processed up to `DateAsAt`. Grouped by exception, employee or location, with a count of
// findings under each group and the report.

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "core/ListDesigner.h"
#include "platform/runtime/Date.h"

namespace trellin {

// The text of a finding's Detail from what the check found: `check` its name ("Codes"), `side`
// "Customer" or "Supplier", `what` the code's kind ("Customer category"), `code` the code or the
// status's name, `amount` the credit limit. "Customer category RETIRED not on file".
[[nodiscard]] std::string ExceptionDetail(std::string_view check, std::string_view side,
                                          std::string_view what, std::string_view code,
                                          const std::string& amount);

// "1 finding", "3 findings".
[[nodiscard]] std::string FindingsText(long count);

class ardsExceptionReport : public ListDesigner {
 public:
  ardsExceptionReport();

  // `DateAsAt` (at first today, "NOW"), then the list's parameters.
  void RefreshParameters(std::string& ReportName) override;
  // Balance is not added up: a party found twice would count twice.
  void RefreshDataColumns() override;
  // Starts the list, adds the date to the run's description and counts each group's findings.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  // Writes each group's count of findings into its footer, and the run's under the report.
  void OnFormat(Section& section) override;

 protected:
  // The key's row with the findings' query for the run's `DateAsAt`.
  [[nodiscard]] const ListKey& Key() const override;

 private:
  // `DateAsAt`; throws std::invalid_argument when there is none.
  [[nodiscard]] Date AsAt() const;
  // The values of the group fields from `level` outwards, of the row the fields hold.
  [[nodiscard]] std::string GroupKeyOf(int level) const;

  mutable std::string findings_sql_;
  mutable ListKey key_;
  std::vector<std::string> group_fields_;            // innermost first
  std::map<std::string, long, std::less<>> counts_;  // by level and key
  long total_ = 0;
};

[[nodiscard]] DesignerPtr CreateardsExceptionReport();

}  // namespace trellin
