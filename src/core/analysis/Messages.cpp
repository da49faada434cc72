#include "analysis/Messages.h"

#include <array>
#include <string>

#include "base/Basic.h"
#include "session/Sound.h"
#include "session/Utils.h"
#include "session/Session.h"
#include "session/UiPort.h"

namespace tarvenix::modTarvenix {

void DisplayData(Session& s, UiPort& ui, int16_t iMode) {
  modUtils::Trapped(s, ui, "modTarvenix.DisplayData", [&] {
    const int16_t d = s.iDataSetNum;
    s.sBetaResult(d) = "BETA =" + s.sBetaResult(d);
    s.sNResult(d) = s.sNLabel + s.sNResult(d);
    if (iMode == 1) ui.UpdateTextBox("Data Set #" + std::to_string(d));
    ui.UpdateTextBox(s.sBetaResult(d));
    ui.UpdateTextBox(s.sNResult(d));
    ui.UpdateTextBox(s.sRSquaredResult(d));
    ui.UpdateStatus(kAnalysisComplete);
  });
}

namespace {

std::string ErrorMessageFor(const Session& s, int16_t iCode) {
  switch (iCode) {
    case kErrTooFewFailures:
      return "Analysis requires at least " + std::to_string(s.iMinFailures) + " failed channels.";
    case kErrFirstCycleEvents:
      return s.bDataCycles ? "Channels with first data cycle events cannot be analyzed."
                           // The doubled blank before "events" is part of the text.
                           : "Channels with first temperature or mechanical cycle  events cannot be analyzed.";
    case kErrTooFewChannels:
      return "Analysis cannot be performed on fewer than 5 channels.";
    default:
      return "";
  }
}

// The five lines of code 5 (empty for codes outside the table).
std::array<std::string, 5> EarlyEventLines(const Session& s, int16_t iCode, int16_t iChannel, int32_t lCycle) {
  std::array<std::string, 5> lines;
  if (iCode != kErrBeforeInitialCycle) return lines;
  const int16_t d = s.iDataSetNum;
  lines[0] = "The data history file contains channels which have events at cycle-";
  lines[1] = "counts less than those specified in the cycle-offset files.";
  const std::string events = "#" + std::to_string(s.iNumEvents(d));
  if (!s.bDataCycles) {
    lines[3] = events + " Event recorded on Ch # " + std::to_string(iChannel) + " @ Data cycle #" +
               std::to_string(lCycle) + " @ appropriate Temp./Mech. Cycle #";
    // Multiplying the label text by the offset is a type mismatch; the error box
    // then stands in for the message, as it always has.
    if (s.InitialCycle(AnalysisColumn::Cycles) >= 1) Raise(err::kTypeMismatch);
  } else {
    lines[3] = events + " Event recorded on Ch #" + std::to_string(iChannel) + " @ Data cycle #" +
               std::to_string(lCycle);
    if (s.InitialCycle(AnalysisColumn::DataCycles) >= 1)
      lines[4] = "Specified initial cycle = " + std::to_string(s.InitialCycle(AnalysisColumn::DataCycles));
  }
  return lines;
}

}  // namespace

void DisplayError(Session& s, UiPort& ui, int16_t iCode, int16_t iChannel, int32_t lCycle) {
  modUtils::Trapped(s, ui, "modTarvenix.DisplayError", [&] {
    ui.UpdateStatus(kAnalysisFailed);
    modSound::PlaySound(s, ui, modSound::Sound::Attention);
    std::string message = ErrorMessageFor(s, iCode);
    if (iCode == kErrTooFewFailures || iCode == kErrFirstCycleEvents || iCode == kErrTooFewChannels) {
      ui.UpdateTextBox(message);
      modUtils::ShowMessage(s, ui, modUtils::kMsgNotice, "", message);
      return;
    }
    for (const std::string& line : EarlyEventLines(s, iCode, iChannel, lCycle)) {
      message += "\r" + line;
      ui.UpdateTextBox(line);
    }
    modUtils::ShowMessage(s, ui, modUtils::kMsgNotice, "", message);
  });
}

}  // namespace tarvenix::modTarvenix
