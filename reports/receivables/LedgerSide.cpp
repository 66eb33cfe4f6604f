// The sides and the keys of the family of designers that serve both.

#include "reports/receivables/LedgerSide.h"

#include <array>

namespace trellin {

namespace {

// clang-format off
constexpr LedgerSide kSides[] = {
    {LedgerSideKind::Receivables, true, "30 and 39", "-", "IsCustomer", "Customers", "ARCURRENT",
     {8, "Customers", ""}, {9, "CustomerCategories", ""}, {13, "CustomerTypes", ""},
     {12, "CustomerPaymentTerms", "Payment Terms"}},
    {LedgerSideKind::Payables, false, "20 and 29", "", "IsSupplier", "Suppliers", "APCURRENT",
     {33, "Suppliers", ""}, {34, "SupplierCategories", ""}, {38, "SupplierTypes", ""},
     {37, "SupplierPaymentTerms", "Payment Terms"}},
};
// clang-format on

// How a designer reads a key: against its receivables keys only, the rest being payables, or
// against both lists, a key in neither having no side.
enum class KeyRule { ReceivablesOnly, Both };

struct FamilyRow {
  std::string_view designer;
  std::array<std::string_view, 2> receivables;
  std::array<std::string_view, 2> payables;
  KeyRule rule;
};

// clang-format off
constexpr FamilyRow kFamily[] = {
    {"ardscrLedger", {"LedgerAR"}, {"LedgerAP"}, KeyRule::ReceivablesOnly},
    {"ardscrOverdueList", {"OverdueListAR"}, {"OverdueListAP"}, KeyRule::ReceivablesOnly},
    {"ardscrAgedOverdueReport", {"AgedOverdueAR"}, {"AgedOverdueAP"}, KeyRule::ReceivablesOnly},
    {"ardscrControlReport", {"ControlReportAR"}, {"ControlReportAP"}, KeyRule::Both},
    {"ardscrTransactionList", {"TransactionListAR", "OpenTransactionListAR"},
     {"TransactionListAP", "OpenTransactionListAP"}, KeyRule::Both},
    {"ardsInvoiceBatchTransactions", {"OpenTransactionListAR", "SavedTransactionListAR"},
     {"OpenTransactionListAP", "SavedTransactionListAP"}, KeyRule::Both},
    {"ardsInvoice", {"InvoiceAR"}, {"InvoiceAP"}, KeyRule::Both},
};
// clang-format on

bool Holds(const std::array<std::string_view, 2>& keys, std::string_view key) {
  for (std::string_view k : keys) {
    if (!k.empty() && k == key) return true;
  }
  return false;
}

}  // namespace

const LedgerSide& SideOf(LedgerSideKind kind) {
  return kind == LedgerSideKind::Receivables ? kSides[0] : kSides[1];
}

const LedgerSide& SideOfDebtor(bool debtor) {
  return SideOf(debtor ? LedgerSideKind::Receivables : LedgerSideKind::Payables);
}

std::optional<LedgerSideKind> SideOfKey(std::string_view designer, std::string_view key) {
  for (const FamilyRow& row : kFamily) {
    if (row.designer != designer) continue;
    // Keys are compared as the catalogue compares them: exactly, case included.
    if (Holds(row.receivables, key)) return LedgerSideKind::Receivables;
    if (row.rule == KeyRule::ReceivablesOnly || Holds(row.payables, key)) {
      return LedgerSideKind::Payables;
    }
    return std::nullopt;
  }
  return std::nullopt;
}

}  // namespace trellin
