#pragma once
// What the job lists share: the job filters as list rows (the statuses, the opened and closed
// dates, jobs, locations, categories, employees and customers), the join to the contact a job is
// charged to, and the groupings. Every job fact is read here from the `Job` and `JobContact`
// tables, in one place, so that a business-layer job object can take these reads over.

#include <string>
#include <string_view>

#include "core/ListDesigner.h"
#include "core/host/Database.h"

namespace trellin {

// A job with the contact it is charged to and that party's name.
inline constexpr std::string_view kJobListSql =
    "SELECT Job.JobId,Job.Description,Job.Status,Job.JobCategoryId,JobContact.OtherPartyId,"
    "OtherParty.Name,Job.OrderNo,Job.LocationId,Job.EmployeeId,Job.DateOpened,Job.DateClosed,"
    "Job.UserDefined1,Job.UserDefined2,Job.UserDefined3,Job.UserDefined4,Job.UserDefined5,"
    "Job.UserDefined6,Job.UserDefined7,Job.UserDefined8,Job.UserDefined9,Job.UserDefined10,"
    "Job.UserDefined11,Job.UserDefined12,Job.UserDefined13,Job.UserDefined14,Job.UserDefined15,"
    "Job.UserDefined16,Job.UserDefined17,Job.UserDefined18,Job.UserDefined19,Job.UserDefined20"
    " FROM (Job INNER JOIN JobContact ON Job.JobId=JobContact.JobId) LEFT JOIN OtherParty ON "
    "JobContact.OtherPartyId=OtherParty.OtherPartyId";

// Each job once, on the contact it is charged to.
inline constexpr std::string_view kJobChargedContact = "JobContact.Charge=True";

// How the job reports describe their order: "Jobs ordered by Code".
inline constexpr std::string_view kJobOrderPhrase = "Jobs ordered by ";

// A job's stored statuses, each a check box "Status" + the status, all ticked at first.
inline constexpr ListChoice kJobStatuses[] = {{"Open"},      {"Closed"}, {"Costing"},
                                              {"Completed"}, {"Hold"},   {"Template"}};

inline constexpr ListParameter kJobFilters[] = {
    {.kind = ListParameterKind::DatePair,
     .name = "OpenedDate",
     .caption = "Opened",
     .field = "Job.DateOpened"},
    {.kind = ListParameterKind::DatePair,
     .name = "ClosedDate",
     .caption = "Closed",
     .field = "Job.DateClosed"},
    {.kind = ListParameterKind::CheckBoxes,
     .name = "Status",
     .caption = "Job Statuses",
     .field = "Job.Status",
     .phrase = "Include ",
     .choices = kJobStatuses},
    {.kind = ListParameterKind::Standard, .field = "Job.JobId", .index = 22, .primary = true},
    {.kind = ListParameterKind::Standard, .field = "Job.LocationId", .index = 23, .primary = true},
    {.kind = ListParameterKind::Standard,
     .caption = "Categories",
     .field = "Job.JobCategoryId",
     .index = 21,
     .primary = true},
    {.kind = ListParameterKind::Standard, .field = "Job.EmployeeId", .index = 15, .primary = true},
    {.kind = ListParameterKind::Standard,
     .field = "JobContact.OtherPartyId",
     .index = 8,
     .primary = true},
};

// The job summary's filter: the same, but for locations and employees on the bare field names,
// which the join with JobContact leaves to the job.
inline constexpr ListParameter kJobSummaryFilters[] = {
    kJobFilters[0],
    kJobFilters[1],
    kJobFilters[2],
    kJobFilters[3],
    {.kind = ListParameterKind::Standard, .field = "LocationId", .index = 23, .primary = true},
    kJobFilters[5],
    {.kind = ListParameterKind::Standard, .field = "EmployeeId", .index = 15, .primary = true},
    kJobFilters[7],
};

// The job's own fields, where the standard grouping would read the wrong table's.
inline constexpr ListGrouping kJobGroupings[] = {
    {"Employee", "Job.EmployeeId", "SELECT EmployeeId,Name FROM Employee", "EmployeeId"},
    {"Location", "Job.LocationId", "SELECT LocationId,Description FROM Location", "LocationId"},
    {"Customer", "JobContact.OtherPartyId", "SELECT OtherPartyId,Name FROM OtherParty",
     "OtherPartyId"},
};

// A job's contacts, the charged one first: party, name, charged.
inline std::string JobContactsSql(const std::string& job) {
  return "SELECT JobContact.OtherPartyId,OtherParty.Name,JobContact.Charge FROM JobContact LEFT "
         "JOIN OtherParty ON JobContact.OtherPartyId=OtherParty.OtherPartyId WHERE "
         "JobContact.JobId=" +
         Database::SQLString(job) + " ORDER BY JobContact.Charge DESC,JobContact.OtherPartyId";
}

// A party's contact methods in their order: kind and detail.
inline std::string PartyMethodsSql(const std::string& party) {
  return "SELECT Kind,Detail FROM OtherPartyContactMethod WHERE OtherPartyId=" +
         Database::SQLString(party) + " ORDER BY Sequence";
}

// A party's addresses, the postal one first: address, city, state, post code, country.
inline std::string PartyAddressesSql(const std::string& party) {
  return "SELECT Address,City,State,Postcode,Country FROM OtherPartyAddress WHERE OtherPartyId=" +
         Database::SQLString(party) + " ORDER BY IIf(AddressId='Postal',0,1),AddressId";
}

// The open batch documents of a job: batch, type, reference, date, party,
// value.
inline std::string JobOpenDocumentsSql(const std::string& job) {
  return "SELECT acBatchHeader.acBatchHeaderId,acBatchTransaction.TransactionTypeId,"
         "acBatchTransaction.Reference,acBatchTransaction.Date,acBatchTransaction.OtherPartyId,"
         "acBatchTransaction.Value FROM acBatchTransaction LEFT JOIN acBatchHeader ON "
         "acBatchTransaction.acBatchSId=acBatchHeader.acBatchSId WHERE acBatchTransaction.JobId=" +
         Database::SQLString(job) +
         " ORDER BY acBatchTransaction.Date,acBatchTransaction.acBatchTransactionId";
}

// The purchase orders of a job still outstanding (lines that do not net to nothing): order,
// type, date, supplier, quantity and value outstanding.
inline std::string JobOutstandingOrdersSql(const std::string& job) {
  return "SELECT PurchaseOrder.PurchaseOrderId,PurchaseOrder.TransactionTypeId,PurchaseOrder.Date,"
         "PurchaseOrder.OtherPartyId,Sum(PurchaseOrderLine.Quantity) AS Quantity,"
         "Sum(PurchaseOrderLine.Value) AS OrderValue FROM PurchaseOrder INNER JOIN "
         "PurchaseOrderLine ON PurchaseOrder.PurchaseOrderId=PurchaseOrderLine.PurchaseOrderId "
         "WHERE PurchaseOrder.JobId=" +
         Database::SQLString(job) +
         " GROUP BY PurchaseOrder.PurchaseOrderId,PurchaseOrder.TransactionTypeId,"
         "PurchaseOrder.Date,PurchaseOrder.OtherPartyId HAVING (Sum(PurchaseOrderLine.Quantity)<>0 "
         "OR Sum(PurchaseOrderLine.Value)<>0) ORDER BY PurchaseOrder.Date,"
         "PurchaseOrder.PurchaseOrderId";
}

// A job's notes in date order: date, subject, notes.
inline std::string JobNotesSql(const std::string& job) {
  return "SELECT Date,Subject,Notes FROM JobLog WHERE JobId=" + Database::SQLString(job) +
         " ORDER BY Date";
}

}  // namespace trellin
