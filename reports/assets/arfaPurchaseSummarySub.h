#pragma once
// The movements of one asset under its line in the purchase summary: date, reference, comment
// and amount, with their sum. The disposal summary's (arfaDisposalSummarySub) adds each
// movement's kind. A sub-report: the parent sets the run's state once and the asset before each
// line, and the rows are fetched by hand (unbound).

#include <functional>
#include <memory>
#include <string>

#include "core/host/ActiveReport.h"
#include "core/host/Recordset.h"
#include "platform/runtime/Variant.h"

namespace trellin {

class arfaPurchaseSummarySub : public ActiveReport {
 public:
  arfaPurchaseSummarySub() : arfaPurchaseSummarySub("arfaPurchaseSummarySub") {}

  // Set by the parent once for the run: the period (Null for an open end), the book, and the
  // movement types as they stand in the query ("10,11").
  Variant DateFrom;
  Variant DateTo;
  bool UseTaxBasis = false;
  std::string Types;
  // Set by the parent for each asset.
  std::string AssetId;
  // Called with every query the sub-report sends, when set.
  std::function<void(const std::string&)> Queries;

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void ActiveReport_ReportEnd() override;

  // The present asset's query.
  [[nodiscard]] virtual std::string MovementsSQL() const;

 protected:
  explicit arfaPurchaseSummarySub(const char* name) : ActiveReport(name) {}
  [[nodiscard]] std::string Amount() const { return UseTaxBasis ? "TaxValue" : "Value"; }
  // The fields of the present row from the movements' recordset.
  virtual void FillRow(const Recordset& rs);

 private:
  std::shared_ptr<Recordset> rs_;
};

}  // namespace trellin
