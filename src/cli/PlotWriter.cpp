// The plot file of a build with Qt: painted as the plot window paints it.

#include <memory>

#include <QGuiApplication>

#include "CliPlot.h"
#include "PlotExport.h"
#include "base/Basic.h"
#include "session/Session.h"
#include "session/Utils.h"

namespace tarvenix::cli {
namespace {

// The screen the large-plot rule compares a batch plot with.
constexpr int kScreenWidth = 1920;
constexpr int kScreenHeight = 1080;

// Fonts need a GUI application; a batch run has no screen, so it runs on the
// offscreen platform whatever the environment says. The application ends with
// the plot, before the program's own exit.
std::unique_ptr<QGuiApplication> GuiApplicationForPlot() {
  if (QGuiApplication::instance()) return nullptr;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  static int argc = 1;
  static char name[] = "tarvenix-cli";
  static char* argv[] = {name, nullptr};
  return std::make_unique<QGuiApplication>(argc, argv);
}

}  // namespace

std::string PlotFileError(const std::string& file) {
  if (plot::FormatForPath(file)) return "";
  return "--plot takes a file name ending in .png, .bmp, .jpg, .svg or .pdf, not '" + file + "'";
}

std::string PlotUsage() {
  return "  --plot FILE              the Weibull probability plot of all loaded data sets;\n"
         "                           the format follows the extension: .png .bmp .jpg .svg .pdf\n"
         "  --plot-size WxH          the plot's size in pixels (default 1200x900)\n";
}

bool WritePlot(Session& s, UiPort& ui, const PlotOptions& plot) {
  if (plot.file.empty()) return true;
  Bool16 cancel;
  modTGraph::PlotGuard(s, ui, cancel);
  if (cancel) return false;
  // The plot shows the data sets that were analysed and says which are left out.
  if (const std::string note = modTGraph::NotDrawnNote(s); !note.empty())
    modUtils::ShowMessage(s, ui, modUtils::kMsgNotice, "", note);
  return modUtils::Trapped(s, ui, "tarvenix-cli.WritePlot", [&] {
    const std::unique_ptr<QGuiApplication> app = GuiApplicationForPlot();
    const auto format = plot::FormatForPath(plot.file);
    if (!format) Raise(err::kBadFileName);
    modTGraph::Graph g;
    ChartModel chart;
    clsGrInfo grInfo;
    const bool large = modTGraph::IsLargePlot(plot.width, plot.height, kScreenWidth, kScreenHeight);
    modTGraph::BuildWeibullPlot(s, g, chart, grInfo, kSchemeScreen, large, basic::Now());
    plot::ExportChart(plot.file, *format, QSize(plot.width, plot.height), s, g, chart);
  });
}

}  // namespace tarvenix::cli
