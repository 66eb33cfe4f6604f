// The key of the source list, and the activity of each source, read once a run.

#include "reports/ledger/arglSourceList.h"

#include "core/ReportUtilities.h"
#include "core/TrellinReportGlobals.h"
#include "platform/runtime/Strings.h"
#include "reports/ReportShapes.h"
#include "reports/ledger/LedgerLists.h"

namespace trellin {

namespace {

constexpr ListOrder kSourceOrders[] = {
    {"Code", "glSource.glSourceId"},
    {"Description", "glSource.Description,glSource.glSourceId"},
};

// The dates bound the activity, not which sources are listed.
constexpr ListParameter kSourceParameters[] = {
    {.kind = ListParameterKind::Standard,
     .field = "glSource.glSourceId",
     .index = 32,
     .primary = true},
    {.kind = ListParameterKind::DatePair,
     .name = "Dated",
     .caption = "Activity dated",
     .primary = true,
     .from_default = kPeriodStart,
     .to_default = kPeriodEnd},
    {.kind = ListParameterKind::Option, .name = "ShowActivity", .caption = "Show Activity"},
};

constexpr ListColumn kSourceColumns[] = {
    {"Code", "glSourceId", kColumnText, "Code", "", 1000, false},
    {"Description", "Description", kColumnText, "Description", "", 3500, false},
    {"Lines", "Lines", kColumnNumber, "Lines", "", 1000, true, "#,##0"},
    {"Debits", "Debits", kColumnMoney, "Debits", "", 1700, true},
    {"Credits", "Credits", kColumnMoney, "Credits", "", 1700, true},
    {"First", "First", kColumnDate, "First", "", 1100, true},
    {"Last", "Last", kColumnDate, "Last", "", 1100, true},
};

constexpr const char* kSourceActivityColumns[] = {"Lines", "Debits", "Credits", "First", "Last"};

constexpr ListKey kSourceKeys[] = {{
    .key = "SourceList",
    .base_sql = "SELECT glSource.glSourceId,glSource.Description FROM glSource",
    .orders = kSourceOrders,
    .parameters = kSourceParameters,
    .columns = kSourceColumns,
}};

}  // namespace

arglSourceList::arglSourceList() : ListDesigner("arglSourceList", kSourceKeys) {}

DesignerPtr CreatearglSourceList() { return std::make_shared<arglSourceList>(); }

void arglSourceList::ActiveReport_ReportStart() {
  DataColumns& columns = TLReport()->DataColumns();
  if (columns.Count() == 0) RefreshDataColumns();
  const trellin::Parameters& p = TLReport()->Parameters();
  if (p.Value("ShowActivity", false).ToBool()) {
    for (const char* name : kSourceActivityColumns) columns.Item(name).Hidden = false;
  }
  std::string where;
  std::string ignored;
  AppendDateRangeCondition(where, "glTransaction.Date", p.Value("DatedFrom", Variant::Null()),
                           p.Value("DatedTo", Variant::Null()), "", ignored);
  std::string sql =
      "SELECT glSourceId,Count(*) AS Lines,Sum(IIf(Value>0,Value,0)) AS Debits,"
      "Sum(IIf(Value<0,-Value,0)) AS Credits,Min([Date]) AS First,Max([Date]) AS Last"
      " FROM glTransaction";
  if (!where.empty()) sql += " WHERE " + where;
  sql += " GROUP BY glSourceId";
  auto rs = TrellinReportGlobals::RequireBusinessLayer().Database()->Query(sql);
  activity_.clear();
  for (; !rs->Eof(); rs->MoveNext()) {
    activity_[UCase(rs->Value(0).Text())] = {rs->Value(1), rs->Value(2), rs->Value(3), rs->Value(4),
                                             rs->Value(5)};
  }
  ListDesigner::ActiveReport_ReportStart();
}

void arglSourceList::ActiveReport_DataInitialize() {
  for (const char* name : kSourceActivityColumns) Fields().Add(name);
}

// A source that posted nothing in the period shows no figures.
void arglSourceList::ActiveReport_FetchData(bool&) {
  const ReportField* code = Fields().Find("glSourceId");
  if (code == nullptr) return;
  auto found = activity_.find(UCase(code->Value().Text()));
  const Activity none{Variant::Null(), Variant::Null(), Variant::Null(), Variant::Null(),
                      Variant::Null()};
  const Activity& a = found == activity_.end() ? none : found->second;
  Fields().Item("Lines").SetValue(a.lines);
  Fields().Item("Debits").SetValue(a.debits);
  Fields().Item("Credits").SetValue(a.credits);
  Fields().Item("First").SetValue(a.first);
  Fields().Item("Last").SetValue(a.last);
}

}  // namespace trellin
