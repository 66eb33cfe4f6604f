// The table of grouping names, and the user-defined fields that stand in for any other name.

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>

#include "core/ReportUtilities.h"
#include "core/StandardListSQL.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

// What stands between a grouping query's head and its tail.
enum class ListPart { kNone, kTrue, kTable };

// How the field meets the report's table: kYes prefixes "Table." when there is a table, kNo
// leaves the field as it is, kByTable hands the row to its own rule below.
enum class Prefix { kYes, kNo, kByTable };

struct GroupingDefinition {
  std::string field;
  std::string list_sql;
  std::string key_field;
};

using TableRule = void (*)(const std::string& table, GroupingDefinition& definition);

struct GroupingRow {
  const char* name;
  const char* field;
  const char* list_sql;
  ListPart list_part;
  const char* list_sql_tail;
  const char* key_field;
  Prefix prefix;
  TableRule rule;  // only for Prefix::kByTable
};

// A line table and the header table that holds its transaction's employee, job and reference.
struct HeaderOfLine {
  std::string_view line;
  std::string_view header;
};

constexpr std::array<HeaderOfLine, 3> kEmployeeHeaders = {{
    {"TransactionLine", "Transactions"},
    {"acBatchTransactionLine", "acBatchTransaction"},
    {"PurchaseOrderLine", "PurchaseOrder"},
}};
// Jobs are redirected from transaction lines only: a batch line keeps its own JobId.
constexpr std::array<HeaderOfLine, 1> kJobHeaders = {{{"TransactionLine", "Transactions"}}};

template <std::size_t N>
std::string TableOnHeader(const std::string& table, const std::array<HeaderOfLine, N>& headers) {
  for (const HeaderOfLine& entry : headers) {
    if (entry.line == table) return std::string(entry.header);
  }
  return table;
}

void EmployeeRule(const std::string& table, GroupingDefinition& definition) {
  if (!table.empty()) definition.field = TableOnHeader(table, kEmployeeHeaders) + ".EmployeeId";
}

void JobRule(const std::string& table, GroupingDefinition& definition) {
  if (!table.empty()) definition.field = TableOnHeader(table, kJobHeaders) + ".JobId";
}

struct ReferenceTable {
  std::string_view table;
  const char* field;
  const char* list_sql;  // nullptr: the general query stands
};

constexpr ReferenceTable kReferenceTables[] = {
    {"glTransaction", "glTransaction.Reference", nullptr},
    {"TransactionLine", "Transactions.Reference", "SELECT Reference,'' FROM Transactions"},
    {"Transactions", "Transactions.Reference", "SELECT Reference,'' FROM Transactions"},
    {"PurchaseOrderLine", "PurchaseOrder.Reference", "SELECT Reference,'' FROM PurchaseOrder"},
    {"PurchaseOrder", "PurchaseOrder.Reference", "SELECT Reference,'' FROM PurchaseOrder"},
    {"acBatchTransactionLine", "acBatchTransaction.Reference",
     "SELECT Reference,'' FROM acBatchTransaction"},
    {"acBatchTransaction", "acBatchTransaction.Reference",
     "SELECT Reference,'' FROM acBatchTransaction"},
};

// Other tables keep the bare field "Reference" and list the references of the report's table.
void ReferenceRule(const std::string& table, GroupingDefinition& definition) {
  for (const ReferenceTable& entry : kReferenceTables) {
    if (entry.table != table) continue;
    definition.field = entry.field;
    if (entry.list_sql != nullptr) definition.list_sql = entry.list_sql;
    return;
  }
}

// Items name their supplier in SupplierId; everything else reaches suppliers as other parties.
void SupplierRule(const std::string& table, GroupingDefinition& definition) {
  definition.field = table == "Item" ? "SupplierId" : "OtherPartyId";
  definition.key_field = definition.field;
  if (!table.empty()) definition.field = table + "." + definition.field;
}

