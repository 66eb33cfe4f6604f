// The asset schedules' shared filters, groupings, sections and start of the run.

#include "reports/assets/arfaScheduleBase.h"

#include <stdexcept>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/TrellinReports.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

constexpr const char* kGroupings =
    "Category,Site,Type,Branch,Employee,Parent Asset,Status,Supplier";

// The family's groupings by the names it offers: a standard grouping's name, or a field of its
// own. Status takes its captions from the Asset object in the group header.
struct ScheduleGrouping {
  const char* name;
  const char* standard;  // the standard grouping's name; nullptr for the field below
  const char* field;
  const char* list_sql;
  const char* key_field;
};

constexpr ScheduleGrouping kScheduleGroupings[] = {
    {"Category", "Asset Category", "", "", ""},
    {"Site", "Asset Site", "", "", ""},
    {"Type", "Asset Type", "", "", ""},
    {"Branch", "Branch", "", "", ""},
    {"Employee", "Employee", "", "", ""},
    {"Parent Asset", "Parent Asset", "", "", ""},
    {"Status", nullptr, "Status", "", "Status"},
    {"Supplier", nullptr, "Asset.SupplierId",
     "SELECT OtherPartyId AS SupplierId,Name FROM OtherParty", "SupplierId"},
};

// The standard lists in their order: index, name.
struct ScheduleList {
  long index;
  const char* name;
};
constexpr ScheduleList kLists[] = {{2, "Assets"},        {1, "AssetCategories"}, {3, "AssetSites"},
                                   {4, "AssetTypes"},    {6, "Branches"},        {15, "Employees"},
                                   {26, "ParentAssets"}, {33, "Suppliers"}};

constexpr const char* kStatuses[] = {"On Order", "In Use", "Available", "Disposed", "Scrapped"};

}  // namespace

void arfaScheduleBase::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

Variant arfaScheduleBase::DateOrNull(const Variant& v) {
  if (v.IsNull() || v.IsEmpty() || v.IsMissing()) return Variant::Null();
  if (!v.IsDate() && Trim(v.Text()).empty()) return Variant::Null();
  return Variant(v.ToDate().DateOnly());
}

std::string arfaScheduleBase::DateText(const Variant& date) {
  if (date.IsNull()) return {};
  return Format(date, TrellinReportGlobals::RequireBusinessLayer().DateFormat());
}

void arfaScheduleBase::AddDateRangeParameters(trellin::Parameters& p) {
  static constexpr const char* kRanges[][2] = {
      {"DatePurchasedFrom", "Date Purchased From"}, {"DatePurchasedTo", "Date Purchased To"},
      {"DateDisposedFrom", "Date Disposed From"},   {"DateDisposedTo", "Date Disposed To"},
      {"DateReviewFrom", "Date Review From"},       {"DateReviewTo", "Date Review To"}};
  for (const auto& range : kRanges) {
    p.AddDate(range[0], Variant(), false, range[1], Variant(), false, range[1]);
  }
}

void arfaScheduleBase::AddStatusParameters(trellin::Parameters& p) {
  for (const char* status : kStatuses) {
    const std::string name = std::string("Status") + status;
    p.AddBoolean(name, true, false, "", true, false, status);
  }
}

void arfaScheduleBase::AddGroupingsAndLists(trellin::Parameters& p) {
  AddGroupings(p);
  AddLists(p);
}

void arfaScheduleBase::AddGroupings(trellin::Parameters& p) {
  p.AddMultiList("Groupings", Variant(), false, "", Variant(), kGroupings, false, false,
                 "Groupings");
}

void arfaScheduleBase::AddLists(trellin::Parameters& p) {
  for (const ScheduleList& list : kLists) CreateStandardParameter(list.index, p, false);
}

void arfaScheduleBase::AddFamilyFilters(std::string& where, std::string& description) {
  trellin::Parameters& p = TLReport()->Parameters();
  TrellinReports& reports = TrellinReportGlobals::RequireTrellinReports();
  AppendSQLCondition(where, reports.CreateSQLWhereFromRangeParams(p, description));
  if (p.Value("IncludeComponents", false).ToBool()) {
    AppendDescription(description, "Components Combined");
    AppendSQLCondition(where, "ParentAssetId IS NULL");
  }
  struct Range {
    const char* field;
    const char* from;
    const char* to;
    const char* title;
  };
  static constexpr Range kRanges[] = {
      {"PurchaseDate", "DatePurchasedFrom", "DatePurchasedTo", "Assets Purchased "},
      {"DisposalDate", "DateDisposedFrom", "DateDisposedTo", "Assets Disposed "},
      {"ReviewDate", "DateReviewFrom", "DateReviewTo", "Assets Review Date "},
  };
  for (const Range& r : kRanges) {
    const Variant from = DateOrNull(p.Value(r.from, Variant()));
    const Variant to = DateOrNull(p.Value(r.to, Variant()));
    reports.AppendSQLWhereFromDateRange(where, r.field, from, to);
    AppendDateRangeDescription(description, r.title, from, to);
  }
}

void arfaScheduleBase::AddStatusFilter(std::string& where, std::string& description) {
  bool all_statuses = true;
  const std::string statuses =
      TrellinReportGlobals::RequireTrellinReports().CreateSQLWhereFromBooleanParams(
          TLReport()->Parameters(), "Status", all_statuses);
  if (all_statuses) return;
  AppendDescription(description, "Include " + statuses + " Assets");
  std::string numbers;
  for (const std::string& item : Split(statuses, ",")) {
    if (!numbers.empty()) numbers += ",";
    numbers += std::to_string(Asset::StatusFromText(Replace(item, "'", "")));
  }
  AppendSQLCondition(where, "Asset.Status IN (" + numbers + ")");
}

