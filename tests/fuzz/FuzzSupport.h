#pragma once
// What every fuzz target shares: the header of settings read from the front of
// an input, a UI port that answers from the input and counts what it was told,
// scratch files for readers that take a path, and the check that stops a run
// when a property does not hold.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "app/UiPort.h"

namespace tarvenix::fuzz {

// Reads settings from the front of an input; past its end every value is 0, so
// any input is a valid one. What is left is the file under test.
class InputHeader {
 public:
  InputHeader(const uint8_t* data, std::size_t size) : data_(data), size_(size) {}
  uint8_t Byte();
  int16_t Int16();  // little-endian
  int32_t Int32();  // little-endian
  std::string_view Bytes(std::size_t n);
  std::string_view Rest();

 private:
  const uint8_t* data_;
  std::size_t size_;
  std::size_t pos_ = 0;
};

// A UI port that keeps counts instead of windows and answers the first-cycle
// question as told.
class CountingUi : public UiPort {
 public:
  std::optional<bool> firstCycleAnswer;
  int messages = 0;
  int textLines = 0;
  int firstCycleQuestions = 0;
  std::string lastMessage;

  void UpdateStatus(const std::string&) override {}
  void UpdateTextBox(const std::string&) override { ++textLines; }
  bool ResultsTextIsEmpty() const override { return textLines == 0; }
  void ShowMessageBox(const std::string& text, const std::string&, MessageIcon) override {
    ++messages;
    lastMessage = text;
  }
  bool AskYesNo(const std::string&, const std::string&) override { return true; }
  std::optional<bool> AskIgnoreFirstCycleEvents(const FirstCycleFlags&, bool) override {
    ++firstCycleQuestions;
    return firstCycleAnswer;
  }
  void DebugPrint(const std::string&) override {}
  void PlaySoundFile(const std::string&) override {}
  void DoEvents() override {}
  bool OpenDocument(const std::string&) override { return false; }
};

// A path in this process's scratch folder (in memory where the system has one).
std::string ScratchPath(std::string_view name);
// Writes the bytes to the scratch file and returns its path.
std::string WriteScratch(std::string_view name, std::string_view bytes);

// Stops the run with the property's text when it does not hold, so the fuzzer
// keeps the input as a crash.
void Require(bool holds, const char* property, const std::string& detail = "");

}  // namespace tarvenix::fuzz
