#include "GuiUiPort.h"

#include "Dialogs.h"
#include "QtStrings.h"

#include <QCoreApplication>
#include <QAudioDevice>
#include <QMediaDevices>
#include <QEventLoop>
#include <QMessageBox>
#include <QSoundEffect>
#include <QString>
#include <QTimer>
#include <QUrl>

namespace tarvenix {

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
