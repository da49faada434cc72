#include "plot/TGraph.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "base/Basic.h"
#include "analysis/Weibull.h"
#include "base/RuntimeError.h"
#include "session/Utils.h"

namespace tarvenix::modTGraph {
namespace {

// ln 10 rounded to single precision, as the program's log10 divides by it.
constexpr double kLn10Single = 2.3025851249694824;
// Y(2 %) and Y(99.6 %) less ln(ln 2), to four places: where a line through
// (N50, 50 %) meets the bottom and the top of the paper.
constexpr double kLowLineOffset = 3.5354;
constexpr double kHighLineOffset = 2.0751;
// The blank rows between the inner rectangle and the paper's 2 % and 99.6 % lines.
constexpr float kBottomMargin = 43;
constexpr float kTopMargin = 30;

using basic::CSng;
using basic::Divide;

// The N50 life of data set i, converting an N63 result.
double N50Of(const Session& s, int i) {
  const double n = s.sngNParam(i);
  return s.NParamType() == NParam::N63 ? modTarvenix::N63ToN50(n, s.sngBeta(i)) : n;
}

// Steps shared by the build and every repaint: each line's ends, the decades
// they span and the width of one decade.
void ComputeCyclesScale(const Session& s, Graph& g) {
  double low = 10000;
  double high = 0;
  for (int i : modTarvenix::CompletedDataSets(s)) {
    double lnN50 = basic::Log(N50Of(s, i));
    double beta = s.sngBeta(i);
    g.sngLineLowX(i) = CSng(basic::Exp(lnN50 - Divide(kLowLineOffset, beta)));
    g.sngLineHighX(i) = CSng(basic::Exp(lnN50 + Divide(kHighLineOffset, beta)));
    low = std::min(low, static_cast<double>(g.sngLineLowX(i)));
    high = std::max(high, static_cast<double>(g.sngLineHighX(i)));
  }
  g.iLowDecade = basic::CInt(basic::Fix(Log10(low)));
  g.iDecades = basic::CInt(basic::Fix(Log10(high)) + 1 - g.iLowDecade);
  g.sngDecadeWidth = CSng(Divide(g.sngPlotRight - g.sngPlotLeft, g.iDecades));
}

// A failure point's pixel from its stored coordinates, ln(cycles) and ln(-ln S).
double PointX(const Graph& g, float weiX) { return ColumnAtDecade(g, weiX / kLn10Single - g.iLowDecade); }
double PointY(const Graph& g, float weiY) { return RowAtOrdinate(g, weiY); }

struct Point {
  double x;
  double y;
};

// The part of a segment between the left and right edges of the plot, if any.
void AddClipped(const Graph& g, Point a, Point b, std::vector<Segment>& out) {
  if (a.x > b.x) std::swap(a, b);
  double left = g.sngPlotLeft;
  double right = g.sngPlotRight;
  if (b.x < left || a.x > right) return;
  auto yAt = [&](double x) { return a.y + (b.y - a.y) * (x - a.x) / (b.x - a.x); };
  if (a.x < left) a = {left, yAt(left)};
  if (b.x > right) b = {right, yAt(right)};
  out.push_back({{Pixel(a.x), Pixel(a.y)}, {Pixel(b.x), Pixel(b.y)}});
}

void DrawFittedLine(const Session& s, const Graph& g, int i, DataSetDrawing& out) {
  std::vector<Point> knots;
  knots.push_back({XOfCycles(g, g.sngLineLowX(i)), YOfFraction(g, 0.02)});
  // In N50 mode the line passes through the N50 life at 50 %, drawn as two parts.
  if (s.NParamType() == NParam::N50) knots.push_back({XOfCycles(g, s.sngNParam(i)), YOfFraction(g, 0.5)});
  knots.push_back({XOfCycles(g, g.sngLineHighX(i)), YOfFraction(g, 0.996)});
  bool outside = std::any_of(knots.begin(), knots.end(),
                             [&](const Point& p) { return p.x < g.sngPlotLeft || p.x > g.sngPlotRight; });
  for (std::size_t k = 0; k + 1 < knots.size(); ++k) {
    if (outside) {
      AddClipped(g, knots[k], knots[k + 1], out.line);
    } else {
      out.line.push_back({{Pixel(knots[k].x), Pixel(knots[k].y)}, {Pixel(knots[k + 1].x), Pixel(knots[k + 1].y)}});
    }
  }
}

const char* CyclesAxisTitle(const Session& s) {
  if (s.bDataCycles) return "Number of Data Cycles Elapsed";
  if (s.iCycleType == 1) return "Number of Temperature Cycles Elapsed";
  return "Number of Mechanical Cycles Elapsed";
}

}  // namespace

double WeibullY(double fraction) { return std::log(-std::log(1 - fraction)); }
double YBottom() { return std::log(-std::log(0.98)); }
double YTop() { return std::log(-std::log(1 - 0.996)); }

float Log10(double x) { return static_cast<float>(basic::Log(x) / kLn10Single); }

bool IsLargePlot(double width, double height, double screenWidth, double screenHeight) {
  if (screenWidth <= 0 || screenHeight <= 0) return true;
  float wRatio = static_cast<float>(width / screenWidth);
  float hRatio = static_cast<float>(height / screenHeight);
  return wRatio >= 0.7f || hRatio >= 0.7f;
}

std::string PlotGuardMessage(const Session& s) {
  if (s.iNumDataSets < 1 || !modTarvenix::CompletedDataSets(s).empty()) return "";
  return "Cannot generate plot because analysis was not completed successfully on Data Set #1.\r"
         "Edit the data set and try again.";
}

std::string NumberList(const std::vector<int>& numbers) {
  std::string list;
  for (std::size_t k = 0; k < numbers.size(); ++k) {
    if (k > 0) list += k + 1 == numbers.size() ? " and " : ", ";
    list += std::to_string(numbers[k]);
  }
  return list;
}

std::string NotDrawnNote(const Session& s) {
  std::vector<int> failed;
  for (int i = 1; i <= s.iNumDataSets && i <= kMaxDataSets; ++i)
    if (!s.bAnalysisComplete(i)) failed.push_back(i);
  if (failed.empty()) return "";
  if (failed.size() == 1) return "Data set " + NumberList(failed) + " was not analysed successfully and is not drawn.";
  return "Data sets " + NumberList(failed) + " were not analysed successfully and are not drawn.";
}

void PlotGuard(Session& s, UiPort& ui, Bool16& bCancel) {
  std::string message = PlotGuardMessage(s);
  bCancel = !message.empty();
  if (!message.empty()) modUtils::ShowMessage(s, ui, modUtils::kMsgNotice, "", message);
}

std::string DefaultTitle(const std::tm& today) {
  return "Quorvane Weibull Probability Plot" + std::string(12, ' ') + basic::FormatDate(today, "mmm. d, yyyy");
}

void ChartSetup(Session& s, Graph& g, ChartModel& chart, int16_t kind, int32_t colorScheme, const std::tm& today) {
  g.iColorScheme = colorScheme;
  chart.series.clear();
  const std::string date = std::string(12, ' ') + basic::FormatDate(today, "mmm. d, yyyy");
  ChartAxis& vertical = chart.axes[kAxisLeft];
  ChartAxis& horizontal = chart.axes[kAxisBottom];
  switch (kind) {
    case kPlotTempCycles:
      chart.title = "Temperature Cycle Plot" + date;
      vertical.title = "Temperature (\xBA" "C)";
      horizontal.title = "Past Time (Min)";
      break;
    case kPlotPosTempHistogram:
    case kPlotNegTempHistogram:
      chart.title = "First Event Occurrences vs Temperature Histogram" + date;
      vertical.title = "Total 1st Occurrence Events";
      horizontal.title = kind == kPlotPosTempHistogram ? "Pos. Temperature (\xBA" "C)" : "Neg. Temperature (\xBA" "C)";
      break;
    case kPlotWeibull:
      // A title the user gave is kept; without one the plot gets the dated default.
      if (s.sPlotTitle.empty()) s.sPlotTitle = DefaultTitle(today);
      chart.title = s.sPlotTitle;
      vertical.title = "Percent Failed";
      horizontal.title = CyclesAxisTitle(s);
      break;
    default:
      chart.title = "Unknown Plot" + date;
      break;
  }
}

std::string LegendText(const Session& s, int i) {
  return s.sDataIDs(i) + ": Beta = " + basic::Format(s.sngBeta(i), "0.##") + ",  " + s.sNLabel + " " +
         basic::Format(s.sngNParam(i), "0");
}

void PlotWeibull(Session& s, Graph& g, ChartModel& chart, bool bLargePlot) {
  g.bLargePlot = bLargePlot;
  SetWeibullAxes(s, g, chart);
  for (int i : modTarvenix::CompletedDataSets(s)) {
    ChartSeries series;
    series.dataSet = i;
    series.seriesType = kSeriesPoint;
    series.markerStyle = static_cast<int16_t>(i % 9);
    series.color = QBColorFor(g.iColorScheme, (i + 8) % 16);
    series.title = LegendText(s, i);
    series.penWidth = bLargePlot ? 2 : 1;
    series.markerSize = bLargePlot ? 8 : 5;
    chart.series.push_back(series);
  }
  g.bPlotReady = true;
}

void SetProbabilityScale(Graph& g, const ChartModel& chart) {
  g.sngPlotBottom = static_cast<float>(chart.inner.bottom) - kBottomMargin;
  g.sngPlotTop = static_cast<float>(chart.inner.top) + kTopMargin;
  g.sngPlotRight = static_cast<float>(chart.inner.right);
  g.sngPlotLeft = static_cast<float>(chart.inner.left);
  g.sngTickLen = g.bLargePlot ? 5.0f : 3.0f;
  g.sngProbScale = static_cast<float>((g.sngPlotBottom - g.sngPlotTop) / (YTop() - YBottom()));
}

void SetWeibullAxes(const Session& s, Graph& g, ChartModel& chart) {
  SetProbabilityScale(g, chart);
  ComputeCyclesScale(s, g);
  ChartAxis& axis = chart.axes[kAxisBottom];
  axis.logarithmic = true;
  axis.automatic = false;
  axis.minimum = std::pow(10.0, g.iLowDecade);
  axis.maximum = std::pow(10.0, g.iLowDecade + g.iDecades);
  axis.labelFormat = "0E-0";
}

double ColumnAtDecade(const Graph& g, double decades) { return g.sngPlotLeft + decades * g.sngDecadeWidth; }

double RowAtOrdinate(const Graph& g, double ordinate) {
  return g.sngPlotBottom - (ordinate - YBottom()) * g.sngProbScale;
}

double YOfFraction(const Graph& g, double fraction) { return RowAtOrdinate(g, WeibullY(fraction)); }

double XOfCycles(const Graph& g, double cycles) { return ColumnAtDecade(g, Log10(cycles) - g.iLowDecade); }

int32_t Pixel(double v) { return basic::CLng(v); }

std::string PowerOfTenLabel(int power) { return "1E" + std::to_string(power); }

std::string FormatSignificant(double v, int places) {
  char buf[64];
  std::snprintf(buf, sizeof buf, "%.*g", places, v);
  return buf;
}

std::vector<ProbabilityRow> ProbabilityRows(const Graph& g) {
  std::vector<ProbabilityRow> rows;
  for (int p : {2, 3, 4, 5}) rows.push_back({double(p), Pixel(YOfFraction(g, p / 100.0)), basic::Right(basic::CStr(p), 1)});
  for (int p = 10; p <= 90; p += 10) {
    rows.push_back({double(p), Pixel(YOfFraction(g, p / 100.0)), basic::Right(basic::CStr(p), 2)});
  }
  for (double p : {99.0, 99.6}) rows.push_back({p, Pixel(YOfFraction(g, p / 100.0)), FormatSignificant(p, 4)});
  return rows;
}

WeibullDrawing DrawWeibullData(const Session& s, Graph& g, ChartModel& chart) {
  WeibullDrawing drawing;
  if (!g.bPlotReady) return drawing;
  try {
    SetProbabilityScale(g, chart);
    ComputeCyclesScale(s, g);
    std::vector<int> invisible;
    for (int i : modTarvenix::CompletedDataSets(s)) {
      DataSetDrawing set;
      set.dataSet = i;
      for (int j = 1; j <= s.iNumEvents(i); ++j) {
        double y = PointY(g, s.sngWeiY(i, j));
        double x = PointX(g, s.sngWeiX(i, j));
        bool visible = g.sngPlotTop <= y && y <= g.sngPlotBottom && g.sngPlotLeft <= x && x <= g.sngPlotRight;
        if (visible) set.points.push_back({Pixel(x), Pixel(y)});
      }
      if (set.points.empty()) {
        // Its line alone would say nothing about its points: leave it out
        // and name it, and go on with the others.
        invisible.push_back(i);
        continue;
      }
      DrawFittedLine(s, g, i, set);
      drawing.sets.push_back(std::move(set));
    }
    if (!invisible.empty()) {
      drawing.warning = std::string("Warning: there are no visible points in data set") +
                        (invisible.size() > 1 ? "s " : " ") + NumberList(invisible);
    }
  } catch (const RuntimeError&) {
    // A bad value ends this repaint's drawing; what was drawn stays.
    drawing.warning.clear();
  }
  return drawing;
}

}  // namespace tarvenix::modTGraph

namespace tarvenix::modTGraph {

void BuildWeibullPlot(Session& s, Graph& g, ChartModel& chart, clsGrInfo& grInfo, int32_t scheme, bool bLargePlot,
                      const std::tm& today) {
  g.bPlotReady = false;
  grInfo.SetColorScheme(scheme, chart);
  g.bLargePlot = bLargePlot;
  ChartSetup(s, g, chart, kPlotWeibull, grInfo.ClrScheme(), today);
  PlotWeibull(s, g, chart, bLargePlot);
}

}  // namespace tarvenix::modTGraph
