// The key of the script list, and the script's text under its row.

#include "reports/admin/arScriptList.h"

#include <algorithm>

#include "reports/ReportShapes.h"

namespace trellin {

namespace {

constexpr ListOrder kScriptOrders[] = {
    {"Code", "Script.ScriptId"},
    {"Description", "Script.Description,Script.ScriptId"},
    {"Modified", "Script.Modified DESC,Script.ScriptId"},
};

constexpr ListParameter kScriptParameters[] = {
    {.kind = ListParameterKind::PickList,
     .name = "Scripts",
     .caption = "Scripts",
     .field = "Script.ScriptId",
     .primary = true,
     .list_sql = "SELECT ScriptId,Description FROM Script ORDER BY ScriptId",
     .key_field = "ScriptId"},
    {.kind = ListParameterKind::Option,
     .name = "ActiveOnly",
     .caption = "Active Only",
     .condition = "Script.Active=True",
     .phrase = "Active scripts only"},
    {.kind = ListParameterKind::Option,
     .name = "ShowScriptText",
     .caption = "Show Script Text",
     .phrase = "With the scripts' text"},
};

constexpr ListColumn kScriptColumns[] = {
    {"Code", "ScriptId", kColumnCode, "Code", "", 1200, false},
    {"Description", "Description", kColumnText, "Description", "", 4000, false},
    {"RunsOn", "RunsOn", kColumnText, "Runs On", "", 2000, false},
    {"Language", "Language", kColumnText, "Language", "", 1100, false},
    {"Active", "Active", kColumnBoolean, "Active", "", 700, false},
    {"Modified", "Modified", kColumnDate, "Modified", "", 1200, false},
    {"By", "ModifiedBy", kColumnText, "By", "", 1200, false},
    {"Lines", "Lines", kColumnNumber, "Lines", "", 700, false, "#,##0"},
};

constexpr ListKey kScriptKeys[] = {{
    .key = "ScriptList",
    .base_sql = "SELECT Script.ScriptId,Script.Description,Script.RunsOn,Script.Language,"
                "Script.Active,Script.Modified,Script.ModifiedBy,Script.Body FROM Script",
    .orders = kScriptOrders,
    .parameters = kScriptParameters,
    .columns = kScriptColumns,
}};

constexpr float kTextIndent = 400;

}  // namespace

long ScriptLineCount(const std::string& body) {
  if (body.empty()) return 0;
  const long breaks = static_cast<long>(std::count(body.begin(), body.end(), '\n'));
  return body.back() == '\n' ? breaks : breaks + 1;
}

arScriptList::arScriptList() : ListDesigner("arScriptList", kScriptKeys, "Script List") {}

DesignerPtr CreatearScriptList() { return std::make_shared<arScriptList>(); }

void arScriptList::ActiveReport_ReportStart() {
  ListDesigner::ActiveReport_ReportStart();
  if (!TLReport()->Parameters().Value("ShowScriptText", false).ToBool()) return;
  Section& detail = Sections()["Detail"];
  Control& text = detail.Controls().Add(ControlClass::Field, "txtBody");
  text.SetDataField("Body");
  text.SetLeft(kTextIndent);
  text.SetTop(detail.Height() + 40);
  text.SetWidth(PrintWidth() - kTextIndent);
  text.SetHeight(220);
  text.SetCanGrow(true);
  text.SetCanShrink(true);
  text.Font().Name = "Courier New";
  text.Font().Size = 8;
  detail.SetHeight(text.Top() + text.Height() + 80);
}

// The lines of the scripts make no total.
void arScriptList::RefreshDataColumns() {
  ListDesigner::RefreshDataColumns();
  TLReport()->DataColumns().Item("Lines").Totalled = false;
}

void arScriptList::ActiveReport_DataInitialize() { Fields().Add("Lines"); }

void arScriptList::ActiveReport_FetchData(bool&) {
  const ReportField* body = Fields().Find("Body");
  if (body == nullptr) return;
  Fields().Item("Lines").SetValue(Variant(std::int64_t{ScriptLineCount(body->Value().Text())}));
}

}  // namespace trellin
