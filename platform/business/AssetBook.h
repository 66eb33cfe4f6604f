#pragma once
// The assets of a company as the depreciation calculator and the Asset object read them: each
// asset's details and methods with its movements in date order. Read from the company file in two
// queries, or filled in memory (the benchmarks, the calculator's tests).

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/host/AssetDepreciation.h"
#include "core/host/Database.h"

namespace trellin::business {

struct AssetRecord {
  std::string id;
  std::string description;
  std::string category;
  std::string type;
  std::string parent;  // "" unless the asset is a component of another
  int status = static_cast<int>(AssetStatus::InUse);
  std::optional<Date> purchased;
  std::optional<Date> disposal;
  int basis = 0, basis_tax = 0;          // DepreciationBasis codes; 0 for Null
  double rate = 0, rate_tax = 0;         // per cent a year; 0 for Null
  std::vector<AssetMovement> movements;  // in date order, then as stored
};

class AssetBook {
 public:
  // Reads every asset and movement of the company. Throws DatabaseError when it cannot.
  [[nodiscard]] static std::shared_ptr<AssetBook> Read(Database& database);

  // Adds an asset; its movements are put in date order, keeping the order of a day's. An asset
  // of a code already held replaces it.
  void Add(AssetRecord record);
  // The asset of `id` (case and blanks at the ends ignored); nullptr when none.
  [[nodiscard]] const AssetRecord* Find(std::string_view id) const;
  // The components of `id`, in code order.
  [[nodiscard]] std::vector<const AssetRecord*> ComponentsOf(std::string_view id) const;
  // Every asset, in code order.
  [[nodiscard]] std::vector<const AssetRecord*> All() const;

 private:
  std::map<std::string, AssetRecord, std::less<>> records_;  // by upper-cased code
};

}  // namespace trellin::business
