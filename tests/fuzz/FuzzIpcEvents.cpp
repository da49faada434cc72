// ProcessData with the IPC/JEDEC limit on an event array file of arbitrary
// bytes.
//
// Input: flags (bit 0: data cycles, else temperature/mechanical; bit 1: debug
// mode; bits 2-3: the first-cycle answer 0 none, 1 yes, 2-3 no; bit 4: the
// answer standing from before; bit 5: complete the file), the first and last
// channel (16 bits each, clamped to 1..1024), the initial data and
// temperature/mechanical cycles (32 bits each), the channel from which an
// empty line is added for each channel up to 1024 when the file is completed
// (16 bits), the minimum number of failures (1 + byte % 5); then the file.
// Completing lets a small input reach the rule, which needs 1024 channel lines.

#include <algorithm>
#include <cstdint>
#include <string>

#include "FuzzSupport.h"
#include "app/Session.h"
#include "input/DataHistory.h"

using namespace tarvenix;

namespace {

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
  const int first = std::clamp<int>(in.Int16(), 1, kMaxChannels);
  const int last = std::clamp<int>(in.Int16(), first, kMaxChannels);
  const int32_t initialData = in.Int32();
  const int32_t initialCycle = in.Int32();
  const int fillFrom = std::clamp<int>(in.Int16(), 1, kMaxChannels + 1);
  const int16_t minFailures = static_cast<int16_t>(1 + in.Byte() % 5);
  std::string file(in.Rest());
  if (flags & 32) {
    if (!file.empty() && file.back() != '\n' && file.back() != '\r') file += "\r\n";
    for (int ch = fillFrom; ch <= kMaxChannels; ++ch) file += std::to_string(ch) + ":,T,\r\n";
  }

  Session s;
  s.bSoundStatus = false;
  s.iDataSetNum = 1;
  s.iNumDataSets = 1;
  s.bDataCycles = (flags & 1) != 0;
  s.bDebug = (flags & 2) != 0;
  s.bIgnoreFirstCycles = (flags & 16) != 0;
  s.bNumOccurrences = false;
  s.iMinFailures = minFailures;
  s.lInitialCycle(0) = initialData;
  s.lInitialCycle(1) = initialCycle;
  s.sDataFiles(1) = fuzz::ScratchPath("run.txt");
  s.sIPCFiles(1) = fuzz::WriteScratch("run.ipc", file);
  s.sDataIDs(1) = "fuzz";
  s.iFirstChannels(1) = static_cast<int16_t>(first);
  s.iLastChannels(1) = static_cast<int16_t>(last);
  for (int ch = first; ch <= last; ++ch) s.iChSelected(ch) = 1;
  s.iGroupSize(1) = static_cast<int16_t>(last - first + 1);

  fuzz::CountingUi ui;
  const int answer = (flags >> 2) & 3;
  if (answer == 1) ui.firstCycleAnswer = true;
  if (answer >= 2) ui.firstCycleAnswer = false;

  int16_t iErr = 0;
  modTarvenix::ProcessData(s, ui, iErr);

  fuzz::Require(iErr == 0 || iErr == 1 || iErr == -1, "the error flag is 0, 1 or -1");
  fuzz::Require(iErr == 0 || ui.messages > 0 || ui.textLines > kRunHeaderLines, "a stopped run says why");
  fuzz::Require(s.iGroupSize(1) == SelectedChannels(s), "the group size counts the selected channels",
                std::to_string(s.iGroupSize(1)) + " vs " + std::to_string(SelectedChannels(s)));
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
