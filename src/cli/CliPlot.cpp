#include "cli/CliPlot.h"

namespace tarvenix::cli {

bool ParsePlotOption(const std::string& name, const std::function<bool(std::string&)>& value, PlotOptions& plot,
                     std::string& /*error*/) {
  if (name == "--plot") {
    value(plot.file);
    return true;
  }
  return false;
}

std::string PlotUsage() {
  return "  --plot FILE              the Weibull probability plot of all loaded data sets\n"
         "                           (not available in this version)\n";
}

bool WritePlot(const Session& /*s*/, const PlotOptions& plot, std::ostream& err) {
  if (plot.file.empty()) return true;
  err << "tarvenix-cli: plotting is not available in this version; no plot written to " << plot.file << "\n";
  return false;
}

}  // namespace tarvenix::cli
