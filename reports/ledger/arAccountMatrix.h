#pragma once
// "AccountMatrix": a row per posting account and a column per branch (or department), made when
// the run starts, with "(none)" for lines of no branch and a Total: each account's movement in
// the dates or its balance at the last date. A column list on the list base.

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "core/ListDesigner.h"
#include "platform/runtime/Currency.h"

namespace trellin {

class arAccountMatrix : public ListDesigner {
 public:
  arAccountMatrix();

  // The code and description columns, then one money column per code across, "(none)" and Total.
  void RefreshDataColumns() override;
  // Reads every account's figure per code across with one grouped query, then starts.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;

 protected:
  // Without IncludeZero, only the accounts with a figure other than zero in some column.
  std::string ExtraCondition() override;

 private:
  // The field of the column for `code`; "" is the "(none)" column.
  [[nodiscard]] std::string FieldFor(const std::string& code) const;
  // Which field, "BranchId" or "DeptId", the columns split by.
  [[nodiscard]] std::string AcrossField() const;
  // The lines the figures sum: the dates, or everything to the last date for balances.
  [[nodiscard]] std::string FigureWhere() const;

  std::vector<std::string> codes_;                                   // the codes across, in order
  std::map<std::pair<std::string, std::string>, Currency> figures_;  // (account, code) upper-cased
  int divisor_ = 1;                                                  // 1000 for "Thousands"
};

[[nodiscard]] DesignerPtr CreatearAccountMatrix();

}  // namespace trellin
