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

// The details order the locations as the list does, and each location's items by code.
constexpr ListOrder kDetailOrders[] = {
    {"Code", "ItemLocation.LocationId,ItemLocation.ItemId"},
    {"Description", "Location.Description,ItemLocation.LocationId,ItemLocation.ItemId"},
};

constexpr ListParameter kDetailParameters[] = {
    {.kind = ListParameterKind::Standard,
     .field = "ItemLocation.LocationId",
     .index = 23,
     .primary = true},
    {.kind = ListParameterKind::Standard, .field = "Location.BranchId", .index = 6},
    {.kind = ListParameterKind::Standard, .field = "ItemLocation.ItemId", .index = 17},
    {.kind = ListParameterKind::Standard, .field = "Item.ItemCategoryId", .index = 16},
    {.kind = ListParameterKind::Standard, .field = "ItemLocation.Shelf", .index = 31},
    {.kind = ListParameterKind::Option,
     .name = "IncludeZeroOnHand",
     .caption = "Include Zero On Hand",
     .off_phrase = "Items on hand only",
     .checked = true},
};

constexpr ListKey kLocationKeys[] = {
    {
        .key = "LocationList",
        .base_sql = "SELECT Location.LocationId,Location.Description,Location.BranchId,"
                    "Branch.Name AS BranchName FROM Location LEFT JOIN Branch ON "
                    "Location.BranchId=Branch.BranchId",
        .orders = kLocationOrders,
        .parameters = kLocationParameters,
        .columns = kLocationColumns,
    },
    {
        .key = "LocationDetails",
        .base_sql = "SELECT ItemLocation.LocationId,Location.Description AS LocationName,"
                    "Branch.Name AS BranchName,Branch.Address AS BranchAddress,Branch.Phone AS "
                    "BranchPhone,ItemLocation.ItemId,Item.Description,ItemLocation.Shelf,"
                    "ItemLocation.MinReorder,ItemLocation.MaxReorder"
                    " FROM ((ItemLocation INNER JOIN Item ON ItemLocation.ItemId=Item.ItemId)"
                    " INNER JOIN Location ON ItemLocation.LocationId=Location.LocationId)"
                    " LEFT JOIN Branch ON Location.BranchId=Branch.BranchId",
        .orders = kDetailOrders,
        .parameters = kDetailParameters,
    },
};

// The details' own layout, beside the list's shared one.
constexpr const char* kDetailsLayout = "arLocationListDetails";

bool Details(const TLReport* host) { return host && host->ReportName() == "LocationDetails"; }

// A count of items is not added across locations.
constexpr std::string_view kLocationUntotalled[] = {"ItemsSetUp"};

}  // namespace

arLocationList::arLocationList() : ListDesigner("arLocationList", kLocationKeys, "Location List") {}

DesignerPtr CreatearLocationList() { return std::make_shared<arLocationList>(); }

std::string arLocationList::ExtraCondition() {
  const trellin::Parameters& p = TLReport()->Parameters();
  if (!Details(TLReport().get()) || p.Value("IncludeZeroOnHand", Variant(true)).ToBool()) return {};
  return OnHandAtLocationCondition(StockDateAsAt(p));
}

void arLocationList::RefreshParameters(std::string& ReportName) {
  ListDesigner::RefreshParameters(ReportName);
  AddStockDateAsAt(TLReport()->Parameters());
}

void arLocationList::RefreshDataColumns() {
  ListDesigner::RefreshDataColumns();
  if (Details(TLReport().get())) return;
  // A location code is no item code: the column keeps its own width.
  for (std::string_view name : kLocationUntotalled) {
    TLReport()->DataColumns().Item(name).Totalled = false;
  }
}

void arLocationList::ActiveReport_ReportStart() {
  // The key is known only once the host is tied: the details trade the shared list layout,
  // loaded at initialisation, for their own.
  if (Details(TLReport().get()) && !FindControl("txtBranch")) {
    Sections().Clear();
    if (auto provider = GetLayoutProvider()) provider->Load(kDetailsLayout, *this);
  }
  const Date as_at = StockDateAsAt(TLReport()->Parameters());
  by_item_ = OnHandByItem(as_at, true);
  on_hand_.clear();
  for (const auto& [key, row] : by_item_) {
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
  for (const char* name : {"ItemsSetUp", "ValueOnHand", "QuantityOnHand", "BranchDetails"}) {
    Fields().Add(name);
  }
}

void arLocationList::ActiveReport_FetchData(bool&) {
  const std::string location = UCase(StockField(Fields(), "LocationId").Text());
  if (Details(TLReport().get())) {
    const auto found = by_item_.find(UCase(StockField(Fields(), "ItemId").Text()) + "|" + location);
    const OnHand row = found == by_item_.end() ? OnHand{} : found->second;
    Fields().Add("QuantityOnHand").SetValue(Variant(row.quantity));
    Fields().Add("ValueOnHand").SetValue(Variant(row.value));
    // One line: name, address (its lines joined), "Phone ...".
    std::string branch;
    for (const char* part : {"BranchName", "BranchAddress", "BranchPhone"}) {
      std::string text = Trim(StockField(Fields(), part).Text());
      for (std::size_t at; (at = text.find('\n')) != std::string::npos;) {
        text.replace(at, 1, ", ");
      }
      if (text.empty()) continue;
      if (std::string_view(part) == "BranchPhone") text = "Phone " + text;
      branch += (branch.empty() ? "" : ", ") + text;
    }
    Fields().Add("BranchDetails").SetValue(Variant(branch));
    return;
  }
  const auto items = set_up_.find(location);
  const auto value = on_hand_.find(location);
  Fields().Add("ItemsSetUp").SetValue(Variant(items == set_up_.end() ? 0L : items->second));
  Fields()
      .Add("ValueOnHand")
      .SetValue(Variant(value == on_hand_.end() ? Currency() : value->second.value));
}

}  // namespace trellin