// clang-format off
constexpr GroupingRow kGroupings[] = {
    {"Account", "AccountId", "SELECT AccountId,Description AS Name FROM Account ORDER BY AccountId", ListPart::kNone, "", "AccountId", Prefix::kYes, nullptr},
    {"Address", "AddressId", "SELECT AddressId,'' AS tempField FROM Transactions GROUP BY AddressId", ListPart::kNone, "", "AddressId", Prefix::kYes, nullptr},
    {"AddressId", "Transactions.AddressId", "SELECT AddressId,'' AS tempField FROM Transactions GROUP BY AddressId", ListPart::kNone, "", "AddressId", Prefix::kNo, nullptr},
    {"Asset", "AssetId", "SELECT AssetId,Description FROM Asset", ListPart::kNone, "", "AssetId", Prefix::kYes, nullptr},
    {"Asset Category", "AssetCategoryId", "SELECT AssetCategoryId,Description FROM AssetCategory", ListPart::kNone, "", "AssetCategoryId", Prefix::kYes, nullptr},
    {"Asset Site", "AssetSiteId", "SELECT AssetSiteId,Description FROM AssetSite", ListPart::kNone, "", "AssetSiteId", Prefix::kYes, nullptr},
    {"Asset Type", "AssetTypeId", "SELECT AssetTypeId,Description FROM AssetType", ListPart::kNone, "", "AssetTypeId", Prefix::kYes, nullptr},
    {"Bank", "BankId", "SELECT BankId,AccountName AS Name FROM Bank ORDER BY BankId", ListPart::kNone, "", "BankId", Prefix::kYes, nullptr},
    {"Batch", "BatchId", "SELECT BatchId,'' FROM ", ListPart::kTable, "", "BatchId", Prefix::kYes, nullptr},
    {"Branch", "BranchId", "SELECT BranchId,Name FROM Branch", ListPart::kNone, "", "BranchId", Prefix::kYes, nullptr},
    {"Customer", "OtherPartyId", "SELECT OtherPartyId,Name FROM OtherParty WHERE IsCustomer=", ListPart::kTrue, "", "OtherPartyId", Prefix::kYes, nullptr},
    {"Customer Category", "OtherParty.CustomerCategoryId", "SELECT CustomerCategoryId,Description FROM CustomerCategory", ListPart::kNone, "", "CustomerCategoryId", Prefix::kNo, nullptr},
    {"Customer Location", "OtherParty.LocationId", "SELECT LocationId,Description FROM Location", ListPart::kNone, "", "LocationId", Prefix::kNo, nullptr},
    {"Customer Type", "OtherParty.CustomerTypeId", "SELECT CustomerTypeId,Description FROM CustomerType", ListPart::kNone, "", "CustomerTypeId", Prefix::kNo, nullptr},
    {"Customer Payment Term", "OtherParty.CustomerPayTermId", "SELECT PaymentTermId,Description FROM PaymentTerm", ListPart::kNone, "", "CustomerPayTermId", Prefix::kNo, nullptr},
    {"Department", "DeptId", "SELECT DeptId,Description FROM Department", ListPart::kNone, "", "DeptId", Prefix::kYes, nullptr},
    {"Employee", "EmployeeId", "SELECT EmployeeId,Name FROM Employee", ListPart::kNone, "", "EmployeeId", Prefix::kByTable, &EmployeeRule},
    {"Source", "glSourceId", "SELECT glSourceId,Description AS Name FROM glSource ORDER BY glSourceId", ListPart::kNone, "", "glSourceId", Prefix::kYes, nullptr},
    {"Item", "ItemId", "SELECT ItemId,Description FROM Item", ListPart::kNone, "", "ItemId", Prefix::kYes, nullptr},
    {"Item Category", "Item.ItemCategoryId", "SELECT ItemCategoryId,Description FROM ItemCategory", ListPart::kNone, "", "ItemCategoryId", Prefix::kNo, nullptr},
    {"Item Type", "Item.ItemTypeId", "SELECT ItemTypeId,Description FROM ItemType", ListPart::kNone, "", "ItemTypeId", Prefix::kNo, nullptr},
    {"Job", "JobId", "SELECT JobId,Description FROM Job", ListPart::kNone, "", "JobId", Prefix::kByTable, &JobRule},
    {"Job Category", "Job.JobCategoryId", "SELECT JobCategoryId,Description FROM JobCategory", ListPart::kNone, "", "JobCategoryId", Prefix::kNo, nullptr},
    {"Location", "LocationId", "SELECT LocationId,Description FROM Location", ListPart::kNone, "", "LocationId", Prefix::kYes, nullptr},
    {"Other Party", "OtherPartyId", "SELECT OtherPartyId,Name FROM OtherParty ORDER BY OtherPartyId", ListPart::kNone, "", "OtherPartyId", Prefix::kYes, nullptr},
    {"Other Party Type", "OtherParty.Type", "SELECT DISTINCT [Type],''  FROM OtherParty ORDER BY [Type]", ListPart::kNone, "", "Type", Prefix::kNo, nullptr},
    {"Parent Asset", "ParentAssetId", "SELECT  ParentAssetId,(SELECT Description FROM Asset as A WHERE A.AssetId = Asset.ParentAssetId) as ParentDescription FROM Asset", ListPart::kNone, "", "ParentAssetId", Prefix::kYes, nullptr},
    {"Reference", "Reference", "SELECT Reference, '' FROM ", ListPart::kTable, " GROUP BY Reference", "Reference", Prefix::kByTable, &ReferenceRule},
    {"Shelf", "Shelf", "SELECT Shelf, '' FROM ItemLocation GROUP BY Shelf", ListPart::kNone, "", "Shelf", Prefix::kNo, nullptr},
    {"Status", "Status", kStatusUnionSQL, ListPart::kNone, "", "Status", Prefix::kNo, nullptr},
    {"Supplier", "OtherPartyId", "SELECT OtherPartyId,Name FROM OtherParty WHERE IsSupplier=", ListPart::kTrue, "", "OtherPartyId", Prefix::kByTable, &SupplierRule},
    {"Supplier Location", "OtherParty.LocationId", "SELECT LocationId,Description FROM Location", ListPart::kNone, "", "LocationId", Prefix::kNo, nullptr},
    {"Supplier Category", "OtherParty.SupplierCategoryId", "SELECT SupplierCategoryId,Description FROM SupplierCategory", ListPart::kNone, "", "SupplierCategoryId", Prefix::kNo, nullptr},
    {"Supplier Type", "OtherParty.SupplierTypeId", "SELECT SupplierTypeId,Description FROM SupplierType", ListPart::kNone, "", "SupplierTypeId", Prefix::kNo, nullptr},
    {"Supplier Payment Term", "OtherParty.SupplierPayTermId", "SELECT PaymentTermId,Description FROM PaymentTerm", ListPart::kNone, "", "SupplierPayTermId", Prefix::kNo, nullptr},
    {"Transaction Type", "TransactionTypeId", "SELECT TransactionTypeId,Description FROM TransactionType", ListPart::kNone, "", "TransactionTypeId", Prefix::kYes, nullptr},
};
// clang-format on

