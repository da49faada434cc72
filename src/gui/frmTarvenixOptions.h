#pragma once
// The analysis options: N50 or N63, the failure fraction method and the
// confidence level. Shows the session's options on activation and stores them
// on OK; the settings file is written only when the program is quit.

#include <QDialog>

class QRadioButton;

namespace tarvenix {

class App;

class frmTarvenixOptions : public QDialog {
  Q_OBJECT
 public:
  frmTarvenixOptions(App& app, QWidget* parent);

  // Activation and the modal dialog.
  int ShowModal();
  void Activate();
  void Accept();  // CmdBtnOK

 private:
  App& app_;
  QRadioButton* btnN63_;
  QRadioButton* btnN50_;
  QRadioButton* btnUnadjusted_;
  QRadioButton* btnMean_;
  QRadioButton* btnMedian_;
  QRadioButton* btn90_;
  QRadioButton* btn95_;
};

}  // namespace tarvenix
