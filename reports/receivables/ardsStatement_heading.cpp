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
  const BranchBlock block =
      BranchBlockOf(branch, australian, branch == nullptr ? std::string() : branch->tax_number);
  heading.branch_name = block.name;
  heading.branch_address = block.address;
  heading.branch_details = block.details;
  heading.branch_footer = block.footer;
  return heading;
}

}  // namespace trellin
