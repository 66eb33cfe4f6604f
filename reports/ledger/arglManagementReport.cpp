#include "reports/ledger/arglManagementReport.h"

#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/ledger/arglChart.h"

namespace trellin {

namespace {

constexpr char kMoneyFormat[] = "#,###,##0;(#,###,##0)";
constexpr char kRatioFormat[] = "0.00;(0.00)";
constexpr char kCaptionFormat[] = "mmmyy";
constexpr char kChartPeriodFormat[] = "mmm yyyy";
constexpr char kSliceValueFormat[] = "#,###,##0";
constexpr char kShareFormat[] = "0.00%";

// The charts stand in the group footer after the notes, two on a page and one on the next; each
// page's first chart stands this far below the break that starts it, under the group's heading.
constexpr float kChartBelowBreak = 380;
constexpr float kChartHeight = 3800;
constexpr float kChartGap = 200;

struct ChartLine {
  const char* name;
  int row;
};
constexpr ChartLine kProfitLines[] = {
    {"Gross Profit", 3}, {"Net Profit", 6}, {"Sales", 1}, {"Expenses", 5}, {"Cost of Sales", 2}};
// The captions stand letter for letter as the application prints them.
constexpr ChartLine kBalanceLines[] = {{"Working Capital", 29},    {"Net Assets", 30},
                                       {"Current Assets", 21},     {"Total Assets", 22},
                                       {"Current Liabilites", 26}, {"Total Liabilites", 27}};

std::string TextOrEmpty(const Variant& v) { return v.IsNull() ? std::string() : Trim(v.Text()); }

std::string Equality(const char* field, const Variant& value) {
  if (value.IsNull()) return std::string(" AND glTransaction.") + field + " IS NULL";
  return std::string(" AND glTransaction.") + field + "=" + Database::SQLString(value.Text());
}

// The group query: the branches, departments or both that have lines in the columns' dates.
std::string GroupSQL(bool by_branch, bool by_department, const ManagementPeriods& periods) {
  std::vector<std::string> keys, names;
  if (by_branch) {
    keys.emplace_back("glTransaction.BranchId");
    names.emplace_back(
        "(SELECT Name FROM Branch WHERE Branch.BranchId=glTransaction.BranchId) AS BranchName");
  }
  if (by_department) {
    keys.emplace_back("glTransaction.DeptId");
    names.emplace_back(
        "(SELECT Description FROM Department WHERE Department.DeptId=glTransaction.DeptId) AS "
        "DeptDescription");
  }
  return "SELECT " + Join(keys, ",") + "," + Join(names, ", ") + " FROM glTransaction" +
         " WHERE ((glTransaction.Date>=" + Database::SQLDate(periods.start[1]) +
         " And (glTransaction.Date) <= " + Database::SQLDate(periods.end[kManagementPeriods]) +
         "))" + " GROUP BY " + Join(keys, ", ");
}

std::vector<double> RowSeries(const ManagementValues& values, int row) {
  std::vector<double> out;
  for (int p = 1; p <= kManagementPeriods; ++p) out.push_back(values[p][row].ToDouble());
  return out;
}

}  // namespace

DesignerPtr CreatearglManagementReport() { return std::make_shared<arglManagementReport>(); }

void arglManagementReport::RefreshParameters(std::string&) {
  TLReport()->SetHasParameters(true);
  trellin::Parameters& p = TLReport()->Parameters();
  p.AddList("Frequency", "Monthly", true, "", "Monthly", std::string(kManagementFrequencies), false,
            "Frequency");
  const Date current =
      TrellinReportGlobals::RequireApplication().FinancialCalendar().CurrentDateGL(true);
  p.AddDate("DateAsAt", current, true, "Date As At", "GLCURRENT", false, "Date As At");
  p.AddBoolean("ShowCharts", false, false, "", false, false, "Show Charts");
  p.AddBoolean("UseColour", false, false, "", false, false, "Use Colour");
  p.AddBoolean("GroupByBranch", false, false, "", false, false, "Group By Branch");
  p.AddBoolean("GroupByDepartment", false, false, "", false, false, "Group By Department");
}

void arglManagementReport::ActiveReport_ReportStart() {
  const trellin::Parameters& p = TLReport()->Parameters();
  const int step = ManagementStep(p.Value("Frequency", "Monthly").Text()).value_or(1);
  const Variant as_at = p.Value("DateAsAt", Variant::Null());
  const Date date =
      as_at.IsDate()
          ? *as_at.Get<Date>()
          : TrellinReportGlobals::RequireApplication().FinancialCalendar().CurrentDateGL(true);
  periods_ = MakeManagementPeriods(date, step);
  show_charts_ = p.Value("ShowCharts", false).ToBool();
  use_colour_ = p.Value("UseColour", false).ToBool();

  for (int i = 1; i <= kManagementPeriods; ++i) {
    Field("lblP" + std::to_string(i)).SetCaption(Format(Variant(periods_.end[i]), kCaptionFormat));
  }
  auto db = TrellinReportGlobals::RequireDatabase();
  ReadGroups(*db);
  for (Group& group : groups_) {
    group.values = LoadManagementValues(*db, periods_, group.filter);
    group.scale = ScaleOf(group.values);
  }

  if (show_charts_) {
    ReadSales(*db);
    Section& footer = Sections()["gfHeading"];
    const float width = PrintWidth();
    // Each chart page starts with a break and the group's heading: the first page holds the
    // first two charts, the second the third, so both name the group they chart.
    const auto add_page = [&](const char* break_name, const char* notes_name, float top) {
      Control& page_break = footer.Controls().Add(ControlClass::PageBreak, break_name);
      page_break.SetTop(top);
      Control& notes = footer.Controls().Add(ControlClass::Field, notes_name);
      notes.SetTop(top + 20);
      notes.SetWidth(width);
      notes.SetHeight(300);
      notes.Font().Bold = true;
      notes.SetCanGrow(true);
      notes.SetCanShrink(true);
      return top + kChartBelowBreak;
    };
    const auto add_chart = [&](int i, float top) {
      Control& chart =
          footer.Controls().Add(ControlClass::Subreport, "srptChart" + std::to_string(i));
      chart.SetTop(top);
      chart.SetWidth(width);
      chart.SetHeight(kChartHeight);
      return top + kChartHeight + kChartGap;
    };
    float top =
        add_page("pgBreak", "txtNotes2", Field("txtNotes").Top() + Field("txtNotes").Height() + 20);
    top = add_chart(1, top);
    top = add_chart(2, top);
    top = add_chart(3, add_page("pgBreak2", "txtNotes3", top));
    footer.SetHeight(top);
  }
  TLReport()->SetupUngroupedSections("");
  TLReport()->SetupStandardHeader(true);
}

void arglManagementReport::ReadGroups(Database& db) {
  const trellin::Parameters& p = TLReport()->Parameters();
  const bool by_branch = p.Value("GroupByBranch", false).ToBool();
  const bool by_department = p.Value("GroupByDepartment", false).ToBool();
  groups_.clear();
  if (!by_branch && !by_department) {
    groups_.push_back(Group{});
    return;
  }
  for (auto rs = db.Query(GroupSQL(by_branch, by_department, periods_)); !rs->Eof();
       rs->MoveNext()) {
    Group group;
    std::vector<std::string> lines;
    if (by_branch) {
      const Variant& id = rs->Value("BranchId");
      group.key += id.IsNull() ? "[No Branch]" : TextOrEmpty(id);
      lines.push_back(id.IsNull() ? "No Branch"
                                  : "Branch " + TextOrEmpty(id) + ", " +
                                        TextOrEmpty(rs->Value("BranchName")));
      group.filter += Equality("BranchId", id);
    }
    if (by_department) {
      const Variant& id = rs->Value("DeptId");
      group.key += "\t";
      group.key += id.IsNull() ? "[No Department]" : TextOrEmpty(id);
      const std::string line = id.IsNull() ? "No Department"
                                           : "Department " + TextOrEmpty(id) + ", " +
                                                 TextOrEmpty(rs->Value("DeptDescription"));
      lines.push_back(by_branch ? "  " + line : line);
      group.filter += Equality("DeptId", id);
    }
    group.heading = Join(lines, "\r\n");
    groups_.push_back(std::move(group));
  }
}

void arglManagementReport::ReadSales(Database& db) {
  const std::string sql =
      "SELECT Account.AccountId,Account.Description,Sum(-glTransaction.Value) AS TotalValue FROM "
      "Account INNER JOIN glTransaction ON Account.AccountId = glTransaction.AccountId"
      " Where (Account.Type=1 AND glTransaction.Type IS Null) AND (glTransaction.Date>" +
      Database::SQLDate(periods_.start[1].AddDays(-1)) + " And glTransaction.Date<" +
      Database::SQLDate(periods_.end[kManagementPeriods].AddDays(1)) + ")" +
      " GROUP BY Account.AccountId,Account.Description ORDER BY Sum(-glTransaction.Value) DESC";
  struct Row {
    std::string id, description;
    double value;
  };
  std::vector<Row> rows;
  double total = 0;
  for (auto rs = db.Query(sql); !rs->Eof(); rs->MoveNext()) {
    const Variant& v = rs->Value("TotalValue");
    const double value = v.IsNull() ? 0.0 : v.ToCurrency().ToDouble();
    rows.push_back(
        Row{TextOrEmpty(rs->Value("AccountId")), TextOrEmpty(rs->Value("Description")), value});
    total += value;
  }
  // A zero total leaves the shares blank, as any zero divisor does.
  const auto label = [total](const std::string& head, double value) {
    const std::string share =
        total == 0 ? std::string() : Format(Variant(value / total), kShareFormat);
    return head + " (" + Format(Variant(value), kSliceValueFormat) + ", " + share + ")";
  };
  slices_.clear();
  double other = 0;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    // The last account shows by name rather than as an "Other" of one.
    if (static_cast<int>(i) < kPieAccounts || (i + 1 == rows.size() && i == kPieAccounts)) {
      slices_.push_back(
          Slice{label(rows[i].id + ", " + rows[i].description, rows[i].value), rows[i].value});
    } else {
      other += rows[i].value;
    }
  }
  if (static_cast<int>(rows.size()) > kPieAccounts + 1) {
    slices_.push_back(Slice{label("Other", other), other});
  }
}

