#pragma once
// "AccountDetails": an account's card, a row each in code or description order: code,
// description, kind, class, level, side and ratio; its balance at DateAsAt, its movement in the
// financial year to DateAsAt and in the whole year before, and this year's budget; under it what
// links to it (the link table, the banks, the company's account settings) and its user-defined
// fields. Every figure and link comes from a query run once. A fixed layout on the list base's
// parameters and query.

#include <map>
#include <string>

#include "core/ListDesigner.h"
#include "platform/runtime/Currency.h"

namespace trellin {

class arAccountDetail : public ListDesigner {
 public:
  arAccountDetail();

  // The list's parameters, then DateAsAt.
  void RefreshParameters(std::string& ReportName) override;
  // Reads the figures of every account and what links to each.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;

 private:
  // Each figure by account, upper-cased.
  std::map<std::string, Currency> balances_;
  std::map<std::string, Currency> this_year_;
  std::map<std::string, Currency> last_year_;
  std::map<std::string, Currency> budgets_;
  std::map<std::string, std::string> links_;
};

[[nodiscard]] DesignerPtr CreatearAccountDetail();

}  // namespace trellin
