// The texts of a customer's heading on its statement, from the business objects.

#include <vector>

#include "platform/runtime/Strings.h"
#include "reports/receivables/ardsStatement.h"

namespace trellin {

namespace {

constexpr const char* kLineBreak = "\r\n";

}  // namespace

StatementHeading StatementHeadingOf(const OtherParty* party, const Branch* branch, bool australian,
                                    const std::string& date_text) {
  StatementHeading heading;
  const std::string gap = std::string(kLineBreak) + kLineBreak;
  if (party != nullptr) {
    std::vector<std::string> lines{party->name};
    if (const PartyAddress* postal = party->Address("Postal")) {
      lines.insert(lines.end(), postal->lines.begin(), postal->lines.end());
    }
    heading.address = Join(lines, kLineBreak);
    if (australian && !party->tax_number.empty())
      heading.address += gap + "ABN: " + party->tax_number;
    heading.address += gap;
  }
  heading.address += "Statement for your Account " + date_text;
  if (branch == nullptr) return heading;

  heading.branch_name = branch->name;
  heading.branch_address = Join(branch->address_lines, kLineBreak);
  heading.branch_details = "Phone    " + branch->phone;
  if (!branch->fax.empty()) heading.branch_details += kLineBreak + ("Facsimile  " + branch->fax);
  if (!branch->email.empty()) heading.branch_details += kLineBreak + ("Email    " + branch->email);
  std::vector<std::string> footer{branch->name};
  footer.insert(footer.end(), branch->address_lines.begin(), branch->address_lines.end());
  heading.branch_footer = Join(footer, ", ");
  if (australian && !branch->tax_number.empty()) {
    heading.branch_footer += gap + "ABN: " + branch->tax_number;
  }
  return heading;
}

}  // namespace trellin
