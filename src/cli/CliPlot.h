#pragma once
// The plot of tarvenix-cli: --plot FILE and --plot-size WxH, and the file it
// writes after the run with the plot window's painter, without a screen. A
// build without Qt has no painter: there --plot is a usage error
// (PlotWriter.cpp and NoPlotWriter.cpp are the two builds' halves).

#include <functional>
#include <ostream>
#include <string>

namespace tarvenix {
struct Session;
class UiPort;
}  // namespace tarvenix

namespace tarvenix::cli {

struct PlotOptions {
  std::string file;  // --plot FILE; empty: no plot
  int width = 1200;  // --plot-size WxH, pixels
  int height = 900;
};

// Reads one plot option. `name` is the option ("--plot"); `value` hands out its
// value (and reports a missing one). Returns false when the option is not a plot
// option; sets `error` for a bad value: a file PlotFileError refuses, or a size
// that is not WxH with each side from 64 to 8000.
bool ParsePlotOption(const std::string& name, const std::function<bool(std::string&)>& value, PlotOptions& plot,
                     std::string& error);

// The usage error for --plot FILE, "" when the file can be written: its
// extension must be one of .png, .bmp, .jpg, .jpeg, .svg, .pdf, and the build
// must have Qt.
std::string PlotFileError(const std::string& file);

// The lines of --help that describe the plot options.
std::string PlotUsage();

// Writes the plot of every loaded data set when one was asked for, as the plot
// window draws it on a 1920 x 1080 screen (large fonts and markers when the
// size is at least 0.7 of that either way). The plot guard's refusal and a
// failure to write go through the UI port's message boxes. Returns false when
// no plot could be written.
bool WritePlot(Session& s, UiPort& ui, const PlotOptions& plot);

}  // namespace tarvenix::cli
