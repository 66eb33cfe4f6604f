#include "reports/admin/AdminDetails.h"

#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

// A line break inside a multi-line field, as the system writes them everywhere.
constexpr std::string_view kLineBreak = "\r\n";

std::string TextOf(const Recordset& rs, std::string_view field) {
  const Variant& value = rs.Value(field);
  if (value.IsNull() || value.IsEmpty()) return {};
  return Trim(value.Text());
}

// The lines of a stored multi-line text, trimmed, without blank ones, whatever breaks they had.
std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  for (std::string line : Split(text, "\n")) {
    if (!line.empty() && line.back() == '\r') line.pop_back();
    lines.push_back(Trim(line));
  }
  return lines;
}

// "Bus: 0800 884 627": a caption and a value, or nothing without a value.
std::string Labelled(std::string_view caption, const std::string& value) {
  return value.empty() ? std::string() : std::string(caption) + value;
}

AdminDetails::Details AssetCategoryDetails(const Recordset& rs) {
  return {{"Description", TextOf(rs, "Description")},
          {"CalculationPeriod", TextOf(rs, "CalculationPeriod")},
          {"Revaluation", TextOf(rs, "Revaluation")},
          {"DisposalType", TextOf(rs, "DisposalType")}};
}

AdminDetails::Details BankDetails(const Recordset& rs) {
  const std::string lines = AdminDetails::JoinPresent(
      {TextOf(rs, "BankName"), TextOf(rs, "Branch"), TextOf(rs, "AccountNumber")}, kLineBreak);
  return {
      {"BankDetails", lines},
      {"AssetAccount", AdminDetails::JoinPresent(
                           {TextOf(rs, "AssetAccountId"), TextOf(rs, "AssetDescription")}, ", ")},
      {"FeesAccount", AdminDetails::JoinPresent(
                          {TextOf(rs, "FeesAccountId"), TextOf(rs, "FeesDescription")}, ", ")}};
}

AdminDetails::Details BranchDetails(const Recordset& rs) {
  const std::string contact = AdminDetails::JoinPresent(
      {Labelled("Bus: ", TextOf(rs, "Phone")), Labelled("Fax: ", TextOf(rs, "Fax")),
       Labelled("Email: ", TextOf(rs, "Email"))},
      kLineBreak);
  return {{"AddressDetails", AdminDetails::JoinPresent(LinesOf(TextOf(rs, "Address")), kLineBreak)},
          {"ContactDetails", contact}};
}

// The "Contact" column shows how to reach the employee over where, one line each, so that a
// number never breaks in the middle: "Mobile" and "021 555 0142".
AdminDetails::Details EmployeeDetails(const Recordset& rs) {
  const std::string method = TextOf(rs, "ContactMethod");
  const std::string detail = TextOf(rs, "ContactDetail");
  return {{"ContactMethod", AdminDetails::JoinPresent({method, detail}, kLineBreak)},
          {"ContactDetail", detail}};
}

struct DetailSource {
  std::string_view key;
  std::string_view sql;  // the code comes first
  AdminDetails::Details (*read)(const Recordset&);
};

// clang-format off
constexpr DetailSource kSources[] = {
    {"AssetCategoryList",
     "SELECT AssetCategoryId,Description,CalculationPeriod,Revaluation,DisposalType "
     "FROM AssetCategory", AssetCategoryDetails},
    {"BankList",
     "SELECT BankId,BankName,Branch,AccountNumber,AssetAccountId,FeesAccountId,"
     "(SELECT Description FROM Account WHERE Account.AccountId = Bank.AssetAccountId) AS AssetDescription,"
     "(SELECT Description FROM Account WHERE Account.AccountId = Bank.FeesAccountId) AS FeesDescription "
     "FROM Bank", BankDetails},
    {"BranchList", "SELECT BranchId,Address,Phone,Fax,Email FROM Branch", BranchDetails},
    {"EmployeeList", "SELECT EmployeeId,ContactMethod,ContactDetail FROM Employee",
     EmployeeDetails},
};
// clang-format on

}  // namespace

AdminDetails::AdminDetails(const std::shared_ptr<Database>& database, const std::string& key) {
  for (const DetailSource& source : kSources) {
    if (source.key != key) continue;
    std::shared_ptr<Recordset> rs = database->Query(source.sql);
    for (; !rs->Eof(); rs->MoveNext()) {
      Details details = source.read(*rs);
      if (names_.empty()) {
        for (const auto& [name, text] : details) names_.push_back(name);
      }
      by_code_[UCase(TextOf(*rs, rs->Field(0).name))] = std::move(details);
    }
  }
}

const AdminDetails::Details* AdminDetails::Find(const std::string& code) const {
  auto found = by_code_.find(UCase(Trim(code)));
  return found == by_code_.end() ? nullptr : &found->second;
}

void AdminDetails::Fill(const std::string& code, Fields& fields) const {
  const Details* details = Find(code);
  if (details == nullptr) {
    for (const std::string& name : names_) fields.Add(name).SetValue(Variant(std::string()));
    return;
  }
  for (const auto& [name, text] : *details) fields.Add(name).SetValue(Variant(text));
}

std::string AdminDetails::JoinPresent(const std::vector<std::string>& parts,
                                      std::string_view separator) {
  std::string joined;
  for (const std::string& part : parts) {
    if (part.empty()) continue;
    if (!joined.empty()) joined += separator;
    joined += part;
  }
  return joined;
}

}  // namespace trellin
