#pragma once
// The log ("OtherPartyLog", "LogAP", "LogAR", "ItemLog", "JobLog", "AssetLog"): the notes kept
// on other parties, items, jobs and assets, a line an owner with its notes beneath (the
// sub-report arLogSubSummary on srptLogSummary), in up to five groups. What differs by key is
// the table of LogKeys.h; on "LogAR" and "LogAP" `ShowOutstanding` adds each party's total,
// overdue and current balance.

#include <functional>
#include <memory>
#include <string>

#include "core/Designer.h"
#include "reports/admin/LogKeys.h"
#include "reports/admin/arLogSubSummary.h"

namespace trellin {

class arLog : public Designer {
 public:
  arLog() : Designer("arLog") {}

  // Declares the parameters of `ReportName`. Throws std::invalid_argument for a key that is not
  // a log's.
  void RefreshParameters(std::string& ReportName) override;

  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;
  void OnFormat(Section& section) override;
  void OnBeforePrint(Section& section) override;
  void ActiveReport_ReportEnd() override;

  // The SQL routine: the owners' query, the note conditions handed to the sub-report, the
  // description and the groups. Needs RefreshParameters first; throws what the range builder
  // throws for a list it cannot read, and TypeMismatch for a date parameter that is no date.
  void BuildSQL();

  // After BuildSQL.
  [[nodiscard]] const std::string& SQL() const { return sql_; }
  [[nodiscard]] const std::string& NotesWhere() const { return notes_where_; }
  [[nodiscard]] const std::string& Heading() const { return heading_; }
  [[nodiscard]] const std::shared_ptr<arLogSubSummary>& Notes() const { return sub_; }
  // The query of one party's balances for `ShowOutstanding`, as at `now`.
  [[nodiscard]] std::string OutstandingSQL(const std::string& code, const Date& now) const;
  void SetQueryLog(std::function<void(const std::string&)> log) { query_log_ = std::move(log); }

 private:
  void AddGroupings(std::string& select, std::string& order);
  void Detail_Format();

  const LogKey* key_ = nullptr;
  bool show_outstanding_ = false;
  bool subject_group_ = false;  // a group level is on the notes' subject
  std::string sql_;
  std::string notes_where_;
  std::string heading_;
  std::shared_ptr<arLogSubSummary> sub_;
  std::function<void(const std::string&)> query_log_;
};

[[nodiscard]] DesignerPtr CreatearLog();

}  // namespace trellin
