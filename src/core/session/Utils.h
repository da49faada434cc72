#pragma once
// Number texts, the message and error boxes, and timing: written once here and
// called by every module and window.

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "base/RuntimeError.h"

namespace tarvenix {
struct Session;
class UiPort;
}  // namespace tarvenix

namespace tarvenix::modUtils {

// A fixed-decimals number text with a sign column: a blank in front of values
// >= 0, "-" in front of negative ones; halves round to even on the scaled value
// (0.125 -> " 0.12"). When the scaled value passes the 32-bit range the plain
// text form of the value comes back instead. decimals: 0..5.
std::string ConvertDecimal(double value, int16_t decimals);
// The plotting twin: halves round up on the scaled value, no overflow fallback.
std::string ConvertDecimalDbl(double value, int16_t decimals);

// Message types of ShowMessage.
inline constexpr int16_t kMsgError = 0;
inline constexpr int16_t kMsgNotice = 1;
inline constexpr int16_t kMsgConfirmation = 2;  // something the user asked for was done
// The caption of the program's message boxes.
inline constexpr const char* kMessageTitle = "Tarvenix";

// The common error box text: "Error in " label " - Error #" number, two blanks,
// description, CR, text.
std::string ErrorBoxText(std::string_view label, const RuntimeError& e, std::string_view text);

// Type 1: the attention sound, then a notice box with `text`. Type 2: a
// confirmation box with `text` (the information icon, no sound). Type 0: the
// attention sound twice, then the error box for `e` (the current run-time
// error) under `label`; without a label (a message no procedure raised) the
// text alone, in an error box. Other types show nothing.
void ShowMessage(Session& s, UiPort& ui, int16_t type, std::string_view label, std::string_view text,
                 const RuntimeError& e = RuntimeError(0, ""));

// Runs `body` as a procedure that traps its errors: any run-time error or other
// standard exception (out of memory, a library's failure) is shown in the common
// error box under `label`. Returns false when the body failed.
bool Trapped(Session& s, UiPort& ui, std::string_view label, const std::function<void()>& body);

// A trace line for the debug log.
void DebugPrint(UiPort& ui, const std::string& line);

// Opens a document with the program the system associates with it; when that
// fails, "Could not open the file " and the name.
void ShellExec(Session& s, UiPort& ui, const std::string& document);

// Seconds since midnight, as the classic Timer gives them (a function so tests
// can move the clock).
using TimeOfDaySource = std::function<double()>;
double SystemTimeOfDay();

// Measures elapsed seconds across midnight.
class Stopwatch {
 public:
  explicit Stopwatch(TimeOfDaySource clock = SystemTimeOfDay) : clock_(std::move(clock)) {}
  void Start() { start_ = clock_(); }
  // Seconds since Start; 86400 is added when the clock passed midnight.
  double Elapsed() const;

 private:
  TimeOfDaySource clock_;
  double start_ = 0;
};

// Waits `seconds` while letting pending window messages run. `pause` sleeps a
// moment between rounds (tests pass one that moves a fake clock).
void Wait(UiPort& ui, double seconds, const TimeOfDaySource& clock = SystemTimeOfDay,
          const std::function<void()>& pause = {});

}  // namespace tarvenix::modUtils