std::string ListPartText(ListPart part, const std::string& table) {
  switch (part) {
    case ListPart::kNone:
      return "";
    case ListPart::kTrue:
      // The spelling of True differs by database.
      return TrellinReportGlobals::RequireDatabase()->SQLBoolean(true);
    case ListPart::kTable:
      return table;
  }
  return "";
}

const GroupingRow* FindGrouping(const std::string& name) {
  for (const GroupingRow& row : kGroupings) {
    if (name == row.name) return &row;
  }
  return nullptr;
}

// The kinds of record that carry user-defined fields, by the table that holds them.
struct UserDefinedTable {
  std::string_view table;
  int kind;
};

constexpr UserDefinedTable kUserDefinedTables[] = {
    {"Account", 8},
    {"Asset", 1},
    {"Item", 2},
    {"Job", 3},
    {"OtherParty", 4},
    {"Transactions", 5},
    {"acBatchTransaction", 5},
    {"PurchaseOrder", 5},
};

void UserDefinedGrouping(const std::string& name, const std::string& table,
                         const std::string& field_table_default, GroupingDefinition& definition) {
  std::string field_table = field_table_default;
  std::string field_name;
  const std::size_t colon = name.find(':');
  if (colon != std::string::npos) {
    field_table = name.substr(0, colon);
    field_name = name.substr(colon + 1);
  }
  if (field_table.empty()) field_table = table;
  // A batch report reads its transactions' fields from the batch table.
  if (field_table == "Transactions" && table == "acBatchTransaction") {
    field_table = "acBatchTransaction";
  }
  for (const UserDefinedTable& entry : kUserDefinedTables) {
    if (entry.table == field_table) {
      ResolveUserDefinedField(field_name, definition.field, definition.list_sql, entry.kind);
      break;
    }
  }
  definition.key_field = field_table + definition.field;
  // The field goes into a SELECT list under an alias; MoveInCommaList cuts the alias off again
  // for GROUP BY and ORDER BY.
  if (!definition.field.empty()) {
    definition.field = field_table + "." + definition.field + " AS " + definition.key_field;
  }
}

}  // namespace

