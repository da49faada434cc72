#include "setup/SetupSequence.h"

#include <optional>

#include "base/Basic.h"
#include "session/FileUtils.h"
#include "session/Utils.h"
#include "analysis/Messages.h"
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

// Reading, then the analysis when reading succeeded. The data set counts as
// analysed only once the analysis has completed.
void ReadAndAnalyse(Session& s, UiPort& ui) {
  s.bAnalysisComplete(s.iDataSetNum) = false;
  int16_t iErr = 0;
  modTarvenix::ProcessData(s, ui, iErr);
  if (iErr == 0) modTarvenix::AnalyzeData(s, ui, true);
}

// The UI port as it is, remembering the last status line shown through it.
class StatusWatch : public UiPort {
 public:
  explicit StatusWatch(UiPort& ui) : ui_(ui) {}
  const std::string& LastStatus() const { return last_; }

  void UpdateStatus(const std::string& sMsg) override {
    last_ = sMsg;
    ui_.UpdateStatus(sMsg);
  }
  void UpdateTextBox(const std::string& sMsg) override { ui_.UpdateTextBox(sMsg); }
  bool ResultsTextIsEmpty() const override { return ui_.ResultsTextIsEmpty(); }
  void ShowMessageBox(const std::string& text, const std::string& title, MessageIcon icon) override {
    ui_.ShowMessageBox(text, title, icon);
  }
  bool AskYesNo(const std::string& text, const std::string& title) override { return ui_.AskYesNo(text, title); }
  std::optional<bool> AskIgnoreFirstCycleEvents(const FirstCycleFlags& flags, bool dataCycleAnalysis) override {
    return ui_.AskIgnoreFirstCycleEvents(flags, dataCycleAnalysis);
  }
  void DebugPrint(const std::string& line) override { ui_.DebugPrint(line); }
  void PlaySoundFile(const std::string& path) override { ui_.PlaySoundFile(path); }
  void DoEvents() override { ui_.DoEvents(); }
  bool OpenDocument(const std::string& path) override { return ui_.OpenDocument(path); }

 private:
  UiPort& ui_;
  std::string last_;
};

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
    // Cancel comes back to the data set that was current; Add works on the
    // number the new data set will get, whichever one was current.
    modTarvenix::KeepCurrentDataSetLoaded(s);
    s.iDataSetNumBeforeSetup = s.iDataSetNum;
    if (mode == SetupMode::Add) s.iDataSetNum = basic::CInt(s.iNumDataSets + 1.0);
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
  StatusWatch watched(ui);
  modUtils::Trapped(s, watched, "frmTarvenixSetup.FinishUp", [&] {
    if (std::optional<Refusal> r = CheckControls(s, controls)) {
      modUtils::ShowMessage(s, watched, modUtils::kMsgNotice, "", r->message);
      result.focus = r->focus;
      return;
    }
    const int16_t first = ChannelNumber(controls.sFirstCh);
    const int16_t last = ChannelNumber(controls.sLastCh);
    const int16_t limit = basic::CInt(basic::Val(controls.sOccurrenceLimit));
    if (mode == SetupMode::Add) modTarvenix::NextDataSet(s);
    int16_t iErr = 0;
    modTarvenix::CheckSetupEntries(s, watched, controls, first, last, limit, iErr);
    if (iErr != 0) {
      // The add did not happen: the counters go back, and the dialog stays
      // open on the number the new data set will get.
      if (mode == SetupMode::Add) s.iNumDataSets = basic::CInt(s.iNumDataSets - 1.0);
      result.focus = SetupFocus::txtChSelFile;
      return;
    }
    s.dataSetSettings(s.iDataSetNum) = controls;
    result.accepted = true;
    if (hideDialog) hideDialog();
    watched.DoEvents();
    ReadAndAnalyse(s, watched);
  });
  // A run that ended anywhere short of its results says so last, and leaves
  // nothing of an earlier run to be shown as this one's.
  if (result.accepted && !s.bAnalysisComplete(s.iDataSetNum)) {
    modTarvenix::ClearResults(s, s.iDataSetNum);
    if (watched.LastStatus() != modTarvenix::kAnalysisFailed) ui.UpdateStatus(modTarvenix::kAnalysisFailed);
  }
  return result;
}

void CancelSetup(Session& s, UiPort& ui) {
  modUtils::Trapped(s, ui, "frmTarvenixSetup.cmdBtnCancel", [&] {
    s.iDataSetNum = s.iDataSetNumBeforeSetup;
    modTarvenix::KeepCurrentDataSetLoaded(s);
  });
}

}  // namespace tarvenix::setup
