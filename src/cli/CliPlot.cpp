#include "CliPlot.h"

#include <memory>

#include <QGuiApplication>

#include "base/Basic.h"
#include "session/Utils.h"
#include "session/Session.h"
#include "PlotExport.h"

namespace tarvenix::cli {
namespace {

constexpr int kMinSide = 64;
constexpr int kMaxSide = 8000;
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

bool ReadSide(const std::string& digits, int& side) {
  if (digits.empty() || digits.size() > 5) return false;
  for (char c : digits) {
    if (c < '0' || c > '9') return false;
  }
  side = std::stoi(digits);
  return side >= kMinSide && side <= kMaxSide;
}

}  // namespace

bool ParsePlotOption(const std::string& name, const std::function<bool(std::string&)>& value, PlotOptions& plot,
                     std::string& error) {
  if (name == "--plot") {
    if (value(plot.file) && !plot::FormatForPath(plot.file)) {
      error = "--plot takes a file name ending in .png, .bmp, .jpg, .svg or .pdf, not '" + plot.file + "'";
    }
    return true;
  }
  if (name == "--plot-size") {
    std::string text;
    if (!value(text)) return true;
    const std::size_t x = text.find_first_of("xX");
    int width = 0;
    int height = 0;
    if (x == std::string::npos || !ReadSide(text.substr(0, x), width) || !ReadSide(text.substr(x + 1), height)) {
      error = "--plot-size takes WIDTHxHEIGHT with each side from " + std::to_string(kMinSide) + " to " +
              std::to_string(kMaxSide) + " pixels, not '" + text + "'";
    } else {
      plot.width = width;
      plot.height = height;
    }
    return true;
  }
  return false;
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
