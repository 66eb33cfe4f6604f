#include <gtest/gtest.h>

#include <algorithm>

#include "EngineTestSupport.h"
#include "platform/runtime/Strings.h"

namespace trellin::engine {
namespace {

using testing::KeepingSink;
using testing::Rows;
using testing::TestReport;

Variant Money(std::int64_t raw) { return Variant(Currency::FromRaw(raw)); }

// The data rows of the whole document, page headers and footers left out, as "section:first cell".
std::vector<std::string> BodyRows(const KeepingSink& sink) {
  std::vector<std::string> out;
  for (std::size_t p = 0; p < sink.pages.size(); ++p) {
    for (const auto& row : sink.Rows(p)) {
      if (row.rfind("PageHeader", 0) != 0 && row.rfind("PageFooter", 0) != 0) out.push_back(row);
    }
  }
  return out;
}

std::vector<std::string> Cells(const KeepingSink& sink, const std::string& section) {
  std::vector<std::string> out;
  for (const auto& page : sink.pages) {
    for (const auto& row : page.rows) {
      if (row.section != section) continue;
      std::string line;
      for (const auto& cell : row.cells) line += (line.empty() ? "" : "|") + cell.text;
      out.push_back(line);
    }
  }
  return out;
}

TEST(Run, EventsComeInBandOrderOncePerSectionInstance) {
  TestReport report(R"(
Sections:
  - {Name: ReportHeader, Height: 100}
  - {Name: PageHeader, Height: 100}
  - {Name: ghKey, Type: GroupHeader, DataField: Key, Height: 100}
  - {Name: Detail, Height: 100}
  - {Name: gfKey, Type: GroupFooter, Height: 100}
  - {Name: PageFooter, Height: 100}
  - {Name: ReportFooter, Height: 100}
)");
  report.on_start = [&] {
    report.DataControl().SetRecordset(Rows({"Key"}, {{"a"}, {"b"}}));
    // Hidden sections still get all their events.
    report.Sections()["ghKey"].SetVisible(false);
  };
  KeepingSink sink = testing::Run(report);
  // Each event as "Section.Event", in order.
  const std::string expected =
      "Initialize ReportStart DataInitialize ReportHeader.Format ReportHeader.BeforePrint "
      "PageHeader.Format PageHeader.BeforePrint PageHeader.AfterPrint ReportHeader.AfterPrint "
      "FetchData ghKey.Format ghKey.BeforePrint ghKey.AfterPrint Detail.Format "
      "Detail.BeforePrint Detail.AfterPrint FetchData gfKey.Format gfKey.BeforePrint "
      "gfKey.AfterPrint ghKey.Format ghKey.BeforePrint ghKey.AfterPrint Detail.Format "
      "Detail.BeforePrint Detail.AfterPrint gfKey.Format gfKey.BeforePrint gfKey.AfterPrint "
      "ReportFooter.Format ReportFooter.BeforePrint ReportFooter.AfterPrint PageFooter.Format "
      "PageFooter.BeforePrint PageFooter.AfterPrint ReportEnd Terminate";
  EXPECT_EQ(Join(report.log, " "), expected);
  EXPECT_EQ(sink.log, (std::vector<std::string>{"Begin", "End"}));
  EXPECT_EQ(sink.pages.size(), 1u);
}

TEST(Run, GroupsBreakOnSeveralLevelsWithNullKeysAndFootersSeeTheirLastRow) {
  TestReport report(testing::TestLayout("grouped"));
  Variant null = Variant::Null();
  report.on_start = [&] {
    report.DataControl().SetRecordset(
        Rows({"Region", "Town", "Name", "Amount"}, {
                                                       {"N", "A", "r1", Money(11000)},
                                                       {"N", "A", "r2", Money(22000)},
                                                       {"N", null, "r3", Money(33000)},
                                                       {"N", null, "r4", Money(500)},
                                                       {null, null, "r5", Money(100000)},
                                                       {"S", null, "r6", Money(10000)},
                                                       {"T", "B", "r7", Money(7000)},
                                                   }));
  };
  KeepingSink sink = testing::Run(report);
  const std::vector<std::string> expected = {
      "ReportHeader:", "ghRegion:N", "ghTown:A", "Detail:r1", "Detail:r2", "gfTown:3.30",
      "ghTown:", "Detail:r3", "Detail:r4", "gfTown:3.35", "gfRegion:6.65",
      "ghRegion:", "ghTown:", "Detail:r5", "gfTown:10.00", "gfRegion:10.00",
      // The region changes while the town stays Null: the inner group breaks with the outer one.
      "ghRegion:S", "ghTown:", "Detail:r6", "gfTown:1.00", "gfRegion:1.00",
      // Both levels change on one row: inner footer, outer footer, outer header, inner header.
      "ghRegion:T", "ghTown:B", "Detail:r7", "gfTown:0.70", "gfRegion:0.70", "ReportFooter:18.35"};
  EXPECT_EQ(BodyRows(sink), expected);
  EXPECT_EQ(Cells(sink, "gfTown"),
            (std::vector<std::string>{"3.30|r2", "3.35|r4", "10.00|r5", "1.00|r6", "0.70|r7"}));
  EXPECT_EQ(Cells(sink, "gfRegion"),
            (std::vector<std::string>{"6.65|4", "10.00|1", "1.00|1", "0.70|1"}));
  EXPECT_EQ(Cells(sink, "ReportFooter"), (std::vector<std::string>{"18.35|7"}));
}

// One row per case: the key column's values in data order, and the group headers that print.
struct GroupKeyCase {
  const char* name;
  std::vector<Variant> keys;
  std::vector<std::string> headers;
};

class GroupKeys : public ::testing::TestWithParam<GroupKeyCase> {};

TEST_P(GroupKeys, TextMatchesWithoutCaseOtherKindsAsBefore) {
  TestReport report(R"(
Sections:
  - Name: ghKey
    Type: GroupHeader
    DataField: Key
    Height: 300
    Controls: [{Class: Field, Name: txtKey, DataField: Key, Rect: [0, 0, 3000, 300]}]
  - {Name: Detail, Height: 300}
)");
  std::vector<std::vector<Variant>> rows;
  for (const Variant& key : GetParam().keys) rows.push_back({key});
  report.on_start = [&] { report.DataControl().SetRecordset(Rows({"Key"}, rows)); };
  KeepingSink sink = testing::Run(report);
  EXPECT_EQ(Cells(sink, "ghKey"), GetParam().headers);
}

const Variant kNull = Variant::Null();

INSTANTIATE_TEST_SUITE_P(
    Run, GroupKeys,
    ::testing::Values(
        // The first row of a group names it.
        GroupKeyCase{"CaseOnly", {Variant("acme"), Variant("ACME"), Variant("Acme")}, {"acme"}},
        GroupKeyCase{"CaseThenNew",
                     {Variant("ACME"), Variant("acme"), Variant("Bolt"), Variant("BOLT")},
                     {"ACME", "Bolt"}},
        GroupKeyCase{"DifferentText",
                     {Variant("acme"), Variant("acmE "), Variant("acme")},
                     {"acme", "acmE ", "acme"}},
        GroupKeyCase{"Numbers",
                     {Variant(std::int64_t{1}), Variant(1.0), Variant(std::int64_t{2})},
                     {"1", "2"}},
        GroupKeyCase{
            "NullBetweenText", {Variant("a"), kNull, kNull, Variant("A")}, {"a", "", "A"}}),
    [](const ::testing::TestParamInfo<GroupKeyCase>& info) { return info.param.name; });

TEST(Run, SummariesAreExactMoneyAndCountEvenWhenTheDetailIsHidden) {
  TestReport report(testing::TestLayout("grouped"));
  std::vector<std::vector<Variant>> rows;
  // 0.1 a thousand times is 100 exactly in money, not in doubles.
  for (int i = 0; i < 1000; ++i) rows.push_back({"N", "A", "r", Money(1000)});
  report.on_start = [&] {
    report.DataControl().SetRecordset(Rows({"Region", "Town", "Name", "Amount"}, rows));
    report.Sections()["Detail"].SetVisible(false);
  };
  KeepingSink sink = testing::Run(report);
  EXPECT_EQ(Cells(sink, "Detail").size(), 0u);
  EXPECT_EQ(Cells(sink, "gfRegion"), (std::vector<std::string>{"100.00|1000"}));
  const auto& cell = sink.pages.back().rows;
  bool found = false;
  for (const auto& row : cell) {
    if (row.section == "ReportFooter") {
      found = true;
      ASSERT_NE(row.cells[0].value.Get<Currency>(), nullptr);
      EXPECT_EQ(row.cells[0].value.Get<Currency>()->Raw(), 1000000);
    }
  }
  EXPECT_TRUE(found);
}

TEST(Run, AFooterMayOverwriteItsSummaryBeforeItPrints) {
  TestReport report(testing::TestLayout("grouped"));
  report.on_start = [&] {
    report.DataControl().SetRecordset(
        Rows({"Region", "Town", "Name", "Amount"}, {{"N", "A", "r1", Money(20000)}}));
  };
  report.on_format = [&](Section& s) {
    if (s.Name() != "ReportFooter") return;
    Control& total = s.Controls()["rfTotal"];
    // The footer reads the final value, then changes what prints.
    total.SetText("Total " + total.Text() + " (" + total.DataValue().Text() + ")");
  };
  KeepingSink sink = testing::Run(report);
  EXPECT_EQ(Cells(sink, "ReportFooter"), (std::vector<std::string>{"Total 2.00 (2)|1"}));
}

TEST(Run, EmptyDataFormatsTheDetailOnceAtEofAndPrintsHeadersAndFooters) {
  TestReport report(testing::TestLayout("grouped"));
  int detail_formats = 0;
  bool eof_seen = false;
  report.on_start = [&] {
    report.DataControl().SetRecordset(Rows({"Region", "Town", "Name", "Amount"}, {}));
  };
  report.on_format = [&](Section& s) {
    if (s.Name() != "Detail") return;
    ++detail_formats;
    eof_seen = report.DataControl().Recordset()->Eof();
  };
  KeepingSink sink = testing::Run(report);
  EXPECT_EQ(detail_formats, 1);
  EXPECT_TRUE(eof_seen);
  EXPECT_EQ(BodyRows(sink),
            (std::vector<std::string>{"ReportHeader:", "ghRegion:", "ghTown:", "gfTown:0.00",
                                      "gfRegion:0.00", "ReportFooter:0.00"}));
  EXPECT_NE(sink.Texts(0).find("Page 1"), std::string::npos);
}

TEST(Run, UnboundFetchesOneDetailEachAndFieldsPersist) {
  TestReport report(R"(
Sections:
  - Name: Detail
    Height: 200
    Controls:
      - {Class: Field, Name: txtLine, DataField: Line, Rect: [0, 0, 3000, 200]}
      - {Class: Field, Name: txtKept, DataField: Kept, Rect: [3000, 0, 3000, 200]}
)");
  int n = 0;
  report.on_data_initialize = [&] {
    report.Fields().Add("Line");
    report.Fields().Add("Kept").SetValue(Variant("first"));
  };
  report.on_fetch = [&](bool& eof) {
    // The designer emits a line twice without moving its own cursor, and says when data ends.
    if (++n > 3) {
      eof = true;
      return;
    }
    report.Fields()["Line"].SetValue(Variant(std::int64_t{n}));
    if (n == 2) report.Fields()["Kept"].SetValue(Variant("second"));
  };
  KeepingSink sink = testing::Run(report);
  EXPECT_EQ(Cells(sink, "Detail"), (std::vector<std::string>{"1|first", "2|second", "3|second"}));
}

TEST(Run, UnboundWithoutAFetchPrintsItsDetailOnce) {
  // A form with no data source and no FetchData of its own or its script's.
  TestReport report(R"(
Sections:
  - Name: Detail
    Height: 200
    Controls:
      - {Class: Label, Name: lblDear, Caption: Dear customer, Rect: [0, 0, 3000, 200]}
)");
  KeepingSink sink = testing::Run(report);
  EXPECT_EQ(std::count(report.log.begin(), report.log.end(), "Detail.Format"), 1);
  EXPECT_NE(sink.Texts(0).find("Dear customer"), std::string::npos);
}

TEST(Run, ReportStartSeesTheOpenRowsAndBoundFieldsTakeTheRowByDataField) {
  TestReport report(testing::TestLayout("grouped"));
  std::int64_t count_at_start = -1;
  report.on_start = [&] {
    report.DataControl().SetRecordset(
        Rows({"Region", "Town", "Name", "Amount"}, {{"N", "A", "r1", Money(10000)}}));
    count_at_start = report.DataControl().Recordset()->RecordCount();
  };
  report.on_format = [&](Section& s) {
    if (s.Name() == "Detail") {
      EXPECT_EQ(s.Controls()["txtName"].DataValue().Text(), "r1");
    }
  };
  KeepingSink sink = testing::Run(report);
  EXPECT_EQ(count_at_start, 1);
  EXPECT_EQ(Cells(sink, "Detail"), (std::vector<std::string>{"r1|1.00"}));
}

TEST(Run, EventErrorsGoToTheHookAndTheHostMayCancel) {
  TestReport report(testing::TestLayout("grouped"));
  std::vector<std::string> errors;
  report.SetErrorHook([&](const std::string& source, const std::string& message) {
    errors.push_back(source + ": " + message);
  });
  report.on_start = [&] {
    report.DataControl().SetRecordset(
        Rows({"Region", "Town", "Name", "Amount"},
             {{"N", "A", "r1", Money(1)}, {"N", "A", "r2", Money(2)}}));
  };
  report.on_format = [&](Section& s) {
    if (s.Name() == "Detail") throw std::runtime_error("no such party");
  };
  KeepingSink sink = testing::Run(report);
  EXPECT_EQ(errors, (std::vector<std::string>{"Detail_Format: no such party",
                                              "Detail_Format: no such party"}));
  // The event ended quietly: the rows still printed.
  EXPECT_EQ(Cells(sink, "Detail").size(), 2u);

  TestReport cancelled(testing::TestLayout("grouped"));
  cancelled.SetErrorHook([&](const std::string&, const std::string&) { cancelled.Cancel(); });
  cancelled.on_start = [&] { throw std::runtime_error("bad SQL"); };
  KeepingSink aborted;
  EXPECT_EQ(RunReport(cancelled, aborted), RunOutcome::Cancelled);
  EXPECT_TRUE(aborted.pages.empty());
  EXPECT_EQ(cancelled.log.back(), "Terminate");

  TestReport unhooked(testing::TestLayout("grouped"));
  unhooked.on_start = [&] { throw std::runtime_error("bad SQL"); };
  KeepingSink failed;
  try {
    RunReport(unhooked, failed);
    ADD_FAILURE() << "no error";
  } catch (const ReportRunError& e) {
    EXPECT_STREQ(e.what(), "arTest ActiveReport_ReportStart: bad SQL");
  }
}

}  // namespace
}  // namespace trellin::engine
