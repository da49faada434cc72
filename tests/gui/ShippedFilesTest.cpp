// A new install is complete: the program folder holds the four sounds, the
// help file (and its pages as HTML) and the readme the program opens.

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

#include "session/FileUtils.h"
#include "session/Sound.h"
#include "settings/Startup.h"
#include "support/TempDir.h"

namespace tarvenix {
namespace {

using modSound::Sound;

uint32_t Le32(const std::string& bytes, std::size_t at) {
  uint32_t v = 0;
  for (int i = 3; i >= 0; --i) v = (v << 8) | static_cast<unsigned char>(bytes[at + static_cast<std::size_t>(i)]);
  return v;
}

TEST(ShippedFiles, EverySoundIsAShortPlayableWave) {
  for (Sound sound : {Sound::TurnOn, Sound::Floop, Sound::Attention, Sound::Ping}) {
    const std::string path =
        modUtils::JoinPath(modUtils::JoinPath(TARVENIX_BUILD_DIR, "Sounds"), modSound::SoundFileName(sound));
    SCOPED_TRACE(path);
    const std::string wav = test::ReadAll(path);
    ASSERT_GT(wav.size(), 44u);
    EXPECT_EQ(wav.substr(0, 4), "RIFF");
    EXPECT_EQ(wav.substr(8, 8), "WAVEfmt ");
    EXPECT_EQ(static_cast<unsigned char>(wav[20]), 1u);  // plain PCM, which every player takes
    const uint32_t bytesPerSecond = Le32(wav, 28);
    ASSERT_GT(bytesPerSecond, 0u);
    const double seconds = static_cast<double>(wav.size() - 44) / bytesPerSecond;
    // The sounds mark steps of the work and play to their end: they must be brief.
    EXPECT_GT(seconds, 0.1);
    EXPECT_LT(seconds, 1.0);
  }
}

TEST(ShippedFiles, HelpAndReadmeLieBesideTheProgram) {
  const std::string help = test::ReadAll(modUtils::JoinPath(TARVENIX_BUILD_DIR, modTarvenix::kHelpFileName));
  EXPECT_EQ(help.substr(0, 4), "ITSF");  // a compiled help file
  EXPECT_FALSE(test::ReadAll(modUtils::JoinPath(TARVENIX_BUILD_DIR, modTarvenix::kReadmeFileName)).empty());
  // The same pages as HTML, for desktops without a compiled-help viewer.
  const std::string pages = test::ReadAll(modUtils::JoinPath(modUtils::JoinPath(TARVENIX_BUILD_DIR, "help"), "index.html"));
  EXPECT_NE(pages.find("<html"), std::string::npos);
}

}  // namespace
}  // namespace tarvenix
