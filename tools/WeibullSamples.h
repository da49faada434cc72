#pragma once
// Analysed data sets made up for previews and tests: failure points drawn
// from a Weibull life with a little scatter, ranked by median ranks and fitted
// by least squares, stored in the session as an analysis leaves them.

#include <cstdint>
#include <string>

#include "session/Session.h"

namespace tarvenix::samples {

struct SampleSpec {
  std::string id;
  double beta = 2;        // shape of the life distribution drawn from
  double n50 = 10000;     // its median life, cycles
  int failures = 12;      // failure points
  int groupSize = 16;     // channels analysed
  double scatter = 0.08;  // standard deviation of ln(cycles) around the line
  uint32_t seed = 1;
};

// Fills data set i (and raises iNumDataSets to i) under the session's
// iNParamType.
void AddSampleDataSet(Session& s, int i, const SampleSpec& sample);

// Up to five data sets of different lives and slopes.
void AddSampleDataSets(Session& s, int count);

}  // namespace tarvenix::samples
