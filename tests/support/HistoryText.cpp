#include "support/HistoryText.h"

namespace tarvenix::test {
namespace {

// The three characters that name a channel: "  5", " 17", "999", "024" (1024).
std::string ChannelField(int channel) {
  std::string digits = std::to_string(channel % 1000);
  if (channel >= 1000) return std::string(3 - digits.size(), '0') + digits;
  return std::string(3 - digits.size(), ' ') + digits;
}

std::string Entries(const std::vector<int>& channels) {
  std::string text;
  for (int ch : channels) text += " " + ChannelField(ch) + ":O.";
  return text;
}

std::string Padded(std::string text, std::size_t width) {
  text.resize(width, ' ');
  return text;
}

}  // namespace

std::string DataCycleLine(long long cycle) { return "Cycle # " + std::to_string(cycle); }

std::string EventLine(int occurrence, const std::vector<int>& channels) {
  std::string number = std::to_string(occurrence);
  return std::string(3 - number.size(), '0') + number + "::" + Entries(channels);
}

std::string TempLine(const std::string& count) { return Padded("    T =  125.0 C", 33) + count; }

std::string MechLine(const std::string& count) { return Padded("    M =  flex 2.5 mm", 36) + count; }

std::string Lines(const std::vector<std::string>& lines, const std::string& eol) {
  std::string text;
  for (const std::string& line : lines) text += line + eol;
  return text;
}

std::string FailureHistory(const Failures& failures) {
  std::vector<std::string> lines = {"Vorlantic data history file"};
  for (const auto& [cycle, channels] : failures) {
    lines.push_back(DataCycleLine(cycle));
    lines.push_back(EventLine(1, channels));
  }
  return Lines(lines);
}

}  // namespace tarvenix::test
