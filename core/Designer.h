#pragma once
// The contract every top-level designer fulfils towards its host: the members the host calls by
// name, on top of the engine's ActiveReport.

#include <memory>
#include <string>

#include "core/host/ActiveReport.h"
#include "core/host/TLReport.h"

namespace trellin {

class Designer : public ActiveReport {
 public:
  // `designer_name` is the class name ("arCustomerTypeList"): the name of its stored layout.
  using ActiveReport::ActiveReport;

  // The host driving this designer; null until the catalogue ties one, and for sub-reports
  // unless the parent hands them its own. Host and designer refer to each other; the caller
  // breaks the cycle by clearing the host's arReport when the run is over.
  [[nodiscard]] const std::shared_ptr<trellin::TLReport>& TLReport() const { return tl_report_; }
  void SetTLReport(std::shared_ptr<trellin::TLReport> host) { tl_report_ = std::move(host); }

  // Declares the report's parameters on the host. `ReportName` is the catalogue key, for
  // designers that serve several keys. Designers without parameters keep this empty body.
  virtual void RefreshParameters(std::string& ReportName) { (void)ReportName; }
  // Fills the host's DataColumns; only column-driven designers have columns to declare.
  virtual void RefreshDataColumns() {}
  // Runs the parameter collection's own checks and returns whether they passed. Designers with
  // checks of their own override it. Throws ObjectNotSet when no host is tied.
  [[nodiscard]] virtual bool ValidateParameters();

 protected:
  // For OnFormat of a report whose groups the host defined: a group header or footer of level N
  // is formatted as the host's level N. Returns whether `section` was one.
  bool FormatGroupSection(const Section& section);

 private:
  std::shared_ptr<trellin::TLReport> tl_report_;
};

using DesignerPtr = std::shared_ptr<Designer>;
// Makes a fresh designer of one class; the catalogue calls it once per report asked for.
using DesignerFactory = DesignerPtr (*)();

}  // namespace trellin
