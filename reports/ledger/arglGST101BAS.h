#pragma once
// "GST101Return" and "BASReturn": the goods and services tax return on the tax office's form, one
// form per branch or department group. The form follows the company's country, not the key: "AU"
// prints the business activity statement (arglBAS), every other country the GST 101 (arglGST101).

#include <memory>
#include <string>

#include "core/Designer.h"
#include "reports/ledger/TaxReturn.h"

namespace trellin {

class arglGST101BAS : public Designer {
 public:
  arglGST101BAS() : Designer("arglGST101BAS") {}

  void RefreshParameters(std::string& ReportName) override;
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void ActiveReport_ReportEnd() override;

  // The group query as built for the run ("" without groupings), and the form that prints.
  [[nodiscard]] const std::string& SQL() const { return groups_.SQL; }
  [[nodiscard]] const std::shared_ptr<TaxReturnForm>& Form() const { return form_; }

 private:
  TaxGroups groups_;
  std::size_t next_ = 0;
  std::string filter_;  // the current row's group filter
  std::shared_ptr<TaxReturnForm> form_;
};

[[nodiscard]] DesignerPtr CreatearglGST101BAS();

}  // namespace trellin
