#include <gtest/gtest.h>

#include "core/host/Parameters.h"

namespace trellin {
namespace {

TEST(ParametersTest, AddingAnExistingNameReplacesItInItsPlace) {
  Parameters parameters;
  parameters.AddList("OrderBy", Variant("Code"), true, "", Variant("Code"), "Code,Name", true,
                     "Order by");
  parameters.AddBoolean("Summary", false, false, "", false, false, "Summary");
  parameters.AddDate("DateAsAt", Variant::Missing(), true, "Date As At", Variant("ARCURRENT"),
                     false, "Date As At");
  parameters.AddList("orderby", Variant("Name"), true, "", Variant("Code"), "Code,Name,X Ref", true,
                     "Sort");

  std::vector<std::string> names;
  for (const ParameterPtr& parameter : parameters) names.push_back(parameter->Name);
  EXPECT_EQ(names, (std::vector<std::string>{"orderby", "Summary", "DateAsAt"}));
  EXPECT_EQ(parameters.Item("OrderBy").Caption, "Sort");
  EXPECT_EQ(parameters.Item("ORDERBY").Choices, "Code,Name,X Ref");

  // Nameless parameters never stand in for one another.
  parameters.AddParameter(false, std::make_shared<Parameter>());
  parameters.AddParameter(false, std::make_shared<Parameter>());
  EXPECT_EQ(parameters.Count(), 5u);
}

TEST(ParametersTest, ValueFallsBackToTheDefaultOnlyForAbsentNames) {
  Parameters parameters;
  parameters.AddString("Message", Variant(), false, "", Variant(), true, "");
  parameters.AddNumber("OverdueFrom", Variant(), false, "", Variant(), -9999999999, false, "");
  EXPECT_TRUE(parameters.Value("Message", Variant("x")).IsEmpty());
  EXPECT_EQ(parameters.Value("Nothing", Variant("x")), Variant("x"));
  EXPECT_TRUE(parameters.Value("Nothing", Variant::Missing()).IsMissing());
  EXPECT_EQ(parameters.Value("OverdueFrom"), Variant(Currency::FromWhole(-9999999999)));

  parameters.SetValue("message", Variant("Thank you"));
  EXPECT_EQ(parameters.Value("Message"), Variant("Thank you"));
  EXPECT_THROW(parameters.SetValue("Nothing", Variant(1)), NoSuchParameter);
  try {
    (void)parameters.Item("Nothing");
    ADD_FAILURE();
  } catch (const NoSuchParameter& e) {
    EXPECT_STREQ(e.what(), "The report has no parameter named \"Nothing\".");
  }
  parameters.Remove("MESSAGE");
  parameters.Remove("Nothing");
  EXPECT_FALSE(parameters.Exists("Message"));
  EXPECT_EQ(parameters.Count(), 1u);
}

TEST(ParametersTest, ChoicesCanBeTakenOut) {
  Parameter parameter;
  parameter.Choices = "Code, Name ,X Ref,,";
  EXPECT_EQ(parameter.ChoiceList(), (std::vector<std::string>{"Code", "Name", "X Ref"}));
  parameter.RemoveChoice("name");
  EXPECT_EQ(parameter.Choices, "Code,X Ref");
  parameter.RemoveChoice("Colour");
  EXPECT_EQ(parameter.Choices, "Code,X Ref");
}

TEST(ParametersTest, ValidateNamesEachBadValue) {
  const struct {
    ParameterType kind;
    Variant value;
    const char* error;  // "" when the value is fine
  } cases[] = {
      {ParameterType::Date, Variant(Date::FromYmd(2025, 3, 31)), ""},
      {ParameterType::Date, Variant::Null(), ""},
      {ParameterType::Date, Variant::Missing(), ""},
      {ParameterType::Date, Variant("31/03/2025"), ""},
      {ParameterType::Date, Variant("31/02/2025"), "P: \"31/02/2025\" is not a date."},
      {ParameterType::Date, Variant("EOM+1D"), "P: \"EOM+1D\" is not a date."},
      {ParameterType::Boolean, Variant(true), ""},
      {ParameterType::Boolean, Variant("false"), ""},
      {ParameterType::Boolean, Variant("maybe"), "P: \"maybe\" is not True or False."},
      {ParameterType::List, Variant("name"), ""},
      {ParameterType::List, Variant(""), ""},
      {ParameterType::List, Variant("Size"), "P: \"Size\" is not one of the choices (Code, Name)."},
      {ParameterType::MultiList, Variant("Name [Page Break],Code"), ""},
      {ParameterType::MultiList, Variant("Name,Colour"),
       "P: \"Colour\" is not one of the choices (Code, Name)."},
      {ParameterType::MultiList, Variant("Name,name"), "P: \"name\" is chosen more than once."},
      {ParameterType::Number, Variant(Currency::FromWhole(5)), ""},
      {ParameterType::Number, Variant("12.5"), ""},
      {ParameterType::Number, Variant("abc"), "P: \"abc\" is not a number."},
      {ParameterType::Number, Variant(), "P: a number is needed."},
      {ParameterType::Number, Variant(10000000000.0),
       "P: 10000000000 is out of range; it must be from -9999999999 to 9999999999."},
      {ParameterType::String, Variant("anything"), ""},
      {ParameterType::SQLList, Variant("A..B"), ""},
  };
  for (const auto& c : cases) {
    Parameters parameters;
    auto parameter = std::make_shared<Parameter>();
    parameter->Name = "P";
    parameter->Kind = c.kind;
    parameter->Value = c.value;
    parameter->Choices = "Code,Name";
    if (c.kind == ParameterType::Number) {
      parameter->Minimum = Currency::FromWhole(-9999999999);
      parameter->Maximum = Currency::FromWhole(9999999999);
    }
    parameters.AddParameter(false, parameter);
    parameters.Validate("");
    std::string context = "kind " + std::to_string(parameter->Type()) + " value " + c.value.Text();
    if (std::string(c.error).empty()) {
      EXPECT_TRUE(parameters.Valid()) << context;
      EXPECT_TRUE(parameters.Errors().empty()) << context;
    } else {
      EXPECT_FALSE(parameters.Valid()) << context;
      EXPECT_EQ(parameters.Errors(), std::vector<std::string>{c.error}) << context;
    }
  }
}

TEST(ParametersTest, ValidateUsesTheCaptionAndCollectsEveryError) {
  Parameters parameters;
  parameters.AddDate("DatedFrom", Variant("soon"), false, "", Variant(), false, "Dated From");
  parameters.AddList("OrderBy", Variant("Size"), true, "", Variant(), "Code,Name", true, "");
  parameters.AddNumber("Days", Variant(-10000000000.0), false, "", Variant(), 0, false, "Days");
  parameters.Validate("");
  EXPECT_FALSE(parameters.Valid());
  EXPECT_EQ(parameters.Errors(),
            (std::vector<std::string>{
                "Dated From: \"soon\" is not a date.",
                "OrderBy: \"Size\" is not one of the choices (Code, Name).",
                "Days: -10000000000 is out of range; it must be from -9999999999 to 9999999999.",
            }));
  parameters.SetValue("DatedFrom", Variant::Null());
  parameters.SetValue("OrderBy", Variant("code"));
  parameters.SetValue("Days", Variant(30));
  parameters.Validate("");
  EXPECT_TRUE(parameters.Valid());
}

}  // namespace
}  // namespace trellin
