#pragma once
// The document behind one General Ledger line: the lines of the receivables or payables document
// the ledger line was posted from (item, description, quantity, value), printed under the ledger
// line when the statement's Drilldown is set. A sub-report: its caller sets TransactionId before
// each run; a ledger line with no document runs none.

#include <cstdint>
#include <memory>
#include <string>

#include "core/host/ActiveReport.h"
#include "core/host/Recordset.h"

namespace trellin {

class arAccountDetailsSubTransactionsDrilldown : public ActiveReport {
 public:
  arAccountDetailsSubTransactionsDrilldown()
      : ActiveReport("arAccountDetailsSubTransactionsDrilldown") {}

  // Set by the caller for each ledger line.
  std::int64_t TransactionId = 0;

  // The document's printed lines in their order; hidden lines are left out, as the document
  // leaves them out.
  [[nodiscard]] static std::string LinesSQL(std::int64_t transaction_id);
  // Opens the lines of TransactionId.
  void Create_Recordsets();

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void ActiveReport_ReportEnd() override;

 private:
  std::shared_ptr<Recordset> rs_;
};

}  // namespace trellin
