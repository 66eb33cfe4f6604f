#pragma once
// The parameter dialogue as data: what a report asks, values given as text or JSON, resolution
// of date expressions, and validation.

#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "core/host/BusinessLayer.h"
#include "core/host/Database.h"
#include "core/host/Parameters.h"
#include "platform/runtime/Error.h"

namespace trellin::host {

// Turns a date expression ("EOM+1D", "ARCURRENT", "DateTo-1M", "31/03/2025") into a date, with
// the parameters for names and DateAsAt; Null when the expression means nothing.
using DateResolver =
    std::function<Variant(const Variant& expression, const Parameters& parameters)>;

// A value the dialogue cannot take: an unknown parameter name, or text that does not convert to
// the parameter's kind. The message names the parameter and says what is wrong.
class ParameterError : public Error {
 public:
  explicit ParameterError(const std::string& message) : Error(ErrorKind::Input, message) {}
};

// The kind of a parameter as the dialogue names it: "boolean", "string", "date", "sqllist",
// "list", "multilist", "number".
[[nodiscard]] std::string_view KindName(ParameterType kind);

// One row of a pick-list: the key column, and the other columns joined by a blank.
struct PickRow {
  std::string Key;
  std::string Description;
};

// One parameter as the dialogue shows it.
struct DialogueEntry {
  std::string Name;
  ParameterType Kind = ParameterType::String;
  std::string Caption;  // the caption, else the name
  std::string Prompt;
  bool Primary = false;
  bool Flag = false;
  Variant Value;
  Variant DefaultValue;
  // Date parameters: what the default resolves to now (Empty without a resolver or a default;
  // Null when the expression means nothing).
  Variant ResolvedDefault;
  std::vector<std::string> Choices;  // List and MultiList
  std::string ListSQL;               // SQLList
  std::string KeyField;
  std::vector<PickRow> Rows;  // SQLList, when asked for and a database is given
  std::string RowsError;      // why the rows could not be read
  std::string Dependency;
  std::string Help;
};

// Works on a report's `Parameters`, which must outlive it. `database` (may be null: no pick-list
// rows) runs the ListSQL of list parameters. `resolver` (may be empty: date text must then be a
// date) resolves date expressions. `range_builder` (may be null: list text is not checked)
// checks the text of SQL lists against the list syntax.
class ParameterDialogue {
 public:
  ParameterDialogue(Parameters& parameters, std::shared_ptr<Database> database,
                    DateResolver resolver, RangeBuilder* range_builder = nullptr);

  // Every parameter in order of adding. With `with_rows` the pick-lists are read; a query that
  // fails leaves that entry's Rows empty and says why in RowsError.
  [[nodiscard]] std::vector<DialogueEntry> List(bool with_rows = true) const;

  // Sets one parameter from text, converted to its kind:
  //   boolean    true/false/yes/no/1/0, any case
  //   date       a date ParseDateText reads; "" for no date (Null); any other text is a date
  //              expression, kept until Resolve
  //   number     a number ("1,234.50", "-5")
  //   list       one of the choices, matched without regard to case ("" for none)
  //   multilist  comma-separated choices, each optionally followed by " [Page Break]"
  //   sqllist    codes and ranges (see platform/business/README.md), checked when a range
  //              builder is given
  //   string     as given
  // Throws ParameterError for an unknown name (listing the known ones) or text that does not
  // convert.
  void SetFromText(std::string_view name, std::string_view text);
  // "NAME=VALUE", as given on a command line.
  void SetFromAssignment(std::string_view assignment);
  // A JSON object of name to value: strings as text; true/false for booleans; numbers; null for
  // no value; arrays of strings for multi-lists and SQL lists. Throws ParameterError.
  void SetFromJson(const nlohmann::json& values);
  // As SetFromJson, from the text of a JSON file; bad JSON is a ParameterError too.
  void SetFromJsonText(std::string_view text);

  // A date given as an expression becomes its date (an expression that means nothing, or with a
  // shift that does nothing, is an error for Validate), and a date parameter with no value yet
  // (Empty or Missing) takes what its default resolves to. Dates may build on one another in
  // any order: what cannot resolve yet is tried again once others have. A resolver that throws
  // leaves that date Null, with an error for Validate naming it.
  //
  // Then each period list and the pair of dates it governs (Period with FromDate and ToDate,
  // DateFrom and DateTo, or PeriodDateFrom and PeriodDateTo; Period1 and Period2 with theirs):
  //   MTD, QTD, YTD  the first date is the first day of the month, of the quarter of the
  //                  financial year, or of the financial year that holds the second date
  //   Custom         a first date given stands; none given, the financial year's first day
  //   ALL            the dates are left to the report, which leaves both ends open
  // A first date given while the period is left at its default turns the period to Custom
  // where that is a choice, as typing a date in the dialogue does. The financial year is the
  // resolver's "BOY" of the second date.
  void Resolve();

  // Resolves (as Resolve: expressions given, and defaults of dates still without a value), then
  // runs the collection's checks, the list syntax check, and refuses a date outside 0101-01-01
  // to 9998-12-31 (reports reach a year either side of their dates).
  // Returns Valid(); Errors() holds one message per problem.
  bool Validate();
  [[nodiscard]] bool Valid() const { return errors_.empty(); }
  [[nodiscard]] const std::vector<std::string>& Errors() const { return errors_; }

  // The listing as a JSON array of objects (name, kind, caption, prompt, primary, flag, value,
  // default, and by kind resolvedDefault, choices, listSQL, keyField, rows, rowsError,
  // dependency). Dates are "yyyy-mm-dd", money a number, no value null.
  [[nodiscard]] static nlohmann::json ToJson(const std::vector<DialogueEntry>& entries);
  // The values, as a JSON object of name to value, in the same forms.
  [[nodiscard]] nlohmann::json ValuesToJson() const;

 private:
  [[nodiscard]] Parameter& Known(std::string_view name) const;
  // The first shift ("+2930000D") of a date expression the user gave that did nothing: one that
  // would leave the calendar, or with a unit other than D, M, E and Y. "" when none.
  [[nodiscard]] std::string DroppedShift(const std::string& text) const;
  [[nodiscard]] Variant ConvertText(const Parameter& parameter, std::string_view text);
  void CheckListSyntax(const Parameter& parameter, const std::string& text,
                       std::vector<std::string>& errors) const;
  void ApplyPeriods();
  // The first day of `period` ("MTD", "QTD", "YTD", "Custom") ending at `to`; nullopt for a
  // period that leaves the first date alone.
  [[nodiscard]] std::optional<Date> PeriodStart(const std::string& period, Date to) const;

  Parameters& parameters_;
  std::shared_ptr<Database> database_;
  DateResolver resolver_;
  RangeBuilder* range_builder_;
  // Date parameters holding an expression not yet resolved (lower-case names).
  std::set<std::string> pending_;
  // Parameters the user gave a value (lower-case names).
  std::set<std::string> given_;
  // Expressions that meant nothing, by lower-case name, until the parameter is set again.
  std::vector<std::pair<std::string, std::string>> resolve_errors_;
  std::vector<std::string> errors_;
};

}  // namespace trellin::host
