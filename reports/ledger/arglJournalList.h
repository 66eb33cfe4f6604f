#pragma once
// "JournalList": the ledger's entries, a block each (source, reference and date) with its lines
// and their totals, "Out of balance" under an entry whose debits differ from its credits. A
// fixed layout on the list base's parameters and query.

#include <map>
#include <string>

#include "core/ListDesigner.h"
#include "platform/runtime/Currency.h"

namespace trellin {

class arglJournalList : public ListDesigner {
 public:
  arglJournalList();

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  // Gives the row its entry's key and adds its value to the entry's balance.
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;

 private:
  std::map<std::string, Currency> balances_;  // debits less credits by entry key
  bool check_balance_ = true;                 // false when Accounts shows only part of an entry
};

[[nodiscard]] DesignerPtr CreatearglJournalList();

}  // namespace trellin
