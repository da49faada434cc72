#pragma once
// Text between the core's byte strings and Qt's strings: the one conversion the
// windows, the printed report and the exported plot share, so they all show a
// text the same way.

#include <string>

#include <QString>

namespace tarvenix {

// Text from the core for showing: valid UTF-8 (a message or report line that
// quotes a file name, a batch tool argument) is read as UTF-8; any other bytes
// above 127 (a data file's own Windows text, an ID typed in a box) as Latin-1.
// Lines joined with CR LF or a lone CR come out joined with line feeds.
QString ToQt(const std::string& text);
// Text typed in a box, for the core: single-byte (Latin-1), as ToQt reads it back.
std::string FromQt(const QString& text);

// File and folder names between the windows and the files: the system's own
// encoding of names (UTF-8 on Linux), so a name with accents opens the file it
// names. Native separators.
QString PathToQt(const std::string& path);
std::string PathFromQt(const QString& path);

}  // namespace tarvenix
