#pragma once
// Sound effects: played only while sounds are on and the file exists in the
// program folder's "Sounds" folder.

#include <string>

namespace tarvenix {
struct Session;
class UiPort;
}  // namespace tarvenix

namespace tarvenix::modSound {

enum class Sound { TurnOn, Floop, Attention, Ping };

// "TurnOn.wav", "Floop.wav", "Attention.wav", "Ping.wav".
const char* SoundFileName(Sound sound);
// sAppPath + "Sounds" + the sound's file name; "" without a program folder.
std::string SoundFilePath(const Session& s, Sound sound);
void PlaySound(Session& s, UiPort& ui, Sound sound);

}  // namespace tarvenix::modSound
