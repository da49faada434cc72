#include "input/DataHistory.h"

#include <algorithm>
#include <array>
#include <memory>
#include <string>

#include "base/Basic.h"
#include "analysis/Messages.h"
#include "session/Sound.h"
#include "session/Utils.h"
#include "session/Session.h"
#include "session/UiPort.h"
#include "input/FirstCycle.h"
#include "input/HistoryLines.h"
#include "input/IpcEvents.h"
#include "input/LineReader.h"

namespace tarvenix::modTarvenix {
namespace {

using input::HistoryLineKind;

// One recorded event: the data cycle it was seen in, the temperature/mechanical
// cycle that followed it, and its channel.
struct EventRow {
  int32_t dataCycle = 0;
  int32_t tempCycle = 0;
  int32_t channel = 0;
};

void WriteRunHeader(Session& s, UiPort& ui, int16_t d) {
  ui.UpdateStatus(kReadingStatus);
  if (!ui.ResultsTextIsEmpty()) ui.UpdateTextBox("");
  ui.UpdateTextBox("Data Set #" + std::to_string(d));
  ui.UpdateTextBox("Data Set ID: " + s.sDataIDs(d));
  ui.UpdateTextBox("Test Data History File: " + s.sDataFiles(d));
  if (s.bUseChSelFiles(d)) {
    ui.UpdateTextBox("Channel Selection File: " + s.sChSelFiles(d));
  } else {
    ui.UpdateTextBox("Channels Selected:" + std::to_string(s.iFirstChannels(d)) + " to " +
                     std::to_string(s.iLastChannels(d)));
  }
  ui.UpdateTextBox(s.bDataCycles ? "Data cycle analysis selected."
                                 : "Temperature or mechanical cycle analysis selected.");
  ui.UpdateTextBox(s.bNumOccurrences
                       ? "Occurrence limit to be considered: " + std::to_string(s.iOccurrenceLimits(d))
                       : std::string("Occurrence limit to be considered: IPC/JEDEC Limit"));
}

// The count-limit reader: two passes over the file with the working tables of
// one run. Nothing in it grows with the file.
class CountLimitReader {
 public:
  CountLimitReader(Session& s, UiPort& ui, int16_t d)
      : s_(s), ui_(ui), d_(d), column_(s.Column()), dataCycles_(static_cast<bool>(s.bDataCycles)),
        limit_(s.iOccurrenceLimits(d)) {}

  // Both passes and the checks between them; false when the run ended early
  // (the reason has been reported).
  bool Run() {
    if (ReadPass() == PassEnd::RunEnded) return false;
    if (!CheckFirstPass()) return false;
    secondPass_ = true;
    return ReadPass() != PassEnd::RunEnded;
  }

 private:
  enum class PassEnd { EndOfFile, StoppedReading, RunEnded };

  int32_t ColumnValue(const EventRow& row) const {
    return column_ == AnalysisColumn::DataCycles ? row.dataCycle : row.tempCycle;
  }
  int16_t& NumEvents() { return s_.iNumEvents(d_); }

  PassEnd ReadPass() {
    if (s_.bDebug) modUtils::DebugPrint(ui_, secondPass_ ? "Starting Second Pass\r\n" : "Starting First Pass\r\n");
    lines_.Open(s_.sDataFiles(d_));
    if (secondPass_) RemoveLeadingFirstCycleEvents();
    for (int channel = 0; channel <= kMaxChannels; ++channel) pending_[channel] = s_.iChSelected(channel);
    NumEvents() = 0;
    // Each pass starts afresh: no event waits for its cycle line yet, and no
    // data cycle line has been read. Only the first unlabelled row carries over.
    eventsPending_ = false;
    currentDataCycle_ = 0;

    PassEnd end = ReadLines();
    lines_.Close();
    return end;
  }

  PassEnd ReadLines() {
    std::string_view line;
    bool complete = false;
    bool afterEvent = false;
    while (lines_.NextLine(line, complete)) {
      if (afterEvent && input::IsContinuationLine(line)) {
        if (!RecordEntries(line, complete)) return PassEnd::RunEnded;
        continue;
      }
      afterEvent = false;
      switch (input::ClassifyHistoryLine(line)) {
        case HistoryLineKind::DataCycle:
          if (!TakeDataCycle(line)) return PassEnd::StoppedReading;
          break;
        case HistoryLineKind::Event:
          if (input::OccurrenceOf(line) != limit_) break;
          if (!RecordEntries(line, complete)) return PassEnd::RunEnded;
          afterEvent = true;
          break;
        case HistoryLineKind::TempCycle:
          if (!LabelPendingEvents(line, true)) return PassEnd::RunEnded;
          break;
        case HistoryLineKind::MechCycle:
          if (!LabelPendingEvents(line, false)) return PassEnd::RunEnded;
          break;
        case HistoryLineKind::Other:
          break;
      }
    }
    return PassEnd::EndOfFile;
  }

