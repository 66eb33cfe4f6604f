// The bank reconciliation object: a bank's latest statement page, its figures and its lines.

#include "platform/business/CompanyBusinessObjects.h"

namespace trellin::business {

namespace {

// A bank entry by its bank's own line (sequence 0), with the party's name.
constexpr char kLinesSQL[] =
    "SELECT glBankTransaction.glBankTransactionId,glBankTransaction.Date,"
    "glBankTransaction.Presented,glBankTransaction.Reference,glBankTransaction.Comment,"
    "OtherParty.Name,glTransaction.Value FROM (glBankTransaction INNER JOIN glTransaction ON "
    "glBankTransaction.glBankTransactionId=glTransaction.glBankTransactionId) LEFT JOIN "
    "OtherParty ON glBankTransaction.OtherPartyId=OtherParty.OtherPartyId WHERE "
    "glTransaction.glBankTransactionSequence=0 AND glBankTransaction.BankId=";

std::string TextOrBlank(const Variant& value) {
  return value.IsNull() || value.IsEmpty() ? std::string() : value.Text();
}

void ReadLines(Database& database, const std::string& sql, bool checked,
               std::vector<BankReconciliationLine>& lines, Currency& total) {
  std::shared_ptr<Recordset> rs = database.Query(sql);
  for (; !rs->Eof(); rs->MoveNext()) {
    BankReconciliationLine line;
    line.glBankTransactionId = rs->Value("glBankTransactionId").ToLong();
    line.Checked = checked;
    line.date = rs->Value("Date").ToDate();
    if (const Variant& presented = rs->Value("Presented"); !presented.IsNull()) {
      line.Presented = presented.ToDate();
    }
    line.Reference = TextOrBlank(rs->Value("Reference"));
    line.OtherParty = TextOrBlank(rs->Value("Name"));
    line.Comment = TextOrBlank(rs->Value("Comment"));
    line.Value = rs->Value("Value").ToCurrency();
    total += line.Value;
    lines.push_back(std::move(line));
  }
}

}  // namespace

// The page shown is the bank's latest; the page before it gives the opening. A line is checked
// when it is on that page; the others are the entries on no page, dated on or before `dated_to`.
// Entries on earlier pages are in the opening.
std::optional<BankReconciliation> CompanyBusinessObjects::LoadBankReconciliation(
    std::string_view code, std::optional<Date> dated_to) {
  const BankDetails* bank = FindBank(code);
  if (bank == nullptr) return std::nullopt;
  BankReconciliation result;
  result.BankId = bank->code;
  const std::string bank_literal = Database::SQLString(bank->code);
  std::shared_ptr<Recordset> pages = database_->Query(
      "SELECT TOP 2 StmtPage,StatementDate,ClosingBalance,Locked FROM glBankStatement WHERE "
      "BankId=" +
      bank_literal + " ORDER BY StmtPage DESC");
  if (!pages->Eof()) {
    result.StatementPage = pages->Value("StmtPage").ToLong();
    result.StatementDate = pages->Value("StatementDate").ToDate();
    result.StatementClosing = pages->Value("ClosingBalance").ToCurrency();
    const Variant& locked = pages->Value("Locked");
    result.Locked = !locked.IsNull() && locked.ToBool();
    if (result.Locked) {
      result.LockedText = "Statement page " + std::to_string(result.StatementPage) +
                          " is locked: its reconciliation is finished.";
    }
    pages->MoveNext();
    if (!pages->Eof()) result.StatementOpening = pages->Value("ClosingBalance").ToCurrency();
    ReadLines(*database_,
              kLinesSQL + bank_literal + " AND glBankTransaction.StmtPage=" +
                  Database::SQLNumber(static_cast<std::int64_t>(result.StatementPage)) +
                  " ORDER BY glBankTransaction.Date,glBankTransaction.glBankTransactionId",
              true, result.Lines, result.TotalReconciled);
  }
  std::string unchecked = kLinesSQL + bank_literal + " AND glBankTransaction.StmtPage Is Null";
  if (dated_to) {
    unchecked +=
        " AND glBankTransaction.Date<" + Database::SQLDate(dated_to->DateOnly().AddDays(1));
  }
  ReadLines(*database_,
            unchecked + " ORDER BY glBankTransaction.Date,glBankTransaction.glBankTransactionId",
            false, result.Lines, result.TotalUnreconciled);
  return result;
}

}  // namespace trellin::business
