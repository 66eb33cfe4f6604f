// The column collection and the user's pick of columns.

#include "platform/host/ColumnLayout.h"

#include <algorithm>
#include <stdexcept>

#include "core/host/TLReport.h"
#include "platform/host/ParameterDialogue.h"
#include "platform/runtime/Strings.h"

namespace trellin::host {

namespace {

// Indexed by the DataType code.
constexpr ColumnKind kKinds[] = {
    ColumnKind::Text,     // 0
    ColumnKind::Number,   // 1
    ColumnKind::Date,     // 2
    ColumnKind::Number,   // 3
    ColumnKind::Money,    // 4
    ColumnKind::Boolean,  // 5
    ColumnKind::Code,     // 6
};

}  // namespace

ColumnKind KindOfDataType(int data_type) {
  if (data_type < 0 || data_type >= static_cast<int>(std::size(kKinds))) return ColumnKind::Text;
  return kKinds[data_type];
}

std::string HeadingName(const DataColumn& column) { return "lbl" + column.Name; }
std::string DetailName(const DataColumn& column) { return "txt" + column.Name; }
std::string SummaryName(const Section& section, const DataColumn& column) {
  return section.Name() + "Summary" + column.Name;
}

ColumnLayout::ColumnLayout(std::shared_ptr<BusinessLayer> business_layer)
    : business_layer_(std::move(business_layer)) {}

void ColumnLayout::Initialise(TLReport& host) {
  host_ = &host;
  if (!enabled_ || host.Parameters().Exists(kColumnsParameter)) return;
  host.Parameters().AddString(std::string(kColumnsParameter), Variant(""), false,
                              "Columns to print, in order (blank for all)", Variant(""), false,
                              std::string(kColumnsParameter));
}

DataColumn& ColumnLayout::Add(const std::string& name, const std::string& data_field, int data_type,
                              const std::string& caption, const std::string& short_caption,
                              float width, float minimum_width, int, int visibility,
                              const std::string& format, int decimals, int, const std::string&,
                              bool, const std::string& group_caption, bool totalled,
                              bool reserved4) {
  DataColumn column;
  column.Name = name;
  column.DataField = data_field.empty() ? name : data_field;
  column.DataType = data_type;
  column.Caption = caption;
  column.ShortCaption = short_caption;
  column.Width = width;
  column.MinimumWidth = minimum_width;
  column.Visibility = visibility;
  column.Format = format;
  column.Decimals = decimals;
  // The visibility code says how the column behaves in the column picker (0 marks the record's
  // code, which always prints); every code lays the column out. A report hides a column by
  // setting Hidden itself, and parameters show it again.
  column.Hidden = false;
  column.Totalled = totalled;
  column.GroupCaption = group_caption;
  column.MultiLine = reserved4;

  auto found = std::find_if(columns_.begin(), columns_.end(), [&](const DataColumn& existing) {
    return EqualsIgnoreCase(existing.Name, name);
  });
  if (found != columns_.end()) {
    *found = std::move(column);
    return *found;
  }
  columns_.push_back(std::move(column));
  return columns_.back();
}

bool ColumnLayout::Exists(std::string_view name) const {
  return std::any_of(columns_.begin(), columns_.end(),
                     [&](const DataColumn& column) { return EqualsIgnoreCase(column.Name, name); });
}

DataColumn& ColumnLayout::Item(std::string_view name) {
  for (DataColumn& column : columns_) {
    if (EqualsIgnoreCase(column.Name, name)) return column;
  }
  throw NoSuchItem("The report has no column named \"" + std::string(name) + "\".");
}

std::vector<DataColumn*> ColumnLayout::PickedColumns() {
  std::string pick;
  if (host_ != nullptr)
    pick = Trim(host_->Parameters().Value(kColumnsParameter, Variant("")).Text());
  std::vector<DataColumn*> picked;
  if (pick.empty()) {
    for (DataColumn& column : columns_) {
      if (!column.Hidden) picked.push_back(&column);
    }
    return picked;
  }
  // A column the user names prints even when the report added it hidden: hidden columns are the
  // optional ones, and naming one is asking for it.
  for (const std::string& item : Split(pick, ",")) {
    std::string name = Trim(item);
    if (name.empty()) continue;
    auto found = std::find_if(columns_.begin(), columns_.end(), [&](const DataColumn& column) {
      return EqualsIgnoreCase(column.Name, name) || EqualsIgnoreCase(column.Caption, name);
    });
    if (found == columns_.end()) {
      std::vector<std::string> names;
      for (const DataColumn& column : columns_) names.push_back(column.Name);
      // The user's pick, found wrong only once the report has declared its columns: an input
      // error, which ends the run before anything prints.
      throw ParameterError("Columns: \"" + name + "\" is not a column of this report (" +
                           Join(names, ", ") + ").");
    }
    if (std::find(picked.begin(), picked.end(), &*found) == picked.end()) {
      picked.push_back(&*found);
    }
  }
  return picked;
}

ActiveReport& ColumnLayout::Designer() const {
  std::shared_ptr<ActiveReport> designer = host_ ? host_->arReport() : nullptr;
  if (!designer) throw std::logic_error("The columns are not tied to a report.");
  return *designer;
}

}  // namespace trellin::host
