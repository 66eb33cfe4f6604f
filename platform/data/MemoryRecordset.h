#pragma once
// A recordset whose rows are all held in memory: query results (read-only), client-side
// recordsets built by appending fields, and disconnected updatable copies.

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/host/Recordset.h"
#include "platform/data/Criteria.h"
#include "platform/data/SortKeys.h"

namespace trellin::data {

class MemoryRecordset : public Recordset {
 public:
  using Row = std::vector<Variant>;

  // An empty, updatable client-side recordset with no fields yet.
  MemoryRecordset() : updatable_(true) {}
  // Rows read or copied from elsewhere; every row has one value per field, of the field's type
  // or Null.
  MemoryRecordset(std::vector<FieldInfo> fields, std::vector<Row> rows, bool updatable);

  bool Eof() const override;
  bool Bof() const override;
  void MoveFirst() override;
  void MoveNext() override;
  void MovePrevious() override;
  void MoveLast() override;
  std::int64_t RecordCount() const override { return visible_count_; }

  int FieldCount() const override { return static_cast<int>(fields_.size()); }
  const FieldInfo& Field(int index) const override;
  int FieldIndex(std::string_view name) const override { return FindField(fields_, name); }
  using Recordset::Value;
  const Variant& Value(int index) const override;

  void Find(std::string_view criteria) override;
  void Filter(std::string_view criteria) override;
  void Sort(std::string_view keys) override;
  std::string CurrentFilter() const override { return filter_ ? filter_->Text() : ""; }
  std::string CurrentSort() const override { return sort_text_; }

  bool Updatable() const override { return updatable_; }
  void AppendField(std::string_view name, FieldType type, int size = 0) override;
  void AddNew() override;
  using Recordset::SetValue;
  void SetValue(int index, const Variant& value) override;
  void Update() override;
  void CancelUpdate() override;
  void Delete() override;
  std::shared_ptr<Recordset> Disconnect() override;

 private:
  // Position in view_: -1 is BOF, view_.size() is EOF.
  using Position = std::ptrdiff_t;

  [[nodiscard]] bool Visible(Position p) const;
  [[nodiscard]] Position End() const { return static_cast<Position>(view_.size()); }
  // Row index under the cursor; throws RecordsetError, saying "<action> <field>", when there is
  // no current row.
  [[nodiscard]] std::size_t CurrentRow(std::string_view action, std::string_view field = {}) const;
  void RequireUpdatable(const char* action) const;
  // Keeps a pending edit before the cursor moves or the view changes.
  void Commit();
  // Rebuilds the view from every live row through the filter and sort; cursor to the first.
  void Rebuild();

  std::vector<FieldInfo> fields_;
  std::vector<Row> rows_;
  std::vector<bool> deleted_;
  std::vector<std::size_t> view_;
  Position position_ = 0;
  std::int64_t visible_count_ = 0;
  std::optional<Criteria> filter_;
  std::vector<SortKey> sort_keys_;
  std::string sort_text_;
  std::optional<Criteria> last_find_;  // Find is called row after row with new text; cached
  bool updatable_;
  std::optional<Row> edit_;  // the current row's pending values
  bool adding_ = false;      // edit_ belongs to a row AddNew made
  Position before_add_ = 0;  // where the cursor was before AddNew
};

// A new empty client-side recordset.
[[nodiscard]] std::shared_ptr<Recordset> NewClientRecordset();

}  // namespace trellin::data
