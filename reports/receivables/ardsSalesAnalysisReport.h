#pragma once
// Sales analysis ("SalesAnalysisAR", "ItemSalesAnalysis", "JobAnalysis", "ItemJobAnalysis"):
// quantity, sales, discount, net, costs and gross profit of customers, items, jobs or items of
// jobs over one period, from one aggregate query over the transaction lines into a client-side
// recordset sorted on the client. Up to five groups, whose footers work the gross profit
// percentage out of their own sums; with ShowTransactions (out of summary) each row's lines print
// under it (ardsSalesAnalysisReportTransSub).
//
// ardsSalesAnalysisReport_sql.cpp holds the parameters, the columns and the query;
// ardsSalesAnalysisReport.cpp the run.

#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/Designer.h"
#include "core/host/Recordset.h"
#include "core/kvReportUtilities.h"
#include "reports/receivables/AnalysisFigures.h"
#include "reports/receivables/ardsSalesAnalysisReportTransSub.h"

namespace trellin {

// What the rows of a key are.
enum class AnalysisRows { Parties, Items, Jobs, ItemsOfJobs };

// One key of an analysis designer.
struct AnalysisKey {
  std::string_view key;
  AnalysisRows rows;
  std::string_view identity;  // the row's fields, for SELECT and GROUP BY
  std::string_view word;      // the heading's first word
  std::string_view key_field;
  std::string_view name_field;
  std::string_view orders;
  std::string_view groupings;
  std::string_view party;  // the other party under an item row ("Customer")
};

class ardsSalesAnalysisReport : public Designer {
 public:
  ardsSalesAnalysisReport() : Designer("ardsSalesAnalysisReport") {}

  // Throws std::invalid_argument for a key the designer does not serve.
  void RefreshParameters(std::string& ReportName) override;
  void RefreshDataColumns() override;

  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void OnBeforePrint(Section& section) override;
  void ActiveReport_ReportEnd() override;

  // The SQL routine: reads the options, builds the query, the heading and the groups. Needs a
  // host with the parameters declared; throws what the range builder throws for a list it
  // cannot read.
  void BuildSQL();

  // After BuildSQL.
  [[nodiscard]] const std::string& SQL() const { return sql_; }
  // The heading lines, parted by CR LF.
  [[nodiscard]] const std::string& Heading() const { return heading_; }
  [[nodiscard]] const std::string& SortKeys() const { return sort_; }
  // The lines' query of the current row (its key and groups), for the sub-report.
  [[nodiscard]] std::string LinesSQL();
  void SetQueryLog(QueryLog log) { query_log_ = std::move(log); }

 protected:
  // For a designer that serves the other side of the ledger with the same run: its name, whether
  // its rows have costs and gross profit, and the sign its stored values are summed with.
  ardsSalesAnalysisReport(const std::string& name, bool gross_profit, std::string_view sign)
      : Designer(name), gross_profit_(gross_profit), sign_(sign) {}

  // What a side changes: its keys, its client orders, the heading lines of its own, its list
  // filters, which lines count, its figures, its own groupings, the lines' order and the
  // sub-report that prints them.
  [[nodiscard]] virtual const AnalysisKey& KeyOf(const std::string& key) const;
  [[nodiscard]] virtual std::span<const AnalysisOrder> Orders() const;
  virtual void AddSideHeadings();
  virtual void AddFilters(std::string& where);
  virtual void AddLineTypes(std::string& where);
  [[nodiscard]] virtual std::string FiguresSQL(bool per_line) const;
  [[nodiscard]] virtual bool OwnGrouping(ChosenGrouping& grouping, const std::string& base) const;
  [[nodiscard]] virtual std::string LinesOrder() const;
  [[nodiscard]] virtual std::shared_ptr<ardsSalesAnalysisReportTransSub> MakeLines() const;

  // The head every key declares: order, summary, period (dates to `current`), rounding, lines,
  // address and as-at date.
  void AddCommonParameters(const AnalysisKey& key, const std::string& current, bool costs);
  // A data column of the key's layout; "Round" columns take the decimals of `decimals`.
  void AddColumn(std::string_view name, std::string_view field, int kind, float width,
                 bool totalled, std::string_view format, bool shown, int decimals);
  // The period's date clause on the lines ("ALL" leaves both ends open).
  void AddPeriod(std::string& where);

  AnalysisRows rows_kind_ = AnalysisRows::Parties;
  std::string heading_;

 private:
  // --- the query (ardsSalesAnalysisReport_sql.cpp) ---
  void ReadOptions();
  void AddHeadings();
  void AddGroupings(std::string& select, std::string& group_by);
  [[nodiscard]] std::string FromSQL() const;
  [[nodiscard]] bool JobKey() const {
    return rows_kind_ == AnalysisRows::Jobs || rows_kind_ == AnalysisRows::ItemsOfJobs;
  }
  [[nodiscard]] bool ItemKey() const {
    return rows_kind_ == AnalysisRows::Items || rows_kind_ == AnalysisRows::ItemsOfJobs;
  }

  // --- the run (ardsSalesAnalysisReport.cpp) ---
  void LayOutColumns();
  void AttachLines();
  // The sub-report's filter: the row's key and every group level above it.
  [[nodiscard]] std::string RowFilter();
  void FooterFormat(Section& section);

  bool gross_profit_ = true;
  std::string_view sign_ = "-";
  bool summary_ = false;
  bool show_transactions_ = false;
  bool include_costs_ = true;
  bool include_disbursements_ = false;
  bool costs_plus_disbursements_ = false;
  bool total_costs_ = false;
  bool include_sale_price_ = false;
  bool exclude_inactive_ = false;
  bool split_by_address_ = false;
  bool tax_inclusive_ = false;
  int decimals_ = 2;
  std::string key_field_;
  std::string where_;
  std::string sql_;
  std::string sort_;
  // The group levels defined, outermost first: the recordset's field and the grouping's name.
  struct Level {
    std::string key_field;
    std::string name;
  };
  std::vector<Level> levels_;
  std::shared_ptr<Recordset> rows_;
  std::shared_ptr<ardsSalesAnalysisReportTransSub> sub_;
  QueryLog query_log_;
};

[[nodiscard]] DesignerPtr CreateardsSalesAnalysisReport();

}  // namespace trellin
