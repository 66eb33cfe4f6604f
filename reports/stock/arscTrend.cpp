// The trends: parameters by key, the period table's columns in one aggregate query, the groups,
// the address of a split row, and the layout's code and total columns.

#include "reports/stock/arscTrend.h"

#include <span>
#include <stdexcept>
#include <string_view>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/TrellinReports.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/AnalysisFigures.h"
#include "reports/receivables/PartyFilters.h"
#include "reports/receivables/SalesAnalysisShared.h"

namespace trellin {

namespace {

// One list filter: parameter, standard row, caption ("" the row's own), field.
struct TrendFilter {
  std::string_view name;
  long index;
  std::string_view caption;
  std::string_view field;
};

// clang-format off
constexpr TrendFilter kSalesTrendFilters[] = {
    {"Customers", 8, "", "OtherParty.OtherPartyId"},
    {"Locations", 23, "", "TransactionLine.LocationId"},
    {"Departments", 14, "", "TransactionLine.DeptId"},
    {"Employees", 15, "", "Transactions.EmployeeId"},
    {"CustomerCategories", 9, "", "OtherParty.CustomerCategoryId"},
    {"CustomerEmployees", 10, "", "OtherParty.EmployeeId"},
    {"CustomerLocations", 11, "", "OtherParty.LocationId"},
    {"CustomerTypes", 13, "", "OtherParty.CustomerTypeId"},
    {"CustomerPaymentTerms", 12, "Payment Terms", "OtherParty.CustomerPayTermId"},
    {"ItemCategories", 16, "", "Item.ItemCategoryId"},
    {"ItemTypes", 20, "", "Item.ItemTypeId"},
    {"Items", 18, "", "TransactionLine.ItemId"},
};
constexpr TrendFilter kPurchaseTrendFilters[] = {
    {"Suppliers", 33, "", "OtherParty.OtherPartyId"},
    {"Locations", 23, "", "TransactionLine.LocationId"},
    {"Departments", 14, "", "TransactionLine.DeptId"},
    {"Employees", 15, "", "Transactions.EmployeeId"},
    {"SupplierCategories", 34, "", "OtherParty.SupplierCategoryId"},
    {"SupplierEmployees", 35, "", "OtherParty.EmployeeId"},
    {"SupplierLocations", 36, "", "OtherParty.LocationId"},
    {"SupplierTypes", 38, "", "OtherParty.SupplierTypeId"},
    {"SupplierPaymentTerms", 37, "Payment Terms", "OtherParty.SupplierPayTermId"},
    {"ItemCategories", 16, "", "Item.ItemCategoryId"},
    {"ItemTypes", 20, "", "Item.ItemTypeId"},
    {"Items", 18, "", "TransactionLine.ItemId"},
};
constexpr TrendFilter kItemSalesTrendFilters[] = {
    {"Items", 18, "", "Item.ItemId"},
    {"Locations", 23, "", "TransactionLine.LocationId"},
    {"Departments", 14, "", "TransactionLine.DeptId"},
    {"Employees", 15, "", "Transactions.EmployeeId"},
    {"ItemCategories", 16, "", "Item.ItemCategoryId"},
    {"ItemTypes", 20, "", "Item.ItemTypeId"},
    {"Suppliers", 33, "", "Item.SupplierId"},
    {"Customers", 8, "", "Transactions.OtherPartyId"},
    {"CustomerCategories", 9, "", "OtherParty.CustomerCategoryId"},
    {"CustomerTypes", 13, "", "OtherParty.CustomerTypeId"},
    {"CustomerLocations", 11, "", "OtherParty.LocationId"},
};
// Suppliers are those the items were bought from, as the Supplier grouping of this key is.
constexpr TrendFilter kItemPurchaseTrendFilters[] = {
    {"Items", 18, "", "Item.ItemId"},
    {"Locations", 23, "", "TransactionLine.LocationId"},
    {"Departments", 14, "", "TransactionLine.DeptId"},
    {"ItemCategories", 16, "", "Item.ItemCategoryId"},
    {"ItemTypes", 20, "", "Item.ItemTypeId"},
    {"Suppliers", 33, "", "Transactions.OtherPartyId"},
    {"SupplierCategories", 34, "", "OtherParty.SupplierCategoryId"},
    {"SupplierLocations", 36, "", "OtherParty.LocationId"},
    {"SupplierTypes", 38, "", "OtherParty.SupplierTypeId"},
};

struct TrendKey {
  std::string_view key;
  TrendRows rows;
  bool sales;
  std::string_view word;          // the description's first word, with its blank
  std::string_view code_caption;  // the code column's heading
  std::string_view orders;
  std::string_view groupings;
  std::span<const TrendFilter> filters;
  std::string_view user_table;    // the user-defined fields of the row besides Transactions'
};

constexpr TrendKey kTrendKeys[] = {
    {"SalesTrendAR", TrendRows::Customers, true, "Customers ", "Customer", "Code,Name,X Ref",
     "Employee,Department,Location,Customer Category,Customer Employee,Customer Location,"
     "Customer Type,Customer Payment Term,Item,Item Category,Item Type",
     kSalesTrendFilters, "OtherParty"},
    {"PurchaseTrendAP", TrendRows::Suppliers, false, "Suppliers ", "Supplier", "Code,Name,X Ref",
     "Department,Employee,Location,Supplier Category,Supplier Employee,Supplier Location,"
     "Supplier Type,Supplier Payment Term,Item,Item Category,Item Type",
     kPurchaseTrendFilters, "OtherParty"},
    {"ItemSalesTrend", TrendRows::Items, true, "Items ", "Item", "Code,Description",
     "Department,Employee,Item Category,Item Type,Location,Supplier,Customer,Customer Category,"
     "Customer Location,Customer Type",
     kItemSalesTrendFilters, "Item"},
    {"ItemPurchaseTrend", TrendRows::Items, false, "Items ", "Item", "Code,Description",
     "Department,Item Category,Item Type,Location,Supplier,Supplier Category,Supplier Location,"
     "Supplier Type",
     kItemPurchaseTrendFilters, "Item"},
};
// clang-format on

const TrendKey& TrendKeyOf(const std::string& key) {
  for (const TrendKey& row : kTrendKeys) {
    if (EqualsIgnoreCase(row.key, key)) return row;
  }
  throw std::invalid_argument("arscTrend does not serve the key \"" + key + "\".");
}

std::string AsString(std::string_view view) { return std::string(view); }

bool HasValue(const Variant& v) { return !(v.IsNull() || v.IsEmpty() || v.IsMissing()); }

// Lines after `after` up to and including `upto`, as the period columns read them.
std::string PeriodCondition(const Date& after, const Date& upto) {
  return "(TransactionLine.DateProcess>" + Database::SQLDate(after) +
         " AND TransactionLine.DateProcess<" + Database::SQLDate(upto.AddDays(1)) + ")";
}

// The groupings whose fields are the party's own employee, as the sales reports give
// "Customer Employee"; the rest go to the sales reports' own and the shared table.
bool TrendGrouping(ChosenGrouping& g, const TrendKey& key) {
  if (g.name == "Customer Employee" || g.name == "Supplier Employee") {
    g.field = "OtherParty.EmployeeId AS OtherPartyEmployeeId";
    g.list_sql = "SELECT EmployeeId,Name FROM Employee";
    g.key_field = "OtherPartyEmployeeId";
    return true;
  }
  if (g.name == "Supplier" && !key.sales) {
    // Who the items were bought from, not their usual supplier.
    g.field = "Transactions.OtherPartyId";
    g.list_sql = "SELECT OtherPartyId,Name FROM OtherParty";
    g.key_field = "OtherPartyId";
    return true;
  }
  if (g.name == "Item") {
    std::string name = g.name;
    GetGroupingDefinition(name, g.field, g.list_sql, g.key_field, "TransactionLine");
    return true;
  }
  return SalesGrouping(g, key.rows == TrendRows::Items ? "Item" : "OtherParty");
}

}  // namespace

DesignerPtr CreatearscTrend() { return std::make_shared<arscTrend>(); }

void arscTrend::RefreshParameters(std::string& ReportName) {
  const TrendKey& key = TrendKeyOf(ReportName);
  rows_ = key.rows;
  TLReport()->SetHasParameters(true);
  trellin::Parameters& p = TLReport()->Parameters();
  p.AddBoolean("Summary", false, false, "", false, false, "Summary");
  p.AddList("ValueType", "Dollars", true, "", "Dollars", "Dollars,Quantity", false, "Value Type");
  p.AddBoolean("ShowTotalValue", true, false, "", true, false, "Show Total Value");
  p.AddBoolean("ShowItemCode", true, false, "", true, false, "Show Item Code");
  p.AddList("Frequency", "EOM", true, "", "EOM", AsString(kTrendFrequencies), false, "Frequency");
  p.AddDate("EndDate", Variant(), true, "", Variant(), false, "End Date")->Help =
      "The last day of the last period. Left blank, the periods end today and the lines of every "
      "date are read.";
  p.AddList("Rounding", "Whole", false, "", "Whole", "Whole,Thousands", false, "Rounding");
  p.AddSQLList("AddressId", Variant(), false, "", Variant(),
               "SELECT AddressId FROM Transactions GROUP BY AddressId", "AddressId", false,
               "Address");
  p.AddList("OrderBy", "Code", true, "", "Code", AsString(key.orders), false, "Order By");
  if (key.rows == TrendRows::Customers) {
    p.AddBoolean("SplitByAddress", false, false, "", false, false, "Split By Address");
  }
  p.AddMultiList("Groupings", Variant(), false, "", Variant(), AsString(key.groupings), false,
                 false, "Groupings");
  for (const TrendFilter& f : key.filters) {
    CreateStandardParameter(f.index, p, f.name == key.filters.front().name, AsString(f.name),
                            AsString(f.caption));
  }
  Application& application = TrellinReportGlobals::RequireApplication();
  if (key.rows == TrendRows::Items) {
    application.AddUserDefinedParametersItem(p, false);
  } else {
    application.AddUserDefinedParametersOtherParty(p, false);
  }
  application.AddUserDefinedParametersTransactions(p, false);
}

void arscTrend::BuildSQL() {
  trellin::Parameters& p = TLReport()->Parameters();
  const TrendKey& key = TrendKeyOf(TLReport()->ReportName());
  rows_ = key.rows;
  const std::string frequency_text = p.Value("Frequency", "EOM").Text();
  const std::optional<TrendFrequency> frequency = ParseTrendFrequency(frequency_text);
  if (!frequency) {
    throw std::invalid_argument("Frequency: \"" + frequency_text + "\" is not one of " +
                                AsString(kTrendFrequencies) + ".");
  }
  frequency_ = *frequency;
  // With no end date the periods end today; the query then reads every line of the side, so
  // each party or item with any gets its row, and each column still reads only its period.
  const Variant end = p.Value("EndDate", Variant());
  const bool dated = HasValue(end) && !Trim(end.Text()).empty();
  periods_ = MakeTrendPeriods(dated ? end.ToDate() : Today(), frequency_);

  summary_ = p.Value("Summary", false).ToBool();
  decimals_ = RoundingDecimals(p.Value("Rounding", "Whole").Text());
  const bool quantity = EqualsIgnoreCase(p.Value("ValueType", "Dollars").Text(), "Quantity");
  show_total_ = p.Value("ShowTotalValue", true).ToBool();
  show_code_ = p.Value("ShowItemCode", true).ToBool();
  split_by_address_ =
      !summary_ && rows_ == TrendRows::Customers && p.Value("SplitByAddress", false).ToBool();

  const bool items = rows_ == TrendRows::Items;
  std::string fields = items ? "Item.ItemId,Item.Description"
                             : "OtherParty.OtherPartyId,OtherParty.Name,OtherParty.Name AS "
                               "Description,OtherParty.XRefId";
  std::string group_by = items ? "Item.ItemId,Item.Description"
                               : "OtherParty.OtherPartyId,OtherParty.Name,"
                                 "OtherParty.XRefId";
  if (split_by_address_) {
    fields += ",Transactions.AddressId";
    group_by += ",Transactions.AddressId";
  }

  description_.clear();
  const std::string order_by = p.Value("OrderBy", "Code").Text();
  const std::string date_format = TrellinReportGlobals::RequireBusinessLayer().DateFormat();
  AppendDescription(description_, AsString(key.word) + "ordered by " + order_by);
  AppendDescription(description_, "Dated as at " + Format(Variant(Today()), date_format));
  AppendDescription(description_, quantity ? "Include quantity values" : "Include dollar values");
  AppendDescription(description_,
                    "End Date " + (dated ? Format(Variant(end.ToDate()), date_format) : ""));
  if (show_total_) AppendDescription(description_, "Include Total Column");
  if (items && show_code_) AppendDescription(description_, "Include Item Code");
  AppendDescription(description_, "Frequency " + frequency_text);
  if (decimals_ == kRoundingThousands) {
    AppendDescription(description_, "Figures shown in thousands");
  }

  std::string where;
  if (!items) {
    AppendSQLCondition(
        where, std::string(key.sales ? "OtherParty.IsCustomer=" : "OtherParty.IsSupplier=") +
                   Database::SQLBoolean(true));
  }
  AppendSQLCondition(where, key.sales ? "(TransactionLine.Type>=30 And TransactionLine.Type<35)"
                                      : "(TransactionLine.Type>=20 And TransactionLine.Type<25)");
  for (const TrendFilter& f : key.filters) {
    AppendListParameterCondition(where, AsString(f.field), AsString(f.name), p, description_,
                                 kRangeText);
  }
  AppendListParameterCondition(where, "Transactions.AddressId", "AddressId", p, description_,
                               kRangeText);
  AppendUserDefinedFilters(where, p, description_, key.user_table);
  AppendUserDefinedFilters(where, p, description_, "Transactions");
  const std::string whole = PeriodCondition(periods_[0], periods_[kTrendPeriods]);
  if (dated) AppendSQLCondition(where, whole);

  std::string order;
  if (items) {
    order = order_by == "Description" ? "Item.Description,Item.ItemId" : "Item.ItemId";
  } else if (order_by == "Name") {
    order = "OtherParty.Name,OtherParty.OtherPartyId";
  } else if (order_by == "X Ref") {
    order = "OtherParty.XRefId,OtherParty.OtherPartyId";
  } else {
    order = "OtherParty.OtherPartyId";
  }
  if (split_by_address_) order += ",Transactions.AddressId";
  AddGroupings(fields, group_by, order);

  const std::string value = std::string(key.sales ? "-" : "") +
                            (quantity ? "TransactionLine.Quantity" : "TransactionLine.Value");
  std::string sums;
  for (int i = 1; i <= kTrendPeriods; ++i) {
    const auto at = static_cast<std::size_t>(i);
    sums += ",Sum(" +
            Database::SQLIIf(PeriodCondition(periods_[at - 1], periods_[at]), value, "0") +
            ") AS COL" + std::to_string(i);
  }
  if (show_total_) sums += ",Sum(" + Database::SQLIIf(whole, value, "0") + ") AS Total";

  std::string from;
  switch (rows_) {
    case TrendRows::Customers:
    case TrendRows::Suppliers:
      from =
          " FROM Item INNER JOIN ((OtherParty INNER JOIN Transactions ON "
          "OtherParty.OtherPartyId=Transactions.OtherPartyId) INNER JOIN TransactionLine ON "
          "Transactions.TransactionId=TransactionLine.TransactionId) ON "
          "Item.ItemId=TransactionLine.ItemId";
      break;
    case TrendRows::Items:
      from =
          " FROM OtherParty INNER JOIN (Transactions INNER JOIN (Item INNER JOIN TransactionLine "
          "ON Item.ItemId=TransactionLine.ItemId) ON "
          "Transactions.TransactionId=TransactionLine.TransactionId) ON "
          "OtherParty.OtherPartyId=Transactions.OtherPartyId";
      break;
  }
  sql_ = "SELECT " + fields + sums + from + " WHERE " + where + " GROUP BY " + group_by;
  if (items && dated) {
    sql_ += " HAVING (Count(" + Database::SQLIIf(whole, "1", "Null") + ")<>0)";
  }
  sql_ += " ORDER BY " + order;
}

void arscTrend::AddGroupings(std::string& fields, std::string& group_by, std::string& order) {
  const TrendKey& key = TrendKeyOf(TLReport()->ReportName());
  const auto own = [&key](ChosenGrouping& g) { return TrendGrouping(g, key); };
  std::vector<ChosenGrouping> groupings =
      ChooseGroupings(TLReport()->Parameters().Value("Groupings", Variant()), "TransactionLine",
                      own, UnknownGrouping::kRefuse, split_by_address_ ? 4 : 5);
  for (const ChosenGrouping& g : groupings) {
    MoveInCommaList(fields, g.field, true, false);
    MoveInCommaList(group_by, g.field, true, true);
    MoveInCommaList(order, g.field, true, true);
  }
  // A split row is headed by its address, inside every chosen group.
  if (split_by_address_) {
    for (ChosenGrouping& g : groupings) ++g.level;
    ChosenGrouping address;
    address.level = 1;
    address.name = "Address";
    address.key_field = "Address";
    groupings.insert(groupings.begin(), address);
  }
  DefineGroups(groupings);
}

void arscTrend::ActiveReport_ReportStart() {
  BuildSQL();
  TLReport()->SetupGroupSections(summary_, -1, true);
  // An address heads one row of its party: a total under it would repeat the row.
  if (split_by_address_) Sections()["GroupFooter1"].SetVisible(false);
  TLReport()->SetupStandardHeader(true);
  LayOut();
  DataControl().SetSource(sql_);
}

void arscTrend::LayOut() {
  const TrendKey& key = TrendKeyOf(TLReport()->ReportName());
  const std::string mask = TrendLabelFormat(frequency_);
  for (int i = 1; i <= kTrendPeriods; ++i) {
    if (Control* label = FindControl("phLabel" + std::to_string(i))) {
      label->SetCaption(Format(Variant(periods_[static_cast<std::size_t>(i)]), mask));
    }
  }
  Control& code_label = Field("lblItem");
  Control& code = Field("txtItemId");
  Control& description = Field("txtDescription");
  Control& description_label = Field("lblDescription");
  code.SetDataField(rows_ == TrendRows::Items ? "ItemId" : "OtherPartyId");
  code_label.SetCaption(AsString(key.code_caption));
  code.SetVisible(show_code_);
  code_label.SetVisible(show_code_);
  if (show_code_) {
    const float shift = code.Width() + 60;
    for (Control* c : {&description, &description_label}) {
      c->SetLeft(c->Left() + shift);
      c->SetWidth(c->Width() - shift);
    }
  }
  if (!show_total_) {
    const float total_width = Field("txtTotal").Width();
    for (Section& section : Sections()) {
      for (Control& control : section.Controls()) {
        if (control.Tag() == "T") control.SetVisible(false);
        if (control.Tag() == "S") control.SetLeft(control.Left() + total_width);
      }
    }
    description.SetWidth(description.Width() + total_width);
    description_label.SetWidth(description_label.Width() + total_width);
    if (Control* rule = FindControl("linTotal")) {
      rule->SetLeft(rule->Left() + total_width);
      rule->SetWidth(rule->Width() - total_width);
    }
  }
  // In summary the rows are the innermost group's: its name heads the code, or the description
  // when the code is not shown.
  if (const Control* group = FindControl("ghLabel1"); summary_ && group && !group->Tag().empty()) {
    if (show_code_) {
      // The group's name may be wider than a code: it takes the description's heading room.
      code_label.SetCaption(group->Tag());
      code_label.SetWidth(description_label.Left() + description_label.Width() - code_label.Left());
      description_label.SetCaption("");
    } else {
      description_label.SetCaption(group->Tag());
    }
  }
  PlaceSummaryFields(summary_, "Item", "Description");
  if (Control* summary_id = FindControl("gf1SummaryId")) summary_id->SetWidth(code.Width());
  if (Control* summary_name = FindControl("gf1SummaryName")) {
    summary_name->SetWidth(description.Width());
  }
  ApplyReportRounding(*this, decimals_);
  if (Control* parameters = FindControl("txtParameters")) parameters->SetText(description_);
}

void arscTrend::ActiveReport_DataInitialize() {
  if (split_by_address_) Fields().Add("Address");
}

void arscTrend::ActiveReport_FetchData(bool& eof) {
  if (eof || !split_by_address_) return;
  const auto& rs = DataControl().Recordset();
  if (!rs || rs->Eof()) return;
  const Variant id = rs->Value("AddressId");
  const std::optional<std::string> address = SaleAddress(rs->Value("OtherPartyId").Text(), id);
  std::string text = "Undefined";
  if (address) {
    const std::string first_line = address->substr(0, address->find_first_of("\r\n"));
    text = first_line.empty() ? id.Text() : id.Text() + ", " + first_line;
  }
  Fields()["Address"].SetValue(Variant(text));
}

void arscTrend::Detail_Format() {
  const auto& rs = DataControl().Recordset();
  if (!rs || rs->Eof()) return;
  Section& detail = Sections()["Detail"];
  ApplySectionRounding(detail, decimals_);
  if (summary_) return;
  detail.SetBackStyle(1 - detail.BackStyle());
}

void arscTrend::FooterFormat(Section& section) { ApplySectionRounding(section, decimals_); }

void arscTrend::OnBeforePrint(Section& section) {
  arscStockBase::OnBeforePrint(section);
  // The totals take their sums as the footer prints.
  if (section.Type() == SectionType::ReportFooter) ApplySectionRounding(section, decimals_);
}

void arscTrend::ActiveReport_ReportEnd() { DataControl().SetRecordset(nullptr); }

}  // namespace trellin