  // A data cycle line. Events still waiting for their temperature/mechanical
  // cycle mean the two kinds of cycle cannot be associated; false when that
  // stops the reading.
  bool TakeDataCycle(std::string_view line) {
    if (eventsPending_) {
      eventsPending_ = false;
      association_ = false;
      if (!dataCycles_) {
        ReportAssociationError();
        return false;
      }
    }
    currentDataCycle_ = input::DataCycleOf(line);
    return true;
  }

  void ReportAssociationError() {
    const std::string text = "No data cycle-to-temp. cycle association at cycle #" +
                             std::to_string(currentDataCycle_) + ".\r\nCannot perform temperature cycle data analysis.";
    ui_.UpdateTextBox(text);
    modUtils::ShowMessage(s_, ui_, modUtils::kMsgError, "", text);
  }

  // The channel entries of an event or continuation line, read to its end.
  // False when an event before the initial cycle ended the run.
  bool RecordEntries(std::string_view head, bool complete) {
    scanner_.Begin();
    scanner_.Feed(head);
    std::string_view piece;
    if (!complete)
      while (lines_.NextPiece(piece)) scanner_.Feed(piece);
    scanner_.End();
    if (scanner_.HasDecoded()) lastDecoded_ = scanner_.LastDecoded();
    for (int16_t channel : scanner_.Channels())
      if (pending_[channel] && !RecordEvent(channel)) return false;
    if (scanner_.Error() != 0) Raise(scanner_.Error());
    return true;
  }

  bool RecordEvent(int16_t channel) {
    pending_[channel] = 0;
    eventsPending_ = true;
    const int16_t n = NumEvents() = basic::CInt(NumEvents() + 1.0);
    if (n > kMaxEvents) Raise(err::kSubscript);
    EventRow& row = rows_[static_cast<std::size_t>(n)];
    row.dataCycle = currentDataCycle_;
    row.channel = channel;
    if (s_.bDebug) {
      std::string trace = "Event #" + std::to_string(n) + " recorded on Ch # " + std::to_string(channel) +
                          " @ Data cycle #" + std::to_string(row.dataCycle);
      if (s_.bTempCyclesAvailable) trace += " @ Temp./Mech. Cycle #" + std::to_string(row.tempCycle);
      modUtils::DebugPrint(ui_, trace);
    }
    if (!s_.bTempCyclesAvailable && currentDataCycle_ < s_.InitialCycle(AnalysisColumn::DataCycles)) {
      DisplayError(s_, ui_, kErrBeforeInitialCycle, channel, currentDataCycle_);
      return false;
    }
    if (secondPass_) {
      s_.vEventCycle(d_, n) =
          basic::CLng(static_cast<double>(ColumnValue(row)) - s_.InitialCycle(column_));
      s_.vEventCount(d_, n) += 1;
    }
    return true;
  }

  // A temperature or mechanical cycle line: its cycle labels the events
  // recorded since the last such line. False when that cycle lies before the
  // initial one, which ends the run.
  bool LabelPendingEvents(std::string_view line, bool temperature) {
    if (!dataCycles_) s_.iCycleType = temperature ? 1 : 2;
    if (!eventsPending_) return true;
    const int32_t cycle = temperature ? input::TempCycleOf(line) : input::MechCycleOf(line);
    for (int row = firstUnlabelledRow_; row <= NumEvents(); ++row) {
      rows_[static_cast<std::size_t>(row)].tempCycle = cycle;
      if (cycle < s_.InitialCycle(AnalysisColumn::Cycles)) {
        DisplayError(s_, ui_, kErrBeforeInitialCycle, lastDecoded_, currentDataCycle_);
        return false;
      }
    }
    firstUnlabelledRow_ = NumEvents() + 1;
    eventsPending_ = false;
    labelled_ = true;
    return true;
  }

  // After the first pass: whether cycles could be associated, and the question
  // about channels that failed in cycle 0 or 1. False when the run ends here.
  bool CheckFirstPass() {
    FirstCycleFlags flags{};
    bool anyFlagged = false;
    for (int row = 1; row <= NumEvents(); ++row) {
      const EventRow& r = rows_[static_cast<std::size_t>(row)];
      if (ColumnValue(r) < 2) {
        flags[static_cast<std::size_t>(r.channel)] = true;
        anyFlagged = true;
      }
    }
    if (dataCycles_) {
      s_.bTempCyclesAvailable = false;
      if (s_.bDebug) modUtils::DebugPrint(ui_, kCyclesNotAvailable);
    } else {
      if (!association_ || !labelled_) {
        s_.bTempCyclesAvailable = false;
        modSound::PlaySound(s_, ui_, modSound::Sound::Floop);
        ui_.UpdateTextBox(kCyclesNotAvailable);
        return false;
      }
      s_.bTempCyclesAvailable = true;
      if (s_.bDebug) modUtils::DebugPrint(ui_, kCyclesAvailable);
    }
    if (anyFlagged && !IgnoreFirstCycleEvents(s_, ui_, flags)) return false;
    ui_.UpdateStatus(kWorkingStatus);
    return true;
  }

