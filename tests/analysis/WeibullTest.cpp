#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "analysis/Basic.h"
#include "analysis/Weibull.h"
#include "app/Session.h"
#include "support/FailurePoints.h"
#include "support/RecordingUi.h"

namespace tarvenix::modTarvenix {
namespace {

using test::FailurePoints;
using test::LoadFailurePoints;
using test::PublishedExample;
using test::Ranked;
using test::RecordingUi;
using test::TiedExample;

enum Fraction : int16_t { unadjusted = 0, mean = 1, median = 2 };
enum NParam : int16_t { N50 = 0, N63 = 1 };

// Ten failures, every channel failed; and twelve channels with ties.
const FailurePoints& kPublished = PublishedExample();
const FailurePoints& kTied = TiedExample();
// Eight of twenty channels failed.
const FailurePoints kSuspended = Ranked({36, 44, 55, 64, 76, 85, 87, 102});
// Lives in the thousands.
const FailurePoints kThousands = Ranked({312, 455, 520, 610, 744, 801, 930, 1105});

struct DataSet {
  const char* name;
  int16_t channels;
  const FailurePoints* points;
};
const DataSet kDataSets[] = {{"published", 10, &kPublished}, {"suspended", 20, &kSuspended}, {"tied", 12, &kTied}};

const DataSet& Named(const std::string& name) {
  for (const DataSet& d : kDataSets)
    if (name == d.name) return d;
  throw std::invalid_argument(name);
}

TEST(AnalyzeData, PublishedRankRegressionExample) {
  Session s;
  RecordingUi ui;
  LoadFailurePoints(s, 1, 10, kPublished);
  s.iFractionType() = median;
  s.iNParamType() = N63;
  AnalyzeData(s, ui, false);
  EXPECT_NEAR(s.sngBeta(1), 2.02739, 5e-5);  // single-precision sums: about 1e-5
  EXPECT_NEAR(s.sngNParam(1), 96.3735, 5e-4);
  EXPECT_TRUE(ui.calls.empty()) << "no display without bShowResults";
}

// Every figure below comes from tools/reference/weibull_reference.py: NumPy's
// polyfit for beta and the N life, SciPy's linregress for R-squared and the
// slope's standard error (times the tabulated t, over beta, in percent), and the
// inverse of the Weibull log-likelihood's observed information matrix,
// differentiated by SymPy at the regression estimates, for the N range. All in
// double precision; the analysis must print the same digits. (The data sets
// keep every figure well away from a rounding boundary: storing in single
// precision moves results by some 1e-5, see the next test.)
TEST(AnalyzeData, AgreesWithIndependentFiguresToThePrintedDigits) {
  struct Case {
    const char* dataSet;
    Fraction fraction;
    NParam nParam;
    int level;
    const char* beta;
    const char* conf;
    const char* life;
    int32_t lower, upper;
    const char* rSquared;
  } cases[] = {
      {"published", mean, N50, 90, " 1.82", " 4.6", " 80", 58, 110, " 0.99"},
      {"published", mean, N50, 95, " 1.82", " 5.6", " 80", 55, 117, " 0.99"},
      {"published", mean, N63, 90, " 1.82", " 4.6", " 98", 71, 135, " 0.99"},
      {"published", mean, N63, 95, " 1.82", " 5.6", " 98", 67, 143, " 0.99"},
      {"published", median, N50, 90, " 2.03", " 3.3", " 80", 61, 105, " 1.00"},
      {"published", median, N50, 95, " 2.03", " 4.1", " 80", 58, 111, " 1.00"},
      {"published", median, N63, 90, " 2.03", " 3.3", " 96", 73, 127, " 1.00"},
      {"published", median, N63, 95, " 2.03", " 4.1", " 96", 69, 134, " 1.00"},
      {"suspended", unadjusted, N50, 90, " 2.13", " 10.5", " 113", 89, 143, " 0.98"},
      {"suspended", unadjusted, N50, 95, " 2.13", " 13.5", " 113", 85, 150, " 0.98"},
      {"suspended", unadjusted, N63, 90, " 2.13", " 10.5", " 134", 106, 170, " 0.98"},
      {"suspended", unadjusted, N63, 95, " 2.13", " 13.5", " 134", 101, 178, " 0.98"},
      {"suspended", mean, N50, 90, " 2.12", " 10.6", " 116", 90, 150, " 0.98"},
      {"suspended", mean, N50, 95, " 2.12", " 13.6", " 116", 86, 157, " 0.98"},
      {"suspended", mean, N63, 90, " 2.12", " 10.6", " 138", 107, 179, " 0.98"},
      {"suspended", mean, N63, 95, " 2.12", " 13.6", " 138", 102, 188, " 0.98"},
      {"suspended", median, N50, 90, " 2.38", " 13.5", " 113", 91, 141, " 0.97"},
      {"suspended", median, N50, 95, " 2.38", " 17.4", " 113", 87, 147, " 0.97"},
      {"suspended", median, N63, 90, " 2.38", " 13.5", " 132", 106, 164, " 0.97"},
      {"suspended", median, N63, 95, " 2.38", " 17.4", " 132", 102, 171, " 0.97"},
      {"tied", unadjusted, N50, 90, " 1.66", " 14.1", " 42", 30, 59, " 0.98"},
      {"tied", unadjusted, N50, 95, " 1.66", " 18.2", " 42", 28, 63, " 0.98"},
      {"tied", unadjusted, N63, 90, " 1.66", " 14.1", " 52", 36, 74, " 0.98"},
      {"tied", unadjusted, N63, 95, " 1.66", " 18.2", " 52", 34, 79, " 0.98"},
      {"tied", mean, N50, 90, " 1.62", " 13.7", " 45", 33, 61, " 0.98"},
      {"tied", mean, N50, 95, " 1.62", " 17.6", " 45", 31, 65, " 0.98"},
      {"tied", mean, N63, 90, " 1.62", " 13.7", " 56", 41, 77, " 0.98"},
      {"tied", mean, N63, 95, " 1.62", " 17.6", " 56", 39, 82, " 0.98"},
      {"tied", median, N50, 90, " 1.83", " 13.9", " 45", 34, 61, " 0.98"},
      {"tied", median, N50, 95, " 1.83", " 17.9", " 45", 32, 64, " 0.98"},
      {"tied", median, N63, 90, " 1.83", " 13.9", " 55", 41, 74, " 0.98"},
      {"tied", median, N63, 95, " 1.83", " 17.9", " 55", 38, 78, " 0.98"},
  };
  for (const Case& c : cases) {
    const DataSet& data = Named(c.dataSet);
    Session s;
    RecordingUi ui;
    LoadFailurePoints(s, 3, data.channels, *data.points);
    s.iFractionType() = c.fraction;
    s.iNParamType() = c.nParam;
    s.iConfLevel() = c.level == 90 ? 0 : 1;
    AnalyzeData(s, ui, true);
    const std::string level = std::to_string(c.level);
    const std::string label = c.nParam == N50 ? "N50 =" : "N63 =";
    const std::vector<std::string> expected = {
        "TEXT: BETA =" + std::string(c.beta) + "   (" + level + "% confidence level: +/-" + c.conf + "%)",
        "TEXT: " + label + c.life + "   (" + level + "% confidence range: " + basic::Str(c.lower) + " to" +
            basic::Str(c.upper) + ")",
        "TEXT: R-squared = " + std::string(c.rSquared), "STATUS: Analysis complete."};
    EXPECT_EQ(ui.calls, expected) << c.dataSet << " " << c.fraction << " " << c.nParam << " " << c.level;
  }
}

// The same script's single-precision emulation (NumPy float32 wherever the
// program stores a value) against its double-precision figures: in the
// thousands the stored sums move the upper N63 bound at 95 % from 1984 to 1983.
TEST(AnalyzeData, StoredSinglesDecideTheLastDigit) {
  struct Case {
    NParam nParam;
    int level;
    const char* range;
  } cases[] = {{N50, 90, " 925 to 1551)"}, {N50, 95, " 880 to 1630)"}, {N63, 90, " 1126 to 1888)"},
               {N63, 95, " 1071 to 1983)"}};
  for (const Case& c : cases) {
    Session s;
    RecordingUi ui;
    LoadFailurePoints(s, 1, 20, kThousands);
    s.iNParamType() = c.nParam;
    s.iConfLevel() = c.level == 90 ? 0 : 1;
    AnalyzeData(s, ui, false);
    const std::string& text = s.sNResult(1);
    EXPECT_EQ(text.substr(text.size() - std::string(c.range).size()), c.range) << text;
  }
}

TEST(SurvivalFraction, UsesTheCumulativeCountAndEveryChannel) {
  struct Case {
    int16_t method;
    std::vector<double> expected;
  } cases[] = {
      {unadjusted, {1 - 1 / 10.0, 1 - 3 / 10.0, 1 - 4 / 10.0}},
      {mean, {1 - 1 / 11.0, 1 - 3 / 11.0, 1 - 4 / 11.0}},
      {median, {1 - 0.7 / 10.4, 1 - 2.7 / 10.4, 1 - 3.7 / 10.4}},
      {3, {0, 0, 0}},
  };
  for (const Case& c : cases) {
    Session s;
    LoadFailurePoints(s, 2, 10, {{100, 1}, {200, 3}, {400, 4}});
    s.iFractionType() = c.method;
    for (int16_t i = 1; i <= 3; ++i)
      EXPECT_EQ(SurvivalFraction(s, i), static_cast<float>(c.expected[static_cast<std::size_t>(i - 1)]))
          << c.method << " point " << i;
  }
}

TEST(StudentT, SwitchesAtTenTwentyThirtySixtyAndOneHundredTwenty) {
  struct Case {
    int16_t n;
    double t90, t95;
  } cases[] = {{0, 1.9, 2.45},      {9, 1.9, 2.45},     {10, 1.75, 2.13},    {19, 1.75, 2.13},
               {20, 1.71, 2.06},    {29, 1.71, 2.06},   {30, 1.684, 2.02},   {59, 1.684, 2.02},
               {60, 1.66, 1.99},    {119, 1.66, 1.99},  {120, 1.648, 1.96},  {1024, 1.648, 1.96}};
  for (const Case& c : cases) {
    Session s;
    s.iDataSetNum = 4;
    s.iNumEvents(4) = c.n;
    s.iConfLevel() = 0;
    EXPECT_EQ(StudentT(s), c.t90) << c.n;
    s.iConfLevel() = 7;  // any level but 0 is 95 %
    EXPECT_EQ(StudentT(s), c.t95) << c.n;
  }
}

TEST(AnalyzeData, StoresSinglePrecisionResultsAndTheLabel) {
  Session s;
  RecordingUi ui;
  LoadFailurePoints(s, 1, 20, kThousands);
  s.iNParamType() = 1;
  AnalyzeData(s, ui, false);
  const float n63 = s.sngNParam(1);
  EXPECT_EQ(s.sNLabel, "N63 =");
  // The coordinates are the single-precision logarithms.
  EXPECT_EQ(s.sngWeiX(1, 8), static_cast<float>(std::log(1105.0)));
  EXPECT_EQ(s.sngWeiY(1, 1), static_cast<float>(std::log(-std::log(static_cast<double>(1 - 1 / 20.0f)))));
  s.iNParamType() = 0;
  AnalyzeData(s, ui, false);
  EXPECT_EQ(s.sNLabel, "N50 =");
  EXPECT_LT(s.sngNParam(1), n63);
  // Results of other data sets stay.
  EXPECT_EQ(s.sBetaResult(2), "");
}

TEST(AnalyzeData, DebugModeTracesTheGroupAndTheResult) {
  Session s;
  RecordingUi ui;
  s.bDebug = true;
  LoadFailurePoints(s, 1, 10, kPublished);
  s.iFractionType() = median;
  s.iNParamType() = N63;
  AnalyzeData(s, ui, false);
  EXPECT_EQ(ui.debugLines, (std::vector<std::string>{"Analysis of group data size of 10 channels.",
                                                     "The survival fractions & cycle #s for the 10 events are:",
                                                     "Tarvenix slope (beta), Nx are:",
                                                     basic::Str(s.sngBeta(1)) + "  " + basic::Str(s.sngNParam(1))}));
  EXPECT_EQ(ui.debugLines[3].substr(0, 4), " 2.0");
}

const std::string kNotice =
    "The specified data file has been scanned in conjunction with the\r"
    "the specified list of channels to be analyzed and no failures\r"
    "corresponding to the specified occurrence level have been found.\r"
    "A Tarvenix analysis cannot be performed without data to operate on\r\r"
    "Check the specifications and the contents of files used.";

TEST(AnalyzeData, FailurePaths) {
  struct Case {
    const char* what;
    int16_t channels;
    FailurePoints points;
    Fraction fraction;
    std::vector<std::string> calls;
  } cases[] = {
      {"a failure at cycle 1",
       10,
       {{50, 1}, {1, 2}, {70, 3}, {90, 4}, {120, 5}},
       median,
       {"STATUS: Analysis did not complete successfully.", "TEXT: Channels with first data cycle events cannot be analyzed.",
        "MSG: Channels with first data cycle events cannot be analyzed."}},
      {"no failure points", 10, {}, median, {"MSG: " + kNotice}},
      {"every channel failed, unadjusted",
       5,
       Ranked({100, 200, 300, 400, 500}),
       unadjusted,
       {"MSG: Error in modTarvenix.AnalyzeData - Error #5  Invalid procedure call or argument\r"}},
      {"two points", 10, Ranked({100, 300}), median,
       {"MSG: Error in modTarvenix.AnalyzeData - Error #11  Division by zero\r"}},
      {"cycle 0", 10, Ranked({0, 100, 200, 300, 400}), median,
       {"MSG: Error in modTarvenix.AnalyzeData - Error #5  Invalid procedure call or argument\r"}},
  };
  for (const Case& c : cases) {
    Session s;
    RecordingUi ui;
    s.bDataCycles = true;
    LoadFailurePoints(s, 1, c.channels, c.points);
    s.iFractionType() = c.fraction;
    s.sBetaResult(1) = "earlier";
    AnalyzeData(s, ui, true);
    EXPECT_EQ(ui.calls, c.calls) << c.what;
    EXPECT_EQ(s.sBetaResult(1), "earlier") << c.what;
  }
}

TEST(AnalyzeData, StopsAtACycleOnePointKeepingWhatWasStoredBefore) {
  Session s;
  RecordingUi ui;
  LoadFailurePoints(s, 1, 10, {{50, 1}, {1, 2}, {70, 3}, {90, 4}, {120, 5}});
  AnalyzeData(s, ui, true);
  EXPECT_EQ(s.sngWeiX(1, 1), static_cast<float>(std::log(50.0)));
  EXPECT_EQ(s.sngWeiX(1, 2), 0.0f);
  EXPECT_NE(s.sngWeiY(1, 2), 0.0f);
  EXPECT_EQ(s.sngWeiX(1, 3), 0.0f) << "nothing after the cycle-1 point";
  EXPECT_EQ(s.sngBeta(1), 0.0f);
}

// Single-precision sums leave D a hair away from 0 when every failure shares one
// cycle, but the stored x values have no spread at all: the analysis ends
// without a word.
TEST(AnalyzeData, FailuresAllAtOneCycleEndSilently) {
  Session s;
  RecordingUi ui;
  LoadFailurePoints(s, 1, 10, Ranked({400, 400, 400, 400, 400}));
  s.iFractionType() = median;
  AnalyzeData(s, ui, true);
  EXPECT_EQ(ui.calls, std::vector<std::string>{});
  EXPECT_EQ(s.sBetaResult(1), "");
}

TEST(NConfidenceRange, AFaultLeavesTheLifeWithoutItsRange) {
  Session s;
  RecordingUi ui;
  LoadFailurePoints(s, 1, 20, kSuspended);
  s.iNParamType() = N63;
  AnalyzeData(s, ui, false);
  // The same analysis with fewer channels than failure points: the unit list
  // cannot be built.
  s.iGroupSize(1) = 4;
  s.sNResult(1) = " 1458   (90% confidence range: ";
  NConfidenceRange(s);
  EXPECT_EQ(s.sNResult(1), " 1458   ");
}

}  // namespace
}  // namespace tarvenix::modTarvenix
