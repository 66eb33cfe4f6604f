// The depreciation calculation: the settings that stand in for the application, the columns, the
// walk of the run and the footers' one or two lines.

#include "reports/assets/arfaDepreciationCalculation.h"

#include <algorithm>
#include <set>
#include <stdexcept>

#include "core/TrellinReportGlobals.h"
#include "core/TrellinReports.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"
#include "reports/ReportShapes.h"

namespace trellin {

namespace {

// One data column: field, heading, short heading, kind, width (-1 automatic), group caption,
// totalled. The eight of width 0 never print: the footers sum the figures behind the texts.
struct CalculationColumn {
  const char* field;
  const char* caption;
  const char* short_caption;
  int data_type;
  float width;
  const char* group_caption;
  bool totalled;
};

constexpr CalculationColumn kCalculationColumns[] = {
    {"Selected", "Selected", "Sel", kColumnBoolean, 450, "", false},
    {"AssetId", "Code", "", kColumnCode, 1100, "", true},
    {"Description", "Description", "", kColumnText, -1, "", true},
    {"Basis", "Book", "", kColumnText, 650, "", true},
    {"CostPrice", "Cost Price", "Cost", kColumnMoney, 1250, "", true},
    {"AccumDepnText", "Accum Depn", "Acc Dep", kColumnText, 1250, "", true},
    {"BookValueText", "Book Value", "BV", kColumnText, 1250, "", true},
    {"Purchased", "Purchased", "", kColumnDate, 950, "", false},
    {"DepreciationBasis", "Dep", "", kColumnText, 450, "Basis", false},
    {"DepreciationRate", "Basis", "", kColumnText, 600, "Basis", false},
    {"dateDated", "Date", "", kColumnDate, 950, "", false},
    {"BaseValueText", "Base", "", kColumnText, 1250, "", true},
    {"DepreciationText", "Depn", "Dep", kColumnText, 1250, "", true},
    {"OpeningBookValue", "Book Value", "BV", kColumnMoney, 0, "", true},
    {"OpeningBookValueTax", "Book Value", "BV", kColumnMoney, 0, "", true},
    {"BaseValue", "Base", "", kColumnMoney, 0, "", true},
    {"BaseValueTax", "Base", "", kColumnMoney, 0, "", true},
    {"Depreciation", "Depn", "Dep", kColumnMoney, 0, "", true},
    {"DepreciationTax", "Depn", "Dep", kColumnMoney, 0, "", true},
    {"AccumDepn", "Accum Depn", "Acc Dep", kColumnMoney, 0, "", true},
    {"AccumDepnTax", "Accum Depn", "Acc Dep", kColumnMoney, 0, "", true},
};

// The text columns of a line and of the footers, each with the normal and tax figures it shows.
struct TwoLineColumn {
  const char* text;
  const char* normal;
  const char* tax;
};

constexpr TwoLineColumn kTwoLine[] = {
    {"AccumDepnText", "AccumDepn", "AccumDepnTax"},
    {"BookValueText", "OpeningBookValue", "OpeningBookValueTax"},
    {"BaseValueText", "BaseValue", "BaseValueTax"},
    {"DepreciationText", "Depreciation", "DepreciationTax"},
};

constexpr const char* kTwoLineBreak = "\r\n";
constexpr const char* kRateFormat = "#0.00";
constexpr float kFigureGap = 120;  // twips

std::string MoneyText(Currency amount) {
  return Format(Variant(amount), TrellinReportGlobals::RequireBusinessLayer().CurrencyFormat());
}

Currency SumOf(const Control* control) {
  if (control == nullptr) return {};
  const Variant& v = control->DataValue();
  return v.IsNull() || v.IsEmpty() ? Currency() : v.ToCurrency();
}

// The run in the order of a grouping's key, then as it came: the application hands a grouped
// report its run so, or a group would start again at each change of key.
class RunInGroupOrder : public DepreciationRun {
 public:
  RunInGroupOrder(std::shared_ptr<DepreciationRun> run, bool by_category) : run_(std::move(run)) {
    for (std::int64_t i = 1; i <= run_->Count(); ++i) order_.push_back(i);
    auto key = [&](std::int64_t i) {
      const AssetDepreciationFigures& f = run_->Item(i).Figures();
      return UCase(by_category ? f.AssetCategoryId : f.AssetTypeId);
    };
    std::stable_sort(order_.begin(), order_.end(),
                     [&](std::int64_t a, std::int64_t b) { return key(a) < key(b); });
  }
  [[nodiscard]] std::int64_t Count() const override { return run_->Count(); }
  [[nodiscard]] Date DateDated() const override { return run_->DateDated(); }
  [[nodiscard]] AssetDepreciation& Item(std::int64_t index) override {
    if (index < 1 || index > Count()) return run_->Item(index);
    return run_->Item(order_[static_cast<std::size_t>(index - 1)]);
  }

