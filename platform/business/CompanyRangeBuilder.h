#pragma once
// Conditions from the text of list parameters, with literals for the company database.

#include <string>

#include "core/host/BusinessLayer.h"

namespace trellin::business {

// The data types BuildRangeCondition takes.
inline constexpr int kTextDataType = 8;
inline constexpr int kNumberDataType = 3;

// Reads the text with ParseRangeText. Single codes become `Field='A'`, or together
// `Field IN ('A','B')` (first, in the order given, repeats dropped); each range becomes
// `(Field>='A100' AND Field<='A199')`, an open one `Field>='A100'` or `Field<='A199'`; the
// parts are joined with " OR ". Text that holds no code gives "". With data type 3 every code
// must be a number and is placed as one. Throws std::invalid_argument, naming the bad item, for
// text that does not read, a code that is not a number, a range that runs backwards, or a data
// type other than 8 and 3.
class CompanyRangeBuilder : public RangeBuilder {
 public:
  [[nodiscard]] std::string BuildRangeCondition(const std::string& field, const std::string& value,
                                                int data_type) override;
};

}  // namespace trellin::business
