#include "ReadingTest.h"

#include "input/ChannelSelection.h"
#include "input/DataHistory.h"

namespace tarvenix::test {

Reading::Reading() {
  s.iDataSetNum = 1;
  s.iNumDataSets = 1;
  s.bSoundStatus = false;
}

namespace {
DataSetSettings SetupFor(const std::string& dataFile, bool dataCycles, bool ipcLimit) {
  DataSetSettings setup;
  setup.sDataFile = dataFile;
  setup.sDataID = "Board 7";
  setup.bNumOccurrences = !ipcLimit;
  setup.bIPCOccurrences = ipcLimit;
  setup.bDataCycles = dataCycles;
  setup.bTempCycles = !dataCycles;
  return setup;
}
}  // namespace

void Reading::Setup(const std::string& content, int16_t first, int16_t last, int16_t limit, bool dataCycles) {
  SetupWithRange(dir.Write("run.txt", content), first, last, limit, dataCycles);
}

void Reading::SetupWithRange(const std::string& historyFile, int16_t first, int16_t last, int16_t limit,
                             bool dataCycles) {
  dataFile = historyFile;
  DataSetSettings setup = SetupFor(dataFile, dataCycles, ipcLimit);
  setup.bFirstLastCh = true;
  modTarvenix::CheckSetupEntries(s, ui, setup, first, last, limit, iErr);
}

void Reading::SetupWithFile(const std::string& content, const std::string& chSel, int16_t limit, bool dataCycles) {
  SetupFromFiles(dir.Write("run.txt", content), dir.Write("sel.txt", chSel), limit, dataCycles);
}

void Reading::SetupFromFiles(const std::string& historyFile, const std::string& chSelFile, int16_t limit,
                             bool dataCycles) {
  dataFile = historyFile;
  DataSetSettings setup = SetupFor(dataFile, dataCycles, ipcLimit);
  setup.bChSelFile = true;
  setup.sChSelFile = chSelFile;
  modTarvenix::CheckSetupEntries(s, ui, setup, 0, 0, limit, iErr);
}

void Reading::SetupIpc(const std::string& eventArray, int16_t first, int16_t last, bool dataCycles) {
  ipcLimit = true;
  dataFile = dir.File("run.txt");
  dir.Write("run.ipc", eventArray);
  DataSetSettings setup = SetupFor(dataFile, dataCycles, ipcLimit);
  setup.bFirstLastCh = true;
  modTarvenix::CheckSetupEntries(s, ui, setup, first, last, 1, iErr);
}

void Reading::Read() { modTarvenix::ProcessData(s, ui, iErr); }

std::vector<int32_t> Reading::Cycles() const {
  std::vector<int32_t> v;
  for (int i = 1; i <= s.iNumEvents(1); ++i) v.push_back(s.vEventCycle(1, i));
  return v;
}

std::vector<int32_t> Reading::Counts() const {
  std::vector<int32_t> v;
  for (int i = 1; i <= s.iNumEvents(1); ++i) v.push_back(s.vEventCount(1, i));
  return v;
}

std::vector<std::string> Reading::CallsFrom(const std::string& from) const {
  for (std::size_t i = 0; i < ui.calls.size(); ++i)
    if (ui.calls[i].find(from) != std::string::npos)
      return std::vector<std::string>(ui.calls.begin() + static_cast<long>(i), ui.calls.end());
  return {};
}

}  // namespace tarvenix::test
