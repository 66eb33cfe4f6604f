#pragma once
// "BatchTransactions": the posted transactions of one side, a group per batch, with their net,
// tax and gross values (what grows the party's balance shows positive) totalled per batch and
// for the report. A column list on the list base.

#include <map>

#include "core/ListDesigner.h"
#include "platform/runtime/Currency.h"

namespace trellin {

class ardsBatchTransactions : public ListDesigner {
 public:
  ardsBatchTransactions();

  // Starts the list, then reads the lines' tax of every transaction listed.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  // The side's sign turned onto the stored values; net is gross less the lines' tax.
  void ActiveReport_FetchData(bool& eof) override;

 protected:
  // The side's range of transaction types, from `Ledger`.
  [[nodiscard]] std::string ExtraCondition() override;

 private:
  std::map<long, Currency> tax_;  // by transaction
};

[[nodiscard]] DesignerPtr CreateardsBatchTransactions();

}  // namespace trellin
