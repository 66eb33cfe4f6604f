// The key of the penalty interest list, each item's interest and each customer's charge.

#include "reports/receivables/ardsPenaltyInterests.h"

#include <cmath>

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

constexpr ListOrder kPenaltyOrders[] = {
    {"Code", "Transactions.OtherPartyId,Transactions.DatePayment,Transactions.TransactionId"},
    {"Name",
     "OtherParty.Name,Transactions.OtherPartyId,Transactions.DatePayment,"
     "Transactions.TransactionId"},
};

constexpr ListParameter kPenaltyParameters[] = {
    {.kind = ListParameterKind::Standard,
     .field = "Transactions.OtherPartyId",
     .index = 8,
     .primary = true},
    {.kind = ListParameterKind::Standard, .field = "OtherParty.PenaltyInterestId", .index = 29},
    {.kind = ListParameterKind::Standard, .field = "OtherParty.CustomerCategoryId", .index = 9},
    {.kind = ListParameterKind::Option,
     .name = "MinimumInterest",
     .caption = "Minimum Interest",
     .phrase = "Charges raised to the minimum",
     .checked = true},
};

constexpr ListColumn kPenaltyColumns[] = {
    {"Reference", "Reference", kColumnText, "Reference", "", 1300, false},
    {"Date", "Date", kColumnDate, "Date", "", 1000, false},
    {"Due", "DatePayment", kColumnDate, "Due", "", 1000, false},
    {"Days", "Days", kColumnNumber, "Days", "", 700, false, "0"},
    {"Outstanding", "Outstanding", kColumnMoney, "Outstanding", "", 1500, false},
    {"Rate", "Rate", kColumnNumber, "Rate %", "", 1000, false, "0.00"},
    {"Interest", "Interest", kColumnMoney, "Interest", "", 1400, false},
};

// What a customer owes is stored negative: the documents that charged a penalty customer; which
// of them were open at the date is the designer's own condition and reckoning.
constexpr ListKey kPenaltyKeys[] = {{
    .key = "PenaltyInterests",
    .base_sql =
        "SELECT Transactions.TransactionId,Transactions.OtherPartyId,OtherParty.Name,"
        "Transactions.Reference,Transactions.Date,Transactions.DatePayment,"
        "Transactions.ValueRemaining,PenaltyInterest.Rate,PenaltyInterest.GraceDays,"
        "PenaltyInterest.MinimumCharge FROM (OtherParty INNER JOIN PenaltyInterest ON "
        "OtherParty.PenaltyInterestId=PenaltyInterest.PenaltyInterestId) INNER JOIN Transactions "
        "ON OtherParty.OtherPartyId=Transactions.OtherPartyId",
    .base_where =
        "OtherParty.IsCustomer<>0 AND PenaltyInterest.Rate>0 AND Transactions.Type Between 30 "
        "And 39 AND Transactions.Value<0",
    .orders = kPenaltyOrders,
    .parameters = kPenaltyParameters,
    .grouping_table = "OtherParty",
    .fixed_grouping = "Customer",
    .columns = kPenaltyColumns,
}};

constexpr std::string_view kUntotalled[] = {"Days", "Rate"};

const Variant& FieldValue(const Fields& fields, std::string_view name) {
  static const Variant kNull = Variant::Null();
  const ReportField* field = fields.Find(name);
  return field == nullptr ? kNull : field->Value();
}

Currency InterestMoneyOf(const Variant& value) {
  return value.IsNull() || value.IsEmpty() ? Currency() : value.ToCurrency();
}

// Days from the end of the item's grace to `as_at`; an item with no due date has none.
long DaysPastGrace(Date as_at, const Variant& due, const Variant& grace) {
  if (due.IsNull() || due.IsEmpty()) return 0;
  return static_cast<long>(as_at.Serial() - due.ToDate().DateOnly().Serial()) -
         (grace.IsNull() ? 0 : grace.ToLong());
}

}  // namespace

Currency PenaltyInterestOn(Currency outstanding, double rate, long days) {
  if (days <= 0) return Currency();
  return Currency::FromDouble(outstanding.ToDouble() * rate / 100.0 * static_cast<double>(days) /
                              365.0)
      .Round(2);
}

ardsPenaltyInterests::ardsPenaltyInterests() : ListDesigner("ardsPenaltyInterests", kPenaltyKeys) {}

DesignerPtr CreateardsPenaltyInterests() { return std::make_shared<ardsPenaltyInterests>(); }

void ardsPenaltyInterests::RefreshParameters(std::string& ReportName) {
  ListDesigner::RefreshParameters(ReportName);
  TLReport()
      ->Parameters()
      .AddDate("DateAsAt", Variant(), true, "Date As At", "ARCURRENT", false, "Date As At")
      ->Help = "Left blank, the receivables' current date (ARCURRENT).";
}

void ardsPenaltyInterests::RefreshDataColumns() {
  ListDesigner::RefreshDataColumns();
  for (std::string_view name : kUntotalled) {
    TLReport()->DataColumns().Item(name).Totalled = false;
  }
}

Date ardsPenaltyInterests::AsAt() const {
  const Variant value = TLReport()->Parameters().Value("DateAsAt", Variant::Null());
  if (value.IsNull() || value.IsEmpty() || value.IsMissing() || value.Text().empty()) {
    throw std::invalid_argument("Date As At: the penalty interest list needs a date to run to.");
  }
  return value.ToDate().DateOnly();
}

