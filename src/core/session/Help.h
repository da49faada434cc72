#pragma once
// The help file, opened with the system's viewer.

namespace tarvenix {
struct Session;
class UiPort;
}  // namespace tarvenix

namespace tarvenix::modHelp {

// Opens sHelpFile; "Could not open the file " and its name when nothing can.
void ShowHelp(Session& s, UiPort& ui);

}  // namespace tarvenix::modHelp
