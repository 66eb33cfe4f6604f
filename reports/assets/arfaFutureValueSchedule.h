#pragma once
// The future value schedule ("AssetFutureValueSchedule"): each asset projected forward by the
// depreciation calculator, one column for each month, quarter or year from DateStart, showing its
// book value, the period's depreciation or the accumulated depreciation. A new calculator works
// each asset out to the last period; the columns are what it gives for each period.

#include <string>
#include <vector>

#include "platform/runtime/Variant.h"
#include "reports/assets/arfaScheduleBase.h"

namespace trellin {

class arfaFutureValueSchedule : public arfaScheduleBase {
 public:
  // The most columns the report's fields hold: COL1 to COL12.
  static constexpr int kMostColumns = 12;

  arfaFutureValueSchedule() : arfaScheduleBase("arfaFutureValueSchedule") {}

  void RefreshParameters(std::string& ReportName) override;
  // The columns of the period table, which it builds from the parameters when it has none.
  void RefreshDataColumns() override;

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;

  // The period table: entry 0 the last day before the month of `date_start`, entry i the last day
  // of column i; `period` "Quarters" steps three months, "Years" twelve, anything else one.
  [[nodiscard]] static std::vector<Date> PeriodTable(Date date_start, const std::string& period,
                                                     int columns);
  // Adds years of twelve months after the last of `years` (by end date), in memory only, until
  // one ends on or after `last`; each is named by its end date's year. Returns how many it added;
  // none when `years` is empty.
  static int ExtendYears(std::vector<FinancialYear>& years, Date last);

  // The query routine: reads the parameters, builds the period table, the years, the query and
  // the run's description, and defines the groups. Throws std::invalid_argument for a
  // NumberOfColumns outside 0 to 12, and as arfaScheduleBase's filters and groupings do.
  void BuildSQL();
  [[nodiscard]] const std::string& SQL() const { return sql_; }
  [[nodiscard]] const std::string& Description() const { return description_; }
  [[nodiscard]] const std::vector<Date>& Periods() const { return periods_; }

 private:
  void ReadPeriods();

  int columns_ = 6;
  std::string period_;
  std::string report_on_;
  bool include_components_ = false;
  bool include_totals_ = false;
  bool use_tax_basis_ = false;
  bool summary_ = false;
  Date date_start_;
  std::vector<Date> periods_;
  std::vector<FinancialYear> years_;
  Variant current_year_end_;  // the end of the year holding today, when there is one
  std::string sql_;
  std::string description_;
};

[[nodiscard]] DesignerPtr CreatearfaFutureValueSchedule();

}  // namespace trellin
