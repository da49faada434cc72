#include "support/FailurePoints.h"

#include "analysis/Weibull.h"

namespace tarvenix::test {

FailurePoints Ranked(const std::vector<int32_t>& cycles) {
  FailurePoints points;
  for (std::size_t i = 0; i < cycles.size(); ++i) points.emplace_back(cycles[i], static_cast<int32_t>(i + 1));
  return points;
}

// From the documentation of the Python "reliability" library ("How does Least
// Squares Estimation work"): median ranks, y on x, beta 2.02739, eta 96.3735.
const FailurePoints& PublishedExample() {
  static const FailurePoints points = Ranked({25, 43, 53, 65, 76, 86, 95, 115, 132, 150});
  return points;
}

const FailurePoints& TiedExample() {
  static const FailurePoints points = {{12, 1}, {26, 3}, {27, 4}, {47, 6}, {48, 7}, {58, 9}};
  return points;
}

void LoadFailurePoints(Session& s, int16_t d, int16_t channels, const FailurePoints& points) {
  s.iDataSetNum = d;
  s.iGroupSize(d) = channels;
  s.iNumEvents(d) = static_cast<int16_t>(points.size());
  for (std::size_t i = 0; i < points.size(); ++i) {
    s.vEventCycle(d, static_cast<long long>(i + 1)) = points[i].first;
    s.vEventCount(d, static_cast<long long>(i + 1)) = points[i].second;
  }
}

DataSetSettings RangeSetup(const std::string& id, const std::string& dataFile) {
  DataSetSettings setup;
  setup.sDataID = id;
  setup.sDataFile = dataFile;
  setup.bNumOccurrences = true;
  setup.sOccurrenceLimit = "1";
  setup.bDataCycles = true;
  setup.bFirstLastCh = true;
  setup.sFirstCh = "1";
  setup.sLastCh = "10";
  return setup;
}

void AddAnalysedDataSet(Session& s, UiPort& ui, const DataSetSettings& setup, int16_t channels,
                        const FailurePoints& points) {
  ++s.iNumDataSets;
  s.dataSetSettings(s.iNumDataSets) = setup;
  LoadFailurePoints(s, s.iNumDataSets, channels, points);
  modTarvenix::AnalyzeData(s, ui, true);
}

}  // namespace tarvenix::test
