#pragma once
// The party set of the customer, supplier and all-party keys: the parties, their place and
// people, their classification and terms, the address kind, then the status, the address parts
// and the active flag. The party lists and the labels ask the same; only the address kind's
// first choice differs (none on the lists, "Postal" on the labels).

#include <array>
#include <string_view>

#include "core/ListDesigner.h"

namespace trellin {

constexpr std::array<ListParameter, 13> CustomerPartyParameters(std::string_view addresses = {}) {
  return {{
      {.kind = ListParameterKind::Standard,
       .field = "OtherParty.OtherPartyId",
       .index = 8,
       .primary = true},
      {.kind = ListParameterKind::Standard, .field = "OtherParty.LocationId", .index = 23},
      {.kind = ListParameterKind::Standard, .field = "OtherParty.EmployeeId", .index = 15},
      {.kind = ListParameterKind::Standard,
       .caption = "Categories",
       .field = "OtherParty.CustomerCategoryId",
       .index = 9},
      {.kind = ListParameterKind::Standard,
       .caption = "Types",
       .field = "OtherParty.CustomerTypeId",
       .index = 13},
      {.kind = ListParameterKind::Standard,
       .name = "CustomerPaymentTerms",
       .caption = "Payment Terms",
       .field = "OtherParty.CustomerPayTermId",
       .index = 12},
      {.kind = ListParameterKind::Standard,
       .name = "Addresses",
       .caption = "Addresses",
       .index = 46,
       .initial = addresses},
      {.kind = ListParameterKind::Standard, .field = "OtherParty.Status", .index = 25},
      {.kind = ListParameterKind::Standard, .index = 42},
      {.kind = ListParameterKind::Standard, .index = 43},
      {.kind = ListParameterKind::Standard, .index = 44},
      {.kind = ListParameterKind::Option,
       .name = "ExcludeInactive",
       .caption = "Exclude Inactive",
       .condition = "OtherParty.CustomerActive=True",
       .phrase = "Active customers only"},
      {.kind = ListParameterKind::UserDefined, .name = "OtherParty"},
  }};
}

constexpr std::array<ListParameter, 13> SupplierPartyParameters(std::string_view addresses = {}) {
  return {{
      {.kind = ListParameterKind::Standard,
       .field = "OtherParty.OtherPartyId",
       .index = 33,
       .primary = true},
      {.kind = ListParameterKind::Standard, .field = "OtherParty.LocationId", .index = 23},
      {.kind = ListParameterKind::Standard, .field = "OtherParty.EmployeeId", .index = 15},
      {.kind = ListParameterKind::Standard,
       .caption = "Categories",
       .field = "OtherParty.SupplierCategoryId",
       .index = 34},
      {.kind = ListParameterKind::Standard,
       .caption = "Types",
       .field = "OtherParty.SupplierTypeId",
       .index = 38},
      {.kind = ListParameterKind::Standard,
       .name = "SupplierPaymentTerms",
       .caption = "Payment Terms",
       .field = "OtherParty.SupplierPayTermId",
       .index = 37},
      {.kind = ListParameterKind::Standard,
       .name = "Addresses",
       .caption = "Addresses",
       .index = 47,
       .initial = addresses},
      {.kind = ListParameterKind::Standard, .field = "OtherParty.Status", .index = 25},
      {.kind = ListParameterKind::Standard, .index = 42},
      {.kind = ListParameterKind::Standard, .index = 43},
      {.kind = ListParameterKind::Standard, .index = 44},
      {.kind = ListParameterKind::Option,
       .name = "ExcludeInactive",
       .caption = "Exclude Inactive",
       .condition = "OtherParty.SupplierActive=True",
       .phrase = "Active suppliers only"},
      {.kind = ListParameterKind::UserDefined, .name = "OtherParty"},
  }};
}

constexpr std::array<ListParameter, 10> OtherPartyParameters(std::string_view addresses = {}) {
  return {{
      {.kind = ListParameterKind::Standard,
       .field = "OtherParty.OtherPartyId",
       .index = 24,
       .primary = true},
      {.kind = ListParameterKind::Standard, .field = "OtherParty.LocationId", .index = 23},
      {.kind = ListParameterKind::Standard, .field = "OtherParty.EmployeeId", .index = 15},
      {.kind = ListParameterKind::Standard,
       .name = "Addresses",
       .caption = "Addresses",
       .index = 45,
       .initial = addresses},
      {.kind = ListParameterKind::Standard, .field = "OtherParty.Status", .index = 25},
      {.kind = ListParameterKind::Standard, .index = 42},
      {.kind = ListParameterKind::Standard, .index = 43},
      {.kind = ListParameterKind::Standard, .index = 44},
      {.kind = ListParameterKind::Option,
       .name = "ExcludeInactive",
       .caption = "Exclude Inactive",
       .condition = "(OtherParty.CustomerActive=True AND OtherParty.IsCustomer=True OR "
                    "OtherParty.SupplierActive=True AND OtherParty.IsSupplier=True)",
       .phrase = "Active parties only"},
      {.kind = ListParameterKind::UserDefined, .name = "OtherParty"},
  }};
}

}  // namespace trellin
