#pragma once
// "DocumentList": the documents attached to notes on parties, items, jobs and assets, one line
// each with its owner, the note's date and subject and the employee. A column list on the list
// base over the four logs.

#include "core/ListDesigner.h"

namespace trellin {

class arDocumentList : public ListDesigner {
 public:
  arDocumentList();
};

[[nodiscard]] DesignerPtr CreatearDocumentList();

}  // namespace trellin
