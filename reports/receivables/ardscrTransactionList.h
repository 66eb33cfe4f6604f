#pragma once
// The transaction list ("TransactionListAR", "TransactionListAP", "OpenTransactionListAR",
// "OpenTransactionListAP", "SalesOrderList", "JobInvoiceList"): one block a transaction, posted
// or still in an open batch, with its header figures, and on request its lines
// (ardscrTransactionListSubDetails) and its allocations (ardscrTransactionListSubAllocations).
// The list's query sums each transaction's valued lines; text lines count in no sum.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/Designer.h"
#include "reports/ReportShapes.h"
#include "reports/receivables/LedgerSide.h"
#include "reports/receivables/ardscrLedgerSub.h"
#include "reports/receivables/ardscrTransactionListSubAllocations.h"
#include "reports/receivables/ardscrTransactionListSubDetails.h"

namespace trellin {

// What a key of the list reads: posted transactions or an open batch, the side, and the batch
// type clause and grouping list of the key.
struct TransactionListKey {
  std::string_view key;
  bool open;
  LedgerSideKind side;
  std::string_view type_clause;   // "Transactions.Type Between 30 And 39"
  std::string_view header_types;  // the pick-lists' clause on acBatchHeader.Type (open keys)
  std::string_view groupings;
  bool orders;  // SalesOrderList, JobInvoiceList: order quantities, item category and type
};

// The key's row; nullptr for a key the list does not serve.
[[nodiscard]] const TransactionListKey* TransactionListKeyOf(std::string_view key);

// The two forms of an OrderBy value: the SQL ORDER BY of posted transactions and the client
// sort; an open batch's SQL names acBatchTransaction's columns. nullptr for a value not listed.
struct TransactionListOrder {
  std::string_view order_by;
  std::string_view sql;
  std::string_view open_sql;
  std::string_view sort;
};
[[nodiscard]] const TransactionListOrder* TransactionListOrderOf(std::string_view order_by);

class ardscrTransactionList : public Designer {
 public:
  ardscrTransactionList() : Designer("ardscrTransactionList") {}

  void RefreshParameters(std::string& ReportName) override;

  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void OnBeforePrint(Section& section) override;
  void ActiveReport_ReportEnd() override;

  // The SQL routine: reads the options and filters, builds the query and the heading, defines
  // the groups and ties the sub-reports. Needs a host with the parameters declared; throws what
  // the range builder throws for a list it cannot read.
  void BuildSQL();

  [[nodiscard]] const std::string& SQL() const { return sql_; }
  [[nodiscard]] const std::string& Heading() const { return heading_; }
  // Every query the run sends, as it sends it.
  void SetQueryLog(QueryLog log) { query_log_ = std::move(log); }

 private:
  // --- the query (ardscrTransactionList_sql.cpp) ---
  void AddFilters(std::string& where);
  void AddPostedFilters(std::string& where);
  void AddOpenFilters(std::string& where);
  void AddGroupings(std::string& select, std::string& group_by, std::string& order);
  // The lines' condition of the row's line-level groups, for the details sub-report.
  [[nodiscard]] std::string LineGroupFilter() const;

  // --- the rows and blocks (ardscrTransactionList.cpp) ---
  void Detail_Format();
  [[nodiscard]] std::string PartyText();

  const TransactionListKey* key_ = nullptr;
  bool debtor_ = true;
  bool summary_ = false;
  bool show_batch_ = false;
  bool show_location_ = false;
  bool show_department_ = false;
  bool show_employee_ = false;
  bool show_allocations_ = false;
  bool show_full_detail_ = false;
  bool show_description_lines_ = false;
  bool show_serial_ = false;
  bool line_location_ = false;  // the query selects TransactionLine.LocationId AS TLLocationId
  // The line fields of the groups, outer to inner: "LLocationId", "DeptId", ...
  std::vector<std::string> line_groups_;
  std::string sql_;
  std::string heading_;
  std::shared_ptr<ardscrTransactionListSubDetails> details_;
  std::shared_ptr<ardscrTransactionListSubAllocations> allocations_;
  QueryLog query_log_;
};

[[nodiscard]] DesignerPtr CreateardscrTransactionList();

}  // namespace trellin
