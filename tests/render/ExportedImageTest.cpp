// An exported plot image is replaced whole or not at all, as the other files
// the user owns are.

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <ctime>
#include <filesystem>

#include "WeibullSamples.h"
#include "base/RuntimeError.h"
#include "PlotExport.h"
#include "support/ErrorNumber.h"
#include "support/TempDir.h"

namespace tarvenix::test {
namespace {

namespace fs = std::filesystem;

TEST(NoDataLost, AFullDiskLeavesAnOldImageWhole) {
  static int argc = 1;
  static char name[] = "robust_exported_image_test";
  static char* argv[] = {name, nullptr};
  QGuiApplication app(argc, argv);
  Session s;
  s.bDataCycles = true;
  samples::AddSampleDataSets(s, 2);
  modTGraph::Graph g;
  ChartModel chart;
  clsGrInfo info;
  modTGraph::BuildWeibullPlot(s, g, chart, info, 6, true, std::tm{});

  TempDir dir;
  for (const char* file : {"plot.png", "plot.jpg", "plot.svg", "plot.pdf"}) {
    const std::string old = "the image exported yesterday";
    const std::string path = dir.Write(file, old);
    int number = 0;
    {
      DiskSpaceLimit full(16);
      number = ErrorNumberOf(
          [&] { plot::ExportChart(path, *plot::FormatForPath(path), QSize(400, 300), s, g, chart); });
    }
    EXPECT_EQ(number, err::kDiskFull) << file;
    EXPECT_EQ(ReadAll(path), old) << file;
  }
  EXPECT_EQ(std::distance(fs::directory_iterator(dir.Path()), fs::directory_iterator()), 4)
      << "no temporary file is left behind";
}

}  // namespace
}  // namespace tarvenix::test
