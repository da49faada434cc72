#include "input/ChannelSelection.h"

#include <string>

#include "base/Basic.h"
#include "session/FileUtils.h"
#include "session/Utils.h"
#include "session/Session.h"
#include "session/UiPort.h"

namespace tarvenix::modTarvenix {
namespace {

// A header line "START:" or "TSTART:" (any case): stores the value after the
// keyword, when there is anything after it, into lInitialCycle(element).
bool TakeHeader(Session& s, const std::string& line, std::string_view keyword, int element) {
  const auto length = static_cast<long long>(keyword.size());
  if (basic::UCase(basic::Left(line, length)) != keyword) return false;
  if (static_cast<long long>(line.size()) > length)
    s.lInitialCycle(element) = basic::CLng(basic::Val(basic::Mid(line, length + 1)));
  return true;
}

// Why an entry cannot name a channel, or nullptr when it names one that is new.
// A number beyond 16 bits is no reason but run-time error 6.
const char* RejectionOf(const Session& s, const std::string& entry, int16_t& channel) {
  if (!basic::IsNumeric(entry)) return kBadChannelText;
  const double value = basic::Val(entry);
  channel = basic::CInt(value);
  if (value != channel) return kBadChannelText;  // 12.5 is no channel number either
  if (channel < 1 || channel > kMaxChannels) return kChannelRangeText;
  if (s.iChSelected(channel) == 1) return kDuplicateChannelText;
  return nullptr;
}

// Reads the channel selection file into iChSelected and iGroupSize(d). False
// when an entry was rejected (the message has been shown).
bool ReadChannelSelectionFile(Session& s, UiPort& ui, const std::string& path, int16_t d) {
  auto file = modUtils::VbFile::Open(modUtils::FileMode::Input, path);
  s.iGroupSize(d) = 0;
  s.iChSelected.Clear();
  s.bUseChSelFiles(d) = true;
  int lineNumber = 1;

  std::string entry = file->LineInput();
  while (TakeHeader(s, entry, "START:", 0) || TakeHeader(s, entry, "TSTART:", 1)) {
    ++lineNumber;
    entry = file->LineInput();
  }
  for (;;) {
    int16_t channel = 0;
    if (const char* reason = RejectionOf(s, entry, channel)) {
      file.reset();
      modUtils::ShowMessage(s, ui, modUtils::kMsgError, "",
                            "Error in channel selection file:\r" + path + "\rat line number: " +
                                std::to_string(lineNumber) + "\r\r" + reason);
      return false;
    }
    ++lineNumber;
    s.iChSelected(channel) = 1;
    s.iGroupSize(d) = static_cast<int16_t>(s.iGroupSize(d) + 1);
    if (file->Eof()) return true;
    entry = file->InputItem();
  }
}

void SelectRange(Session& s, int16_t d, int16_t first, int16_t last) {
  s.iChSelected.Clear();
  for (int channel = first; channel <= last; ++channel) s.iChSelected(channel) = 1;
  s.iGroupSize(d) = basic::CInt(static_cast<double>(last) - first + 1);
}

}  // namespace

void CheckSetupEntries(Session& s, UiPort& ui, const DataSetSettings& setup, int16_t iFirstCh, int16_t iLastCh,
                       int16_t iOccurrenceLimit, int16_t& iErr) {
  bool accepted = true;
  bool finished = modUtils::Trapped(s, ui, "modTarvenix.CheckSetupEntries", [&] {
    const int16_t d = s.iDataSetNum;
    s.sDataFiles(d) = setup.sDataFile;
    s.sIPCFiles(d) = IpcFileName(setup.sDataFile);
    s.bUseChSelFiles(d) = setup.bChSelFile;
    s.sChSelFiles(d) = setup.sChSelFile;
    s.iFirstChannels(d) = iFirstCh;
    s.iLastChannels(d) = iLastCh;
    s.sDataIDs(d) = basic::Trim(setup.sDataID);
    s.bDataCycles = setup.bDataCycles;
    s.bNumOccurrences = setup.bNumOccurrences;

    if (setup.bChSelFile && !ReadChannelSelectionFile(s, ui, setup.sChSelFile, d)) {
      accepted = false;
      return;
    }
    if (setup.bFirstLastCh) SelectRange(s, d, iFirstCh, iLastCh);
    s.iOccurrenceLimits(d) = iOccurrenceLimit;
  });
  if (!finished || !accepted) iErr = 1;
}

}  // namespace tarvenix::modTarvenix
