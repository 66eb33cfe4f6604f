#pragma once
// "TaxDetailReport": the ledger lines behind a tax return, sales first and then expenses, by tax
// category, each with its value including tax, its tax and its rate; a total a category (with the
// category's rate) and a side, and the net tax of the period. With `ExceptionsOnly` only the lines
// that explain a difference between the return's two methods; with `Summary` only the totals. The
// report is unbound: the business layer's tax detail object prepares the lines.

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "core/Designer.h"
#include "core/host/BusinessObjects.h"
#include "reports/ledger/TaxReturn.h"

namespace trellin {

class arglTaxDetailReport : public Designer {
 public:
  arglTaxDetailReport() : Designer("arglTaxDetailReport") {}

  void RefreshParameters(std::string& ReportName) override;
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void OnBeforePrint(Section& section) override;
  void ActiveReport_ReportEnd() override;

  [[nodiscard]] const std::string& SQL() const { return groups_.SQL; }
  [[nodiscard]] const std::string& Description() const { return description_; }

 private:
  struct Row {
    std::size_t group = 0;
    TaxDetailLine line;
  };
  // A category's sums in one group and side: value with tax, and tax.
  using TypeKey = std::tuple<std::size_t, std::string, std::string>;
  struct TypeTotal {
    Currency value_incl;
    Currency tax;
  };

  void ghTaxAnalysis_Format();
  void ghType_Format();
  void gfType_Format();

  TaxGroups groups_;
  std::vector<Row> rows_;
  std::map<TypeKey, TypeTotal> type_totals_;
  std::size_t next_ = 0;
  bool summary_ = false;
  std::string description_;
  std::unique_ptr<BusinessObjects> objects_;
};

[[nodiscard]] DesignerPtr CreatearglTaxDetailReport();

}  // namespace trellin
