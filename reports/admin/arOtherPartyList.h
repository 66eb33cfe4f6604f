#pragma once
// "CustomerList", "SupplierList", "OtherPartyList": the parties, one line each, with their postal
// address, first phone and e-mail, classification and terms, and the balance as at DateAsAt. A
// column list on the list base; the key picks the side (receivables, payables, or both for other
// parties).

#include <map>
#include <string>

#include "core/ListDesigner.h"
#include "platform/runtime/Currency.h"

namespace trellin {

// The orders of the party lists and cards: by code, name or cross-reference, each then by code.
inline constexpr ListOrder kPartyOrders[] = {
    {"Code", "OtherParty.OtherPartyId"},
    {"Name", "OtherParty.Name,OtherParty.OtherPartyId"},
    {"X Ref", "OtherParty.XRefId,OtherParty.OtherPartyId"},
};

// The name of a party's credit status 1 to 5 ("None", "Good", "Caution", "Bad", "Adverse"); ""
// for anything else.
[[nodiscard]] std::string CreditStatusName(const Variant& status);

class arOtherPartyList : public ListDesigner {
 public:
  arOtherPartyList();

  // Adds DateAsAt, defaulting to the side's current date.
  void RefreshParameters(std::string& ReportName) override;
  // Credit limits are not totalled; the address column holds several lines.
  void RefreshDataColumns() override;
  // Reads every party's balance on each side the key shows as at DateAsAt, with one grouped
  // query a side, then starts the list. Throws std::invalid_argument for a DateAsAt that is no
  // date.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;

 protected:
  // Addresses keeps the parties that have an address of a kind picked.
  [[nodiscard]] std::string ExtraCondition() override;

 private:
  using Balances = std::map<std::string, Currency, std::less<>>;  // by party, upper-cased
  [[nodiscard]] static Balances ReadBalances(bool receivables, const Date& as_at);
  // The first phone and e-mail of each party, by party upper-cased.
  using Methods = std::map<std::string, std::pair<std::string, std::string>, std::less<>>;
  [[nodiscard]] static Methods ReadMethods();

  Balances receivable_;
  Balances payable_;
  Methods methods_;
};

[[nodiscard]] DesignerPtr CreatearOtherPartyList();

}  // namespace trellin
