#include "GuiUiPort.h"

#include "Dialogs.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QAudioDevice>
#include <QMediaDevices>
#include <QEventLoop>
#include <QMessageBox>
#include <QSoundEffect>
#include <QString>
#include <QStringDecoder>
#include <QTimer>
#include <QUrl>

namespace tarvenix {

QString ToQt(const std::string& text) {
  // Messages quote file names, which come in the system's encoding (UTF-8 on
  // Linux); everything else is single-byte text. Bytes that form valid UTF-8
  // are practically never meant as Latin-1, so they are read as UTF-8.
  QStringDecoder utf8(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
  QString s = utf8(QByteArrayView(text.data(), static_cast<qsizetype>(text.size())));
  if (utf8.hasError()) s = QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
  // Message texts join their lines with a lone CR; the screen wants line feeds.
  s.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  s.replace(QLatin1Char('\r'), QLatin1Char('\n'));
  return s;
}

std::string FromQt(const QString& text) {
  QByteArray bytes = text.toLatin1();
  return std::string(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

QString PathToQt(const std::string& path) { return QDir::toNativeSeparators(QFile::decodeName(path.c_str())); }

std::string PathFromQt(const QString& path) { return QFile::encodeName(QDir::toNativeSeparators(path)).toStdString(); }

void GuiUiPort::UpdateStatus(const std::string& sMsg) {
  if (hooks_.updateStatus) hooks_.updateStatus(sMsg);
}

void GuiUiPort::UpdateTextBox(const std::string& sMsg) {
  if (hooks_.updateTextBox) hooks_.updateTextBox(sMsg);
}

bool GuiUiPort::ResultsTextIsEmpty() const {
  return hooks_.resultsTextIsEmpty ? hooks_.resultsTextIsEmpty() : true;
}

void GuiUiPort::ShowMessageBox(const std::string& text, const std::string& title, MessageIcon icon) {
  QMessageBox::Icon qIcon = QMessageBox::Warning;
  switch (icon) {
    case MessageIcon::Exclamation: qIcon = QMessageBox::Warning; break;
    case MessageIcon::Critical: qIcon = QMessageBox::Critical; break;
    case MessageIcon::Question: qIcon = QMessageBox::Question; break;
    case MessageIcon::Information: qIcon = QMessageBox::Information; break;
  }
  gui::MessageBoxes::Show(owner_, qIcon, ToQt(title), ToQt(text), QMessageBox::Ok);
}

bool GuiUiPort::AskYesNo(const std::string& text, const std::string& title) {
  return gui::MessageBoxes::YesNo(owner_, ToQt(title), ToQt(text));
}

std::optional<bool> GuiUiPort::AskIgnoreFirstCycleEvents(const FirstCycleFlags& flags, bool dataCycleAnalysis) {
  if (hooks_.askIgnoreFirstCycleEvents) return hooks_.askIgnoreFirstCycleEvents(flags, dataCycleAnalysis);
  return std::nullopt;
}

void GuiUiPort::DebugPrint(const std::string& line) {
  if (hooks_.debugPrint) hooks_.debugPrint(line);
}

void GuiUiPort::PlaySoundFile(const std::string& path) {
  // Plays to the end before returning, as the sounds mark steps of the work;
  // with no audio device there is nothing to wait for.
  if (gui::DialogTestMode()) {
    gui::SoundLog::Record(PathToQt(path));
    return;
  }
  if (QMediaDevices::audioOutputs().isEmpty()) return;
  QSoundEffect effect;
  effect.setSource(QUrl::fromLocalFile(PathToQt(path)));
  QEventLoop loop;
  QObject::connect(&effect, &QSoundEffect::playingChanged, &loop, [&] {
    if (!effect.isPlaying()) loop.quit();
  });
  QObject::connect(&effect, &QSoundEffect::statusChanged, &loop, [&] {
    if (effect.status() == QSoundEffect::Error) loop.quit();
    if (effect.status() == QSoundEffect::Ready) effect.play();
  });
  QTimer::singleShot(5000, &loop, &QEventLoop::quit);
  if (effect.status() == QSoundEffect::Ready) effect.play();
  loop.exec();
}

void GuiUiPort::DoEvents() { QCoreApplication::processEvents(); }

bool GuiUiPort::OpenDocument(const std::string& path) {
  return gui::Documents::Open(PathToQt(path));
}

}  // namespace tarvenix
