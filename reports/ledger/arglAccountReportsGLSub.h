#pragma once
// The ledger lines of one account under its opening line in the General Ledger: a line a posted
// ledger line of the period, with its bank mark, its comment and the other party of its bank
// entry, and a running balance from the opening as printed. A sub-report: its caller sets the
// state below before each run, and the lines are read through a forward-only cursor, one row in
// memory at a time.

#include <functional>
#include <memory>
#include <string>

#include "core/host/ActiveReport.h"
#include "core/host/Recordset.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Variant.h"
#include "reports/ledger/arAccountDetailsSubTransactionsDrilldown.h"

namespace trellin {

// The bank mark of a ledger line, in this order: "*" for tax category "*" (bank line or not),
// " " with no bank entry, on the bank's own line of an entry (sequence 0) "?" while it is on no
// statement page and "x" once it is, and "b" on the entry's other lines.
[[nodiscard]] std::string LedgerLineMark(const Variant& tax_category,
                                         const Variant& bank_transaction_id,
                                         const Variant& bank_sequence, const Variant& stmt_page);

// The comment of a ledger line: its own comment, and for a line of a bank entry that has an
// other party, "; " (only behind a comment that is not empty) and the party's code and name.
[[nodiscard]] std::string LedgerLineComment(const Variant& comment,
                                            const Variant& bank_transaction_id,
                                            const Variant& other_party_id,
                                            const Variant& other_party_name);

class arglAccountReportsGLSub : public ActiveReport {
 public:
  arglAccountReportsGLSub() : ActiveReport("arglAccountReportsGLSub") {}

  // Set by the caller once for the run.
  bool TaxInclusive = false;
  int Rounding = 2;  // the statement's digits: 2 normal, 0 whole, -3 thousands
  bool Drilldown = false;
  // Told each query the lines run, as it runs; for measuring a run against its queries.
  std::function<void(const std::string&)> Queries;

  // Set by the caller for each account before the sub-report runs.
  std::string AccountId;
  std::string SQL;    // the lines of the account, in the order they print
  Currency mBalance;  // the opening as printed; runs on with each printed value

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void ActiveReport_ReportEnd() override;

 private:
  std::shared_ptr<Recordset> rs_;
  bool first_line_ = true;
  std::shared_ptr<arAccountDetailsSubTransactionsDrilldown> drilldown_;
};

}  // namespace trellin
