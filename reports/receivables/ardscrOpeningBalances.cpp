// The key of the opening balances: the items open on the day before `DateAsAt`, each party's
// balance brought forward from them, and the control account beside the run's total.

#include "reports/receivables/ardscrOpeningBalances.h"

#include <algorithm>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/host/Section.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/ReportShapes.h"
#include "reports/receivables/LedgerSide.h"
#include "reports/receivables/RemainderAsAt.h"

namespace trellin {

namespace {

constexpr ListOrder kOpeningOrders[] = {
    {"Date", "Transactions.Date,Transactions.TransactionId"},
    {"Reference", "Transactions.Reference,Transactions.TransactionId"},
    {"Entered", "Transactions.CreatedDate,Transactions.TransactionId"},
};

// The side's range of types and the date are the designer's own condition; the description
// names the ledger once, as the parameter's value.
constexpr ListChoice kOpeningLedgers[] = {
    {"Receivables", "", ""},
    {"Payables", "", ""},
};

constexpr ListParameter kOpeningParameters[] = {
    {.kind = ListParameterKind::Choice,
     .name = "Ledger",
     .caption = "Ledger",
     .primary = true,
     .choices = kOpeningLedgers},
    {.kind = ListParameterKind::Standard, .field = "Transactions.OtherPartyId", .index = 8},
    {.kind = ListParameterKind::Standard, .field = "Transactions.OtherPartyId", .index = 33},
    {.kind = ListParameterKind::Standard, .field = "OtherParty.CustomerCategoryId", .index = 9},
    {.kind = ListParameterKind::Standard, .field = "OtherParty.SupplierCategoryId", .index = 34},
    {.kind = ListParameterKind::Standard, .field = "OtherParty.CustomerTypeId", .index = 13},
    {.kind = ListParameterKind::Standard, .field = "OtherParty.SupplierTypeId", .index = 38},
    {.kind = ListParameterKind::Standard,
     .name = "CustomerPaymentTerms",
     .caption = "Cust. Payment Terms",
     .field = "OtherParty.CustomerPayTermId",
     .index = 12},
    {.kind = ListParameterKind::Standard,
     .name = "SupplierPaymentTerms",
     .caption = "Supp. Payment Terms",
     .field = "OtherParty.SupplierPayTermId",
     .index = 37},
    {.kind = ListParameterKind::Standard, .field = "OtherParty.EmployeeId", .index = 15},
    {.kind = ListParameterKind::Standard, .field = "OtherParty.LocationId", .index = 23},
    {.kind = ListParameterKind::Option,
     .name = "ShowItems",
     .caption = "Show Items",
     .phrase = "Items shown"},
    {.kind = ListParameterKind::Option,
     .name = "IncludeZero",
     .caption = "Include Zero Balances",
     .phrase = "Nil balances included"},
};

// The party's own grouping, so that a supplier's heading finds its name as a customer's does.
constexpr ListGrouping kOpeningGroupings[] = {
    {"Other Party", "Transactions.OtherPartyId", "SELECT OtherPartyId,Name FROM OtherParty",
     "OtherPartyId"},
};

constexpr ListColumn kOpeningColumns[] = {
    {"Reference", "Reference", kColumnText, "Reference", "", 1300, false},
    {"Date", "Date", kColumnDate, "Date", "", 1000, false},
    {"Due", "DatePayment", kColumnDate, "Due", "", 1000, false},
    {"Type", "TransactionTypeId", kColumnText, "Type", "", 700, false},
    {"Original", "Original", kColumnMoney, "Original", "", 1500, false},
    {"Open", "Open", kColumnMoney, "Open", "", 1500, false},
};

constexpr ListKey kOpeningKeys[] = {{
    .key = "OpeningBalances",
    .base_sql =
        "SELECT Transactions.TransactionId,Transactions.OtherPartyId,OtherParty.Name,"
        "Transactions.Reference,Transactions.Date,Transactions.DatePayment,"
        "Transactions.TransactionTypeId,Transactions.Value,Transactions.ValueRemaining FROM "
        "Transactions INNER JOIN OtherParty ON Transactions.OtherPartyId=OtherParty.OtherPartyId",
    .orders = kOpeningOrders,
    .parameters = kOpeningParameters,
    .groupings = "Employee,Location,Customer Category,Customer Type,Supplier Category,"
                 "Supplier Type,Status",
    .grouping_table = "OtherParty",
    .own_groupings = kOpeningGroupings,
    .fixed_grouping = "Other Party",
    .columns = kOpeningColumns,
}};

constexpr std::string_view kPartyGrouping = "Other Party";

Currency BalanceMoneyOf(const Variant& value) {
  return value.IsNull() || value.IsEmpty() ? Currency() : value.ToCurrency();
}

const Variant& FieldValue(const Fields& fields, std::string_view name) {
  static const Variant kNull = Variant::Null();
  const ReportField* field = fields.Find(name);
  return field == nullptr ? kNull : field->Value();
}

}  // namespace

ardscrOpeningBalances::ardscrOpeningBalances()
    : ListDesigner("ardscrOpeningBalances", kOpeningKeys, "Opening Balances") {}

DesignerPtr CreateardscrOpeningBalances() { return std::make_shared<ardscrOpeningBalances>(); }

const LedgerSide& ardscrOpeningBalances::Side() const {
  return SideOf(TLReport()->Parameters().Value("Ledger", Variant()).Text() == "Payables"
                    ? LedgerSideKind::Payables
                    : LedgerSideKind::Receivables);
}

void ardscrOpeningBalances::RefreshParameters(std::string& ReportName) {
  ListDesigner::RefreshParameters(ReportName);
  TLReport()
      ->Parameters()
      .AddDate("DateAsAt", Variant(), true, "Date As At", "BOY", false, "Date As At")
      ->Help =
      "The balances brought forward into this day; left blank, the financial year's "
      "first day (BOY).";
}

void ardscrOpeningBalances::RefreshDataColumns() {
  ListDesigner::RefreshDataColumns();
  TLReport()->DataColumns().Item("Original").Totalled = false;
}

Date ardscrOpeningBalances::AsAt() const {
  const Variant value = TLReport()->Parameters().Value("DateAsAt", Variant::Null());
  if (value.IsNull() || value.IsEmpty() || value.IsMissing() || value.Text().empty()) {
    throw std::invalid_argument("Date As At: the opening balances need a date to open on.");
  }
  return value.ToDate().DateOnly();
}

std::string ardscrOpeningBalances::ExtraCondition() {
  // Open today, or allocated since against a later transaction: all an item can have had open.
  return "(Transactions.Type Between " + std::string(Side().range) +
         ") AND Transactions.DateProcess<" + Database::SQLDate(AsAt()) +
         " AND (Transactions.ValueRemaining<>0 OR " + AllocatedFromCondition(AsAt()) + ")";
}

void ardscrOpeningBalances::PartyFooterOnOneLine() {
  for (int level = 1; level <= 5; ++level) {
    const Control* heading = FindControl("ghLabel" + std::to_string(level));
    Control* label = FindControl("gfLabel" + std::to_string(level));
    Section* footer = Sections().Find("GroupFooter" + std::to_string(level));
    if (heading == nullptr || label == nullptr || footer == nullptr ||
        heading->Tag() != kPartyGrouping) {
      continue;
    }
    // The party's name stands beside its balance, left of the first sum, with no rule above.
    float left = PrintWidth();
    float top = label->Top();
    for (Control& c : footer->Controls()) {
      if (c.Class() == ControlClass::Line) c.SetVisible(false);
      if (c.Class() == ControlClass::Field && &c != label && c.Visible()) {
        left = std::min(left, c.Left());
        top = std::min(top, c.Top());
      }
    }
    for (Control& c : footer->Controls()) {
      if (c.Class() == ControlClass::Field && &c != label) c.SetTop(c.Top() - top);
    }
    label->SetTop(0);
    label->SetWidth(left - label->Left() - 100);
    footer->SetHeight(label->Height() + 20);
    return;
  }
}

std::string ardscrOpeningBalances::PartyOfRow() const {
  return UCase(FieldValue(Fields(), "OtherPartyId").Text());
}

void ardscrOpeningBalances::ActiveReport_ReportStart() {
  ListDesigner::ActiveReport_ReportStart();
  const trellin::Parameters& p = TLReport()->Parameters();
  show_items_ = p.Value("ShowItems", false).ToBool();
  include_zero_ = p.Value("IncludeZero", false).ToBool();
  const Date as_at = AsAt();
  opened_on_ = as_at;
  const LedgerSide& side = Side();
  const bool turned = side.sign == "-";
  // Without the items, each party's footer is its line.
  if (!show_items_) {
    TLReport()->SetupGroupSections(true, -1, true);
    PartyFooterOnOneLine();
  }
  shown_.clear();
  for (const Section& section : Sections()) shown_[section.Name()] = section.Visible();

  Database& db = *TrellinReportGlobals::RequireBusinessLayer().Database();
  open_.clear();
  parties_.clear();
  ledger_total_ = Currency();
  if (const auto& rs = DataControl().Recordset(); rs && !rs->Eof()) {
    const int id_field = rs->FieldIndex("TransactionId");
    const int party_field = rs->FieldIndex("OtherPartyId");
    const int remaining_field = rs->FieldIndex("ValueRemaining");
    for (; !rs->Eof(); rs->MoveNext()) {
      const std::int64_t id = rs->Value(id_field).ToLong();
      const Currency stored = RemainderAsAt(db, BalanceMoneyOf(rs->Value(remaining_field)),
                                            AllocationsProcessedFromSQL(id, as_at));
      const Currency open = turned ? -stored : stored;
      open_[id] = open;
      parties_[UCase(rs->Value(party_field).Text())] += open;
      ledger_total_ += open;
    }
    rs->MoveFirst();
  }

  // The control account in the sub-ledger's sense, to the same day: debits positive for the
  // receivables control, credits for the payables one.
  const trellin::Options& options = TrellinReportGlobals::RequireApplication().Options();
  const std::string account =
      side.debtor ? options.ReceivablesControlAccount() : options.PayablesControlAccount();
  control_ = db.ExecuteScalarCurrency(
      "SELECT Sum(" + std::string(side.debtor ? "" : "-") +
          "Value) FROM glTransaction WHERE AccountId=" + Database::SQLString(account) +
          " AND Date<" + Database::SQLDate(as_at),
      Currency());

  const std::string date_format = TrellinReportGlobals::RequireBusinessLayer().DateFormat();
  if (Control* parameters = FindControl("txtParameters")) {
    std::string description = Description();
    AppendDescription(description, "Brought forward into " + Format(Variant(as_at), date_format));
    parameters->SetText(description);
  }
  const std::string money = "#,##0.00;(#,##0.00)";
  Section& footer = Sections()["ReportFooter"];
  constexpr float kLines = 480;
  for (Control& c : footer.Controls()) {
    if (c.Name() == "rfParameters" || c.Name() == "txtParameters") c.SetTop(c.Top() + kLines);
  }
  footer.SetHeight(footer.Height() + kLines);
  // One line a field, so that each stands in a cell of its own in the data exports.
  const std::string lines[] = {
      "Control account " + account + " brought forward into " +
          Format(Variant(as_at), date_format) + ": " + Format(Variant(control_), money),
      "Ledger less control account: " + Format(Variant(ledger_total_ - control_), money)};
  const char* names[] = {"txtControl", "txtDifference"};
  for (int i = 0; i < 2; ++i) {
    Control& line = footer.Controls().Add(ControlClass::Field, names[i]);
    line.SetLeft(0);
    line.SetTop(560.0f + 220.0f * static_cast<float>(i));
    line.SetWidth(PrintWidth());
    line.SetHeight(220);
    line.Font().Size = 8;
    line.SetText(lines[i]);
  }
}

void ardscrOpeningBalances::ActiveReport_DataInitialize() {
  for (const char* name : {"Original", "Open"}) Fields().Add(name);
}

void ardscrOpeningBalances::ActiveReport_FetchData(bool&) {
  if (Fields().Find("Value") == nullptr) return;
  const bool turned = Side().sign == "-";
  const Currency original = BalanceMoneyOf(FieldValue(Fields(), "Value"));
  const auto found = open_.find(FieldValue(Fields(), "TransactionId").ToLong());
  Fields().Item("Original").SetValue(Variant(turned ? -original : original));
  Fields().Item("Open").SetValue(Variant(found == open_.end() ? Currency() : found->second));
}

void ardscrOpeningBalances::OnFormat(Section& section) {
  ListDesigner::OnFormat(section);
  const auto party = parties_.find(PartyOfRow());
  const bool party_shown =
      include_zero_ || (party != parties_.end() && party->second != Currency());
  if (section.Type() == SectionType::Detail) {
    const Variant& open = FieldValue(Fields(), "Open");
    section.SetVisible(shown_[section.Name()] && party_shown && BalanceMoneyOf(open) != Currency());
    return;
  }
  const bool header = section.Type() == SectionType::GroupHeader;
  if (!header && section.Type() != SectionType::GroupFooter) return;
  const int level = GroupLevelOf(section, header ? "GroupHeader" : "GroupFooter");
  Control* label = FindControl("ghLabel" + std::to_string(level));
  if (label == nullptr || label->Tag() != kPartyGrouping) return;
  // The party's heading prints over its items only; its footer is its line either way.
  section.SetVisible(shown_[section.Name()] && party_shown && (show_items_ || !header));
  if (header && label->Caption().rfind(kPartyGrouping, 0) == 0) {
    label->SetCaption(std::string(Side().debtor ? "Customer" : "Supplier") +
                      label->Caption().substr(kPartyGrouping.size()));
  }
}

}  // namespace trellin
