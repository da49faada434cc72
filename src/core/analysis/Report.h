#pragma once
// The analysis report: for every loaded data set its setup, its three result
// lines and the table of its failure points. Save writes it as a file; Print
// prints the same text.

#include <cstdint>
#include <ctime>
#include <string>

namespace tarvenix {
struct Session;
class UiPort;
}  // namespace tarvenix

namespace tarvenix::modTarvenix {

// The report text, every line ended by CR LF, dated `now`. Each data set's
// fraction column comes from its own points, with the fraction method in force
// now; a data set whose analysis did not complete says so instead of results
// and points. Raises the run-time error of a fault (the caller's trap reports it).
std::string ReportText(const Session& s, const std::tm& now);

// Writes the report to sFileName, replacing the file atomically, so a failure
// leaves an old report whole. iErr is cleared first and set to 1 on failure,
// which also shows the error box "modTarvenix.SaveRawData".
void SaveRawData(Session& s, UiPort& ui, const std::string& sFileName, int16_t& iErr);
void SaveRawData(Session& s, UiPort& ui, const std::string& sFileName, int16_t& iErr, const std::tm& now);

}  // namespace tarvenix::modTarvenix
