// The key of the item cards, the card's texts, and the item's locations.

#include "reports/stock/arItemDetail.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

constexpr ListOrder kCardOrders[] = {
    {"Code", "Item.ItemId"},
    {"Description", "Item.Description,Item.ItemId"},
};

constexpr ListParameter kCardParameters[] = {
    {.kind = ListParameterKind::Standard, .field = "Item.ItemId", .index = 18, .primary = true},
    {.kind = ListParameterKind::Standard, .field = "Item.ItemCategoryId", .index = 16},
    {.kind = ListParameterKind::Standard, .field = "Item.ItemTypeId", .index = 20},
    {.kind = ListParameterKind::Standard, .field = "Item.SupplierId", .index = 33},
    {.kind = ListParameterKind::Option,
     .name = "ShowLocations",
     .caption = "Show Locations",
     .phrase = "With the locations",
     .checked = true},
    {.kind = ListParameterKind::Option,
     .name = "ShowSpecialPrices",
     .caption = "Show Special Prices",
     .phrase = "With the special prices",
     .checked = true},
    {.kind = ListParameterKind::Option,
     .name = "ShowNotes",
     .caption = "Show Notes",
     .phrase = "With the notes",
     .checked = true},
    {.kind = ListParameterKind::Option,
     .name = "NewPagePerItem",
     .caption = "New Page per Item",
     .phrase = "A page per item"},
};

constexpr ListKey kCardKeys[] = {{
    .key = "ItemDetails",
    .base_sql =
        "SELECT Item.ItemId,Item.Description,Item.PLU,Item.Unit,Item.Inventory,Item.Active,"
        "Item.ItemCategoryId,ItemCategory.Description AS CategoryName,Item.ItemTypeId,"
        "ItemType.Description AS TypeName,Item.SupplierId,OtherParty.Name AS SupplierName,"
        "Item.SupplierCode,Item.CostPrice,Item.CostTaxType,Item.SellPrice1,Item.SellTaxType1,"
        "Item.UserDefined1,Item.UserDefined2,Item.UserDefined3,Item.UserDefined4,"
        "Item.UserDefined5,Item.UserDefined6,Item.UserDefined7,Item.UserDefined8,"
        "Item.UserDefined9,Item.UserDefined10,Item.UserDefined11,Item.UserDefined12,"
        "Item.UserDefined13,Item.UserDefined14,Item.UserDefined15,Item.UserDefined16,"
        "Item.UserDefined17,Item.UserDefined18,Item.UserDefined19,Item.UserDefined20"
        " FROM ((Item LEFT JOIN ItemCategory ON Item.ItemCategoryId=ItemCategory.ItemCategoryId)"
        " LEFT JOIN ItemType ON Item.ItemTypeId=ItemType.ItemTypeId)"
        " LEFT JOIN OtherParty ON Item.SupplierId=OtherParty.OtherPartyId",
    .orders = kCardOrders,
    .parameters = kCardParameters,
}};

// The card's blocks: the field each fills, and the caption printed beside it.
struct CardBlock {
  const char* field;
  const char* caption_control;
  const char* text_control;
};
constexpr CardBlock kCardBlocks[] = {
    {"ClassLines", "lblClass", "txtClass"},       {"PriceLines", "lblPrices", "txtPrices"},
    {"StockLines", "lblStock", "txtStock"},       {"FieldLines", "lblFields", "txtFields"},
    {"SpecialLines", "lblSpecial", "txtSpecial"}, {"TradeLines", "lblTrade", "txtTrade"},
    {"OrderLines", "lblOrders", "txtOrders"},     {"NoteLines", "lblNotes", "txtNotes"},
};

constexpr const char* kCardQuantityMask = "#,##0.00;(#,##0.00)";
constexpr const char* kCardMoneyMask = "#,##0.00;(#,##0.00)";

// Whose special price: SpecialPrice.SType 1 to 3.
constexpr const char* kBuyerKinds[] = {"Customer", "Customer category", "Customer type"};

bool CardBlank(const Variant& v) { return v.IsNull() || v.IsEmpty() || v.IsMissing(); }

std::string CardText(const Fields& fields, std::string_view name) {
  return Trim(StockField(fields, name).Text());
}

void AddCardLine(std::string& text, const std::string& line) {
  if (line.empty()) return;
  text += (text.empty() ? "" : "\r\n") + line;
}

// The parts that are not blank, three spaces apart.
std::string CardJoined(std::initializer_list<std::string> parts) {
  std::string text;
  for (const std::string& part : parts) {
    if (!part.empty()) text += (text.empty() ? "" : "   ") + part;
  }
  return text;
}

