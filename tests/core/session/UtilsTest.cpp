#include <gtest/gtest.h>

#include <filesystem>

#include "session/Utils.h"
#include "session/Session.h"
#include "support/RecordingUi.h"
#include "support/TempDir.h"

namespace tarvenix::modUtils {
namespace {

using test::RecordingUi;
using test::TempDir;

TEST(ConvertDecimal, SignColumnAndHalvesToEvenOrUpForPlotting) {
  struct Case {
    double value;
    int16_t decimals;
    const char* expected;
  } cases[] = {
      {0.125, 2, " 0.12"},   // an exact binary half rounds to even
      {2.345, 2, " 2.35"},   // 2.345 lies just above 2.345 as a double
      {0.05, 2, " 0.05"},    {0.004, 2, " 0.00"},  {0.0, 2, " 0.00"},   {-1.5, 1, "-1.5"},
      {1234.6, 0, " 1235"},  {12.0, 0, " 12"},     {0.0, 0, " 0"},      {2.5, 0, " 2"},
      {3.5, 0, " 4"},        {12.3, 1, " 12.3"},   {0.5, 4, " 0.5000"}, {-0.004, 2, "-0.00"},
      {0.00001, 5, " 0.00001"}, {98.7654321, 4, " 98.7654"}, {-3.90194, 4, "-3.9019"},
      {1.0, 4, " 1.0000"},
      // Past the 32-bit range: the plain text form.
      {1e10, 0, "10000000000"}, {3e7, 2, "30000000"}, {-5e9, 1, "-5000000000"},
  };
  for (const Case& c : cases) EXPECT_EQ(ConvertDecimal(c.value, c.decimals), c.expected) << c.value;
  EXPECT_EQ(ConvertDecimal(2.345f, 2), " 2.35") << "a single keeps its binary value";
  // The plotting twin rounds halves up and keeps the sign column past 32 bits.
  const Case halvesUp[] = {{0.125, 2, " 0.13"}, {2.5, 0, " 3"},    {0.004, 2, " 0.00"},
                           {-1.25, 1, "-1.3"},  {99.6, 1, " 99.6"}, {1e10, 0, " 10000000000"}};
  for (const Case& c : halvesUp) EXPECT_EQ(ConvertDecimalDbl(c.value, c.decimals), c.expected) << c.value;
}

TEST(ShowMessage, AttentionSoundFirstAndTwiceForErrors) {
  // The program folder holds the four sounds, so their playing shows.
  TempDir dir;
  Session s;
  s.sAppPath = dir.Path();
  std::filesystem::create_directories(dir.File("Sounds"));
  for (const char* n : {"TurnOn.wav", "Floop.wav", "Attention.wav", "Ping.wav"}) dir.Write(std::string("Sounds/") + n, "RIFF");
  RecordingUi ui;
  ShowMessage(s, ui, kMsgNotice, "", "Hello");
  ShowMessage(s, ui, kMsgError, "modX.Y", "text", RuntimeError(13));
  ShowMessage(s, ui, 7, "modX.Y", "nothing");
  std::vector<std::string> expected = {
      "SOUND: Attention.wav", "MSG: Hello", "SOUND: Attention.wav", "SOUND: Attention.wav",
      "MSG: Error in modX.Y - Error #13  Type mismatch\rtext", "SOUND: Attention.wav"};
  EXPECT_EQ(ui.calls, expected);
  EXPECT_EQ(ui.messages[0].icon, MessageIcon::Exclamation);
  EXPECT_EQ(ui.messages[1].icon, MessageIcon::Critical);
  EXPECT_EQ(ui.messages[1].title, "Tarvenix");
}

TEST(Trapped, AnyExceptionBecomesTheErrorBoxUnderItsLabel) {
  Session s;
  RecordingUi ui;
  EXPECT_TRUE(Trapped(s, ui, "modA.Ok", [] {}));
  EXPECT_FALSE(Trapped(s, ui, "modA.B", [] { Raise(err::kSubscript); }));
  EXPECT_FALSE(Trapped(s, ui, "modA.C", [] { throw std::bad_alloc(); }));
  EXPECT_FALSE(Trapped(s, ui, "modA.D", [] { throw std::logic_error("boom"); }));
  EXPECT_EQ(ui.MessageTexts(), (std::vector<std::string>{"Error in modA.B - Error #9  Subscript out of range\r",
                                                         "Error in modA.C - Error #7  Out of memory\r",
                                                         "Error in modA.D - Error #51  Internal error: boom\r"}));
}

TEST(Timing, StopwatchAndWaitCrossMidnight) {
  double now = 86399.0;
  Stopwatch sw([&] { return now; });
  sw.Start();
  now = 2.5;
  EXPECT_DOUBLE_EQ(sw.Elapsed(), 3.5);
  now = 86399.0 + 0.5;
  EXPECT_DOUBLE_EQ(sw.Elapsed(), 0.5);

  RecordingUi ui;
  now = 86398.0;
  Wait(ui, 3.0, [&] { return now; }, [&] { now = now + 0.5 >= 86400 ? now + 0.5 - 86400 : now + 0.5; });
  EXPECT_EQ(ui.doEventsCalls, 6) << "three seconds in half-second steps, across midnight";
  EXPECT_NEAR(now, 1.0, 1e-9);
}

}  // namespace
}  // namespace tarvenix::modUtils
