#include "platform/business/CompanyBusinessObjects.h"

#include <stdexcept>
#include <vector>

#include "platform/business/AssetBook.h"
#include "platform/business/CompanyAssetDepreciation.h"
#include "platform/business/CompanyItemCosting.h"
#include "platform/business/CompanyItemStockLevel.h"
#include "platform/runtime/Strings.h"

namespace trellin::business {

namespace {

std::string Key(std::string_view code) { return UCase(Trim(code)); }

std::string TextOf(const Recordset& rs, std::string_view field) {
  const Variant& value = rs.Value(field);
  if (value.IsNull() || value.IsEmpty()) return {};
  return Trim(value.Text());
}

bool BooleanOf(const Recordset& rs, std::string_view field) {
  const Variant& value = rs.Value(field);
  return !value.IsNull() && !value.IsEmpty() && value.ToBool();
}

// The lines of a stored multi-line text, trimmed, without blank ones, whatever breaks it has.
std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  for (std::string line : Split(text, "\n")) {
    line = Trim(line);
    if (!line.empty() && line.back() == '\r') line = Trim(line.substr(0, line.size() - 1));
    if (!line.empty()) lines.push_back(std::move(line));
  }
  return lines;
}

// The texts that are not empty.
std::vector<std::string> Present(std::initializer_list<std::string> parts) {
  std::vector<std::string> present;
  for (const std::string& part : parts) {
    if (!part.empty()) present.push_back(part);
  }
  return present;
}

std::string JoinPresent(std::initializer_list<std::string> parts, std::string_view separator) {
  std::string joined;
  for (const std::string& part : Present(parts)) {
    if (!joined.empty()) joined += separator;
    joined += part;
  }
  return joined;
}

// "Bus: 0800 884 627": a caption and a value, or nothing without a value.
std::string Labelled(std::string_view caption, const std::string& value) {
  return value.empty() ? std::string() : std::string(caption) + value;
}

// Reads a whole table into `table` by its first column, once.
template <typename T, typename Read>
void LoadOnce(std::optional<std::map<std::string, T, std::less<>>>& table, Database& database,
              std::string_view sql, Read read) {
  if (table) return;
  std::map<std::string, T, std::less<>> rows;
  std::shared_ptr<Recordset> rs = database.Query(sql);
  for (; !rs->Eof(); rs->MoveNext()) {
    T row = read(*rs);
    std::string key = Key(row.code);
    rows.emplace(std::move(key), std::move(row));
  }
  table = std::move(rows);
}

template <typename T>
const T* FindIn(const std::optional<std::map<std::string, T, std::less<>>>& table,
                std::string_view code) {
  auto found = table->find(Key(code));
  return found == table->end() ? nullptr : &found->second;
}

Branch ReadBranch(const Recordset& rs) {
  Branch branch;
  branch.code = TextOf(rs, "BranchId");
  branch.name = TextOf(rs, "Name");
  branch.description = TextOf(rs, "Description");
  branch.address_lines = LinesOf(TextOf(rs, "Address"));
  branch.phone = TextOf(rs, "Phone");
  branch.fax = TextOf(rs, "Fax");
  branch.email = TextOf(rs, "Email");
  branch.website = TextOf(rs, "Website");
  branch.contact_lines = Present({Labelled("Bus: ", branch.phone), Labelled("Fax: ", branch.fax),
                                  Labelled("Email: ", branch.email)});
  branch.tax_file_number = TextOf(rs, "TaxFileNumber");
  branch.tax_number = TextOf(rs, "TaxNumber");
  return branch;
}

BankDetails ReadBank(const Recordset& rs) {
  BankDetails bank;
  bank.code = TextOf(rs, "BankId");
  bank.account_name = TextOf(rs, "AccountName");
  bank.bank_name = TextOf(rs, "BankName");
  bank.branch = TextOf(rs, "Branch");
  bank.account_number = TextOf(rs, "AccountNumber");
  bank.bank_number = TextOf(rs, "BankNumber");
  bank.lines = Present({bank.bank_name, bank.branch, bank.account_number});
  const Variant& overdraft = rs.Value("OverdraftLimit");
  if (!overdraft.IsNull()) bank.overdraft_limit = overdraft.ToCurrency();
  bank.active = BooleanOf(rs, "Active");
  bank.in_use = BooleanOf(rs, "InUse");
  bank.asset_account =
      JoinPresent({TextOf(rs, "AssetAccountId"), TextOf(rs, "AssetDescription")}, ", ");
  bank.fees_account =
      JoinPresent({TextOf(rs, "FeesAccountId"), TextOf(rs, "FeesDescription")}, ", ");
  return bank;
}

TaxCategory ReadTaxCategory(const Recordset& rs) {
  TaxCategory category;
  category.code = TextOf(rs, "TaxCategoryId");
  category.description = TextOf(rs, "Description");
  const Variant& rate = rs.Value("Rate");
  category.rate = rate.IsNull() ? 0.0 : rate.ToDouble();
  category.inclusive = BooleanOf(rs, "Inclusive");
  return category;
}

Employee ReadEmployee(const Recordset& rs) {
  return {TextOf(rs, "EmployeeId"), TextOf(rs, "Name"), TextOf(rs, "Title"),
          TextOf(rs, "ContactMethod"), TextOf(rs, "ContactDetail")};
}

AssetCategory ReadAssetCategory(const Recordset& rs) {
  return {TextOf(rs, "AssetCategoryId"), TextOf(rs, "Description"), TextOf(rs, "CalculationPeriod"),
          TextOf(rs, "Revaluation"), TextOf(rs, "DisposalType")};
}

DocumentType ReadDocumentType(const Recordset& rs) {
  DocumentType type;
  type.code = TextOf(rs, "TransactionTypeId");
  type.description = TextOf(rs, "Description");
  const Variant& number = rs.Value("Type");
  type.type = number.IsNull() ? 0 : static_cast<std::int16_t>(number.ToLong());
  type.message = TextOf(rs, "Message");
  return type;
}

StockItem ReadItem(const Recordset& rs) {
  StockItem item;
  item.code = TextOf(rs, "ItemId");
  item.description = TextOf(rs, "Description");
  const Variant& inventory = rs.Value("Inventory");
  item.tracking =
      inventory.IsNull() ? ItemTracking::None : static_cast<ItemTracking>(inventory.ToLong());
  return item;
}

}  // namespace

