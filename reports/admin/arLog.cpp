// The log: parameters, the owners' query with the note conditions joined in, the groups, and the
// events that hand each owner to its notes and, on the ledger keys, show its balances.

#include "reports/admin/arLog.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Strings.h"

namespace trellin {

namespace {

constexpr int kUserDefinedFields = 20;
// The layout has five group sections a side.
constexpr int kGroupLevels = 5;

// Grouping names the asset log offers under the short names its owners use; the shared
// definitions know them by their long names.
struct GroupingAlias {
  const char* name;
  const char* shared_name;
};
constexpr GroupingAlias kAssetGroupingAliases[] = {
    {"Category", "Asset Category"}, {"Site", "Asset Site"}, {"Type", "Asset Type"}};

// The note dates: parameter pair and the title of their line in the description.
struct NoteDateRange {
  const char* field;
  const char* from;
  const char* to;
  const char* title;
};
constexpr NoteDateRange kNoteDates[] = {
    {"Date", "DatedFrom", "DatedTo", "Dates"},
    {"ActionDate", "ActionedDateFrom", "ActionedDateTo", "Actioned dates"},
    {"CompleteDate", "CompletedDateFrom", "CompletedDateTo", "Completed dates"},
};

const char* UserDefinedTable(LogOwnerKind kind) {
  switch (kind) {
    case LogOwnerKind::Party:
      return "OtherParty";
    case LogOwnerKind::Item:
      return "Item";
    case LogOwnerKind::Job:
      return "Job";
    case LogOwnerKind::Asset:
      return "Asset";
  }
  return "OtherParty";
}

const LogKey& RequireLogKey(const std::string& key) {
  const LogKey* row = FindLogKey(key);
  if (row == nullptr) throw std::invalid_argument("The log has no report named \"" + key + "\".");
  return *row;
}

}  // namespace

DesignerPtr CreatearLog() { return std::make_shared<arLog>(); }

void arLog::RefreshParameters(std::string& ReportName) {
  key_ = &RequireLogKey(ReportName);
  TLReport()->SetHasParameters(true);
  trellin::Parameters& p = TLReport()->Parameters();
  p.AddList("NotesOrderBy", "Date", false, "", "Date", "Date,ActionDate,CompleteDate", false,
            "Notes Order By");
  p.AddBoolean("NotesOrderDescending", false, false, "", false, false, "Notes Descending");
  p.AddBoolean("NotesShowFull", false, false, "", false, false, "Show Full Notes");
  p.AddDate("DatedFrom", Variant(), false, "", Variant(), false, "Dated From");
  p.AddDate("DatedTo", Variant(), false, "", Variant(), false, "Dated To");
  p.AddDate("ActionedDateFrom", Variant(), false, "", Variant(), false, "Actioned From");
  p.AddDate("ActionedDateTo", Variant(), false, "", Variant(), false, "Actioned To");
  p.AddDate("CompletedDateFrom", Variant(), false, "", Variant(), false, "Completed From");
  p.AddDate("CompletedDateTo", Variant(), false, "", Variant(), false, "Completed To");
  p.AddBoolean("OmitCompletedNotes", false, false, "", false, false, "Omit Completed Notes");
  p.AddBoolean("OmitActionedNotes", false, false, "", false, false, "Omit Actioned Notes");
  p.AddList("OrderBy", "Code", true, "", "Code", key_->order_choices, false, "Order By");
  for (const LogStandardParameter& s : key_->standard) {
    if (s.index < 0) break;
    CreateStandardParameter(s.index, p, false, s.name, s.caption);
  }
  p.AddMultiList("Groupings", Variant(), false, "", Variant(), key_->groupings, false, false,
                 "Groupings");
  std::string subjects;
  if (*key_->party_flag != '\0') {
    subjects =
        "SELECT DISTINCT Subject FROM OtherParty INNER JOIN OtherPartyLog ON "
        "OtherParty.OtherPartyId=OtherPartyLog.OtherPartyId WHERE " +
        std::string(key_->party_flag) + "=" + Database::SQLBoolean(true) + " ORDER BY Subject";
  } else {
    subjects =
        "SELECT DISTINCT Subject FROM " + std::string(key_->note_table) + " ORDER BY Subject";
  }
  p.AddSQLList("Subjects", Variant(), false, "", Variant(), subjects, "Subject", false, "Subjects");
  if (*key_->party_flag != '\0') {
    p.AddBoolean("ShowOutstanding", false, false, "", false, false, "Show Outstanding");
  }
  Application& application = TrellinReportGlobals::RequireApplication();
  switch (key_->kind) {
    case LogOwnerKind::Party:
      application.AddUserDefinedParametersOtherParty(p, false);
      break;
    case LogOwnerKind::Item:
      application.AddUserDefinedParametersItem(p, false);
      break;
    case LogOwnerKind::Job:
      application.AddUserDefinedParametersJob(p, false);
      break;
    case LogOwnerKind::Asset:
      application.AddUserDefinedParametersAsset(p, false);
      break;
  }
}

void arLog::ActiveReport_Initialize() { PrepareDataControl(DataControl()); }

void arLog::ActiveReport_ReportStart() {
  BuildSQL();
  TLReport()->SetupGroupSections(false, -1, true);
  TLReport()->SetupStandardHeader(true);
  if (Control* heading = FindControl("txtHeading")) heading->SetText(heading_);
  const bool full = sub_->ShowFullDetails;
  if (Control* subject = FindControl("lblSubject")) {
    subject->SetCaption(!full               ? "Subject"
                        : IsPartyLog(*key_) ? "Subject/ Contact/ Employee"
                                            : "Subject/ Employee");
  }
  if (Control* notes = FindControl("lblNotes"))
    notes->SetCaption(full ? "Notes/ Document" : "Notes");
  if (Control* third = FindControl("txtThird")) {
    third->SetDataField(key_->third_field);
    third->SetVisible(*key_->third_field != '\0');
  }
  for (const char* name :
       {"lblTotal", "lblOverdue", "lblCurrent", "numTotal", "numOverdue", "numCurrent"}) {
    if (Control* c = FindControl(name)) c->SetVisible(show_outstanding_);
  }
  // Without the balances their line closes up: the notes follow the owner's line.
  if (!show_outstanding_) {
    if (Control* balances = FindControl("numTotal")) {
      if (Control* notes = FindControl("srptLogSummary")) {
        const float gap = notes->Top() - balances->Top();
        notes->SetTop(balances->Top());
        Section& detail = Sections()["Detail"];
        detail.SetHeight(detail.Height() - gap);
      }
    }
  }
  if (query_log_) query_log_(sql_);
  DataControl().SetSource(sql_);
}

void arLog::BuildSQL() {
  if (key_ == nullptr) key_ = &RequireLogKey(TLReport()->ReportName());
  trellin::Parameters& p = TLReport()->Parameters();
  const std::string note_table = key_->note_table;
  show_outstanding_ = *key_->party_flag != '\0' && p.Value("ShowOutstanding", false).ToBool();

  heading_.clear();
  const std::string order_by = p.Value("OrderBy", "Code").Text();
  AppendDescription(heading_, key_->description + order_by);

  // The note conditions, for the notes and, joined in, for the owners.
  std::string notes;
  for (const NoteDateRange& range : kNoteDates) {
    AppendDateRangeCondition(notes, range.field, p.Value(range.from, Variant()),
                             p.Value(range.to, Variant()), range.title, heading_);
  }
  if (p.Value("OmitCompletedNotes", false).ToBool()) {
    AppendSQLCondition(notes, "CompleteDate IS Null");
    AppendDescription(heading_, "Completed Notes omitted from Report.");
  }
  if (p.Value("OmitActionedNotes", false).ToBool()) {
    AppendSQLCondition(notes, "ActionDate IS Null");
    AppendDescription(heading_, "Actioned Notes omitted from Report.");
  }
  AppendListParameterCondition(notes, note_table + ".Subject", "Subjects", p, heading_, kRangeText);
  AppendListParameterCondition(notes, note_table + ".EmployeeId", "Employees", p, heading_,
                               kRangeText);
  if (IsPartyLog(*key_)) {
    AppendListParameterCondition(notes, note_table + ".ContactId", "Contacts", p, heading_,
                                 kRangeNumber);
  }
  notes_where_ = Trim(notes);

  std::string where;
  for (const LogOwnerFilter& filter : key_->owner_filters) {
    if (filter.parameter == nullptr) break;
    AppendListParameterCondition(where, filter.field, filter.parameter, p, heading_, kRangeText);
  }
  const std::string owner_table = UserDefinedTable(key_->kind);
  for (int n = 1; n <= kUserDefinedFields; ++n) {
    const std::string name = owner_table + ".UserDefined" + std::to_string(n);
    AppendListParameterCondition(where, name, name, p, heading_, kRangeText);
  }
  if (*key_->party_flag != '\0') {
    AppendSQLCondition(where, std::string(key_->party_flag) + "=" + Database::SQLBoolean(true));
  }
  AppendSQLCondition(where, notes_where_);

  std::string order = std::string(key_->owner_table) + "." + key_->owner_key;
  for (const LogSortChoice& choice : key_->sort_choices) {
    if (choice.choice != nullptr && order_by == choice.choice) order = choice.field;
  }
  std::string select = key_->select;
  AddGroupings(select, order);

  sql_ = "SELECT DISTINCT " + select + key_->from;
  if (!Trim(where).empty()) sql_ += " WHERE " + Trim(where);
  sql_ += " ORDER BY " + order;

  sub_ = std::make_shared<arLogSubSummary>();
  Field("srptLogSummary").SetObject(sub_);
  sub_->SQLOrderBy = " ORDER BY " + p.Value("NotesOrderBy", "Date").Text() +
                     (p.Value("NotesOrderDescending", false).ToBool() ? " DESC" : "");
  sub_->SQLWhere = notes_where_;
  sub_->ShowFullDetails = p.Value("NotesShowFull", false).ToBool();
  sub_->ReportName = key_->key;
  sub_->Queries = query_log_;
}

void arLog::AddGroupings(std::string& select, std::string& order) {
  const std::string note_table = key_->note_table;
  subject_group_ = false;
  auto own_grouping = [&](ChosenGrouping& g) {
    if (g.name == "Contact") {
      g.field = "OtherPartyLog.ContactId";
      g.list_sql = "SELECT ContactId,LastName + ', ' + FirstName AS Name FROM Contact";
      g.key_field = "ContactId";
    } else if (g.name == "Employee") {
      g.field = note_table + ".EmployeeId";
      g.list_sql = "SELECT EmployeeId,Name FROM Employee";
      g.key_field = "EmployeeId";
    } else if (g.name == "Subject") {
      g.field = note_table + ".Subject";
      g.list_sql = "SELECT Subject,'' AS Name FROM " + note_table;
      g.key_field = "Subject";
      subject_group_ = true;
    } else if (key_->kind == LogOwnerKind::Asset) {
      // The asset log's names for groupings the standard table knows by others.
      for (const GroupingAlias& alias : kAssetGroupingAliases) {
        if (g.name != alias.name) continue;
        std::string shared_name = alias.shared_name;
        GetGroupingDefinition(shared_name, g.field, g.list_sql, g.key_field, key_->owner_table);
        return true;
      }
      return false;
    } else {
      return false;
    }
    return true;
  };
  for (const ChosenGrouping& g :
       ChooseGroupings(TLReport()->Parameters().Value("Groupings", Variant()), key_->owner_table,
                       own_grouping, UnknownGrouping::kSkip, kGroupLevels)) {
    MoveInCommaList(select, g.field, false, false);
    MoveInCommaList(order, g.field, true, true);
    TLReport()->DefineGroup(g.level, g.name, g.key_field, g.list_sql, g.page_break);
  }
  TLReport()->EndDefineGroups();
}

std::string arLog::OutstandingSQL(const std::string& code, const Date& now) const {
  const bool receivables = std::string_view(key_->party_flag) == "IsCustomer";
  const std::string sum = receivables ? "-Sum" : "Sum";
  const std::string range = receivables ? "Between 30 And 39" : "Between 20 And 29";
  const std::string open =
      "(SELECT " + sum +
      "(ValueRemaining) FROM Transactions WHERE "
      "Transactions.OtherPartyId=OtherParty.OtherPartyId AND Transactions.Type " +
      range;
  return "SELECT " + open + ") AS Total," + open + " AND Transactions.Date<" +
         Database::SQLDate(now) + ") AS Overdue FROM OtherParty WHERE OtherPartyId='" +
         Replace(code, "'", "''") + "'";
}

void arLog::Detail_Format() {
  const auto& rs = DataControl().Recordset();
  if (!rs || rs->Eof() || !sub_) return;
  const std::string code = Fields()["Code"].Value().Text();
  std::string where = notes_where_;
  // Under a Subject group only the notes of this row's subject print.
  if (subject_group_) {
    const Variant& subject = Fields()["Subject"].Value();
    const std::string field = std::string(key_->note_table) + ".Subject";
    AppendSQLCondition(where, subject.IsNull() ? field + " Is Null"
                                               : field + "=" + Database::SQLString(subject.Text()));
  }
  if (show_outstanding_) {
    const std::string sql = OutstandingSQL(code, Now());
    if (query_log_) query_log_(sql);
    Database& db = *TrellinReportGlobals::RequireDatabase();
    std::shared_ptr<Recordset> balances;
    if (!db.OpenRecordset(sql, balances) || !balances) return;
    auto money = [&](const char* name) {
      const Variant& v = balances->Value(name);
      return v.IsNull() ? Currency() : v.ToCurrency();
    };
    const Currency total = balances->Eof() ? Currency() : money("Total");
    const Currency overdue = balances->Eof() ? Currency() : money("Overdue");
    // Current: what is open and not yet overdue.
    if (Control* c = FindControl("numTotal")) c->SetValue(Variant(total));
    if (Control* c = FindControl("numOverdue")) c->SetValue(Variant(overdue));
    if (Control* c = FindControl("numCurrent")) c->SetValue(Variant(total - overdue));
    db.CloseRecordset(balances);
  }
  sub_->Code = code;
  sub_->SQLWhere = Trim(where);
}

void arLog::OnFormat(Section& section) {
  if (section.Type() == SectionType::Detail) {
    Detail_Format();
  } else {
    FormatGroupSection(section);
  }
}

void arLog::OnBeforePrint(Section& section) {
  if (section.Type() == SectionType::ReportFooter) TLReport()->ReportFooterBeforePrint();
}

void arLog::ActiveReport_ReportEnd() { DataControl().SetRecordset(nullptr); }

}  // namespace trellin
