// The returns' wrapper: parameters, the group rows, and the form by country run once a row.

#include "reports/ledger/arglGST101BAS.h"

#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Strings.h"
#include "reports/ledger/arglBAS.h"
#include "reports/ledger/arglGST101.h"

namespace trellin {

namespace {

constexpr long kReturnBranches = 6;
constexpr long kReturnDepartments = 14;

}  // namespace

DesignerPtr CreatearglGST101BAS() { return std::make_shared<arglGST101BAS>(); }

void arglGST101BAS::RefreshParameters(std::string&) {
  TLReport()->SetHasParameters(true);
  trellin::Parameters& p = TLReport()->Parameters();
  AddTaxPeriodParameter(p);
  p.AddBoolean("ShowTaxMethod", false, false, "", false, false, "Show Tax Method")->Help =
      "Prints the Tax Method, the tax recorded on the lines, beside the Income Method.";
  p.AddMultiList("Groupings", Variant(), false, "", Variant(), "Branch,Department", false, false,
                 "Groupings");
  CreateStandardParameter(kReturnBranches, p, false);
  CreateStandardParameter(kReturnDepartments, p, false);
}

void arglGST101BAS::ActiveReport_ReportStart() {
  const trellin::Parameters& p = TLReport()->Parameters();
  Database& database = *TrellinReportGlobals::RequireDatabase();
  Application& application = TrellinReportGlobals::RequireApplication();
  const Variant period = p.Value("TaxPeriod", Variant());
  // Stops before any page when no period is chosen and none is open.
  (void)ReadTaxPeriodFacts(database, application.Tax(), period);

  if (EqualsIgnoreCase(Trim(application.Options().Country()), "AU")) {
    form_ = std::make_shared<arglBAS>();
  } else {
    form_ = std::make_shared<arglGST101>();
  }
  form_->TaxPeriodId = period;
  form_->ShowTaxMethod = p.Value("ShowTaxMethod", false).ToBool();
  if (Control* sub = FindControl("srptData")) sub->SetObject(form_);

  groups_ = ReadTaxGroups(database, p);
  next_ = 0;
  TLReport()->SetupStandardHeader(true);
  ShowTaxControls(*this, {"lblTaxHead", "colTax"}, form_->ShowTaxMethod);
  // The title is the form's, whichever key asked for it.
  if (Control* title = FindControl("lblReportTitle")) {
    title->SetCaption(dynamic_cast<arglBAS*>(form_.get()) != nullptr ? "Business Activity Statement"
                                                                     : "GST 101 Return");
  }
  // A header a grouping level: the outer one is GroupHeader2.
  if (Section* header = Sections().Find("GroupHeader1")) header->SetVisible(groups_.Levels >= 1);
  if (Section* header = Sections().Find("GroupHeader2")) header->SetVisible(groups_.Levels >= 2);
}

void arglGST101BAS::ActiveReport_DataInitialize() {
  for (const char* name : {"GroupHeader1", "GroupHeader2", "SQLWhere"}) Fields().Add(name);
}

void arglGST101BAS::ActiveReport_FetchData(bool& eof) {
  if (next_ >= groups_.Groups.size()) {
    eof = true;
    return;
  }
  const TaxGroup& group = groups_.Groups[next_++];
  trellin::Fields& f = Fields();
  for (int level = 1; level <= 2; ++level) {
    const std::size_t i = static_cast<std::size_t>(level - 1);
    f["GroupHeader" + std::to_string(level)].SetValue(
        Variant(i < group.Labels.size() ? group.Labels[i] : std::string()));
  }
  f["SQLWhere"].SetValue(Variant(group.Filter));
  eof = false;
}

void arglGST101BAS::OnFormat(Section& section) {
  if (section.Type() == SectionType::Detail && form_) {
    form_->SQLWhere = Fields()["SQLWhere"].Value().Text();
  }
}

void arglGST101BAS::ActiveReport_ReportEnd() { groups_ = {}; }

}  // namespace trellin
