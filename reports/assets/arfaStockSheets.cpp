// The asset count sheets' key, row by row; the lines read once and each component put under its
// parent.

#include "reports/assets/arfaStockSheets.h"

#include <map>

#include "core/ReportUtilities.h"
#include "core/host/Recordset.h"
#include "platform/runtime/Strings.h"
#include "reports/assets/AssetLists.h"

namespace trellin {

namespace {

// Every order keeps a site's assets together, as each site starts a page.
constexpr ListOrder kSheetOrders[] = {
    {"Code", "Asset.AssetSiteId,Asset.AssetId"},
    {"Description", "Asset.AssetSiteId,Asset.Description,Asset.AssetId"},
    {"Serial Number", "Asset.AssetSiteId,Asset.SerialNumber,Asset.AssetId"},
};

// Components are sighted with their parent: ticked, they stand under it; unticked, only the
// assets that are no part of another are listed.
constexpr ListParameter kSheetParameters[] = {
    kAssetSitesFilter,
    kAssetCategoriesFilter,
    kAssetTypesFilter,
    kAssetBranchesFilter,
    kAssetEmployeesFilter,
    {.kind = ListParameterKind::Option,
     .name = "IncludeComponents",
     .caption = "Include Components",
     .phrase = "Components under their parent",
     .off_condition = "Asset.ParentAssetId IS NULL",
     .off_phrase = "Components left out",
     .checked = true},
};

constexpr ListKey kSheetKeys[] = {{
    .key = "AssetStockSheets",
    .base_sql = "SELECT Asset.AssetSiteId,AssetSite.Description AS SiteName,Asset.AssetId,"
                "Asset.Description,Asset.SerialNumber,Asset.AssetCategoryId,Asset.EmployeeId,"
                "Asset.ParentAssetId FROM Asset LEFT JOIN AssetSite ON "
                "Asset.AssetSiteId=AssetSite.AssetSiteId",
    .orders = kSheetOrders,
    .parameters = kSheetParameters,
}};

// How far a component's code and description stand in from its parent's.
constexpr float kIndent = 250;

}  // namespace

arfaStockSheets::arfaStockSheets() : ListDesigner("arfaStockSheets", kSheetKeys) {}

DesignerPtr CreatearfaStockSheets() { return std::make_shared<arfaStockSheets>(); }

void arfaStockSheets::RefreshParameters(std::string& ReportName) {
  ListDesigner::RefreshParameters(ReportName);
  AddAssetStatusBoxes(TLReport()->Parameters(), {"Disposed", "Scrapped"});
}

std::string arfaStockSheets::ExtraCondition() {
  status_phrase_.clear();
  return AssetStatusCondition(TLReport()->Parameters(), status_phrase_);
}

void arfaStockSheets::ActiveReport_ReportStart() {
  ListDesigner::ActiveReport_ReportStart();
  ReadLines();
  if (!lines_.empty()) Field("txtSite").SetText(lines_.front().site_caption);
  std::string description = Description();
  AppendDescription(description, status_phrase_);
  if (Control* parameters = FindControl("txtParameters")) parameters->SetText(description);
}

void arfaStockSheets::ReadLines() {
  // The rows of one site in the run's order, then the same site's components after their parent.
  std::vector<std::vector<SheetLine>> sites;
  const std::shared_ptr<Recordset> rows = DataControl().Recordset();
  DataControl().SetRecordset(nullptr);
  for (; rows && !rows->Eof(); rows->MoveNext()) {
    SheetLine line{.site = rows->Value("AssetSiteId"),
                   .asset = rows->Value("AssetId"),
                   .description = rows->Value("Description"),
                   .serial = rows->Value("SerialNumber"),
                   .category = rows->Value("AssetCategoryId"),
                   .employee = rows->Value("EmployeeId"),
                   .parent = UCase(rows->Value("ParentAssetId").Text())};
    const std::string site = line.site.Text();
    line.site_caption =
        site.empty() ? std::string("No site") : Trim(site + "  " + rows->Value("SiteName").Text());
    if (sites.empty() || UCase(sites.back().front().site.Text()) != UCase(site))
      sites.emplace_back();
    sites.back().push_back(std::move(line));
  }
  lines_.clear();
  next_ = 0;
  for (std::vector<SheetLine>& site : sites) {
    std::map<std::string, std::vector<const SheetLine*>, std::less<>> parts;
    std::map<std::string, bool, std::less<>> here;
    for (const SheetLine& line : site) here[UCase(line.asset.Text())] = true;
    for (const SheetLine& line : site) {
      if (!line.parent.empty() && here.count(line.parent)) parts[line.parent].push_back(&line);
    }
    for (const SheetLine& line : site) {
      // A component whose parent is elsewhere stands on its own line.
      if (!line.parent.empty() && here.count(line.parent)) continue;
      lines_.push_back(line);
      const auto found = parts.find(UCase(line.asset.Text()));
      if (found == parts.end()) continue;
      for (const SheetLine* part : found->second) {
        lines_.push_back(*part);
        lines_.back().indented = true;
      }
    }
  }
}

void arfaStockSheets::OnFormat(Section& section) {
  if (section.Type() == SectionType::PageHeader) {
    const ReportField* caption = Fields().Find("SiteCaption");
    if (caption != nullptr && !caption->Value().Text().empty()) {
      Field("txtSite").SetText(caption->Value().Text());
    }
  }
  ListDesigner::OnFormat(section);
}

void arfaStockSheets::Detail_Format() {
  Control& code = Field("txtCode");
  Control& description = Field("txtDescription");
  const Control& code_label = Field("lblCode");
  const Control& description_label = Field("lblDescription");
  const float indent = indented_ ? kIndent : 0;
  code.SetLeft(code_label.Left() + indent);
  code.SetWidth(code_label.Width() - indent);
  description.SetLeft(description_label.Left() + indent);
  description.SetWidth(description_label.Width() - indent);
}

void arfaStockSheets::ActiveReport_DataInitialize() {
  for (const char* name : {"AssetSiteId", "SiteCaption", "AssetId", "Description", "SerialNumber",
                           "AssetCategoryId", "EmployeeId"}) {
    Fields().Add(name);
  }
}

void arfaStockSheets::ActiveReport_FetchData(bool& eof) {
  if (next_ >= lines_.size()) {
    eof = true;
    return;
  }
  const SheetLine& line = lines_[next_++];
  indented_ = line.indented;
  Fields().Add("AssetSiteId").SetValue(line.site);
  Fields().Add("SiteCaption").SetValue(Variant(line.site_caption));
  Fields().Add("AssetId").SetValue(line.asset);
  Fields().Add("Description").SetValue(line.description);
  Fields().Add("SerialNumber").SetValue(line.serial);
  Fields().Add("AssetCategoryId").SetValue(line.category);
  Fields().Add("EmployeeId").SetValue(line.employee);
  eof = false;
}

}  // namespace trellin
