// tarvenix-cli's --plot and --plot-size, run in-process on small data history files.

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include <QImage>

#include "session/FileUtils.h"
#include "Run.h"
#include "support/HistoryText.h"
#include "support/TempDir.h"

namespace tarvenix::cli {
namespace {

using test::ReadAll;
using test::TempDir;

// Channel k of 1..n reaches its first event at data cycle 20 * k * k.
std::string Failures(int n = 12) {
  test::Failures failures;
  for (int ch = 1; ch <= n; ++ch) failures.push_back({20 * ch * ch, {ch}});
  return test::FailureHistory(failures);
}

struct PlotRun {
  TempDir dir;
  std::ostringstream out, err;
  std::string data = dir.Write("run7.txt", Failures());

  int Run(std::vector<std::string> args) { return cli::Run(args, out, err); }
};

TEST(CliPlot, WritesEachFormatAtTheAskedSize) {
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
    PlotRun r;
    const std::string plot = r.dir.File(c.name);
    std::vector<std::string> args = {"--plot", plot};
    args.insert(args.end(), c.size.begin(), c.size.end());
    args.insert(args.end(), {"--data", r.data, "--channels", "1-16"});
    EXPECT_EQ(r.Run(args), kExitComplete) << c.name << "\n" << r.err.str();
    EXPECT_EQ(ReadAll(plot).substr(0, c.magic.size()), c.magic) << c.name;
    if (c.width > 0) {
      QImage image(QString::fromStdString(plot));
      EXPECT_EQ(image.width(), c.width) << c.name;
      EXPECT_EQ(image.height(), c.height) << c.name;
    }
  }
}

TEST(CliPlot, BadPlotOptionsAreUsageErrors) {
  const std::pair<std::vector<std::string>, std::string> cases[] = {
      {{"--plot", "weibull.gif"}, "--plot takes a file name ending in .png, .bmp, .jpg, .svg or .pdf, not 'weibull.gif'"},
      {{"--plot-size", "63x480"}, "--plot-size takes WIDTHxHEIGHT with each side from 64 to 8000 pixels, not '63x480'"},
      {{"--plot-size", "640*480"}, "--plot-size takes WIDTHxHEIGHT with each side from 64 to 8000 pixels, not '640*480'"},
      {{"--plot-size", "640x-480"}, "--plot-size takes WIDTHxHEIGHT with each side from 64 to 8000 pixels, not '640x-480'"},
  };
  for (const auto& [plotArgs, message] : cases) {
    PlotRun r;
    std::vector<std::string> args = plotArgs;
    args.insert(args.end(), {"--data", r.data, "--channels", "1-16"});
    EXPECT_EQ(r.Run(args), kExitUsage);
    EXPECT_EQ(r.err.str().substr(0, r.err.str().find('\n')), "tarvenix-cli: " + message);
  }
}

TEST(CliPlot, APlotThatCannotBeMadeFailsTheRunAndWritesNothing) {
  struct Case {
    const char* plot;
    int secondFailures;  // failed channels of a second data set (0: none)
    const char* message;
  } cases[] = {
      // Three failed channels are too few to analyse.
      {"weibull.png", 3, "MESSAGE: Cannot generate plot because analysis was not completed successfully on Data Set #2.\n"
                         "Edit the data set and try again.\n"},
      {"no folder/weibull.png", 0, "MESSAGE: Error in tarvenix-cli.WritePlot - Error #76  Path not found"},
  };
  for (const Case& c : cases) {
    PlotRun r;
    std::vector<std::string> args = {"--plot", r.dir.File(c.plot), "--data", r.data, "--channels", "1-16"};
    if (c.secondFailures > 0)
      args.insert(args.end(), {"--data", r.dir.Write("few.txt", Failures(c.secondFailures)), "--channels", "1-16"});
    EXPECT_EQ(r.Run(args), kExitIncomplete) << c.plot;
    EXPECT_NE(r.err.str().find(c.message), std::string::npos) << r.err.str();
    EXPECT_FALSE(modUtils::IsFile(r.dir.File(c.plot)));
  }
}

}  // namespace
}  // namespace tarvenix::cli
