#pragma once
// A UI port that keeps every call, so a test can assert the exact lines,
// messages and their order, and answers questions from a script.

#include <deque>
#include <string>
#include <vector>

#include "session/UiPort.h"

namespace tarvenix::test {

class RecordingUi : public UiPort {
 public:
  struct Message {
    std::string text;
    std::string title;
    MessageIcon icon;
  };

  // Every call in order, one line each: "STATUS: ...", "TEXT: ...", "MSG: ...",
  // "ASK: ...", "FIRSTCYCLE: ...", "DEBUG: ...", "SOUND: <file name>", "OPEN: ...".
  std::vector<std::string> calls;
  std::vector<std::string> statuses;
  std::vector<std::string> textLines;  // the results box, one entry per line
  std::vector<Message> messages;
  std::vector<std::string> debugLines;
  std::vector<std::string> sounds;     // file names of the sounds played

  // Answers, used in order; when they run out AskYesNo says yes and the
  // first-cycle question says no.
  std::deque<bool> yesNoAnswers;
  std::deque<std::optional<bool>> firstCycleAnswers;
  bool openDocumentSucceeds = true;

  // What the last first-cycle question showed.
  FirstCycleFlags lastFirstCycleFlags{};
  bool lastFirstCycleDataCycles = false;

  void UpdateStatus(const std::string& sMsg) override;
  void UpdateTextBox(const std::string& sMsg) override;
  bool ResultsTextIsEmpty() const override { return textLines.empty(); }
  void ShowMessageBox(const std::string& text, const std::string& title, MessageIcon icon) override;
  bool AskYesNo(const std::string& text, const std::string& title) override;
  std::optional<bool> AskIgnoreFirstCycleEvents(const FirstCycleFlags& flags, bool dataCycleAnalysis) override;
  void DebugPrint(const std::string& line) override;
  void PlaySoundFile(const std::string& path) override;
  void DoEvents() override { ++doEventsCalls; }
  bool OpenDocument(const std::string& path) override;

  int doEventsCalls = 0;

  // The message texts only, in order.
  std::vector<std::string> MessageTexts() const;
};

}  // namespace tarvenix::test
