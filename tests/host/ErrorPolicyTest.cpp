// The error policy: an error while the report prepares cancels the run; one while a row prints
// is recorded and the run goes on. Both are reported with their event.

#include <gtest/gtest.h>

#include "tests/host/HostFixture.h"

namespace trellin::host::testing {
namespace {

class ErrorPolicyTest : public HostTest {};

TEST_F(ErrorPolicyTest, ReportStartCancelsDetailFormatGoesOn) {
  struct Case {
    const char* fail;
    bool completed;
    std::string source;
    std::string message;
  };
  const Case cases[] = {
      {"ReportStart", false, "ActiveReport_ReportStart", "the SQL cannot be built"},
      {"Detail", true, "Detail_Format", "row C2 cannot be shown"},
  };
  for (const Case& c : cases) {
    KeepingSink sink = Run("CustomersByType", {{"Fail", c.fail}});
    EXPECT_EQ(sink.ended, c.completed) << c.fail;
    ASSERT_EQ(host_->Errors().size(), 1u) << c.fail;
    EXPECT_EQ(host_->Errors()[0].source, c.source);
    EXPECT_EQ(host_->Errors()[0].message, c.message);
    if (c.completed) {
      // The failing row and the rows after it still print.
      EXPECT_TRUE(sink.Printed("Beta Ltd"));
      EXPECT_TRUE(sink.Printed("Gamma Ltd"));
    } else {
      EXPECT_TRUE(sink.pages.empty());
    }
  }
}

}  // namespace
}  // namespace trellin::host::testing
