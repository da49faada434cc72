#pragma once
// The session's side of start-up: where the program, its settings and the
// companion's data live, and the hand-off file the companion may leave in the
// program folder to open a data history file.

#include <string>

namespace tarvenix {
struct Session;
class UiPort;
}  // namespace tarvenix

namespace tarvenix::modTarvenix {

inline constexpr const char* kHandOffFileName = "Dortemp.ini";
inline constexpr const char* kHelpFileName = "Vorlantic.chm";
inline constexpr const char* kReadmeFileName = "readme.txt";
inline constexpr const char* kCompanionFolderName = "Vorlantic";

// The program folder as the session keeps it: lower-cased where the file system
// ignores case (Windows), as it is elsewhere.
std::string ProgramFolderForSession(const std::string& programFolder);

// iDataSetNum = 0; sAppPath; sDataLogDir = the common application data folder,
// "Vorlantic" and a separator; sDefaultDataDir = that, "Data" and a separator;
// sDataDir starts at sDefaultDataDir; sHelpFile = sAppPath + "Vorlantic.chm".
void SetSessionPaths(Session& s, const std::string& programFolder, const std::string& commonAppData);

// Hands a data history file to the first setup: when it exists it becomes
// sDataFile and its folder sDataDir; otherwise nothing changes. Returns whether
// it was taken.
bool HandOverDataFile(Session& s, const std::string& dataFile);

// The hand-off file in the program folder: its first item names a data history
// file; when that file exists it becomes sDataFile, its folder sDataDir, and a
// second item (when there is one) the last channel iLastCh. The file is deleted
// after reading, whatever it held, so it is used once. Without a hand-off file
// the companion's settings are read. Returns true when a hand-off file was
// found. Errors: "modTarvenix.Main".
bool TakeOverHandOffFile(Session& s, UiPort& ui);

// Steps 2 to 5 of start-up: paths, hand-off file, help file, settings; then
// the data history file named on the desktop program's command line (empty:
// none), handed over as the hand-off file's is. Returns whether that file was
// taken.
bool StartSession(Session& s, UiPort& ui, const std::string& programFolder, const std::string& commonAppData,
                  const std::string& dataFile = {});

}  // namespace tarvenix::modTarvenix
