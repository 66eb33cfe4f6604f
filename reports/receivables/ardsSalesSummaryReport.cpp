// The sales summary's parameters, columns, query and run.

#include "reports/receivables/ardsSalesSummaryReport.h"

#include <stdexcept>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/AnalysisFigures.h"
#include "reports/receivables/ReceivablesShared.h"
#include "reports/receivables/SalesAnalysisShared.h"

namespace trellin {

namespace {

constexpr const char* kPeriods = "ALL,MTD,QTD,YTD,Custom";

// The client sort of each OrderBy choice; any other choice sorts on the row's key.
constexpr AnalysisOrder kSummaryOrders[] = {
    {"Description", "Description"},
    {"Name", "Name"},
    {"X Ref", "XRefId"},
    {"Period 1 Sales", "Sales1 DESC"},
    {"Period 2 Sales", "Sales2 DESC"},
    {"Period 1 Disc", "Disc1 DESC"},
    {"Period 2 Disc", "Disc2 DESC"},
    {"Period 1 Costs", "Costs1 DESC"},
    {"Period 2 Costs", "Costs2 DESC"},
};

}  // namespace

DesignerPtr CreateardsSalesSummaryReport() { return std::make_shared<ardsSalesSummaryReport>(); }

bool ardsSalesSummaryReport::PartiesKey(const std::string& key) const {
  if (EqualsIgnoreCase(key, "SalesSummaryAR")) return true;
  if (EqualsIgnoreCase(key, "ItemSalesSummary")) return false;
  throw std::invalid_argument("ardsSalesSummaryReport does not serve the key \"" + key + "\".");
}

std::span<const AnalysisOrder> ardsSalesSummaryReport::Orders() const { return kSummaryOrders; }

void ardsSalesSummaryReport::AddPeriodParameters(const std::string& current) {
  trellin::Parameters& p = TLReport()->Parameters();
  p.AddBoolean("Summary", false, false, "", false, false, "Summary");
  for (const char* period : {"Period1", "Period2"}) {
    const std::string name(period);
    const std::string initial = name == "Period1" ? "MTD" : "YTD";
    const std::string caption = name == "Period1" ? "Period 1" : "Period 2";
    p.AddList(name, initial, true, "", initial, kPeriods, false, caption);
    p.AddDate(name + "DateFrom", Variant(), true, "", Variant(), false, caption + " Date From");
    p.AddDate(name + "DateTo", Variant(), true, "", current, false, caption + " Date To");
  }
  p.AddList("Rounding", "Normal", false, "", "Normal", "Normal,Whole,Thousands", false, "Rounding");
}

void ardsSalesSummaryReport::RefreshParameters(std::string& ReportName) {
  parties_ = PartiesKey(ReportName);
  TLReport()->SetHasParameters(true);
  TLReport()->DataColumns().SetEnabled(true);
  trellin::Parameters& p = TLReport()->Parameters();
  const std::string figures =
      "Period 1 Sales,Period 2 Sales,Period 1 Disc,Period 2 Disc,Period 1 Costs,Period 2 Costs";
  p.AddList("OrderBy", "Code", true, "", "Code",
            (parties_ ? "Code,Name,X Ref," : "Code,Description,") + figures, false, "Order By");
  AddPeriodParameters("ARCURRENT");
  p.AddBoolean("IncludeCosts", true, false, "", true, false, "Include Costs");
  p.AddBoolean("TaxInclusive", false, false, "", false, false, "Tax Inclusive");
  p.AddBoolean("ExcludeInactiveCustomers", false, false, "", false, false,
               "Exclude Inactive Customers");
  if (parties_) p.AddBoolean("SplitByAddress", false, false, "", false, false, "Split By Address");
  p.AddSQLList("AddressId", Variant(), false, "", Variant(),
               "SELECT AddressId FROM Transactions GROUP BY AddressId", "AddressId", false,
               "Address");
  AddSalesListParameters(p, false);
  p.AddMultiList("Groupings", Variant(), false, "", Variant(),
                 parties_ ? "Employee,Department,Location,Customer Category,Customer "
                            "Employee,Customer Location,Customer Type,Customer Payment Term"
                          : "Employee,Customer,Department,Item Category,Item Type,Location,"
                            "Supplier,Customer Category,Customer Location,Customer Type",
                 false, false, "Groupings");
}

std::string ardsSalesSummaryReport::PeriodWord(int period) const {
  const std::string word =
      TLReport()->Parameters().Value("Period" + std::to_string(period), "MTD").Text();
  return EqualsIgnoreCase(word, "Custom") ? "PTD" : word;
}

void ardsSalesSummaryReport::AddColumn(const std::string& name, const std::string& field, int kind,
                                       float width, const std::string& caption, bool totalled,
                                       bool shown) {
  const int decimals =
      std::max(0, RoundingDecimals(TLReport()->Parameters().Value("Rounding", "Normal").Text()));
  DataColumn& column = TLReport()->DataColumns().Add(
      name, field, kind, caption, "", width, width < 0 ? 2400 : -1, -1, -1,
      totalled ? "Round" : "(auto)", totalled ? decimals : 0, 0, "", true, "", totalled, false);
  column.Hidden = !shown;
}

void ardsSalesSummaryReport::RefreshDataColumns() {
  trellin::Parameters& p = TLReport()->Parameters();
  const bool costs = p.Value("IncludeCosts", true).ToBool();
  auto add = [&](const std::string& name, const std::string& field, int kind, float width,
                 const std::string& caption, bool totalled,
                 bool shown) { AddColumn(name, field, kind, width, caption, totalled, shown); };
  add("Code", parties_ ? "OtherPartyId" : "ItemId", kColumnCode, 1150, "Code", false, true);
  add(parties_ ? "Name" : "Description", parties_ ? "Name" : "Description", kColumnText, -1,
      parties_ ? "Name" : "Description", false, true);
  if (parties_) {
    add("Address", "AddressId", kColumnText, 1200, "Address", false,
        p.Value("SplitByAddress", false).ToBool());
  }
  for (int period = 1; period <= 2; ++period) {
    const std::string n = std::to_string(period);
    const std::string word = PeriodWord(period);
    // Without costs the second and third columns of a period are its discount and net.
    add("Sales" + n, "Sales" + n, kColumnMoney, 1300, word + " Sales", true, true);
    add("Costs" + n, costs ? "Costs" + n : "Disc" + n, kColumnMoney, 1300,
        word + (costs ? " Costs" : " Disc"), true, true);
    add("GP" + n, costs ? "GP" + n : "Net" + n, kColumnMoney, 1300, word + (costs ? " GP" : " Net"),
        true, true);
  }
}

std::string ardsSalesSummaryReport::PeriodClause(int period) const {
  trellin::Parameters& p = TLReport()->Parameters();
  const std::string name = "Period" + std::to_string(period);
  if (EqualsIgnoreCase(p.Value(name, "MTD").Text(), "ALL")) return {};
  std::string clause;
  std::string unused;
  AppendDateRangeCondition(clause, "TransactionLine.DateProcess",
                           p.Value(name + "DateFrom", Variant()),
                           p.Value(name + "DateTo", Variant()), "", unused);
  return clause;
}

void ardsSalesSummaryReport::AddSideHeadings() {
  const bool exclude_inactive =
      TLReport()->Parameters().Value("ExcludeInactiveCustomers", false).ToBool();
  AppendDescription(heading_, "Sales figures shown " +
                                  TrellinReportGlobals::RequireApplication().Tax().TaxName() +
                                  (tax_inclusive_ ? " Inclusive" : " Exclusive"));
  if (exclude_inactive) AppendDescription(heading_, "Active Customers only");
}

void ardsSalesSummaryReport::AddSideFilters(std::string& where) {
  trellin::Parameters& p = TLReport()->Parameters();
  AppendSalesListFilters(where, p, heading_, false, !parties_);
  AppendListParameterCondition(where, "Transactions.AddressId", "AddressId", p, heading_,
                               kRangeText);
  if (p.Value("ExcludeInactiveCustomers", false).ToBool()) {
    AppendSQLCondition(where, "OtherParty.CustomerActive=" + Database::SQLBoolean(true));
  }
  AppendSQLCondition(where,
                     "(IsCustomer=" + Database::SQLBoolean(true) + " OR IsCustomer Is Null)");
  AppendSQLCondition(where, "(TransactionLine.Type Between 30 And 34)");
}

bool ardsSalesSummaryReport::OwnGrouping(ChosenGrouping& grouping, const std::string& base) const {
  return SalesGrouping(grouping, base);
}

std::vector<std::pair<std::string, std::string>> ardsSalesSummaryReport::Figures() const {
  const std::string tax = tax_inclusive_ ? "+[TransactionLine].[TaxValue]" : "";
  return {{"Sales", "[TransactionLine].[Value]+[TransactionLine].[Discount]" + tax},
          {"Disc", "TransactionLine.Discount"},
          {"Net", "[TransactionLine].[Value]" + tax},
          {"Costs", "TransactionLine.ItemCost"}};
}

void ardsSalesSummaryReport::BuildSQL() {
  trellin::Parameters& p = TLReport()->Parameters();
  parties_ = PartiesKey(TLReport()->ReportName());
  key_field_ = parties_ ? "OtherPartyId" : "ItemId";
  include_costs_ = p.Value("IncludeCosts", true).ToBool();
  tax_inclusive_ = p.Value("TaxInclusive", false).ToBool();
  split_by_address_ = parties_ && p.Value("SplitByAddress", false).ToBool();
  decimals_ = RoundingDecimals(p.Value("Rounding", "Normal").Text());

  heading_.clear();
  const std::string order_by = p.Value("OrderBy", "Code").Text();
  AppendDescription(heading_, (parties_ ? PartyWord() : "Items ") + "ordered by " + order_by);
  if (EqualsIgnoreCase(p.Value("Period1", "MTD").Text(), "ALL")) {
    AppendDescription(heading_, "All Transactions");
  } else {
    AppendDateRangeDescription(heading_, "Period Covered", p.Value("Period1DateFrom", Variant()),
                               p.Value("Period1DateTo", Variant()));
  }
  if (decimals_ == kRoundingThousands) AppendDescription(heading_, "Figures shown in thousands");
  AddSideHeadings();

  std::string where;
  AddSideFilters(where);
  // The WHERE spans both periods: the earlier start and the later end, an end left open when
  // either period leaves it open.
  const bool all1 = EqualsIgnoreCase(p.Value("Period1", "MTD").Text(), "ALL");
  const bool all2 = EqualsIgnoreCase(p.Value("Period2", "YTD").Text(), "ALL");
  auto bound = [&](const char* name, bool earlier) {
    const Variant a = all1 ? Variant::Null() : p.Value(std::string("Period1") + name, Variant());
    const Variant b = all2 ? Variant::Null() : p.Value(std::string("Period2") + name, Variant());
    if (!HasDate(a) || !HasDate(b)) return Variant::Null();
    const bool a_first = a.ToDate() < b.ToDate();
    return (a_first == earlier) ? a : b;
  };
  std::string unused;
  AppendDateRangeCondition(where, "TransactionLine.DateProcess", bound("DateFrom", true),
                           bound("DateTo", false), "", unused);

  std::string select = parties_ ? "OtherParty.OtherPartyId,OtherParty.Name,OtherParty.XRefId"
                                : "Item.ItemId,Item.Description";
  if (split_by_address_) select += ",Transactions.AddressId";
  std::string group_by = select;
  sort_ = AnalysisSort(Orders(), order_by, key_field_);
  if (sort_ != key_field_) sort_ += "," + key_field_;
  const std::string base = parties_ ? "OtherParty" : "Item";
  auto own = [&](ChosenGrouping& g) { return OwnGrouping(g, base); };
  for (const ChosenGrouping& g : ChooseGroupings(p.Value("Groupings", Variant()), base, own,
                                                 UnknownGrouping::kSkip, kGroupLevels)) {
    MoveInCommaList(select, g.field, true, false);
    MoveInCommaList(group_by, g.field, true, true);
    MoveInCommaList(sort_, g.key_field, true, true);
    TLReport()->DefineGroup(g.level, g.name, g.key_field, g.list_sql, g.page_break);
  }
  TLReport()->EndDefineGroups();

  std::string columns;
  for (int period = 1; period <= 2; ++period) {
    const std::string clause = PeriodClause(period);
    for (const auto& [name, expression] : Figures()) {
      // A period with no dates ("ALL") is the plain sum.
      columns += "," + FigureSign() + "Sum(" +
                 (clause.empty() ? expression : Database::SQLIIf(clause, expression, "0")) +
                 ") AS " + name + std::to_string(period);
    }
  }
  // The purchase side joins its rows as the sales side does.
  const std::string from =
      parties_
          ? " FROM ((OtherParty INNER JOIN Transactions ON OtherParty.OtherPartyId = "
            "Transactions.OtherPartyId) INNER JOIN (Item INNER JOIN TransactionLine ON "
            "Item.ItemId = TransactionLine.ItemId) ON Transactions.TransactionId = "
            "TransactionLine.TransactionId) LEFT JOIN Job ON Transactions.JobId = Job.JobId"
          : " FROM (OtherParty RIGHT JOIN (Transactions LEFT JOIN Job ON Transactions.JobId = "
            "Job.JobId) ON OtherParty.OtherPartyId = Transactions.OtherPartyId) INNER JOIN (Item "
            "INNER JOIN TransactionLine ON Item.ItemId = TransactionLine.ItemId) ON "
            "Transactions.TransactionId = TransactionLine.TransactionId";
  sql_ = "SELECT " + select + columns + from + " WHERE " + where + " GROUP BY " + group_by +
         " HAVING (Count(TransactionLine.TransactionLineId)<>0)";
}

void ardsSalesSummaryReport::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

void ardsSalesSummaryReport::ActiveReport_ReportStart() {
  BuildSQL();
  RefreshDataColumns();
  TLReport()->SetupGroupSections(TLReport()->Parameters().Value("Summary", false).ToBool(), -1,
                                 true);
  TLReport()->SetupStandardHeader(true);
  if (Control* heading = FindControl("txtHeading")) heading->SetText(heading_);
  TLReport()->DataColumns().CreateFields(Field("lblColumns").Top(), 0, 60, 0, true, 0, 8.0f, 8.0f);
  Section& page_header = Sections()["PageHeader"];
  if (Control* rule = page_header.Controls().Find("linHeader")) {
    rule->SetTop(page_header.Height() + 30);
    page_header.SetHeight(page_header.Height() + 60);
  }
  if (query_log_) query_log_(sql_);
  rows_ = TrellinReportGlobals::RequireDatabase()->QueryUpdatable(sql_);
  rows_->Sort(sort_);
  DataControl().SetRecordset(rows_);
}

void ardsSalesSummaryReport::ActiveReport_DataInitialize() {
  for (const char* name : {"GP1", "GP2"}) Fields().Add(name);
}

void ardsSalesSummaryReport::ActiveReport_FetchData(bool&) {
  const auto& rs = DataControl().Recordset();
  if (!gross_profit_ || !rs || rs->Eof()) return;
  for (const char* n : {"1", "2"}) {
    Fields()[std::string("GP") + n].SetValue(FigureOf(rs->Value(std::string("Net") + n)) -
                                             FigureOf(rs->Value(std::string("Costs") + n)));
  }
}

void ardsSalesSummaryReport::OnFormat(Section& section) {
  switch (section.Type()) {
    case SectionType::Detail:
      TLReport()->DetailFormat(section, " ");
      if (decimals_ == kRoundingThousands) ApplySectionRounding(section, decimals_);
      break;
    case SectionType::GroupHeader:
      FormatGroupSection(section);
      break;
    case SectionType::GroupFooter:
      if (const int level = GroupLevelOf(section, "GroupFooter")) {
        TLReport()->GroupFooterFormat(level);
        if (decimals_ == kRoundingThousands) ApplySectionRounding(section, decimals_);
      }
      break;
    default:
      break;
  }
}

void ardsSalesSummaryReport::OnBeforePrint(Section& section) {
  if (section.Type() != SectionType::ReportFooter) return;
  TLReport()->ReportFooterBeforePrint();
  if (decimals_ == kRoundingThousands) ApplySectionRounding(section, decimals_);
}

void ardsSalesSummaryReport::ActiveReport_ReportEnd() {
  DataControl().SetRecordset(nullptr);
  rows_.reset();
}

}  // namespace trellin
