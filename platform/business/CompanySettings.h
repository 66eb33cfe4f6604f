#pragma once
// The company settings the business layer reads, with their defaults, in one table.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "core/host/Database.h"

namespace trellin::business {

enum class Setting {
  ProductName,
  CompanyName,
  DefaultBranch,
  DateFormat,
  LongDateFormat,
  CurrencyFormat,
  OverdueFromDefault,
  Country,
  SuburbInCityField,
  ItemCodeSetting,
  TemplateFolder,
  JobActualCharges,
  QuantityDecimals,
  PriceDecimals,
  ValueDecimals,
  PromptPaymentDiscount,
  AvailableIncludesAllocated,
  RetainedEarningsAccount,
  ReceivablesControlAccount,
  PayablesControlAccount,
  TaxName,
  TaxRate,
  TaxNumber,
  TaxPeriodStart,
  TaxPeriodMonths,
  TaxBasisOutput,
  TaxBasisInput,
  CurrentDateAP,
  CurrentDateAR,
  CurrentDateGL,
};

struct SettingRow {
  Setting Id;
  std::string_view Section;
  std::string_view Key;
  std::string_view Default;  // an empty current date means today
};

[[nodiscard]] const SettingRow& SettingInfo(Setting setting);

// Typed reads of one setting from `database`, its default when the company stores none or a
// blank. The typed forms throw std::runtime_error naming section, key and text when the stored text
// is not of the type ("Tax/Rate is \"abc\", which is not a number").
[[nodiscard]] std::string ReadText(Database& database, Setting setting);
[[nodiscard]] bool ReadBoolean(Database& database, Setting setting);
[[nodiscard]] std::int64_t ReadWhole(Database& database, Setting setting);
[[nodiscard]] double ReadNumber(Database& database, Setting setting);
// An ISO or day-first date; nullopt for an empty setting.
[[nodiscard]] std::optional<Date> ReadDate(Database& database, Setting setting);

}  // namespace trellin::business
