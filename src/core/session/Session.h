#pragma once
// The state of one Tarvenix session: up to five data sets, their records and
// results, the shared reader state, the session paths and the analysis options.
// One value, owned by the application and passed by reference to every
// procedure; there are no mutable globals, so two sessions never meet.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "base/Indexed.h"

namespace tarvenix {

inline constexpr int kMaxDataSets = 5;
inline constexpr int kMaxChannels = 1024;
inline constexpr int kMaxEvents = 1024;

// The three session status strings that key the main window's commands.
inline constexpr const char* kStatusStartup = "startup";
inline constexpr const char* kStatusSomeLoaded = "1-4 data sets loaded";
inline constexpr const char* kStatusFull = "5 data sets loaded";

// What the setup dialog files for one data set. Numbers stay the text the user
// typed; they are converted where they are used.
struct DataSetSettings {
  std::string sDataFile;
  std::string sDataID;
  Bool16 bNumOccurrences;
  Bool16 bIPCOccurrences;
  std::string sOccurrenceLimit;
  Bool16 bDataCycles;
  Bool16 bTempCycles;
  Bool16 bFirstLastCh;
  std::string sFirstCh;
  std::string sLastCh;
  Bool16 bChSelFile;
  std::string sChSelFile;
};

// The analysis options as the options dialog offers them. The session and the
// settings file keep each as a 16-bit code; a code outside the named ones stays
// as it was read, and each use says what it makes of it.
enum class NParam : int16_t { N50 = 0, N63 = 1 };  // the life reported
// The failure fraction of a point: j/n, j/(n+1) or (j-0.3)/(n+0.4).
enum class FractionMethod : int16_t { Unadjusted = 0, Mean = 1, Median = 2 };
enum class ConfLevel : int16_t { Percent90 = 0, Percent95 = 1 };

// The cycles a failure is counted in: data cycles, or the temperature or
// mechanical cycles associated with them. Each has its own initial cycle.
enum class AnalysisColumn : int16_t { DataCycles = 1, Cycles = 2 };

template <typename T>
using PerDataSet = Indexed<T, 0, kMaxDataSets>;
template <typename T>
using PerEvent = Indexed2<T, 0, kMaxDataSets, 0, kMaxEvents>;

struct Session {
  // --- Data set counting -------------------------------------------------
  int16_t iNumDataSets = 0;  // loaded data sets, 0..5
  int16_t iDataSetNum = 0;   // the current data set; 0 before the first
  // The current data set when the setup dialog opened: Cancel goes back to it.
  int16_t iDataSetNumBeforeSetup = 0;
  Bool16 bDebug;             // debug mode: extra trace lines
  int16_t iMinFailures = 5;  // failed channels an analysis needs at least

  // The setup dialog's records, data sets 0..5.
  PerDataSet<DataSetSettings> dataSetSettings;

  // Per data set: the data history file, its event array (".ipc") file, its ID.
  PerDataSet<std::string> sDataFiles;
  PerDataSet<std::string> sIPCFiles;
  PerDataSet<std::string> sDataIDs;

  // Per data set: the setup as checked by the channel selection reader.
  PerDataSet<Bool16> bUseChSelFiles;     // channels come from a channel selection file
  PerDataSet<std::string> sChSelFiles;   // that file
  PerDataSet<int16_t> iFirstChannels;    // first channel of a range
  PerDataSet<int16_t> iLastChannels;     // last channel of a range
  PerDataSet<int16_t> iOccurrenceLimits; // the occurrence count N

  // --- Reader state shared with the analysis ------------------------------
  Indexed<int16_t, 0, kMaxChannels> iChSelected;  // 1 = channel selected; entry 0 never set
  Indexed<int32_t, 0, 1> lInitialCycle;           // START: data cycle, TSTART: temp./mech. cycle
  Bool16 bDataCycles;           // data cycle analysis chosen
  Bool16 bNumOccurrences;       // count limit chosen (else IPC/JEDEC)
  Bool16 bTempCyclesAvailable;  // temperature/mechanical cycles were associated
  int16_t iCycleType = 0;       // 1 temperature, 2 mechanical
  Bool16 bIgnoreFirstCycles;    // the answer to the first-cycle question