void arglManagementReport::FillCharts(const Group& group) {
  Section& footer = Sections()["gfHeading"];
  footer.Controls()["txtNotes2"].SetText(group.heading);
  footer.Controls()["txtNotes3"].SetText(group.heading);
  const std::string first =
      Format(Variant(periods_.start[1]), TrellinReportGlobals::RequireBusinessLayer().DateFormat());
  const std::string last = Format(Variant(periods_.end[kManagementPeriods]),
                                  TrellinReportGlobals::RequireBusinessLayer().DateFormat());
  std::vector<std::string> periods;
  for (int p = 1; p <= kManagementPeriods; ++p) {
    periods.push_back(Format(Variant(periods_.end[p]), kChartPeriodFormat));
  }

  arglChart sales(ChartType::Pie, "Sales Breakdown (" + first + " to " + last + ")", use_colour_);
  std::vector<std::string> labels;
  std::vector<double> values;
  for (const Slice& slice : slices_) {
    labels.push_back(slice.label);
    values.push_back(slice.value);
  }
  sales.ChartLabels(std::move(labels));
  sales.ChartValues("Sales", std::move(values));

  arglChart profit(ChartType::Line, "Net Profit", use_colour_);
  profit.ChartLabels(periods);
  for (const ChartLine& line : kProfitLines) {
    profit.ChartValues(line.name, RowSeries(group.values, line.row));
  }

  arglChart assets(ChartType::Line, "Assets vs Liabilities", use_colour_);
  assets.ChartLabels(periods);
  for (const ChartLine& line : kBalanceLines) {
    assets.ChartValues(line.name, RowSeries(group.values, line.row));
  }

  int n = 1;
  for (arglChart* chart : {&sales, &profit, &assets}) {
    Control& holder = footer.Controls()["srptChart" + std::to_string(n++)];
    Control& control = chart->Holder()->ChartControl();
    control.SetWidth(holder.Width());
    control.SetHeight(holder.Height() - 100);
    chart->Holder()->SetPrintWidth(holder.Width());
    TLReport()->AttachChart(control);
    holder.SetObject(chart->Holder());
  }
}

