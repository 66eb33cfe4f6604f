// The tax detail report: its parameters, its rows from the tax detail object, its headings and
// the type totals' rate.

#include "reports/ledger/arglTaxDetailReport.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/host/BusinessLayer.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

constexpr long kDetailBranches = 6;
constexpr long kDetailDepartments = 14;
constexpr const char* kTaxDetailTitle = "Tax Detail Report";

constexpr const char* kTaxDetailFields[] = {
    "TaxIO", "TaxIOTotal",   "TaxCat",       "glTransactionId", "Account", "glSourceId",
    "Date",  "Reference",    "ValueIncl",    "ValueInclTotal",  "Tax",     "Comment",
    "Rate",  "GroupHeader1", "GroupHeader2", "GroupIndex"};

}  // namespace

DesignerPtr CreatearglTaxDetailReport() { return std::make_shared<arglTaxDetailReport>(); }

void arglTaxDetailReport::RefreshParameters(std::string&) {
  TLReport()->SetHasParameters(true);
  trellin::Parameters& p = TLReport()->Parameters();
  AddTaxPeriodParameter(p);
  p.AddBoolean("ExceptionsOnly", false, false, "", false, false, "Exceptions Only")->Help =
      "Only the lines whose tax is more than a cent off their value at their category's rate.";
  p.AddBoolean("ReconciliationFormat", false, false, "", false, false, "Reconciliation Format")
      ->Help =
      "Lines on the return's own basis: on the payments basis by their cash category and tax, "
      "at the bank's date.";
  p.AddMultiList("Groupings", Variant(), false, "", Variant(), "Branch,Department", false, false,
                 "Groupings");
  p.AddBoolean("Summary", false, false, "", false, false, "Summary");
  CreateStandardParameter(kDetailBranches, p, false);
  CreateStandardParameter(kDetailDepartments, p, false);
}

void arglTaxDetailReport::ActiveReport_ReportStart() {
  const trellin::Parameters& p = TLReport()->Parameters();
  Database& database = *TrellinReportGlobals::RequireDatabase();
  Application& application = TrellinReportGlobals::RequireApplication();
  BusinessLayer& business = TrellinReportGlobals::RequireBusinessLayer();
  const std::optional<TaxPeriodFacts> facts =
      ReadTaxPeriodFacts(database, application.Tax(), p.Value("TaxPeriod", Variant()));
  const bool exceptions = p.Value("ExceptionsOnly", false).ToBool();
  const bool reconciliation = p.Value("ReconciliationFormat", false).ToBool();
  summary_ = p.Value("Summary", false).ToBool();

  description_.clear();
  const std::string chosen = Trim(p.Value("TaxPeriod", Variant()).Text());
  AppendDescription(description_, chosen.empty() ? "The period now open" : "Tax Period: " + chosen);
  if (exceptions) AppendDescription(description_, "Exceptions only.");
  if (reconciliation) AppendDescription(description_, "Reconciliation Format.");
  std::string unused_where;
  AppendListParameterCondition(unused_where, "BranchId", "Branches", p, description_, kRangeText);
  AppendListParameterCondition(unused_where, "DeptId", "Departments", p, description_, kRangeText);
  if (summary_) AppendDescription(description_, "Summary.");

  const std::string mask = business.DateFormat();
  std::string period;
  std::string basis;
  if (facts) {
    period = std::to_string(facts->Months) +
             (facts->Months == 1 ? " month, from " : " months, from ") +
             Format(Variant(facts->DateFrom), mask) + " to " + Format(Variant(facts->DateTo), mask);
    basis = TaxBasisText(*facts, "\n");
  } else {
    period = "Tax period " + Trim(p.Value("TaxPeriod", Variant()).Text()) + " is not on file.";
  }
  SetTaxControl(*this, "txtPeriod", Variant(period));
  SetTaxControl(*this, "txtBasis", Variant(basis));

  groups_ = ReadTaxGroups(database, p);
  objects_ = business.CreateObjects();
  rows_.clear();
  type_totals_.clear();
  if (facts) {
    for (std::size_t g = 0; g < groups_.Groups.size(); ++g) {
      TaxDetailRequest request;
      request.TaxPeriodId = facts->TaxPeriodId;
      request.DateTo = facts->DateTo;
      request.BasisOutput = facts->BasisOutput;
      request.BasisInput = facts->BasisInput;
      request.GroupFilter = groups_.Groups[g].Filter;
      request.ExceptionsOnly = exceptions;
      request.ReconciliationFormat = reconciliation;
      for (TaxDetailLine& line : objects_->LoadTaxDetail(request)) {
        TypeTotal& total = type_totals_[{g, line.TaxIO, line.TaxCat}];
        total.value_incl += line.ValueIncl;
        total.tax += line.Tax;
        rows_.push_back({g, std::move(line)});
      }
    }
  }
  next_ = 0;
  if (Section* header = Sections().Find("GroupHeader1")) header->SetVisible(groups_.Levels >= 1);
  if (Section* footer = Sections().Find("GroupFooter1")) footer->SetVisible(groups_.Levels >= 1);
  if (Section* header = Sections().Find("GroupHeader2")) header->SetVisible(groups_.Levels >= 2);
  if (Section* footer = Sections().Find("GroupFooter2")) footer->SetVisible(groups_.Levels >= 2);
  if (Section* detail = Sections().Find("Detail")) detail->SetVisible(!summary_ && !rows_.empty());
  // With no lines the run still formats one empty row: no side or type heads it.
  for (const char* name : {"ghTaxAnalysis", "ghType", "gfType", "gfTaxAnalysis"}) {
    if (Section* section = Sections().Find(name)) section->SetVisible(!rows_.empty());
  }
  ShowTaxControls(*this, {"lingfType"}, !summary_);

  TLReport()->SetupStandardHeader(true);
  // After the standard header, which sets the title to the report's caption.
  if (Control* title = FindControl("lblReportTitle")) {
    title->SetCaption(std::string(kTaxDetailTitle) + (exceptions ? " (Exceptions)" : ""));
  }
  if (Control* text = FindControl("txtParameters")) {
    text->SetDataValue(Variant());
    text->SetText(description_);
  }
}

