#include "reports/admin/arDetailSpecialPricingSub.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"

namespace trellin {

void arDetailSpecialPricingSub::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

std::string arDetailSpecialPricingSub::SQL() const {
  Database& database = *TrellinReportGlobals::RequireDatabase();
  return "SELECT SpecialPrice.ItemId,Item.Description,SpecialPrice.Price,SpecialPrice.DiscountRate,"
         "SpecialPrice.DateFrom,SpecialPrice.DateTo"
         " FROM SpecialPrice INNER JOIN Item ON SpecialPrice.ItemId=Item.ItemId"
         " WHERE SpecialPrice.SType=" +
         database.SQLNumber(SType) +
         " AND SpecialPrice.FieldValue=" + database.SQLString(FieldValue) +
         " ORDER BY SpecialPrice.ItemId";
}

void arDetailSpecialPricingSub::ActiveReport_ReportStart() {
  DataControl().SetSource(SQL());
  // A type without special prices prints nothing at all, not even the column captions.
  const auto& rs = DataControl().Recordset();
  bool empty = !rs || rs->Eof();
  Sections()["ReportHeader"].SetVisible(!empty);
  Sections()["Detail"].SetVisible(!empty);
}

void arDetailSpecialPricingSub::OnFormat(Section& section) {
  if (section.Name() != "Detail") return;
  const auto& rs = DataControl().Recordset();
  if (!rs || rs->Eof()) return;
  // A price given as a discount shows the rate; a fixed price shows the amount.
  bool is_discount = Fields()["Price"].Value().IsNull();
  section.Field("txtPrice").SetVisible(!is_discount);
  section.Field("txtDiscountRate").SetVisible(is_discount);
}

}  // namespace trellin
