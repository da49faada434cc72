#pragma once
// How an analysis ended, told to the user: the finished results of the current
// data set, or why it stopped (status line, results box and a message box).

#include <cstdint>

namespace tarvenix {
struct Session;
class UiPort;
}  // namespace tarvenix

namespace tarvenix::modTarvenix {

inline constexpr const char* kAnalysisComplete = "Analysis complete.";
inline constexpr const char* kAnalysisFailed = "Analysis did not complete successfully.";

// Error codes of DisplayError.
inline constexpr int16_t kErrTooFewFailures = 1;
inline constexpr int16_t kErrFirstCycleEvents = 2;
inline constexpr int16_t kErrTooFewChannels = 4;
inline constexpr int16_t kErrBeforeInitialCycle = 5;

// Prefixes the current data set's stored beta and N texts with "BETA =" and the
// N label (in the stored texts themselves, so a second call doubles them), writes
// the three result lines (after "Data Set #d" when iMode is 1) and the status
// "Analysis complete.". Errors: "modTarvenix.DisplayData".
void DisplayData(Session& s, UiPort& ui, int16_t iMode);

// The status "Analysis did not complete successfully.", the attention sound and
// the message of iCode: 1 too few failed channels, 2 first-cycle events, 4 fewer
// than 5 channels, 5 (and any other code) the five lines about events before the
// initial cycle, naming iChannel and lCycle. Errors: "modTarvenix.DisplayError".
void DisplayError(Session& s, UiPort& ui, int16_t iCode, int16_t iChannel, int32_t lCycle);

}  // namespace tarvenix::modTarvenix
