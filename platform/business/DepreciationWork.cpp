// Depreciation worked out in exact money. Amounts are numerators over one denominator, summed
// exactly in 128 bits, and rounded once to the cent, half away from zero: 9,716.30 at 25% is
// 2,429.075 and gives 2,429.08, where a sum in binary fractions gives 2,429.07.

#include "platform/business/DepreciationWork.h"

#include <algorithm>
#include <cmath>

namespace trellin::business {

namespace {

using asset_type::IsDisposal;
using asset_type::IsPostedDepreciation;

constexpr int kDaysInYear = 365;
// Ten-thousandths of a dollar x millionths of a per cent x days, over this, gives cents.
constexpr __int128 kCentDenominator =
    static_cast<__int128>(kDaysInYear) * 100 * kRateScale * (Currency::kScale / 100);

bool IsCostType(int type) {
  return type == asset_type::kPurchase || type == asset_type::kAddition ||
         type == asset_type::kRevaluationCost;
}
// A movement that adds to what depreciates from its own date.
bool StartsOnItsDate(int type) {
  return type == asset_type::kPurchase || type == asset_type::kAddition;
}
// A movement that changes what depreciates from the day after its date.
bool StartsTheDayAfter(int type) {
  return type == asset_type::kRevaluation || type == asset_type::kRevaluationCost ||
         type == asset_type::kRevaluationOnDisposal;
}

Currency AmountOn(const AssetMovement& m, bool tax) { return tax ? m.TaxValue : m.Value; }

// A part of the base that depreciates from `from` on.
struct DepreciationLayer {
  Date from;
  std::int64_t base = 0;  // ten-thousandths
};

// One span of the run: within one month and one year, with no change of base inside it.
struct RunSpan {
  Date from;
  Date to;
  YearTable::Span year;
};

std::vector<RunSpan> RunSpansOf(const AssetRecord& asset, Date start, Date end,
                                const YearTable& years) {
  std::vector<RunSpan> spans;
  Date p = start;
  YearTable::Span year = years.Holding(p);
  while (p <= end) {
    if (p > year.end) year = years.Holding(p);
    Date q = std::min({p.LastOfMonth(), year.end, end});
    for (const AssetMovement& m : asset.movements) {
      if (StartsOnItsDate(m.Type) && p < m.Date && m.Date <= q) q = m.Date.AddDays(-1);
      if (StartsTheDayAfter(m.Type) && p <= m.Date && m.Date < q) q = m.Date;
    }
    spans.push_back({p, q, year});
    p = q.AddDays(1);
  }
  return spans;
}

// The rounded depreciation of `layers` from the first day of their year to the end of `day`:
// each layer at most one year's worth.
Currency ShareToEndOf(const std::vector<DepreciationLayer>& layers, std::int64_t rate, Date day) {
  __int128 numerator = 0;
  for (const DepreciationLayer& layer : layers) {
    const int days = std::clamp(day.Serial() - layer.from.Serial() + 1, 0, kDaysInYear);
    numerator += static_cast<__int128>(layer.base) * rate * days;
  }
  return RoundShareToCent(numerator);
}

// What one basis depreciates over the spans; fills `values` span by span and gives the base of
// the last span.
Currency WalkBasis(const AssetRecord& asset, const std::vector<RunSpan>& spans, int basis,
                   double rate, bool tax, std::vector<Currency>& values) {
  values.assign(spans.size(), Currency());
  const auto method = static_cast<DepreciationBasis>(basis);
  if (method != DepreciationBasis::StraightLine && method != DepreciationBasis::DiminishingValue) {
    return Currency();
  }
  const std::int64_t units = RateUnits(rate);
  std::vector<DepreciationLayer> layers;
  Date layers_year;
  Currency run;  // depreciated so far in this run
  Currency base;
  for (std::size_t i = 0; i < spans.size(); ++i) {
    const RunSpan& span = spans[i];
    if (layers.empty() || layers_year != span.year.start) {
      layers.clear();
      layers_year = span.year.start;
      const Date ys = span.year.start;
      const Date ye = span.year.end;
      if (method == DepreciationBasis::DiminishingValue) {
        // The book value at the start of the year, then what comes in during it.
        Currency opening = -run;
        for (const AssetMovement& m : asset.movements) {
          if (m.Date < ys) opening += AmountOn(m, tax);
        }
        if (opening.Raw() != 0) layers.push_back({ys, opening.Raw()});
        for (const AssetMovement& m : asset.movements) {
          if (m.Date < ys || m.Date > ye) continue;
          if (StartsOnItsDate(m.Type)) layers.push_back({m.Date, AmountOn(m, tax).Raw()});
          if (StartsTheDayAfter(m.Type) && m.Date < ye) {
            layers.push_back({m.Date.AddDays(1), AmountOn(m, tax).Raw()});
          }
        }
      } else {
        // The cost, each part from its own date or the year's start.
        for (const AssetMovement& m : asset.movements) {
          if (m.Date > ye || !IsCostType(m.Type)) continue;
          const Date from = StartsOnItsDate(m.Type) ? m.Date : m.Date.AddDays(1);
          if (from > ye) continue;
          layers.push_back({std::max(from, ys), AmountOn(m, tax).Raw()});
        }
      }
      // A year with nothing to depreciate keeps one empty layer so that it is not set up again.
      if (layers.empty()) layers.push_back({ys, 0});
    }
    Currency amount =
        ShareToEndOf(layers, units, span.to) - ShareToEndOf(layers, units, span.from.AddDays(-1));
    // Never below nothing: the book value at the end of the span less this run so far.
    Currency book = -run;
    for (const AssetMovement& m : asset.movements) {
      if (m.Date <= span.to) book += AmountOn(m, tax);
    }
    amount = std::clamp(amount, Currency(), std::max(book, Currency()));
    values[i] = amount;
    run += amount;
    base = Currency();
    for (const DepreciationLayer& layer : layers) {
      if (layer.from <= span.to) base += Currency::FromRaw(layer.base);
    }
  }
  return base;
}

}  // namespace

YearTable::YearTable(std::vector<FinancialYear> years) : years_(std::move(years)) {
  std::sort(years_.begin(), years_.end(), [](const FinancialYear& a, const FinancialYear& b) {
    return a.DateStart < b.DateStart;
  });
}

YearTable::Span YearTable::Holding(Date date) const {
  date = date.DateOnly();
  if (years_.empty()) {
    const Date start = Date::FromYmd(date.Year(), 1, 1);
    return {start, Date::FromYmd(date.Year(), 12, 31)};
  }
  for (const FinancialYear& year : years_) {
    if (year.DateStart <= date && date <= year.DateEnd) return {year.DateStart, year.DateEnd};
  }
  if (date < years_.front().DateStart) {
    Date end = years_.front().DateStart.AddDays(-1);
    for (;;) {
      const Date start = end.AddDays(1).AddYears(-1);
      if (start <= date) return {start, end};
      end = start.AddDays(-1);
    }
  }
  // After the last year, or in a gap between two: whole years on from the year before.
  Date start = years_.front().DateEnd.AddDays(1);
  for (const FinancialYear& year : years_) {
    if (year.DateEnd < date) start = year.DateEnd.AddDays(1);
  }
  for (;;) {
    const Date end = start.AddYears(1).AddDays(-1);
    if (date <= end) return {start, end};
    start = end.AddDays(1);
  }
}

std::int64_t RateUnits(double rate) { return std::llround(rate * static_cast<double>(kRateScale)); }

Currency RoundShareToCent(__int128 numerator) {
  const bool negative = numerator < 0;
  const __int128 magnitude = negative ? -numerator : numerator;
  const __int128 cents = (magnitude + kCentDenominator / 2) / kCentDenominator;
  const auto raw = static_cast<std::int64_t>(cents) * (Currency::kScale / 100);
  return Currency::FromRaw(negative ? -raw : raw);
}

AssetDepreciationFigures WorkOutDepreciation(const AssetRecord& asset, Date date_to,
                                             const YearTable& years) {
  date_to = date_to.DateOnly();
  AssetDepreciationFigures f;
  f.AssetId = asset.id;
  f.Description = asset.description;
  f.AssetCategoryId = asset.category;
  f.AssetTypeId = asset.type;
  f.Purchased = asset.purchased ? Variant(*asset.purchased) : Variant::Null();
  f.DateDated = date_to;
  f.DepreciationBasis = Asset::BasisText(asset.basis);
  f.DepreciationBasisTax = Asset::BasisText(asset.basis_tax);
  f.DepreciationRate = asset.rate;
  f.DepreciationRateTax = asset.rate_tax;

  std::optional<Date> last_posted;
  std::optional<Date> disposal = asset.disposal;
  for (const AssetMovement& m : asset.movements) {
    if (m.Date > date_to) break;
    f.OpeningBookValue += m.Value;
    f.OpeningBookValueTax += m.TaxValue;
    if (IsCostType(m.Type)) f.CostPrice += m.Value;
    if (IsPostedDepreciation(m.Type)) {
      f.AccumDepn -= m.Value;
      f.AccumDepnTax -= m.TaxValue;
      last_posted = m.Date;
    }
    if (IsDisposal(m.Type) && (!disposal || m.Date < *disposal)) disposal = m.Date;
  }
  if (disposal && *disposal <= date_to) {
    for (const AssetMovement& m : asset.movements) {
      if (m.Date > *disposal) break;
      if (!IsPostedDepreciation(m.Type)) continue;
      f.DepreciationOffset -= m.Value;
      f.DepreciationOffsetTax -= m.TaxValue;
    }
  }
  const bool depreciates =
      static_cast<DepreciationBasis>(asset.basis) != DepreciationBasis::None ||
      static_cast<DepreciationBasis>(asset.basis_tax) != DepreciationBasis::None;
  std::optional<Date> start;
  if (last_posted) {
    start = last_posted->AddDays(1);
  } else if (asset.purchased) {
    start = *asset.purchased;
  } else if (!asset.movements.empty()) {
    start = asset.movements.front().Date;
  }
  Date end = date_to;
  if (disposal) end = std::min(end, disposal->AddDays(-1));
  const bool dv =
      static_cast<DepreciationBasis>(asset.basis) == DepreciationBasis::DiminishingValue;
  const bool dv_tax =
      static_cast<DepreciationBasis>(asset.basis_tax) == DepreciationBasis::DiminishingValue;
  f.BaseValue = dv ? f.OpeningBookValue : f.CostPrice;
  Currency cost_tax;
  for (const AssetMovement& m : asset.movements) {
    if (m.Date <= date_to && IsCostType(m.Type)) cost_tax += m.TaxValue;
  }
  f.BaseValueTax = dv_tax ? f.OpeningBookValueTax : cost_tax;
  if (!depreciates || !start || *start > end) return f;

  const std::vector<RunSpan> spans = RunSpansOf(asset, *start, end, years);
  std::vector<Currency> normal, tax;
  f.BaseValue = WalkBasis(asset, spans, asset.basis, asset.rate, false, normal);
  f.BaseValueTax = WalkBasis(asset, spans, asset.basis_tax, asset.rate_tax, true, tax);
  Currency run;
  f.Transactions.reserve(spans.size());
  for (std::size_t i = 0; i < spans.size(); ++i) {
    AssetDepreciationTransaction t;
    t.Date = spans[i].from;
    t.DateTo = spans[i].to;
    t.Value = normal[i];
    t.TaxValue = tax[i];
    t.DepreciationBasis = f.DepreciationBasis;
    t.DepreciationBasisTax = f.DepreciationBasisTax;
    t.Rate = Currency::FromDouble(asset.rate);
    t.RateTax = Currency::FromDouble(asset.rate_tax);
    Currency book = -run;
    for (const AssetMovement& m : asset.movements) {
      if (m.Date > spans[i].from) break;
      book += m.Value;
      if (IsCostType(m.Type)) t.CostPrice += m.Value;
    }
    t.OpeningBookValue = book;
    run += normal[i];
    f.Depreciation += normal[i];
    f.DepreciationTax += tax[i];
    f.Transactions.push_back(std::move(t));
  }
  return f;
}

void AddComponent(AssetDepreciationFigures& parent, const AssetDepreciationFigures& component) {
  parent.OpeningBookValue += component.OpeningBookValue;
  parent.OpeningBookValueTax += component.OpeningBookValueTax;
  parent.AccumDepn += component.AccumDepn;
  parent.AccumDepnTax += component.AccumDepnTax;
  parent.Depreciation += component.Depreciation;
  parent.DepreciationTax += component.DepreciationTax;
  parent.BaseValue += component.BaseValue;
  parent.BaseValueTax += component.BaseValueTax;
  parent.CostPrice += component.CostPrice;
  parent.DepreciationOffset += component.DepreciationOffset;
  parent.DepreciationOffsetTax += component.DepreciationOffsetTax;
  parent.Transactions.insert(parent.Transactions.end(), component.Transactions.begin(),
                             component.Transactions.end());
  std::stable_sort(parent.Transactions.begin(), parent.Transactions.end(),
                   [](const AssetDepreciationTransaction& a,
                      const AssetDepreciationTransaction& b) { return a.Date < b.Date; });
}

}  // namespace trellin::business
