#pragma once
// Every modal box the program shows that a test cannot click on: message
// boxes, file dialogs and the print dialog. Each has a queue of next answers so
// tests answer them without racing timers; in test mode a box with no queued
// answer is not shown at all (it takes its default answer), so a forgotten
// answer fails an assertion instead of hanging the test.

#include <QMessageBox>
#include <QPrinter>
#include <QString>
#include <QStringList>

#include <deque>
#include <memory>
#include <optional>
#include <vector>

class QWidget;

namespace tarvenix::gui {

// Turns test mode on or off for all three kinds of box.
void SetDialogTestMode(bool on);
bool DialogTestMode();

class MessageBoxes {
 public:
  struct Shown {
    QString title;
    QString text;
    QMessageBox::Icon icon;
    QString owner;  // the objectName of the window it was shown over
  };

  // The answer the next box gets without being shown.
  static void SetNextAnswer(QMessageBox::StandardButton answer);
  // Every box shown (or answered from the queue) since the last Clear.
  static const std::vector<Shown>& History();
  static QStringList Texts();
  static void Clear();

  // A modal box; the queued answer, or the user's.
  static QMessageBox::StandardButton Show(QWidget* parent, QMessageBox::Icon icon, const QString& title,
                                          const QString& text, QMessageBox::StandardButtons buttons,
                                          QMessageBox::StandardButton defaultButton = QMessageBox::NoButton);
  static void Notice(QWidget* parent, const QString& title, const QString& text);
  static bool YesNo(QWidget* parent, const QString& title, const QString& text);
};

class FileDialogs {
 public:
  // The name the next file dialog returns ("" = cancelled).
  static void SetNextFileName(const QString& name);
  // What the last dialog proposed: its default name and its Qt filter.
  static QString LastDefaultName();
  static QString LastFilter();

  // The program's file dialog: `filter` in "description|pattern|..." pairs
  // (none: all files); an open dialog when `open`, else a save dialog. Returns
  // the chosen name, "" when cancelled. A save dialog asks before an existing
  // file is chosen unless `confirmOverwrite` is false (the caller asks itself).
  static QString Ask(QWidget* parent, const QString& title, const QString& filter, const QString& defaultName,
                     bool open, bool confirmOverwrite = true);
  // "Text files (*.txt)|*.txt" as Qt writes it.
  static QString ToQtFilter(const QString& filter);
};

// Documents and folders opened with the program the desktop associates with
// them. In test mode nothing is started: the paths are recorded.
class Documents {
 public:
  static bool Open(const QString& path);
  // The file actually opened for a path: the help's HTML pages stand in for
  // the compiled help where the system has no viewer for it.
  static QString Readable(const QString& path);
  static QStringList Opened();
  static void SetOpenSucceeds(bool succeeds);
  static void Clear();
};

// Sound effects. In test mode nothing is heard: the file names are recorded.
class SoundLog {
 public:
  static QStringList Played();
  static void Clear();
  static void Record(const QString& path);
};

// One print job as the print dialog gave it.
struct PrintJob {
  std::unique_ptr<QPrinter> printer;
  int copies = 1;
  bool selectionOnly = false;
};

class PrintDialogs {
 public:
  struct Answer {
    bool accept = true;
    int copies = 1;
    bool selectionOnly = false;
    QString pdfFile;  // the job is written to this PDF file instead of a printer
  };
  static void SetNextAnswer(const Answer& answer);
  // Whether the last dialog offered to print the selection.
  static bool LastOfferedSelection();

  // Test mode: whether the machine is to look as if it had a printer.
  static void SetPrinterInstalled(bool installed);
  static bool PrinterInstalled();

  // The print dialog, printing to a file and choosing pages hidden; the
  // selection offered only when `selectionAvailable`. Nothing when cancelled.
  // Callers check PrinterInstalled first (the dialog is useless without one).
  static std::optional<PrintJob> Ask(QWidget* parent, bool selectionAvailable);
};

// The notice shown when printing is asked for and there is no printer.
inline constexpr const char* kNoPrinterMessage =
    "No printer is installed. Add a printer in the system settings and try again.";

}  // namespace tarvenix::gui
