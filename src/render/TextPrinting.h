#pragma once
// Printing plain text: lines in one font, broken onto as many pages as they
// need, each copy starting on a new page. The report and the debug log print
// through here.

#include <QFont>
#include <QStringList>

class QPrinter;

namespace tarvenix::gui {

// Prints `lines` `copies` times. Lines too wide for the page are wrapped.
// Returns false when the printer could not be started.
bool PrintLines(QPrinter& printer, const QStringList& lines, const QFont& font, int copies);

}  // namespace tarvenix::gui
