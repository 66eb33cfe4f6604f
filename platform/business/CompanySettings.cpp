#include "platform/business/CompanySettings.h"

#include <stdexcept>

#include "platform/business/CompanyFormats.h"
#include "platform/runtime/DateText.h"
#include "platform/runtime/Strings.h"

namespace trellin::business {

namespace {

// Every setting the business layer reads. platform/business/README.md lists the same rows.
constexpr SettingRow kSettings[] = {
    {Setting::ProductName, "Company", "ProductName", "Kestrane"},
    {Setting::CompanyName, "Company", "Name", ""},
    {Setting::DefaultBranch, "Defaults", "Branch", ""},
    {Setting::DateFormat, "Formats", "Date", kCompanyDateFormat},
    {Setting::LongDateFormat, "Formats", "LongDate", kCompanyLongDateFormat},
    {Setting::CurrencyFormat, "Formats", "Currency", kCompanyCurrencyFormat},
    {Setting::OverdueFromDefault, "Options", "OverdueFromDefault", "-9999999999"},
    {Setting::Country, "Company", "Country", "NZ"},
    {Setting::SuburbInCityField, "Options", "SuburbInCityField", "True"},
    {Setting::ItemCodeSetting, "Options", "ItemCodeSetting", "0"},
    {Setting::TemplateFolder, "Options", "TemplateFolder", ""},
    {Setting::JobActualCharges, "Options", "JobActualCharges", "False"},
    {Setting::QuantityDecimals, "Options", "QuantityDecimals", "2"},
    {Setting::PriceDecimals, "Options", "PriceDecimals", "2"},
    {Setting::ValueDecimals, "Options", "ValueDecimals", "2"},
    {Setting::PromptPaymentDiscount, "Options", "PromptPaymentDiscount", "False"},
    {Setting::AvailableIncludesAllocated, "Options", "AvailableIncludesAllocated", "False"},
    {Setting::RetainedEarningsAccount, "Accounts", "RetainedEarnings", ""},
    {Setting::ReceivablesControlAccount, "Accounts", "ReceivablesControl", ""},
    {Setting::PayablesControlAccount, "Accounts", "PayablesControl", ""},
    {Setting::TaxName, "Tax", "Name", "GST"},
    {Setting::TaxRate, "Tax", "Rate", "15"},
    {Setting::TaxNumber, "Company", "TaxNumber", ""},
    {Setting::TaxPeriodStart, "Tax", "PeriodStart", ""},
    {Setting::TaxPeriodMonths, "Tax", "PeriodMonths", "2"},
    {Setting::TaxBasisOutput, "Tax", "BasisOutput", "Invoice"},
    {Setting::TaxBasisInput, "Tax", "BasisInput", "Invoice"},
    {Setting::CurrentDateAP, "Periods", "CurrentDateAP", ""},
    {Setting::CurrentDateAR, "Periods", "CurrentDateAR", ""},
    {Setting::CurrentDateGL, "Periods", "CurrentDateGL", ""},
};

[[noreturn]] void Refuse(Setting setting, const std::string& text, const char* what) {
  const SettingRow& row = SettingInfo(setting);
  throw std::runtime_error("The company setting " + std::string(row.Section) + "/" +
                           std::string(row.Key) + " is \"" + text + "\", which is not " + what +
                           ".");
}

// Booleans as the accounts application writes them, and as a person would.
constexpr std::pair<std::string_view, bool> kBooleanWords[] = {
    {"True", true}, {"False", false}, {"Yes", true}, {"No", false},
    {"1", true},    {"0", false},     {"-1", true},
};

}  // namespace

const SettingRow& SettingInfo(Setting setting) {
  for (const SettingRow& row : kSettings) {
    if (row.Id == setting) return row;
  }
  throw std::logic_error("a setting without a row in the settings table");
}

std::string ReadText(Database& database, Setting setting) {
  const SettingRow& row = SettingInfo(setting);
  std::string text = database.GetSetting(row.Section, row.Key, row.Default);
  // A setting stored blank counts as absent, so a cleared field in the accounts application
  // brings the default back rather than an empty mask.
  return Trim(text).empty() ? std::string(row.Default) : text;
}

bool ReadBoolean(Database& database, Setting setting) {
  std::string text = Trim(ReadText(database, setting));
  for (const auto& [word, value] : kBooleanWords) {
    if (EqualsIgnoreCase(text, word)) return value;
  }
  Refuse(setting, text, "True or False");
}

std::int64_t ReadWhole(Database& database, Setting setting) {
  std::string text = Trim(ReadText(database, setting));
  std::optional<double> number = ParseNumber(text);
  if (!number || *number != static_cast<double>(static_cast<std::int64_t>(*number))) {
    Refuse(setting, text, "a whole number");
  }
  return static_cast<std::int64_t>(*number);
}

double ReadNumber(Database& database, Setting setting) {
  std::string text = Trim(ReadText(database, setting));
  std::optional<double> number = ParseNumber(text);
  if (!number) Refuse(setting, text, "a number");
  return *number;
}

std::optional<Date> ReadDate(Database& database, Setting setting) {
  std::string text = Trim(ReadText(database, setting));
  if (text.empty()) return std::nullopt;
  std::optional<Date> date = ParseDateText(text);
  if (!date) Refuse(setting, text, "a date");
  return date->DateOnly();
}

}  // namespace trellin::business
