#pragma once
// "AccountReportsNew": a newer form of the account statement that builds its rows first and lets
// the engine's own group sections print them. A pass over the chart labels each account with the
// headings, group, total and clear rows it stands under; the rows are the busy posting accounts
// with their total movement, and twelve month columns stand beside them, captioned back from
// today. Only the row mechanics exist: the month columns have no figures.

#include <memory>
#include <string>

#include "core/Designer.h"
#include "core/host/Recordset.h"

namespace trellin {

class arglAccountReportsNew : public Designer {
 public:
  arglAccountReportsNew() : Designer("arglAccountReportsNew") {}

  void RefreshParameters(std::string& ReportName) override;

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void ActiveReport_ReportEnd() override;

  // The row query: posting accounts above level 5 with more than ten ledger lines, and their
  // total; `accounts` is a condition on AccountId, "" for every account.
  [[nodiscard]] static std::string RowsSQL(const std::string& accounts);

 private:
  void CreateColumns();
  void BuildRows();

  std::shared_ptr<Recordset> rows_;
};

[[nodiscard]] DesignerPtr CreatearglAccountReportsNew();

}  // namespace trellin
