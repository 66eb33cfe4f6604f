#pragma once
// The reference application object: calendar, options, tax, user-defined parameters and the
// application's place holders.

#include <memory>
#include <string>

#include "core/host/Application.h"
#include "core/host/Database.h"
#include "platform/business/CompanyFinancialCalendar.h"
#include "platform/business/CompanyOptions.h"

namespace trellin::business {

// What the application shows of the company besides its options.
struct CompanyDetails {
  std::string Name;
  std::string DateFormat = "d/mm/yyyy";
  std::string LongDateFormat = "d mmmm yyyy";
};

// Each AddUserDefinedParameters... adds, for every named user-defined field of its kind at
// positions 1 to 20, an SQL list parameter named "<Table>.UserDefined<n>"
// (OtherParty.UserDefined3), captioned with the field's name, filtering on the column of the same
// name, with the given value ("" when none is given) and `primary`. Its pick-list is the table the
// field's type points to, or the distinct values the field already holds.
//
// SubstituteString replaces these place holders, without regard to case:
//   <Company>      the company's name
//   <Date>         today's date, in the company's date format
//   <DateAsAt>     the date as at, likewise
//   <LongDateAsAt> the date as at, in the company's long date format
//   <Year>         the name of the financial year holding the date as at ("" when none does)
//   <YearStart>    its first day, <YearEnd> its last day, in the date format ("" when none)
//   <TaxName>      the sales tax's name ("GST")
class CompanyApplication : public Application {
 public:
  // Reads everything from the company file once; throws DatabaseError or std::runtime_error
  // with the setting or table at fault.
  explicit CompanyApplication(const std::shared_ptr<Database>& database);
  CompanyApplication(CompanyFinancialCalendar calendar, OptionValues options, CompanyTax tax,
                     CompanyDetails details);

  [[nodiscard]] const trellin::FinancialCalendar& FinancialCalendar() const override {
    return calendar_;
  }
  [[nodiscard]] const trellin::Options& Options() const override { return options_; }
  [[nodiscard]] const trellin::Tax& Tax() const override { return tax_; }

  void AddUserDefinedParametersAsset(Parameters& parameters, bool primary,
                                     const Variant& value = Variant()) override;
  void AddUserDefinedParametersItem(Parameters& parameters, bool primary,
                                    const Variant& value = Variant()) override;
  void AddUserDefinedParametersOtherParty(Parameters& parameters, bool primary,
                                          const Variant& value = Variant()) override;
  void AddUserDefinedParametersTransactions(Parameters& parameters, bool primary,
                                            const Variant& value = Variant()) override;
  void AddUserDefinedParametersJob(Parameters& parameters, bool primary,
                                   const Variant& value = Variant()) override;

  [[nodiscard]] std::string SubstituteString(const std::string& text,
                                             Date date_as_at) const override;
  // The payments of type 25 and pay type "C" whose bank entry (Transactions.glBankTransactionId)
  // is on `bank_id` and dated `date`, by transaction id. Empty without a company file.
  [[nodiscard]] DirectCreditRun DirectCreditPayments(const std::string& bank_id,
                                                     Date date) const override;

  [[nodiscard]] const CompanyDetails& Details() const { return details_; }

 private:
  void AddUserDefinedParameters(UserDefinedKind kind, Parameters& parameters, bool primary,
                                const Variant& value) const;

  CompanyFinancialCalendar calendar_;
  CompanyOptions options_;
  CompanyTax tax_;
  CompanyDetails details_;
  std::shared_ptr<Database> database_;  // null when built from values
};

}  // namespace trellin::business
