#pragma once
// The purchase summary ("AssetPurchaseSummary"): the assets with a purchase or an addition (types
// 10 and 11) in a period, each with the sum of those movements and, beneath it, the movements
// themselves (arfaPurchaseSummarySub). The disposal summary (arfaDisposalSummary.h) is the same
// report over the disposal types, with its own columns, bounds and status filter.

#include <memory>
#include <string>

#include "platform/runtime/Variant.h"
#include "reports/assets/arfaPurchaseSummarySub.h"
#include "reports/assets/arfaScheduleBase.h"

namespace trellin {

class arfaPurchaseSummary : public arfaScheduleBase {
 public:
  arfaPurchaseSummary() : arfaPurchaseSummary("arfaPurchaseSummary", false) {}

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
  // The movements summed, as they stand in the query: "10,11", or "30,31,40,41,42,43,44".
  [[nodiscard]] const char* Types() const;

 protected:
  arfaPurchaseSummary(const char* name, bool disposals)
      : arfaScheduleBase(name), disposals_(disposals) {}

 private:
  void Detail_Format() override;
  [[nodiscard]] std::string PeriodDescription() const;

  const bool disposals_;
  bool summary_ = false;
  bool use_tax_basis_ = false;
  Variant date_from_;
  Variant date_to_;
  std::string sql_;
  std::string description_;
  std::shared_ptr<arfaPurchaseSummarySub> sub_;
};

[[nodiscard]] DesignerPtr CreatearfaPurchaseSummary();

}  // namespace trellin
