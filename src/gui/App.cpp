#include "App.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QLockFile>
#include <QScreen>
#include <QTimer>

#include "base/RuntimeError.h"
#include "session/FileUtils.h"
#include "session/Sound.h"
#include "session/Utils.h"
#include "frmDebug.h"
#include "DataSetChoosers.h"
#include "Dialogs.h"
#include "settings/Startup.h"
#include "frmAbout.h"
#include "frmTarvenixData.h"
#include "frmTarvenixOptions.h"
#include "frmTarvenixSetup.h"
#include "frmTarvenixChSelFile.h"
#include "frmTarvenixFirstCycFailures.h"
#include "frmTarvenixPlot.h"
#include "QtStrings.h"

namespace tarvenix {

App::App(StartupOptions options) : options_(std::move(options)) {
  if (options_.programFolder.isEmpty()) options_.programFolder = QCoreApplication::applicationDirPath();
  if (options_.lockFolder.isEmpty()) options_.lockFolder = QDir::tempPath();
  InstallUiHooks();
}

App::~App() {
  // The dialogs are children of the main window; the log, about and plot windows are not.
  plot_.reset();
  debug_.reset();
  about_.reset();
  main_.reset();
}

QString App::LockFilePath() const { return QDir(options_.lockFolder).filePath(QString::fromLatin1(kInstanceLockName)); }

App::StartResult App::Main() {
  // One copy at a time. A lock left by a copy that crashed names a process
  // that is gone, and is taken over.
  lock_ = std::make_unique<QLockFile>(LockFilePath());
  lock_->setStaleLockTime(0);
  if (!lock_->tryLock(0)) {
    lock_.reset();
    gui::MessageBoxes::Show(nullptr, QMessageBox::Warning, QStringLiteral("Multiple Tarvenix Instance Warning"),
                            QStringLiteral("Error: Only one Tarvenix session allowed!"), QMessageBox::Ok);
    return StartResult::Refused;
  }

  bool dataFileTaken = false;
  modUtils::Trapped(session, ui, "modTarvenix.Main", [&] {
    std::string programFolder = PathFromQt(options_.programFolder);
    std::string commonAppData;
    try {
      commonAppData = modUtils::CommonAppDataFolder();
    } catch (const RuntimeError&) {
      commonAppData = PathFromQt(QDir::homePath());
    }
    dataFileTaken =
        modTarvenix::StartSession(session, ui, programFolder, commonAppData, PathFromQt(options_.dataFile));
  });

  // The splash stays at least this long while the windows load.
  modUtils::Trapped(session, ui, "modTarvenix.Main", [&] {
    frmAbout& splash = About();
    splash.setTitle("Tarvenix");
    if (QScreen* screen = QGuiApplication::primaryScreen())
      splash.move(screen->availableGeometry().center() - splash.rect().center());
    splash.show();
    modUtils::Stopwatch watch;
    watch.Start();
    ui.DoEvents();
    splash.repaint();
    LoadWindows();
    const double remaining = options_.splashSeconds - watch.Elapsed();
    if (remaining > 0) modUtils::Wait(ui, remaining);
    splash.hide();
  });

  MainWindow().show();
  MainWindow().Activate();
  modSound::PlaySound(session, ui, modSound::Sound::TurnOn);
  session.iMinFailures = 5;
  // From the event loop, so start-up has finished before the modal dialog runs.
  if (dataFileTaken) QTimer::singleShot(0, &MainWindow(), &frmTarvenixData::AddDataSet);
  return StartResult::Running;
}

void App::LoadWindows() {
  MainWindow();
  Setup();
  Options();
  SelectDataSet();
  Edit();
  FirstCycFailures();
  Plot();
  ChSelFile();
  Debug();
}

frmTarvenixData& App::MainWindow() {
  if (!main_) {
    main_ = std::make_unique<frmTarvenixData>(*this);
    ui.SetOwner(main_.get());
  }
  return *main_;
}

frmTarvenixSetup& App::Setup() {
  if (!setup_) setup_ = new frmTarvenixSetup(*this, &MainWindow());
  return *setup_;
}

frmTarvenixOptions& App::Options() {
  if (!options_dialog_) options_dialog_ = new frmTarvenixOptions(*this, &MainWindow());
  return *options_dialog_;
}

frmTarvenixSelectDataSet& App::SelectDataSet() {
  if (!select_) select_ = new frmTarvenixSelectDataSet(*this, &MainWindow());
  return *select_;
}

frmTarvenixEdit& App::Edit() {
  if (!edit_) edit_ = new frmTarvenixEdit(*this, &MainWindow());
  return *edit_;
}

frmAbout& App::About() {
  // Made before the main window, as the splash; centred on the screen.
  if (!about_) about_ = std::make_unique<frmAbout>();
  return *about_;
}

frmTarvenixFirstCycFailures& App::FirstCycFailures() {
  if (!firstCyc_) firstCyc_ = new frmTarvenixFirstCycFailures(*this, &MainWindow());
  return *firstCyc_;
}

frmTarvenixChSelFile& App::ChSelFile() {
  if (!chSelFile_) chSelFile_ = new frmTarvenixChSelFile(*this, &Setup());
  return *chSelFile_;
}

frmDebug& App::Debug() {
  if (!debug_) debug_ = std::make_unique<frmDebug>(session, ui);
  return *debug_;
}

frmTarvenixPlot& App::Plot() {
  if (!plot_) plot_ = std::make_unique<frmTarvenixPlot>(*this);
  return *plot_;
}

void App::UnloadWindows() {
  for (QWidget* w : std::initializer_list<QWidget*>{chSelFile_, setup_, options_dialog_, select_, edit_, about_.get(),
                                                   firstCyc_})
    if (w) w->hide();
  if (plot_) plot_->hide();
  if (debug_) debug_->close();
}

void App::InstallUiHooks() {
  GuiUiPort::Hooks hooks;
  hooks.updateStatus = [this](const std::string& s) { MainWindow().UpdateStatus(s); };
  hooks.updateTextBox = [this](const std::string& s) { MainWindow().UpdateTextBox(s); };
  hooks.resultsTextIsEmpty = [this] { return MainWindow().ResultsText().empty(); };
  hooks.askIgnoreFirstCycleEvents = [this](const FirstCycleFlags& flags, bool dataCycles) {
    return FirstCycFailures().Ask(flags, dataCycles);
  };
  hooks.debugPrint = [this](const std::string& line) { DebugPrintTo(Debug(), line); };
  ui.SetHooks(std::move(hooks));
}

}  // namespace tarvenix
