#pragma once
// The aged overdue report ("AgedOverdueAR", "AgedOverdueAP"): each party's open value summed
// into four dated columns and a future column, the oldest first, with up to five groups whose
// footers total the columns and give each column's share of the whole. The rows are worked out
// before the run into a client-side recordset (back-dating, the bounds on the overdue total, the
// order), which is the report's data source; no query runs while the pages print.

#include <memory>
#include <string>

#include "core/Designer.h"
#include "core/host/BusinessObjects.h"
#include "core/host/Recordset.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Date.h"
#include "reports/receivables/AgeingPeriods.h"
#include "reports/receivables/LedgerSide.h"
#include "reports/receivables/ardscrLedgerSub.h"

namespace trellin {

// The address a statement of the party's account goes to by e-mail: the detail of the first
// contact method of kind "EmailAR" that has one, else the detail of the first method of kind
// "Email"; "" when neither is there.
[[nodiscard]] std::string AccountsEmail(const OtherParty& party);

class ardscrAgedOverdueReport : public Designer {
 public:
  ardscrAgedOverdueReport() : Designer("ardscrAgedOverdueReport") {}

  // Compares the key with "AgedOverdueAR": that is the receivables side, any other key payables.
  void RefreshParameters(std::string& ReportName) override;
  void RefreshDataColumns() override;

  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void OnBeforePrint(Section& section) override;
  void ActiveReport_ReportEnd() override;

  // The SQL routine: reads the parameters, works out the period ends, builds the query and the
  // heading and defines the groups on the host. Needs a host with the parameters declared;
  // throws std::invalid_argument when Date As At is no date or Frequency is not one of the list,
  // and what the range builder throws for a list it cannot read.
  void BuildSQL();
  // Runs the query and works its rows out into the report's recordset: the figures, back-dating,
  // the bounds, the order. After BuildSQL; throws DatabaseError for a query that fails.
  void BuildRows();

  // After BuildSQL.
  [[nodiscard]] const std::string& SQL() const { return sql_; }
  // The heading lines, parted by CR LF.
  [[nodiscard]] const std::string& Heading() const { return heading_; }
  [[nodiscard]] const AgeingEnds& Ends() const { return ends_; }
  [[nodiscard]] const std::string& SortKeys() const { return sort_; }
  // After BuildRows: one row a party (and group), the query's fields and TotalOverdue.
  [[nodiscard]] const std::shared_ptr<Recordset>& Rows() const { return rows_; }
  // Every query the run sends, as it sends it (the main query and the back-dating queries).
  void SetQueryLog(QueryLog log) { query_log_ = std::move(log); }

 private:
  // --- the query (ardscrAgedOverdueReport_sql.cpp) ---
  void AddHeadings();
  void AddFilters(std::string& where);
  void AddGroupings(std::string& select, std::string& group_by);
  // The five column sub-queries, in the date mode the parameters ask for.
  [[nodiscard]] std::string ColumnsSQL() const;
  [[nodiscard]] std::string LastPaymentSQL() const;
  [[nodiscard]] std::string DateText(Date date) const;

  // --- the rows (ardscrAgedOverdueReport.cpp) ---
  // Adds to `figures` what allocations made after the as-at date took from the party's
  // documents; returns whether any did.
  bool BackDate(const std::string& party, Currency (&figures)[5]);
  [[nodiscard]] std::shared_ptr<Recordset> Run(const std::string& sql);
  void LayOutColumns();
  // Points the row's total at the party's ledger.
  void LinkBalance(Section& detail);
  void FooterFormat(Section& section, const std::string& prefix);

  bool debtor_ = true;
  bool summary_ = false;
  bool back_date_ = false;
  bool show_nil_ = false;
  bool apply_transaction_date_ = false;
  bool show_email_ = false;
  std::string frequency_;
  Date as_at_;
  AgeingEnds ends_{};
  Currency overdue_from_;
  Currency overdue_to_;
  std::string column_filter_;  // X: narrows the column sub-queries to the row's group
  std::string sql_;
  std::string sort_;
  std::string heading_;
  std::shared_ptr<Recordset> rows_;
  std::unique_ptr<BusinessObjects> objects_;
  QueryLog query_log_;
};

[[nodiscard]] DesignerPtr CreateardscrAgedOverdueReport();

}  // namespace trellin
