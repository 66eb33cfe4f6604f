// The job status report's key, row by row.

#include "reports/jobs/arJobStatusReport.h"

#include "core/TrellinReportGlobals.h"
#include "reports/ReportShapes.h"
#include "reports/jobs/JobLists.h"

namespace trellin {

namespace {

constexpr std::string_view kStatusSql =
    "SELECT Job.JobId,Job.Description,Job.Status,Job.DateOpened,Job.OrderNo,Job.DateClosed,"
    "JobContact.OtherPartyId FROM Job INNER JOIN JobContact ON Job.JobId = JobContact.JobId";

constexpr ListOrder kStatusOrders[] = {
    {"Code", "Job.JobId"},
    {"Description", "Job.Description"},
    {"Status", "Job.Status"},
};

constexpr ListColumn kStatusColumns[] = {
    {"Code", "JobId", kColumnCode, "Code", "", 1000, false},
    {"Description", "Description", kColumnText, "Description", "", -1, false},
    {"Customer", "Name", kColumnText, "Customer", "", 3000, false},
    {"OrderNo", "OrderNo", kColumnText, "Order No", "Ord.No", 1100, false},
    {"Status", "Status", kColumnText, "Status", "", 1000, false},
    {"Opened", "DateOpened", kColumnDate, "Opened", "", 950, false},
    {"Closed", "DateClosed", kColumnDate, "Closed", "", 950, false},
    {"OutStanding", "OutStanding", kColumnText, "O/S Trans Type", "", 1500, false},
};

constexpr ListKey kStatusKeys[] = {{
    .key = "JobStatusReport",
    .base_sql = kStatusSql,
    .base_where = kJobChargedContact,
    .orders = kStatusOrders,
    .parameters = kJobFilters,
    .groupings = "Employee,Location,Job Category,Customer",
    .grouping_table = "Job",
    .own_groupings = kJobGroupings,
    .summary = true,
    .summary_first = true,
    .order_phrase = kJobOrderPhrase,
    .columns = kStatusColumns,
}};

}  // namespace

std::string JobOutstandingSql(const std::string& job_sql) {
  return "SELECT acBatchTransaction.TransactionTypeId FROM acBatchTransaction WHERE "
         "acBatchTransaction.JobId=" +
         job_sql +
         " GROUP BY acBatchTransaction.TransactionTypeId UNION SELECT "
         "PurchaseOrder.TransactionTypeId FROM PurchaseOrder INNER JOIN PurchaseOrderLine ON "
         "PurchaseOrder.PurchaseOrderId = PurchaseOrderLine.PurchaseOrderId WHERE "
         "PurchaseOrder.JobId=" +
         job_sql +
         " GROUP BY PurchaseOrder.TransactionTypeId HAVING (Sum(PurchaseOrderLine.Quantity)<>0 OR "
         "Sum(PurchaseOrderLine.Value)<>0)";
}

arJobStatusReport::arJobStatusReport()
    : ListDesigner("arJobStatusReport", kStatusKeys, "Job Status Report") {}

DesignerPtr CreatearJobStatusReport() { return std::make_shared<arJobStatusReport>(); }

void arJobStatusReport::ActiveReport_DataInitialize() {
  Fields().Add("Name");
  Fields().Add("OutStanding");
}

void arJobStatusReport::ActiveReport_FetchData(bool&) {
  trellin::Fields& fields = Fields();
  Database& database = *TrellinReportGlobals::RequireDatabase();
  const Variant party = fields.Item("OtherPartyId").Value();
  std::string customer;
  if (!party.IsNull() && !party.Text().empty()) {
    auto rs = database.Query("SELECT Name FROM OtherParty WHERE OtherPArtyId=" +
                             database.SQLString(party.Text()));
    if (!rs->Eof()) customer = party.Text() + ", " + rs->Value(0).Text();
  }
  fields.Item("Name").SetValue(Variant(customer));

  std::string kinds;
  auto rs =
      database.Query(JobOutstandingSql(database.SQLString(fields.Item("JobId").Value().Text())));
  for (; !rs->Eof(); rs->MoveNext()) {
    if (rs->Value(0).IsNull()) continue;
    kinds += (kinds.empty() ? "" : ", ") + rs->Value(0).Text();
  }
  fields.Item("OutStanding").SetValue(Variant(kinds));
}

}  // namespace trellin
