#pragma once
// "DepartmentList": the departments, one line each, by code or by description.

#include <string>

#include "core/Designer.h"

namespace trellin {

class arDepartmentList : public Designer {
 public:
  arDepartmentList() : Designer("arDepartmentList") {}

  void RefreshParameters(std::string& ReportName) override;

  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;
  void OnFormat(Section& section) override;
  void OnBeforePrint(Section& section) override;

  // The SELECT of the run; built by the SQL routine at report start.
  [[nodiscard]] const std::string& SQL() const { return sql_; }
  // Builds the SELECT from the parameters; throws what the range builder throws for a bad filter.
  void BuildSQL();

 private:
  void Detail_Format();

  std::string sql_;
};

[[nodiscard]] DesignerPtr CreatearDepartmentList();

}  // namespace trellin
