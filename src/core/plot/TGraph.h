#pragma once
// The Weibull probability paper: the plot guard, the chart set-up (titles,
// legend series), and the geometry every drawing step shares, computed in
// pixels from the chart's inner rectangle. Pure computation: the painter asks
// for grid rows, labels, markers and line segments and draws what it is given.

#include <cstdint>
#include <ctime>
#include <string>
#include <vector>

#include "session/Session.h"
#include "plot/Chart.h"

namespace tarvenix {
class UiPort;
}

namespace tarvenix::modTGraph {

// Plot kinds of the common chart set-up; the plot window asks for the Weibull plot.
inline constexpr int16_t kPlotTempCycles = 1;
inline constexpr int16_t kPlotPosTempHistogram = 2;
inline constexpr int16_t kPlotNegTempHistogram = 3;
inline constexpr int16_t kPlotWeibull = 4;

// Ordinates of the paper's bottom (2 %) and top (99.6 %) lines: ln(-ln(1-F)).
double WeibullY(double fraction);
double YBottom();  // -3.901939
double YTop();     // 1.708642

// The plotting module's state, recomputed at each build and each repaint.
struct Graph {
  float sngPlotBottom = 0;  // pixel row of the 2 % line
  float sngPlotTop = 0;     // pixel row of the 99.6 % line
  float sngPlotRight = 0;
  float sngPlotLeft = 0;
  float sngTickLen = 3;
  float sngProbScale = 0;   // pixels per unit of ln(-ln(1-F))
  int16_t iLowDecade = 0;   // power of ten at the left end of the cycles axis
  int16_t iDecades = 1;
  float sngDecadeWidth = 0;
  PerDataSet<float> sngLineLowX;   // cycles where a fitted line crosses 2 %
  PerDataSet<float> sngLineHighX;  // ... and 99.6 %
  Bool16 bLargePlot;
  int32_t iColorScheme = 6;  // the scheme data set colours are looked up in
  Bool16 bPlotReady;         // a build has finished: repaints may draw data
};

// log10 as the program computes it: ln(x) over ln 10 rounded to single
// precision, the quotient rounded to single precision too. x <= 0 is error 5.
float Log10(double x);

// A large plot: width or height at least 0.7 of the screen's (each ratio in
// single precision; equality counts). Large plots get the larger fonts, ticks
// and markers.
bool IsLargePlot(double width, double height, double screenWidth, double screenHeight);

// The plot guard: "" when some loaded data set has a completed analysis (the
// plot draws those), else the refusal.
std::string PlotGuardMessage(const Session& s);
// "" when every loaded data set's analysis completed, else the note that names
// the ones the plot leaves out: "Data set 2 was not analysed successfully and
// is not drawn." ("Data sets 2 and 4 were ... are not drawn.").
std::string NotDrawnNote(const Session& s);
// "1", "1 and 3", "1, 3 and 4".
std::string NumberList(const std::vector<int>& numbers);
// Shows the refusal (if any) and sets bCancel; clears it otherwise.
void PlotGuard(Session& s, UiPort& ui, Bool16& bCancel);

// "Quorvane Weibull Probability Plot", 12 blanks and "mmm. d, yyyy".
std::string DefaultTitle(const std::tm& today);

// The common chart set-up: titles for the plot kind, the data set colour
// scheme, and no series yet. The Weibull plot's title is sPlotTitle; an empty
// one becomes the dated default, which then stays.
void ChartSetup(Session& s, Graph& g, ChartModel& chart, int16_t kind, int32_t colorScheme, const std::tm& today);

// "<ID>: Beta = 2.35,  N50 = 1234".
std::string LegendText(const Session& s, int i);

// The Weibull build: the title (the default one when none is given), the cycles
// axis, one legend series per data set; sets the plot-ready flag. bLargePlot
// picks pen widths and marker sizes.
void PlotWeibull(Session& s, Graph& g, ChartModel& chart, bool bLargePlot);

// Geometry from the chart's inner rectangle.
void SetProbabilityScale(Graph& g, const ChartModel& chart);
// The cycles axis: each data set's line ends, the decades, and the chart's
// bottom axis. Run-time errors (a zero beta, a zero N) propagate.
void SetWeibullAxes(const Session& s, Graph& g, ChartModel& chart);

// Pixel mappings, from the geometry of the last build or repaint. The two
// underneath every drawing step: the column `decades` decades right of the
// cycles axis's left end, and the row of an ordinate ln(-ln(1-F)).
double ColumnAtDecade(const Graph& g, double decades);
double RowAtOrdinate(const Graph& g, double ordinate);
// The row of a fraction F (0 < F < 1), the column of a cycle count n > 0.
double YOfFraction(const Graph& g, double fraction);
double XOfCycles(const Graph& g, double cycles);
// A pixel value handed to the canvas: rounded half to even.
int32_t Pixel(double v);

// The labels of the cycles axis, one per power of ten: "1E3", "1E-1".
std::string PowerOfTenLabel(int power);
// Up to `places` significant digits, no trailing zeros or point: "99", "99.6".
std::string FormatSignificant(double v, int places);

// The probability rows: 2, 3, 4, 5, 10 ... 90, 99, 99.6 percent.
struct ProbabilityRow {
  double percent;
  int32_t y;          // pixel row
  std::string label;  // "2" ... "90", "99", "99.6"
};
std::vector<ProbabilityRow> ProbabilityRows(const Graph& g);

struct PixelPoint {
  int32_t x;
  int32_t y;
};
struct Segment {
  PixelPoint from;
  PixelPoint to;
};
struct DataSetDrawing {
  int dataSet = 0;
  std::vector<PixelPoint> points;  // the visible failure points
  std::vector<Segment> line;       // the fitted line, clipped to the plot's columns
};
struct WeibullDrawing {
  std::vector<DataSetDrawing> sets;  // in data set order
  std::string warning;               // "" or the invisible-points warning
};

// The data of one repaint: geometry recomputed from the chart's inner
// rectangle, then each analysed data set's visible points and fitted line. A
// data set without a visible point is left out and named in the warning ("...
// in data set 2", "... in data sets 1 and 3"). A run-time error ends the
// drawing, keeping what was drawn before and no warning. Nothing is drawn
// until the plot-ready flag is set.
WeibullDrawing DrawWeibullData(const Session& s, Graph& g, ChartModel& chart);

}  // namespace tarvenix::modTGraph

namespace tarvenix::modTGraph {

// One build of the Weibull plot as the plot window's redraw runs it: the chart
// painted in `scheme`, the set-up of kind 4 and the Weibull series. The
// plot-ready flag is cleared first and set only when the build has finished,
// so a failed build leaves empty paper.
void BuildWeibullPlot(Session& s, Graph& g, ChartModel& chart, clsGrInfo& grInfo, int32_t scheme, bool bLargePlot,
                      const std::tm& today);

}  // namespace tarvenix::modTGraph
