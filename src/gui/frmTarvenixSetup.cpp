#include "frmTarvenixSetup.h"

#include <QDir>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>
#include <QVBoxLayout>

#include "base/Basic.h"
#include "session/FileUtils.h"
#include "session/Utils.h"
#include "App.h"
#include "Dialogs.h"
#include "FormUtils.h"
#include "QtStrings.h"
#include "setup/SetupSequence.h"
#include "UpDown.h"
#include "frmTarvenixData.h"
#include "frmTarvenixChSelFile.h"

namespace tarvenix {
namespace {

constexpr const char* kDataFileFilter = "Vorlantic Data History files (*.txt)|*.txt";
constexpr const char* kChSelFileFilter = "Channel Selection files (*.txt)|*.txt|All files (*.*)|*.*";

QRadioButton* Option(QWidget* parent, const char* name, const char* caption) {
  return gui::Named(new QRadioButton(QString::fromLatin1(caption), parent), name);
}

QLineEdit* TextBox(QWidget* parent, const char* name, const char* toolTip) {
  return gui::Named(new QLineEdit(parent), name, toolTip);
}

}  // namespace

frmTarvenixSetup::frmTarvenixSetup(App& app, QWidget* parent) : QDialog(parent), app_(app) {
  setObjectName(QStringLiteral("frmTarvenixSetup"));
  setWindowTitle(QStringLiteral("Tarvenix Setup"));
  BuildControls();

  // Load: the range is the first choice; a last channel handed over at
  // start-up fills its box.
  btnFirstLastCh_->setChecked(true);
  btnDataCycles_->setChecked(true);
  btnNumOccurrences_->setChecked(true);
  UpdateChannelChoice();
  UpdateOccurrenceChoice();
  if (app_.session.iLastCh != 0) txtLastCh_->setText(QString::number(app_.session.iLastCh));

}

void frmTarvenixSetup::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1 && event->modifiers() == Qt::NoModifier) {
    gui::ShowHelp(app_);
  } else if (gui::IsDebugToggleKey(event)) {
    ToggleDebug();
  } else {
    QDialog::keyPressEvent(event);
  }
}

