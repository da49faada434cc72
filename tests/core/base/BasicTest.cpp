// The classic runtime behaviour of numbers and texts: every result line and
// report digit of the program comes through these.

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <utility>

#include "base/Basic.h"
#include "base/RuntimeError.h"

#include "support/ErrorNumber.h"

namespace tarvenix::basic {
namespace {

using test::ErrorNumberOf;

TEST(Val, ReadsTheLeadingNumberTheClassicWay) {
  const std::pair<const char*, double> cases[] = {
      {"12", 12},           {"  12", 12},         {"\t\n42", 42},      {"-3.5", -3.5},
      {"+7", 7},            {"1e3", 1000},        {"2.5E-2", 0.025},   {"1D2", 100},
      {"12abc", 12},        {"", 0},              {"abc", 0},          {"1 2 3", 123},
      {" - 5", -5},         {"--5", 0},           {"+-5", 0},          {".5", 0.5},
      {"1.2.3", 1.2},       {"5e", 5},            {"5e+", 5},          {"0007", 7},
      {"1,000", 1},         {"&H10", 16},         {"&HFFFF", -1},      {"&hff", 255},
      {"&O17", 15},         {"&H10000", 65536},   {"&HFFFFFFFF", -1},  {"&", 0},
      {"&X1", 0},           {"  10.3 cycles", 10.3}, {"1E20", 1e20},   {"-0", 0},
      {"123456789012345678901234567890", 1.2345678901234568e29},
      {"0.000000000000000000000000000000000000000000000000001234", 1.234e-51},
  };
  for (const auto& [text, value] : cases) EXPECT_DOUBLE_EQ(Val(text), value) << '"' << text << '"';
}

TEST(Val, NumbersTooLargeForADoubleOverflowAndHugeDigitRunsStayBounded) {
  const std::string digits(200000, '9');
  for (const std::string& text : {std::string("1e400"), std::string("&H1FFFFFFFF"), digits})
    EXPECT_EQ(ErrorNumberOf([&] { Val(text); }), err::kOverflow) << text.substr(0, 12);
  EXPECT_EQ(Val("1e-400"), 0.0);
  EXPECT_DOUBLE_EQ(Val("0." + digits), 1.0);
}

TEST(IsNumeric, AcceptsOneWholeNumberWithBlanksAround) {
  const std::pair<const char*, bool> cases[] = {
      {"12", true},   {" 12 ", true}, {"\t7", true},   {"12.5", true}, {"-3", true},  {"+3", true},
      {"3.0", true},  {"1e5", true},  {"1E-5", true},  {".5", true},   {"5.", true},  {"&H1F", true},
      {"&O7", true},  {"abc", false}, {"", false},     {"  ", false},  {"x3", false}, {"3x", false},
      {".", false},   {"1e", false},  {"+", false},    {"1 2", false}, {"1,000", false}, {"--1", false},
      {"&H", false},  {"&O8", false}, {"1e400", false}, {"$5", false}, {"(5)", false},
  };
  for (const auto& [text, numeric] : cases) EXPECT_EQ(IsNumeric(text), numeric) << '"' << text << '"';
  EXPECT_DOUBLE_EQ(CDbl(" 3.0 "), 3.0);
  EXPECT_EQ(ErrorNumberOf([] { CDbl("x3"); }), err::kTypeMismatch);
}

TEST(WholeNumberConversion, RoundsHalvesToEvenAndOverflowsOutOfRange) {
  struct Case {
    double v;
    int expected;  // 0 with error set means overflow
    bool overflow;
  } cases16[] = {
      {2.5, 2, false},       {3.5, 4, false},        {-2.5, -2, false},      {0.5, 0, false},
      {1.5, 2, false},       {32767.4, 32767, false}, {32767.5, 0, true},    {-32768.5, -32768, false},
      {-32768.6, 0, true},   {1e10, 0, true},        {std::nan(""), 0, true}, {-0.4, 0, false},
  };
  for (const Case& c : cases16) {
    if (c.overflow) {
      EXPECT_EQ(ErrorNumberOf([&] { CInt(c.v); }), err::kOverflow) << c.v;
    } else {
      EXPECT_EQ(CInt(c.v), c.expected) << c.v;
    }
  }
  EXPECT_EQ(CLng(2147483647.4), 2147483647);
  EXPECT_EQ(CLng(-2147483648.5), -2147483647 - 1);
  EXPECT_EQ(CLng(10.5), 10);
  EXPECT_EQ(ErrorNumberOf([] { CLng(2147483647.5); }), err::kOverflow);
  EXPECT_EQ(ErrorNumberOf([] { CLng(std::numeric_limits<double>::infinity()); }), err::kOverflow);
  // Fix truncates toward zero, Int downward.
  EXPECT_EQ(Fix(2.7), 2);
  EXPECT_EQ(Fix(-2.7), -2);
  EXPECT_EQ(Int(-2.7), -3);
  EXPECT_EQ(Fix(-0.3), 0);
}

TEST(Booleans, TextsConvertTheClassicWay) {
  for (const char* yes : {"True", "TRUE", "-1", "2.5"}) EXPECT_TRUE(CBool(yes)) << yes;
  for (const char* no : {" false ", "0"}) EXPECT_FALSE(CBool(no)) << no;
  EXPECT_EQ(ErrorNumberOf([] { CBool("yes"); }), err::kTypeMismatch);
  EXPECT_EQ(BoolText(true) + BoolText(false), "TrueFalse");
}

TEST(Arithmetic, FaultsAreClassicRunTimeErrors) {
  struct Case {
    const char* what;
    std::function<void()> call;
    int error;
  } cases[] = {
      {"Log 0", [] { Log(0); }, err::kInvalidCall},
      {"Log of a negative number", [] { Log(-1); }, err::kInvalidCall},
      {"Sqr of a negative number", [] { Sqr(-0.5); }, err::kInvalidCall},
      {"negative base, fractional power", [] { Power(-8, 1.0 / 3); }, err::kInvalidCall},
      {"zero to a negative power", [] { Power(0, -1); }, err::kInvalidCall},
      {"x / 0", [] { Divide(1, 0); }, err::kDivisionByZero},
      {"0 / 0", [] { Divide(0, 0); }, err::kOverflow},
      {"Exp beyond a double", [] { Exp(710); }, err::kOverflow},
      {"a power beyond a double", [] { Power(10, 400); }, err::kOverflow},
      {"a single beyond its range", [] { CSng(1e39); }, err::kOverflow},
      {"not finite", [] { Checked(std::numeric_limits<double>::infinity()); }, err::kOverflow},
      {"Log 1", [] { Log(1); }, 0},
      {"negative base, whole power", [] { Power(-2, 3); }, 0},
      {"the largest single", [] { CSng(3.4e38); }, 0},
  };
  for (const Case& c : cases) EXPECT_EQ(ErrorNumberOf(c.call), c.error) << c.what;
  EXPECT_EQ(CSng(0.1), 0.1f);
  EXPECT_EQ(Power(-2, 3), -8);
}

// A day of 2026 at h:mi:s.
std::tm In2026(int month, int day, int h = 0, int mi = 0, int s = 0) {
  std::tm t{};
  t.tm_year = 126;
  t.tm_mon = month - 1;
  t.tm_mday = day;
  t.tm_hour = h;
  t.tm_min = mi;
  t.tm_sec = s;
  return t;
}

TEST(Texts, NumbersDatesAndStringsTheClassicWay) {
  const std::pair<std::string, const char*> cases[] = {  // {what the call gave, what it must give}
      // Str: a sign column, no leading zero, 15 digits for a double and 7 for a single.
      {Str(0.5), " .5"},       {Str(-0.5), "-.5"},          {Str(12.0), " 12"},        {Str(-12.0), "-12"},
      {Str(0.0), " 0"},        {Str(0.00001), " 1E-05"},    {Str(0.0001), " .0001"},   {Str(2.0f), " 2"},
      {Str(1234567890123456.0), " 1.23456789012346E+15"},   {Str(123456789012345.0), " 123456789012345"},
      {Str(2.345f), " 2.345"}, {Str(12345678.0f), " 1.234568E+07"},                      {Str(1234567.0f), " 1234567"},
      {Str(int16_t{5}), " 5"}, {Str(-7), "-7"},             {Str(int32_t{1521}), " 1521"},
      // CStr: the shortest form, no sign column.
      {CStr(0.5), "0.5"},      {CStr(-0.25), "-0.25"},      {CStr(1e20), "1E+20"},     {CStr(100.0), "100"},
      {CStr(1.5e-7), "1.5E-07"}, {CStr(0.1 + 0.2), "0.3"},  {CStr(1e15), "1E+15"},     {CStr(2.5f), "2.5"},
      {CStr(10000000000.0), "10000000000"},
      // Format rounds halves away from zero on the decimal form.
      {Format(2.0, "0.##"), "2."},       {Format(2.0f, "0.##"), "2."},      {Format(2.345, "0.##"), "2.35"},
      {Format(2.344f, "0.##"), "2.34"},  {Format(2.5f, "0.##"), "2.5"},     {Format(1.005, "0.##"), "1.01"},
      {Format(0.004, "0.##"), "0."},     {Format(9.999, "0.##"), "10."},    {Format(-1.234, "0.##"), "-1.23"},
      {Format(1234.5, "0"), "1235"},     {Format(2.5, "0"), "3"},           {Format(-2.5, "0"), "-3"},
      {Format(1234.4f, "0"), "1234"},    {Format(0.4, "0"), "0"},           {Format(90.0, "000"), "090"},
      {Format(1234.0, "000"), "1234"},   {Format(0.5, "0.00"), "0.50"},     {Format(12.34567, "0.0000"), "12.3457"},
      {Format(123456789.0f, "0"), "123456800"},
      // Dates as the plot and the report show them.
      {FormatDate(In2026(3, 5, 14, 7, 9), "mmm. d, yyyy"), "Mar. 5, 2026"},
      {FormatDate(In2026(11, 22), "mmm. d, yyyy"), "Nov. 22, 2026"},
      {FormatDate(In2026(9, 30), "mmmm dd yy, m/mm"), "September 30 26, 9/09"},
      {GeneralDate(In2026(3, 5, 14, 7, 9)), "3/5/2026 2:07:09 PM"},
      {GeneralDate(In2026(12, 31, 0, 30)), "12/31/2026 12:30:00 AM"},
      {GeneralDate(In2026(1, 2, 12, 0, 1)), "1/2/2026 12:00:01 PM"},
      {GeneralDate(In2026(1, 2)), "1/2/2026"},
      {Left("abcdef", 2), "ab"},   {Left("ab", 5), "ab"},          {Right("abcdef", 2), "ef"}, {Right("ab", 9), "ab"},
      {Mid("abcdef", 2, 3), "bcd"}, {Mid("abcdef", 4), "def"},      {Mid("abc", 9), ""},        {Trim("  a b  "), "a b"},
      {Trim("\ta "), "\ta"},  // the classic Trim removes blanks only
      {UCase("start:x"), "START:X"}, {LCase("/Opt/TARVENIX"), "/opt/tarvenix"},
  };
  for (const auto& [got, expected] : cases) EXPECT_EQ(got, expected);
  EXPECT_EQ(ErrorNumberOf([] { Left("abc", -1); }), err::kInvalidCall);
  EXPECT_EQ(ErrorNumberOf([] { Right("abc", -1); }), err::kInvalidCall);
  EXPECT_EQ(ErrorNumberOf([] { Mid("abc", 0); }), err::kInvalidCall);
}

}  // namespace
}  // namespace tarvenix::basic
