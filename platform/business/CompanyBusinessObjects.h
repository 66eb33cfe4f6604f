#pragma once
// The business objects of one report run, read from the company file. Branches, banks, tax
// categories, employees and asset categories are small tables, read whole at their first
// look-up; parties are read one by one as they are asked for, each with its addresses and
// contact methods, and kept.

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "core/host/BusinessObjects.h"
#include "core/host/Database.h"

namespace trellin::business {

class AssetBook;

class CompanyBusinessObjects : public BusinessObjects {
 public:
  // `database` must not be null; nothing is read until the first look-up.
  explicit CompanyBusinessObjects(std::shared_ptr<trellin::Database> database);

  [[nodiscard]] const trellin::OtherParty* FindOtherParty(std::string_view code) override;
  [[nodiscard]] const trellin::Branch* FindBranch(std::string_view code) override;
  [[nodiscard]] const trellin::BankDetails* FindBank(std::string_view code) override;
  [[nodiscard]] const trellin::TaxCategory* FindTaxCategory(std::string_view code) override;
  [[nodiscard]] const trellin::Employee* FindEmployee(std::string_view code) override;
  [[nodiscard]] const trellin::AssetCategory* FindAssetCategory(std::string_view code) override;
  [[nodiscard]] const trellin::DocumentType* FindDocumentType(std::string_view code) override;
  [[nodiscard]] const trellin::StockItem* FindItem(std::string_view code) override;
  [[nodiscard]] const trellin::Branch* FindLocationBranch(std::string_view code) override;
  [[nodiscard]] std::unique_ptr<trellin::ItemStockLevel> CreateItemStockLevel() override;
  [[nodiscard]] std::unique_ptr<trellin::ItemCosting> CreateItemCosting(const Tax& tax) override;
  // CompanyJob.cpp
  [[nodiscard]] std::unique_ptr<trellin::Job> CreateJob(bool actual_charges,
                                                        const Tax& tax) override;
  // CompanyBankReconciliation.cpp
  [[nodiscard]] std::optional<trellin::BankReconciliation> LoadBankReconciliation(
      std::string_view code, std::optional<Date> dated_to) override;
  // CompanyTaxDetail.cpp
  [[nodiscard]] std::vector<trellin::TaxDetailLine> LoadTaxDetail(
      const trellin::TaxDetailRequest& request) override;
  [[nodiscard]] std::unique_ptr<trellin::AssetDepreciation> CreateAssetDepreciation() override;
  [[nodiscard]] std::unique_ptr<trellin::Asset> CreateAsset() override;
  [[nodiscard]] std::unique_ptr<trellin::AssetTaxValues> CreateAssetTaxValues(
      const std::vector<FinancialYear>& years) override;
  [[nodiscard]] std::unique_ptr<trellin::DepreciationRun> CreateDepreciationRun(
      Date date_dated, const std::vector<FinancialYear>& years) override;

 private:
  // Keyed by the upper-cased, trimmed code.
  template <typename T>
  using ByCode = std::map<std::string, T, std::less<>>;

  std::shared_ptr<trellin::Database> database_;
  ByCode<std::optional<trellin::OtherParty>> parties_;  // nullopt: asked for, not held
  std::optional<ByCode<trellin::Branch>> branches_;
  std::optional<ByCode<trellin::BankDetails>> banks_;
  std::optional<ByCode<trellin::TaxCategory>> tax_categories_;
  std::optional<ByCode<trellin::Employee>> employees_;
  std::optional<ByCode<trellin::AssetCategory>> asset_categories_;
  std::optional<ByCode<trellin::DocumentType>> document_types_;
  std::optional<ByCode<trellin::StockItem>> items_;
  // A location's code and its branch's.
  struct LocationBranch {
    std::string code;
    std::string branch;
  };
  std::optional<ByCode<LocationBranch>> location_branches_;
  std::shared_ptr<const AssetBook> assets_;  // read at the first asset call
  [[nodiscard]] const std::shared_ptr<const AssetBook>& Assets();
};

}  // namespace trellin::business
