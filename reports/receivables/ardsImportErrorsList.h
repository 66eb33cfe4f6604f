#pragma once
// "ErrorsList", "CommitList", "PurgeTestList": what an import, a commit of a batch or a purge
// test reported, line by line, grouped by run, with a count of errors and warnings under each
// run. A column list on the list base; with no run dates, the process's latest run.

#include <map>
#include <string>

#include "core/ListDesigner.h"

namespace trellin {

class ardsImportErrorsList : public ListDesigner {
 public:
  ardsImportErrorsList();

  // The line number is not added up.
  void RefreshDataColumns() override;
  // Starts the list, then counts each run's errors and warnings among the rows listed.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  // Writes the run's counts ("4 errors, 2 warnings") into its footer.
  void OnFormat(Section& section) override;

 protected:
  // The latest run of the key's process where neither run date is given.
  [[nodiscard]] std::string ExtraCondition() override;

 private:
  struct Counts {
    long errors = 0;
    long warnings = 0;
  };
  std::map<std::string, Counts, std::less<>> counts_;  // by run date and time, ISO text
};

[[nodiscard]] DesignerPtr CreateardsImportErrorsList();

// "4 errors, 2 warnings", "1 error, no warnings".
[[nodiscard]] std::string ImportCountsText(long errors, long warnings);

}  // namespace trellin
