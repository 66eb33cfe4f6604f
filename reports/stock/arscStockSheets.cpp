// The stock sheets' key, row by row; the figures of each location read once, and the blank lines
// ruled to the run's count.

#include "reports/stock/arscStockSheets.h"

#include <algorithm>
#include <map>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/host/Database.h"
#include "core/host/Recordset.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

// Every order keeps a location's items together, as each location starts a page.
constexpr ListOrder kSheetOrders[] = {
    {"Shelf", "ItemLocation.LocationId,ItemLocation.Shelf,Item.ItemId"},
    {"Code", "ItemLocation.LocationId,Item.ItemId"},
    {"Description", "ItemLocation.LocationId,Item.Description,Item.ItemId"},
};

constexpr ListParameter kSheetParameters[] = {
    {.kind = ListParameterKind::Standard,
     .field = "ItemLocation.LocationId",
     .index = 23,
     .primary = true},
    {.kind = ListParameterKind::Standard, .field = "ItemLocation.ItemId", .index = 17},
    {.kind = ListParameterKind::Standard, .field = "Item.ItemCategoryId", .index = 16},
    {.kind = ListParameterKind::Standard, .field = "Item.ItemTypeId", .index = 20},
    {.kind = ListParameterKind::Standard, .field = "ItemLocation.Shelf", .index = 31},
    {.kind = ListParameterKind::Option,
     .name = "IncludeZeroOnHand",
     .caption = "Include Zero On Hand",
     .off_phrase = "Items on hand only",
     .checked = true},
    {.kind = ListParameterKind::Option,
     .name = "ExcludeInactiveItems",
     .caption = "Exclude Inactive Items",
     .condition = "Item.Active=True",
     .phrase = "Exclude Inactive Items"},
};

// What is counted is what is kept in stock: items of kind "No stock" have no sheet line.
constexpr ListKey kSheetKeys[] = {{
    .key = "StockSheets",
    .base_sql = "SELECT ItemLocation.LocationId,Location.Description AS LocationName,"
                "ItemLocation.Shelf,ItemLocation.ItemId,Item.Description,Item.Unit,Item.Inventory"
                " FROM (ItemLocation INNER JOIN Item ON ItemLocation.ItemId=Item.ItemId)"
                " INNER JOIN Location ON ItemLocation.LocationId=Location.LocationId",
    .base_where = "Item.Inventory<>0",
    .orders = kSheetOrders,
    .parameters = kSheetParameters,
}};

constexpr long kDefaultBlankLines = 5;
constexpr long kMostBlankLines = 40;
// A blank line is as tall as an item's line, so a count written in fits the same box.
constexpr float kLineHeight = 380;
constexpr float kBoxTop = 40;
constexpr float kBoxHeight = 300;

std::string PlaceKey(std::string_view item, std::string_view location) {
  return UCase(std::string(item)) + "|" + UCase(std::string(location));
}

}  // namespace

arscStockSheets::arscStockSheets() : ListDesigner("arscStockSheets", kSheetKeys) {}

DesignerPtr CreatearscStockSheets() { return std::make_shared<arscStockSheets>(); }

void arscStockSheets::RefreshParameters(std::string& ReportName) {
  ListDesigner::RefreshParameters(ReportName);
  trellin::Parameters& p = TLReport()->Parameters();
  AddStockDateAsAt(p);
  p.AddBoolean("ShowQuantityOnHand", false, false, "", false, false, "Show Quantity On Hand");
  p.AddNumber("BlankLines", Variant(kDefaultBlankLines), false, "", Variant(kDefaultBlankLines), 0,
              false, "Blank Lines");
}

std::string arscStockSheets::ExtraCondition() {
  const trellin::Parameters& p = TLReport()->Parameters();
  if (p.Value("IncludeZeroOnHand", Variant(true)).ToBool()) return {};
  return OnHandAtLocationCondition(StockDateAsAt(p));
}

void arscStockSheets::ActiveReport_ReportStart() {
  const trellin::Parameters& p = TLReport()->Parameters();
  const Date as_at = StockDateAsAt(p);
  show_on_hand_ = p.Value("ShowQuantityOnHand", Variant(false)).ToBool();
  ListDesigner::ActiveReport_ReportStart();
  ReadLines(as_at);
  if (!lines_.empty()) Field("txtLocation").SetText(lines_.front().location_caption);
  for (const char* name : {"lblOnHand", "txtOnHand"}) Field(name).SetVisible(show_on_hand_);
  const Variant lines = p.Value("BlankLines", Variant(kDefaultBlankLines));
  RuleBlankLines(lines.IsNumber() ? std::clamp(lines.ToLong(), 0L, kMostBlankLines)
                                  : kDefaultBlankLines);
  std::string description = Description();
  AppendDescription(description, show_on_hand_ ? "Quantity on hand shown" : "Blind count");
  AppendDescription(
      description,
      "Dated As At " +
          Format(Variant(as_at), TrellinReportGlobals::RequireBusinessLayer().DateFormat()));
  if (Control* parameters = FindControl("txtParameters")) parameters->SetText(description);
}

