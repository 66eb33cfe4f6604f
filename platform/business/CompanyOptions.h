#pragma once
// The company options and the sales tax, as the company settings give them.

#include <array>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "core/host/Application.h"
#include "core/host/Database.h"

namespace trellin::business {

inline constexpr int kUserDefinedPositions = 20;

// The kinds of record with user-defined fields, in the order of UserDefinedKind, with the
// table that holds each kind's fields.
struct UserDefinedKindRow {
  UserDefinedKind Kind;
  std::string_view Table;
};
[[nodiscard]] const UserDefinedKindRow& UserDefinedKindInfo(UserDefinedKind kind);

// Plain values, so a test or another application can state its options directly.
struct OptionValues {
  std::string Country = "NZ";
  bool SuburbInCityField = true;
  std::int16_t ItemCodeSetting = 0;
  std::string TemplateFolder;
  bool JobActualCharges = false;
  std::string DefaultBranch;
  std::string RetainedEarningsAccount;
  std::string ReceivablesControlAccount;
  std::string PayablesControlAccount;
  int QuantityDecimals = 2;
  int PriceDecimals = 2;
  int ValueDecimals = 2;
  bool PromptPaymentDiscount = false;
  bool AvailableIncludesAllocated = false;
  // [kind][position - 1]
  std::array<std::array<UserDefinedField, kUserDefinedPositions>, 5> UserDefined{};
};

// Reads every option from the company settings (see platform/business/README.md). User-defined
// field n of a kind is named by the setting UserDefinedFields/<Table>.<n>.Name and typed by
// UserDefinedFields/<Table>.<n>.Type. Throws std::runtime_error for a setting that does not read
// as its type.
[[nodiscard]] OptionValues ReadOptionValues(Database& database);

class CompanyOptions : public Options {
 public:
  explicit CompanyOptions(OptionValues values) : values_(std::move(values)) {}

  [[nodiscard]] std::string Country() const override { return values_.Country; }
  [[nodiscard]] bool SuburbInCityField() const override { return values_.SuburbInCityField; }
  [[nodiscard]] std::int16_t ItemCodeSetting() const override { return values_.ItemCodeSetting; }
  // Throws std::out_of_range for a position outside 1 to 20.
  [[nodiscard]] UserDefinedField UserDefinedFields(UserDefinedKind kind,
                                                   int position) const override;
  [[nodiscard]] std::string TemplateFolder() const override { return values_.TemplateFolder; }
  [[nodiscard]] bool JobActualCharges() const override { return values_.JobActualCharges; }
  [[nodiscard]] std::string DefaultBranch() const override { return values_.DefaultBranch; }
  [[nodiscard]] std::string RetainedEarningsAccount() const override {
    return values_.RetainedEarningsAccount;
  }
  [[nodiscard]] std::string ReceivablesControlAccount() const override {
    return values_.ReceivablesControlAccount;
  }
  [[nodiscard]] std::string PayablesControlAccount() const override {
    return values_.PayablesControlAccount;
  }
  [[nodiscard]] int QuantityDecimals() const override { return values_.QuantityDecimals; }
  [[nodiscard]] int PriceDecimals() const override { return values_.PriceDecimals; }
  [[nodiscard]] int ValueDecimals() const override { return values_.ValueDecimals; }
  [[nodiscard]] bool PromptPaymentDiscount() const override {
    return values_.PromptPaymentDiscount;
  }
  [[nodiscard]] bool AvailableIncludesAllocated() const override {
    return values_.AvailableIncludesAllocated;
  }

 private:
  OptionValues values_;
};

struct TaxValues {
  std::string Name = "GST";
  double Rate = 15;
  std::string TaxNumber;
  std::optional<Date> PeriodStart;
  int PeriodMonths = 2;
  std::string BasisOutput = "Invoice";
  std::string BasisInput = "Invoice";
};

// Reads the tax settings; errors as ReadOptionValues.
[[nodiscard]] TaxValues ReadTaxValues(Database& database);

class CompanyTax : public Tax {
 public:
  // `list_source` holds the tax list (table TaxCategory), read at its first use; without one the
  // list is empty.
  explicit CompanyTax(TaxValues values, std::shared_ptr<Database> list_source = nullptr)
      : values_(std::move(values)), list_source_(std::move(list_source)) {}
  [[nodiscard]] std::string TaxName() const override { return values_.Name; }
  [[nodiscard]] double Rate() const override { return values_.Rate; }
  [[nodiscard]] std::string TaxNumber() const override { return values_.TaxNumber; }
  [[nodiscard]] std::optional<Date> PeriodStart() const override { return values_.PeriodStart; }
  [[nodiscard]] int PeriodMonths() const override { return values_.PeriodMonths; }
  [[nodiscard]] std::string BasisOutput() const override { return values_.BasisOutput; }
  [[nodiscard]] std::string BasisInput() const override { return values_.BasisInput; }
  [[nodiscard]] bool TaxCategory(std::string_view code) const override;
  [[nodiscard]] Currency TaxInclusive(Currency amount, std::string_view code) const override;

 private:
  // Rate in percent by category, keyed by the upper-cased, trimmed code.
  using Categories = std::map<std::string, double, std::less<>>;
  [[nodiscard]] const Categories& TaxList() const;

  TaxValues values_;
  std::shared_ptr<Database> list_source_;
  mutable std::optional<Categories> categories_;
};

}  // namespace trellin::business
