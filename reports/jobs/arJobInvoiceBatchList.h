#pragma once
// "JobInvoiceBatchList": a line per job invoice in the job invoice batches (batch type 42), open
// or saved, a block per batch: batch, when it was made, job, its description, customer,
// reference, date, and the invoice's charges, tax and total, totalled per batch and for the
// report. A list on the list base with the grouping on the batch always made.

#include <map>
#include <string>

#include "core/ListDesigner.h"
#include "platform/runtime/Currency.h"

namespace trellin {

class arJobInvoiceBatchList : public ListDesigner {
 public:
  arJobInvoiceBatchList();

  // Reads the charges and tax of every job invoice in a batch once.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  // The invoice's charges, tax and total from its lines.
  void ActiveReport_FetchData(bool& eof) override;

 private:
  struct Sums {
    Currency charges;
    Currency tax;
  };
  std::map<long long, Sums> sums_;  // by acBatchTransactionId
};

[[nodiscard]] DesignerPtr CreatearJobInvoiceBatchList();

}  // namespace trellin
