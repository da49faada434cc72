#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "Options.h"

namespace tarvenix::cli {
namespace {

using Args = std::vector<std::string>;

TEST(CliOptions, UsageErrors) {
  const std::pair<Args, const char*> cases[] = {
      {{}, "no data history file given (--data FILE)"},
      {{"--n63"}, "no data history file given (--data FILE)"},
      {{"--limit", "3", "--data", "a.txt"}, "--limit belongs to a data set and must follow --data"},
      {{"--id", "x"}, "--id belongs to a data set and must follow --data"},
      {{"--data", "a.txt", "b.txt"}, "unexpected argument 'b.txt'"},
      {{"--data", "1", "--data", "2", "--data", "3", "--data", "4", "--data", "5", "--data", "6"},
       "at most five data sets can be analysed (a sixth --data)"},
      {{"--data"}, "--data needs a value"},
      {{"--fraction", "average", "--data", "a.txt"}, "--fraction takes unadjusted or mean or median, not 'average'"},
      {{"--confidence", "99", "--data", "a.txt"}, "--confidence takes 90 or 95, not '99'"},
      {{"--ignore-first-cycles", "maybe", "--data", "a"}, "--ignore-first-cycles takes yes or no, not 'maybe'"},
      {{"--data", "a", "--cycles", "mech"}, "--cycles takes data or temp, not 'mech'"},
      {{"--data", "a", "--limit", "3x"}, "--limit takes a whole number, not '3x'"},
      {{"--data", "a", "--limit", "-"}, "--limit takes a whole number, not '-'"},
      {{"--data", "a", "--limit="}, "--limit takes a whole number, not ''"},
      {{"--n50=yes", "--data", "a"}, "--n50 takes no value"},
      {{"--data", "a", "--ipc=1"}, "--ipc takes no value"},
  };
  for (const auto& [args, error] : cases) EXPECT_EQ(ParseArguments(args).error, error) << testing::PrintToString(args);
}

TEST(CliOptions, EachGroupStartsFromTheDefaults) {
  ParseResult r = ParseArguments({"--n63", "--fraction=median", "--confidence", "95", "--ignore-first-cycles", "yes",
                                  "--report", "out/analysis.txt", "--plot-title", "Lot 7", "--debug",
                                  "--data", "one.txt", "--id", "Board A", "--channels", "1-32", "--cycles", "temp",
                                  "--limit", "+3", "--ipc",
                                  "--data", "two.txt", "--chsel", "two.chs", "--channels", "5-9"});
  // The batch runs check what each option does; here, what is kept as typed
  // and what a second group does not inherit from the first.
  ASSERT_EQ(r.error, "");
  const Options& o = r.options;
  EXPECT_EQ(o.plotTitle, "Lot 7");
  ASSERT_EQ(o.dataSets.size(), 2u);
  const DataSetOptions& one = o.dataSets[0];
  EXPECT_EQ(one.occurrenceLimit, "+3");
  const DataSetOptions& two = o.dataSets[1];
  EXPECT_FALSE(two.id.has_value());
  EXPECT_EQ(two.chSelFile, "two.chs");
  EXPECT_EQ(two.firstCh, "5");
  EXPECT_FALSE(two.tempCycles);
  EXPECT_EQ(two.occurrenceLimit, "1");
  EXPECT_FALSE(two.ipc);
}

TEST(CliOptions, ChannelsSplitAtTheFirstDashAfterTheFirstCharacter) {
  struct Case {
    const char* text;
    const char* first;
    const char* last;
  } cases[] = {{"1-32", "1", "32"}, {"-5-10", "-5", "10"}, {"10", "10", ""},    {"", "", ""},
               {"3--4", "3", "-4"}, {"a-b", "a", "b"},    {"7-", "7", ""},     {"-", "-", ""}};
  for (const Case& c : cases) {
    ParseResult r = ParseArguments({"--data", "a", "--channels", c.text});
    ASSERT_EQ(r.error, "") << c.text;
    EXPECT_EQ(r.options.dataSets[0].firstCh, c.first) << c.text;
    EXPECT_EQ(r.options.dataSets[0].lastCh, c.last) << c.text;
  }
}

TEST(CliOptions, HelpAndVersionEndTheParse) {
  EXPECT_TRUE(ParseArguments({"--help", "--bogus"}).options.help);
  EXPECT_TRUE(ParseArguments({"--data", "a", "--version"}).options.version);
  EXPECT_EQ(ParseArguments({"--bogus", "--help"}).error, "unknown option '--bogus'");
  // Values are taken as they come, even when they look like options.
  ParseResult r = ParseArguments({"--plot-title", "--help", "--data", "a"});
  EXPECT_EQ(r.error, "");
  EXPECT_EQ(r.options.plotTitle, "--help");
}

}  // namespace
}  // namespace tarvenix::cli
