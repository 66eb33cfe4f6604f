// Orders on order: parameters and columns of each key, and the run's events.

#include "reports/stock/arscStockOnOrderReport.h"

#include <stdexcept>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/TrellinReports.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Format.h"

namespace trellin {

namespace {

constexpr const char* kPurchaseKey = "StockOnOrder";
constexpr const char* kSalesKey = "StockOnSalesOrders";
constexpr const char* kStocktakeKey = "StocktakeVarianceReport";

// A column, whether the footers sum it, and the flag that shows it ("" always shown).
struct OrderColumn {
  StockColumn column;
  bool totalled;
  const char* shown_by;
};

constexpr OrderColumn kPurchaseColumns[] = {
    {{"Code", "ItemId", "Code", "", kColumnCode, 0, false}, false, ""},
    {{"Description", "Description", "Description", "", kColumnText, -1, false}, false, ""},
    {{"Date", "Date", "Date", "", kColumnDate, 1000, false}, false, ""},
    {{"Reference", "Reference", "Reference", "Ref", kColumnText, 1100, false}, false, ""},
    {{"OtherParty", "OtherParty", "Supplier", "Supp", kColumnText, 2600, false},
     false,
     "ShowSupplier"},
    {{"SupplierCode", "SupplierCode", "Supplier Code", "S Code", kColumnText, 1200, false},
     false,
     "ShowSupplierCode"},
    {{"Location", "LocationId", "Location", "Locn", kColumnText, 800, false},
     false,
     "ShowLocation"},
    {{"Department", "DeptId", "Department", "Dept", kColumnText, 800, false},
     false,
     "ShowDepartment"},
    {{"Quantity", "Quantity", "Qty", "", kColumnNumber, 900, false}, true, ""},
    {{"QuantityRemaining", "QuantityRemaining", "Remaining", "Rem", kColumnNumber, 1000, false},
     true,
     ""},
    {{"UnitPrice", "UnitPrice", "Unit Price", "", kColumnMoney, 1100, false}, false, ""},
    {{"EstimatedDate", "EstimatedDate", "EDA", "", kColumnDate, 1000, false}, false, ""},
    {{"Total", "Total", "Total", "", kColumnMoney, 1300, false}, true, ""},
};

constexpr OrderColumn kSalesColumns[] = {
    {{"TransId", "acBatchTransactionId", "Id", "", kColumnNumber, 700, false},
     false,
     "ShowCustomer"},
    {{"Code", "ItemId", "Code", "", kColumnCode, 0, false}, false, ""},
    {{"Description", "Description", "Description", "", kColumnText, -1, false}, false, ""},
    {{"Date", "Date", "Date", "", kColumnDate, 1000, false}, false, ""},
    {{"Reference", "Reference", "Ref", "", kColumnText, 1100, false}, false, ""},
    {{"OtherParty", "OtherParty", "Customer", "Cust", kColumnText, 2600, false},
     false,
     "ShowCustomer"},
    {{"Location", "LocationId", "Location", "Locn", kColumnText, 800, false},
     false,
     "ShowLocation"},
    {{"Department", "DeptId", "Department", "Dept", kColumnText, 800, false},
     false,
     "ShowDepartment"},
    {{"OrderQuantity", "OrderQuantity", "Order Qty", "Order", kColumnNumber, 900, false}, true, ""},
    {{"Quantity", "Quantity", "Qty", "", kColumnNumber, 900, false}, true, ""},
    {{"UnitPrice", "UnitPrice", "Unit Price", "", kColumnMoney, 1100, false}, false, ""},
    {{"Total", "Total", "Total", "", kColumnMoney, 1300, false}, true, ""},
};

void AddFlag(Parameters& p, const char* name, const char* caption) {
  p.AddBoolean(name, false, false, "", false, false, caption);
}

}  // namespace

DesignerPtr CreatearscStockOnOrderReport() { return std::make_shared<arscStockOnOrderReport>(); }

bool arscStockOnOrderReport::Stocktake() const { return TLReport()->ReportName() == kStocktakeKey; }

bool arscStockOnOrderReport::Purchases() const {
  const std::string& key = TLReport()->ReportName();
  if (key == kPurchaseKey) return true;
  if (key == kSalesKey || key == kStocktakeKey) return false;
  throw std::invalid_argument("The order reports have no report named \"" + key + "\".");
}

void arscStockOnOrderReport::RefreshParameters(std::string&) {
  const bool purchases = Purchases();
  TLReport()->SetHasParameters(true);
  TLReport()->DataColumns().SetEnabled(true);
  if (Stocktake()) {
    RefreshStocktakeParameters();
    return;
  }
  trellin::Parameters& p = TLReport()->Parameters();
  AddFlag(p, "Summary", "Summary");
  p.AddDate("DateFrom", Variant::Null(), false, "", Variant::Null(), false, "Date From");
  p.AddDate("DateTo", Variant::Null(), false, "", Variant::Null(), false, "Date To");
  AddFlag(p, "ShowLocation", "Show Location");
  AddFlag(p, "ShowDepartment", "Show Department");
  if (purchases) {
    p.AddList("OrderBy", "Code", true, "", "Code",
              "Code,Supplier Code,Supplier Name,Date,Reference,EDA", false, "Order By");
    p.AddDate("EDADateFrom", Variant::Null(), false, "", Variant::Null(), false,
              "Estimated date arrival from");
    p.AddDate("EDADateTo", Variant::Null(), false, "", Variant::Null(), false,
              "Estimated date arrival to");
    AddFlag(p, "ShowSupplier", "Show Supplier");
    AddFlag(p, "IncludeAllLines", "Include All Lines");
    AddFlag(p, "Filled", "Filled");
    AddFlag(p, "ShowSupplierCode", "Show Supplier Code");
    p.AddSQLList("Reference", Variant(), false, "", Variant(),
                 "SELECT DISTINCT Reference FROM PurchaseOrder ORDER BY Reference", "Reference",
                 false, "Reference");
    p.AddMultiList(
        "Groupings", Variant(), false, "", Variant(),
        "Item,Item Type,Item Category,Location,Department,Employee,Supplier,Reference,EDA", false,
        false, "Groupings");
  } else {
    p.AddList("OrderBy", "Code", true, "", "Code",
              "Code,Customer Code,Customer Name,Date,Reference,Trans Id", false, "Order By");
    AddFlag(p, "ShowCustomer", "Show Customer");
    AddFlag(p, "IncludeZeroQuantity", "Include Zero Quantity");
    p.AddSQLList("Reference", Variant(), false, "", Variant(),
                 "SELECT DISTINCT acBatchTransaction.Reference FROM acBatchHeader INNER JOIN "
                 "acBatchTransaction ON acBatchHeader.acBatchSId = acBatchTransaction.acBatchSId "
                 "WHERE acBatchHeader.Type=90 ORDER BY acBatchTransaction.Reference",
                 "Reference", false, "Reference");
    p.AddMultiList("Groupings", Variant(), false, "", Variant(),
                   "Item,Item Type,Item Category,Location,Department,Employee,Customer,Customer "
                   "Name,Reference,Transaction Type",
                   false, false, "Groupings");
  }
  CreateStandardParameter(18, p, true);
  for (long index : {23L, 14L, 15L, 16L, 20L}) CreateStandardParameter(index, p, false);
  CreateStandardParameter(purchases ? 33 : 8, p, false);
  TrellinReportGlobals::RequireApplication().AddUserDefinedParametersItem(p, false);
}

void arscStockOnOrderReport::RefreshDataColumns() {
  if (Stocktake()) {
    RefreshStocktakeColumns();
    return;
  }
  DataColumns& columns = TLReport()->DataColumns();
  const std::string quantity_format = QuantityFormat();
  std::span<const OrderColumn> rows = Purchases() ? std::span<const OrderColumn>(kPurchaseColumns)
                                                  : std::span<const OrderColumn>(kSalesColumns);
  for (const OrderColumn& c : rows) {
    std::string format = "(auto)";
    if (c.column.data_type == kColumnNumber) format = quantity_format;
    if (std::string_view(c.column.name) == "TransId") format = "0";
    AddColumn(columns, c.column, format, c.totalled);
  }
}

void arscStockOnOrderReport::BuildSQL() {
  summary_ = TLReport()->Parameters().Value("Summary", false).ToBool();
  description_.clear();
  if (Stocktake()) {
    BuildStocktakeSQL();
    return;
  }
  // A flag left unticked hides the columns it shows.
  trellin::Parameters& p = TLReport()->Parameters();
  DataColumns& columns = TLReport()->DataColumns();
  std::span<const OrderColumn> rows = Purchases() ? std::span<const OrderColumn>(kPurchaseColumns)
                                                  : std::span<const OrderColumn>(kSalesColumns);
  for (const OrderColumn& c : rows) {
    if (*c.shown_by != '\0' && !p.Value(c.shown_by, false).ToBool()) {
      columns.Item(c.column.name).Hidden = true;
    }
  }
  if (Purchases()) {
    BuildPurchaseSQL();
  } else {
    BuildSalesSQL();
  }
}

void arscStockOnOrderReport::ActiveReport_ReportStart() {
  if (TLReport()->DataColumns().Count() == 0) RefreshDataColumns();
  BuildSQL();
  objects_ = TrellinReportGlobals::RequireBusinessLayer().CreateObjects();
  LayOutColumns(summary_, description_);
  if (Stocktake()) {
    DataControl().SetRecordset(rows_);
    Sections()["Detail"].SetVisible(!summary_ && rows_ && !rows_->Eof());
    return;
  }
  DataControl().SetSource(sql_);
}

void arscStockOnOrderReport::ActiveReport_DataInitialize() {
  Fields().Add("OtherParty");
  Fields().Add("NewQty");
}

void arscStockOnOrderReport::ActiveReport_FetchData(bool& eof) {
  if (eof || !objects_) return;
  if (Stocktake()) {
    const ReportField* counted = Fields().Find("SumOfQuantity");
    Fields()["NewQty"].SetValue(counted == nullptr ? Variant::Null() : counted->Value());
    return;
  }
  const ReportField* code = Fields().Find("OtherPartyId");
  Variant party;
  if (code != nullptr && !code->Value().IsNull() && !Trim(code->Value().Text()).empty()) {
    const std::string id = Trim(code->Value().Text());
    const OtherParty* found = objects_->FindOtherParty(id);
    party = id + ", " + (found != nullptr ? found->name : std::string());
  }
  Fields()["OtherParty"].SetValue(party);
}

void arscStockOnOrderReport::Detail_Format() {
  const auto& rs = DataControl().Recordset();
  if (!rs || rs->Eof()) return;
  if (TLReport()->ColumnsInUse()) TLReport()->DataColumns().FillRow(Fields(), "");
  if (summary_) return;
  Section& detail = Sections()["Detail"];
  detail.SetBackStyle(1 - detail.BackStyle());
}

void arscStockOnOrderReport::GroupHeaderFormat(Section& section, int level) {
  if (!Purchases()) return;
  Control* label = section.Controls().Find("ghLabel" + std::to_string(level));
  if (label == nullptr) return;
  const auto value = [&](const char* name) {
    const ReportField* field = Fields().Find(name);
    return field == nullptr ? Variant::Null() : field->Value();
  };
  if (EqualsIgnoreCase(section.DataField(), "EstimatedDate")) {
    const Variant date = value("EstimatedDate");
    label->SetCaption(DateGiven(date) ? "EDA - " + DateText(date) : std::string("No EDA"));
    return;
  }
  if (!EqualsIgnoreCase(section.DataField(), "ItemId")) return;
  bool location_beneath = false;
  for (int inner = 1; inner < level; ++inner) {
    const Section* header = Sections().Find("GroupHeader" + std::to_string(inner));
    if (header != nullptr && header->Visible() &&
        EqualsIgnoreCase(header->DataField(), "LocationId")) {
      location_beneath = true;
    }
  }
  if (!location_beneath) return;
  std::string sql =
      "SELECT ROUND(Sum(Quantity)," + std::to_string(QuantityDecimals()) +
      ") FROM TransactionLine WHERE ItemId=" + Database::SQLString(value("ItemId").Text());
  const Variant date_to = TLReport()->Parameters().Value("DateTo", Variant());
  if (DateGiven(date_to)) {
    sql += " AND (DateProcess<" + Database::SQLDate(date_to.ToDate().DateOnly().AddDays(1)) +
           " OR DateProcess Is Null)";
  }
  const Variant location = value("LocationId");
  if (!location.IsNull()) sql += " AND LocationId=" + Database::SQLString(location.Text());
  auto rs = TrellinReportGlobals::RequireBusinessLayer().Database()->Query(sql);
  const Variant on_hand = rs->Eof() ? Variant::Null() : rs->Value(0);
  const double quantity = on_hand.IsNull() ? 0.0 : on_hand.ToDouble();
  label->SetCaption(label->Caption() + " (" + Format(Variant(quantity), QuantityFormat()) +
                    " on hand)");
}

void arscStockOnOrderReport::ActiveReport_ReportEnd() {
  DataControl().SetRecordset(nullptr);
  rows_.reset();
  objects_.reset();
}

}  // namespace trellin
