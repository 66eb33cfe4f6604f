#pragma once
// The deferred tax schedule ("AssetDeferredTaxSchedule"): a line for each asset whose normal and
// tax books differ over its life, as at a date: cost, depreciation and book value on each book,
// and the timing difference between the two book values. The figures are the business layer's
// AssetTaxValues; the schedule adds and subtracts them, nothing more.

#include <memory>
#include <string>

#include "platform/runtime/Variant.h"
#include "reports/assets/arfaScheduleBase.h"

namespace trellin {

class arfaDeferredTaxSchedule : public arfaScheduleBase {
 public:
  arfaDeferredTaxSchedule() : arfaScheduleBase("arfaDeferredTaxSchedule") {}

  void RefreshParameters(std::string& ReportName) override;
  void RefreshDataColumns() override;

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void ActiveReport_ReportEnd() override;

  // The query routine: reads the parameters, builds the query and the run's description and
  // defines the groups. Throws as arfaScheduleBase::AddFamilyFilters and DefineGroupings do.
  void BuildSQL();
  [[nodiscard]] const std::string& SQL() const { return sql_; }
  [[nodiscard]] const std::string& Description() const { return description_; }

 private:
  bool include_components_ = false;
  bool summary_ = false;
  Date as_at_;
  std::string sql_;
  std::string description_;
  std::unique_ptr<AssetTaxValues> tax_values_;
};

[[nodiscard]] DesignerPtr CreatearfaDeferredTaxSchedule();

}  // namespace trellin
