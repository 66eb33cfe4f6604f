#include "reports/assets/arfaDepreciationCalculationSub.h"

#include "core/TrellinReportGlobals.h"

namespace trellin {

void arfaDepreciationCalculationSub::ActiveReport_ReportStart() {
  index_ = 0;
  tax_pass_ = false;
  differ_ = false;
  const std::int64_t count = DepnTransactions == nullptr ? 0 : DepnTransactions->TransactionCount();
  Sections()["Detail"].SetVisible(count > 0);
  for (std::int64_t i = 1; i <= count; ++i) {
    const AssetDepreciationTransaction& t = DepnTransactions->Transaction(i);
    if (t.Rate != t.RateTax || t.DepreciationBasis != t.DepreciationBasisTax) {
      differ_ = true;
      break;
    }
  }
  Sections()["GroupHeader1"].SetVisible(differ_);
  Sections()["GroupFooter1"].SetVisible(differ_);
  if (Control* date = FindControl("dateDated")) {
    date->SetOutputFormat(TrellinReportGlobals::RequireBusinessLayer().DateFormat());
  }
}

void arfaDepreciationCalculationSub::ActiveReport_DataInitialize() {
  for (const char* name :
       {"SplitRates", "DateDated", "CostPrice", "OpeningBookValue", "Rate", "Value"}) {
    Fields().Add(name);
  }
}

void arfaDepreciationCalculationSub::ActiveReport_FetchData(bool& eof) {
  const std::int64_t count = DepnTransactions == nullptr ? 0 : DepnTransactions->TransactionCount();
  ++index_;
  if (index_ > count) {
    if (!differ_ || tax_pass_ || count == 0) {
      eof = true;
      return;
    }
    tax_pass_ = true;
    index_ = 1;
  }
  const AssetDepreciationTransaction& t = DepnTransactions->Transaction(index_);
  trellin::Fields& f = Fields();
  f["DateDated"].SetValue(t.Date);
  f["CostPrice"].SetValue(t.CostPrice);
  // The portion's book value has no tax twin: the tax pass prints the same.
  f["OpeningBookValue"].SetValue(t.OpeningBookValue);
  f["SplitRates"].SetValue(tax_pass_ ? "Tax" : "Normal");
  f["Rate"].SetValue(tax_pass_ ? t.RateTax : t.Rate);
  f["Value"].SetValue(tax_pass_ ? t.TaxValue : t.Value);
  eof = false;
}

}  // namespace trellin
