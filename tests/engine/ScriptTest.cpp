// Layout scripts as the engine runs them: handlers after the designer's, values crossing with
// their kinds, and the three ways a script fails (syntax, run time, too long) named by file,
// handler and line.
#include <gtest/gtest.h>

#include "EngineTestSupport.h"
#include "core/host/HostDispatch.h"
#include "platform/script/LuaScript.h"
#include "tests/support/CaseFile.h"

namespace trellin::engine::testing {
namespace {

class LayoutScript : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    ActiveReport::SetScriptEngine(std::make_shared<script::LuaScriptEngine>());
  }
  static void TearDownTestSuite() { ActiveReport::SetScriptEngine(nullptr); }

  // The scripted layout's sections with `script` in place of its own.
  static std::string WithScript(const std::string& script) {
    std::string layout = TestLayout("scripted");
    layout.erase(layout.find("Script:"));
    return layout + "Script: |\n" + script;
  }

  static std::shared_ptr<MemoryRecordset> OneRow() {
    return Rows(
        {"Code", "Amount", "Posted", "Memo", "Qty"},
        {{"A1", Currency::FromRaw(1000), Date::FromYmd(2024, 3, 5), Variant::Null(), Variant(3)}});
  }

  // Runs `report`, collecting its errors as "source: message"; the pages go to `sink`.
  static std::vector<std::string> RunCollecting(TestReport& report, KeepingSink* sink = nullptr) {
    std::vector<std::string> errors;
    report.SetErrorHook([&](const std::string& source, const std::string& message) {
      errors.push_back(source + ": " + message);
    });
    KeepingSink pages = testing::Run(report);
    if (sink) *sink = std::move(pages);
    return errors;
  }
};

TEST_F(LayoutScript, HandlersRunAfterTheDesignersAndChangeTheRows) {
  TestReport report(TestLayout("scripted"));
  report.DataControl().SetRecordset(Rows({"Code", "Amount"}, {{"A1", Currency::FromRaw(1000)},
                                                              {"B2", Currency::FromRaw(20000)},
                                                              {"C3", Currency::FromRaw(-5)}}));
  // The designer writes first; the script's text is what prints.
  report.on_format = [&](Section& s) {
    if (s.Name() == "Detail") report.Field("txtNote").SetText("from the designer");
  };
  KeepingSink sink;
  ASSERT_TRUE(RunCollecting(report, &sink).empty());
  EXPECT_EQ(sink.Rows(0), (std::vector<std::string>{"PageHeader:", "Detail:A1", "Detail:C3"}));
  EXPECT_NE(sink.Texts(0).find("1: A1 owes 0.1\n"), std::string::npos) << sink.Texts(0);
  EXPECT_NE(sink.Texts(0).find("2: C3 owes -0.0005\n"), std::string::npos) << sink.Texts(0);
  EXPECT_EQ(sink.Texts(0).find("from the designer"), std::string::npos);
  EXPECT_EQ(report.Caption(), "Script test (started)");
}

// script_cases.tsv: an expression and what the script makes of it, set as the caption.
TEST_F(LayoutScript, ValuesCrossWithTheirKinds) {
  for (const auto& row : trellin::testing::ReadCases("engine/script_cases.tsv", 2)) {
    TestReport report(WithScript("  function Detail_Format()\n    rpt.Caption = tostring(" +
                                 row.fields[0] + ")\n  end\n"));
    report.DataControl().SetRecordset(OneRow());
    std::vector<std::string> errors = RunCollecting(report);
    EXPECT_TRUE(errors.empty()) << row.Where() << ": " << errors.front();
    EXPECT_EQ(report.Caption(), row.fields[1]) << row.Where();
  }
}

TEST_F(LayoutScript, ASyntaxErrorStopsTheLoadNamingFileAndLine) {
  // The script starts on line 15 of the file; the error is on its third line.
  std::string layout = WithScript("  function Detail_Format()\n    local x = \n  end\n");
  ActiveReport report("arTest");
  try {
    LoadLayout(layout, "user/arTest.yaml", report);
    ADD_FAILURE() << "no error";
  } catch (const LayoutError& e) {
    EXPECT_EQ(std::string(e.what()).rfind("user/arTest.yaml:17: unexpected symbol near 'end'", 0),
              0u)
        << e.what();
  }
}