// "Label: value" for a value that is not blank; "" otherwise.
std::string CardPart(const std::string& label, const std::string& value) {
  return value.empty() ? std::string() : label + ": " + value;
}

// "CODE Name", or the code alone when the name is blank.
std::string CardNamed(const std::string& code, const std::string& name) {
  if (code.empty()) return {};
  return name.empty() ? code : code + " " + name;
}

std::string CardDate(const Variant& date) {
  if (CardBlank(date)) return {};
  return Format(Variant(date.ToDate()), TrellinReportGlobals::RequireBusinessLayer().DateFormat());
}

std::string CardMoney(Currency value) { return Format(Variant(value), kCardMoneyMask); }
std::string CardQuantity(double value) { return Format(Variant(value), kCardQuantityMask); }

// "Cost 10.43 before tax, 12.00 with tax": a price held with its tax code is shown both ways.
std::string CardPrice(const char* word, const Variant& price, const std::string& tax_code) {
  const Prices prices = ItemPrices(ItemMoney(price), tax_code);
  return std::string(word) + " " + CardMoney(prices.exclusive) + " before tax, " +
         CardMoney(prices.inclusive) + " with tax" +
         (tax_code.empty() ? "" : " (" + tax_code + ")");
}

// The special price line of one row of SpecialPrice: who, what, from when to when.
std::string CardSpecial(const Recordset& rs) {
  const long kind = rs.Value(0).ToLong();
  const std::string who = kind >= 1 && kind <= 3 ? kBuyerKinds[kind - 1] : "Buyer";
  const Variant& price = rs.Value(2);
  const std::string what =
      !CardBlank(price) ? CardMoney(price.ToCurrency()) : Format(rs.Value(3), "0.0#") + "% off";
  std::string line = who + " " + rs.Value(1).Text() + ": " + what;
  const std::string from = CardDate(rs.Value(4));
  const std::string to = CardDate(rs.Value(5));
  if (!from.empty()) line += " from " + from;
  if (!to.empty()) line += " to " + to;
  return line;
}

}  // namespace

arItemDetail::arItemDetail() : ListDesigner("arItemDetail", kCardKeys, "Item Details") {}

DesignerPtr CreatearItemDetail() { return std::make_shared<arItemDetail>(); }

void arItemDetail::RefreshParameters(std::string& ReportName) {
  ListDesigner::RefreshParameters(ReportName);
  AddStockDateAsAt(TLReport()->Parameters());
}

void arItemDetail::ActiveReport_ReportStart() {
  const trellin::Parameters& p = TLReport()->Parameters();
  as_at_ = StockDateAsAt(p);
  on_hand_ = OnHandByItem(as_at_);
  show_special_ = p.Value("ShowSpecialPrices", true).ToBool();
  show_notes_ = p.Value("ShowNotes", true).ToBool();
  special_.clear();
  if (show_special_) {
    // SpecialPrice is keyed by buyer first: one read of them all, not one a card.
    auto rs = TrellinReportGlobals::RequireDatabase()->Query(
        "SELECT SType,FieldValue,Price,DiscountRate,DateFrom,DateTo,ItemId FROM SpecialPrice "
        "ORDER BY ItemId,SType,FieldValue");
    for (; !rs->Eof(); rs->MoveNext())
      AddCardLine(special_[UCase(rs->Value(6).Text())], CardSpecial(*rs));
  }
  ListDesigner::ActiveReport_ReportStart();
  std::string description = Description();
  AppendDescription(description, "Dated As At " + CardDate(Variant(as_at_)));
  if (Control* parameters = FindControl("txtParameters")) parameters->SetText(description);

  locations_ = std::make_shared<arItemDetailLocationsSub>();
  locations_->AsAt = as_at_;
  Control& locations = Field("srptLocations");
  locations.SetObject(locations_);
  if (!p.Value("ShowLocations", true).ToBool()) locations.SetVisible(false);
  if (p.Value("NewPagePerItem", false).ToBool()) {
    Sections()["Detail"].SetNewPage(NewPageMode::After);
  }
}

void arItemDetail::ActiveReport_DataInitialize() {
  for (const CardBlock& block : kCardBlocks) Fields().Add(block.field);
  Fields().Add("Identity");
}

