#pragma once
// "SourceList": the ledger's sources, and with ShowActivity what each posted in the period. A
// column list on the list base.

#include <map>
#include <string>

#include "core/ListDesigner.h"

namespace trellin {

class arglSourceList : public ListDesigner {
 public:
  arglSourceList();

  // Shows the activity columns with ShowActivity, reads every source's activity in the period
  // with one grouped query, then starts the list.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;

 private:
  struct Activity {
    Variant lines, debits, credits, first, last;
  };
  std::map<std::string, Activity, std::less<>> activity_;  // by source code, upper-cased
};

[[nodiscard]] DesignerPtr CreatearglSourceList();

}  // namespace trellin
