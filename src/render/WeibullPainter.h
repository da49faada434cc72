#pragma once
// Paints the Weibull probability paper onto any paint device: the screen
// widget, images, SVG, PDF and the printer all go through PaintChart, so they
// show the same plot.

#include <string>

#include <QColor>
#include <QPointF>
#include <QSizeF>

#include "plot/TGraph.h"

class QPainter;

namespace tarvenix::plot {

QColor ToQColor(OleColor c);

// Paints the chart in logical pixels from (0, 0) to `size` (callers scale the
// painter for devices of other resolutions). Lays the chart out, stores the
// inner rectangle in `chart`, and draws panel, title, axes, the probability
// grid and labels, the data and the legend. Returns the data drawing's warning
// ("" when every data set was drawn).
std::string PaintChart(QPainter& painter, const QSizeF& size, const Session& s, modTGraph::Graph& g,
                       ChartModel& chart);

}  // namespace tarvenix::plot

namespace tarvenix::plot {
// One marker of a series' style centred on c, radius r.
void DrawMarker(QPainter& p, const QPointF& c, int16_t style, double r, const QColor& colour, double penWidth);
}  // namespace tarvenix::plot
