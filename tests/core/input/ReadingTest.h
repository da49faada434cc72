#pragma once
// One data set set up through CheckSetupEntries and read through ProcessData,
// with everything the user would see recorded.

#include <string>
#include <vector>

#include "session/Session.h"
#include "support/RecordingUi.h"
#include "support/TempDir.h"

namespace tarvenix::test {

struct Reading {
  TempDir dir;
  Session s;
  RecordingUi ui;
  int16_t iErr = 0;
  std::string dataFile;
  // Set before a Setup: the IPC/JEDEC limit instead of the count limit.
  bool ipcLimit = false;

  Reading();
  // Checks the setup of data set 1 with files already written: the channel
  // selection file when one is named, else the channel range first..last; the
  // occurrence limit and the analysis kind.
  void SetupFiles(const std::string& historyFile, const std::string& chSelFile, int16_t first, int16_t last,
                  int16_t limit, bool dataCycles);
  // The same writing the data history file, with the channel range.
  void Setup(const std::string& content, int16_t first, int16_t last, int16_t limit, bool dataCycles);
  // The same writing a channel selection file too, instead of the range.
  void SetupWithFile(const std::string& content, const std::string& chSel, int16_t limit, bool dataCycles);
  // The IPC/JEDEC limit with the channel range first..last: writes the event
  // array file beside a data history file that does not exist (the limit reads
  // only the event array).
  void SetupIpc(const std::string& eventArray, int16_t first, int16_t last, bool dataCycles);
  void Read();

  // Rows 1..iNumEvents of the data set's failure data.
  std::vector<int32_t> Cycles() const;
  std::vector<int32_t> Counts() const;
  // The calls to the UI port from the first that contains `from` on.
  std::vector<std::string> CallsFrom(const std::string& from) const;
};

}  // namespace tarvenix::test
