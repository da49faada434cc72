#include "session/Session.h"

#include <algorithm>

#include "base/Basic.h"

namespace tarvenix::modTarvenix {

std::string SessionStatus(int16_t iNumDataSets) {
  if (iNumDataSets <= 0) return kStatusStartup;
  if (iNumDataSets < kMaxDataSets) return kStatusSomeLoaded;
  return kStatusFull;
}

namespace {
int16_t Add16(int16_t a, int delta) { return basic::CInt(static_cast<double>(a) + delta); }
}  // namespace

void NextDataSet(Session& s) {
  s.iNumDataSets = Add16(s.iNumDataSets, 1);
  s.iDataSetNum = s.iNumDataSets;
}

void PreviousDataSet(Session& s) {
  s.iNumDataSets = Add16(s.iNumDataSets, -1);
  s.iDataSetNum = s.iNumDataSets;
}

void ClearDataSets(Session& s) {
  s.iGroupSize.Clear();
  s.iNumEvents.Clear();
  s.vEventCycle.Clear();
  s.vEventCount.Clear();
  s.sngWeiX.Clear();
  s.sngWeiY.Clear();
  s.sngBeta.Clear();
  s.sngNParam.Clear();
  s.sngRSquared.Clear();
  s.sBetaResult.Clear();
  s.sNResult.Clear();
  s.sRSquaredResult.Clear();
  s.bAnalysisComplete.Clear();
  s.iDataSetNum = 0;
  s.iNumDataSets = 0;
}

void ClearResults(Session& s, int16_t d) {
  s.iNumEvents(d) = 0;
  s.vEventCycle.ClearRow(d);
  s.vEventCount.ClearRow(d);
  s.sngWeiX.ClearRow(d);
  s.sngWeiY.ClearRow(d);
  s.sngBeta(d) = 0;
  s.sngNParam(d) = 0;
  s.sngRSquared(d) = 0;
  s.sBetaResult(d).clear();
  s.sNResult(d).clear();
  s.sRSquaredResult(d).clear();
  s.bAnalysisComplete(d) = false;
}

std::vector<int> CompletedDataSets(const Session& s) {
  std::vector<int> sets;
  for (int i = 1; i <= s.iNumDataSets && i <= kMaxDataSets; ++i)
    if (s.bAnalysisComplete(i)) sets.push_back(i);
  return sets;
}

void KeepCurrentDataSetLoaded(Session& s) {
  const int16_t loaded = std::clamp<int16_t>(s.iNumDataSets, 0, kMaxDataSets);
  s.iDataSetNum = loaded == 0 ? int16_t{0} : std::clamp<int16_t>(s.iDataSetNum, 1, loaded);
}

std::string IpcFileName(const std::string& sDataFile) {
  return basic::Left(sDataFile, static_cast<long long>(sDataFile.size()) - 4) + ".ipc";
}

}  // namespace tarvenix::modTarvenix
