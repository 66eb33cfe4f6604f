// The job list's key, row by row.

#include "reports/jobs/arJobList.h"

#include "core/TrellinReportGlobals.h"
#include "reports/ReportShapes.h"
#include "reports/UserDefinedColumns.h"
#include "reports/jobs/JobLists.h"

namespace trellin {

namespace {

constexpr ListOrder kJobOrders[] = {
    {"Code", "Job.JobId"},
    {"Description", "Job.Description,Job.JobId"},
    {"Status", "Job.Status,Job.JobId"},
};

constexpr ListColumn kJobColumns[] = {
    {"Code", "JobId", kColumnCode, "Code", "", 1000, false},
    {"Description", "Description", kColumnText, "Description", "", -1, false},
    {"Status", "Status", kColumnText, "Status", "", 1000, false},
    {"Category", "JobCategoryId", kColumnText, "Category", "", 1000, false},
    {"Customer", "OtherPartyId", kColumnText, "Customer", "", 1100, false},
    {"Name", "Name", kColumnText, "Name", "", 2600, false},
    {"OrderNo", "OrderNo", kColumnText, "Order No", "Ord.No", 1100, false},
    {"Location", "LocationId", kColumnText, "Location", "", 1000, true},
    {"Employee", "EmployeeId", kColumnText, "Employee", "", 1000, true},
    {"Opened", "DateOpened", kColumnDate, "Opened", "", 950, false},
    {"Closed", "DateClosed", kColumnDate, "Closed", "", 950, false},
    // One a row, so that group and report totals count the jobs.
    {"Jobs", "JobCount", kColumnNumber, "Jobs", "", 600, true, "#,##0"},
};

constexpr ListKey kJobKeys[] = {{
    .key = "JobList",
    .base_sql = kJobListSql,
    .base_where = kJobChargedContact,
    .orders = kJobOrders,
    .parameters = kJobFilters,
    .groupings = "Employee,Location,Job Category,Customer",
    .grouping_table = "Job",
    .own_groupings = kJobGroupings,
    .summary = true,
    .order_phrase = kJobOrderPhrase,
    .columns = kJobColumns,
}};

}  // namespace

arJobList::arJobList() : ListDesigner("arJobList", kJobKeys, "Job List") {}

DesignerPtr CreatearJobList() { return std::make_shared<arJobList>(); }

void arJobList::RefreshDataColumns() {
  ListDesigner::RefreshDataColumns();
  DataColumns& columns = TLReport()->DataColumns();
  AddUserDefinedColumns(columns, UserDefinedKind::Job);
}

}  // namespace trellin

namespace trellin {

void arJobList::ActiveReport_ReportStart() {
  DataColumns& columns = TLReport()->DataColumns();
  if (columns.Count() == 0) RefreshDataColumns();
  if (TLReport()->Parameters().Value("Summary", false).ToBool()) {
    columns.Item("Jobs").Hidden = false;
  }
  ListDesigner::ActiveReport_ReportStart();
}

void arJobList::ActiveReport_DataInitialize() { Fields().Add("JobCount"); }

void arJobList::ActiveReport_FetchData(bool&) { Fields().Add("JobCount").SetValue(Variant(1)); }

}  // namespace trellin
