#pragma once
// The split lines of one bank entry under its line on the bank reconciliation: every line of the
// entry but the bank's own (sequence 0) and those of tax category "*", tax-inclusive, in their
// order. Its caller sets the entry before each run.

#include <cstdint>
#include <memory>

#include "core/host/ActiveReport.h"
#include "core/host/Recordset.h"

namespace trellin {

class arglBankReconciliationSub : public ActiveReport {
 public:
  arglBankReconciliationSub() : ActiveReport("arglBankReconciliationSub") {}

  std::int64_t BankTransactionId = 0;

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void ActiveReport_ReportEnd() override;

 private:
  std::shared_ptr<Recordset> rs_;
};

}  // namespace trellin
