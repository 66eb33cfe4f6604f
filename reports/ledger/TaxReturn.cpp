#include "reports/ledger/TaxReturn.h"

#include <string_view>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/host/BusinessLayer.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

bool BlankPeriod(const Variant& v) {
  return v.IsNull() || v.IsEmpty() || v.IsMissing() ||
         (v.IsString() && Trim(*v.Get<std::string>()).empty());
}

// The whole number a period's id is given as; anything else is refused before it reaches SQL.
std::int64_t TaxPeriodNumber(const Variant& value) {
  const std::string text = Trim(value.Text());
  std::size_t digits = 0;
  while (digits < text.size() && text[digits] >= '0' && text[digits] <= '9') ++digits;
  if (digits == 0 || digits != text.size() || digits > 12) {
    throw Error(ErrorKind::Input, "Tax Period: '" + text + "' is not the number of a tax period.");
  }
  return std::stoll(text);
}

// The limit a query puts on its dates: "<=" the last day, or "<" the day after it.
std::string TaxDateLimit(bool before_next_day, const Date& date_to) {
  return before_next_day ? "<" + Database::SQLDate(date_to.DateOnly().AddDays(1))
                         : "<=" + Database::SQLDate(date_to.DateOnly());
}

// Which queries limit their dates by "<" the next day (the rest by "<=" the last day).
bool TaxBeforeNextDay(TaxForm form, TaxSide side, bool cash) {
  if (form == TaxForm::BAS) return !(side == TaxSide::Output && !cash);
  return side == TaxSide::Input && cash;
}

Currency TaxMoney(const Variant& v) {
  return v.IsNull() || v.IsEmpty() ? Currency() : v.ToCurrency();
}

struct TaxGroupingRule {
  const char* name;
  const char* field;
  const char* filter_parameter;
  const char* label;
};

constexpr TaxGroupingRule kTaxGroupings[] = {
    {"Branch", "BranchId", "Branches", "Branch"},
    {"Department", "DeptId", "Departments", "Department"},
};

}  // namespace

std::optional<TaxPeriodFacts> ReadTaxPeriodFacts(Database& database, const Tax& tax,
                                                 const Variant& tax_period_id) {
  TaxPeriodFacts facts;
  if (!BlankPeriod(tax_period_id)) {
    const std::int64_t id = TaxPeriodNumber(tax_period_id);
    auto rs = database.Query("SELECT * FROM TaxPeriod WHERE TaxPeriodId=" + std::to_string(id));
    if (rs->Eof()) return std::nullopt;
    facts.TaxPeriodId = id;
    facts.Rate = rs->Value("Rate").IsNull() ? 0 : rs->Value("Rate").ToDouble();
    facts.DateFrom = rs->Value("DateFrom").ToDate().DateOnly();
    facts.DateTo = rs->Value("DateTo").ToDate().DateOnly();
    facts.BasisOutput = Trim(rs->Value("BasisOutput").Text());
    facts.BasisInput = Trim(rs->Value("BasisInput").Text());
    facts.Months = (facts.DateTo.Year() * 12 + facts.DateTo.Month()) -
                   (facts.DateFrom.Year() * 12 + facts.DateFrom.Month()) + 1;
    return facts;
  }
  const std::optional<Date> start = tax.PeriodStart();
  if (!start) {
    throw NoOpenTaxPeriod(
        "No tax period was chosen and the company's tax settings keep no open period: set "
        "Tax/PeriodStart, the first day of the period now open, or choose a filed period.");
  }
  facts.Rate = tax.Rate();
  facts.DateFrom = start->DateOnly();
  facts.Months = tax.PeriodMonths();
  facts.DateTo = facts.DateFrom.FirstOfMonth().AddMonths(facts.Months).AddDays(-1);
  facts.BasisOutput = Trim(tax.BasisOutput());
  facts.BasisInput = Trim(tax.BasisInput());
  return facts;
}

double TaxDivisor(double rate, Rounder& rounder) {
  return rounder.Round(Variant((rate + 100) / rate), 4).ToDouble();
}

std::string TaxBasisText(const TaxPeriodFacts& facts, const std::string& separator) {
  if (EqualsIgnoreCase(facts.BasisOutput, facts.BasisInput)) return facts.BasisOutput + " Basis";
  return "Output " + facts.BasisOutput + " Basis" + separator + "Input " + facts.BasisInput +
         " Basis";
}

bool CashBasis(const std::string& basis) {
  return EqualsIgnoreCase(basis, "Payments") || EqualsIgnoreCase(basis, "Cash");
}

bool ExemptBasis(const std::string& basis) { return EqualsIgnoreCase(basis, "Exempt"); }

