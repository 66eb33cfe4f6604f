// The lists' events: parameters and columns from the key's row, the run's start, the rows.

#include "core/ListDesigner.h"

#include <algorithm>
#include <stdexcept>

#include "core/ReportUtilities.h"

namespace trellin {

namespace {

// Column kinds the host totals (reports/ReportShapes.h names them for the designers).
constexpr int kNumberKind = 3;
constexpr int kMoneyKind = 4;

constexpr const char* kSharedLayout = "ListDesigner";

}  // namespace

ListDesigner::ListDesigner(std::string designer_name, std::span<const ListKey> keys,
                           std::string_view title)
    : Designer(std::move(designer_name)), keys_(keys), title_(title) {
  // Named from the start, so that a catalogue reading captions without a run finds it.
  if (!title_.empty()) {
    SetCaption(title_);
    SetDocumentName(title_);
  }
}

const ListKey& ListDesigner::Key() const {
  const std::string key = TLReport() ? TLReport()->ReportName() : std::string();
  for (const ListKey& row : keys_) {
    if (row.key == key) return row;
  }
  throw std::invalid_argument(DesignerName() + " has no report named \"" + key + "\".");
}

void ListDesigner::RefreshParameters(std::string&) {
  TLReport()->SetHasParameters(true);
  if (!Key().columns.empty()) TLReport()->DataColumns().SetEnabled(true);
  DeclareListParameters(Key(), TLReport()->Parameters());
}

void ListDesigner::RefreshDataColumns() {
  DataColumns& columns = TLReport()->DataColumns();
  for (const ListColumn& c : Key().columns) {
    const bool totalled = c.kind == kNumberKind || c.kind == kMoneyKind;
    DataColumn& added = columns.Add(std::string(c.name), std::string(c.field), c.kind,
                                    std::string(c.caption), std::string(c.short_caption), c.width,
                                    -1, -1, -1, c.format.empty() ? "(auto)" : std::string(c.format),
                                    0, 0, "", true, "", totalled, false);
    added.Hidden = c.hidden;
  }
}

void ListDesigner::ActiveReport_Initialize() {
  if (Sections().Count() == 0) {
    auto provider = GetLayoutProvider();
    if (provider && provider->Load(kSharedLayout, *this) && !title_.empty()) {
      SetCaption(title_);
      SetDocumentName(title_);
      if (Control* label = FindControl("lblReportTitle")) label->SetCaption(title_);
    }
  }
  PrepareDataControl(DataControl());
}

void ListDesigner::BuildSQL() {
  query_ = BuildListQuery(Key(), TLReport()->Parameters(), ExtraCondition());
}

void ListDesigner::ActiveReport_ReportStart() {
  const bool columns = !Key().columns.empty();
  if (columns && TLReport()->DataColumns().Count() == 0) RefreshDataColumns();
  BuildSQL();
  for (const ChosenGrouping& g : query_.groups) {
    TLReport()->DefineGroup(g.level, g.name, g.key_field, g.list_sql, g.page_break);
  }
  TLReport()->EndDefineGroups();
  // A fixed layout with no groups of the host keeps its own group sections.
  if (columns || !query_.groups.empty()) TLReport()->SetupGroupSections(query_.summary, -1, true);
  TLReport()->SetupStandardHeader(true);
  if (columns) {
    const Control& heading = Field("lblHeading");
    TLReport()->DataColumns().CreateFields(heading.Top(), 0, 15, 0, true, 0, 10.0f, 8.0f);
    FitFurniture();
  }
  if (Control* parameters = FindControl("txtParameters")) parameters->SetText(query_.description);
  DataControl().SetSource(query_.sql);
  // A list with no rows prints its headings and the run's description, with no empty group.
  if (const auto& rs = DataControl().Recordset(); rs && rs->Eof()) {
    for (Section& section : Sections()) {
      if (section.Type() == SectionType::GroupHeader ||
          section.Type() == SectionType::GroupFooter) {
        section.SetVisible(false);
      }
    }
  }
  if (!columns) return;
  // "Report Total" says nothing over a list with no total shown.
  bool totals = false;
  DataColumns& data_columns = TLReport()->DataColumns();
  for (const ListColumn& c : Key().columns) {
    const DataColumn& column = data_columns.Item(c.name);
    totals = totals || (column.Totalled && !column.Hidden);
  }
  if (Control* label = FindControl("rfLabel"); label && !totals) label->SetVisible(false);
}

void ListDesigner::FitFurniture() {
  // Captions that wrap make the headings taller; the rule stays the same distance below them.
  constexpr float kRuleBelowHeadings = 50;
  constexpr float kSpaceBelowRule = 40;
  Section& header = Sections()["PageHeader"];
  const Control& heading = Field("lblHeading");
  float bottom = heading.Top() + heading.Height();
  for (const Control& c : header.Controls()) {
    if (c.Class() == ControlClass::Label && c.Visible() && c.Top() >= heading.Top()) {
      bottom = std::max(bottom, c.Top() + c.Height());
    }
  }
  if (Control* rule = FindControl("linHeader")) {
    rule->SetTop(std::max(rule->Top(), bottom + kRuleBelowHeadings));
    header.SetHeight(std::max(header.Height(), rule->Top() + kSpaceBelowRule));
  }
}

void ListDesigner::OnFormat(Section& section) {
  if (section.Type() == SectionType::Detail) {
    Detail_Format();
  } else {
    FormatGroupSection(section);
  }
}

void ListDesigner::OnBeforePrint(Section& section) {
  if (section.Type() == SectionType::ReportFooter) TLReport()->ReportFooterBeforePrint();
}

void ListDesigner::Detail_Format() {
  const auto& rs = DataControl().Recordset();
  if (!rs || rs->Eof()) return;
  if (TLReport()->ColumnsInUse()) TLReport()->DataColumns().FillRow(Fields(), "");
  Section& detail = Sections()["Detail"];
  detail.SetBackStyle(1 - detail.BackStyle());
}

}  // namespace trellin
