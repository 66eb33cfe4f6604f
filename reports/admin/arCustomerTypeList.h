#pragma once
// "CustomerTypeList": the customer types, each with the special prices its customers get.

#include <memory>
#include <string>

#include "core/Designer.h"

namespace trellin {

class arDetailSpecialPricingSub;

class arCustomerTypeList : public Designer {
 public:
  arCustomerTypeList() : Designer("arCustomerTypeList") {}

  void RefreshParameters(std::string& ReportName) override;

  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;
  void OnFormat(Section& section) override;

  // The SELECT the run uses; built by the SQL routine at report start.
  [[nodiscard]] const std::string& SQL() const { return sql_; }
  // Builds the SELECT from the parameters, as report start does.
  void BuildSQL();

 private:
  void Detail_Format();

  std::string sql_;
  std::shared_ptr<arDetailSpecialPricingSub> special_pricing_;
};

[[nodiscard]] DesignerPtr CreatearCustomerTypeList();

}  // namespace trellin
