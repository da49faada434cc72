// A new install is complete: beside the program, the four sounds, the help
// file (and its pages as HTML) and the readme the program opens.

#include <gtest/gtest.h>

#include <string>

#include "session/FileUtils.h"
#include "session/Sound.h"
#include "settings/Startup.h"
#include "support/TempDir.h"

namespace tarvenix {
namespace {

std::string Shipped(const std::string& path) { return test::ReadAll(modUtils::JoinPath(TARVENIX_BUILD_DIR, path)); }

TEST(ShippedFiles, EverySoundIsAShortPlainWaveAndHelpAndReadmeLieBesideTheProgram) {
  using modSound::Sound;
  for (Sound sound : {Sound::TurnOn, Sound::Floop, Sound::Attention, Sound::Ping}) {
    const std::string wav = Shipped(modUtils::JoinPath("Sounds", modSound::SoundFileName(sound)));
    ASSERT_GT(wav.size(), 44u) << modSound::SoundFileName(sound);
    EXPECT_EQ(wav.substr(0, 4) + wav.substr(8, 8) + wav[20], "RIFFWAVEfmt \x01") << "plain PCM, which every player takes";
    // The sounds mark steps of the work and play to their end: they must be brief.
    const auto byte = [&](int i) { return static_cast<double>(static_cast<unsigned char>(wav[i])); };
    const double seconds = (wav.size() - 44) / (byte(28) + 256 * (byte(29) + 256 * (byte(30) + 256 * byte(31))));
    EXPECT_TRUE(seconds > 0.1 && seconds < 1.0) << modSound::SoundFileName(sound) << ": " << seconds << " s";
  }
  EXPECT_EQ(Shipped(modTarvenix::kHelpFileName).substr(0, 4), "ITSF");  // a compiled help file
  EXPECT_FALSE(Shipped(modTarvenix::kReadmeFileName).empty());
  // The same pages as HTML, for desktops without a compiled-help viewer.
  EXPECT_NE(Shipped(modUtils::JoinPath("help", "index.html")).find("<html"), std::string::npos);
}

}  // namespace
}  // namespace tarvenix
