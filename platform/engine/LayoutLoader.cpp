#include "platform/engine/LayoutLoader.h"

#include <yaml-cpp/yaml.h>

#include <array>
#include <functional>
#include <optional>
#include <set>
#include <unordered_map>

#include "platform/runtime/Strings.h"

namespace trellin::engine {
namespace {

class Reader {
 public:
  explicit Reader(std::string_view file) : file_(file) {}

  [[noreturn]] void Fail(const YAML::Node& at, const std::string& what) const {
    int line = at.IsDefined() ? at.Mark().line + 1 : 0;
    throw LayoutError(file_ + ":" + std::to_string(line) + ": " + what);
  }

  void RequireMap(const YAML::Node& node, const std::string& what) const {
    if (!node.IsMap()) Fail(node, what + " must be a mapping of keys to values");
  }

  std::string Text(const YAML::Node& n, const std::string& key) const {
    if (!n.IsScalar()) Fail(n, "'" + key + "' must be a single value");
    return n.Scalar();
  }

  float Number(const YAML::Node& n, const std::string& key) const {
    if (n.IsScalar()) {
      try {
        std::size_t used = 0;
        float v = std::stof(n.Scalar(), &used);
        if (used == n.Scalar().size()) return v;
      } catch (const std::exception&) {
      }
    }
    Fail(n, "'" + key + "' must be a number, not '" +
                (n.IsScalar() ? n.Scalar() : std::string("a list")) + "'");
  }

  int Integer(const YAML::Node& n, const std::string& key) const {
    float v = Number(n, key);
    if (v != static_cast<float>(static_cast<int>(v)))
      Fail(n, "'" + key + "' must be a whole number");
    return static_cast<int>(v);
  }

  bool Bool(const YAML::Node& n, const std::string& key) const {
    std::string s = n.IsScalar() ? LCase(n.Scalar()) : "";
    if (s == "true" || s == "yes") return true;
    if (s == "false" || s == "no") return false;
    Fail(n, "'" + key + "' must be true or false");
  }

  std::uint32_t Colour(const YAML::Node& n, const std::string& key) const {
    std::string s = Text(n, key);
    if (s.size() == 7 && s[0] == '#') {
      try {
        std::size_t used = 0;
        unsigned long v = std::stoul(s.substr(1), &used, 16);
        if (used == 6) return static_cast<std::uint32_t>(v);
      } catch (const std::exception&) {
      }
    }
    Fail(n, "'" + key + "' must be a colour written #RRGGBB");
  }

  template <typename E, std::size_t N>
  E Choice(const YAML::Node& n, const std::string& key,
           const std::array<std::pair<std::string_view, E>, N>& table) const {
    std::string s = Text(n, key);
    std::string allowed;
    for (const auto& [name, value] : table) {
      if (EqualsIgnoreCase(name, s)) return value;
      allowed += (allowed.empty() ? "" : ", ") + std::string(name);
    }
    Fail(n, "'" + key + "' must be one of " + allowed + ", not '" + s + "'");
  }

  // Applies each key of the mapping through the handler of that name; an unknown key is an error.
  using Handler = std::function<void(const YAML::Node&)>;
  void Apply(const YAML::Node& map, const std::string& what,
             const std::unordered_map<std::string, Handler>& handlers) const {
    RequireMap(map, what);
    for (const auto& kv : map) {
      std::string key = kv.first.Scalar();
      auto it = handlers.find(key);
      if (it == handlers.end()) Fail(kv.first, "unknown key '" + key + "' in " + what);
      it->second(kv.second);
    }
  }