void frmTarvenixSetup::BuildControls() {
  MaskEdBoxDataID_ = TextBox(this, "MaskEdBoxDataID", "Specify a text ID for this data set");
  MaskEdBoxDataID_->setMaxLength(128);
  txtDataFile_ = TextBox(this, "txtDataFile", "Specify the data history file");
  txtDataFile_->setMinimumWidth(380);
  cmdDataFile_ = gui::MakeButton(this, "cmdDataFile", "Browse...", "Press to select data history file");
  connect(cmdDataFile_, &QPushButton::clicked, this, &frmTarvenixSetup::BrowseDataFile);

  auto* files = new QGridLayout;
  files->addWidget(new QLabel(QStringLiteral("Data set identifier"), this), 0, 0);
  files->addWidget(MaskEdBoxDataID_, 0, 1, 1, 2);
  files->addWidget(new QLabel(QStringLiteral("Data history file"), this), 1, 0);
  files->addWidget(txtDataFile_, 1, 1);
  files->addWidget(cmdDataFile_, 1, 2);
  files->setColumnStretch(1, 1);

  // Cycle type.
  auto* cycleFrame = gui::Named(new QGroupBox(QStringLiteral("Select cycle type for analysis"), this), "FrameCycleType");
  btnDataCycles_ = Option(cycleFrame, "btnDataCycles", "Data Cycles");
  btnTempCycles_ = Option(cycleFrame, "btnTempCycles", "Temperature or Mechanical Cycles");
  auto* cycleLayout = new QVBoxLayout(cycleFrame);
  cycleLayout->addWidget(btnDataCycles_);
  cycleLayout->addWidget(btnTempCycles_);
  cycleLayout->addStretch();

  // Occurrence limit: a count with its up/down, or the IPC/JEDEC rule.
  auto* limitFrame = gui::Named(new QGroupBox(QStringLiteral("Occurrence Limit"), this), "FrameOccurrenceLimit");
  btnNumOccurrences_ = Option(limitFrame, "btnNumOccurrences", "Occurrences");
  btnIPCOccurrences_ = Option(limitFrame, "btnIPCOccurrences", "IPC/JEDEC Occurrences");
  LblOccurrenceLimit_ = gui::Named(new QLabel(QStringLiteral("1"), limitFrame), "LblOccurrenceLimit");
  LblOccurrenceLimit_->setFrameShape(QFrame::StyledPanel);
  LblOccurrenceLimit_->setFrameShadow(QFrame::Sunken);
  LblOccurrenceLimit_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  LblOccurrenceLimit_->setMinimumWidth(LblOccurrenceLimit_->fontMetrics().horizontalAdvance(QStringLiteral("00000")));
  UpDownOccrLimit_ = gui::Named(new gui::UpDown(LblOccurrenceLimit_, 0, 999, limitFrame), "UpDownOccrLimit");
  auto* limitLayout = new QGridLayout(limitFrame);
  limitLayout->addWidget(btnNumOccurrences_, 0, 0);
  auto* count = new QHBoxLayout;
  count->setSpacing(0);
  count->addWidget(LblOccurrenceLimit_);
  count->addWidget(UpDownOccrLimit_);
  limitLayout->addLayout(count, 0, 1);
  limitLayout->addWidget(btnIPCOccurrences_, 1, 0, 1, 2);
  limitLayout->setColumnStretch(2, 1);
  limitLayout->setRowStretch(2, 1);

  // Channels: a range, or a channel selection file.
  auto* channelFrame = gui::Named(new QGroupBox(QStringLiteral("Channels"), this), "FrameChannels");
  btnFirstLastCh_ = Option(channelFrame, "btnFirstLastCh", "Specify first and last channels");
  LblFirstChannel_ = gui::Named(new QLabel(QStringLiteral("First"), channelFrame), "LblFirstChannel");
  txtFirstCh_ = TextBox(channelFrame, "txtFirstCh", nullptr);
  UpDownFirstCh_ = gui::Named(new gui::UpDown(txtFirstCh_, 1, kMaxChannels, channelFrame), "UpDownFirstCh");
  LblLastChannel_ = gui::Named(new QLabel(QStringLiteral("Last"), channelFrame), "LblLastChannel");
  txtLastCh_ = TextBox(channelFrame, "txtLastCh", nullptr);
  UpDownLastCh_ = gui::Named(new gui::UpDown(txtLastCh_, 1, kMaxChannels, channelFrame), "UpDownLastCh");
  // The up/down arrows stand as high as the box they step.
  const int rowHeight = txtFirstCh_->sizeHint().height();
  for (QLineEdit* box : {txtFirstCh_, txtLastCh_}) {
    box->setFixedWidth(box->fontMetrics().horizontalAdvance(QStringLiteral("000000")) + 12);
    box->setAlignment(Qt::AlignRight);
  }
  for (QWidget* w : std::initializer_list<QWidget*>{LblOccurrenceLimit_, UpDownOccrLimit_, UpDownFirstCh_, UpDownLastCh_})
    w->setFixedHeight(rowHeight);
  btnSelDataFile_ = Option(channelFrame, "btnSelDataFile", "Specify Channel Selection File");
  txtChSelFile_ = TextBox(channelFrame, "txtChSelFile", "Specify Channel Selection File");
  cmdChSelFile_ = gui::MakeButton(channelFrame, "cmdChSelFile", "Browse...", "Press to select file");
  CmdCreateChSelFile_ = gui::MakeButton(channelFrame, "CmdCreateChSelFile", "Create", "Press to select file");
  connect(cmdChSelFile_, &QPushButton::clicked, this, &frmTarvenixSetup::BrowseChSelFile);
  connect(CmdCreateChSelFile_, &QPushButton::clicked, this, &frmTarvenixSetup::CreateChSelFile);

  auto* range = new QHBoxLayout;
  range->addSpacing(24);
  range->addWidget(LblFirstChannel_);
  auto* first = new QHBoxLayout;
  first->setSpacing(0);
  first->addWidget(txtFirstCh_);
  first->addWidget(UpDownFirstCh_);
  range->addLayout(first);
  range->addSpacing(16);
  range->addWidget(LblLastChannel_);
  auto* last = new QHBoxLayout;
  last->setSpacing(0);
  last->addWidget(txtLastCh_);
  last->addWidget(UpDownLastCh_);
  range->addLayout(last);
  range->addStretch();
  auto* fileRow = new QHBoxLayout;
  fileRow->addSpacing(24);
  fileRow->addWidget(txtChSelFile_, 1);
  fileRow->addWidget(cmdChSelFile_);
  fileRow->addWidget(CmdCreateChSelFile_);
  auto* channelLayout = new QVBoxLayout(channelFrame);
  channelLayout->addWidget(btnFirstLastCh_);
  channelLayout->addLayout(range);
  channelLayout->addSpacing(6);
  channelLayout->addWidget(btnSelDataFile_);
  channelLayout->addLayout(fileRow);

  connect(btnFirstLastCh_, &QRadioButton::toggled, this, &frmTarvenixSetup::UpdateChannelChoice);
  connect(btnNumOccurrences_, &QRadioButton::toggled, this, &frmTarvenixSetup::UpdateOccurrenceChoice);

  // The command row.
  lblDebug_ = gui::Named(new QLabel(QStringLiteral("Debug mode engaged"), this), "lblDebug");
  lblDebug_->setStyleSheet(QStringLiteral("color: #b00020; font-weight: bold;"));
  lblDebug_->setVisible(false);
  QPushButton* ok = gui::MakeButton(this, "cmdBtnOK", "OK", "Press to accept changes");
  QPushButton* cancel = gui::MakeButton(this, "cmdBtnCancel", "Cancel", "Press to cancel changes");
  ok->setDefault(true);
  connect(ok, &QPushButton::clicked, this, [this] { FinishUp(); });
  connect(cancel, &QPushButton::clicked, this, &frmTarvenixSetup::Cancel);
  auto* commands = new QHBoxLayout;
  commands->addWidget(lblDebug_);
  commands->addStretch();
  commands->addWidget(ok);
  commands->addWidget(cancel);
  commands->addWidget(gui::MakeHelpButton(app_, this));

  auto* choices = new QHBoxLayout;
  choices->addWidget(cycleFrame, 1);
  choices->addWidget(limitFrame, 1);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(files);
  layout->addLayout(choices);
  layout->addWidget(channelFrame);
  layout->addSpacing(4);
  layout->addLayout(commands);
  layout->setSizeConstraint(QLayout::SetMinimumSize);
}

