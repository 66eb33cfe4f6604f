// The life of one statement run: the start, the fetch that walks the customers until one is
// issued a statement, the customer's heading, and the page furniture that puts the stub on each
// customer's last page.

#include "reports/receivables/ardsStatement.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

// The controls that hide with the letterhead ("[HT]").
constexpr const char* kLetterhead[] = {"txtBranchName", "txtBranchAddress", "txtBranchDetails"};
// The stub's figures that a nil or credit balance hides.
constexpr const char* kAgeingControls[] = {"lblOverdue", "numOverdue", "lblCurrent", "numCurrent"};

}  // namespace

DesignerPtr CreateardsStatement() { return std::make_shared<ardsStatement>(); }

void ardsStatement::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

void ardsStatement::ActiveReport_ReportStart() {
  trellin::Parameters& p = TLReport()->Parameters();
  options_ = ReadStatementOptions(p.Value("Other", "").Text());
  for (const char* name : kLetterhead) {
    if (options_.hide_letterhead) Field(name).SetVisible(false);
  }
  remittance_ = !options_.hide_remittance;
  if (options_.hide_remittance) Field("txtBranchFooter").SetVisible(false);
  TLReport()->SetupStandardHeader(true);
  // Shown on the pages a customer's lines run on to.
  Field("phContd").SetVisible(false);
  printed_any_ = false;
  pages_ = DocumentPages();
  if (!objects_) objects_ = TrellinReportGlobals::RequireBusinessLayer().CreateObjects();

  const std::string sql = GetSQL();
  customers_ = Run(sql);
  no_customers_ = customers_->Eof();
  if (no_customers_) {
    HideEverything();
    return;
  }
  const Variant as_at = p.Value("DateAsAt", Variant::Null());
  if (!HasDate(as_at)) {
    throw std::invalid_argument("Date As At: the statements need a date to run to.");
  }
  date_as_at_ = as_at.ToDate().DateOnly();
  date_from_ = date_as_at_.FirstOfMonth();
  month_ends_[0] = date_from_.AddDays(-1);
  month_ends_[1] = date_from_.AddMonths(1).AddDays(-1);

  Field("datepfDate").SetOutputFormat(TrellinReportGlobals::RequireBusinessLayer().DateFormat());
  lines_ = std::make_shared<ardsStatementLines>();
  Field("srptTransactions").SetObject(lines_);
  lines_->DateFrom = date_from_;
  lines_->DateTo = date_as_at_;
  lines_->OpenItem = options_.open_item;
  lines_->Queries = query_log_;

  message_ = p.Value("Message", "").Text();
  SetMessage(Field("txtMessage"), message_);
}

void ardsStatement::HideEverything() {
  for (const char* name :
       {"PageHeader", "CustomerHeader", "Detail", "CustomerFooter", "PageFooter"}) {
    Sections()[name].SetVisible(false);
  }
}

void ardsStatement::ActiveReport_DataInitialize() { Fields().Add("OtherPartyId"); }

void ardsStatement::ActiveReport_FetchData(bool& eof) {
  while (customers_ && !customers_->Eof()) {
    const std::string party = customers_->Value("OtherPartyId").Text();
    const Currency closing = ClosingBalanceOf(party);
    if (!Issues(party, closing)) {
      customers_->MoveNext();
      continue;
    }
    printed_any_ = true;
    closing_balance_ = closing;
    Fields()["OtherPartyId"].SetValue(party);
    lines_->OtherPartyId = party;
    lines_->ClosingBalance = closing;
    customers_->MoveNext();
    eof = false;
    return;
  }
  eof = true;
  // Customers were there, but none had anything to say: the document stays empty.
  if (!printed_any_) HideEverything();
}

void ardsStatement::OnFormat(Section& section) {
  switch (section.Type()) {
    case SectionType::GroupHeader:
      CustomerHeader_Format();
      break;
    case SectionType::GroupFooter:
      pages_.End();
      break;
    case SectionType::PageHeader:
      PageHeader_Format();
      break;
    case SectionType::PageFooter:
      PageFooter_Format();
      break;
    default:
      break;
  }
}

void ardsStatement::SetText(const char* control, const std::string& text) {
  Control& c = Field(control);
  // A control the options hid keeps no text either, so the data says what the page shows.
  if (c.Visible()) c.SetText(text);
}

void ardsStatement::CustomerHeader_Format() {
  if (!printed_any_) return;
  const std::string party_code = Fields()["OtherPartyId"].Value().Text();
  const std::string date_text = Format(Variant(date_as_at_), "d mmmm yyyy");
  const bool australian = TrellinReportGlobals::RequireApplication().Options().Country() == "AU";
  const OtherParty* party = objects_->FindOtherParty(party_code);
  const Branch* branch =
      (party == nullptr || party->branch.empty()) ? nullptr : objects_->FindBranch(party->branch);
  const StatementHeading heading = StatementHeadingOf(party, branch, australian, date_text);
  SetText("txtBranchName", heading.branch_name);
  SetText("txtBranchAddress", heading.branch_address);
  SetText("txtBranchDetails", heading.branch_details);
  SetText("txtBranchFooter", heading.branch_footer);
  Field("txtFooter").SetText("Customer: " + party_code);
  Field("txtStatementfor").SetText("Statement for your Account " + date_text);
  Field("txtCode").SetText(party_code);
  Field("txtAddress").SetText(heading.address);

  const StatementAgeing ageing = AgeingOf(party_code);
  for (auto [name, value] :
       {std::pair{"numOverdue", ageing.overdue}, std::pair{"numCurrent", ageing.current},
        std::pair{"numpfBalance", closing_balance_}}) {
    Control& figure = Field(name);
    figure.SetOutputFormat("Currency");
    figure.SetDataValue(value);
  }
  Field("datepfDate").SetDataValue(date_as_at_);

  // A customer's first page carries its heading and column labels in the body; the page header
  // is for the pages its lines run on to. Hidden only now, so that the data exports still take
  // their columns from its labels.
  Sections()["PageHeader"].SetVisible(false);
  pages_.Start();
  Field("phPage").SetText(pages_.PageText());
}

void ardsStatement::PageHeader_Format() { Field("phPage").SetText(pages_.PageText()); }

void ardsStatement::PageFooter_Format() {
  Section& footer = Sections()["PageFooter"];
  if (no_customers_) {
    SetStubVisible(footer, false);
    return;
  }
  if (pages_.FooterOfPage(footer)) {
    Field("pfContd").SetVisible(false);
    Sections()["PageHeader"].SetVisible(false);
    Field("txtBranchFooter").SetVisible(remittance_);
    // The figures are the customer's whose page this is: they were set at its heading, and the
    // next customer, fetched already, has not had its heading yet.
    const Variant& balance = Field("numpfBalance").DataValue();
    const bool owing = !balance.IsNull() && !balance.IsEmpty() && balance.ToCurrency() > Currency();
    for (const char* name : kAgeingControls) Field(name).SetVisible(owing);
    return;
  }
  Field("pfContd").SetVisible(true);
  Field("phContd").SetVisible(true);
  Sections()["PageHeader"].SetVisible(true);
}

void ardsStatement::ActiveReport_ReportEnd() {
  customers_.reset();
  objects_.reset();
}

}  // namespace trellin
