// The life of one sales analysis run: the rows read into the client-side recordset and sorted,
// the columns laid out, each row's figures, its lines, and the footers' gross profit.

#include "reports/receivables/ardsSalesAnalysisReport.h"

#include <algorithm>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "reports/receivables/AnalysisFigures.h"
#include "reports/receivables/ReceivablesShared.h"

namespace trellin {

namespace {

constexpr std::string_view kSalesCosts[] = {"Costs"};
constexpr std::string_view kJobCosts[] = {"Costs", "Purch"};

}  // namespace

void ardsSalesAnalysisReport::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

void ardsSalesAnalysisReport::ActiveReport_ReportStart() {
  BuildSQL();
  RefreshDataColumns();
  TLReport()->SetupGroupSections(summary_, -1, true);
  TLReport()->SetupStandardHeader(true);
  if (Control* heading = FindControl("txtHeading")) heading->SetText(heading_);
  LayOutColumns();
  AttachLines();
  if (query_log_) query_log_(sql_);
  rows_ = TrellinReportGlobals::RequireDatabase()->QueryUpdatable(sql_);
  // The order is the client's: the figure orders descend, which the query cannot give before the
  // rows are summed.
  rows_->Sort(sort_);
  DataControl().SetRecordset(rows_);
}

void ardsSalesAnalysisReport::LayOutColumns() {
  DataColumns& columns = TLReport()->DataColumns();
  columns.CreateFields(Field("lblColumns").Top(), 0, 60, 0, true, 0, 8.0f, 8.0f);
  Section& page_header = Sections()["PageHeader"];
  if (Control* rule = page_header.Controls().Find("linHeader")) {
    rule->SetTop(page_header.Height() + 30);
    page_header.SetHeight(page_header.Height() + 60);
  }
  // The footers' captions keep clear of the first total.
  float first_total = 15398;
  for (Control& control : Sections()["Detail"].Controls()) {
    if (control.Class() == ControlClass::Field && control.Alignment() == TextAlignment::Right &&
        control.Visible()) {
      first_total = std::min(first_total, control.Left());
    }
  }
  for (Section& section : Sections()) {
    Control* label = nullptr;
    if (section.Type() == SectionType::ReportFooter) label = section.Controls().Find("rfLabel");
    if (const int level = GroupLevelOf(section, "GroupFooter")) {
      label = section.Controls().Find("gfLabel" + std::to_string(level));
    }
    if (label != nullptr) label->SetWidth(std::max(0.0f, first_total - 60));
  }
}

void ardsSalesAnalysisReport::AttachLines() {
  const bool lines = show_transactions_ || split_by_address_;
  Section& detail = Sections()["Detail"];
  Control& frame = Field("srptTrans");
  frame.SetVisible(lines);
  if (Control* rule = detail.Controls().Find("linRow")) rule->SetVisible(lines);
  if (!lines) return;
  // A row with its lines under it reads as their heading.
  for (Control& control : detail.Controls()) {
    if (control.Class() == ControlClass::Field) control.Font().Bold = true;
  }
  sub_ = MakeLines();
  frame.SetObject(sub_);
  sub_->SplitByAddress = split_by_address_;
  sub_->IncludeCosts = include_costs_;
  sub_->Queries = query_log_;
  switch (rows_kind_) {
    case AnalysisRows::Parties:
      sub_->CodeCaption = "Item";
      sub_->NameCaption = "Description";
      break;
    case AnalysisRows::Items:
      sub_->CodeCaption = std::string(KeyOf(TLReport()->ReportName()).party);
      break;
    case AnalysisRows::Jobs:
      sub_->CodeCaption = "Item";
      sub_->NameCaption = "Description";
      sub_->JobCaption = "Customer";
      break;
    case AnalysisRows::ItemsOfJobs:
      sub_->CodeCaption = "Customer";
      sub_->NameCaption = "Job";
      sub_->JobCaption = "Job Description";
      break;
  }
}

std::shared_ptr<ardsSalesAnalysisReportTransSub> ardsSalesAnalysisReport::MakeLines() const {
  return std::make_shared<ardsSalesAnalysisReportTransSub>();
}

void ardsSalesAnalysisReport::ActiveReport_DataInitialize() {
  for (const char* name : {"GrossProfit", "GrossProfitPercent", "TotalCosts", "Price"}) {
    Fields().Add(name);
  }
}

void ardsSalesAnalysisReport::ActiveReport_FetchData(bool&) {
  const auto& rs = DataControl().Recordset();
  if (!gross_profit_ || !rs || rs->Eof()) return;
  trellin::Fields& f = Fields();
  const Currency net = FigureOf(rs->Value("NetSales"));
  Currency costs = FigureOf(rs->Value("Costs"));
  if (JobKey()) costs += FigureOf(rs->Value("Purchases"));
  if (total_costs_) {
    f["TotalCosts"].SetValue(include_disbursements_ ? costs
                                                    : costs + FigureOf(rs->Value("Disbursements")));
  }
  f["GrossProfit"].SetValue(net - costs);
  f["GrossProfitPercent"].SetValue(GrossProfitPercent(net, costs));
  if (!JobKey()) {
    const Variant& qty = rs->Value("Qty");
    const double quantity = qty.IsNull() ? 0.0 : qty.ToDouble();
    f["Price"].SetValue(quantity == 0.0 ? Currency()
                                        : Currency::FromDouble(net.ToDouble() / quantity));
  }
}

std::string ardsSalesAnalysisReport::RowFilter() {
  const auto& rs = DataControl().Recordset();
  auto test = [](const std::string& field, const Variant& value) {
    if (value.IsNull() || value.IsEmpty()) return field + " Is Null";
    return field + "=" + (value.IsNumber() ? value.Text() : Database::SQLString(value.Text()));
  };
  std::string filter;
  switch (rows_kind_) {
    case AnalysisRows::Parties:
      filter = test("Transactions.OtherPartyId", rs->Value(key_field_));
      break;
    case AnalysisRows::Jobs:
      filter = test("Transactions.JobId", rs->Value(key_field_));
      break;
    case AnalysisRows::Items:
    case AnalysisRows::ItemsOfJobs:
      filter = test("TransactionLine.ItemId", rs->Value(key_field_));
      break;
  }
  for (const Level& level : levels_) {
    AppendSQLCondition(filter, test(level.name, rs->Value(level.key_field)));
  }
  return filter;
}

void ardsSalesAnalysisReport::OnFormat(Section& section) {
  switch (section.Type()) {
    case SectionType::Detail: {
      TLReport()->DetailFormat(section, " ");
      if (decimals_ == kRoundingThousands) ApplySectionRounding(section, decimals_);
      const auto& rs = DataControl().Recordset();
      if (sub_ && rs && !rs->Eof()) {
        sub_->SQL = LinesSQL();
        sub_->OtherPartyId =
            rows_kind_ == AnalysisRows::Parties ? rs->Value(key_field_).Text() : std::string();
      }
      break;
    }
    case SectionType::GroupHeader:
      FormatGroupSection(section);
      break;
    case SectionType::GroupFooter:
      if (const int level = GroupLevelOf(section, "GroupFooter")) {
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

void ardsSalesAnalysisReport::FooterFormat(Section& section) {
  if (!section.Visible()) return;
  const GrossProfitColumns columns{"Net",
                                   JobKey() ? std::span<const std::string_view>(kJobCosts)
                                            : std::span<const std::string_view>(kSalesCosts),
                                   "GP", "GP %"};
  if (gross_profit_) FooterGrossProfit(section, columns, include_costs_);
  if (decimals_ == kRoundingThousands) ApplySectionRounding(section, decimals_);
}

void ardsSalesAnalysisReport::OnBeforePrint(Section& section) {
  if (section.Type() != SectionType::ReportFooter) return;
  TLReport()->ReportFooterBeforePrint();
  // The host gives the "Round" totals their text as the footer prints; thousands are ours.
  if (decimals_ == kRoundingThousands) ApplySectionRounding(section, decimals_);
}

void ardsSalesAnalysisReport::ActiveReport_ReportEnd() {
  DataControl().SetRecordset(nullptr);
  rows_.reset();
}

}  // namespace trellin
