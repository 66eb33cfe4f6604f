// The statement's sub-reports: the General Ledger's lines under each opening line.

#include "core/TrellinReportGlobals.h"
#include "reports/ledger/arglAccountReports.h"

namespace trellin {

void arglAccountReports::AttachSubReports() {
  gl_sub_.reset();
  if (report_ != LedgerReport::GeneralLedger) return;
  gl_sub_ = std::make_shared<arglAccountReportsGLSub>();
  gl_sub_->TaxInclusive = tax_inclusive_;
  gl_sub_->Rounding = round_digits_;
  gl_sub_->Drilldown = drilldown_;
  gl_sub_->Initialize();
  // The account's code stands on its first line only where the statement prints codes.
  if (Control* code = gl_sub_->FindControl("txtAccountId")) code->SetVisible(include_code_);
  Field("srptTrans").SetObject(gl_sub_);
}

std::string arglAccountReports::LedgerLinesSQL(const std::string& account_id,
                                               const std::string& split_key) const {
  std::string sql =
      "SELECT glTransaction.AccountId,glTransaction.glTransactionId, "
      "glTransaction.glBankTransactionId, glTransaction.glBankTransactionSequence, "
      "glTransaction.Date, glTransaction.glSourceId, glTransaction.Reference, "
      "glTransaction.Value, glTransaction.Comment, glTransaction.TaxCategory, "
      "glTransaction.TaxValue, glBankTransaction.StmtPage, glBankTransaction.OtherPartyId, "
      "(SELECT Name FROM OtherParty WHERE "
      "OtherParty.OtherPartyId=glBankTransaction.OtherPartyId) AS OPName";
  // The document behind a line, for its drill-down.
  if (drilldown_) sql += ",glTransaction.TransactionId";
  sql +=
      " FROM glBankTransaction RIGHT JOIN glTransaction ON glBankTransaction.glBankTransactionId "
      "= glTransaction.glBankTransactionId";
  std::string where = " WHERE (glTransaction.Type Is Null) AND glTransaction.AccountId=" +
                      Database::SQLString(account_id);
  if (split_key.empty()) {
    if (!from_date_.IsNull())
      where += " AND glTransaction.Date>=" + Database::SQLDate(from_date_.ToDate());
    if (!to_date_.IsNull()) {
      where += " AND glTransaction.Date<" + Database::SQLDate(to_date_.ToDate().AddDays(1));
    }
    const std::string filter = GroupFilter();
    if (!filter.empty()) where += " AND " + filter;
  } else {
    // A split line's lines end at midnight of the last day: a line stamped later that day shows
    // only on the account's own line. So the ledger has always read.
    where += " AND " + split_key;
    if (!from_date_.IsNull())
      where += " AND glTransaction.Date>=" + Database::SQLDate(from_date_.ToDate());
    if (!to_date_.IsNull())
      where += " AND glTransaction.Date<=" + Database::SQLDate(to_date_.ToDate());
  }
  return sql + where + " ORDER BY glTransaction.Date, glTransaction.glTransactionId";
}

void arglAccountReports::ShowLedgerLines(const std::string& account_id) {
  Control* sub = FindControl("srptTrans");
  if (!gl_sub_ || sub == nullptr) return;
  gl_sub_->AccountId = account_id;
  gl_sub_->SQL = LedgerLinesSQL(account_id, "");
  // The balance runs on from the opening as it printed, rounding and all.
  const Control* opening = NumField(3);
  gl_sub_->mBalance =
      opening == nullptr ? Currency() : Currency::FromDouble(opening->DataValue().ToDouble());
  sub->SetVisible(true);
}

}  // namespace trellin
