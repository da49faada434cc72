#include "setup/SetupSequence.h"

#include <optional>

#include "base/Basic.h"
#include "session/FileUtils.h"
#include "session/Utils.h"
#include "analysis/Weibull.h"
#include "session/UiPort.h"
#include "input/ChannelSelection.h"
#include "input/DataHistory.h"

namespace tarvenix::setup {
namespace {

// Checks 5 to 8: the channel range, when the range is the choice.
std::optional<Refusal> CheckRangeChoice(const DataSetSettings& c) {
  if (!c.bFirstLastCh) return std::nullopt;
  return CheckChannelRange(c.sFirstCh, c.sLastCh);
}

// Step 3 of OK: the data history file becomes the one being set up, its folder
// the one file dialogs open in, and its names are filed under the number the new
// data set will get. With five data sets loaded there is no such number (an
// edit or re-analysis): nothing is filed ahead, the data set's own slot gets the
// names when its entries are checked.
void FileDataHistoryNames(Session& s, const std::string& dataFile) {
  s.sDataFile = dataFile;
  std::string folder, name;
  modUtils::GetPathAndFilename(dataFile, folder, name);
  if (!folder.empty()) s.sDataDir = folder;
  const int next = s.iNumDataSets + 1;
  if (next > kMaxDataSets) return;
  s.sDataFiles(next) = dataFile;
  s.sIPCFiles(next) = modTarvenix::IpcFileName(dataFile);
}

// Checks 1 to 9 with step 3 between them; the first failure ends them.
std::optional<Refusal> CheckControls(Session& s, const DataSetSettings& c) {
  if (c.bChSelFile && !modUtils::IsFile(c.sChSelFile)) return Refusal{kChSelFileMissing, SetupFocus::txtChSelFile};
  // With the IPC/JEDEC limit the event array file is checked instead of the
  // data history file.
  if (c.bNumOccurrences && !modUtils::IsFile(c.sDataFile)) return Refusal{kDataFileMissing, SetupFocus::txtDataFile};
  FileDataHistoryNames(s, c.sDataFile);
  if (c.bIPCOccurrences && !modUtils::IsFile(modTarvenix::IpcFileName(c.sDataFile)))
    return Refusal{kIpcFileMissing, SetupFocus::txtDataFile};
  if (std::optional<Refusal> r = CheckRangeChoice(c)) return r;
  if (c.bNumOccurrences && basic::Val(c.sOccurrenceLimit) == 0) return Refusal{kZeroOccurrenceLimit, SetupFocus::None};
  return std::nullopt;
}

}  // namespace

SetupMode ModeOf(bool bAddMode, bool bReAnalyzeMode) {
  if (bAddMode) return SetupMode::Add;
  return bReAnalyzeMode ? SetupMode::ReAnalyze : SetupMode::Edit;
}

const char* FocusObjectName(SetupFocus focus) {
  switch (focus) {
    case SetupFocus::txtChSelFile: return "txtChSelFile";
    case SetupFocus::txtDataFile: return "txtDataFile";
    case SetupFocus::txtFirstCh: return "txtFirstCh";
    case SetupFocus::txtLastCh: return "txtLastCh";
    case SetupFocus::None: break;
  }
  return "";
}

bool IsChannelEntry(const std::string& text) {
  if (!basic::IsNumeric(text)) return false;
  const double v = basic::CDbl(text);
  return v == basic::Fix(v) && v >= 1 && v <= kMaxChannels;
}

int16_t ChannelNumber(const std::string& text) {
  return IsChannelEntry(text) ? basic::CInt(basic::CDbl(text)) : int16_t{0};
}

std::optional<Refusal> CheckChannelRange(const std::string& first, const std::string& last) {
  if (!IsChannelEntry(first)) return Refusal{kFirstChannelInvalid, SetupFocus::txtFirstCh};
  if (!IsChannelEntry(last)) return Refusal{kLastChannelInvalid, SetupFocus::txtLastCh};
  const int firstCh = ChannelNumber(first);
  const int lastCh = ChannelNumber(last);
  if (firstCh >= lastCh) return Refusal{kChannelOrder, SetupFocus::txtFirstCh};
  if (lastCh - firstCh + 1 < 5) return Refusal{kTooFewChannels, SetupFocus::txtFirstCh};
  return std::nullopt;
}

std::string ActivateSetup(Session& s, UiPort& ui, SetupMode mode, DataSetSettings& controls) {
  std::string caption;
  modUtils::Trapped(s, ui, "frmTarvenixSetup.frmActivate", [&] {
    if (mode == SetupMode::Add) s.iDataSetNum = basic::CInt(s.iDataSetNum + 1.0);
    caption = "Tarvenix Setup for Data Set #" + std::to_string(s.iDataSetNum);
    controls.sDataID = "Data Set #" + std::to_string(s.iDataSetNum);
    controls.bDataCycles = true;
    controls.bTempCycles = false;
    controls.bNumOccurrences = true;
    controls.bIPCOccurrences = false;
    s.bIgnoreFirstCycles = false;
    if (!s.sDataFile.empty()) controls.sDataFile = s.sDataFile;
    if (mode != SetupMode::Add) controls = s.dataSetSettings(s.iDataSetNum);
  });
  return caption;
}

FinishUpResult FinishUp(Session& s, UiPort& ui, SetupMode mode, const DataSetSettings& controls,
                        const std::function<void()>& hideDialog) {
  FinishUpResult result;
  modUtils::Trapped(s, ui, "frmTarvenixSetup.FinishUp", [&] {
    if (std::optional<Refusal> r = CheckControls(s, controls)) {
      modUtils::ShowMessage(s, ui, modUtils::kMsgNotice, "", r->message);
      result.focus = r->focus;
      return;
    }
    const int16_t first = ChannelNumber(controls.sFirstCh);
    const int16_t last = ChannelNumber(controls.sLastCh);
    const int16_t limit = basic::CInt(basic::Val(controls.sOccurrenceLimit));
    // The counters are not rolled back when the entries are rejected below: a
    // later OK in add mode moves them once more.
    if (mode == SetupMode::Add) modTarvenix::NextDataSet(s);
    int16_t iErr = 0;
    modTarvenix::CheckSetupEntries(s, ui, controls, first, last, limit, iErr);
    if (iErr != 0) {
      result.focus = SetupFocus::txtChSelFile;
      return;
    }
    s.dataSetSettings(s.iDataSetNum) = controls;
    result.accepted = true;
    if (hideDialog) hideDialog();
    ui.DoEvents();
    modTarvenix::ProcessData(s, ui, iErr);
    if (iErr == 0) modTarvenix::AnalyzeData(s, ui, true);
  });
  return result;
}

void CancelSetup(Session& s, UiPort& ui) {
  modUtils::Trapped(s, ui, "frmTarvenixSetup.cmdBtnCancel", [&] { s.iDataSetNum = basic::CInt(s.iDataSetNum - 1.0); });
}

}  // namespace tarvenix::setup
