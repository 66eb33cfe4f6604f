#pragma once
// "BankReconciliation": for each bank the state of its latest statement page: the bank's details,
// the page's figures, the reconciled lines and then the unreconciled ones with a running balance
// from the statement's opening, the closing balance and the variance. The report is unbound: the
// business layer's reconciliation object gives the lines, and the report lays them out.

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/Designer.h"
#include "core/host/BusinessObjects.h"
#include "reports/ledger/arglBankReconciliationSub.h"

namespace trellin {

class arglBankReconciliation : public Designer {
 public:
  arglBankReconciliation() : Designer("arglBankReconciliation") {}

  void RefreshParameters(std::string& ReportName) override;

  // Reads the banks the parameters pick and each one's reconciliation, and sets the columns.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void OnBeforePrint(Section& section) override;
  void ActiveReport_ReportEnd() override;

  // The bank query as built for the run, and the run's description.
  [[nodiscard]] const std::string& SQL() const { return sql_; }
  [[nodiscard]] const std::string& Description() const { return description_; }

 private:
  void BuildSQL();
  void ScaleColumns(double scale);
  void ghBank_Format();
  void ghChecked_Format();
  void Detail_Format();
  [[nodiscard]] const BankReconciliation* CurrentBank() const;

  std::string sql_;
  std::string description_;
  bool full_details_ = false;
  std::unique_ptr<BusinessObjects> objects_;
  std::vector<BankReconciliation> banks_;
  std::size_t bank_ = 0;  // the bank of the next row
  std::size_t line_ = 0;  // its next line
  Currency balance_;
  bool empty_row_ = false;  // the current row is a bank's without lines
  std::shared_ptr<arglBankReconciliationSub> sub_;
};

[[nodiscard]] DesignerPtr CreatearglBankReconciliation();

}  // namespace trellin
