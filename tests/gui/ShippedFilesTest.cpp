// A new install is complete: beside the program, the four sounds, the help
// file (and its pages as HTML) and the readme the program opens.

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "session/FileUtils.h"
#include "session/Sound.h"
#include "settings/Startup.h"
#include "support/TempDir.h"

namespace tarvenix {
namespace {

std::string Shipped(const std::string& folder, const std::string& name) {
  return test::ReadAll(modUtils::JoinPath(folder.empty() ? TARVENIX_BUILD_DIR : modUtils::JoinPath(TARVENIX_BUILD_DIR, folder), name));
}

TEST(ShippedFiles, EverySoundIsAShortPlainWaveAndHelpAndReadmeLieBesideTheProgram) {
  using modSound::Sound;
  for (Sound sound : {Sound::TurnOn, Sound::Floop, Sound::Attention, Sound::Ping}) {
    const std::string wav = Shipped("Sounds", modSound::SoundFileName(sound));
    SCOPED_TRACE(modSound::SoundFileName(sound));
    ASSERT_GT(wav.size(), 44u);
    EXPECT_EQ(wav.substr(0, 4) + wav.substr(8, 8), "RIFFWAVEfmt ");
    EXPECT_EQ(wav[20], 1) << "plain PCM, which every player takes";
    uint32_t bytesPerSecond = 0;
    for (int i = 31; i >= 28; --i) bytesPerSecond = (bytesPerSecond << 8) | static_cast<unsigned char>(wav[i]);
    // The sounds mark steps of the work and play to their end: they must be brief.
    const double seconds = static_cast<double>(wav.size() - 44) / bytesPerSecond;
    EXPECT_TRUE(seconds > 0.1 && seconds < 1.0) << seconds;
  }
  EXPECT_EQ(Shipped("", modTarvenix::kHelpFileName).substr(0, 4), "ITSF");  // a compiled help file
  EXPECT_FALSE(Shipped("", modTarvenix::kReadmeFileName).empty());
  // The same pages as HTML, for desktops without a compiled-help viewer.
  EXPECT_NE(Shipped("help", "index.html").find("<html"), std::string::npos);
}

}  // namespace
}  // namespace tarvenix
