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
                         CompanyTax(ReadTaxValues(*database), database), ReadDetails(*database)) {
  database_ = database;
}

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

DirectCreditRun CompanyApplication::DirectCreditPayments(const std::string& bank_id,
                                                         Date date) const {
  DirectCreditRun run;
  run.RunDate = date;
  if (!database_) return run;
  const std::string bank = Database::SQLString(bank_id);
  auto banks = database_->Query("SELECT BankName,BankNumber FROM Bank WHERE BankId=" + bank);
  const auto text = [](Recordset& rs, const char* name) {
    const Variant& value = rs.Value(name);
    return value.IsNull() || value.IsEmpty() ? std::string() : value.Text();
  };
  if (!banks->Eof()) {
    run.BankName = text(*banks, "BankName");
    run.BankNumber = text(*banks, "BankNumber");
  }
  auto rs = database_->Query(
      "SELECT Transactions.TransactionId,Transactions.OtherPartyId,OtherParty.Name,"
      "Transactions.Date,Transactions.Value,Transactions.Reference,Transactions.CardNumber,"
      "Transactions.BankDetails FROM (Transactions INNER JOIN glBankTransaction ON "
      "Transactions.glBankTransactionId = glBankTransaction.glBankTransactionId) LEFT JOIN "
      "OtherParty ON Transactions.OtherPartyId = OtherParty.OtherPartyId WHERE "
      "Transactions.Type=25 AND Transactions.PayType='C' AND glBankTransaction.BankId=" +
      bank + " AND glBankTransaction.Date=" + Database::SQLDate(date) +
      " ORDER BY Transactions.TransactionId");
  for (; !rs->Eof(); rs->MoveNext()) {
    DirectCreditPayment payment;
    payment.TransactionId = rs->Value("TransactionId").ToLong();
    payment.OtherPartyId = text(*rs, "OtherPartyId");
    payment.OtherPartyName = text(*rs, "Name");
    payment.TDate = rs->Value("Date").ToDate();
    // A payment is stored negative; the run hands over what is paid.
    payment.Amount = -rs->Value("Value").ToCurrency();
    payment.Reference = text(*rs, "Reference");
    payment.CardNumber = text(*rs, "CardNumber");
    payment.BankDetails = text(*rs, "BankDetails");
    run.Payments.push_back(std::move(payment));
  }
  return run;
}

}  // namespace trellin::business
