#pragma once
// The arithmetic of depreciation: one asset worked out to a date on both bases, in exact money.
// The rules are written out in platform/business/README.md, "Depreciation".

#include <vector>

#include "core/host/Application.h"
#include "core/host/AssetDepreciation.h"
#include "platform/business/AssetBook.h"

namespace trellin::business {

// The financial years a run walks: those given, and beyond them whole years run on from the first
// and the last. With none given the years are calendar years.
class YearTable {
 public:
  explicit YearTable(std::vector<FinancialYear> years);
  struct Span {
    Date start;
    Date end;
  };
  // The year that holds `date`.
  [[nodiscard]] Span Holding(Date date) const;

 private:
  std::vector<FinancialYear> years_;  // oldest first
};

// `rate` per cent a year of `base` over `days` of a 365-day year, exact; see RoundToCent.
// The amount is kept as a numerator over kShareDenominator ten-thousandths of a dollar.
inline constexpr std::int64_t kRateScale = 1'000'000;  // a rate is held in millionths of a per cent
[[nodiscard]] std::int64_t RateUnits(double rate);
// base (ten-thousandths) x rate units x days / (365 x 100 x kRateScale), to the cent, half away
// from zero.
[[nodiscard]] Currency RoundShareToCent(__int128 numerator);

// Works `asset` out to the end of `date_to`: its posted figures up to that day, and the run of
// depreciation from the day after its last posted depreciation (or from purchase) to that day,
// or to the day before its disposal.
[[nodiscard]] AssetDepreciationFigures WorkOutDepreciation(const AssetRecord& asset, Date date_to,
                                                           const YearTable& years);

// Adds a component's figures into its parent's: the money, and the portions in date order.
void AddComponent(AssetDepreciationFigures& parent, const AssetDepreciationFigures& component);

}  // namespace trellin::business
