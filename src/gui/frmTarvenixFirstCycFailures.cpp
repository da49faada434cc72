#include "frmTarvenixFirstCycFailures.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "App.h"
#include "FormUtils.h"
#include "QtStrings.h"
#include "input/FirstCycle.h"

namespace tarvenix {
namespace {

QFont Arial(const QWidget* w) { return QFont(QStringLiteral("Arial"), w->font().pointSize()); }

}  // namespace

frmTarvenixFirstCycFailures::frmTarvenixFirstCycFailures(App& app, QWidget* parent) : QDialog(parent), app_(app) {
  setObjectName(QStringLiteral("frmTarvenixFirstCycFailures"));
  setWindowTitle(QStringLiteral("First Cycle Data Events Found"));
  setFont(Arial(this));
  LblCycleType_ = gui::Named(
      new QLabel(QStringLiteral("The following channels have first data-cycle events:"), this), "LblCycleType");
  txtBox1_ = gui::Named(new QLineEdit(QStringLiteral("Text1"), this), "txtBox1");
  txtBox1_->setReadOnly(true);
  txtBox1_->setMinimumWidth(360);
  auto* question = gui::Named(new QLabel(QStringLiteral("Would you like to ignore these events?"), this), "Label1");
  QPushButton* yes = cmdBtnYes_ = gui::MakeButton(this, "cmdBtnYes", "Yes", "Press to accept changes");
  QPushButton* no = gui::MakeButton(this, "cmdBtnNo", "No", "Press to cancel changes");
  yes->setDefault(true);
  connect(yes, &QPushButton::clicked, this, [this] { Answer(true); });
  connect(no, &QPushButton::clicked, this, [this] { Answer(false); });

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(LblCycleType_);
  layout->addWidget(txtBox1_);
  layout->addSpacing(6);
  layout->addWidget(question);
  layout->addLayout(gui::ButtonRow({yes, no, gui::MakeHelpButton(app_, this)}));
  layout->setSizeConstraint(QLayout::SetFixedSize);
}

void frmTarvenixFirstCycFailures::UpdateData(const FirstCycleFlags& bFirstCycFailures) {
  txtBox1_->setText(ToQt(modTarvenix::FirstCycleChannelList(bFirstCycFailures)));
  txtBox1_->setCursorPosition(0);
}

void frmTarvenixFirstCycFailures::UpdateCycleMsg(bool bDataCycleAnalysis) {
  if (bDataCycleAnalysis) {
    setWindowTitle(QStringLiteral("First Data Cycle Events Found"));
    LblCycleType_->setText(QStringLiteral("The following channels have first data-cycle events:"));
  } else {
    setWindowTitle(QStringLiteral("First Temp. or Mech. Cycle Events Found"));
    LblCycleType_->setText(QStringLiteral("The following channels have first temp./mech.-cycle events:"));
  }
}

std::optional<bool> frmTarvenixFirstCycFailures::Ask(const FirstCycleFlags& flags, bool dataCycleAnalysis) {
  answer_.reset();
  UpdateData(flags);
  UpdateCycleMsg(dataCycleAnalysis);
  // Enter answers Yes each time, whichever button was clicked last time.
  cmdBtnYes_->setDefault(true);
  cmdBtnYes_->setFocus();
  exec();
  return answer_;
}

QString frmTarvenixFirstCycFailures::ListText() const { return txtBox1_->text(); }
QString frmTarvenixFirstCycFailures::CycleTypeText() const { return LblCycleType_->text(); }

void frmTarvenixFirstCycFailures::Answer(bool ignore) {
  answer_ = ignore;
  app_.session.bIgnoreFirstCycles = ignore;
  accept();
}

void frmTarvenixFirstCycFailures::reject() {
  // Closing without an answer leaves the previous answer in place.
  answer_.reset();
  QDialog::reject();
}

}  // namespace tarvenix
