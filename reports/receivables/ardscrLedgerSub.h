#pragma once
// One party's transactions under its line in the customer and supplier ledger: the opening
// balance, the period's transactions with a running balance, or for the period "Outstanding"
// what stood open on the as-at date. A sub-report: the parent sets the state below before each
// run, and the rows are fetched by hand (unbound).

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "core/host/ActiveReport.h"
#include "core/host/Recordset.h"
#include "core/host/TLReport.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Variant.h"

namespace trellin {

// Whether `v` holds a date: a date parameter's "no date" may be Null, Empty or Missing.
[[nodiscard]] inline bool HasDate(const Variant& v) {
  return !(v.IsNull() || v.IsEmpty() || v.IsMissing());
}

// Told each query a ledger runs, as it runs it; for measuring a run against its own queries.
using QueryLog = std::function<void(const std::string& sql)>;

class ardscrLedgerSub : public ActiveReport {
 public:
  ardscrLedgerSub() : ActiveReport("ardscrLedgerSub") {}

  // Set by the parent, once for the run.
  std::shared_ptr<trellin::TLReport> TLReport;
  std::string SQLOrderBySub;  // TransactionOrderBy: "Date", "Entered" or "Reference"
  std::string Period;
  Variant dateAsAt;  // a date
  Variant DateFrom;  // a date, or Null
  Variant DateTo;    // a date, or Null
  bool Debtor = true;
  QueryLog Queries;
  // Set by the parent for each party.
  std::string OtherPartyId;

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void ActiveReport_ReportEnd() override;

  // The queries of the present party, as the run builds them.
  [[nodiscard]] std::string OpeningSQL() const;
  [[nodiscard]] std::string TransactionsSQL() const;
  [[nodiscard]] std::string OutstandingSQL() const;
  // The balance brought forward into the period, after ReportStart; 0 for "Outstanding".
  [[nodiscard]] Currency Opening() const { return opening_; }

 private:
  void ReadOpening();
  void BuildOutstanding();
  [[nodiscard]] std::shared_ptr<Recordset> Run(const std::string& sql) const;
  // " AND " and the date clause on DateProcess from DateFrom to `to`; "" when neither is a date.
  [[nodiscard]] std::string DateClause(const Variant& to) const;

  Currency opening_;
  bool first_row_ = true;
  std::shared_ptr<Recordset> rs_;
};

}  // namespace trellin
