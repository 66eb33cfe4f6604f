// The bank reconciliation key: its parameters, its rows from the banks' reconciliation objects,
// and the figures of each bank's header and groups.

#include "reports/ledger/arglBankReconciliation.h"

#include <algorithm>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

constexpr long kBanksParameter = 5;
constexpr double kDefaultControlScale = 0.5;

constexpr const char* kFields[] = {
    "glBankTransactionId", "BankId",  "Checked",    "Date",    "Presented", "Reference",
    "OtherParty",          "Comment", "Withdrawal", "Deposit", "Balance",   "Value",
};

// The text fields of a row that stands for a bank without lines.
constexpr const char* kBlankedFields[] = {"Reference", "OtherParty", "Comment", "Withdrawal",
                                          "Deposit",   "Balance",    "Date",    "Presented"};

bool Blank(const Variant& v) {
  return v.IsNull() || v.IsEmpty() || v.IsMissing() ||
         (v.IsString() && Trim(*v.Get<std::string>()).empty());
}

void ShowValue(Control* control, const Variant& value) {
  if (control != nullptr) control->SetDataValue(value);
}

void ShowControls(const ActiveReport& report, std::initializer_list<const char*> names,
                  bool visible) {
  for (const char* name : names) {
    if (Control* c = report.FindControl(name)) c->SetVisible(visible);
  }
}

}  // namespace

DesignerPtr CreatearglBankReconciliation() { return std::make_shared<arglBankReconciliation>(); }

void arglBankReconciliation::RefreshParameters(std::string&) {
  TLReport()->SetHasParameters(true);
  trellin::Parameters& p = TLReport()->Parameters();
  CreateStandardParameter(kBanksParameter, p, true);
  p.AddDate("DatedTo", Variant(), true, "Dated To", Variant(), false, "Dated To")->Help =
      "Unreconciled lines dated after this day are left out; left blank, all of them show.";
  p.AddBoolean("ShowActiveBankAccountsOnly", true, false, "", true, false,
               "Show Active Bank Accounts Only");
  p.AddBoolean("ShowFullDetails", false, false, "", false, false, "Show Full Details");
  p.AddNumber("ControlScale", kDefaultControlScale, false, "", kDefaultControlScale, 0, false,
              "Control Scale")
      ->Help = "The share of the other party in the room of other party and comment, 0 to 1.";
}

void arglBankReconciliation::BuildSQL() {
  const trellin::Parameters& p = TLReport()->Parameters();
  description_.clear();
  std::string where;
  AppendListParameterCondition(where, "BankId", "Banks", p, description_, kRangeText);
  if (p.Value("ShowActiveBankAccountsOnly", true).ToBool()) {
    AppendSQLCondition(where, "Active=True");
    AppendDescription(description_, "Active bank accounts only");
  }
  AppendSQLCondition(where, "InUse=True");
  const Variant dated_to = p.Value("DatedTo", Variant());
  if (!Blank(dated_to)) {
    AppendDateRangeDescription(description_, "Dated", Variant::Null(), dated_to);
  }
  sql_ = "SELECT BankId FROM Bank WHERE " + where + " ORDER BY BankId";
}

// Other party gets the scale's share of the room of both columns, comment what is left; their
// headings follow them. A scale outside 0 to 1 is held to it.
void arglBankReconciliation::ScaleColumns(double scale) {
  scale = std::clamp(scale, 0.0, 1.0);
  Control* party = FindControl("txtOtherParty");
  Control* comment = FindControl("txtComment");
  if (party == nullptr || comment == nullptr) return;
  const float gap = comment->Left() - (party->Left() + party->Width());
  const float room = party->Width() + comment->Width();
  const float party_width = static_cast<float>(room * scale);
  party->SetWidth(party_width);
  comment->SetLeft(party->Left() + party_width + gap);
  comment->SetWidth(room - party_width);
  if (Control* label = FindControl("lblOtherParty")) label->SetWidth(party_width);
  if (Control* label = FindControl("lblComment")) {
    label->SetLeft(comment->Left());
    label->SetWidth(comment->Width());
  }
  // A column of no width prints nothing, not even its heading.
  ShowControls(*this, {"txtOtherParty", "lblOtherParty"}, party_width > 0);
  ShowControls(*this, {"txtComment", "lblComment"}, room - party_width > 0);
}

