#pragma once
// The base of the column-driven lists: each key is one row of plain data (its order choices,
// parameters, query, groupings and columns), and the base turns the row into the run's
// parameters, WHERE text, description, groups and columns. A designer on it names its keys and
// adds only what its rows cannot say (look-ups filled per row, a layout of its own).
//
// ListDesigner.cpp holds the designer's events; ListDesigner_query.cpp the parameters, the
// WHERE text and description, the order and the groupings.

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/Designer.h"
#include "core/host/Parameters.h"
#include "core/kvReportUtilities.h"

namespace trellin {

enum class ListParameterKind {
  Standard,     // a row of the standard parameter table, by `index`
  DatePair,     // `name`From and `name`To: dates with default expressions, tested on `field`;
                // with no field only described, for the designer's own look-ups
  MoneyRange,   // `name`From and `name`To: open at the number-range sentinels, on `field`
  Option,       // a check box: `condition` and `phrase` when checked, `off_...` when not
  Choice,       // one of `choices`, the first the default, each with its condition and phrase
  PickList,     // codes picked from `list_sql` (key `key_field`), tested on `field`
  CheckBoxes,   // one check box per choice, named `name` + choice, all checked at first:
                // `field` In the checked ones, nothing when all are; described "caption: " and
                // the checked ones, or with a `phrase`, the phrase, the checked ones parted by
                // ", " and the caption ("Include Open, Hold Job Statuses")
  UserDefined,  // the company's user-defined fields of the table `name` ("OtherParty", "Item",
                // "Asset", "Transactions"), as the application adds them
};

// One choice of a Choice or CheckBoxes parameter. A Choice adds `condition` and `phrase` when
// it is the value; "" adds nothing.
struct ListChoice {
  std::string_view choice = {};
  std::string_view condition = {};
  std::string_view phrase = {};
};

// One parameter of a list, in the order the dialogue shows them. The fields that a kind does
// not use stay empty.
struct ListParameter {
  ListParameterKind kind = ListParameterKind::Standard;
  std::string_view name = {};     // Standard: replaces the row's name when not empty
  std::string_view caption = {};  // Standard: replaces the row's caption when not empty
  std::string_view field = {};    // the field the condition tests; Standard: the SQLField override
  long index = -1;                // Standard: the row
  bool primary = false;
  std::string_view from_default = {};  // DatePair: date expressions ("GLCURRENT-1E+1D")
  std::string_view to_default = {};
  std::string_view condition = {};  // Option
  std::string_view phrase = {};
  std::string_view off_condition = {};
  std::string_view off_phrase = {};
  bool checked = false;                      // Option: the default
  std::span<const ListChoice> choices = {};  // Choice, CheckBoxes
  std::string_view list_sql = {};            // PickList
  std::string_view key_field = {};
  std::string_view initial = {};  // Standard, PickList: the value it starts with ("" none)
};

// An OrderBy choice and the ORDER BY fields it stands for.
struct ListOrder {
  std::string_view choice = {};
  std::string_view fields = {};
};

// A grouping a list defines its own way, where the standard grouping's field would be
// ambiguous or wrong in the list's query.
struct ListGrouping {
  std::string_view name = {};
  std::string_view field = {};
  std::string_view list_sql = {};
  std::string_view key_field = {};
};

// One column: name, field, kind (reports/ReportShapes.h's kinds), heading, short heading, width
// in twips (-1 automatic), whether it waits to be picked, and a mask ("" the kind's own). Money
// and number columns are totalled in every group footer and the report footer.
struct ListColumn {
  std::string_view name = {};
  std::string_view field = {};
  int kind;
  std::string_view caption = {};
  std::string_view short_caption = {};
  float width;
  bool hidden;
  std::string_view format = {};
};

struct ListKey {
  std::string_view key = {};
  std::string_view base_sql = {};          // "SELECT ... FROM ...", with no WHERE or ORDER BY
  std::string_view base_where = {};        // a condition every run holds; "" none
  std::span<const ListOrder> orders = {};  // the first is the default and the fall-back; with
                                           // one, no OrderBy is offered
  std::span<const ListParameter> parameters = {};
  std::string_view groupings = {};       // the Groupings choices; "" offers none
  std::string_view grouping_table = {};  // the table the standard groupings read
  std::span<const ListGrouping> own_groupings = {};
  std::string_view fixed_grouping = {};  // groupings always made, outside the chosen ones, the
                                         // first outermost ("Batch,Party"); "" none
  bool summary = false;                  // offers Summary
  bool summary_first = false;            // Summary heads the parameters, before OrderBy
  std::string_view order_phrase = {};    // describes the order ("Jobs ordered by "); "" the
                                         // plain "Ordered by "
  std::span<const ListColumn> columns = {};
};

// What one run asks of the database and prints of itself.
struct ListQuery {
  std::string sql;
  std::string description;
  std::vector<ChosenGrouping> groups;  // innermost first
  bool summary = false;
};

// Adds OrderBy (where the key has a choice of orders), the key's parameters in order, Summary and
// Groupings where the key offers them. Rows 8, 33, 46, 47 and 48 of the standard table and the
// user-defined fields need the service initialised.
void DeclareListParameters(const ListKey& key, trellin::Parameters& parameters);

// The ORDER BY fields of `order_by`; the first order's fields for a value the key does not know.
[[nodiscard]] std::string ListOrderFields(const ListKey& key, const std::string& order_by);

// The chosen groupings (and the fixed one outside them), innermost first. Throws
// std::invalid_argument naming a grouping that gives no field.
[[nodiscard]] std::vector<ChosenGrouping> ListGroups(const ListKey& key,
                                                     const trellin::Parameters& parameters);

// The run's query and description from the parameter values: the list parameters through
// CreateSQLWhereFromRangeParams, then each other parameter in order, the groups' fields into
// the SELECT and ahead of the order; `extra_where`, a condition of the designer's own, after
// the key's. Throws what the range builder and the date conversion throw, and
// std::invalid_argument for a bound that is no number.
[[nodiscard]] ListQuery BuildListQuery(const ListKey& key, const trellin::Parameters& parameters,
                                       const std::string& extra_where = "");

// A list's query `sql` ("SELECT ... FROM ... WHERE ... ORDER BY ...") as a subquery of its rows'
// `key_field` alone: "SELECT key_field FROM ... WHERE ...", for reading what hangs under every
// row with one query. The SELECT list must hold no " FROM " of its own.
[[nodiscard]] std::string ListKeysSubquery(const std::string& sql, std::string_view key_field);

class ListDesigner : public Designer {
 public:
  // `keys` must outlive the designer. `title` names the report on the shared list layout where
  // the catalogue gives no caption; "" keeps the layout's.
  ListDesigner(std::string designer_name, std::span<const ListKey> keys,
               std::string_view title = "");

  // Throw std::invalid_argument for a key the designer does not serve.
  void RefreshParameters(std::string& ReportName) override;
  void RefreshDataColumns() override;

  // Prepares the data control; a designer with no stored layout of its own takes the shared
  // list layout "ListDesigner".
  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;
  void OnFormat(Section& section) override;
  void OnBeforePrint(Section& section) override;

  // Builds the run's query from the parameters (at report start).
  void BuildSQL();
  [[nodiscard]] const std::string& SQL() const { return query_.sql; }
  [[nodiscard]] const std::string& Description() const { return query_.description; }

 protected:
  // The row of the host's key; throws std::invalid_argument when the designer does not serve it.
  // A designer whose run takes another row by its options (lines or not) overrides it.
  [[nodiscard]] virtual const ListKey& Key() const;
  [[nodiscard]] bool Summary() const { return query_.summary; }
  // A condition the key's row cannot hold, made from the run's values; "" for none.
  [[nodiscard]] virtual std::string ExtraCondition() { return {}; }
  virtual void Detail_Format();

 private:
  void FitFurniture();

  std::span<const ListKey> keys_;
  std::string title_;
  ListQuery query_;
};

}  // namespace trellin