TEST_F(LayoutScript, ARunTimeErrorNamesTheHandlerAndLineAndTheRunGoesOn) {
  TestReport report(
      WithScript("  function Detail_Format()\n    rpt.txtNote.Text = \"x\"\n"
                 "    rpt.NoSuchThing.Text = 1\n  end\n"));
  report.DataControl().SetRecordset(OneRow());
  std::vector<std::string> errors = RunCollecting(report);
  ASSERT_EQ(errors.size(), 1u);
  EXPECT_EQ(errors[0], "Detail_Format: test.yaml:17: arTest has no member 'NoSuchThing'");
}

// Stopped once, the script runs no more: the rows after the first print without it.
TEST_F(LayoutScript, AnEndlessLoopIsStoppedNamingItsHandler) {
  TestReport report(
      WithScript("  function Detail_Format()\n    while true do end\n"
                 "  end\n"));
  report.DataControl().SetRecordset(
      Rows({"Code", "Amount"}, {{"A1", Currency::FromRaw(1000)}, {"B2", Currency::FromRaw(2)}}));
  std::vector<std::string> errors = RunCollecting(report);
  ASSERT_EQ(errors.size(), 1u);
  EXPECT_EQ(errors[0].rfind("Detail_Format: test.yaml:16: Detail_Format "
                            "ran past its 20000000 steps and was stopped",
                            0),
            0u)
      << errors[0];
}

TEST_F(LayoutScript, MemoryIsCapped) {
  ActiveReport::SetScriptEngine(
      std::make_shared<script::LuaScriptEngine>(script::ScriptLimits{20'000'000, 4u << 20}));
  TestReport report(
      WithScript("  function Detail_Format()\n    local t = {}\n"
                 "    for i = 1, 1000000 do t[i] = string.rep('x', 100) .. i end\n"
                 "  end\n"));
  ActiveReport::SetScriptEngine(std::make_shared<script::LuaScriptEngine>());
  report.DataControl().SetRecordset(OneRow());
  std::vector<std::string> errors = RunCollecting(report);
  ASSERT_EQ(errors.size(), 1u);
  EXPECT_NE(errors[0].find("not enough memory"), std::string::npos) << errors[0];
}

TEST_F(LayoutScript, FetchDataGivesTheRowsOfAnUnboundReportAndTrueAtTheEnd) {
  TestReport report(
      WithScript("  local n = 0\n"
                 "  function ActiveReport_DataInitialize() rpt.Fields:Add('Code') end\n"
                 "  function ActiveReport_FetchData()\n"
                 "    n = n + 1\n    if n > 3 then return true end\n"
                 "    rpt.Fields.Code = 'R' .. n\n    return false\n  end\n"));
  KeepingSink sink;
  ASSERT_TRUE(RunCollecting(report, &sink).empty());
  EXPECT_EQ(sink.Rows(0),
            (std::vector<std::string>{"PageHeader:", "Detail:R1", "Detail:R2", "Detail:R3"}));
}

TEST_F(LayoutScript, ParametersGiveValueAndExists) {
  Parameters parameters;
  parameters.AddString("Message", "Hello", false, "", "", true, "");
  TestReport report(WithScript(
      "  function ActiveReport_ReportStart()\n"
      "    params.message.Value = params:Item('MESSAGE').Value .. ' there'\n"
      "    rpt.Caption = tostring(params:Exists('Message')) .. tostring(params:Exists('X'))\n"
      "  end\n"));
  report.Script()->SetGlobal(
      "params", Variant(std::static_pointer_cast<Object>(DispatchParameters(parameters))));
  report.DataControl().SetRecordset(OneRow());
  ASSERT_TRUE(RunCollecting(report).empty());
  EXPECT_EQ(report.Caption(), "truefalse");
  EXPECT_EQ(parameters.Value("Message"), Variant("Hello there"));
}

}  // namespace
}  // namespace trellin::engine::testing
