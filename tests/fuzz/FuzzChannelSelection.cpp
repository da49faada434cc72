// CheckSetupEntries on a channel selection file of arbitrary bytes, with or
// without a channel range over it.
//
// Input: flags (bit 0: a range too, bit 1: data cycles, bit 2: count limit),
// the data set number (byte % 8 - 1, so -1 and 6 lie outside 0..5), first and
// last channel and the occurrence limit (16 bits each); then the file.

#include <algorithm>
#include <cstdint>
#include <string>

#include "FuzzSupport.h"
#include "session/Session.h"
#include "input/ChannelSelection.h"

using namespace tarvenix;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, std::size_t size) {
  fuzz::InputHeader in(data, size);
  const uint8_t flags = in.Byte();
  const int16_t d = static_cast<int16_t>(in.Byte() % 8 - 1);
  const int16_t first = in.Int16();
  const int16_t last = in.Int16();
  const int16_t limit = in.Int16();

  Session s;
  s.bSoundStatus = false;
  s.iDataSetNum = d;
  DataSetSettings setup;
  setup.sDataFile = fuzz::ScratchPath("run.txt");
  setup.sDataID = " fuzz ";
  setup.bChSelFile = true;
  setup.bFirstLastCh = (flags & 1) != 0;
  setup.bDataCycles = (flags & 2) != 0;
  setup.bNumOccurrences = (flags & 4) != 0;
  setup.sChSelFile = fuzz::WriteScratch("channels.txt", in.Rest());

  fuzz::CountingUi ui;
  int16_t iErr = 0;
  modTarvenix::CheckSetupEntries(s, ui, setup, first, last, limit, iErr);

  // Every refusal is told, and nothing is refused silently.
  fuzz::Require(iErr == 0 || iErr == 1, "the error flag is 0 or 1");
  fuzz::Require((iErr == 1) == (ui.messages == 1), "a refused setup shows exactly one message",
                std::to_string(ui.messages) + " messages, flag " + std::to_string(iErr));
  if (d < 0 || d > kMaxDataSets) return 0;

  int selected = 0;
  for (int ch = 0; ch <= kMaxChannels; ++ch) {
    fuzz::Require(s.iChSelected(ch) == 0 || s.iChSelected(ch) == 1, "channel flags are 0 or 1");
    selected += s.iChSelected(ch);
  }
  // The setup dialog lets no range start below 1; a file can never name 0.
  if (!setup.bFirstLastCh || first >= 1) fuzz::Require(s.iChSelected(0) == 0, "channel 0 is never selected");
  // A file's count is the channels accepted so far, also when a later entry
  // was refused; a range counts from its ends, none when last is below first.
  if (!setup.bFirstLastCh)
    fuzz::Require(s.iGroupSize(d) == selected, "the group size counts the selected channels",
                  std::to_string(s.iGroupSize(d)) + " vs " + std::to_string(selected));
  if (setup.bFirstLastCh && iErr == 0) {
    fuzz::Require(s.iGroupSize(d) == last - first + 1, "a range's count is last - first + 1");
    fuzz::Require(selected == std::max(0, last - first + 1), "a range selects first..last");
  }
  if (iErr == 0) fuzz::Require(s.iOccurrenceLimits(d) == limit, "an accepted setup stores its limit");
  return 0;
}
