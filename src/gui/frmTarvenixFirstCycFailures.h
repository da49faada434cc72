#pragma once
// The question after the first pass when channels failed in cycle 0 or 1:
// lists them and asks whether to ignore them (Yes) or stop (No).

#include <QDialog>

#include <optional>
#include <string>

#include "session/UiPort.h"

class QLabel;
class QLineEdit;
class QPushButton;

namespace tarvenix {

struct Session;
class App;

class frmTarvenixFirstCycFailures : public QDialog {
  Q_OBJECT
 public:
  frmTarvenixFirstCycFailures(App& app, QWidget* parent);

  // The list: a blank and the number of every flagged channel, ascending.
  void UpdateData(const FirstCycleFlags& bFirstCycFailures);
  // Caption and label for data cycles or temperature/mechanical cycles.
  void UpdateCycleMsg(bool bDataCycleAnalysis);
  // UpdateData, UpdateCycleMsg, then the dialog modally: true for Yes, false
  // for No, nothing when it was closed another way.
  std::optional<bool> Ask(const FirstCycleFlags& flags, bool dataCycleAnalysis);

  QString ListText() const;
  QString CycleTypeText() const;

 protected:
  void reject() override;

 private:
  void Answer(bool ignore);

  App& app_;
  QLabel* LblCycleType_;
  QLineEdit* txtBox1_;
  QPushButton* cmdBtnYes_;
  std::optional<bool> answer_;
};

}  // namespace tarvenix
