#include "reports/ledger/arglBankBatchSub.h"

namespace trellin {

namespace {

constexpr const char* kSplitFields[] = {"AccountId",   "Description", "BranchId", "DeptId",
                                        "TaxCategory", "Net",         "Tax",      "Gross"};

}  // namespace

void arglBankBatchSub::ActiveReport_DataInitialize() {
  for (const char* name : kSplitFields) Fields().Add(name);
}

void arglBankBatchSub::ActiveReport_FetchData(bool& eof) {
  if (Lines == nullptr || next_ >= Lines->size()) {
    eof = true;
    return;
  }
  const Line& l = (*Lines)[next_++];
  const Variant values[] = {Variant(l.account), Variant(l.description),  Variant(l.branch),
                            Variant(l.dept),    Variant(l.tax_category), Variant(l.net),
                            Variant(l.tax),     Variant(l.net + l.tax)};
  static_assert(std::size(values) == std::size(kSplitFields));
  for (std::size_t i = 0; i < std::size(values); ++i) Fields()[kSplitFields[i]].SetValue(values[i]);
  eof = false;
}

}  // namespace trellin
