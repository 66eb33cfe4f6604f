// Routines that work on the engine's objects: the data control and money rounding.

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Format.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

constexpr int kClientSideCursor = 3;
constexpr int kForwardOnly = 0;
constexpr int kReadOnly = 1;

constexpr char kRoundFormat[] = "Round";
constexpr char kWholeNumberMask[] = "#,###,##0;(#,###,##0)";

// How a rounded field shows its value: rounded to `digits`, divided by `divisor`, in the whole
// number mask. Modes not in the table show the plain currency format.
struct RoundingRule {
  int mode;
  int digits;
  int divisor;
};

constexpr RoundingRule kRoundingRules[] = {
    {kRoundingThousands, -3, 1000},
    {kRoundingWhole, 0, 1},
};

const RoundingRule* FindRule(int mode) {
  for (const RoundingRule& rule : kRoundingRules) {
    if (rule.mode == mode) return &rule;
  }
  return nullptr;
}

}  // namespace

void PrepareDataControl(DataControl& datData) {
  std::shared_ptr<Database> database = TrellinReportGlobals::RequireDatabase();
  datData.SetConnectionString(database->ConnectionString());
  datData.SetConnection(database);
  datData.SetCursorLocation(kClientSideCursor);
  datData.SetCursorType(kForwardOnly);
  datData.SetLockType(kReadOnly);
}

void ApplyReportRounding(ActiveReport& Designer, int Mode) {
  if (FindRule(Mode) == nullptr) return;
  const std::string currency_format =
      TrellinReportGlobals::RequireBusinessLayer().CurrencyFormat(0);
  for (Section& section : Designer.Sections()) {
    for (Control& control : section.Controls()) {
      if (control.Class() != ControlClass::Field) continue;
      const std::string& format = control.OutputFormat();
      if (format == currency_format || format == "Currency") control.SetOutputFormat(kRoundFormat);
    }
  }
}

void ApplySectionRounding(Section& Section, int Mode) {
  BusinessLayer& business_layer = TrellinReportGlobals::RequireBusinessLayer();
  const RoundingRule* rule = FindRule(Mode);
  for (Control& control : Section.Controls()) {
    if (control.Class() != ControlClass::Field) continue;
    if (UCase(control.OutputFormat()) != "ROUND") continue;
    if (rule == nullptr) {
      control.SetText(trellin::Format(control.DataValue(), business_layer.CurrencyFormat(0)));
      continue;
    }
    Variant rounded = business_layer.Utilities().Rounder().Round(control.DataValue(), rule->digits);
    if (rule->divisor != 1) rounded = Divide(rounded, Variant(rule->divisor));
    control.SetText(trellin::Format(rounded, kWholeNumberMask));
  }
}

}  // namespace trellin
