#include "reports/receivables/TransactionClass.h"

namespace trellin {

namespace {

struct ClassRow {
  long type;
  std::string_view name;
};

constexpr ClassRow kClasses[] = {
    {20, "Supplier invoice"}, {21, "Supplier credit"}, {22, "Prompt payment discount"},
    {23, "Journal"},          {25, "Payment"},         {30, "Invoice"},
    {31, "Credit"},           {32, "Discount"},        {33, "Journal"},
    {35, "Receipt"},          {42, "Job invoice"},     {80, "Purchase order"},
    {90, "Sales order"},
};

}  // namespace

std::string_view TransactionClassName(long type) {
  for (const ClassRow& row : kClasses) {
    if (row.type == type) return row.name;
  }
  return {};
}

std::string TransactionClassText(long type) {
  const std::string_view name = TransactionClassName(type);
  std::string text = std::to_string(type);
  if (!name.empty()) text += " " + std::string(name);
  return text;
}

}  // namespace trellin
