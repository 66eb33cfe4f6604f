#include "reports/receivables/PartyFilters.h"

#include "core/ReportUtilities.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

struct ListFilter {
  const char* parameter;
  const char* field;
};

constexpr ListFilter kListFilters[] = {
    {"CustomerCategories", "CustomerCategoryId"},  {"SupplierCategories", "SupplierCategoryId"},
    {"CustomerTypes", "CustomerTypeId"},           {"SupplierTypes", "SupplierTypeId"},
    {"CustomerPaymentTerms", "CustomerPayTermId"}, {"SupplierPaymentTerms", "SupplierPayTermId"},
};

constexpr int kUserDefinedFields = 20;

}  // namespace

void AppendPartyFilter(std::string& where, const Parameters& parameters, std::string& heading,
                       const LedgerSide& side) {
  AppendListParameterCondition(where, "OtherParty.OtherPartyId", std::string(side.parties.name),
                               parameters, heading, kRangeText);
}

void AppendPartyPlaceFilters(std::string& where, const Parameters& parameters, std::string& heading,
                             const std::string& locations, const std::string& employees) {
  AppendListParameterCondition(where, "OtherParty.LocationId", locations, parameters, heading,
                               kRangeText);
  AppendListParameterCondition(where, "OtherParty.EmployeeId", employees, parameters, heading,
                               kRangeText);
}

void AppendPartyListFilters(std::string& where, const Parameters& parameters, std::string& heading,
                            PartyColumns columns) {
  for (const ListFilter& filter : kListFilters) {
    const std::string_view field = filter.field;
    const bool qualified = columns == PartyColumns::kQualified && !field.ends_with("PayTermId");
    AppendListParameterCondition(where, (qualified ? "OtherParty." : "") + std::string(field),
                                 filter.parameter, parameters, heading, kRangeText);
  }
  // A status given as anything but one number filters nothing.
  if (IsNumeric(parameters.Value("Status", Variant()).Text())) {
    AppendListParameterCondition(where, "Status", "Status", parameters, heading, kRangeNumber);
  }
}

void AppendUserDefinedFilters(std::string& where, const Parameters& parameters,
                              std::string& heading, std::string_view table) {
  for (int n = 1; n <= kUserDefinedFields; ++n) {
    const std::string name = std::string(table) + ".UserDefined" + std::to_string(n);
    AppendListParameterCondition(where, name, name, parameters, heading, kRangeText);
  }
}

}  // namespace trellin
