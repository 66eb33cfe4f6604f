// The tax detail object: the lines behind a tax return, each with its rate, and which of them are
// exceptions.

#include <algorithm>
#include <cmath>
#include <tuple>

#include "platform/business/CompanyBusinessObjects.h"
#include "platform/runtime/Strings.h"

namespace trellin::business {

namespace {

std::string LineText(const Variant& value) {
  return value.IsNull() || value.IsEmpty() ? std::string() : value.Text();
}

Currency LineMoney(const Variant& value) {
  return value.IsNull() || value.IsEmpty() ? Currency() : value.ToCurrency();
}

// The tax the line's category asks of its value, to the cent, half away from zero.
Currency ExpectedLineTax(Currency value_excl, double rate) {
  const long double cents = static_cast<long double>(value_excl.Raw()) * rate / 100 / 100;
  return Currency::FromRaw(std::llround(cents) * 100);
}

bool CashBasis(const std::string& basis) {
  return EqualsIgnoreCase(basis, "Payments") || EqualsIgnoreCase(basis, "Cash");
}

}  // namespace

// The rules are in this folder's README ("Tax detail").
std::vector<TaxDetailLine> CompanyBusinessObjects::LoadTaxDetail(const TaxDetailRequest& request) {
  Database& database = *database_;
  auto category_rate = [this](std::string_view code) {
    const TaxCategory* category = FindTaxCategory(code);
    return category == nullptr ? 0.0 : category->rate;
  };
  std::vector<TaxDetailLine> lines;
  for (const char* io : {"O", "I"}) {
    const bool output = io[0] == 'O';
    const std::string& basis = output ? request.BasisOutput : request.BasisInput;
    if (EqualsIgnoreCase(basis, "Exempt")) continue;
    const bool cash = request.ReconciliationFormat && CashBasis(basis);
    const std::string category =
        cash ? "glTransaction.CashTaxCategory" : "glTransaction.TaxCategory";
    std::string sql =
        "SELECT glTransaction.glTransactionId,glTransaction.AccountId,Account.Description,"
        "glTransaction.glSourceId,glTransaction.Date,glTransaction.Reference,"
        "glTransaction.Comment," +
        category +
        " AS Category,glTransaction.Value,glTransaction.TaxValue,glTransaction.CashTaxValue,"
        "glBankTransaction.Date AS BankDate FROM (glTransaction LEFT JOIN glBankTransaction ON "
        "glBankTransaction.glBankTransactionId=glTransaction.glBankTransactionId) LEFT JOIN "
        "Account ON Account.AccountId=glTransaction.AccountId WHERE glTransaction.TaxIO='" +
        std::string(io) + "' AND " + category + "<>'*'";
    if (request.TaxPeriodId) {
      sql += " AND glTransaction.TaxPeriodId=" + std::to_string(*request.TaxPeriodId);
    } else {
      const std::string next = Database::SQLDate(request.DateTo.DateOnly().AddDays(1));
      sql += " AND glTransaction.TaxPeriodId Is Null";
      sql += cash ? " AND ((glTransaction.Date<" + next +
                        " AND glTransaction.glBankTransactionId Is Null) OR "
                        "glBankTransaction.Date<" +
                        next + ")"
                  : " AND glTransaction.Date<" + next;
    }
    if (!request.GroupFilter.empty()) sql += " AND " + request.GroupFilter;
    std::shared_ptr<Recordset> rs = database.Query(sql);
    for (; !rs->Eof(); rs->MoveNext()) {
      TaxDetailLine line;
      line.TaxIO = io;
      line.TaxCat = Trim(LineText(rs->Value("Category")));
      line.glTransactionId = rs->Value("glTransactionId").ToLong();
      line.Account = LineText(rs->Value("AccountId")) + " " + LineText(rs->Value("Description"));
      line.glSourceId = LineText(rs->Value("glSourceId"));
      const Variant& bank_date = rs->Value("BankDate");
      line.date = cash && !bank_date.IsNull() ? bank_date.ToDate() : rs->Value("Date").ToDate();
      line.Reference = LineText(rs->Value("Reference"));
      line.Comment = LineText(rs->Value("Comment"));
      Currency value_incl = LineMoney(rs->Value("Value")) + LineMoney(rs->Value("TaxValue"));
      Currency tax = LineMoney(rs->Value(cash ? "CashTaxValue" : "TaxValue"));
      if (output) {
        value_incl = -value_incl;
        tax = -tax;
      }
      line.ValueIncl = value_incl;
      line.Tax = tax;
      const Currency value_excl = value_incl - tax;
      line.Rate = value_excl == Currency() ? 0 : tax.ToDouble() / value_excl.ToDouble() * 100;
      if (line.TaxCat != "A" && line.TaxCat != "F") {
        const Currency expected = ExpectedLineTax(value_excl, category_rate(line.TaxCat));
        const Currency off = tax - expected;
        line.Exception = off > Currency::FromRaw(100) || off < Currency::FromRaw(-100);
      }
      if (request.ExceptionsOnly && !line.Exception) continue;
      lines.push_back(std::move(line));
    }
  }
  std::stable_sort(lines.begin(), lines.end(), [](const TaxDetailLine& a, const TaxDetailLine& b) {
    const int side_a = a.TaxIO == "O" ? 0 : 1;
    const int side_b = b.TaxIO == "O" ? 0 : 1;
    return std::tie(side_a, a.TaxCat, a.date, a.glTransactionId) <
           std::tie(side_b, b.TaxCat, b.date, b.glTransactionId);
  });
  return lines;
}

}  // namespace trellin::business