std::vector<std::string> GroupingNames() {
  std::vector<std::string> names;
  for (const GroupingRow& row : kGroupings) names.emplace_back(row.name);
  return names;
}

void GetGroupingDefinition(std::string& Name, std::string& Field, std::string& ListSQL,
                           std::string& KeyField, const std::string& Table,
                           const std::string& FieldTable) {
  GroupingDefinition definition;
  if (const GroupingRow* row = FindGrouping(Name)) {
    definition.field = row->field;
    definition.list_sql = row->list_sql + ListPartText(row->list_part, Table) + row->list_sql_tail;
    definition.key_field = row->key_field;
    if (row->prefix == Prefix::kYes && !Table.empty()) {
      definition.field = Table + "." + definition.field;
    } else if (row->prefix == Prefix::kByTable && row->rule != nullptr) {
      row->rule(Table, definition);
    }
  } else {
    UserDefinedGrouping(Name, Table, FieldTable, definition);
  }
  Field = std::move(definition.field);
  ListSQL = std::move(definition.list_sql);
  KeyField = std::move(definition.key_field);
}

std::vector<ChosenGrouping> ResolveGroupings(const std::vector<std::string>& Names,
                                             const std::vector<bool>& PageBreaks,
                                             const std::string& Table, const OwnGroupingRule& Own,
                                             UnknownGrouping Unknown) {
  std::vector<ChosenGrouping> chosen;
  const int count = static_cast<int>(Names.size());
  for (int i = count - 1; i >= 0; --i) {
    ChosenGrouping g;
    g.level = count - i;
    g.name = Names[static_cast<std::size_t>(i)];
    g.page_break = PageBreaks[static_cast<std::size_t>(i)];
    if (!Own || !Own(g)) GetGroupingDefinition(g.name, g.field, g.list_sql, g.key_field, Table);
    if (g.field.empty()) {
      if (Unknown == UnknownGrouping::kSkip) continue;
      throw std::invalid_argument("Groupings: \"" + g.name +
                                  "\" is not a grouping of this report.");
    }
    chosen.push_back(std::move(g));
  }
  return chosen;
}

std::vector<ChosenGrouping> ChooseGroupings(const Variant& Groupings, const std::string& Table,
                                            const OwnGroupingRule& Own, UnknownGrouping Unknown,
                                            int MaxLevels) {
  std::vector<std::string> names;
  std::vector<bool> page_breaks;
  if (!SplitGroupings(Groupings, names, page_breaks)) return {};
  const auto kept = static_cast<std::size_t>(std::min(static_cast<int>(names.size()), MaxLevels));
  names.resize(kept);
  page_breaks.resize(kept);
  return ResolveGroupings(names, page_breaks, Table, Own, Unknown);
}

}  // namespace trellin
