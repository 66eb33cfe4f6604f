#include "core/host/DataControl.h"

#include <stdexcept>

namespace trellin {

void DataControl::SetSource(std::string sql) {
  // The rows open now, not when the engine starts reading, so that ReportStart can already test
  // EOF and RecordCount; a failure leaves the control closed rather than on stale rows.
  recordset_.reset();
  source_ = std::move(sql);
  if (source_.empty()) return;
  if (!connection_) {
    throw std::logic_error("the data control has no connection to open its source on");
  }
  recordset_ = connection_->QueryForward(source_);
}

}  // namespace trellin
