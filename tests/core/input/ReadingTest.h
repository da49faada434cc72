#pragma once
// One data set set up through CheckSetupEntries and read through ProcessData,
// with everything the user would see recorded. The case folders (tests/cases)
// show reading through the batch tool; this is for what they cannot reach.

#include <functional>
#include <string>
#include <vector>

#include "input/ChannelSelection.h"
#include "input/DataHistory.h"
#include "session/Session.h"
#include "support/RecordingUi.h"
#include "support/TempDir.h"

namespace tarvenix::test {

// A recording UI that can act as a status line is shown.
struct ReadingUi : RecordingUi {
  std::function<void(const std::string&)> onStatus;
  void UpdateStatus(const std::string& sMsg) override {
    if (onStatus) onStatus(sMsg);
    RecordingUi::UpdateStatus(sMsg);
  }
};

struct Reading {
  TempDir dir;
  Session s;
  ReadingUi ui;
  int16_t iErr = 0;

  Reading() {
    s.iDataSetNum = s.iNumDataSets = 1;
    s.bSoundStatus = false;
  }
  // Checks the setup of data set 1: the channel selection file when one is
  // named, the channels first..last when last is given (over the file's); the
  // count limit, or the IPC/JEDEC limit when `limit` is 0.
  void Setup(const std::string& historyFile, const std::string& chSelFile, int16_t first, int16_t last,
             int16_t limit, bool dataCycles) {
    DataSetSettings setup;
    setup.sDataFile = historyFile;
    setup.bNumOccurrences = limit != 0;
    setup.bIPCOccurrences = limit == 0;
    setup.bDataCycles = dataCycles;
    setup.bTempCycles = !dataCycles;
    setup.bChSelFile = !chSelFile.empty();
    setup.sChSelFile = chSelFile;
    setup.bFirstLastCh = chSelFile.empty() || last != 0;
    modTarvenix::CheckSetupEntries(s, ui, setup, first, last, limit, iErr);
  }
  // The same with the data history file's content, the channels first..last.
  void SetupHistory(const std::string& content, int16_t first, int16_t last, int16_t limit, bool dataCycles) {
    Setup(dir.Write("run.txt", content), "", first, last, limit, dataCycles);
  }
  void Read() { modTarvenix::ProcessData(s, ui, iErr); }

  // Rows 1..iNumEvents of the data set's failure data.
  std::vector<int32_t> Cycles() const { return Rows(s.vEventCycle); }
  std::vector<int32_t> Counts() const { return Rows(s.vEventCount); }
  template <typename Table>
  std::vector<int32_t> Rows(const Table& t) const {
    std::vector<int32_t> v;
    for (int i = 1; i <= s.iNumEvents(1); ++i) v.push_back(t(1, i));
    return v;
  }
};

}  // namespace tarvenix::test
