#pragma once
// "ContactList": the people at the parties, one line each, by name or by party, optionally
// grouped by "Other Party". A column list on the list base.

#include "core/ListDesigner.h"

namespace trellin {

class arContactList : public ListDesigner {
 public:
  arContactList();
};

[[nodiscard]] DesignerPtr CreatearContactList();

}  // namespace trellin
