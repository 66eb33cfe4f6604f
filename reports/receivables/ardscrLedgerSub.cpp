#include "reports/receivables/ardscrLedgerSub.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"
#include "reports/receivables/LedgerSide.h"
#include "reports/receivables/RemainderAsAt.h"

namespace trellin {

namespace {

// The order of the transactions, by TransactionOrderBy; TransactionId keeps equal keys in the
// order they were entered.
std::string OrderFields(const std::string& order_by) {
  if (order_by == "Reference") return "Reference,TransactionId";
  if (order_by == "Entered") return "CreatedDate,TransactionId";
  return "Date,TransactionId";
}

}  // namespace

std::shared_ptr<Recordset> ardscrLedgerSub::Run(const std::string& sql) const {
  if (Queries) Queries(sql);
  return TrellinReportGlobals::RequireDatabase()->Query(sql);
}

std::string ardscrLedgerSub::DateClause(const Variant& to) const {
  std::string where;
  std::string unused;
  AppendDateRangeCondition(where, "DateProcess", DateFrom, to, "", unused);
  return where.empty() ? std::string() : " AND " + where;
}

std::string ardscrLedgerSub::OpeningSQL() const {
  const LedgerSide& side = SideOfDebtor(Debtor);
  // This query writes its range in capitals, "30 AND 39", where the others write "30 and 39".
  const std::string range = Replace(side.range, " and ", " AND ");
  return "SELECT (SELECT Sum(" + std::string(side.sign) +
         "ValueRemaining) FROM Transactions WHERE "
         "Transactions.OtherPartyId=OtherParty.OtherPartyId AND (Transactions.Type Between " +
         range + ")) AS SumOfValueRemaining,(SELECT Sum(" + std::string(side.sign) +
         "Value) FROM Transactions WHERE Transactions.OtherPartyId=OtherParty.OtherPartyId" +
         DateClause(Variant::Null()) + " AND (Transactions.Type Between " + range +
         ")) AS SumOfValue FROM OtherParty WHERE OtherPartyId=" + Database::SQLString(OtherPartyId);
}

std::string ardscrLedgerSub::TransactionsSQL() const {
  const LedgerSide& side = SideOfDebtor(Debtor);
  const std::string value = std::string(side.sign) + "Value";
  return "SELECT TransactionId,Date,TransactionTypeId,BatchId,Reference," + value +
         " AS Original," + value +
         " AS Total FROM Transactions WHERE OtherPartyId=" + Database::SQLString(OtherPartyId) +
         " AND (Transactions.Type Between " + std::string(side.range) + ")" + DateClause(DateTo) +
         " ORDER BY " + OrderFields(SQLOrderBySub);
}

std::string ardscrLedgerSub::OutstandingSQL() const {
  return "SELECT TransactionId,Date,TransactionTypeId,BatchId,Reference,Value,ValueRemaining FROM "
         "Transactions WHERE OtherPartyId=" +
         Database::SQLString(OtherPartyId) + " AND DateProcess<" +
         Database::SQLDate(dateAsAt.ToDate().AddDays(1)) + " AND (Transactions.Type Between " +
         std::string(SideOfDebtor(Debtor).range) + ")" + " ORDER BY " + OrderFields(SQLOrderBySub);
}

void ardscrLedgerSub::ActiveReport_ReportStart() {
  opening_ = Currency();
  rs_.reset();
  // Dates print in the company's format.
  if (Control* date = FindControl("txtDate")) {
    date->SetOutputFormat(TrellinReportGlobals::RequireBusinessLayer().DateFormat());
  }
  if (Period == "Outstanding") {
    BuildOutstanding();
  } else {
    ReadOpening();
    rs_ = Run(TransactionsSQL());
  }
  Sections()["Detail"].SetBackStyle(1);
  first_row_ = true;
}

void ardscrLedgerSub::ReadOpening() {
  std::shared_ptr<Recordset> rs = Run(OpeningSQL());
  if (rs->Eof()) return;
  // With no DateFrom both sums run over all time, so on clean data they cancel out.
  const Variant& remaining = rs->Value("SumOfValueRemaining");
  const Variant& moved = rs->Value("SumOfValue");
  if (!remaining.IsNull()) opening_ = remaining.ToCurrency();
  if (!moved.IsNull()) opening_ -= moved.ToCurrency();
}

void ardscrLedgerSub::BuildOutstanding() {
  Database& database = *TrellinReportGlobals::RequireDatabase();
  std::shared_ptr<Recordset> rows = database.NewRecordset();
  rows->AppendField("TransactionId", FieldType::Long);
  rows->AppendField("Date", FieldType::Date);
  rows->AppendField("TransactionTypeId", FieldType::Text, 5);
  rows->AppendField("BatchId", FieldType::Text, 10);
  rows->AppendField("Reference", FieldType::Text, 15);
  rows->AppendField("Original", FieldType::Currency);
  rows->AppendField("Total", FieldType::Currency);

  const Date bound = dateAsAt.ToDate().AddDays(1);
  std::shared_ptr<Recordset> source = Run(OutstandingSQL());
  const int id_field = source->FieldIndex("TransactionId");
  const int value_field = source->FieldIndex("Value");
  const int remaining_field = source->FieldIndex("ValueRemaining");
  for (; !source->Eof(); source->MoveNext()) {
    const std::int64_t id = source->Value(id_field).ToLong();
    const std::string allocations = AllocationsProcessedFromSQL(id, bound);
    if (Queries) Queries(allocations);
    const Currency remainder =
        RemainderAsAt(database, source->Value(remaining_field).ToCurrency(), allocations);
    if (remainder == Currency()) continue;
    const Currency value = source->Value(value_field).ToCurrency();
    rows->AddNew();
    for (const char* name :
         {"TransactionId", "Date", "TransactionTypeId", "BatchId", "Reference"}) {
      rows->SetValue(name, source->Value(name));
    }
    rows->SetValue("Original", Debtor ? -value : value);
    rows->SetValue("Total", Debtor ? -remainder : remainder);
    rows->Update();
  }
  if (rows->RecordCount() > 0) rows->MoveFirst();
  rs_ = rows;
}

void ardscrLedgerSub::ActiveReport_DataInitialize() {
  for (const char* name :
       {"Trans", "Date", "Type", "Batch", "Reference", "Original", "Debit", "Credit"}) {
    Fields().Add(name);
  }
  Fields().Add("Balance").SetValue(Currency());
}

void ardscrLedgerSub::ActiveReport_FetchData(bool& eof) {
  trellin::Fields& f = Fields();
  const Currency balance = f["Balance"].Value().ToCurrency();
  if (first_row_ && opening_ != Currency()) {
    // The balance brought forward, dated the day before the period; the recordset stays put.
    first_row_ = false;
    for (const char* name : {"Trans", "Type", "Batch", "Original", "Debit", "Credit"}) {
      f[name].SetValue(Variant());
    }
    f["Date"].SetValue(HasDate(DateFrom) ? Variant(DateFrom.ToDate().AddDays(-1))
                                         : Variant::Null());
    f["Reference"].SetValue("Opening");
    if (opening_ > Currency()) f["Debit"].SetValue(opening_);
    if (opening_ < Currency()) f["Credit"].SetValue(-opening_);
    f["Balance"].SetValue(balance + opening_);
    eof = false;
    return;
  }
  if (!rs_ || rs_->Eof()) {
    eof = true;
    return;
  }
  first_row_ = false;
  f["Debit"].SetValue(Variant());
  f["Credit"].SetValue(Variant());
  f["Trans"].SetValue(rs_->Value("TransactionId"));
  f["Date"].SetValue(rs_->Value("Date"));
  f["Type"].SetValue(rs_->Value("TransactionTypeId"));
  f["Batch"].SetValue(rs_->Value("BatchId"));
  f["Reference"].SetValue(rs_->Value("Reference"));
  f["Original"].SetValue(rs_->Value("Original"));
  const Variant& total_value = rs_->Value("Total");
  const Currency total = total_value.IsNull() ? Currency() : total_value.ToCurrency();
  // What raises the party's balance stands under Debit on either side.
  if (total > Currency()) f["Debit"].SetValue(total);
  if (total < Currency()) f["Credit"].SetValue(-total);
  f["Balance"].SetValue(balance + total);
  rs_->MoveNext();
  eof = false;
}

void ardscrLedgerSub::OnFormat(Section& section) {
  if (section.Type() != SectionType::Detail) return;
  section.SetBackStyle(1 - section.BackStyle());
  if (TLReport && TLReport->ColumnsInUse()) TLReport->DetailFormat(section, " ");
}

void ardscrLedgerSub::ActiveReport_ReportEnd() { rs_.reset(); }

}  // namespace trellin
