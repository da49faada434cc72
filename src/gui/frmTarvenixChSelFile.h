#pragma once
// "Create Channel Selection File": builds a channel selection file without a
// text editor, from channels ticked on pages of 64 boxes or from a first and
// last channel, and hands the written file to the setup dialog.

#include <QDialog>

#include <array>
#include <string>

#include "session/FileUtils.h"
#include "setup/ChSelFileEditor.h"

class QCheckBox;
class QGroupBox;
class QLineEdit;
class QRadioButton;
class QToolButton;

namespace tarvenix {

class App;

class frmTarvenixChSelFile : public QDialog {
  Q_OBJECT
 public:
  frmTarvenixChSelFile(App& app, QWidget* parent);

  // Activation for the data history file `dataFile`, then the editor modally.
  // True when a file was written (its path is then in the setup dialog).
  bool ShowModal(const std::string& dataFile);
  // Proposes the file name, chooses individual channels and clears them all.
  void Activate(const std::string& dataFile);

  // The page on show, the channels stored so far (tests and screenshots).
  const chselfile::ChannelPages& Pages() const { return pages_; }
  // How OK's file opening waits between attempts (tests move a fake clock).
  void SetRetryClock(modUtils::RetryClock clock) { retryClock_ = std::move(clock); }

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void BuildControls();
  QGroupBox* BuildIndividualFrame();
  QGroupBox* BuildRangeFrame();
  void Option1_Click();
  void Scroll(int direction);
  void ClearAll();
  void ClearPage();
  void ShowPage();
  chselfile::PageTicks BoxTicks() const;
  void BrowseChSelFile();
  void OK();

  App& app_;
  chselfile::ChannelPages pages_;
  modUtils::RetryClock retryClock_ = modUtils::SystemRetryClock();
  bool written_ = false;

  std::array<QRadioButton*, 2> Option1_{};
  QGroupBox* FrameIndividual_;
  QGroupBox* FrameRange_;
  std::array<QCheckBox*, chselfile::kBoxesPerPage> Check1_{};
  QToolButton* CmdBtnScrollLeft_;
  QToolButton* CmdBtnScrollRight_;
  QWidget* CmdBtnClearAll_;
  QWidget* CmdBtnClearPage_;
  QLineEdit* txtFirstCh_;
  QLineEdit* txtLastCh_;
  QLineEdit* txtChSelFile_;
};

}  // namespace tarvenix
