#pragma once
// The application object the report service is given at Initialise: calendar, options, tax.

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "core/host/Parameters.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Date.h"
#include "platform/runtime/Error.h"
#include "platform/runtime/Variant.h"

namespace trellin {

struct FinancialYear {
  std::int64_t Id = 0;
  std::string Name;
  Date DateStart;
  Date DateEnd;
};

// Raised by FinancialCalendar::Year for an id the calendar does not know.
class NoSuchYear : public Error {
 public:
  explicit NoSuchYear(const std::string& message) : Error(ErrorKind::Report, message) {}
};

class FinancialCalendar {
 public:
  virtual ~FinancialCalendar() = default;
  // The current date of each ledger (the argument is passed through; True in the report code).
  [[nodiscard]] virtual Date CurrentDateAP(bool reserved = true) const = 0;
  [[nodiscard]] virtual Date CurrentDateAR(bool reserved = true) const = 0;
  [[nodiscard]] virtual Date CurrentDateGL(bool reserved = true) const = 0;
  // Id of the financial year that holds `date`, 0 when none does.
  [[nodiscard]] virtual std::int64_t YearIdFromDate(Date date) const = 0;
  // Throws NoSuchYear.
  [[nodiscard]] virtual FinancialYear Year(std::int64_t id) const = 0;
  // Every year the company has, oldest first.
  [[nodiscard]] virtual std::vector<FinancialYear> Years() const = 0;
};

// The kinds of record that carry user-defined fields.
enum class UserDefinedKind { Asset, Item, OtherParty, Transactions, Job };

struct UserDefinedField {
  std::string Name;  // empty when the position is unused
  // What the field holds and so which list its values are picked from: 1 to 3 a party
  // (OtherParty), 4 an employee, 7 an asset, 8 a job; any other type is free text, picked from
  // the values already used.
  int Type = 0;
};

class Options {
 public:
  virtual ~Options() = default;
  [[nodiscard]] virtual std::string Country() const = 0;  // "NZ", "AU", ...
  [[nodiscard]] virtual bool SuburbInCityField() const = 0;
  [[nodiscard]] virtual std::int16_t ItemCodeSetting() const = 0;
  // Positions 1 to 20.
  [[nodiscard]] virtual UserDefinedField UserDefinedFields(UserDefinedKind kind,
                                                           int position) const = 0;
  [[nodiscard]] virtual std::string TemplateFolder() const = 0;
  [[nodiscard]] virtual bool JobActualCharges() const = 0;

  // Further options some reports read. Each has a neutral answer here for applications that do
  // not keep it.
  // The branch whose details head documents by default; "" when none.
  [[nodiscard]] virtual std::string DefaultBranch() const { return {}; }
  // Accounts by role ("" when the company has not set one).
  [[nodiscard]] virtual std::string RetainedEarningsAccount() const { return {}; }
  [[nodiscard]] virtual std::string ReceivablesControlAccount() const { return {}; }
  [[nodiscard]] virtual std::string PayablesControlAccount() const { return {}; }
  // Decimals shown for quantities, unit prices and values.
  [[nodiscard]] virtual int QuantityDecimals() const { return 2; }
  [[nodiscard]] virtual int PriceDecimals() const { return 2; }
  [[nodiscard]] virtual int ValueDecimals() const { return 2; }
  [[nodiscard]] virtual bool PromptPaymentDiscount() const { return false; }
  // True when an item's available quantity keeps allocated stock in.
  [[nodiscard]] virtual bool AvailableIncludesAllocated() const { return false; }
};

class Tax {
 public:
  virtual ~Tax() = default;
  [[nodiscard]] virtual std::string TaxName() const = 0;  // "GST"
  [[nodiscard]] virtual double Rate() const = 0;          // percent, 15 for 15%
  // The company's tax registration number; "" when none is kept.
  [[nodiscard]] virtual std::string TaxNumber() const { return {}; }
  // The tax period now open: its first day (nullopt when not kept) and its length in months.
  [[nodiscard]] virtual std::optional<Date> PeriodStart() const { return std::nullopt; }
  [[nodiscard]] virtual int PeriodMonths() const { return 2; }
  // The basis of sales and of purchases: "Invoice", "Payments" or "Exempt".
  [[nodiscard]] virtual std::string BasisOutput() const { return "Invoice"; }
  [[nodiscard]] virtual std::string BasisInput() const { return "Invoice"; }
  // Whether the tax list holds the category `code` (case and blanks at the ends ignored).
  [[nodiscard]] virtual bool TaxCategory(std::string_view code) const {
    (void)code;
    return false;
  }
  // The tax held in `amount`, an amount with the tax of category `code` in it: amount x rate /
  // (100 + rate), to the cent, half away from zero. Zero for a code the tax list lacks.
  [[nodiscard]] virtual Currency TaxInclusive(Currency amount, std::string_view code) const {
    (void)amount;
    (void)code;
    return {};
  }
};

// One supplier payment of a direct credit run.
struct DirectCreditPayment {
  std::int64_t TransactionId = 0;
  std::string OtherPartyId;
  std::string OtherPartyName;
  Date TDate;
  Currency Amount;  // as paid: positive
  std::string Reference;
  std::string CardNumber;   // the supplier's bank account the money goes to
  std::string BankDetails;  // the particulars the supplier sees on its statement
};

// A bank run of direct credits as the application hands it over: the bank and the date for the
// heading, and the payments, read by index from 0 to Count() - 1.
struct DirectCreditRun {
  std::string BankName;
  std::string BankNumber;
  Date RunDate;
  std::vector<DirectCreditPayment> Payments;

  [[nodiscard]] long Count() const { return static_cast<long>(Payments.size()); }
  // REQUIRES: 0 <= index < Count().
  [[nodiscard]] const DirectCreditPayment& Item(long index) const {
    return Payments[static_cast<std::size_t>(index)];
  }
};

class Application : public Object {
 public:
  [[nodiscard]] virtual const trellin::FinancialCalendar& FinancialCalendar() const = 0;
  [[nodiscard]] virtual const trellin::Options& Options() const = 0;
  [[nodiscard]] virtual const trellin::Tax& Tax() const = 0;
  // Each adds one list parameter for every user-defined field of that kind.
  virtual void AddUserDefinedParametersAsset(Parameters& parameters, bool primary,
                                             const Variant& value = Variant()) = 0;
  virtual void AddUserDefinedParametersItem(Parameters& parameters, bool primary,
                                            const Variant& value = Variant()) = 0;
  virtual void AddUserDefinedParametersOtherParty(Parameters& parameters, bool primary,
                                                  const Variant& value = Variant()) = 0;
  virtual void AddUserDefinedParametersTransactions(Parameters& parameters, bool primary,
                                                    const Variant& value = Variant()) = 0;
  // The job kind, for the job reports; an application that keeps no job fields adds nothing.
  virtual void AddUserDefinedParametersJob(Parameters&, bool, const Variant& = Variant()) {}
  // The supplier payments by direct credit (pay type "C") drawn on the bank account `bank_id` on
  // `date`, in the order they were entered, with the bank's name and number. An application that
  // keeps no bank runs gives an empty run. Throws DatabaseError.
  [[nodiscard]] virtual DirectCreditRun DirectCreditPayments(const std::string& bank_id,
                                                             Date date) const {
    (void)bank_id;
    DirectCreditRun run;
    run.RunDate = date;
    return run;
  }
  // Replaces the application's place holders in `text`, dated `date_as_at`.
  [[nodiscard]] virtual std::string SubstituteString(const std::string& text,
                                                     Date date_as_at) const = 0;
};

}  // namespace trellin
