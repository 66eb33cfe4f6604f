// The job invoice batch list's key, row by row, and each invoice's sums of its lines.

#include "reports/jobs/arJobInvoiceBatchList.h"

#include "core/TrellinReportGlobals.h"
#include "core/host/Database.h"
#include "core/host/Recordset.h"
#include "reports/CardText.h"
#include "reports/ReportShapes.h"

namespace trellin {

namespace {

constexpr ListOrder kBatchOrders[] = {
    {"Job",
     "acBatchTransaction.JobId,acBatchTransaction.Reference,"
     "acBatchTransaction.acBatchTransactionId"},
    {"Customer",
     "acBatchTransaction.OtherPartyId,acBatchTransaction.Reference,"
     "acBatchTransaction.acBatchTransactionId"},
    {"Reference", "acBatchTransaction.Reference,acBatchTransaction.acBatchTransactionId"},
};

constexpr ListParameter kBatchParameters[] = {
    {.kind = ListParameterKind::Standard,
     .field = "acBatchTransaction.JobId",
     .index = 22,
     .primary = true},
    {.kind = ListParameterKind::Standard,
     .field = "acBatchTransaction.OtherPartyId",
     .index = 8,
     .primary = true},
    {.kind = ListParameterKind::DatePair,
     .name = "Dated",
     .caption = "Dated",
     .field = "acBatchTransaction.Date"},
    {.kind = ListParameterKind::Option,
     .name = "OpenBatchOnly",
     .caption = "Open Batch Only",
     .condition = "acBatchHeader.acBatchHeaderId='Open'",
     .phrase = "Open batch only"},
};

// A batch heads with its name.
constexpr ListGrouping kBatchGroupings[] = {
    {"Batch", "acBatchHeader.acBatchSId", "SELECT acBatchSId,acBatchHeaderId FROM acBatchHeader",
     "acBatchSId"},
};

constexpr ListColumn kBatchColumns[] = {
    {"Batch", "acBatchHeaderId", kColumnText, "Batch", "", 900, false},
    {"Created", "CreatedDate", kColumnDate, "Created", "", 950, false},
    {"Job", "JobId", kColumnCode, "Job", "", 1000, false},
    {"Description", "JobDescription", kColumnText, "Description", "", -1, false},
    {"Customer", "OtherPartyId", kColumnText, "Customer", "", 1100, false},
    {"Reference", "Reference", kColumnText, "Reference", "", 1100, false},
    {"Date", "Date", kColumnDate, "Date", "", 950, false},
    {"Charges", "Charges", kColumnMoney, "Charges", "", 1250, false},
    {"Tax", "Tax", kColumnMoney, "Tax", "", 1100, false},
    {"Total", "Total", kColumnMoney, "Total", "", 1250, false},
};

constexpr ListKey kBatchKeys[] = {{
    .key = "JobInvoiceBatchList",
    .base_sql = "SELECT acBatchTransaction.acBatchTransactionId,acBatchHeader.acBatchHeaderId,"
                "acBatchHeader.CreatedDate,acBatchTransaction.JobId,Job.Description AS "
                "JobDescription,acBatchTransaction.OtherPartyId,acBatchTransaction.Reference,"
                "acBatchTransaction.Date FROM (acBatchHeader INNER JOIN acBatchTransaction ON "
                "acBatchHeader.acBatchSId=acBatchTransaction.acBatchSId) LEFT JOIN Job ON "
                "acBatchTransaction.JobId=Job.JobId",
    .base_where = "acBatchHeader.Type=42",
    .orders = kBatchOrders,
    .parameters = kBatchParameters,
    .own_groupings = kBatchGroupings,
    .fixed_grouping = "Batch",
    .columns = kBatchColumns,
}};

}  // namespace

arJobInvoiceBatchList::arJobInvoiceBatchList()
    : ListDesigner("arJobInvoiceBatchList", kBatchKeys, "Job Invoice Batch List") {}

DesignerPtr CreatearJobInvoiceBatchList() { return std::make_shared<arJobInvoiceBatchList>(); }

void arJobInvoiceBatchList::ActiveReport_ReportStart() {
  sums_.clear();
  // Every line of the job invoice batches, through the batches' index; summed here.
  auto rs = TrellinReportGlobals::RequireDatabase()->Query(
      "SELECT acBatchTransactionLine.acBatchTransactionId,acBatchTransactionLine.[Value],"
      "acBatchTransactionLine.TaxValue FROM (acBatchHeader INNER JOIN acBatchTransaction ON "
      "acBatchHeader.acBatchSId=acBatchTransaction.acBatchSId) INNER JOIN acBatchTransactionLine "
      "ON acBatchTransaction.acBatchTransactionId=acBatchTransactionLine.acBatchTransactionId "
      "WHERE acBatchHeader.Type=42");
  for (; !rs->Eof(); rs->MoveNext()) {
    Sums& sums = sums_[static_cast<long long>(rs->Value(0).ToLong())];
    if (!card::Blank(rs->Value(1))) sums.charges += rs->Value(1).ToCurrency();
    if (!card::Blank(rs->Value(2))) sums.tax += rs->Value(2).ToCurrency();
  }
  ListDesigner::ActiveReport_ReportStart();
}

void arJobInvoiceBatchList::ActiveReport_DataInitialize() {
  for (const char* name : {"Charges", "Tax", "Total"}) Fields().Add(name);
}

void arJobInvoiceBatchList::ActiveReport_FetchData(bool&) {
  const Variant id = card::Value(Fields(), "acBatchTransactionId");
  Sums sums;
  if (!card::Blank(id)) {
    const auto found = sums_.find(static_cast<long long>(id.ToLong()));
    if (found != sums_.end()) sums = found->second;
  }
  Fields().Add("Charges").SetValue(Variant(sums.charges));
  Fields().Add("Tax").SetValue(Variant(sums.tax));
  Fields().Add("Total").SetValue(Variant(sums.charges + sums.tax));
}

}  // namespace trellin
