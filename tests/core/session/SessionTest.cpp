#include <gtest/gtest.h>

#include "base/RuntimeError.h"
#include "session/Session.h"
#include "support/ErrorNumber.h"

namespace tarvenix {
namespace {

using test::ErrorNumberOf;

TEST(SessionCounting, FiveAddsThenClearWalkThroughTheThreeStatuses) {
  Session s;
  EXPECT_EQ(modTarvenix::SessionStatus(s.iNumDataSets), "startup");
  for (int n = 1; n <= 5; ++n) {
    modTarvenix::NextDataSet(s);
    EXPECT_EQ(s.iNumDataSets, n);
    EXPECT_EQ(s.iDataSetNum, n);
    EXPECT_EQ(modTarvenix::SessionStatus(s.iNumDataSets), n < 5 ? "1-4 data sets loaded" : "5 data sets loaded");
  }
  s.sngNParam(3) = 1234.0f;
  s.vEventCycle(3, 7) = 99;
  s.sBetaResult(2) = "BETA = 2.00";
  modTarvenix::ClearDataSets(s);
  EXPECT_EQ(s.iNumDataSets, 0);
  EXPECT_EQ(s.iDataSetNum, 0);
  EXPECT_EQ(modTarvenix::SessionStatus(s.iNumDataSets), "startup");
  EXPECT_EQ(s.sngNParam(3), 0.0f);
  EXPECT_EQ(s.vEventCycle(3, 7), 0);
  EXPECT_EQ(s.sBetaResult(2), "");
  modTarvenix::NextDataSet(s);
  EXPECT_EQ(s.iDataSetNum, 1) << "Clear followed by Add gives data set number 1 again";
}

TEST(SessionTables, IndexesOutsideTheirRangeAndCountsPast16BitsAreRunTimeFaults) {
  Session s;
  struct Case {
    const char* what;
    std::function<void()> access;
    int expected;
  };
  const Case cases[] = {
      {"data set 0 exists", [&] { s.sDataFiles(0) = "x"; }, 0},
      {"data set 5 exists", [&] { s.sDataFiles(5) = "x"; }, 0},
      {"data set 6", [&] { s.sDataFiles(6) = "x"; }, err::kSubscript},
      {"data set -1", [&] { (void)s.sngBeta(-1); }, err::kSubscript},
      {"channel 1024", [&] { s.iChSelected(1024) = 1; }, 0},
      {"channel 1025", [&] { s.iChSelected(1025) = 1; }, err::kSubscript},
      {"event 1025", [&] { s.vEventCycle(1, 1025) = 1; }, err::kSubscript},
      {"record 6", [&] { (void)s.dataSetSettings(6); }, err::kSubscript},
      {"data set 32768", [&] { s.iNumDataSets = 32767; modTarvenix::NextDataSet(s); }, err::kOverflow},
      {"data set -32769", [&] { s.iNumDataSets = -32768; modTarvenix::PreviousDataSet(s); }, err::kOverflow},
  };
  for (const Case& c : cases) EXPECT_EQ(ErrorNumberOf(c.access), c.expected) << c.what;
}

TEST(IpcFileNames, LastFourCharactersGiveWayToIpc) {
  struct Case {
    std::string data;
    std::string ipc;
  };
  const Case cases[] = {
      {"C:\\logs\\run.txt", "C:\\logs\\run.ipc"},
      {"/lab/run.txt", "/lab/run.ipc"},
      {"/lab/run.dat1", "/lab/run..ipc"},  // no three-letter extension: four characters go all the same
      {"/lab/run", "/lab.ipc"},
      {"abcd", ".ipc"},
  };
  for (const Case& c : cases) EXPECT_EQ(modTarvenix::IpcFileName(c.data), c.ipc) << c.data;
  EXPECT_EQ(ErrorNumberOf([] { modTarvenix::IpcFileName("a.t"); }), err::kInvalidCall);
  EXPECT_EQ(ErrorNumberOf([] { modTarvenix::IpcFileName(""); }), err::kInvalidCall);
}

}  // namespace
}  // namespace tarvenix
