#include "settings/SettingsIO.h"

#include <filesystem>

#include "base/Basic.h"
#include "session/FileUtils.h"
#include "session/Utils.h"
#include "settings/IniFiles.h"
#include "session/Session.h"

namespace tarvenix::modIO {

std::string SettingsFilePath(const Session& s) { return s.sDataLogDir + kSettingsFileName; }

void ReadTarvenixIni(Session& s, UiPort& ui) {
  s.iAnalysisOptions = {0, 0, 0};
  s.bSoundStatus = true;
  modUtils::Trapped(s, ui, "modIO.ReadTarvenixIni", [&] {
    const std::string file = SettingsFilePath(s);
    const char* keys[] = {kKeyNParam, kKeyFraction, kKeyConfidence};
    for (std::size_t i = 0; i < 3; ++i) {
      std::string text = modIniFiles::GetKeyValue(s, ui, file, kSection, keys[i]);
      s.iAnalysisOptions[i] = text.empty() ? int16_t{0} : basic::CInt(basic::Val(text));
    }
    std::string sound = modIniFiles::GetKeyValue(s, ui, file, kSection, kKeySound);
    s.bSoundStatus = sound.empty() ? true : basic::CBool(sound);
  });
}

bool WriteTarvenixIni(Session& s, UiPort& ui) {
  bool ok = false;
  modUtils::Trapped(s, ui, "modIO.WriteTarvenixIni", [&] {
    const std::string file = SettingsFilePath(s);
    if (!s.sDataLogDir.empty()) {
      std::error_code ec;  // a folder that cannot be made shows up when the file is written
      std::filesystem::create_directories(modUtils::NativePath(s.sDataLogDir), ec);
    }
    const std::pair<const char*, std::string> values[] = {
        {kKeyNParam, std::to_string(s.iNParamType())},
        {kKeyFraction, std::to_string(s.iFractionType())},
        {kKeyConfidence, std::to_string(s.iConfLevel())},
        {kKeySound, basic::BoolText(static_cast<bool>(s.bSoundStatus))},
    };
    for (const auto& [key, value] : values)
      if (!modIniFiles::PutKeyValue(s, ui, file, kSection, key, value)) return;
    ok = true;
  });
  return ok;
}

void ReadVorlanticIni(Session& s, UiPort& ui) {
  modUtils::Trapped(s, ui, "modIO.ReadVorlanticIni", [&] {
    // The companion's file is located only; none of its keys is consulted.
    s.sDataDir = s.sDefaultDataDir;
  });
}

}  // namespace tarvenix::modIO
