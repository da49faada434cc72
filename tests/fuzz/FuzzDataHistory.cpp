// ProcessData on a data history file of arbitrary bytes, with the count limit.
//
// Input: flags (bit 0: data cycles, else temperature/mechanical; bit 1: debug
// mode; bits 2-3: the first-cycle answer 0 none, 1 yes, 2-3 no; bit 4: the
// answer standing from before), the occurrence limit (16 bits), the initial
// data and temperature/mechanical cycles (32 bits each), the first and last
// channel (16 bits each, clamped to 1..1024), the minimum number of failures
// (1 + byte % 5; the program asks for 5); then the file.

#include <algorithm>
#include <cstdint>
#include <string>

#include "FuzzSupport.h"
#include "app/Session.h"
#include "input/DataHistory.h"

using namespace tarvenix;

namespace {

// The lines ProcessData writes before it reads anything.
constexpr int kRunHeaderLines = 6;

int SelectedChannels(const Session& s) {
  int selected = 0;
  for (int ch = 1; ch <= kMaxChannels; ++ch) selected += s.iChSelected(ch);
  return selected;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  fuzz::InputHeader in(data, size);
  const uint8_t flags = in.Byte();
  const int16_t limit = in.Int16();
  const int32_t initialData = in.Int32();
  const int32_t initialCycle = in.Int32();
  const int first = std::clamp<int>(in.Int16(), 1, kMaxChannels);
  const int last = std::clamp<int>(in.Int16(), first, kMaxChannels);
  const int16_t minFailures = static_cast<int16_t>(1 + in.Byte() % 5);

  Session s;
  s.bSoundStatus = false;
  s.iDataSetNum = 1;
  s.iNumDataSets = 1;
  s.bDataCycles = (flags & 1) != 0;
  s.bDebug = (flags & 2) != 0;
  s.bIgnoreFirstCycles = (flags & 16) != 0;
  s.bNumOccurrences = true;
  s.iMinFailures = minFailures;
  s.lInitialCycle(0) = initialData;
  s.lInitialCycle(1) = initialCycle;
  s.sDataFiles(1) = fuzz::WriteScratch("history.txt", in.Rest());
  s.sDataIDs(1) = "fuzz";
  s.iFirstChannels(1) = static_cast<int16_t>(first);
  s.iLastChannels(1) = static_cast<int16_t>(last);
  s.iOccurrenceLimits(1) = limit;
  for (int ch = first; ch <= last; ++ch) s.iChSelected(ch) = 1;
  s.iGroupSize(1) = static_cast<int16_t>(last - first + 1);

  fuzz::CountingUi ui;
  const int answer = (flags >> 2) & 3;
  if (answer == 1) ui.firstCycleAnswer = true;
  if (answer >= 2) ui.firstCycleAnswer = false;

  int16_t iErr = 0;
  modTarvenix::ProcessData(s, ui, iErr);

  fuzz::Require(iErr == 0 || iErr == 1, "the error flag is 0 or 1");
  fuzz::Require(iErr == 0 || ui.messages > 0 || ui.textLines > kRunHeaderLines, "a stopped run says why");
  // Channels the user chose to ignore leave the selection and the group together.
  fuzz::Require(s.iGroupSize(1) == SelectedChannels(s), "the group size counts the selected channels",
                std::to_string(s.iGroupSize(1)) + " vs " + std::to_string(SelectedChannels(s)));
  fuzz::Require(s.iChSelected(0) == 0, "channel 0 is never selected");
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
