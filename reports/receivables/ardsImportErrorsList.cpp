// The keys of the import, commit and purge-test lists, row by row, and the runs' counts.

#include "reports/receivables/ardsImportErrorsList.h"

#include <cstdint>
#include <string_view>

#include "core/ReportUtilities.h"
#include "core/host/Section.h"
#include "reports/ReportShapes.h"

namespace trellin {

namespace {

enum class Severity : std::int16_t { Error = 1, Warning = 2, Note = 3 };

struct SeverityName {
  Severity severity;
  std::string_view name;
};
constexpr SeverityName kSeverityNames[] = {
    {Severity::Error, "Error"}, {Severity::Warning, "Warning"}, {Severity::Note, "Note"}};

constexpr ListOrder kMessageOrders[] = {
    {"Line", "ImportMessage.LineNo,ImportMessage.ImportMessageId"},
    {"Record",
     "ImportMessage.RecordType,ImportMessage.RecordKey,ImportMessage.LineNo,"
     "ImportMessage.ImportMessageId"},
    {"Severity", "ImportMessage.Severity,ImportMessage.LineNo,ImportMessage.ImportMessageId"},
};

constexpr ListChoice kSeverityChoices[] = {
    {"All"},
    {"Errors", "ImportMessage.Severity=1", "Errors only"},
    {"Warnings", "ImportMessage.Severity=2", "Warnings only"},
};

constexpr ListParameter kMessageParameters[] = {
    {.kind = ListParameterKind::DatePair,
     .name = "Run",
     .caption = "Run",
     .field = "ImportMessage.RunDate",
     .primary = true},
    {.kind = ListParameterKind::Choice,
     .name = "Severity",
     .caption = "Severity",
     .choices = kSeverityChoices},
};

// A run is its date and time; its heading names the process beside it.
constexpr ListGrouping kRunGrouping[] = {
    {"Run", "ImportMessage.RunDate",
     "SELECT RunDate,Process FROM ImportMessage GROUP BY RunDate,Process", "RunDate"},
};

constexpr ListColumn kMessageColumns[] = {
    {"Line", "LineNo", kColumnNumber, "Line", "", 600, false, "0"},
    {"RecordType", "RecordType", kColumnText, "Record Type", "", 1300, false},
    {"Record", "RecordKey", kColumnText, "Record", "", 1300, false},
    {"Field", "FieldName", kColumnText, "Field", "", 1400, false},
    {"Value", "FieldValue", kColumnText, "Value", "", 1400, false},
    {"Severity", "SeverityName", kColumnText, "Severity", "", 900, false},
    {"Message", "Message", kColumnText, "Message", "", -1, false},
};

constexpr const char* kMessageSql =
    "SELECT ImportMessage.ImportMessageId,ImportMessage.RunDate,ImportMessage.Process,"
    "ImportMessage.LineNo,ImportMessage.RecordType,ImportMessage.RecordKey,"
    "ImportMessage.FieldName,ImportMessage.FieldValue,ImportMessage.Severity,"
    "ImportMessage.Message FROM ImportMessage";

// One row a process: the key, the process its rows come from.
constexpr ListKey MessageKey(std::string_view key, std::string_view where) {
  return {.key = key,
          .base_sql = kMessageSql,
          .base_where = where,
          .orders = kMessageOrders,
          .parameters = kMessageParameters,
          .own_groupings = kRunGrouping,
          .fixed_grouping = "Run",
          .columns = kMessageColumns};
}

constexpr ListKey kMessageKeys[] = {
    MessageKey("ErrorsList", "ImportMessage.Process='Import'"),
    MessageKey("CommitList", "ImportMessage.Process='Commit'"),
    MessageKey("PurgeTestList", "ImportMessage.Process='PurgeTest'"),
};

// No run date: Null, Empty, never set, or blank text.
bool Absent(const Variant& value) {
  if (value.IsNull() || value.IsEmpty() || value.IsMissing()) return true;
  return value.IsString() && value.Text().find_first_not_of(' ') == std::string::npos;
}

// Neither run date given: the latest run.
bool LatestRun(const trellin::Parameters& p) {
  return Absent(p.Value("RunFrom", Variant::Null())) && Absent(p.Value("RunTo", Variant::Null()));
}

std::string RunKey(const Variant& run_date) {
  return run_date.IsNull() || run_date.IsEmpty() ? std::string() : run_date.ToDate().ToIso();
}

std::string Counted(long n, std::string_view one, std::string_view many) {
  if (n == 0) return "no " + std::string(many);
  return std::to_string(n) + " " + std::string(n == 1 ? one : many);
}

}  // namespace

std::string ImportCountsText(long errors, long warnings) {
  return Counted(errors, "error", "errors") + ", " + Counted(warnings, "warning", "warnings");
}

ardsImportErrorsList::ardsImportErrorsList() : ListDesigner("ardsImportErrorsList", kMessageKeys) {}

DesignerPtr CreateardsImportErrorsList() { return std::make_shared<ardsImportErrorsList>(); }

void ardsImportErrorsList::RefreshDataColumns() {
  ListDesigner::RefreshDataColumns();
  TLReport()->DataColumns().Item("Line").Totalled = false;
}

std::string ardsImportErrorsList::ExtraCondition() {
  if (!LatestRun(TLReport()->Parameters())) return {};
  // The key's own condition names its process; the latest run is the latest of that process.
  return "ImportMessage.RunDate=(SELECT Max(RunDate) FROM ImportMessage WHERE " +
         std::string(Key().base_where) + ")";
}

void ardsImportErrorsList::ActiveReport_ReportStart() {
  ListDesigner::ActiveReport_ReportStart();
  if (LatestRun(TLReport()->Parameters())) {
    if (Control* parameters = FindControl("txtParameters")) {
      std::string description = Description();
      AppendDescription(description, "The latest run");
      parameters->SetText(description);
    }
  }
  for (Control& c : Sections()["Detail"].Controls()) {
    if (c.DataField() == "Message") c.SetCanGrow(true);
  }
  // The rows are few: counted in one pass over the list's own recordset, which then starts
  // again from its first row.
  counts_.clear();
  if (const auto& rs = DataControl().Recordset(); rs && !rs->Eof()) {
    const int run = rs->FieldIndex("RunDate");
    const int severity = rs->FieldIndex("Severity");
    for (; !rs->Eof(); rs->MoveNext()) {
      Counts& c = counts_[RunKey(rs->Value(run))];
      const Variant& value = rs->Value(severity);
      const long level = value.IsNull() ? 0 : value.ToLong();
      if (level == static_cast<long>(Severity::Error)) ++c.errors;
      if (level == static_cast<long>(Severity::Warning)) ++c.warnings;
    }
    rs->MoveFirst();
  }
}

void ardsImportErrorsList::ActiveReport_DataInitialize() { Fields().Add("SeverityName"); }

void ardsImportErrorsList::ActiveReport_FetchData(bool&) {
  const ReportField* severity = Fields().Find("Severity");
  if (severity == nullptr) return;
  std::string_view name;
  const long value = severity->Value().IsNull() ? 0 : severity->Value().ToLong();
  for (const SeverityName& row : kSeverityNames) {
    if (static_cast<long>(row.severity) == value) name = row.name;
  }
  Fields().Item("SeverityName").SetValue(Variant(std::string(name)));
}

void ardsImportErrorsList::OnFormat(Section& section) {
  ListDesigner::OnFormat(section);
  if (section.Type() != SectionType::GroupFooter) return;
  const int level = GroupLevelOf(section, "GroupFooter");
  Control* label = FindControl("gfLabel" + std::to_string(level));
  if (label == nullptr) return;
  // A footer sees the last row of its group.
  const ReportField* run = Fields().Find("RunDate");
  const auto found = counts_.find(run == nullptr ? std::string() : RunKey(run->Value()));
  const Counts counts = found == counts_.end() ? Counts{} : found->second;
  label->SetText(ImportCountsText(counts.errors, counts.warnings));
}

}  // namespace trellin
