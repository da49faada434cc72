// ProcessData on a data history file of arbitrary bytes, with the count limit.
//
// Input: the readers' settings (FuzzSupport.h), `number` being the occurrence
// limit; then the file.

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
  s.bNumOccurrences = true;
  s.iOccurrenceLimits(1) = settings.number;
  s.sDataFiles(1) = fuzz::WriteScratch("history.txt", in.Rest());

  int16_t iErr = 0;
  modTarvenix::ProcessData(s, ui, iErr);

  fuzz::CheckReaderRun(s, ui, iErr, false);
  if (iErr != 0) return 0;
  const int n = s.iNumEvents(1);
  // The minimum is checked before a group that failed whole loses its last failure.
  fuzz::Require(n >= std::min<int>(s.iMinFailures, s.iGroupSize(1) - 1), "a finished run has enough failures");
  fuzz::Require(n >= 0 && n < s.iGroupSize(1), "at least one channel of the group survives",
                std::to_string(n) + " events, group " + std::to_string(s.iGroupSize(1)));
  for (int row = 1; row <= n; ++row)
    fuzz::Require(s.vEventCount(1, row) == row, "the running count of failures");
  if (!s.bDataCycles) fuzz::Require(static_cast<bool>(s.bTempCyclesAvailable), "cycles were associated");
  return 0;
}
