#pragma once
// What the runs that print one document per party share: the page furniture that numbers each
// document's pages from 1 and prints its stub (the page footer's controls tagged "v") on its last
// page only, a message that takes no room when empty, and the branch's letterhead block. Used by
// the statements ("StatementAR"), the remittance advices ("RemittanceAP") and the receipts and
// payments ("PaymentReceipt").

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "core/host/BusinessObjects.h"
#include "core/host/Control.h"
#include "core/host/Recordset.h"
#include "core/host/Section.h"

namespace trellin {

// The pages of one document after another in a run. The designer calls Start where a document's
// heading formats, End where its group footer formats, and FooterOfPage from its page footer.
class DocumentPages {
 public:
  // A document begins: page 1, not its last.
  void Start() {
    number_ = 1;
    last_page_ = false;
  }
  // The document's group footer has formatted: the page being laid out is its last.
  void End() { last_page_ = true; }

  // At the page footer: on a document's last page shows the controls of `footer` tagged "v" and
  // returns true; on a page the document runs over from, counts the page on, hides them and
  // returns false.
  bool FooterOfPage(Section& footer);

  [[nodiscard]] std::int16_t Number() const { return number_; }
  // "Page " and the number.
  [[nodiscard]] std::string PageText() const { return "Page " + std::to_string(number_); }

 private:
  std::int16_t number_ = 1;
  bool last_page_ = false;
};

// Shows or hides every control of `section` whose Tag is "v", the stub's.
void SetStubVisible(Section& section, bool visible);

// Puts `text` into `message`; an empty text leaves the control empty, of no height and hidden, so
// that it takes no room.
void SetMessage(Control& message, const std::string& text);

// The party's "Postal" address as its block prints it: the street's lines, then city, state,
// post code and country, one a line (CR LF), blanks left out; "" when the party has none. One
// query through `run`, which sends it and may log it.
[[nodiscard]] std::string PostalAddressSQL(const std::string& party);
[[nodiscard]] std::string PostalAddressOf(
    const std::string& party,
    const std::function<std::shared_ptr<Recordset>(const std::string&)>& run);

// The branch's letterhead, parted by CR LF: its name, address lines, details ("Phone    ",
// "Facsimile  ", "Email    " and those present) and the stub's footer line (the name and address
// joined by ", ", then on AU companies two line breaks, "ABN: " and `tax_number`, when there is
// one). The documents print the details in two columns: `contact_methods` the captions "Phone:",
// "Facsimile:" and "Email:" (or "Website:" for an address starting "www", any case), one a line
// for those present, and `contact_details` their values on the same lines. No branch leaves every
// text empty.
struct BranchBlock {
  std::string name;
  std::string address;
  std::string details;
  std::string footer;
  std::string contact_methods;
  std::string contact_details;
};
[[nodiscard]] BranchBlock BranchBlockOf(const Branch* branch, bool australian,
                                        const std::string& tax_number);

}  // namespace trellin
