#pragma once
// Sales summary ("SalesSummaryAR", "ItemSalesSummary"): each customer's or item's sales, costs
// and gross profit in two periods side by side, from one aggregate query whose WHERE spans both
// periods and whose columns each sum their own period, sorted on the client. Up to five groups,
// each footer totalling the columns.

#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "core/Designer.h"
#include "core/host/Recordset.h"
#include "core/kvReportUtilities.h"
#include "reports/receivables/AnalysisFigures.h"
#include "reports/receivables/ardscrLedgerSub.h"

namespace trellin {

class ardsSalesSummaryReport : public Designer {
 public:
  ardsSalesSummaryReport() : Designer("ardsSalesSummaryReport") {}

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

  // The SQL routine: reads the options and both periods, builds the query, the heading and the
  // groups. Needs a host with the parameters declared; throws what the range builder throws.
  void BuildSQL();
  [[nodiscard]] const std::string& SQL() const { return sql_; }
  [[nodiscard]] const std::string& Heading() const { return heading_; }
  void SetQueryLog(QueryLog log) { query_log_ = std::move(log); }

 protected:
  // For a designer that serves the other side of the ledger with the same run: its name and
  // whether its rows have costs and gross profit.
  ardsSalesSummaryReport(const std::string& name, bool gross_profit)
      : Designer(name), gross_profit_(gross_profit) {}

  // What a side changes: which key has party rows, the heading's first word, the client
  // orders, its filters and which lines count, its heading lines, its own groupings, and its
  // figures (each a column name and its expression, summed with `FigureSign()`).
  [[nodiscard]] virtual bool PartiesKey(const std::string& key) const;
  [[nodiscard]] virtual std::string PartyWord() const { return "Customers "; }
  [[nodiscard]] virtual std::span<const AnalysisOrder> Orders() const;
  virtual void AddSideHeadings();
  virtual void AddSideFilters(std::string& where);
  [[nodiscard]] virtual bool OwnGrouping(ChosenGrouping& grouping, const std::string& base) const;
  [[nodiscard]] virtual std::vector<std::pair<std::string, std::string>> Figures() const;
  [[nodiscard]] virtual std::string FigureSign() const { return "-"; }

  // The two periods' parameters, their dates to `current`.
  void AddPeriodParameters(const std::string& current);
  // A column of the layout: "Round" and totalled for figures.
  void AddColumn(const std::string& name, const std::string& field, int kind, float width,
                 const std::string& caption, bool totalled, bool shown);
  // The period's word in the captions: "PTD" for Custom.
  [[nodiscard]] std::string PeriodWord(int period) const;

  bool parties_ = true;
  bool tax_inclusive_ = false;
  std::string heading_;

 private:
  // The date clause of period 1 or 2 on the lines' process date; "" for "ALL".
  [[nodiscard]] std::string PeriodClause(int period) const;

  bool gross_profit_ = true;
  bool include_costs_ = true;
  bool split_by_address_ = false;
  int decimals_ = 2;
  std::string key_field_;
  std::string sql_;
  std::string sort_;
  std::shared_ptr<Recordset> rows_;
  QueryLog query_log_;
};

[[nodiscard]] DesignerPtr CreateardsSalesSummaryReport();

}  // namespace trellin
