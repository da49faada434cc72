#include "session/Session.h"

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
  s.iDataSetNum = 0;
  s.iNumDataSets = 0;
}

std::string IpcFileName(const std::string& sDataFile) {
  return basic::Left(sDataFile, static_cast<long long>(sDataFile.size()) - 4) + ".ipc";
}

}  // namespace tarvenix::modTarvenix
