#pragma once
// The seven "Document" keys ("DocumentAR", "DocumentAP", "DocumentOP", "DocumentGL",
// "DocumentSC", "DocumentFA", "DocumentJO"): a user's own layout, named by DocumentId, run with
// the parameters, WHERE text and ORDER BY text of one ledger. The designer has no layout to speak
// of; the user's layout and its script do the printing, reaching the data through `rpx`.

#include <memory>
#include <string>

#include "core/Designer.h"
#include "core/TLRPXSupport.h"

namespace trellin {

class arDocumentTemplate : public Designer {
 public:
  arDocumentTemplate() : Designer("arDocumentTemplate") {}

  void RefreshParameters(std::string& ReportName) override;
  // The standard checks, then the user's layout: DocumentId must name one (a bare name in the
  // template folder, or a path), which is loaded in place of the designer's own.
  [[nodiscard]] bool ValidateParameters() override;

  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;

  // The field of the chosen order, for the key's table; the parameter text starts again with
  // "<entity> ordered by <choice>".
  [[nodiscard]] std::string GetSQLOrderBy();
  // The WHERE text of the parameters (no word WHERE), after GetSQLOrderBy's phrase.
  [[nodiscard]] std::string GetSQLWhere();
  // The description of the filters, made by GetSQLWhere when not made yet.
  [[nodiscard]] std::string GetParameterText();

  // What the script got as `rpx`; null before the report starts.
  [[nodiscard]] const std::shared_ptr<TLRPXSupport>& Support() const { return rpx_; }

 private:
  [[nodiscard]] const std::string& Key() const;

  std::string parameter_text_;
  std::shared_ptr<TLRPXSupport> rpx_;
};

[[nodiscard]] DesignerPtr CreatearDocumentTemplate();

// The file a DocumentId names: a bare name in the template folder, a path as it is.
[[nodiscard]] std::string DocumentLayoutPath(const std::string& document_id);

}  // namespace trellin
