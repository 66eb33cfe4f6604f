#pragma once
// What the ledger and bank lists share: the period they run over unless told otherwise. A debit
// is a positive ledger value; a bank's money in is a positive value of its own line (sequence 0).

namespace trellin {

// From the first day of the ledger's current month to its current date.
inline constexpr const char* kPeriodStart = "GLCURRENT-1E+1D";
inline constexpr const char* kPeriodEnd = "GLCURRENT";

}  // namespace trellin
