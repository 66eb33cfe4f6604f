// The life of one aged report run: the rows worked out before the pages, the columns laid out,
// the fetch, and the footers' totals and shares.

#include "reports/receivables/ardscrAgedOverdueReport.h"

#include <algorithm>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/ReceivablesShared.h"
#include "reports/receivables/RemainderAsAt.h"

namespace trellin {

namespace {

constexpr const char* kFigures[] = {"Column1", "Column2", "Column3", "Column4", "Future"};

Currency MoneyOrZero(const Variant& value) {
  return value.IsNull() || value.IsEmpty() ? Currency() : value.ToCurrency();
}

// The type of a copied field: the query's own, money for the figures.
FieldType CopiedType(const FieldInfo& field) {
  for (const char* figure : kFigures) {
    if (EqualsIgnoreCase(field.name, figure)) return FieldType::Currency;
  }
  return field.type;
}

}  // namespace

std::string AccountsEmail(const OtherParty& party) {
  for (const ContactMethod& method : party.contact_methods) {
    if (EqualsIgnoreCase(method.kind, "EmailAR") && !method.detail.empty()) return method.detail;
  }
  for (const ContactMethod& method : party.contact_methods) {
    if (EqualsIgnoreCase(method.kind, "Email")) return method.detail;
  }
  return {};
}

void ardscrAgedOverdueReport::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

std::shared_ptr<Recordset> ardscrAgedOverdueReport::Run(const std::string& sql) {
  if (query_log_) query_log_(sql);
  return TrellinReportGlobals::RequireDatabase()->Query(sql);
}

void ardscrAgedOverdueReport::ActiveReport_ReportStart() {
  BuildSQL();
  // The optional columns follow the parameters as the run has them, the ageing columns the
  // period ends.
  RefreshDataColumns();
  TLReport()->SetupGroupSections(summary_, -1, true);
  TLReport()->SetupStandardHeader(true);
  if (Control* heading = FindControl("txtHeading")) heading->SetText(heading_);
  LayOutColumns();
  if (show_email_) objects_ = TrellinReportGlobals::RequireBusinessLayer().CreateObjects();
  BuildRows();
  DataControl().SetRecordset(rows_);
}

void ardscrAgedOverdueReport::LayOutColumns() {
  DataColumns& columns = TLReport()->DataColumns();
  if (summary_) {
    // The party's own columns print nothing in summary: their captions go too.
    for (const char* name : {"Code", "Name", "X Ref", "LastDate", "Email", "Cr Limit"}) {
      if (columns.Exists(name)) columns.Item(name).Caption.clear();
    }
  }
  const Control& top = Field("lblColumns");
  columns.CreateFields(top.Top(), 0, 60, 0, true, 0, 8.0f, 8.0f);
  // The rule under the captions moves down below them, as far as they have pushed the header.
  Section& page_header = Sections()["PageHeader"];
  if (Control* rule = page_header.Controls().Find("linHeader")) {
    rule->SetTop(page_header.Height() + 30);
    page_header.SetHeight(page_header.Height() + 60);
  }
  if (summary_) {
    // The first column printed loses its caption as well.
    Section& header = Sections()["PageHeader"];
    for (Control& control : header.Controls()) {
      if (control.Name().rfind("lbl", 0) != 0 || control.Name() == "lblReportTitle") continue;
      const std::string name = control.Name().substr(3);
      if (columns.Exists(name) && !columns.Item(name).Hidden && control.Left() == 0) {
        control.SetCaption("");
      }
    }
  }
  // Each footer's total stands under the overdue total, its shares under their columns.
  Section& detail = Sections()["Detail"];
  for (Section& section : Sections()) {
    std::string prefix;
    if (section.Type() == SectionType::ReportFooter) prefix = "rf";
    if (const int level = GroupLevelOf(section, "GroupFooter")) {
      prefix = "gf" + std::to_string(level);
    }
    if (prefix.empty()) continue;
    auto place = [&](const std::string& control, const std::string& under) {
      Control* target = section.Controls().Find(control);
      Control* column = detail.Controls().Find(under);
      if (target == nullptr || column == nullptr) return;
      target->SetLeft(column->Left());
      target->SetWidth(column->Width());
      target->SetVisible(column->Visible());
    };
    place(prefix + "Total", "txtTotal");
    if (Control* total = section.Controls().Find(prefix + "Total")) {
      total->SetOutputFormat(TrellinReportGlobals::RequireBusinessLayer().CurrencyFormat(0));
    }
    // The footer's caption keeps clear of the first column's total.
    Control* label =
        section.Controls().Find(prefix == "rf" ? "rfLabel" : "gfLabel" + prefix.substr(2));
    Control* first = detail.Controls().Find("txtColumn1");
    if (label != nullptr && first != nullptr && first->Left() - 60 < label->Width()) {
      label->SetWidth(std::max(0.0f, first->Left() - 60));
    }
    for (int i = 1; i <= 4; ++i) {
      place(prefix + "Percent" + std::to_string(i), "txtColumn" + std::to_string(i));
    }
  }
}

bool ardscrAgedOverdueReport::BackDate(const std::string& party, Currency (&figures)[5]) {
  const std::string types = debtor_ ? "(Type>=30 AND Type<40)" : "(Type>=20 AND Type<30)";
  std::shared_ptr<Recordset> later = Run(
      "SELECT TransactionId FROM Transactions WHERE OtherPartyId=" + Database::SQLString(party) +
      " AND [ValueRemaining]<>[Value] AND (DateProcess>" + Database::SQLDate(as_at_) + ") AND " +
      types);
  std::vector<std::string> ids;
  for (; !later->Eof(); later->MoveNext()) ids.push_back(later->Value(0).Text());
  if (ids.empty()) return false;
  const std::string list = Join(ids, ",");
  const std::string due =
      apply_transaction_date_
          ? "[Date] AS Due"
          : Database::SQLIIf("[DatePayment] Is Null", "[Date]", "[DatePayment]") + " AS Due";
  const std::string first_sign = debtor_ ? "-" : "";
  const std::string second_sign = debtor_ ? "" : "-";
  const std::string bound = Database::SQLDate(as_at_.AddDays(1));
  const std::string sql =
      "SELECT TransactionAllocationId," + first_sign + "ValueAllocated AS AllocatedValue," + due +
      " FROM Transactions INNER JOIN TransactionAllocation ON "
      "Transactions.TransactionId=TransactionAllocation.TransactionId1 WHERE TransactionId2 In(" +
      list + ") AND Transactions.DateProcess<" + bound + " UNION SELECT TransactionAllocationId," +
      second_sign + "ValueAllocated AS AllocatedValue," + due +
      " FROM Transactions INNER JOIN TransactionAllocation ON "
      "Transactions.TransactionId=TransactionAllocation.TransactionId2 WHERE TransactionId1 In(" +
      list + ") AND Transactions.DateProcess<" + bound;
  if (query_log_) query_log_(sql);
  bool any = false;
  ForEachAllocatedValue(*TrellinReportGlobals::RequireDatabase(), sql,
                        [&](Currency value, const Recordset& row) {
                          any = true;
                          const Variant& date = row.Value("Due");
                          const int bucket = date.IsNull() ? 0 : AgeingBucket(date.ToDate(), ends_);
                          figures[bucket] += value;
                        });
  return any;
}

void ardscrAgedOverdueReport::BuildRows() {
  std::shared_ptr<Recordset> source = Run(sql_);
  Database& database = *TrellinReportGlobals::RequireDatabase();
  rows_ = database.NewRecordset();
  for (int i = 0; i < source->FieldCount(); ++i) {
    const FieldInfo& field = source->Field(i);
    rows_->AppendField(field.name, CopiedType(field), 0);
  }
  rows_->AppendField("TotalOverdue", FieldType::Currency);
  int figure_fields[5];
  for (int i = 0; i < 5; ++i) figure_fields[i] = source->FieldIndex(kFigures[i]);
  const int party_field = source->FieldIndex("OtherPartyId");
  const int active_field = source->FieldIndex("Active");

  for (; !source->Eof(); source->MoveNext()) {
    Currency figures[5];
    bool any = false;
    for (int i = 0; i < 5; ++i) {
      figures[i] = MoneyOrZero(source->Value(figure_fields[i]));
      any = any || figures[i] != Currency();
    }
    bool kept = any || show_nil_;
    if (back_date_ && BackDate(source->Value(party_field).Text(), figures)) {
      bool all_zero = true;
      for (const Currency& figure : figures) all_zero = all_zero && figure == Currency();
      const bool active = active_field >= 0 && !source->Value(active_field).IsNull() &&
                          source->Value(active_field).ToBool();
      // Back-dating found something: an active party left at nothing shows with ShowNil alone.
      kept = !all_zero || (active && show_nil_);
    }
    if (!kept) continue;
    // The overdue total counts the current column too, and leaves out what is not yet due.
    const Currency total = figures[0] + figures[1] + figures[2] + figures[3];
    if (total < overdue_from_ || total > overdue_to_) continue;
    rows_->AddNew();
    for (int i = 0; i < source->FieldCount(); ++i) rows_->SetValue(i, source->Value(i));
    for (int i = 0; i < 5; ++i) rows_->SetValue(figure_fields[i], figures[i]);
    rows_->SetValue("TotalOverdue", total);
    rows_->Update();
  }
  if (!sort_.empty()) rows_->Sort(sort_);
  if (rows_->RecordCount() > 0) rows_->MoveFirst();
}

void ardscrAgedOverdueReport::ActiveReport_DataInitialize() {
  for (const char* name : {"Column1", "Column2", "Column3", "Column4", "Email"}) Fields().Add(name);
}

void ardscrAgedOverdueReport::ActiveReport_FetchData(bool&) {
  const auto& rs = DataControl().Recordset();
  if (!rs || rs->Eof()) return;
  for (int i = 0; i < 4; ++i) Fields()[kFigures[i]].SetValue(rs->Value(kFigures[i]));
  if (!show_email_ || !objects_) return;
  const OtherParty* party = objects_->FindOtherParty(rs->Value("OtherPartyId").Text());
  Fields()["Email"].SetValue(party == nullptr ? std::string() : AccountsEmail(*party));
}

void ardscrAgedOverdueReport::OnFormat(Section& section) {
  switch (section.Type()) {
    case SectionType::Detail:
      section.SetBackStyle(1 - section.BackStyle());
      TLReport()->DetailFormat(section, " ");
      LinkBalance(section);
      break;
    case SectionType::GroupHeader:
      FormatGroupSection(section);
      break;
    case SectionType::GroupFooter:
      if (int level = GroupLevelOf(section, "GroupFooter")) {
        TLReport()->GroupFooterFormat(level);
        FooterFormat(section, "gf" + std::to_string(level));
      }
      break;
    case SectionType::ReportFooter:
      FooterFormat(section, "rf");
      break;
    default:
      break;
  }
}

void ardscrAgedOverdueReport::LinkBalance(Section& detail) {
  const auto& rs = DataControl().Recordset();
  if (!rs || rs->Eof()) return;
  // The party's total opens its ledger of what is outstanding on the same date.
  const LedgerSide& side = SideOfDebtor(debtor_);
  const LinkTarget link{debtor_ ? "LedgerAR" : "LedgerAP",
                        {{std::string(side.parties.name), rs->Value("OtherPartyId").Text()},
                         {"Period", "Outstanding"},
                         {"DateAsAt", as_at_.DateOnly().ToIso()}}};
  for (Control& c : detail.Controls()) {
    if (c.Class() == ControlClass::Field && c.DataField() == "TotalOverdue") c.SetLink(link);
  }
}

void ardscrAgedOverdueReport::FooterFormat(Section& section, const std::string& prefix) {
  Controls& controls = section.Controls();
  const Control* overdue = controls.Find(prefix + "SumOverdue");
  const Control* future = controls.Find(prefix + "SumFuture");
  Control* total_control = controls.Find(prefix + "Total");
  if (overdue == nullptr || future == nullptr || total_control == nullptr) return;
  // The footer's total takes in what is not yet due, where each row's overdue total does not.
  const Currency total = MoneyOrZero(overdue->DataValue()) + MoneyOrZero(future->DataValue());
  total_control->SetDataValue(total);
  for (int i = 1; i <= 4; ++i) {
    Control* percent = controls.Find(prefix + "Percent" + std::to_string(i));
    const Control* sum = controls.Find(prefix + "SumColumn" + std::to_string(i));
    if (percent == nullptr || sum == nullptr) continue;
    // With nothing to share out the shares stay blank, rather than keep an earlier group's.
    percent->SetDataValue(
        total == Currency() ? Variant::Null()
                            : Variant(MoneyOrZero(sum->DataValue()).ToDouble() / total.ToDouble()));
  }
}

void ardscrAgedOverdueReport::OnBeforePrint(Section& section) {
  if (section.Type() == SectionType::ReportFooter) TLReport()->ReportFooterBeforePrint();
}

void ardscrAgedOverdueReport::ActiveReport_ReportEnd() {
  DataControl().SetRecordset(nullptr);
  rows_.reset();
  objects_.reset();
}

}  // namespace trellin
