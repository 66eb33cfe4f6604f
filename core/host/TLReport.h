#pragma once
// The report host: drives one designer, owns its parameters and columns, defines its groups and
// fills its page furniture.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/host/Control.h"
#include "core/host/DataColumns.h"
#include "core/host/Parameters.h"

namespace trellin {

class ActiveReport;
class Section;

// One error raised in a designer's event, as the host records it.
struct ReportErrorInfo {
  std::string source;  // the event, such as "ActiveReport_ReportStart"
  std::string message;
};

class TLReport : public Object {
 public:
  // The designer this host drives (set once by the catalogue; cleared by the caller after the run).
  virtual void SetArReport(std::shared_ptr<ActiveReport> designer) = 0;
  [[nodiscard]] virtual std::shared_ptr<ActiveReport> arReport() const = 0;
  virtual void SetReportName(const std::string& name) = 0;
  [[nodiscard]] virtual const std::string& ReportName() const = 0;
  [[nodiscard]] virtual trellin::Parameters& Parameters() = 0;
  [[nodiscard]] virtual trellin::DataColumns& DataColumns() = 0;
  virtual void SetHasParameters(bool has) = 0;
  [[nodiscard]] virtual bool HasParameters() const = 0;
  [[nodiscard]] virtual bool ColumnsInUse() const = 0;

  // Level 1 is the innermost group section. `list_sql` gives a group's heading text: code in
  // the first column, description in the second.
  virtual void DefineGroup(int level, const std::string& name, const std::string& key_field,
                           const std::string& list_sql, bool page_break) = 0;
  virtual void EndDefineGroups() = 0;
  [[nodiscard]] virtual int GroupCount() const = 0;
  virtual void SetupGroupSections(bool summary, std::int64_t footer_height, bool reserved) = 0;
  virtual void SetupUngroupedSections(const std::string& reserved) = 0;
  virtual void SetupStandardHeader(bool enabled) = 0;
  virtual void GroupHeaderFormat(int level) = 0;
  virtual void GroupFooterFormat(int level) = 0;
  virtual void ReportFooterBeforePrint() = 0;
  virtual void DetailFormat(Section& section, const std::string& reserved) = 0;
  // Takes a chart control whose titles and series are set, and makes it ready to print.
  virtual void AttachChart(Control& chart) { PrepareChart(chart.Chart()); }

  // Records an error raised in a designer's event `source`. The run goes on unless the error
  // came from ActiveReport_ReportStart.
  virtual void ReportError(const std::string& source, const std::string& message) = 0;
  [[nodiscard]] virtual const std::vector<ReportErrorInfo>& Errors() const = 0;
};

}  // namespace trellin
