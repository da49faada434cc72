#pragma once
// The Weibull analysis of one data set: survival fractions of the failure
// points, the least-squares line of ln(-ln S) on ln(cycles), beta, N50 or N63,
// R-squared, the confidence figure for beta (Student t) and the confidence range
// of the N life (Fisher information of the Weibull likelihood at the regression
// estimates), and the result texts every display and report reuses.
//
// Every value the analysis keeps is stored in single precision; the arithmetic
// between stores is double, and each step reads the stored (rounded) value.
// Engineers compare these digits with their other tools, so the order of the
// rounding matters.

#include <cstdint>

namespace tarvenix {
struct Session;
class UiPort;
}  // namespace tarvenix

namespace tarvenix::modTarvenix {

// The notice shown when no line can be fitted (no points, or no spread in x).
extern const char* const kNoFailuresNotice;

// S of failure point i of data set d under the fraction method in force:
// 1 - j/N, 1 - j/(N+1) or 1 - (j-0.3)/(N+0.4), where j is the point's
// cumulative failure count and N the data set's channel count; 0 for an
// unknown method.
float SurvivalFraction(const Session& s, int16_t d, int16_t i);

// The tabulated Student t value for the current data set's number of points and
// the chosen confidence level.
double StudentT(const Session& s);

// N50 (where the line crosses ln(ln 2)) or N63 (where it crosses 0) from the
// intercept a and the stored beta of the current data set.
float NParamFromFit(const Session& s, float a);

// Converts between the characteristic life N63 and the median life N50:
// value * (ln 2)^(1/beta) and value / (ln 2)^(1/beta), with ln 2 taken as
// 0.69314718. The analysis converts whole-number lives, the plot the stored
// single-precision N63. A zero beta is error 11, a result beyond the double
// range error 6.
double N63ToN50(double value, double beta);
double N50ToN63(double value, double beta);

// Appends the N life's confidence range (" 1001 to 1521)") to the current data
// set's N text. On any arithmetic fault the text is cut back before its "(",
// leaving the N value without a range.
void NConfidenceRange(Session& s);

// Analyses the current data set and stores its numbers and result texts; shows
// them (DisplayData) when bShowResults is set and the analysis completed. A point
// at cycle 1 ends with error code 2, a line that cannot be fitted with the
// no-failures notice, zero spread of the stored x values silently, and any
// run-time fault with the error box "modTarvenix.AnalyzeData".
void AnalyzeData(Session& s, UiPort& ui, bool bShowResults);

}  // namespace tarvenix::modTarvenix
