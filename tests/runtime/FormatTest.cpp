#include "platform/runtime/Format.h"

#include <gtest/gtest.h>

#include <limits>

namespace trellin {
namespace {

Variant MoneyValue(const char* text) { return Variant(*Currency::Parse(text)); }

struct Case {
  Variant value;
  std::string mask;
  std::string expected;
};

void ExpectAll(const std::vector<Case>& cases) {
  for (const Case& c : cases) {
    EXPECT_EQ(Format(c.value, c.mask), c.expected)
        << "Format(" << c.value.Text() << ", \"" << c.mask << "\")";
  }
}

TEST(FormatTest, NumberMasksOfTheReports) {
  ExpectAll({
      {Variant(1234567.89), "#,###,##0;(#,###,##0)", "1,234,568"},
      {Variant(-1234567.5), "#,###,##0;(#,###,##0)", "(1,234,568)"},
      {Variant(999.5), "#,###,##0;(#,###,##0)", "1,000"},
      {Variant(0), "#,###,##0;(#,###,##0)", "0"},
      {Variant(-0.4), "#,###,##0;(#,###,##0)", "0"},
      {Variant(0.4), "#,###,##0;(#,###,##0)", "0"},
      {Variant(-0.5), "#,###,##0;(#,###,##0)", "(1)"},
      {Variant(std::int64_t{1234567890123}), "#,###,##0;(#,###,##0)", "1,234,567,890,123"},
      {MoneyValue("-499.99"), "#,###,###,##0;(#,###,###,##0)", "(500)"},
      {Variant(12.345), "##,##0.0;(###,##0.0)", "12.3"},
      {Variant(-12.35), "##,##0.0;(###,##0.0)", "(12.4)"},
      {Variant(-123456.78), "##,##0.0;(###,##0.0)", "(123,456.8)"},
      {Variant(-0.04), "##,##0.0;(###,##0.0)", "0.0"},
      {Variant(2.675), "#0.00", "2.68"},
      {Variant(-1.005), "#0.00", "-1.01"},
      {Variant(0), "#0.00", "0.00"},
      {Variant(1234.5), "#0.00", "1234.50"},
      {Variant(0.3), "#0.00;(#0.00)", "0.30"},
      {Variant(-0.3), "#0.00;(#0.00)", "(0.30)"},
      {Variant(-0.004), "0.00;(0.00)", "0.00"},
      {Variant(0.1234), "0.00%", "12.34%"},
      {Variant(0.123456), "0.00%", "12.35%"},
      {Variant(-0.5), "0.00%", "-50.00%"},
      {Variant(0.25), "##0.0%", "25.0%"},
      {Variant(0.0005), "##0.0%", "0.1%"},
      {Variant(-0.0004), "##0.0%", "0.0%"},
      {Variant(7), "0000", "0007"},
      {Variant(12345), "0000", "12345"},
      {Variant(-7), "0000", "-0007"},
      {Variant(1234567), "#,###,##0", "1,234,567"},
  });
}

TEST(FormatTest, MoneyMaskAndNamedFormats) {
  ExpectAll({
      {MoneyValue("1234.5"), "$#,##0.00;($#,##0.00)", "$1,234.50"},
      {MoneyValue("-1234.5"), "$#,##0.00;($#,##0.00)", "($1,234.50)"},
      {MoneyValue("0"), "$#,##0.00;($#,##0.00)", "$0.00"},
      {MoneyValue("-0.004"), "$#,##0.00;($#,##0.00)", "$0.00"},
      {MoneyValue("0.005"), "$#,##0.00;($#,##0.00)", "$0.01"},
      {MoneyValue("-0.005"), "$#,##0.00;($#,##0.00)", "($0.01)"},
      {Variant(Currency::FromRaw(std::numeric_limits<std::int64_t>::max())), "Currency",
       "$922,337,203,685,477.58"},
      {MoneyValue("-1234567.891"), "Currency", "($1,234,567.89)"},
      {MoneyValue("1234.5"), "currency", "$1,234.50"},
      {Variant(0.5), "Percent", "50.00%"},
      {Variant(1234.567), "Fixed", "1234.57"},
      {Variant(-1234.567), "Standard", "-1,234.57"},
      {Variant(1234.5), "Scientific", "1.23E+03"},
      {Variant(0.000123), "Scientific", "1.23E-04"},
      {Variant(9.999), "Scientific", "1.00E+01"},
      {Variant(0.1 + 0.2), "General Number", "0.3"},
      {MoneyValue("12.5"), "General Number", "12.5"},
      {Variant(1234567), "General Number", "1234567"},
      {Variant(true), "Yes/No", "Yes"},
      {Variant(false), "Yes/No", "No"},
      {Variant(false), "True/False", "False"},
  });
}

TEST(FormatTest, ZeroNegativeAndNullSections) {
  ExpectAll({
      // A Currency zero prints with the positive section, unsigned.
      {MoneyValue("0"), "#,###,##0;(#,###,##0)", "0"},
      {MoneyValue("-0.0001"), "#,##0.00;(#,##0.00)", "0.00"},
      {Variant(0), "0;(0);\\-", "-"},
      {Variant(-0.2), "0;(0);\"nil\"", "nil"},
      {Variant(0.004), "0.00;(0.00);\"zero\"", "zero"},
      {Variant(0.005), "0.00;(0.00);\"zero\"", "0.01"},
      {Variant::Null(), "0;-0;\\Z\\e\\r\\o;\\N\\u\\l\\l", "Null"},
      {Variant::Null(), "#,##0", ""},
      {Variant::Null(), "Currency", ""},
      {Variant(), "#,##0", ""},
      // An empty negative section falls back to the positive one with a minus.
      {Variant(-5), "0.00;;\"zero\"", "-5.00"},
      {Variant(0), "0.00;;\"zero\"", "zero"},
  });
}

TEST(FormatTest, PlaceholdersLiteralsAndText) {
  ExpectAll({
      {Variant(5), "0.00\" each\"", "5.00 each"},
      {Variant(5), "\\$0", "$5"},
      {Variant(1234567), "#,##0,", "1,235"},
      {Variant(1.5), "0.0#", "1.5"},
      {Variant(1.25), "0.0#", "1.25"},
      {Variant(1), "0.0#", "1.0"},
      {Variant(0.5), "#.##", ".5"},
      {Variant(5.25), ".00", "5.25"},
      {Variant(1234), "000-000", "001-234"},
      {Variant(1e20), "#,##0", "100,000,000,000,000,000,000"},
      {Variant(1.5), "0." + std::string(80, '0'), "1.5" + std::string(79, '0')},
      {Variant(0.000001), "#,##0.00", "0.00"},
      {Variant("abc"), "#,##0.00", "abc"},
      {Variant("1234.5"), "#,##0.00", "1,234.50"},
      {Variant("(12)"), "0;(0)", "(12)"},
      {Variant(true), "0", "-1"},
      {MoneyValue("12.345"), "Round", "12.345"},
      {MoneyValue("12.345"), "ROUND", "12.345"},
      {Variant(1.5), "(auto)", "1.5"},
      {Variant("x"), "", "x"},
      {Variant::Null(), "Round", ""},
  });
  EXPECT_TRUE(FormatMask::Get("Round")->IsPassThrough());
  EXPECT_TRUE(FormatMask::Get("(auto)")->IsPassThrough());
  EXPECT_TRUE(FormatMask::Get("")->IsPassThrough());
  EXPECT_FALSE(FormatMask::Get("Currency")->IsPassThrough());
}

TEST(FormatTest, DateMasks) {
  const Variant day = Variant(Date::FromYmdHms(2024, 3, 5, 14, 5, 9));  // a Tuesday
  const Variant midnight = Variant(Date::FromYmd(2024, 12, 25));
  const Variant noon = Variant(Date::FromYmdHms(2024, 12, 25, 12, 0, 0));
  ExpectAll({
      {day, "mmmyy", "Mar24"},
      {day, "dmmmyy", "5Mar24"},
      {day, "mmm yyyy", "Mar 2024"},
      {day, "m/yy", "3/24"},
      {day, "d/m/yyyy", "5/3/2024"},
      {day, "d mmmm yyyy", "5 March 2024"},
      {day, "yyyymmdd", "20240305"},
      {day, "m/d/yyyy", "3/5/2024"},
      {day, "h:nnam/pm", "2:05pm"},
      {midnight, "h:nnam/pm", "12:00am"},
      {noon, "h:nnam/pm", "12:00pm"},
      {day, "dd/mm/yyyy", "05/03/2024"},
      {day, "DD/MM/YYYY", "05/03/2024"},
      {day, "ddd d mmm", "Tue 5 Mar"},
      {day, "dddd", "Tuesday"},
      {day, "mmmm", "March"},
      {day, "hh:mm:ss", "14:05:09"},
      {day, "mm:ss", "05:09"},
      {day, "h:mm AM/PM", "2:05 PM"},
      {day, "hA/P", "2P"},
      {midnight, "yy", "24"},
      {day, "\"Q\"q yyyy", "Q1 2024"},
      {day, "Short Date", "05/03/2024"},
      {day, "Long Date", "5 March 2024"},
      {day, "General Date", "05/03/2024 2:05:09 pm"},
      {day, "0.00", "45356.59"},
      {Variant(45356), "d/m/yyyy", "5/3/2024"},
      {Variant("5/3/2024"), "d mmmm yyyy", "5 March 2024"},
      {Variant("EOM"), "d mmmm yyyy", "EOM"},
      {Variant::Null(), "d/m/yyyy", ""},
      {Variant(Date::FromYmd(2000, 1, 9)), "yyyy-mm-dd", "2000-01-09"},
  });
}

TEST(FormatTest, CompiledMasksAreSharedAndReported) {
  auto first = FormatMask::Get("#,##0.00");
  auto second = FormatMask::Get("#,##0.00");
  EXPECT_EQ(first.get(), second.get());
  EXPECT_EQ(first->Mask(), "#,##0.00");
  EXPECT_EQ(first->Apply(MoneyValue("-1")), "-1.00");
  // Alternating masks through Format must not mix them up.
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(Format(Variant(1), "0.0"), "1.0");
    EXPECT_EQ(Format(Variant(1), "0.00"), "1.00");
  }
  EXPECT_THROW((void)Format(Variant(std::make_shared<Object>()), "0"), TypeMismatch);
}

}  // namespace
}  // namespace trellin
