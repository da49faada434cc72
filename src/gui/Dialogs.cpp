#include "Dialogs.h"

#include <algorithm>

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QUrl>

namespace tarvenix::gui {
namespace {

bool gTestMode = false;

std::vector<MessageBoxes::Shown>& ShownBoxes() {
  static std::vector<MessageBoxes::Shown> shown;
  return shown;
}
std::deque<QMessageBox::StandardButton>& BoxAnswers() {
  static std::deque<QMessageBox::StandardButton> answers;
  return answers;
}
std::deque<QString>& FileNames() {
  static std::deque<QString> names;
  return names;
}
QString gLastDefaultName;
QString gLastFilter;
std::deque<PrintDialogs::Answer>& PrintAnswers() {
  static std::deque<PrintDialogs::Answer> answers;
  return answers;
}
bool gTestPrinterInstalled = true;
bool gLastOfferedSelection = false;

}  // namespace

void SetDialogTestMode(bool on) { gTestMode = on; }
bool DialogTestMode() { return gTestMode; }

// --- Message boxes ----------------------------------------------------------

void MessageBoxes::SetNextAnswer(QMessageBox::StandardButton answer) { BoxAnswers().push_back(answer); }
const std::vector<MessageBoxes::Shown>& MessageBoxes::History() { return ShownBoxes(); }
void MessageBoxes::Clear() {
  ShownBoxes().clear();
  BoxAnswers().clear();
}

QStringList MessageBoxes::Texts() {
  QStringList texts;
  for (const Shown& s : ShownBoxes()) texts << s.text;
  return texts;
}

QMessageBox::StandardButton MessageBoxes::Show(QWidget* parent, QMessageBox::Icon icon, const QString& title,
                                               const QString& text, QMessageBox::StandardButtons buttons,
                                               QMessageBox::StandardButton defaultButton) {
  // A box belongs to the window it was raised over: the dialog that is open,
  // else the window the user is working in (the plot or the debug log), and
  // the focus goes back there when it closes.
  if (QWidget* modal = QApplication::activeModalWidget()) {
    parent = modal;
  } else if (QWidget* active = QApplication::activeWindow()) {
    parent = active;
  }
  ShownBoxes().push_back({title, text, icon, parent ? parent->window()->objectName() : QString()});
  if (!BoxAnswers().empty()) {
    QMessageBox::StandardButton answer = BoxAnswers().front();
    BoxAnswers().pop_front();
    return answer;
  }
  if (gTestMode) return defaultButton != QMessageBox::NoButton ? defaultButton : QMessageBox::Ok;
  QMessageBox box(icon, title, text, buttons, parent);
  if (defaultButton != QMessageBox::NoButton) box.setDefaultButton(defaultButton);
  return static_cast<QMessageBox::StandardButton>(box.exec());
}

void MessageBoxes::Notice(QWidget* parent, const QString& title, const QString& text) {
  Show(parent, QMessageBox::Warning, title, text, QMessageBox::Ok);
}

bool MessageBoxes::YesNo(QWidget* parent, const QString& title, const QString& text) {
  return Show(parent, QMessageBox::Question, title, text, QMessageBox::Yes | QMessageBox::No, QMessageBox::Yes) ==
         QMessageBox::Yes;
}

// --- File dialogs -----------------------------------------------------------

void FileDialogs::SetNextFileName(const QString& name) { FileNames().push_back(name); }
QString FileDialogs::LastDefaultName() { return gLastDefaultName; }
QString FileDialogs::LastFilter() { return gLastFilter; }

QString FileDialogs::ToQtFilter(const QString& filter) {
  QString source = filter.isEmpty() ? QStringLiteral("All files (*.*)|*.*") : filter;
  QStringList parts = source.split(QLatin1Char('|'));
  QStringList qtFilters;
  for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
    QString description = parts[i].trimmed();
    QString patterns = parts[i + 1].trimmed().replace(QLatin1Char(';'), QLatin1Char(' '));
    // Qt reads the patterns from the last parentheses of the description.
    if (!description.endsWith(QLatin1Char(')'))) description += QStringLiteral(" (") + patterns + QLatin1Char(')');
    qtFilters << description;
  }
  return qtFilters.join(QStringLiteral(";;"));
}

