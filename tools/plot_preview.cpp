// Writes a Weibull plot of made-up data sets, for looking at the painter
// without running an analysis:
//   plot-preview OUT.(png|bmp|jpg|svg|pdf) [WxH] [data sets 1..5] [n63] [scheme 1..6]
// An OUT ending in ".page.pdf" gets an A4 page as printing makes it, through
// the vector recording.

#include <cstdio>
#include <cstdlib>
#include <string>

#include <QGuiApplication>
#include <QPageSize>
#include <QPdfWriter>

#include "WeibullSamples.h"
#include "base/Basic.h"
#include "PlotExport.h"

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fprintf(stderr, "usage: plot-preview OUT [WxH] [count] [n63] [scheme]\n");
    return 2;
  }
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QGuiApplication app(argc, argv);
  int w = 1200, h = 900, count = 3, scheme = 6;
  if (argc > 2) std::sscanf(argv[2], "%dx%d", &w, &h);
  if (argc > 3) count = std::atoi(argv[3]);
  bool n63 = argc > 4 && std::string(argv[4]) == "n63";
  if (argc > 5) scheme = std::atoi(argv[5]);
  using namespace tarvenix;
  Session s;
  s.SetAnalysisOptions(n63 ? NParam::N63 : NParam::N50, FractionMethod::Unadjusted, ConfLevel::Percent90);
  s.bDataCycles = true;
  samples::AddSampleDataSets(s, count);
  modTGraph::Graph g;
  ChartModel chart;
  clsGrInfo grInfo;
  bool large = modTGraph::IsLargePlot(w, h, 1920, 1080);
  modTGraph::BuildWeibullPlot(s, g, chart, grInfo, scheme, large, basic::Now());
  const std::string out = argv[1];
  if (out.size() > 9 && out.substr(out.size() - 9) == ".page.pdf") {
    const std::string recording = out + ".rec";
    QPdfWriter page(QString::fromStdString(out));
    page.setPageSize(QPageSize(QPageSize::A4));
    page.setPageOrientation(QPageLayout::Landscape);
    page.setResolution(600);
    bool ok = plot::ExportRecording(recording, QSize(w, h), s, g, chart) && plot::PlayRecording(recording, page);
    std::remove(recording.c_str());
    return ok ? 0 : 1;
  }
  auto format = plot::FormatForPath(argv[1]);
  if (!format) return 2;
  plot::ExportChart(argv[1], *format, QSize(w, h), s, g, chart);
  return 0;
}
