#pragma once
// Checking a data set's setup: its entries are filed under the current data set
// and its channels are taken from a channel selection file or a first/last
// range into the channel-selected table.

#include <cstdint>

namespace tarvenix {
struct Session;
struct DataSetSettings;
class UiPort;
}  // namespace tarvenix

namespace tarvenix::modTarvenix {

inline constexpr const char* kBadChannelText = "A non-numeric character was found.";
inline constexpr const char* kChannelRangeText = "Channel numbers must be between 1 and 1024.";
inline constexpr const char* kDuplicateChannelText = "Duplicate channel number.";

// Files the setup of the current data set (iDataSetNum): its data history file
// and event array file names, the channel choice, the trimmed ID, the analysis
// kind (bDataCycles) and limit kind (bNumOccurrences), then builds iChSelected
// and iGroupSize from the channel selection file (when setup.bChSelFile) and
// then from the range iFirstCh..iLastCh (when setup.bFirstLastCh, so the range
// wins), and last the occurrence limit. The numbers are the setup's texts
// converted to 16 bits.
//
// A channel selection file may start with "START:" and "TSTART:" lines (any
// case) giving lInitialCycle(0) and (1); each later entry is a channel 1..1024
// (the first taken as a whole line, the rest as comma-separated items). A bad
// entry is shown as "Error in channel selection file:" CR file CR "at line
// number: " n CR CR reason, and iErr is set to 1. Any other fault (a missing or
// empty file, a number beyond 16 bits, a data file name under four characters)
// shows the error box "modTarvenix.CheckSetupEntries" and also sets iErr to 1,
// so the reader never runs on a half-filed setup. iErr is otherwise untouched.
void CheckSetupEntries(Session& s, UiPort& ui, const DataSetSettings& setup, int16_t iFirstCh, int16_t iLastCh,
                       int16_t iOccurrenceLimit, int16_t& iErr);

}  // namespace tarvenix::modTarvenix
