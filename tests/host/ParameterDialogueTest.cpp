#include "platform/host/ParameterDialogue.h"

#include <gtest/gtest.h>

#include <map>
#include <nlohmann/json.hpp>

#include "core/TrellinReports.h"
#include "core/kvReportUtilities.h"
#include "platform/business/CompanyApplication.h"
#include "platform/business/CompanyBusinessLayer.h"
#include "platform/business/CompanyRangeBuilder.h"
#include "platform/runtime/Clock.h"
#include "platform/runtime/Strings.h"
#include "tests/business/RealCompany.h"
#include "tests/support/FakeDatabase.h"

namespace trellin::host {
namespace {

using nlohmann::json;

// Stands in for the date-expression routine: dates, a few keywords as of 15 March 2025, and the
// names of other parameters.
Variant FakeResolver(const Variant& expression, const Parameters& parameters) {
  if (expression.IsDate()) return expression;
  const std::map<std::string, Date> keywords = {
      {"EOM", Date::FromYmd(2025, 3, 31)},
      {"BOM", Date::FromYmd(2025, 3, 1)},
      {"ARCURRENT", Date::FromYmd(2025, 2, 28)},
  };
  std::string text = expression.Text();
  if (auto found = keywords.find(text); found != keywords.end()) return found->second;
  if (parameters.Exists(text)) return parameters.Value(text);
  return Variant::Null();
}

class ParameterDialogueTest : public ::testing::Test {
 protected:
  void SetUp() override {
    database_ = std::make_shared<trellin::testing::FakeDatabase>();
    database_->AddResult(kCustomersSQL,
                         {{"OtherPartyId", FieldType::Text}, {"Name", FieldType::Text}},
                         {{"A100", "Acme Ltd"}, {"B7", "Bay Traders"}});
    parameters_.AddList("OrderBy", Variant("Code"), true, "", Variant("Code"), "Code,Name,X Ref",
                        true, "");
    parameters_.AddBoolean("Summary", false, false, "", false, false, "Summary");
    parameters_.AddDate("DateAsAt", Variant::Missing(), true, "Date As At", Variant("EOM"), false,
                        "Date As At");
    parameters_.AddDate("DatedFrom", Variant::Missing(), false, "", Variant("BOM"), false,
                        "Dated From");
    parameters_.AddDate("DatedTo", Variant::Missing(), false, "", Variant(""), false, "Dated To");
    parameters_.AddNumber("OverdueFrom", Variant(), false, "", Variant(), -9999999999, false,
                          "Overdue From");
    parameters_.AddMultiList("Groupings", Variant(""), false, "", Variant(""),
                             "Customer,Location,Customer Type", false, false, "Groupings");
    parameters_
        .AddSQLList("Customers", Variant(""), true, "", Variant(""), kCustomersSQL, "OtherPartyId",
                    false, "")
        ->SQLField = "OtherParty.OtherPartyId";
    parameters_.AddSQLList("Broken", Variant(""), false, "", Variant(""), "SELECT Nothing", "Code",
                           false, "");
    parameters_.AddString("Message", Variant(""), false, "", Variant(""), true, "");
  }

  ParameterDialogue Dialogue() {
    return ParameterDialogue(parameters_, database_, FakeResolver, &range_builder_);
  }

