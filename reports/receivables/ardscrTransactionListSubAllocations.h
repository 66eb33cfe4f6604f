#pragma once
// What a transaction was allocated to, or took allocations from, under its block in the
// transaction list: the other transaction's id, date, type, reference, the value allocated and
// what the other transaction still has open and held. A sub-report; the parent sets the id.

#include <cstdint>
#include <memory>
#include <string>

#include "core/host/ActiveReport.h"
#include "core/host/Recordset.h"
#include "reports/receivables/ardscrLedgerSub.h"

namespace trellin {

class ardscrTransactionListSubAllocations : public ActiveReport {
 public:
  ardscrTransactionListSubAllocations() : ActiveReport("ardscrTransactionListSubAllocations") {}

  // Set by the parent: the side, once (the other transaction's remaining and held print in the
  // side's sense, what is owed positive), and the transaction before each block.
  bool Debtor = true;
  std::int64_t TransactionId = 0;
  QueryLog Queries;

  // The allocation union of transaction `id`, both ways.
  [[nodiscard]] static std::string AllocationsSQL(std::int64_t id);

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void ActiveReport_ReportEnd() override;

 private:
  std::shared_ptr<Recordset> rs_;
};

}  // namespace trellin
