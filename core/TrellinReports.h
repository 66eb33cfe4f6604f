#pragma once
// The report service: the one object the application makes. It is given the business layer and
// the application once, hands out a fresh designer for each report key, and offers the filter,
// standard parameter and date helpers to the application's parameter dialogue.

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "core/Catalogue.h"
#include "core/Designer.h"
#include "core/host/Application.h"
#include "core/host/BusinessLayer.h"
#include "core/host/Parameters.h"
#include "platform/runtime/Variant.h"

namespace trellin {

class TrellinReports {
 public:
  TrellinReports() = default;
  TrellinReports(const TrellinReports&) = delete;
  TrellinReports& operator=(const TrellinReports&) = delete;
  // Disposes the globals when they still refer to this instance.
  ~TrellinReports();

  // The checked Boolean parameters named Prefix... as a quoted IN list ("'Good','Bad'"); see
  // SelectedBooleanNames.
  [[nodiscard]] std::string CreateSQLWhereFromBooleanParams(const trellin::Parameters& Parameters,
                                                            const std::string& Prefix,
                                                            bool& AllSelected,
                                                            const std::string& ExcludePrefix = "");
  // Adds Field>=DateFrom and Field<DateTo+1 for the dates given. Returns "".
  std::string AppendSQLWhereFromDateRange(std::string& SQLWhere, const std::string& Field,
                                          const Variant& DateFrom, const Variant& DateTo);
  // Adds Field>=ValueFrom and Field<=ValueTo for the ends that are not the open sentinels
  // -9999999999 and 9999999999. Both values must convert to money (TypeMismatch otherwise).
  // Returns "".
  std::string CreateSQLWhereFromNumberRange(std::string& SQLWhere, const std::string& Field,
                                            const Variant& ValueFrom, const Variant& ValueTo);
  // The WHERE text of every list parameter with a value, each "Caption: value" added to
  // Description.
  [[nodiscard]] std::string CreateSQLWhereFromRangeParams(const trellin::Parameters& Parameters,
                                                          std::string& Description);
  // Standard parameter `Index`, not primary, with SQLField as both its filter and SQL field.
  void CreateStandardRangeParameter(long Index, trellin::Parameters& Parameters,
                                    const std::string& Name, const std::string& Caption,
                                    const std::string& SQLField);
  // Clears the three globals. Safe to call twice.
  void Dispose();
  // Replaces the globals: the two objects as given (null is stored as it is) and this instance.
  void Initialise(std::shared_ptr<trellin::BusinessLayer> BusinessLayer,
                  std::shared_ptr<trellin::Application> Application);
  // The date an expression stands for, or Null; see InterpretDateExpression. The calendar is
  // the global application's.
  [[nodiscard]] Variant InterpretDate(const Variant& Expression,
                                      const trellin::Parameters* Parameters);
  // Width of an item code column in twips: 2600 when the company's item code setting is above
  // zero, else 1600. Throws ObjectNotSet before Initialise.
  [[nodiscard]] std::int64_t ItemCodeWidth();
  // The designers Report can make (reports/Designers.h for the built ones); none until set. The
  // span must outlive this instance's use of it.
  void SetDesigners(std::span<const DesignerEntry> designers) { designers_ = designers; }
  // A fresh designer for the catalogue key ReportName (exact, case included), tied to a new
  // host from the business layer's ReportFactory (its events' errors go to the host's
  // ReportError), with its parameters declared. Null for a key
  // the catalogue does not hold or whose designer is not among those set. Errors of
  // RefreshParameters and of DataColumns.Initialise are ignored; the host factory's errors, and
  // ObjectNotSet before Initialise, reach the caller, as do the errors of loading the designer's
  // stored layout. The caller owns the designer. `reserved` is kept for the call's duration and
  // used nowhere.
  [[nodiscard]] DesignerPtr Report(const std::string& ReportName,
                                   std::shared_ptr<Object> reserved = nullptr);
  // As Report, over the given catalogue instead of the built-in one.
  [[nodiscard]] DesignerPtr ReportFrom(std::span<const CatalogueEntry> catalogue,
                                       const std::string& ReportName);
  // Interprets the DefaultValue of the date parameters into their Value; see
  // ResolveDateParameters.
  void ResolveParameters(trellin::Parameters& Parameters, bool ResolvePrompted,
                         bool ResolveUnprompted);

 private:
  std::span<const DesignerEntry> designers_;
};

}  // namespace trellin
