#include "reports/receivables/ardsStatementLines.h"

#include "core/TrellinReportGlobals.h"
#include "reports/receivables/RemainderAsAt.h"

namespace trellin {

namespace {

// The customer's code between quotes, as the statement's queries write it.
std::string LinesParty(const std::string& code) { return Database::SQLString(code); }

Variant LineTextOrEmpty(const Variant& value) {
  return value.IsNull() || value.IsEmpty() ? Variant(std::string()) : Variant(value.Text());
}

}  // namespace

std::string StatementLineType(long type, const std::string& previous) {
  switch (type) {
    case 30:
      return "Invoice";
    case 31:
    case 32:
      return "Credit";
    case 35:
      return "Receipt";
    default:
      return previous;
  }
}

std::shared_ptr<Recordset> ardsStatementLines::Run(const std::string& sql) const {
  if (Queries) Queries(sql);
  return TrellinReportGlobals::RequireDatabase()->Query(sql);
}

std::string ardsStatementLines::BalanceForwardSQL() const {
  return "SELECT OrderNo,Date,Reference,-Value AS TransValue,Type FROM Transactions WHERE Date>=" +
         Database::SQLDate(DateFrom) + " AND Date<" + Database::SQLDate(DateTo.AddDays(1)) +
         " AND OtherPartyId=" + LinesParty(OtherPartyId) +
         " AND (Type between 30 And 39) ORDER BY Date,TransactionId";
}

std::string ardsStatementLines::MovementSumSQL() const {
  return "SELECT SUM(-Value) FROM Transactions WHERE Date>=" + Database::SQLDate(DateFrom) +
         " AND Date<" + Database::SQLDate(DateTo.AddDays(1)) +
         " AND OtherPartyId=" + LinesParty(OtherPartyId) + " AND (Type between 30 And 39)";
}

std::string ardsStatementLines::OpenBeforeSQL() const {
  return "SELECT TransactionId,OrderNo,Date,Reference,Type,ValueRemaining FROM Transactions"
         " WHERE (Type between 30 And 39) AND Transactions.OtherPartyId=" +
         LinesParty(OtherPartyId) + " AND Transactions.DateProcess<" + Database::SQLDate(DateFrom) +
         " ORDER BY Date,TransactionId";
}

std::string ardsStatementLines::OpenItemMonthSQL() const {
  return "SELECT OrderNo,Date,Reference,-Value AS TransValue,Type FROM Transactions WHERE "
         "DateProcess>=" +
         Database::SQLDate(DateFrom) + " AND DateProcess<" + Database::SQLDate(DateTo.AddDays(1)) +
         " AND OtherPartyId=" + LinesParty(OtherPartyId) +
         " AND (Type between 30 And 39) ORDER BY Date,TransactionId";
}

void ardsStatementLines::ActiveReport_ReportStart() {
  opening_ = Currency();
  type_word_.clear();
  rs_.reset();
  if (Control* date = FindControl("txtDate")) {
    date->SetOutputFormat(TrellinReportGlobals::RequireBusinessLayer().DateFormat());
  }
  Section* header = Sections().FindType(SectionType::ReportHeader);
  if (OpenItem) {
    BuildOpenItems();
    if (header != nullptr) header->SetVisible(false);
  } else {
    rs_ = Run(BalanceForwardSQL());
    std::shared_ptr<Recordset> moved = Run(MovementSumSQL());
    Currency movement;
    if (!moved->Eof() && !moved->Value(0).IsNull()) movement = moved->Value(0).ToCurrency();
    opening_ = ClosingBalance - movement;
    if (Control* opening = FindControl("numOpeningBalance")) opening->SetDataValue(opening_);
    if (header != nullptr) header->SetVisible(opening_ != Currency());
  }
  if (Section* detail = Sections().FindType(SectionType::Detail)) {
    detail->SetVisible(rs_ && !rs_->Eof());
  }
}

void ardsStatementLines::BuildOpenItems() {
  Database& database = *TrellinReportGlobals::RequireDatabase();
  std::shared_ptr<Recordset> rows = database.NewRecordset();
  rows->AppendField("TransactionId", FieldType::Double);
  rows->AppendField("OrderNo", FieldType::Text, 15);
  rows->AppendField("Date", FieldType::Date);
  rows->AppendField("Reference", FieldType::Text, 15);
  rows->AppendField("TransValue", FieldType::Currency);
  rows->AppendField("Type", FieldType::Long);

  // What stood open when the month began, at what it had open then.
  std::shared_ptr<Recordset> before = Run(OpenBeforeSQL());
  for (; !before->Eof(); before->MoveNext()) {
    const std::int64_t id = before->Value("TransactionId").ToLong();
    const std::string allocations = AllocationsProcessedFromSQL(id, DateFrom);
    if (Queries) Queries(allocations);
    const Variant& stored = before->Value("ValueRemaining");
    const Currency remainder =
        RemainderAsAt(database, stored.IsNull() ? Currency() : stored.ToCurrency(), allocations);
    if (remainder == Currency()) continue;
    rows->AddNew();
    for (const char* name : {"TransactionId", "OrderNo", "Date", "Reference", "Type"}) {
      rows->SetValue(name, before->Value(name));
    }
    rows->SetValue("TransValue", -remainder);
    rows->Update();
  }
  // Then the month's transactions in full, allocated or not.
  std::shared_ptr<Recordset> month = Run(OpenItemMonthSQL());
  for (; !month->Eof(); month->MoveNext()) {
    rows->AddNew();
    for (const char* name : {"OrderNo", "Date", "Reference", "TransValue", "Type"}) {
      rows->SetValue(name, month->Value(name));
    }
    rows->Update();
  }
  if (rows->RecordCount() > 0) rows->MoveFirst();
  rs_ = rows;
}

void ardsStatementLines::ActiveReport_DataInitialize() {
  for (const char* name : {"Date", "TType", "Reference", "OrderNo", "Debit", "Credit"}) {
    Fields().Add(name);
  }
  Fields().Add("Balance").SetValue(opening_);
}

void ardsStatementLines::ActiveReport_FetchData(bool& eof) {
  if (!rs_ || rs_->Eof()) {
    eof = true;
    return;
  }
  trellin::Fields& f = Fields();
  const Variant& type = rs_->Value("Type");
  type_word_ = StatementLineType(type.IsNull() ? 0 : static_cast<long>(type.ToLong()), type_word_);
  f["TType"].SetValue(type_word_);
  f["Date"].SetValue(rs_->Value("Date"));
  f["Reference"].SetValue(LineTextOrEmpty(rs_->Value("Reference")));
  f["OrderNo"].SetValue(LineTextOrEmpty(rs_->Value("OrderNo")));
  const Variant& stored = rs_->Value("TransValue");
  const Currency value = stored.IsNull() ? Currency() : stored.ToCurrency();
  if (value > Currency()) {
    f["Debit"].SetValue(value);
    f["Credit"].SetValue(Variant());
  } else {
    f["Credit"].SetValue(-value);
    f["Debit"].SetValue(Variant());
  }
  f["Balance"].SetValue(f["Balance"].Value().ToCurrency() + value);
  rs_->MoveNext();
  eof = false;
}

void ardsStatementLines::ActiveReport_ReportEnd() { rs_.reset(); }

}  // namespace trellin
