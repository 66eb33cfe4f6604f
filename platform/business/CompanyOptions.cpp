#include "platform/business/CompanyOptions.h"

#include <cmath>
#include <limits>
#include <stdexcept>

#include "platform/business/CompanySettings.h"
#include "platform/runtime/Strings.h"

namespace trellin::business {

namespace {

constexpr UserDefinedKindRow kUserDefinedKinds[] = {
    {UserDefinedKind::Asset, "Asset"},
    {UserDefinedKind::Item, "Item"},
    {UserDefinedKind::OtherParty, "OtherParty"},
    {UserDefinedKind::Transactions, "Transactions"},
    {UserDefinedKind::Job, "Job"},
};

constexpr std::string_view kUserDefinedSection = "UserDefinedFields";

int ReadFieldType(Database& database, const std::string& key) {
  std::string text = Trim(database.GetSetting(kUserDefinedSection, key, "0"));
  if (text.empty()) return 0;
  std::optional<double> number = ParseNumber(text);
  if (!number || *number != static_cast<int>(*number)) {
    throw std::runtime_error("The company setting " + std::string(kUserDefinedSection) + "/" + key +
                             " is \"" + text + "\", which is not a whole number.");
  }
  return static_cast<int>(*number);
}

int ReadDecimals(Database& database, Setting setting) {
  std::int64_t decimals = ReadWhole(database, setting);
  if (decimals < 0 || decimals > 4) {
    const SettingRow& row = SettingInfo(setting);
    throw std::runtime_error("The company setting " + std::string(row.Section) + "/" +
                             std::string(row.Key) + " is " + std::to_string(decimals) +
                             ", which is not from 0 to 4 decimals.");
  }
  return static_cast<int>(decimals);
}

}  // namespace

const UserDefinedKindRow& UserDefinedKindInfo(UserDefinedKind kind) {
  return kUserDefinedKinds[static_cast<int>(kind)];
}

OptionValues ReadOptionValues(Database& database) {
  OptionValues values;
  values.Country = Trim(ReadText(database, Setting::Country));
  values.SuburbInCityField = ReadBoolean(database, Setting::SuburbInCityField);
  std::int64_t item_code = ReadWhole(database, Setting::ItemCodeSetting);
  if (item_code < std::numeric_limits<std::int16_t>::min() ||
      item_code > std::numeric_limits<std::int16_t>::max()) {
    throw std::runtime_error("The company setting Options/ItemCodeSetting is " +
                             std::to_string(item_code) + ", which is out of range.");
  }
  values.ItemCodeSetting = static_cast<std::int16_t>(item_code);
  values.TemplateFolder = ReadText(database, Setting::TemplateFolder);
  values.JobActualCharges = ReadBoolean(database, Setting::JobActualCharges);
  values.DefaultBranch = Trim(ReadText(database, Setting::DefaultBranch));
  values.RetainedEarningsAccount = Trim(ReadText(database, Setting::RetainedEarningsAccount));
  values.ReceivablesControlAccount = Trim(ReadText(database, Setting::ReceivablesControlAccount));
  values.PayablesControlAccount = Trim(ReadText(database, Setting::PayablesControlAccount));
  values.QuantityDecimals = ReadDecimals(database, Setting::QuantityDecimals);
  values.PriceDecimals = ReadDecimals(database, Setting::PriceDecimals);
  values.ValueDecimals = ReadDecimals(database, Setting::ValueDecimals);
  values.PromptPaymentDiscount = ReadBoolean(database, Setting::PromptPaymentDiscount);
  values.AvailableIncludesAllocated = ReadBoolean(database, Setting::AvailableIncludesAllocated);
  for (const UserDefinedKindRow& row : kUserDefinedKinds) {
    auto& fields = values.UserDefined[static_cast<int>(row.Kind)];
    for (int position = 1; position <= kUserDefinedPositions; ++position) {
      std::string key = std::string(row.Table) + "." + std::to_string(position) + ".";
      UserDefinedField& field = fields[position - 1];
      field.Name = Trim(database.GetSetting(kUserDefinedSection, key + "Name", ""));
      if (!field.Name.empty()) {
        field.Type = ReadFieldType(database, key + "Type");
      }
    }
  }
  return values;
}

TaxValues ReadTaxValues(Database& database) {
  TaxValues values;
  values.Name = ReadText(database, Setting::TaxName);
  values.Rate = ReadNumber(database, Setting::TaxRate);
  values.TaxNumber = Trim(ReadText(database, Setting::TaxNumber));
  values.PeriodStart = ReadDate(database, Setting::TaxPeriodStart);
  std::int64_t months = ReadWhole(database, Setting::TaxPeriodMonths);
  if (months < 1 || months > 12) {
    throw std::runtime_error("The company setting Tax/PeriodMonths is " + std::to_string(months) +
                             ", which is not from 1 to 12 months.");
  }
  values.PeriodMonths = static_cast<int>(months);
  values.BasisOutput = Trim(ReadText(database, Setting::TaxBasisOutput));
  values.BasisInput = Trim(ReadText(database, Setting::TaxBasisInput));
  return values;
}

const CompanyTax::Categories& CompanyTax::TaxList() const {
  if (categories_) return *categories_;
  categories_.emplace();
  // The list is read at its first use, so that a company kept without one still gives its
  // tax name and rate.
  if (!list_source_) return *categories_;
  const std::shared_ptr<Recordset> rows =
      list_source_->Query("SELECT TaxCategoryId,Rate FROM TaxCategory");
  for (; !rows->Eof(); rows->MoveNext()) {
    const Variant& code = rows->Value(0);
    if (code.IsNull()) continue;
    const Variant& rate = rows->Value(1);
    (*categories_)[UCase(Trim(code.Text()))] = rate.IsNull() ? 0.0 : rate.ToDouble();
  }
  return *categories_;
}

bool CompanyTax::TaxCategory(std::string_view code) const {
  const Categories& list = TaxList();
  return list.find(UCase(Trim(code))) != list.end();
}

Currency CompanyTax::TaxInclusive(Currency amount, std::string_view code) const {
  const Categories& list = TaxList();
  const auto found = list.find(UCase(Trim(code)));
  if (found == list.end()) return {};
  const long double rate = found->second;
  if (rate <= -100) return {};
  // Worked in ten-thousandths, then to whole cents: 10.01 with 15% in holds 1.3057, so 1.31.
  const long double tax = static_cast<long double>(amount.Raw()) * rate / (100 + rate);
  return Currency::FromRaw(std::llround(tax / 100) * 100);
}

UserDefinedField CompanyOptions::UserDefinedFields(UserDefinedKind kind, int position) const {
  if (position < 1 || position > kUserDefinedPositions) {
    throw std::out_of_range("User-defined fields are at positions 1 to 20, not " +
                            std::to_string(position) + ".");
  }
  return values_.UserDefined[static_cast<int>(kind)][position - 1];
}

}  // namespace trellin::business
