// The price change schedule's key, row by row, and each item's new price.

#include "reports/stock/arscPriceChange.h"

#include <cmath>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/ReportShapes.h"
#include "reports/stock/StockLists.h"

namespace trellin {

namespace {

constexpr ListOrder kChangeOrders[] = {
    {"Code", "Item.ItemId"},
    {"Description", "Item.Description,Item.ItemId"},
};

constexpr ListChoice kChangeMethods[] = {
    {"Percent", "", ""},
    {"Amount", "", ""},
    {"Markup on cost", "", ""},
};

constexpr ListChoice kRoundTo[] = {
    {"None", "", ""}, {"0.05", "", ""}, {"0.10", "", ""}, {"0.50", "", ""}, {"1.00", "", ""},
};

constexpr ListParameter kChangeParameters[] = {
    {.kind = ListParameterKind::Standard, .field = "Item.ItemId", .index = 18, .primary = true},
    {.kind = ListParameterKind::Standard, .field = "Item.ItemCategoryId", .index = 16},
    {.kind = ListParameterKind::Standard, .field = "Item.ItemTypeId", .index = 20},
    {.kind = ListParameterKind::Standard, .field = "Item.SupplierId", .index = 33},
    {.kind = ListParameterKind::Option,
     .name = "ExcludeInactiveItems",
     .caption = "Exclude Inactive Items",
     .condition = "Item.Active=True",
     .phrase = "Exclude Inactive Items"},
    {.kind = ListParameterKind::Choice,
     .name = "Method",
     .caption = "Method",
     .primary = true,
     .choices = kChangeMethods},
    {.kind = ListParameterKind::Choice,
     .name = "RoundTo",
     .caption = "Round To",
     .primary = true,
     .choices = kRoundTo},
};

constexpr ListColumn kChangeColumns[] = {
    {"Code", "ItemId", kColumnCode, "Code", "", 1000, false},
    {"Description", "Description", kColumnText, "Description", "", -1, false},
    {"Cost", "CostExclusive", kColumnMoney, "Cost", "", 1200, false},
    {"Current", "CurrentPrice", kColumnMoney, "Current", "", 1200, false},
    {"New", "NewPrice", kColumnMoney, "New", "", 1200, false},
    {"Change", "PriceChange", kColumnMoney, "Change", "", 1100, false},
    {"ChangePercent", "ChangePercent", kColumnNumber, "Change %", "", 1300, false, "0.00;-0.00"},
    {"Margin", "MarginPercent", kColumnNumber, "Margin %", "", 1300, false, "0.00;-0.00"},
    {"NewMargin", "NewMarginPercent", kColumnNumber, "New Margin %", "", 1800, false, "0.00;-0.00"},
};

constexpr ListKey kChangeKeys[] = {{
    .key = "SCPriceChange",
    .base_sql = "SELECT Item.ItemId,Item.Description,Item.CostPrice,Item.CostTaxType,"
                "Item.SellPrice1,Item.SellTaxType1 FROM Item",
    .orders = kChangeOrders,
    .parameters = kChangeParameters,
    .groupings = "Item Category",
    .grouping_table = "Item",
    .columns = kChangeColumns,
}};

// A schedule's prices are read across, not added up.
constexpr std::string_view kChangeUntotalled[] = {"Cost",          "Current", "New",      "Change",
                                                  "ChangePercent", "Margin",  "NewMargin"};

}  // namespace

Currency NewPrice(PriceChangeMethod method, double change, Currency current, Currency cost,
                  Currency round_to) {
  Currency price = current;
  switch (method) {
    case PriceChangeMethod::Percent:
      price = Currency::FromDouble(current.ToDouble() * (1 + change / 100.0));
      break;
    case PriceChangeMethod::Amount:
      price = current + Currency::FromDouble(change);
      break;
    case PriceChangeMethod::MarkupOnCost:
      price = Currency::FromDouble(cost.ToDouble() * (1 + change / 100.0));
      break;
  }
  // Unrounded, a price keeps whole cents.
  return round_to.Raw() > 0 ? RoundToStep(price, round_to) : price.Round(2);
}

arscPriceChange::arscPriceChange()
    : ListDesigner("arscPriceChange", kChangeKeys, "Price Change Schedule") {}

DesignerPtr CreatearscPriceChange() { return std::make_shared<arscPriceChange>(); }

void arscPriceChange::RefreshParameters(std::string& ReportName) {
  ListDesigner::RefreshParameters(ReportName);
  TLReport()->Parameters().AddNumber("Change", Variant(0.0), true, "", Variant(0.0), 0, false,
                                     "Change");
}

void arscPriceChange::RefreshDataColumns() {
  ListDesigner::RefreshDataColumns();
  FitStockColumns(TLReport()->DataColumns(), kChangeUntotalled);
}

void arscPriceChange::ActiveReport_ReportStart() {
  const trellin::Parameters& p = TLReport()->Parameters();
  const std::string method = p.Value("Method", Variant()).Text();
  method_ = EqualsIgnoreCase(method, "Amount")           ? PriceChangeMethod::Amount
            : EqualsIgnoreCase(method, "Markup on cost") ? PriceChangeMethod::MarkupOnCost
                                                         : PriceChangeMethod::Percent;
  const Variant change = p.Value("Change", Variant());
  change_ =
      change.IsNull() || change.IsEmpty() || Trim(change.Text()).empty() ? 0 : change.ToDouble();
  const std::string round_to = p.Value("RoundTo", Variant()).Text();
  round_to_ = Currency::Parse(round_to).value_or(Currency());
  ListDesigner::ActiveReport_ReportStart();
  std::string description = Description();
  const char* unit = method_ == PriceChangeMethod::Amount ? "" : "%";
  AppendDescription(description,
                    "New prices: " + (method.empty() ? std::string("Percent") : method) + " " +
                        Format(Variant(change_), "0.00") + unit);
  AppendDescription(description,
                    round_to_.Raw() > 0 ? "Rounded to " + round_to : std::string("Not rounded"));
  AppendDescription(description, "Prices before tax; nothing is changed");
  if (Control* parameters = FindControl("txtParameters")) parameters->SetText(description);
}

void arscPriceChange::ActiveReport_DataInitialize() {
  for (const char* name : {"CostExclusive", "CurrentPrice", "NewPrice", "PriceChange",
                           "ChangePercent", "MarginPercent", "NewMarginPercent"}) {
    Fields().Add(name);
  }
}

void arscPriceChange::ActiveReport_FetchData(bool&) {
  const auto& fields = Fields();
  const Currency cost = ItemPrices(ItemMoney(StockField(fields, "CostPrice")),
                                   Trim(StockField(fields, "CostTaxType").Text()))
                            .exclusive;
  const Currency current = ItemPrices(ItemMoney(StockField(fields, "SellPrice1")),
                                      Trim(StockField(fields, "SellTaxType1").Text()))
                               .exclusive;
  const Currency price = NewPrice(method_, change_, current, cost, round_to_);
  Fields().Add("CostExclusive").SetValue(Variant(cost));
  Fields().Add("CurrentPrice").SetValue(Variant(current));
  Fields().Add("NewPrice").SetValue(Variant(price));
  Fields().Add("PriceChange").SetValue(Variant(price - current));
  Fields()
      .Add("ChangePercent")
      .SetValue(current.Raw() == 0
                    ? Variant::Null()
                    : Variant((price - current).ToDouble() / current.ToDouble() * 100.0));
  Fields().Add("MarginPercent").SetValue(MarginPercent(current, cost));
  Fields().Add("NewMarginPercent").SetValue(MarginPercent(price, cost));
}

}  // namespace trellin
