// The account matrix: its key, its columns made from the branches or departments, and its
// figures read once.

#include "reports/ledger/arAccountMatrix.h"

#include <algorithm>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"
#include "reports/ReportShapes.h"
#include "reports/ledger/LedgerLists.h"

namespace trellin {

namespace {

constexpr ListOrder kMatrixOrders[] = {{"Code", "Account.AccountId"}};

constexpr ListChoice kMatrixAcross[] = {{"Branch"}, {"Department"}};
constexpr ListChoice kMatrixBasis[] = {{"Movement"}, {"Balance", "", "Balances at the last date"}};
constexpr ListChoice kMatrixRounding[] = {
    {"Normal"}, {"Whole"}, {"Thousands", "", "Figures shown in thousands"}};

// The dates bound the figures, not which accounts are listed.
constexpr ListParameter kMatrixParameters[] = {
    {.kind = ListParameterKind::Standard,
     .field = "Account.AccountId",
     .index = 0,
     .primary = true},
    DatedParameter(),
    {.kind = ListParameterKind::Choice,
     .name = "Across",
     .caption = "Across",
     .choices = kMatrixAcross},
    {.kind = ListParameterKind::Choice,
     .name = "Basis",
     .caption = "Basis",
     .choices = kMatrixBasis},
    {.kind = ListParameterKind::Option, .name = "IncludeZero", .caption = "Include Zero"},
    {.kind = ListParameterKind::Choice,
     .name = "Rounding",
     .caption = "Rounding",
     .choices = kMatrixRounding},
};

constexpr ListColumn kMatrixColumns[] = {
    {"Code", "AccountId", kColumnText, "Code", "", 900, false},
    {"Description", "Description", kColumnText, "Description", "", 2600, false},
};

constexpr ListKey kMatrixKeys[] = {{
    .key = "AccountMatrix",
    .base_sql = "SELECT Account.AccountId,Account.Description FROM Account",
    .base_where = "Account.Post Is Null",
    .orders = kMatrixOrders,
    .parameters = kMatrixParameters,
    .columns = kMatrixColumns,
}};

constexpr const char* kNoneField = "AcrossNone";
constexpr const char* kTotalField = "AcrossTotal";

}  // namespace

arAccountMatrix::arAccountMatrix()
    : ListDesigner("arAccountMatrix", kMatrixKeys, "Account Matrix") {}

DesignerPtr CreatearAccountMatrix() { return std::make_shared<arAccountMatrix>(); }

std::string arAccountMatrix::AcrossField() const {
  return TLReport()->Parameters().Value("Across", "Branch").Text() == "Department" ? "DeptId"
                                                                                   : "BranchId";
}

std::string arAccountMatrix::FieldFor(const std::string& code) const {
  for (std::size_t i = 0; i < codes_.size(); ++i) {
    if (EqualsIgnoreCase(codes_[i], code)) return "Across" + std::to_string(i + 1);
  }
  return kNoneField;
}

// Movement leaves the year-end lines out, as the statements' movement does; a balance is every
// line to the last date.
std::string arAccountMatrix::FigureWhere() const {
  const trellin::Parameters& p = TLReport()->Parameters();
  const bool balance = p.Value("Basis", "Movement").Text() == "Balance";
  std::string where;
  std::string ignored;
  AppendDateRangeCondition(where, "glTransaction.Date",
                           balance ? Variant::Null() : p.Value("DatedFrom", Variant::Null()),
                           p.Value("DatedTo", Variant::Null()), "", ignored);
  if (!balance) AppendSQLCondition(where, "glTransaction.Type Is Null");
  return where;
}

void arAccountMatrix::RefreshDataColumns() {
  ListDesigner::RefreshDataColumns();
  const std::string rounding = TLReport()->Parameters().Value("Rounding", "Normal").Text();
  const bool round = rounding == "Whole" || rounding == "Thousands";
  const bool departments = AcrossField() == "DeptId";
  auto rs = TrellinReportGlobals::RequireBusinessLayer().Database()->Query(
      departments ? "SELECT DeptId FROM Department ORDER BY DeptId"
                  : "SELECT BranchId FROM Branch ORDER BY BranchId");
  codes_.clear();
  for (; !rs->Eof(); rs->MoveNext()) codes_.push_back(rs->Value(0).Text());
  // A code the ledger holds that the master table lacks still gets its own column.
  for (const auto& [key, figure] : figures_) {
    if (!key.second.empty() && FieldFor(key.second) == kNoneField) codes_.push_back(key.second);
  }
  std::sort(codes_.begin(), codes_.end());
  DataColumns& columns = TLReport()->DataColumns();
  auto add = [&](const std::string& name, const std::string& caption) {
    DataColumn& column = columns.Add(name, name, kColumnMoney, caption, "", 1500, -1, -1, -1,
                                     round ? "Round" : "(auto)", 0, 0, "", true, "", true, false);
    column.Decimals = 0;
  };
  for (std::size_t i = 0; i < codes_.size(); ++i) {
    add("Across" + std::to_string(i + 1), codes_[i]);
  }
  add(kNoneField, "(none)");
  add(kTotalField, "Total");
}

std::string arAccountMatrix::ExtraCondition() {
  if (TLReport()->Parameters().Value("IncludeZero", false).ToBool()) return {};
  const std::string field = "glTransaction." + AcrossField();
  const std::string where = FigureWhere();
  return "Account.AccountId In (SELECT glTransaction.AccountId FROM glTransaction" +
         (where.empty() ? std::string() : " WHERE " + where) +
         " GROUP BY glTransaction.AccountId," + field + " HAVING Sum(glTransaction.Value)<>0)";
}

void arAccountMatrix::ActiveReport_ReportStart() {
  const trellin::Parameters& p = TLReport()->Parameters();
  divisor_ = p.Value("Rounding", "Normal").Text() == "Thousands" ? 1000 : 1;
  const std::string field = "glTransaction." + AcrossField();
  const std::string where = FigureWhere();
  const std::string sql = "SELECT glTransaction.AccountId," + field +
                          ",Sum(glTransaction.Value) AS Figure FROM glTransaction" +
                          (where.empty() ? std::string() : " WHERE " + where) +
                          " GROUP BY glTransaction.AccountId," + field;
  figures_.clear();
  auto rs = TrellinReportGlobals::RequireBusinessLayer().Database()->Query(sql);
  for (; !rs->Eof(); rs->MoveNext()) {
    figures_[{UCase(rs->Value(0).Text()), UCase(rs->Value(1).Text())}] = rs->Value(2).ToCurrency();
  }
  if (TLReport()->DataColumns().Count() == 0) RefreshDataColumns();
  ListDesigner::ActiveReport_ReportStart();
  // The money columns are made here, not in the key's row, and every one is totalled.
  if (Control* label = FindControl("rfLabel")) label->SetVisible(true);
}

void arAccountMatrix::ActiveReport_DataInitialize() {
  for (std::size_t i = 0; i < codes_.size(); ++i) Fields().Add("Across" + std::to_string(i + 1));
  Fields().Add(kNoneField);
  Fields().Add(kTotalField);
}

// A cell with no lines is blank; the total is the account's whole figure.
void arAccountMatrix::ActiveReport_FetchData(bool&) {
  const ReportField* account = Fields().Find("AccountId");
  const std::string id = account ? UCase(account->Value().Text()) : std::string();
  std::map<std::string, Currency> cells;
  Currency total;
  bool any = false;
  for (auto it = figures_.lower_bound({id, std::string()});
       it != figures_.end() && it->first.first == id; ++it) {
    cells[FieldFor(it->first.second)] += it->second;
    total += it->second;
    any = true;
  }
  auto shown = [&](Currency c) {
    return divisor_ == 1 ? Variant(c) : Variant(c.ToDouble() / divisor_);
  };
  for (std::size_t i = 0; i < codes_.size(); ++i) {
    const std::string name = "Across" + std::to_string(i + 1);
    auto found = cells.find(name);
    Fields().Add(name).SetValue(found == cells.end() ? Variant::Null() : shown(found->second));
  }
  auto none = cells.find(kNoneField);
  Fields().Add(kNoneField).SetValue(none == cells.end() ? Variant::Null() : shown(none->second));
  Fields().Add(kTotalField).SetValue(any ? shown(total) : Variant::Null());
}

}  // namespace trellin
