// ProcessData with the IPC/JEDEC limit on an event array file of arbitrary
// bytes.
//
// Input: the readers' settings (FuzzSupport.h); flag bit 5 completes the file
// with an empty line for each channel from `number` up to 1024, so a small
// input reaches the rule, which needs 1024 channel lines; then the file.

#include <algorithm>
#include <cstdint>
#include <string>

#include "FuzzSupport.h"
#include "session/Session.h"
#include "input/DataHistory.h"

using namespace tarvenix;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  fuzz::InputHeader in(data, size);
  Session s;
  fuzz::CountingUi ui;
  const fuzz::ReaderSettings settings = fuzz::ReadReaderSettings(in, s);
  fuzz::PrepareReader(settings, s, ui);
  std::string file(in.Rest());
  if (settings.flags & 32) {
    if (!file.empty() && file.back() != '\n' && file.back() != '\r') file += "\r\n";
    for (int ch = std::max<int>(settings.number, 1); ch <= kMaxChannels; ++ch) file += std::to_string(ch) + ":,T,\r\n";
  }
  s.bNumOccurrences = false;
  s.sDataFiles(1) = fuzz::ScratchPath("run.txt");
  s.sIPCFiles(1) = fuzz::WriteScratch("run.ipc", file);

  int16_t iErr = 0;
  modTarvenix::ProcessData(s, ui, iErr);

  fuzz::CheckReaderRun(s, ui, iErr, true);
  if (iErr != 0) return 0;
  // One row per failure cycle, in ascending order, with the running count.
  const int n = s.iNumEvents(1);
  fuzz::Require(n >= 0 && n <= kMaxEvents, "the rows fit the table");
  for (int row = 1; row <= n; ++row) {
    fuzz::Require(s.vEventCount(1, row) > s.vEventCount(1, row - 1), "the running count rises with each row");
    if (row > 1) fuzz::Require(s.vEventCycle(1, row) > s.vEventCycle(1, row - 1), "failure cycles ascend");
  }
  fuzz::Require(n == 0 || s.vEventCount(1, n) < s.iGroupSize(1), "at least one channel of the group survives",
                std::to_string(s.vEventCount(1, n)) + " failed of " + std::to_string(s.iGroupSize(1)));
  return 0;
}
