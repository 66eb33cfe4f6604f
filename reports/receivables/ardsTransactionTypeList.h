#pragma once
// "TransactionTypeList": the kinds of document, each with its class (the stored `Type` and its
// name) and the message a document of the type may print. A column list on the list base.

#include "core/ListDesigner.h"

namespace trellin {

class ardsTransactionTypeList : public ListDesigner {
 public:
  ardsTransactionTypeList();

  // Lets the message grow to its lines, then starts the list.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
};

[[nodiscard]] DesignerPtr CreateardsTransactionTypeList();

}  // namespace trellin
