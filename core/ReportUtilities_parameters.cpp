// Filters and phrases drawn from the parameters themselves: list parameters and check boxes.

#include <algorithm>
#include <array>
#include <string_view>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

// The list parameters whose field is numeric; every other field is compared as text.
constexpr std::array<std::string_view, 4> kNumericRangeFields = {
    "AssetTransaction.Type", "Asset.Status", "Contact.ContactId", "Item.Inventory"};

// The address filter needs a join that only the report knows, so the shared loop leaves it out.
constexpr std::string_view kAddressField = "AddressId";

// A parameter with no caption of its own is shown by its name, so that the run's description
// never holds a bare ": value".
const std::string& ShownCaption(const Parameter& parameter) {
  return parameter.Caption.empty() ? parameter.Name : parameter.Caption;
}

std::string RangeCondition(const std::string& field, const std::string& value, int data_type) {
  RangeBuilder& builder = TrellinReportGlobals::RequireBusinessLayer().Utilities().RangeBuilder();
  return "(" + builder.BuildRangeCondition(field, value, data_type) + ")";
}

bool StartsWith(std::string_view text, std::string_view prefix) {
  return text.substr(0, prefix.size()) == prefix;
}

// Check boxes normally hold a Boolean; a missing or Null value counts as unchecked.
bool IsChecked(const Variant& value) {
  if (value.IsNull() || value.IsMissing() || value.IsEmpty()) return false;
  return value.ToBool();
}

}  // namespace

void AppendListParameterCondition(std::string& SQLWhere, const std::string& Field,
                                  const std::string& ParameterName,
                                  const trellin::Parameters& Parameters, std::string& Description,
                                  int DataType) {
  const std::string value = Parameters.Value(ParameterName, Variant::Missing()).Text();
  if (value.empty()) return;
  AppendNamedValueDescription(Description, ShownCaption(Parameters.Item(ParameterName)), value);
  AppendSQLCondition(SQLWhere, RangeCondition(Field, value, DataType));
}

std::string CreateSQLWhereFromRangeParams(const trellin::Parameters& Parameters,
                                          std::string& Description) {
  std::string where;
  for (const ParameterPtr& parameter : Parameters) {
    if (parameter->Kind != ParameterType::SQLList) continue;
    const std::string value = parameter->Value.Text();
    if (value.empty()) continue;
    const std::string& field = parameter->SQLField;
    if (field != kAddressField) {
      const bool numeric = std::find(kNumericRangeFields.begin(), kNumericRangeFields.end(),
                                     field) != kNumericRangeFields.end();
      AppendSQLCondition(where, RangeCondition(field, value, numeric ? kRangeNumber : kRangeText));
    }
    AppendNamedValueDescription(Description, ShownCaption(*parameter), value);
  }
  return where;
}

std::string SelectedBooleanNames(const trellin::Parameters& Parameters, const std::string& Prefix,
                                 bool& AllSelected, const std::string& ExcludePrefix) {
  AllSelected = true;
  std::string names;
  for (const ParameterPtr& parameter : Parameters) {
    if (parameter->Kind != ParameterType::Boolean) continue;
    if (!StartsWith(parameter->Name, Prefix)) continue;
    if (!ExcludePrefix.empty() && StartsWith(parameter->Name, ExcludePrefix)) continue;
    if (!IsChecked(parameter->Value)) {
      AllSelected = false;
      continue;
    }
    // A check box named after its code ("TypeGood") stands for the code after the prefix; one
    // with a caption of its own stands for that caption. A check box with no caption at all is
    // named after its code too. Quotes inside are not doubled: the codes and captions these
    // lists are made of hold none.
    const std::string& caption = parameter->Caption;
    const std::string item = caption.empty() || caption == parameter->Name
                                 ? parameter->Name.substr(Prefix.size())
                                 : caption;
    if (!names.empty()) names += ',';
    names += "'" + item + "'";
  }
  return names;
}

}  // namespace trellin
