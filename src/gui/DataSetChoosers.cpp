#include "DataSetChoosers.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "App.h"
#include "FormUtils.h"
#include "QtStrings.h"
#include "frmTarvenixSetup.h"

namespace tarvenix {

DataSetChooser::DataSetChooser(App& app, QWidget* parent, const char* objectName, const char* caption,
                               const char* prompt)
    : QDialog(parent), app_(app) {
  setObjectName(QString::fromLatin1(objectName));
  setWindowTitle(QString::fromLatin1(caption));
  auto* label = gui::Named(new QLabel(QString::fromLatin1(prompt), this), "Label1");
  list_ = gui::Named(new QComboBox(this), "cmbBoxDataSet", "Select data set to edit");
  list_->setMinimumContentsLength(28);
  list_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  QPushButton* ok = gui::MakeButton(this, "cmdBtnOK", "OK", "Press to accept changes");
  QPushButton* cancel = gui::MakeButton(this, "cmdBtnCancel", "Cancel", "Press to cancel changes");
  ok->setDefault(true);
  connect(ok, &QPushButton::clicked, this, [this] { Ok(); });
  connect(cancel, &QPushButton::clicked, this, [this] { Cancel(); });

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(label);
  layout->addWidget(list_);
  layout->addSpacing(8);
  layout->addLayout(gui::ButtonRow({ok, cancel, gui::MakeHelpButton(app_, this)}));
  layout->setSizeConstraint(QLayout::SetFixedSize);
}

int DataSetChooser::ShowModal() {
  Activate();
  return exec();
}

void DataSetChooser::Activate() {
  const Session& s = app_.session;
  list_->clear();
  for (int n = 1; n <= s.iNumDataSets; ++n)
    list_->addItem(ToQt(std::to_string(n) + " - " + s.sDataIDs(n)));
  list_->setCurrentIndex(list_->count() - 1);
}

void DataSetChooser::MakeSelectionCurrent() {
  if (list_->currentIndex() >= 0) app_.session.iDataSetNum = static_cast<int16_t>(list_->currentIndex() + 1);
}

frmTarvenixSelectDataSet::frmTarvenixSelectDataSet(App& app, QWidget* parent)
    : DataSetChooser(app, parent, "frmTarvenixSelectDataSet", "Select Data Set", "Select data set to view:") {}

void frmTarvenixSelectDataSet::Ok() {
  canceled_ = false;
  MakeSelectionCurrent();
  accept();
}

void frmTarvenixSelectDataSet::Cancel() {
  canceled_ = true;
  QDialog::reject();
}

frmTarvenixEdit::frmTarvenixEdit(App& app, QWidget* parent)
    : DataSetChooser(app, parent, "frmTarvenixEdit", "Edit Data Set", "Select data set to edit:") {}

void frmTarvenixEdit::Ok() {
  MakeSelectionCurrent();
  accept();
  app_.Setup().ShowModal(false, false);
}

void frmTarvenixEdit::Cancel() { QDialog::reject(); }

}  // namespace tarvenix
