#include "analysis/Weibull.h"

#include <cmath>
#include <string>
#include <vector>

#include "base/Basic.h"
#include "analysis/Messages.h"
#include "session/Utils.h"
#include "session/Session.h"
#include "session/UiPort.h"

namespace tarvenix::modTarvenix {

const char* const kNoFailuresNotice =
    "The specified data file has been scanned in conjunction with the\r"
    "the specified list of channels to be analyzed and no failures\r"
    "corresponding to the specified occurrence level have been found.\r"
    "A Tarvenix analysis cannot be performed without data to operate on\r"
    "\r"
    "Check the specifications and the contents of files used.";

namespace {

using basic::CLng;
using basic::CSng;
using basic::Divide;

// ln 2 and -ln(ln 2) as the published tables give them; changing the digits
// changes printed results.
constexpr double kLn2 = 0.69314718;
constexpr double kMinusLnLn2 = 0.366513;
// The normal quantiles of the N range are single-precision constants.
constexpr float kZ90 = 1.645f;
constexpr float kZ95 = 1.96f;

double Squared(double v) { return v * v; }

// The stored coordinates and the regression they feed.
struct Fit {
  int n = 0;
  float xbar = 0;
  float ybar = 0;
  float beta = 0;
  float a = 0;  // intercept: y = a + beta * x
};

enum class Stop { None, FirstCycle, NoLine };

// Step by step as the stored values require: coordinates of every point, the
// four sums, and the least-squares line through them.
Stop StorePointsAndFit(Session& s, UiPort& ui, Fit& fit) {
  const int16_t d = s.iDataSetNum;
  const int n = s.iNumEvents(d);
  float sx = 0, sxx = 0, sxy = 0, sy = 0;
  for (int i = 1; i <= n; ++i) {
    const float S = SurvivalFraction(s, d, static_cast<int16_t>(i));
    s.sngWeiY(d, i) = CSng(basic::Log(-basic::Log(S)));
    s.sngWeiX(d, i) = CSng(basic::Log(s.vEventCycle(d, i)));
    const float x = s.sngWeiX(d, i);
    const float y = s.sngWeiY(d, i);
    if (x == 0) {
      DisplayError(s, ui, kErrFirstCycleEvents, 0, 0);
      return Stop::FirstCycle;
    }
    sx = CSng(static_cast<double>(sx) + x);
    sxx = CSng(sxx + static_cast<double>(x) * x);
    sxy = CSng(sxy + static_cast<double>(x) * y);
    sy = CSng(static_cast<double>(sy) + y);
  }
  const double D = n * static_cast<double>(sxx) - static_cast<double>(sx) * sx;
  if (D == 0) {
    modUtils::ShowMessage(s, ui, modUtils::kMsgNotice, "", kNoFailuresNotice);
    return Stop::NoLine;
  }
  fit.n = n;
  fit.xbar = CSng(Divide(sx, n));
  fit.ybar = CSng(Divide(sy, n));
  s.sngBeta(d) = CSng(Divide(n * static_cast<double>(sxy) - static_cast<double>(sx) * sy, D));
  fit.beta = s.sngBeta(d);
  fit.a = CSng(fit.ybar - static_cast<double>(fit.xbar) * fit.beta);
  return Stop::None;
}

// (SST - SSE) / SST over the stored coordinates.
float RSquared(const Session& s, const Fit& f) {
  const int16_t d = s.iDataSetNum;
  float sst = 0, sse = 0;
  for (int i = 1; i <= f.n; ++i) {
    const double x = s.sngWeiX(d, i), y = s.sngWeiY(d, i);
    sst = CSng(sst + Squared(y - f.ybar));
    sse = CSng(sse + Squared(y - f.a - x * f.beta));
  }
  return CSng(Divide(static_cast<double>(sst) - sse, sst));
}

struct SlopeSpread {
  double s2 = 0;  // residual variance
  double vx = 0;  // variance of x
};

SlopeSpread SpreadOf(const Session& s, const Fit& f) {
  const int16_t d = s.iDataSetNum;
  float sse2 = 0, sxxDev = 0;
  for (int i = 1; i <= f.n; ++i) {
    const double x = s.sngWeiX(d, i), y = s.sngWeiY(d, i);
    sse2 = CSng(sse2 + Squared(y - (x * f.beta + f.a)));
    sxxDev = CSng(sxxDev + Squared(x - f.xbar));
  }
  return {Divide(sse2, f.n - 2), Divide(sxxDev, f.n - 1)};
}

// "   (90% confidence level: +/-" or the 95% form.
std::string ConfidenceLead(const Session& s) {
  return std::string(s.ConfidenceLevel() == ConfLevel::Percent90 ? "   (90%" : "   (95%") + " confidence level: +/-";
}

void StoreResultTexts(Session& s, float conf) {
  const int16_t d = s.iDataSetNum;
  const std::string lead = ConfidenceLead(s);
  s.sBetaResult(d) = modUtils::ConvertDecimal(s.sngBeta(d), 2) + lead + modUtils::ConvertDecimal(conf, 1) + "%)";
  // The first 18 characters of the lead end with the word "confidence".
  s.sNResult(d) = modUtils::ConvertDecimal(s.sngNParam(d), 0) + basic::Left(lead, 18) + " range: ";
  s.sRSquaredResult(d) = "R-squared = " + modUtils::ConvertDecimal(s.sngRSquared(d), 2);
  s.sNLabel = s.NParamType() != NParam::N50 ? "N63 =" : "N50 =";
}

void RunAnalysis(Session& s, UiPort& ui, bool bShowResults) {
  const int16_t d = s.iDataSetNum;
  if (s.bDebug) {
    modUtils::DebugPrint(ui, "Analysis of group data size of " + std::to_string(s.iGroupSize(d)) + " channels.");
    modUtils::DebugPrint(ui, "The survival fractions & cycle #s for the " + std::to_string(s.iNumEvents(d)) +
                                 " events are:");
  }
  Fit fit;
  if (StorePointsAndFit(s, ui, fit) != Stop::None) return;
  s.sngNParam(d) = NParamFromFit(s, fit.a);
  s.sngRSquared(d) = RSquared(s, fit);
  const SlopeSpread spread = SpreadOf(s, fit);
  if (spread.vx == 0) return;
  const double se = basic::Power(Divide(spread.s2, (fit.n - 1) * spread.vx), 0.5);
  const float conf = CSng(Divide(StudentT(s) * se, fit.beta) * 100);
  if (s.bDebug) {
    modUtils::DebugPrint(ui, "Tarvenix slope (beta), Nx are:");
    modUtils::DebugPrint(ui, basic::Str(s.sngBeta(d)) + "  " + basic::Str(s.sngNParam(d)));
  }
  StoreResultTexts(s, conf);
  NConfidenceRange(s);
  s.bAnalysisComplete(d) = true;
  if (bShowResults) DisplayData(s, ui, 0);
}

// The N range's interval [lower, upper] around the characteristic life eta.
struct LifeRange {
  int32_t lower = 0;
  int32_t upper = 0;
};

// Unit times of the likelihood: each failure point once (positive), every other
// channel suspended at 1.1 times the last failure (negative).
std::vector<int32_t> UnitTimes(const Session& s) {
  const int16_t d = s.iDataSetNum;
  const int n = s.iNumEvents(d);
  const int units = s.iGroupSize(d);
  if (units < 1 || n > units) Raise(err::kSubscript);
  const int32_t last = s.vEventCycle(d, n);
  const int32_t suspended = last > 0 ? CLng(last * 1.1) : 0;
  std::vector<int32_t> times(static_cast<std::size_t>(units), -suspended);
  for (int i = 1; i <= n; ++i) times[static_cast<std::size_t>(i - 1)] = s.vEventCycle(d, i);
  return times;
}

LifeRange CharacteristicLifeRange(const Session& s, double beta, double eta, double z) {
  // Second derivatives of the Weibull log-likelihood: A by eta, B by beta, C by
  // both, at (beta, eta).
  double A = 0, B = 0, C = 0;
  const double betaOverEta2 = Divide(beta, eta * eta);
  for (int32_t time : UnitTimes(s)) {
    const double u = Divide(std::abs(static_cast<double>(time)), eta);
    const double p = basic::Power(u, beta);
    const double L = basic::Log(u);
    A = basic::Checked(A - betaOverEta2 * p * (beta + 1));
    B = basic::Checked(B - L * p * L);
    C = basic::Checked(C + (beta * L + 1) * Divide(p, eta));
    if (time > 0) {
      A = basic::Checked(A + betaOverEta2);
      B = basic::Checked(B - Divide(1, beta * beta));
      C = basic::Checked(C - Divide(1, eta));
    }
  }
  const double det = basic::Checked(A * B - C * C);
  // The spread of beta is not reported, but a fault in it still ends the range.
  basic::Exp(Divide(z * basic::Power(Divide(-A, det), 0.5), beta));
  const double seEta = basic::Power(Divide(-B, det), 0.5);
  const double w = basic::Exp(Divide(z * seEta, eta));
  return {CLng(Divide(eta, w)), CLng(eta * w)};
}

}  // namespace

float SurvivalFraction(const Session& s, int16_t d, int16_t i) {
  const double N = s.iGroupSize(d);
  const double j = s.vEventCount(d, i);
  switch (s.FractionType()) {
    case FractionMethod::Unadjusted: return CSng(1 - Divide(j, N));
    case FractionMethod::Mean: return CSng(1 - Divide(j, N + 1));
    case FractionMethod::Median: return CSng(1 - Divide(j - 0.3, N + 0.4));
  }
  return 0;
}

double StudentT(const Session& s) {
  const int n = s.iNumEvents(s.iDataSetNum);
  const bool at90 = s.ConfidenceLevel() == ConfLevel::Percent90;
  if (n < 10) return at90 ? 1.9 : 2.45;
  if (n < 20) return at90 ? 1.75 : 2.13;
  if (n < 30) return at90 ? 1.71 : 2.06;
  if (n < 60) return at90 ? 1.684 : 2.02;
  if (n >= 120) return at90 ? 1.648 : 1.96;
  return at90 ? 1.66 : 1.99;
}

float NParamFromFit(const Session& s, float a) {
  const double beta = s.sngBeta(s.iDataSetNum);
  if (s.NParamType() == NParam::N63) return CSng(basic::Exp(Divide(-static_cast<double>(a), beta)));
  return CSng(basic::Exp(Divide(-static_cast<double>(a) - kMinusLnLn2, beta)));
}

double N63ToN50(double value, double beta) { return basic::Checked(value * basic::Power(kLn2, Divide(1, beta))); }

double N50ToN63(double value, double beta) { return Divide(value, basic::Power(kLn2, Divide(1, beta))); }

void NConfidenceRange(Session& s) {
  const int16_t d = s.iDataSetNum;
  try {
    const float beta = s.sngBeta(d);
    const bool n50 = s.NParamType() == NParam::N50;
    const double eta = n50 ? N50ToN63(CLng(s.sngNParam(d)), beta) : static_cast<double>(s.sngNParam(d));
    const double z = s.ConfidenceLevel() == ConfLevel::Percent90 ? kZ90 : kZ95;
    LifeRange r = CharacteristicLifeRange(s, beta, eta, z);
    if (n50) {
      r.upper = CLng(N63ToN50(r.upper, beta));
      r.lower = CLng(N63ToN50(r.lower, beta));
    }
    s.sNResult(d) += basic::Str(r.lower) + " to" + basic::Str(r.upper) + ")";
  } catch (const RuntimeError&) {
    // No range: keep the N value and its padding, drop the "(..." part.
    std::string& text = s.sNResult(d);
    const std::size_t open = text.find('(');
    if (open != std::string::npos) text.erase(open);
  }
}

void AnalyzeData(Session& s, UiPort& ui, bool bShowResults) {
  modUtils::Trapped(s, ui, "modTarvenix.AnalyzeData", [&] { RunAnalysis(s, ui, bShowResults); });
}

}  // namespace tarvenix::modTarvenix
