// The plot options of a build without Qt: there is nothing to paint with, so
// --plot is refused before anything runs.

#include "CliPlot.h"

namespace tarvenix::cli {

std::string PlotFileError(const std::string&) {
  return "--plot is not available in this build (it was built without Qt)";
}

std::string PlotUsage() {
  return "  --plot FILE, --plot-size WxH\n"
         "                           the plot: not available in this build (built without Qt)\n";
}

bool WritePlot(Session&, UiPort&, const PlotOptions& plot) { return plot.file.empty(); }

}  // namespace tarvenix::cli
