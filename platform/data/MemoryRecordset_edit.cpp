// Editing a MemoryRecordset: fields appended, rows added, values written, rows deleted.
#include "platform/data/MemoryRecordset.h"

namespace trellin::data {

namespace {

using Convert = Variant (*)(const Variant&);

// One conversion per field type, in the order of FieldType: a value written to a field is kept
// as the field's type, so that reads, sorts and criteria see one kind per field.
constexpr Convert kConversions[] = {
    [](const Variant& v) { return Variant(v.ToString()); },
    [](const Variant& v) { return Variant(v.ToLong()); },
    [](const Variant& v) { return Variant(v.ToDouble()); },
    [](const Variant& v) { return Variant(v.ToCurrency()); },
    [](const Variant& v) { return Variant(v.ToDate()); },
    [](const Variant& v) { return Variant(v.ToBool()); },
};

constexpr const char* kTypeNames[] = {"Text", "Long", "Double", "Currency", "Date", "Boolean"};

Variant ToFieldType(const FieldInfo& field, const Variant& value) {
  if (value.IsNull() || value.IsEmpty()) return Variant::Null();
  Variant converted;
  try {
    converted = kConversions[static_cast<int>(field.type)](value);
  } catch (const std::exception& e) {
    throw RecordsetError("cannot store '" + value.Text() + "' in the " +
                         kTypeNames[static_cast<int>(field.type)] + " field '" + field.name +
                         "': " + e.what());
  }
  if (field.type == FieldType::Text && field.size > 0) {
    const std::string& text = *converted.Get<std::string>();
    if (text.size() > static_cast<std::size_t>(field.size)) {
      throw RecordsetError("cannot store '" + text + "' in the field '" + field.name +
                           "': it is longer than the field's " + std::to_string(field.size) +
                           " characters");
    }
  }
  return converted;
}

}  // namespace

void MemoryRecordset::RequireUpdatable(const char* action) const {
  if (!updatable_) {
    throw RecordsetError(std::string(action) + " is not available: the recordset is read-only");
  }
}

void MemoryRecordset::AppendField(std::string_view name, FieldType type, int size) {
  RequireUpdatable("Fields.Append");
  if (name.empty()) throw RecordsetError("Fields.Append: a field needs a name");
  if (FieldIndex(name) >= 0) {
    throw RecordsetError("Fields.Append: the recordset already has a field named '" +
                         std::string(name) + "'");
  }
  Commit();
  fields_.push_back(FieldInfo{std::string(name), type, size});
  for (Row& row : rows_) row.push_back(Variant::Null());
}

void MemoryRecordset::AddNew() {
  RequireUpdatable("AddNew");
  if (fields_.empty()) throw RecordsetError("AddNew: the recordset has no fields");
  Commit();
  before_add_ = position_;
  rows_.emplace_back(fields_.size(), Variant::Null());
  deleted_.push_back(false);
  view_.push_back(rows_.size() - 1);
  ++visible_count_;
  position_ = End() - 1;
  edit_ = rows_.back();
  adding_ = true;
}

void MemoryRecordset::SetValue(int index, const Variant& value) {
  RequireUpdatable("Writing a field");
  const FieldInfo& field = Field(index);
  std::size_t row = CurrentRow("writing", field.name);
  Variant converted = ToFieldType(field, value);
  if (!edit_) edit_ = rows_[row];
  (*edit_)[index] = std::move(converted);
}

void MemoryRecordset::Update() {
  RequireUpdatable("Update");
  Commit();
}

void MemoryRecordset::Commit() {
  if (edit_) rows_[view_[position_]] = std::move(*edit_);
  edit_.reset();
  adding_ = false;
}

void MemoryRecordset::CancelUpdate() {
  RequireUpdatable("CancelUpdate");
  if (adding_) {
    // The new row is the last one read or added; taking it away leaves the others as they were.
    rows_.pop_back();
    deleted_.pop_back();
    view_.erase(view_.begin() + position_);
    --visible_count_;
    position_ = before_add_;
  }
  edit_.reset();
  adding_ = false;
}

void MemoryRecordset::Delete() {
  RequireUpdatable("Delete");
  std::size_t row = CurrentRow("Delete");
  edit_.reset();
  adding_ = false;
  deleted_[row] = true;
  --visible_count_;
}

}  // namespace trellin::data