void arglTaxDetailReport::ActiveReport_DataInitialize() {
  for (const char* name : kTaxDetailFields) Fields().Add(name);
}

void arglTaxDetailReport::ActiveReport_FetchData(bool& eof) {
  if (next_ >= rows_.size()) {
    eof = true;
    return;
  }
  const Row& row = rows_[next_++];
  const TaxDetailLine& line = row.line;
  const TaxGroup& group = groups_.Groups[row.group];
  trellin::Fields& f = Fields();
  for (int level = 1; level <= 2; ++level) {
    const std::size_t i = static_cast<std::size_t>(level - 1);
    // The group's index keeps two groups of the same label apart.
    f["GroupHeader" + std::to_string(level)].SetValue(
        Variant(i < group.Labels.size() ? group.Labels[i] : std::string()));
  }
  f["GroupIndex"].SetValue(Variant(static_cast<std::int64_t>(row.group)));
  f["TaxIO"].SetValue(Variant(line.TaxIO));
  f["TaxCat"].SetValue(Variant(line.TaxCat));
  f["glTransactionId"].SetValue(Variant(line.glTransactionId));
  f["Account"].SetValue(Variant(line.Account));
  f["glSourceId"].SetValue(Variant(line.glSourceId));
  f["Date"].SetValue(Variant(line.date));
  f["Reference"].SetValue(Variant(line.Reference));
  f["ValueIncl"].SetValue(Variant(line.ValueIncl));
  f["Tax"].SetValue(Variant(line.Tax));
  f["Comment"].SetValue(Variant(line.Comment));
  f["Rate"].SetValue(Variant(line.Rate));
  // Sales add to the net tax and expenses take from it.
  const bool output = line.TaxIO == "O";
  f["TaxIOTotal"].SetValue(Variant(output ? line.Tax : -line.Tax));
  f["ValueInclTotal"].SetValue(Variant(output ? line.ValueIncl : -line.ValueIncl));
  eof = false;
}

void arglTaxDetailReport::OnFormat(Section& section) {
  if (section.Name() == "ghTaxAnalysis") {
    ghTaxAnalysis_Format();
  } else if (section.Name() == "ghType") {
    ghType_Format();
  } else if (section.Name() == "gfType") {
    gfType_Format();
  }
}

void arglTaxDetailReport::OnBeforePrint(Section& section) {
  if (section.Type() == SectionType::ReportFooter) TLReport()->ReportFooterBeforePrint();
}

void arglTaxDetailReport::ghTaxAnalysis_Format() {
  const std::string io = Fields()["TaxIO"].Value().Text();
  SetTaxControl(*this, "txtTaxAnalysis",
                Variant(io == "O" ? "Tax Analysis on Sales" : "Tax Analysis on Expenses"));
}

void arglTaxDetailReport::ghType_Format() {
  const std::string code = Fields()["TaxCat"].Value().Text();
  const TaxCategory* category = objects_ ? objects_->FindTaxCategory(code) : nullptr;
  if (Control* label = FindControl("ghLabelType")) {
    label->SetCaption("Type " + code + ": " + (category == nullptr ? "" : category->description));
  }
}

void arglTaxDetailReport::gfType_Format() {
  const std::string code = Fields()["TaxCat"].Value().Text();
  if (Control* label = FindControl("lblTotalType")) label->SetCaption("Total " + code);
  const TypeKey key{static_cast<std::size_t>(Fields()["GroupIndex"].Value().ToLong()),
                    Fields()["TaxIO"].Value().Text(), code};
  auto found = type_totals_.find(key);
  double rate = 0;
  if (found != type_totals_.end()) {
    const Currency excl = found->second.value_incl - found->second.tax;
    if (excl != Currency()) rate = found->second.tax.ToDouble() / excl.ToDouble() * 100;
  }
  SetTaxControl(*this, "numTypeRate", Variant(rate));
}

void arglTaxDetailReport::ActiveReport_ReportEnd() {
  rows_.clear();
  type_totals_.clear();
  objects_.reset();
}

}  // namespace trellin
