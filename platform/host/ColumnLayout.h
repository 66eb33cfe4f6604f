#pragma once
// The columns of a column-driven report and their layout: the report adds its columns, the user
// picks and orders them through the "Columns" parameter, and CreateFields lays out heading
// labels, detail fields and footer totals across the print width.

#include <deque>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/host/ActiveReport.h"
#include "core/host/BusinessLayer.h"
#include "core/host/DataColumns.h"

namespace trellin::host {

// The parameter through which the user picks columns: their names, comma-separated, in the
// order they are to print ("Code, Name, Balance"). Empty prints every column not hidden, in the
// order the report added them.
inline constexpr std::string_view kColumnsParameter = "Columns";

// What a column's DataType says about its values, for alignment, masks and totals.
enum class ColumnKind { Text, Number, Date, Money, Boolean, Code };

// The kind of a DataType code: 0 text, 1 and 3 numbers, 2 dates, 4 money, 5 booleans, 6 the
// record's code; any other code is text.
[[nodiscard]] ColumnKind KindOfDataType(int data_type);

// The control names the layout gives a column: heading label, detail field, and the footer
// total in `section` (section name + "Summary" + column name).
[[nodiscard]] std::string HeadingName(const DataColumn& column);
[[nodiscard]] std::string DetailName(const DataColumn& column);
[[nodiscard]] std::string SummaryName(const Section& section, const DataColumn& column);

class ColumnLayout : public DataColumns {
 public:
  // `business_layer` (may be null) gives the money and date masks and the rounding of "Round"
  // columns; without it the runtime's defaults stand and "Round" rounds half away from zero.
  explicit ColumnLayout(std::shared_ptr<BusinessLayer> business_layer);

  // Ties the columns to the host's designer and parameters. When the report has enabled its
  // columns, adds the "Columns" string parameter (once) so that the user can pick them.
  void Initialise(TLReport& host) override;
  void SetEnabled(bool enabled) override { enabled_ = enabled; }
  [[nodiscard]] bool Enabled() const override { return enabled_; }

  // `visibility` is kept as given; every column is laid out unless Hidden. `totalled` gives the
  // column a total in every group footer and the report footer: a sum for numbers and money, an
  // empty field the report fills for other kinds. `reserved4` marks a column whose text holds
  // several lines; every text column's field grows to wrap its text between words. Adding a name
  // already present replaces that column in its place.
  DataColumn& Add(const std::string& name, const std::string& data_field, int data_type,
                  const std::string& caption, const std::string& short_caption, float width,
                  float minimum_width, int reserved1, int visibility, const std::string& format,
                  int decimals, int decimals2, const std::string& reserved2, bool reserved3,
                  const std::string& group_caption, bool totalled, bool reserved4) override;
  [[nodiscard]] std::size_t Count() const override { return columns_.size(); }
  [[nodiscard]] bool Exists(std::string_view name) const override;
  // Throws NoSuchItem naming the column.
  [[nodiscard]] DataColumn& Item(std::string_view name) override;

  // The columns that print, in order: the user's pick, else every column not hidden. Throws
  // ParameterError naming a picked name that is no column, listing the columns.
  [[nodiscard]] std::vector<DataColumn*> PickedColumns();

  // Needs Initialise with a host whose designer is set; throws std::logic_error otherwise, and
  // when the designer has no page header or detail. Lays the picked columns out: headings in
  // the page header at `top` (column-group captions above them, pushing the headings down),
  // detail fields at the top of the detail, totals at the top of every visible group footer and
  // the report footer. `spacing` twips stand between columns; the font sizes are in points.
  void CreateFields(float top, int reserved1, int spacing, int reserved2, bool reserved3,
                    int reserved4, float heading_font_size, float body_font_size) override;
  // Puts the row's value of each laid-out column into its detail field; "Round" columns show
  // the value rounded to the column's decimals in "#,##0.00;(#,##0.00)" style.
  void FillRow(Fields& fields, const std::string& reserved) override;
  // Gives the "Round" totals of `section` their rounded text; the host calls it as a footer
  // formats.
  void FormatTotals(Section& section);

  // True once CreateFields has laid out at least one column.
  [[nodiscard]] bool FieldsCreated() const { return !laid_out_.empty(); }

 private:
  struct LaidOut {
    DataColumn* column;
    Control* detail;
  };

  [[nodiscard]] ActiveReport& Designer() const;
  [[nodiscard]] std::string OutputFormatOf(const DataColumn& column) const;
  [[nodiscard]] Variant Rounded(const Variant& value, int decimals) const;
  [[nodiscard]] bool SumsInFooters(const DataColumn& column) const;

  std::shared_ptr<BusinessLayer> business_layer_;
  TLReport* host_ = nullptr;
  bool enabled_ = false;
  // A deque keeps the references Add hands out valid as columns are added.
  std::deque<DataColumn> columns_;
  std::vector<LaidOut> laid_out_;
};

}  // namespace trellin::host
