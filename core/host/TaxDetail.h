#pragma once
// The tax detail object: one period's taxed ledger lines as a tax return sees them, each with its
// rate and whether it is an exception. The reports ask the business layer for it
// (BusinessObjects::LoadTaxDetail); its rules are in platform/business/README.md.

#include <cstdint>
#include <optional>
#include <string>

#include "platform/runtime/Currency.h"
#include "platform/runtime/Date.h"

namespace trellin {

// One period's taxed lines, filed (by `TaxPeriodId`) or open (the lines on no period to `DateTo`),
// of one branch or department group.
struct TaxDetailRequest {
  std::optional<std::int64_t> TaxPeriodId;
  Date DateTo;              // the open period's last day; unused for a filed one
  std::string BasisOutput;  // "Invoice", "Payments" or "Cash", "Exempt"
  std::string BasisInput;
  std::string GroupFilter;  // a condition on glTransaction's columns, "" for every line
  bool ExceptionsOnly = false;
  bool ReconciliationFormat = false;
};

// One line of a tax return: sales ("O") and expenses ("I"), each figure as the return sees it (a
// sale's value and tax positive).
struct TaxDetailLine {
  std::string TaxIO;
  std::string TaxCat;
  std::int64_t glTransactionId = 0;
  std::string Account;  // the account's code and description
  std::string glSourceId;
  Date date;  // the bank's date for a line counted on the cash basis
  std::string Reference;
  Currency ValueIncl;  // the value with its tax
  Currency Tax;
  std::string Comment;
  double Rate = 0;  // the tax as a percentage of the value without it; 0 when that is 0
  bool Exception = false;
};

}  // namespace trellin
