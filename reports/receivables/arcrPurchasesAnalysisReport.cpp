// The purchase analysis's keys, parameters, columns and query; the run is the sales analysis's.
//
// The rows are joined as the sales analysis joins the same kind of row (suppliers through their
// documents to the lines and items, items with the party and the job outer-joined), with the
// purchase lines (types 20 to 24) counted in place of the sales lines. Purchases are stored with
// the sign they are reported in, so the sums carry none.

#include "reports/receivables/arcrPurchasesAnalysisReport.h"

#include <stdexcept>

#include "core/ReportUtilities.h"
#include "platform/runtime/Strings.h"
#include "reports/ReportShapes.h"
#include "reports/receivables/SalesAnalysisShared.h"
#include "reports/receivables/arcrPurchasesAnalysisReportTransSub.h"

namespace trellin {

namespace {

// clang-format off
constexpr AnalysisKey kPurchaseAnalysisKeys[] = {
    {"PurchaseAnalysisAP", AnalysisRows::Parties, "OtherParty.OtherPartyId,OtherParty.Name,OtherParty.XRefId",
     "Suppliers ", "OtherPartyId", "Name", "Code,Name,X Ref,Quantity,Gross,Discount,Net",
     "Department,Employee,Location,Supplier Category,Supplier Employee,Supplier Location,Supplier "
     "Type,Supplier Payment Term,Item,Item Category,Item Type,Job,Job Category", "Supplier"},
    {"ItemPurchaseAnalysis", AnalysisRows::Items, "Item.ItemId,Item.Description", "Items ",
     "ItemId", "Description", "Code,Description,Quantity,Gross,Discount,Net",
     "Department,Item Category,Item Type,Location,Supplier,Transactions Supplier,Supplier "
     "Category,Supplier Location,Supplier Type,Order Number", "Supplier"},
};
// clang-format on

// The client sort of each OrderBy choice; any other choice sorts on the row's key.
constexpr AnalysisOrder kPurchaseAnalysisOrders[] = {
    {"Description", "Description"},
    {"Name", "Name"},
    {"X Ref", "XRefId"},
    {"Quantity", "Qty DESC"},
    {"Gross", "Gross DESC"},
    {"Discount", "Discount DESC"},
    {"Net", "Net DESC"},
};

constexpr float kFigureWidth = 1300;

}  // namespace

DesignerPtr CreatearcrPurchasesAnalysisReport() {
  return std::make_shared<arcrPurchasesAnalysisReport>();
}

const AnalysisKey& arcrPurchasesAnalysisReport::KeyOf(const std::string& key) const {
  for (const AnalysisKey& row : kPurchaseAnalysisKeys) {
    if (EqualsIgnoreCase(row.key, key)) return row;
  }
  throw std::invalid_argument("arcrPurchasesAnalysisReport does not serve the key \"" + key +
                              "\".");
}

std::span<const AnalysisOrder> arcrPurchasesAnalysisReport::Orders() const {
  return kPurchaseAnalysisOrders;
}

void arcrPurchasesAnalysisReport::RefreshParameters(std::string& ReportName) {
  const AnalysisKey& key = KeyOf(ReportName);
  AddCommonParameters(key, "APCURRENT", false);
  trellin::Parameters& p = TLReport()->Parameters();
  AddPurchaseListParameters(p);
  p.AddMultiList("Groupings", Variant(), false, "", Variant(), std::string(key.groupings), false,
                 false, "Groupings");
}

void arcrPurchasesAnalysisReport::RefreshDataColumns() {
  const AnalysisKey& key = KeyOf(TLReport()->ReportName());
  const int decimals =
      RoundingDecimals(TLReport()->Parameters().Value("Rounding", "Normal").Text());
  const bool parties = key.rows == AnalysisRows::Parties;
  AddColumn("Code", key.key_field, kColumnCode, 1150, false, "(auto)", true, decimals);
  AddColumn(parties ? "Name" : "Description", key.name_field, kColumnText, -1, false, "(auto)",
            true, decimals);
  AddColumn("Qty", "Qty", kColumnNumber, 1000, true, "Round", true, decimals);
  AddColumn("Gross", "Gross", kColumnMoney, kFigureWidth, true, "Round", true, decimals);
  AddColumn("Disc", "Discount", kColumnMoney, kFigureWidth, true, "Round", true, decimals);
  AddColumn("Net", "Net", kColumnMoney, kFigureWidth, true, "Round", true, decimals);
  AddColumn("Tax", "Tax", kColumnMoney, kFigureWidth, true, "Round", true, decimals);
  AddColumn("Tax Incl", "Inclusive", kColumnMoney, kFigureWidth, true, "Round", true, decimals);
}

void arcrPurchasesAnalysisReport::AddSideHeadings() {
  // Net, tax and the value with tax all print, so no line says which the figures are.
}

void arcrPurchasesAnalysisReport::AddFilters(std::string& where) {
  trellin::Parameters& p = TLReport()->Parameters();
  AppendPurchaseListFilters(where, p, heading_, rows_kind_ == AnalysisRows::Items);
  AppendListParameterCondition(where, "Transactions.AddressId", "AddressId", p, heading_,
                               kRangeText);
}

void arcrPurchasesAnalysisReport::AddLineTypes(std::string& where) {
  AppendSQLCondition(where, "(TransactionLine.Type>=20 And TransactionLine.Type<25)");
}

std::string arcrPurchasesAnalysisReport::FiguresSQL(bool per_line) const {
  auto sum = [&](const char* expression, const char* name) {
    return std::string(",") + (per_line ? "(" : "Sum(") + expression + ") AS " + name;
  };
  return sum("TransactionLine.Value+TransactionLine.Discount", "Gross") +
         sum("TransactionLine.Discount", "Discount") +
         sum("TransactionLine.Value+TransactionLine.TaxValue", "Inclusive") +
         sum("TransactionLine.TaxValue", "Tax") + sum("TransactionLine.Value", "Net");
}

bool arcrPurchasesAnalysisReport::OwnGrouping(ChosenGrouping& grouping,
                                              const std::string& base) const {
  return PurchaseGrouping(grouping, base);
}

std::string arcrPurchasesAnalysisReport::LinesOrder() const {
  return rows_kind_ == AnalysisRows::Parties
             ? "TransactionLine.DateProcess,TransactionLine.ItemId"
             : "TransactionLine.DateProcess,OtherParty.OtherPartyId";
}

std::shared_ptr<ardsSalesAnalysisReportTransSub> arcrPurchasesAnalysisReport::MakeLines() const {
  return std::make_shared<arcrPurchasesAnalysisReportTransSub>();
}

}  // namespace trellin
