#include "platform/runtime/Strings.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace trellin {
namespace {

TEST(StringsTest, TrimAndCase) {
  EXPECT_EQ(Trim(" \t ab c \t"), "ab c");
  EXPECT_EQ(LTrim("  ab  "), "ab  ");
  EXPECT_EQ(RTrim("  ab  "), "  ab");
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(UCase("Ab-z9é"), "AB-Z9é");
  EXPECT_EQ(LCase("Ab-Z9"), "ab-z9");
}

TEST(StringsTest, LeftRightMidCountFromOne) {
  struct Case {
    const char* s;
    std::size_t start;
    std::size_t length;
    const char* mid;
  } cases[] = {
      {"abcdef", 1, 3, "abc"},
      {"abcdef", 3, 2, "cd"},
      {"abcdef", 6, 5, "f"},
      {"abcdef", 7, 1, ""},
      {"abcdef", 100, 1, ""},
      {"abcdef", 2, 0, ""},
      {"abcdef", 2, std::string::npos, "bcdef"},
      {"", 1, 1, ""},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Mid(c.s, c.start, c.length), c.mid) << c.s << " " << c.start << " " << c.length;
  }
  EXPECT_THROW((void)Mid("abc", 0), std::out_of_range);
  EXPECT_EQ(Left("abc", 2), "ab");
  EXPECT_EQ(Left("abc", 10), "abc");
  EXPECT_EQ(Right("abc", 2), "bc");
  EXPECT_EQ(Right("abc", 10), "abc");
  EXPECT_EQ(Right("abc", 0), "");
  EXPECT_EQ(Space(3), "   ");
}

TEST(StringsTest, InStrIsOneBasedAndZeroWhenAbsent) {
  struct Case {
    const char* s;
    const char* find;
    std::size_t start;
    bool ignore_case;
    std::size_t expected;
  } cases[] = {
      {"abcabc", "b", 1, false, 2},   {"abcabc", "b", 3, false, 5}, {"abcabc", "x", 1, false, 0},
      {"abcabc", "B", 1, false, 0},   {"abcabc", "B", 1, true, 2},  {"abcabc", "abc", 4, false, 4},
      {"abcabc", "abc", 5, false, 0}, {"abcabc", "", 3, false, 3},  {"abc", "", 4, false, 4},
      {"abc", "", 5, false, 0},       {"", "", 1, false, 0},        {"", "a", 1, false, 0},
      {"abc", "abcd", 1, false, 0},   {"a,b", ",", 1, false, 2},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(InStr(c.s, c.find, c.start, c.ignore_case), c.expected)
        << "InStr(" << c.start << ", \"" << c.s << "\", \"" << c.find << "\")";
  }
  EXPECT_THROW((void)InStr("abc", "a", 0), std::out_of_range);
}

TEST(StringsTest, ReplaceSplitJoin) {
  EXPECT_EQ(Replace("a.b.c", ".", "::"), "a::b::c");
  EXPECT_EQ(Replace("aAaA", "a", "x", true), "xxxx");
  EXPECT_EQ(Replace("aAaA", "a", "x"), "xAxA");
  EXPECT_EQ(Replace("aaa", "aa", "a"), "aa");
  EXPECT_EQ(Replace("abc", "", "x"), "abc");

  struct Case {
    const char* s;
    std::vector<std::string> items;
  } cases[] = {
      {"a,b,c", {"a", "b", "c"}},
      {"a,,b", {"a", "", "b"}},
      {"", {""}},
      {",", {"", ""}},
      {"Code,Description [Page Break]", {"Code", "Description [Page Break]"}},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(Split(c.s), c.items) << c.s;
    EXPECT_EQ(Join(c.items), c.s);
  }
  EXPECT_EQ(Split("a and b", " and "), (std::vector<std::string>{"a", "b"}));
}

TEST(StringsTest, StrCompOrdersBinaryOrIgnoringCase) {
  EXPECT_EQ(StrComp("a", "b"), -1);
  EXPECT_EQ(StrComp("b", "a"), 1);
  EXPECT_EQ(StrComp("B", "a"), -1);
  EXPECT_EQ(StrComp("B", "a", true), 1);
  EXPECT_EQ(StrComp("abc", "ABC", true), 0);
  EXPECT_EQ(StrComp("ab", "abc"), -1);
  EXPECT_EQ(StrComp("", ""), 0);
  EXPECT_TRUE(EqualsIgnoreCase("Round", "ROUND"));
  EXPECT_FALSE(EqualsIgnoreCase("Round", "Rounds"));
}

TEST(StringsTest, IsNumericFollowsTheReportLanguage) {
  struct Case {
    const char* text;
    bool numeric;
    double value;
  } cases[] = {
      {"12", true, 12},         {" -1,234.5 ", true, -1234.5},
      {"(12.50)", true, -12.5}, {"1E3", true, 1000},
      {"1.5e-2", true, 0.015},  {".5", true, 0.5},
      {"5.", true, 5},          {"+7", true, 7},
      {"$1,000", true, 1000},   {"", false, 0},
      {" ", false, 0},          {"-", false, 0},
      {".", false, 0},          {"1,", false, 0},
      {"1e", false, 0},         {"12abc", false, 0},
      {"1 2", false, 0},        {"EOM", false, 0},
      {"31/12/2030", false, 0}, {"1e309", false, 0},
      {"1e308", true, 1e308},   {"1e-400", true, 0},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(IsNumeric(c.text), c.numeric) << '"' << c.text << '"';
    if (c.numeric) EXPECT_DOUBLE_EQ(*ParseNumber(c.text), c.value) << c.text;
  }
}

}  // namespace
}  // namespace trellin
