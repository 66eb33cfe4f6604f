// The job summary's key: the filter, the stacked lines and a job's figures.

#include "reports/jobs/arJobSummary.h"

#include <algorithm>
#include <span>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/jobs/JobLists.h"

namespace trellin {

namespace {

constexpr ListOrder kSummaryOrders[] = {
    {"Code", "Job.JobId"},
    {"Description", "Description"},
};

constexpr ListKey kSummaryKeys[] = {{
    .key = "JobSummary",
    .base_sql = "SELECT Job.JobId,Job.Description,Job.Status,Job.DateOpened,Job.DateClosed,"
                "JobContact.OtherPartyId FROM Job INNER JOIN JobContact ON Job.JobId = "
                "JobContact.JobId",
    .base_where = kJobChargedContact,
    .orders = kSummaryOrders,
    .parameters = kJobSummaryFilters,
    .groupings = "Employee,Location,Job Category,Customer",
    .grouping_table = "Job",
    .own_groupings = kJobGroupings,
    .summary = true,
    .order_phrase = kJobOrderPhrase,
}};

// The filter rows before OrderBy (dates and statuses) and after it (the standard lists).
constexpr std::size_t kFiltersBeforeOrder = 3;

// The five lines and the seven columns across them.
constexpr const char* kLineNames[] = {"Actual", "Open", "Total", "Budget", "Variance"};
constexpr const char* kColumnNames[] = {"Charges", "Costs",  "Purchases", "Other",
                                        "Total",   "Profit", "GP"};
constexpr int kLineCount = 5;
constexpr int kColumnCount = 7;
constexpr int kOther = 3;
constexpr int kGP = 6;
enum LineIndex { kActual, kOpen, kTotal, kBudget, kVariance };

// The lay-out of the figures: each line 220 below the one before, the columns under the page
// header's headings.
constexpr float kLineHeight = 220;
constexpr float kFieldHeight = 200;
constexpr float kLineLabelLeft = 5350;
constexpr float kLineLabelWidth = 800;
constexpr float kFirstColumn = 6200;
constexpr float kColumnStep = 1200;
constexpr float kColumnWidth = 1150;

std::string FieldName(int line, int column) {
  return std::string(kLineNames[line]) + kColumnNames[column];
}

// Line `line` prints on a run with these options.
bool Prints(const JobSummaryLines& lines, int line) {
  switch (line) {
    case kActual:
      return lines.actual;
    case kOpen:
      return lines.open;
    case kTotal:
      return lines.Total();
    case kBudget:
      return lines.budget;
    default:
      return lines.Variance();
  }
}

// The Open line has no "Other"; the Budget and Variance lines fetch theirs but do not print it.
bool HasColumn(int line, int column) {
  return column != kOther || line == kActual || line == kTotal;
}

double Number(const Variant& value) {
  return value.IsNull() || value.IsEmpty() ? 0.0 : value.ToDouble();
}

}  // namespace

double JobGrossProfit(double profit, double charges) {
  if (charges == 0) return profit == 0 ? 0.0 : -1.0;
  return profit / charges;
}

arJobSummary::arJobSummary() : ListDesigner("arJobSummary", kSummaryKeys) {}

DesignerPtr CreatearJobSummary() { return std::make_shared<arJobSummary>(); }

void arJobSummary::RefreshParameters(std::string&) {
  TLReport()->SetHasParameters(true);
  trellin::Parameters& p = TLReport()->Parameters();
  const std::span<const ListParameter> filters(kJobSummaryFilters);
  p.AddBoolean("Summary", false, false, "", false, false, "Summary");
  DeclareListParameters(ListKey{.parameters = filters.first(kFiltersBeforeOrder)}, p);
  p.AddList("OrderBy", "Code", true, "", "Code", "Code,Description", true, "Order By");
  for (const auto& [name, caption] :
       {std::pair{"ShowActual", "Show Actual"}, std::pair{"ShowBudget", "Show Budget"},
        std::pair{"ShowOpen", "Show Open"}, std::pair{"ShowExtraDetail", "Show Extra Detail"}}) {
    p.AddBoolean(name, false, false, "", false, true, caption);
  }
  DeclareListParameters(ListKey{.parameters = filters.subspan(kFiltersBeforeOrder)}, p);
  p.AddMultiList("Groupings", Variant(), false, "", Variant(),
                 std::string(kSummaryKeys[0].groupings), false, false, "Groupings");
}

void arJobSummary::ActiveReport_ReportStart() {
  trellin::Parameters& p = TLReport()->Parameters();
  lines_.actual = p.Value("ShowActual", false).ToBool();
  lines_.open = p.Value("ShowOpen", false).ToBool();
  lines_.budget = p.Value("ShowBudget", false).ToBool();
  extra_detail_ = p.Value("ShowExtraDetail", false).ToBool();

  BusinessLayer& business = TrellinReportGlobals::RequireBusinessLayer();
  Application& application = TrellinReportGlobals::RequireApplication();
  objects_ = business.CreateObjects();
  if (lines_.Any()) {
    job_ = objects_->CreateJob(application.Options().JobActualCharges(), application.Tax());
  }
  if (lines_.open) costing_ = objects_->CreateItemCosting(application.Tax());

  ListDesigner::ActiveReport_ReportStart();

  if (extra_detail_) {
    Field("lblCode").SetCaption("Code/ Cust");
    Field("lblDescription").SetCaption("Desc/ Name");
    for (const char* name : {"txtOtherPartyId", "txtOtherPartyName", "txtDateOpened"}) {
      Field(name).SetVisible(true);
    }
  }
  // The names of the lines that print, stacked in the page header beside the column headings:
  // they name rows, not columns, so they are texts and not headings of the exports.
  Section& header = Sections()["PageHeader"];
  const float heading_top = Field("lblCode").Top();
  int printed = 0;
  for (int line = 0; line < kLineCount; ++line) {
    if (!Prints(lines_, line)) continue;
    Control& label =
        header.Controls().Add(ControlClass::Field, std::string("txtLine") + kLineNames[line]);
    label.SetText(kLineNames[line]);
    label.SetLeft(kLineLabelLeft);
    label.SetTop(heading_top + kLineHeight * static_cast<float>(printed++));
    label.SetWidth(kLineLabelWidth);
    label.SetHeight(kFieldHeight);
    label.Font().Size = 8;
    label.Font().Italic = true;
  }
  Field("lblLine").SetVisible(false);
  if (printed > 1) {
    const float grow = kLineHeight * static_cast<float>(printed - 1);
    Control& rule = Field("linHeader");
    rule.SetTop(rule.Top() + grow);
    header.SetHeight(header.Height() + grow);
  }

  LayOutLines(Sections()["Detail"], "txt", 20, 0);
  for (int level = 1; level <= 4; ++level) {
    LayOutLines(Sections()["GroupFooter" + std::to_string(level)], "gf" + std::to_string(level), 40,
                2);
  }
  LayOutLines(Sections()["ReportFooter"], "rf", 40, 1);
}

void arJobSummary::LayOutLines(Section& section, const std::string& prefix, float top,
                               int summary) {
  float bottom = 0;
  for (const Control& c : section.Controls()) {
    if (c.Visible() && c.Class() != ControlClass::Line)
      bottom = std::max(bottom, c.Top() + c.Height());
  }
  int printed = 0;
  for (int line = 0; line < kLineCount; ++line) {
    if (!Prints(lines_, line)) continue;
    const float y = top + kLineHeight * static_cast<float>(printed++);
    for (int column = 0; column < kColumnCount; ++column) {
      if (!HasColumn(line, column)) continue;
      const std::string name = FieldName(line, column);
      Control& field = section.Controls().Add(ControlClass::Field, prefix + name);
      field.SetDataField(name);
      field.SetLeft(kFirstColumn + kColumnStep * static_cast<float>(column));
      field.SetTop(y);
      field.SetWidth(kColumnWidth);
      field.SetHeight(kFieldHeight);
      field.SetAlignment(TextAlignment::Right);
      field.SetOutputFormat(column == kGP ? "Percent" : "Currency");
      field.Font().Size = 8;
      field.Font().Bold = summary != 0;
      // A footer's GP is worked from its own totals, not summed.
      if (summary != 0 && column != kGP) {
        field.SetSummaryType(summary == 1 ? SummaryType::GrandTotal : SummaryType::SubTotal);
      }
      if (summary != 0 && column == kGP) field.SetDataField("");
    }
    bottom = std::max(bottom, y + kFieldHeight);
  }
  // The report footer's parameters stand below its lines.
  if (section.Type() == SectionType::ReportFooter && printed > 0) {
    const float shift =
        top + kLineHeight * static_cast<float>(printed) + 60 - Field("rfParameters").Top();
    if (shift > 0) {
      for (const char* name : {"rfParameters", "txtParameters"}) {
        Control& c = Field(name);
        c.SetTop(c.Top() + shift);
      }
      section.SetHeight(section.Height() + shift);
    }
    return;
  }
  section.SetHeight(std::max(section.Height(), bottom + 40));
}

void arJobSummary::ActiveReport_DataInitialize() {
  for (const char* name : {"OtherPartyName", "dateOpened"}) Fields().Add(name);
  for (int line = 0; line < kLineCount; ++line) {
    for (int column = 0; column < kColumnCount; ++column) {
      if (line == kOpen && column == kOther) continue;
      Fields().Add(FieldName(line, column));
    }
  }
}

void arJobSummary::ActiveReport_FetchData(bool& eof) {
  if (eof) return;
  trellin::Fields& fields = Fields();
  const ReportField* code = fields.Find("JobId");
  if (code == nullptr || code->Value().IsNull()) return;
  if (extra_detail_) {
    const std::string party = fields["OtherPartyId"].Value().Text();
    const trellin::OtherParty* found = party.empty() ? nullptr : objects_->FindOtherParty(party);
    fields["OtherPartyName"].SetValue(found ? Variant(found->name) : Variant::Null());
    const std::string date_format = TrellinReportGlobals::RequireBusinessLayer().DateFormat();
    std::string opened = "Opened: " + Format(fields["DateOpened"].Value(), date_format);
    const Variant closed = fields["DateClosed"].Value();
    if (!closed.IsNull()) opened += ", Closed: " + Format(closed, date_format);
    fields["dateOpened"].SetValue(Variant(opened));
  }
  for (int line = 0; line < kLineCount; ++line) {
    for (int column = 0; column < kColumnCount; ++column) {
      if (line == kOpen && column == kOther) continue;
      fields[FieldName(line, column)].SetValue(Variant::Null());
    }
  }
  if (!lines_.Any()) return;
  try {
    job_->Load(code->Value().Text());
    FillFigures();
  } catch (const std::exception& e) {
    TLReport()->ReportError("ActiveReport_FetchData",
                            "Job " + code->Value().Text() + ": " + e.what());
  }
}

void arJobSummary::FillFigures() {
  trellin::Fields& f = Fields();
  const bool actual_charges =
      TrellinReportGlobals::RequireApplication().Options().JobActualCharges();
  const std::string charge_line = actual_charges ? "Actual Charges" : "Charges";
  auto set = [&f](const std::string& name, Currency value) { f[name].SetValue(Variant(value)); };
  auto money = [&f](const std::string& name) { return Number(f[name].Value()); };
  Rounder& rounder = TrellinReportGlobals::RequireBusinessLayer().Utilities().Rounder();
  auto rounded = [&rounder](double value) { return rounder.Round(Variant(value), 4); };

  if (lines_.actual) {
    const Currency other =
        job_->Summary("Other Costs").Actual + job_->Summary("Disbursements").Actual;
    const Currency charges = job_->Summary(charge_line).Actual;
    const Currency costs = job_->Summary("Item Costs").Actual;
    const Currency purchases = job_->Summary("Purchases").Actual;
    const Currency total = other + costs + purchases;
    set("ActualCharges", charges);
    set("ActualOther", other);
    set("ActualCosts", costs);
    set("ActualPurchases", purchases);
    set("ActualTotal", total);
    set("ActualProfit", charges - total);
    // Unrounded: the actual line's GP is the plain quotient.
    f["ActualGP"].SetValue(
        Variant(JobGrossProfit((charges - total).ToDouble(), charges.ToDouble())));
  }
  if (lines_.open) {
    Database& database = *TrellinReportGlobals::RequireDatabase();
    Currency charges;
    Currency costs;
    auto rs = database.Query(
        "SELECT acBatchTransactionLine.ItemId,acBatchTransactionLine.Quantity,"
        "acBatchTransactionLine.DateProcess,acBatchTransactionLine.SerialNumber,"
        "acBatchTransactionLine.LocationId,acBatchTransactionLine.[Value] FROM "
        "acBatchTransaction INNER JOIN acBatchTransactionLine ON "
        "acBatchTransaction.acBatchTransactionId = acBatchTransactionLine.acBatchTransactionId "
        "WHERE acBatchTransactionLine.Type=42 AND acBatchTransaction.JobId=" +
        job_->JobId());
    for (; !rs->Eof(); rs->MoveNext()) {
      charges += rs->Value(5).IsNull() ? Currency() : rs->Value(5).ToCurrency();
      const Variant date = rs->Value(2);
      // The cost of issuing the line's stock, an issue being a negative quantity.
      costs -= costing_
                   ->Cost(rs->Value(0).Text(), -Number(rs->Value(1)),
                          date.IsNull() ? std::nullopt : std::optional<Date>(date.ToDate()),
                          rs->Value(4).Text(), rs->Value(3).Text(), true)
                   .Value;
    }
    const Currency purchases = database.ExecuteScalarCurrency(
        "SELECT Sum(acBatchTransactionLine.Value) AS SumOfValue FROM acBatchTransaction INNER "
        "JOIN acBatchTransactionLine ON acBatchTransaction.acBatchTransactionId = "
        "acBatchTransactionLine.acBatchTransactionId WHERE acBatchTransactionLine.Type In(20,21) "
        "AND acBatchTransaction.JobId=" +
            job_->JobId(),
        Currency());
    set("OpenCharges", charges);
    set("OpenCosts", costs);
    set("OpenPurchases", purchases);
    set("OpenTotal", costs + purchases);
    set("OpenProfit", charges - costs - purchases);
    f["OpenGP"].SetValue(
        rounded(JobGrossProfit((charges - costs - purchases).ToDouble(), charges.ToDouble())));
  }
  if (lines_.Total()) {
    for (const char* column : {"Charges", "Costs", "Purchases", "Total", "Profit"}) {
      set(std::string("Total") + column,
          Currency::FromDouble(money(std::string("Actual") + column) +
                               money(std::string("Open") + column)));
    }
    set("TotalOther", job_->Summary("Other Costs").Total);
    f["TotalGP"].SetValue(rounded(JobGrossProfit(money("TotalProfit"), money("TotalCharges"))));
  }
  if (lines_.budget) {
    set("BudgetCharges", job_->Summary(charge_line).Budget);
    set("BudgetCosts", job_->Summary("Item Costs").Budget);
    set("BudgetPurchases", job_->Summary("Purchases").Budget);
    set("BudgetOther", job_->Summary("Other Costs").Budget);
    set("BudgetTotal", job_->Summary("Total Costs").Budget);
    set("BudgetProfit", job_->Summary("Profit to date").Budget);
    f["BudgetGP"].SetValue(Variant(job_->Summary("GP %").Budget.ToDouble()));
  }
  if (lines_.Variance()) {
    set("VarianceCharges", job_->Summary(charge_line).Variance());
    set("VarianceCosts", job_->Summary("Item Costs").Variance());
    set("VariancePurchases", job_->Summary("Purchases").Variance());
    set("VarianceOther", job_->Summary("Other Costs").Variance());
    set("VarianceTotal", job_->Summary("Total Costs").Variance());
    set("VarianceProfit", job_->Summary("Profit to date").Variance());
    double gp = job_->Summary("GP %").Variance().ToDouble();
    if (lines_.Total()) gp = money("TotalGP") - money("BudgetGP");
    if (!lines_.actual) gp = money("OpenGP") - money("BudgetGP");
    f["VarianceGP"].SetValue(Variant(gp));
  }
}

void arJobSummary::OnFormat(Section& section) {
  ListDesigner::OnFormat(section);
  if (section.Type() == SectionType::GroupFooter) {
    if (const int level = GroupLevelOf(section, "GroupFooter")) {
      FooterGP(section, "gf" + std::to_string(level));
    }
  } else if (section.Type() == SectionType::ReportFooter) {
    FooterGP(section, "rf");
  }
}

void arJobSummary::FooterGP(Section& section, const std::string& prefix) {
  auto value = [&](const std::string& name) {
    const Control* c = section.Controls().Find(prefix + name);
    return c == nullptr ? 0.0 : Number(c->DataValue());
  };
  auto set = [&](const std::string& name, double gp) {
    if (Control* c = section.Controls().Find(prefix + name)) c->SetDataValue(Variant(gp));
  };
  double gp[kLineCount] = {};
  for (int line : {kActual, kOpen, kTotal, kBudget}) {
    if (!Prints(lines_, line)) continue;
    const std::string name = kLineNames[line];
    gp[line] = JobGrossProfit(value(name + "Profit"), value(name + "Charges"));
    set(name + "GP", gp[line]);
  }
  if (lines_.Variance()) {
    const int against = lines_.Total() ? kTotal : lines_.actual ? kActual : kOpen;
    set("VarianceGP", gp[against] - gp[kBudget]);
  }
}

void arJobSummary::ActiveReport_ReportEnd() {
  job_.reset();
  costing_.reset();
  objects_.reset();
}

}  // namespace trellin
