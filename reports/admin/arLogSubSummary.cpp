#include "reports/admin/arLogSubSummary.h"

#include <stdexcept>

#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"
#include "reports/admin/LogKeys.h"

namespace trellin {

namespace {

constexpr const char* kLineBreak = "\r\n";

// The text of a column, "" when Null.
std::string TextOf(const Recordset& rs, const char* name) {
  const Variant& v = rs.Value(name);
  return v.IsNull() ? std::string() : Trim(v.Text());
}

void AddLine(std::string& cell, const std::string& line) {
  if (line.empty()) return;
  if (!cell.empty()) cell += kLineBreak;
  cell += line;
}

}  // namespace

std::string arLogSubSummary::NotesSQL() const {
  const LogKey* key = FindLogKey(ReportName);
  if (key == nullptr) {
    throw std::invalid_argument("The log has no report named \"" + ReportName + "\".");
  }
  std::string sql = ShowFullDetails ? key->notes_full : key->notes_short;
  sql += Replace(Code, "'", "''") + "'";
  if (!SQLWhere.empty()) sql += " AND " + SQLWhere;
  return sql + SQLOrderBy;
}

void arLogSubSummary::ActiveReport_ReportStart() {
  const LogKey* key = FindLogKey(ReportName);
  party_ = key != nullptr && IsPartyLog(*key);
  const std::string sql = NotesSQL();
  if (Queries) Queries(sql);
  rs_ = TrellinReportGlobals::RequireDatabase()->Query(sql);
  const std::string date_format = TrellinReportGlobals::RequireBusinessLayer().DateFormat();
  for (const char* name : {"txtDate", "txtActionDate", "txtCompleteDate"}) {
    if (Control* date = FindControl(name)) date->SetOutputFormat(date_format);
  }
}

void arLogSubSummary::ActiveReport_DataInitialize() {
  for (const char* name : {"Date", "ActionDate", "CompleteDate", "SubjectCell", "NotesCell"}) {
    Fields().Add(name);
  }
}

void arLogSubSummary::ActiveReport_FetchData(bool& eof) {
  if (!rs_ || rs_->Eof()) {
    eof = true;
    return;
  }
  trellin::Fields& f = Fields();
  for (const char* name : {"Date", "ActionDate", "CompleteDate"})
    f[name].SetValue(rs_->Value(name));
  std::string subject = TextOf(*rs_, "Subject");
  std::string notes = TextOf(*rs_, "Notes");
  if (ShowFullDetails) {
    if (party_) {
      AddLine(subject, Trim(TextOf(*rs_, "FirstName") + " " + TextOf(*rs_, "LastName")));
    }
    const std::string employee = TextOf(*rs_, "EmployeeId");
    const std::string name = TextOf(*rs_, "Name");
    AddLine(subject, employee.empty() || name.empty() ? employee + name : employee + ", " + name);
    AddLine(notes, TextOf(*rs_, "Document"));
  }
  f["SubjectCell"].SetValue(subject);
  f["NotesCell"].SetValue(notes);
  rs_->MoveNext();
  eof = false;
}

void arLogSubSummary::ActiveReport_ReportEnd() { rs_.reset(); }

}  // namespace trellin