void frmTarvenixSetup::UpdateChannelChoice() {
  const bool range = btnFirstLastCh_->isChecked();
  for (QWidget* w : std::initializer_list<QWidget*>{LblFirstChannel_, txtFirstCh_, UpDownFirstCh_, LblLastChannel_,
                                                   txtLastCh_, UpDownLastCh_})
    w->setEnabled(range);
  for (QWidget* w : std::initializer_list<QWidget*>{txtChSelFile_, cmdChSelFile_, CmdCreateChSelFile_})
    w->setEnabled(!range);
}

void frmTarvenixSetup::UpdateOccurrenceChoice() {
  const bool count = btnNumOccurrences_->isChecked();
  LblOccurrenceLimit_->setEnabled(count);
  UpDownOccrLimit_->setEnabled(count);
}

void frmTarvenixSetup::ShowModal() {
  Activate();
  if (reAnalyzeMode_ && result() == QDialog::Accepted) return;
  exec();
}

void frmTarvenixSetup::ShowModal(bool addMode, bool reAnalyzeMode) {
  SetAddMode(addMode);
  SetReAnalyzeMode(reAnalyzeMode);
  ShowModal();
}

void frmTarvenixSetup::Activate() {
  setResult(QDialog::Rejected);
  Session& s = app_.session;
  lblDebug_->setVisible(static_cast<bool>(s.bDebug));
  DataSetSettings controls = ControlValues();
  const std::string caption = setup::ActivateSetup(s, app_.ui, Mode(), controls);
  if (!caption.empty()) setWindowTitle(ToQt(caption));
  SetControlValues(controls);
  txtDataFile_->setFocus();
  CaretsToEnds();
  if (reAnalyzeMode_) FinishUp();
}

