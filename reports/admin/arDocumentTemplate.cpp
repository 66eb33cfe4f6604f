// The Document keys: a ledger's parameters, WHERE and ORDER BY for a user's own layout.

#include "reports/admin/arDocumentTemplate.h"

#include <filesystem>
#include <span>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/host/Application.h"
#include "core/host/AssetDepreciation.h"
#include "core/host/HostDispatch.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Strings.h"

namespace trellin {
namespace {

// One standard parameter of a key: its row, and what replaces the row's name, caption and field.
struct DocumentParameter {
  long index;
  const char* name = "";
  const char* caption = "";
  const char* sql_field = "";
  bool primary = false;
};

enum class DocumentEntity { Customers, Suppliers, OtherParties, Accounts, Items, Jobs, Assets };

struct DocumentKey {
  std::string_view key;
  DocumentEntity entity;
  const char* date_as_at;
  const char* order_choices;
  bool primary;  // every standard parameter of the key is Primary
  std::span<const DocumentParameter> standard;
};

constexpr DocumentParameter kDocReceivables[] = {
    {8, "", "", "OtherParty.OtherPartyId"},
    {23, "", "", "OtherParty.LocationId"},
    {15, "", "", "OtherParty.EmployeeId"},
    {9, "", "Categories", "OtherParty.CustomerCategoryId"},
    {13, "", "Types", "OtherParty.CustomerTypeId"},
    {12, "CustomerPaymentTerms", "Payment Terms", "OtherParty.CustomerPayTermId"},
    {46, "Addresses", "Addresses", "AddressId"},
};
constexpr DocumentParameter kDocPayables[] = {
    {33, "", "", "OtherParty.OtherPartyId"},
    {23, "", "", "OtherParty.LocationId"},
    {15, "", "", "OtherParty.EmployeeId"},
    {34, "", "Categories", "OtherParty.SupplierCategoryId"},
    {38, "", "Types", "OtherParty.SupplierTypeId"},
    {37, "SupplierPaymentTerms", "Payment Terms", "OtherParty.SupplierPayTermId"},
    {47, "Addresses", "Addresses", "AddressId"},
};
constexpr DocumentParameter kDocOtherParties[] = {
    {24, "", "", "OtherParty.OtherPartyId"},
    {23, "", "", "OtherParty.LocationId"},
    {15, "", "", "OtherParty.EmployeeId"},
    {45, "Addresses", "Addresses", "AddressId"},
};
constexpr DocumentParameter kDocLedger[] = {{0}, {6}, {14}};
constexpr DocumentParameter kDocItems[] = {
    {18, "", "", "Item.ItemId", true},
    {23, "", "", "TransactionLine.LocationId"},
    {16, "", "Categories", "Item.ItemCategoryId"},
    {20, "", "Types", "Item.ItemTypeId"},
    {33, "", "", "Item.SupplierId"},
};
constexpr DocumentParameter kDocJobs[] = {
    {22, "", "", "Job.JobId"},
    {23, "", "", "Job.LocationId"},
    {21, "", "Categories", "Job.JobCategoryId"},
    {8, "", "", "JobContact.OtherPartyId"},
};
constexpr DocumentParameter kDocAssets[] = {
    {2, "", "", "Asset.AssetId"},
    {1, "", "Categories", "Asset.AssetCategoryId"},
    {3, "", "Sites", "Asset.AssetSiteId"},
    {4, "", "Types", "Asset.AssetTypeId"},
    {6, "", "", "Asset.BranchId"},
    {15, "", "", "Asset.EmployeeId"},
    {26},
    {33, "", "", "Asset.SupplierId"},
};

constexpr const char* kDocPartyOrders = "Code,Name,X Ref";
constexpr const char* kDocCodeOrders = "Code,Description";

const DocumentKey kDocKeys[] = {
    {"DocumentAP", DocumentEntity::Suppliers, "APCURRENT", kDocPartyOrders, false, kDocPayables},
    {"DocumentAR", DocumentEntity::Customers, "ARCURRENT", kDocPartyOrders, false, kDocReceivables},
    {"DocumentOP", DocumentEntity::OtherParties, "NOW", kDocPartyOrders, false, kDocOtherParties},
    {"DocumentGL", DocumentEntity::Accounts, "GLCURRENT", kDocCodeOrders, true, kDocLedger},
    {"DocumentSC", DocumentEntity::Items, "NOW", kDocCodeOrders, false, kDocItems},
    {"DocumentJO", DocumentEntity::Jobs, "NOW", kDocCodeOrders, false, kDocJobs},
    {"DocumentFA", DocumentEntity::Assets, "NOW", "Code,Description,Serial Number,Status", true,
     kDocAssets},
};

// Asset status check boxes, in the order of their codes 1 to 5.
constexpr const char* kDocAssetStatuses[] = {"On Order", "In Use", "Available", "Disposed",
                                             "Scrapped"};

const DocumentKey& FindDocumentKey(const std::string& name) {
  for (const DocumentKey& k : kDocKeys) {
    if (EqualsIgnoreCase(k.key, name)) return k;
  }
  throw std::invalid_argument("The document template has no report named \"" + name + "\".");
}

std::string_view DocumentEntityWord(DocumentEntity e) {
  switch (e) {
    case DocumentEntity::Customers:
      return "Customers";
    case DocumentEntity::Suppliers:
      return "Suppliers";
    case DocumentEntity::OtherParties:
      return "Other Parties";
    case DocumentEntity::Accounts:
      return "Accounts";
    case DocumentEntity::Items:
      return "Items";
    case DocumentEntity::Jobs:
      return "Jobs";
    case DocumentEntity::Assets:
      return "Assets";
  }
  return "";
}

// The field of an order choice, as each ledger's reports have always read it: items and
// accounts order by description only for "Name", which their choices do not offer.
std::string DocumentOrderField(DocumentEntity e, const std::string& order) {
  switch (e) {
    case DocumentEntity::Customers:
    case DocumentEntity::Suppliers:
    case DocumentEntity::OtherParties:
      if (order == "Name") return "OtherParty.Name";
      if (order == "X Ref") return "OtherParty.XRefId";
      return "OtherParty.OtherPartyId";
    case DocumentEntity::Items:
      return order == "Name" ? "Item.Description" : "Item.ItemId";
    case DocumentEntity::Jobs:
      return order == "Description" ? "Job.Description" : "Job.JobId";
    case DocumentEntity::Accounts:
      return order == "Name" ? "Account.Description" : "Account.AccountId";
    case DocumentEntity::Assets:
      if (order == "Serial Number") return "Asset.SerialNumber";
      if (order == "Status") return "Asset.Status";
      if (order == "Description") return "Asset.Description";
      return "Asset.AssetId";
  }
  return {};
}

std::string DocumentTemplateFolder() {
  auto& application = TrellinReportGlobals::Application;
  return application ? application->Options().TemplateFolder() : std::string();
}

}  // namespace

DesignerPtr CreatearDocumentTemplate() { return std::make_shared<arDocumentTemplate>(); }

std::string DocumentLayoutPath(const std::string& document_id) {
  std::filesystem::path file(document_id);
  const std::string folder = DocumentTemplateFolder();
  if (!file.has_parent_path() && !folder.empty()) file = std::filesystem::path(folder) / file;
  return file.string();
}

const std::string& arDocumentTemplate::Key() const { return TLReport()->ReportName(); }

void arDocumentTemplate::RefreshParameters(std::string& ReportName) {
  const DocumentKey& key = FindDocumentKey(ReportName);
  TLReport()->SetHasParameters(true);
  trellin::Parameters& p = TLReport()->Parameters();
  p.AddString("Message", "", false, "", "", true, "");
  p.AddString("Other", "", false, "", "", true, "");
  p.AddString("DocumentId", "", false, "", "", false, "");
  p.AddString("SQLOrderBy", "", false, "", "", false, "");
  p.AddString("SQLWhere", "", false, "", "", false, "");
  p.AddDate("dateFrom", Variant(), false, "", Variant(), false, "");
  p.AddDate("dateTo", Variant(), false, "", Variant(), false, "");
  p.AddDate("DateAsAt", Variant(), true, "", key.date_as_at, false, "Date As At");
  if (key.entity == DocumentEntity::Assets) {
    for (const char* name : {"DatePurchasedFrom", "DatePurchasedTo", "DateDisposedFrom",
                             "DateDisposedTo", "DateReviewFrom", "DateReviewTo"}) {
      p.AddDate(name, Variant(), false, "", Variant(), false, "");
    }
    for (const char* status : kDocAssetStatuses) {
      p.AddBoolean(std::string("Status") + status, true, false, "", true, false, "");
    }
  }
  for (const DocumentParameter& s : key.standard) {
    CreateStandardParameter(s.index, p, key.primary || s.primary, s.name, s.caption, "",
                            s.sql_field);
  }
  p.AddList("OrderBy", "Code", true, "", "Code", key.order_choices, false, "Document Order by");
}

bool arDocumentTemplate::ValidateParameters() {
  if (!Designer::ValidateParameters()) return false;
  const std::string id = Trim(TLReport()->Parameters().Value("DocumentId", Variant()).Text());
  const std::string folder = DocumentTemplateFolder();
  const std::string where =
      folder.empty() ? "no template folder is set" : "the template folder is \"" + folder + "\"";
  if (id.empty()) {
    throw Error(ErrorKind::Input,
                "DocumentId: name the layout to print, a file in the template "
                "folder or a path (" +
                    where + ").");
  }
  const std::string path = DocumentLayoutPath(id);
  std::error_code ec;
  if (!std::filesystem::is_regular_file(path, ec)) {
    throw Error(ErrorKind::Input,
                "DocumentId: there is no layout file \"" + path + "\" (" + where + ").");
  }
  // The user's layout takes the place of the designer's own, script and all.
  std::shared_ptr<LayoutProvider> provider = GetLayoutProvider();
  if (!provider) throw Error(ErrorKind::Internal, "no layout provider is installed");
  Sections().Clear();
  SetScript(nullptr);
  provider->LoadFile(path, *this);
  return true;
}

void arDocumentTemplate::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

void arDocumentTemplate::ActiveReport_ReportStart() {
  trellin::Parameters& p = TLReport()->Parameters();
  parameter_text_.clear();
  p.SetValue("SQLOrderBy", GetSQLOrderBy());
  p.SetValue("SQLWhere", GetSQLWhere());
  // The user's layout carries the same furniture as ours: company, title, print line.
  TLReport()->SetupStandardHeader(true);
  if (Control* text = FindControl("txtParameters")) text->SetText(GetParameterText());

  rpx_ = std::make_shared<TLRPXSupport>();
  const Variant as_at = p.Value("DateAsAt", Variant());
  if (as_at.IsDate()) rpx_->dateAsAt = as_at.ToDate().DateOnly();
  rpx_->DateFrom = p.Value("dateFrom", Variant::Null());
  rpx_->DateTo = p.Value("dateTo", Variant::Null());
  rpx_->TLReport = TLReport();
  rpx_->Parameters = &p;
  rpx_->SQLWhere = p.Value("SQLWhere", Variant()).Text();
  if (LayoutScript* script = Script()) {
    script->SetGlobal("rpx", Variant(std::static_pointer_cast<Object>(rpx_)));
  }
}

std::string arDocumentTemplate::GetSQLOrderBy() {
  const DocumentKey& key = FindDocumentKey(Key());
  const std::string order = TLReport()->Parameters().Value("OrderBy", Variant()).Text();
  parameter_text_ = std::string(DocumentEntityWord(key.entity)) + " ordered by " + order;
  return DocumentOrderField(key.entity, order);
}

std::string arDocumentTemplate::GetSQLWhere() {
  const DocumentKey& key = FindDocumentKey(Key());
  (void)GetSQLOrderBy();
  const trellin::Parameters& p = TLReport()->Parameters();
  std::string where;
  if (key.entity == DocumentEntity::Assets) {
    bool all = true;
    const std::string statuses = SelectedBooleanNames(p, "Status", all);
    if (!all && !statuses.empty()) {
      AppendDescription(parameter_text_, "Include " + statuses + " Assets");
      std::string codes;
      for (const std::string& item : Split(statuses, ",")) {
        codes += (codes.empty() ? "" : ",") +
                 std::to_string(Asset::StatusFromText(Replace(item, "'", "")));
      }
      AppendSQLCondition(where, "Asset.Status IN (" + codes + ")");
    }
  }
  AppendSQLCondition(where, CreateSQLWhereFromRangeParams(p, parameter_text_));
  if (key.entity == DocumentEntity::Assets) {
    AppendDateRangeCondition(where, "PurchaseDate", p.Value("DatePurchasedFrom", Variant()),
                             p.Value("DatePurchasedTo", Variant()), "Assets Purchased ",
                             parameter_text_);
    AppendDateRangeCondition(where, "DisposalDate", p.Value("DateDisposedFrom", Variant()),
                             p.Value("DateDisposedTo", Variant()), "Assets Disposed ",
                             parameter_text_);
    AppendDateRangeCondition(where, "ReviewDate", p.Value("DateReviewFrom", Variant()),
                             p.Value("DateReviewTo", Variant()), "Assets Review Date ",
                             parameter_text_);
  }
  if (key.entity == DocumentEntity::Accounts) {
    AppendListParameterCondition(where, "Account.AccountId", "Accounts", p, parameter_text_,
                                 kRangeText);
    AppendListParameterCondition(where, "Account.BranchId", "Branches", p, parameter_text_,
                                 kRangeText);
    AppendListParameterCondition(where, "Account.DeptId", "Departments", p, parameter_text_,
                                 kRangeText);
  }
  return where;
}

std::string arDocumentTemplate::GetParameterText() {
  if (parameter_text_.empty()) (void)GetSQLWhere();
  return parameter_text_;
}

}  // namespace trellin
