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

#include "session/UiPort.h"

namespace tarvenix {
struct Session;
}

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

// The settings both data readers take from the front of an input, in this
// order: flags (bit 0: data cycles, else temperature/mechanical; bit 1: debug
// mode; bits 2-3: the first-cycle answer 0 none, 1 yes, 2-3 no; bit 4: the
// answer standing from before; bit 5 and `number`: the reader's own), a number
// (16 bits), the initial data and temperature/mechanical cycles (32 bits
// each), the first and last channel (16 bits each, clamped to 1..1024), the
// minimum number of failures (1 + byte % 5; the program asks for 5).
struct ReaderSettings {
  uint8_t flags = 0;
  int16_t number = 0;
  int first = 1;
  int last = 1;
};
ReaderSettings ReadReaderSettings(InputHeader& in, Session& s);
// Data set 1 with the settings' channels selected, ready for ProcessData; the
// UI port answers the first-cycle question as the flags say.
void PrepareReader(const ReaderSettings& settings, Session& s, CountingUi& ui);
// What holds after every ProcessData run: the error flag is one the caller
// knows, a stopped run says why, and the group size counts the selected
// channels (ignored first-cycle channels leave both together).
void CheckReaderRun(const Session& s, const CountingUi& ui, int16_t iErr, bool ipcLimit);

// A path in this process's scratch folder (in memory where the system has one).
std::string ScratchPath(std::string_view name);
// Writes the bytes to the scratch file and returns its path.
std::string WriteScratch(std::string_view name, std::string_view bytes);

// Stops the run with the property's text when it does not hold, so the fuzzer
// keeps the input as a crash.
void Require(bool holds, const char* property, const std::string& detail = "");

}  // namespace tarvenix::fuzz