void frmTarvenixSetup::CaretsToEnds() {
  // The carets at the ends, so the file names show their last parts.
  txtDataFile_->setCursorPosition(static_cast<int>(txtDataFile_->text().size()));
  txtChSelFile_->setCursorPosition(static_cast<int>(txtChSelFile_->text().size()));
}

void frmTarvenixSetup::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  // Showing a dialog focuses its box as if tabbed into, which selects the whole
  // name; once that has happened, the caret goes back to the end.
  QTimer::singleShot(0, this, &frmTarvenixSetup::CaretsToEnds);
}

setup::SetupMode frmTarvenixSetup::Mode() const { return setup::ModeOf(addMode_, reAnalyzeMode_); }

DataSetSettings frmTarvenixSetup::ControlValues() const {
  DataSetSettings r;
  r.sDataFile = PathFromQt(txtDataFile_->text());
  r.sDataID = FromQt(MaskEdBoxDataID_->text());
  r.bNumOccurrences = btnNumOccurrences_->isChecked();
  r.bIPCOccurrences = btnIPCOccurrences_->isChecked();
  r.sOccurrenceLimit = FromQt(LblOccurrenceLimit_->text());
  r.bDataCycles = btnDataCycles_->isChecked();
  r.bTempCycles = btnTempCycles_->isChecked();
  r.bFirstLastCh = btnFirstLastCh_->isChecked();
  r.sFirstCh = FromQt(txtFirstCh_->text());
  r.sLastCh = FromQt(txtLastCh_->text());
  r.bChSelFile = btnSelDataFile_->isChecked();
  r.sChSelFile = PathFromQt(txtChSelFile_->text());
  return r;
}

void frmTarvenixSetup::SetControlValues(const DataSetSettings& r) {
  txtDataFile_->setText(PathToQt(r.sDataFile));
  MaskEdBoxDataID_->setText(ToQt(r.sDataID));
  // Each pair of choices is exclusive; a record that names neither keeps the
  // dialog's current choice.
  if (r.bNumOccurrences) btnNumOccurrences_->setChecked(true);
  if (r.bIPCOccurrences) btnIPCOccurrences_->setChecked(true);
  LblOccurrenceLimit_->setText(ToQt(r.sOccurrenceLimit));
  if (r.bDataCycles) btnDataCycles_->setChecked(true);
  if (r.bTempCycles) btnTempCycles_->setChecked(true);
  if (r.bFirstLastCh) btnFirstLastCh_->setChecked(true);
  txtFirstCh_->setText(ToQt(r.sFirstCh));
  txtLastCh_->setText(ToQt(r.sLastCh));
  if (r.bChSelFile) btnSelDataFile_->setChecked(true);
  txtChSelFile_->setText(PathToQt(r.sChSelFile));
}

void frmTarvenixSetup::SaveFormSettings() {
  app_.session.dataSetSettings(app_.session.iDataSetNum) = ControlValues();
}

void frmTarvenixSetup::RestoreFormSettings() {
  SetControlValues(app_.session.dataSetSettings(app_.session.iDataSetNum));
}

