#pragma once
// The main window: the session's control panel. Its commands add, edit,
// re-analyse, clear, plot, print, save and view data sets; its text box holds
// the running log of reading and analysis, its status bar the last message.

#include <QMainWindow>

#include <cstdint>
#include <functional>
#include <string>

#include "session/Session.h"

class QAction;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QToolButton;

namespace tarvenix {

class App;

class frmTarvenixData : public QMainWindow {
  Q_OBJECT
 public:
  explicit frmTarvenixData(App& app);

  // The public operations the core and the dialogs call.
  void UpdateStatus(const std::string& sMsg);
  void UpdateTextBox(const std::string& sMsg);
  void UpdateParams(int16_t iDataSetNum, Bool16 bDebug);
  void SetFormTitle();
  bool OKToQuit();
  void SetCommandState(const std::string& status);

  // True once "Analysis complete." has been shown, until Clear.
  bool AnalysisDone() const { return analysisDone_; }
  std::string ResultsText() const;
  std::string PlotTitle() const;

  // Activation: debug label, command state and the sounds check mark.
  void Activate();
  void ToggleDebug();

  // The commands.
  void AddDataSet();
  void EditDataSet();
  void ReAnalyze();
  void Clear();
  void Plot();
  void Print();
  void Save();
  void ViewDataFile();
  void Help();
  void Readme();
  void About();
  void TarvenixOptions();
  void ToggleSounds();
  void OpenExplorer();
  void Exit();

  // Closing asks first; a confirmed quit writes the settings and unloads every
  // window. Tests read whether the last close was let through.
  bool Quitting() const { return quitting_; }

 protected:
  void closeEvent(QCloseEvent* event) override;
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void BuildMenus();
  void BuildControls();
  bool RunTrapped(const char* label, const std::function<void()>& body);

  App& app_;
  bool analysisDone_ = false;
  bool quitting_ = false;

  QPushButton* btnAddDataSet_;
  QPushButton* btnEdit_;
  QPushButton* btnReAnalyze_;
  QPushButton* btnClear_;
  QToolButton* CmdPlot_;
  QToolButton* CmdPrint_;
  QToolButton* CmdSave_;
  QToolButton* CmdViewDataFile_;
  QToolButton* CmdHelp_;
  QToolButton* CmdExit_;
  QPlainTextEdit* TextBox1_;
  QLineEdit* MaskEdBoxGrHeader_;
  QLabel* lblDebug_;
  QLabel* status_;
  QAction* mnuUtilsEnableSounds_;
};

}  // namespace tarvenix
