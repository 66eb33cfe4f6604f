// The grid's query checked and printed, a column a field.

#include "reports/admin/arGridContent.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>
#include <vector>

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"
#include "reports/ReportShapes.h"

namespace trellin {

namespace {

constexpr const char* kSharedLayout = "ListDesigner";

// Run with no grid handing over its query, the list prints the party grid.
constexpr const char* kPartyGrid =
    "SELECT OtherPartyId AS Code,Name,IsCustomer AS Customer,IsSupplier AS Supplier,"
    "CustomerCreditLimit AS [Credit Limit] FROM OtherParty ORDER BY OtherPartyId";

// Words that make a query do more than read, wherever they stand: SELECT ... INTO writes a
// table; the others start statements of their own.
constexpr std::string_view kWritingWords[] = {
    "INSERT",    "UPDATE",     "DELETE", "INTO",    "CREATE",   "DROP",    "ALTER", "ATTACH",
    "DETACH",    "PRAGMA",     "VACUUM", "REPLACE", "GRANT",    "REVOKE",  "EXEC",  "EXECUTE",
    "TRANSFORM", "PARAMETERS", "BEGIN",  "COMMIT",  "ROLLBACK", "REINDEX",
};

// The words of `sql` upper-cased, outside quotes and brackets; a ";" is a word of its own.
std::vector<std::string> Words(std::string_view sql) {
  std::vector<std::string> words;
  std::string word;
  auto flush = [&] {
    if (!word.empty()) words.push_back(UCase(word));
    word.clear();
  };
  for (std::size_t i = 0; i < sql.size(); ++i) {
    const char c = sql[i];
    if (c == '\'' || c == '"' || c == '[') {
      flush();
      const char close = c == '[' ? ']' : c;
      const std::size_t end = sql.find(close, i + 1);
      i = end == std::string_view::npos ? sql.size() : end;
    } else if (std::isalnum(static_cast<unsigned char>(c)) || c == '_') {
      word += c;
    } else {
      flush();
      if (c == ';') words.emplace_back(";");
    }
  }
  flush();
  return words;
}

int ColumnKind(FieldType type) {
  switch (type) {
    case FieldType::Long:
    case FieldType::Double:
      return kColumnNumber;
    case FieldType::Currency:
      return kColumnMoney;
    case FieldType::Date:
      return kColumnDate;
    case FieldType::Boolean:
      return kColumnBoolean;
    case FieldType::Text:
      break;
  }
  return kColumnText;
}

}  // namespace

std::optional<std::string> GridSQLRefusal(std::string_view sql) {
  std::vector<std::string> words = Words(sql);
  if (!words.empty() && words.back() == ";") words.pop_back();
  if (words.empty()) return "The grid gave no query to print.";
  if (std::find(words.begin(), words.end(), ";") != words.end()) {
    return "The grid's query must be one statement: it holds more than one.";
  }
  if (words.front() != "SELECT") {
    return "The grid's query must be a SELECT: it starts with " + words.front() + ".";
  }
  for (const std::string& word : words) {
    if (std::find(std::begin(kWritingWords), std::end(kWritingWords), word) !=
        std::end(kWritingWords)) {
      return "The grid's query may only read: it holds " + word + ".";
    }
  }
  return std::nullopt;
}

DesignerPtr CreatearGridContent() { return std::make_shared<arGridContent>(); }

void arGridContent::RefreshParameters(std::string&) {
  TLReport()->SetHasParameters(true);
  TLReport()->DataColumns().SetEnabled(true);
  trellin::Parameters& p = TLReport()->Parameters();
  p.AddString("GridSQL", Variant(kPartyGrid), false, "", Variant(kPartyGrid), true, "Grid SQL");
  p.AddString("GridTitle", Variant("Parties"), true, "Title", Variant("Parties"), false, "Title");
}

void arGridContent::ActiveReport_Initialize() {
  if (Sections().Count() == 0) {
    if (auto provider = GetLayoutProvider()) provider->Load(kSharedLayout, *this);
  }
  PrepareDataControl(DataControl());
}

void arGridContent::ActiveReport_ReportStart() {
  const trellin::Parameters& p = TLReport()->Parameters();
  const std::string sql = p.Value("GridSQL", Variant()).Text();
  if (auto refusal = GridSQLRefusal(sql)) throw std::invalid_argument(*refusal);
  std::string title = p.Value("GridTitle", Variant()).Text();
  if (title.empty()) title = "Grid Content";
  SetCaption(title);
  SetDocumentName(title);
  if (Control* label = FindControl("lblReportTitle")) label->SetCaption(title);

  DataControl().SetSource(sql);
  const auto& rs = DataControl().Recordset();
  DataColumns& columns = TLReport()->DataColumns();
  if (rs && columns.Count() == 0) {
    for (int i = 0; i < rs->FieldCount(); ++i) {
      const FieldInfo& field = rs->Field(i);
      const int kind = ColumnKind(field.type);
      columns.Add(field.name, field.name, kind, field.name, "", -1, -1, -1, -1, "(auto)", 0, 0, "",
                  true, "", kind == kColumnMoney, false);
    }
  }
  TLReport()->EndDefineGroups();
  TLReport()->SetupGroupSections(false, -1, true);
  TLReport()->SetupStandardHeader(true);
  const Control& heading = Field("lblHeading");
  columns.CreateFields(heading.Top(), 0, 15, 0, true, 0, 10.0f, 8.0f);
  if (Control* parameters = FindControl("txtParameters")) parameters->SetText(title);
  bool totals = false;
  for (int i = 0; rs && i < rs->FieldCount(); ++i) {
    totals = totals || ColumnKind(rs->Field(i).type) == kColumnMoney;
  }
  if (Control* label = FindControl("rfLabel"); label && !totals) label->SetVisible(false);
}

void arGridContent::OnFormat(Section& section) {
  if (section.Type() != SectionType::Detail) return;
  const auto& rs = DataControl().Recordset();
  if (!rs || rs->Eof()) return;
  TLReport()->DataColumns().FillRow(Fields(), "");
  section.SetBackStyle(1 - section.BackStyle());
}

void arGridContent::OnBeforePrint(Section& section) {
  if (section.Type() == SectionType::ReportFooter) TLReport()->ReportFooterBeforePrint();
}

}  // namespace trellin
