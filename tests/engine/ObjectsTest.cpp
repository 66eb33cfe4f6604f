#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>

#include "EngineTestSupport.h"
#include "platform/engine/LayoutLibrary.h"
#include "tests/support/FakeDatabase.h"

namespace trellin::engine {
namespace {

using testing::KeepingSink;
using testing::Rows;
using testing::TestReport;

TEST(Objects, ControlsAreAddedByClassNameAndFoundByNameIndexAndIteration) {
  TestReport report(testing::TestLayout("two_sections"));
  Controls& controls = report.Sections()["Detail"].Controls();
  struct Case {
    const char* class_name;
    ControlClass cls;
  } cases[] = {
      {"DDActiveReports2.Label", ControlClass::Label},
      {"DDActiveReports2.Field", ControlClass::Field},
      {"DDActiveReports2.CheckBox", ControlClass::CheckBox},
      {"DDActiveReports2.Subreport", ControlClass::Subreport},
      {"ddactivereports2.pagebreak", ControlClass::PageBreak},
      {"Line", ControlClass::Line},
  };
  for (const auto& c : cases) EXPECT_EQ(controls.Add(c.class_name).Class(), c.cls) << c.class_name;
  // Made-up names follow the class and skip names in use.
  EXPECT_EQ(controls[1].Name(), "Label2");
  EXPECT_EQ(controls.Item(2).Name(), "Field3");
  EXPECT_THROW(controls.Add("DDActiveReports2.Button"), std::invalid_argument);
  EXPECT_THROW(controls.Add("Field", "TXTID"), std::invalid_argument);
  EXPECT_THROW((void)controls["txtNone"], NoSuchItem);
  EXPECT_EQ(&controls["TXTID"], &report.Field("txtId"));
  EXPECT_EQ(&report.Sections()[1], &report.Sections()["detail"]);

  std::vector<std::string> all;
  for (Section& s : report.Sections()) {
    for (Control& c : s.Controls()) all.push_back(s.Name() + "." + c.Name());
  }
  EXPECT_EQ(all.size(), 8u);
  EXPECT_EQ(all.front(), "PageHeader.lblTitle");
  EXPECT_EQ(all.back(), "Detail.Line7");
}

TEST(Objects, DataValueFormatsTextAndTextAloneChangesOnlyThePrint) {
  struct Case {
    Variant value;
    const char* mask;
    const char* text;
  } cases[] = {
      {Variant(Currency::FromRaw(-12345000)), "#,##0.00;(#,##0.00)", "(1,234.50)"},
      {Variant(Date::FromYmd(2024, 3, 5)), "d/mm/yyyy", "5/03/2024"},
      {Variant(std::int64_t{42}), "", "42"},
      {Variant::Null(), "0.00", ""},
  };
  for (const auto& c : cases) {
    Control field(ControlClass::Field, "txtValue");
    field.SetOutputFormat(c.mask);
    field.SetDataValue(c.value);
    EXPECT_EQ(field.Text(), c.text) << c.mask;
    field.SetText("overwritten");
    EXPECT_EQ(field.DataValue(), c.value);
  }
}

TEST(Objects, FieldsAddOverAnExistingNameKeepsTheField) {
  Fields fields;
  fields.Add("Balance").SetValue(Variant(std::int64_t{5}));
  ReportField& again = fields.Add("BALANCE");
  EXPECT_EQ(fields.Count(), 1u);
  EXPECT_EQ(again.Value().ToLong(), 5);
  EXPECT_EQ(fields.IndexOf("balance"), 0);
  EXPECT_THROW((void)fields.Item("Closing"), NoSuchItem);
}

TEST(Objects, SettingSourceOpensTheRowsAtOnce) {
  DataControl data;
  EXPECT_THROW(data.SetSource("SELECT Id FROM Account"), std::logic_error);
  auto db = std::make_shared<trellin::testing::FakeDatabase>();
  db->AddResult("SELECT Id FROM Account", {{"Id", FieldType::Long}},
                {{Variant(std::int64_t{1})}, {Variant(std::int64_t{2})}});
  data.SetConnection(db);
  data.SetSource("SELECT Id FROM Account");
  ASSERT_NE(data.Recordset(), nullptr);
  EXPECT_EQ(data.Recordset()->RecordCount(), 2);
  EXPECT_EQ(db->Queries(), (std::vector<std::string>{"SELECT Id FROM Account"}));
  EXPECT_THROW(data.SetSource("bad"), DatabaseError);
  EXPECT_EQ(data.Recordset(), nullptr);
}

class InitializeOrder : public ActiveReport {
 public:
  InitializeOrder() : ActiveReport("arStored") {}
  void ActiveReport_Initialize() override { sections_at_initialize = Sections().Count(); }
  std::size_t sections_at_initialize = 99;
};

TEST(Objects, InitializeLoadsTheStoredLayoutFirst) {
  auto library = std::make_shared<LayoutLibrary>(
      [](std::string_view designer) -> std::optional<StoredLayout> {
        if (designer != "arStored") return std::nullopt;
        return StoredLayout{"admin/arStored.yaml",
                            "Report: {Caption: Stored}\nSections:\n  - {Name: Detail}\n"};
      },
      std::filesystem::path());
  ActiveReport::SetLayoutProvider(library);
  InitializeOrder report;
  report.Initialize();
  report.Initialize();
  ActiveReport::SetLayoutProvider(nullptr);
  EXPECT_EQ(report.sections_at_initialize, 1u);
  EXPECT_EQ(report.Caption(), "Stored");
  EXPECT_EQ(report.Sections().Count(), 1u);
}

TEST(Objects, DumpPageIsTheGoldenForm) {
  TestReport report(R"(
Report: {Caption: Dump, PrintWidth: 6000, Page: {LeftMargin: 1000, TopMargin: 500, BottomMargin: 500}}
Sections:
  - Name: ghType
    Type: GroupHeader
    DataField: Type
    Height: 300
    Controls: [{Class: Field, Name: txtType, DataField: Type, Rect: [0, 0, 2000, 300], Font: {Bold: true}}]
  - Name: Detail
    Height: 300
    BackStyle: 1
    Controls:
      - {Class: Field, Name: txtAmount, DataField: Amount, Rect: [2000, 0, 2000, 300], OutputFormat: "0.00", Alignment: Right}
      - {Class: Label, Name: lblUnit, Rect: [4000, 0, 1000, 300], Caption: NZD, Border: {BottomStyle: 1}}
)");
  report.on_start = [&] {
    report.DataControl().SetRecordset(
        Rows({"Type", "Amount"}, {{"Retail", Variant(Currency::FromRaw(15000))}}));
  };
  report.on_format = [&](Section& s) {
    if (s.Name() == "ghType") report.TOC().Add("Types\\" + s.Controls()["txtType"].Text());
  };
  KeepingSink sink = testing::Run(report);
  ASSERT_EQ(sink.pages.size(), 1u);
  const auto& first = std::get<TextRun>(sink.pages[0].items[0]);
  const std::string h = std::to_string(static_cast<int>(std::lround(first.height)));
  EXPECT_EQ(sink.Dump(),
            "page 1 11906x16838\n"
            "text 1000,500 2000x" +
                h +
                " \"Retail\" Arial 10 B left\n"
                "rect 1000,800 6000x300 fill #EEEEEE\n"
                "text 3000,800 2000x" +
                h +
                " \"1.50\" Arial 10 right\n"
                "text 5000,800 1000x" +
                h +
                " \"NZD\" Arial 10 left\n"
                "line 5000,1100-6000,1100\n"
                "bookmark \"Types\\Retail\" @500\n"
                "row GroupHeader 1 ghType txtType=\"Retail\" \"Retail\"\n"
                "row Detail Detail txtAmount=1.5@ \"1.50\"\n");
  EXPECT_EQ(sink.info_.title, "Dump");
}

}  // namespace
}  // namespace trellin::engine

namespace trellin::engine {
namespace {

TEST(Objects, ControlsAddedWhileWalkingAreReached) {
  testing::TestReport report(testing::TestLayout("two_sections"));
  Controls& controls = report.Sections()["Detail"].Controls();
  std::vector<std::string> seen;
  for (Control& c : controls) {
    seen.push_back(c.Name());
    if (seen.size() < 3) controls.Add("Field", "txtAdded" + std::to_string(seen.size()));
  }
  EXPECT_EQ(seen, (std::vector<std::string>{"txtId", "txtAdded1", "txtAdded2"}));
}

}  // namespace
}  // namespace trellin::engine
