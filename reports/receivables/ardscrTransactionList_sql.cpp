// The transaction list's query: the options, the filters of posted transactions and of an open
// batch, the groupings (some of them on the lines), the sums and the order.

#include <algorithm>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/PartyFilters.h"
#include "reports/receivables/ReceivablesShared.h"
#include "reports/receivables/ardscrTransactionList.h"

namespace trellin {

namespace {

constexpr const char* kPostedSelect =
    "Transactions.TransactionId,Transactions.Type,Transactions.OtherPartyId,OtherParty.Name,"
    "Transactions.DatePayment,Transactions.Date,Transactions.DatePayment,"
    "Transactions.TransactionTypeId,Transactions.BatchId,Transactions.Reference,"
    "Transactions.EmployeeId,Transactions.LocationId,Transactions.Value,"
    "Transactions.ValueRemaining,Transactions.Held,OtherParty.Name";
constexpr const char* kOpenSelect =
    "acBatchTransaction.acBatchTransactionId,acBatchTransaction.JobId,acBatchHeader.Type,"
    "acBatchTransaction.OtherPartyId,acBatchTransaction.Date,acBatchTransaction.DatePayment,"
    "acBatchTransaction.TransactionTypeId,acBatchTransaction.Reference,"
    "acBatchTransaction.EmployeeId,acBatchTransaction.LocationId,acBatchTransaction.Value,"
    "OtherParty.Name";

// A grouping on the lines: its name, the field of posted and of open keys, the key field and
// the list of captions.
struct LineGrouping {
  const char* name;
  const char* posted;
  const char* open;
  const char* key_field;
  const char* list_sql;
};

// clang-format off
constexpr LineGrouping kLineGroupings[] = {
    {"Item", "TransactionLine.ItemId", "acBatchTransactionLine.ItemId", "ItemId", "SELECT ItemId,Description FROM Item"},
    {"Department", "Transactionline.DeptId", "acBatchTransactionLine.DeptId", "DeptId", "SELECT DeptId,Description FROM Department"},
    {"Location", "IIf(Transactions.Type In(25,35),Transactions.LocationId,Transactionline.LocationId) AS LLocationId",
     "acBatchTransactionLine.LocationId AS LLocationId", "LLocationId", "SELECT LocationId,Description FROM Location"},
    {"Item Category", "", "Item.ItemCategoryId", "ItemCategoryId", "SELECT ItemCategoryId,Description FROM ItemCategory"},
    {"Item Type", "", "Item.ItemTypeId", "ItemTypeId", "SELECT ItemTypeId,Description FROM ItemType"},
};
// clang-format on

const LineGrouping* FindLineGrouping(const std::string& name) {
  for (const LineGrouping& row : kLineGroupings) {
    if (name == row.name) return &row;
  }
  return nullptr;
}

// The expression a select-list field stands for in GROUP BY: without its alias.
std::string WithoutAlias(const std::string& field) {
  const std::size_t as = field.find(" AS ");
  return as == std::string::npos ? field : field.substr(0, as);
}

}  // namespace

void ardscrTransactionList::BuildSQL() {
  trellin::Parameters& p = TLReport()->Parameters();
  auto flag = [&](const char* name) { return p.Value(name, false).ToBool(); };
  show_batch_ = flag("ShowBatchId");
  show_location_ = flag("ShowLocationDetails");
  show_department_ = flag("ShowDepartmentDetails");
  show_employee_ = flag("ShowEmployeeDetails");
  show_allocations_ = flag("ShowAllocationDetails");
  show_full_detail_ = flag("ShowFullDetail");
  show_description_lines_ = flag("ShowDescriptionLines");
  show_serial_ = flag("ShowSerialNumber");
  summary_ = flag("Summary");
  const std::string order_by = p.Value("OrderBy", "Code").Text();
  heading_.clear();
  AppendDescription(heading_, "Transactions ordered by " + order_by);

  const bool open = key_->open;
  std::string select = open ? kOpenSelect : kPostedSelect;
  // Grouped or filtered by line location, each line location makes a row of its own.
  line_location_ = !open && show_location_;
  if (line_location_) select += ",TransactionLine.LocationId AS TLLocationId";
  if (open) select += ",0 AS ValueRemaining,0 AS Held";
  std::string group_by;
  for (const std::string& field : Split(select, ",")) {
    if (field.find(" AS ") != std::string::npos && field.rfind("0 AS ", 0) == 0) continue;
    MoveInCommaList(group_by, WithoutAlias(field), false, true);
  }

  std::string where = std::string(key_->type_clause);
  if (open) AppendSQLCondition(where, "acBatchHeader.acBatchHeaderId='Open'");
  AddFilters(where);
  if (open) {
    AppendSQLCondition(where, "(Not acBatchTransactionLine.ItemId Is Null)");
  } else {
    AppendSQLCondition(
        where, "((Not TransactionLine.ItemId IS NULL) OR (TransactionLine.TransactionId IS NULL))");
  }

  const TransactionListOrder* order_row = TransactionListOrderOf(order_by);
  if (order_row == nullptr) order_row = TransactionListOrderOf("Code");
  std::string order = std::string(open ? order_row->open_sql : order_row->sql);
  AddGroupings(select, group_by, order);
  if (!line_groups_.empty() && show_description_lines_) {
    AppendDescription(heading_, "Description lines not included with selected options");
  }

  std::string sums;
  if (open) {
    sums =
        ",Sum(acBatchTransactionLine.Value) AS SumOfValue, Sum(acBatchTransactionLine.TaxValue) AS "
        "SumOfTaxValue, Sum(acBatchTransactionLine.Discount) AS SumOfDiscount";
  } else {
    const std::string s = debtor_ ? "-" : "";
    sums = ", Sum(" + s + "TransactionLine.Value) AS SumOfValue, Sum(" + s +
           "TransactionLine.Discount) AS SumOfDiscount, Sum(" + s +
           "TransactionLine.TaxValue) AS SumOfTaxValue";
  }
  const std::string from =
      open
          ? " FROM (((OtherParty INNER JOIN acBatchTransaction ON OtherParty.OtherPartyId = "
            "acBatchTransaction.OtherPartyId) INNER JOIN acBatchHeader ON acBatchHeader.acBatchSId "
            "= acBatchTransaction.acBatchSId) LEFT JOIN acBatchTransactionLine ON "
            "acBatchTransaction.acBatchTransactionId = "
            "acBatchTransactionLine.acBatchTransactionId) LEFT JOIN Item ON "
            "acBatchTransactionLine.ItemId = Item.ItemId"
          : " FROM (OtherParty INNER JOIN Transactions ON OtherParty.OtherPartyId = "
            "Transactions.OtherPartyId) LEFT JOIN TransactionLine ON Transactions.TransactionId = "
            "TransactionLine.TransactionId";
  sql_ = "SELECT " + select + sums + from + " WHERE " + where + " GROUP BY " + group_by +
         " ORDER BY " + order;

  details_ = std::make_shared<ardscrTransactionListSubDetails>();
  details_->Queries = query_log_;
  details_->ShowLocation = show_location_;
  details_->ShowDepartment = show_department_;
  details_->ShowSerialNumber = show_serial_;
  details_->ShowOrderQuantity = key_->orders;
  allocations_ = std::make_shared<ardscrTransactionListSubAllocations>();
  allocations_->Queries = query_log_;
  allocations_->Debtor = debtor_;
  Field("srptDetails").SetObject(details_);
  Field("srptAllocations").SetObject(allocations_);
}

void ardscrTransactionList::AddFilters(std::string& where) {
  trellin::Parameters& p = TLReport()->Parameters();
  const LedgerSide& side = SideOfDebtor(debtor_);
  const std::string table = key_->open ? "acBatchTransaction" : "Transactions";
  const std::string id =
      key_->open ? "acBatchTransaction.acBatchTransactionId" : "Transactions.TransactionId";
  // Transaction ids from the first asked for (0 and below: no bound) to the last.
  const Variant from = p.Value("TransactionIdFrom", 1);
  const Variant to = p.Value("TransactionIdTo", Variant::Null());
  const std::int64_t first = from.IsNull() ? 0 : from.ToLong();
  if (first > 0) AppendSQLCondition(where, id + ">=" + std::to_string(first));
  if (!to.IsNull() && !to.IsEmpty()) AppendSQLCondition(where, id + "<=" + to.Text());
  if (first > 1) {
    AppendDescription(heading_, "Transaction Ids from " + std::to_string(first) +
                                    (to.IsNull() || to.IsEmpty() ? "" : " to " + to.Text()));
  }
  AppendDateRangeCondition(where, table + ".Date", p.Value("DatedFrom", Variant::Null()),
                           p.Value("DatedTo", Variant::Null()), "Transactions dated", heading_);
  AppendDateRangeCondition(where,
                           key_->open ? "acBatchHeader.CreatedDate" : "Transactions.CreatedDate",
                           p.Value("EnteredFrom", Variant::Null()),
                           p.Value("EnteredTo", Variant::Null()), "Transactions entered", heading_);
  if (key_->open) {
    AppendDateRangeCondition(where, "acBatchHeader.LastDate", p.Value("ModifiedFrom", Variant()),
                             p.Value("ModifiedTo", Variant()), "Transactions modified", heading_);
  }
  AppendDateRangeCondition(where, table + ".DateProcess", p.Value("ProcessFrom", Variant::Null()),
                           p.Value("ProcessTo", Variant::Null()), "Process date", heading_);
  AppendListParameterCondition(where, table + ".Reference", "References", p, heading_, kRangeText);
  if (key_->open) {
    AddOpenFilters(where);
  } else {
    AddPostedFilters(where);
  }
  AppendListParameterCondition(where, "OtherParty.LocationId",
                               debtor_ ? "CustomerLocations" : "SupplierLocations", p, heading_,
                               kRangeText);
  AppendListParameterCondition(where, table + ".EmployeeId", "Employees", p, heading_, kRangeText);
  AppendListParameterCondition(where, table + ".TransactionTypeId", "TransactionTypes", p, heading_,
                               kRangeText);
  AppendListParameterCondition(where, table + ".OtherPartyId", std::string(side.parties.name), p,
                               heading_, kRangeText);
  AppendPartyListFilters(where, p, heading_);
  AppendListParameterCondition(where, table + ".JobId", "Jobs", p, heading_, kRangeText);
  AppendUserDefinedFilters(where, p, heading_, "OtherParty");
  AppendUserDefinedFilters(where, p, heading_, table);
}

void ardscrTransactionList::AddPostedFilters(std::string& where) {
  trellin::Parameters& p = TLReport()->Parameters();
  if (show_location_) {
    AppendListParameterCondition(where, "TransactionLine.LocationId", "Locations", p, heading_,
                                 kRangeText);
  } else {
    // A line's own location wins over its transaction's.
    std::string header;
    std::string line;
    std::string unused;
    AppendListParameterCondition(header, "Transactions.LocationId", "Locations", p, heading_,
                                 kRangeText);
    AppendListParameterCondition(line, "TransactionLine.LocationId", "Locations", p, unused,
                                 kRangeText);
    if (!header.empty()) {
      AppendSQLCondition(
          where,
          "((" + Trim(header) + " AND TransactionLine.LocationId Is Null) OR " + Trim(line) + ")");
    }
  }
  AppendListParameterCondition(where, "TransactionLine.DeptId", "Departments", p, heading_,
                               kRangeText);
  AppendListParameterCondition(where, "TransactionLine.ItemId", "Items", p, heading_, kRangeText);
  AppendListParameterCondition(where, "Transactions.BatchId", "Batches", p, heading_, kRangeText);
  if (p.Value("ShowOutstandingOnly", false).ToBool()) {
    AppendSQLCondition(where, "Transactions.ValueRemaining<>0");
    AppendDescription(heading_, "Outstanding Transactions only");
  }
  if (p.Value("ShowHeldOnly", false).ToBool()) {
    AppendSQLCondition(where, "Transactions.Held<>0");
    AppendDescription(heading_, "Held Transactions only");
  }
}

void ardscrTransactionList::AddOpenFilters(std::string& where) {
  trellin::Parameters& p = TLReport()->Parameters();
  AppendListParameterCondition(where, "acBatchTransactionLine.LocationId", "Locations", p, heading_,
                               kRangeText);
  AppendListParameterCondition(where, "acBatchTransactionLine.DeptId", "Departments", p, heading_,
                               kRangeText);
  AppendListParameterCondition(where, "acBatchTransactionLine.ItemId", "Items", p, heading_,
                               kRangeText);
  if (key_->orders) {
    AppendListParameterCondition(where, "Item.ItemCategoryId", "ItemCategories", p, heading_,
                                 kRangeText);
    AppendListParameterCondition(where, "Item.ItemTypeId", "ItemTypes", p, heading_, kRangeText);
  }
}

void ardscrTransactionList::AddGroupings(std::string& select, std::string& group_by,
                                         std::string& order) {
  line_groups_.clear();
  auto line_grouping = [&](ChosenGrouping& g) {
    const LineGrouping* line = FindLineGrouping(g.name);
    if (line == nullptr) return false;
    g.field = key_->open ? line->open : line->posted;
    g.key_field = line->key_field;
    g.list_sql = line->list_sql;
    line_groups_.insert(line_groups_.begin(), g.key_field);
    return true;
  };
  for (const ChosenGrouping& g :
       ChooseGroupings(TLReport()->Parameters().Value("Groupings", Variant()),
                       key_->open ? "acBatchTransaction" : "Transactions", line_grouping,
                       UnknownGrouping::kSkip, kGroupLevels)) {
    MoveInCommaList(select, g.field, false, false);
    MoveInCommaList(group_by, WithoutAlias(g.field), false, true);
    MoveInCommaList(order, WithoutAlias(g.field), true, true);
    TLReport()->DefineGroup(g.level, g.name, g.key_field, g.list_sql, g.page_break);
  }
  TLReport()->EndDefineGroups();
}

std::string ardscrTransactionList::LineGroupFilter() const {
  const std::string line_table = key_->open ? "acBatchTransactionLine." : "TransactionLine.";
  std::string filter;
  for (const std::string& group : line_groups_) {
    const ReportField* field = Fields().Find(group);
    const Variant value = field == nullptr ? Variant::Null() : field->Value();
    const bool none = value.IsNull() || value.Text().empty();
    if (group == "LLocationId" || group == "DeptId" || group == "ItemId") {
      const std::string column = group == "LLocationId" ? "LocationId" : group;
      AppendSQLCondition(filter,
                         none ? line_table + column + " Is Null"
                              : line_table + column + "=" + Database::SQLString(value.Text()));
    } else if (key_->open) {
      AppendSQLCondition(filter, none ? "Item." + group + " Is Null"
                                      : "Item." + group + "=" + Database::SQLString(value.Text()));
    }
  }
  return Trim(filter);
}

}  // namespace trellin
