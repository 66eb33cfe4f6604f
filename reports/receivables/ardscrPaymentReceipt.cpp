// The receipt and payment documents: the parameters, the receipts' query, the fetch of each
// receipt with its applied lines (the remittance lines' allocation query) and the page's heading.

#include "reports/receivables/ardscrPaymentReceipt.h"

#include <cctype>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Strings.h"
#include "reports/ReportShapes.h"
#include "reports/receivables/PartyDocument.h"
#include "reports/receivables/arcrRemittanceLines.h"

namespace trellin {

namespace {

constexpr long kReceiptType = 35;
constexpr long kPaymentType = 25;

std::string ReceiptText(Recordset& rs, const char* name) {
  const Variant& value = rs.Value(name);
  return value.IsNull() || value.IsEmpty() ? std::string() : Trim(value.Text());
}

Currency ReceiptMoney(const Variant& value) {
  return value.IsNull() || value.IsEmpty() ? Currency() : value.ToCurrency();
}

// A party list's condition alone ("(...) "), "" when the list is empty.
std::string PartyCondition(const char* name, const trellin::Parameters& p) {
  std::string where;
  std::string unused;
  AppendListParameterCondition(where, "Transactions.OtherPartyId", name, p, unused, kRangeText);
  return Trim(where);
}

}  // namespace

DesignerPtr CreateardscrPaymentReceipt() { return std::make_shared<ardscrPaymentReceipt>(); }

std::string ReceiptTitle(long type) {
  if (type == kReceiptType) return "Receipt";
  if (type == kPaymentType) return "Payment";
  return "";
}

std::string ReceiptNumberLabel(const std::string& pay_type) {
  if (pay_type == "Q") return "Cheque No";
  for (const char* card : {"A", "D", "E", "M", "V"}) {
    if (pay_type == card) return "Card No";
  }
  return "Account No";
}

void ardscrPaymentReceipt::RefreshParameters(std::string&) {
  TLReport()->SetHasParameters(true);
  trellin::Parameters& p = TLReport()->Parameters();
  p.AddNumber("TransactionIdFrom", 1, false, "", 1, 1, false, "Transaction Id From");
  const Variant to(static_cast<long>(9999999999));
  p.AddNumber("TransactionIdTo", to, false, "", to, 9999999999, false, "Transaction Id To");
  // At first the receipts and payments of the receivables' current day.
  p.AddDate("DatedFrom", Variant(), true, "Dated From", "ARCURRENT", false, "Dated From");
  p.AddDate("DatedTo", Variant(), true, "Dated To", "ARCURRENT", false, "Dated To");
  p.AddSQLList("References", Variant(), false, "", Variant(),
               "SELECT DISTINCT Reference FROM Transactions WHERE Type In (25,35) ORDER BY "
               "Reference",
               "Reference", false, "References");
  CreateStandardParameter(8, p, true);
  CreateStandardParameter(33, p, true);
}

std::string ardscrPaymentReceipt::GetSQL() const {
  // The branch is the receipt's own location's, else the party's.
  return "SELECT Transactions.TransactionId,Transactions.Type,Transactions.OtherPartyId,"
         "OtherParty.Name AS PartyName,Transactions.Reference,Transactions.Date,"
         "Transactions.Value,Transactions.ValueRemaining,Transactions.PayType,"
         "Transactions.Name AS Drawer,Transactions.CardNumber,Transactions.BankDetails,"
         "Nz((SELECT BranchId FROM Location WHERE Location.LocationId=Transactions.LocationId),"
         "(SELECT BranchId FROM Location WHERE Location.LocationId=OtherParty.LocationId)) AS "
         "BranchId FROM Transactions INNER JOIN OtherParty ON "
         "Transactions.OtherPartyId=OtherParty.OtherPartyId WHERE " +
         GetSQLWhere() + " ORDER BY Transactions.TransactionId";
}

std::string ardscrPaymentReceipt::GetSQLWhere() const {
  const trellin::Parameters& p = TLReport()->Parameters();
  std::string where = "Transactions.Type In (25,35)";
  std::string unused;
  const auto bound = [&p](const char* name, Currency open) {
    const Variant value = p.Value(name, Variant::Null());
    return value.IsNull() || value.IsEmpty() ? open : value.ToCurrency();
  };
  AppendNumberRangeCondition(where, "Transactions.TransactionId",
                             bound("TransactionIdFrom", Currency::FromWhole(1)),
                             bound("TransactionIdTo", kNumberRangeMaximum), Currency::FromWhole(1),
                             kNumberRangeMaximum, "", unused, "0");
  AppendDateRangeCondition(where, "Transactions.Date", p.Value("DatedFrom", Variant::Null()),
                           p.Value("DatedTo", Variant::Null()), "", unused);
  AppendListParameterCondition(where, "Transactions.Reference", "References", p, unused,
                               kRangeText);
  // Customers choose the receipts and suppliers the payments; given one list only, only that
  // kind prints.
  const std::string customers = PartyCondition("Customers", p);
  const std::string suppliers = PartyCondition("Suppliers", p);
  std::string parties;
  if (!customers.empty()) parties = "(Transactions.Type=35 AND " + customers + ")";
  if (!suppliers.empty()) {
    parties += (parties.empty() ? "" : " OR ") + std::string("(Transactions.Type=25 AND ") +
               suppliers + ")";
  }
  if (!parties.empty()) AppendSQLCondition(where, "(" + parties + ")");
  return Trim(where);
}

void ardscrPaymentReceipt::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

void ardscrPaymentReceipt::ActiveReport_ReportStart() {
  // A document: the branch's letterhead stands where the standard heading would.
  TLReport()->SetupStandardHeader(false);
  receipts_.clear();
  index_.clear();
  line_ = 0;
  started_ = false;
  if (!objects_) objects_ = TrellinReportGlobals::RequireBusinessLayer().CreateObjects();
  const std::string date_format = TrellinReportGlobals::RequireBusinessLayer().DateFormat();
  for (const char* name : {"dateReceipt", "txtLineDate"}) Field(name).SetOutputFormat(date_format);
  // The data exports' title: the company and what the document is.
  Field("txtCompany")
      .SetText(TrellinReportGlobals::RequireDatabase()->GetSetting("Company", "Name", ""));
  Field("lblReportTitle").SetCaption("Receipts and Payments");

  receipts_rs_ = Run(GetSQL());
  if (receipts_rs_->Eof()) {
    for (const char* name : {"PageHeader", "ReceiptHeader", "Detail", "ReceiptFooter"}) {
      Sections()[name].SetVisible(false);
    }
  }
}

void ardscrPaymentReceipt::ActiveReport_DataInitialize() {
  for (const char* name :
       {"TransactionId", "LineDate", "LineType", "LineReference", "LineAmount"}) {
    Fields().Add(name);
  }
}

std::shared_ptr<Recordset> ardscrPaymentReceipt::Run(const std::string& sql) {
  if (query_log_) query_log_(sql);
  return TrellinReportGlobals::RequireDatabase()->Query(sql);
}

ardscrPaymentReceipt::Receipt ardscrPaymentReceipt::ReadReceipt(Recordset& rs) {
  Receipt r;
  r.id = rs.Value("TransactionId").ToLong();
  r.type = static_cast<long>(rs.Value("Type").ToLong());
  // A payment is stored negative: the page shows what was received or paid.
  const bool turned = r.type == kPaymentType;
  const auto shown = [turned](const Variant& value) {
    const Currency stored = ReceiptMoney(value);
    return turned ? -stored : stored;
  };
  r.party = ReceiptText(rs, "OtherPartyId");
  r.name = ReceiptText(rs, "PartyName");
  r.branch = ReceiptText(rs, "BranchId");
  r.reference = ReceiptText(rs, "Reference");
  r.date = rs.Value("Date");
  r.pay_type = ReceiptText(rs, "PayType");
  r.drawer = ReceiptText(rs, "Drawer");
  r.bank = ReceiptText(rs, "BankDetails");
  r.number = ReceiptText(rs, "CardNumber");
  r.amount = shown(rs.Value("Value"));
  r.left = shown(rs.Value("ValueRemaining"));
  r.address = PostalAddressOf(r.party, [this](const std::string& sql) { return Run(sql); });
  // The documents of its allocations from both sides, signed as seen from the receipt, as the
  // remittance advice reads them.
  for (std::shared_ptr<Recordset> lines = Run(arcrRemittanceLines::LinesSQL(r.id)); !lines->Eof();
       lines->MoveNext()) {
    Applied a;
    a.date = lines->Value("Date");
    a.type = ReceiptText(*lines, "Description");
    a.reference = ReceiptText(*lines, "Reference");
    // The union's second half names its value by the expression; it is the sixth column.
    a.amount = shown(lines->Value(5));
    r.applied += a.amount;
    r.lines.push_back(std::move(a));
  }
  return r;
}

void ardscrPaymentReceipt::ActiveReport_FetchData(bool& eof) {
  // Past the last line of the receipt read last (or before the first): the next receipt.
  if (!started_ || line_ >= std::max<std::size_t>(receipts_.back().lines.size(), 1)) {
    if (started_) receipts_rs_->MoveNext();
    started_ = true;
    if (!receipts_rs_ || receipts_rs_->Eof()) {
      eof = true;
      return;
    }
    index_[receipts_rs_->Value("TransactionId").ToLong()] = receipts_.size();
    receipts_.push_back(ReadReceipt(*receipts_rs_));
    line_ = 0;
  }
  const Receipt& r = receipts_.back();
  trellin::Fields& f = Fields();
  f["TransactionId"].SetValue(Variant(static_cast<long>(r.id)));
  if (line_ < r.lines.size()) {
    const Applied& a = r.lines[line_];
    f["LineDate"].SetValue(a.date);
    f["LineType"].SetValue(a.type);
    f["LineReference"].SetValue(a.reference);
    f["LineAmount"].SetValue(a.amount);
  } else {
    // Applied to nothing: a row that prints nothing, so that the receipt has its page.
    for (const char* name : {"LineDate", "LineType", "LineReference", "LineAmount"}) {
      f[name].SetValue(Variant::Null());
    }
  }
  ++line_;
  eof = false;
}

void ardscrPaymentReceipt::OnFormat(Section& section) {
  if (section.Type() == SectionType::PageHeader) {
    PageHeader_Format();
  } else if (section.Type() == SectionType::Detail) {
    const ReportField* amount = Fields().Find("LineAmount");
    section.SetVisible(amount != nullptr && !amount->Value().IsNull());
  }
}

void ardscrPaymentReceipt::PageHeader_Format() {
  const ReportField* id = Fields().Find("TransactionId");
  if (id == nullptr || id->Value().IsNull()) return;
  const auto found = index_.find(id->Value().ToLong());
  if (found == index_.end()) return;
  const Receipt& r = receipts_[found->second];

  const Branch* branch = r.branch.empty() ? nullptr : objects_->FindBranch(r.branch);
  const BranchBlock block = BranchBlockOf(branch, false, "");
  // With no branch on file the company's name heads the page.
  Field("txtBranchName")
      .SetText(branch == nullptr
                   ? TrellinReportGlobals::RequireDatabase()->GetSetting("Company", "Name", "")
                   : block.name);
  Field("txtBranchAddress").SetText(block.address);
  Field("txtBranchDetails").SetText(block.details);

  const bool receipt = r.type == kReceiptType;
  Field("txtTitle").SetText(ReceiptTitle(r.type));
  Field("txtNumber").SetText(r.reference);
  Field("dateReceipt").SetDataValue(r.date);
  Field("txtTransId").SetText(std::to_string(r.id));
  Field("txtLblParty").SetText(receipt ? "Received from" : "Paid to");
  Field("txtName").SetText(r.name.empty() ? r.party : r.name);
  Field("txtCode").SetText(r.party);
  Field("txtAddress").SetText(r.address);
  Field("numAmount").SetDataValue(r.amount);
  // The words as a cheque has them, first letter upper case.
  std::string words =
      TrellinReportGlobals::RequireBusinessLayer().Utilities().Rounder().AmountInWords(
          r.amount < Currency() ? -r.amount : r.amount, true, "dollar", "dollars", "cent", "cents");
  if (r.amount < Currency()) {
    if (!words.empty())
      words[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(words[0])));
    words = "Less " + words;
  } else if (!words.empty()) {
    words = UCase(words.substr(0, 1)) + words.substr(1);
  }
  Field("txtAmountInWords").SetText(words);
  Field("txtMethod").SetText(std::string(PayMethodName(r.pay_type)));
  // A label with nothing beside it stays blank.
  Field("txtLblDrawer").SetText(r.drawer.empty() ? "" : "Drawer");
  Field("txtDrawer").SetText(r.drawer);
  Field("txtLblBank").SetText(r.bank.empty() ? "" : "Bank");
  Field("txtBank").SetText(r.bank);
  Field("txtLblNumberOf").SetText(r.number.empty() ? "" : ReceiptNumberLabel(r.pay_type));
  Field("txtChequeNo").SetText(r.number);
  Field("txtLblNoLines").SetVisible(r.lines.empty());

  // The footer's figures belong to this receipt: the page header of its first page formats
  // before its rows.
  Field("numApplied").SetDataValue(r.applied);
  Field("numLeft").SetDataValue(r.left);
  Field("numTotal").SetDataValue(r.amount);
}

void ardscrPaymentReceipt::ActiveReport_ReportEnd() {
  receipts_rs_.reset();
  objects_.reset();
}

}  // namespace trellin
