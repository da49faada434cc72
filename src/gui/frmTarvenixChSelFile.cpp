#include "frmTarvenixChSelFile.h"

#include <QCheckBox>
#include <QDir>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>
#include <QVBoxLayout>

#include "session/Utils.h"
#include "App.h"
#include "Dialogs.h"
#include "FormUtils.h"
#include "QtStrings.h"
#include "Icons.h"
#include "UpDown.h"
#include "frmTarvenixSetup.h"

namespace tarvenix {
namespace {

using chselfile::kBoxesPerPage;

constexpr int kColumns = 8;
constexpr const char* kChSelFileFilter = "Channel Selection Files (*.txt)|*.txt";

QString IndexedName(const char* name, int index) { return QString::fromLatin1(name) + '_' + QString::number(index); }

QToolButton* ScrollButton(QWidget* parent, const char* name, const char* toolTip, gui::IconId picture) {
  auto* button = gui::Named(new QToolButton(parent), name, toolTip);
  button->setIcon(gui::MakeIcon(picture));
  return button;
}

// A channel box with its up/down, the up/down as high as the box.
QHBoxLayout* ChannelBox(QLineEdit* box, gui::UpDown* upDown) {
  box->setFixedWidth(box->fontMetrics().horizontalAdvance(QStringLiteral("000000")) + 12);
  box->setAlignment(Qt::AlignRight);
  upDown->setFixedHeight(box->sizeHint().height());
  auto* row = new QHBoxLayout;
  row->setSpacing(0);
  row->addWidget(box);
  row->addWidget(upDown);
  row->addStretch();
  return row;
}

}  // namespace

frmTarvenixChSelFile::frmTarvenixChSelFile(App& app, QWidget* parent) : QDialog(parent), app_(app) {
  setObjectName(QStringLiteral("frmTarvenixChSelFile"));
  setWindowTitle(QStringLiteral("Create Channel Selection File"));
  BuildControls();
  Option1_[0]->setChecked(true);
  Option1_Click();
  ShowPage();
}

void frmTarvenixChSelFile::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1 && event->modifiers() == Qt::NoModifier) {
    gui::ShowHelp(app_);
  } else {
    QDialog::keyPressEvent(event);
  }
}

QGroupBox* frmTarvenixChSelFile::BuildIndividualFrame() {
  FrameIndividual_ = gui::Named(new QGroupBox(QStringLiteral("Individual Channels"), this), "FrameIndividual");
  auto* boxes = new QGridLayout;
  boxes->setHorizontalSpacing(10);
  boxes->setVerticalSpacing(4);
  for (int i = 0; i < kBoxesPerPage; ++i) {
    auto* box = new QCheckBox(QStringLiteral("1024"), FrameIndividual_);
    box->setObjectName(IndexedName("Check1", i));
    // Every box as wide as the widest caption, so the columns stay put from
    // page to page.
    box->setMinimumWidth(box->sizeHint().width());
    Check1_[i] = box;
    boxes->addWidget(box, i / kColumns, i % kColumns);
  }

  CmdBtnScrollLeft_ = ScrollButton(FrameIndividual_, "CmdBtnScrollLeft", "Previous 64 channels", gui::IconId::PageLeft);
  CmdBtnScrollRight_ = ScrollButton(FrameIndividual_, "CmdBtnScrollRight", "Next 64 channels", gui::IconId::PageRight);
  auto* clearAll = gui::MakeButton(FrameIndividual_, "CmdBtnClearAll", "Clear All", nullptr);
  auto* clearPage = gui::MakeButton(FrameIndividual_, "CmdBtnClearPage", "Clear Page", nullptr);
  CmdBtnClearAll_ = clearAll;
  CmdBtnClearPage_ = clearPage;
  connect(CmdBtnScrollLeft_, &QToolButton::clicked, this, [this] { Scroll(-1); });
  connect(CmdBtnScrollRight_, &QToolButton::clicked, this, [this] { Scroll(1); });
  connect(clearAll, &QPushButton::clicked, this, &frmTarvenixChSelFile::ClearAll);
  connect(clearPage, &QPushButton::clicked, this, &frmTarvenixChSelFile::ClearPage);
  // The arrows as high as the push buttons beside them, and large enough to
  // be seen at a glance.
  const int height = clearAll->sizeHint().height();
  for (QToolButton* b : {CmdBtnScrollLeft_, CmdBtnScrollRight_}) {
    b->setFixedSize(height * 3 / 2, height);
    b->setIconSize(QSize(height * 3 / 5, height * 3 / 5));
  }

  auto* pageRow = new QHBoxLayout;
  pageRow->addWidget(CmdBtnScrollLeft_);
  pageRow->addWidget(CmdBtnScrollRight_);
  pageRow->addStretch();
  pageRow->addWidget(clearPage);
  pageRow->addWidget(clearAll);
  auto* layout = new QVBoxLayout(FrameIndividual_);
  layout->addLayout(boxes);
  layout->addSpacing(6);
  layout->addLayout(pageRow);
  return FrameIndividual_;
}

