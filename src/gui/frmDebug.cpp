#include "frmDebug.h"

#include <QCloseEvent>
#include <QDir>
#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QPrinter>
#include <QPushButton>
#include <QTextCursor>
#include <QVBoxLayout>

#include "session/FileUtils.h"
#include "TextPrinting.h"
#include "session/Utils.h"
#include "Dialogs.h"
#include "FormUtils.h"
#include "QtStrings.h"
#include "session/Session.h"
#include "session/UiPort.h"

namespace tarvenix {
namespace {

// The log keeps CR LF between lines; the text box shows plain line breaks.
QString LogToBox(const std::string& text) { return ToQt(text); }

std::string BoxToLog(QString text) {
  text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
  text.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
  return FromQt(text);
}

}  // namespace

frmDebug::frmDebug(Session& session, UiPort& ui, QWidget* parent)
    : QWidget(parent, Qt::Window), session_(session), ui_(ui) {
  setObjectName(QStringLiteral("frmDebug"));
  setWindowTitle(QStringLiteral("Debug Window for Tarvenix"));
  TextBox1_ = gui::Named(new QPlainTextEdit(this), "TextBox1");
  TextBox1_->setReadOnly(true);
  TextBox1_->setLineWrapMode(QPlainTextEdit::NoWrap);
  TextBox1_->setFont(QFont(QStringLiteral("Courier New"), 9));

  QPushButton* clear = gui::MakeButton(this, "btnClear", "Clear", "Press to Clear Debug Window");
  QPushButton* print = gui::MakeButton(this, "btnPrint", "Print", "Press to Print Debug Window");
  QPushButton* save = gui::MakeButton(this, "btnSave", "Save", "Press to Save Debug Window");
  QPushButton* close = gui::MakeButton(this, "btnClose", "Close", "Press to Close Debug Window");
  connect(clear, &QPushButton::clicked, this, &frmDebug::Clear);
  connect(print, &QPushButton::clicked, this, &frmDebug::PrintLog);
  connect(save, &QPushButton::clicked, this, &frmDebug::SaveLog);
  connect(close, &QPushButton::clicked, this, &QWidget::close);

  // The text fills the window above the buttons, which keep to the bottom edge.
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  for (QPushButton* b : {clear, print, save, close}) {
    b->setFont(QFont(QStringLiteral("Arial"), b->font().pointSize()));
    b->setMinimumWidth(88);
    buttons->addWidget(b);
  }
  buttons->addStretch();
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(TextBox1_, 1);
  layout->addLayout(buttons);
  resize(640, 420);
}

void frmDebug::UpdateText(const std::string& sMsg) {
  // The log starts with an empty line: every line is put after a line break.
  QTextCursor cursor = TextBox1_->textCursor();
  cursor.movePosition(QTextCursor::End);
  cursor.insertText(QLatin1Char('\n') + LogToBox(sMsg));
  TextBox1_->setTextCursor(cursor);
  TextBox1_->ensureCursorVisible();
}

std::string frmDebug::Text() const { return BoxToLog(TextBox1_->toPlainText()); }

void frmDebug::Clear() { TextBox1_->clear(); }

void frmDebug::SaveLog() {
  modUtils::Trapped(session_, ui_, "frmDebug.btnSave_Click", [&] {
    std::string text = Text();
    const QTextCursor cursor = TextBox1_->textCursor();
    if (cursor.hasSelection() && ui_.AskYesNo("Save selected text only?", modUtils::kMessageTitle))
      text = BoxToLog(cursor.selectedText());
    const std::string proposed = modUtils::JoinPath(session_.sDataDir, "debug.txt");
    QString name = gui::FileDialogs::Ask(this, QStringLiteral("Save Debug Log"), QString(), PathToQt(proposed), false);
    if (name.isEmpty()) return;
    int16_t iErr = 0;
    auto file = modUtils::OpenFile(session_, ui_, "Output", PathFromQt(name), iErr);
    if (!file) return;
    file->PrintLine(text);
    file->Close();
  });
}

void frmDebug::PrintLog() {
  modUtils::Trapped(session_, ui_, "frmDebug.btnPrint_Click", [&] {
    if (!gui::PrintDialogs::PrinterInstalled()) {
      modUtils::ShowMessage(session_, ui_, modUtils::kMsgNotice, "", gui::kNoPrinterMessage);
      return;
    }
    const QTextCursor cursor = TextBox1_->textCursor();
    std::optional<gui::PrintJob> job = gui::PrintDialogs::Ask(this, cursor.hasSelection());
    if (!job) return;
    QString text = job->selectionOnly ? cursor.selectedText() : TextBox1_->toPlainText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    QFont font(QStringLiteral("Arial"), 10);
    if (!gui::PrintLines(*job->printer, text.split(QLatin1Char('\n')), font, job->copies))
      Raise(err::kDeviceIO);
  });
}

void frmDebug::closeEvent(QCloseEvent* event) {
  // Closing unloads the log: the next trace line starts a fresh one.
  Clear();
  QWidget::closeEvent(event);
}

void DebugPrintTo(frmDebug& window, const std::string& line) {
  if (!window.isVisible()) window.show();
  window.UpdateText(line);
}

}  // namespace tarvenix
