#include "platform/business/AssetBook.h"

#include <algorithm>

#include "platform/runtime/Strings.h"

namespace trellin::business {

namespace {

std::string BookKey(std::string_view code) { return UCase(Trim(code)); }

std::string BookText(const Variant& v) { return v.IsNull() ? std::string() : Trim(v.Text()); }

std::optional<Date> BookDate(const Variant& v) {
  if (v.IsNull() || v.IsEmpty()) return std::nullopt;
  return v.ToDate().DateOnly();
}

Currency BookMoney(const Variant& v) { return v.IsNull() ? Currency() : v.ToCurrency(); }

}  // namespace

std::shared_ptr<AssetBook> AssetBook::Read(Database& database) {
  auto book = std::make_shared<AssetBook>();
  auto assets = database.Query(
      "SELECT AssetId,Description,AssetCategoryId,AssetTypeId,ParentAssetId,Status,PurchaseDate,"
      "DisposalDate,DepreciationBasis,DepreciationRate,DepreciationBasisTax,DepreciationRateTax "
      "FROM Asset");
  for (; !assets->Eof(); assets->MoveNext()) {
    AssetRecord r;
    r.id = BookText(assets->Value(0));
    r.description = BookText(assets->Value(1));
    r.category = BookText(assets->Value(2));
    r.type = BookText(assets->Value(3));
    r.parent = BookText(assets->Value(4));
    r.status = assets->Value(5).IsNull() ? 0 : static_cast<int>(assets->Value(5).ToLong());
    r.purchased = BookDate(assets->Value(6));
    r.disposal = BookDate(assets->Value(7));
    r.basis = assets->Value(8).IsNull() ? 0 : static_cast<int>(assets->Value(8).ToLong());
    r.rate = assets->Value(9).IsNull() ? 0.0 : assets->Value(9).ToDouble();
    r.basis_tax = assets->Value(10).IsNull() ? 0 : static_cast<int>(assets->Value(10).ToLong());
    r.rate_tax = assets->Value(11).IsNull() ? 0.0 : assets->Value(11).ToDouble();
    book->records_[BookKey(r.id)] = std::move(r);
  }
  auto moves = database.Query(
      "SELECT AssetId,Type,[Date],[Value],TaxValue FROM AssetTransaction ORDER BY "
      "AssetId,[Date],AssetTransactionId");
  AssetRecord* current = nullptr;
  std::string current_key;
  for (; !moves->Eof(); moves->MoveNext()) {
    const std::string key = BookKey(BookText(moves->Value(0)));
    if (current == nullptr || key != current_key) {
      const auto found = book->records_.find(key);
      current = found == book->records_.end() ? nullptr : &found->second;
      current_key = key;
    }
    if (current == nullptr) continue;  // a movement of no asset the company holds
    current->movements.push_back({current->id, static_cast<int>(moves->Value(1).ToLong()),
                                  moves->Value(2).ToDate().DateOnly(), BookMoney(moves->Value(3)),
                                  BookMoney(moves->Value(4))});
  }
  return book;
}

void AssetBook::Add(AssetRecord record) {
  std::stable_sort(record.movements.begin(), record.movements.end(),
                   [](const AssetMovement& a, const AssetMovement& b) {
                     return a.Date.Serial() < b.Date.Serial();
                   });
  std::string key = BookKey(record.id);
  records_[std::move(key)] = std::move(record);
}

const AssetRecord* AssetBook::Find(std::string_view id) const {
  const auto found = records_.find(BookKey(id));
  return found == records_.end() ? nullptr : &found->second;
}

std::vector<const AssetRecord*> AssetBook::ComponentsOf(std::string_view id) const {
  std::vector<const AssetRecord*> components;
  const std::string key = BookKey(id);
  if (key.empty()) return components;
  for (const auto& [code, record] : records_) {
    if (BookKey(record.parent) == key) components.push_back(&record);
  }
  return components;
}

std::vector<const AssetRecord*> AssetBook::All() const {
  std::vector<const AssetRecord*> all;
  all.reserve(records_.size());
  for (const auto& [code, record] : records_) all.push_back(&record);
  return all;
}

}  // namespace trellin::business
