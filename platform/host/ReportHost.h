#pragma once
// The report host: drives one designer through a run. It owns the designer's parameters and
// columns, turns group definitions into the layout's group sections, fills the page furniture,
// headings and total captions, and records the errors of the designer's events.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/host/ActiveReport.h"
#include "core/host/BusinessLayer.h"
#include "core/host/TLReport.h"
#include "platform/host/ColumnLayout.h"
#include "platform/host/GroupDefinition.h"

namespace trellin::host {

// The event whose errors stop the run: a report that failed to prepare prints nothing.
inline constexpr std::string_view kCancellingEvent = "ActiveReport_ReportStart";

// Made by the business layer's report factory, always through std::make_shared (the error hook
// holds the host weakly).
class ReportHost : public TLReport, public std::enable_shared_from_this<ReportHost> {
 public:
  // `business_layer` (may be null) gives the database for group headings, the company name and
  // the masks; without it headings show codes alone and the furniture uses plain defaults.
  explicit ReportHost(std::shared_ptr<BusinessLayer> business_layer);

  // Also installs ReportError as the designer's error hook. Set null to end the run: that
  // breaks the reference cycle between host and designer.
  void SetArReport(std::shared_ptr<ActiveReport> designer) override;
  [[nodiscard]] std::shared_ptr<ActiveReport> arReport() const override { return designer_; }
  void SetReportName(const std::string& name) override { report_name_ = name; }
  [[nodiscard]] const std::string& ReportName() const override { return report_name_; }
  [[nodiscard]] trellin::Parameters& Parameters() override { return parameters_; }
  [[nodiscard]] trellin::DataColumns& DataColumns() override { return columns_; }
  [[nodiscard]] ColumnLayout& Columns() { return columns_; }
  void SetHasParameters(bool has) override { has_parameters_ = has; }
  [[nodiscard]] bool HasParameters() const override { return has_parameters_; }
  // True when the columns are enabled and CreateFields has laid them out.
  [[nodiscard]] bool ColumnsInUse() const override;

  // Reads the group's headings from `list_sql` at once (DatabaseError naming the group when the
  // query fails). Throws std::invalid_argument for a level below 1 or one already defined.
  void DefineGroup(int level, const std::string& name, const std::string& key_field,
                   const std::string& list_sql, bool page_break) override;
  // Throws std::invalid_argument when the levels defined leave a gap (1 and 3 without 2).
  void EndDefineGroups() override;
  [[nodiscard]] int GroupCount() const override { return static_cast<int>(groups_.size()); }
  // The definition of a level, nullptr when none.
  [[nodiscard]] const GroupDefinition* Group(int level) const;

  // Shows the group sections of the defined levels and hides the others; each used header
  // breaks on its key field and, for a page-break group, starts a new page. `summary` hides the
  // detail (and the innermost header when its footer carries gf1SummaryId: the total line then
  // names the group). `footer_height` 0 or more sets the used footers' height (never below
  // their controls); -1 keeps the layout's. Counts (gfCountN, rfCount) count their field.
  // Throws std::invalid_argument when a defined level has no group header in the layout.
  void SetupGroupSections(bool summary, std::int64_t footer_height, bool reserved) override;
  // Leaves the sections as the layout has them; only the report footer's count is set up.
  void SetupUngroupedSections(const std::string& reserved) override;
  // Title, print line, company name and notice; see platform/host/README.md for the texts.
  void SetupStandardHeader(bool enabled) override;
  // ghLabelN: "<group name>: <code>  <description>". Levels not defined are left alone (the
  // engine formats their hidden sections too); so in GroupFooterFormat.
  void GroupHeaderFormat(int level) override;
  // gfLabelN: "Total <code>  <description>"; gfNSummaryId and gfNSummaryName: code and
  // description; rounded column totals.
  void GroupFooterFormat(int level) override;
  // txtParameters: the run's description from the parameters, unless the report wrote its own;
  // rounded column totals.
  void ReportFooterBeforePrint() override;
  // Fills the row's column fields when columns are in use.
  void DetailFormat(Section& section, const std::string& reserved) override;

  // Records the error; one from ActiveReport_ReportStart cancels the run.
  void ReportError(const std::string& source, const std::string& message) override;
  [[nodiscard]] const std::vector<ReportErrorInfo>& Errors() const override { return errors_; }

  // The print line "Printed on <long date> at <h:nnam/pm>" for the present moment.
  [[nodiscard]] std::string PrintedOnText() const;
  // The notice line: "<product> - <company file name>", or the product alone.
  [[nodiscard]] std::string NoticeText() const;
  // The company's name (setting Company/Name), "" without a database.
  [[nodiscard]] std::string CompanyName() const;
  // The run's description: one line ("Caption: value") for each parameter with a value.
  [[nodiscard]] std::string ParametersText() const;

 private:
  [[nodiscard]] ActiveReport& Designer() const;
  [[nodiscard]] Variant GroupKey(const GroupDefinition& group) const;
  [[nodiscard]] Section* GroupSection(SectionType type, int level) const;
  void SetUpCount(Control& control, SummaryType type) const;

  std::shared_ptr<BusinessLayer> business_layer_;
  std::shared_ptr<ActiveReport> designer_;
  std::string report_name_;
  trellin::Parameters parameters_;
  ColumnLayout columns_;
  bool has_parameters_ = false;
  std::vector<GroupDefinition> groups_;  // in the order defined
  std::vector<ReportErrorInfo> errors_;
};

}  // namespace trellin::host