void arglManagementReport::ActiveReport_DataInitialize() {
  Fields().Add("GroupKey");
  Fields().Add("Row");
}

// A row of the table for each of the fifty rows of each group in turn.
void arglManagementReport::ActiveReport_FetchData(bool& eof) {
  if (fetch_row_ >= kManagementRows) {
    fetch_row_ = 0;
    ++fetch_group_;
  }
  if (fetch_group_ >= groups_.size()) {
    eof = true;
    return;
  }
  ++fetch_row_;
  Fields()["GroupKey"].SetValue(Variant(groups_[fetch_group_].key));
  Fields()["Row"].SetValue(Variant(fetch_row_));
  detail_group_ = fetch_group_;
  detail_row_ = fetch_row_;
}

void arglManagementReport::OnFormat(Section& section) {
  // A grouped run with no groups prints its headings and one empty row, as a report without data
  // does.
  if (EqualsIgnoreCase(section.Name(), "ghHeading")) {
    // The charts' pages carry their own heading (txtNotes2) and no columns.
    section.SetVisible(!in_footer_);
    // The heading formats once the first row of its group is fetched.
    Field("txtHeading").SetText(fetch_group_ < groups_.size() ? groups_[fetch_group_].heading : "");
    return;
  }
  if (EqualsIgnoreCase(section.Name(), "gfHeading")) {
    in_footer_ = show_charts_;
    const std::size_t index = footer_group_++;
    Field("txtNotes").SetText(index < groups_.size() ? groups_[index].scale.note : "");
    for (int i = 1; i <= 3 && show_charts_; ++i) {
      Field("srptChart" + std::to_string(i)).SetVisible(index < groups_.size());
    }
    if (show_charts_ && index < groups_.size()) FillCharts(groups_[index]);
    return;
  }
  if (section.Type() != SectionType::Detail) return;
  if (detail_group_ >= groups_.size() || detail_row_ < 1) {
    Field("txtDescription").SetText("");
    for (int p = 1; p <= kManagementPeriods; ++p) {
      Field("numP" + std::to_string(p)).SetDataValue(Variant::Null());
    }
    return;
  }
  const Group& group = groups_[detail_group_];
  const ManagementRow& row = ManagementRows()[static_cast<std::size_t>(detail_row_ - 1)];
  Field("txtDescription").SetText(std::string(row.caption));
  for (int p = 1; p <= kManagementPeriods; ++p) {
    Control& cell = Field("numP" + std::to_string(p));
    const Currency value = group.values[p][row.number];
    switch (row.kind) {
      case ManagementRowKind::Spacer:
        cell.SetOutputFormat("");
        cell.SetDataValue(Variant::Null());
        break;
      case ManagementRowKind::Ratio:
        cell.SetOutputFormat(kRatioFormat);
        cell.SetDataValue(Variant(value.ToDouble()));
        break;
      case ManagementRowKind::Money:
        cell.SetOutputFormat(kMoneyFormat);
        // With no scale the divisor is zero, and a zero divisor prints blank.
        cell.SetDataValue(group.scale.scale == 0 ? Variant::Null()
                                                 : Variant(value.ToDouble() / group.scale.scale));
        break;
    }
  }
}

void arglManagementReport::OnAfterPrint(Section& section) {
  if (EqualsIgnoreCase(section.Name(), "gfHeading")) in_footer_ = false;
}

void arglManagementReport::OnBeforePrint(Section& section) {
  if (section.Type() == SectionType::ReportFooter) TLReport()->ReportFooterBeforePrint();
}

}  // namespace trellin
