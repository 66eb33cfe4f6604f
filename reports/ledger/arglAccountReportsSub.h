#pragma once
// One line per branch or department under an account of a statement, when the parameter Split is
// in use: the account's figures for that code alone. The statement fills each line's value
// controls by its own column rules (a copy of its Detail's value controls stands here), so an
// account's line and its split lines cannot follow different rules. A sub-report: the statement
// sets the state below and runs it under each account.

#include <functional>
#include <memory>
#include <string>

#include "core/host/ActiveReport.h"
#include "core/host/Recordset.h"
#include "platform/runtime/Variant.h"
#include "reports/ledger/arglAccountReportsGLSub.h"

namespace trellin {

// One code of the split list as the lines look it up: its description, its key for a
// recordset's Filter and its condition for a query.
struct SplitCode {
  std::string description;  // "N, North", "MKT, ", "No Branch"
  std::string filter_key;   // "BranchId='N'", "BranchId=Null"
  std::string query_key;    // "BranchId='N'", "BranchId Is Null"
};

// The split field of a Split value ("Branch" gives BranchId, "Department" DeptId); "" for an
// empty value. Throws std::invalid_argument naming any other value.
[[nodiscard]] std::string SplitField(const std::string& split_by);
// The code list query of a split: every code the ledger has used, with its name; `filter` is the
// condition of Branches or Departments on the ledger's column, "" for none.
[[nodiscard]] std::string SplitCodesSQL(const std::string& split_by, const std::string& filter);
// The description and keys of one code of the list.
[[nodiscard]] SplitCode SplitCodeOf(const std::string& split_by, const Variant& code,
                                    const Variant& name);

class arglAccountReportsSub : public ActiveReport {
 public:
  arglAccountReportsSub() : ActiveReport("arglAccountReportsSub") {}

  // Set by the statement once for the run: the split, its codes and the routine that fills a
  // line's value controls of the present account for one code (the statement's column rules).
  std::string mSplitBy;
  std::shared_ptr<Recordset> Codes;  // Code, Name
  std::function<void(Section& detail, const SplitCode& code)> FillLine;

  void ActiveReport_ReportStart() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;

 private:
  SplitCode current_;
};

}  // namespace trellin
