#pragma once
// The one small interface through which the core talks to whoever shows it:
// the desktop windows, the batch tool's stdout/stderr, or a test recorder.

#include <array>
#include <optional>
#include <string>

namespace tarvenix {

enum class MessageIcon { Exclamation, Critical, Question, Information };

// Channels 1..1024 flagged as failing in the first cycle (entry 0 unused).
using FirstCycleFlags = std::array<bool, 1025>;

class UiPort {
 public:
  virtual ~UiPort() = default;

  // The main window's status line.
  virtual void UpdateStatus(const std::string& sMsg) = 0;
  // Appends one line to the results box (the log).
  virtual void UpdateTextBox(const std::string& sMsg) = 0;
  virtual bool ResultsTextIsEmpty() const = 0;

  // A modal message box with an OK button. Lines in `text` are joined by CR.
  virtual void ShowMessageBox(const std::string& text, const std::string& title, MessageIcon icon) = 0;
  // A modal Yes/No question; true for Yes.
  virtual bool AskYesNo(const std::string& text, const std::string& title) = 0;

  // The first-cycle events question: lists the flagged channels and asks whether
  // to ignore them. true for Yes, false for No, nothing when closed otherwise.
  virtual std::optional<bool> AskIgnoreFirstCycleEvents(const FirstCycleFlags& flags,
                                                        bool dataCycleAnalysis) = 0;

  // A debug trace line (only called in debug mode).
  virtual void DebugPrint(const std::string& line) = 0;

  // Plays a sound file that exists; returns when the sound has ended.
  virtual void PlaySoundFile(const std::string& path) = 0;

  // Lets pending window messages run.
  virtual void DoEvents() = 0;

  // Opens a document with the program the system associates with it; false
  // when nothing could open it.
  virtual bool OpenDocument(const std::string& path) = 0;
};

}  // namespace tarvenix
