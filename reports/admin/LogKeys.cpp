// The six keys of the log, each row read against what the key prints.

#include "reports/admin/LogKeys.h"

namespace trellin {

namespace {

constexpr const char* kPartySelect =
    "OtherParty.OtherPartyId AS Code, OtherParty.Name, OtherParty.XRefId";
constexpr const char* kPartyFrom =
    " FROM OtherParty INNER JOIN OtherPartyLog ON OtherParty.OtherPartyId = "
    "OtherPartyLog.OtherPartyId";
// The contact and the employee joined to the notes; both may be absent.
constexpr const char* kPartyNotesFull =
    "SELECT OtherPartyLog.*,Employee.Name,Contact.FirstName,Contact.LastName FROM (OtherPartyLog "
    "LEFT JOIN Contact ON OtherPartyLog.ContactId=Contact.ContactId) LEFT JOIN Employee ON "
    "OtherPartyLog.EmployeeId=Employee.EmployeeId WHERE OtherPartyLog.OtherPartyId='";
constexpr const char* kPartyNotesShort =
    "SELECT Date,Subject,ActionDate,CompleteDate,Notes From OtherPartyLog WHERE OtherPartyId='";
constexpr std::array<LogSortChoice, 2> kPartySort = {
    {{"Name", "OtherParty.Name"}, {"X Ref", "OtherParty.XRefId"}}};

// clang-format off
constexpr LogKey kLogKeys[] = {
    {"OtherPartyLog", LogOwnerKind::Party, "OtherPartyLog", "OtherParty", "OtherPartyId", "",
     kPartySelect, "XRefId", "Code,Name,X Ref",
     "Other Party,Employee,Location,Contact,Subject", "Other Parties ordered by ", kPartyFrom,
     kPartyNotesFull, kPartyNotesShort,
     {{{24}, {23}, {15}, {7}}},
     {{{"OtherParties", "OtherParty.OtherPartyId"}, {"Locations", "OtherParty.LocationId"}}},
     kPartySort},
    {"LogAP", LogOwnerKind::Party, "OtherPartyLog", "OtherParty", "OtherPartyId", "IsSupplier",
     kPartySelect, "XRefId", "Code,Name,X Ref",
     "Supplier,Employee,Location,Contact,Supplier Type,Supplier Category,Supplier Payment Term,Subject",
     "Suppliers ordered by ", kPartyFrom, kPartyNotesFull, kPartyNotesShort,
     {{{23}, {33}, {34}, {38}, {28, "SupplierPaymentTerms", "Payment Terms"}}},
     {{{"Locations", "OtherParty.LocationId"}, {"Suppliers", "OtherParty.OtherPartyId"},
       {"SupplierTypes", "OtherParty.SupplierTypeId"}, {"SupplierCategories", "OtherParty.SupplierCategoryId"},
       {"SupplierPaymentTerms", "OtherParty.SupplierPayTermId"}}},
     kPartySort},
    {"LogAR", LogOwnerKind::Party, "OtherPartyLog", "OtherParty", "OtherPartyId", "IsCustomer",
     kPartySelect, "XRefId", "Code,Name,X Ref",
     "Customer,Employee,Location,Contact,Customer Type,Customer Category,Customer Payment Term,Subject",
     "Customers ordered by ", kPartyFrom, kPartyNotesFull, kPartyNotesShort,
     {{{23}, {8}, {9}, {13}, {28, "CustomerPaymentTerms", "Payment Terms"}}},
     {{{"Locations", "OtherParty.LocationId"}, {"Customers", "OtherParty.OtherPartyId"},
       {"CustomerTypes", "OtherParty.CustomerTypeId"}, {"CustomerCategories", "OtherParty.CustomerCategoryId"},
       {"CustomerPaymentTerms", "OtherParty.CustomerPayTermId"}}},
     kPartySort},
    {"ItemLog", LogOwnerKind::Item, "ItemLog", "Item", "ItemId", "",
     "Item.ItemId AS Code, Item.Description AS Name, Item.PLU", "PLU", "Code,Name,PLU",
     "Item,Item Type,Item Category,Supplier,Subject", "Items ordered by ",
     " FROM Item INNER JOIN ItemLog ON Item.ItemId=ItemLog.ItemId",
     "SELECT Date,Subject,ActionDate,CompleteDate,Notes,EmployeeId,(SELECT Name FROM Employee WHERE Employee.EmployeeId = ItemLog.EmployeeId) AS Name,Document From ItemLog WHERE ItemId='",
     "SELECT Date,Subject,ActionDate,CompleteDate,Notes,EmployeeId From ItemLog WHERE ItemId='",
     {{{17}, {16}, {20}, {33}}},
     {{{"Items", "Item.ItemId"}, {"ItemCategories", "Item.ItemCategoryId"},
       {"ItemTypes", "Item.ItemTypeId"}, {"Suppliers", "Item.SupplierId"}}},
     {{{"Name", "Item.Description"}, {"PLU", "Item.PLU"}}}},
    {"JobLog", LogOwnerKind::Job, "JobLog", "Job", "JobId", "",
     "Job.JobId AS Code, Job.Description AS Name, Job.Status", "Status", "Code,Description,Status",
     "Job,Job Category,Employee,Location,Subject", "Jobs ordered by ",
     " FROM Job INNER JOIN JobLog ON Job.JobId = JobLog.JobId",
     "SELECT Date,Subject,ActionDate,CompleteDate,Notes,EmployeeId,(SELECT Name FROM Employee WHERE Employee.EmployeeId = JobLog.EmployeeId) AS Name,Document From JobLog WHERE JobId='",
     "SELECT Date,Subject,ActionDate,CompleteDate,Notes From JobLog WHERE JobId='",
     {{{23}, {22}, {21}, {15}}},
     {{{"Locations", "Job.LocationId"}, {"Jobs", "Job.JobId"},
       {"JobCategories", "Job.JobCategoryId"}}},
     {{{"Description", "Job.Description"}}}},
    {"AssetLog", LogOwnerKind::Asset, "AssetLog", "Asset", "AssetId", "",
     "Asset.AssetId AS Code, Asset.Description AS Name", "", "Code,Description,Status",
     "Asset,Category,Site,Type,Branch,Employee,Parent Asset,Status,Subject,Supplier",
     "Assets ordered by ", " FROM Asset INNER JOIN AssetLog ON Asset.AssetId = AssetLog.AssetId",
     "SELECT Date,Subject,ActionDate,CompleteDate,Notes,EmployeeId,(SELECT Name FROM Employee WHERE Employee.EmployeeId = AssetLog.EmployeeId) AS Name,Document From AssetLog WHERE AssetId='",
     "SELECT Date,Subject,ActionDate,CompleteDate,Notes From AssetLog WHERE AssetId='",
     {{{2}, {1}, {3}, {4}, {6}, {15}, {26}, {33}}},
     {{{"Assets", "Asset.AssetId"}, {"AssetCategories", "Asset.AssetCategoryId"},
       {"AssetSites", "Asset.AssetSiteId"}, {"AssetTypes", "Asset.AssetTypeId"},
       {"Branches", "Asset.BranchId"}, {"ParentAssets", "Asset.ParentAssetId"},
       {"Suppliers", "Asset.SupplierId"}}},
     {{{"Description", "Asset.Description"}}}},
};
// clang-format on

static_assert(std::size(kLogKeys) == 6, "the log serves six keys");

}  // namespace

const LogKey* FindLogKey(std::string_view key) {
  for (const LogKey& row : kLogKeys) {
    if (key == row.key) return &row;
  }
  return nullptr;
}

}  // namespace trellin