  static constexpr const char* kCustomersSQL =
      "SELECT OtherPartyId,Name FROM OtherParty WHERE IsCustomer=True ORDER BY OtherPartyId";
  std::shared_ptr<trellin::testing::FakeDatabase> database_;
  business::CompanyRangeBuilder range_builder_;
  Parameters parameters_;
};

TEST_F(ParameterDialogueTest, ListsSetsResolvesAndValidates) {
  ParameterDialogue dialogue = Dialogue();
  std::vector<DialogueEntry> entries = dialogue.List();
  ASSERT_EQ(entries.size(), 10u);
  EXPECT_EQ(entries[0].Caption, "OrderBy");
  EXPECT_EQ(entries[0].Choices, (std::vector<std::string>{"Code", "Name", "X Ref"}));
  EXPECT_EQ(entries[2].Prompt, "Date As At");
  EXPECT_EQ(entries[2].ResolvedDefault, Variant(Date::FromYmd(2025, 3, 31)));
  EXPECT_TRUE(entries[4].ResolvedDefault.IsEmpty());  // no default
  ASSERT_EQ(entries[7].Rows.size(), 2u);
  EXPECT_EQ(entries[7].Rows[1].Key, "B7");
  EXPECT_EQ(entries[7].Rows[1].Description, "Bay Traders");
  EXPECT_EQ(entries[8].RowsError, "no such table in: SELECT Nothing");

  for (const char* assignment :
       {"orderby=name", "Summary=Yes", "DatedFrom=1/02/2025", "DatedTo=DateAsAt",
        "Groupings=customer [page break], Location", "Customers=A100..A199, 'X,Y'",
        "OverdueFrom=1,250.50", "Message= Thank you "}) {
    dialogue.SetFromAssignment(assignment);
  }
  // Validate resolves first: DateAsAt takes its default, DatedTo builds on it.
  EXPECT_TRUE(dialogue.Validate()) << ::testing::PrintToString(dialogue.Errors());
  EXPECT_EQ(dialogue.ValuesToJson(), json::parse(R"({
    "OrderBy": "Name", "Summary": true, "DateAsAt": "2025-03-31", "DatedFrom": "2025-02-01",
    "DatedTo": "2025-03-31", "OverdueFrom": 1250.5,
    "Groupings": "Customer [Page Break],Location", "Customers": "A100..A199, 'X,Y'",
    "Broken": "", "Message": " Thank you "})"));
}

TEST_F(ParameterDialogueTest, RefusesTextNamingTheParameter) {
  const struct {
    const char* assignment;
    const char* message;
  } cases[] = {
      {"Colour=Red",
       "Unknown parameter \"Colour\". The report's parameters are: OrderBy, Summary, DateAsAt, "
       "DatedFrom, DatedTo, OverdueFrom, Groupings, Customers, Broken, Message."},
      {"no equals sign", "\"no equals sign\" is not of the form NAME=VALUE."},
      {"=5", "\"=5\" is not of the form NAME=VALUE."},
      {"Summary=maybe", "Summary: \"maybe\" is not true or false (true, false, yes, no, 1 or 0)."},
      {"OrderBy=Size", "OrderBy: \"Size\" is not one of the choices (Code, Name, X Ref)."},
      {"OverdueFrom=lots", "Overdue From: \"lots\" is not a number."},
      {"Groupings=Customer,Region",
       "Groupings: \"Region\" is not one of the choices (Customer, Location, Customer Type)."},
      {"Groupings=Location,location", "Groupings: \"Location\" is chosen more than once."},
      {"Customers=A..B..C", "Customers: A range has more than one \"..\" in the list \"A..B..C\"."},
      {"Customers='A",
       "Customers: The quote opened at position 1 is not closed in the list \"'A\"."},
  };
  ParameterDialogue dialogue = Dialogue();
  for (const auto& c : cases) {
    try {
      dialogue.SetFromAssignment(c.assignment);
      ADD_FAILURE() << "accepted: " << c.assignment;
    } catch (const ParameterError& e) {
      EXPECT_EQ(std::string(e.what()), c.message) << c.assignment;
    }
  }
}

TEST_F(ParameterDialogueTest, DateExpressionThatMeansNothingFailsValidation) {
  ParameterDialogue dialogue = Dialogue();
  dialogue.SetFromText("DatedTo", "whenever");
  dialogue.SetFromText("OverdueFrom", "10000000000");
  EXPECT_FALSE(dialogue.Validate());
  EXPECT_EQ(dialogue.Errors(),
            (std::vector<std::string>{
                "Dated To: \"whenever\" is not a date or a date expression.",
                "Overdue From: 10000000000 is out of range; it must be from -9999999999 to "
                "9999999999.",
            }));
  EXPECT_TRUE(parameters_.Value("DatedTo").IsNull());
  // Setting the date again clears its error; an empty text is no date at all.
  dialogue.SetFromText("DatedTo", "");
  dialogue.SetFromText("OverdueFrom", "0");
  EXPECT_TRUE(dialogue.Validate());
  EXPECT_TRUE(parameters_.Value("DatedTo").IsNull());
}

TEST_F(ParameterDialogueTest, WithoutResolverDateTextMustBeADate) {
  ParameterDialogue dialogue(parameters_, nullptr, nullptr);
  EXPECT_THROW(dialogue.SetFromText("DatedFrom", "EOM"), ParameterError);
  dialogue.SetFromText("DatedFrom", "2025-01-31");
  EXPECT_EQ(parameters_.Value("DatedFrom"), Variant(Date::FromYmd(2025, 1, 31)));
  // No database: the pick-lists are listed without rows, and no error.
  EXPECT_TRUE(dialogue.List()[7].Rows.empty());
  EXPECT_TRUE(dialogue.List()[7].RowsError.empty());
}

TEST_F(ParameterDialogueTest, TakesValuesFromJson) {
  ParameterDialogue dialogue = Dialogue();
  dialogue.SetFromJsonText(R"({"Summary": true, "OverdueFrom": 12.5, "DatedFrom": null,
      "Groupings": ["Location", "Customer [Page Break]"], "Customers": ["A100", "X,Y", 5],
      "OrderBy": "x ref"})");
  EXPECT_EQ(parameters_.Value("Summary"), Variant(true));
  EXPECT_EQ(parameters_.Value("OverdueFrom"), Variant(Currency::FromRaw(125000)));
  EXPECT_TRUE(parameters_.Value("DatedFrom").IsNull());
  EXPECT_EQ(parameters_.Value("Groupings"), Variant("Location,Customer [Page Break]"));
  EXPECT_EQ(parameters_.Value("Customers"), Variant("A100,\"X,Y\",5"));
  EXPECT_EQ(parameters_.Value("OrderBy"), Variant("X Ref"));

