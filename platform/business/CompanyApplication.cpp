#include "platform/business/CompanyApplication.h"

#include <stdexcept>

#include "platform/business/CompanySettings.h"

namespace trellin::business {

namespace {

CompanyDetails ReadDetails(Database& database) {
  CompanyDetails details;
  details.Name = ReadText(database, Setting::CompanyName);
  details.DateFormat = ReadText(database, Setting::DateFormat);
  details.LongDateFormat = ReadText(database, Setting::LongDateFormat);
  return details;
}

Database& Checked(const std::shared_ptr<Database>& database) {
  if (!database) {
    throw std::invalid_argument("The application object needs a company database.");
  }
  return *database;
}

}  // namespace

CompanyApplication::CompanyApplication(const std::shared_ptr<Database>& database)
    : CompanyApplication(CompanyFinancialCalendar(Checked(database)), ReadOptionValues(*database),
                         CompanyTax(ReadTaxValues(*database), database), ReadDetails(*database)) {}

CompanyApplication::CompanyApplication(CompanyFinancialCalendar calendar, OptionValues options,
                                       CompanyTax tax, CompanyDetails details)
    : calendar_(std::move(calendar)),
      options_(std::move(options)),
      tax_(std::move(tax)),
      details_(std::move(details)) {}

void CompanyApplication::AddUserDefinedParametersAsset(Parameters& parameters, bool primary,
                                                       const Variant& value) {
  AddUserDefinedParameters(UserDefinedKind::Asset, parameters, primary, value);
}

void CompanyApplication::AddUserDefinedParametersItem(Parameters& parameters, bool primary,
                                                      const Variant& value) {
  AddUserDefinedParameters(UserDefinedKind::Item, parameters, primary, value);
}

void CompanyApplication::AddUserDefinedParametersOtherParty(Parameters& parameters, bool primary,
                                                            const Variant& value) {
  AddUserDefinedParameters(UserDefinedKind::OtherParty, parameters, primary, value);
}

void CompanyApplication::AddUserDefinedParametersTransactions(Parameters& parameters, bool primary,
                                                              const Variant& value) {
  AddUserDefinedParameters(UserDefinedKind::Transactions, parameters, primary, value);
}

void CompanyApplication::AddUserDefinedParametersJob(Parameters& parameters, bool primary,
                                                     const Variant& value) {
  AddUserDefinedParameters(UserDefinedKind::Job, parameters, primary, value);
}

}  // namespace trellin::business
