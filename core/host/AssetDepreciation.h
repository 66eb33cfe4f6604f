#pragma once
// Fixed assets as the business layer works them out: the depreciation calculator of one asset
// (AssetDepreciation), a depreciation run over many (DepreciationRun), and the Asset object the
// asset schedules read each asset through. The arithmetic is the business layer's
// (platform/business/README.md, "Depreciation"); these are the shapes the reports read.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/host/Application.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Date.h"
#include "platform/runtime/Variant.h"

namespace trellin {

// The stored codes of Asset.DepreciationBasis and DepreciationBasisTax.
enum class DepreciationBasis : std::int16_t { None = 0, StraightLine = 1, DiminishingValue = 2 };

// The stored codes of Asset.Status.
enum class AssetStatus : std::int16_t {
  OnOrder = 1,
  InUse = 2,
  Available = 3,
  Disposed = 4,
  Scrapped = 5
};

// The stored codes of AssetTransaction.Type that the business layer tells apart.
namespace asset_type {
constexpr int kPurchase = 10;
constexpr int kAddition = 11;
constexpr int kRevaluation = 12;
constexpr int kRevaluationCost = 14;
constexpr int kDepreciation = 20;   // 20, 21, 23 and 24 are posted depreciation
constexpr int kDisposalFirst = 40;  // 40 to 43 are disposals
constexpr int kDisposalLast = 43;
constexpr int kRevaluationOnDisposal = 44;
[[nodiscard]] constexpr bool IsPostedDepreciation(int type) {
  return type == 20 || type == 21 || type == 23 || type == 24;
}
[[nodiscard]] constexpr bool IsDisposal(int type) {
  return type >= kDisposalFirst && type <= kDisposalLast;
}
}  // namespace asset_type

// One movement of an asset, as stored: Value on the normal basis, TaxValue on the tax basis.
struct AssetMovement {
  std::string AssetId;
  int Type = 0;
  trellin::Date Date;
  Currency Value;
  Currency TaxValue;
};

// One portion of a run's depreciation: a span of days within one month and one financial year,
// on one set of bases. Value and TaxValue are the depreciation of the span, positive.
struct AssetDepreciationTransaction {
  Currency CostPrice;    // the asset's cost (purchases, additions, revaluations of cost)
  trellin::Date Date;    // the first day of the span
  trellin::Date DateTo;  // its last day
  Currency Value;        // depreciation, normal basis
  Currency TaxValue;     // depreciation, tax basis
  std::string DepreciationBasis, DepreciationBasisTax;  // "SL", "DV" or ""
  Currency Rate, RateTax;                               // per cent
  Currency OpeningBookValue;  // normal book value at the start of the span
};

// The figures of one asset worked out to a date. Money is exact, to the cent.
struct AssetDepreciationFigures {
  std::string AssetId, Description, AssetCategoryId, AssetTypeId;
  Variant Purchased;                               // the purchase date; Null when there is none
  trellin::Date DateDated;                         // the date worked out to
  Currency OpeningBookValue, OpeningBookValueTax;  // book value posted up to DateDated
  Currency AccumDepn, AccumDepnTax;        // depreciation posted up to DateDated, as a positive sum
  Currency Depreciation, DepreciationTax;  // this run's, from the day after the last posted one
  Currency BaseValue, BaseValueTax;        // what the last portion of the run was worked on
  Currency CostPrice;                      // purchases, additions and revaluations of cost
  std::string DepreciationBasis, DepreciationBasisTax;   // "SL", "DV" or ""
  double DepreciationRate = 0, DepreciationRateTax = 0;  // per cent
  // The accumulated depreciation a disposal up to DateDated clears; 0 when none.
  Currency DepreciationOffset, DepreciationOffsetTax;
  std::vector<AssetDepreciationTransaction> Transactions;  // in date order
};

// The depreciation calculator of one asset. One thread at a time; the figures stay until the
// next Calculate.
class AssetDepreciation {
 public:
  virtual ~AssetDepreciation() = default;
  // Works `asset_id` out to the end of `date_to` on both bases: the posted movements up to it,
  // and depreciation from the day after the last posted depreciation (or from purchase) to it,
  // against the financial years `years` (years outside them run on by whole years). With
  // `include_components` the asset's components are worked out alike and added in. Returns
  // false, with `result` naming the asset, when the company holds no such asset; true with an
  // empty `result` otherwise. Throws DatabaseError when the company cannot be read.
  [[nodiscard]] virtual bool Calculate(std::string_view asset_id, Date date_to,
                                       bool include_components,
                                       const std::vector<FinancialYear>& years,
                                       std::string& result) = 0;
  [[nodiscard]] virtual const AssetDepreciationFigures& Figures() const = 0;
  // Depreciation over the days `from` to `to`, both in: each portion of the run counts on its
  // last day, each posted depreciation on its date. A Null `from` runs from the start, a Null
  // `to` to the end.
  [[nodiscard]] virtual Currency DepreciationForPeriod(const Variant& from, const Variant& to,
                                                       bool use_tax) const = 0;
  // Makes DepreciationOffset answer on the tax basis.
  virtual void SetUseTaxBasis(bool use_tax) = 0;
  [[nodiscard]] virtual Currency DepreciationOffset() const = 0;
  // Whether the user has ticked the asset for the run; true until set.
  [[nodiscard]] virtual bool Selected() const = 0;
  virtual void SetSelected(bool selected) = 0;