std::string arfaScheduleBase::AssetQuery(std::string fields, const std::string& order_by,
                                         std::string& description) {
  std::string where;
  AddFamilyFilters(where, description);
  AddStatusFilter(where, description);
  std::string order = order_by == "Name" ? "Description" : "AssetId";
  DefineGroupings(fields, order);
  std::string sql = "SELECT " + fields + " FROM Asset";
  if (!where.empty()) sql += " WHERE " + where;
  return sql + " ORDER BY " + order;
}

void arfaScheduleBase::DefineGroupings(std::string& fields, std::string& order,
                                       const std::string& status_key) {
  // Only the rows of the schedules' own table are offered; a standard grouping is reached
  // through its row, under the standard table's name.
  auto schedule_grouping = [&status_key](ChosenGrouping& g) {
    const ScheduleGrouping* row = nullptr;
    for (const ScheduleGrouping& candidate : kScheduleGroupings) {
      if (EqualsIgnoreCase(candidate.name, g.name)) row = &candidate;
    }
    if (row == nullptr) return true;  // left without a field: refused
    g.name = row->name;
    g.field = row->field;
    g.list_sql = row->list_sql;
    g.key_field = row->key_field;
    if (g.key_field == "Status") g.key_field = status_key;
    if (row->standard != nullptr) {
      g.name = row->standard;
      GetGroupingDefinition(g.name, g.field, g.list_sql, g.key_field, "Asset");
    }
    return true;
  };
  for (const ChosenGrouping& g :
       ChooseGroupings(TLReport()->Parameters().Value("Groupings", Variant()), "Asset",
                       schedule_grouping, UnknownGrouping::kRefuse)) {
    MoveInCommaList(fields, g.field, false, false);
    MoveInCommaList(order, g.field, true, true);
    TLReport()->DefineGroup(g.level, g.name, g.key_field, g.list_sql, g.page_break);
  }
  TLReport()->EndDefineGroups();
}

void arfaScheduleBase::StartRun(const std::string& sql, const std::string& description,
                                bool summary, float heading_font_size) {
  TLReport()->SetupGroupSections(summary, 200, true);
  TLReport()->SetupStandardHeader(true);
  DataColumns& columns = TLReport()->DataColumns();
  if (summary) {
    // The footer of the innermost group prints its code and name under these headings.
    const Control* label = FindControl("ghLabel1");
    if (columns.Exists("AssetId") && label != nullptr) {
      columns.Item("AssetId").Caption = label->Tag();
      columns.Item("AssetId").ShortCaption.clear();
    }
    if (columns.Exists("Description")) {
      columns.Item("Description").Caption.clear();
      columns.Item("Description").ShortCaption.clear();
    }
  }
  const Control& heading = Field("lblHeading");
  columns.CreateFields(heading.Top(), 0, 15, 0, true, 0, heading_font_size, 8.0f);
  const Control* code = FindControl("lblAssetId");
  const Control* name = FindControl("lblDescription");
  auto place = [&](const char* control, const Control* over) {
    Control* field = FindControl(control);
    if (field == nullptr) return;
    if (!summary || over == nullptr || !over->Visible()) {
      field->SetVisible(false);
      return;
    }
    field->SetLeft(over->Left());
    field->SetWidth(over->Width());
  };
  place("gf1SummaryId", code);
  place("gf1SummaryName", name);
  if (Control* parameters = FindControl("txtParameters")) parameters->SetText(description);
  DataControl().SetSource(sql);
}

void arfaScheduleBase::OnFormat(Section& section) {
  switch (section.Type()) {
    case SectionType::Detail:
      if (TLReport()->ColumnsInUse()) TLReport()->DataColumns().FillRow(Fields(), "");
      Detail_Format();
      section.SetBackStyle(1 - section.BackStyle());
      break;
    case SectionType::GroupHeader: {
      const int level = GroupLevelOf(section, "GroupHeader");
      if (level == 0) break;
      TLReport()->GroupHeaderFormat(level);
      if (EqualsIgnoreCase(section.DataField(), "StatusText")) {
        if (Control* label = FindControl("ghLabel" + std::to_string(level))) {
          label->SetCaption("Status " + Fields()["StatusText"].Value().Text());
        }
      } else if (EqualsIgnoreCase(section.DataField(), "Status")) {
        const ReportField* value = Fields().Find("Status");
        const int status = value == nullptr || value->Value().IsNull()
                               ? 0
                               : static_cast<int>(value->Value().ToLong());
        if (Control* label = FindControl("ghLabel" + std::to_string(level))) {
          label->SetCaption("Status " + Asset::StatusText(status));
        }
      }
      if (level == 1) Sections()["Detail"].SetBackStyle(1);
      break;
    }
    case SectionType::GroupFooter:
      if (const int level = GroupLevelOf(section, "GroupFooter")) {
        TLReport()->GroupFooterFormat(level);
      }
      break;
    default:
      break;
  }
}

void arfaScheduleBase::OnBeforePrint(Section& section) {
  if (section.Type() == SectionType::ReportFooter) TLReport()->ReportFooterBeforePrint();
}

void arfaScheduleBase::ActiveReport_ReportEnd() {
  DataControl().SetRecordset(nullptr);
  asset_.reset();
  objects_.reset();
}

}  // namespace trellin
