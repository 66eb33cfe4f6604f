// The page furniture and letterhead of the one-document-per-party runs.

#include "reports/receivables/PartyDocument.h"

#include <vector>

#include "core/host/Database.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

constexpr const char* kStubTag = "v";
constexpr const char* kLineBreak = "\r\n";

std::string AddressPart(Recordset& rs, const char* name) {
  const Variant& value = rs.Value(name);
  return value.IsNull() || value.IsEmpty() ? std::string() : Trim(value.Text());
}

}  // namespace

std::string PostalAddressSQL(const std::string& party) {
  return "SELECT AddressId,Address,City,State,PostCode,Country FROM OtherPartyAddress WHERE "
         "OtherPartyId=" +
         Database::SQLString(party) + " AND AddressId='Postal'";
}

std::string PostalAddressOf(
    const std::string& party,
    const std::function<std::shared_ptr<Recordset>(const std::string&)>& run) {
  std::shared_ptr<Recordset> rs = run(PostalAddressSQL(party));
  if (!rs || rs->Eof()) return "";
  std::vector<std::string> parts;
  // The street may hold several lines of its own.
  for (const std::string& line : Split(AddressPart(*rs, "Address"), "\n")) {
    if (!Trim(line).empty()) parts.push_back(Trim(line));
  }
  for (const char* name : {"City", "State", "PostCode", "Country"}) {
    if (std::string part = AddressPart(*rs, name); !part.empty()) parts.push_back(part);
  }
  return Join(parts, kLineBreak);
}

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
