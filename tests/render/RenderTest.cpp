// The plot as the painter draws it, the files made from it, and the report's
// printed lines.

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QImageReader>
#include <QPrinter>

#include <cmath>
#include <ctime>
#include <filesystem>

#include "PlotExport.h"
#include "PrintRawData.h"
#include "WeibullPainter.h"
#include "WeibullSamples.h"
#include "base/RuntimeError.h"
#include "support/ErrorNumber.h"
#include "support/FailurePoints.h"
#include "support/RecordingUi.h"
#include "support/TempDir.h"

namespace tarvenix::plot {
namespace {

using test::ReadAll;
using test::TempDir;

// One QGuiApplication for the whole test program: fonts and printers need it.
class GuiApplication : public ::testing::Environment {
  void SetUp() override {
    static int argc = 1;
    static char name[] = "render_tests";
    static char* argv[] = {name, nullptr};
    app_ = std::make_unique<QGuiApplication>(argc, argv);
  }
  void TearDown() override { app_.reset(); }
  std::unique_ptr<QGuiApplication> app_;
};
const auto* const kEnvironment = ::testing::AddGlobalTestEnvironment(new GuiApplication);

// Analysed sample data sets with their plot built, as the plot window builds it.
struct Plot {
  Session s;
  modTGraph::Graph g;
  ChartModel chart;
  clsGrInfo info;
  explicit Plot(int dataSets, int scheme = 6, bool large = true) {
    s.bDataCycles = true;
    samples::AddSampleDataSets(s, dataSets);
    std::tm today{};
    today.tm_year = 126;
    modTGraph::BuildWeibullPlot(s, g, chart, info, scheme, large, today);
  }
};

// Whether a pixel shows the colour at least half covering a white paper.
bool CoveredBy(QRgb pixel, QRgb colour) {
  const int c[3] = {qRed(colour), qGreen(colour), qBlue(colour)};
  const int p[3] = {qRed(pixel), qGreen(pixel), qBlue(pixel)};
  int k = 0;
  for (int i = 1; i < 3; ++i) k = 255 - c[i] > 255 - c[k] ? i : k;
  if (c[k] == 255) return pixel == colour;
  const double cover = (255.0 - p[k]) / (255.0 - c[k]);
  if (cover < 0.5) return false;
  for (int i = 0; i < 3; ++i)
    if (std::abs(p[i] - (cover * c[i] + (1 - cover) * 255)) > 16) return false;
  return true;
}

// Whether the pixel at (x, y), or one next to it, shows the colour: lines are
// smoothed, so their centre may fall between two pixels.
bool ColourNear(const QImage& image, int x, int y, QRgb colour) {
  for (int dy = -1; dy <= 1; ++dy)
    for (int dx = -1; dx <= 1; ++dx)
      if (CoveredBy(image.pixel(x + dx, y + dy), colour)) return true;
  return false;
}

TEST(WeibullPainter, PointsAndLinesAreWhereTheGeometrySaysInTheirColours) {
  // Scheme 6 is the screen's; scheme 3, the monochrome print, draws every data set black.
  const std::pair<QSize, int> cases[] = {{QSize(1200, 900), 6}, {QSize(640, 480), 6}, {QSize(1200, 900), 3}};
  for (const auto& [size, scheme] : cases) {
    Plot plot(5, scheme, size.width() >= 1200);
    std::string warning;
    QImage image = RenderChartImage(plot.s, plot.g, plot.chart, size, &warning);
    EXPECT_EQ(warning, "");
    // The geometry the painter used, recomputed from the inner rectangle it laid out.
    modTGraph::WeibullDrawing d = modTGraph::DrawWeibullData(plot.s, plot.g, plot.chart);
    ASSERT_EQ(d.sets.size(), 5u);
    for (const auto& set : d.sets) {
      const QRgb colour = ToQColor(plot.chart.series[static_cast<std::size_t>(set.dataSet - 1)].color).rgb();
      EXPECT_TRUE(scheme != 3 || colour == qRgb(0, 0, 0)) << set.dataSet;
      int hits = 0;
      for (const auto& p : set.points) hits += image.pixel(p.x, p.y) == colour;
      // Markers of a later data set may cover a few points of an earlier one.
      EXPECT_GE(hits, static_cast<int>(set.points.size()) - 3) << set.dataSet << " at " << size.width();
      for (const auto& seg : set.line) {
        for (double t : {0.1, 0.5, 0.9}) {
          int x = static_cast<int>(std::lround(seg.from.x + (seg.to.x - seg.from.x) * t));
          int y = static_cast<int>(std::lround(seg.from.y + (seg.to.y - seg.from.y) * t));
          EXPECT_TRUE(ColourNear(image, x, y, colour)) << set.dataSet << " line at " << x << "," << y;
        }
      }
    }
  }
}

TEST(WeibullPainter, ProbabilityRowsAreRuledTickedAndLabelledLeftOfThePaper) {
  Plot plot(1);
  QImage image = RenderChartImage(plot.s, plot.g, plot.chart, QSize(1200, 900));
  const int left = static_cast<int>(plot.g.sngPlotLeft);
  for (const auto& row : modTGraph::ProbabilityRows(plot.g)) {
    SCOPED_TRACE(row.label);
    // Near the right edge, past the last decade line and clear of the data.
    EXPECT_NE(image.pixel(static_cast<int>(plot.g.sngPlotRight) - 3, row.y), qRgb(255, 255, 255));
    EXPECT_LT(qGray(image.pixel(left - 2, row.y)), 128);
    int dark = 0;
    for (int x = left - 40; x < left - 10; ++x) dark += qGray(image.pixel(x, row.y)) < 128;
    EXPECT_GT(dark, 0);
  }
}

TEST(WeibullPainter, AnySizeAndBrokenDataPaintWithoutFailing) {
  const std::pair<QSize, bool> cases[] = {
      {{1, 1}, false}, {{40, 30}, false}, {{200, 150}, true}, {{3000, 2250}, false}, {{1200, 900}, true}};
  for (const auto& [size, zeroBeta] : cases) {
    Plot plot(2);
    if (zeroBeta) {
      plot.s.sngBeta(2) = 0;
      plot.g.bPlotReady = true;
    }
    EXPECT_EQ(RenderChartImage(plot.s, plot.g, plot.chart, size).size(), size);
  }
}

TEST(PlotExport, EachTypeIsReadableAtTheAskedSizeAndAFullDiskLeavesAnOldImageWhole) {
  Plot plot(2);
  TempDir dir;
  // Raster images by their size; vector files by their drawing units and page (96 dots per inch).
  const std::pair<const char*, const char*> files[] = {{"plot.png", ""}, {"plot.bmp", ""}, {"plot.jpg", ""},
      {"plot.svg", "viewBox=\"0 0 640 480\""}, {"plot.pdf", "/MediaBox [0 0 480.000000 360.000000]"}};
  for (const auto& [file, size] : files) {
    const std::string path = dir.File(file);
    ExportChart(path, *FormatForPath(path), QSize(640, 480), plot.s, plot.g, plot.chart);
    if (*size) {
      EXPECT_NE(ReadAll(path).find(size), std::string::npos) << file;
    } else {
      EXPECT_EQ(QImageReader(QString::fromStdString(path)).size(), QSize(640, 480)) << file;
    }

    const std::string old = dir.Write(std::string("old ") + file, "the image exported yesterday");
    test::DiskSpaceLimit full(16);
    EXPECT_EQ(test::ErrorNumberOf([&] { ExportChart(old, *FormatForPath(old), QSize(400, 300), plot.s, plot.g, plot.chart); }),
              err::kDiskFull) << file;
    EXPECT_EQ(ReadAll(old), "the image exported yesterday") << file;
  }
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(dir.Path()), std::filesystem::directory_iterator()), 10)
      << "no temporary file is left behind";
}