  const struct {
    const char* text;
    const char* message;
  } cases[] = {
      {"[1,2]", "Parameter values must be a JSON object of names and values."},
      {R"({"Nope": 1})",
       "Unknown parameter \"Nope\". The report's parameters are: OrderBy, Summary, DateAsAt, "
       "DatedFrom, DatedTo, OverdueFrom, Groupings, Customers, Broken, Message."},
      {R"({"Summary": {"a": 1}})", "Summary: {\"a\":1} is not a value a parameter takes."},
      {R"({"Customers": [true]})", "Customers: a list holds only texts and numbers."},
  };
  for (const auto& c : cases) {
    try {
      dialogue.SetFromJsonText(c.text);
      ADD_FAILURE() << "accepted: " << c.text;
    } catch (const ParameterError& e) {
      EXPECT_EQ(std::string(e.what()), c.message) << c.text;
    }
  }
  try {
    dialogue.SetFromJsonText("{\"Summary\": ");
    ADD_FAILURE() << "bad JSON accepted";
  } catch (const ParameterError& e) {
    EXPECT_TRUE(std::string(e.what()).starts_with("The parameter values are not valid JSON: "))
        << e.what();
  }
}

TEST_F(ParameterDialogueTest, ListingAsJson) {
  ParameterDialogue dialogue = Dialogue();
  json listing = ParameterDialogue::ToJson(dialogue.List());
  ASSERT_EQ(listing.size(), 10u);
  EXPECT_EQ(listing[2], json::parse(R"({"name": "DateAsAt", "kind": "date",
      "caption": "Date As At", "prompt": "Date As At", "primary": true, "flag": false,
      "value": null, "default": "EOM", "resolvedDefault": "2025-03-31"})"));
  EXPECT_EQ(listing[5]["value"], -9999999999);
  EXPECT_EQ(listing[6]["choices"], json::parse(R"(["Customer", "Location", "Customer Type"])"));
  EXPECT_EQ(listing[7]["rows"][0], json::parse(R"({"key": "A100", "description": "Acme Ltd"})"));
  EXPECT_EQ(listing[8]["rowsError"], "no such table in: SELECT Nothing");
}

}  // namespace
}  // namespace trellin::host

