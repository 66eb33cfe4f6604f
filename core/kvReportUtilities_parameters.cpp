// The numbered table of standard list parameters.

#include <array>

#include "core/StandardListSQL.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"

namespace trellin {

namespace {

// A literal that a row's query needs from the database, placed between its head and its tail.
enum class Literal { kNone, kTrue, kNumber90 };

struct StandardParameterRow {
  long index;
  const char* name;
  const char* caption;  // nullptr: the row sets no caption
  const char* list_sql;
  Literal literal;
  const char* list_sql_tail;
  const char* key_field;
  const char* sql_field;    // nullptr: the key field
  bool by_address_options;  // the address rows below decide every column
};

constexpr char kPaymentTermsSQL[] =
    "SELECT PaymentTermId,Description FROM PaymentTerm ORDER BY PaymentTermId";

// clang-format off
constexpr std::array<StandardParameterRow, 49> kStandardParameters = {{
    {0, "Accounts", nullptr, "SELECT AccountId,Space(ALevel-1)+Description AS AccountDescription FROM Account ORDER BY AccountId", Literal::kNone, "", "AccountId", nullptr, false},
    {1, "AssetCategories", "Categories", "SELECT AssetCategoryId,Description FROM AssetCategory ORDER BY AssetCategoryId", Literal::kNone, "", "AssetCategoryId", nullptr, false},
    {2, "Assets", nullptr, "SELECT AssetId,Description FROM Asset ORDER BY AssetId", Literal::kNone, "", "AssetId", nullptr, false},
    {3, "AssetSites", "Sites", "SELECT AssetSiteId,Description FROM AssetSite ORDER BY AssetSiteId", Literal::kNone, "", "AssetSiteId", nullptr, false},
    {4, "AssetTypes", "Types", "SELECT AssetTypeId,Description FROM AssetType ORDER BY AssetTypeId", Literal::kNone, "", "AssetTypeId", nullptr, false},
    {5, "Banks", nullptr, "SELECT BankId,AccountName FROM Bank ORDER BY BankId", Literal::kNone, "", "BankId", nullptr, false},
    {6, "Branches", nullptr, "SELECT BranchId,Name FROM Branch ORDER BY BranchId", Literal::kNone, "", "BranchId", nullptr, false},
    {7, "Contacts", nullptr, "SELECT ContactId,LastName,FirstName FROM Contact ORDER BY ContactId", Literal::kNone, "", "ContactId", nullptr, false},
    {8, "Customers", nullptr, "SELECT OtherPartyId,Name FROM OtherParty WHERE IsCustomer=", Literal::kTrue, " ORDER BY OtherPartyId", "OtherPartyId", nullptr, false},
    {9, "CustomerCategories", "Cust. Categories", "SELECT CustomerCategoryId,Description FROM CustomerCategory ORDER BY CustomerCategoryId", Literal::kNone, "", "CustomerCategoryId", nullptr, false},
    {10, "CustomerEmployees", "Cust. Employee", "SELECT EmployeeId,Name FROM Employee ORDER BY EmployeeId", Literal::kNone, "", "EmployeeId", nullptr, false},
    {11, "CustomerLocations", "Cust. Locations", "SELECT LocationId,Description FROM Location ORDER BY LocationId", Literal::kNone, "", "LocationId", nullptr, false},
    {12, "PaymentTerms", "Payment Terms", kPaymentTermsSQL, Literal::kNone, "", "PaymentTermId", "CustomerPayTermId", false},
    {13, "CustomerTypes", "Cust. Types", "SELECT CustomerTypeId,Description FROM CustomerType ORDER BY CustomerTypeId", Literal::kNone, "", "CustomerTypeId", nullptr, false},
    {14, "Departments", nullptr, "SELECT DeptId,Description FROM Department ORDER BY DeptId", Literal::kNone, "", "DeptId", nullptr, false},
    {15, "Employees", nullptr, "SELECT EmployeeId,Name FROM Employee ORDER BY EmployeeId", Literal::kNone, "", "EmployeeId", nullptr, false},
    {16, "ItemCategories", "Item Categories", "SELECT ItemCategoryId,Description FROM ItemCategory ORDER BY ItemCategoryId", Literal::kNone, "", "ItemCategoryId", nullptr, false},
    {17, "Items", nullptr, "SELECT ItemId,Description FROM Item WHERE Inventory<>0 ORDER BY ItemId", Literal::kNone, "", "ItemId", nullptr, false},
    {18, "Items", nullptr, "SELECT ItemId,Description FROM Item ORDER BY ItemId", Literal::kNone, "", "ItemId", nullptr, false},
    {19, "Items", nullptr, "SELECT ItemId,Description FROM Item WHERE Inventory In(2,3) ORDER BY ItemId", Literal::kNone, "", "ItemId", nullptr, false},
    {20, "ItemTypes", "Item Types", "SELECT ItemTypeId,Description FROM ItemType ORDER BY ItemTypeId", Literal::kNone, "", "ItemTypeId", nullptr, false},
    {21, "JobCategories", "Job Categories", "SELECT JobCategoryId,Description FROM JobCategory ORDER BY JobCategoryId", Literal::kNone, "", "JobCategoryId", nullptr, false},
    {22, "Jobs", nullptr, "SELECT JobId,Description FROM Job ORDER BY JobId", Literal::kNone, "", "JobId", nullptr, false},
    {23, "Locations", nullptr, "SELECT LocationId,Description FROM Location ORDER BY LocationId", Literal::kNone, "", "LocationId", nullptr, false},
    {24, "OtherParties", "Other Parties", "SELECT OtherPartyId,Name FROM OtherParty", Literal::kNone, "", "OtherPartyId", nullptr, false},
    {25, "Status", "Status", kStatusUnionSQL, Literal::kNone, " ORDER BY Status", "Status", nullptr, false},
    {26, "ParentAssets", "Parent Assets", "SELECT Distinct ParentAssetId,(SELECT Description FROM ASSET as A WHERE Asset.ParentAssetId = A.AssetId) as ParentDescription FROM Asset WHERE ParentAssetId IS NOT NULL ORDER BY ParentAssetId", Literal::kNone, "", "ParentAssetId", nullptr, false},
    // The key field names a column the query does not return; the filter field is right.
    {27, "PaymentTypes", "Payment Types", kPaymentTypeUnionSQL, Literal::kNone, "", "PaymentType", "PayType", false},
    {28, "PaymentTerms", "Payment Terms", kPaymentTermsSQL, Literal::kNone, "", "PaymentTermId", "PaymentTermId", false},
    {29, "PenaltyInterests", "Penalty Interests", "SELECT PenaltyInterestId,Description FROM PenaltyInterest ORDER BY PenaltyInterestId", Literal::kNone, "", "PenaltyInterestId", nullptr, false},
    {30, "SerialNumber", "Serial Number", "SELECT DISTINCT SerialNumber FROM Item INNER JOIN TransactionLine ON Item.ItemId = TransactionLine.ItemId WHERE (Not TransactionLine.SerialNumber Is Null) AND Item.Inventory In (2,3) ORDER BY TransactionLine.SerialNumber", Literal::kNone, "", "SerialNumber", "TransactionLine.SerialNumber", false},
    {31, "Shelf", nullptr, "SELECT DISTINCT Shelf FROM ItemLocation WHERE Not Shelf Is Null ORDER BY Shelf", Literal::kNone, "", "Shelf", nullptr, false},
    {32, "Sources", nullptr, "SELECT glSourceId,Description FROM glSource ORDER BY glSourceId", Literal::kNone, "", "glSourceId", nullptr, false},
    {33, "Suppliers", nullptr, "SELECT OtherPartyId,Name FROM OtherParty WHERE IsSupplier=", Literal::kTrue, " ORDER BY OtherPartyId", "OtherPartyId", nullptr, false},
    {34, "SupplierCategories", "Supp. Categories", "SELECT SupplierCategoryId,Description FROM SupplierCategory ORDER BY SupplierCategoryId", Literal::kNone, "", "SupplierCategoryId", nullptr, false},
    {35, "SupplierEmployees", "Supp. Employee", "SELECT EmployeeId,Name FROM Employee ORDER BY EmployeeId", Literal::kNone, "", "EmployeeId", nullptr, false},
    {36, "SupplierLocations", "Supp. Locations", "SELECT LocationId,Description FROM Location ORDER BY LocationId", Literal::kNone, "", "LocationId", nullptr, false},
    {37, "PaymentTerms", "Payment Terms", kPaymentTermsSQL, Literal::kNone, "", "PaymentTermId", "SupplierPayTermId", false},
    {38, "SupplierTypes", "Supp. Types", "SELECT SupplierTypeId,Description FROM SupplierType ORDER BY SupplierTypeId", Literal::kNone, "", "SupplierTypeId", nullptr, false},
    {39, "TransactionTypes", "Transaction Types", "SELECT TransactionTypeId,Description FROM TransactionType ORDER BY TransactionTypeId", Literal::kNone, "", "TransactionTypeId", nullptr, false},
    {40, "TransactionTypes", "Transaction Types", "SELECT TransactionTypeId,Description FROM TransactionType WHERE [Type] Between 20 and 29 ORDER BY TransactionTypeId", Literal::kNone, "", "TransactionTypeId", nullptr, false},
    {41, "TransactionTypes", "Transaction Types", "SELECT TransactionTypeId,Description FROM TransactionType WHERE [Type] Between 30 and 39 ORDER BY TransactionTypeId", Literal::kNone, "", "TransactionTypeId", nullptr, false},
    {42, nullptr, nullptr, nullptr, Literal::kNone, "", nullptr, nullptr, true},
    {43, nullptr, nullptr, nullptr, Literal::kNone, "", nullptr, nullptr, true},
    {44, "Postcode", "Postcode", "SELECT DISTINCT Postcode FROM OtherPartyAddress ORDER BY Postcode", Literal::kNone, "", "Postcode", "OtherPartyAddress.Postcode", false},
    {45, "Addresses", nullptr, "SELECT OtherPartyAddress.AddressId FROM OtherPartyAddress GROUP BY OtherPartyAddress.AddressId ORDER BY OtherPartyAddress.AddressId", Literal::kNone, "", "AddressId", nullptr, false},
    {46, "Addresses", nullptr, "SELECT OtherPartyAddress.AddressId FROM OtherParty INNER JOIN OtherPartyAddress ON OtherParty.OtherPartyId = OtherPartyAddress.OtherPartyId WHERE OtherParty.IsCustomer=", Literal::kTrue, " GROUP BY  OtherPartyAddress.AddressId ORDER BY OtherPartyAddress.AddressId", "AddressId", nullptr, false},
    {47, "Addresses", nullptr, "SELECT OtherPartyAddress.AddressId FROM OtherParty INNER JOIN OtherPartyAddress ON OtherParty.OtherPartyId = OtherPartyAddress.OtherPartyId WHERE OtherParty.IsSupplier=", Literal::kTrue, " GROUP BY  OtherPartyAddress.AddressId ORDER BY OtherPartyAddress.AddressId", "AddressId", nullptr, false},
    {48, "TransactionTypes", "Transaction Types", "SELECT TransactionTypeId,Description FROM TransactionType WHERE [Type]=", Literal::kNumber90, " ORDER BY TransactionTypeId", "TransactionTypeId", nullptr, false},
}};
// clang-format on

constexpr bool RowsInIndexOrder() {
  for (std::size_t i = 0; i < kStandardParameters.size(); ++i) {
    if (kStandardParameters[i].index != static_cast<long>(i)) return false;
  }
  return true;
}
static_assert(RowsInIndexOrder(), "a standard parameter's index is its position in the table");

// Rows 42 and 43. The address columns City and State hold different things by country: in
// New Zealand the suburb may be kept in City (SuburbInCityField), and then the city in State.
enum class Country { kAny, kNZ, kNotNZ };
enum class SuburbOption { kAny, kInCity, kNotInCity };

struct AddressParameterRow {
  long index;
  Country country;
  SuburbOption suburb;
  const char* name;
  const char* caption;
  const char* list_sql;
  const char* key_field;
  const char* sql_field;
};

constexpr char kCitySQL[] = "SELECT DISTINCT City FROM OtherPartyAddress ORDER BY City";
constexpr char kStateSQL[] = "SELECT DISTINCT State FROM OtherPartyAddress ORDER BY State";

// clang-format off
constexpr std::array<AddressParameterRow, 6> kAddressParameters = {{
    {42, Country::kNotNZ, SuburbOption::kAny, "Suburb", "Suburb", kCitySQL, "City", "OtherPartyAddress.City"},
    {42, Country::kNZ, SuburbOption::kInCity, "Suburb", "Suburb", kCitySQL, "City", "OtherPartyAddress.City"},
    {42, Country::kNZ, SuburbOption::kNotInCity, "Suburb", "District", kStateSQL, "State", "OtherPartyAddress.State"},
    // The key stays City although the query returns State; the filter field is right.
    {43, Country::kNZ, SuburbOption::kInCity, "City", "City", kStateSQL, "City", "OtherPartyAddress.State"},
    {43, Country::kNZ, SuburbOption::kNotInCity, "City", "City", kCitySQL, "City", "OtherPartyAddress.City"},
    {43, Country::kNotNZ, SuburbOption::kAny, "State", "State", kStateSQL, "State", "OtherPartyAddress.State"},
}};
// clang-format on

bool Matches(const AddressParameterRow& row, long index, bool nz, bool suburb_in_city) {
  if (row.index != index) return false;
  if (row.country != Country::kAny && (row.country == Country::kNZ) != nz) return false;
  if (row.suburb != SuburbOption::kAny && (row.suburb == SuburbOption::kInCity) != suburb_in_city) {
    return false;
  }
  return true;
}

void FillFromAddressOptions(long index, Parameter& parameter) {
  const Options& options = TrellinReportGlobals::RequireApplication().Options();
  const bool nz = options.Country() == "NZ";
  const bool suburb_in_city = options.SuburbInCityField();
  for (const AddressParameterRow& row : kAddressParameters) {
    if (!Matches(row, index, nz, suburb_in_city)) continue;
    parameter.Name = row.name;
    parameter.Caption = row.caption;
    parameter.ListSQL = row.list_sql;
    parameter.KeyField = row.key_field;
    parameter.SQLField = row.sql_field;
    return;
  }
}

// Booleans and numbers are spelt differently by each database, so they come from it.
std::string LiteralText(Literal literal) {
  switch (literal) {
    case Literal::kNone:
      return "";
    case Literal::kTrue:
      return TrellinReportGlobals::RequireDatabase()->SQLBoolean(true);
    case Literal::kNumber90:
      return TrellinReportGlobals::RequireDatabase()->SQLNumber(90);
  }
  return "";
}

void FillFromRow(const StandardParameterRow& row, Parameter& parameter) {
  if (row.by_address_options) {
    FillFromAddressOptions(row.index, parameter);
    return;
  }
  parameter.Name = row.name;
  if (row.caption != nullptr) parameter.Caption = row.caption;
  parameter.ListSQL = row.list_sql + LiteralText(row.literal) + row.list_sql_tail;
  parameter.KeyField = row.key_field;
  parameter.SQLField = row.sql_field != nullptr ? row.sql_field : row.key_field;
}

}  // namespace

ParameterPtr CreateStandardParameter(long Index, trellin::Parameters& Parameters, bool Primary,
                                     const std::string& Name, const std::string& Caption,
                                     const std::string& FilterField, const std::string& SQLField) {
  auto parameter = std::make_shared<Parameter>();
  if (Index >= 0 && Index < static_cast<long>(kStandardParameters.size())) {
    FillFromRow(kStandardParameters[static_cast<std::size_t>(Index)], *parameter);
  }
  parameter->Primary = Primary;
  parameter->Kind = ParameterType::SQLList;
  if (!Name.empty()) parameter->Name = Name;
  if (!Caption.empty()) parameter->Caption = Caption;
  if (!SQLField.empty()) parameter->SQLField = SQLField;
  parameter->FilterField = Variant(FilterField);
  return Parameters.AddParameter(false, parameter);
}

}  // namespace trellin
