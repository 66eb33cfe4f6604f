// The item list's key, row by row, and the figures filled per row.

#include "reports/stock/arItemList.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/ReportShapes.h"
#include "reports/UserDefinedColumns.h"

namespace trellin {

namespace {

constexpr ListOrder kItemOrders[] = {
    {"Code", "Item.ItemId"},
    {"Description", "Item.Description,Item.ItemId"},
    {"PLU", "Item.PLU,Item.ItemId"},
};

constexpr ListParameter kItemParameters[] = {
    {.kind = ListParameterKind::Standard, .field = "Item.ItemId", .index = 18, .primary = true},
    {.kind = ListParameterKind::Standard, .field = "Item.ItemCategoryId", .index = 16},
    {.kind = ListParameterKind::Standard, .field = "Item.ItemTypeId", .index = 20},
    {.kind = ListParameterKind::Standard, .field = "Item.SupplierId", .index = 33},
    {.kind = ListParameterKind::PickList,
     .name = "Kind",
     .caption = "Kind",
     .field = "Item.Inventory",
     .list_sql = kItemKindsSql,
     .key_field = "Kind"},
    {.kind = ListParameterKind::Option,
     .name = "ExcludeInactiveItems",
     .caption = "Exclude Inactive Items",
     .condition = "Item.Active=True",
     .phrase = "Exclude Inactive Items"},
    {.kind = ListParameterKind::UserDefined, .name = "Item"},
};

// The supplier is the item's own; its name comes with it.
constexpr ListGrouping kItemOwnGroupings[] = {
    {"Supplier", "Item.SupplierId", "SELECT OtherPartyId,Name FROM OtherParty", "SupplierId"},
};

constexpr ListColumn kItemColumns[] = {
    {"Code", "ItemId", kColumnCode, "Code", "", 1000, false},
    {"Description", "Description", kColumnText, "Description", "", -1, false},
    {"PLU", "PLU", kColumnText, "PLU", "", 800, true},
    {"Unit", "Unit", kColumnText, "Unit", "", 600, false},
    {"Category", "ItemCategoryId", kColumnText, "Category", "", 900, false},
    {"Type", "ItemTypeId", kColumnText, "Type", "", 800, false},
    {"Supplier", "SupplierName", kColumnText, "Supplier", "", 2700, false},
    {"SupplierCode", "SupplierCode", kColumnText, "Supplier Code", "Sup. Code", 1100, true},
    {"Kind", "KindName", kColumnText, "Kind", "", 800, false},
    {"Active", "Active", kColumnBoolean, "Active", "", 600, false},
    {"Cost", "CostPrice", kColumnMoney, "Cost", "", 1100, false},
    {"Sell", "SellExclusive", kColumnMoney, "Sell", "", 1100, false},
    {"SellInc", "SellInclusive", kColumnMoney, "Sell Inc", "", 1100, true},
    {"OnHand", "QuantityOnHand", kColumnNumber, "On Hand", "", 900, true, "#,##0.00;(#,##0.00)"},
    {"Value", "ValueOnHand", kColumnMoney, "Value", "", 1200, true},
};

constexpr ListKey kItemKeys[] = {{
    .key = "ItemList",
    .base_sql = "SELECT Item.ItemId,Item.Description,Item.PLU,Item.Unit,Item.ItemCategoryId,"
                "Item.ItemTypeId,Item.SupplierId,OtherParty.Name AS SupplierName,Item.SupplierCode,"
                "Item.Inventory,Item.Active,Item.CostPrice,Item.SellPrice1,Item.SellTaxType1,"
                "Item.UserDefined1,Item.UserDefined2,Item.UserDefined3,Item.UserDefined4,"
                "Item.UserDefined5,Item.UserDefined6,Item.UserDefined7,Item.UserDefined8,"
                "Item.UserDefined9,Item.UserDefined10,Item.UserDefined11,Item.UserDefined12,"
                "Item.UserDefined13,Item.UserDefined14,Item.UserDefined15,Item.UserDefined16,"
                "Item.UserDefined17,Item.UserDefined18,Item.UserDefined19,Item.UserDefined20"
                " FROM Item LEFT JOIN OtherParty ON Item.SupplierId=OtherParty.OtherPartyId",
    .orders = kItemOrders,
    .parameters = kItemParameters,
    .groupings = "Item Category,Item Type,Supplier",
    .grouping_table = "Item",
    .own_groupings = kItemOwnGroupings,
    .columns = kItemColumns,
}};

// Prices are read across, not added up.
constexpr std::string_view kItemUntotalled[] = {"Cost", "Sell", "SellInc", "OnHand"};

}  // namespace

arItemList::arItemList() : ListDesigner("arItemList", kItemKeys, "Item List") {}

DesignerPtr CreatearItemList() { return std::make_shared<arItemList>(); }

void arItemList::RefreshParameters(std::string& ReportName) {
  ListDesigner::RefreshParameters(ReportName);
  AddStockDateAsAt(TLReport()->Parameters());
}

void arItemList::RefreshDataColumns() {
  ListDesigner::RefreshDataColumns();
  DataColumns& columns = TLReport()->DataColumns();
  FitStockColumns(columns, kItemUntotalled);
  AddUserDefinedColumns(columns, UserDefinedKind::Item);
}

void arItemList::ActiveReport_ReportStart() {
  const Date as_at = StockDateAsAt(TLReport()->Parameters());
  on_hand_ = OnHandByItem(as_at);
  ListDesigner::ActiveReport_ReportStart();
  std::string description = Description();
  AppendDescription(
      description,
      "Dated As At " +
          Format(Variant(as_at), TrellinReportGlobals::RequireBusinessLayer().DateFormat()));
  if (Control* parameters = FindControl("txtParameters")) parameters->SetText(description);
}

void arItemList::ActiveReport_DataInitialize() {
  for (const char* name :
       {"KindName", "SellExclusive", "SellInclusive", "QuantityOnHand", "ValueOnHand"}) {
    Fields().Add(name);
  }
}

void arItemList::ActiveReport_FetchData(bool&) {
  const auto& fields = Fields();
  const Variant& inventory = StockField(fields, "Inventory");
  Fields().Add("KindName").SetValue(Variant(ItemKindName(inventory)));
  const Variant& sell = StockField(fields, "SellPrice1");
  const std::string code = Trim(StockField(fields, "SellTaxType1").Text());
  const Prices prices = ItemPrices(sell.IsNull() ? Currency() : sell.ToCurrency(), code);
  Fields().Add("SellExclusive").SetValue(Variant(prices.exclusive));
  Fields().Add("SellInclusive").SetValue(Variant(prices.inclusive));
  Variant quantity = Variant::Null();
  Variant value = Variant::Null();
  if (!inventory.IsNull() && inventory.ToLong() != 0) {
    auto found = on_hand_.find(UCase(StockField(fields, "ItemId").Text()));
    const OnHand row = found == on_hand_.end() ? OnHand{} : found->second;
    quantity = Variant(row.quantity);
    value = Variant(row.value);
  }
  Fields().Add("QuantityOnHand").SetValue(quantity);
  Fields().Add("ValueOnHand").SetValue(value);
}

}  // namespace trellin
