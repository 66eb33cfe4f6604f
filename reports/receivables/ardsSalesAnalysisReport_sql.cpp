// The sales analysis's parameters by key, its data columns, and its SQL routine: the options,
// the heading lines, the filters, which lines count, the groups and the aggregate query.

#include <algorithm>
#include <stdexcept>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/AnalysisFigures.h"
#include "reports/receivables/ReceivablesShared.h"
#include "reports/receivables/SalesAnalysisShared.h"
#include "reports/receivables/ardsSalesAnalysisReport.h"

namespace trellin {

namespace {

// clang-format off
constexpr AnalysisKey kSalesAnalysisKeys[] = {
    {"SalesAnalysisAR", AnalysisRows::Parties, "OtherParty.OtherPartyId,OtherParty.Name,OtherParty.XRefId",
     "Customers ", "OtherPartyId", "Name", "Code,Name,X Ref,Sales,Quantity,Discount,Net Sales,Costs",
     "Employee,Department,Location,Customer Category,Customer Employee,Customer Location,Customer "
     "Type,Customer Payment Term,Item,Item Category,Item Type,Job,Job Category", "Customer"},
    {"ItemSalesAnalysis", AnalysisRows::Items, "Item.ItemId,Item.Description", "Items ", "ItemId",
     "Description", "Code,Description,Sales,Quantity,Discount,Net Sales",
     "Employee,Customer,Department,Item Category,Item Type,Location,Supplier,Customer "
     "Category,Customer Location,Customer Type", "Customer"},
    {"JobAnalysis", AnalysisRows::Jobs, "Job.JobId,Job.Description", "Jobs ", "JobId", "Description",
     "Code,Description,Sales,Quantity,Discount,Net Sales,Costs,Purchases",
     "Employee,Item Category,Item Type,Location,Job Category,Customer", "Customer"},
    {"ItemJobAnalysis", AnalysisRows::ItemsOfJobs, "Item.ItemId,Item.Description", "Items ", "ItemId",
     "Description", "Code,Description,Sales,Quantity,Discount,Net Sales",
     "Job,Customer,Department,Item Category,Item Type,Location,Supplier", "Customer"},
};

// The client sort of each OrderBy choice; any other choice sorts on the row's key.
constexpr AnalysisOrder kSalesAnalysisOrders[] = {
    {"Description", "Description"}, {"Name", "Name"}, {"X Ref", "XRefId"},
    {"Quantity", "Qty DESC"}, {"Sales", "Sales DESC"}, {"Discount", "Disc DESC"},
    {"Net Sales", "NetSales DESC"}, {"Costs", "Costs DESC"}, {"Purchases", "Purchases DESC"},
};

// The filters that tie a line to a customer: with any of them set, stock lines, which have no
// customer, cannot be counted on ItemSalesAnalysis.
constexpr std::string_view kCustomerSideFilters[] = {
    "Customers", "CustomerCategories", "CustomerLocations", "CustomerTypes",
    "CustomerPaymentTerms", "JobCategories", "AddressId", "Jobs"};

// The stock transactions ItemSalesAnalysis may count in its costs.
struct SalesStockType {
  std::string_view parameter;
  std::string_view type;
  std::string_view word;
};
constexpr SalesStockType kSalesStockTypes[] = {{"IncludeAdjustments", "13", "Adjustment"},
                                     {"IncludeStocktakes", "11", "Stocktake"},
                                     {"IncludeRevaluations", "14", "Revaluation"}};

// The job statuses, stored by name.
constexpr std::string_view kJobStatuses[] = {"Open", "Closed", "Costing", "Completed", "Hold",
                                          "Template"};

// clang-format on

constexpr float kFigureWidth = 1150;
constexpr std::string_view kPercentMask = "#0.00;(#0.00)";

std::string AsString(std::string_view view) { return std::string(view); }

}  // namespace

DesignerPtr CreateardsSalesAnalysisReport() { return std::make_shared<ardsSalesAnalysisReport>(); }

const AnalysisKey& ardsSalesAnalysisReport::KeyOf(const std::string& key) const {
  for (const AnalysisKey& row : kSalesAnalysisKeys) {
    if (EqualsIgnoreCase(row.key, key)) return row;
  }
  throw std::invalid_argument(DesignerName() + " does not serve the key \"" + key + "\".");
}

std::span<const AnalysisOrder> ardsSalesAnalysisReport::Orders() const {
  return kSalesAnalysisOrders;
}

void ardsSalesAnalysisReport::AddCommonParameters(const AnalysisKey& key,
                                                  const std::string& current, bool costs) {
  rows_kind_ = key.rows;
  TLReport()->SetHasParameters(true);
  TLReport()->DataColumns().SetEnabled(true);
  trellin::Parameters& p = TLReport()->Parameters();
  p.AddList("OrderBy", "Code", true, "", "Code", AsString(key.orders), false, "Order By");
  p.AddBoolean("Summary", false, false, "", false, false, "Summary");
  p.AddList("Period", "MTD", true, "", "MTD", "ALL,MTD,QTD,YTD,Custom", false, "Period");
  p.AddDate("PeriodDateFrom", Variant(), true, "", Variant(), false, "Period Date From");
  p.AddDate("PeriodDateTo", Variant(), true, "", current, false, "Period Date To");
  p.AddList("Rounding", "Normal", false, "", "Normal", "Normal,Whole,Thousands", false, "Rounding");
  p.AddBoolean("ShowTransactions", true, false, "", true, false, "Show Transactions");
  if (costs) p.AddBoolean("IncludeCosts", true, false, "", true, false, "Include Costs");
  p.AddSQLList("AddressId", Variant(), false, "", Variant(),
               "SELECT AddressId FROM Transactions GROUP BY AddressId", "AddressId", false,
               "Address");
  p.AddDate("DateAsAt", Variant(), false, "", current, false, "Date As At");
}

void ardsSalesAnalysisReport::RefreshParameters(std::string& ReportName) {
  const AnalysisKey& key = KeyOf(ReportName);
  AddCommonParameters(key, "ARCURRENT", true);
  trellin::Parameters& p = TLReport()->Parameters();
  if (!JobKey()) {
    p.AddBoolean("TaxInclusive", false, false, "", false, false, "Tax Inclusive");
    p.AddBoolean("IncludeSalePrice", false, false, "", false, false, "Include Sale Price");
    p.AddBoolean("ExcludeInactiveCustomers", false, false, "", false, false,
                 "Exclude Inactive Customers");
    if (rows_kind_ == AnalysisRows::Parties) {
      p.AddBoolean("SplitByAddress", false, false, "", false, false, "Split By Address");
      p.AddSQLList("References", Variant(), false, "", Variant(),
                   "SELECT Transactions.Reference FROM Transactions WHERE Transactions.Type=30 "
                   "GROUP BY Transactions.Reference",
                   "Reference", false, "References");
    } else {
      p.AddBoolean("IncludeAdjustments", false, false, "", false, false, "Include Adjustments");
      p.AddBoolean("IncludeStocktakes", false, false, "", false, false, "Include Stocktakes");
      p.AddBoolean("IncludeRevaluations", false, false, "", false, false, "Include Revaluations");
    }
    AddSalesListParameters(p, false);
  } else {
    AddSalesListParameters(p, true);
    p.AddDate("OpenedDateFrom", Variant(), false, "", Variant(), false, "Opened From");
    p.AddDate("OpenedDateTo", Variant(), false, "", Variant(), false, "Opened To");
    p.AddDate("ClosedDateFrom", Variant(), false, "", Variant(), false, "Closed From");
    p.AddDate("ClosedDateTo", Variant(), false, "", Variant(), false, "Closed To");
    for (std::string_view status : kJobStatuses) {
      p.AddBoolean("Status" + AsString(status), true, false, "", true, false, AsString(status));
    }
    p.AddSQLList("ChargeCustomer", Variant(), false, "", Variant(),
                 "SELECT JobContact.OtherPartyId, OtherParty.Name FROM OtherParty INNER JOIN "
                 "JobContact ON OtherParty.OtherPartyId = JobContact.OtherPartyId WHERE "
                 "OtherParty.IsCustomer=" +
                     Database::SQLBoolean(true) +
                     " AND JobContact.Charge=" + Database::SQLBoolean(true) +
                     " GROUP BY JobContact.OtherPartyId, OtherParty.Name ORDER BY "
                     "JobContact.OtherPartyId",
                 "OtherPartyId", false, "Charge Customers");
    p.AddBoolean("IncludeDisbursements", false, false, "", false, false, "Include Disbursements");
    p.AddBoolean("CostsPlusDisbursements", false, false, "", false, false,
                 "Costs Plus Disbursements");
    p.AddBoolean("TotalCosts", false, false, "", false, false, "Total Costs");
  }
  p.AddMultiList("Groupings", Variant(), false, "", Variant(), AsString(key.groupings), false,
                 false, "Groupings");
}

void ardsSalesAnalysisReport::AddColumn(std::string_view name, std::string_view field, int kind,
                                        float width, bool totalled, std::string_view format,
                                        bool shown, int decimals) {
  DataColumn& column = TLReport()->DataColumns().Add(
      AsString(name), AsString(field), kind, AsString(name), "", width, width < 0 ? 2400 : -1, -1,
      -1, AsString(format), format == "Round" ? std::max(0, decimals) : 0, 0, "", true, "",
      totalled, false);
  column.Hidden = !shown;
}

void ardsSalesAnalysisReport::RefreshDataColumns() {
  trellin::Parameters& p = TLReport()->Parameters();
  const AnalysisKey& key = KeyOf(TLReport()->ReportName());
  const bool costs = p.Value("IncludeCosts", true).ToBool();
  const bool total_costs = p.Value("TotalCosts", false).ToBool();
  const int decimals = RoundingDecimals(p.Value("Rounding", "Normal").Text());
  auto add = [&](std::string_view name, std::string_view field, int kind, float width,
                 bool totalled, std::string_view format, bool shown) {
    AddColumn(name, field, kind, width, totalled, format, shown, decimals);
  };
  add("Code", key.key_field, kColumnCode, 1150, false, "(auto)", true);
  add(key.rows == AnalysisRows::Parties ? "Name" : "Description", key.name_field, kColumnText, -1,
      false, "(auto)", true);
  add("Qty", "Qty", kColumnNumber, 900, true, "Round", true);
  add("Sales", "Sales", kColumnMoney, kFigureWidth, true, "Round", true);
  add("Disc", "Disc", kColumnMoney, kFigureWidth, true, "Round", true);
  add("Net", "NetSales", kColumnMoney, kFigureWidth, true, "Round", true);
  add("Costs", "Costs", kColumnMoney, kFigureWidth, true, "Round", costs);
  if (key.rows == AnalysisRows::Parties || key.rows == AnalysisRows::Items) {
    add("Price", "Price", kColumnMoney, kFigureWidth, false, "Round",
        p.Value("IncludeSalePrice", false).ToBool());
  } else {
    add("Purch", "Purchases", kColumnMoney, kFigureWidth, true, "Round", costs);
    add("Disb", "Disbursements", kColumnMoney, kFigureWidth, true, "Round", total_costs);
    add("T Costs", "TotalCosts", kColumnMoney, kFigureWidth, true, "Round", total_costs);
  }
  add("GP", "GrossProfit", kColumnMoney, kFigureWidth, true, "Round", costs);
  add("GP %", "GrossProfitPercent", kColumnNumber, 800, true, kPercentMask, costs);
}

void ardsSalesAnalysisReport::ReadOptions() {
  trellin::Parameters& p = TLReport()->Parameters();
  const AnalysisKey& key = KeyOf(TLReport()->ReportName());
  rows_kind_ = key.rows;
  key_field_ = AsString(key.key_field);
  auto flag = [&](const char* name) { return p.Value(name, false).ToBool(); };
  summary_ = flag("Summary");
  include_costs_ = flag("IncludeCosts");
  include_disbursements_ = flag("IncludeDisbursements");
  costs_plus_disbursements_ = flag("CostsPlusDisbursements");
  total_costs_ = flag("TotalCosts");
  include_sale_price_ = flag("IncludeSalePrice");
  exclude_inactive_ = flag("ExcludeInactiveCustomers");
  tax_inclusive_ = flag("TaxInclusive");
  show_transactions_ = !summary_ && flag("ShowTransactions");
  split_by_address_ = !summary_ && rows_kind_ == AnalysisRows::Parties && flag("SplitByAddress");
  decimals_ = RoundingDecimals(p.Value("Rounding", "Normal").Text());
}

void ardsSalesAnalysisReport::AddHeadings() {
  trellin::Parameters& p = TLReport()->Parameters();
  const AnalysisKey& key = KeyOf(TLReport()->ReportName());
  const std::string date_format = TrellinReportGlobals::RequireBusinessLayer().DateFormat();
  auto date_text = [&](const Variant& date) {
    return HasDate(date) ? Format(date, date_format) : std::string();
  };
  AppendDescription(heading_,
                    AsString(key.word) + "ordered by " + p.Value("OrderBy", "Code").Text());
  const std::string period = p.Value("Period", "MTD").Text();
  if (EqualsIgnoreCase(period, "Custom")) {
    AppendDateRangeDescription(heading_, "Period Covered", p.Value("PeriodDateFrom", Variant()),
                               p.Value("PeriodDateTo", Variant()));
  } else {
    AppendDescription(heading_, period + " " + date_text(p.Value("PeriodDateTo", Variant())));
  }
  if (decimals_ == kRoundingThousands) AppendDescription(heading_, "Figures shown in thousands");
  AddSideHeadings();
}

void ardsSalesAnalysisReport::AddSideHeadings() {
  if (!JobKey()) {
    AppendDescription(heading_, "Sales figures shown " +
                                    TrellinReportGlobals::RequireApplication().Tax().TaxName() +
                                    (tax_inclusive_ ? " Inclusive" : " Exclusive"));
    if (exclude_inactive_) AppendDescription(heading_, "Active Customers only");
  }
}

void ardsSalesAnalysisReport::AddFilters(std::string& where) {
  trellin::Parameters& p = TLReport()->Parameters();
  AppendSalesListFilters(where, p, heading_, JobKey(), ItemKey());
  if (!JobKey()) {
    if (rows_kind_ == AnalysisRows::Parties) {
      AppendListParameterCondition(where, "Transactions.Reference", "References", p, heading_,
                                   kRangeText);
    }
    if (exclude_inactive_) {
      AppendSQLCondition(where, "OtherParty.CustomerActive=" + Database::SQLBoolean(true));
    }
    AppendSQLCondition(where,
                       "(IsCustomer=" + Database::SQLBoolean(true) + " OR IsCustomer Is Null)");
  } else {
    AppendDateRangeCondition(where, "Job.DateOpened", p.Value("OpenedDateFrom", Variant()),
                             p.Value("OpenedDateTo", Variant()), "Opened", heading_);
    AppendDateRangeCondition(where, "Job.DateClosed", p.Value("ClosedDateFrom", Variant()),
                             p.Value("ClosedDateTo", Variant()), "Closed", heading_);
    std::vector<std::string> names;
    std::vector<std::string> quoted;
    for (std::string_view status : kJobStatuses) {
      if (!p.Value("Status" + AsString(status), true).ToBool()) continue;
      names.push_back(AsString(status));
      quoted.push_back(Database::SQLString(status));
    }
    if (names.size() == std::size(kJobStatuses)) {
      AppendDescription(heading_, "Include All Job Statuses");
    } else {
      // With none ticked no job counts: "IN ('')" matches no status.
      AppendSQLCondition(where, "Job.Status IN (" +
                                    (quoted.empty() ? std::string("''") : Join(quoted, ",")) + ")");
      AppendDescription(heading_, "Include " + Join(names, ", ") + " Job Statuses");
    }
    std::string charge;
    std::string charge_heading;
    AppendListParameterCondition(charge, "JobContact.OtherPartyId", "ChargeCustomer", p,
                                 charge_heading, kRangeText);
    if (!charge.empty()) {
      AppendSQLCondition(where,
                         "EXISTS (SELECT JobId FROM JobContact WHERE Job.JobId=JobContact.JobId "
                         "AND JobContact.Charge=" +
                             Database::SQLBoolean(true) + " AND " + charge + ")");
      AppendDescription(heading_, Trim(charge_heading));
    }
    if (include_disbursements_ || costs_plus_disbursements_) {
      AppendDescription(heading_, "Costs include Disbursement Costs");
    }
    if (!include_costs_) AppendDescription(heading_, "Figures do not include General Ledger Cost");
  }
  AppendListParameterCondition(where, "Transactions.AddressId", "AddressId", p, heading_,
                               kRangeText);
}

void ardsSalesAnalysisReport::AddPeriod(std::string& where) {
  trellin::Parameters& p = TLReport()->Parameters();
  // The period's dates, which the host works out from Period; "ALL" leaves both ends open.
  if (!EqualsIgnoreCase(p.Value("Period", "MTD").Text(), "ALL")) {
    std::string unused;
    AppendDateRangeCondition(where, "TransactionLine.DateProcess",
                             p.Value("PeriodDateFrom", Variant()),
                             p.Value("PeriodDateTo", Variant()), "", unused);
  }
}

void ardsSalesAnalysisReport::AddLineTypes(std::string& where) {
  trellin::Parameters& p = TLReport()->Parameters();
  const std::string sales = "(TransactionLine.Type Between 30 And 34)";
  if (JobKey()) {
    AppendSQLCondition(where, total_costs_ ? "(TransactionLine.Type In(20,21,30,31,43))"
                                           : "(TransactionLine.Type In(20,21,30,31))");
    if (rows_kind_ == AnalysisRows::ItemsOfJobs) {
      AppendSQLCondition(where, "Not Transactions.JobId Is Null");
    }
    return;
  }
  if (rows_kind_ != AnalysisRows::Items || !include_costs_) {
    AppendSQLCondition(where, sales);
    return;
  }
  for (std::string_view name : kCustomerSideFilters) {
    const Variant value = p.Value(name, Variant());
    if (!value.IsNull() && !value.IsEmpty() && !value.Text().empty()) {
      AppendDescription(heading_,
                        "Cost figures exclude stock transactions due to parameter selection");
      AppendSQLCondition(where, sales);
      return;
    }
  }
  std::vector<std::string> types;
  std::vector<std::string> words;
  for (const SalesStockType& stock : kSalesStockTypes) {
    if (!p.Value(stock.parameter, false).ToBool()) continue;
    types.push_back(AsString(stock.type));
    words.push_back(AsString(stock.word));
  }
  if (types.empty()) {
    AppendSQLCondition(where, sales);
    return;
  }
  AppendSQLCondition(where,
                     "(" + sales + " OR (TransactionLine.Type In(" + Join(types, ",") + ")))");
  AppendDescription(heading_, "Cost figures include " + Join(words, ", ") + " transactions");
}

std::string ardsSalesAnalysisReport::FiguresSQL(bool per_line) const {
  // Per line the sums fall away: the sub-report prints each line's share of the row's figures.
  auto sum = [&](const std::string& expression) {
    return per_line ? "(" + expression + ")" : "Sum(" + expression + ")";
  };
  if (!JobKey()) {
    const std::string tax = tax_inclusive_ ? "+[TransactionLine].[TaxValue]" : "";
    return ",-" + sum("TransactionLine.ItemCost") + " AS Costs,-" +
           sum("TransactionLine.Discount") + " AS Disc,-" +
           sum("[TransactionLine].[Value]+[TransactionLine].[Discount]" + tax) + " AS Sales,-" +
           sum("[TransactionLine].[Value]" + tax) + " AS NetSales";
  }
  const std::string sale = "(TransactionLine.Type In(30,31))";
  return ",-" +
         sum(Database::SQLIIf("TransactionLine.Type=43", "0", "(TransactionLine.ItemCost)")) +
         " AS Costs,-" + sum(Database::SQLIIf(sale, "TransactionLine.Discount", "0")) +
         " AS Disc,-" +
         sum(Database::SQLIIf(sale, "(TransactionLine.Value+TransactionLine.Discount)", "0")) +
         " AS Sales,-" + sum(Database::SQLIIf(sale, "(TransactionLine.Value)", "0")) +
         " AS NetSales," +
         sum(Database::SQLIIf("(TransactionLine.Type In(20,21))", "(TransactionLine.Value)", "0")) +
         " AS Purchases,-" +
         sum(Database::SQLIIf("TransactionLine.Type=43", "(TransactionLine.ItemCost)", "0")) +
         " AS Disbursements";
}

std::string ardsSalesAnalysisReport::FromSQL() const {
  switch (rows_kind_) {
    case AnalysisRows::Parties:
      return " FROM ((OtherParty INNER JOIN Transactions ON OtherParty.OtherPartyId = "
             "Transactions.OtherPartyId) INNER JOIN (Item INNER JOIN TransactionLine ON "
             "Item.ItemId = TransactionLine.ItemId) ON Transactions.TransactionId = "
             "TransactionLine.TransactionId) LEFT JOIN Job ON Transactions.JobId = Job.JobId";
    case AnalysisRows::Items:
      return " FROM (OtherParty RIGHT JOIN (Transactions LEFT JOIN Job ON Transactions.JobId = "
             "Job.JobId) ON OtherParty.OtherPartyId = Transactions.OtherPartyId) INNER JOIN (Item "
             "INNER JOIN TransactionLine ON Item.ItemId = TransactionLine.ItemId) ON "
             "Transactions.TransactionId = TransactionLine.TransactionId";
    case AnalysisRows::Jobs:
      return " FROM Item INNER JOIN ((Job INNER JOIN Transactions ON "
             "Job.JobId=Transactions.JobId) INNER JOIN TransactionLine ON "
             "Transactions.TransactionId=TransactionLine.TransactionId) ON "
             "Item.ItemId=TransactionLine.ItemId";
    case AnalysisRows::ItemsOfJobs:
      return " FROM Job INNER JOIN (Transactions INNER JOIN (Item INNER JOIN TransactionLine ON "
             "Item.ItemId=TransactionLine.ItemId) ON "
             "Transactions.TransactionId=TransactionLine.TransactionId) ON "
             "Job.JobId=Transactions.JobId";
  }
  return {};
}

bool ardsSalesAnalysisReport::OwnGrouping(ChosenGrouping& grouping, const std::string& base) const {
  return SalesGrouping(grouping, base);
}

void ardsSalesAnalysisReport::AddGroupings(std::string& select, std::string& group_by) {
  const std::string base = ItemKey() || JobKey() ? "Item" : "OtherParty";
  auto own = [&](ChosenGrouping& g) { return OwnGrouping(g, base); };
  std::vector<ChosenGrouping> groups =
      ChooseGroupings(TLReport()->Parameters().Value("Groupings", Variant()), base, own,
                      UnknownGrouping::kSkip, kGroupLevels);
  levels_.clear();
  for (const ChosenGrouping& g : groups) {
    MoveInCommaList(select, g.field, true, false);
    MoveInCommaList(group_by, g.field, true, true);
    MoveInCommaList(sort_, g.key_field, true, true);
    TLReport()->DefineGroup(g.level, g.name, g.key_field, g.list_sql, g.page_break);
    // The field as the lines' query tests it: the select item without its alias.
    std::string field = g.field;
    if (const auto at = LCase(field).find(" as "); at != std::string::npos) field.resize(at);
    levels_.insert(levels_.begin(), Level{g.key_field, Trim(field)});
  }
  TLReport()->EndDefineGroups();
}

void ardsSalesAnalysisReport::BuildSQL() {
  ReadOptions();
  trellin::Parameters& p = TLReport()->Parameters();
  const AnalysisKey& key = KeyOf(TLReport()->ReportName());
  heading_.clear();
  AddHeadings();
  std::string where;
  AddFilters(where);
  AddPeriod(where);
  AddLineTypes(where);
  where_ = where;
  sort_ = AnalysisSort(Orders(), p.Value("OrderBy", "Code").Text(), key_field_);
  if (sort_ != key_field_) sort_ += "," + key_field_;
  std::string select = AsString(key.identity);
  std::string group_by = select;
  AddGroupings(select, group_by);
  const std::string quantity =
      "," + AsString(sign_) + "ROUND(Sum(TransactionLine.Quantity), " +
      std::to_string(TrellinReportGlobals::RequireApplication().Options().QuantityDecimals()) +
      ") AS Qty";
  sql_ = "SELECT " + select + quantity + FiguresSQL(false) + FromSQL() +
         (where.empty() ? std::string() : " WHERE " + where) + " GROUP BY " + group_by +
         " HAVING (Count(TransactionLine.TransactionLineId)<>0)";
}

std::string ardsSalesAnalysisReport::LinesSQL() {
  std::string fields;
  switch (rows_kind_) {
    case AnalysisRows::Parties:
      fields = "Item.ItemId AS Code,Item.Description AS Name,Job.Description AS JobDescription";
      break;
    case AnalysisRows::Items:
      fields =
          "Transactions.OtherPartyId AS Code,OtherParty.Name AS Name,Job.Description AS "
          "JobDescription";
      break;
    case AnalysisRows::Jobs:
      fields =
          "Item.ItemId AS Code,Item.Description AS Name,Transactions.OtherPartyId AS "
          "JobDescription";
      break;
    case AnalysisRows::ItemsOfJobs:
      fields =
          "Transactions.OtherPartyId AS Code,Job.JobId AS Name,Job.Description AS "
          "JobDescription";
      break;
  }
  std::string where = where_;
  AppendSQLCondition(where, RowFilter());
  return "SELECT " + fields +
         ",Transactions.AddressId,TransactionLine.TransactionLineId,TransactionLine.DateProcess," +
         AsString(sign_) + "TransactionLine.Quantity AS Qty,Transactions.Reference" +
         FiguresSQL(true) + FromSQL() + " WHERE " + where + " ORDER BY " +
         (split_by_address_ ? "Transactions.AddressId," : "") + LinesOrder();
}

std::string ardsSalesAnalysisReport::LinesOrder() const {
  return "TransactionLine.DateProcess, TransactionLine.TransactionId";
}

}  // namespace trellin
