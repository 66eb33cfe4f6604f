#include "platform/business/CompanyFinancialCalendar.h"

#include <algorithm>
#include <stdexcept>

#include "platform/business/CompanySettings.h"
#include "platform/runtime/Clock.h"

namespace trellin::business {

namespace {

FinancialYear ReadYear(const Recordset& rs) {
  const Variant& id = rs.Value(0);
  const Variant& start = rs.Value(2);
  const Variant& end = rs.Value(3);
  if (id.IsNull() || start.IsNull() || end.IsNull()) {
    throw std::runtime_error("A financial year \"" + rs.Value(1).Text() +
                             "\" has no id or misses its first or last day.");
  }
  FinancialYear year;
  year.Id = id.ToLong();
  year.Name = rs.Value(1).Text();
  year.DateStart = start.ToDate().DateOnly();
  year.DateEnd = end.ToDate().DateOnly();
  return year;
}

std::vector<FinancialYear> ReadYears(Database& database) {
  std::vector<FinancialYear> years;
  std::shared_ptr<Recordset> rs = database.Query(kFinancialYearsSQL);
  for (; !rs->Eof(); rs->MoveNext()) {
    years.push_back(ReadYear(*rs));
  }
  return years;
}

}  // namespace

CompanyFinancialCalendar::CompanyFinancialCalendar(Database& database)
    : years_(ReadYears(database)),
      current_ap_(ReadDate(database, Setting::CurrentDateAP)),
      current_ar_(ReadDate(database, Setting::CurrentDateAR)),
      current_gl_(ReadDate(database, Setting::CurrentDateGL)) {
  Check();
}

CompanyFinancialCalendar::CompanyFinancialCalendar(std::vector<FinancialYear> years,
                                                   std::optional<Date> current_ap,
                                                   std::optional<Date> current_ar,
                                                   std::optional<Date> current_gl)
    : years_(std::move(years)),
      current_ap_(current_ap),
      current_ar_(current_ar),
      current_gl_(current_gl) {
  Check();
}

void CompanyFinancialCalendar::Check() {
  std::sort(years_.begin(), years_.end(), [](const FinancialYear& a, const FinancialYear& b) {
    return a.DateStart < b.DateStart;
  });
  for (const FinancialYear& year : years_) {
    if (year.DateEnd < year.DateStart) {
      throw std::runtime_error("The financial year \"" + year.Name + "\" (id " +
                               std::to_string(year.Id) + ") ends before it starts.");
    }
  }
}

// A ledger without a current date of its own works on today, as the accounts application does
// for a company that has not closed a period yet.
Date CompanyFinancialCalendar::CurrentDateAP(bool) const { return current_ap_.value_or(Today()); }
Date CompanyFinancialCalendar::CurrentDateAR(bool) const { return current_ar_.value_or(Today()); }
Date CompanyFinancialCalendar::CurrentDateGL(bool) const { return current_gl_.value_or(Today()); }

std::int64_t CompanyFinancialCalendar::YearIdFromDate(Date date) const {
  Date day = date.DateOnly();
  for (const FinancialYear& year : years_) {
    if (year.DateStart <= day && day <= year.DateEnd) return year.Id;
  }
  return 0;
}

FinancialYear CompanyFinancialCalendar::Year(std::int64_t id) const {
  for (const FinancialYear& year : years_) {
    if (year.Id == id) return year;
  }
  throw NoSuchYear("The company has no financial year with id " + std::to_string(id) + ".");
}

}  // namespace trellin::business
