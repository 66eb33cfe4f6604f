// The statement's sub-reports: the General Ledger's lines under each opening line, and the
// branch or department lines under each account when the statement is split.

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"
#include "reports/ledger/arglAccountReports.h"

namespace trellin {

namespace {

bool IsValueControl(const std::string& name) {
  for (std::string_view prefix : {"numField", "txtField"}) {
    if (name.size() > prefix.size() && EqualsIgnoreCase(name.substr(0, prefix.size()), prefix)) {
      return true;
    }
  }
  return false;
}

// A value set's query widened by the split field: the field behind AccountId and in the GROUP
// BY, or for a query of one sum, the field in front and the sum grouped by it.
std::string WidenBySplit(const std::string& sql, const std::string& field) {
  // Beside Account, the ledger's own column.
  const std::string column =
      sql.find(" INNER JOIN glTransaction") != std::string::npos ? "glTransaction." + field : field;
  std::string widened = sql;
  const std::size_t from = widened.find(" FROM ");
  const std::size_t account = widened.find("AccountId,");
  if (account == std::string::npos || account > from) {
    widened.insert(7, column + ",");
    return widened + " GROUP BY " + column;
  }
  widened.insert(account + 10, column + ",");
  const std::size_t group = widened.find(" GROUP BY ");
  if (group != std::string::npos) {
    const std::size_t order = widened.find(" ORDER BY", group);
    widened.insert(order == std::string::npos ? widened.size() : order, "," + column);
  }
  return widened;
}

std::shared_ptr<arglAccountReportsGLSub> MakeLedgerLines(bool tax_inclusive, int rounding,
                                                         bool drilldown, bool include_code) {
  auto lines = std::make_shared<arglAccountReportsGLSub>();
  lines->TaxInclusive = tax_inclusive;
  lines->Rounding = rounding;
  lines->Drilldown = drilldown;
  lines->Initialize();
  // The account's code stands on its first line only where the statement prints codes.
  if (Control* code = lines->FindControl("txtAccountId")) code->SetVisible(include_code);
  return lines;
}

// Copies the statement's value controls (numField, and txtField where `texts`) into `detail`.
void CopyValueControls(const Section& from, Section& detail, bool texts) {
  for (const Control& c : from.Controls()) {
    if (!IsValueControl(c.Name())) continue;
    if (!texts && !EqualsIgnoreCase(c.Name().substr(0, 8), "numField")) continue;
    detail.Controls().Add(c.Class(), c.Name()) = c;
  }
}

}  // namespace

void arglAccountReports::AttachSubReports() {
  gl_sub_.reset();
  split_sub_.reset();
  split_gl_sub_.reset();
  cash_sub_.reset();
  column_sums_.fill(Currency());
  if (report_ == LedgerReport::BudgetCashFlow) {
    cash_sub_ = std::make_shared<arglAccountReportsCashFlowSub>();
    cash_sub_->Initialize();
    cash_sub_->Period = frequency_;
    cash_sub_->ShowTotal = show_total_;
    cash_sub_->TotalColumn = total_column_;
    cash_sub_->Columns = column_count_;
    cash_sub_->Rounding = round_digits_;
    CopyValueControls(Sections()["Detail"], cash_sub_->Sections()["Detail"], false);
    if (Control* caption = cash_sub_->FindControl("txtDescription")) {
      caption->SetLeft(description_left_);
      caption->SetWidth(description_width_);
    }
    Control& control = Field("srptCashFlow");
    control.SetObject(cash_sub_);
    control.SetVisible(true);
  }
  if (report_ == LedgerReport::GeneralLedger) {
    gl_sub_ = MakeLedgerLines(tax_inclusive_, round_digits_, drilldown_, include_code_);
    Field("srptTrans").SetObject(gl_sub_);
  }
  if (split_field_.empty()) return;
  split_sub_ = std::make_shared<arglAccountReportsSub>();
  split_sub_->Initialize();
  split_sub_->mSplitBy = split_by_;
  const std::string& list = split_field_ == "BranchId" ? branches_ : departments_;
  const std::string filter =
      list.empty() ? ""
                   : TrellinReportGlobals::RequireBusinessLayer()
                         .Utilities()
                         .RangeBuilder()
                         .BuildRangeCondition("glTransaction." + split_field_, list, kRangeText);
  split_sub_->Codes =
      TrellinReportGlobals::RequireDatabase()->Query(SplitCodesSQL(split_by_, filter));
  // The list comes in no order of its own: the lines follow the codes, no code first.
  split_sub_->Codes->Sort("Code");
  // The split line is the account's line again: the same value controls, filled by the same
  // rules.
  CopyValueControls(Sections()["Detail"], split_sub_->Sections()["Detail"], true);
  split_fields_.fill(nullptr);
  for (int n = 1; n <= kMaxColumns; ++n) {
    split_fields_[static_cast<std::size_t>(n)] =
        split_sub_->FindControl("numField" + std::to_string(n));
  }
  split_text_field_ = split_sub_->FindControl("txtField1");
  if (Control* description = split_sub_->FindControl("txtDescription")) {
    // Under the account's description, one step in.
    description->SetLeft(description_left_ + 240);
    description->SetWidth(description_width_ - 240);
    description->Font().Size = figure_font_size_;
  }
  split_sub_->FillLine = [this](Section& line, const SplitCode& code) {
    FillSplitLine(line, code);
  };
  Field("srptSplit").SetObject(split_sub_);
  if (report_ == LedgerReport::GeneralLedger) {
    split_gl_sub_ = MakeLedgerLines(tax_inclusive_, round_digits_, drilldown_, include_code_);
    split_sub_->Field("srptTrans").SetObject(split_gl_sub_);
  }
}

void arglAccountReports::OpenSplitSets() {
  split_sets_.clear();
  split_retained_sets_.clear();
  if (split_field_.empty()) return;
  auto database = TrellinReportGlobals::RequireDatabase();
  for (const std::string& sql : set_sql_) {
    split_sets_.push_back(sql.empty() ? nullptr : database->Query(WidenBySplit(sql, split_field_)));
  }
  std::string last;
  for (const auto& [sql, field] : retained_sql_) {
    // The two sums of one retained query share its widened set.
    if (!sql.empty() && sql == last && !split_retained_sets_.empty()) {
      split_retained_sets_.push_back(split_retained_sets_.back());
      continue;
    }
    last = sql;
    split_retained_sets_.push_back(sql.empty() ? nullptr
                                               : database->Query(WidenBySplit(sql, split_field_)));
  }
}

void arglAccountReports::FillSplitLine(Section& detail, const SplitCode& code) {
  (void)detail;
  // Each line starts cleared.
  for (Control& c : split_sub_->Sections()["Detail"].Controls()) {
    if (!IsValueControl(c.Name())) continue;
    c.SetDataValue(Variant(0.0));
    c.SetText("");
    c.SetVisible(true);
    c.Border().TopStyle = 0;
    c.Border().BottomStyle = 0;
  }
  const AccountLevel account_row = AccountLevels[kRowLevel];
  split_code_ = &code;
  try {
    FillRow(split_account_, split_type_);
    ShowLevelValues(kRowLevel, false);
  } catch (...) {
    split_code_ = nullptr;
    AccountLevels[kRowLevel] = account_row;
    throw;
  }
  split_code_ = nullptr;
  const Currency opening = AccountLevels[kRowLevel].Values[3];
  AccountLevels[kRowLevel] = account_row;
  if (report_ != LedgerReport::GeneralLedger || !split_gl_sub_) return;
  if (split_text_field_ != nullptr) {
    split_text_field_->SetText("Opening");
    split_text_field_->SetVisible(true);
  }
  Control* lines = split_sub_->FindControl("srptTrans");
  if (lines == nullptr) return;
  std::string where = "AccountId=" + Database::SQLString(split_account_) + " AND " + code.query_key;
  if (!from_date_.IsNull()) where += " AND Date>=" + Database::SQLDate(from_date_.ToDate());
  if (!to_date_.IsNull()) where += " AND Date<=" + Database::SQLDate(to_date_.ToDate());
  const bool any = TrellinReportGlobals::RequireDatabase()->RecordCount("glTransaction", where) > 0;
  lines->SetVisible(any);
  if (!any) return;
  split_gl_sub_->AccountId = split_account_;
  split_gl_sub_->SQL = LedgerLinesSQL(split_account_, code.query_key);
  const Control* printed = split_fields_[3];
  split_gl_sub_->mBalance =
      printed == nullptr ? opening : Currency::FromDouble(printed->DataValue().ToDouble());
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
