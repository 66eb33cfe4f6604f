// What the master lists show beside a record's own columns, fetched by the record's code from the
// business layer's objects: a bank's lines and ledger accounts, a branch's address and contact
// lines, an employee's contact, an asset category's rules.

#include "reports/admin/arAdminBase.h"

namespace trellin {

namespace {

// A line break inside a multi-line field, as the system writes them everywhere.
constexpr std::string_view kLineBreak = "\r\n";

std::string JoinLines(const std::vector<std::string>& lines) {
  std::string joined;
  for (const std::string& line : lines) {
    if (line.empty()) continue;
    if (!joined.empty()) joined += kLineBreak;
    joined += line;
  }
  return joined;
}

using Texts = std::vector<std::string>;

Texts AssetCategoryTexts(BusinessObjects& objects, std::string_view code) {
  const AssetCategory* category = objects.FindAssetCategory(code);
  if (category == nullptr) return {};
  return {category->description, category->calculation_period, category->revaluation,
          category->disposal_type};
}

Texts BankTexts(BusinessObjects& objects, std::string_view code) {
  const BankDetails* bank = objects.FindBank(code);
  if (bank == nullptr) return {};
  return {JoinLines(bank->lines), bank->asset_account, bank->fees_account};
}

Texts BranchTexts(BusinessObjects& objects, std::string_view code) {
  const Branch* branch = objects.FindBranch(code);
  if (branch == nullptr) return {};
  return {JoinLines(branch->address_lines), JoinLines(branch->contact_lines)};
}

// The "Contact" column shows how to reach the employee over where, one line each, so that a
// number never breaks in the middle: "Mobile" and "021 555 0142".
Texts EmployeeTexts(BusinessObjects& objects, std::string_view code) {
  const Employee* employee = objects.FindEmployee(code);
  if (employee == nullptr) return {};
  return {JoinLines({employee->contact_method, employee->contact_detail}),
          employee->contact_detail};
}

struct DetailSource {
  std::string_view key;
  Texts (*read)(BusinessObjects&, std::string_view code);
};

constexpr DetailSource kSources[] = {
    {"AssetCategoryList", AssetCategoryTexts},
    {"BankList", BankTexts},
    {"BranchList", BranchTexts},
    {"EmployeeList", EmployeeTexts},
};

}  // namespace

std::vector<std::string> AdminDetailTexts(BusinessObjects& objects, std::string_view key,
                                          std::string_view code) {
  Texts texts;
  for (const DetailSource& source : kSources) {
    if (source.key == key) texts = source.read(objects, code);
  }
  // A code the business layer does not hold shows empty texts, never the row before's.
  texts.resize(AdminUnboundFields(key).size());
  return texts;
}

}  // namespace trellin
