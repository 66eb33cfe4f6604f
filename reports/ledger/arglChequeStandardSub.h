#pragma once
// The stub of one cheque: what the cheque pays. A cheque paying documents lists them from both
// sides of their allocations, each allocation once; a cheque written against ledger lines lists
// its lines with their tax, but not the bank's own line nor those of tax category "*". Twenty-five
// lines at most, then one line "And Others" with the sum of the rest. Its caller sets the bank
// entry before each run.

#include <cstdint>
#include <memory>
#include <string>

#include "core/host/ActiveReport.h"
#include "core/host/Recordset.h"

namespace trellin {

class arglChequeStandardSub : public ActiveReport {
 public:
  arglChequeStandardSub() : ActiveReport("arglChequeStandardSub") {}

  // The lines a stub holds before the rest are rolled into "And Others".
  static constexpr long kLines = 25;

  std::int64_t glBankTransactionId = 0;

  // The stub's queries for a bank entry: the document it pays by, the documents that document
  // settled (both sides of the allocation), and the ledger lines when there is no document.
  [[nodiscard]] static std::string DocumentSQL(std::int64_t bank_entry);
  [[nodiscard]] static std::string AllocatedSQL(std::int64_t transaction);
  [[nodiscard]] static std::string LedgerLinesSQL(std::int64_t bank_entry);

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void ActiveReport_ReportEnd() override;

 private:
  std::shared_ptr<Recordset> rs_;
  long count_ = 1;
};

}  // namespace trellin
