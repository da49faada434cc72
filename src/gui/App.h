#pragma once
// The desktop program as one object: the session, the UI port on the real
// windows, and every window, created once and shown or hidden. `Main` is the
// start-up sequence. Tests make their own App with a program folder and lock
// folder of their own, so two tests never share a window or a session.

#include <QString>

#include <memory>

#include "GuiUiPort.h"
#include "session/Session.h"

class QLockFile;
class QWidget;

namespace tarvenix {

class frmTarvenixData;
class frmTarvenixSetup;
class frmTarvenixOptions;
class frmTarvenixSelectDataSet;
class frmTarvenixEdit;
class frmAbout;
class frmTarvenixFirstCycFailures;
class frmTarvenixChSelFile;
class frmDebug;
class frmTarvenixPlot;

struct StartupOptions {
  QString programFolder;  // default: the folder of the running program
  QString lockFolder;     // default: the system's temporary folder
  // A data history file named on the command line: once the main window is up,
  // the setup dialog opens with it, as after a companion's hand-off.
  QString dataFile;
  double splashSeconds = 3.0;
};

class App {
 public:
  explicit App(StartupOptions options = {});
  ~App();
  App(const App&) = delete;
  App& operator=(const App&) = delete;

  enum class StartResult { Running, Refused };
  // Start-up: one instance only, session paths, the hand-off file, settings,
  // the splash while the windows load, then the main window (modeless), and
  // the setup dialog when the command line named a data history file.
  StartResult Main();

  Session session;
  GuiUiPort ui;

  // Loads every window once (Main does it behind the splash).
  void LoadWindows();
  frmTarvenixData& MainWindow();
  frmTarvenixSetup& Setup();
  frmTarvenixOptions& Options();
  frmTarvenixSelectDataSet& SelectDataSet();
  frmTarvenixEdit& Edit();
  frmAbout& About();
  frmTarvenixFirstCycFailures& FirstCycFailures();
  // The plot window (modeless), made once.
  frmTarvenixPlot& Plot();
  // The channel selection file editor, over the setup dialog.
  frmTarvenixChSelFile& ChSelFile();
  // The debug log window, made on first use.
  frmDebug& Debug();

  // Unloads every window but the main window (it is closing itself).
  void UnloadWindows();

  const StartupOptions& Startup() const { return options_; }
  // The lock file that keeps a second copy out.
  QString LockFilePath() const;

 private:
  void InstallUiHooks();

  StartupOptions options_;
  std::unique_ptr<QLockFile> lock_;
  std::unique_ptr<frmTarvenixData> main_;
  // Dialogs are children of the main window and go with it.
  frmTarvenixSetup* setup_ = nullptr;
  frmTarvenixOptions* options_dialog_ = nullptr;
  frmTarvenixSelectDataSet* select_ = nullptr;
  frmTarvenixEdit* edit_ = nullptr;
  frmTarvenixFirstCycFailures* firstCyc_ = nullptr;
  frmTarvenixChSelFile* chSelFile_ = nullptr;  // a child of the setup dialog
  std::unique_ptr<frmAbout> about_;
  std::unique_ptr<frmDebug> debug_;
  std::unique_ptr<frmTarvenixPlot> plot_;
};

// The name of the lock file that marks a running copy.
inline constexpr const char* kInstanceLockName = "tarvenix-instance.lock";

}  // namespace tarvenix
