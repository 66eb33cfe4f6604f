#pragma once
// A report parameter: one entry of the parameter dialogue, with its value and how it filters.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/Variant.h"

namespace trellin {

// The kind of a parameter, as its `Type` number. 1, 3 and 4 are the numbers the report code
// tests; the others are this host's own.
enum class ParameterType {
  Boolean = 1,    // AddBoolean: a check box
  String = 2,     // AddString: free or hidden text
  Date = 3,       // AddDate: a date; DefaultValue is a date expression ("EOM+1D")
  SQLList = 4,    // AddSQLList and the standard range parameters: codes picked from ListSQL
  List = 5,       // AddList: one of Choices
  MultiList = 6,  // AddMultiList: an ordered selection of several of Choices (Groupings)
  Number = 7,     // AddNumber: a fixed-point number
};

class Parameter {
 public:
  std::string Name;
  std::string Caption;
  std::string Prompt;
  ParameterType Kind = ParameterType::String;
  bool Primary = false;
  // The Flag argument of the Add operations, passed through to the dialogue.
  bool Flag = false;
  Variant Value;
  Variant DefaultValue;
  std::string ListSQL;
  std::string KeyField;
  std::string SQLField;
  Variant FilterField;
  // Comma-separated choices of List and MultiList parameters.
  std::string Choices;
  // Name of the parameter a Groupings list depends on (SetDependency).
  std::string Dependency;
  // What the dialogue tells the user beside the prompt: above all, what a value left blank
  // stands for ("Left blank, the general ledger's current date (GLCURRENT).").
  std::string Help;
  // Number parameters: the initial number given to AddNumber, and the bounds Validate holds the
  // value to (none when unset). AddNumber sets the money-range bounds -9999999999 and 9999999999.
  std::int64_t Initial = 0;
  std::optional<Currency> Minimum;
  std::optional<Currency> Maximum;

  [[nodiscard]] int Type() const { return static_cast<int>(Kind); }
  // Choices as a list, in order, blanks trimmed.
  [[nodiscard]] std::vector<std::string> ChoiceList() const;
  // Takes one entry out of Choices (exact match, ignoring case); absent entries are ignored.
  void RemoveChoice(const std::string& choice);
  void SetDependency(const std::string& name) { Dependency = name; }
  // Caption when it has one, else Name: how messages and the dialogue call the parameter.
  [[nodiscard]] const std::string& Label() const { return Caption.empty() ? Name : Caption; }
};

using ParameterPtr = std::shared_ptr<Parameter>;

// The mark a MultiList item bears when its group starts a new page.
inline constexpr std::string_view kPageBreakMark = " [Page Break]";

// One item of a MultiList value such as "Customer [Page Break],Location".
struct MultiListItem {
  std::string Choice;  // trimmed, without the mark and without any prefix ending in a tab
  bool PageBreak = false;
};

// The items of a MultiList value in order; blank items are dropped. The mark is found without
// regard to case.
[[nodiscard]] std::vector<MultiListItem> SplitMultiListValue(std::string_view value);

}  // namespace trellin
