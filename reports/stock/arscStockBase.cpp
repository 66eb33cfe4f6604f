// The stock designers' shared events, filters, groupings and bounds.

#include "reports/stock/arscStockBase.h"

#include <stdexcept>
#include <utility>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/TrellinReports.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Format.h"

namespace trellin {

namespace {

constexpr int kUserDefinedFields = 20;

// An empty, Null or blank number parameter sets no bound.
bool NoValue(const Variant& value) {
  return value.IsNull() || value.IsEmpty() || value.IsMissing() || Trim(value.Text()).empty();
}

}  // namespace

void arscStockBase::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

void arscStockBase::OnFormat(Section& section) {
  switch (section.Type()) {
    case SectionType::Detail:
      Detail_Format();
      break;
    case SectionType::GroupHeader:
      if (int level = GroupLevelOf(section, "GroupHeader")) {
        TLReport()->GroupHeaderFormat(level);
        GroupHeaderFormat(section, level);
      }
      break;
    case SectionType::GroupFooter:
      if (int level = GroupLevelOf(section, "GroupFooter")) {
        TLReport()->GroupFooterFormat(level);
        FooterFormat(section);
      }
      break;
    case SectionType::ReportFooter:
      FooterFormat(section);
      break;
    default:
      break;
  }
}

void arscStockBase::OnBeforePrint(Section& section) {
  if (section.Type() == SectionType::ReportFooter) TLReport()->ReportFooterBeforePrint();
}

int arscStockBase::QuantityDecimals() {
  return TrellinReportGlobals::RequireApplication().Options().QuantityDecimals();
}

int arscStockBase::ValueDecimals() {
  return TrellinReportGlobals::RequireApplication().Options().ValueDecimals();
}

std::string arscStockBase::QuantityFormat() {
  const int decimals = QuantityDecimals();
  const std::string places = decimals > 0 ? "." + std::string(decimals, '0') : "";
  return "#,##0" + places + ";(#,##0" + places + ")";
}

std::string arscStockBase::DateText(const Variant& date) {
  if (!DateGiven(date)) return {};
  return Format(Variant(date.ToDate()), TrellinReportGlobals::RequireBusinessLayer().DateFormat());
}

DataColumn& arscStockBase::AddColumn(DataColumns& columns, const StockColumn& column,
                                     const std::string& format, bool totalled) {
  const bool code = column.data_type == kColumnCode;
  const float width =
      code ? static_cast<float>(TrellinReportGlobals::RequireTrellinReports().ItemCodeWidth())
           : column.width;
  DataColumn& added =
      columns.Add(column.name, column.field, column.data_type, column.caption, column.short_caption,
                  width, -1, -1, code ? 0 : -1, format, 0, 0, "", true, "", totalled, false);
  added.Hidden = column.hidden;
  return added;
}

void arscStockBase::AddFilters(std::span<const StockFilter> filters, std::string& where,
                               std::string& description) const {
  const trellin::Parameters& p = TLReport()->Parameters();
  for (const StockFilter& filter : filters) {
    AppendListParameterCondition(where, filter.field, filter.parameter, p, description, kRangeText);
  }
  for (int n = 1; n <= kUserDefinedFields; ++n) {
    const std::string name = "Item.UserDefined" + std::to_string(n);
    AppendListParameterCondition(where, name, name, p, description, kRangeText);
  }
}

std::vector<ChosenGrouping> arscStockBase::ChosenGroupings(std::span<const StockGrouping> own,
                                                           const std::string& default_table) const {
  auto own_grouping = [own](ChosenGrouping& g) {
    const StockGrouping* row = nullptr;
    for (const StockGrouping& candidate : own) {
      if (EqualsIgnoreCase(candidate.name, g.name)) row = &candidate;
    }
    if (row == nullptr) return false;
    g.field = row->field;
    g.list_sql = row->list_sql;
    g.key_field = row->key_field;
    g.also_field = row->also_field;
    return true;
  };
  return ChooseGroupings(TLReport()->Parameters().Value("Groupings", Variant()), default_table,
                         own_grouping, UnknownGrouping::kRefuse);
}

void arscStockBase::DefineGroups(const std::vector<ChosenGrouping>& groupings) const {
  for (std::size_t i = 0; i < groupings.size(); ++i) {
    const ChosenGrouping& g = groupings[i];
    TLReport()->DefineGroup(g.level, g.name, g.key_field, g.list_sql, g.page_break);
  }
  TLReport()->EndDefineGroups();
}

void arscStockBase::AddBoundParameters(trellin::Parameters& p) {
  // Left alone, each bound stands at its open end, which sets no limit.
  struct Bound {
    const char* name;
    const char* caption;
    Currency open;
  };
  const Bound kBounds[] = {
      {"QuantityOnHandFrom", "Quantity On Hand From", kNumberRangeMinimum},
      {"QuantityOnHandTo", "Quantity On Hand To", kNumberRangeMaximum},
      {"ValueOnHandFrom", "Value On Hand From", kNumberRangeMinimum},
      {"ValueOnHandTo", "Value On Hand To", kNumberRangeMaximum},
  };
  for (const Bound& b : kBounds) {
    p.AddNumber(b.name, b.open, false, "", b.open, b.open.Raw() / Currency::kScale, false,
                b.caption);
  }
}

void arscStockBase::AddNumberRange(std::string& having, const std::string& expression,
                                   const std::string& from, const std::string& to,
                                   const std::string& title, std::string& description,
                                   const std::string& format) const {
  const trellin::Parameters& p = TLReport()->Parameters();
  const Variant low = p.Value(from, Variant());
  const Variant high = p.Value(to, Variant());
  auto bound = [&](const Variant& value, Currency open) {
    if (NoValue(value)) return open;
    const std::optional<Currency> parsed = Currency::Parse(Trim(value.Text()));
    if (!parsed) {
      throw std::invalid_argument(title + ": \"" + value.Text() + "\" is not a number.");
    }
    return *parsed;
  };
  AppendNumberRangeCondition(having, expression, bound(low, kNumberRangeMinimum),
                             bound(high, kNumberRangeMaximum), kNumberRangeMinimum,
                             kNumberRangeMaximum, title, description, format);
}

void arscStockBase::SummaryHeadings(const std::string& code_column,
                                    const std::string& description_column) {
  DataColumns& columns = TLReport()->DataColumns();
  const Control* label = FindControl("ghLabel1");
  if (columns.Exists(code_column) && label != nullptr) {
    columns.Item(code_column).Caption = label->Tag();
    columns.Item(code_column).ShortCaption.clear();
  }
  if (columns.Exists(description_column)) {
    columns.Item(description_column).Caption.clear();
    columns.Item(description_column).ShortCaption.clear();
  }
}

void arscStockBase::PlaceSummaryFields(bool summary, const std::string& code_column,
                                       const std::string& description_column) {
  const Control* code = FindControl("lbl" + code_column);
  const Control* description = FindControl("lbl" + description_column);
  auto place = [&](const char* name, const Control* over) {
    Control* field = FindControl(name);
    if (field == nullptr) return;
    if (!summary || over == nullptr || !over->Visible()) {
      field->SetVisible(false);
      return;
    }
    field->SetLeft(over->Left());
    field->SetWidth(over->Width());
  };
  place("gf1SummaryId", code);
  place("gf1SummaryName", description);
  // In summary mode the group's line already names it; the caption below would say it twice.
  if (Control* caption = FindControl("gfLabel1"); caption != nullptr && summary) {
    caption->SetVisible(false);
  }
}

void arscStockBase::LayOutColumns(bool summary, const std::string& description) {
  TLReport()->SetupGroupSections(summary, -1, true);
  TLReport()->SetupStandardHeader(true);
  if (summary) SummaryHeadings("Code", "Description");
  const Control& heading = Field("lblHeading");
  TLReport()->DataColumns().CreateFields(heading.Top(), 0, 15, 0, true, 0, 10.0f, 8.0f);
  PlaceSummaryFields(summary, "Code", "Description");
  if (Control* parameters = FindControl("txtParameters")) parameters->SetText(description);
}

}  // namespace trellin
