// The price list's key, row by row, and each item's prices with and without tax.

#include "reports/stock/arscItemPriceList.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/ReportShapes.h"
#include "reports/stock/StockLists.h"

namespace trellin {

namespace {

constexpr ListOrder kPriceOrders[] = {
    {"Code", "Item.ItemId"},
    {"Description", "Item.Description,Item.ItemId"},
};

constexpr ListChoice kPriceChoices[] = {
    {"Excluding tax", "", "Prices excluding tax"},
    {"Including tax", "", "Prices including tax"},
    {"Both", "", "Prices excluding and including tax"},
};

constexpr ListParameter kPriceParameters[] = {
    {.kind = ListParameterKind::Standard, .field = "Item.ItemId", .index = 18, .primary = true},
    {.kind = ListParameterKind::Standard, .field = "Item.ItemCategoryId", .index = 16},
    {.kind = ListParameterKind::Standard, .field = "Item.ItemTypeId", .index = 20},
    {.kind = ListParameterKind::Standard, .field = "Item.SupplierId", .index = 33},
    {.kind = ListParameterKind::Option,
     .name = "ExcludeInactiveItems",
     .caption = "Exclude Inactive Items",
     .condition = "Item.Active=True",
     .phrase = "Exclude Inactive Items",
     .checked = true},
    {.kind = ListParameterKind::Choice,
     .name = "Prices",
     .caption = "Prices",
     .primary = true,
     .choices = kPriceChoices},
    // CustomerTypes (row 13) follows, added by the designer: it picks prices, not items.
    {.kind = ListParameterKind::Option, .name = "ShowCost", .caption = "Show Cost"},
};

constexpr ListColumn kPriceColumns[] = {
    {"Code", "ItemId", kColumnCode, "Code", "", 1000, false},
    {"Description", "Description", kColumnText, "Description", "", -1, false},
    {"Unit", "Unit", kColumnText, "Unit", "", 700, false},
    {"Price", "PriceExclusive", kColumnMoney, "Price", "", 1300, false},
    {"PriceInc", "PriceInclusive", kColumnMoney, "Price Inc", "", 1300, false},
    {"Special", "SpecialPrice", kColumnMoney, "Special", "", 1300, true},
    {"Cost", "CostExclusive", kColumnMoney, "Cost", "", 1300, true},
    {"Margin", "MarginPercent", kColumnNumber, "Margin %", "", 1300, true, "0.00;-0.00"},
};

constexpr ListKey kPriceKeys[] = {{
    .key = "ItemPriceList",
    .base_sql = "SELECT Item.ItemId,Item.Description,Item.Unit,Item.CostPrice,Item.CostTaxType,"
                "Item.SellPrice1,Item.SellTaxType1 FROM Item",
    .orders = kPriceOrders,
    .parameters = kPriceParameters,
    .groupings = "Item Category",
    .grouping_table = "Item",
    .columns = kPriceColumns,
}};

// A price list adds nothing up.
constexpr std::string_view kPriceUntotalled[] = {"Price", "PriceInc", "Special", "Cost", "Margin"};

}  // namespace

arscItemPriceList::arscItemPriceList()
    : ListDesigner("arscItemPriceList", kPriceKeys, "Item Price List") {}

DesignerPtr CreatearscItemPriceList() { return std::make_shared<arscItemPriceList>(); }

void arscItemPriceList::RefreshParameters(std::string& ReportName) {
  ListDesigner::RefreshParameters(ReportName);
  trellin::Parameters& p = TLReport()->Parameters();
  CreateStandardParameter(13, p, false);
  AddStockDateAsAt(p);
  if (ParameterPtr groupings = p.Find("Groupings")) {
    groupings->Value = groupings->DefaultValue = Variant(std::string("Item Category"));
  }
}

void arscItemPriceList::RefreshDataColumns() {
  ListDesigner::RefreshDataColumns();
  FitStockColumns(TLReport()->DataColumns(), kPriceUntotalled);
}

void arscItemPriceList::ActiveReport_ReportStart() {
  trellin::Parameters& p = TLReport()->Parameters();
  DataColumns& columns = TLReport()->DataColumns();
  if (columns.Count() == 0) RefreshDataColumns();
  const std::string prices = p.Value("Prices", Variant()).Text();
  columns.Item("Price").Hidden = EqualsIgnoreCase(prices, "Including tax");
  columns.Item("PriceInc").Hidden =
      !EqualsIgnoreCase(prices, "Including tax") && !EqualsIgnoreCase(prices, "Both");
  const bool show_cost = p.Value("ShowCost", false).ToBool();
  columns.Item("Cost").Hidden = !show_cost;
  columns.Item("Margin").Hidden = !show_cost;
  // One customer type's special prices; with none or several picked there is no one price.
  const std::string type = Trim(p.Value("CustomerTypes", Variant()).Text());
  const bool one_type =
      !type.empty() && type.find_first_of(",.;") == std::string::npos && type != "*";
  columns.Item("Special").Hidden = !one_type;
  specials_.clear();
  const Date as_at = StockDateAsAt(p);
  if (one_type) {
    const std::string day = Database::SQLDate(as_at);
    auto rs = TrellinReportGlobals::RequireBusinessLayer().Database()->Query(
        "SELECT ItemId,Price,DiscountRate FROM SpecialPrice WHERE SType=3 AND FieldValue=" +
        Database::SQLString(type) + " AND (DateFrom Is Null OR DateFrom<=" + day +
        ") AND (DateTo Is Null OR DateTo>=" + day + ")");
    for (; !rs->Eof(); rs->MoveNext()) {
      const Variant rate = rs->Value(2);
      specials_[UCase(rs->Value(0).Text())] = {
          rs->Value(1), rate.IsNull() || rate.IsEmpty() ? 0 : rate.ToDouble()};
    }
  }
  // The type picks which special prices print, not which items: the list's query leaves it out
  // while it is built.
  const ParameterPtr types = p.Find("CustomerTypes");
  const Variant picked = types ? types->Value : Variant();
  if (types) types->Value = Variant();
  ListDesigner::ActiveReport_ReportStart();
  if (types) types->Value = picked;
  std::string description = Description();
  AppendDescription(
      description,
      "Dated As At " +
          Format(Variant(as_at), TrellinReportGlobals::RequireBusinessLayer().DateFormat()));
  if (one_type) AppendDescription(description, "Special prices of customer type " + type);
  if (Control* parameters = FindControl("txtParameters")) parameters->SetText(description);
}

void arscItemPriceList::ActiveReport_DataInitialize() {
  for (const char* name :
       {"PriceExclusive", "PriceInclusive", "SpecialPrice", "CostExclusive", "MarginPercent"}) {
    Fields().Add(name);
  }
}

void arscItemPriceList::ActiveReport_FetchData(bool&) {
  const auto& fields = Fields();
  const Prices sell = ItemPrices(ItemMoney(StockField(fields, "SellPrice1")),
                                 Trim(StockField(fields, "SellTaxType1").Text()));
  const Currency cost = ItemPrices(ItemMoney(StockField(fields, "CostPrice")),
                                   Trim(StockField(fields, "CostTaxType").Text()))
                            .exclusive;
  Variant special = Variant::Null();
  if (auto found = specials_.find(UCase(StockField(fields, "ItemId").Text()));
      found != specials_.end()) {
    const Special& s = found->second;
    special =
        !s.price.IsNull() && !s.price.IsEmpty()
            ? Variant(s.price.ToCurrency())
            : Variant(
                  Currency::FromDouble(sell.exclusive.ToDouble() * (1 - s.rate / 100.0)).Round(2));
  }
  Fields().Add("PriceExclusive").SetValue(Variant(sell.exclusive));
  Fields().Add("PriceInclusive").SetValue(Variant(sell.inclusive));
  Fields().Add("SpecialPrice").SetValue(special);
  Fields().Add("CostExclusive").SetValue(Variant(cost));
  Fields().Add("MarginPercent").SetValue(MarginPercent(sell.exclusive, cost));
}

}  // namespace trellin
