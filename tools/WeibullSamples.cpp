#include "WeibullSamples.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace tarvenix::samples {
namespace {

// A small deterministic generator: the same sample gives the same points.
class Normal {
 public:
  explicit Normal(uint32_t seed) : state_(seed * 2654435761u + 1) {}
  double Next() {
    double u1 = Uniform();
    double u2 = Uniform();
    return std::sqrt(-2 * std::log(u1)) * std::cos(6.283185307179586 * u2);
  }

 private:
  double Uniform() {
    state_ = state_ * 1664525u + 1013904223u;
    return (static_cast<double>(state_ >> 8) + 1) / 16777218.0;
  }
  uint32_t state_;
};

}  // namespace

void AddSampleDataSet(Session& s, int i, const SampleSpec& sample) {
  Normal noise(sample.seed);
  const int n = sample.failures;
  const double N = sample.groupSize;
  std::vector<double> cycles;
  for (int j = 1; j <= n; ++j) {
    double F = (j - 0.3) / (N + 0.4);
    double c = sample.n50 * std::pow(-std::log(1 - F) / std::log(2.0), 1 / sample.beta);
    cycles.push_back(std::max(2.0, std::round(c * std::exp(sample.scatter * noise.Next()))));
  }
  std::sort(cycles.begin(), cycles.end());
  double sx = 0, sy = 0, sxx = 0, sxy = 0;
  for (int j = 1; j <= n; ++j) {
    double F = (j - 0.3) / (N + 0.4);
    float x = static_cast<float>(std::log(cycles[static_cast<std::size_t>(j - 1)]));
    float y = static_cast<float>(std::log(-std::log(1 - F)));
    s.sngWeiX(i, j) = x;
    s.sngWeiY(i, j) = y;
    s.vEventCycle(i, j) = static_cast<int32_t>(cycles[static_cast<std::size_t>(j - 1)]);
    s.vEventCount(i, j) = j;
    sx += x;
    sy += y;
    sxx += double(x) * x;
    sxy += double(x) * y;
  }
  double beta = (n * sxy - sx * sy) / (n * sxx - sx * sx);
  double a = sy / n - sx / n * beta;
  s.sngBeta(i) = static_cast<float>(beta);
  s.bAnalysisComplete(i) = true;
  s.sngNParam(i) = static_cast<float>(s.iNParamType() == 1 ? std::exp(-a / beta) : std::exp((-a - 0.366513) / beta));
  s.sNLabel = s.iNParamType() == 1 ? "N63 =" : "N50 =";
  s.sDataIDs(i) = sample.id.empty() ? "Data Set #" + std::to_string(i) : sample.id;
  s.iNumEvents(i) = static_cast<int16_t>(n);
  s.iGroupSize(i) = static_cast<int16_t>(sample.groupSize);
  s.iNumDataSets = static_cast<int16_t>(std::max<int>(s.iNumDataSets, i));
}

void AddSampleDataSets(Session& s, int count) {
  const SampleSpec specs[] = {
      {"Board A, SAC305", 2.4, 2200, 14, 16, 0.08, 1},
      {"Board B, SnPb", 3.6, 4100, 12, 16, 0.06, 2},
      {"Board C, underfill", 1.7, 9000, 10, 16, 0.10, 3},
      {"Board D, thin pad", 5.2, 1500, 15, 16, 0.05, 4},
      {"Board E, corner glue", 2.9, 16000, 9, 16, 0.07, 5},
  };
  for (int i = 1; i <= std::min(count, 5); ++i) AddSampleDataSet(s, i, specs[i - 1]);
}

}  // namespace tarvenix::samples
