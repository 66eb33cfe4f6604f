#pragma once
// Sales summary ("SalesSummaryAR", "ItemSalesSummary"): each customer's or item's sales, costs
// and gross profit in two periods side by side, from one aggregate query whose WHERE spans both
// periods and whose columns each sum their own period, sorted on the client. Up to five groups,
// each footer totalling the columns.

#include <memory>
#include <string>

#include "core/Designer.h"
#include "core/host/Recordset.h"
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

 private:
  // The date clause of period 1 or 2 on the lines' process date; "" for "ALL".
  [[nodiscard]] std::string PeriodClause(int period) const;
  // The period's word in the captions: "PTD" for Custom.
  [[nodiscard]] std::string PeriodWord(int period) const;

  bool parties_ = true;
  bool include_costs_ = true;
  bool tax_inclusive_ = false;
  bool split_by_address_ = false;
  int decimals_ = 2;
  std::string key_field_;
  std::string sql_;
  std::string sort_;
  std::string heading_;
  std::shared_ptr<Recordset> rows_;
  QueryLog query_log_;
};

[[nodiscard]] DesignerPtr CreateardsSalesSummaryReport();

}  // namespace trellin
