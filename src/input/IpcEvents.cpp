#include "input/IpcEvents.h"

#include "app/Session.h"

namespace tarvenix::modIPCAnalysis {

// The occurrence rule itself is still to come; until then no event array file
// yields failures, as when the file is missing.
void ProcessIPCData(Session& s, UiPort& /*ui*/, int16_t /*iColumn*/, int16_t& iErr) {
  s.iNumEvents(s.iDataSetNum) = 0;
  iErr = kIpcDone;
}

}  // namespace tarvenix::modIPCAnalysis