TEST(PrintedReport, OneReportItemALineOrAGivenTextAsItStands) {
  Session s;
  test::RecordingUi ui;
  s.SetAnalysisOptions(NParam::N50, FractionMethod::Median, ConfLevel::Percent90);
  test::AddAnalysedDataSet(s, ui, test::RangeSetup("Board A", "/lab/run1.txt"), 10, test::PublishedExample());
  int16_t iErr = 5;
  const QStringList lines = modTarvenix::RawDataLines(s, ui, "", iErr);
  EXPECT_EQ(iErr, 0);
  EXPECT_TRUE(lines.contains(QStringLiteral("Data Set #1 - 'Board A'")));
  // The first point's row: count, cycle and fraction on lines of their own.
  const qsizetype row = lines.indexOf(QStringLiteral("25"));
  ASSERT_GT(row, 0);
  EXPECT_EQ(lines.mid(row - 1, 3), (QStringList{"1", "25", "0.0673"}));
  EXPECT_EQ(modTarvenix::RawDataLines(s, ui, "BETA = 2.03, at 90%\r\nN50 = 80\rlast\n", iErr),
            (QStringList{"BETA = 2.03, at 90%", "N50 = 80", "last", ""}));
  // A printer that cannot start is reported to the caller.
  TempDir dir;
  QPrinter printer;
  printer.setOutputFileName(QString::fromStdString(dir.File("no/such/folder/report.pdf")));
  modTarvenix::PrintRawData(s, ui, printer, "", 1, iErr);
  EXPECT_EQ(iErr, 1);
}

}  // namespace
}  // namespace tarvenix::plot
