#pragma once
// Asks how to save the plot as an image: the file name (without folder and
// extension), bitmap or JPEG, and whether to save the negative image.

#include <string>

#include <QDialog>

class QCheckBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace tarvenix {

class frmSystemSaveOptions : public QDialog {
  Q_OBJECT

 public:
  explicit frmSystemSaveOptions(QWidget* parent = nullptr);

  const std::string& SaveFilename() const { return saveFilename_; }
  void SetSaveFilename(const std::string& name) { saveFilename_ = name; }
  // 0 bitmap, any other JPEG.
  int16_t ImgType() const { return imgType_; }
  bool UseNegImage() const { return useNegImage_; }
  bool Canceled() const { return canceled_; }

 protected:
  void showEvent(QShowEvent* event) override;
  void reject() override;

 private:
  void CmdBtnOK_Click();
  void cmdBtnCancel_Click();

  QLineEdit* txtSaveFilename_;
  QRadioButton* optImgType_[2];
  QCheckBox* chkBoxNegativeImage_;
  QPushButton* CmdBtnOK_;
  QPushButton* cmdBtnCancel_;

  std::string saveFilename_;
  int16_t imgType_ = 0;
  bool useNegImage_ = false;
  bool canceled_ = false;
};

}  // namespace tarvenix
