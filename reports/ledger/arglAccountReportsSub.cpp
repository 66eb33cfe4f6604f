#include "reports/ledger/arglAccountReportsSub.h"

#include <stdexcept>

#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

// The two splits: the ledger's field, the code list's table and name column, and the line of a
// Null code.
struct SplitRule {
  const char* split_by;
  const char* field;
  const char* codes_sql;
  const char* no_code;
};

constexpr SplitRule kSplits[] = {
    {"Branch", "BranchId",
     "SELECT DISTINCT glTransaction.BranchId AS Code, Branch.Name FROM Branch RIGHT JOIN "
     "glTransaction ON Branch.BranchId = glTransaction.BranchId",
     "No Branch"},
    {"Department", "DeptId",
     "SELECT DISTINCT glTransaction.DeptId AS Code,Department.Description AS Name FROM Department "
     "RIGHT JOIN glTransaction ON Department.DeptId = glTransaction.DeptId",
     "No Department"},
};

const SplitRule& RuleOf(const std::string& split_by) {
  for (const SplitRule& rule : kSplits) {
    if (EqualsIgnoreCase(rule.split_by, split_by)) return rule;
  }
  throw std::invalid_argument("Split: '" + split_by +
                              "' is not a split; use Branch, Department or nothing.");
}

}  // namespace

std::string SplitField(const std::string& split_by) {
  if (Trim(split_by).empty()) return {};
  return RuleOf(Trim(split_by)).field;
}

std::string SplitCodesSQL(const std::string& split_by, const std::string& filter) {
  const SplitRule& rule = RuleOf(split_by);
  return std::string(rule.codes_sql) + (filter.empty() ? "" : " WHERE " + filter);
}

SplitCode SplitCodeOf(const std::string& split_by, const Variant& code, const Variant& name) {
  const SplitRule& rule = RuleOf(split_by);
  const std::string field = rule.field;
  if (code.IsNull()) return {rule.no_code, field + "=Null", field + " Is Null"};
  const std::string key = field + "=" + Database::SQLString(code.Text());
  // A code the list no longer names (a deleted department) prints with an empty name.
  return {code.Text() + ", " + (name.IsNull() ? std::string() : name.Text()), key, key};
}

void arglAccountReportsSub::ActiveReport_ReportStart() {
  if (Codes && Codes->RecordCount() > 0) Codes->MoveFirst();
}

void arglAccountReportsSub::ActiveReport_FetchData(bool& eof) {
  if (!Codes || Codes->Eof()) {
    eof = true;
    return;
  }
  current_ = SplitCodeOf(mSplitBy, Codes->Value("Code"), Codes->Value("Name"));
  Codes->MoveNext();
  eof = false;
}

void arglAccountReportsSub::OnFormat(Section& section) {
  if (section.Type() != SectionType::Detail) return;
  if (Control* description = FindControl("txtDescription"))
    description->SetText(current_.description);
  if (FillLine) FillLine(section, current_);
}

}  // namespace trellin
