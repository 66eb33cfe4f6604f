// The host's lifecycle: tying the designer, the error policy, and the row hand-over.

#include "platform/host/ReportHost.h"

#include <stdexcept>

namespace trellin::host {

ReportHost::ReportHost(std::shared_ptr<BusinessLayer> business_layer)
    : business_layer_(business_layer), columns_(std::move(business_layer)) {}

void ReportHost::SetArReport(std::shared_ptr<ActiveReport> designer) {
  designer_ = std::move(designer);
  if (!designer_) return;
  // The hook holds the host weakly: the designer's own reference to its host already keeps it.
  std::weak_ptr<ReportHost> weak = weak_from_this();
  if (weak.expired()) return;
  designer_->SetErrorHook([weak](const std::string& source, const std::string& message) {
    if (std::shared_ptr<ReportHost> host = weak.lock()) host->ReportError(source, message);
  });
}

ActiveReport& ReportHost::Designer() const {
  if (!designer_) throw std::logic_error("The report host has no report to drive.");
  return *designer_;
}

bool ReportHost::ColumnsInUse() const { return columns_.Enabled() && columns_.FieldsCreated(); }

void ReportHost::ReportError(const std::string& source, const std::string& message) {
  errors_.push_back({source, message});
  // A report whose preparation failed has wrong SQL, groups or columns: printing it would show
  // figures that look right and are not.
  if (source == kCancellingEvent && designer_) designer_->Cancel();
}

void ReportHost::DetailFormat(Section&, const std::string&) {
  if (ColumnsInUse()) columns_.FillRow(Designer().Fields(), "");
}

}  // namespace trellin::host
