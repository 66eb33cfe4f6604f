#pragma once
// The filters on parties that the receivables and payables reports share: the side's party
// filter and the list filters beside it, a numeric status, and the user-defined fields.

#include <string>
#include <string_view>

#include "core/host/Parameters.h"
#include "reports/receivables/LedgerSide.h"

namespace trellin {

// Adds to `where` the side's party filter on OtherParty.OtherPartyId, and its line to
// `heading`. Throws what the range builder throws for a list it cannot read.
void AppendPartyFilter(std::string& where, const Parameters& parameters, std::string& heading,
                       const LedgerSide& side);

// Adds the filters of the parameters `locations` and `employees` on the party's own location and
// employee (OtherParty.LocationId, OtherParty.EmployeeId), each with its line in `heading`.
// Throws as AppendPartyFilter.
void AppendPartyPlaceFilters(std::string& where, const Parameters& parameters, std::string& heading,
                             const std::string& locations, const std::string& employees);

// How the category and type filters name their columns: bare, as the ledgers' queries do, or
// `OtherParty.`-qualified, as the statements' and remittances' queries do (their payment-term
// column stays bare).
enum class PartyColumns { kBare, kQualified };

// Adds the category, type and payment-term filters on the party's columns (the other side's
// parameters do not exist and add nothing), and `Status` when its value is one number; each adds
// its line to `heading`. Throws as AppendPartyFilter.
void AppendPartyListFilters(std::string& where, const Parameters& parameters, std::string& heading,
                            PartyColumns columns = PartyColumns::kBare);

// Adds the filters of the user-defined fields of `table` ("OtherParty", "Transactions"): for n
// from 1 to 20, the parameter `table`.UserDefined n on the column of that name.
void AppendUserDefinedFilters(std::string& where, const Parameters& parameters,
                              std::string& heading, std::string_view table);

}  // namespace trellin
