#pragma once
// The data set setup dialog's work, without the window: what the dialog shows
// when it opens, the checks of OK with their messages and the box that gets the
// focus, and the sequence that files a data set, reads its data history file and
// analyses it. The desktop dialog and tarvenix-cli both run this code; the
// dialog's controls travel as a DataSetSettings record.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "session/Session.h"

namespace tarvenix {
class UiPort;
}

namespace tarvenix::setup {

enum class SetupMode { Add, Edit, ReAnalyze };
// The mode from the dialog's two flags: add (true, false), edit (false, false),
// re-analyse (false, true).
SetupMode ModeOf(bool bAddMode, bool bReAnalyzeMode);

// The messages of the OK checks, in the order they are checked.
inline constexpr const char* kChSelFileMissing = "The specified channel selection file could not be found.";
inline constexpr const char* kDataFileMissing = "The specified data history file could not be found.";
inline constexpr const char* kIpcFileMissing = "The specified IPC/JEDEC file could not be found.";
inline constexpr const char* kFirstChannelInvalid = "The entry for first channel is invalid.";
inline constexpr const char* kLastChannelInvalid = "The entry for last channel is invalid.";
inline constexpr const char* kChannelOrder =
    "The first channel number may not be greater than or\requal to the last channel.";
inline constexpr const char* kTooFewChannels = "5 or more channels are required.";
inline constexpr const char* kZeroOccurrenceLimit = "The Occurrence Limit may not be 0.";

// The box that gets the focus when OK leaves the dialog open.
enum class SetupFocus { None, txtChSelFile, txtDataFile, txtFirstCh, txtLastCh };
// The box's objectName ("txtChSelFile" ...); "" for None.
const char* FocusObjectName(SetupFocus focus);

// A channel box's text is a channel number: a whole number from 1 to 1024.
bool IsChannelEntry(const std::string& text);
// A channel box's text as the reader gets it: a channel entry's number,
// anything else 0.
int16_t ChannelNumber(const std::string& text);

// Why OK leaves a dialog open, and the box that gets the focus.
struct Refusal {
  const char* message;
  SetupFocus focus;
};
// A first and last channel as typed: each a channel entry, the first below the
// last, at least 5 channels; the first failure, nothing when they are good.
// The setup dialog and the channel selection editor check ranges alike.
std::optional<Refusal> CheckChannelRange(const std::string& first, const std::string& last);

// The dialog as it opens in `mode`: in add mode it works on the next data set
// number (iDataSetNum + 1); the ID proposal "Data Set #" and that number, data
// cycles and the count limit chosen, the first-cycle answer reset; the data
// history file being set up (sDataFile) in its box; outside add mode the current
// data set's record over all of it. Controls not named keep what they held, as
// on a dialog that is hidden and shown again. Returns the caption ("Tarvenix
// Setup for Data Set #" and the number). In re-analyse mode the caller runs
// FinishUp at once. Errors: "frmTarvenixSetup.frmActivate".
std::string ActivateSetup(Session& s, UiPort& ui, SetupMode mode, DataSetSettings& controls);

struct FinishUpResult {
  // The dialog closed: the data set was filed, its file read and, when reading
  // succeeded, analysed (whatever the analysis concluded).
  bool accepted = false;
  // Where the focus goes when the dialog stays open.
  SetupFocus focus = SetupFocus::None;
};

// OK: checks the controls (each failure shows its message and leaves the dialog
// open), files the data history file names, in add mode makes the new data set
// current, checks the setup against its files (CheckSetupEntries; a rejected
// channel selection file keeps the dialog open with the counters already moved),
// saves the controls into the data set's record, hides the dialog through
// `hideDialog`, lets pending window messages run, reads the data history file
// and, when that succeeded, analyses the data set and shows the results.
// Errors: "frmTarvenixSetup.FinishUp".
FinishUpResult FinishUp(Session& s, UiPort& ui, SetupMode mode, const DataSetSettings& controls,
                        const std::function<void()>& hideDialog = {});

// Cancel: the current data set moves one number down (undoing the add-mode step
// of activation; in every mode). Errors: "frmTarvenixSetup.cmdBtnCancel".
void CancelSetup(Session& s, UiPort& ui);

}  // namespace tarvenix::setup
