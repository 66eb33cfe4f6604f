// The standard cheque: the WHERE text that picks the cheques, their query, and each cheque's
// branch, payee, address and amount in words, with its stub on the sub-report.

#include "reports/ledger/arglChequeStandard.h"

#include <cctype>

#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

constexpr const char* kChequeFields[] = {
    "glBankTransactionId", "Date",    "Amount", "OtherPartyId", "BranchId",
    "Reference",           "Comment", "Name",   "ChqName"};

std::string TextOf(const Variant& value) {
  return value.IsNull() || value.IsEmpty() || value.IsMissing() ? std::string() : value.Text();
}

}  // namespace

DesignerPtr CreatearglChequeStandard() { return std::make_shared<arglChequeStandard>(); }

void arglChequeStandard::RefreshParameters(std::string&) {
  TLReport()->SetHasParameters(true);
  // Given by the application that prints a run, or on the command line; no caption, so it is
  // neither asked for nor described.
  TLReport()->Parameters().AddString("SQLWhere", "", false, "", "", false, "")->Help =
      "The WHERE text that picks the cheques, bringing its own \" WHERE \", as "
      "\" WHERE glBankTransaction.Reference='P1234'\"; empty, every bank entry with a party.";
}

void arglChequeStandard::CreateRecordSet(const std::string& SQLWhere) {
  where_ = SQLWhere;
  where_given_ = true;
}

std::string arglChequeStandard::ChequeSQL(const std::string& where) {
  return "SELECT glBankTransaction.glBankTransactionId,glBankTransaction.Date,(SELECT Sum(Value) "
         "FROM glTransaction WHERE "
         "glTransaction.glBankTransactionId=glBankTransaction.glBankTransactionId AND "
         "glBankTransactionSequence<>0) AS Amount,glBankTransaction.OtherPartyId,(SELECT BranchId "
         "FROM Location WHERE Location.LocationId=OtherParty.LocationId) AS "
         "BranchId,glBankTransaction.Reference,glBankTransaction.Comment,OtherParty.Name,"
         "OtherParty.ChqName"
         " FROM OtherParty INNER JOIN glBankTransaction ON "
         "OtherParty.OtherPartyId=glBankTransaction.OtherPartyId" +
         where + " ORDER BY glBankTransaction.Reference";
}

std::string arglChequeStandard::PayeeOf(const Variant& name, const Variant& cheque_name) {
  const std::string cheque = TextOf(cheque_name);
  return cheque.empty() ? TextOf(name) : cheque;
}

std::string arglChequeStandard::AmountInWordsOf(Currency amount) {
  std::string words =
      TrellinReportGlobals::RequireBusinessLayer().Utilities().Rounder().AmountInWords(
          amount, true, "dollar", "dollars", "cent", "cents");
  if (!words.empty()) {
    words[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(words[0])));
  }
  // The blanks keep the words clear of the label printed on the form.
  return "     " + words;
}

void arglChequeStandard::ActiveReport_ReportStart() {
  if (!where_given_) where_ = TLReport()->Parameters().Value("SQLWhere", "").Text();
  // Text given without its leading blank still follows the join.
  if (!where_.empty() && std::isspace(static_cast<unsigned char>(where_.front())) == 0) {
    where_.insert(0, " ");
  }
  Database& db = *TrellinReportGlobals::RequireDatabase();
  try {
    rs_ = db.QueryForward(ChequeSQL(where_));
  } catch (const Error&) {
    if (Trim(where_).empty()) throw;
    // The query stands without the text: the text is what does not read.
    (void)db.Query(ChequeSQL(" WHERE 1=0"));
    throw Error(ErrorKind::Input,
                "SQLWhere: the cheques cannot be picked by the WHERE text '" + where_ + "'.");
  }
  // The page header stays visible through the start, so a data export heads its columns with
  // the stub's labels; the cheque's header hides it before any page prints it.
  TLReport()->SetupStandardHeader(true);
  objects_ = TrellinReportGlobals::RequireBusinessLayer().CreateObjects();
  const std::string date_format = TrellinReportGlobals::RequireBusinessLayer().DateFormat();
  if (Control* date = FindControl("txtDate")) date->SetOutputFormat(date_format);
  sub_ = std::make_shared<arglChequeStandardSub>();
  if (Control* stub = FindControl("srptStub")) stub->SetObject(sub_);
  any_ = false;
}

void arglChequeStandard::ActiveReport_DataInitialize() {
  for (const char* name : kChequeFields) Fields().Add(name);
}

void arglChequeStandard::ActiveReport_FetchData(bool& eof) {
  if (!rs_ || rs_->Eof()) {
    eof = true;
    return;
  }
  trellin::Fields& f = Fields();
  for (const char* name : kChequeFields) f[name].SetValue(rs_->Value(name));
  any_ = true;
  rs_->MoveNext();
  eof = false;
}

void arglChequeStandard::OnFormat(Section& section) {
  if (section.Type() == SectionType::GroupHeader) {
    ghTransactionId_Format();
  } else if (section.Type() == SectionType::Detail) {
    Detail_Format();
  }
}

void arglChequeStandard::ghTransactionId_Format() {
  Sections()["PageHeader"].SetVisible(false);
  if (!any_) return;
  const std::string code = TextOf(Fields()["BranchId"].Value());
  const Branch* branch = code.empty() ? nullptr : objects_->FindBranch(code);
  if (Control* text = FindControl("txtBranch")) {
    text->SetText(branch == nullptr ? std::string() : branch->name);
  }
  // The cheque itself.
  trellin::Fields& f = Fields();
  const OtherParty* party = objects_->FindOtherParty(TextOf(f["OtherPartyId"].Value()));
  std::string address;
  if (party != nullptr) {
    if (const PartyAddress* postal = party->AddressOrDefault("Postal")) {
      address = Join(postal->lines, "\r\n");
    }
  }
  FindControl("txtAddress")->SetText(address);
  FindControl("txtName2")->SetText(PayeeOf(f["Name"].Value(), f["ChqName"].Value()));
  const Variant& amount = f["Amount"].Value();
  const Currency value = amount.IsNull() ? Currency() : amount.ToCurrency();
  FindControl("txtAmountInWords")->SetText(AmountInWordsOf(value));
}

void arglChequeStandard::Detail_Format() {
  if (!any_) {
    Sections()["Detail"].SetVisible(false);
    return;
  }
  sub_->glBankTransactionId = Fields()["glBankTransactionId"].Value().ToLong();
}

void arglChequeStandard::ActiveReport_ReportEnd() {
  rs_.reset();
  objects_.reset();
}

}  // namespace trellin
