#include "platform/runtime/Variant.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/support/CaseFile.h"

namespace trellin {
namespace {

using testing::ParseValue;

// The operation of one row of variant.tsv on its operands.
Variant Apply(const std::string& op, const std::vector<Variant>& v) {
  if (op == "text") return Variant(v[0].ToString());
  if (op == "plain") return Variant(v[0].Text());
  if (op == "double") return Variant(v[0].ToDouble());
  if (op == "money") return Variant(v[0].ToCurrency());
  if (op == "date") return Variant(v[0].ToDate());
  if (op == "bool") return Variant(v[0].ToBool());
  if (op == "long") return Variant(v[0].ToLong());
  if (op == "add") return Add(v[0], v[1]);
  if (op == "sub") return Subtract(v[0], v[1]);
  if (op == "mul") return Multiply(v[0], v[1]);
  if (op == "div") return Divide(v[0], v[1]);
  if (op == "neg") return Negate(v[0]);
  if (op == "nz") return v[0].NullToZero();
  if (op == "concat") return Concat(v[0], v[1]);
  if (op == "compare" || op == "compare_ic") {
    const std::optional<int> order = Compare(v[0], v[1], op == "compare_ic");
    return order ? Variant(std::int64_t{*order}) : Variant::Null();
  }
  if (op == "equal" || op == "equal_ic") return Variant(ValuesEqual(v[0], v[1], op == "equal_ic"));
  throw std::logic_error("no operation " + op);
}

// variant.tsv: the operation, its typed operands, the typed result or "!Kind: message".
TEST(VariantTest, ConversionsArithmeticAndComparisonAsListed) {
  const auto rows = testing::ReadCases("runtime/variant.tsv", 3);
  ASSERT_GT(rows.size(), 100u);
  for (const testing::CaseRow& row : rows) {
    const std::string& expected = row.fields.back();
    std::vector<Variant> operands;
    for (std::size_t i = 1; i + 1 < row.fields.size(); ++i) {
      operands.push_back(ParseValue(row.fields[i]));
    }
    std::string raised;
    try {
      const Variant result = Apply(row.fields[0], operands);
      if (expected.starts_with("!")) {
        ADD_FAILURE() << row.Where() << ": no error but " << result.Text();
      } else {
        EXPECT_EQ(result, ParseValue(expected)) << row.Where() << ": " << result.Text();
      }
      continue;
    } catch (const TypeMismatch& e) {
      raised = std::string("!TypeMismatch: ") + e.what();
    } catch (const std::domain_error& e) {
      raised = std::string("!domain_error: ") + e.what();
    }
    // "!Kind" alone stands for any message of that kind.
    EXPECT_EQ(raised.substr(0, expected.size()), expected) << row.Where() << ": " << raised;
  }
}

TEST(VariantTest, WhatTheTableCannotSay) {
  // Serial dates before the calendar's first day, and a fraction a hair under a whole day.
  EXPECT_EQ(Variant(-1.5).ToDate(), Date::FromSerial(-2, 43200));
  EXPECT_EQ(Variant(Date::FromSerial(-2, 43200).ToDouble()).ToDate(), Date::FromSerial(-2, 43200));
  EXPECT_EQ(Variant(0.99999999).ToDate(), Date::FromSerial(1));
  EXPECT_THROW((void)Variant(std::make_shared<Object>()).ToString(), TypeMismatch);
  // Equality of values is kind and all; Null equals Null as a value, never in a comparison.
  EXPECT_TRUE(Variant::Null() == Variant::Null());
  EXPECT_FALSE(Variant(1) == Variant(1.0));
}

}  // namespace
}  // namespace trellin
