#pragma once
// "ManagementReport": twelve period columns of business indicators (profit, balance sheet,
// ratios and turnovers) computed from the ledger, once for the company or once for each branch,
// department or both, each group's table followed by three charts when asked: the sales by
// account, the profit lines and the assets against the liabilities. Unbound: the rows are made
// at report start from one loading query a group and the control accounts' balances
// (`ManagementFigures.h`).

#include <memory>
#include <string>
#include <vector>

#include "core/Designer.h"
#include "reports/ledger/ManagementFigures.h"

namespace trellin {

class arglManagementReport : public Designer {
 public:
  arglManagementReport() : Designer("arglManagementReport") {}

  void RefreshParameters(std::string& ReportName) override;
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void OnBeforePrint(Section& section) override;
  void OnAfterPrint(Section& section) override;

  struct Group {
    std::string key;      // the group's value for the break: "[No Branch]" for Null
    std::string heading;  // "" when the report is not grouped
    std::string filter;   // " AND glTransaction.BranchId=..." and the like
    ManagementValues values{};
    ManagementScale scale;
  };
  [[nodiscard]] const std::vector<Group>& Groups() const { return groups_; }
  [[nodiscard]] const ManagementPeriods& Periods() const { return periods_; }

  // How many accounts the sales pie shows before the rest make one "Other" slice.
  static constexpr int kPieAccounts = 7;
  // The pie's slices (labels and values), read once for the run: every group shows the
  // company's sales.
  struct Slice {
    std::string label;
    double value = 0;
  };
  [[nodiscard]] const std::vector<Slice>& SalesSlices() const { return slices_; }

 private:
  void ReadGroups(Database& db);
  void ReadSales(Database& db);
  void FillCharts(const Group& group);

  ManagementPeriods periods_{};
  std::vector<Group> groups_;
  std::vector<Slice> slices_;
  bool show_charts_ = false;
  bool use_colour_ = false;
  bool in_footer_ = false;  // the group footer, and with it the charts, is printing
  std::size_t fetch_group_ = 0;
  int fetch_row_ = 0;
  std::size_t footer_group_ = 0;
  int detail_row_ = 0;
  std::size_t detail_group_ = 0;
};

[[nodiscard]] DesignerPtr CreatearglManagementReport();

}  // namespace trellin
