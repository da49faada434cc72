#pragma once
// The program's settings file "Tarvenix.ini" (section "General") and the
// companion's "Vorlantic.ini".

#include <string>

namespace tarvenix {
struct Session;
class UiPort;
}  // namespace tarvenix

namespace tarvenix::modIO {

inline constexpr const char* kSettingsFileName = "Tarvenix.ini";
inline constexpr const char* kSection = "General";
inline constexpr const char* kKeyNParam = "N50/N63 Parameter";
inline constexpr const char* kKeyFraction = "Failure Fraction";
inline constexpr const char* kKeyConfidence = "Confidence Level";
inline constexpr const char* kKeySound = "Sound Status";

// sDataLogDir + "Tarvenix.ini".
std::string SettingsFilePath(const Session& s);

// Fills the analysis options and the sound status. A missing file or key gives
// N50, unadjusted, 90 % and sounds on; a number is rounded to 16 bits ("2.6" is
// 3); a text that is no number reads as 0. Errors: "modIO.ReadTarvenixIni".
void ReadTarvenixIni(Session& s, UiPort& ui);

// Writes the four keys, creating the folder and file when missing. Stops at the
// first key that cannot be written (its error box names the file); false then.
bool WriteTarvenixIni(Session& s, UiPort& ui);

// Locates the companion's settings file; sDataDir becomes sDefaultDataDir.
void ReadVorlanticIni(Session& s, UiPort& ui);

}  // namespace tarvenix::modIO