 private:
  std::shared_ptr<DepreciationRun> run_;
  std::vector<std::int64_t> order_;
};

}  // namespace

DesignerPtr CreatearfaDepreciationCalculation() {
  return std::make_shared<arfaDepreciationCalculation>();
}

void arfaDepreciationCalculation::DeclareSettings(Parameters& p) {
  const std::string help =
      " A member of the run that the application sets; the report asks no "
      "parameters.";
  p.AddDate("DateDated", Variant(), true, "Dated As At", "GLCURRENT", false, "Dated As At")->Help =
      "The date the run is worked out to: each asset In Use or Available, bought by it and not "
      "disposed of, depreciated from the day after its last posted depreciation.";
  p.AddString("Selected", "", false, "", "", false, "Selected")->Help =
      "The assets ticked for the run, as a list of codes and ranges; empty ticks them all.";
  p.AddBoolean("SelectedOnly", false, false, "", false, false, "Selected Only")->Help =
      "Prints only the ticked assets.";
  p.AddBoolean("FullDetails", false, false, "", false, false, "Full Details")->Help =
      "Prints each asset's portions beneath it.";
  p.AddList("GroupBy", "None", false, "", "None", "None,Category,Type", false, "Group By")->Help =
      "Groups the assets by category or type.";
  p.AddString("Reference", "", false, "", "", false, "Reference")->Help =
      "Printed beside \"Reference:\".";
  p.AddString("glSource", "", false, "", "", false, "Source")->Help =
      "The general ledger source of the run, printed with its description beside \"Source:\".";
  p.AddBoolean("ShadeFirstRow", false, false, "", false, false, "Shade First Row")->Help =
      "Shades the first line, where it is otherwise clear.";
  settings_declared_ = true;
}

void arfaDepreciationCalculation::ApplySettings(const Parameters& p) {
  const Variant dated = p.Value("DateDated", Variant());
  if (dated.IsNull() || dated.IsEmpty() || dated.IsMissing() || !dated.IsDate()) {
    throw std::invalid_argument("Dated As At: the run needs a date.");
  }
  Application& application = TrellinReportGlobals::RequireApplication();
  std::unique_ptr<BusinessObjects> objects =
      TrellinReportGlobals::RequireBusinessLayer().CreateObjects();
  Run = objects->CreateDepreciationRun(dated.ToDate(), application.FinancialCalendar().Years());
  const std::string selected = Trim(p.Value("Selected", "").Text());
  if (!selected.empty()) {
    std::set<std::string> ticked;
    const std::string condition =
        TrellinReportGlobals::RequireBusinessLayer().Utilities().RangeBuilder().BuildRangeCondition(
            "AssetId", selected, 8);
    auto rs = TrellinReportGlobals::RequireDatabase()->Query("SELECT AssetId FROM Asset WHERE " +
                                                             condition);
    for (; !rs->Eof(); rs->MoveNext()) ticked.insert(UCase(Trim(rs->Value(0).Text())));
    for (std::int64_t i = 1; i <= Run->Count(); ++i) {
      AssetDepreciation& item = Run->Item(i);
      item.SetSelected(ticked.count(UCase(item.Figures().AssetId)) == 1);
    }
  }
  SelectedOnly = p.Value("SelectedOnly", false).ToBool();
  FullDetails = p.Value("FullDetails", false).ToBool();
  GroupBy = p.Value("GroupBy", "").Text();
  Reference = p.Value("Reference", "").Text();
  glSource = p.Value("glSource", "").Text();
  ShadeFirstRow = p.Value("ShadeFirstRow", false).ToBool();
  if (GroupBy == "Category" || GroupBy == "Type") {
    Run = std::make_shared<RunInGroupOrder>(Run, GroupBy == "Category");
  }
}

void arfaDepreciationCalculation::RefreshDataColumns() {
  DataColumns& columns = TLReport()->DataColumns();
  for (const CalculationColumn& c : kCalculationColumns) {
    DataColumn& added = columns.Add(c.field, c.field, c.data_type, c.caption, c.short_caption,
                                    c.width, -1, -1, c.data_type == kColumnCode ? 0 : -1, "(auto)",
                                    0, 0, "", true, c.group_caption, c.totalled, false);
    added.MultiLine = c.data_type == kColumnText;
  }
}

void arfaDepreciationCalculation::SetupGroups() {
  if (GroupBy == "Category") {
    TLReport()->DefineGroup(1, "Category", "AssetCategoryId",
                            "SELECT AssetCategoryId,Description FROM AssetCategory", false);
  } else if (GroupBy == "Type") {
    TLReport()->DefineGroup(1, "Type", "AssetTypeId",
                            "SELECT AssetTypeId,Description FROM AssetType", false);
  }
  TLReport()->EndDefineGroups();
  Control& details = Field("srptDetails");
  if (FullDetails) {
    sub_ = std::make_shared<arfaDepreciationCalculationSub>();
    details.SetObject(sub_);
    details.SetHeight(225);
    Sections()["Detail"].SetHeight(360);
  } else {
    details.SetVisible(false);
  }
}

void arfaDepreciationCalculation::ActiveReport_ReportStart() {
  if (!Run && settings_declared_) ApplySettings(TLReport()->Parameters());
  if (!Run) throw std::invalid_argument("The application has given the report no run.");
  if (TLReport()->DataColumns().Count() == 0) RefreshDataColumns();
  SetupGroups();
  TLReport()->SetupGroupSections(false, -1, true);
  TLReport()->SetupStandardHeader(true);
  const Control& heading = Field("lblHeading");
  TLReport()->DataColumns().CreateFields(heading.Top(), 0, 15, 0, true, 0, 8.0f, 8.0f);
  // The figures behind the text columns stand right, as figures do, in the lines and the totals.
  for (const TwoLineColumn& column : kTwoLine) {
    for (const std::string& name :
         {std::string("lbl") + column.text, std::string("txt") + column.text,
          std::string("GroupFooter1Summary") + column.text,
          std::string("ReportFooterSummary") + column.text}) {
      if (Control* c = FindControl(name)) {
        c->SetAlignment(TextAlignment::Right);
        // A text column leaves little room after it; a figure wants the room a number column has.
        c->SetWidth(std::max(0.0f, c->Width() - kFigureGap));
      }
    }
  }
  index_ = 0;
  const std::string date_format = TrellinReportGlobals::RequireBusinessLayer().DateFormat();
  Field("dateDate").SetText(Format(Variant(Run->DateDated()), date_format));
  Field("txtReference").SetText(Reference);
  std::string source = glSource;
  if (!Trim(glSource).empty()) {
    auto rs = TrellinReportGlobals::RequireDatabase()->Query(
        "SELECT glSourceId,Description FROM glSource WHERE glSourceId=" +
        Database::SQLString(Trim(glSource)));
    if (!rs->Eof()) source = Trim(rs->Value(0).Text()) + " - " + Trim(rs->Value(1).Text());
  }
  Field("txtglSource").SetText(source);
  Sections()["Detail"].SetBackStyle(ShadeFirstRow ? 0 : 1);
}

void arfaDepreciationCalculation::ActiveReport_DataInitialize() {
  for (const CalculationColumn& c : kCalculationColumns) Fields().Add(c.field);
  Fields().Add("AssetCategoryId");
  Fields().Add("AssetTypeId");
}

void arfaDepreciationCalculation::ActiveReport_FetchData(bool& eof) {
  for (;;) {
    ++index_;
    if (index_ > Run->Count()) {
      eof = true;
      return;
    }
    if (!SelectedOnly || Run->Item(index_).Selected()) break;
  }
  const AssetDepreciation& item = Run->Item(index_);
  const AssetDepreciationFigures& a = item.Figures();
  trellin::Fields& f = Fields();
  f["Selected"].SetValue(item.Selected());
  f["AssetId"].SetValue(a.AssetId);
  f["Description"].SetValue(a.Description);
  f["CostPrice"].SetValue(a.CostPrice);
  f["dateDated"].SetValue(a.DateDated);
  f["Purchased"].SetValue(a.Purchased);
  f["AssetCategoryId"].SetValue(a.AssetCategoryId);
  f["AssetTypeId"].SetValue(a.AssetTypeId);
  const Currency normal[] = {a.AccumDepn, a.OpeningBookValue, a.BaseValue, a.Depreciation};
  const Currency tax[] = {a.AccumDepnTax, a.OpeningBookValueTax, a.BaseValueTax, a.DepreciationTax};
  // Two lines only when the figures differ and the tax one is not nothing.
  const bool two_lines = a.Depreciation != a.DepreciationTax && a.DepreciationTax != Currency();
  const std::string rate = Format(Variant(a.DepreciationRate), kRateFormat);
  const std::string rate_tax = Format(Variant(a.DepreciationRateTax), kRateFormat);
  for (std::size_t i = 0; i < std::size(kTwoLine); ++i) {
    f[kTwoLine[i].text].SetValue(two_lines
                                     ? MoneyText(normal[i]) + kTwoLineBreak + MoneyText(tax[i])
                                     : MoneyText(normal[i]));
    f[kTwoLine[i].normal].SetValue(normal[i]);
    f[kTwoLine[i].tax].SetValue(tax[i]);
  }
  f["Basis"].SetValue(two_lines ? std::string("Normal") + kTwoLineBreak + "Tax" : "Normal");
  f["DepreciationBasis"].SetValue(two_lines
                                      ? a.DepreciationBasis + kTwoLineBreak + a.DepreciationBasisTax
                                      : a.DepreciationBasis);
  f["DepreciationRate"].SetValue(two_lines ? rate + kTwoLineBreak + rate_tax : rate);
  eof = false;
}

void arfaDepreciationCalculation::OnFormat(Section& section) {
  switch (section.Type()) {
    case SectionType::Detail: {
      if (TLReport()->ColumnsInUse()) TLReport()->DataColumns().FillRow(Fields(), "");
      const Control& details = Field("srptDetails");
      if (details.Visible() && index_ >= 1 && index_ <= Run->Count()) {
        sub_->DepnTransactions = &Run->Item(index_);
      } else if (!details.Visible()) {
        section.SetBackStyle(1 - section.BackStyle());
      }
      break;
    }
    case SectionType::GroupHeader:
      if (GroupLevelOf(section, "GroupHeader") == 1) {
        TLReport()->GroupHeaderFormat(1);
        if (!FullDetails) Sections()["Detail"].SetBackStyle(1);
      }
      break;
    case SectionType::GroupFooter:
      if (GroupLevelOf(section, "GroupFooter") == 1) TLReport()->GroupFooterFormat(1);
      break;
    default:
      break;
  }
}

void arfaDepreciationCalculation::OnBeforePrint(Section& section) {
  const bool footer =
      section.Type() == SectionType::ReportFooter ||
      (section.Type() == SectionType::GroupFooter && GroupLevelOf(section, "GroupFooter") == 1);
  if (!footer) return;
  FooterText(section);
  if (section.Type() == SectionType::ReportFooter) {
    TLReport()->ReportFooterBeforePrint();
    if (Control* count = section.Controls().Find("rfCount")) {
      // The caption is the count's value from here on, so a data export holds what prints.
      const std::string caption = "Grand Total (" + count->Text() + ")";
      count->SetOutputFormat("");
      count->SetDataValue(caption);
      count->SetText(caption);
    }
  }
}

void arfaDepreciationCalculation::FooterText(Section& section) {
  auto control = [&](const std::string& column) {
    return section.Controls().Find(section.Name() + "Summary" + column);
  };
  const Currency depreciation = SumOf(control("Depreciation"));
  const Currency depreciation_tax = SumOf(control("DepreciationTax"));
  const bool one_line = depreciation == depreciation_tax || depreciation_tax == Currency();
  if (!one_line) {
    for (const char* column :
         {"Basis", "AccumDepnText", "BookValueText", "BaseValueText", "DepreciationText"}) {
      if (Control* c = control(column)) c->SetHeight(c->Height() * 2);
    }
  }
  if (Control* basis = control("Basis")) {
    basis->SetText(one_line ? std::string("Normal")
                            : std::string("Normal") + kTwoLineBreak + "Tax");
  }
  for (const TwoLineColumn& column : kTwoLine) {
    Control* text = control(column.text);
    if (text == nullptr) continue;
    const std::string normal = MoneyText(SumOf(control(column.normal)));
    text->SetText(one_line ? normal
                           : normal + kTwoLineBreak + MoneyText(SumOf(control(column.tax))));
  }
}

void arfaDepreciationCalculation::ActiveReport_ReportEnd() {
  if (sub_) sub_->DepnTransactions = nullptr;
  Run.reset();
}

}  // namespace trellin
