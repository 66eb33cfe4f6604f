#include "reports/receivables/SalesAnalysisShared.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/host/Database.h"

namespace trellin {

namespace {

// The list filters of the sales keys, in the dialogue's order: parameter, standard row, caption
// ("" the row's own), field.
struct SalesFilter {
  std::string_view name;
  long index;
  std::string_view caption;
  std::string_view field;
};

constexpr SalesFilter kSalesFilters[] = {
    {"Customers", 8, "", "Transactions.OtherPartyId"},
    {"Locations", 23, "", "TransactionLine.LocationId"},
    {"Departments", 14, "", "TransactionLine.DeptId"},
    {"Employees", 15, "", "Transactions.EmployeeId"},
    {"CustomerPaymentTerms", 12, "Payment Terms", "OtherParty.CustomerPayTermId"},
    {"CustomerEmployees", 10, "", "OtherParty.EmployeeId"},
    {"ItemCategories", 16, "", "Item.ItemCategoryId"},
    {"ItemTypes", 20, "", "Item.ItemTypeId"},
    {"Items", 18, "", "TransactionLine.ItemId"},
    {"Jobs", 22, "", "Transactions.JobId"},
    {"JobCategories", 21, "", "Job.JobCategoryId"},
    {"Suppliers", 33, "", "Item.SupplierId"},
    {"CustomerCategories", 9, "", "OtherParty.CustomerCategoryId"},
    {"CustomerTypes", 13, "", "OtherParty.CustomerTypeId"},
    {"CustomerLocations", 11, "", "OtherParty.LocationId"},
};

// The purchase keys' lists: the same lists on the supplier's side, the supplier being the party
// of the line's document.
constexpr SalesFilter kPurchaseFilters[] = {
    {"Suppliers", 33, "", "Transactions.OtherPartyId"},
    {"Locations", 23, "", "TransactionLine.LocationId"},
    {"Departments", 14, "", "TransactionLine.DeptId"},
    {"Employees", 15, "", "Transactions.EmployeeId"},
    {"SupplierPaymentTerms", 37, "Payment Terms", "OtherParty.SupplierPayTermId"},
    {"SupplierEmployees", 35, "", "OtherParty.EmployeeId"},
    {"ItemCategories", 16, "", "Item.ItemCategoryId"},
    {"ItemTypes", 20, "", "Item.ItemTypeId"},
    {"Items", 18, "", "TransactionLine.ItemId"},
    {"Jobs", 22, "", "Transactions.JobId"},
    {"JobCategories", 21, "", "Job.JobCategoryId"},
    {"SupplierCategories", 34, "", "OtherParty.SupplierCategoryId"},
    {"SupplierTypes", 38, "", "OtherParty.SupplierTypeId"},
    {"SupplierLocations", 36, "", "OtherParty.LocationId"},
};

// The report's own groupings; the rest go to the shared table.
struct SalesOwnGrouping {
  std::string_view name;
  std::string_view field;
  std::string_view list_sql;  // "IsSupplier=" is followed by the database's true
  std::string_view key_field;
};
constexpr SalesOwnGrouping kSalesOwnGroupings[] = {
    {"Supplier", "Item.SupplierId",
     "SELECT OtherPartyId AS SupplierId,Name FROM OtherParty WHERE IsSupplier=", "SupplierId"},
    {"Customer", "Transactions.OtherPartyId", "SELECT OtherPartyId,Name FROM OtherParty",
     "OtherPartyId"},
    {"Customer Employee", "OtherParty.EmployeeId AS OtherPartyEmployeeId",
     "SELECT EmployeeId,Name FROM Employee", "OtherPartyEmployeeId"},
    {"Customer Payment Term", "OtherParty.CustomerPayTermId",
     "SELECT PaymentTermId As CustomerPayTermId,Description FROM PaymentTerm", "CustomerPayTermId"},
    {"Job Category", "Job.JobCategoryId", "SELECT JobCategoryId,Description FROM JobCategory",
     "JobCategoryId"},
    {"Employee", "Transactions.EmployeeId", "SELECT EmployeeId,Name FROM Employee", "EmployeeId"},
};

// The purchase reports' own: the item's supplier beside the supplier of the document, and the
// order number of the document.
constexpr SalesOwnGrouping kPurchaseOwnGroupings[] = {
    {"Supplier", "Item.SupplierId",
     "SELECT OtherPartyId AS SupplierId,Name FROM OtherParty WHERE IsSupplier=", "SupplierId"},
    {"Transactions Supplier", "Transactions.OtherPartyId AS TransactionSupplier",
     "SELECT OtherPartyId AS TransactionSupplier,Name FROM OtherParty WHERE IsSupplier=",
     "TransactionSupplier"},
    {"Supplier Employee", "OtherParty.EmployeeId AS OtherPartyEmployeeId",
     "SELECT EmployeeId,Name FROM Employee", "OtherPartyEmployeeId"},
    {"Supplier Payment Term", "OtherParty.SupplierPayTermId",
     "SELECT PaymentTermId As SupplierPayTermId,Description FROM PaymentTerm", "SupplierPayTermId"},
    {"Order Number", "Transactions.OrderNo",
     "SELECT OrderNo,'' FROM Transactions WHERE [Type]>=20 And [Type]<25 GROUP BY OrderNo",
     "OrderNo"},
    {"Job Category", "Job.JobCategoryId", "SELECT JobCategoryId,Description FROM JobCategory",
     "JobCategoryId"},
    {"Employee", "Transactions.EmployeeId", "SELECT EmployeeId,Name FROM Employee", "EmployeeId"},
};

// The lists the job keys offer: those on the job, the item and the line, none on the customer's
// record, which their queries do not read.
bool IsJobFilter(std::string_view name) {
  constexpr std::string_view kJobFilters[] = {"Jobs",           "JobCategories", "Items",
                                              "ItemCategories", "ItemTypes",     "Locations",
                                              "Departments",    "Employees"};
  return std::find(std::begin(kJobFilters), std::end(kJobFilters), name) != std::end(kJobFilters);
}

void AddListParameters(Parameters& parameters, std::span<const SalesFilter> filters, bool job_key,
                       std::string_view party_list) {
  for (const SalesFilter& f : filters) {
    if (job_key && !IsJobFilter(f.name)) continue;
    const bool primary = job_key ? f.name == "Jobs" : (f.name == party_list || f.name == "Items");
    CreateStandardParameter(f.index, parameters, primary, std::string(f.name),
                            std::string(f.caption));
  }
}

void AppendListFilters(std::string& where, const Parameters& parameters, std::string& heading,
                       std::span<const SalesFilter> filters, bool job_key, bool item_rows) {
  for (const SalesFilter& f : filters) {
    if (job_key && !IsJobFilter(f.name)) continue;
    std::string field(f.field);
    if (f.name == "Items" && item_rows) field = "Item.ItemId";
    AppendListParameterCondition(where, field, std::string(f.name), parameters, heading,
                                 kRangeText);
  }
}

bool OwnOrSharedGrouping(ChosenGrouping& grouping, const std::string& base,
                         std::span<const SalesOwnGrouping> own) {
  for (const SalesOwnGrouping& row : own) {
    if (grouping.name != row.name) continue;
    grouping.field = std::string(row.field);
    grouping.list_sql = std::string(row.list_sql);
    // The supplier lists end in the database's true.
    if (row.list_sql.ends_with("IsSupplier=")) {
      grouping.list_sql += Database::SQLBoolean(true) + " ORDER BY OtherPartyId";
    }
    grouping.key_field = std::string(row.key_field);
    return true;
  }
  // The lines' own fields read from TransactionLine, the item's from Item.
  std::string table = base;
  if (grouping.name == "Department" || grouping.name == "Location" || grouping.name == "Job") {
    table = "TransactionLine";
  }
  if (grouping.name == "Item") table = "Item";
  std::string name = grouping.name;
  GetGroupingDefinition(name, grouping.field, grouping.list_sql, grouping.key_field, table);
  return !grouping.field.empty();
}

}  // namespace

std::optional<std::string> SaleAddress(const std::string& party, const Variant& address_id) {
  const std::string id = address_id.IsNull() || address_id.IsEmpty() ? "" : address_id.Text();
  if (id.empty() || id == "0") return std::nullopt;
  std::shared_ptr<Recordset> rs = TrellinReportGlobals::RequireDatabase()->Query(
      "SELECT Address FROM OtherPartyAddress WHERE OtherPartyId=" + Database::SQLString(party) +
      " AND AddressId=" + Database::SQLString(id));
  if (rs->Eof() || rs->Value(0).IsNull()) return std::string();
  return rs->Value(0).Text();
}

void AddSalesListParameters(Parameters& parameters, bool job_key) {
  AddListParameters(parameters, kSalesFilters, job_key, "Customers");
}

void AppendSalesListFilters(std::string& where, const Parameters& parameters, std::string& heading,
                            bool job_key, bool item_rows) {
  AppendListFilters(where, parameters, heading, kSalesFilters, job_key, item_rows);
}

bool SalesGrouping(ChosenGrouping& grouping, const std::string& base) {
  return OwnOrSharedGrouping(grouping, base, kSalesOwnGroupings);
}

void AddPurchaseListParameters(Parameters& parameters) {
  AddListParameters(parameters, kPurchaseFilters, false, "Suppliers");
}

void AppendPurchaseListFilters(std::string& where, const Parameters& parameters,
                               std::string& heading, bool item_rows) {
  AppendListFilters(where, parameters, heading, kPurchaseFilters, false, item_rows);
}

bool PurchaseGrouping(ChosenGrouping& grouping, const std::string& base) {
  return OwnOrSharedGrouping(grouping, base, kPurchaseOwnGroupings);
}

}  // namespace trellin
