// A text reads the same on the screen, on paper and in an exported plot, whether
// it came as UTF-8 (a folder name, a batch tool argument) or as a data file's
// own single-byte text.

#include <gtest/gtest.h>

#include <ctime>
#include <string>

#include <QString>
#include <QStringList>

#include "PlotExport.h"
#include "PrintRawData.h"
#include "QtStrings.h"
#include "WeibullSamples.h"
#include "support/RecordingUi.h"
#include "support/TempDir.h"

namespace tarvenix::test {
namespace {

TEST(TextOnEveryOutput, ScreenPrintAndExportShowTheSameText) {
  const QString shown = QString::fromUtf8("Pr\xc3\xbc" "fung 85\xc2\xb0" "C");
  struct Case {
    const char* what;
    std::string bytes;
  };
  const Case cases[] = {
      {"UTF-8", "Pr\xc3\xbc" "fung 85\xc2\xb0" "C"},
      {"Latin-1", "Pr\xfc" "fung 85\xb0" "C"},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(ToQt(c.bytes), shown) << c.what << ": the screen";

    Session s;
    s.bDataCycles = true;
    samples::AddSampleDataSets(s, 1);
    s.iDataSetNum = 1;
    s.sDataIDs(1) = s.dataSetSettings(1).sDataID = c.bytes;
    s.dataSetSettings(1).sDataFile = "/data/" + c.bytes + "/run.txt";
    s.sPlotTitle = c.bytes;
    RecordingUi ui;
    int16_t iErr = 0;
    EXPECT_EQ(modTarvenix::RawDataLines(s, ui, c.bytes, iErr), QStringList{shown}) << c.what << ": printed text";
    const QStringList report = modTarvenix::RawDataLines(s, ui, "", iErr);
    EXPECT_TRUE(report.contains(QStringLiteral("Test Data History File: /data/") + shown + QStringLiteral("/run.txt")))
        << c.what << ": the printed report\n" << report.join('\n').toStdString();

    modTGraph::Graph g;
    ChartModel chart;
    clsGrInfo info;
    modTGraph::BuildWeibullPlot(s, g, chart, info, 6, false, std::tm{});
    TempDir dir;
    const std::string svg = dir.File("plot.svg");
    plot::ExportChart(svg, plot::ImageFormat::Svg, QSize(800, 600), s, g, chart);
    const QString exported = QString::fromUtf8(ReadAll(svg));
    EXPECT_TRUE(exported.contains(QStringLiteral("<title>") + shown + QStringLiteral("</title>"))) << c.what;
    EXPECT_TRUE(exported.contains(QStringLiteral(">") + shown + QStringLiteral(": Beta = "))) << c.what << ": legend";
  }
}

}  // namespace
}  // namespace tarvenix::test
