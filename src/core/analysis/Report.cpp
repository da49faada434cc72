#include "analysis/Report.h"

#include <initializer_list>
#include <string_view>

#include "base/Basic.h"
#include "session/FileUtils.h"
#include "session/Utils.h"
#include "analysis/Messages.h"
#include "analysis/Weibull.h"
#include "session/Session.h"
#include "tarvenix/Version.h"

namespace tarvenix::modTarvenix {
namespace {

constexpr const char* kEol = "\r\n";
constexpr std::size_t kPrintZone = 14;

// Items printed in 14-character zones: each item after the first starts at the
// next zone boundary past the text so far.
std::string InPrintZones(std::initializer_list<std::string_view> items) {
  std::string line;
  bool first = true;
  for (std::string_view item : items) {
    if (!first) line.append((line.size() / kPrintZone + 1) * kPrintZone - line.size(), ' ');
    line += item;
    first = false;
  }
  return line;
}

// A count as the print statement writes a number: its Str form without the
// blank that would follow it.
std::string CountText(long long v) { return basic::RTrim(basic::Str(v)); }

std::string Heading(int k, const DataSetSettings& rec) {
  std::string h = "Data Set #" + std::to_string(k);
  if (!rec.sDataID.empty()) h += " - '" + rec.sDataID + "'";
  return h + " ";
}

void AppendDataSet(std::string& out, const Session& s, int k) {
  auto line = [&out](const std::string& text) { out += text + kEol; };
  const DataSetSettings& rec = s.dataSetSettings(k);
  const std::string heading = Heading(k, rec);
  line(heading);
  line("Test Data History File: " + rec.sDataFile);
  if (rec.bChSelFile) {
    line("Channel Selection File: " + rec.sChSelFile);
  } else {
    line("Channels Selected: " + rec.sFirstCh + " to " + rec.sLastCh);
  }
  line(rec.bDataCycles ? "Data cycle analysis selected." : "Temperature or mechanical cycle analysis selected.");
  line("Occurrence limit considered: " + (rec.bNumOccurrences ? rec.sOccurrenceLimit : "IPC/JEDEC Limit"));
  if (!s.bAnalysisComplete(k)) {
    // No numbers of an earlier run under this data set's name.
    line(kAnalysisFailed);
    line("");
    return;
  }
  const int16_t n = s.iNumEvents(k);
  line("Number of analyzed events = " + std::to_string(n));
  line(s.sBetaResult(k));
  line(s.sNResult(k));
  line(s.sRSquaredResult(k));
  line(std::string(heading.size(), '-'));
  line(InPrintZones({"Number", "Cycle ", "Failure ", "Weibull"}));
  line(InPrintZones({"Failed", "Number", "Fraction", "Ordinate"}));
  line(InPrintZones({"------", "------", "--------", "--------"}));
  for (int i = 1; i <= n; ++i) {
    // Each data set's own fractions, whichever data set is current.
    const double F = 1 - static_cast<double>(SurvivalFraction(s, static_cast<int16_t>(k), static_cast<int16_t>(i)));
    line(InPrintZones({CountText(s.vEventCount(k, i)) + ",", CountText(s.vEventCycle(k, i)) + ",",
                       modUtils::ConvertDecimal(F, 4) + ",", modUtils::ConvertDecimal(s.sngWeiY(k, i), 4)}));
  }
  line("");
}

}  // namespace

std::string ReportText(const Session& s, const std::tm& now) {
  std::string out = std::string("Created using Tarvenix v") + std::to_string(version::kMajor) + "." +
                    std::to_string(version::kMinor) + "." + std::to_string(version::kRevision) + " on " +
                    basic::GeneralDate(now) + kEol;
  out += "Plot Title: " + s.sPlotTitle + kEol;
  out += kEol;
  for (int k = 1; k <= s.iNumDataSets; ++k) AppendDataSet(out, s, k);
  return out;
}

void SaveRawData(Session& s, UiPort& ui, const std::string& sFileName, int16_t& iErr) {
  SaveRawData(s, ui, sFileName, iErr, basic::Now());
}

void SaveRawData(Session& s, UiPort& ui, const std::string& sFileName, int16_t& iErr, const std::tm& now) {
  iErr = 0;
  if (!modUtils::Trapped(s, ui, "modTarvenix.SaveRawData",
                         [&] { modUtils::WriteFileAtomically(sFileName, ReportText(s, now)); }))
    iErr = 1;
}

}  // namespace tarvenix::modTarvenix