std::string TaxSideSQL(TaxForm form, TaxSide side, const TaxPeriodFacts& facts,
                       const std::string& group_filter) {
  const bool output = side == TaxSide::Output;
  const bool cash = CashBasis(output ? facts.BasisOutput : facts.BasisInput);
  const std::string io = output ? "'O'" : "'I'";
  const std::string limit = TaxDateLimit(TaxBeforeNextDay(form, side, cash), facts.DateTo);
  std::string sql;
  if (cash) {
    sql =
        "SELECT glTransaction.glBankTransactionId,glTransaction.TaxCategory,"
        "glTransaction.CashTaxCategory,glTransaction.Value,glTransaction.TaxValue,"
        "glTransaction.CashTaxValue FROM glBankTransaction RIGHT JOIN glTransaction ON "
        "glBankTransaction.glBankTransactionId = glTransaction.glBankTransactionId";
    sql += " WHERE glTransaction.TaxIO=" + io + " AND glTransaction." +
           (form == TaxForm::GST101 ? "CashTaxCategory" : "TaxCategory") + "<>'*'";
    if (facts.TaxPeriodId) {
      sql += " AND TaxPeriodId=" + std::to_string(*facts.TaxPeriodId);
    } else {
      sql += " AND TaxPeriodId IS Null AND ((glTransaction.Date" + limit +
             " AND glTransaction.glBankTransactionId IS Null) OR glBankTransaction.Date" + limit +
             ")";
    }
    if (!group_filter.empty()) sql += " AND " + group_filter;
    return sql;
  }
  const std::string prefix = output ? "" : "glTransaction.";
  sql = "SELECT " + prefix + "TaxCategory,Sum(" + prefix + "Value) AS SumOfValue,Sum(" + prefix +
        "TaxValue) AS SumOfTaxValue FROM glTransaction WHERE " + prefix + "TaxIO=" + io;
  if (facts.TaxPeriodId) {
    sql += " AND " + prefix + "TaxPeriodId=" + std::to_string(*facts.TaxPeriodId);
  } else {
    sql += " AND " + prefix + "TaxPeriodId IS Null AND " + prefix + "Date" + limit;
  }
  if (!group_filter.empty()) sql += " AND " + group_filter;
  sql += " GROUP BY " + prefix + "TaxCategory HAVING " + prefix + "TaxCategory<>'*'";
  return sql;
}

std::vector<TaxAmount> ReadTaxSide(Database& database, TaxForm form, TaxSide side,
                                   const TaxPeriodFacts& facts, const std::string& group_filter) {
  std::vector<TaxAmount> rows;
  const std::string& basis = side == TaxSide::Output ? facts.BasisOutput : facts.BasisInput;
  if (ExemptBasis(basis)) return rows;
  const bool cash = CashBasis(basis);
  auto rs = database.Query(TaxSideSQL(form, side, facts, group_filter));
  for (; !rs->Eof(); rs->MoveNext()) {
    TaxAmount row;
    if (cash) {
      row.Category = Trim(rs->Value("CashTaxCategory").Text());
      row.Tax = TaxMoney(rs->Value("CashTaxValue"));
      row.Value = TaxMoney(rs->Value("Value")) + TaxMoney(rs->Value("TaxValue")) - row.Tax;
    } else {
      row.Category = Trim(rs->Value("TaxCategory").Text());
      row.Tax = TaxMoney(rs->Value("SumOfTaxValue"));
      row.Value = TaxMoney(rs->Value("SumOfValue"));
    }
    rows.push_back(std::move(row));
  }
  return rows;
}

TaxGroups ReadTaxGroups(Database& database, const Parameters& parameters) {
  TaxGroups groups;
  std::vector<std::string> names;
  std::vector<bool> page_breaks;
  std::vector<const TaxGroupingRule*> rules;
  if (SplitGroupings(parameters.Value("Groupings", Variant()), names, page_breaks)) {
    for (const std::string& name : names) {
      for (const TaxGroupingRule& rule : kTaxGroupings) {
        if (EqualsIgnoreCase(rule.name, Trim(name))) rules.push_back(&rule);
      }
    }
  }
  if (rules.empty()) {
    groups.Groups.push_back({});
    return groups;
  }
  std::string fields;
  for (const TaxGroupingRule* rule : rules)
    fields += std::string(fields.empty() ? "" : ",") + rule->field;
  std::string where;
  std::string description;
  AppendListParameterCondition(where, "BranchId", "Branches", parameters, description, kRangeText);
  AppendListParameterCondition(where, "DeptId", "Departments", parameters, description, kRangeText);
  groups.SQL = "SELECT " + fields + " FROM glTransaction" +
               (where.empty() ? "" : " WHERE " + where) + " GROUP BY " + fields + " ORDER BY " +
               fields;
  groups.Levels = static_cast<int>(rules.size());
  auto rs = database.Query(groups.SQL);
  for (; !rs->Eof(); rs->MoveNext()) {
    TaxGroup group;
    group.Labels.resize(rules.size());
    std::string filter;
    for (std::size_t i = 0; i < rules.size(); ++i) {
      const TaxGroupingRule& rule = *rules[i];
      const Variant& v = rs->Value(rule.field);
      std::string condition;
      std::string shown;
      if (v.IsNull()) {
        condition = "(" + std::string(rule.field) + " Is Null)";
        shown = "(none)";
      } else if (v.Text().empty()) {
        condition = "(" + std::string(rule.field) + "='')";
        shown = "(blank)";
      } else {
        condition = std::string(rule.field) + "='" + Replace(v.Text(), "'", "''") + "'";
        shown = v.Text();
      }
      filter += (filter.empty() ? "" : " AND ") + condition;
      // The first grouping is the outermost, the highest level.
      group.Labels[rules.size() - 1 - i] = std::string(rule.label) + ": " + shown;
    }
    group.Filter = std::move(filter);
    groups.Groups.push_back(std::move(group));
  }
  return groups;
}

void SetTaxControl(const ActiveReport& report, const std::string& name, const Variant& value) {
  if (Control* control = report.FindControl(name)) control->SetDataValue(value);
}

void ShowTaxControls(const ActiveReport& report, const std::vector<std::string>& names,
                     bool visible) {
  for (const std::string& name : names) {
    if (Control* control = report.FindControl(name)) control->SetVisible(visible);
  }
}

void AddTaxPeriodParameter(Parameters& parameters) {
  parameters
      .AddSQLList("TaxPeriod", Variant(), true, "", Variant(), kTaxPeriodListSQL, "TaxPeriodId",
                  false, "Tax Period")
      ->Help =
      "A filed period by its number; left blank, the period now open in the company's tax "
      "settings (its lines not yet filed, to its last day).";
}

}  // namespace trellin