std::string ardsPenaltyInterests::ExtraCondition() {
  // Each type's grace ends on its own day, so each type has its own due-date bound.
  const Date as_at = AsAt();
  auto rs = TrellinReportGlobals::RequireBusinessLayer().Database()->Query(
      "SELECT PenaltyInterestId,GraceDays FROM PenaltyInterest WHERE Rate>0");
  std::string any;
  for (; !rs->Eof(); rs->MoveNext()) {
    if (!any.empty()) any += " OR ";
    any += "(OtherParty.PenaltyInterestId=" + Database::SQLString(rs->Value(0).Text()) +
           " AND Transactions.DatePayment<" +
           Database::SQLDate(as_at.AddDays(-static_cast<int>(rs->Value(1).ToLong()))) + ")";
  }
  if (any.empty()) return "False";
  // Processed by the date, and open then: open today or allocated since.
  const Date after = as_at.AddDays(1);
  return "(" + any + ") AND Transactions.DateProcess<" + Database::SQLDate(after) +
         " AND (Transactions.ValueRemaining<0 OR " + AllocatedFromCondition(after) + ")";
}

void ardsPenaltyInterests::ActiveReport_ReportStart() {
  ListDesigner::ActiveReport_ReportStart();
  if (Control* parameters = FindControl("txtParameters")) {
    std::string description = Description();
    AppendDescription(
        description,
        "Interest as at " +
            Format(Variant(AsAt()), TrellinReportGlobals::RequireBusinessLayer().DateFormat()));
    parameters->SetText(description);
  }
  const bool minimum = TLReport()->Parameters().Value("MinimumInterest", true).ToBool();
  charges_.clear();
  owed_.clear();
  total_ = Currency();
  const auto& rs = DataControl().Recordset();
  if (!rs || rs->Eof()) return;
  std::map<std::string, Currency, std::less<>> minimums;
  const Date as_at = AsAt();
  const bool turned = SideOf(LedgerSideKind::Receivables).sign == "-";
  Database& db = *TrellinReportGlobals::RequireBusinessLayer().Database();
  for (; !rs->Eof(); rs->MoveNext()) {
    const std::string code = UCase(rs->Value(rs->FieldIndex("OtherPartyId")).Text());
    // What the item still owed at the end of the date: today's remainder with what was
    // allocated to it since given back.
    const std::int64_t id = rs->Value(rs->FieldIndex("TransactionId")).ToLong();
    const Currency stored =
        RemainderAsAt(db, InterestMoneyOf(rs->Value(rs->FieldIndex("ValueRemaining"))),
                      AllocationsProcessedFromSQL(id, as_at.AddDays(1)));
    const Currency owed = turned ? -stored : stored;
    owed_[id] = owed;
    const long days = DaysPastGrace(as_at, rs->Value(rs->FieldIndex("DatePayment")),
                                    rs->Value(rs->FieldIndex("GraceDays")));
    const double rate = rs->Value(rs->FieldIndex("Rate")).ToDouble();
    if (owed > Currency()) charges_[code].interest += PenaltyInterestOn(owed, rate, days);
    minimums[code] = InterestMoneyOf(rs->Value(rs->FieldIndex("MinimumCharge")));
  }
  rs->MoveFirst();
  for (auto& [code, charge] : charges_) {
    const Currency floor = minimum ? minimums[code] : Currency();
    charge.charged = charge.interest < floor ? floor : charge.interest;
    total_ += charge.charged;
  }
}

void ardsPenaltyInterests::ActiveReport_DataInitialize() {
  for (const char* name : {"Days", "Outstanding", "Rate", "Interest"}) Fields().Add(name);
}

void ardsPenaltyInterests::ActiveReport_FetchData(bool&) {
  if (Fields().Find("ValueRemaining") == nullptr) return;
  const auto found = owed_.find(FieldValue(Fields(), "TransactionId").ToLong());
  const Currency owed =
      found == owed_.end() || found->second < Currency() ? Currency() : found->second;
  const long days =
      DaysPastGrace(AsAt(), FieldValue(Fields(), "DatePayment"), FieldValue(Fields(), "GraceDays"));
  const double rate =
      FieldValue(Fields(), "Rate").IsNull() ? 0.0 : FieldValue(Fields(), "Rate").ToDouble();
  Fields().Item("Days").SetValue(Variant(days));
  Fields().Item("Outstanding").SetValue(Variant(owed));
  Fields().Item("Rate").SetValue(Variant(rate));
  Fields().Item("Interest").SetValue(Variant(PenaltyInterestOn(owed, rate, days)));
}

void ardsPenaltyInterests::OnFormat(Section& section) {
  ListDesigner::OnFormat(section);
  if (section.Type() == SectionType::Detail) {
    // An item settled in full by the date (a credit taken up since) owes nothing then.
    section.SetVisible(InterestMoneyOf(FieldValue(Fields(), "Outstanding")) > Currency());
    return;
  }
  auto money = [](Currency c) { return Format(Variant(c), "#,##0.00"); };
  if (section.Type() == SectionType::GroupFooter) {
    const int level = GroupLevelOf(section, "GroupFooter");
    Control* label = FindControl("gfLabel" + std::to_string(level));
    const auto found = charges_.find(UCase(FieldValue(Fields(), "OtherPartyId").Text()));
    if (label == nullptr || found == charges_.end()) return;
    const Charge& c = found->second;
    label->SetText(label->Text() + "  Charge " + money(c.charged) +
                   (c.charged != c.interest ? " (the minimum)" : ""));
  } else if (section.Type() == SectionType::ReportFooter) {
    if (Control* label = FindControl("rfLabel")) {
      label->SetCaption("Report Total  Charges " + money(total_));
    }
  }
}

}  // namespace trellin