void frmTarvenixSetup::FocusControl(const std::string& objectName) {
  if (objectName.empty()) return;
  if (auto* w = findChild<QWidget*>(QString::fromStdString(objectName))) w->setFocus();
}

bool frmTarvenixSetup::FinishUp() {
  // The dialog is hidden before the file is read, so the results appear over
  // the main window.
  setup::FinishUpResult result =
      setup::FinishUp(app_.session, app_.ui, Mode(), ControlValues(), [this] { accept(); });
  if (!result.accepted) FocusControl(setup::FocusObjectName(result.focus));
  return result.accepted;
}

void frmTarvenixSetup::Cancel() {
  setup::CancelSetup(app_.session, app_.ui);
  QDialog::reject();
}

void frmTarvenixSetup::SetChSelFile(const std::string& sChSelFile) {
  txtChSelFile_->setText(PathToQt(sChSelFile));
  txtChSelFile_->setCursorPosition(static_cast<int>(txtChSelFile_->text().size()));
}

void frmTarvenixSetup::ResetControls() {
  for (QLineEdit* box : {MaskEdBoxDataID_, txtDataFile_, txtFirstCh_, txtLastCh_, txtChSelFile_}) box->clear();
  LblOccurrenceLimit_->setText(QStringLiteral("1"));
  btnDataCycles_->setChecked(true);
  btnNumOccurrences_->setChecked(true);
  btnFirstLastCh_->setChecked(true);
}

void frmTarvenixSetup::ToggleDebug() {
  app_.MainWindow().ToggleDebug();
  lblDebug_->setVisible(static_cast<bool>(app_.session.bDebug));
}

void frmTarvenixSetup::BrowseDataFile() {
  Session& s = app_.session;
  modUtils::Trapped(s, app_.ui, "frmTarvenixSetup.cmdDataFile", [&] {
    QString name = gui::FileDialogs::Ask(this, QStringLiteral("Select Data History File"),
                                         QString::fromLatin1(kDataFileFilter), PathToQt(s.sDataDir), true);
    if (name.isEmpty()) return;
    std::string path = PathFromQt(name);
    txtDataFile_->setText(PathToQt(path));
    txtDataFile_->setCursorPosition(static_cast<int>(txtDataFile_->text().size()));
    std::string folder, file;
    modUtils::GetPathAndFilename(path, folder, file);
    if (!folder.empty()) s.sDataDir = folder;
  });
}

void frmTarvenixSetup::BrowseChSelFile() {
  Session& s = app_.session;
  modUtils::Trapped(s, app_.ui, "frmTarvenixSetup.cmdChSelFile", [&] {
    if (txtDataFile_->text().isEmpty()) {
      modUtils::ShowMessage(s, app_.ui, modUtils::kMsgNotice, "",
                            "You must select a Data History file before browsing for a Channel Selection file!");
      return;
    }
    std::string folder, file;
    modUtils::GetPathAndFilename(PathFromQt(txtDataFile_->text()), folder, file);
    QString name = gui::FileDialogs::Ask(this, QStringLiteral("Select Channel Selection File"),
                                         QString::fromLatin1(kChSelFileFilter), PathToQt(folder), true);
    if (!name.isEmpty()) SetChSelFile(PathFromQt(name));
  });
}

void frmTarvenixSetup::CreateChSelFile() {
  Session& s = app_.session;
  modUtils::Trapped(s, app_.ui, "frmTarvenixSetup.CmdCreateChSelFile", [&] {
    if (txtDataFile_->text().isEmpty()) {
      modUtils::ShowMessage(s, app_.ui, modUtils::kMsgNotice, "",
                            "You must select a Data History file before creating a Channel Selection file!");
      return;
    }
    if (app_.ChSelFile().ShowModal(PathFromQt(txtDataFile_->text())))
      modUtils::ShowMessage(s, app_.ui, modUtils::kMsgConfirmation, "", "Channel Selection File was created successfully.");
  });
}

}  // namespace tarvenix
