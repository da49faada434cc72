#include "ReadingTest.h"

#include "input/ChannelSelection.h"
#include "input/DataHistory.h"

namespace tarvenix::test {

Reading::Reading() {
  s.iDataSetNum = 1;
  s.iNumDataSets = 1;
  s.bSoundStatus = false;
}

void Reading::SetupFiles(const std::string& historyFile, const std::string& chSelFile, int16_t first, int16_t last,
                         int16_t limit, bool dataCycles) {
  dataFile = historyFile;
  DataSetSettings setup;
  setup.sDataFile = dataFile;
  setup.sDataID = "Board 7";
  setup.bNumOccurrences = !ipcLimit;
  setup.bIPCOccurrences = ipcLimit;
  setup.bDataCycles = dataCycles;
  setup.bTempCycles = !dataCycles;
  setup.bChSelFile = !chSelFile.empty();
  setup.sChSelFile = chSelFile;
  setup.bFirstLastCh = chSelFile.empty();
  modTarvenix::CheckSetupEntries(s, ui, setup, first, last, limit, iErr);
}

void Reading::Setup(const std::string& content, int16_t first, int16_t last, int16_t limit, bool dataCycles) {
  SetupFiles(dir.Write("run.txt", content), "", first, last, limit, dataCycles);
}

void Reading::SetupWithFile(const std::string& content, const std::string& chSel, int16_t limit, bool dataCycles) {
  SetupFiles(dir.Write("run.txt", content), dir.Write("sel.txt", chSel), 0, 0, limit, dataCycles);
}

void Reading::SetupIpc(const std::string& eventArray, int16_t first, int16_t last, bool dataCycles) {
  ipcLimit = true;
  dir.Write("run.ipc", eventArray);
  SetupFiles(dir.File("run.txt"), "", first, last, 1, dataCycles);
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
