#include <gtest/gtest.h>

#include <cmath>

#include "base/Basic.h"
#include "base/RuntimeError.h"
#include "plot/TGraph.h"
#include "support/ErrorNumber.h"

namespace tarvenix::modTGraph {
namespace {

constexpr double kLn10 = 2.302585092994046;

// A chart whose inner rectangle is (100, 50) to (900, 650): the paper runs
// from row 80 (99.6 %) to row 607 (2 %) and from column 100 to 900.
ChartModel ChartWithInner() {
  ChartModel chart;
  chart.inner = {100, 50, 900, 650};
  return chart;
}

// Data set i with a fitted line of slope beta through N50 (N63 when the
// session says so), and points at the given cycles and percentages.
void SetDataSet(Session& s, int i, double beta, double n, std::vector<std::pair<double, double>> points = {}) {
  s.iNumDataSets = static_cast<int16_t>(std::max<int>(s.iNumDataSets, i));
  s.sDataIDs(i) = "Set " + std::to_string(i);
  s.sngBeta(i) = static_cast<float>(beta);
  s.bAnalysisComplete(i) = true;
  s.sngNParam(i) = static_cast<float>(n);
  s.iNumEvents(i) = static_cast<int16_t>(points.size());
  for (std::size_t j = 0; j < points.size(); ++j) {
    s.sngWeiX(i, static_cast<long long>(j + 1)) = static_cast<float>(std::log(points[j].first));
    s.sngWeiY(i, static_cast<long long>(j + 1)) = static_cast<float>(WeibullY(points[j].second / 100));
  }
}

struct Built {
  Session s;
  Graph g;
  ChartModel chart = ChartWithInner();
  clsGrInfo info;
  void Build(bool large = false) {
    std::tm today{};
    today.tm_year = 126;
    today.tm_mon = 2;
    today.tm_mday = 5;
    BuildWeibullPlot(s, g, chart, info, 6, large, today);
  }
};

TEST(WeibullPaper, Log10RoundsToSinglePrecisionSoPowersOfTenAreExact) {
  // ln 10 rounded to single precision is a little large: without rounding the
  // quotient, 10000 would come out at 3.99999994 and truncate to 3.
  for (int k = -3; k <= 9; ++k) EXPECT_EQ(Log10(std::pow(10.0, k)), static_cast<float>(k)) << k;
  EXPECT_EQ(basic::Fix(Log10(9999)), 3);
}

TEST(WeibullPaper, CyclesAxisSpansTheDecadesOfEveryLine) {
  struct Case {
    const char* what;
    double low, high;  // where the single line should cross 2 % and 99.6 %
    int lowDecade, decades;
  } cases[] = {
      {"20 000 to 900 000 keeps the axis from 10^4", 20000, 900000, 4, 2},
      {"lines far above 10^4 still start at 10^4", 300000, 2000000, 4, 3},
      {"lines below one cycle truncate toward zero", 0.5, 50, 0, 2},
      {"lines well below one cycle", 0.05, 3000, -1, 5},
  };
  for (const Case& c : cases) {
    Built b;
    double beta = (3.5354 + 2.0751) / std::log(c.high / c.low);
    double n50 = std::exp(std::log(c.low) + 3.5354 / beta);
    SetDataSet(b.s, 1, beta, n50, {{n50, 50}});
    b.Build();
    EXPECT_EQ(b.g.iLowDecade, c.lowDecade) << c.what;
    EXPECT_EQ(b.g.iDecades, c.decades) << c.what;
    EXPECT_FLOAT_EQ(b.g.sngDecadeWidth, 800.0f / c.decades) << c.what;
    EXPECT_NEAR(b.g.sngLineLowX(1), c.low, c.low * 1e-5) << c.what;
    EXPECT_NEAR(b.g.sngLineHighX(1), c.high, c.high * 1e-5) << c.what;
  }
}

TEST(WeibullPaper, PointsLeftOfTheAxisAreSkippedAndLinesClippedAtItsEdges) {
  Built b;
  // The line runs from 0.5 to 50 cycles; the axis starts at 10^0, so the
  // point at 0.6 cycles and the line's lower part fall left of the paper.
  double beta = (3.5354 + 2.0751) / std::log(100.0);
  double n50 = std::exp(std::log(0.5) + 3.5354 / beta);
  SetDataSet(b.s, 1, beta, n50, {{0.6, 5}, {5, 40}, {20, 80}});
  b.Build();
  WeibullDrawing d = DrawWeibullData(b.s, b.g, b.chart);
  ASSERT_EQ(d.sets.size(), 1u);
  EXPECT_EQ(d.warning, "");
  ASSERT_EQ(d.sets[0].points.size(), 2u);
  EXPECT_EQ(d.sets[0].points[0].x, Pixel(100 + std::log(5.0) / kLn10 * 400));
  EXPECT_EQ(d.sets[0].points[0].y, Pixel(YOfFraction(b.g, 0.40)));
  for (const Segment& seg : d.sets[0].line) {
    for (const PixelPoint& p : {seg.from, seg.to}) {
      EXPECT_GE(p.x, 100);
      EXPECT_LE(p.x, 900);
    }
  }
  // The first part is cut at the left edge, where the line is at 0.5 cycles * 2.
  EXPECT_EQ(d.sets[0].line.front().from.x, 100);
}

TEST(WeibullPaper, LineRunsThroughN50InN50ModeAndStraightInN63Mode) {
  for (int16_t type : {0, 1}) {
    Built b;
    b.s.iNParamType() = type;
    // N63 = 2000 is N50 = 2000 * (ln 2)^(1/2) = 1665.1 for beta 2.
    SetDataSet(b.s, 1, 2.0, type == 0 ? 1665.109 : 2000, {{1665.109, 50}});
    b.Build();
    EXPECT_NEAR(b.g.sngLineLowX(1), 1665.109 * std::exp(-3.5354 / 2), 0.01) << type;
    WeibullDrawing d = DrawWeibullData(b.s, b.g, b.chart);
    ASSERT_EQ(d.sets.size(), 1u);
    const auto& line = d.sets[0].line;
    ASSERT_EQ(line.size(), type == 0 ? 2u : 1u);
    EXPECT_EQ(line.front().from.y, 607);
    EXPECT_EQ(line.back().to.y, 80);
    if (type == 0) {
      EXPECT_EQ(line[0].to.x, Pixel(XOfCycles(b.g, 1665.109)));
      EXPECT_EQ(line[0].to.y, Pixel(YOfFraction(b.g, 0.5)));
      EXPECT_EQ(line[1].from.x, line[0].to.x);
    }
  }
}

// Every data set with a visible point is drawn; those without are named, and
// those whose analysis did not complete are left out of axes and legend.
TEST(WeibullPaper, DataSetsWithoutVisiblePointsOrAnalysisAreNamedAndTheOthersDrawn) {
  const std::vector<std::pair<double, double>> hidden[] = {{{1000, 99.9}, {1200, 99.8}}, {{1000, 1}, {1100, 1.5}}, {}};
  for (const auto& points : hidden) {
    Built b;
    SetDataSet(b.s, 1, 2, 1000, points);
    SetDataSet(b.s, 2, 2, 1000, {{1000, 50}});
    SetDataSet(b.s, 3, 2, 1000, points);
    SetDataSet(b.s, 4, 2, 1000, {{1000, 50}});
    SetDataSet(b.s, 5, 0, 0, {});  // not analysed: no slope, no life
    b.s.bAnalysisComplete(5) = false;
    b.Build();
    WeibullDrawing d = DrawWeibullData(b.s, b.g, b.chart);
    EXPECT_EQ(d.warning, "Warning: there are no visible points in data sets 1 and 3");
    ASSERT_EQ(d.sets.size(), 2u);
    EXPECT_EQ(d.sets[0].dataSet, 2);
    EXPECT_EQ(d.sets[1].dataSet, 4);
    EXPECT_EQ(b.chart.series.size(), 4u);
    EXPECT_EQ(NotDrawnNote(b.s), "Data set 5 was not analysed successfully and is not drawn.");
  }
  Built b;
  SetDataSet(b.s, 1, 2, 1000, {{1000, 50}});
  SetDataSet(b.s, 2, 2, 1000, {{1000, 50}});
  for (int i : {1, 2}) b.s.bAnalysisComplete(i) = false;
  EXPECT_EQ(NotDrawnNote(b.s), "Data sets 1 and 2 were not analysed successfully and are not drawn.");
  EXPECT_NE(PlotGuardMessage(b.s), "") << "nothing to draw: the plot is refused";
  b.s.bAnalysisComplete(2) = true;
  EXPECT_EQ(PlotGuardMessage(b.s), "");
  EXPECT_EQ(NumberList({1, 3, 4}), "1, 3 and 4");
}

TEST(WeibullPaper, BadValuesEndTheDrawingQuietly) {
  Built b;
  SetDataSet(b.s, 1, 2, 1000, {{1000, 50}});
  SetDataSet(b.s, 2, 0, 1000, {{1000, 50}});  // a zero slope
  EXPECT_EQ(test::ErrorNumberOf([&] { b.Build(); }), err::kDivisionByZero);
  EXPECT_FALSE(b.g.bPlotReady);
  EXPECT_TRUE(DrawWeibullData(b.s, b.g, b.chart).sets.empty());
  b.g.bPlotReady = true;
  WeibullDrawing d = DrawWeibullData(b.s, b.g, b.chart);
  EXPECT_TRUE(d.sets.empty());
  EXPECT_EQ(d.warning, "");
}

TEST(WeibullPaper, LegendTitleAndAxisTitles) {
  Built b;
  b.s.sNLabel = "N50 =";
  SetDataSet(b.s, 1, 2.0, 1234.5, {{1234, 50}});
  SetDataSet(b.s, 2, 2.346, 98765.4, {{98765, 50}});
  b.s.sDataIDs(1) = "Board A";
  b.s.bDataCycles = true;
  b.Build(true);
  ASSERT_EQ(b.chart.series.size(), 2u);
  EXPECT_EQ(b.chart.series[0].title, "Board A: Beta = 2.,  N50 = 1235");
  EXPECT_EQ(b.chart.series[1].title, "Set 2: Beta = 2.35,  N50 = 98765");
  EXPECT_EQ(b.chart.series[0].markerStyle, 1);
  EXPECT_EQ(b.chart.series[1].markerStyle, 2);
  EXPECT_EQ(b.chart.series[0].color, QBColorFor(6, 9));
  EXPECT_EQ(b.chart.series[1].color, QBColorFor(6, 10));
  EXPECT_EQ(b.chart.series[0].penWidth, 2);
  EXPECT_EQ(b.chart.series[0].markerSize, 8);
  EXPECT_EQ(b.chart.title, "Quorvane Weibull Probability Plot            Mar. 5, 2026");
  EXPECT_EQ(b.s.sPlotTitle, b.chart.title);
  EXPECT_EQ(b.chart.axes[kAxisLeft].title, "Percent Failed");
  EXPECT_EQ(b.chart.axes[kAxisBottom].title, "Number of Data Cycles Elapsed");

  b.s.sPlotTitle = "Lot 7";
  b.s.bDataCycles = false;
  b.s.iCycleType = 1;
  b.Build(false);
  EXPECT_EQ(b.chart.series[0].penWidth, 1);
  EXPECT_EQ(b.chart.series[0].markerSize, 5);
  EXPECT_EQ(b.chart.title, "Lot 7");
  EXPECT_EQ(b.chart.axes[kAxisBottom].title, "Number of Temperature Cycles Elapsed");
  b.s.iCycleType = 2;
  b.Build(false);
  EXPECT_EQ(b.chart.axes[kAxisBottom].title, "Number of Mechanical Cycles Elapsed");
}

TEST(WeibullPaper, PercentRowsRunFromTwoToNinetyNinePointSixAtTheirOrdinates) {
  Graph g;
  SetProbabilityScale(g, ChartWithInner());
  std::vector<std::string> labels;
  for (const ProbabilityRow& row : ProbabilityRows(g)) labels.push_back(row.label);
  EXPECT_EQ(labels, (std::vector<std::string>{"2", "3", "4", "5", "10", "20", "30", "40", "50", "60", "70", "80",
                                              "90", "99", "99.6"}));
  // The paper fills the inner rectangle less its margins: 2 % at row 607,
  // 99.6 % at row 80, 63.2 % where ln(-ln(1-F)) is 0.
  EXPECT_EQ(ProbabilityRows(g).front().y, 607);
  EXPECT_EQ(ProbabilityRows(g).back().y, 80);
  EXPECT_EQ(Pixel(YOfFraction(g, 1 - std::exp(-1.0))), Pixel(80 + 527 * 1.708642 / (1.708642 + 3.901939)));
  EXPECT_EQ(PowerOfTenLabel(3), "1E3");
  EXPECT_EQ(PowerOfTenLabel(-1), "1E-1");
}

TEST(WeibullPaper, LargePlotAtSevenTenthsOfTheScreenEitherWay) {
  struct Case {
    double w, h;
    bool large;
  } cases[] = {
      {1344, 100, true}, {100, 756, true},  // exactly 0.7 of 1920, of 1080
      {1343, 755, false},                   // just below in both
      {1920, 1080, true}, {640, 480, false}, {1200, 900, true},
  };
  for (const Case& c : cases) EXPECT_EQ(IsLargePlot(c.w, c.h, 1920, 1080), c.large) << c.w << "x" << c.h;
}

}  // namespace
}  // namespace tarvenix::modTGraph
