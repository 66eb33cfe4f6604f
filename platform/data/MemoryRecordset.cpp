#include "platform/data/MemoryRecordset.h"

#include <algorithm>
#include <numeric>

namespace trellin::data {

MemoryRecordset::MemoryRecordset(std::vector<FieldInfo> fields, std::vector<Row> rows,
                                 bool updatable)
    : fields_(std::move(fields)),
      rows_(std::move(rows)),
      deleted_(rows_.size(), false),
      updatable_(updatable) {
  view_.resize(rows_.size());
  std::iota(view_.begin(), view_.end(), std::size_t{0});
  visible_count_ = static_cast<std::int64_t>(rows_.size());
}

std::shared_ptr<Recordset> NewClientRecordset() { return std::make_shared<MemoryRecordset>(); }

bool MemoryRecordset::Visible(Position p) const {
  return p >= 0 && p < End() && !deleted_[view_[p]];
}

bool MemoryRecordset::Eof() const { return visible_count_ == 0 || position_ >= End(); }

bool MemoryRecordset::Bof() const { return visible_count_ == 0 || position_ < 0; }

void MemoryRecordset::MoveFirst() {
  Commit();
  position_ = 0;
  while (position_ < End() && !Visible(position_)) ++position_;
}

void MemoryRecordset::MoveNext() {
  if (Eof()) throw RecordsetError("MoveNext past the last row");
  Commit();
  do {
    ++position_;
  } while (position_ < End() && !Visible(position_));
}

void MemoryRecordset::MovePrevious() {
  if (Bof()) throw RecordsetError("MovePrevious before the first row");
  Commit();
  do {
    --position_;
  } while (position_ >= 0 && !Visible(position_));
}

void MemoryRecordset::MoveLast() {
  Commit();
  position_ = End() - 1;
  while (position_ >= 0 && !Visible(position_)) --position_;
  // With no rows the cursor is at both ends; report it as EOF like MoveFirst does.
  if (position_ < 0) position_ = End();
}

const FieldInfo& MemoryRecordset::Field(int index) const {
  if (index < 0 || index >= FieldCount()) {
    throw RecordsetError("no field number " + std::to_string(index) + " in the recordset");
  }
  return fields_[index];
}

std::size_t MemoryRecordset::CurrentRow(std::string_view action, std::string_view field) const {
  bool on_row = position_ >= 0 && position_ < End();
  if (on_row && !deleted_[view_[position_]]) return view_[position_];
  // The message is built only here: reads are the hot path.
  std::string what(action);
  if (!field.empty()) what += " " + std::string(field);
  if (on_row) throw RecordsetError(what + ": the current row was deleted");
  throw RecordsetError(what + ": there is no current row (" + (position_ < 0 ? "BOF" : "EOF") +
                       ")");
}

const Variant& MemoryRecordset::Value(int index) const {
  const FieldInfo& field = Field(index);
  std::size_t row = CurrentRow("reading", field.name);
  return edit_ ? (*edit_)[index] : rows_[row][index];
}

void MemoryRecordset::Find(std::string_view criteria) {
  if (!last_find_ || last_find_->Text() != criteria) {
    last_find_ = Criteria::Parse(criteria, fields_);
  }
  Commit();
  for (position_ = std::max<Position>(position_, 0); position_ < End(); ++position_) {
    if (Visible(position_) && last_find_->Matches(rows_[view_[position_]])) return;
  }
}

void MemoryRecordset::Filter(std::string_view criteria) {
  std::optional<Criteria> parsed;
  if (criteria.find_first_not_of(" \t") != std::string_view::npos) {
    parsed = Criteria::Parse(criteria, fields_);
  }
  Commit();
  std::swap(filter_, parsed);
  try {
    Rebuild();
  } catch (...) {
    // A value the criteria cannot compare: the recordset stays as it was.
    std::swap(filter_, parsed);
    Rebuild();
    throw;
  }
}

void MemoryRecordset::Sort(std::string_view keys) {
  std::vector<SortKey> parsed = ParseSortKeys(keys, fields_);
  Commit();
  sort_keys_ = std::move(parsed);
  sort_text_ = sort_keys_.empty() ? "" : std::string(keys);
  Rebuild();
}

void MemoryRecordset::Rebuild() {
  std::vector<std::size_t> view;
  for (std::size_t row = 0; row < rows_.size(); ++row) {
    if (!deleted_[row] && (!filter_ || filter_->Matches(rows_[row]))) view.push_back(row);
  }
  if (!sort_keys_.empty()) {
    // Stable, so that rows with equal keys keep the order they were read or added in.
    std::stable_sort(view.begin(), view.end(), [this](std::size_t a, std::size_t b) {
      return RowBefore(rows_[a], rows_[b], sort_keys_);
    });
  }
  view_ = std::move(view);
  visible_count_ = static_cast<std::int64_t>(view_.size());
  position_ = 0;
}

std::shared_ptr<Recordset> MemoryRecordset::Disconnect() {
  Commit();
  std::vector<Row> rows;
  rows.reserve(static_cast<std::size_t>(visible_count_));
  for (Position p = 0; p < End(); ++p) {
    if (Visible(p)) rows.push_back(rows_[view_[p]]);
  }
  return std::make_shared<MemoryRecordset>(fields_, std::move(rows), /*updatable=*/true);
}

}  // namespace trellin::data
