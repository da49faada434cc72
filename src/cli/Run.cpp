#include "Run.h"

#include "analysis/Report.h"
#include "session/Session.h"
#include "setup/SetupSequence.h"
#include "ConsoleUi.h"
#include "Options.h"
#include "tarvenix/Version.h"

namespace tarvenix::cli {
namespace {

void ApplyGlobalOptions(const Options& o, Session& s) {
  s.iMinFailures = 5;
  s.bSoundStatus = false;
  s.bDebug = o.debug;
  s.SetAnalysisOptions(o.nParamType, o.fractionType, o.confLevel);
  s.sPlotTitle = o.plotTitle;
}

// The group's entries over the dialog's controls as activation left them.
void EnterDataSet(const DataSetOptions& d, DataSetSettings& c) {
  c.sDataFile = d.dataFile;
  if (d.id) c.sDataID = *d.id;
  if (d.firstCh) c.sFirstCh = *d.firstCh;
  if (d.lastCh) c.sLastCh = *d.lastCh;
  c.bFirstLastCh = !d.chSelFile;
  c.bChSelFile = d.chSelFile.has_value();
  if (d.chSelFile) c.sChSelFile = *d.chSelFile;
  c.bDataCycles = !d.tempCycles;
  c.bTempCycles = d.tempCycles;
  c.sOccurrenceLimit = d.occurrenceLimit;
  c.bNumOccurrences = !d.ipc;
  c.bIPCOccurrences = d.ipc;
}

// Add Data Set and OK for each group, in order. Returns false when a data set
// was not analysed to the end; stops as Cancel would when the dialog would stay
// open.
bool RunDataSets(const Options& o, Session& s, ConsoleUi& ui) {
  bool allComplete = true;
  for (const DataSetOptions& d : o.dataSets) {
    // Each group starts from the dialog's defaults: a channel range with empty
    // boxes, data cycles, a limit of 1.
    DataSetSettings controls;
    controls.bFirstLastCh = true;
    controls.sOccurrenceLimit = "1";
    setup::ActivateSetup(s, ui, setup::SetupMode::Add, controls);
    EnterDataSet(d, controls);
    if (!setup::FinishUp(s, ui, setup::SetupMode::Add, controls).accepted) {
      setup::CancelSetup(s, ui);
      return false;
    }
    if (!ui.TakeAnalysisComplete()) allComplete = false;
  }
  return allComplete;
}

}  // namespace

int Run(const std::vector<std::string>& args, std::ostream& out, std::ostream& err) {
  const ParseResult parsed = ParseArguments(args);
  if (!parsed.error.empty()) {
    err << "tarvenix-cli: " << parsed.error << "\nTry 'tarvenix-cli --help' for more information.\n";
    return kExitUsage;
  }
  const Options& o = parsed.options;
  if (o.help) {
    out << UsageText();
    return kExitComplete;
  }
  if (o.version) {
    out << "tarvenix-cli " << version::kText << "\n";
    return kExitComplete;
  }
  Session s;
  ApplyGlobalOptions(o, s);
  ConsoleUi ui(out, err, o.ignoreFirstCycles);
  bool ok = RunDataSets(o, s, ui);
  if (o.reportFile) {
    int16_t iErr = 0;
    modTarvenix::SaveRawData(s, ui, *o.reportFile, iErr);
    if (iErr != 0) ok = false;
  }
  if (!WritePlot(s, ui, o.plot)) ok = false;
  out.flush();
  return ok ? kExitComplete : kExitIncomplete;
}

}  // namespace tarvenix::cli
