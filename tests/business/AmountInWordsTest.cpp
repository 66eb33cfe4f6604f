// Numbers and cheque amounts in words, as listed in amounts_in_words.tsv.

#include <gtest/gtest.h>

#include "platform/business/AmountInWords.h"
#include "platform/business/CompanyRounder.h"
#include "tests/support/CaseFile.h"

namespace trellin::business {
namespace {

TEST(AmountInWordsTest, NumbersAndChequeAmountsAsListed) {
  CompanyRounder rounder;
  for (const trellin::testing::CaseRow& row :
       trellin::testing::ReadCases("business/amounts_in_words.tsv", 3)) {
    const std::vector<std::string>& f = row.fields;
    if (f[0] == "number") {
      EXPECT_EQ(NumberInWords(std::stoll(f[1])), f[2]) << row.Where();
    } else {
      ASSERT_EQ(f.size(), 4u) << row.Where();
      EXPECT_EQ(rounder.AmountInWords(*Currency::Parse(f[1]), f[2] == "1", "dollar", "dollars",
                                      "cent", "cents"),
                f[3])
          << row.Where();
    }
  }
}

}  // namespace
}  // namespace trellin::business
