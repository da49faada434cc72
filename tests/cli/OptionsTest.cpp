// How --channels splits its value. The batch tool's other options, usage
// errors included, are shown by the case folders under tests/cases/cli/.

#include <gtest/gtest.h>

#include "Options.h"

namespace tarvenix::cli {
namespace {

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

}  // namespace
}  // namespace tarvenix::cli
