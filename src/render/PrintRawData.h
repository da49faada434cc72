#pragma once
// Printing the analysis report, or a text such as the log's selection.

#include <QStringList>

#include <cstdint>
#include <string>

class QPrinter;


namespace tarvenix {
struct Session;
class UiPort;
}  // namespace tarvenix

namespace tarvenix::modTarvenix {

// The report's scratch file, made in a folder of its own under the system's
// temporary folder and deleted after printing.
inline constexpr const char* kScratchFileName = "~~~~junk.txt";

// The lines PrintRawData prints: sText's own lines, or when it is empty the
// report's list items. iErr is set to 1 when the report could not be written.
QStringList RawDataLines(Session& s, UiPort& ui, const std::string& sText, int16_t& iErr);

// Prints sText as it stands; when it is empty, the analysis report: written to
// the scratch file and read back item by item (an item ends at a comma or a
// line end), each item a line of its own. "courier new" 11, iCopies copies.
// iErr is cleared first and set to 1 on failure, which shows the error box
// "modTarvenix.PrintRawData".
void PrintRawData(Session& s, UiPort& ui, QPrinter& printer, const std::string& sText, int16_t iCopies,
                  int16_t& iErr);

}  // namespace tarvenix::modTarvenix
