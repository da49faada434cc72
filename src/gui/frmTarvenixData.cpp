#include "frmTarvenixData.h"

#include <QAction>
#include <QCloseEvent>
#include <QDir>
#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTextCursor>
#include <QToolButton>
#include <QVBoxLayout>

#include "base/Basic.h"
#include "session/FileUtils.h"
#include "session/Help.h"
#include "analysis/Messages.h"
#include "PrintRawData.h"
#include "analysis/Report.h"
#include "session/Sound.h"
#include "session/Utils.h"
#include "session/Viewer.h"
#include "App.h"
#include "DataSetChoosers.h"
#include "Dialogs.h"
#include "FormUtils.h"
#include "QtStrings.h"
#include "Icons.h"
#include "settings/SettingsIO.h"
#include "settings/Startup.h"
#include "frmAbout.h"
#include "frmTarvenixOptions.h"
#include "frmTarvenixSetup.h"
#include "plot/TGraph.h"
#include "frmTarvenixPlot.h"
#include "tarvenix/Version.h"

namespace tarvenix {
namespace {

QToolButton* PictureButton(QWidget* parent, const char* name, const char* toolTip, gui::IconId icon) {
  auto* button = gui::Named(new QToolButton(parent), name, toolTip);
  button->setIcon(gui::MakeIcon(icon));
  button->setIconSize(QSize(32, 32));
  button->setAutoRaise(false);
  button->setToolButtonStyle(Qt::ToolButtonIconOnly);
  button->setAccessibleName(QString::fromLatin1(toolTip));
  return button;
}

}  // namespace

frmTarvenixData::frmTarvenixData(App& app) : QMainWindow(nullptr), app_(app) {
  setObjectName(QStringLiteral("frmTarvenixData"));
  BuildMenus();
  BuildControls();
  // Load: caption, the commands of a fresh session, and the first hint.
  SetFormTitle();
  SetCommandState(kStatusStartup);
  UpdateStatus("Press 'Add Data Set' to begin.");
  resize(760, 560);
}

void frmTarvenixData::BuildMenus() {
  auto addItem = [this](QMenu* menu, const char* name, const char* caption, void (frmTarvenixData::*slot)()) {
    QAction* action = menu->addAction(QString::fromLatin1(caption));
    action->setObjectName(QString::fromLatin1(name));
    connect(action, &QAction::triggered, this, slot);
    return action;
  };
  QMenu* options = menuBar()->addMenu(QStringLiteral("&Options"));
  options->setObjectName(QStringLiteral("mnuOptionsTop"));
  addItem(options, "mnuOptionsTarvenixOptions", "&Tarvenix Options", &frmTarvenixData::TarvenixOptions);
  options->addSeparator()->setObjectName(QStringLiteral("mnuTestSep1"));
  addItem(options, "mnuUtilsExit", "&Exit", &frmTarvenixData::Exit);

  QMenu* utilities = menuBar()->addMenu(QStringLiteral("&Utilities"));
  utilities->setObjectName(QStringLiteral("mnuUtilities"));
  addItem(utilities, "mnuUtilsExplore", "Open Windows &Explorer", &frmTarvenixData::OpenExplorer);
  mnuUtilsEnableSounds_ =
      addItem(utilities, "mnuUtilsEnableSounds", "Enable Sound &Effects", &frmTarvenixData::ToggleSounds);
  mnuUtilsEnableSounds_->setCheckable(true);

  QMenu* help = menuBar()->addMenu(QStringLiteral("&Help"));
  help->setObjectName(QStringLiteral("mnuHelpTop"));
  addItem(help, "mnuHelpContents", "&Contents", &frmTarvenixData::Help);
  addItem(help, "mnuHelpReadme", "&Readme", &frmTarvenixData::Readme);
  help->addSeparator()->setObjectName(QStringLiteral("mnuTestSep2"));
  addItem(help, "mnuHelpAbout", "&About", &frmTarvenixData::About);
}

void frmTarvenixData::BuildControls() {
  auto* central = new QWidget(this);
  setCentralWidget(central);

  btnAddDataSet_ = gui::MakeButton(central, "btnAddDataSet", "Add Data Set", "Press to analyze a new set of data");
  btnEdit_ = gui::MakeButton(central, "btnEdit", "Edit Data Set", "Press to edit an existing set of data");
  btnReAnalyze_ = gui::MakeButton(central, "btnReAnalyze", "Reanalyze", "Press to reanalyze the current data set");
  btnClear_ = gui::MakeButton(central, "btnClear", "Clear", "Press to clear all current data sets");
  connect(btnAddDataSet_, &QPushButton::clicked, this, &frmTarvenixData::AddDataSet);
  connect(btnEdit_, &QPushButton::clicked, this, &frmTarvenixData::EditDataSet);
  connect(btnReAnalyze_, &QPushButton::clicked, this, &frmTarvenixData::ReAnalyze);
  connect(btnClear_, &QPushButton::clicked, this, &frmTarvenixData::Clear);

  CmdPlot_ = PictureButton(central, "CmdPlot", "Press to Graph", gui::IconId::Plot);
  CmdPrint_ = PictureButton(central, "CmdPrint", "Press to Print", gui::IconId::Print);
  CmdSave_ = PictureButton(central, "CmdSave", "Press to Save", gui::IconId::Save);
  CmdViewDataFile_ = PictureButton(central, "CmdViewDataFile", "Press to View Datafile", gui::IconId::ViewDataFile);
  CmdHelp_ = PictureButton(central, "CmdHelp", "Press for Help", gui::IconId::Help);
  CmdExit_ = PictureButton(central, "CmdExit", "Press to Exit Tarvenix", gui::IconId::Exit);
  connect(CmdPlot_, &QToolButton::clicked, this, &frmTarvenixData::Plot);
  connect(CmdPrint_, &QToolButton::clicked, this, &frmTarvenixData::Print);
  connect(CmdSave_, &QToolButton::clicked, this, &frmTarvenixData::Save);
  connect(CmdViewDataFile_, &QToolButton::clicked, this, &frmTarvenixData::ViewDataFile);
  connect(CmdHelp_, &QToolButton::clicked, this, &frmTarvenixData::Help);
  connect(CmdExit_, &QToolButton::clicked, this, &frmTarvenixData::Exit);

  auto* plotTitleLabel = new QLabel(QStringLiteral("Plot Title"), central);
  MaskEdBoxGrHeader_ =
      gui::Named(new QLineEdit(central), "MaskEdBoxGrHeader", "Enter header text to appear at the top of the plot");
  MaskEdBoxGrHeader_->setMaxLength(100);
  plotTitleLabel->setBuddy(MaskEdBoxGrHeader_);
  // The plot and the report read the title from the session.
  connect(MaskEdBoxGrHeader_, &QLineEdit::textChanged, this,
          [this](const QString& text) { app_.session.sPlotTitle = FromQt(text); });

  lblDebug_ = gui::Named(new QLabel(QStringLiteral("Debug mode"), central), "lblDebug");
  lblDebug_->setStyleSheet(QStringLiteral("color: #b00020; font-weight: bold;"));
  lblDebug_->setVisible(false);

  TextBox1_ = gui::Named(new QPlainTextEdit(central), "TextBox1");
  TextBox1_->setReadOnly(true);
  TextBox1_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  TextBox1_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  TextBox1_->setLineWrapMode(QPlainTextEdit::NoWrap);
  TextBox1_->setMinimumHeight(220);

  status_ = gui::Named(new QLabel(this), "StatusBar1");
  statusBar()->addWidget(status_, 1);
  statusBar()->setSizeGripEnabled(true);

  auto* commands = new QHBoxLayout;
  for (QPushButton* b : {btnAddDataSet_, btnEdit_, btnReAnalyze_, btnClear_}) {
    b->setMinimumWidth(b->sizeHint().width() + 16);
    commands->addWidget(b);
  }
  commands->addStretch();
  commands->addWidget(lblDebug_);

  auto* pictures = new QHBoxLayout;
  for (QToolButton* b : {CmdPlot_, CmdPrint_, CmdSave_, CmdViewDataFile_, CmdHelp_}) pictures->addWidget(b);
  pictures->addStretch();
  pictures->addWidget(CmdExit_);

  auto* title = new QHBoxLayout;
  title->addWidget(plotTitleLabel);
  title->addWidget(MaskEdBoxGrHeader_, 1);

  auto* layout = new QVBoxLayout(central);
  layout->addLayout(commands);
  layout->addLayout(title);
  layout->addWidget(TextBox1_, 1);
  layout->addLayout(pictures);
}

// --- Public operations -------------------------------------------------------

void frmTarvenixData::UpdateStatus(const std::string& sMsg) {
  status_->setText(ToQt(sMsg));
  if (sMsg == modTarvenix::kAnalysisComplete) {
    analysisDone_ = true;
    // A finished analysis is announced, as reading and errors are.
    modSound::PlaySound(app_.session, app_.ui, modSound::Sound::Ping);
  }
}

void frmTarvenixData::UpdateTextBox(const std::string& sMsg) {
  QTextCursor cursor = TextBox1_->textCursor();
  cursor.movePosition(QTextCursor::End);
  // The box holds one line per call; the line breaks inside a message stay.
  cursor.insertText(ToQt(sMsg) + QLatin1Char('\n'));
  TextBox1_->setTextCursor(cursor);
  TextBox1_->ensureCursorVisible();
}

std::string frmTarvenixData::ResultsText() const {
  QString text = TextBox1_->toPlainText();
  text.replace(QLatin1Char('\n'), QStringLiteral("\r\n"));
  return FromQt(text);
}

std::string frmTarvenixData::PlotTitle() const { return FromQt(MaskEdBoxGrHeader_->text()); }

void frmTarvenixData::UpdateParams(int16_t iDataSetNum, Bool16 bDebug) {
  app_.session.iDataSetNum = iDataSetNum;
  app_.session.bDebug = bDebug;
}

void frmTarvenixData::SetFormTitle() {
  setWindowTitle(ToQt("Quorvane Tarvenix v" + std::to_string(version::kMajor) + "." +
                      std::to_string(version::kMinor) + "." + std::to_string(version::kRevision)));
}

bool frmTarvenixData::OKToQuit() {
  return app_.ui.AskYesNo("Are you sure you want to quit Tarvenix?", "Quit Tarvenix");
}

void frmTarvenixData::SetCommandState(const std::string& status) {
  bool add = false;
  bool others = false;
  if (status == kStatusStartup) {
    add = true;
  } else if (status == kStatusSomeLoaded) {
    add = others = true;
  } else if (status == kStatusFull) {
    others = true;
  } else {
    return;
  }
  btnAddDataSet_->setEnabled(add);
  for (QWidget* w : std::initializer_list<QWidget*>{btnEdit_, btnReAnalyze_, btnClear_, CmdPlot_, CmdSave_, CmdPrint_,
                                                   CmdViewDataFile_})
    w->setEnabled(others);
}

void frmTarvenixData::Activate() {
  const Session& s = app_.session;
  lblDebug_->setVisible(static_cast<bool>(s.bDebug));
  SetCommandState(modTarvenix::SessionStatus(s.iNumDataSets));
  mnuUtilsEnableSounds_->setChecked(static_cast<bool>(s.bSoundStatus));
}

void frmTarvenixData::ToggleDebug() {
  Session& s = app_.session;
  s.bDebug = !s.bDebug;
  lblDebug_->setVisible(static_cast<bool>(s.bDebug));
}

bool frmTarvenixData::RunTrapped(const char* label, const std::function<void()>& body) {
  return modUtils::Trapped(app_.session, app_.ui, label, body);
}

void frmTarvenixData::keyPressEvent(QKeyEvent* event) {
  if (gui::IsDebugToggleKey(event)) {
    ToggleDebug();
  } else {
    QMainWindow::keyPressEvent(event);
  }
}

bool frmTarvenixData::event(QEvent* event) {
  if (event->type() == QEvent::WindowActivate) Activate();
  return QMainWindow::event(event);
}

// --- Commands ----------------------------------------------------------------

void frmTarvenixData::AddDataSet() {
  RunTrapped("frmTarvenixData.btnAddDataSet_Click", [&] {
    app_.Setup().ShowModal(true, false);
  });
  Activate();
  app_.Plot().FollowSession();
}

void frmTarvenixData::EditDataSet() {
  RunTrapped("frmTarvenixData.btnEdit_Click", [&] {
    if (app_.session.iNumDataSets == 1) {
      app_.session.iDataSetNum = 1;
      app_.Setup().ShowModal(false, false);
    } else {
      app_.Edit().ShowModal();
    }
  });
  Activate();
  app_.Plot().FollowSession();
}

void frmTarvenixData::ReAnalyze() {
  RunTrapped("frmTarvenixData.btnReAnalyze_Click", [&] {
    app_.Setup().ShowModal(false, true);
  });
  Activate();
  app_.Plot().FollowSession();
}

void frmTarvenixData::Clear() {
  RunTrapped("frmTarvenixData.btnClear_Click", [&] {
    Session& s = app_.session;
    SetCommandState(kStatusStartup);
    TextBox1_->clear();
    s.iDataSetNum = 0;
    app_.Setup().ResetControls();
    s.sDataFile.clear();
    UpdateStatus(" ");
    modTarvenix::ClearDataSets(s);
    analysisDone_ = false;
    app_.Plot().FollowSession();
  });
}

void frmTarvenixData::Plot() {
  RunTrapped("frmTarvenixData.CmdPlot_Click", [&] {
    Session& s = app_.session;
    Bool16 bCancel;
    modTGraph::PlotGuard(s, app_.ui, bCancel);
    if (bCancel) return;
    frmTarvenixPlot& plot = app_.Plot();
    plot.setTitle(FromQt(MaskEdBoxGrHeader_->text()));
    plot.show();
    plot.raise();
    plot.activateWindow();
    plot.Redraw();
  });
}

void frmTarvenixData::Print() {
  RunTrapped("frmTarvenixData.CmdPrint_Click", [&] {
    Session& s = app_.session;
    if (!gui::PrintDialogs::PrinterInstalled()) {
      modUtils::ShowMessage(s, app_.ui, modUtils::kMsgNotice, "", gui::kNoPrinterMessage);
      return;
    }
    const bool selection = TextBox1_->textCursor().hasSelection();
    std::optional<gui::PrintJob> job = gui::PrintDialogs::Ask(this, selection);
    if (job) {
      std::string text;
      if (job->selectionOnly) {
        QString selected = TextBox1_->textCursor().selectedText();
        selected.replace(QChar::ParagraphSeparator, QStringLiteral("\r\n"));
        text = FromQt(selected);
      }
      int16_t iErr = 0;
      modTarvenix::PrintRawData(s, app_.ui, *job->printer, text, static_cast<int16_t>(job->copies), iErr);
    }
    TextBox1_->setFocus();
  });
}

void frmTarvenixData::Save() {
  RunTrapped("frmTarvenixData.CmdSave_Click", [&] {
    Session& s = app_.session;
    QString name = gui::FileDialogs::Ask(this, QStringLiteral("Save Analysis"), QString(),
                                         PathToQt(modUtils::JoinPath(s.sDataDir, "analysis.txt")), false);
    if (name.isEmpty()) return;
    const std::string path = PathFromQt(name);
    int16_t iErr = 0;
    modTarvenix::SaveRawData(s, app_.ui, path, iErr);
    if (iErr != 0) return;
    if (app_.ui.AskYesNo("Data saved to disk.  Would you like to view the file?", modUtils::kMessageTitle))
      modUtils::ShellExec(s, app_.ui, path);
  });
}

void frmTarvenixData::ViewDataFile() {
  RunTrapped("frmTarvenixData.CmdViewDataFile", [&] {
    Session& s = app_.session;
    if (s.iNumDataSets > 1) {
      frmTarvenixSelectDataSet& chooser = app_.SelectDataSet();
      chooser.ShowModal();
      if (chooser.Canceled()) return;
    }
    const bool ipc = static_cast<bool>(app_.Setup().ControlValues().bIPCOccurrences);
    modTarvenix::ViewDataFile(s, app_.ui, ipc ? s.sIPCFiles(s.iDataSetNum) : s.sDataFiles(s.iDataSetNum));
  });
}

void frmTarvenixData::Help() { gui::ShowHelp(app_); }

void frmTarvenixData::Readme() {
  RunTrapped("frmTarvenixData.mnuHelpReadme_Click", [&] {
    Session& s = app_.session;
    const std::string readme = modUtils::JoinPath(s.sAppPath, modTarvenix::kReadmeFileName);
    if (!modUtils::IsFile(readme)) {
      modUtils::ShowMessage(s, app_.ui, modUtils::kMsgNotice, "", "The file " + readme + " could not be found.");
      return;
    }
    modUtils::ShellExec(s, app_.ui, readme);
  });
}

void frmTarvenixData::About() {
  RunTrapped("frmTarvenixData.mnuHelpAbout_Click", [&] {
    frmAbout& about = app_.About();
    about.setTitle("Tarvenix");
    about.exec();
  });
}

void frmTarvenixData::TarvenixOptions() {
  RunTrapped("frmTarvenixData.mnuOptionsTarvenixOptions_Click", [&] {
    if (analysisDone_) {
      app_.ui.ShowMessageBox(
          "Options changes can only be made before the 1st data set is analyzed.\r\n"
          "Click the 'Clear' button to reset the analysis, and then make the desired changes.",
          modUtils::kMessageTitle, MessageIcon::Exclamation);
      return;
    }
    app_.Options().ShowModal();
  });
}

void frmTarvenixData::ToggleSounds() {
  Session& s = app_.session;
  s.bSoundStatus = !s.bSoundStatus;
  mnuUtilsEnableSounds_->setChecked(static_cast<bool>(s.bSoundStatus));
}

void frmTarvenixData::OpenExplorer() {
  RunTrapped("frmBrasko.mnuUtilsExplore_Click", [&] {
    Session& s = app_.session;
    std::string folder = s.sDataDir;
    if (folder.empty() || !modUtils::IsDirectory(folder)) folder = s.sDefaultDataDir;
    if (folder.empty() || !modUtils::IsDirectory(folder)) folder = PathFromQt(QDir::homePath());
    modUtils::ShellExec(s, app_.ui, folder);
  });
}

void frmTarvenixData::Exit() { close(); }

void frmTarvenixData::closeEvent(QCloseEvent* event) {
  quitting_ = false;
  bool quit = false;
  RunTrapped("frmTarvenixData.Form_QueryUnload", [&] { quit = OKToQuit(); });
  if (!quit) {
    event->ignore();
    return;
  }
  RunTrapped("frmTarvenixData.Form_Unload", [&] {
    modIO::WriteTarvenixIni(app_.session, app_.ui);
    app_.UnloadWindows();
  });
  quitting_ = true;
  event->accept();
}

}  // namespace tarvenix
