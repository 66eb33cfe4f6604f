// Page furniture and the run's description, with the clock fixed.

#include <gtest/gtest.h>

#include "platform/host/ReportHost.h"
#include "platform/runtime/Clock.h"
#include "tests/host/HostFixture.h"

namespace trellin::host::testing {
namespace {

class FurnitureTest : public HostTest {
 protected:
  void SetUp() override {
    HostTest::SetUp();
    SetClockForTesting(Date::FromYmdHms(2025, 3, 15, 14, 5, 0));
  }
  void TearDown() override {
    SetClockForTesting(std::nullopt);
    HostTest::TearDown();
  }
};

TEST_F(FurnitureTest, StandardHeaderFillsTitleDateCompanyAndNotice) {
  KeepingSink sink = Run("CustomersByType", {{"Groupings", "Type"}, {"LimitFrom", "250"}});
  const std::vector<std::string> page = sink.Texts(0);
  // The catalogue's caption stands over the layout's "Stored Title".
  EXPECT_TRUE(sink.Printed("Customers By Type"));
  EXPECT_FALSE(sink.Printed("Stored Title"));
  EXPECT_TRUE(sink.Printed("Printed on 15 March 2025 at 2:05pm"));
  EXPECT_TRUE(sink.Printed("Harbour Test Co"));
  EXPECT_TRUE(sink.Printed("Trellin Accounts - harbour.db"));
  EXPECT_TRUE(sink.Printed("Page 1"));
  for (const char* placeholder : {"$Dated", "$Notice", "CompanyName"}) {
    EXPECT_FALSE(sink.Printed(placeholder)) << placeholder;
  }
  // The description, one line a parameter with a value: the hidden Fail text, the unticked
  // Summary and open bounds say nothing; EOM is the end of the fixed month.
  EXPECT_TRUE(sink.Printed("Groupings: Type"));
  EXPECT_TRUE(sink.Printed("Date As At: 31/03/2025"));
  EXPECT_TRUE(sink.Printed("Limit From: 250"));
  EXPECT_FALSE(sink.Printed("Summary: No"));
}

TEST_F(FurnitureTest, ReportsOwnDescriptionIsKept) {
  DesignerPtr designer = Prepare("CustomersByType", {{"Groupings", "Type"}});
  Control& description = designer->Field("txtParameters");
  description.SetText("Customers ordered by code");
  designer->TLReport()->ReportFooterBeforePrint();
  EXPECT_EQ(description.Text(), "Customers ordered by code");

  description.SetText("Parameters");
  designer->TLReport()->ReportFooterBeforePrint();
  EXPECT_EQ(description.Text(), "Groupings: Type\r\nDate As At: 31/03/2025");
}

TEST_F(FurnitureTest, WithoutStandardHeaderPlaceHoldersPrintNothing) {
  DesignerPtr designer = Prepare("CustomersByType");
  designer->TLReport()->SetupStandardHeader(false);
  EXPECT_EQ(designer->Field("phDated").Caption(), "");
  EXPECT_EQ(designer->Field("lblNotice").Caption(), "");
  EXPECT_EQ(designer->Field("lblReportTitle").Caption(), "Stored Title");
}

}  // namespace
}  // namespace trellin::host::testing
