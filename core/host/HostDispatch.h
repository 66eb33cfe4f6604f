#pragma once
// The report's objects as a layout script sees them, through Dispatch: the report (`rpt`), its
// sections, controls, fields and data control, recordsets and parameters. Each wraps the object
// it is made for and holds it no longer than the script's value does; the report itself outlives
// its script, and a sub-report's report or a recordset is shared.

#include <memory>

#include "core/host/ActiveReport.h"
#include "core/host/Dispatch.h"
#include "core/host/Parameters.h"
#include "core/host/Recordset.h"

namespace trellin {

// `rpt`: the report's properties (Caption, PageNumber, Fields, Sections, DataControl, also as
// `datData`), then a section by name, then a control by name.
[[nodiscard]] std::shared_ptr<Dispatch> DispatchReport(ActiveReport& report);
// A report the script holds on its own (from GetSubreport), to hand to a sub-report's `object`.
[[nodiscard]] std::shared_ptr<Dispatch> DispatchReport(std::shared_ptr<ActiveReport> report);
// The report behind a value made by DispatchReport, nullptr for anything else.
[[nodiscard]] std::shared_ptr<ActiveReport> ReportOf(const Variant& value);

// A recordset: EOF, BOF, RecordCount, MoveNext, MoveFirst, Fields(name) and `rs.Name` for a
// field's value.
[[nodiscard]] std::shared_ptr<Dispatch> DispatchRecordset(std::shared_ptr<Recordset> rs);
// Parameters: Item(name) (also `Parameters.Name`), Exists(name), Count; a parameter has Value,
// Name, Caption.
[[nodiscard]] std::shared_ptr<Dispatch> DispatchParameters(Parameters& parameters);

}  // namespace trellin