 private:
  std::string file_;
};

constexpr std::array<std::pair<std::string_view, SectionType>, 7> kSectionTypes = {{
    {"ReportHeader", SectionType::ReportHeader},
    {"PageHeader", SectionType::PageHeader},
    {"GroupHeader", SectionType::GroupHeader},
    {"Detail", SectionType::Detail},
    {"GroupFooter", SectionType::GroupFooter},
    {"PageFooter", SectionType::PageFooter},
    {"ReportFooter", SectionType::ReportFooter},
}};

constexpr std::array<std::pair<std::string_view, NewPageMode>, 4> kNewPage = {{
    {"None", NewPageMode::None},
    {"Before", NewPageMode::Before},
    {"After", NewPageMode::After},
    {"BeforeAfter", NewPageMode::BeforeAfter},
}};

constexpr std::array<std::pair<std::string_view, ColumnDirection>, 2> kDirection = {{
    {"AcrossDown", ColumnDirection::AcrossDown},
    {"DownAcross", ColumnDirection::DownAcross},
}};

constexpr std::array<std::pair<std::string_view, ChartType>, 2> kChartType = {{
    {"Line", ChartType::Line},
    {"Pie", ChartType::Pie},
}};

constexpr std::array<std::pair<std::string_view, TextAlignment>, 3> kAlignment = {{
    {"Left", TextAlignment::Left},
    {"Right", TextAlignment::Right},
    {"Center", TextAlignment::Center},
}};

constexpr std::array<std::pair<std::string_view, SummaryType>, 3> kSummaryType = {{
    {"None", SummaryType::None},
    {"GrandTotal", SummaryType::GrandTotal},
    {"SubTotal", SummaryType::SubTotal},
}};

constexpr std::array<std::pair<std::string_view, SummaryFunc>, 2> kSummaryFunc = {{
    {"Sum", SummaryFunc::Sum},
    {"Count", SummaryFunc::Count},
}};

constexpr std::array<std::pair<std::string_view, PageOrientation>, 2> kOrientation = {{
    {"Portrait", PageOrientation::Portrait},
    {"Landscape", PageOrientation::Landscape},
}};

struct Paper {
  float width, height;
};
constexpr std::array<std::pair<std::string_view, Paper>, 3> kPapers = {{
    {"A4", {11906, 16838}},
    {"Letter", {12240, 15840}},
    {"Legal", {12240, 20160}},
}};

// The type a section's name implies: the standard names, and GroupHeaderN / GroupFooterN.
std::optional<SectionType> TypeFromName(const std::string& name) {
  for (const auto& [n, t] : kSectionTypes) {
    if (t != SectionType::GroupHeader && t != SectionType::GroupFooter && n == name) return t;
  }
  auto numbered = [&](std::string_view prefix) {
    return name.size() > prefix.size() && name.compare(0, prefix.size(), prefix) == 0 &&
           name.find_first_not_of("0123456789", prefix.size()) == std::string::npos;
  };
  if (numbered("GroupHeader")) return SectionType::GroupHeader;
  if (numbered("GroupFooter")) return SectionType::GroupFooter;
  return std::nullopt;
}

// Layout order: each section's rank must not fall below the one before it.
int Rank(SectionType t) { return static_cast<int>(t); }

void ReadControl(const Reader& r, const YAML::Node& node, Section& section,
                 std::set<std::string>& names) {
  r.RequireMap(node, "a control");
  YAML::Node cls_node = node["Class"];
  YAML::Node name_node = node["Name"];
  if (!cls_node) r.Fail(node, "a control of section '" + section.Name() + "' has no 'Class'");
  if (!name_node) r.Fail(node, "a control of section '" + section.Name() + "' has no 'Name'");
  std::string cls_text = r.Text(cls_node, "Class");
  auto cls = ControlClassFromName(cls_text);
  if (!cls) {
    r.Fail(cls_node, "unknown control class '" + cls_text +
                         "' (Label, Field, CheckBox, Subreport, PageBreak, Line, Shape, Chart)");
  }
  std::string name = r.Text(name_node, "Name");
  if (name.empty()) r.Fail(name_node, "a control's 'Name' must not be empty");
  if (!names.insert(UCase(name)).second) r.Fail(name_node, "a second control named '" + name + "'");
  Control& c = section.Controls().Add(*cls, name);
  const std::string what = "control '" + name + "'";

  r.Apply(
      node, what,
      {
          {"Class", [](const YAML::Node&) {}},
          {"Name", [](const YAML::Node&) {}},
          {"Left", [&](const YAML::Node& v) { c.SetLeft(r.Number(v, "Left")); }},
          {"Top", [&](const YAML::Node& v) { c.SetTop(r.Number(v, "Top")); }},
          {"Width", [&](const YAML::Node& v) { c.SetWidth(r.Number(v, "Width")); }},
          {"Height", [&](const YAML::Node& v) { c.SetHeight(r.Number(v, "Height")); }},
          {"Rect",
           [&](const YAML::Node& v) {
             if (!v.IsSequence() || v.size() != 4)
               r.Fail(v, "'Rect' must be [Left, Top, Width, Height]");
             c.SetLeft(r.Number(v[0], "Rect"));
             c.SetTop(r.Number(v[1], "Rect"));
             c.SetWidth(r.Number(v[2], "Rect"));
             c.SetHeight(r.Number(v[3], "Rect"));
           }},
          {"Visible", [&](const YAML::Node& v) { c.SetVisible(r.Bool(v, "Visible")); }},
          {"Tag", [&](const YAML::Node& v) { c.SetTag(r.Text(v, "Tag")); }},
          {"Caption", [&](const YAML::Node& v) { c.SetCaption(r.Text(v, "Caption")); }},
          {"Text", [&](const YAML::Node& v) { c.SetText(r.Text(v, "Text")); }},
          {"DataField", [&](const YAML::Node& v) { c.SetDataField(r.Text(v, "DataField")); }},
          {"OutputFormat",
           [&](const YAML::Node& v) { c.SetOutputFormat(r.Text(v, "OutputFormat")); }},
          {"Alignment",
           [&](const YAML::Node& v) { c.SetAlignment(r.Choice(v, "Alignment", kAlignment)); }},
          {"CanGrow", [&](const YAML::Node& v) { c.SetCanGrow(r.Bool(v, "CanGrow")); }},
          {"CanShrink", [&](const YAML::Node& v) { c.SetCanShrink(r.Bool(v, "CanShrink")); }},
          {"Ellipsis", [&](const YAML::Node& v) { c.SetEllipsis(r.Bool(v, "Ellipsis")); }},
          {"ForeColor", [&](const YAML::Node& v) { c.SetForeColor(r.Colour(v, "ForeColor")); }},
          {"SummaryType",
           [&](const YAML::Node& v) {
             c.SetSummaryType(r.Choice(v, "SummaryType", kSummaryType));
           }},
          {"SummaryFunc",
           [&](const YAML::Node& v) {
             c.SetSummaryFunc(r.Choice(v, "SummaryFunc", kSummaryFunc));
           }},
          {"SummaryGroup",
           [&](const YAML::Node& v) { c.SetSummaryGroup(r.Text(v, "SummaryGroup")); }},
          {"ChartType",
           [&](const YAML::Node& v) {
             c.Chart().ChartType = r.Choice(v, "ChartType", kChartType);
           }},
          {"Title", [&](const YAML::Node& v) { c.Chart().Title = r.Text(v, "Title"); }},
          {"Font",
           [&](const YAML::Node& v) {
             r.Apply(
                 v, "the font of " + what,
                 {
                     {"Name", [&](const YAML::Node& f) { c.Font().Name = r.Text(f, "Name"); }},
                     {"Size", [&](const YAML::Node& f) { c.Font().Size = r.Number(f, "Size"); }},
                     {"Bold", [&](const YAML::Node& f) { c.Font().Bold = r.Bool(f, "Bold"); }},
                     {"Italic",
                      [&](const YAML::Node& f) { c.Font().Italic = r.Bool(f, "Italic"); }},
                     {"Underline",
                      [&](const YAML::Node& f) { c.Font().Underline = r.Bool(f, "Underline"); }},
                 });
           }},
          {"Border",
           [&](const YAML::Node& v) {
             auto style = [&](const YAML::Node& s, const char* key) {
               int n = r.Integer(s, key);
               if (n != 0 && n != 1 && n != 6)
                 r.Fail(s, std::string("'") + key + "' must be 0, 1 or 6");
               return n;
             };
             r.Apply(
                 v, "the border of " + what,
                 {
                     {"TopStyle",
                      [&](const YAML::Node& s) { c.Border().TopStyle = style(s, "TopStyle"); }},
                     {"BottomStyle",
                      [&](const YAML::Node& s) {
                        c.Border().BottomStyle = style(s, "BottomStyle");
                      }},
                     {"LeftStyle",
                      [&](const YAML::Node& s) { c.Border().LeftStyle = style(s, "LeftStyle"); }},
                     {"RightStyle",
                      [&](const YAML::Node& s) { c.Border().RightStyle = style(s, "RightStyle"); }},
                 });
           }},
      });
  if (c.Class() == ControlClass::Field && c.Text().empty() && !c.Caption().empty())
    c.SetText(c.Caption());
}

void ReadSection(const Reader& r, const YAML::Node& node, ActiveReport& report,
                 std::set<std::string>& names, int& last_rank) {
  r.RequireMap(node, "a section");
  YAML::Node name_node = node["Name"];
  if (!name_node) r.Fail(node, "a section has no 'Name'");
  std::string name = r.Text(name_node, "Name");
  std::optional<SectionType> type;
  if (YAML::Node t = node["Type"]) {
    type = r.Choice(t, "Type", kSectionTypes);
  } else {
    type = TypeFromName(name);
    if (!type)
      r.Fail(name_node, "section '" + name + "' needs a 'Type': its name is not a standard one");
  }
  if (report.Sections().Find(name)) r.Fail(name_node, "a second section named '" + name + "'");
  bool single = *type != SectionType::GroupHeader && *type != SectionType::GroupFooter;
  if (single && report.Sections().FindType(*type)) {
    r.Fail(name_node,
           "a second " + std::string(SectionTypeName(*type)) + " section ('" + name + "')");
  }
  if (Rank(*type) < last_rank) {
    r.Fail(name_node, "section '" + name +
                          "' is out of layout order (report header, page header, group headers, "
                          "detail, group footers, page footer, report footer)");
  }
  last_rank = Rank(*type);
  Section& s = report.Sections().Add(*type, name);
  const std::string what = "section '" + name + "'";
  r.Apply(
      node, what,
      {
          {"Name", [](const YAML::Node&) {}},
          {"Type", [](const YAML::Node&) {}},
          {"Height", [&](const YAML::Node& v) { s.SetHeight(r.Number(v, "Height")); }},
          {"Visible", [&](const YAML::Node& v) { s.SetVisible(r.Bool(v, "Visible")); }},
          {"BackStyle",
           [&](const YAML::Node& v) {
             int n = r.Integer(v, "BackStyle");
             if (n != 0 && n != 1) r.Fail(v, "'BackStyle' must be 0 (transparent) or 1 (shaded)");
             s.SetBackStyle(n);
           }},
          {"BackColor", [&](const YAML::Node& v) { s.SetBackColor(r.Colour(v, "BackColor")); }},
          {"NewPage", [&](const YAML::Node& v) { s.SetNewPage(r.Choice(v, "NewPage", kNewPage)); }},
          {"CanGrow", [&](const YAML::Node& v) { s.SetCanGrow(r.Bool(v, "CanGrow")); }},
          {"CanShrink", [&](const YAML::Node& v) { s.SetCanShrink(r.Bool(v, "CanShrink")); }},
          {"DataField",
           [&](const YAML::Node& v) {
             if (s.Type() != SectionType::GroupHeader)
               r.Fail(v, "only a group header has a 'DataField'");
             s.SetDataField(r.Text(v, "DataField"));
           }},
          {"RepeatOnPage",
           [&](const YAML::Node& v) {
             if (s.Type() != SectionType::GroupHeader)
               r.Fail(v, "only a group header has 'RepeatOnPage'");
             s.SetRepeatOnPage(r.Bool(v, "RepeatOnPage"));
           }},
          {"Columns",
           [&](const YAML::Node& v) {
             if (s.Type() != SectionType::Detail) r.Fail(v, "only the detail has 'Columns'");
             DetailColumns columns;
             r.Apply(v, "'Columns' of " + what,
                     {
                         {"Count",
                          [&](const YAML::Node& f) {
                            columns.Count = r.Integer(f, "Count");
                            if (columns.Count < 1) r.Fail(f, "'Count' must be 1 or more");
                          }},
                         {"Direction",
                          [&](const YAML::Node& f) {
                            columns.Direction = r.Choice(f, "Direction", kDirection);
                          }},
                         {"Spacing",
                          [&](const YAML::Node& f) {
                            columns.Spacing = r.Number(f, "Spacing");
                            if (columns.Spacing < 0) r.Fail(f, "'Spacing' must not be negative");
                          }},
                     });
             s.SetColumns(columns);
           }},
          {"Controls",
           [&](const YAML::Node& v) {
             if (!v.IsSequence()) r.Fail(v, "'Controls' of " + what + " must be a list");
             for (const auto& c : v) ReadControl(r, c, s, names);
           }},
      });
}

void ReadPage(const Reader& r, const YAML::Node& node, ActiveReport& report) {
  PageSettings& ps = report.PageSettings();
  r.Apply(
      node, "'Page'",
      {
          {"Paper",
           [&](const YAML::Node& v) {
             Paper p = r.Choice(v, "Paper", kPapers);
             ps.PaperWidth = p.width;
             ps.PaperHeight = p.height;
           }},
          {"PaperWidth", [&](const YAML::Node& v) { ps.PaperWidth = r.Number(v, "PaperWidth"); }},
          {"PaperHeight",
           [&](const YAML::Node& v) { ps.PaperHeight = r.Number(v, "PaperHeight"); }},
          {"Orientation",
           [&](const YAML::Node& v) { ps.Orientation = r.Choice(v, "Orientation", kOrientation); }},
          {"LeftMargin", [&](const YAML::Node& v) { ps.LeftMargin = r.Number(v, "LeftMargin"); }},
          {"RightMargin",
           [&](const YAML::Node& v) { ps.RightMargin = r.Number(v, "RightMargin"); }},
          {"TopMargin", [&](const YAML::Node& v) { ps.TopMargin = r.Number(v, "TopMargin"); }},
          {"BottomMargin",
           [&](const YAML::Node& v) { ps.BottomMargin = r.Number(v, "BottomMargin"); }},
      });
}

// Compiles the layout's script so that its lines count as the file's: a block (`Script: |`)
// starts on the line after its indicator.
void LoadScript(const Reader& r, const YAML::Node& node, std::string_view text,
                std::string_view file, ActiveReport& report) {
  auto engine = ActiveReport::GetScriptEngine();
  if (!engine) r.Fail(node, "this program runs no layout scripts");
  const YAML::Mark mark = node.Mark();
  int first_line = mark.line + 1;
  if (mark.pos >= 0 && static_cast<std::size_t>(mark.pos) < text.size() &&
      (text[static_cast<std::size_t>(mark.pos)] == '|' ||
       text[static_cast<std::size_t>(mark.pos)] == '>')) {
    ++first_line;
  }
  try {
    report.SetScript(engine->Compile(node.Scalar(), file, first_line, report));
  } catch (const ScriptError& e) {
    throw LayoutError(e.what());
  }
}

}  // namespace

void LoadLayout(std::string_view text, std::string_view file, ActiveReport& report) {
  Reader r(file);
  if (report.Sections().Count() != 0) {
    throw LayoutError(std::string(file) + ":0: the report already has sections");
  }
  YAML::Node root;
  try {
    root = YAML::Load(std::string(text));
  } catch (const YAML::Exception& e) {
    throw LayoutError(std::string(file) + ":" + std::to_string(e.mark.line + 1) + ": " + e.msg);
  }
  if (!root.IsMap()) {
    throw LayoutError(std::string(file) +
                      ":1: a layout must be a mapping with 'Report' and 'Sections'");
  }
  std::set<std::string> names;
  int last_rank = 0;
  std::optional<YAML::Node> script;
  try {
    r.Apply(root, "the layout",
            {
                {"Report",
                 [&](const YAML::Node& v) {
                   r.Apply(
                       v, "'Report'",
                       {
                           {"Caption",
                            [&](const YAML::Node& x) { report.SetCaption(r.Text(x, "Caption")); }},
                           {"DocumentName",
                            [&](const YAML::Node& x) {
                              report.SetDocumentName(r.Text(x, "DocumentName"));
                            }},
                           {"PrintWidth",
                            [&](const YAML::Node& x) {
                              report.SetPrintWidth(r.Number(x, "PrintWidth"));
                            }},
                           {"Page", [&](const YAML::Node& x) { ReadPage(r, x, report); }},
                       });
                 }},
                {"Sections",
                 [&](const YAML::Node& v) {
                   if (!v.IsSequence()) r.Fail(v, "'Sections' must be a list");
                   for (const auto& s : v) ReadSection(r, s, report, names, last_rank);
                 }},
                {"Script",
                 [&](const YAML::Node& v) {
                   (void)r.Text(v, "Script");
                   script = v;
                 }},
            });
  } catch (const YAML::Exception& e) {
    throw LayoutError(std::string(file) + ":" + std::to_string(e.mark.line + 1) + ": " + e.msg);
  }
  if (!report.Sections().FindType(SectionType::Detail)) {
    throw LayoutError(std::string(file) + ":1: the layout has no Detail section");
  }
  report.SetLayoutFile(std::string(file));
  if (script) LoadScript(r, *script, text, file, report);
}

}  // namespace trellin::engine
