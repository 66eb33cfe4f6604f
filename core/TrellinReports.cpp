// The service's lifecycle and its helpers for the application.

#include "core/TrellinReports.h"

#include "core/DateExpressions.h"
#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"

namespace trellin {

namespace {

constexpr std::int64_t kWideItemCode = 2600;
constexpr std::int64_t kNarrowItemCode = 1600;

const FinancialCalendar* GlobalCalendar() {
  const auto& application = TrellinReportGlobals::Application;
  return application ? &application->FinancialCalendar() : nullptr;
}

}  // namespace

TrellinReports::~TrellinReports() {
  // Only the instance the globals name may clear them: another instance may have been
  // initialised since, and its designers still need the objects.
  if (TrellinReportGlobals::TrellinReports == this) Dispose();
}

std::string TrellinReports::CreateSQLWhereFromBooleanParams(const trellin::Parameters& Parameters,
                                                            const std::string& Prefix,
                                                            bool& AllSelected,
                                                            const std::string& ExcludePrefix) {
  return SelectedBooleanNames(Parameters, Prefix, AllSelected, ExcludePrefix);
}

std::string TrellinReports::AppendSQLWhereFromDateRange(std::string& SQLWhere,
                                                        const std::string& Field,
                                                        const Variant& DateFrom,
                                                        const Variant& DateTo) {
  std::string unused_description;
  AppendDateRangeCondition(SQLWhere, Field, DateFrom, DateTo, "", unused_description);
  return "";
}

std::string TrellinReports::CreateSQLWhereFromNumberRange(std::string& SQLWhere,
                                                          const std::string& Field,
                                                          const Variant& ValueFrom,
                                                          const Variant& ValueTo) {
  std::string unused_description;
  AppendNumberRangeCondition(SQLWhere, Field, ValueFrom.ToCurrency(), ValueTo.ToCurrency(),
                             kNumberRangeMinimum, kNumberRangeMaximum, "", unused_description, "0");
  return "";
}

std::string TrellinReports::CreateSQLWhereFromRangeParams(const trellin::Parameters& Parameters,
                                                          std::string& Description) {
  return trellin::CreateSQLWhereFromRangeParams(Parameters, Description);
}

void TrellinReports::CreateStandardRangeParameter(long Index, trellin::Parameters& Parameters,
                                                  const std::string& Name,
                                                  const std::string& Caption,
                                                  const std::string& SQLField) {
  CreateStandardParameter(Index, Parameters, false, Name, Caption, SQLField, SQLField);
}

void TrellinReports::Dispose() {
  TrellinReportGlobals::BusinessLayer.reset();
  TrellinReportGlobals::Application.reset();
  TrellinReportGlobals::TrellinReports = nullptr;
}

void TrellinReports::Initialise(std::shared_ptr<trellin::BusinessLayer> BusinessLayer,
                                std::shared_ptr<trellin::Application> Application) {
  TrellinReportGlobals::BusinessLayer.reset();
  TrellinReportGlobals::Application.reset();
  TrellinReportGlobals::BusinessLayer = std::move(BusinessLayer);
  TrellinReportGlobals::Application = std::move(Application);
  TrellinReportGlobals::TrellinReports = this;
}

Variant TrellinReports::InterpretDate(const Variant& Expression,
                                      const trellin::Parameters* Parameters) {
  return InterpretDateExpression(Expression, Parameters, GlobalCalendar());
}

std::int64_t TrellinReports::ItemCodeWidth() {
  const Options& options = TrellinReportGlobals::RequireApplication().Options();
  return options.ItemCodeSetting() > 0 ? kWideItemCode : kNarrowItemCode;
}

void TrellinReports::ResolveParameters(trellin::Parameters& Parameters, bool ResolvePrompted,
                                       bool ResolveUnprompted) {
  ResolveDateParameters(Parameters, ResolvePrompted, ResolveUnprompted, GlobalCalendar());
}

}  // namespace trellin
