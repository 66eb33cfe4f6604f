#include "platform/business/CompanyItemCosting.h"

#include <cmath>

#include "platform/runtime/Strings.h"

namespace trellin::business {

namespace {

constexpr std::int64_t kPurchase = 20;

double CostNumber(const Variant& value) { return value.IsNull() ? 0.0 : value.ToDouble(); }
Currency CostMoney(const Variant& value) {
  return value.IsNull() ? Currency() : value.ToCurrency();
}

// `quantity` at `cost` for `per` units, to the cent, half away from zero.
Currency Share(Currency cost, double quantity, double per) {
  return Currency::FromDouble(cost.ToDouble() * quantity / per).Round(2);
}

}  // namespace

CompanyItemCosting::CompanyItemCosting(std::shared_ptr<trellin::Database> database, const Tax& tax)
    : database_(std::move(database)), tax_(tax) {}

ItemCost CompanyItemCosting::Cost(std::string_view item_id, double quantity,
                                  std::optional<Date> date, std::string_view location_id,
                                  std::string_view serial_number, bool include_undated) {
  const std::string item = Trim(item_id);
  auto master = database_->Query("SELECT Inventory,CostPrice,CostTaxType FROM Item WHERE ItemId=" +
                                 Database::SQLString(item));
  if (master->Eof()) return {};
  const Currency cost_price = CostMoney(master->Value(1));
  if (CostNumber(master->Value(0)) == 0) {
    return {Share(cost_price, quantity, 1), ItemCostRule::NonStock};
  }

  // Lines up to the end of the day; a line never processed counts only when asked.
  std::string lines = " FROM TransactionLine WHERE ItemId=" + Database::SQLString(item);
  if (date) {
    lines += " AND (DateProcess<" + Database::SQLDate(date->DateOnly().AddDays(1)) +
             (include_undated ? " OR DateProcess Is Null)" : ")");
  }
  const auto sums = [&](const std::string& where) {
    auto rs = database_->Query("SELECT Sum(Quantity),Sum(ItemCost)" + lines + where);
    return std::pair<double, Currency>{CostNumber(rs->Value(0)), CostMoney(rs->Value(1))};
  };

  const std::string serial = Trim(serial_number);
  if (!serial.empty()) {
    // What came in under the number, wherever it went later.
    const auto [in, cost] =
        sums(" AND SerialNumber=" + Database::SQLString(serial) + " AND Quantity>0");
    if (in > 0) return {Share(cost, quantity, in), ItemCostRule::OwnNumber};
  }
  const std::string location = Trim(location_id);
  const auto [on_hand, value] =
      sums(location.empty() ? std::string() : " AND LocationId=" + Database::SQLString(location));
  if (on_hand > 0) return {Share(value, quantity, on_hand), ItemCostRule::Average};

  auto receipt = database_->Query(
      "SELECT TOP 1 Quantity,ItemCost" + lines + " AND Type=" + std::to_string(kPurchase) +
      " AND Quantity>0 ORDER BY DateProcess DESC,TransactionLineId DESC");
  if (!receipt->Eof()) {
    return {Share(CostMoney(receipt->Value(1)), quantity, CostNumber(receipt->Value(0))),
            ItemCostRule::LastReceipt};
  }
  Currency net = cost_price;
  const std::string tax_code = master->Value(2).IsNull() ? "" : Trim(master->Value(2).Text());
  if (!tax_code.empty() && tax_.TaxCategory(tax_code)) net -= tax_.TaxInclusive(net, tax_code);
  return {Share(net, quantity, 1), ItemCostRule::CostPrice};
}

}  // namespace trellin::business
