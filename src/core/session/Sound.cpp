#include "session/Sound.h"

#include "session/FileUtils.h"
#include "session/Session.h"
#include "session/UiPort.h"

namespace tarvenix::modSound {

const char* SoundFileName(Sound sound) {
  switch (sound) {
    case Sound::TurnOn: return "TurnOn.wav";
    case Sound::Floop: return "Floop.wav";
    case Sound::Attention: return "Attention.wav";
    case Sound::Ping: return "Ping.wav";
  }
  return "";
}

std::string SoundFilePath(const Session& s, Sound sound) {
  // Without a program folder there is no sound to find (not one in whatever
  // folder happens to be current).
  if (s.sAppPath.empty()) return "";
  return modUtils::JoinPath(modUtils::JoinPath(s.sAppPath, "Sounds"), SoundFileName(sound));
}

void PlaySound(Session& s, UiPort& ui, Sound sound) {
  if (!s.bSoundStatus) return;
  std::string path = SoundFilePath(s, sound);
  if (modUtils::IsFile(path)) ui.PlaySoundFile(path);
}

}  // namespace tarvenix::modSound
