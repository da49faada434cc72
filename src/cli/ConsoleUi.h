#pragma once
// The UI port of tarvenix-cli: the results box goes to standard output, message
// boxes, status lines and debug lines to standard error, and the first-cycle
// question gets the answer given on the command line.

#include <ostream>
#include <string>

#include "session/UiPort.h"

namespace tarvenix::cli {

class ConsoleUi : public UiPort {
 public:
  ConsoleUi(std::ostream& out, std::ostream& err, bool ignoreFirstCycles)
      : out_(out), err_(err), ignoreFirstCycles_(ignoreFirstCycles) {}

  void UpdateStatus(const std::string& sMsg) override;
  void UpdateTextBox(const std::string& sMsg) override;
  bool ResultsTextIsEmpty() const override { return resultsEmpty_; }
  void ShowMessageBox(const std::string& text, const std::string& title, MessageIcon icon) override;
  // Shown as a message and answered No: nothing in a batch run can say yes.
  bool AskYesNo(const std::string& text, const std::string& title) override;
  std::optional<bool> AskIgnoreFirstCycleEvents(const FirstCycleFlags& flags, bool dataCycleAnalysis) override;
  void DebugPrint(const std::string& line) override;
  void PlaySoundFile(const std::string&) override {}
  void DoEvents() override {}
  bool OpenDocument(const std::string&) override { return false; }

  // Whether "Analysis complete." was the status since the last call.
  bool TakeAnalysisComplete();

 private:
  std::ostream& out_;
  std::ostream& err_;
  bool ignoreFirstCycles_;
  bool resultsEmpty_ = true;
  bool analysisComplete_ = false;
};

// A text with its CR LF pairs and lone CRs turned into "\n".
std::string WithNewlines(const std::string& text);

}  // namespace tarvenix::cli
