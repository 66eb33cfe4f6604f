#pragma once
// The depreciation schedule ("AssetDepreciationSchedule"), the fixed asset register of a period:
// a line an asset from its opening book value, through the movements of the period by kind, to
// its closing book value, every figure a sum of its movements on the normal or the tax basis.
// The thirteen ScheduleFormat flags show the movement columns; what is not shown is gathered into
// Other, so a line still adds across.

#include <string>

#include "platform/runtime/Variant.h"
#include "reports/assets/arfaScheduleBase.h"

namespace trellin {

class arfaDepreciationSchedule : public arfaScheduleBase {
 public:
  arfaDepreciationSchedule() : arfaScheduleBase("arfaDepreciationSchedule") {}

  void RefreshParameters(std::string& ReportName) override;
  void RefreshDataColumns() override;

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;

  // The query routine: reads the parameters, builds the query and the run's description, defines
  // the groups and shows the columns the flags ask for. Throws std::invalid_argument for a
  // grouping the report does not know, and what the range builder throws for a list it cannot
  // read.
  void BuildSQL();
  [[nodiscard]] const std::string& SQL() const { return sql_; }
  [[nodiscard]] const std::string& Description() const { return description_; }

 private:
  int rounding_ = 2;  // decimals shown: 2 "Normal", 0 "Whole", -3 "Thousands"
  bool include_components_ = false;
  bool use_tax_basis_ = false;
  bool summary_ = false;
  Variant date_from_, date_to_;
  Date year_start_;
  std::string sql_;
  std::string description_;
};

[[nodiscard]] DesignerPtr CreatearfaDepreciationSchedule();

}  // namespace trellin
