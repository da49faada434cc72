#pragma once
// The plot as a file: raster images, SVG and PDF, and the vector recording
// that printing plays onto the page. All of them paint through PaintChart.

#include <optional>
#include <string>

#include <QImage>
#include <QSize>

#include "plot/TGraph.h"

class QPagedPaintDevice;

namespace tarvenix::plot {

enum class ImageFormat { Png, Bmp, Jpg, Svg, Pdf };

// The format a file name asks for by its extension (any case): .png, .bmp,
// .jpg or .jpeg, .svg, .pdf; nothing for any other.
std::optional<ImageFormat> FormatForPath(const std::string& path);

// The chart painted on an image of `size` pixels; `warning` receives the data
// drawing's warning.
QImage RenderChartImage(const Session& s, modTGraph::Graph& g, ChartModel& chart, const QSize& size,
                        std::string* warning = nullptr);

// Writes the chart in `format` at `size` (pixels; the page of a PDF is that
// size at 96 dots per inch), replacing the file atomically. Failures raise
// the classic file errors, and a format that cannot be encoded error 75.
void ExportChart(const std::string& path, ImageFormat format, const QSize& size, const Session& s,
                 modTGraph::Graph& g, ChartModel& chart);

// The vector recording used for printing, written to `path`; false when it
// could not be written.
bool ExportRecording(const std::string& path, const QSize& size, const Session& s, modTGraph::Graph& g,
                     ChartModel& chart);
// Plays a recording written by ExportRecording onto the page of `device`,
// scaled to fit its printable area and centred; false when the recording
// cannot be read or the device cannot be painted on.
bool PlayRecording(const std::string& path, QPagedPaintDevice& device);

}  // namespace tarvenix::plot
