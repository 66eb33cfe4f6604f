#include <gtest/gtest.h>

#include "platform/engine/Expression.h"

namespace trellin::engine {
namespace {

TEST(Expression, EvaluatesTextNumbersFieldsAndThePage) {
  Fields fields;
  fields.Add("Name").SetValue(Variant("Acme"));
  fields.Add("Count").SetValue(Variant(std::int64_t{4}));
  fields.Add("Missing").SetValue(Variant::Null());
  struct Case {
    const char* text;
    const char* expected;
    bool uses_page;
  } cases[] = {
      {"=\"Page \" & rpt.PageNumber", "Page 7", true},
      {"= \"Page \" & PageNumber & \" of it\"", "Page 7 of it", true},
      {"=Name & \" (\" & Count + 1 & \")\"", "Acme (5)", false},
      {"=\"a\" + \"b\"", "ab", false},
      {"=Count - 10", "-6", false},
      {"=\"x\" & Missing & \"y\"", "xy", false},
      {"=\"say \"\"hi\"\"\"", "say \"hi\"", false},
      {"=([Count] + 2) & \"\"", "6", false},
      {"=1.5 + 1", "2.5", false},
  };
  for (const auto& c : cases) {
    auto e = Expression::Compile(c.text);
    EXPECT_EQ(e->Evaluate(ExpressionScope{&fields, 7}).Text(), c.expected) << c.text;
    EXPECT_EQ(e->UsesPage(), c.uses_page) << c.text;
  }
}

TEST(Expression, ErrorsSayWhatAndWhere) {
  struct Case {
    const char* text;
    const char* message;
  } cases[] = {
      {"=\"open", "expression '\"open', at 6: text not closed with '\"'"},
      {"=1 +", "expression '1 +', at 4: a value is missing"},
      {"=(1", "expression '(1', at 3: ')' expected"},
      {"=rpt.PageCount", "expression 'rpt.PageCount', at 14: unknown name 'rpt.PageCount'"},
      {"=1 2", "expression '1 2', at 3: unexpected '2'"},
  };
  for (const auto& c : cases) {
    try {
      (void)Expression::Compile(c.text);
      ADD_FAILURE() << "compiled: " << c.text;
    } catch (const ExpressionError& e) {
      EXPECT_STREQ(e.what(), c.message);
    }
  }
  Fields fields;
  auto unknown = Expression::Compile("=Nobody & \"\"");
  EXPECT_THROW((void)unknown->Evaluate(ExpressionScope{&fields, 1}), ExpressionError);
}

}  // namespace
}  // namespace trellin::engine
