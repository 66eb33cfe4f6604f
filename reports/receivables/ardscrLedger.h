#pragma once
// The customer and supplier ledger ("LedgerAR", "LedgerAP"): for each party of the side, every
// transaction of a period with a running balance, or for the period "Outstanding" the items open
// on a date. This designer holds the parties, the parameters, the groups and the totals; the
// transactions of each party come from the sub-report ardscrLedgerSub on srptTransactions.

#include <memory>
#include <string>

#include "core/Designer.h"
#include "platform/runtime/Date.h"
#include "platform/runtime/Variant.h"
#include "reports/receivables/LedgerSide.h"
#include "reports/receivables/ardscrLedgerSub.h"

namespace trellin {

class FinancialCalendar;

// The first day of the period `period` asks for, ending on `date_to`: "MTD" the first of its
// month, "QTD" the first of its quarter of the financial year, "YTD" the financial year's first
// day (without a financial year for the date, the calendar quarter and 1 January), "Custom"
// `custom_from` as the user gave it; Null for "ALL", for "Outstanding", which has no period, and
// when `date_to` is no date.
[[nodiscard]] Variant LedgerDateFrom(const std::string& period, const Variant& date_to,
                                     const Variant& custom_from, const FinancialCalendar& calendar);

class ardscrLedger : public Designer {
 public:
  ardscrLedger() : Designer("ardscrLedger") {}

  // Compares the key with "LedgerAR": that is the receivables side, any other key payables.
  void RefreshParameters(std::string& ReportName) override;
  void RefreshDataColumns() override;

  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void OnBeforePrint(Section& section) override;
  void ActiveReport_ReportEnd() override;

  // The SQL routine: reads the parameters, builds the party query and the heading, defines the
  // groups on the host and makes the sub-report. Needs a host with the parameters declared;
  // throws std::invalid_argument when Date As At is no date, and what the range builder throws
  // for a list it cannot read.
  void BuildSQL();

  // After BuildSQL.
  [[nodiscard]] const std::string& SQL() const { return sql_; }
  // The heading lines, parted by CR LF: the as-at date, the order, the filters, the period.
  [[nodiscard]] const std::string& Heading() const { return heading_; }
  [[nodiscard]] bool Debtor() const { return debtor_; }
  [[nodiscard]] const Variant& DateFrom() const { return date_from_; }
  [[nodiscard]] const std::shared_ptr<ardscrLedgerSub>& Transactions() const { return sub_; }
  // Every query the run sends, as it sends it (the parties' and, through the sub-report, each
  // party's); set before the run.
  void SetQueryLog(QueryLog log) { query_log_ = std::move(log); }

 private:
  // --- the query (ardscrLedger_sql.cpp) ---
  void AddFilters(std::string& where);
  // The period's conditions, and the SumOfValue and Opening columns it asks for.
  void AddPeriodFilter(std::string& where, std::string& columns);
  void AddGroupings(std::string& select, std::string& order);
  void AddPeriodHeading();
  void MakeSubReport();
  // "(SELECT Sum(" S x ") FROM Transactions WHERE ... AND Transactions.Type Between " R: the
  // side's sum of x, left open for a further condition and the closing bracket.
  [[nodiscard]] std::string PartySum(const std::string& x) const;
  [[nodiscard]] std::string BalanceAsAt() const;
  [[nodiscard]] std::string DateText(const Variant& date) const;

  void Detail_Format();

  bool debtor_ = true;
  std::string period_;
  Variant date_as_at_;
  Variant date_from_;
  Variant date_to_;
  std::string sql_;
  std::string heading_;
  std::shared_ptr<ardscrLedgerSub> sub_;
  QueryLog query_log_;
};

[[nodiscard]] DesignerPtr CreateardscrLedger();

}  // namespace trellin
