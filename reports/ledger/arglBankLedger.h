#pragma once
// "BankLedger": a page per bank with its asset account's lines in the dates, each with the
// running balance from the account's opening balance, and the closing balance. A fixed layout on
// the list base's parameters and query.

#include <map>
#include <string>

#include "core/ListDesigner.h"
#include "platform/runtime/Currency.h"

namespace trellin {

class arglBankLedger : public ListDesigner {
 public:
  arglBankLedger();

  // Reads every bank account's balance before DatedFrom with one grouped query, then starts.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  // Adds the row's running balance: the bank's opening at its first row, then each value.
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;

 private:
  [[nodiscard]] Currency OpeningOf(const std::string& account) const;

  std::map<std::string, Currency, std::less<>> openings_;  // by account, upper-cased
  std::map<std::string, Currency, std::less<>> closings_;  // by bank, as the rows ran
  std::string fetched_bank_;                               // the bank of the last row fetched
  std::string printing_bank_;                              // the bank whose header printed last
  Currency balance_;
};

[[nodiscard]] DesignerPtr CreatearglBankLedger();

}  // namespace trellin
