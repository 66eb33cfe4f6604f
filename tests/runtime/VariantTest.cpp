#include "platform/runtime/Variant.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

namespace trellin {
namespace {

Currency Money(const char* text) { return *Currency::Parse(text); }

TEST(VariantTest, ToStringSpellsEachKind) {
  struct Case {
    Variant value;
    const char* text;
  } cases[] = {
      {Variant(), ""},
      {Variant(true), "True"},
      {Variant(false), "False"},
      {Variant(-42), "-42"},
      {Variant(0.1 + 0.2), "0.3"},
      {Variant(1.5), "1.5"},
      {Variant(-0.0), "0"},
      {Variant(1e20), "1E+20"},
      {Variant(0.00001), "1E-05"},
      {Variant(Money("1234.5")), "1234.5"},
      {Variant(Date::FromYmd(2024, 3, 5)), "05/03/2024"},
      {Variant(Date::FromYmdHms(2024, 3, 5, 14, 5, 9)), "05/03/2024 2:05:09 pm"},
      {Variant(Date::FromYmdHms(2024, 3, 5, 0, 0, 1)), "05/03/2024 12:00:01 am"},
      {Variant(Date::FromYmdHms(2024, 3, 5, 12, 30, 0)), "05/03/2024 12:30:00 pm"},
      {Variant("text"), "text"},
  };
  for (const Case& c : cases) EXPECT_EQ(c.value.ToString(), c.text);
  EXPECT_THROW((void)Variant::Null().ToString(), TypeMismatch);
  EXPECT_EQ(Variant::Null().Text(), "");
  EXPECT_EQ(Variant::Missing().Text(), "");
}

TEST(VariantTest, ConversionsOfTextAndNumbers) {
  EXPECT_EQ(Variant("1,234.5").ToDouble(), 1234.5);
  EXPECT_EQ(Variant("0.1").ToCurrency().Raw(), 1000);
  EXPECT_EQ(Variant(2.675).ToCurrency().Raw(), 26750);
  EXPECT_EQ(Variant("5/03/2024").ToDate(), Date::FromYmd(2024, 3, 5));
  EXPECT_EQ(Variant(45356.5).ToDate(), Date::FromYmdHms(2024, 3, 5, 12, 0, 0));
  EXPECT_EQ(Variant(-1.5).ToDate(), Date::FromSerial(-2, 43200));
  EXPECT_EQ(Variant(Date::FromSerial(-2, 43200).ToDouble()).ToDate(), Date::FromSerial(-2, 43200));
  EXPECT_EQ(Variant(0.99999999).ToDate(), Date::FromSerial(1));
  EXPECT_TRUE(Variant("true").ToBool());
  EXPECT_FALSE(Variant("False").ToBool());
  EXPECT_TRUE(Variant("-1").ToBool());
  EXPECT_EQ(Variant(true).ToLong(), -1);
  EXPECT_EQ(Variant().ToLong(), 0);
  EXPECT_EQ(Variant().ToString(), "");

  struct Rounding {
    Variant value;
    std::int64_t expected;
  } longs[] = {
      {Variant(2.5), 2},
      {Variant(3.5), 4},
      {Variant(-2.5), -2},
      {Variant(2.6), 3},
      {Variant(Money("2.5")), 2},
      {Variant(Money("3.5")), 4},
      {Variant(Money("-3.5")), -4},
      {Variant(Money("-2.5001")), -3},
      {Variant("7.5"), 8},
  };
  for (const Rounding& r : longs) EXPECT_EQ(r.value.ToLong(), r.expected) << r.value.ToString();

  for (const Variant& bad : {Variant::Null(), Variant::Missing(), Variant("abc"), Variant(1e30)}) {
    EXPECT_THROW((void)bad.ToLong(), TypeMismatch) << bad.Text();
  }
  EXPECT_THROW((void)Variant("31/12/2030+1D").ToDate(), TypeMismatch);
  EXPECT_THROW((void)Variant(2958466).ToDate(), TypeMismatch);
  EXPECT_EQ(Variant(2958465).ToDate(), Date::FromYmd(9999, 12, 31));
  EXPECT_THROW((void)Variant(1e300).ToCurrency(), TypeMismatch);
  EXPECT_THROW((void)Variant("maybe").ToBool(), TypeMismatch);
  EXPECT_THROW((void)Variant(std::make_shared<Object>()).ToString(), TypeMismatch);
}

TEST(VariantTest, NullPropagatesThroughArithmeticAndCountsAsZeroInSums) {
  const Variant null = Variant::Null();
  for (auto op : {Add, Subtract, Multiply, Divide}) {
    EXPECT_TRUE(op(null, Variant(1)).IsNull());
    EXPECT_TRUE(op(Variant(1), null).IsNull());
  }
  EXPECT_TRUE(Negate(null).IsNull());
  EXPECT_EQ(Add(null.NullToZero(), Variant(Money("5"))), Variant(Money("5")));
  EXPECT_EQ(Variant().NullToZero(), Variant(0));
  EXPECT_EQ(Variant(3).NullToZero(), Variant(3));
  EXPECT_EQ(Concat(null, Variant("a")), Variant("a"));
  EXPECT_EQ(Concat(Variant(1.5), Variant(true)), Variant("1.5True"));
}

TEST(VariantTest, ArithmeticKeepsTheKindTheReportCodeExpects) {
  struct Case {
    const char* what;
    Variant result;
    Variant expected;
  } cases[] = {
      {"long + long", Add(Variant(2), Variant(3)), Variant(5)},
      {"long overflow", Add(Variant(INT64_MAX), Variant(1)), Variant(9223372036854775808.0)},
      {"long * long overflow", Multiply(Variant(INT64_MAX), Variant(2)),
       Variant(18446744073709551614.0)},
      {"long + double", Add(Variant(2), Variant(0.5)), Variant(2.5)},
      {"long + currency", Add(Variant(2), Variant(Money("0.5"))), Variant(Money("2.5"))},
      {"currency + double", Add(Variant(Money("0.1")), Variant(0.2)), Variant(Money("0.3"))},
      {"currency * double", Multiply(Variant(Money("100")), Variant(0.125)),
       Variant(Money("12.5"))},
      {"currency * currency", Multiply(Variant(Money("1.5")), Variant(Money("1.5"))),
       Variant(Money("2.25"))},
      {"currency / long", Divide(Variant(Money("10")), Variant(3)), Variant(Money("3.3333"))},
      {"currency / currency", Divide(Variant(Money("1")), Variant(Money("4"))), Variant(0.25)},
      {"long / long", Divide(Variant(7), Variant(2)), Variant(3.5)},
      {"text + text", Add(Variant("a"), Variant("b")), Variant("ab")},
      {"empty + text", Add(Variant(), Variant("b")), Variant("b")},
      {"numeric text + long", Add(Variant("1.5"), Variant(1)), Variant(2.5)},
      {"empty + long", Add(Variant(), Variant(4)), Variant(4)},
      {"true + 1", Add(Variant(true), Variant(1)), Variant(0)},
      {"date + 1", Add(Variant(Date::FromYmd(2024, 2, 28)), Variant(1)),
       Variant(Date::FromYmd(2024, 2, 29))},
      {"1 + date", Add(Variant(1), Variant(Date::FromYmd(2024, 12, 31))),
       Variant(Date::FromYmd(2025, 1, 1))},
      {"date + half", Add(Variant(Date::FromYmd(2024, 3, 5)), Variant(0.5)),
       Variant(Date::FromYmdHms(2024, 3, 5, 12, 0, 0))},
      {"date - 1", Subtract(Variant(Date::FromYmd(2024, 3, 1)), Variant(1)),
       Variant(Date::FromYmd(2024, 2, 29))},
      {"date - date",
       Subtract(Variant(Date::FromYmd(2024, 3, 1)), Variant(Date::FromYmd(2024, 2, 1))),
       Variant(29.0)},
      {"negate currency", Negate(Variant(Money("1.25"))), Variant(Money("-1.25"))},
      {"negate min long", Negate(Variant(INT64_MIN)), Variant(9223372036854775808.0)},
  };
  for (const Case& c : cases) EXPECT_EQ(c.result, c.expected) << c.what << ": " << c.result.Text();

  EXPECT_THROW((void)Divide(Variant(1), Variant(0)), std::domain_error);
  EXPECT_THROW((void)Divide(Variant(Money("1")), Variant(Money("0"))), std::domain_error);
  EXPECT_THROW((void)Add(Variant("abc"), Variant(1)), TypeMismatch);
  EXPECT_THROW((void)Add(Variant(Date()), Variant(Date())), TypeMismatch);
  EXPECT_THROW((void)Multiply(Variant(Date()), Variant(2)), TypeMismatch);
  EXPECT_THROW((void)Add(Variant::Missing(), Variant(1)), TypeMismatch);
}

TEST(VariantTest, CompareAcrossKindsAndWithNull) {
  struct Case {
    Variant a;
    Variant b;
    std::optional<int> expected;
  } cases[] = {
      {Variant(1), Variant(Money("1")), 0},
      {Variant(Money("0.0001")), Variant(0), 1},
      {Variant(1), Variant(1.5), -1},
      {Variant(INT64_MAX), Variant(INT64_MAX - 1), 1},
      {Variant(true), Variant(-1), 0},
      {Variant(), Variant(0), 0},
      {Variant(), Variant(""), 0},
      {Variant("abc"), Variant("abd"), -1},
      {Variant("B"), Variant("a"), -1},
      {Variant(10), Variant("9"), 1},
      {Variant("1,000"), Variant(Money("999.99")), 1},
      {Variant(Date::FromYmd(2024, 3, 5)), Variant(Date::FromYmdHms(2024, 3, 5, 0, 0, 1)), -1},
      {Variant(Date::FromYmd(2024, 3, 5)), Variant(45356), 0},
      {Variant(Date::FromYmd(2024, 3, 5)), Variant("5/3/2024"), 0},
      {Variant::Null(), Variant(1), std::nullopt},
      {Variant(1), Variant::Null(), std::nullopt},
      {Variant::Null(), Variant::Null(), std::nullopt},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Compare(c.a, c.b), c.expected) << c.a.Text() << " vs " << c.b.Text();
  }
  EXPECT_EQ(Compare(Variant("B"), Variant("a"), true), 1);
  EXPECT_TRUE(ValuesEqual(Variant("ABC"), Variant("abc"), true));
  EXPECT_FALSE(ValuesEqual(Variant::Null(), Variant::Null()));
  EXPECT_TRUE(Variant::Null() == Variant::Null());
  EXPECT_FALSE(Variant(1) == Variant(1.0));
  EXPECT_THROW((void)Compare(Variant(1), Variant("abc")), TypeMismatch);
  EXPECT_THROW((void)Compare(Variant(Date()), Variant("EOM")), TypeMismatch);
  EXPECT_THROW((void)Compare(Variant::Missing(), Variant(1)), TypeMismatch);
}

}  // namespace
}  // namespace trellin

namespace trellin {
namespace {

std::string MessageOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const std::exception& e) {
    return e.what();
  }
  return "(no error)";
}

TEST(VariantTest, MismatchMessagesSayWhatAndWhy) {
  struct Case {
    std::function<void()> action;
    const char* message;
  } cases[] = {
      {[] { (void)Variant::Null().ToLong(); }, "Type mismatch: Null cannot become a Long"},
      {[] { (void)Variant("abc").ToDouble(); }, "Type mismatch: \"abc\" is not a number"},
      {[] { (void)Variant("EOM").ToDate(); }, "Type mismatch: \"EOM\" is not a date"},
      {[] { (void)Add(Variant("abc"), Variant(1)); }, "Type mismatch: cannot add String and Long"},
      {[] { (void)Compare(Variant(1), Variant("x")); },
       "Type mismatch: cannot compare Long with String"},
      {[] { (void)Variant(1e30).ToLong(); }, "Overflow: 1E+30 is too large for a Long"},
  };
  for (const Case& c : cases) EXPECT_EQ(MessageOf(c.action), c.message);
}

}  // namespace
}  // namespace trellin
