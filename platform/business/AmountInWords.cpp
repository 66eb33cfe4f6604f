#include "platform/business/AmountInWords.h"

#include <cctype>
#include <vector>

namespace trellin::business {

namespace {

constexpr const char* kOnes[] = {"zero",    "one",     "two",       "three",    "four",
                                 "five",    "six",     "seven",     "eight",    "nine",
                                 "ten",     "eleven",  "twelve",    "thirteen", "fourteen",
                                 "fifteen", "sixteen", "seventeen", "eighteen", "nineteen"};
constexpr const char* kTens[] = {"",      "",      "twenty",  "thirty", "forty",
                                 "fifty", "sixty", "seventy", "eighty", "ninety"};
// Each step is a thousand times the one before; the largest amount of money is some hundreds of
// trillions, and a 64-bit number reaches quintillions.
constexpr const char* kScales[] = {"",         "thousand",    "million",    "billion",
                                   "trillion", "quadrillion", "quintillion"};

// 1 to 99.
std::string UnderHundred(int n) {
  if (n < 20) return kOnes[n];
  std::string words = kTens[n / 10];
  if (n % 10 != 0) words += std::string("-") + kOnes[n % 10];
  return words;
}

// 1 to 999, with "and" before the tens as written in New Zealand and Australia.
std::string UnderThousand(int n) {
  if (n < 100) return UnderHundred(n);
  std::string words = std::string(kOnes[n / 100]) + " hundred";
  if (n % 100 != 0) words += " and " + UnderHundred(n % 100);
  return words;
}

std::string Capitalised(std::string text) {
  if (!text.empty()) text[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(text[0])));
  return text;
}

}  // namespace

std::string NumberInWords(std::int64_t number) {
  if (number == 0) return kOnes[0];
  // Worked on the magnitude as unsigned, so the most negative number has one too.
  std::uint64_t rest =
      number < 0 ? 0 - static_cast<std::uint64_t>(number) : static_cast<std::uint64_t>(number);
  std::vector<int> groups;  // lowest first
  while (rest > 0) {
    groups.push_back(static_cast<int>(rest % 1000));
    rest /= 1000;
  }
  std::string words;
  for (std::size_t i = groups.size(); i-- > 0;) {
    int group = groups[i];
    if (group == 0) continue;
    if (!words.empty()) {
      // The last group joins with "and" when it has no hundreds: "one thousand and five".
      words += (i == 0 && group < 100) ? " and " : " ";
    }
    words += UnderThousand(group);
    if (kScales[i][0] != '\0') words += std::string(" ") + kScales[i];
  }
  return number < 0 ? "minus " + words : words;
}

std::string AmountInWords(Currency amount, bool cents_as_words, const std::string& unit,
                          const std::string& units, const std::string& cent,
                          const std::string& cents) {
  std::int64_t total_cents = amount.Round(2).Raw() / (Currency::kScale / 100);
  bool negative = total_cents < 0;
  std::uint64_t magnitude = negative ? 0 - static_cast<std::uint64_t>(total_cents)
                                     : static_cast<std::uint64_t>(total_cents);
  auto whole = static_cast<std::int64_t>(magnitude / 100);
  auto part = static_cast<std::int64_t>(magnitude % 100);

  auto cents_text = [&] {
    std::string count = cents_as_words ? NumberInWords(part) : std::to_string(part);
    return count + " " + (part == 1 ? cent : cents);
  };

  std::string words;
  if (whole == 0 && part != 0) {
    words = cents_text();
  } else {
    words = NumberInWords(whole) + " " + (whole == 1 ? unit : units);
    if (part != 0) words += " and " + cents_text();
  }
  if (negative) words = "minus " + words;
  return Capitalised(words);
}

}  // namespace trellin::business
