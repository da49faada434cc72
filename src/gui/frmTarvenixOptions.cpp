#include "frmTarvenixOptions.h"

#include <QGroupBox>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "App.h"
#include "FormUtils.h"

namespace tarvenix {
namespace {

QGroupBox* Frame(QWidget* parent, const char* name, const char* caption, std::initializer_list<QRadioButton*> options) {
  auto* frame = gui::Named(new QGroupBox(QString::fromLatin1(caption), parent), name);
  auto* layout = new QVBoxLayout(frame);
  for (QRadioButton* b : options) layout->addWidget(b);
  return frame;
}

QRadioButton* Option(QWidget* parent, const char* name, const char* caption) {
  return gui::Named(new QRadioButton(QString::fromLatin1(caption), parent), name);
}

}  // namespace

frmTarvenixOptions::frmTarvenixOptions(App& app, QWidget* parent) : QDialog(parent), app_(app) {
  setObjectName(QStringLiteral("frmTarvenixOptions"));
  setWindowTitle(QStringLiteral("Tarvenix Options"));
  btnN63_ = Option(this, "btnN63", "N63 (characteristic life, 63.2 % failed)");
  btnN50_ = Option(this, "btnN50", "N50 (median life, 50 % failed)");
  btnUnadjusted_ = Option(this, "btnUnadjustedFraction", "Unadjusted (j/n)");
  btnMean_ = Option(this, "btnMeanFraction", "Mean (j/(n+1))");
  btnMedian_ = Option(this, "btnMedianFraction", "Median (j-0.3)/(n+0.4)");
  btn90_ = Option(this, "btn90Percent", "90 %");
  btn95_ = Option(this, "btn95Percent", "95 %");

  QPushButton* ok = gui::MakeButton(this, "CmdBtnOK", "OK", "Press to accept changes");
  ok->setDefault(true);
  connect(ok, &QPushButton::clicked, this, &frmTarvenixOptions::Accept);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(Frame(this, "FrameNParam", "Select Weibull shape parameter for analysis", {btnN50_, btnN63_}));
  layout->addWidget(Frame(this, "FrameFraction", "Select Weibull failure fraction calculation for analysis",
                          {btnUnadjusted_, btnMean_, btnMedian_}));
  layout->addWidget(Frame(this, "FrameConfidence", "Select Weibull confidence level for analysis", {btn90_, btn95_}));
  layout->addLayout(gui::ButtonRow({ok, gui::MakeHelpButton(app_, this)}));
  layout->setSizeConstraint(QLayout::SetFixedSize);
}

int frmTarvenixOptions::ShowModal() {
  Activate();
  return exec();
}

void frmTarvenixOptions::Activate() {
  const Session& s = app_.session;
  (s.NParamType() == NParam::N50 ? btnN50_ : btnN63_)->setChecked(true);
  const FractionMethod fraction = s.FractionType();
  (fraction == FractionMethod::Unadjusted ? btnUnadjusted_ : fraction == FractionMethod::Mean ? btnMean_ : btnMedian_)
      ->setChecked(true);
  (s.ConfidenceLevel() == ConfLevel::Percent90 ? btn90_ : btn95_)->setChecked(true);
}

void frmTarvenixOptions::Accept() {
  Session& s = app_.session;
  s.SetAnalysisOptions(btnN50_->isChecked() ? NParam::N50 : NParam::N63,
                       btnUnadjusted_->isChecked() ? FractionMethod::Unadjusted
                       : btnMean_->isChecked()     ? FractionMethod::Mean
                                                   : FractionMethod::Median,
                       btn90_->isChecked() ? ConfLevel::Percent90 : ConfLevel::Percent95);
  accept();
}

}  // namespace tarvenix
