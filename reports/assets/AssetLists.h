#pragma once
// What the asset lists on the list base share: the status and kind pick-lists as constant
// unions (captions for groups and choices), the family's filter rows, and one read of every
// asset's cost, book value and tax value at a date.

#include <map>
#include <string>
#include <string_view>

#include "core/ListDesigner.h"
#include "core/host/Fields.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Date.h"

namespace trellin {

// `Asset.Status` with its text, one row a status, as the Asset object names them.
inline constexpr std::string_view kAssetStatusesSql =
    "SELECT 1 AS Status,'On Order' AS Description FROM Configuration UNION SELECT 2 AS Status,"
    "'In Use' AS Description FROM Configuration UNION SELECT 3 AS Status,'Available' AS "
    "Description FROM Configuration UNION SELECT 4 AS Status,'Disposed' AS Description FROM "
    "Configuration UNION SELECT 5 AS Status,'Scrapped' AS Description FROM Configuration ORDER BY "
    "Status";

// `AssetTransaction.Type` with its kind, one row a stored type, as the Asset object names them.
inline constexpr std::string_view kAssetKindsSql =
    "SELECT 10 AS Type,'Purchase' AS Description FROM Configuration UNION SELECT 11 AS Type,"
    "'Addition' AS Description FROM Configuration UNION SELECT 12 AS Type,'Revaluation' AS "
    "Description FROM Configuration UNION SELECT 14 AS Type,'Revaluation of cost' AS Description "
    "FROM Configuration UNION SELECT 20 AS Type,'Depreciation' AS Description FROM Configuration "
    "UNION SELECT 21 AS Type,'Depreciation' AS Description FROM Configuration UNION SELECT 23 AS "
    "Type,'Depreciation' AS Description FROM Configuration UNION SELECT 24 AS Type,'Depreciation' "
    "AS Description FROM Configuration UNION SELECT 30 AS Type,'Gain/Loss' AS Description FROM "
    "Configuration UNION SELECT 31 AS Type,'Gain/Loss' AS Description FROM Configuration UNION "
    "SELECT 40 AS Type,'Disposal' AS Description FROM Configuration UNION SELECT 41 AS Type,"
    "'Disposal' AS Description FROM Configuration UNION SELECT 42 AS Type,'Disposal' AS "
    "Description FROM Configuration UNION SELECT 43 AS Type,'Disposal' AS Description FROM "
    "Configuration UNION SELECT 44 AS Type,'Revaluation' AS Description FROM Configuration ORDER "
    "BY Type";

// The five status check boxes' names after the prefix "Status", in the order of their numbers.
inline constexpr std::string_view kAssetStatusNames[] = {"On Order", "In Use", "Available",
                                                         "Disposed", "Scrapped"};

// The ticked statuses as a condition on `Asset.Status` ("" when all are ticked, "(1=0)" when
// none is) and "Include " the texts " Assets" into `description`.
[[nodiscard]] std::string AssetStatusCondition(const trellin::Parameters& parameters,
                                               std::string& description);

// Adds the five "Status..." check boxes, ticked unless named in `unticked`.
void AddAssetStatusBoxes(trellin::Parameters& parameters,
                         std::initializer_list<std::string_view> unticked = {});

// Sets the unbound field "KindText" from the row's `Type`: its kind, "" for a Null type.
void FillAssetKind(Fields& fields);

// An asset's figures at a date: purchases and additions (types 10 and 11), and the sums of all
// its movements on each book.
struct AssetFigures {
  Currency cost;
  Currency book;
  Currency tax;
};

// Every asset's figures from its movements dated on or before `as_at`, by asset code
// upper-cased, from one grouped query. With `combine_components` a component's movements count
// under its parent instead. Needs the globals.
[[nodiscard]] std::map<std::string, AssetFigures, std::less<>> AssetFiguresAt(
    const Date& as_at, bool combine_components);

}  // namespace trellin