CompanyBusinessObjects::CompanyBusinessObjects(std::shared_ptr<trellin::Database> database)
    : database_(std::move(database)) {
  if (!database_) throw std::invalid_argument("The business objects need a company database.");
}

const OtherParty* CompanyBusinessObjects::FindOtherParty(std::string_view code) {
  const std::string key = Key(code);
  if (auto found = parties_.find(key); found != parties_.end()) {
    return found->second ? &*found->second : nullptr;
  }
  std::optional<OtherParty>& slot = parties_[key];
  const std::string literal = Database::SQLString(Trim(code));
  std::shared_ptr<Recordset> rs = database_->Query(
      "SELECT OtherPartyId,Name,ChqName,XRefId,IsCustomer,IsSupplier,TaxNumber,"
      "(SELECT BranchId FROM Location WHERE Location.LocationId=OtherParty.LocationId) AS BranchId,"
      "(SELECT Description FROM PaymentTerm WHERE PaymentTerm.PaymentTermId="
      "OtherParty.CustomerPayTermId) AS CustomerTerms,"
      "(SELECT Description FROM PaymentTerm WHERE PaymentTerm.PaymentTermId="
      "OtherParty.SupplierPayTermId) AS SupplierTerms "
      "FROM OtherParty WHERE OtherPartyId=" +
      literal);
  if (rs->Eof()) return nullptr;
  OtherParty party;
  party.code = TextOf(*rs, "OtherPartyId");
  party.name = TextOf(*rs, "Name");
  party.cheque_name = TextOf(*rs, "ChqName");
  party.xref = TextOf(*rs, "XRefId");
  party.is_customer = BooleanOf(*rs, "IsCustomer");
  party.is_supplier = BooleanOf(*rs, "IsSupplier");
  party.tax_number = TextOf(*rs, "TaxNumber");
  party.branch = TextOf(*rs, "BranchId");
  party.customer_terms = TextOf(*rs, "CustomerTerms");
  party.supplier_terms = TextOf(*rs, "SupplierTerms");

  std::shared_ptr<Recordset> addresses = database_->Query(
      "SELECT AddressId,Address,City,State,Postcode,Country FROM OtherPartyAddress "
      "WHERE OtherPartyId=" +
      literal + " ORDER BY AddressId");
  for (; !addresses->Eof(); addresses->MoveNext()) {
    PartyAddress address;
    address.kind = TextOf(*addresses, "AddressId");
    address.lines = LinesOf(TextOf(*addresses, "Address"));
    std::string place;
    for (const std::string& part : Present({TextOf(*addresses, "City"), TextOf(*addresses, "State"),
                                            TextOf(*addresses, "Postcode")})) {
      place += (place.empty() ? "" : " ") + part;
    }
    if (!place.empty()) address.lines.push_back(place);
    if (std::string country = TextOf(*addresses, "Country"); !country.empty()) {
      address.lines.push_back(country);
    }
    party.addresses.push_back(std::move(address));
  }

  std::shared_ptr<Recordset> methods = database_->Query(
      "SELECT Kind,Detail FROM OtherPartyContactMethod WHERE OtherPartyId=" + literal +
      " ORDER BY Sequence");
  for (; !methods->Eof(); methods->MoveNext()) {
    party.contact_methods.push_back({TextOf(*methods, "Kind"), TextOf(*methods, "Detail")});
  }
  slot = std::move(party);
  return &*slot;
}

