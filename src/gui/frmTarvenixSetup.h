#pragma once
// The data set setup dialog: one data set's data history file, ID, channels,
// cycle type and occurrence limit. One dialog for three modes: adding a data
// set, editing one, and re-analysing the current one without asking.

#include <QDialog>

#include <string>

#include "session/Session.h"
#include "setup/SetupSequence.h"

class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace tarvenix {

class App;
namespace gui {
class UpDown;
}

class frmTarvenixSetup : public QDialog {
  Q_OBJECT
 public:
  frmTarvenixSetup(App& app, QWidget* parent);

  void SetAddMode(bool bAddMode) { addMode_ = bAddMode; }
  void SetReAnalyzeMode(bool bReAnalyzeMode) { reAnalyzeMode_ = bReAnalyzeMode; }
  bool AddMode() const { return addMode_; }
  bool ReAnalyzeMode() const { return reAnalyzeMode_; }

  // Activation, then the dialog modally; in re-analyse mode the saved choices
  // run at once and the dialog appears only if they are refused.
  void ShowModal();
  // Sets both modes (add, edit = neither, re-analyse), then ShowModal.
  void ShowModal(bool addMode, bool reAnalyzeMode);
  void Activate();

  // The controls to and from the current data set's record.
  void SaveFormSettings();
  void RestoreFormSettings();
  // The controls as a record, in the record's field order.
  DataSetSettings ControlValues() const;
  void SetControlValues(const DataSetSettings& record);

  // OK: validates, files the record and starts reading and analysis. True when
  // the dialog was done with (hidden), false when it stays open.
  bool FinishUp();
  void Cancel();
  void SetChSelFile(const std::string& sChSelFile);
  // Empties the text boxes and resets the choices (the main window's Clear).
  void ResetControls();
  void ToggleDebug();

 protected:
  void reject() override { Cancel(); }
  void keyPressEvent(QKeyEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  void BuildControls();
  void UpdateChannelChoice();
  void UpdateOccurrenceChoice();
  void BrowseDataFile();
  void BrowseChSelFile();
  void CreateChSelFile();
  void FocusControl(const std::string& objectName);
  setup::SetupMode Mode() const;
  void CaretsToEnds();

  App& app_;
  bool addMode_ = false;
  bool reAnalyzeMode_ = false;

  QLineEdit* MaskEdBoxDataID_;
  QLineEdit* txtDataFile_;
  QPushButton* cmdDataFile_;
  QRadioButton* btnDataCycles_;
  QRadioButton* btnTempCycles_;
  QRadioButton* btnNumOccurrences_;
  QRadioButton* btnIPCOccurrences_;
  QLabel* LblOccurrenceLimit_;
  gui::UpDown* UpDownOccrLimit_;
  QRadioButton* btnFirstLastCh_;
  QLabel* LblFirstChannel_;
  QLineEdit* txtFirstCh_;
  gui::UpDown* UpDownFirstCh_;
  QLabel* LblLastChannel_;
  QLineEdit* txtLastCh_;
  gui::UpDown* UpDownLastCh_;
  QRadioButton* btnSelDataFile_;
  QLineEdit* txtChSelFile_;
  QPushButton* cmdChSelFile_;
  QPushButton* CmdCreateChSelFile_;
  QLabel* lblDebug_;
};

}  // namespace tarvenix