namespace trellin::host {
namespace {

// The whole road on a company file: standard parameters from the report service, pick-lists
// through the SQL translator, date expressions through the service's interpreter and the
// company's calendar, and the values turned into SQL by the company's range builder.
// "BOY" as the start of a financial year running April to March, as at DateAsAt; EOM as the
// fake's 31 March 2025.
Variant FinancialYearResolver(const Variant& expression, const Parameters& parameters) {
  if (expression.Text() != "BOY") return FakeResolver(expression, parameters);
  const Date as_at = parameters.Value("DateAsAt").ToDate();
  return Date::FromYmd(as_at.Month() >= 4 ? as_at.Year() : as_at.Year() - 1, 4, 1);
}

TEST(ParameterDialoguePeriods, PeriodSetsTheFirstDateFromTheLast) {
  struct Case {
    std::vector<std::string> assignments;
    const char* from;  // "" for no date
    const char* period;
  };
  const Case cases[] = {
      {{}, "2024-04-01", "YTD"},  // the financial year to 31 March
      {{"Period=MTD"}, "2025-03-01", "MTD"},
      {{"Period=QTD"}, "2025-01-01", "QTD"},  // the year's fourth quarter
      {{"Period=QTD", "ToDate=2024-11-15"}, "2024-10-01", "QTD"},
      {{"Period=YTD", "ToDate=2025-04-30"}, "2025-04-01", "YTD"},
      {{"Period=Custom"}, "2024-04-01", "Custom"},  // left blank: the year's first day
      {{"Period=Custom", "FromDate=2024-06-15"}, "2024-06-15", "Custom"},
      // A first date with no period given is a custom range, as typing it in the dialogue is.
      {{"FromDate=2024-06-15"}, "2024-06-15", "Custom"},
      // With a period given, the period decides.
      {{"Period=MTD", "FromDate=2024-06-15"}, "2025-03-01", "MTD"},
      {{"Period=ALL"}, "", "ALL"},
  };
  for (const Case& c : cases) {
    Parameters parameters;
    parameters.AddList("Period", "YTD", true, "", "YTD", "ALL,MTD,QTD,YTD,Custom", false, "Period");
    parameters.AddDate("FromDate", Variant(), true, "", Variant(), false, "From Date");
    parameters.AddDate("ToDate", Variant(), true, "", "EOM", false, "To Date");
    ParameterDialogue dialogue(parameters, nullptr, FinancialYearResolver);
    for (const std::string& assignment : c.assignments) dialogue.SetFromAssignment(assignment);
    ASSERT_TRUE(dialogue.Validate()) << c.assignments.size();
    const Variant from = parameters.Value("FromDate");
    EXPECT_EQ(from.IsDate() ? from.ToDate().ToIso() : "", c.from) << Join(c.assignments, " ");
    EXPECT_EQ(parameters.Value("Period").Text(), c.period) << Join(c.assignments, " ");
  }
  // The listing shows the first date the period gives, before any value is set.
  Parameters parameters;
  parameters.AddList("Period", "QTD", true, "", "QTD", "MTD,QTD,YTD", false, "Period");
  parameters.AddDate("FromDate", Variant(), true, "", Variant(), false, "From Date");
  parameters.AddDate("ToDate", Variant(), true, "", "EOM", false, "To Date");
  const std::vector<DialogueEntry> entries =
      ParameterDialogue(parameters, nullptr, FinancialYearResolver).List(false);
  EXPECT_EQ(entries[1].ResolvedDefault.ToDate().ToIso(), "2025-01-01");
}

TEST(ParameterDialogueCompanyTest, RoundTripOnACompanyFile) {
  SetClockForTesting(Date::FromYmd(2025, 1, 15));
  trellin::testing::RealCompany company;
  auto layer = std::make_shared<business::CompanyBusinessLayer>(company.Database());
  auto application = std::make_shared<business::CompanyApplication>(company.Database());
  TrellinReports reports;
  reports.Initialise(layer, application);

  Parameters parameters;
  parameters.AddDate("DateAsAt", Variant::Missing(), true, "Date As At", Variant("ARCURRENT"),
                     false, "Date As At");
  parameters.AddDate("DatedFrom", Variant::Missing(), false, "", Variant("BOY"), false,
                     "Dated From");
  (void)CreateStandardParameter(0, parameters, true);
  (void)CreateStandardParameter(8, parameters, true, "", "", "", "OtherPartyId");
  (void)CreateStandardParameter(25, parameters, false);
  ParameterDialogue dialogue(
      parameters, company.Database(),
      [&](const Variant& expression, const Parameters& all) {
        return reports.InterpretDate(expression, &all);
      },
      &layer->Utilities().RangeBuilder());

  std::vector<DialogueEntry> entries = dialogue.List();
  ASSERT_EQ(entries.size(), 5u);
  EXPECT_EQ(entries[0].ResolvedDefault, Variant(Date::FromYmd(2025, 3, 31)));
  EXPECT_EQ(entries[1].ResolvedDefault, Variant(Date::FromYmd(2024, 4, 1)));  // BOY of today
  auto rows = [](const DialogueEntry& entry) {
    std::vector<std::string> texts;
    for (const PickRow& row : entry.Rows) texts.push_back(row.Key + "|" + row.Description);
    return texts;
  };
  EXPECT_EQ(entries[2].RowsError, "");
  EXPECT_EQ(rows(entries[2]), (std::vector<std::string>{"1-1000|Bank", "1-1100| Cheque account",
                                                        "1-1999| Petty cash", "2-1000|Creditors"}));
  EXPECT_EQ(rows(entries[3]), (std::vector<std::string>{"A100|Acme", "a150|Apex", "A199|Atlas",
                                                        "B7|Bay", "X,Y|Comma Co"}));
  EXPECT_EQ(rows(entries[4]),
            (std::vector<std::string>{"1|None", "2|Good", "3|Caution", "4|Bad", "5|Adverse"}));

  dialogue.SetFromAssignment("DateAsAt=31/12/2023");
  dialogue.SetFromAssignment("Customers=a100..A150, 'X,Y'");
  dialogue.Resolve();
  ASSERT_TRUE(dialogue.Validate()) << ::testing::PrintToString(dialogue.Errors());
  // BOY now follows the date as at the user gave.
  EXPECT_EQ(parameters.Value("DatedFrom"), Variant(Date::FromYmd(2023, 4, 1)));

  std::string description;
  std::string where = reports.CreateSQLWhereFromRangeParams(parameters, description);
  std::vector<std::string> found;
  for (auto rs = company.Database()->Query("SELECT OtherPartyId FROM OtherParty WHERE " + where +
                                           " ORDER BY OtherPartyId");
       !rs->Eof(); rs->MoveNext()) {
    found.push_back(rs->Value(0).Text());
  }
  EXPECT_EQ(found, (std::vector<std::string>{"A100", "a150", "X,Y"})) << where;
  reports.Dispose();
  SetClockForTesting(std::nullopt);
}

}  // namespace
}  // namespace trellin::host
