#include "platform/runtime/Format.h"

#include <gtest/gtest.h>

#include "tests/support/CaseFile.h"

namespace trellin {
namespace {

// format_masks.tsv: value, mask, the text printed.
TEST(FormatTest, MasksOfTheReportsAsListed) {
  const auto rows = testing::ReadCases("runtime/format_masks.tsv", 3);
  ASSERT_GT(rows.size(), 100u);
  for (const testing::CaseRow& row : rows) {
    const Variant value = testing::ParseValue(row.fields[0]);
    EXPECT_EQ(Format(value, row.fields[1]), row.fields[2])
        << row.Where() << ": Format(" << row.fields[0] << ", \"" << row.fields[1] << "\")";
  }
}

TEST(FormatTest, PassThroughMasks) {
  EXPECT_TRUE(FormatMask::Get("Round")->IsPassThrough());
  EXPECT_TRUE(FormatMask::Get("(auto)")->IsPassThrough());
  EXPECT_TRUE(FormatMask::Get("")->IsPassThrough());
  EXPECT_FALSE(FormatMask::Get("Currency")->IsPassThrough());
}

TEST(FormatTest, CompiledMasksAreSharedAndReported) {
  auto first = FormatMask::Get("#,##0.00");
  auto second = FormatMask::Get("#,##0.00");
  EXPECT_EQ(first.get(), second.get());
  EXPECT_EQ(first->Mask(), "#,##0.00");
  EXPECT_EQ(first->Apply(Variant(*Currency::Parse("-1"))), "-1.00");
  // Alternating masks through Format must not mix them up.
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(Format(Variant(1), "0.0"), "1.0");
    EXPECT_EQ(Format(Variant(1), "0.00"), "1.00");
  }
  EXPECT_THROW((void)Format(Variant(std::make_shared<Object>()), "0"), TypeMismatch);
}

}  // namespace
}  // namespace trellin
