// The overdue list: parameters, the parties' query with its "~" sign, the groups that narrow the
// documents, and the events.

#include "reports/receivables/ardscrOverdueList.h"

#include <algorithm>
#include <stdexcept>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/PartyFilters.h"
#include "reports/receivables/ReceivablesShared.h"

namespace trellin {

namespace {

// The groupings of the list that it resolves itself; the others go to the shared definitions.
// A grouping on the documents' employee or location narrows each party's documents to its group.
struct OverdueGrouping {
  const char* name;
  const char* field;
  const char* key_field;
  const char* list_sql;
  bool narrows_documents;
};

// clang-format off
constexpr OverdueGrouping kListGroupings[] = {
    {"Employee", "Transactions.EmployeeId", "EmployeeId", "SELECT EmployeeId,Name FROM Employee", true},
    {"Location", "Transactions.LocationId", "LocationId", "SELECT LocationId,Description FROM Location", true},
    {"Customer Employee", "OtherParty.EmployeeId", "EmployeeId", "SELECT EmployeeId,Name FROM Employee", false},
    {"Supplier Employee", "OtherParty.EmployeeId", "EmployeeId", "SELECT EmployeeId,Name FROM Employee", false},
    {"Customer Location", "OtherParty.LocationId", "LocationId", "SELECT LocationId,Description FROM Location", false},
    {"Supplier Location", "OtherParty.LocationId", "LocationId", "SELECT LocationId,Description FROM Location", false},
};
// clang-format on

constexpr const char* kListGroupingsReceivables =
    "Customer Employee,Customer Location,Customer,Customer Category,Customer Type,Customer Payment "
    "Term,Employee,Location,Status";
constexpr const char* kListGroupingsPayables =
    "Supplier Employee,Supplier Location,Supplier,Supplier Category,Supplier Type,Supplier Payment "
    "Term,Employee,Location,Status";

// The columns a data export of the list offers: name, field, kind.
struct OverdueColumn {
  const char* caption;
  const char* field;
  int data_type;
};

constexpr OverdueColumn kListColumns[] = {
    {"Code", "OtherPartyId", kColumnCode},
    {"Name", "Name", kColumnText},
    {"X Ref", "XRefId", kColumnText},
    {"Contact", "ContactDetail", kColumnText},
    {"Outstanding", "TotalOutstanding", kColumnMoney},
    {"Held", "TotalHeld", kColumnMoney},
    {"Overdue", "TotalOverdue", kColumnMoney},
};

const OverdueGrouping* FindListGrouping(const std::string& name) {
  for (const OverdueGrouping& row : kListGroupings) {
    if (name == row.name) return &row;
  }
  return nullptr;
}

}  // namespace

DesignerPtr CreateardscrOverdueList() { return std::make_shared<ardscrOverdueList>(); }

void ardscrOverdueList::RefreshParameters(std::string& ReportName) {
  debtor_ = SideOfKey(DesignerName(), ReportName) == LedgerSideKind::Receivables;
  const LedgerSide& side = SideOfDebtor(debtor_);
  TLReport()->SetHasParameters(true);
  trellin::Parameters& p = TLReport()->Parameters();
  const FinancialCalendar& calendar =
      TrellinReportGlobals::RequireApplication().FinancialCalendar();
  const Date current = debtor_ ? calendar.CurrentDateAR(true) : calendar.CurrentDateAP(true);
  // The company's own starting point for the lower bound (0 leaves out nil and credit balances).
  const std::int64_t overdue_from =
      TrellinReportGlobals::RequireBusinessLayer().OverdueFromDefault();

  p.AddList("OrderBy", "Code", true, "", "Code", "Code,Name,X Ref", false, "Order By");
  p.AddBoolean("Summary", false, false, "", false, false, "Summary");
  p.AddNumber("OverdueFrom", Currency::FromWhole(overdue_from), false, "",
              Currency::FromWhole(overdue_from), overdue_from, false, "Overdue From");
  p.AddNumber("OverdueTo", kNumberRangeMaximum, false, "", kNumberRangeMaximum,
              kNumberRangeMaximum.Raw() / Currency::kScale, false, "Overdue To");
  p.AddNumber("OverdueDays", 0, false, "", 0, 0, false, "Overdue Days");
  p.AddDate("DateAsAt", current, true, "Date As At", std::string(side.current_date), false,
            "Date As At");
  CreateStandardParameter(side.parties.index, p, true, std::string(side.parties.name),
                          std::string(side.parties.caption));
  CreateStandardParameter(side.categories.index, p, false, std::string(side.categories.name));
  CreateStandardParameter(side.types.index, p, false, std::string(side.types.name));
  CreateStandardParameter(side.payment_terms.index, p, false, std::string(side.payment_terms.name),
                          std::string(side.payment_terms.caption));
  // The party's own employee and location, then the documents' (Employees, Locations).
  CreateStandardParameter(debtor_ ? 10 : 35, p, false);
  CreateStandardParameter(debtor_ ? 11 : 36, p, false);
  CreateStandardParameter(15, p, false);
  CreateStandardParameter(23, p, false);
  CreateStandardParameter(25, p, false);
  p.AddMultiList("Groupings", Variant(), false, "", Variant(),
                 debtor_ ? kListGroupingsReceivables : kListGroupingsPayables, false, false,
                 "Groupings");
  TrellinReportGlobals::RequireApplication().AddUserDefinedParametersTransactions(p, false);
}

void ardscrOverdueList::RefreshDataColumns() {
  DataColumns& columns = TLReport()->DataColumns();
  for (const OverdueColumn& c : kListColumns) {
    columns.Add(c.field, c.field, c.data_type, c.caption, "", -1, -1, -1, -1, "(auto)", 0, 0, "",
                true, "", false, false);
  }
}

void ardscrOverdueList::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

void ardscrOverdueList::ActiveReport_ReportStart() {
  if (TLReport()->DataColumns().Count() == 0) RefreshDataColumns();
  BuildSQL();
  TLReport()->SetupGroupSections(summary_, -1, true);
  TLReport()->SetupStandardHeader(true);
  if (Control* heading = FindControl("txtHeading")) heading->SetText(heading_);
  if (query_log_) query_log_(sql_);
  DataControl().SetSource(sql_);
}

void ardscrOverdueList::BuildSQL() {
  trellin::Parameters& p = TLReport()->Parameters();
  const LedgerSide& side = SideOfDebtor(debtor_);
  const Variant as_at = p.Value("DateAsAt", Variant::Null());
  if (!HasDate(as_at)) {
    throw std::invalid_argument("Date As At: the overdue list needs a date to run to.");
  }
  as_at_ = as_at.ToDate().DateOnly();
  summary_ = p.Value("Summary", false).ToBool();
  const std::string date_format = TrellinReportGlobals::RequireBusinessLayer().DateFormat();
  const std::string money_format = TrellinReportGlobals::RequireBusinessLayer().CurrencyFormat(0);

  std::string where = "Transactions.Type between " + std::string(side.range);
  std::string select =
      "OtherParty.OtherPartyId, OtherParty.Name, OtherParty.XRefId"
      ",(SELECT Detail FROM OtherPartyContactMethod WHERE "
      "OtherPartyContactMethod.OtherPartyId=OtherParty.OtherPartyId AND Sequence=1) AS "
      "ContactDetail"
      ",~Sum(Transactions.ValueRemaining) as TotalOutstanding,~Sum(Transactions.Held) as "
      "TotalHeld,~Sum(Transactions.ValueRemaining - (Held)) AS TotalOverdue";
  std::string group_by = "OtherParty.OtherPartyId, OtherParty.Name, OtherParty.XRefId";

  heading_.clear();
  const std::string order_by = p.Value("OrderBy", "Code").Text();
  AppendDescription(heading_, std::string(side.heading_word) + " ordered by " + order_by);
  AppendDescription(heading_, "Dated as at " + Format(Variant(as_at_), date_format));

  const Currency from = p.Value("OverdueFrom", Currency()).ToCurrency();
  const Currency to = p.Value("OverdueTo", kNumberRangeMaximum).ToCurrency();
  AppendDescription(heading_, "Balances between " + Format(Variant(from), money_format) + " and " +
                                  Format(Variant(to), money_format));
  // The lower bound is exclusive: from 0, nil and credit balances stay out.
  const std::string having =
      " HAVING (~Sum(Transactions.ValueRemaining) >" + Database::SQLNumber(from) +
      " AND ~Sum(Transactions.ValueRemaining)<=" + Database::SQLNumber(to) + ")";

  // What narrows the parties' sums narrows their documents alike.
  std::string documents;
  const Date due_by = as_at_.AddDays(-static_cast<int>(p.Value("OverdueDays", 0).ToLong()));
  AppendSQLCondition(documents, "Transactions.DatePayment<=" + Database::SQLDate(due_by));
  AppendDescription(heading_, "Overdue on or before " + Format(Variant(due_by), date_format));
  AppendListParameterCondition(documents, "Transactions.EmployeeId", "Employees", p, heading_,
                               kRangeText);
  AppendListParameterCondition(documents, "Transactions.LocationId", "Locations", p, heading_,
                               kRangeText);
  AppendUserDefinedFilters(documents, p, heading_, "Transactions");

  AppendPartyFilter(where, p, heading_, side);
  AppendPartyPlaceFilters(where, p, heading_, debtor_ ? "CustomerLocations" : "SupplierLocations",
                          debtor_ ? "CustomerEmployees" : "SupplierEmployees");
  AppendPartyListFilters(where, p, heading_);
  AppendSQLCondition(where, documents);

  std::string order = "OtherParty.OtherPartyId";
  if (order_by == "Name") order = "OtherParty.Name";
  if (order_by == "X Ref") order = "OtherParty.XRefId";
  AddGroupings(select, group_by, order);

  sql_ = "SELECT " + select +
         " FROM OtherParty INNER JOIN Transactions ON OtherParty.OtherPartyId = "
         "Transactions.OtherPartyId WHERE " +
         where + " GROUP BY " + group_by + having + " ORDER BY " + order;
  // Every "~" turns the sums round on the receivables side, and is dropped on the payables side.
  sql_ = Replace(sql_, "~", debtor_ ? "-" : "");

  sub_ = std::make_shared<ardscrOverdueListSubInvoices>();
  Field("srptInvoices").SetObject(sub_);
  sub_->Debtor = debtor_;
  sub_->DateAsAt = as_at_;
  sub_->Filter = Trim(documents);
  sub_->Queries = query_log_;
}

void ardscrOverdueList::AddGroupings(std::string& select, std::string& group_by,
                                     std::string& order) {
  document_groups_.clear();
  auto own_grouping = [&](ChosenGrouping& g) {
    const OverdueGrouping* own = FindListGrouping(g.name);
    if (own == nullptr) return false;
    g.field = own->field;
    g.key_field = own->key_field;
    g.list_sql = own->list_sql;
    if (own->narrows_documents) document_groups_.push_back({g.level, own->key_field});
    return true;
  };
  for (const ChosenGrouping& g :
       ChooseGroupings(TLReport()->Parameters().Value("Groupings", Variant()), "OtherParty",
                       own_grouping, UnknownGrouping::kSkip, kGroupLevels)) {
    MoveInCommaList(select, g.field, false, false);
    MoveInCommaList(group_by, g.field, false, true);
    MoveInCommaList(order, g.field, true, true);
    TLReport()->DefineGroup(g.level, g.name, g.key_field, g.list_sql, g.page_break);
  }
  TLReport()->EndDefineGroups();
}

void ardscrOverdueList::Detail_Format() {
  const auto& rs = DataControl().Recordset();
  if (!rs || rs->Eof() || !sub_) return;
  sub_->OtherPartyId = Fields()["OtherPartyId"].Value().Text();
  std::string narrow;
  for (const DocumentGroup& group : document_groups_) {
    const ReportField* value = Fields().Find(group.column);
    const bool none = value == nullptr || value->Value().IsNull() || value->Value().Text().empty();
    AppendSQLCondition(narrow, none ? "Transactions." + group.column + " Is Null"
                                    : "Transactions." + group.column + "=" +
                                          Database::SQLString(value->Value().Text()));
  }
  sub_->GroupFilter = Trim(narrow);
}

void ardscrOverdueList::OnFormat(Section& section) {
  if (section.Type() == SectionType::Detail) {
    Detail_Format();
  } else {
    FormatGroupSection(section);
  }
}

void ardscrOverdueList::OnBeforePrint(Section& section) {
  if (section.Type() == SectionType::ReportFooter) TLReport()->ReportFooterBeforePrint();
}

void ardscrOverdueList::ActiveReport_ReportEnd() { DataControl().SetRecordset(nullptr); }

}  // namespace trellin
