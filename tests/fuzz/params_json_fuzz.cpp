// Feeds arbitrary text to the parameter dialogue as a --params file would reach it, then checks
// and lists the values. Anything but success or a ParameterError is a fault: a crash, a
// sanitizer report, another exception, or a listing that cannot be written out again as JSON.

#include <cstdint>
#include <map>
#include <string>
#include <string_view>

#include <nlohmann/json.hpp>

#include "core/host/Parameters.h"
#include "platform/host/ParameterDialogue.h"

namespace {

using trellin::Date;
using trellin::Parameters;
using trellin::Variant;
using trellin::host::ParameterDialogue;

// Dates, two keywords, and the names of other parameters, as the date-expression routine reads
// them; anything else means nothing.
Variant Resolve(const Variant& expression, const Parameters& parameters) {
  if (expression.IsDate()) return expression;
  const std::string text = expression.Text();
  if (text == "EOM") return Date::FromYmd(2025, 3, 31);
  if (text == "GLCURRENT") return Date::FromYmd(2025, 2, 28);
  if (parameters.Exists(text)) return parameters.Value(text);
  return Variant::Null();
}

// One parameter of every kind, with the period pair the dialogue resolves together.
void Declare(Parameters& p) {
  p.AddList("Period", Variant("YTD"), true, "", Variant("YTD"), "ALL,MTD,QTD,YTD,Custom", false,
            "Period");
  p.AddDate("FromDate", Variant(), true, "", Variant(), false, "From Date");
  p.AddDate("ToDate", Variant(), true, "", Variant("GLCURRENT"), false, "To Date");
  p.AddDate("DateAsAt", Variant::Missing(), false, "", Variant("ToDate"), false, "Date As At");
  p.AddBoolean("Summary", false, false, "", false, false, "Summary");
  p.AddNumber("Level", Variant(), false, "", Variant(), 0, false, "Level");
  p.AddNumber("Amount", Variant(), false, "", Variant(), -9999999999, false, "Amount");
  p.AddMultiList("Groupings", Variant(""), false, "", Variant(""), "Branch,Department", false,
                 false, "Groupings");
  p.AddSQLList("Accounts", Variant(""), true, "", Variant(""),
               "SELECT AccountId, Description FROM Account", "AccountId", false, "Accounts");
  p.AddString("Message", Variant(""), false, "", Variant(""), false, "Message");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  Parameters parameters;
  Declare(parameters);
  ParameterDialogue dialogue(parameters, nullptr, Resolve);
  try {
    dialogue.SetFromJsonText(text);
  } catch (const trellin::host::ParameterError&) {
    return 0;
  }
  dialogue.Validate();
  // Whatever was taken must list and write back out; dump() throws on text that is not UTF-8.
  (void)ParameterDialogue::ToJson(dialogue.List(false))
      .dump(-1, ' ', false, nlohmann::json::error_handler_t::strict);
  (void)dialogue.ValuesToJson().dump(-1, ' ', false, nlohmann::json::error_handler_t::strict);
  return 0;
}