QString FileDialogs::Ask(QWidget* parent, const QString& title, const QString& filter, const QString& defaultName,
                         bool open, bool confirmOverwrite) {
  gLastDefaultName = defaultName;
  gLastFilter = ToQtFilter(filter);
  if (!FileNames().empty()) {
    QString name = FileNames().front();
    FileNames().pop_front();
    return name;
  }
  if (gTestMode) return {};
  return open ? QFileDialog::getOpenFileName(parent, title, defaultName, gLastFilter)
              : QFileDialog::getSaveFileName(parent, title, defaultName, gLastFilter, nullptr,
                                             confirmOverwrite ? QFileDialog::Options()
                                                              : QFileDialog::DontConfirmOverwrite);
}

// --- Documents --------------------------------------------------------------

namespace {
QStringList gOpened;
bool gOpenSucceeds = true;
}  // namespace

QString Documents::Readable(const QString& path) {
#ifndef Q_OS_WIN
  // Linux desktops seldom open compiled help; its pages also ship as HTML in a
  // "help" folder beside it, which any browser shows.
  if (path.endsWith(QLatin1String(".chm"), Qt::CaseInsensitive)) {
    const QString pages = QFileInfo(path).dir().filePath(QStringLiteral("help/index.html"));
    if (QFileInfo::exists(pages)) return QDir::toNativeSeparators(pages);
  }
#endif
  return path;
}

bool Documents::Open(const QString& path) {
  const QString readable = Readable(path);
  gOpened << readable;
  if (gTestMode) return gOpenSucceeds;
  return QDesktopServices::openUrl(QUrl::fromLocalFile(readable));
}
QStringList Documents::Opened() { return gOpened; }
void Documents::SetOpenSucceeds(bool succeeds) { gOpenSucceeds = succeeds; }
void Documents::Clear() {
  gOpened.clear();
  gOpenSucceeds = true;
}

// --- Sounds -----------------------------------------------------------------

namespace {
QStringList gPlayed;
}  // namespace

QStringList SoundLog::Played() { return gPlayed; }
void SoundLog::Clear() { gPlayed.clear(); }
void SoundLog::Record(const QString& path) { gPlayed << QFileInfo(path).fileName(); }

// --- Print dialog -----------------------------------------------------------

void PrintDialogs::SetNextAnswer(const Answer& answer) { PrintAnswers().push_back(answer); }
bool PrintDialogs::LastOfferedSelection() { return gLastOfferedSelection; }
void PrintDialogs::SetPrinterInstalled(bool installed) { gTestPrinterInstalled = installed; }

bool PrintDialogs::PrinterInstalled() {
  if (gTestMode) return gTestPrinterInstalled;
  return !QPrinterInfo::availablePrinterNames().isEmpty();
}

std::optional<PrintJob> PrintDialogs::Ask(QWidget* parent, bool selectionAvailable) {
  gLastOfferedSelection = selectionAvailable;
  PrintJob job;
  job.printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
  if (!PrintAnswers().empty() || gTestMode) {
    Answer answer = PrintAnswers().empty() ? Answer{false, 1, false, {}} : PrintAnswers().front();
    if (!PrintAnswers().empty()) PrintAnswers().pop_front();
    if (!answer.accept) return std::nullopt;
    job.printer->setOutputFormat(QPrinter::PdfFormat);
    job.printer->setOutputFileName(answer.pdfFile);
    job.copies = answer.copies;
    job.selectionOnly = answer.selectionOnly && selectionAvailable;
    return job;
  }
  QPrintDialog dialog(job.printer.get(), parent);
  QAbstractPrintDialog::PrintDialogOptions options = QAbstractPrintDialog::PrintShowPageSize;
  if (selectionAvailable) options |= QAbstractPrintDialog::PrintSelection;
  dialog.setOptions(options);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  // We print each copy ourselves, so the printer must not multiply them again.
  job.copies = std::max(1, job.printer->copyCount());
  job.printer->setCopyCount(1);
  job.selectionOnly = job.printer->printRange() == QPrinter::Selection;
  return job;
}

}  // namespace tarvenix::gui
