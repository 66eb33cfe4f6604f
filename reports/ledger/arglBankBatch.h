#pragma once
// "BankBatch" ("Bank Entry List"): the bank entries, a block each with its id, date, reference,
// party, comment and amount (the bank's own line, money in positive) and its split lines under it
// (arglBankBatchSub), read for every entry with one query; the deposits and withdrawals of each
// bank and of the report. A fixed layout on the list base's parameters and query.

#include <cstdint>
#include <map>
#include <memory>
#include <vector>

#include "core/ListDesigner.h"
#include "reports/ledger/arglBankBatchSub.h"

namespace trellin {

class arglBankBatch : public ListDesigner {
 public:
  arglBankBatch();

  // Reads the split lines of every entry on the list at once.
  void ActiveReport_ReportStart() override;
  void OnFormat(Section& section) override;

 private:
  std::map<std::int64_t, std::vector<arglBankBatchSub::Line>> lines_;  // by entry
  std::shared_ptr<arglBankBatchSub> sub_;
};

[[nodiscard]] DesignerPtr CreatearglBankBatch();

}  // namespace trellin
