#include <gtest/gtest.h>

#include "platform/business/AmountInWords.h"
#include "platform/business/CompanyRounder.h"

namespace trellin::business {
namespace {

TEST(AmountInWordsTest, WritesWholeNumbers) {
  const struct {
    std::int64_t number;
    const char* words;
  } cases[] = {
      {0, "zero"},
      {7, "seven"},
      {13, "thirteen"},
      {19, "nineteen"},
      {20, "twenty"},
      {21, "twenty-one"},
      {99, "ninety-nine"},
      {100, "one hundred"},
      {101, "one hundred and one"},
      {120, "one hundred and twenty"},
      {999, "nine hundred and ninety-nine"},
      {1000, "one thousand"},
      {1005, "one thousand and five"},
      {1250, "one thousand two hundred and fifty"},
      {12019, "twelve thousand and nineteen"},
      {100000, "one hundred thousand"},
      {1000001, "one million and one"},
      {2300000, "two million three hundred thousand"},
      {1000000000, "one billion"},
      {-45, "minus forty-five"},
  };
  for (const auto& c : cases) {
    EXPECT_EQ(NumberInWords(c.number), c.words) << c.number;
  }
}

TEST(AmountInWordsTest, WritesChequeAmounts) {
  const struct {
    std::int64_t raw;  // ten-thousandths
    bool cents_as_words;
    const char* words;
  } cases[] = {
      {0, true, "Zero dollars"},
      {10000, true, "One dollar"},
      {120'5000, true, "One hundred and twenty dollars and fifty cents"},
      {120'5000, false, "One hundred and twenty dollars and 50 cents"},
      {1'0100, true, "One dollar and one cent"},
      {5000, true, "Fifty cents"},
      {100, false, "1 cent"},
      {1315'0000, true, "One thousand three hundred and fifteen dollars"},
      {12'3456, true, "Twelve dollars and thirty-five cents"},  // rounded to cents
      {99'9950, true, "One hundred dollars"},                   // half a cent rounds up
      {-2'5000, true, "Minus two dollars and fifty cents"},
  };
  CompanyRounder rounder;
  for (const auto& c : cases) {
    EXPECT_EQ(rounder.AmountInWords(Currency::FromRaw(c.raw), c.cents_as_words, "dollar", "dollars",
                                    "cent", "cents"),
              c.words)
        << c.raw;
  }
}

}  // namespace
}  // namespace trellin::business