  // Before the second pass: the first pass's leading events in cycle 0 or 1
  // leave the selection and the group, and the rows after them move up. Their
  // temperature/mechanical cycles move along, so the second pass, which meets
  // the same events in the same order, finds each row's cycle already there.
  void RemoveLeadingFirstCycleEvents() {
    int first = 1;
    while (first <= NumEvents() && ColumnValue(rows_[static_cast<std::size_t>(first)]) <= 1) {
      s_.iChSelected(rows_[static_cast<std::size_t>(first)].channel) = 0;
      ++first;
    }
    if (first <= 1) return;
    std::copy(rows_.begin() + first, rows_.end(), rows_.begin() + 1);
    s_.iGroupSize(d_) = basic::CInt(static_cast<double>(s_.iGroupSize(d_)) - (first - 1));
  }

  Session& s_;
  UiPort& ui_;
  const int16_t d_;
  const AnalysisColumn column_;
  const bool dataCycles_;
  const int16_t limit_;

  input::LineReader lines_;
  input::EntryScanner scanner_;
  std::array<EventRow, kMaxEvents + 1> rows_{};        // rows 1..1024
  std::array<int16_t, kMaxChannels + 1> pending_{};    // channels still to record in this pass
  bool secondPass_ = false;
  bool eventsPending_ = false;  // events recorded since the last temperature/mechanical cycle line
  bool labelled_ = false;       // some temperature/mechanical cycle line labelled events
  bool association_ = true;     // no data cycle line found events waiting for their cycle
  // Set once per run: in the second pass the first cycle line labels nothing
  // new, later ones label the rows recorded after it.
  int firstUnlabelledRow_ = 1;
  int32_t currentDataCycle_ = 0;
  int16_t lastDecoded_ = 0;
};

// The end of every run: the counts, the minimum number of failures, and the
// failure data in its final form.
void Finish(Session& s, UiPort& ui, int16_t d, int16_t& iErr) {
  const std::string count = std::to_string(s.iNumEvents(d));
  ui.UpdateTextBox("Finished reading data history file.");
  ui.UpdateTextBox("Number of analyzed events = " + count);
  if (s.bDebug) {
    modUtils::DebugPrint(ui, "Finished with reading data history file.");
    modUtils::DebugPrint(ui, "Total number of analyzed events = " + count);
  }
  if (s.iNumEvents(d) < s.iMinFailures) {
    DisplayError(s, ui, kErrTooFewFailures, 0, 0);
    iErr = 1;
    return;
  }
  // When every selected channel failed, the last failure is left out: the fit
  // needs at least one channel that survived.
  if (s.iNumEvents(d) >= s.iGroupSize(d)) s.iNumEvents(d) = basic::CInt(s.iGroupSize(d) - 1.0);
  for (int row = 1; row <= s.iNumEvents(d); ++row)
    s.vEventCount(d, row) = basic::CLng(static_cast<double>(s.vEventCount(d, row)) + s.vEventCount(d, row - 1));
}

}  // namespace

void ProcessData(Session& s, UiPort& ui, int16_t& iErr) {
  const bool finished = modUtils::Trapped(s, ui, "modTarvenix.ProcessData", [&] {
    const int16_t d = s.iDataSetNum;
    s.vEventCycle.ClearRow(d);
    s.vEventCount.ClearRow(d);
    WriteRunHeader(s, ui, d);

    if (!s.bNumOccurrences) {
      modIPCAnalysis::ProcessIPCData(s, ui, s.Column(), iErr);
      if (iErr == modIPCAnalysis::kIpcStop) return;
      if (iErr != modIPCAnalysis::kIpcDone) {
        const int16_t row = iErr;
        DisplayError(s, ui, kErrBeforeInitialCycle, row, s.vEventCycle(d, row));
        iErr = 1;
        return;
      }
    } else {
      // The reader's tables are large; they live for this run only.
      auto reader = std::make_unique<CountLimitReader>(s, ui, d);
      if (!reader->Run()) {
        iErr = 1;
        return;
      }
    }
    Finish(s, ui, d, iErr);
  });
  if (!finished) iErr = 1;
}

}  // namespace tarvenix::modTarvenix
