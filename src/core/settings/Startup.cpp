#include "settings/Startup.h"

#include <algorithm>
#include <cctype>
#include <filesystem>

#include "base/Basic.h"
#include "session/FileUtils.h"
#include "session/Utils.h"
#include "session/Session.h"
#include "settings/SettingsIO.h"

namespace tarvenix::modTarvenix {

std::string ProgramFolderForSession(const std::string& programFolder) {
#ifdef _WIN32
  std::string lower = programFolder;
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return lower;
#else
  return programFolder;
#endif
}

void SetSessionPaths(Session& s, const std::string& programFolder, const std::string& commonAppData) {
  s.iDataSetNum = 0;
  s.sAppPath = ProgramFolderForSession(programFolder);
  s.sDataLogDir = modUtils::JoinPath(commonAppData, kCompanionFolderName) + modUtils::kPathSep;
  s.sDefaultDataDir = s.sDataLogDir + "Data" + modUtils::kPathSep;
  s.sDataDir = s.sDefaultDataDir;
  s.sHelpFile = modUtils::JoinPath(s.sAppPath, kHelpFileName);
}

namespace {

// Reads the hand-off file; a file it cannot make sense of hands over nothing.
void ReadHandOff(Session& s, const std::string& path) {
  auto file = modUtils::VbFile::Open(modUtils::FileMode::Input, path);
  if (file->Eof()) return;
  if (!HandOverDataFile(s, file->InputItem())) return;
  // The last channel is optional: a file naming only the data file is fine.
  if (!file->Eof()) {
    std::string lastCh = file->InputItem();
    if (basic::IsNumeric(lastCh)) s.iLastCh = basic::CInt(basic::Val(lastCh));
  }
}

}  // namespace

bool HandOverDataFile(Session& s, const std::string& dataFile) {
  if (!modUtils::IsFile(dataFile)) return false;
  s.sDataFile = dataFile;
  std::string folder, name;
  modUtils::GetPathAndFilename(dataFile, folder, name);
  if (!folder.empty()) s.sDataDir = folder;
  return true;
}

bool TakeOverHandOffFile(Session& s, UiPort& ui) {
  const std::string path = modUtils::JoinPath(s.sAppPath, kHandOffFileName);
  if (!modUtils::IsFile(path)) {
    modIO::ReadVorlanticIni(s, ui);
    return false;
  }
  modUtils::Trapped(s, ui, "modTarvenix.Main", [&] { ReadHandOff(s, path); });
  // Used once, even when it named nothing usable.
  std::error_code ec;
  std::filesystem::remove(modUtils::NativePath(path), ec);
  return true;
}

bool StartSession(Session& s, UiPort& ui, const std::string& programFolder, const std::string& commonAppData,
                  const std::string& dataFile) {
  SetSessionPaths(s, programFolder, commonAppData);
  TakeOverHandOffFile(s, ui);
  modIO::ReadTarvenixIni(s, ui);
  // Last, so a file the user named wins over a companion's hand-off and over
  // the data folder the settings set.
  return !dataFile.empty() && HandOverDataFile(s, dataFile);
}

}  // namespace tarvenix::modTarvenix
