#pragma once
// "ContactDetailsList": a card per contact: name and position, the party with its postal address
// and phone, the contact's own phone, mobile and e-mail, and with ShowNotes the notes that name
// the contact in the dates (the sub-report arContactDetailNotesSub). A fixed layout on the list
// base.

#include <memory>
#include <string>

#include "core/ListDesigner.h"
#include "platform/runtime/Variant.h"

namespace trellin {

class arContactDetailNotesSub;

class arContactDetailList : public ListDesigner {
 public:
  arContactDetailList();

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;

 protected:
  // Cards are not shaded by turns: a rule parts them.
  void Detail_Format() override {}

 private:
  std::shared_ptr<arContactDetailNotesSub> notes_;
};

// The notes of one contact between two dates (either may be Null), newest first.
class arContactDetailNotesSub : public Designer {
 public:
  arContactDetailNotesSub() : Designer("arContactDetailNotesSub") {}

  std::int64_t ContactId = 0;
  Variant DateFrom = Variant::Null();
  Variant DateTo = Variant::Null();

  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;
  // Throws what the date conversion throws.
  [[nodiscard]] std::string SQL() const;
};

[[nodiscard]] DesignerPtr CreatearContactDetailList();

}  // namespace trellin
