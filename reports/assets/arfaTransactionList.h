#pragma once
// "AssetTransactionList": the asset movements dated in the period that the lists and kinds keep,
// each with its asset, kind, reference and comment, and its value on each book (totalled). A
// column list on the list base.

#include <string>

#include "core/ListDesigner.h"

namespace trellin {

class arfaTransactionList : public ListDesigner {
 public:
  arfaTransactionList();

  void ActiveReport_DataInitialize() override;
  // The row's kind by its stored type.
  void ActiveReport_FetchData(bool& eof) override;
};

[[nodiscard]] DesignerPtr CreatearfaTransactionList();

}  // namespace trellin
