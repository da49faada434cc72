#include "support/FailureHistory.h"

namespace tarvenix::test {

std::string FailureHistory(const Failures& failures) {
  std::string text = "Vorlantic data history file\r\n";
  for (const auto& [cycle, channels] : failures) {
    text += "Cycle # " + std::to_string(cycle) + "\r\n001::";
    for (int ch : channels) {
      const std::string digits = std::to_string(ch);
      text += " " + std::string(3 - digits.size(), ' ') + digits + ":O.";
    }
    text += "\r\n";
  }
  return text;
}

}  // namespace tarvenix::test
