#pragma once
// "ScriptList": the company's layout scripts, one line each, with ShowScriptText their text
// beneath in a fixed-pitch face. A column list on the list base.

#include "core/ListDesigner.h"

namespace trellin {

// The number of lines of a script's text: none for an empty text, and a last line without a
// line break still counts.
[[nodiscard]] long ScriptLineCount(const std::string& body);

class arScriptList : public ListDesigner {
 public:
  arScriptList();

  void RefreshDataColumns() override;
  // With ShowScriptText, a field for the text goes under the columns of each row.
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
};

[[nodiscard]] DesignerPtr CreatearScriptList();

}  // namespace trellin
