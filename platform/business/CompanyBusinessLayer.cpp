#include "platform/business/CompanyBusinessLayer.h"

#include <stdexcept>

#include "platform/business/CompanyBusinessObjects.h"
#include "platform/business/CompanySettings.h"

namespace trellin::business {

std::shared_ptr<TLReport> FunctionReportFactory::CreateReport() {
  if (!function_) {
    throw std::logic_error(
        "No report factory has been set: the report service cannot make a report host.");
  }
  std::shared_ptr<TLReport> host = function_();
  if (!host) {
    throw std::logic_error("The report factory gave no report host.");
  }
  return host;
}

CompanyBusinessLayer::CompanyBusinessLayer(std::shared_ptr<trellin::Database> database)
    : database_(std::move(database)) {
  if (!database_) {
    throw std::invalid_argument("The business layer needs a company database.");
  }
  // Read once: a report run sees one set of formats from start to end.
  product_name_ = ReadText(*database_, Setting::ProductName);
  date_format_ = ReadText(*database_, Setting::DateFormat);
  long_date_format_ = ReadText(*database_, Setting::LongDateFormat);
  currency_format_ = ReadText(*database_, Setting::CurrencyFormat);
  overdue_from_default_ = ReadWhole(*database_, Setting::OverdueFromDefault);
}

std::unique_ptr<BusinessObjects> CompanyBusinessLayer::CreateObjects() {
  return std::make_unique<CompanyBusinessObjects>(database_);
}

// The argument selects nothing: every money figure uses the company's one money mask.
std::string CompanyBusinessLayer::CurrencyFormat(int) const { return currency_format_; }

}  // namespace trellin::business
