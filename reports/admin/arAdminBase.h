#pragma once
// The column-driven master lists: one designer for the asset categories, asset sites, asset
// types, banks, branches, customer categories, employees and job categories. The catalogue key
// picks the columns, the order choices, the filter and the query; the user picks and orders the
// columns.

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "core/Designer.h"
#include "core/host/BusinessObjects.h"

namespace trellin {

// What one key of the master lists is made of.
struct AdminKey {
  std::string_view key;            // "BankList"
  std::string_view order_choices;  // the OrderBy pick-list, "Code,Account Name"
  long standard_index;             // the standard parameter that filters the list
  std::string_view base_sql;       // the SELECT, without WHERE or ORDER BY
  std::string_view code_field;     // the key's code: the filter field and the default order
  std::string_view parent_field;   // the field of a "Parent Asset" order; "" when none
};

// The row of `key`; nullptr for a key the designer does not serve.
[[nodiscard]] const AdminKey* FindAdminKey(std::string_view key);

// The ORDER BY field of `order_by` for `row`: "Description", "Account Name" and "Name" sort by
// their fields, "Parent Asset" by the parent field where the key has one, anything else by code.
[[nodiscard]] std::string AdminSortField(const AdminKey& row, const std::string& order_by);

// The unbound fields that the rows of `key` carry, filled per row through the business objects.
[[nodiscard]] std::vector<std::string_view> AdminUnboundFields(std::string_view key);

// The texts of the unbound fields of `key` for the record `code`, one per field of
// AdminUnboundFields, fetched from `objects` (arAdminBase_details.cpp); empty texts for a code
// the business layer does not hold. Throws what the look-ups throw.
[[nodiscard]] std::vector<std::string> AdminDetailTexts(BusinessObjects& objects,
                                                        std::string_view key,
                                                        std::string_view code);

class arAdminBase : public Designer {
 public:
  arAdminBase();
  ~arAdminBase() override;

  // Adds OrderBy and the key's standard parameter. Throws std::invalid_argument for a key this
  // designer does not serve.
  void RefreshParameters(std::string& ReportName) override;
  // Adds the key's columns; the user's pick of them is the host's "Columns" parameter.
  void RefreshDataColumns() override;

  void ActiveReport_Initialize() override;
  void ActiveReport_ReportStart() override;
  void ActiveReport_DataInitialize() override;
  void ActiveReport_FetchData(bool& eof) override;
  void OnFormat(Section& section) override;
  void OnBeforePrint(Section& section) override;
  void ActiveReport_ReportEnd() override;

  // The SELECT of the run; built by the SQL routine at report start.
  [[nodiscard]] const std::string& SQL() const { return sql_; }
  // Builds the SELECT from the parameters. Needs a host whose key this designer serves; throws
  // std::invalid_argument otherwise, and what the range builder throws for a bad filter.
  void BuildSQL();

 private:
  void Detail_Format();
  void FitFurniture();
  [[nodiscard]] const AdminKey& KeyRow() const;

  std::string sql_;
  std::string filter_name_;  // the key's standard parameter, as RefreshParameters added it
  std::unique_ptr<BusinessObjects> objects_;  // from report start to report end
};

[[nodiscard]] DesignerPtr CreatearAdminBase();

}  // namespace trellin