const Branch* CompanyBusinessObjects::FindBranch(std::string_view code) {
  LoadOnce(branches_, *database_,
           "SELECT BranchId,Name,Description,Address,Phone,Fax,Email,Website,TaxFileNumber,"
           "TaxNumber FROM Branch",
           ReadBranch);
  return FindIn(branches_, code);
}

const BankDetails* CompanyBusinessObjects::FindBank(std::string_view code) {
  LoadOnce(banks_, *database_,
           "SELECT BankId,AccountName,BankName,Branch,AccountNumber,BankNumber,OverdraftLimit,"
           "Active,InUse,AssetAccountId,FeesAccountId,"
           "(SELECT Description FROM Account WHERE Account.AccountId = Bank.AssetAccountId) AS "
           "AssetDescription,"
           "(SELECT Description FROM Account WHERE Account.AccountId = Bank.FeesAccountId) AS "
           "FeesDescription FROM Bank",
           ReadBank);
  return FindIn(banks_, code);
}

const TaxCategory* CompanyBusinessObjects::FindTaxCategory(std::string_view code) {
  LoadOnce(tax_categories_, *database_,
           "SELECT TaxCategoryId,Description,Rate,Inclusive FROM TaxCategory", ReadTaxCategory);
  return FindIn(tax_categories_, code);
}

const Employee* CompanyBusinessObjects::FindEmployee(std::string_view code) {
  LoadOnce(employees_, *database_,
           "SELECT EmployeeId,Name,Title,ContactMethod,ContactDetail FROM Employee", ReadEmployee);
  return FindIn(employees_, code);
}

const AssetCategory* CompanyBusinessObjects::FindAssetCategory(std::string_view code) {
  LoadOnce(asset_categories_, *database_,
           "SELECT AssetCategoryId,Description,CalculationPeriod,Revaluation,DisposalType "
           "FROM AssetCategory",
           ReadAssetCategory);
  return FindIn(asset_categories_, code);
}

const DocumentType* CompanyBusinessObjects::FindDocumentType(std::string_view code) {
  LoadOnce(document_types_, *database_,
           "SELECT TransactionTypeId,Description,Type,Message FROM TransactionType",
           ReadDocumentType);
  return FindIn(document_types_, code);
}

const StockItem* CompanyBusinessObjects::FindItem(std::string_view code) {
  LoadOnce(items_, *database_, "SELECT ItemId,Description,Inventory FROM Item", ReadItem);
  return FindIn(items_, code);
}

const Branch* CompanyBusinessObjects::FindLocationBranch(std::string_view code) {
  LoadOnce(location_branches_, *database_, "SELECT LocationId,BranchId FROM Location",
           [](const Recordset& rs) {
             return LocationBranch{TextOf(rs, "LocationId"), TextOf(rs, "BranchId")};
           });
  const LocationBranch* location = FindIn(location_branches_, code);
  if (location == nullptr || location->branch.empty()) return nullptr;
  return FindBranch(location->branch);
}

std::unique_ptr<ItemStockLevel> CompanyBusinessObjects::CreateItemStockLevel() {
  return std::make_unique<CompanyItemStockLevel>(database_);
}

std::unique_ptr<ItemCosting> CompanyBusinessObjects::CreateItemCosting(const Tax& tax) {
  return std::make_unique<CompanyItemCosting>(database_, tax);
}

const std::shared_ptr<const AssetBook>& CompanyBusinessObjects::Assets() {
  if (!assets_) assets_ = AssetBook::Read(*database_);
  return assets_;
}

std::unique_ptr<AssetDepreciation> CompanyBusinessObjects::CreateAssetDepreciation() {
  return std::make_unique<CompanyAssetDepreciation>(Assets());
}

std::unique_ptr<Asset> CompanyBusinessObjects::CreateAsset() {
  return std::make_unique<CompanyAsset>(Assets());
}

std::unique_ptr<AssetTaxValues> CompanyBusinessObjects::CreateAssetTaxValues(
    const std::vector<FinancialYear>& years) {
  return std::make_unique<CompanyAssetTaxValues>(Assets(), years);
}

std::unique_ptr<DepreciationRun> CompanyBusinessObjects::CreateDepreciationRun(
    Date date_dated, const std::vector<FinancialYear>& years) {
  return std::make_unique<CompanyDepreciationRun>(Assets(), date_dated, years);
}

}  // namespace trellin::business
