// The purchase summary's keys, parameters, columns, filters and figures; the run is the sales
// summary's. The rows are joined as the sales summary joins the same kind of row, with the
// purchase lines (types 20 to 24) counted; purchases are summed with the sign they are stored in.

#include "reports/receivables/arcrPurchasesSummaryReport.h"

#include <stdexcept>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"
#include "reports/ReportShapes.h"
#include "reports/receivables/SalesAnalysisShared.h"

namespace trellin {

namespace {

// The client sort of each OrderBy choice; any other choice sorts on the row's key.
constexpr AnalysisOrder kPurchaseSummaryOrders[] = {
    {"Description", "Description"},
    {"Name", "Name"},
    {"X Ref", "XRefId"},
    {"Period 1 Purch", "Purchases1 DESC"},
    {"Period 2 Purch", "Purchases2 DESC"},
    {"Period 1 Disc", "Disc1 DESC"},
    {"Period 2 Disc", "Disc2 DESC"},
    {"Period 1 Net", "Net1 DESC"},
    {"Period 2 Net", "Net2 DESC"},
};

}  // namespace

DesignerPtr CreatearcrPurchasesSummaryReport() {
  return std::make_shared<arcrPurchasesSummaryReport>();
}

bool arcrPurchasesSummaryReport::PartiesKey(const std::string& key) const {
  if (EqualsIgnoreCase(key, "PurchaseSummaryAP")) return true;
  if (EqualsIgnoreCase(key, "ItemPurchaseSummary")) return false;
  throw std::invalid_argument("arcrPurchasesSummaryReport does not serve the key \"" + key + "\".");
}

std::span<const AnalysisOrder> arcrPurchasesSummaryReport::Orders() const {
  return kPurchaseSummaryOrders;
}

void arcrPurchasesSummaryReport::RefreshParameters(std::string& ReportName) {
  parties_ = PartiesKey(ReportName);
  TLReport()->SetHasParameters(true);
  TLReport()->DataColumns().SetEnabled(true);
  trellin::Parameters& p = TLReport()->Parameters();
  p.AddList("OrderBy", "Code", true, "", "Code",
            std::string(parties_ ? "Code,Name,X Ref," : "Code,Description,") +
                "Period 1 Purch,Period 2 Purch,Period 1 Disc,Period 2 Disc,Period 1 Net,Period "
                "2 Net",
            false, "Order By");
  AddPeriodParameters("APCURRENT");
  p.AddBoolean("TaxInclusive", false, false, "", false, false, "Tax Inclusive");
  p.AddSQLList("AddressId", Variant(), false, "", Variant(),
               "SELECT AddressId FROM Transactions GROUP BY AddressId", "AddressId", false,
               "Address");
  AddPurchaseListParameters(p);
  p.AddMultiList("Groupings", Variant(), false, "", Variant(),
                 parties_ ? "Department,Employee,Location,Supplier Category,Supplier "
                            "Employee,Supplier Location,Supplier Type,Supplier Payment Term"
                          : "Department,Item Category,Item Type,Location,Supplier,Transactions "
                            "Supplier,Supplier Category,Supplier Location,Supplier Type",
                 false, false, "Groupings");
}

void arcrPurchasesSummaryReport::RefreshDataColumns() {
  AddColumn("Code", parties_ ? "OtherPartyId" : "ItemId", kColumnCode, 1150, "Code", false, true);
  const std::string name = parties_ ? "Name" : "Description";
  AddColumn(name, name, kColumnText, -1, name, false, true);
  for (int period = 1; period <= 2; ++period) {
    const std::string n = std::to_string(period);
    const std::string word = PeriodWord(period);
    AddColumn("Purchases" + n, "Purchases" + n, kColumnMoney, 1300, word + " Purch", true, true);
    AddColumn("Disc" + n, "Disc" + n, kColumnMoney, 1300, word + " Disc", true, true);
    AddColumn("Net" + n, "Net" + n, kColumnMoney, 1300, word + " Net", true, true);
  }
}

void arcrPurchasesSummaryReport::AddSideHeadings() {
  AppendDescription(heading_, "Purchase figures shown " +
                                  TrellinReportGlobals::RequireApplication().Tax().TaxName() +
                                  (tax_inclusive_ ? " Inclusive" : " Exclusive"));
}

void arcrPurchasesSummaryReport::AddSideFilters(std::string& where) {
  trellin::Parameters& p = TLReport()->Parameters();
  AppendPurchaseListFilters(where, p, heading_, !parties_);
  AppendListParameterCondition(where, "Transactions.AddressId", "AddressId", p, heading_,
                               kRangeText);
  AppendSQLCondition(where, "(TransactionLine.Type Between 20 And 24)");
}

bool arcrPurchasesSummaryReport::OwnGrouping(ChosenGrouping& grouping,
                                             const std::string& base) const {
  return PurchaseGrouping(grouping, base);
}

std::vector<std::pair<std::string, std::string>> arcrPurchasesSummaryReport::Figures() const {
  if (tax_inclusive_) {
    return {
        {"Purchases", "(transactionLine.Value+transactionLine.Discount+transactionLine.TaxValue)"},
        {"Disc", "TransactionLine.Discount"},
        {"Net", "(transactionLine.Value+transactionLine.TaxValue)"}};
  }
  return {{"Purchases", "(transactionLine.Value+transactionLine.Discount)"},
          {"Disc", "TransactionLine.Discount"},
          {"Net", "(transactionLine.Value)"}};
}

}  // namespace trellin
