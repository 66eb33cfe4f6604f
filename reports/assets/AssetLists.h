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

// The asset lists' orders: the code, then the description, serial number or status.
inline constexpr ListOrder kAssetOrders[] = {
    {"Code", "Asset.AssetId"},
    {"Description", "Asset.Description,Asset.AssetId"},
    {"Serial Number", "Asset.SerialNumber,Asset.AssetId"},
    {"Status", "Asset.Status,Asset.AssetId"},
};

// The asset family's filter rows, each on its `Asset` field, one a parameter.
inline constexpr ListParameter kAssetCodesFilter = {
    .kind = ListParameterKind::Standard, .field = "Asset.AssetId", .index = 2, .primary = true};
inline constexpr ListParameter kAssetCategoriesFilter = {.kind = ListParameterKind::Standard,
                                                         .caption = "Categories",
                                                         .field = "Asset.AssetCategoryId",
                                                         .index = 1,
                                                         .primary = true};
inline constexpr ListParameter kAssetSitesFilter = {.kind = ListParameterKind::Standard,
                                                    .caption = "Sites",
                                                    .field = "Asset.AssetSiteId",
                                                    .index = 3,
                                                    .primary = true};
inline constexpr ListParameter kAssetTypesFilter = {.kind = ListParameterKind::Standard,
                                                    .caption = "Types",
                                                    .field = "Asset.AssetTypeId",
                                                    .index = 4,
                                                    .primary = true};
inline constexpr ListParameter kAssetBranchesFilter = {
    .kind = ListParameterKind::Standard, .field = "Asset.BranchId", .index = 6, .primary = true};
inline constexpr ListParameter kAssetEmployeesFilter = {
    .kind = ListParameterKind::Standard, .field = "Asset.EmployeeId", .index = 15, .primary = true};

// The family's whole set: the standard rows 2, 1, 3, 4, 6, 15, 26 and 33, the purchase, disposal
// and review dates, and IncludeComponents, under which a component's figures count under its
// parent, which alone takes a line. The status boxes follow them (AddAssetStatusBoxes).
inline constexpr ListParameter kAssetFilters[] = {
    kAssetCodesFilter,
    kAssetCategoriesFilter,
    kAssetSitesFilter,
    kAssetTypesFilter,
    kAssetBranchesFilter,
    kAssetEmployeesFilter,
    {.kind = ListParameterKind::Standard,
     .field = "Asset.ParentAssetId",
     .index = 26,
     .primary = true},
    {.kind = ListParameterKind::Standard,
     .field = "Asset.SupplierId",
     .index = 33,
     .primary = true},
    {.kind = ListParameterKind::DatePair,
     .name = "DatePurchased",
     .caption = "Date Purchased",
     .field = "Asset.PurchaseDate"},
    {.kind = ListParameterKind::DatePair,
     .name = "DateDisposed",
     .caption = "Date Disposed",
     .field = "Asset.DisposalDate"},
    {.kind = ListParameterKind::DatePair,
     .name = "DateReview",
     .caption = "Date Review",
     .field = "Asset.ReviewDate"},
    {.kind = ListParameterKind::Option,
     .name = "IncludeComponents",
     .caption = "Include Components",
     .condition = "Asset.ParentAssetId IS NULL",
     .phrase = "Components Combined"},
};

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

// Adds DateAsAt ("Date As At", the ledger's current date by default).
void AddAssetDateAsAt(trellin::Parameters& parameters);

// The run's DateAsAt without its time. Throws std::invalid_argument "Date As At: the report
// needs a date." when it is left blank.
[[nodiscard]] Date AssetDateAsAt(const trellin::Parameters& parameters);

// The asset's `Status` as its text, "" for a Null status.
[[nodiscard]] std::string AssetStatusText(const Variant& status);

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
