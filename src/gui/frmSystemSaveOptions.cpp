#include "frmSystemSaveOptions.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include "QtStrings.h"

namespace tarvenix {

frmSystemSaveOptions::frmSystemSaveOptions(QWidget* parent) : QDialog(parent) {
  setObjectName(QStringLiteral("frmSystemSaveOptions"));
  setWindowTitle(QStringLiteral("Save Plot Image"));
  setModal(true);

  txtSaveFilename_ = new QLineEdit(this);
  txtSaveFilename_->setObjectName(QStringLiteral("txtSaveFilename"));
  txtSaveFilename_->setToolTip(QStringLiteral("File name of the image, saved in the data file's folder"));
  txtSaveFilename_->setMinimumWidth(280);

  auto* type = new QGroupBox(QStringLiteral("Image type"), this);
  optImgType_[0] = new QRadioButton(QStringLiteral("Bitmap (.bmp)"), type);
  optImgType_[1] = new QRadioButton(QStringLiteral("JPEG (.jpg)"), type);
  optImgType_[0]->setObjectName(QStringLiteral("optImgType_0"));
  optImgType_[1]->setObjectName(QStringLiteral("optImgType_1"));
  optImgType_[0]->setChecked(true);
  auto* typeLayout = new QHBoxLayout(type);
  typeLayout->addWidget(optImgType_[0]);
  typeLayout->addWidget(optImgType_[1]);

  chkBoxNegativeImage_ = new QCheckBox(QStringLiteral("Negative image (dark blue on white)"), this);
  chkBoxNegativeImage_->setObjectName(QStringLiteral("chkBoxNegativeImage"));

  CmdBtnOK_ = new QPushButton(QStringLiteral("OK"), this);
  CmdBtnOK_->setObjectName(QStringLiteral("CmdBtnOK"));
  CmdBtnOK_->setDefault(true);
  cmdBtnCancel_ = new QPushButton(QStringLiteral("Cancel"), this);
  cmdBtnCancel_->setObjectName(QStringLiteral("cmdBtnCancel"));
  connect(CmdBtnOK_, &QPushButton::clicked, this, &frmSystemSaveOptions::CmdBtnOK_Click);
  connect(cmdBtnCancel_, &QPushButton::clicked, this, &frmSystemSaveOptions::cmdBtnCancel_Click);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(CmdBtnOK_);
  buttons->addWidget(cmdBtnCancel_);

  auto* layout = new QVBoxLayout(this);
  auto* nameLabel = new QLabel(QStringLiteral("File name:"), this);
  nameLabel->setBuddy(txtSaveFilename_);
  layout->addWidget(nameLabel);
  layout->addWidget(txtSaveFilename_);
  layout->addWidget(type);
  layout->addWidget(chkBoxNegativeImage_);
  layout->addLayout(buttons);
}

void frmSystemSaveOptions::showEvent(QShowEvent* event) {
  txtSaveFilename_->setText(ToQt(saveFilename_));
  txtSaveFilename_->selectAll();
  // Each time it opens, the name is where typing goes and OK answers Enter,
  // whatever had the focus when it closed last.
  txtSaveFilename_->setFocus();
  CmdBtnOK_->setDefault(true);
  QDialog::showEvent(event);
}

void frmSystemSaveOptions::CmdBtnOK_Click() {
  for (int16_t i = 0; i < 2; ++i) {
    if (optImgType_[i]->isChecked()) {
      imgType_ = i;
      break;
    }
  }
  useNegImage_ = chkBoxNegativeImage_->isChecked();
  saveFilename_ = FromQt(txtSaveFilename_->text());
  canceled_ = false;
  hide();
  done(QDialog::Accepted);
}

void frmSystemSaveOptions::cmdBtnCancel_Click() { reject(); }

void frmSystemSaveOptions::reject() {
  // Closing the dialog any other way is a cancel too.
  canceled_ = true;
  hide();
  QDialog::reject();
}

}  // namespace tarvenix