void arglBankReconciliation::ActiveReport_ReportStart() {
  const trellin::Parameters& p = TLReport()->Parameters();
  BuildSQL();
  full_details_ = p.Value("ShowFullDetails", false).ToBool();
  const Variant scale = p.Value("ControlScale", kDefaultControlScale);
  ScaleColumns(Blank(scale) ? kDefaultControlScale : scale.ToDouble());
  const Variant dated_to_value = p.Value("DatedTo", Variant());
  std::optional<Date> dated_to;
  if (!Blank(dated_to_value)) dated_to = dated_to_value.ToDate();

  objects_ = TrellinReportGlobals::RequireBusinessLayer().CreateObjects();
  banks_.clear();
  auto rs = TrellinReportGlobals::RequireDatabase()->Query(sql_);
  for (; !rs->Eof(); rs->MoveNext()) {
    if (auto rec = objects_->LoadBankReconciliation(rs->Value("BankId").Text(), dated_to)) {
      banks_.push_back(std::move(*rec));
    }
  }
  bank_ = line_ = 0;
  if (!sub_) {
    sub_ = std::make_shared<arglBankReconciliationSub>();
    if (Control* sub = FindControl("srptData")) sub->SetObject(sub_);
  }
  TLReport()->SetupStandardHeader(true);
  if (Section* footer = Sections().FindType(SectionType::ReportFooter)) {
    if (Control* text = footer->Controls().Find("txtParameters")) {
      text->SetDataValue(Variant(description_));
    }
  }
}

void arglBankReconciliation::ActiveReport_DataInitialize() {
  for (const char* name : kFields) Fields().Add(name);
}

// Reconciled lines come first, as the object gives them, so the group on Checked breaks once.
void arglBankReconciliation::ActiveReport_FetchData(bool& eof) {
  while (bank_ < banks_.size() && line_ > 0 && line_ >= banks_[bank_].Lines.size()) {
    ++bank_;
    line_ = 0;
  }
  if (bank_ >= banks_.size()) {
    eof = true;
    return;
  }
  const BankReconciliation& bank = banks_[bank_];
  trellin::Fields& f = Fields();
  f["BankId"].SetValue(Variant(bank.BankId));
  if (bank.Lines.empty()) {
    // One row so that the bank's header still prints.
    empty_row_ = true;
    f["glBankTransactionId"].SetValue(Variant::Null());
    f["Checked"].SetValue(Variant(false));
    f["Value"].SetValue(Variant::Null());
    for (const char* name : kBlankedFields) f[name].SetValue(Variant(" "));
    ++bank_;
    line_ = 0;
    eof = false;
    return;
  }
  empty_row_ = false;
  if (line_ == 0) balance_ = bank.StatementOpening;
  const BankReconciliationLine& line = bank.Lines[line_++];
  balance_ += line.Value;
  f["glBankTransactionId"].SetValue(Variant(line.glBankTransactionId));
  f["Checked"].SetValue(Variant(line.Checked));
  f["Date"].SetValue(Variant(line.date));
  f["Presented"].SetValue(line.Presented ? Variant(*line.Presented) : Variant::Null());
  f["Reference"].SetValue(Variant(line.Reference));
  f["OtherParty"].SetValue(Variant(line.OtherParty));
  f["Comment"].SetValue(Variant(line.Comment));
  const bool deposit = line.Value > Currency();
  f["Deposit"].SetValue(deposit ? Variant(line.Value) : Variant(" "));
  f["Withdrawal"].SetValue(deposit ? Variant(" ") : Variant(Currency() - line.Value));
  f["Balance"].SetValue(Variant(balance_));
  f["Value"].SetValue(Variant(line.Value));
  eof = false;
}

