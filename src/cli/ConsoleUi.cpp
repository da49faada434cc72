#include "ConsoleUi.h"

#include "analysis/Messages.h"

namespace tarvenix::cli {

std::string WithNewlines(const std::string& text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\r') {
      out += text[i];
      continue;
    }
    out += '\n';
    if (i + 1 < text.size() && text[i + 1] == '\n') ++i;
  }
  return out;
}

void ConsoleUi::UpdateStatus(const std::string& sMsg) {
  if (sMsg == modTarvenix::kAnalysisComplete) analysisComplete_ = true;
  out_.flush();
  err_ << "STATUS: " << sMsg << '\n' << std::flush;
}

void ConsoleUi::UpdateTextBox(const std::string& sMsg) {
  resultsEmpty_ = false;
  out_ << WithNewlines(sMsg) << '\n' << std::flush;
}

void ConsoleUi::ShowMessageBox(const std::string& text, const std::string& /*title*/, MessageIcon /*icon*/) {
  out_.flush();
  err_ << "MESSAGE: " << WithNewlines(text) << '\n' << std::flush;
}

bool ConsoleUi::AskYesNo(const std::string& text, const std::string& title) {
  ShowMessageBox(text, title, MessageIcon::Question);
  return false;
}

std::optional<bool> ConsoleUi::AskIgnoreFirstCycleEvents(const FirstCycleFlags& /*flags*/,
                                                         bool /*dataCycleAnalysis*/) {
  return ignoreFirstCycles_;
}

void ConsoleUi::DebugPrint(const std::string& line) {
  out_.flush();
  err_ << line << '\n' << std::flush;
}

bool ConsoleUi::TakeAnalysisComplete() {
  const bool complete = analysisComplete_;
  analysisComplete_ = false;
  return complete;
}

}  // namespace tarvenix::cli
