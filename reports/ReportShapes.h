#pragma once
// Small shapes every area's designers share: the kinds of their data columns, the pay-method
// words, and (from
// core/host/Section.h) the level of a numbered group section.

#include <string>
#include <string_view>

#include "core/host/Section.h"

namespace trellin {

// Kinds of data column, as the column layout reads DataType.
inline constexpr int kColumnText = 0;
inline constexpr int kColumnDate = 2;
inline constexpr int kColumnNumber = 3;
inline constexpr int kColumnMoney = 4;
inline constexpr int kColumnBoolean = 5;
inline constexpr int kColumnCode = 6;

// The words for a receipt's or payment's pay-method letter ("Q" "Cheque"); a letter the table
// does not know is cash. Letters are the application's own and match exactly as stored.
[[nodiscard]] inline std::string_view PayMethodName(std::string_view letter) {
  struct Row {
    std::string_view letter, name;
  };
  constexpr Row kRows[] = {
      {"A", "Amex"},   {"B", "Bank"},         {"C", "Direct Credit"}, {"D", "Diners"},
      {"E", "EFTPOS"}, {"F", "Direct Debit"}, {"Q", "Cheque"},        {"M", "Mastercard"},
      {"O", "Other"},  {"V", "Visa"},
  };
  for (const Row& row : kRows) {
    if (letter == row.letter) return row.name;
  }
  return "Cash";
}

}  // namespace trellin
