#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "base/Basic.h"
#include "analysis/Weibull.h"
#include "session/Session.h"
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

// Every figure below comes from tools/reference/weibull_reference.py: NumPy's
// polyfit for beta and the N life, SciPy's linregress for R-squared and the
// slope's standard error (times the tabulated t, over beta, in percent), and the
// inverse of the Weibull log-likelihood's observed information matrix,
// differentiated by SymPy at the regression estimates, for the N range. All in
// double precision; the analysis must print the same digits. (The data sets
// keep every figure well away from a rounding boundary: storing in single
// precision moves results by some 1e-5, see the next test.)
TEST(AnalyzeData, AgreesWithIndependentFiguresToThePrintedDigits) {
  struct Life {
    const char* life;
    int32_t range[2][2];  // {lower, upper} at 90 % and at 95 %
  };
  struct Case {
    const FailurePoints* points;
    int16_t channels;
    Fraction fraction;
    const char* beta;
    const char* conf[2];  // at 90 % and at 95 %
    Life n50, n63;
    const char* rSquared;
  } cases[] = {
      {&kPublished, 10, mean, " 1.82", {" 4.6", " 5.6"}, {" 80", {{58, 110}, {55, 117}}}, {" 98", {{71, 135}, {67, 143}}}, " 0.99"},
      {&kPublished, 10, median, " 2.03", {" 3.3", " 4.1"}, {" 80", {{61, 105}, {58, 111}}}, {" 96", {{73, 127}, {69, 134}}}, " 1.00"},
      {&kSuspended, 20, unadjusted, " 2.13", {" 10.5", " 13.5"}, {" 113", {{89, 143}, {85, 150}}}, {" 134", {{106, 170}, {101, 178}}}, " 0.98"},
      {&kSuspended, 20, mean, " 2.12", {" 10.6", " 13.6"}, {" 116", {{90, 150}, {86, 157}}}, {" 138", {{107, 179}, {102, 188}}}, " 0.98"},
      {&kSuspended, 20, median, " 2.38", {" 13.5", " 17.4"}, {" 113", {{91, 141}, {87, 147}}}, {" 132", {{106, 164}, {102, 171}}}, " 0.97"},
      {&kTied, 12, unadjusted, " 1.66", {" 14.1", " 18.2"}, {" 42", {{30, 59}, {28, 63}}}, {" 52", {{36, 74}, {34, 79}}}, " 0.98"},
      {&kTied, 12, mean, " 1.62", {" 13.7", " 17.6"}, {" 45", {{33, 61}, {31, 65}}}, {" 56", {{41, 77}, {39, 82}}}, " 0.98"},
      {&kTied, 12, median, " 1.83", {" 13.9", " 17.9"}, {" 45", {{34, 61}, {32, 64}}}, {" 55", {{41, 74}, {38, 78}}}, " 0.98"},
  };
  for (const Case& c : cases) {
    for (NParam nParam : {N50, N63}) {
      for (int16_t level : {0, 1}) {
        Session s;
        RecordingUi ui;
        LoadFailurePoints(s, 3, c.channels, *c.points);
        s.iFractionType() = c.fraction;
        s.iNParamType() = nParam;
        s.iConfLevel() = level;
        AnalyzeData(s, ui, true);
        const std::string percent = level == 0 ? "90%" : "95%";
        const Life& n = nParam == N50 ? c.n50 : c.n63;
        const std::vector<std::string> expected = {
            "TEXT: BETA =" + std::string(c.beta) + "   (" + percent + " confidence level: +/-" + c.conf[level] + "%)",
            "TEXT: " + std::string(nParam == N50 ? "N50 =" : "N63 =") + n.life + "   (" + percent +
                " confidence range: " + basic::Str(n.range[level][0]) + " to" + basic::Str(n.range[level][1]) + ")",
            "TEXT: R-squared = " + std::string(c.rSquared), "STATUS: Analysis complete."};
        EXPECT_EQ(ui.calls, expected) << c.channels << " channels, fraction " << c.fraction << ", " << percent;
      }
    }
  }
}

// The same script's single-precision emulation (NumPy float32 wherever the
// program stores a value) against its double-precision figures: in the
// thousands the stored sums move the upper N63 bound at 95 % from 1984 to 1983.
TEST(AnalyzeData, StoredSinglesDecideTheLastDigit) {
  struct Case {
    NParam nParam;
    int16_t level;  // 0: 90 %, 1: 95 %
    const char* range;
  } cases[] = {{N50, 0, " 925 to 1551)"}, {N50, 1, " 880 to 1630)"}, {N63, 0, " 1126 to 1888)"}, {N63, 1, " 1071 to 1983)"}};
  for (const Case& c : cases) {
    Session s;
    RecordingUi ui;
    LoadFailurePoints(s, 1, 20, kThousands);
    s.iNParamType() = c.nParam;
    s.iConfLevel() = c.level;
    AnalyzeData(s, ui, false);
    const std::string& text = s.sNResult(1);
    EXPECT_EQ(text.substr(text.size() - std::string(c.range).size()), c.range) << text;
    // The coordinates are the single-precision logarithms.
    EXPECT_EQ(s.sngWeiX(1, 8), static_cast<float>(std::log(1105.0)));
    EXPECT_EQ(s.sngWeiY(1, 1), static_cast<float>(std::log(-std::log(static_cast<double>(1 - 1 / 20.0f)))));
  }
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
      {"a failure at cycle 1", 10, {{50, 1}, {1, 2}, {70, 3}, {90, 4}, {120, 5}}, median,
       {"STATUS: Analysis did not complete successfully.", "TEXT: Channels with first data cycle events cannot be analyzed.",
        "MSG: Channels with first data cycle events cannot be analyzed."}},
      {"no failure points", 10, {}, median, {"MSG: " + kNotice}},
      {"every channel failed, unadjusted", 5, Ranked({100, 200, 300, 400, 500}), unadjusted,
       {"MSG: Error in modTarvenix.AnalyzeData - Error #5  Invalid procedure call or argument\r"}},
      {"two points", 10, Ranked({100, 300}), median,
       {"MSG: Error in modTarvenix.AnalyzeData - Error #11  Division by zero\r"}},
      {"cycle 0", 10, Ranked({0, 100, 200, 300, 400}), median,
       {"MSG: Error in modTarvenix.AnalyzeData - Error #5  Invalid procedure call or argument\r"}},
      // Single-precision sums leave D a hair away from 0, but the stored x
      // values have no spread at all: the analysis ends without a word.
      {"every failure at one cycle", 10, Ranked({400, 400, 400, 400, 400}), median, {}},
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