void arItemDetail::ActiveReport_FetchData(bool&) {
  trellin::Fields& fields = Fields();
  const std::string code = CardText(fields, "ItemId");
  if (code.empty()) return;
  Database& database = *TrellinReportGlobals::RequireDatabase();
  const std::string item = database.SQLString(code);
  const Variant& inventory = StockField(fields, "Inventory");
  const bool stocked = !CardBlank(inventory) && inventory.ToLong() != 0;

  fields.Item("Identity")
      .SetValue(
          Variant(CardJoined({ItemKindName(inventory), CardPart("Unit", CardText(fields, "Unit")),
                              CardPart("PLU", CardText(fields, "PLU")),
                              StockField(fields, "Active").ToBool() ? "Active" : "Inactive"})));

  std::string lines;
  AddCardLine(lines, CardJoined({CardPart("Category", CardNamed(CardText(fields, "ItemCategoryId"),
                                                                CardText(fields, "CategoryName"))),
                                 CardPart("Type", CardNamed(CardText(fields, "ItemTypeId"),
                                                            CardText(fields, "TypeName")))}));
  AddCardLine(lines, CardJoined({CardPart("Supplier", CardNamed(CardText(fields, "SupplierId"),
                                                                CardText(fields, "SupplierName"))),
                                 CardPart("Supplier's code", CardText(fields, "SupplierCode"))}));
  fields.Item("ClassLines").SetValue(Variant(lines));

  lines.clear();
  AddCardLine(lines,
              CardPrice("Cost", StockField(fields, "CostPrice"), CardText(fields, "CostTaxType")));
  AddCardLine(
      lines, CardPrice("Sell", StockField(fields, "SellPrice1"), CardText(fields, "SellTaxType1")));
  fields.Item("PriceLines").SetValue(Variant(lines));

  lines = "No stock is kept of this item";
  if (stocked) {
    const auto found = on_hand_.find(UCase(code));
    const OnHand row = found == on_hand_.end() ? OnHand{} : found->second;
    lines = CardQuantity(row.quantity) + " on hand at " + CardDate(Variant(as_at_)) + ", value " +
            CardMoney(row.value);
  }
  fields.Item("StockLines").SetValue(Variant(lines));

  // Each user-defined field the company has named and the item fills.
  lines.clear();
  const Options& options = TrellinReportGlobals::RequireApplication().Options();
  for (int n = 1; n <= kItemUserFieldCount; ++n) {
    const UserDefinedField field = options.UserDefinedFields(UserDefinedKind::Item, n);
    if (field.Name.empty()) continue;
    AddCardLine(lines, CardPart(field.Name, CardText(fields, "UserDefined" + std::to_string(n))));
  }
  fields.Item("FieldLines").SetValue(Variant(lines));

  const auto special = special_.find(UCase(code));
  fields.Item("SpecialLines")
      .SetValue(Variant(show_special_ && special != special_.end() ? special->second : ""));

  // The last purchase and the last sale processed up to the date, through the item's index.
  lines.clear();
  for (const auto& [type, word] : {std::pair{20, "Last purchase"}, std::pair{30, "Last sale"}}) {
    auto rs = database.Query(
        "SELECT TOP 1 TransactionLine.DateProcess,Transactions.OtherPartyId,OtherParty.Name,"
        "TransactionLine.UnitPrice,TransactionLine.Quantity FROM (TransactionLine LEFT JOIN "
        "Transactions ON TransactionLine.TransactionId=Transactions.TransactionId) LEFT JOIN "
        "OtherParty ON Transactions.OtherPartyId=OtherParty.OtherPartyId WHERE "
        "TransactionLine.ItemId=" +
        item + " AND TransactionLine.DateProcess<" + Database::SQLDate(as_at_.AddDays(1)) +
        " AND TransactionLine.Type=" + std::to_string(type) +
        " ORDER BY TransactionLine.DateProcess DESC,TransactionLine.TransactionLineId DESC");
    if (rs->Eof()) continue;
    AddCardLine(lines, std::string(word) + " " + CardDate(rs->Value(0)) + ": " +
                           CardNamed(rs->Value(1).Text(), rs->Value(2).Text()) + ", " +
                           CardQuantity(std::abs(rs->Value(4).ToDouble())) + " at " +
                           CardMoney(ItemMoney(rs->Value(3))));
  }
  fields.Item("TradeLines").SetValue(Variant(lines.empty() ? "Never bought or sold" : lines));

  // The orders still outstanding: a received twin nets its order's line down.
  lines.clear();
  auto rs = database.Query(
      "SELECT PurchaseOrder.PurchaseOrderId,PurchaseOrder.Date,PurchaseOrder.OtherPartyId,"
      "OtherParty.Name,Min(PurchaseOrderLine.EstimatedDate) AS Expected,"
      "Round(Sum(PurchaseOrderLine.Quantity),4) AS Outstanding FROM (PurchaseOrderLine INNER "
      "JOIN PurchaseOrder ON PurchaseOrderLine.PurchaseOrderId=PurchaseOrder.PurchaseOrderId) "
      "LEFT JOIN OtherParty ON PurchaseOrder.OtherPartyId=OtherParty.OtherPartyId WHERE "
      "PurchaseOrderLine.ItemId=" +
      item +
      " GROUP BY PurchaseOrder.PurchaseOrderId,PurchaseOrder.Date,PurchaseOrder.OtherPartyId,"
      "OtherParty.Name HAVING Round(Sum(PurchaseOrderLine.Quantity),4)<>0 ORDER BY "
      "PurchaseOrder.Date,PurchaseOrder.PurchaseOrderId");
  for (; !rs->Eof(); rs->MoveNext()) {
    const std::string expected = CardDate(rs->Value(4));
    AddCardLine(lines, "Order " + rs->Value(0).Text() + " of " + CardDate(rs->Value(1)) + ", " +
                           CardNamed(rs->Value(2).Text(), rs->Value(3).Text()) + ": " +
                           CardQuantity(rs->Value(5).ToDouble()) + " outstanding" +
                           (expected.empty() ? "" : ", expected " + expected));
  }
  fields.Item("OrderLines").SetValue(Variant(lines));

  lines.clear();
  if (show_notes_) {
    rs = database.Query("SELECT Date,Subject,Notes FROM ItemLog WHERE ItemId=" + item +
                        " ORDER BY Date");
    for (; !rs->Eof(); rs->MoveNext()) {
      const std::string subject = Trim(rs->Value(1).Text());
      const std::string notes = Trim(rs->Value(2).Text());
      AddCardLine(lines, CardDate(rs->Value(0)) + " " + subject +
                             (notes.empty() ? "" : (subject.empty() ? "" : ": ") + notes));
    }
  }
  fields.Item("NoteLines").SetValue(Variant(lines));
}

