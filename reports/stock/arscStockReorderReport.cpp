// Stock levels and reorder: parameters and columns of each key, and the run's events.

#include "reports/stock/arscStockReorderReport.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/TrellinReports.h"
#include "core/kvReportUtilities.h"

namespace trellin {

namespace {

constexpr const char* kReorderKey = "StockReorder";
constexpr const char* kReorderGroupings = "Item,Item Type,Item Category,Location,Supplier,Shelf";
constexpr const char* kLevelGroupings =
    "Item Type,Item Category,Location,Supplier,Shelf,SerialNumber";

// The option flags of StockLevel, in the order of the dialogue. The job flag's doubled word is
// its name.
constexpr const char* kLevelOptions[] = {
    "OptionAPOpen",
    "OptionAROpen",
    "OptionSalesOrders",
    "OptionSalesOrdersToSupply",
    "OptionSalesOrdersLessHeld",
    "OptionJobInvoices",
    "OptionJobInvoicesToSupply",
    "OptionOptionJobInvoicesLessHeld",
    "OptionPurchaseOrders",
    "OptionArrivalDate",
    "OptionValueOnHand",
};

constexpr StockColumn kLevelColumns[] = {
    {"Code", "ItemId", "Code", "", kColumnCode, 0, false},
    {"Description", "Description", "Description", "", kColumnText, -1, false},
    {"SerialNumber", "SerialNumber", "Serial #", "", kColumnText, 1000, true},
    {"QuantityOnHand", "QuantityOnHand", "Qty On Hand", "Qty OH", kColumnNumber, 1000, false},
    {"ValueOnHand", "ValueOnHand", "$ On Hand", "$ OH", kColumnMoney, 1300, false},
    {"APOpen", "APOpen", "AP Open", "", kColumnNumber, 1100, false},
    {"AROpen", "AROpen", "AR Open", "", kColumnNumber, 1100, false},
    {"SalesOrders", "SalesOrders", "Sales Orders", "S Ord", kColumnNumber, 900, false},
    {"JobInvoices", "JobInvoices", "Job Invoices", "Job Inv", kColumnNumber, 900, false},
    {"PurchaseOrders", "PurchaseOrders", "Purchase Orders", "P Ord", kColumnNumber, 900, false},
    {"ArrivalDate", "ArrivalDate", "Arrival Date", "ETA", kColumnDate, 1000, false},
    {"Allocated", "Allocated", "Allocated", "", kColumnNumber, 900, false},
    {"QuantityAvailable", "QuantityAvailable", "Available", "", kColumnNumber, 900, false},
};

constexpr StockColumn kReorderColumns[] = {
    {"Code", "ItemId", "Code", "", kColumnCode, 0, false},
    {"Description", "Description", "Description", "", kColumnText, -1, false},
    {"Location", "LocationId", "LocationId", "Locn", kColumnText, 1100, false},
    {"QuantityAvailable", "QtyAvailable", "Available", "", kColumnNumber, 1100, false},
    {"QuantityOnOrder", "QtyOnOrder", "On Order", "", kColumnNumber, 1100, false},
    {"MinimumReorder", "MinReorder", "Minimum", "", kColumnNumber, 1100, false},
    {"MaximumReorder", "MaxReorder", "Maximum", "", kColumnNumber, 1100, false},
    {"Reorder", "QtyReOrder", "Reorder", "", kColumnNumber, 1100, false},
};

}  // namespace

double ReorderQuantity(double available, double minimum, double maximum,
                       std::optional<double> on_order, bool fill_to_maximum,
                       bool exclude_on_order) {
  if (available > minimum && !fill_to_maximum) return 0;
  double reorder = maximum - available;
  if (!exclude_on_order && on_order) reorder -= *on_order;
  return reorder;
}

double ChosenOrderFigure(bool to_supply, bool less_held, double on_order, double on_order_held,
                         double to_supply_quantity, double to_supply_held) {
  if (to_supply && less_held) return to_supply_quantity - to_supply_held;
  if (less_held) return on_order - on_order_held;
  if (to_supply) return to_supply_quantity;
  return on_order;
}

DesignerPtr CreatearscStockReorderReport() { return std::make_shared<arscStockReorderReport>(); }

void arscStockReorderReport::RefreshParameters(std::string& ReportName) {
  reorder_ = ReportName == kReorderKey;
  TLReport()->SetHasParameters(true);
  TLReport()->DataColumns().SetEnabled(true);
  trellin::Parameters& p = TLReport()->Parameters();
  p.AddList("OrderBy", "Code", true, "", "Code", "Code,Name", false, "Order By");
  p.AddBoolean("Summary", false, false, "", false, false, "Summary");
  p.AddDate("DateAsAt", Variant(), true, "Date As At", "NOW", false, "Date As At");
  p.AddMultiList("Groupings", Variant(), false, "", Variant(),
                 reorder_ ? kReorderGroupings : kLevelGroupings, false, false, "Groupings");
  if (reorder_) {
    p.AddBoolean("FillToMaximum", false, false, "", false, false, "Fill To Maximum");
    p.AddBoolean("ExcludeInactiveItems", false, false, "", false, false, "Exclude Inactive Items");
    p.AddBoolean("ExcludeOnOrderQty", false, false, "", false, false, "Exclude On Order Qty");
  } else {
    p.AddBoolean("IncludeZeroOnHand", false, false, "", false, false, "Include Zero On Hand");
    p.AddBoolean("ExcludeInactiveItems", false, false, "", false, false, "Exclude Inactive Items");
    AddBoundParameters(p);
    for (const char* option : kLevelOptions)
      p.AddBoolean(option, false, false, "", false, false, option);
  }
  CreateStandardParameter(17, p, true);
  for (long index : {23L, 16L, 20L, 33L, 31L}) CreateStandardParameter(index, p, false);
  if (!reorder_) CreateStandardParameter(30, p, false);
  TrellinReportGlobals::RequireApplication().AddUserDefinedParametersItem(p, false);
}

void arscStockReorderReport::RefreshDataColumns() {
  reorder_ = TLReport()->ReportName() == kReorderKey;
  DataColumns& columns = TLReport()->DataColumns();
  const std::string quantity_format = QuantityFormat();
  auto add = [&](const StockColumn& c) {
    AddColumn(columns, c, c.data_type == kColumnNumber ? quantity_format : "(auto)",
              c.data_type == kColumnNumber || c.data_type == kColumnMoney);
  };
  if (reorder_) {
    for (const StockColumn& c : kReorderColumns) add(c);
  } else {
    for (const StockColumn& c : kLevelColumns) add(c);
  }
}

void arscStockReorderReport::BuildSQL() {
  reorder_ = TLReport()->ReportName() == kReorderKey;
  summary_ = TLReport()->Parameters().Value("Summary", false).ToBool();
  description_.clear();
  if (reorder_) {
    BuildReorderSQL();
  } else {
    BuildLevelSQL();
  }
}

void arscStockReorderReport::ActiveReport_ReportStart() {
  if (TLReport()->DataColumns().Count() == 0) RefreshDataColumns();
  objects_ = TrellinReportGlobals::RequireBusinessLayer().CreateObjects();
  levels_ = objects_->CreateItemStockLevel();
  BuildSQL();
  LayOutColumns(summary_, description_);
  if (Control* title = FindControl("lblReportTitle"); title && !Caption().empty()) {
    title->SetCaption(Caption());
  }
  if (reorder_) {
    DataControl().SetRecordset(rows_);
    Sections()["Detail"].SetVisible(!summary_ && rows_ && !rows_->Eof());
  } else {
    DataControl().SetSource(sql_);
  }
}

void arscStockReorderReport::ActiveReport_DataInitialize() {
  if (reorder_) return;
  for (const StockColumn& c : kLevelColumns) {
    if (c.data_type != kColumnCode && std::string_view(c.name) != "Description" &&
        std::string_view(c.name) != "SerialNumber") {
      Fields().Add(c.field);
    }
  }
}

void arscStockReorderReport::ActiveReport_FetchData(bool& eof) {
  if (eof || reorder_) return;
  FetchLevel();
}

void arscStockReorderReport::Detail_Format() {
  const auto& rs = DataControl().Recordset();
  if (!rs || rs->Eof()) return;
  if (TLReport()->ColumnsInUse()) TLReport()->DataColumns().FillRow(Fields(), "");
  if (summary_) return;
  Section& detail = Sections()["Detail"];
  detail.SetBackStyle(1 - detail.BackStyle());
}

void arscStockReorderReport::ActiveReport_ReportEnd() {
  DataControl().SetRecordset(nullptr);
  rows_.reset();
  levels_.reset();
  objects_.reset();
}

}  // namespace trellin
