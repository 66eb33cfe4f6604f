#pragma once
// "OtherPartyDetails": a card per party: its identity, every address and contact method, its
// contacts (ShowContacts), its classification, terms and credit on each side it trades on, its
// balance on each side (current, overdue, total) as at DateAsAt, and with ShowTransactions its
// documents in the dates (the sub-report arOtherPartyDetailTransSub). A fixed layout on the list
// base.

#include <memory>
#include <string>

#include "core/ListDesigner.h"
#include "platform/runtime/Variant.h"

namespace trellin {

class arOtherPartyDetailTransSub;

class arOtherPartyDetail : public ListDesigner {
 public:
  arOtherPartyDetail();

  // Adds DateAsAt (the present moment by default).
  void RefreshParameters(std::string& ReportName) override;
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  // Fills the card's texts from the party's addresses, methods, contacts and documents. Throws
  // what the queries throw.
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;

 protected:
  // Cards are not shaded by turns; a side the party does not trade on prints no line.
  void Detail_Format() override;

 private:
  std::shared_ptr<arOtherPartyDetailTransSub> transactions_;
  Variant as_at_;
};

// One party's documents between two dates (either may be Null) on both sides, oldest first, their
// values turned as each side's ledger shows them: what grows the balance is positive.
class arOtherPartyDetailTransSub : public Designer {
 public:
  arOtherPartyDetailTransSub() : Designer("arOtherPartyDetailTransSub") {}

  std::string OtherPartyId;
  Variant DateFrom = Variant::Null();
  Variant DateTo = Variant::Null();

  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;
  // Throws what the date conversion throws.
  [[nodiscard]] std::string SQL() const;
};

[[nodiscard]] DesignerPtr CreatearOtherPartyDetail();

}  // namespace trellin
