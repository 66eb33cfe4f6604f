#pragma once
// The class of a transaction type, its stored `Type`, and the class's name.

#include <string>
#include <string_view>

namespace trellin {

// The name of a class ("Invoice" for 30, "Supplier invoice" for 20); "" for a class not known.
[[nodiscard]] std::string_view TransactionClassName(long type);

// The class as the lists print it: its number and name ("30 Invoice"), the number alone for a
// class not known.
[[nodiscard]] std::string TransactionClassText(long type);

}  // namespace trellin
