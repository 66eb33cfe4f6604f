#pragma once
// The code lists: payment terms, penalty interest types, supplier categories and types, item
// categories and types. Each is a column list on the list base, one designer class made under each
// list's own name: a code, its description, and how many parties or items use it; payment terms
// also say when a document falls due.

#include <string>

#include "core/ListDesigner.h"

namespace trellin {

// When a document on a payment term falls due, in words: "20th of the month following" for
// `days` of the month following, "7 days" after the document's date, "On delivery" for nought
// days after it.
[[nodiscard]] std::string PaymentTermDue(long days, bool following_month);

class arCodeList : public ListDesigner {
 public:
  // `designer_name` is one of the catalogue's names for the code lists.
  explicit arCodeList(std::string designer_name);

  // Neither counts nor charges are totalled: a list of codes has no total.
  void RefreshDataColumns() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
};

[[nodiscard]] DesignerPtr CreatearPaymentTermList();
[[nodiscard]] DesignerPtr CreatearPenaltyInterestList();
[[nodiscard]] DesignerPtr CreatearSupplierCategoryList();
[[nodiscard]] DesignerPtr CreatearSupplierTypeList();
[[nodiscard]] DesignerPtr CreatearItemCategoryList();
[[nodiscard]] DesignerPtr CreatearItemTypeList();

}  // namespace trellin