void arItemDetail::OnFormat(Section& section) {
  if (section.Type() == SectionType::Detail && locations_) {
    locations_->ItemId = CardText(Fields(), "ItemId");
  }
  ListDesigner::OnFormat(section);
}

void arItemDetail::Detail_Format() {
  for (const CardBlock& block : kCardBlocks) {
    const bool shown = !CardText(Fields(), block.field).empty();
    Field(block.caption_control).SetVisible(shown);
    Field(block.text_control).SetVisible(shown);
  }
  // An item of which no stock is kept is at no location.
  const Variant& inventory = StockField(Fields(), "Inventory");
  if (locations_) {
    const bool stocked = !CardBlank(inventory) && inventory.ToLong() != 0;
    Field("srptLocations")
        .SetVisible(stocked && TLReport()->Parameters().Value("ShowLocations", true).ToBool());
  }
}

void arItemDetailLocationsSub::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

std::string arItemDetailLocationsSub::SQL() const {
  const std::string stock_here =
      " FROM TransactionLine WHERE TransactionLine.ItemId=ItemLocation.ItemId AND "
      "TransactionLine.LocationId=ItemLocation.LocationId AND " +
      OnHandCondition(AsAt, "TransactionLine") + ")";
  return "SELECT ItemLocation.LocationId,Location.Description AS LocationName,ItemLocation.Shelf,"
         "ItemLocation.MinReorder,ItemLocation.MaxReorder,ItemLocation.InUse,"
         "(SELECT Sum(TransactionLine.Quantity)" +
         stock_here + " AS QuantityOnHand,(SELECT Sum(TransactionLine.ItemCost)" + stock_here +
         " AS ValueOnHand FROM ItemLocation LEFT JOIN Location ON "
         "ItemLocation.LocationId=Location.LocationId WHERE ItemLocation.ItemId=" +
         Database::SQLString(ItemId) + " ORDER BY ItemLocation.LocationId";
}

// An item set up at no location says so.
void arItemDetailLocationsSub::ActiveReport_ReportStart() {
  DataControl().SetSource(SQL());
  const auto& rs = DataControl().Recordset();
  const bool empty = !rs || rs->Eof();
  for (const char* caption : {"lblLocation", "lblLocationName", "lblShelf", "lblMin", "lblMax",
                              "lblInUse", "lblOnHand", "lblValue"}) {
    Field(caption).SetVisible(!empty);
  }
  Field("lblNoLocations").SetVisible(empty);
  Sections()["Detail"].SetVisible(!empty);
}

}  // namespace trellin
