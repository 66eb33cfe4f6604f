#pragma once
// What the asset schedules share: the filters of the family (the standard asset lists, the
// purchase, disposal and review date ranges, the statuses through the Asset object, components
// under their parent), the groupings read from the last choice to the first, the group sections
// and their events ("Status" headers captioned with the status's text), the summary-mode
// headings, and the start of the run. Each schedule derives from it and keeps its own figures.

#include <memory>
#include <string>
#include <vector>

#include "core/Designer.h"
#include "core/host/AssetDepreciation.h"
#include "core/host/BusinessObjects.h"

namespace trellin {

class arfaScheduleBase : public Designer {
 public:
  using Designer::Designer;

  void ActiveReport_Initialize() override;
  void OnFormat(Section& section) override;
  void OnBeforePrint(Section& section) override;
  void ActiveReport_ReportEnd() override;

 protected:
  // The purchase, disposal and review date ranges, each From and To, empty.
  static void AddDateRangeParameters(trellin::Parameters& p);
  // StatusOn Order to StatusScrapped, all ticked.
  static void AddStatusParameters(trellin::Parameters& p);
  // Groupings, then the standard lists Assets to Suppliers.
  static void AddGroupingsAndLists(trellin::Parameters& p);
  static void AddGroupings(trellin::Parameters& p);
  static void AddLists(trellin::Parameters& p);

  // The family's filters into `where` and `description`: the standard lists, components under
  // their parent (IncludeComponents), the three date ranges, and the statuses ticked when not
  // all are. Throws what the range builder throws for a list it cannot read.
  void AddFamilyFilters(std::string& where, std::string& description);
  // The statuses ticked, when not all are: "Include " and their texts into `description`, and
  // "Asset.Status IN (" their numbers ")" into `where`.
  void AddStatusFilter(std::string& where, std::string& description);
  // The groupings chosen, defined on the host from the last choice (level 1) to the first, each
  // adding its field to `fields` and, first in line, to `order`. Throws std::invalid_argument for
  // a grouping the family does not know. "Status" groups break on `status_key`: the number, or
  // "StatusText", the text a report fills in for each row.
  void DefineGroupings(std::string& fields, std::string& order,
                       const std::string& status_key = "Status");
  // The register's query over `fields`: the family's filters and the statuses ticked (their
  // words into `description`), the groupings defined, ordered by them and then by code, or by
  // description when `order_by` is "Name".
  [[nodiscard]] std::string AssetQuery(std::string fields, const std::string& order_by,
                                       std::string& description);
  // ReportStart's shared steps after the query: group sections, the standard header, the
  // columns over lblHeading, the summary headings, the description and the data control.
  // `heading_font_size` is the columns' heading size in points.
  void StartRun(const std::string& sql, const std::string& description, bool summary,
                float heading_font_size = 8.0f);

  // A date from a parameter; Null when none is given.
  [[nodiscard]] static Variant DateOrNull(const Variant& v);
  [[nodiscard]] static std::string DateText(const Variant& date);

  std::unique_ptr<BusinessObjects> objects_;
  std::unique_ptr<Asset> asset_;

 private:
  virtual void Detail_Format() {}
};

}  // namespace trellin
