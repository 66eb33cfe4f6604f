#include "platform/business/CompanyAssetDepreciation.h"

#include <algorithm>
#include <stdexcept>

#include "core/host/Database.h"
#include "platform/business/DepreciationWork.h"

namespace trellin::business {

namespace {

bool WithinDays(Date day, const std::optional<Date>& from, const std::optional<Date>& to) {
  return (!from || *from <= day) && (!to || day <= *to);
}

std::optional<Date> DayOfVariant(const Variant& v) {
  if (v.IsNull() || v.IsEmpty() || v.IsMissing()) return std::nullopt;
  return v.ToDate().DateOnly();
}

}  // namespace

CompanyAssetDepreciation::CompanyAssetDepreciation(std::shared_ptr<const AssetBook> book)
    : book_(std::move(book)) {}

bool CompanyAssetDepreciation::Calculate(std::string_view asset_id, Date date_to,
                                         bool include_components,
                                         const std::vector<FinancialYear>& years,
                                         std::string& result) {
  figures_ = {};
  worked_.clear();
  result.clear();
  const AssetRecord* asset = book_->Find(asset_id);
  if (asset == nullptr) {
    result = "There is no asset \"" + std::string(asset_id) + "\".";
    return false;
  }
  const YearTable table(years);
  figures_ = WorkOutDepreciation(*asset, date_to, table);
  worked_.push_back(asset);
  if (include_components) {
    for (const AssetRecord* component : book_->ComponentsOf(asset->id)) {
      AddComponent(figures_, WorkOutDepreciation(*component, date_to, table));
      worked_.push_back(component);
    }
  }
  return true;
}

Currency CompanyAssetDepreciation::DepreciationForPeriod(const Variant& from, const Variant& to,
                                                         bool use_tax) const {
  const std::optional<Date> first = DayOfVariant(from);
  const std::optional<Date> last = DayOfVariant(to);
  Currency total;
  for (const AssetDepreciationTransaction& t : figures_.Transactions) {
    if (WithinDays(t.DateTo, first, last)) total += use_tax ? t.TaxValue : t.Value;
  }
  for (const AssetRecord* asset : worked_) {
    for (const AssetMovement& m : asset->movements) {
      if (m.Date > figures_.DateDated) break;
      if (asset_type::IsPostedDepreciation(m.Type) && WithinDays(m.Date, first, last)) {
        total -= use_tax ? m.TaxValue : m.Value;
      }
    }
  }
  return total;
}

CompanyDepreciationRun::CompanyDepreciationRun(const std::shared_ptr<const AssetBook>& book,
                                               Date date_dated,
                                               const std::vector<FinancialYear>& years)
    : date_dated_(date_dated.DateOnly()) {
  for (const AssetRecord* asset : book->All()) {
    const auto status = static_cast<AssetStatus>(asset->status);
    if (status != AssetStatus::InUse && status != AssetStatus::Available) continue;
    if (!asset->purchased || *asset->purchased > date_dated_) continue;
    if (asset->disposal && *asset->disposal <= date_dated_) continue;
    auto item = std::make_unique<CompanyAssetDepreciation>(book);
    std::string result;
    if (item->Calculate(asset->id, date_dated_, false, years, result)) {
      items_.push_back(std::move(item));
    }
  }
}

AssetDepreciation& CompanyDepreciationRun::Item(std::int64_t index) {
  if (index < 1 || index > Count()) {
    throw std::out_of_range("DepreciationRun: there is no asset " + std::to_string(index) + " of " +
                            std::to_string(Count()) + ".");
  }
  return *items_[static_cast<std::size_t>(index - 1)];
}

CompanyAssetTaxValues::CompanyAssetTaxValues(std::shared_ptr<const AssetBook> book,
                                             std::vector<FinancialYear> years)
    : book_(std::move(book)), years_(std::move(years)), calculator_(book_) {}

bool CompanyAssetTaxValues::Calculate(std::string_view asset_id, Date as_at,
                                      bool include_components, bool work_out_period,
                                      std::string& result) {
  figures_ = {};
  if (!calculator_.Calculate(asset_id, as_at, include_components, years_, result)) return false;
  const AssetDepreciationFigures& f = calculator_.Figures();
  figures_.AccumDepn = f.AccumDepn;
  figures_.AccumDepnTax = f.AccumDepnTax;
  if (work_out_period) {
    figures_.PeriodDepn = f.Depreciation;
    figures_.PeriodDepnTax = f.DepreciationTax;
  }
  figures_.BookValue = f.OpeningBookValue - figures_.PeriodDepn;
  figures_.BookValueTax = f.OpeningBookValueTax - figures_.PeriodDepnTax;
  // The cost as the register states it: purchases and additions, on each book.
  std::vector<const AssetRecord*> worked = {book_->Find(asset_id)};
  if (include_components) {
    for (const AssetRecord* component : book_->ComponentsOf(worked.front()->id)) {
      worked.push_back(component);
    }
  }
  for (const AssetRecord* asset : worked) {
    for (const AssetMovement& m : asset->movements) {
      if (m.Date > f.DateDated) break;
      if (m.Type != asset_type::kPurchase && m.Type != asset_type::kAddition) continue;
      figures_.CostPrice += m.Value;
      figures_.CostPriceTax += m.TaxValue;
    }
  }
  return true;
}

CompanyAsset::CompanyAsset(std::shared_ptr<const AssetBook> book) : book_(std::move(book)) {}

bool CompanyAsset::Load(std::string_view asset_id) {
  asset_ = book_->Find(asset_id);
  return asset_ != nullptr;
}

void CompanyAsset::SetPeriod(const Variant& date_from, const Variant& date_to) {
  from_ = DayOfVariant(date_from);
  to_ = DayOfVariant(date_to);
}

std::string CompanyAsset::Description() const { return asset_ ? asset_->description : ""; }

Variant CompanyAsset::Purchased() const {
  return asset_ && asset_->purchased ? Variant(*asset_->purchased) : Variant::Null();
}

int CompanyAsset::DepreciationBasis() const { return asset_ ? asset_->basis : 0; }
int CompanyAsset::DepreciationBasisTax() const { return asset_ ? asset_->basis_tax : 0; }
double CompanyAsset::DepreciationRate() const { return asset_ ? asset_->rate : 0.0; }
double CompanyAsset::DepreciationRateTax() const { return asset_ ? asset_->rate_tax : 0.0; }

std::vector<AssetMovement> CompanyAsset::Transactions(bool include_components) const {
  std::vector<AssetMovement> moves;
  if (asset_ == nullptr) return moves;
  auto take = [&](const AssetRecord& record) {
    for (const AssetMovement& m : record.movements) {
      if (WithinDays(m.Date, from_, to_)) moves.push_back(m);
    }
  };
  take(*asset_);
  if (include_components) {
    for (const AssetRecord* component : book_->ComponentsOf(asset_->id)) take(*component);
    std::stable_sort(
        moves.begin(), moves.end(),
        [](const AssetMovement& a, const AssetMovement& b) { return a.Date < b.Date; });
  }
  return moves;
}

std::string CompanyAsset::AssetList() const {
  if (asset_ == nullptr) return {};
  std::string list = Database::SQLString(asset_->id);
  for (const AssetRecord* component : book_->ComponentsOf(asset_->id)) {
    list += "," + Database::SQLString(component->id);
  }
  return list;
}

}  // namespace trellin::business
