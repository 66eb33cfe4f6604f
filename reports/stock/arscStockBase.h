#pragma once
// What the stock designers share: the group sections and their events, the list filters, the
// groupings read from the last choice to the first, the quantity and value bounds, and the
// quantity mask. Each stock designer derives from it and keeps its own query.

#include <span>
#include <string>
#include <string_view>

#include "core/Designer.h"
#include "core/host/DataColumns.h"
#include "core/kvReportUtilities.h"
#include "platform/runtime/Currency.h"
#include "platform/runtime/Variant.h"
#include "reports/ReportShapes.h"

namespace trellin {

// One list filter: the field it narrows and the parameter that holds the list.
struct StockFilter {
  const char* field;
  const char* parameter;
};

// A grouping that a stock report defines its own way rather than by the standard table.
struct StockGrouping {
  const char* name;
  const char* field;
  const char* list_sql;
  const char* key_field;
  const char* also_field;  // a further field the grouping needs in the query; "" for none
};

// One data column of a stock report: name, field, heading, short heading, kind, width (-1
// automatic; the code column takes the company's item code width) and whether it starts hidden.
struct StockColumn {
  const char* name;
  const char* field;
  const char* caption;
  const char* short_caption;
  int data_type;
  float width;
  bool hidden;
};

class arscStockBase : public Designer {
 public:
  using Designer::Designer;

  void ActiveReport_Initialize() override;
  // Detail, group header and footer, and report footer events, each handed to the host first
  // and then to the hooks below.
  void OnFormat(Section& section) override;
  void OnBeforePrint(Section& section) override;

 protected:
  virtual void Detail_Format() {}
  // A group header of `level`, after the host filled its label.
  virtual void GroupHeaderFormat(Section& section, int level) {
    (void)section;
    (void)level;
  }
  // A group footer or the report footer, after the host filled it.
  virtual void FooterFormat(Section& section) { (void)section; }

  // The quantity mask of the company: "#,##0.00;(#,##0.00)" for two decimals.
  [[nodiscard]] static std::string QuantityFormat();
  [[nodiscard]] static int QuantityDecimals();
  [[nodiscard]] static int ValueDecimals();
  // Whether `v` holds a date: "no date" may be Null, Empty or Missing.
  [[nodiscard]] static bool DateGiven(const Variant& v) {
    return !(v.IsNull() || v.IsEmpty() || v.IsMissing());
  }
  // A date in the company's date format; "" for no date.
  [[nodiscard]] static std::string DateText(const Variant& date);

  // Adds `column` to the report's data columns with `format` ("(auto)" for the column's own);
  // `totalled` columns are summed in the footers.
  static DataColumn& AddColumn(DataColumns& columns, const StockColumn& column,
                               const std::string& format, bool totalled);
  // Adds each filter of `filters` with a value, and each item user-defined field's filter.
  void AddFilters(std::span<const StockFilter> filters, std::string& where,
                  std::string& description) const;
  // The groupings chosen, from the last choice to the first, so that element i is level i + 1.
  // A name found in `own` takes that row; any other the standard grouping over `default_table`.
  // Throws std::invalid_argument naming a grouping that gives no field.
  [[nodiscard]] std::vector<ChosenGrouping> ChosenGroupings(std::span<const StockGrouping> own,
                                                            const std::string& default_table) const;
  // Defines the groups on the host, level 1 innermost, and closes the definition.
  void DefineGroups(const std::vector<ChosenGrouping>& groupings) const;
  // QuantityOnHandFrom, QuantityOnHandTo, ValueOnHandFrom and ValueOnHandTo, each at its open
  // end (-9999999999 or 9999999999), where it sets no limit.
  static void AddBoundParameters(trellin::Parameters& parameters);
  // "From" and "To" bounds of the number parameters `from` and `to` over `expression` into the
  // having-condition, with `title` and the bounds in `format` in the description; an open end or
  // an empty value is no bound. Throws std::invalid_argument for a value that is no number.
  void AddNumberRange(std::string& having, const std::string& expression, const std::string& from,
                      const std::string& to, const std::string& title, std::string& description,
                      const std::string& format) const;
  // In summary mode the code column takes the innermost group label's tag as its heading and the
  // description column none; the group footer's code and name go under them once laid out.
  void SummaryHeadings(const std::string& code_column, const std::string& description_column);
  // Out of summary mode the group footer's code and name are hidden, its caption saying as much;
  // in it the caption is hidden.
  void PlaceSummaryFields(bool summary, const std::string& code_column,
                          const std::string& description_column);
  // The layout of a column report once its query is built: the group sections (footers only in
  // summary mode), the standard header, the data columns under "lblHeading" with the code and
  // description columns of summary mode, and `description` in "txtParameters".
  void LayOutColumns(bool summary, const std::string& description);
};

}  // namespace trellin
