#pragma once
// Date expressions: what a date parameter's default says ("EOM+1D", "APCURRENT", "DateTo-1M"),
// so that a saved report means the same thing next month.

#include "core/host/Application.h"
#include "core/host/Parameters.h"
#include "platform/runtime/Variant.h"

namespace trellin {

// The date that `Expression` stands for, or Null when it means nothing.
//
// A date, or text that reads as one, is returned as it is. Otherwise the text is a keyword
// (BOM, EOM, NOW, BOY, EOY, APCURRENT, ARCURRENT, GLCURRENT, in any case), a date, or the name
// of a parameter in `parameters` (its present value is used), followed by modifiers applied left
// to right: a sign, a whole number and a unit (D days, the default; M months; E months then the
// month's end; Y years). A modifier with any other unit does nothing. BOM, EOM, BOY and EOY are
// taken from the value of the parameter DateAsAt, or today when there is none or it is no date.
// `parameters` may be null. `calendar` is asked only for BOY, EOY and the ledger dates; when it
// is needed and null, ObjectNotSet is thrown. Errors of the calendar reach the caller.
[[nodiscard]] Variant InterpretDateExpression(const Variant& Expression,
                                              const trellin::Parameters* parameters,
                                              const FinancialCalendar* calendar);

}  // namespace trellin

namespace trellin {

// Writes InterpretDateExpression(DefaultValue) into the Value of every date parameter, in the
// collection's order, so that one parameter can build on another resolved before it. A
// parameter with a Prompt is resolved only when ResolvePrompted, one without only when
// ResolveUnprompted; other kinds are left alone. A default that means nothing stores Null.
void ResolveDateParameters(trellin::Parameters& Parameters, bool ResolvePrompted,
                           bool ResolveUnprompted, const FinancialCalendar* calendar);

}  // namespace trellin
