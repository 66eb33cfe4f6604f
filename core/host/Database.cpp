#include "core/host/Database.h"

namespace trellin {

bool Database::OpenRecordset(std::string_view sql, std::shared_ptr<Recordset>& rs, int, int) {
  try {
    rs = Query(sql);
    last_error_.clear();
    return true;
  } catch (const std::exception& e) {
    rs.reset();
    last_error_ = e.what();
    return false;
  }
}

}  // namespace trellin