  [[nodiscard]] std::int64_t TransactionCount() const {
    return static_cast<std::int64_t>(Figures().Transactions.size());
  }
  // One-based. REQUIRES: 1 <= index <= TransactionCount().
  [[nodiscard]] const AssetDepreciationTransaction& Transaction(std::int64_t index) const {
    return Figures().Transactions[static_cast<std::size_t>(index - 1)];
  }
};

// A depreciation run the application has worked out and holds: every asset of it worked out to
// DateDated.
class DepreciationRun {
 public:
  virtual ~DepreciationRun() = default;
  [[nodiscard]] virtual std::int64_t Count() const = 0;
  [[nodiscard]] virtual Date DateDated() const = 0;
  // One-based. Throws std::out_of_range outside 1 to Count().
  [[nodiscard]] virtual AssetDepreciation& Item(std::int64_t index) = 0;
};

// The deferred tax figures of one asset as at a date, on both books. Money is exact, to the cent.
struct AssetTaxFigures {
  Currency CostPrice, CostPriceTax;    // purchases and additions (types 10 and 11) to the date
  Currency AccumDepn, AccumDepnTax;    // depreciation posted to the date, as a positive sum
  Currency PeriodDepn, PeriodDepnTax;  // what the calculator adds from the last posting to it
  Currency BookValue, BookValueTax;    // the posted book value at the date less PeriodDepn
};

// The deferred tax figures of one asset, over the depreciation calculator. One thread at a time;
// the figures stay until the next Calculate.
class AssetTaxValues {
 public:
  virtual ~AssetTaxValues() = default;
  // Works `asset_id` out as at the end of `as_at`, with its components when asked. With
  // `work_out_period` the calculator's depreciation from the day after the last posted one to
  // `as_at` is the period's (PeriodDepn) and comes off the book value; without it the figures are
  // the posted ones and the period's are 0. Returns false, with `result` naming the asset, when the
  // company holds no such asset. Throws DatabaseError when the company cannot be read.
  [[nodiscard]] virtual bool Calculate(std::string_view asset_id, Date as_at,
                                       bool include_components, bool work_out_period,
                                       std::string& result) = 0;
  [[nodiscard]] virtual const AssetTaxFigures& Figures() const = 0;
};

// One asset as the schedules read it: its details, methods and the movements of a reporting
// period. Load an asset, set the period, then ask.
class Asset {
 public:
  virtual ~Asset() = default;
  // Returns false when the company holds no such asset.
  [[nodiscard]] virtual bool Load(std::string_view asset_id) = 0;
  // The reporting period, each end a date or Null for open; both days are in.
  virtual void SetPeriod(const Variant& date_from, const Variant& date_to) = 0;
  [[nodiscard]] virtual std::string Description() const = 0;
  [[nodiscard]] virtual Variant Purchased() const = 0;
  [[nodiscard]] virtual int DepreciationBasis() const = 0;
  [[nodiscard]] virtual int DepreciationBasisTax() const = 0;
  [[nodiscard]] virtual double DepreciationRate() const = 0;
  [[nodiscard]] virtual double DepreciationRateTax() const = 0;
  // The movements of the period in date order, with the components' when asked.
  [[nodiscard]] virtual std::vector<AssetMovement> Transactions(bool include_components) const = 0;
  // The asset's code and its components' as quoted SQL text: 'LAT101','TOO102'.
  [[nodiscard]] virtual std::string AssetList() const = 0;

  // The short text of a basis code: "SL", "DV"; "" for none or a code not known.
  [[nodiscard]] static std::string BasisText(int basis);
  // "On Order", "In Use", "Available", "Disposed", "Scrapped"; "" for any other number.
  [[nodiscard]] static std::string StatusText(int status);
  // The number of a status text (case ignored); 0 for a text not known.
  [[nodiscard]] static int StatusFromText(std::string_view text);
  // The text of an AssetTransaction.Type: "Purchase", "Depreciation", "Disposal" ...; "" for a
  // type no report names.
  [[nodiscard]] static std::string TypeText(int type);
};

}  // namespace trellin
