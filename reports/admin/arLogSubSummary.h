#pragma once
// One owner's notes under its line in the log: a row a note with its date, subject, action and
// completion dates and the notes. In the full form the subject cell adds the contact (other
// parties) and the employee, and the notes cell the document. A sub-report: the parent sets the
// state below before each owner, and the rows are fetched by hand (unbound).

#include <functional>
#include <memory>
#include <string>

#include "core/host/ActiveReport.h"
#include "core/host/Recordset.h"

namespace trellin {

class arLogSubSummary : public ActiveReport {
 public:
  arLogSubSummary() : ActiveReport("arLogSubSummary") {}

  // Set by the parent once for the run: the key ("OtherPartyLog", "LogAR", ...), the notes'
  // order (" ORDER BY Date DESC"), and whether to print the full form.
  std::string ReportName;
  std::string SQLOrderBy;
  bool ShowFullDetails = false;
  // Set by the parent for each owner: its code, and the note conditions for this row (no word
  // AND in front; "" when none).
  std::string Code;
  std::string SQLWhere;
  // Called with every query the sub-report sends, when set.
  std::function<void(const std::string&)> Queries;

  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void ActiveReport_ReportEnd() override;

  // The present owner's query. Throws std::invalid_argument for a key that is not a log's.
  [[nodiscard]] std::string NotesSQL() const;

 private:
  std::shared_ptr<Recordset> rs_;
  bool party_ = false;
};

}  // namespace trellin
