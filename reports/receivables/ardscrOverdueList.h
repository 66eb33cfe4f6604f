#pragma once
// The overdue list ("OverdueListAR", "OverdueListAP"): the call sheet of credit control. A line
// a party with what it has outstanding, held in dispute and overdue, and beneath it each open
// document (the sub-report ardscrOverdueListSubInvoices on srptInvoices), in up to five groups.

#include <memory>
#include <string>
#include <vector>

#include "core/Designer.h"
#include "platform/runtime/Date.h"
#include "reports/receivables/LedgerSide.h"
#include "reports/receivables/ardscrOverdueListSubInvoices.h"

namespace trellin {

class ardscrOverdueList : public Designer {
 public:
  ardscrOverdueList() : Designer("ardscrOverdueList") {}

  // Compares the key with "OverdueListAR": that is the receivables side, any other key payables.
  void RefreshParameters(std::string& ReportName) override;
  void RefreshDataColumns() override;

  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;
  void OnFormat(Section& section) override;
  void OnBeforePrint(Section& section) override;
  void ActiveReport_ReportEnd() override;

  // The SQL routine: the parties' query, the sub-report's filter, the heading and the groups.
  // Needs a host with the parameters declared; throws std::invalid_argument when Date As At is
  // no date, and what the range builder throws for a list it cannot read.
  void BuildSQL();

  // After BuildSQL.
  [[nodiscard]] const std::string& SQL() const { return sql_; }
  [[nodiscard]] const std::string& Heading() const { return heading_; }
  [[nodiscard]] const std::shared_ptr<ardscrOverdueListSubInvoices>& Invoices() const {
    return sub_;
  }
  void SetQueryLog(QueryLog log) { query_log_ = std::move(log); }

 private:
  void AddGroupings(std::string& select, std::string& group_by, std::string& order);
  void Detail_Format();

  // A group level that narrows the documents: its level and the column of Transactions.
  struct DocumentGroup {
    int level;
    std::string column;  // "EmployeeId" or "LocationId"
  };

  bool debtor_ = true;
  bool summary_ = false;
  Date as_at_;
  std::string sql_;
  std::string heading_;
  std::vector<DocumentGroup> document_groups_;
  std::shared_ptr<ardscrOverdueListSubInvoices> sub_;
  QueryLog query_log_;
};

[[nodiscard]] DesignerPtr CreateardscrOverdueList();

}  // namespace trellin
