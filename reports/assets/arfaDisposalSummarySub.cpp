#include "reports/assets/arfaDisposalSummarySub.h"

#include "core/host/AssetDepreciation.h"
#include "core/host/Database.h"

namespace trellin {

std::string arfaDisposalSummarySub::MovementsSQL() const {
  std::string sql = "SELECT AssetTransactionId,[Date]," + Amount() +
                    " AS [Value],[Type],Reference,Comment FROM AssetTransaction WHERE AssetId=" +
                    Database::SQLString(AssetId) + " AND AssetTransaction.Type In (" + Types + ")";
  if (!DateFrom.IsNull()) sql += " AND [Date]>=" + Database::SQLDate(DateFrom.ToDate());
  if (!DateTo.IsNull()) sql += " AND [Date]<" + Database::SQLDate(DateTo.ToDate().AddDays(1));
  return sql + " ORDER BY Date,AssetTransactionId";
}

void arfaDisposalSummarySub::ActiveReport_DataInitialize() {
  arfaPurchaseSummarySub::ActiveReport_DataInitialize();
  Fields().Add("TType");
}

void arfaDisposalSummarySub::FillRow(const Recordset& rs) {
  arfaPurchaseSummarySub::FillRow(rs);
  const Variant& type = rs.Value("Type");
  Fields()["TType"].SetValue(type.IsNull() ? std::string()
                                           : Asset::TypeText(static_cast<int>(type.ToLong())));
}

}  // namespace trellin