const BankReconciliation* arglBankReconciliation::CurrentBank() const {
  const ReportField* field = Fields().Find("BankId");
  if (field == nullptr) return nullptr;
  const std::string code = field->Value().Text();
  for (const BankReconciliation& bank : banks_) {
    if (EqualsIgnoreCase(bank.BankId, code)) return &bank;
  }
  return nullptr;
}

void arglBankReconciliation::OnFormat(Section& section) {
  if (section.Name() == "ghBank") {
    ghBank_Format();
  } else if (section.Name() == "ghChecked") {
    ghChecked_Format();
  } else if (section.Type() == SectionType::Detail) {
    Detail_Format();
  } else if (section.Name() == "gfChecked") {
    // A bank without lines has no group of lines.
    section.SetVisible(!empty_row_);
  }
}

void arglBankReconciliation::OnBeforePrint(Section& section) {
  if (section.Type() == SectionType::ReportFooter) TLReport()->ReportFooterBeforePrint();
}

void arglBankReconciliation::ghBank_Format() {
  const BankReconciliation* rec = CurrentBank();
  if (rec == nullptr) return;
  const BankDetails* bank = objects_->FindBank(rec->BankId);
  if (bank != nullptr) {
    ShowValue(FindControl("txtghAccountName"), Variant(bank->account_name));
    ShowValue(FindControl("txtghAccountNumber"), Variant(bank->account_number));
    ShowValue(FindControl("txtghBank"), Variant(bank->bank_name));
    ShowValue(FindControl("txtghBankNumber"), Variant(bank->bank_number));
    ShowValue(FindControl("txtghBranch"), Variant(bank->branch));
  }
  ShowValue(FindControl("txtghPage"),
            rec->StatementPage == 0 ? Variant("") : Variant(std::int64_t{rec->StatementPage}));
  ShowValue(FindControl("dateghDate"),
            rec->StatementDate ? Variant(*rec->StatementDate) : Variant::Null());
  ShowValue(FindControl("numghOpening"), Variant(rec->StatementOpening));
  const Currency current = rec->StatementOpening + rec->TotalReconciled + rec->TotalUnreconciled;
  ShowValue(FindControl("numghCurrent"), Variant(current));
  ShowValue(FindControl("numClosing"), Variant(rec->StatementClosing));
  ShowValue(FindControl("numVariance"),
            Variant(rec->StatementOpening + rec->TotalReconciled - rec->StatementClosing));
  const Currency limit = bank != nullptr ? bank->overdraft_limit : Currency();
  const bool overdraft = limit != Currency();
  ShowControls(*this, {"lblghODLimit", "numghODLimit", "lblghAvailable", "numghAvailable"},
               overdraft);
  if (overdraft) {
    ShowValue(FindControl("numghODLimit"), Variant(limit));
    ShowValue(FindControl("numghAvailable"), Variant(current + limit));
  }
  if (Control* locked = FindControl("LockedMessage")) {
    locked->SetVisible(rec->Locked);
    locked->SetDataValue(Variant(rec->LockedText));
  }
}

void arglBankReconciliation::ghChecked_Format() {
  Sections()["ghChecked"].SetVisible(!empty_row_);
  const ReportField* checked = Fields().Find("Checked");
  const bool reconciled =
      checked != nullptr && !Blank(checked->Value()) && checked->Value().ToBool();
  const std::string word = reconciled ? "Reconciled" : "Unreconciled";
  ShowValue(FindControl("txtHeader"), Variant(word));
  if (Control* label = FindControl("lblgfReconciled")) label->SetCaption("Total " + word + ":");
  ShowControls(*this, {"lblClosing", "numClosing", "lblVariance", "numVariance"}, reconciled);
}

void arglBankReconciliation::Detail_Format() {
  Sections()["Detail"].SetVisible(!empty_row_);
  Control* sub = FindControl("srptData");
  if (sub == nullptr) return;
  const bool show = full_details_ && !empty_row_;
  sub->SetVisible(show);
  if (show) sub_->BankTransactionId = Fields()["glBankTransactionId"].Value().ToLong();
}

void arglBankReconciliation::ActiveReport_ReportEnd() {
  banks_.clear();
  objects_.reset();
}

}  // namespace trellin
