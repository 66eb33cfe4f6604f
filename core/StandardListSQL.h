#pragma once
// Constant pick-list queries shared by the standard parameters and the grouping definitions.
// Both are unions over the one-row table Configuration, so they need no table of their own.

namespace trellin {

// The credit status codes of an other party, without an ORDER BY.
inline constexpr char kStatusUnionSQL[] =
    "SELECT '1' AS Status, 'None' AS Description FROM Configuration"
    " UNION SELECT '2' AS Status, 'Good' AS Description FROM Configuration"
    " UNION SELECT '3' AS Status, 'Caution' AS Description FROM Configuration"
    " UNION SELECT '4' AS Status, 'Bad' AS Description FROM Configuration"
    " UNION SELECT '5' AS Status, 'Adverse' AS Description FROM Configuration";

// The payment types, ordered by description.
inline constexpr char kPaymentTypeUnionSQL[] =
    "SELECT '$' AS PayType, 'Cash' AS Description FROM Configuration"
    " UNION SELECT 'Q' AS PayType, 'Cheque' AS Description FROM Configuration"
    " UNION SELECT 'A' AS PayType, 'American Express' AS Description FROM Configuration"
    " UNION SELECT 'B' AS PayType, 'Bank' AS Description FROM Configuration"
    " UNION SELECT 'D' AS PayType, 'Diners Club' AS Description FROM Configuration"
    " UNION SELECT 'E' AS PayType, 'EFTPOS' AS Description FROM Configuration"
    " UNION SELECT 'M' AS PayType, 'Mastercard' AS Description FROM Configuration"
    " UNION SELECT 'V' AS PayType, 'Visa' AS Description FROM Configuration"
    " UNION SELECT 'O' AS PayType, 'Other' AS Description FROM Configuration"
    " ORDER BY Description";

}  // namespace trellin
