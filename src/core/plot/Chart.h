#pragma once
// What the chart shows, independent of how it is painted: title, panel, the
// four axes, one legend series per data set, and the inner rectangle the
// painter last laid out. The core fills it; the painter draws it.

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "plot/ColorScheme.h"

namespace tarvenix {

struct ChartAxis {
  OleColor penColor = 0;
  OleColor labelColor = 0;
  OleColor titleColor = 0;
  std::string title;
  bool logarithmic = false;
  bool automatic = true;
  double minimum = 0;
  double maximum = 0;
  std::string labelFormat;  // "0E-0": powers of ten as 1E3, 1E4
};

enum AxisId { kAxisLeft = 0, kAxisTop = 1, kAxisRight = 2, kAxisBottom = 3 };

// Marker shapes, numbered as the series' marker style.
enum MarkerStyle : int16_t {
  kMarkerRectangle = 0,
  kMarkerCircle = 1,
  kMarkerTriangle = 2,
  kMarkerDownTriangle = 3,
  kMarkerCross = 4,
  kMarkerDiagCross = 5,
  kMarkerStar = 6,
  kMarkerDiamond = 7,
  kMarkerSmallDot = 8,
};

inline constexpr int16_t kSeriesPoint = 4;  // a point series: markers, no values

struct ChartSeries {
  int dataSet = 0;  // the data set it shows, 1..5
  int16_t seriesType = kSeriesPoint;
  int16_t markerStyle = kMarkerRectangle;
  OleColor color = 0;
  std::string title;  // the legend text
  int penWidth = 1;
  int markerSize = 5;
};

// Pixels of the plotting area inside the axes.
struct InnerRect {
  double left = 0;
  double top = 0;
  double right = 0;
  double bottom = 0;
};

struct ChartModel {
  OleColor panelColor = 0xFFFFFF;
  std::string title;
  OleColor titleColor = 0;
  std::array<ChartAxis, 4> axes{};
  std::vector<ChartSeries> series;
  // The panel's raised bevel: on for the screen, off for printing and for the
  // negative-image export, which want a flat sheet.
  bool bevel = true;
  // Set by the painter each time it lays the chart out.
  InnerRect inner;
};

}  // namespace tarvenix
