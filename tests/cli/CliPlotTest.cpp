// tarvenix-cli's --plot and --plot-size, run in-process on a small data history file:
// the images. Refused plots and plot options are case folders (tests/cases/cli/).

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include <QImage>

#include "Run.h"
#include "support/HistoryText.h"
#include "support/TempDir.h"

namespace tarvenix::cli {
namespace {

using test::ReadAll;
using test::TempDir;

TEST(CliPlot, WritesEachFormatAtTheAskedSize) {
  // Channel k of 1..12 reaches its first event at data cycle 20 * k * k.
  test::Failures failures;
  for (int ch = 1; ch <= 12; ++ch) failures.push_back({20 * ch * ch, {ch}});
  struct Case {
    const char* name;
    std::vector<std::string> size;
    std::string magic;
    int width, height;  // of a raster image
  } cases[] = {
      {"weibull.png", {}, "\x89PNG", 1200, 900},
      {"weibull.BMP", {"--plot-size", "640x480"}, "BM", 640, 480},
      {"weibull.jpg", {"--plot-size", "1920X1440"}, "\xFF\xD8\xFF", 1920, 1440},
      {"weibull.svg", {}, "<?xml", 0, 0},
      {"weibull.pdf", {"--plot-size", "800x600"}, "%PDF", 0, 0},
  };
  for (const Case& c : cases) {
    TempDir dir;
    std::ostringstream out, err;
    const std::string plot = dir.File(c.name);
    std::vector<std::string> args = {"--plot", plot};
    args.insert(args.end(), c.size.begin(), c.size.end());
    args.insert(args.end(), {"--data", dir.Write("run7.txt", test::FailureHistory(failures)), "--channels", "1-16"});
    EXPECT_EQ(cli::Run(args, out, err), kExitComplete) << c.name << "\n" << err.str();
    EXPECT_EQ(ReadAll(plot).substr(0, c.magic.size()), c.magic) << c.name;
    if (c.width > 0) {
      QImage image(QString::fromStdString(plot));
      EXPECT_EQ(image.width(), c.width) << c.name;
      EXPECT_EQ(image.height(), c.height) << c.name;
    }
  }
}

}  // namespace
}  // namespace tarvenix::cli
