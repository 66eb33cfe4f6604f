// The location list's key, row by row, and each location's figures read once.

#include "reports/stock/arLocationList.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/ReportShapes.h"

namespace trellin {

namespace {

constexpr ListOrder kLocationOrders[] = {
    {"Code", "Location.LocationId"},
    {"Description", "Location.Description,Location.LocationId"},
};

constexpr ListParameter kLocationParameters[] = {
    {.kind = ListParameterKind::Standard,
     .field = "Location.LocationId",
     .index = 23,
     .primary = true},
    {.kind = ListParameterKind::Standard, .field = "Location.BranchId", .index = 6},
};

constexpr ListColumn kLocationColumns[] = {
    {"Code", "LocationId", kColumnText, "Code", "", 1000, false},
    {"Description", "Description", kColumnText, "Description", "", -1, false},
    {"Branch", "BranchName", kColumnText, "Branch", "", 2600, false},
    {"ItemsSetUp", "ItemsSetUp", kColumnNumber, "Items Set Up", "Items", 1200, false, "#,##0"},
    {"Value", "ValueOnHand", kColumnMoney, "Value", "", 1400, false},
};

constexpr ListKey kLocationKeys[] = {{
    .key = "LocationList",
    .base_sql = "SELECT Location.LocationId,Location.Description,Location.BranchId,"
                "Branch.Name AS BranchName FROM Location LEFT JOIN Branch ON "
                "Location.BranchId=Branch.BranchId",
    .orders = kLocationOrders,
    .parameters = kLocationParameters,
    .columns = kLocationColumns,
}};

// A count of items is not added across locations.
constexpr std::string_view kLocationUntotalled[] = {"ItemsSetUp"};

}  // namespace

arLocationList::arLocationList() : ListDesigner("arLocationList", kLocationKeys, "Location List") {}

DesignerPtr CreatearLocationList() { return std::make_shared<arLocationList>(); }

void arLocationList::RefreshParameters(std::string& ReportName) {
  ListDesigner::RefreshParameters(ReportName);
  AddStockDateAsAt(TLReport()->Parameters());
}

void arLocationList::RefreshDataColumns() {
  ListDesigner::RefreshDataColumns();
  // A location code is no item code: the column keeps its own width.
  for (std::string_view name : kLocationUntotalled) {
    TLReport()->DataColumns().Item(name).Totalled = false;
  }
}

void arLocationList::ActiveReport_ReportStart() {
  const Date as_at = StockDateAsAt(TLReport()->Parameters());
  on_hand_.clear();
  for (const auto& [key, row] : OnHandByItem(as_at, true)) {
    OnHand& place = on_hand_[key.substr(key.find('|') + 1)];
    place.quantity += row.quantity;
    place.value += row.value;
  }
  set_up_.clear();
  auto rs = TrellinReportGlobals::RequireBusinessLayer().Database()->Query(
      "SELECT LocationId,Count(ItemId) AS Items FROM ItemLocation GROUP BY LocationId");
  for (; !rs->Eof(); rs->MoveNext()) set_up_[UCase(rs->Value(0).Text())] = rs->Value(1).ToLong();
  ListDesigner::ActiveReport_ReportStart();
  std::string description = Description();
  AppendDescription(
      description,
      "Dated As At " +
          Format(Variant(as_at), TrellinReportGlobals::RequireBusinessLayer().DateFormat()));
  if (Control* parameters = FindControl("txtParameters")) parameters->SetText(description);
}

void arLocationList::ActiveReport_DataInitialize() {
  for (const char* name : {"ItemsSetUp", "ValueOnHand"}) Fields().Add(name);
}

void arLocationList::ActiveReport_FetchData(bool&) {
  const std::string location = UCase(StockField(Fields(), "LocationId").Text());
  const auto items = set_up_.find(location);
  const auto value = on_hand_.find(location);
  Fields().Add("ItemsSetUp").SetValue(Variant(items == set_up_.end() ? 0L : items->second));
  Fields()
      .Add("ValueOnHand")
      .SetValue(Variant(value == on_hand_.end() ? Currency() : value->second.value));
}

}  // namespace trellin
