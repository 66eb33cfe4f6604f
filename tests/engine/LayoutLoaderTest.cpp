#include <gtest/gtest.h>

#include <filesystem>

#include "EngineTestSupport.h"
#include "layouts/EmbeddedLayouts.h"
#include "platform/engine/LayoutLibrary.h"
#include "tests/support/CaseFile.h"
#include "tests/support/TempFolder.h"

namespace trellin::engine {
namespace {

constexpr const char* kGood = R"(
Report:
  Caption: Customer Type List
  DocumentName: Customer Types
  PrintWidth: 9000
  Page: {Paper: Letter, Orientation: Landscape, LeftMargin: 720}
Sections:
  - Name: PageHeader
    Height: 400
    Controls:
      - {Class: Label, Name: lblCode, Rect: [0, 0, 1000, 240], Caption: Code, Font: {Bold: true, Size: 9}}
  - Name: ghBank
    Type: GroupHeader
    DataField: BankId
    Height: 300
    NewPage: Before
  - Name: Detail
    Height: 250
    BackStyle: 1
    BackColor: "#DDEEFF"
    CanGrow: true
    Controls:
      - {Class: Field, Name: txtId, DataField: CustomerTypeId, Rect: [0, 0, 1000, 240], Alignment: Right}
      - {Class: Subreport, Name: srptSpecialPricing, Rect: [0, 250, 9000, 200], Visible: false}
      - {Class: Line, Name: lblDivider, Rect: [0, 240, 9000, 0], Border: {TopStyle: 6}}
  - Name: gfBank
    Type: GroupFooter
    Height: 300
    Controls:
      - {Class: Field, Name: gfTotal, DataField: Value, SummaryType: SubTotal, SummaryFunc: Sum, SummaryGroup: ghBank, OutputFormat: "#,##0.00"}
)";

TEST(LayoutLoader, ReadsReportSectionsAndControls) {
  ActiveReport report("arCustomerTypeList");
  LoadLayout(kGood, "admin/arCustomerTypeList.yaml", report);
  EXPECT_EQ(report.Caption(), "Customer Type List");
  EXPECT_EQ(report.documentName(), "Customer Types");
  EXPECT_EQ(report.PageSettings().PaperWidth, 12240);
  EXPECT_EQ(report.PageSettings().Orientation, PageOrientation::Landscape);
  EXPECT_EQ(report.PageSettings().LeftMargin, 720);
  ASSERT_EQ(report.Sections().Count(), 4u);
  EXPECT_EQ(report.Sections()[1].Type(), SectionType::GroupHeader);
  EXPECT_EQ(report.Sections()["ghBank"].DataField(), "BankId");
  EXPECT_EQ(report.Sections()["ghBank"].NewPage(), NewPageMode::Before);
  Section& detail = report.Sections()["Detail"];
  EXPECT_EQ(detail.BackStyle(), 1);
  EXPECT_EQ(detail.BackColor(), 0xDDEEFFu);
  EXPECT_TRUE(detail.CanGrow());
  EXPECT_EQ(detail.Controls()["txtId"].Alignment(), TextAlignment::Right);
  EXPECT_FALSE(detail.Controls()["srptSpecialPricing"].Visible());
  EXPECT_EQ(detail.Controls()["lblDivider"].Border().TopStyle, 6);
  Control& total = report.Field("gfTotal");
  EXPECT_EQ(total.SummaryType(), SummaryType::SubTotal);
  EXPECT_EQ(total.SummaryGroup(), "ghBank");
  EXPECT_EQ(report.Sections()["PageHeader"].Controls()["lblCode"].Font().Size, 9);
  EXPECT_TRUE(report.Sections()["PageHeader"].Controls()["lblCode"].Font().Bold);
}

// bad_layouts.tsv: a layout and the start of the message that refuses it.
TEST(LayoutLoader, BadLayoutsNameFileLineAndProblem) {
  for (const auto& row : trellin::testing::ReadCases("engine/bad_layouts.tsv", 2, true)) {
    ActiveReport report("arX");
    try {
      LoadLayout(row.fields[0], "x.yaml", report);
      ADD_FAILURE() << row.Where() << ": no error";
    } catch (const LayoutError& e) {
      EXPECT_EQ(std::string(e.what()).rfind(row.fields[1], 0), 0u)
          << row.Where() << ": got " << e.what();
    }
  }
}

TEST(LayoutLibrary, TemplateFolderOverridesTheCompiledLayout) {
  const trellin::testing::TempFolder folder("trellin-layouts");
  const std::filesystem::path& dir = folder.Path();
  trellin::testing::WriteFile(
      dir / "arOverridden.yaml",
      "Report: {Caption: From the template folder}\nSections:\n  - Name: Detail\n");
  auto compiled = [](std::string_view designer) -> std::optional<StoredLayout> {
    std::string text = "Report: {Caption: Compiled}\nSections:\n  - {Name: Detail, Bad: 1}\n";
    if (designer == "arOverridden" || designer == "arCompiled")
      return StoredLayout{"admin/x.yaml", text};
    return std::nullopt;
  };
  LayoutLibrary library(compiled, dir);
  ActiveReport overridden("arOverridden");
  ASSERT_TRUE(library.Load("arOverridden", overridden));
  EXPECT_EQ(overridden.Caption(), "From the template folder");

  ActiveReport compiled_report("arCompiled");
  try {
    (void)library.Load("arCompiled", compiled_report);
    ADD_FAILURE() << "the bad compiled layout loaded";
  } catch (const LayoutError& e) {
    EXPECT_STREQ(e.what(), "layouts/admin/x.yaml:3: unknown key 'Bad' in section 'Detail'");
  }
  ActiveReport missing("arMissing");
  EXPECT_FALSE(library.Load("arMissing", missing));

  // A user's layout by file name comes from the template folder; a bad or missing one leaves an
  // empty report and no error.
  trellin::testing::WriteFile(dir / "Broken.yaml",
                              "Sections:\n  - Name: Detail\n  - Name: Detail\n");
  ActiveReport::SetLayoutProvider(std::make_shared<LayoutLibrary>(compiled, dir));
  ActiveReport by_name("arUser");
  EXPECT_TRUE(by_name.LoadLayoutFile("arOverridden.yaml"));
  EXPECT_EQ(by_name.Caption(), "From the template folder");
  ActiveReport broken("arUser");
  EXPECT_FALSE(broken.LoadLayoutFile("Broken.yaml"));
  EXPECT_EQ(broken.Sections().Count(), 0u);
  ActiveReport absent("arUser");
  EXPECT_FALSE(absent.LoadLayoutFile((dir / "Nowhere.yaml").string()));
  ActiveReport::SetLayoutProvider(nullptr);
}

TEST(LayoutLibrary, EveryStoredLayoutLoads) {
  for (const auto& layout : layouts::AllEmbeddedLayouts()) {
    ActiveReport report(std::string(layout.designer));
    EXPECT_NO_THROW(LoadLayout(layout.text, "layouts/" + std::string(layout.path), report))
        << layout.path;
    EXPECT_EQ(layouts::FindEmbeddedLayout(layout.designer)->path, layout.path);
  }
  EXPECT_FALSE(layouts::FindEmbeddedLayout("arNoSuchDesigner"));
}

}  // namespace
}  // namespace trellin::engine
