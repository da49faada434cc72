#include <gtest/gtest.h>

#include <vector>

#include "input/FirstCycle.h"

namespace tarvenix::modTarvenix {
namespace {

TEST(FirstCycleChannelList, ABlankBeforeEachFlaggedChannelInAscendingOrder) {
  struct Case {
    std::vector<int> flagged;
    const char* list;
  } cases[] = {{{}, ""}, {{1024, 3}, " 3 1024"}, {{5, 17}, " 5 17"}, {{1, 1000}, " 1 1000"}};
  for (const Case& c : cases) {
    FirstCycleFlags flags{};
    for (int ch : c.flagged) flags[static_cast<std::size_t>(ch)] = true;
    EXPECT_EQ(FirstCycleChannelList(flags), c.list);
  }
}

}  // namespace
}  // namespace tarvenix::modTarvenix