  // --- Per data set failure data and results -----------------------------
  PerDataSet<int16_t> iGroupSize;   // N: channels analysed, failed and unfailed
  PerDataSet<int16_t> iNumEvents;   // n: failure points
  PerEvent<int32_t> vEventCycle;    // failure cycle of point i, from the initial cycle
  PerEvent<int32_t> vEventCount;    // cumulative failed channels at point i
  PerEvent<float> sngWeiX;          // ln(cycles) of point i
  PerEvent<float> sngWeiY;          // ln(-ln S) of point i
  PerDataSet<float> sngBeta;
  PerDataSet<float> sngNParam;      // N50 or N63
  PerDataSet<float> sngRSquared;
  PerDataSet<std::string> sBetaResult;
  PerDataSet<std::string> sNResult;
  PerDataSet<std::string> sRSquaredResult;
  // The data set's last reading and analysis ran to "Analysis complete.";
  // only such a data set has results to show, report or plot.
  PerDataSet<Bool16> bAnalysisComplete;
  std::string sNLabel;              // "N50 =" or "N63 =", shared by all data sets
  std::string sPlotTitle;           // the plot's title, also printed at the top of the report

  // --- Session paths and settings -----------------------------------------
  std::string sAppPath;         // the program's folder
  std::string sDataLogDir;      // companion's folder under common app data, ends in a separator
  std::string sDefaultDataDir;  // sDataLogDir + "Data" + separator
  std::string sDataDir;         // where data history file dialogs open
  std::string sDataFile;        // the data history file being set up
  int16_t iLastCh = 0;          // last channel handed over at start-up; 0 when none
  std::string sHelpFile;        // the help file
  Bool16 bSoundStatus = true;   // sound effects on

  // Analysis options: N50/N63, failure fraction, confidence level, as the
  // codes the settings file keeps ...
  std::array<int16_t, 3> iAnalysisOptions{0, 0, 0};
  int16_t& iNParamType() { return iAnalysisOptions[0]; }
  int16_t& iFractionType() { return iAnalysisOptions[1]; }
  int16_t& iConfLevel() { return iAnalysisOptions[2]; }
  int16_t iNParamType() const { return iAnalysisOptions[0]; }
  int16_t iFractionType() const { return iAnalysisOptions[1]; }
  int16_t iConfLevel() const { return iAnalysisOptions[2]; }
  // ... and by name.
  NParam NParamType() const { return static_cast<NParam>(iAnalysisOptions[0]); }
  FractionMethod FractionType() const { return static_cast<FractionMethod>(iAnalysisOptions[1]); }
  ConfLevel ConfidenceLevel() const { return static_cast<ConfLevel>(iAnalysisOptions[2]); }
  void SetAnalysisOptions(NParam n, FractionMethod fraction, ConfLevel level) {
    iAnalysisOptions = {static_cast<int16_t>(n), static_cast<int16_t>(fraction), static_cast<int16_t>(level)};
  }

  // The column the reader counts failures in, and that column's initial cycle.
  AnalysisColumn Column() const { return bDataCycles ? AnalysisColumn::DataCycles : AnalysisColumn::Cycles; }
  int32_t InitialCycle(AnalysisColumn column) const { return lInitialCycle(static_cast<int>(column) - 1); }
};

namespace modTarvenix {

// The status string for a number of loaded data sets.
std::string SessionStatus(int16_t iNumDataSets);

// iNumDataSets + 1, and the new data set becomes current. 16-bit overflow is
// run-time error 6.
void NextDataSet(Session& s);
// iNumDataSets - 1, and that data set becomes current.
void PreviousDataSet(Session& s);
// Empties every data set's failure data and results; no data set is loaded.
void ClearDataSets(Session& s);
// Empties data set d's failure data and results, as after a reading or an
// analysis that did not complete: nothing of an earlier run is left to show.
void ClearResults(Session& s, int16_t d);
// The data sets whose analysis completed, in order.
std::vector<int> CompletedDataSets(const Session& s);
// The current data set brought back within the loaded ones: 1..iNumDataSets,
// or 0 when none is loaded.
void KeepCurrentDataSetLoaded(Session& s);

// The event array file of a data history file: the path less its last four
// characters, then ".ipc". A path shorter than four characters is error 5.
std::string IpcFileName(const std::string& sDataFile);

}  // namespace modTarvenix
}  // namespace tarvenix
