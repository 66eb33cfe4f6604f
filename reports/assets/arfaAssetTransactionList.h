#pragma once
// "AssetBatchTransactionList": the asset movements of each batch, a block per reference (a
// year's depreciation run "DEP2024/25", a disposal "DSP" and the asset), each line with its
// asset, date, kind and comment and its value on each book, totalled per batch and for the
// report. A list on the list base with a grouping always made on the reference.

#include <string>

#include "core/ListDesigner.h"

namespace trellin {

class arfaAssetTransactionList : public ListDesigner {
 public:
  arfaAssetTransactionList();

  void ActiveReport_DataInitialize() override;
  // The row's kind by its stored type.
  void ActiveReport_FetchData(bool& eof) override;
};

[[nodiscard]] DesignerPtr CreatearfaAssetTransactionList();

}  // namespace trellin
