// The page furniture and letterhead of the one-document-per-party runs.

#include "reports/receivables/PartyDocument.h"

#include <vector>

#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

constexpr const char* kStubTag = "v";
constexpr const char* kLineBreak = "\r\n";

}  // namespace

bool DocumentPages::FooterOfPage(Section& footer) {
  if (last_page_) {
    SetStubVisible(footer, true);
    return true;
  }
  ++number_;
  SetStubVisible(footer, false);
  return false;
}

void SetStubVisible(Section& section, bool visible) {
  for (Control& control : section.Controls()) {
    if (control.Tag() == kStubTag) control.SetVisible(visible);
  }
}

void SetMessage(Control& message, const std::string& text) {
  if (!text.empty()) {
    message.SetText(text);
    return;
  }
  message.SetText("");
  message.SetHeight(0);
  message.SetVisible(false);
}

BranchBlock BranchBlockOf(const Branch* branch, bool australian, const std::string& tax_number) {
  BranchBlock block;
  if (branch == nullptr) return block;
  block.name = branch->name;
  block.address = Join(branch->address_lines, kLineBreak);
  block.details = "Phone    " + branch->phone;
  if (!branch->fax.empty()) block.details += kLineBreak + ("Facsimile  " + branch->fax);
  if (!branch->email.empty()) block.details += kLineBreak + ("Email    " + branch->email);
  std::vector<std::string> methods;
  std::vector<std::string> details;
  const bool web = UCase(branch->email).rfind("WWW", 0) == 0;
  for (auto [caption, value] : {std::pair{"Phone:", &branch->phone},
                                {"Facsimile:", &branch->fax},
                                {web ? "Website:" : "Email:", &branch->email}}) {
    if (value->empty()) continue;
    methods.emplace_back(caption);
    details.push_back(*value);
  }
  block.contact_methods = Join(methods, kLineBreak);
  block.contact_details = Join(details, kLineBreak);
  std::vector<std::string> footer{branch->name};
  footer.insert(footer.end(), branch->address_lines.begin(), branch->address_lines.end());
  block.footer = Join(footer, ", ");
  if (australian && !tax_number.empty()) {
    block.footer += std::string(kLineBreak) + kLineBreak + "ABN: " + tax_number;
  }
  return block;
}

}  // namespace trellin
