// The key of the document list: the notes of the four logs that name a document, as one table.

#include "reports/admin/arDocumentList.h"

#include "reports/ReportShapes.h"

namespace trellin {

namespace {

// The owner types are the words of the Owner check boxes, so that the boxes test them as they
// stand.
#define LOG_DOCUMENTS(type, log, owner, key, name)                                              \
  "SELECT '" type "' AS OwnerType," log "." key " AS Code," owner "." name " AS OwnerName," log \
  ".[Date]," log ".Subject," log ".Document," log ".EmployeeId FROM " log " INNER JOIN " owner  \
  " ON " log "." key "=" owner "." key " WHERE " log ".Document Is Not Null"

constexpr const char* kDocuments =
    "SELECT D.OwnerType,D.Code,D.OwnerName,D.[Date],D.Subject,D.Document,D.EmployeeId,"
    "Employee.Name AS EmployeeName FROM (" LOG_DOCUMENTS("Other Parties", "OtherPartyLog",
                                                         "OtherParty", "OtherPartyId", "Name")
    " UNION ALL " LOG_DOCUMENTS("Items", "ItemLog", "Item", "ItemId", "Description")
    " UNION ALL " LOG_DOCUMENTS("Jobs", "JobLog", "Job", "JobId", "Description")
    " UNION ALL " LOG_DOCUMENTS("Assets", "AssetLog", "Asset", "AssetId", "Description")
    ") AS D LEFT JOIN Employee ON D.EmployeeId=Employee.EmployeeId";
#undef LOG_DOCUMENTS

constexpr ListOrder kDocumentOrders[] = {
    {"Date", "D.[Date],D.OwnerType,D.Code,D.Document"},
    {"Owner", "D.OwnerType,D.Code,D.[Date],D.Document"},
    {"Document", "D.Document,D.[Date]"},
};

constexpr ListChoice kOwners[] = {{"Other Parties"}, {"Items"}, {"Jobs"}, {"Assets"}};

constexpr ListParameter kDocumentParameters[] = {
    {.kind = ListParameterKind::DatePair,
     .name = "Dated",
     .caption = "Noted",
     .field = "D.[Date]",
     .primary = true},
    {.kind = ListParameterKind::Standard, .field = "D.EmployeeId", .index = 15},
    {.kind = ListParameterKind::CheckBoxes,
     .name = "Owner",
     .field = "D.OwnerType",
     .choices = kOwners},
};

constexpr ListGrouping kDocumentGroupings[] = {
    {"Owner Type", "D.OwnerType",
     "SELECT 'Other Parties','' UNION SELECT 'Items','' UNION SELECT 'Jobs','' UNION SELECT "
     "'Assets',''",
     "OwnerType"},
    {"Employee", "D.EmployeeId", "SELECT EmployeeId,Name FROM Employee", "EmployeeId"},
};

constexpr ListColumn kDocumentColumns[] = {
    {"OwnerType", "OwnerType", kColumnText, "Owner Type", "Owner", 1300, false},
    {"Code", "Code", kColumnText, "Code", "", 1200, false},
    {"Name", "OwnerName", kColumnText, "Name", "", 3000, false},
    {"Date", "Date", kColumnDate, "Date", "", 1100, false},
    {"Subject", "Subject", kColumnText, "Subject", "", 2600, false},
    {"Document", "Document", kColumnText, "Document", "", 1800, false},
    {"Employee", "EmployeeName", kColumnText, "Employee", "", 1900, false},
};

constexpr ListKey kDocumentKeys[] = {{
    .key = "DocumentList",
    .base_sql = kDocuments,
    .orders = kDocumentOrders,
    .parameters = kDocumentParameters,
    .groupings = "Owner Type,Employee",
    .own_groupings = kDocumentGroupings,
    .columns = kDocumentColumns,
}};

}  // namespace

arDocumentList::arDocumentList() : ListDesigner("arDocumentList", kDocumentKeys, "Document List") {}

DesignerPtr CreatearDocumentList() { return std::make_shared<arDocumentList>(); }

}  // namespace trellin
