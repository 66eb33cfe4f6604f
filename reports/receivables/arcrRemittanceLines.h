#pragma once
// The documents one payment's allocations name, on its remittance advice: a line each, with the
// type's word and the amount signed as seen from the payment, what it paid in the first column
// and what was taken off it in the second. A sub-report: the parent sets `PaymentId` for each
// advice, and the rows are fetched by hand (unbound).

#include <cstdint>
#include <memory>
#include <string>

#include "core/host/ActiveReport.h"
#include "core/host/Recordset.h"
#include "reports/receivables/ardscrLedgerSub.h"

namespace trellin {

// The word an advice line shows for a transaction type: 20 "Invoice", 21 and 22 "Credit", 25
// "Payment"; any other type none.
[[nodiscard]] std::string RemittanceLineType(long type);

class arcrRemittanceLines : public ActiveReport {
 public:
  arcrRemittanceLines() : ActiveReport("arcrRemittanceLines") {}

  QueryLog Queries;            // set once for the run
  std::int64_t PaymentId = 0;  // set by the parent for each advice

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void ActiveReport_ReportEnd() override;

  // The allocations of a payment from both sides, the second half turned round.
  [[nodiscard]] static std::string LinesSQL(std::int64_t payment);

 private:
  std::shared_ptr<Recordset> rs_;
};

}  // namespace trellin
