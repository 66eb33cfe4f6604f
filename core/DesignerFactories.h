#pragma once
// The factories of the built designers, one per designer class, named Create + the class
// ("CreatearCustomerTypeList"). Each is defined in its designer's unit under reports/ and named
// in that designer's rows of the catalogue; nothing registers itself.

#include "core/Designer.h"

namespace trellin {

// reports/ledger
DesignerPtr CreatearglAccountReports();

// reports/admin
DesignerPtr CreatearAdminBase();
DesignerPtr CreatearCustomerTypeList();
DesignerPtr CreatearDepartmentList();
DesignerPtr CreatearPostcodeList();

}  // namespace trellin
