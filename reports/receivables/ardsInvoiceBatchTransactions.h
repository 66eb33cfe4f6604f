#pragma once
// "SavedTransactionListAR", "SavedTransactionListAP", "InvoiceCommitBatch": the documents saved
// and not yet posted, from the unposted batches: a line a row, grouped by batch, party and
// document (the document's heading gives its reference, type, date and order number), with the
// tax, value and total of the lines summed per document, party, batch and report. Credit notes
// show turned round. The saved lists take the side of their key; the commit list takes one batch
// and warns, under it, of lines with no account (no item on file) or no tax category on file.
// A column list on the list base.

#include <map>

#include "core/ListDesigner.h"

namespace trellin {

class ardsInvoiceBatchTransactions : public ListDesigner {
 public:
  ardsInvoiceBatchTransactions();

  // The quantities and prices are not added up.
  void RefreshDataColumns() override;
  // Starts the list, then counts each batch's lines with no account or tax category.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  // The line's figures, a credit's turned round.
  void ActiveReport_FetchData(bool& eof) override;
  // The document's heading, and the commit list's warning under its batch.
  void OnFormat(Section& section) override;

 protected:
  // The side's range of batch types; for the commit list with no batch picked, the latest.
  [[nodiscard]] std::string ExtraCondition() override;

 private:
  struct Missing {
    long account = 0;
    long tax = 0;
  };
  std::map<long, Missing> missing_;  // by acBatchSId
};

[[nodiscard]] DesignerPtr CreateardsInvoiceBatchTransactions();

// "Lines without an account: 2. Lines without a tax category: 1."; "" when both are 0.
[[nodiscard]] std::string MissingCodesWarning(long no_account, long no_tax);

}  // namespace trellin
