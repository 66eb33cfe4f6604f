// The figures of each statement: one grouped query per column family, opened once for each
// combination of groups and looked up by account, and the arithmetic that turns them into a
// row's columns.

#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"
#include "reports/ledger/arglAccountReports.h"

namespace trellin {

namespace {

constexpr const char* kAccountJoin =
    " FROM Account INNER JOIN glTransaction ON Account.AccountId = glTransaction.AccountId";
constexpr const char* kGroupTail = " GROUP BY AccountId ORDER BY AccountId";

std::string Lit(const Variant& date) { return Database::SQLDate(date.ToDate()); }
std::string Lit(const Date& date) { return Database::SQLDate(date); }

Currency ToMoney(const Variant& v) {
  return v.IsNull() || v.IsEmpty() ? Currency() : v.ToCurrency();
}

// The statements whose sums carry the tax beside the value when TaxInclusive is set.
bool TaxAware(LedgerReport r) {
  return r == LedgerReport::TrialBalance || r == LedgerReport::FiveYearSummary ||
         r == LedgerReport::PeriodSummary || r == LedgerReport::MovementReport;
}

}  // namespace

std::string arglAccountReports::Where(std::vector<std::string> conditions) const {
  const std::string filter = GroupFilter();
  if (!filter.empty()) conditions.push_back(filter);
  std::string text;
  for (const std::string& c : conditions) {
    if (c.empty()) continue;
    text += (text.empty() ? " WHERE " : " AND ") + c;
  }
  return text;
}

std::string arglAccountReports::SumValue() const {
  return TaxAware(report_) && tax_inclusive_ ? "Sum(Value+TaxValue)" : "Sum(Value)";
}

void arglAccountReports::OpenSet(const std::string& sql) {
  value_sql_.push_back(sql);
  set_sql_.push_back(sql);
  ValueSets.push_back(TrellinReportGlobals::RequireDatabase()->Query(sql));
}

void arglAccountReports::OpenRetained(const std::string& sql) {
  value_sql_.push_back(sql);
  retained_sql_.emplace_back(sql, 0);
  auto rs = TrellinReportGlobals::RequireDatabase()->Query(sql);
  RetainedSets.push_back(rs->Eof() ? Variant::Null() : rs->Value(0));
}

Currency arglAccountReports::Lookup(std::size_t set, const std::string& account_id, int field) {
  if (split_code_ != nullptr) {
    // The widened set holds the split field behind AccountId.
    if (set >= split_sets_.size() || !split_sets_[set]) return Currency();
    Recordset& rs = *split_sets_[set];
    rs.Filter("AccountId=" + Database::SQLString(account_id) + " AND " + split_code_->filter_key);
    if (rs.Eof()) return Currency();
    return ToMoney(rs.Value(field + 1));
  }
  if (set >= ValueSets.size() || !ValueSets[set]) return Currency();
  Recordset& rs = *ValueSets[set];
  if (rs.RecordCount() == 0) return Currency();
  rs.MoveFirst();
  rs.Find("AccountId=" + Database::SQLString(account_id));
  if (rs.Eof()) return Currency();
  return ToMoney(rs.Value(field));
}

Currency arglAccountReports::Retained(std::size_t set) const {
  if (split_code_ != nullptr) {
    if (set >= split_retained_sets_.size() || !split_retained_sets_[set]) return Currency();
    Recordset& rs = *split_retained_sets_[set];
    rs.Filter(split_code_->filter_key);
    if (rs.Eof()) return Currency();
    return ToMoney(rs.Value(retained_sql_[set].second + 1));
  }
  if (set >= RetainedSets.size()) return Currency();
  return ToMoney(RetainedSets[set]);
}

void arglAccountReports::OpenValueSets() {
  ValueSets.clear();
  RetainedSets.clear();
  value_sql_.clear();
  set_sql_.clear();
  retained_sql_.clear();
  if (IsPeriodColumns()) {
    OpenPeriodSets();
  } else {
    OpenStatementSets();
  }
}

std::string arglAccountReports::StatementFigures(const Variant& from, const Variant& to) const {
  std::string balance = "Account.Type>5";
  std::string profit = "Account.Type<=5";
  if (!to.IsNull()) balance += " AND glTransaction.Date<=" + Lit(to);
  if (!from.IsNull()) profit += " AND glTransaction.Date>=" + Lit(from);
  if (!to.IsNull()) profit += " AND glTransaction.Date<=" + Lit(to);
  return "SELECT glTransaction.AccountId,Sum(Value) AS SumOfValue" + std::string(kAccountJoin) +
         Where({"((" + balance + ") OR (" + profit + "))"}) +
         " GROUP BY glTransaction.AccountId ORDER BY glTransaction.AccountId";
}

std::string arglAccountReports::SumByAccount(const std::vector<std::string>& conditions) const {
  return "SELECT AccountId," + SumValue() + " AS SumOfValue FROM glTransaction" +
         Where(conditions) + kGroupTail;
}

std::string arglAccountReports::RetainedCondition() const {
  if (add_net_profit_ && add_appropriations_) return "Account.Type<=6";
  if (add_net_profit_) return "Account.Type<=5";
  if (add_appropriations_) return "Account.Type=6";
  return {};
}

void arglAccountReports::OpenStatementSets() {
  const Variant& from = from_date_;
  const Variant& to = to_date_;
  auto on = [](const char* field, const char* op, const Variant& date) {
    return date.IsNull() ? std::string() : std::string(field) + op + Lit(date);
  };
  const std::string retained = RetainedCondition();
  switch (report_) {
    case LedgerReport::TrialBalance:
    case LedgerReport::GeneralLedger: {
      const bool tax = report_ == LedgerReport::TrialBalance && tax_inclusive_;
      const std::string value = tax ? "[Value]+[TaxValue]" : "[Value]";
      const std::string credits = Database::SQLIIf(value + "<0", value, "0");
      const std::string debits = Database::SQLIIf(value + ">0", value, "0");
      if (report_ == LedgerReport::GeneralLedger && from.IsNull()) {
        OpenSet(
            "SELECT AccountId,0 AS Opening FROM glTransaction WHERE glTransactionId Is Null "
            "ORDER BY AccountId");
      } else if (from.IsNull()) {
        OpenSet("SELECT AccountId,0 AS Opening FROM glTransaction" + Where({}) + kGroupTail);
      } else {
        OpenSet("SELECT AccountId," + std::string(tax ? "Sum(Value+TaxValue)" : "Sum(Value)") +
                " AS Opening FROM glTransaction" + Where({on("Date", "<", from)}) + kGroupTail);
      }
      OpenSet("SELECT AccountId,Sum(" + credits + ") AS Credits,Sum(" + debits +
              ") AS Debits FROM glTransaction" +
              Where({on("Date", ">=", from), on("Date", "<=", to)}) + kGroupTail);
      if (report_ == LedgerReport::TrialBalance && !retained.empty()) {
        OpenRetained(from.IsNull()
                         ? "SELECT 0 AS Opening" + std::string(kAccountJoin) + Where({retained})
                         : "SELECT " + std::string(tax ? "Sum(Value+TaxValue)" : "Sum(Value)") +
                               " AS Opening" + kAccountJoin +
                               Where({retained, on("glTransaction.Date", "<", from)}));
        const std::string totals =
            "SELECT Sum(" + credits + ") AS Credits,Sum(" + debits + ") AS Debits" + kAccountJoin;
        const std::string totals_sql =
            totals + Where({retained, on("glTransaction.Date", ">=", from),
                            on("glTransaction.Date", "<=", to)});
        auto rs = TrellinReportGlobals::RequireDatabase()->Query(totals_sql);
        value_sql_.push_back(totals);
        retained_sql_.emplace_back(totals_sql, 0);
        retained_sql_.emplace_back(totals_sql, 1);
        RetainedSets.push_back(rs->Eof() ? Variant::Null() : rs->Value(0));
        RetainedSets.push_back(rs->Eof() ? Variant::Null() : rs->Value(1));
      }
      break;
    }
    case LedgerReport::EndOfYearTrialBalance:
      OpenSet("SELECT AccountId,Sum(Value) AS Opening FROM glTransaction" +
              Where({on("Date", "<=", to)}) + kGroupTail);
      // Only lines stamped with a time on the last day: the year-end entries sit after
      // midnight of the closing date.
      OpenSet(
          "SELECT AccountId,Sum(Value) AS Adjustments FROM glTransaction" +
          Where({on("Date", ">", to), to.IsNull() ? "" : "Date<" + Lit(to.ToDate().AddDays(1))}) +
          kGroupTail);
      break;
    case LedgerReport::FinancialStatement:
    case LedgerReport::LastYearComparison:
      OpenSet(StatementFigures(from, to));
      OpenSet(StatementFigures(last_from_date_, last_to_date_));
      if (report_ == LedgerReport::FinancialStatement && !retained.empty()) {
        for (const auto& [f, t] :
             {std::pair{from, to}, std::pair{last_from_date_, last_to_date_}}) {
          OpenRetained("SELECT Sum(Value) AS SumOfValue" + std::string(kAccountJoin) +
                       Where({retained, on("glTransaction.Date", ">=", f),
                              on("glTransaction.Date", "<=", t)}));
        }
      }
      break;
    case LedgerReport::VarianceReport:
    case LedgerReport::BudgetVarianceReport:
      OpenSet(SumByAccount({on("Date", ">=", from), on("Date", "<=", to)}));
      OpenSet("SELECT AccountId,Sum(" + budget_column_ + ") AS SumOfBudget FROM glBudget" +
              Where({on("Month", ">=", from), on("Month", "<=", to)}) + kGroupTail);
      if (report_ == LedgerReport::VarianceReport) {
        OpenSet(SumByAccount({on("Date", ">=", last_from_date_), on("Date", "<=", last_to_date_)}));
      }
      break;
    case LedgerReport::MovementReport: {
      const Variant mtd = to.IsNull() ? Variant::Null() : Variant(to.ToDate().FirstOfMonth());
      const Variant last_mtd =
          last_to_date_.IsNull() ? Variant::Null() : Variant(last_to_date_.ToDate().FirstOfMonth());
      OpenSet(SumByAccount({on("Date", ">=", mtd), on("Date", "<=", to)}));
      OpenSet(SumByAccount({on("Date", ">=", from), on("Date", "<=", to)}));
      OpenSet(SumByAccount({on("Date", ">=", last_mtd), on("Date", "<=", last_to_date_)}));
      OpenSet(SumByAccount({on("Date", ">=", last_from_date_), on("Date", "<=", last_to_date_)}));
      break;
    }
    case LedgerReport::FiveYearSummary: {
      const std::vector<FinancialYear> years =
          TrellinReportGlobals::RequireApplication().FinancialCalendar().Years();
      for (int i = 1; i <= 5; ++i) {
        const std::int64_t index = fiscal_year_ + i - 5;
        if (index < 1 || index > static_cast<std::int64_t>(years.size())) {
          ValueSets.push_back(nullptr);
          set_sql_.emplace_back();
          continue;
        }
        const FinancialYear& year = years[static_cast<std::size_t>(index - 1)];
        OpenSet(
            SumByAccount({"Date>=" + Lit(year.DateStart), "Date<" + Lit(year.DateEnd.AddDays(1)),
                          "glTransaction.Type Is Null"}));
      }
      break;
    }
    default:
      break;
  }
}

bool arglAccountReports::IsPeriodColumns() const {
  return report_ == LedgerReport::PeriodSummary || report_ == LedgerReport::BudgetSummary ||
         report_ == LedgerReport::BudgetCashFlow;
}

void arglAccountReports::OpenPeriodSets() {
  const Date to = to_date_.ToDate();
  const std::string retained = RetainedCondition();
  for (std::size_t i = 1; i < period_ends_.size(); ++i) {
    const Date end = period_ends_[i];
    const Date start = period_ends_[i - 1].AddDays(1);
    // A column that ends after the statement's own end date reads nothing.
    const bool beyond = to < end;
    if (report_ == LedgerReport::PeriodSummary) {
      const std::string next = Lit(end.AddDays(1));
      const std::string where =
          beyond ? " WHERE glTransaction.glTransactionId<0"
                 : Where({"((Account.Type>5 AND glTransaction.Date<" + next +
                          ") OR (glTransaction.Type Is Null AND Account.Type<=5 AND "
                          "glTransaction.Date>=" +
                          Lit(start) + " AND glTransaction.Date<" + next + "))"});
      OpenSet("SELECT glTransaction.AccountId," + SumValue() + " AS SumOfValue" + kAccountJoin +
              where + " GROUP BY gltransaction.AccountId ORDER BY glTransaction.AccountId");
      if (!retained.empty()) {
        if (beyond) {
          RetainedSets.push_back(Variant::Null());
          retained_sql_.emplace_back();
        } else {
          OpenRetained("SELECT " + SumValue() + " AS SumOfValue" + kAccountJoin +
                       Where({retained, "glTransaction.Date<" + next}));
        }
      }
    } else {
      const std::string where =
          beyond ? " WHERE Month<0" : Where({"Month>=" + Lit(start), "Month<=" + Lit(end)});
      OpenSet("SELECT AccountId,Sum(" + budget_column_ + ") AS SumOfValue FROM glBudget" + where +
              kGroupTail);
    }
  }
}

void arglAccountReports::FillRow(const std::string& account_id, AccountType type) {
  AccountLevel& row = AccountLevels[kRowLevel];
  row.Zero();
  auto& v = row.Values;
  const bool retained_row =
      !retained_account_.empty() && EqualsIgnoreCase(account_id, retained_account_);
  switch (report_) {
    case LedgerReport::TrialBalance: {
      v[1] = Lookup(0, account_id, 1);
      v[2] = Lookup(1, account_id, 2);
      v[3] = -Lookup(1, account_id, 1);
      if (retained_row) {
        v[1] += Retained(0);
        v[2] += Retained(2);
        v[3] -= Retained(1);
      }
      v[4] = v[2] - v[3];
      v[5] = v[4] + v[1];
      break;
    }
    case LedgerReport::GeneralLedger: {
      const Currency opening = Lookup(0, account_id, 1);
      v[1] = opening > Currency() ? opening : Currency();
      v[2] = opening > Currency() ? Currency() : -opening;
      v[3] = opening;
      if (split_code_ == nullptr) {
        gl_credits_ = Lookup(1, account_id, 1);
        gl_debits_ = Lookup(1, account_id, 2);
      }
      break;
    }
    case LedgerReport::EndOfYearTrialBalance:
      v[1] = Lookup(0, account_id, 1);
      v[2] = Lookup(1, account_id, 1);
      v[3] = v[1] + v[2];
      break;
    case LedgerReport::FinancialStatement:
      v[1] = v[2] = Lookup(0, account_id, 1);
      v[3] = Lookup(1, account_id, 1);
      if (retained_row) {
        v[1] += Retained(0);
        v[2] += Retained(0);
        v[3] += Retained(1);
      }
      break;
    case LedgerReport::LastYearComparison:
      v[1] = v[2] = Lookup(0, account_id, 1);
      v[4] = v[5] = Lookup(1, account_id, 1);
      break;
    case LedgerReport::VarianceReport:
      v[1] = Lookup(0, account_id, 1);
      v[2] = Lookup(1, account_id, 1);
      v[3] = v[1] - v[2];
      v[5] = Lookup(2, account_id, 1);
      v[6] = v[1] - v[5];
      break;
    case LedgerReport::BudgetVarianceReport:
      v[1] = Lookup(0, account_id, 1);
      v[2] = Lookup(1, account_id, 1);
      v[3] = v[1] - v[2];
      break;
    case LedgerReport::MovementReport:
    case LedgerReport::FiveYearSummary:
      for (int n = 1; n <= column_count_; ++n) {
        v[static_cast<std::size_t>(n)] = Lookup(static_cast<std::size_t>(n - 1), account_id, 1);
      }
      break;
    case LedgerReport::PeriodSummary:
    case LedgerReport::BudgetSummary:
    case LedgerReport::BudgetCashFlow:
      FillPeriodRow(account_id, type);
      break;
  }
}

void arglAccountReports::FillPeriodRow(const std::string& account_id, AccountType type) {
  auto& v = AccountLevels[kRowLevel].Values;
  const bool quarterly = frequency_ == "Quarterly";
  const bool retained_row = report_ == LedgerReport::PeriodSummary && !retained_account_.empty() &&
                            EqualsIgnoreCase(account_id, retained_account_);
  const bool credit_budget =
      report_ != LedgerReport::PeriodSummary && quarterly && EqualsIgnoreCase(Trim(row_drcr_), "C");
  const int periods = static_cast<int>(period_ends_.size()) - 1;
  Currency first_total, second_total;
  for (int i = 1; i <= periods; ++i) {
    const int n = quarterly && i > 4 ? i + 1 : i;
    Currency value = Lookup(static_cast<std::size_t>(i - 1), account_id, 1);
    if (retained_row) value += Retained(static_cast<std::size_t>(i - 1));
    // Only the second four quarters turn a credit budget round; so the report has always run.
    if (credit_budget && i > 4) value = -value;
    v[static_cast<std::size_t>(n)] = value;
    // A balance at several dates does not sum: totals add the profit and loss alone.
    if (type < AccountType::Appropriation)
      (i <= 4 || !quarterly ? first_total : second_total) += value;
  }
  if (quarterly) {
    v[5] = first_total;
    v[10] = second_total;
    if (total_column_ == 11) v[11] = first_total + second_total;
  } else if (total_column_ > 0) {
    v[static_cast<std::size_t>(total_column_)] = first_total;
  }
  if (report_ == LedgerReport::BudgetCashFlow && split_code_ == nullptr) {
    for (int n = 1; n <= column_count_; ++n) {
      column_sums_[static_cast<std::size_t>(n)] += v[static_cast<std::size_t>(n)];
    }
  }
}

bool arglAccountReports::HasLedgerLines(const std::string& account_id) {
  std::vector<std::string> conditions = {"AccountId=" + Database::SQLString(account_id)};
  if (!from_date_.IsNull()) conditions.push_back("Date>=" + Lit(from_date_));
  if (!to_date_.IsNull()) conditions.push_back("Date<=" + Lit(to_date_));
  std::string where = Where(conditions);
  // RecordCount takes the condition without the word WHERE.
  if (where.rfind(" WHERE ", 0) == 0) where = where.substr(7);
  return TrellinReportGlobals::RequireDatabase()->RecordCount("glTransaction", where) > 0;
}

void arglAccountReports::AddLedgerMovement() {
  for (int l = 0; l <= 5; ++l) {
    auto& v = AccountLevels[static_cast<std::size_t>(l)].Values;
    v[1] += gl_debits_;
    v[2] -= gl_credits_;
    v[3] += gl_debits_ + gl_credits_;
  }
}

void arglAccountReports::RunFooterChecks() {
  if (cash_sub_) {
    // Every account has printed: each column's sum is its cash movement.
    for (int n = 1; n <= column_count_; ++n) {
      cash_sub_->Update_Array(CashRow::Movement, n, column_sums_[static_cast<std::size_t>(n)]);
    }
  }
  Control* warning = FindControl("txtWarning");
  if (warning == nullptr) return;
  warning->SetText("");
  if (report_ != LedgerReport::TrialBalance || filtered_) return;
  std::string sql = "SELECT Sum(Value)  AS SumOfValue FROM glTransaction";
  if (!to_date_.IsNull()) sql += " WHERE Date<" + Lit(to_date_.ToDate().AddDays(1));
  check_sql_ = sql;
  const Currency total =
      TrellinReportGlobals::RequireDatabase()->ExecuteScalarCurrency(sql, Currency());
  if (total != Currency())
    warning->SetText("Warning: There is a variance in the closing balances.");
}

void arglAccountReports::ReadStartFigures() {
  auto database = TrellinReportGlobals::RequireDatabase();
  if (report_ == LedgerReport::LastYearComparison) {
    std::string sql = "SELECT Sum(glTransaction.Value) AS SumOfValue" + std::string(kAccountJoin) +
                      " WHERE Account.Type=1";
    if (!from_date_.IsNull()) sql += " AND Date>=" + Lit(from_date_);
    if (!to_date_.IsNull()) sql += " AND Date<=" + Lit(to_date_);
    sql += " GROUP BY Account.Type";
    sales_total_ = database->ExecuteScalarCurrency(sql, Currency());
  }
  if (report_ == LedgerReport::BudgetCashFlow && !period_ends_.empty()) {
    opening_bank_ = database->ExecuteScalarCurrency(
        "SELECT Sum(glTransaction.Value) AS Opening FROM glBankTransaction INNER JOIN "
        "glTransaction ON glBankTransaction.glBankTransactionId=glTransaction.glBankTransactionId"
        " WHERE glBankTransaction.StmtPage>0 AND glBankTransaction.Date<=" +
            Lit(period_ends_[0]) + " And glTransaction.glBankTransactionSequence = 0",
        Currency());
    if (cash_sub_) cash_sub_->Update_Array(CashRow::Opening, 1, opening_bank_);
  }
}

}  // namespace trellin
