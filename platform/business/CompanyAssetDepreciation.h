#pragma once
// The depreciation calculator, the depreciation run and the Asset object over an AssetBook.

#include <memory>
#include <string>
#include <vector>

#include "core/host/AssetDepreciation.h"
#include "platform/business/AssetBook.h"

namespace trellin::business {

class CompanyAssetDepreciation : public AssetDepreciation {
 public:
  // `book` must not be null.
  explicit CompanyAssetDepreciation(std::shared_ptr<const AssetBook> book);

  [[nodiscard]] bool Calculate(std::string_view asset_id, Date date_to, bool include_components,
                               const std::vector<FinancialYear>& years,
                               std::string& result) override;
  [[nodiscard]] const AssetDepreciationFigures& Figures() const override { return figures_; }
  [[nodiscard]] Currency DepreciationForPeriod(const Variant& from, const Variant& to,
                                               bool use_tax) const override;
  void SetUseTaxBasis(bool use_tax) override { use_tax_ = use_tax; }
  [[nodiscard]] Currency DepreciationOffset() const override {
    return use_tax_ ? figures_.DepreciationOffsetTax : figures_.DepreciationOffset;
  }
  [[nodiscard]] bool Selected() const override { return selected_; }
  void SetSelected(bool selected) override { selected_ = selected; }

 private:
  std::shared_ptr<const AssetBook> book_;
  AssetDepreciationFigures figures_;
  std::vector<const AssetRecord*> worked_;  // the asset and the components added in
  bool use_tax_ = false;
  bool selected_ = true;
};

// A run: the assets In Use or Available, bought by the run's date and not disposed of by it,
// each worked out to it without its components, in code order.
class CompanyDepreciationRun : public DepreciationRun {
 public:
  CompanyDepreciationRun(const std::shared_ptr<const AssetBook>& book, Date date_dated,
                         const std::vector<FinancialYear>& years);

  [[nodiscard]] std::int64_t Count() const override {
    return static_cast<std::int64_t>(items_.size());
  }
  [[nodiscard]] Date DateDated() const override { return date_dated_; }
  [[nodiscard]] AssetDepreciation& Item(std::int64_t index) override;

 private:
  Date date_dated_;
  std::vector<std::unique_ptr<CompanyAssetDepreciation>> items_;
};

// The deferred tax figures over the calculator: the posted figures and the calculator's period.
class CompanyAssetTaxValues : public AssetTaxValues {
 public:
  // `book` must not be null.
  CompanyAssetTaxValues(std::shared_ptr<const AssetBook> book, std::vector<FinancialYear> years);

  [[nodiscard]] bool Calculate(std::string_view asset_id, Date as_at, bool include_components,
                               bool work_out_period, std::string& result) override;
  [[nodiscard]] const AssetTaxFigures& Figures() const override { return figures_; }

 private:
  std::shared_ptr<const AssetBook> book_;
  std::vector<FinancialYear> years_;
  CompanyAssetDepreciation calculator_;
  AssetTaxFigures figures_;
};

class CompanyAsset : public Asset {
 public:
  // `book` must not be null.
  explicit CompanyAsset(std::shared_ptr<const AssetBook> book);

  [[nodiscard]] bool Load(std::string_view asset_id) override;
  void SetPeriod(const Variant& date_from, const Variant& date_to) override;
  [[nodiscard]] std::string Description() const override;
  [[nodiscard]] Variant Purchased() const override;
  [[nodiscard]] int DepreciationBasis() const override;
  [[nodiscard]] int DepreciationBasisTax() const override;
  [[nodiscard]] double DepreciationRate() const override;
  [[nodiscard]] double DepreciationRateTax() const override;
  [[nodiscard]] std::vector<AssetMovement> Transactions(bool include_components) const override;
  [[nodiscard]] std::string AssetList() const override;

 private:
  std::shared_ptr<const AssetBook> book_;
  const AssetRecord* asset_ = nullptr;
  std::optional<Date> from_, to_;
};

}  // namespace trellin::business