void arscStockSheets::ReadLines(const Date& as_at) {
  const auto on_hand = OnHandByItem(as_at, true);
  // The numbers on hand, "ITEM|LOCATION" to (number, quantity) in number order.
  std::map<std::string, std::vector<std::pair<std::string, double>>, std::less<>> numbers;
  auto rs = TrellinReportGlobals::RequireBusinessLayer().Database()->Query(
      "SELECT ItemId,LocationId,SerialNumber,Sum(Quantity) AS Quantity FROM TransactionLine "
      "WHERE SerialNumber Is Not Null AND SerialNumber<>'' AND " +
      OnHandCondition(as_at) +
      " GROUP BY ItemId,LocationId,SerialNumber HAVING Sum(Quantity)<>0 ORDER BY SerialNumber");
  for (; !rs->Eof(); rs->MoveNext()) {
    numbers[PlaceKey(rs->Value(0).Text(), rs->Value(1).Text())].emplace_back(
        rs->Value(2).Text(), rs->Value(3).ToDouble());
  }
  lines_.clear();
  next_ = 0;
  // The items set up come from the list's query; the sheet runs on its own lines after them.
  const std::shared_ptr<Recordset> items = DataControl().Recordset();
  DataControl().SetRecordset(nullptr);
  for (; items && !items->Eof(); items->MoveNext()) {
    SheetLine line{.location = items->Value("LocationId").Text(),
                   .shelf = items->Value("Shelf"),
                   .item = items->Value("ItemId"),
                   .description = items->Value("Description"),
                   .unit = items->Value("Unit")};
    line.location_caption = line.location + "  " + items->Value("LocationName").Text();
    const std::string key = PlaceKey(line.item.Text(), line.location);
    const long kind = items->Value("Inventory").ToLong();
    const auto found = numbers.find(key);
    if ((kind == static_cast<long>(ItemKind::Serial) ||
         kind == static_cast<long>(ItemKind::Batch)) &&
        found != numbers.end()) {
      // A line per number; the item is named on the first.
      for (const auto& [number, quantity] : found->second) {
        SheetLine& added = lines_.emplace_back(line);
        added.number = number;
        added.on_hand = quantity;
        line.shelf = line.item = line.description = line.unit = Variant();
      }
      continue;
    }
    const auto place = on_hand.find(key);
    line.on_hand = place == on_hand.end() ? 0.0 : place->second.quantity;
    lines_.push_back(std::move(line));
  }
}

void arscStockSheets::RuleBlankLines(long count) {
  Section& footer = Sections()["gfLocation"];
  const Control& counted = Field("boxCounted");
  const Control& checked = Field("boxChecked");
  for (long n = 0; n < count; ++n) {
    const float top = static_cast<float>(n) * kLineHeight;
    for (const Control* box : {&counted, &checked}) {
      Control& blank =
          footer.Controls().Add(ControlClass::Shape, box->Name() + "Blank" + std::to_string(n + 1));
      blank.SetLeft(box->Left());
      blank.SetTop(top + kBoxTop);
      blank.SetWidth(box->Width());
      blank.SetHeight(kBoxHeight);
    }
    Control& rule = footer.Controls().Add(ControlClass::Line, "linBlank" + std::to_string(n + 1));
    rule.SetLeft(0);
    rule.SetTop(top + kLineHeight - 10);
    rule.SetWidth(PrintWidth());
    rule.SetHeight(0);
  }
  footer.SetHeight(static_cast<float>(count) * kLineHeight + kLineHeight / 2);
}

void arscStockSheets::OnFormat(Section& section) {
  if (section.Type() == SectionType::PageHeader) {
    const std::string caption = StockField(Fields(), "LocationCaption").Text();
    if (!caption.empty()) Field("txtLocation").SetText(caption);
  }
  ListDesigner::OnFormat(section);
}

void arscStockSheets::ActiveReport_DataInitialize() {
  for (const char* name : {"LocationId", "LocationCaption", "Shelf", "ItemId", "Description",
                           "Unit", "Number", "OnHand"}) {
    Fields().Add(name);
  }
}

void arscStockSheets::ActiveReport_FetchData(bool& eof) {
  if (next_ >= lines_.size()) {
    eof = true;
    return;
  }
  const SheetLine& line = lines_[next_++];
  Fields().Add("LocationId").SetValue(Variant(line.location));
  Fields().Add("LocationCaption").SetValue(Variant(line.location_caption));
  Fields().Add("Shelf").SetValue(line.shelf);
  Fields().Add("ItemId").SetValue(line.item);
  Fields().Add("Description").SetValue(line.description);
  Fields().Add("Unit").SetValue(line.unit);
  Fields().Add("Number").SetValue(Variant(line.number));
  Fields().Add("OnHand").SetValue(Variant(line.on_hand));
  eof = false;
}

}  // namespace trellin
