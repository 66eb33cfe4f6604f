#pragma once
// The company's financial years and the current date of each ledger.

#include <memory>
#include <optional>
#include <vector>

#include "core/host/Application.h"
#include "core/host/Database.h"

namespace trellin::business {

// The query that reads the years; each row gives id, name, first day and last day.
inline constexpr std::string_view kFinancialYearsSQL =
    "SELECT FinancialYearId,Name,DateStart,DateEnd FROM FinancialYear ORDER BY DateStart";

// Years are read from the table FinancialYear and the current dates from the company settings
// (Periods/CurrentDateAP, CurrentDateAR, CurrentDateGL) when the calendar is made; a ledger with
// no current date set uses today's date. Throws DatabaseError when the years cannot be read, and
// std::runtime_error for a year whose dates are missing or run backwards, or a current date
// setting that is not a date.
class CompanyFinancialCalendar : public FinancialCalendar {
 public:
  explicit CompanyFinancialCalendar(Database& database);
  // A calendar of the years given, with fixed current dates (nullopt: today). Years need not be
  // in order.
  CompanyFinancialCalendar(std::vector<FinancialYear> years, std::optional<Date> current_ap,
                           std::optional<Date> current_ar, std::optional<Date> current_gl);

  [[nodiscard]] Date CurrentDateAP(bool reserved = true) const override;
  [[nodiscard]] Date CurrentDateAR(bool reserved = true) const override;
  [[nodiscard]] Date CurrentDateGL(bool reserved = true) const override;
  // The time of day of `date` does not matter: the last day of a year holds all of it.
  [[nodiscard]] std::int64_t YearIdFromDate(Date date) const override;
  [[nodiscard]] FinancialYear Year(std::int64_t id) const override;
  [[nodiscard]] std::vector<FinancialYear> Years() const override { return years_; }

 private:
  void Check();

  std::vector<FinancialYear> years_;
  std::optional<Date> current_ap_;
  std::optional<Date> current_ar_;
  std::optional<Date> current_gl_;
};

}  // namespace trellin::business
