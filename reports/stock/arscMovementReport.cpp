// The stock movement: parameters, columns, the query and each row's two queries.

#include "reports/stock/arscMovementReport.h"

#include <limits>
#include <stdexcept>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/TrellinReports.h"
#include "core/kvReportUtilities.h"

namespace trellin {

namespace {

constexpr const char* kStockMovementGroupings =
    "Department,Item Type,Item Category,Location,Supplier";

// The line types by range, read top down: the first row that holds a type places it.
struct TypeRange {
  std::int64_t from, to;
  MovementColumn column;
  int sign;
};
constexpr TypeRange kTypeRanges[] = {
    {18, 18, MovementColumn::Inwards, 1},  // a carrying cost adds to what came in
    {std::numeric_limits<std::int64_t>::min(), 19, MovementColumn::Adjustments, 1},
    {20, 29, MovementColumn::Inwards, 1},
    {30, std::numeric_limits<std::int64_t>::max(), MovementColumn::Outwards, -1},
};

// Filters on the item, and those on the stock lines, which the row queries repeat.
constexpr StockFilter kMovementItemFilters[] = {
    {"Item.ItemId", "Items"},
    {"Item.ItemCategoryId", "ItemCategories"},
    {"Item.ItemTypeId", "ItemTypes"},
    {"Item.SupplierId", "Suppliers"},
};
constexpr StockFilter kMovementLineFilters[] = {
    {"TransactionLine.LocationId", "Locations"},
    {"TransactionLine.DeptId", "Departments"},
};

constexpr StockGrouping kMovementOwnGroupings[] = {
    {"Supplier", "Item.SupplierId", "SELECT OtherPartyId AS SupplierId,Name FROM OtherParty",
     "SupplierId", ""},
};

constexpr StockColumn kMovementColumns[] = {
    {"Code", "ItemId", "Code", "", kColumnCode, 0, false},
    {"Description", "Description", "Description", "", kColumnText, -1, false},
    {"Opening", "Opening", "Opening", "", kColumnMoney, 1700, false},
    {"Inwards", "Inwards", "Inwards", "", kColumnMoney, 1700, false},
    {"Outwards", "Outwards", "Outwards", "", kColumnMoney, 1700, false},
    {"Adjustments", "Adjustments", "Adjustments", "Adjust", kColumnMoney, 1700, false},
    {"Closing", "Closing", "Closing", "", kColumnMoney, 1700, false},
};

constexpr const char* kFigureFields[] = {"Opening", "Inwards", "Outwards", "Adjustments",
                                         "Closing"};

bool IsDay(const Variant& v) { return v.IsDate(); }

}  // namespace

MovementPlace MovementPlaceOfType(std::int64_t type) {
  for (const TypeRange& r : kTypeRanges) {
    if (type >= r.from && type <= r.to) return {r.column, r.sign};
  }
  return {MovementColumn::Adjustments, 1};
}

void MovementFigures::Add(std::int64_t type, Currency sum) {
  const MovementPlace place = MovementPlaceOfType(type);
  const Currency signed_sum = place.sign < 0 ? Currency() - sum : sum;
  switch (place.column) {
    case MovementColumn::Inwards:
      Inwards += signed_sum;
      break;
    case MovementColumn::Outwards:
      Outwards += signed_sum;
      break;
    case MovementColumn::Adjustments:
      Adjustments += signed_sum;
      break;
  }
}

DesignerPtr CreatearscMovementReport() { return std::make_shared<arscMovementReport>(); }

void arscMovementReport::RefreshParameters(std::string&) {
  TLReport()->SetHasParameters(true);
  TLReport()->DataColumns().SetEnabled(true);
  trellin::Parameters& p = TLReport()->Parameters();
  p.AddList("OrderBy", "Code", true, "", "Code", "Code,Name", false, "Order By");
  p.AddBoolean("Summary", false, false, "", false, false, "Summary");
  p.AddList("Period", "MTD", true, "", "MTD", "ALL,MTD,QTD,YTD,Custom", false, "Period")->Help =
      "ALL: every line, with no opening. MTD, QTD, YTD: the month, the quarter of the financial "
      "year or the financial year to Period Date To. Custom: the dates as given.";
  // The first date follows the period (the host's dialogue works it out from the last).
  p.AddDate("PeriodDateFrom", Variant(), true, "", Variant(), false, "Period Date From");
  p.AddDate("PeriodDateTo", Variant(), true, "", "GLCURRENT", false, "Period Date To")->Help =
      "Left blank, the general ledger's current date.";
  p.AddBoolean("ShowQuantity", false, false, "", false, false, "Show Quantity");
  p.AddBoolean("IncludeZeroMovement", false, false, "", false, false, "Include Zero Movement");
  p.AddMultiList("Groupings", Variant(), false, "", Variant(), kStockMovementGroupings, false,
                 false, "Groupings");
  for (long index : {17L, 23L, 14L, 16L, 20L, 33L}) {
    CreateStandardParameter(index, p, index == 17L);
  }
  TrellinReportGlobals::RequireApplication().AddUserDefinedParametersItem(p, false);
}

void arscMovementReport::RefreshDataColumns() {
  DataColumns& columns = TLReport()->DataColumns();
  for (const StockColumn& c : kMovementColumns) {
    AddColumn(columns, c, "(auto)", c.data_type == kColumnMoney);
  }
}

void arscMovementReport::BuildSQL() {
  trellin::Parameters& p = TLReport()->Parameters();
  DataColumns& columns = TLReport()->DataColumns();
  summary_ = p.Value("Summary", false).ToBool();
  quantity_ = p.Value("ShowQuantity", false).ToBool();
  const bool include_zero = p.Value("IncludeZeroMovement", false).ToBool();
  const std::string period = p.Value("Period", "MTD").Text();
  all_time_ = EqualsIgnoreCase(period, "ALL");
  date_from_ = date_to_ = Variant::Null();
  if (!all_time_) {
    const Variant from = p.Value("PeriodDateFrom", Variant());
    const Variant to = p.Value("PeriodDateTo", Variant());
    if (IsDay(from)) date_from_ = Variant(from.ToDate().DateOnly());
    date_to_ = IsDay(to) ? Variant(to.ToDate().DateOnly())
                         : Variant(TrellinReportGlobals::RequireApplication()
                                       .FinancialCalendar()
                                       .CurrentDateGL(true)
                                       .DateOnly());
    if (IsDay(date_from_) && date_from_.ToDate() > date_to_.ToDate()) {
      throw std::invalid_argument("Period Date From: " + DateText(date_from_) +
                                  " is after Period Date To, " + DateText(date_to_) + ".");
    }
  }

  description_.clear();
  const std::string order_by = p.Value("OrderBy", "Code").Text();
  AppendDescription(description_, "Items ordered by " + order_by);
  AppendDescription(
      description_,
      "Period Covered " + period +
          (all_time_ ? std::string() : " " + DateText(date_from_) + " to " + DateText(date_to_)));
  AppendDescription(description_, quantity_ ? "Include quantity values" : "Include dollar values");
  if (include_zero) AppendDescription(description_, "Stock with no movement included");

  std::string where;
  std::string lines;
  AddFilters(kMovementItemFilters, where, description_);
  for (const StockFilter& f : kMovementLineFilters) {
    AppendListParameterCondition(lines, f.field, f.parameter, p, description_, kRangeText);
  }
  line_filter_ = lines.empty() ? std::string() : " AND " + lines;
  AppendSQLCondition(where, lines);
  TrellinReports& reports = TrellinReportGlobals::RequireTrellinReports();
  reports.AppendSQLWhereFromDateRange(where, "TransactionLine.DateProcess",
                                      include_zero ? Variant::Null() : date_from_, date_to_);
  AppendSQLCondition(where, "Item.Inventory<>0");

  std::string fields = "Item.ItemId,Item.Description";
  std::string order = order_by == "Name" ? "Item.Description" : "Item.ItemId";
  by_location_ = by_department_ = false;
  const std::vector<ChosenGrouping> groupings =
      ChosenGroupings(kMovementOwnGroupings, "TransactionLine");
  for (const ChosenGrouping& g : groupings) {
    if (EqualsIgnoreCase(g.key_field, "LocationId")) by_location_ = true;
    if (EqualsIgnoreCase(g.key_field, "DeptId")) by_department_ = true;
    MoveInCommaList(fields, g.field, false, false);
    MoveInCommaList(order, g.field, true, true);
  }
  DefineGroups(groupings);

  if (quantity_) {
    for (const char* name : kFigureFields) columns.Item(name).Format = QuantityFormat();
  }
  sql_ = "SELECT " + fields +
         (include_zero ? ", Sum(TransactionLine.Quantity) AS Total FROM Item Left JOIN "
                         "TransactionLine ON Item.ItemId=TransactionLine.ItemId"
                       : " FROM Item INNER JOIN TransactionLine ON "
                         "Item.ItemId=TransactionLine.ItemId") +
         " WHERE " + where + " GROUP BY " + fields + " ORDER BY " + order;
}

void arscMovementReport::ActiveReport_ReportStart() {
  if (TLReport()->DataColumns().Count() == 0) RefreshDataColumns();
  BuildSQL();
  LayOutColumns(summary_, description_);
  DataControl().SetSource(sql_);
}

void arscMovementReport::ActiveReport_DataInitialize() {
  for (const char* name : kFigureFields) Fields().Add(name);
}

MovementFigures arscMovementReport::RowFigures() {
  const auto value = [&](const char* name) {
    const ReportField* field = Fields().Find(name);
    return field == nullptr ? Variant::Null() : field->Value();
  };
  // A grouped row counts only the lines of its own location or department.
  std::string local =
      " WHERE TransactionLine.ItemId=" + Database::SQLString(value("ItemId").Text());
  const auto keep_to = [&](bool grouped, const char* field) {
    if (!grouped) return;
    const Variant v = value(field);
    local += v.IsNull() ? std::string(" AND TransactionLine.") + field + " Is Null"
                        : std::string(" AND TransactionLine.") + field + "=" +
                              Database::SQLString(v.Text());
  };
  keep_to(by_location_, "LocationId");
  keep_to(by_department_, "DeptId");
  local += line_filter_;
  const std::string sum = quantity_ ? "Sum(TransactionLine.Quantity) AS SumOfValue"
                                    : "Sum(TransactionLine.ItemCost) AS SumOfValue";
  const auto as_money = [](const Variant& v) { return v.IsNull() ? Currency() : v.ToCurrency(); };
  Database& database = *TrellinReportGlobals::RequireDatabase();
  MovementFigures f;
  if (!all_time_ && IsDay(date_from_)) {
    auto opening = database.Query(
        "SELECT " + sum + " FROM TransactionLine" + local + " AND TransactionLine.DateProcess<" +
        Database::SQLDate(date_from_.ToDate()) + " GROUP BY TransactionLine.ItemId");
    if (!opening->Eof()) f.Opening = as_money(opening->Value(0));
  }
  std::string dated;
  if (IsDay(date_from_)) {
    dated += " AND TransactionLine.DateProcess>=" + Database::SQLDate(date_from_.ToDate());
  }
  if (IsDay(date_to_)) {
    dated += " AND TransactionLine.DateProcess<" + Database::SQLDate(date_to_.ToDate().AddDays(1));
  }
  auto moved = database.Query("SELECT TransactionLine.Type," + sum + " FROM TransactionLine" +
                              local + dated + " GROUP BY TransactionLine.Type");
  for (; !moved->Eof(); moved->MoveNext()) {
    if (moved->Value(0).IsNull()) continue;
    f.Add(moved->Value(0).ToLong(), as_money(moved->Value(1)));
  }
  return f;
}

void arscMovementReport::ActiveReport_FetchData(bool& eof) {
  if (eof) return;
  const MovementFigures f = RowFigures();
  const Currency figures[] = {f.Opening, f.Inwards, f.Outwards, f.Adjustments, f.Closing()};
  for (std::size_t i = 0; i < std::size(kFigureFields); ++i) {
    if (quantity_) {
      Fields()[kFigureFields[i]].SetValue(figures[i].ToDouble());
    } else {
      Fields()[kFigureFields[i]].SetValue(figures[i]);
    }
  }
}

void arscMovementReport::Detail_Format() {
  const auto& rs = DataControl().Recordset();
  if (!rs || rs->Eof()) return;
  if (TLReport()->ColumnsInUse()) TLReport()->DataColumns().FillRow(Fields(), "");
  if (summary_) return;
  Section& detail = Sections()["Detail"];
  detail.SetBackStyle(1 - detail.BackStyle());
}

void arscMovementReport::ActiveReport_ReportEnd() { DataControl().SetRecordset(nullptr); }

}  // namespace trellin