QGroupBox* frmTarvenixChSelFile::BuildRangeFrame() {
  FrameRange_ = gui::Named(new QGroupBox(QStringLiteral("Range Of Channels"), this), "FrameRange");
  txtFirstCh_ = gui::Named(new QLineEdit(FrameRange_), "txtFirstCh");
  txtLastCh_ = gui::Named(new QLineEdit(FrameRange_), "txtLastCh");
  auto* upDownFirst = gui::Named(new gui::UpDown(txtFirstCh_, 1, kMaxChannels, FrameRange_), "UpDownFirstCh");
  auto* upDownLast = gui::Named(new gui::UpDown(txtLastCh_, 1, kMaxChannels, FrameRange_), "UpDownLastCh");
  auto* layout = new QGridLayout(FrameRange_);
  layout->addWidget(gui::Named(new QLabel(QStringLiteral("First"), FrameRange_), "LblFirstChannel"), 0, 0);
  layout->addLayout(ChannelBox(txtFirstCh_, upDownFirst), 0, 1);
  layout->addWidget(gui::Named(new QLabel(QStringLiteral("Last"), FrameRange_), "LblLastChannel"), 1, 0);
  layout->addLayout(ChannelBox(txtLastCh_, upDownLast), 1, 1);
  layout->setRowStretch(2, 1);
  return FrameRange_;
}

void frmTarvenixChSelFile::BuildControls() {
  Option1_[0] = gui::Named(new QRadioButton(QStringLiteral("Specify Individual Channels"), this), "Option1_0");
  Option1_[1] = gui::Named(new QRadioButton(QStringLiteral("Specify Range Of Channels"), this), "Option1_1");
  for (QRadioButton* option : Option1_)
    connect(option, &QRadioButton::toggled, this, &frmTarvenixChSelFile::Option1_Click);

  auto* ways = new QGridLayout;
  ways->addWidget(Option1_[0], 0, 0);
  ways->addWidget(BuildIndividualFrame(), 1, 0);
  ways->addWidget(Option1_[1], 0, 1);
  ways->addWidget(BuildRangeFrame(), 1, 1);
  ways->setHorizontalSpacing(12);

  txtChSelFile_ = gui::Named(new QLineEdit(this), "txtChSelFile", "Type in a name for the Channel Selection File");
  auto* browse = gui::MakeButton(this, "cmdChSelFile", "...", "Press to select data history file");
  browse->setFixedWidth(browse->fontMetrics().horizontalAdvance(QStringLiteral("...")) + 24);
  connect(browse, &QPushButton::clicked, this, &frmTarvenixChSelFile::BrowseChSelFile);
  auto* fileRow = new QHBoxLayout;
  fileRow->addWidget(gui::Named(new QLabel(QStringLiteral("Filename"), this), "LblFilename"));
  fileRow->addWidget(txtChSelFile_, 1);
  fileRow->addWidget(browse);

  QPushButton* ok = gui::MakeButton(this, "cmdBtnOK", "OK", "Press to accept changes");
  QPushButton* cancel = gui::MakeButton(this, "cmdBtnCancel", "Cancel", "Press to cancel changes");
  ok->setDefault(true);
  connect(ok, &QPushButton::clicked, this, &frmTarvenixChSelFile::OK);
  connect(cancel, &QPushButton::clicked, this, &frmTarvenixChSelFile::reject);

  auto* layout = new QVBoxLayout(this);
  layout->addLayout(ways);
  layout->addSpacing(6);
  layout->addLayout(fileRow);
  layout->addSpacing(4);
  layout->addLayout(gui::ButtonRow({ok, cancel, gui::MakeHelpButton(app_, this)}));
  layout->setSizeConstraint(QLayout::SetFixedSize);
}

