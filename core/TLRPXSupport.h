#pragma once
// The object a user's layout script gets as `rpx`: its door to the company's data and to
// sub-layouts, without the rest of the program. The host makes one per run, sets its properties
// and hands it to the script; every member is also reachable by name (Dispatch), as scripts call
// them.

#include <functional>
#include <memory>
#include <string>

#include "core/host/ActiveReport.h"
#include "core/host/Database.h"
#include "core/host/Dispatch.h"
#include "core/host/Parameters.h"
#include "core/host/TLReport.h"

namespace trellin {

class TLRPXSupport : public TableDispatch<TLRPXSupport> {
 public:
  // Opens another company file by its connection string, read only; nullptr when it cannot.
  // Installed once by the platform; none installed, only the company's own string opens.
  using DatabaseOpener = std::function<std::shared_ptr<Database>(const std::string&)>;
  static void SetDatabaseOpener(DatabaseOpener opener);

  // dateAsAt is today, without time; DesignMode is False.
  TLRPXSupport();

  Date dateAsAt;
  Variant DateFrom;
  Variant DateTo;
  [[nodiscard]] bool DesignMode() const { return false; }
  // Not owning: the report holds the script that holds this object.
  std::weak_ptr<trellin::TLReport> TLReport;
  // Not owning: the host's collection, which outlives the run.
  trellin::Parameters* Parameters = nullptr;
  std::string SQLWhere;

  // The application when the business layer's product is the one named, else Nothing (a
  // layout made for another product then fails in its own script). The arguments are not used.
  [[nodiscard]] std::shared_ptr<Object> KestraneBL(const std::string& a = "",
                                                   const std::string& b = "") const;
  [[nodiscard]] std::shared_ptr<Object> LundrelBL(const std::string& a = "",
                                                  const std::string& b = "") const;
  [[nodiscard]] std::shared_ptr<Object> MorvaneBL(const std::string& a = "",
                                                  const std::string& b = "") const;
  [[nodiscard]] static std::string Format(const Variant& Value, const std::string& Format);
  // Rows of `SQL` (Jet dialect). The company's own connection string reads through the run's
  // snapshot; another names a company file, opened read only. Any failure gives nullptr.
  [[nodiscard]] std::shared_ptr<Recordset> GetRecordset(const std::string& ConnectionString,
                                                        const std::string& SQL) const;
  // A layout loaded as a new report: a bare name from the template folder, a path as given. A
  // bad one gives an empty report, not an error.
  [[nodiscard]] static std::shared_ptr<ActiveReport> GetSubreport(const std::string& FileName);
  [[nodiscard]] static std::string SQLBooleanToField(bool Value);
  [[nodiscard]] static std::string SQLDateToField(const Variant& Value);
  // "{Now}" and "{DateAsAt}" (in any case) as dates of this database's dialect, then
  // "{TemplateFolder}" as the folder of this library's own file with a trailing separator, then
  // the application's place holders.
  [[nodiscard]] std::string SubstituteString(const std::string& Text) const;

  [[nodiscard]] std::string TypeName() const override { return "TLRPXSupport"; }
  static const MemberTable<TLRPXSupport>& Table();

 private:
  [[nodiscard]] std::shared_ptr<Object> ApplicationFor(std::string_view product) const;
};

}  // namespace trellin
