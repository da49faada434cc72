#include "CliPlot.h"

namespace tarvenix::cli {
namespace {

constexpr int kMinSide = 64;
constexpr int kMaxSide = 8000;

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
    if (value(plot.file)) error = PlotFileError(plot.file);
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

}  // namespace tarvenix::cli
