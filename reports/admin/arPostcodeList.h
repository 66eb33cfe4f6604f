#pragma once
// "PostCodeList": the post codes by country and state, with a bookmark for every state.

#include <string>

#include "core/Designer.h"

namespace trellin {

class arPostcodeList : public Designer {
 public:
  arPostcodeList() : Designer("arPostcodeList") {}

  void RefreshParameters(std::string& ReportName) override;

  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;
  void OnFormat(Section& section) override;
  void OnBeforePrint(Section& section) override;

  // The SELECT of the run and the description of its filters; built by the SQL routine at
  // report start.
  [[nodiscard]] const std::string& SQL() const { return sql_; }
  [[nodiscard]] const std::string& Description() const { return description_; }
  // Builds the SELECT from the parameters; throws what the range builder throws for a bad filter.
  void BuildSQL();

 private:
  void ghState_Format();
  void Detail_Format();

  std::string sql_;
  std::string description_;
};

[[nodiscard]] DesignerPtr CreatearPostcodeList();

}  // namespace trellin
