#pragma once
// "ChartofAccounts": the chart in code order, each row indented by its level with headings in
// bold: code, description, kind, class and side; with ShowBalances each posting account's debit
// or credit balance at DateAsAt, totalled so that the debits equal the credits. A fixed layout on
// the list base's parameters and query.

#include <map>
#include <string>

#include "core/ListDesigner.h"
#include "platform/runtime/Currency.h"

namespace trellin {

class arChartofAccounts : public ListDesigner {
 public:
  arChartofAccounts();

  // The list's parameters, then DateAsAt.
  void RefreshParameters(std::string& ReportName) override;
  // Reads every account's balance at DateAsAt with one grouped query when balances are shown.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  // Names the row's kind and class, and gives a posting account its balance.
  void ActiveReport_FetchData(bool& eof) override;

 protected:
  void Detail_Format() override;

 private:
  std::map<std::string, Currency> balances_;  // by account, upper-cased
  bool show_balances_ = false;
  float description_left_ = -1;  // the layout's place of the description, before any indent
  float description_width_ = 0;
};

[[nodiscard]] DesignerPtr CreatearChartofAccounts();

}  // namespace trellin
