#pragma once
// The columns of a column-driven report: the user picks and orders them, and the layout of
// heading labels, detail fields and footer totals is built at run time.

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/Variant.h"

namespace trellin {

class TLReport;
class Fields;

struct DataColumn {
  std::string Name;
  std::string DataField;
  int DataType = 0;  // 0 text, 6 the record's code column; other kinds as the report gives them
  std::string Caption;
  std::string ShortCaption;
  float Width = -1;         // twips; -1 automatic
  float MinimumWidth = -1;  // twips; -1 none
  int Visibility =
      -1;  // the picker's code as the report passes it (0 the code column); laid out either way
  std::string Format;        // "(auto)", "Round" or a mask
  int Decimals = 0;          // decimal places of "Round"
  bool Hidden = false;       // not laid out
  bool Totalled = false;     // summed in group footers and the report footer
  std::string GroupCaption;  // caption over a group of columns
  bool MultiLine = false;    // a text column whose field grows to hold several lines
};

class DataColumns {
 public:
  virtual ~DataColumns() = default;
  virtual void Initialise(TLReport& host) = 0;
  virtual void SetEnabled(bool enabled) = 0;
  [[nodiscard]] virtual bool Enabled() const = 0;
  // The arguments as the report code passes them; returns the new column.
  virtual DataColumn& Add(const std::string& name, const std::string& data_field, int data_type,
                          const std::string& caption, const std::string& short_caption, float width,
                          float minimum_width, int reserved1, int visibility,
                          const std::string& format, int decimals, int decimals2,
                          const std::string& reserved2, bool reserved3,
                          const std::string& group_caption, bool totalled, bool reserved4) = 0;
  [[nodiscard]] virtual std::size_t Count() const = 0;
  [[nodiscard]] virtual bool Exists(std::string_view name) const = 0;
  [[nodiscard]] virtual DataColumn& Item(std::string_view name) = 0;
  // Lays out heading labels and detail fields for the picked columns from `top` across the
  // print width, and a summary field for each totalled column in each group footer and the
  // report footer, named section name + "Summary" + column name.
  virtual void CreateFields(float top, int reserved1, int spacing, int reserved2, bool reserved3,
                            int reserved4, float heading_font_size, float body_font_size) = 0;
  // Copies the current row's fields to the column controls, honouring "Round" with its decimals.
  virtual void FillRow(Fields& fields, const std::string& reserved) = 0;
};

}  // namespace trellin
