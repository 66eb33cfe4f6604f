// The stock status: parameters, columns, the query, the worked fields and the footers' ratios.

#include "reports/stock/arscStatusReport.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/TrellinReports.h"
#include "core/kvReportUtilities.h"

namespace trellin {

namespace {

constexpr const char* kGroupings = "Item Type,Item Category,Location,Supplier,Shelf,SerialNumber";

constexpr StockFilter kFilters[] = {
    {"Item.ItemId", "Items"},
    {"TransactionLine.LocationId", "Locations"},
    {"Item.ItemCategoryId", "ItemCategories"},
    {"Item.ItemTypeId", "ItemTypes"},
    {"Item.SupplierId", "Suppliers"},
    {"ItemLocation.Shelf", "Shelf"},
    {"TransactionLine.SerialNumber", "SerialNumber"},
};

// A shelf means nothing without its location, so the location comes into the query with it.
constexpr StockGrouping kOwnGroupings[] = {
    {"SerialNumber", "SerialNumber", "", "SerialNumber", ""},
    {"Shelf", "ItemLocation.Shelf",
     "SELECT DISTINCT Shelf,'' AS Description FROM ItemLocation WHERE Not Shelf Is Null", "Shelf",
     "TransactionLine.LocationId"},
    {"Supplier", "Item.SupplierId", "SELECT OtherPartyId,Name FROM OtherParty", "SupplierId", ""},
};

// The columns in order.
constexpr StockColumn kColumns[] = {
    {"Code", "ItemId", "Code", "", kColumnCode, 0, false},
    {"Description", "Description", "Description", "", kColumnText, -1, false},
    {"PLU", "PLU", "PLU", "", kColumnText, 800, true},
    {"SerialNumber", "SerialNumber", "Serial #", "", kColumnText, 1100, true},
    {"QuantityOnHand", "QOH", "Quantity On Hand", "Qty OH", kColumnNumber, 1300, false},
    {"UnitCost", "UnitCost", "Unit Cost", "", kColumnMoney, 1300, false},
    {"ValueOnHand", "VOH", "Value On Hand", "Value OH", kColumnMoney, 1700, false},
    {"CurrentCost", "CCost", "@ C.Cost", "", kColumnMoney, 1700, false},
    {"CurrentSell", "CSell", "@ C.Sell", "", kColumnMoney, 1700, false},
    {"Margin", "Margin", "Margin", "", kColumnNumber, 800, false},
};

constexpr const char* kMarginFormat = "#,##0.00;(#,##0.00)";

Currency Times(Currency amount, double quantity) {
  return Currency::FromDouble(amount.ToDouble() * quantity);
}

double Ratio(Currency numerator, Currency denominator) {
  return numerator.ToDouble() / denominator.ToDouble();
}

}  // namespace

StatusFigures WorkStatusFigures(double quantity, Currency value, Currency cost_price,
                                const std::string& cost_tax, Currency sell_price,
                                const std::string& sell_tax) {
  StatusFigures f;
  if (quantity == 0) return f;
  const Tax& tax = TrellinReportGlobals::RequireApplication().Tax();
  Currency cost = cost_price;
  if (!cost_tax.empty() && tax.TaxCategory(cost_tax)) cost -= tax.TaxInclusive(cost, cost_tax);
  f.unit_cost = Currency::FromDouble(value.ToDouble() / quantity);
  f.current_cost = Times(cost, quantity);
  f.current_sell = Times(sell_price, quantity);
  if (!sell_tax.empty() && tax.TaxCategory(sell_tax)) {
    f.current_sell -= tax.TaxInclusive(f.current_sell, sell_tax);
  }
  f.margin = f.current_sell.Raw() != 0 ? (1 - Ratio(value, f.current_sell)) * 100 : 0;
  return f;
}

DesignerPtr CreatearscStatusReport() { return std::make_shared<arscStatusReport>(); }

void arscStatusReport::RefreshParameters(std::string&) {
  TLReport()->SetHasParameters(true);
  TLReport()->DataColumns().SetEnabled(true);
  trellin::Parameters& p = TLReport()->Parameters();
  p.AddList("OrderBy", "Code", true, "", "Code", "Code,Name,PLU", false, "Order By");
  p.AddBoolean("Summary", false, false, "", false, false, "Summary");
  CreateStandardParameter(17, p, true);
  const Date current =
      TrellinReportGlobals::RequireApplication().FinancialCalendar().CurrentDateAR(true);
  p.AddDate("DateAsAt", current, true, "Date As At", "ARCURRENT", false, "Date As At");
  p.AddBoolean("IncludeZeroOnHand", false, false, "", false, false, "Include Zero On Hand");
  p.AddBoolean("ExcludeInactiveItems", false, false, "", false, false, "Exclude Inactive Items");
  AddBoundParameters(p);
  p.AddMultiList("Groupings", Variant(), false, "", Variant(), kGroupings, false, false,
                 "Groupings");
  for (long index : {23L, 16L, 20L, 33L, 31L, 30L}) CreateStandardParameter(index, p, false);
  TrellinReportGlobals::RequireApplication().AddUserDefinedParametersItem(p, false);
}

void arscStatusReport::RefreshDataColumns() {
  DataColumns& columns = TLReport()->DataColumns();
  const std::string quantity_format = QuantityFormat();
  for (const StockColumn& c : kColumns) {
    std::string format = "(auto)";
    if (c.data_type == kColumnNumber) format = quantity_format;
    if (std::string_view(c.name) == "UnitCost") format = quantity_format;
    if (std::string_view(c.name) == "Margin") format = kMarginFormat;
    AddColumn(columns, c, format, c.data_type == kColumnNumber || c.data_type == kColumnMoney);
  }
}

void arscStatusReport::BuildSQL() {
  trellin::Parameters& p = TLReport()->Parameters();
  DataColumns& columns = TLReport()->DataColumns();
  summary_ = p.Value("Summary", false).ToBool();
  const std::string decimals = std::to_string(QuantityDecimals());
  const std::string quantity_sum = "ROUND(Sum(TransactionLine.Quantity)," + decimals + ")";
  std::string fields =
      "Item.ItemId,Item.Description,Item.PLU,Item.CostPrice,Item.CostTaxType,Item.SellPrice1,"
      "Item.SellTaxType1";
  description_.clear();
  const std::string order_by = p.Value("OrderBy", "Code").Text();
  const Variant as_at = p.Value("DateAsAt", Variant());
  if (!DateGiven(as_at)) throw std::invalid_argument("Date As At: the report needs a date.");
  AppendDescription(description_, "Items ordered by " + order_by);
  AppendDescription(description_, "Dated As At " + DateText(as_at));

  std::string where;
  AddFilters(kFilters, where, description_);
  AppendSQLCondition(where, "(DateProcess<" +
                                Database::SQLDate(as_at.ToDate().DateOnly().AddDays(1)) +
                                " OR DateProcess Is Null)");
  AppendSQLCondition(where, "Item.Inventory<>0");
  if (p.Value("ExcludeInactiveItems", false).ToBool()) {
    AppendSQLCondition(where, "(Item.Active=" + Database::SQLBoolean(true) + ")");
    AppendDescription(description_, "Exclude Inactive Items");
  }

  std::string order = "Item.ItemId";
  if (order_by == "PLU") {
    order = "Item.PLU";
    columns.Item("PLU").Hidden = false;
  } else if (order_by == "Name") {
    order = "Item.Description";
  }

  const std::vector<ChosenGrouping> groupings = ChosenGroupings(kOwnGroupings, "TransactionLine");
  for (const ChosenGrouping& g : groupings) {
    if (g.name == "SerialNumber") columns.Item("SerialNumber").Hidden = false;
    if (!g.also_field.empty()) MoveInCommaList(fields, g.also_field, false, false);
    MoveInCommaList(fields, g.field, false, false);
    MoveInCommaList(order, g.field, true, true);
  }
  DefineGroups(groupings);

  std::string having;
  if (p.Value("IncludeZeroOnHand", false).ToBool()) {
    AppendDescription(description_, "Include Stock with zero on hand");
  } else {
    AppendDescription(description_, "Exclude Stock with zero on hand");
    AppendSQLCondition(having, "(" + quantity_sum + "<>0 OR ROUND(Sum(TransactionLine.ItemCost)," +
                                   std::to_string(ValueDecimals()) + ")<>0)");
  }
  AddNumberRange(having, quantity_sum, "QuantityOnHandFrom", "QuantityOnHandTo", "Quantity On Hand",
                 description_, QuantityFormat());
  AddNumberRange(having,
                 "ROUND(Sum(TransactionLine.ItemCost)," + std::to_string(ValueDecimals()) + ")",
                 "ValueOnHandFrom", "ValueOnHandTo", "Value On Hand", description_,
                 TrellinReportGlobals::RequireBusinessLayer().CurrencyFormat(0));

  sql_ = "SELECT " + fields + "," + quantity_sum + " AS QuantityOnHand" +
         ",Sum(TransactionLine.ItemCost) AS ValueOnHand" +
         " FROM (Item LEFT JOIN TransactionLine ON Item.ItemId = TransactionLine.ItemId) LEFT "
         "JOIN ItemLocation ON (TransactionLine.LocationId = ItemLocation.LocationId) AND "
         "(TransactionLine.ItemId = ItemLocation.ItemId)" +
         " WHERE " + where + " GROUP BY " + fields;
  if (!having.empty()) sql_ += " HAVING " + having;
  sql_ += " ORDER BY " + order;
}

void arscStatusReport::ActiveReport_ReportStart() {
  if (TLReport()->DataColumns().Count() == 0) RefreshDataColumns();
  BuildSQL();
  LayOutColumns(summary_, description_);
  DataControl().SetSource(sql_);
}

void arscStatusReport::ActiveReport_DataInitialize() {
  for (const char* name : {"QOH", "VOH", "UnitCost", "CCost", "CSell", "Margin"}) {
    Fields().Add(name);
  }
}

void arscStatusReport::ActiveReport_FetchData(bool& eof) {
  if (eof) return;
  const auto value = [&](const char* name) {
    const ReportField* field = Fields().Find(name);
    return field == nullptr ? Variant::Null() : field->Value();
  };
  const auto text = [&](const char* name) {
    const Variant v = value(name);
    return v.IsNull() ? std::string() : Trim(v.Text());
  };
  const Variant q = value("QuantityOnHand");
  const Variant v = value("ValueOnHand");
  const double quantity = q.IsNull() ? 0.0 : q.ToDouble();
  const Currency on_hand = v.IsNull() ? Currency() : v.ToCurrency();
  const Variant cost = value("CostPrice");
  const Variant sell = value("SellPrice1");
  const StatusFigures f = WorkStatusFigures(
      quantity, on_hand, cost.IsNull() ? Currency() : cost.ToCurrency(), text("CostTaxType"),
      sell.IsNull() ? Currency() : sell.ToCurrency(), text("SellTaxType1"));
  Fields()["QOH"].SetValue(quantity);
  Fields()["VOH"].SetValue(on_hand);
  Fields()["UnitCost"].SetValue(f.unit_cost);
  Fields()["CCost"].SetValue(f.current_cost);
  Fields()["CSell"].SetValue(f.current_sell);
  Fields()["Margin"].SetValue(f.margin);
}

void arscStatusReport::Detail_Format() {
  const auto& rs = DataControl().Recordset();
  if (!rs || rs->Eof()) return;
  if (TLReport()->ColumnsInUse()) TLReport()->DataColumns().FillRow(Fields(), "");
  if (summary_) return;
  Section& detail = Sections()["Detail"];
  detail.SetBackStyle(1 - detail.BackStyle());
}

void arscStatusReport::FooterFormat(Section& section) {
  if (!section.Visible()) return;
  auto total = [&](const char* column) {
    return section.Controls().Find(section.Name() + "Summary" + column);
  };
  const auto money = [](const Control* c) {
    return c == nullptr || c->DataValue().IsNull() || c->DataValue().IsEmpty()
               ? Currency()
               : c->DataValue().ToCurrency();
  };
  const Control* quantity = total("QuantityOnHand");
  const Currency value = money(total("ValueOnHand"));
  const Currency sell = money(total("CurrentSell"));
  const double q = quantity == nullptr || quantity->DataValue().IsNull()
                       ? 0.0
                       : quantity->DataValue().ToDouble();
  if (Control* unit = total("UnitCost")) {
    if (q == 0) {
      unit->SetText(" ");
    } else {
      unit->SetDataValue(Currency::FromDouble(value.ToDouble() / q));
    }
  }
  if (Control* margin = total("Margin")) {
    if (sell.Raw() != 0) {
      margin->SetDataValue((1 - Ratio(value, sell)) * 100);
    } else {
      margin->SetText(" ");
    }
  }
}

void arscStatusReport::ActiveReport_ReportEnd() { DataControl().SetRecordset(nullptr); }

}  // namespace trellin
