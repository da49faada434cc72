#pragma once
// The plot of tarvenix-cli: its options and the file it writes after the run.
// Drawing comes with the plot painter; until then --plot reports that no plot
// can be written.

#include <functional>
#include <ostream>
#include <string>

namespace tarvenix {
struct Session;
}

namespace tarvenix::cli {

struct PlotOptions {
  std::string file;  // --plot FILE; empty: no plot
};

// Reads one plot option. `name` is the option ("--plot"); `value` hands out its
// value (and reports a missing one). Returns false when the option is not a plot
// option; sets `error` for a bad value.
bool ParsePlotOption(const std::string& name, const std::function<bool(std::string&)>& value, PlotOptions& plot,
                     std::string& error);

// The lines of --help that describe the plot options.
std::string PlotUsage();

// Writes the plot of every loaded data set when one was asked for. Returns false
// (after saying why on `err`) when it could not be written.
bool WritePlot(const Session& s, const PlotOptions& plot, std::ostream& err);

}  // namespace tarvenix::cli
