#pragma once
// The companion's file viewer, which View Datafile starts with the data set's
// file, and the way any program of ours is started without waiting for it.

#include <string>
#include <vector>

namespace tarvenix {
struct Session;
class UiPort;
}  // namespace tarvenix

namespace tarvenix::modUtils {

// Starts `program` with `arguments` in `folder` (empty: ours) and returns at
// once; the program runs on after we end. Each argument reaches the program
// whole, blanks, quotes and any script included. False when it could not be
// started.
bool StartProgram(const std::string& program, const std::vector<std::string>& arguments, const std::string& folder);

}  // namespace tarvenix::modUtils

namespace tarvenix::modTarvenix {

// The companion's file viewer, in the program folder.
inline constexpr const char* kViewerFileName = "quillet.exe";

// View Datafile for `file` (the data set's data history or event array file):
// a notice when the file or the viewer in the program folder is missing, or
// when the viewer cannot be started; otherwise the viewer gets the file and
// "090".
void ViewDataFile(Session& s, UiPort& ui, const std::string& file);

}  // namespace tarvenix::modTarvenix