bool frmTarvenixChSelFile::ShowModal(const std::string& dataFile) {
  Activate(dataFile);
  exec();
  return written_;
}

void frmTarvenixChSelFile::Activate(const std::string& dataFile) {
  written_ = false;
  modUtils::Trapped(app_.session, app_.ui, "frmTarvenixChSelFile.Form_Activate", [&] {
    txtChSelFile_->setText(PathToQt(chselfile::ProposedFileName(app_.session.sDataDir, dataFile)));
    txtChSelFile_->setCursorPosition(static_cast<int>(txtChSelFile_->text().size()));
  });
  Option1_[0]->setChecked(true);
  Option1_Click();
  pages_.Reset();
  ShowPage();
  Check1_[0]->setFocus();
}

void frmTarvenixChSelFile::Option1_Click() {
  const bool individual = Option1_[0]->isChecked();
  FrameIndividual_->setEnabled(individual);
  FrameRange_->setEnabled(!individual);
}

chselfile::PageTicks frmTarvenixChSelFile::BoxTicks() const {
  chselfile::PageTicks ticks{};
  for (int i = 0; i < kBoxesPerPage; ++i) ticks[i] = Check1_[i]->isChecked();
  return ticks;
}

void frmTarvenixChSelFile::ShowPage() {
  const chselfile::PageTicks ticks = pages_.Ticks();
  for (int i = 0; i < kBoxesPerPage; ++i) {
    Check1_[i]->setText(QString::number(pages_.Channel(i)));
    Check1_[i]->setChecked(ticks[i]);
  }
}

void frmTarvenixChSelFile::Scroll(int direction) {
  pages_.StorePage(BoxTicks());
  pages_.MovePage(direction);
  ShowPage();
}

void frmTarvenixChSelFile::ClearAll() {
  pages_.ClearAll();
  ShowPage();
}

void frmTarvenixChSelFile::ClearPage() {
  pages_.ClearPage();
  ShowPage();
}

void frmTarvenixChSelFile::BrowseChSelFile() {
  Session& s = app_.session;
  modUtils::Trapped(s, app_.ui, "frmTarvenixChSelFile.cmdChSelFile", [&] {
    // Opens in the data folder, offering the name in the box. OK asks before
    // an existing file is replaced, so the dialog does not ask as well.
    std::string folder, name;
    modUtils::GetPathAndFilename(PathFromQt(txtChSelFile_->text()), folder, name);
    const QString chosen = gui::FileDialogs::Ask(this, QStringLiteral("Create Channel Selection File"),
                                                 QString::fromLatin1(kChSelFileFilter),
                                                 PathToQt(modUtils::JoinPath(s.sDataDir, name)), false, false);
    if (chosen.isEmpty()) return;
    txtChSelFile_->setText(QDir::toNativeSeparators(chosen));
    txtChSelFile_->setCursorPosition(static_cast<int>(txtChSelFile_->text().size()));
  });
}

void frmTarvenixChSelFile::OK() {
  chselfile::EditorEntries entries;
  entries.sChSelFile = PathFromQt(txtChSelFile_->text());
  entries.individual = Option1_[0]->isChecked();
  entries.sFirstCh = FromQt(txtFirstCh_->text());
  entries.sLastCh = FromQt(txtLastCh_->text());
  const chselfile::OkResult result =
      chselfile::WriteChSelFile(app_.session, app_.ui, entries, pages_, BoxTicks(), retryClock_);
  if (!result.written) {
    if (result.focus != setup::SetupFocus::None)
      if (auto* box = findChild<QWidget*>(QString::fromLatin1(setup::FocusObjectName(result.focus)))) box->setFocus();
    return;
  }
  written_ = true;
  app_.Setup().SetChSelFile(entries.sChSelFile);
  accept();
}

}  // namespace tarvenix
