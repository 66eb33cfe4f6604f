#include "reports/assets/arfaPurchaseSummarySub.h"

#include "core/TrellinReportGlobals.h"
#include "core/host/Database.h"
#include "platform/runtime/Strings.h"

namespace trellin {

std::string arfaPurchaseSummarySub::MovementsSQL() const {
  std::string sql = "SELECT AssetTransactionId,[Date]," + Amount() +
                    " AS [Value],Reference,Comment FROM AssetTransaction WHERE AssetId=" +
                    Database::SQLString(AssetId) + " AND AssetTransaction.Type In (" + Types + ")" +
                    " AND " + Amount() + "<>0";
  if (!DateFrom.IsNull()) sql += " AND [Date]>" + Database::SQLDate(DateFrom.ToDate().AddDays(-1));
  if (!DateTo.IsNull()) sql += " AND [Date]<" + Database::SQLDate(DateTo.ToDate().AddDays(1));
  return sql + " ORDER BY Date,AssetTransactionId";
}

void arfaPurchaseSummarySub::ActiveReport_ReportStart() {
  const std::string sql = MovementsSQL();
  if (Queries) Queries(sql);
  rs_ = TrellinReportGlobals::RequireDatabase()->Query(sql);
  if (Control* date = FindControl("dateDate")) {
    date->SetOutputFormat(TrellinReportGlobals::RequireBusinessLayer().DateFormat());
  }
}

void arfaPurchaseSummarySub::ActiveReport_DataInitialize() {
  for (const char* name : {"AssetTransactionId", "Date", "Value", "Reference", "Comment"}) {
    Fields().Add(name);
  }
}

void arfaPurchaseSummarySub::ActiveReport_FetchData(bool& eof) {
  if (!rs_ || rs_->Eof()) {
    eof = true;
    return;
  }
  FillRow(*rs_);
  rs_->MoveNext();
  eof = false;
}

void arfaPurchaseSummarySub::FillRow(const Recordset& rs) {
  for (const char* name : {"AssetTransactionId", "Date", "Value", "Reference", "Comment"}) {
    Fields()[name].SetValue(rs.Value(name));
  }
}

void arfaPurchaseSummarySub::ActiveReport_ReportEnd() { rs_.reset(); }

}  // namespace trellin
