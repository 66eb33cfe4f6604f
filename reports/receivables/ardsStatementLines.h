#pragma once
// One customer's lines on its statement: in the balance-forward style the month's transactions
// by document date after an "Opening Balance", in the open-item style what stood open when the
// month began followed by the month's transactions by process date. A sub-report: the parent
// sets the state below, and the rows are fetched by hand (unbound).

#include <memory>
#include <string>

#include "core/host/ActiveReport.h"
#include "core/host/Recordset.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Date.h"
#include "reports/receivables/ardscrLedgerSub.h"

namespace trellin {

// The word a statement line shows for a transaction type: 30 "Invoice", 31 and 32 "Credit", 35
// "Receipt"; any other type gives `previous`, the word of the line before.
[[nodiscard]] std::string StatementLineType(long type, const std::string& previous);

class ardsStatementLines : public ActiveReport {
 public:
  ardsStatementLines() : ActiveReport("ardsStatementLines") {}

  // Set by the parent, once for the run.
  Date DateFrom;  // the first of the statement's month
  Date DateTo;    // the statement's date
  bool OpenItem = false;
  QueryLog Queries;
  // Set by the parent for each customer.
  std::string OtherPartyId;
  Currency ClosingBalance;

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void ActiveReport_ReportEnd() override;

  // The queries of the present customer, as the run sends them.
  [[nodiscard]] std::string BalanceForwardSQL() const;
  [[nodiscard]] std::string MovementSumSQL() const;
  [[nodiscard]] std::string OpenBeforeSQL() const;
  [[nodiscard]] std::string OpenItemMonthSQL() const;
  // After ReportStart: the balance the lines start from (0 in the open-item style).
  [[nodiscard]] Currency Opening() const { return opening_; }

 private:
  [[nodiscard]] std::shared_ptr<Recordset> Run(const std::string& sql) const;
  void BuildOpenItems();

  Currency opening_;
  std::string type_word_;
  std::shared_ptr<Recordset> rs_;
};

}  // namespace trellin
