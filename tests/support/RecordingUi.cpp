#include "support/RecordingUi.h"

#include "input/FirstCycle.h"

namespace tarvenix::test {

void RecordingUi::UpdateStatus(const std::string& sMsg) {
  statuses.push_back(sMsg);
  calls.push_back("STATUS: " + sMsg);
}

void RecordingUi::UpdateTextBox(const std::string& sMsg) {
  textLines.push_back(sMsg);
  calls.push_back("TEXT: " + sMsg);
}

void RecordingUi::ShowMessageBox(const std::string& text, const std::string& title, MessageIcon icon) {
  messages.push_back({text, title, icon});
  calls.push_back("MSG: " + text);
}

bool RecordingUi::AskYesNo(const std::string& text, const std::string& /*title*/) {
  calls.push_back("ASK: " + text);
  if (yesNoAnswers.empty()) return true;
  bool a = yesNoAnswers.front();
  yesNoAnswers.pop_front();
  return a;
}

std::optional<bool> RecordingUi::AskIgnoreFirstCycleEvents(const FirstCycleFlags& flags, bool dataCycleAnalysis) {
  lastFirstCycleFlags = flags;
  lastFirstCycleDataCycles = dataCycleAnalysis;
  calls.push_back("FIRSTCYCLE:" + modTarvenix::FirstCycleChannelList(flags));
  if (firstCycleAnswers.empty()) return false;
  std::optional<bool> a = firstCycleAnswers.front();
  firstCycleAnswers.pop_front();
  return a;
}

void RecordingUi::DebugPrint(const std::string& line) {
  debugLines.push_back(line);
  calls.push_back("DEBUG: " + line);
}

void RecordingUi::PlaySoundFile(const std::string& path) {
  std::size_t cut = path.find_last_of("/\\");
  std::string name = cut == std::string::npos ? path : path.substr(cut + 1);
  sounds.push_back(name);
  calls.push_back("SOUND: " + name);
}

bool RecordingUi::OpenDocument(const std::string& path) {
  calls.push_back("OPEN: " + path);
  return openDocumentSucceeds;
}

std::vector<std::string> RecordingUi::MessageTexts() const {
  std::vector<std::string> texts;
  for (const Message& m : messages) texts.push_back(m.text);
  return texts;
}

}  // namespace tarvenix::test
