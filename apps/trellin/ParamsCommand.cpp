// trellin params: a report's parameter dialogue, as text or JSON.
#include <cstdio>
#include <sstream>

#include <nlohmann/json.hpp>

#include "apps/trellin/CommandLine.h"
#include "apps/trellin/Commands.h"
#include "apps/trellin/Company.h"
#include "core/host/ApplicationSettings.h"
#include "core/host/TLReport.h"
#include "platform/host/ParameterDialogue.h"
#include "platform/host/run/ReportService.h"
#include "platform/host/run/RunReport.h"
#include "platform/runtime/Format.h"

namespace trellin::cli {

namespace {

const std::vector<OptionSpec> kParamsOptions = {
    {"db", 0, true, false, "FILE|URL",
     "company file, or postgresql://user@host/dbname (default: $TRELLIN_DB, else the demo "
     "company)"},
    {"json", 'j', false, false, "", "print the parameters as JSON"},
    {"rows", 'r', true, false, "N",
     "pick-list rows to show per parameter in text (default 10; all in JSON)"},
    {"help", 'h', false, false, "", "show this help"},
};

// A value as the user writes it: dates in the company's date format ("31/10/2026").
std::string Shown(const Variant& value, const std::string& date_format) {
  if (value.IsEmpty() || value.IsMissing()) return "";
  if (value.IsNull()) return "(none)";
  if (value.IsDate()) return Format(value, date_format);
  return value.Text();
}

// Help text wrapped at word breaks, each line after the first indented under the first.
void PrintWrapped(const char* label, const std::string& text) {
  constexpr std::size_t kWidth = 96;
  const std::string indent(13, ' ');
  std::string line = std::string("    ") + label;
  std::size_t start = line.size();
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    if (line.size() > start && line.size() + 1 + word.size() > kWidth) {
      std::printf("%s\n", line.c_str());
      line = indent;
      start = line.size();
    }
    if (line.size() > start) line += ' ';
    line += word;
  }
  std::printf("%s\n", line.c_str());
}

}  // namespace

int ParamsCommand(const Args& args, const Context&) {
  ParsedArgs parsed = Parse(args, kParamsOptions);
  if (parsed.Has("help")) {
    std::printf(
        "usage: trellin params KEY [--db FILE|URL] [--json]\n\n"
        "Lists what the report KEY asks: each parameter's name, kind, caption, prompt,\n"
        "default (and the date it stands for today), what a value left blank means, choices,\n"
        "and the rows of pick-lists.\n\n%s",
        OptionsHelp(kParamsOptions).c_str());
    return kExitOk;
  }
  if (parsed.Positional().size() != 1) throw UsageError("params takes one report key");
  std::size_t row_limit = 10;
  if (auto rows = parsed.Value("rows")) {
    try {
      row_limit = std::stoul(*rows);
    } catch (const std::exception&) {
      throw UsageError("--rows takes a whole number, not '" + *rows + "'");
    }
  }
  const std::string& key = parsed.Positional()[0];
  auto database = OpenCompany(parsed.Value("db"));
  {
    host::ReportService service(database);
    DesignerPtr designer = host::OpenReport(service, key);
    const bool settings = dynamic_cast<ApplicationSettings*>(designer.get()) != nullptr;
    host::DateResolver resolver = [&service](const Variant& expression,
                                             const Parameters& parameters) {
      return service.Reports().InterpretDate(expression, &parameters);
    };
    host::ParameterDialogue dialogue(designer->TLReport()->Parameters(), service.DatabasePtr(),
                                     resolver);
    std::vector<host::DialogueEntry> entries = dialogue.List(true);
    const std::string date_format = service.BusinessLayer().DateFormat();
    designer->TLReport()->SetArReport(nullptr);
    if (parsed.Has("json")) {
      std::printf("%s\n", host::ParameterDialogue::ToJson(entries).dump(2).c_str());
      return kExitOk;
    }
    if (entries.empty()) std::printf("%s takes no parameters\n", key.c_str());
    if (settings && !entries.empty()) {
      std::printf(
          "%s asks no parameters; these are the run's settings, which the application "
          "sets:\n",
          key.c_str());
    }
    for (const auto& entry : entries) {
      std::printf("%s (%s)", entry.Name.c_str(), std::string(host::KindName(entry.Kind)).c_str());
      if (entry.Caption != entry.Name) std::printf("  \"%s\"", entry.Caption.c_str());
      std::printf("\n");
      if (!entry.Prompt.empty() && entry.Prompt != entry.Caption) {
        std::printf("    prompt:  %s\n", entry.Prompt.c_str());
      }
      std::string value = Shown(entry.Value, date_format);
      std::string fallback = Shown(entry.DefaultValue, date_format);
      if (!value.empty()) std::printf("    value:   %s\n", value.c_str());
      if (!fallback.empty()) {
        // An expression is shown with the date it stands for now: "GLCURRENT: 31/10/2026".
        std::string resolved = Shown(entry.ResolvedDefault, date_format);
        if (!resolved.empty() && resolved != fallback) fallback += ": " + resolved;
        std::printf("    default: %s\n", fallback.c_str());
      }
      if (!entry.Help.empty()) PrintWrapped("help:    ", entry.Help);
      if (!entry.Choices.empty()) {
        std::string choices;
        for (const auto& choice : entry.Choices) choices += (choices.empty() ? "" : ", ") + choice;
        std::printf("    choices: %s\n", choices.c_str());
      }
      if (!entry.RowsError.empty())
        std::printf("    rows:    cannot be read: %s\n", entry.RowsError.c_str());
      for (std::size_t i = 0; i < entry.Rows.size() && i < row_limit; ++i) {
        std::printf("    %-12s %s\n", entry.Rows[i].Key.c_str(), entry.Rows[i].Description.c_str());
      }
      if (entry.Rows.size() > row_limit)
        std::printf("    ... %zu more\n", entry.Rows.size() - row_limit);
    }
  }
  return kExitOk;
}

}  // namespace trellin::cli
