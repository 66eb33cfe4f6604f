#pragma once
// The depreciation calculation ("AssetDepreciationCalculation"): a depreciation run the
// application has worked out, a line an asset with its cost, accumulated depreciation, book
// value, method, base and this run's depreciation, on one line where the bases agree and on two
// ("Normal" over "Tax") where they do not; with FullDetails, the asset's portions beneath it
// (arfaDepreciationCalculationSub on srptDetails). It reads no SQL for its rows and asks no
// parameters: the application sets the members below; without one, the run's settings stand in
// for them (core/host/ApplicationSettings.h).

#include <memory>
#include <string>

#include "core/Designer.h"
#include "core/host/ApplicationSettings.h"
#include "core/host/AssetDepreciation.h"
#include "reports/assets/arfaDepreciationCalculationSub.h"

namespace trellin {

class arfaDepreciationCalculation : public Designer, public ApplicationSettings {
 public:
  arfaDepreciationCalculation() : Designer("arfaDepreciationCalculation") {}

  // Set by the application after Report and before the run. The report drops the run at its end.
  std::shared_ptr<DepreciationRun> Run;
  bool FullDetails = false;
  bool SelectedOnly = false;
  std::string Reference;
  std::string glSource;
  std::string GroupBy;  // "Category", "Type", anything else no grouping
  bool ShadeFirstRow = false;

  // DateDated, Selected, SelectedOnly, FullDetails, GroupBy, Reference, glSource, ShadeFirstRow.
  void DeclareSettings(Parameters& settings) override;
  // Plays the application: works the run out to DateDated through the business layer, ticks the
  // assets the Selected list names (all when it is empty) and sets the members. Throws
  // std::invalid_argument for a DateDated that is no date, and what the range builder throws for
  // a list it cannot read.
  void ApplySettings(const Parameters& settings);

  void RefreshDataColumns() override;
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void OnBeforePrint(Section& section) override;
  void ActiveReport_ReportEnd() override;

 private:
  void SetupGroups();
  // The totals of a group footer or the report footer, on one line or two as their sums ask.
  void FooterText(Section& section);

  bool settings_declared_ = false;
  std::int64_t index_ = 0;
  std::shared_ptr<arfaDepreciationCalculationSub> sub_;
};

[[nodiscard]] DesignerPtr CreatearfaDepreciationCalculation();

}  // namespace trellin
