// The main window: start-up and quitting, the single-instance lock, the
// hand-off file, its commands, the options dialog, the data set choosers and
// the about box.

#include <QComboBox>
#include <QDir>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QRadioButton>
#include <QTest>

#include <array>
#include <filesystem>

#include "Dialogs.h"
#include "frmAbout.h"
#include "frmDebug.h"
#include "frmTarvenixData.h"
#include "frmTarvenixSetup.h"
#include "support/GuiTest.h"

namespace tarvenix::test {
namespace {

using gui::Documents;
using gui::MessageBoxes;

class MainWindowTest : public GuiTest {
 protected:
  bool Enabled(const char* name) { return Find(&Main(), name)->isEnabled(); }
  static std::string NotThere(const std::string& file) {
    return "The file " + file + "\ncould not be opened for editing because it does not exist.";
  }
};

TEST_F(MainWindowTest, ASecondCopyIsRefusedTheFirstStartsWithTheHandOffAndQuittingWritesTheSettings) {
  MakeApp();
  QProcess holder;
  holder.start(QStringLiteral(TARVENIX_LOCK_HOLDER), {app->LockFilePath()});
  ASSERT_TRUE(holder.waitForReadyRead(10000)) << holder.readAllStandardError().toStdString();
  EXPECT_EQ(app->Main(), App::StartResult::Refused);
  EXPECT_EQ(MessageBoxes::Texts(), QStringList{"Error: Only one Tarvenix session allowed!"});
  EXPECT_EQ(MessageBoxes::History()[0].title, QStringLiteral("Multiple Tarvenix Instance Warning"));
  EXPECT_TRUE(app->session.sAppPath.empty()) << "nothing of the session was touched";
  // The first copy dies without cleaning up: its lock no longer counts.
  holder.kill();
  holder.waitForFinished();
  ASSERT_TRUE(QFile::exists(app->LockFilePath()));

  std::filesystem::create_directories(programFolder.File("Sounds"));
  for (const char* name : {"TurnOn.wav", "Ping.wav", "Attention.wav"}) programFolder.Write(std::string("Sounds/") + name, "RIFF");
  const std::string handed = dataHome.Write("handed.txt", "x");
  programFolder.Write("Dortemp.ini", "\"" + handed + "\",40\r\n");
  StartApp();
  EXPECT_TRUE(Main().isVisible());
  EXPECT_EQ(Main().windowTitle(), QStringLiteral("Quorvane Tarvenix v1.0.0"));
  EXPECT_FALSE(app->About().isVisible()) << "the splash has gone";
  EXPECT_EQ(Status(), QStringLiteral("Press 'Add Data Set' to begin."));
  EXPECT_EQ(app->session.iMinFailures, 5);
  WhenModal("frmTarvenixSetup", [&](QWidget* setup) {
    EXPECT_EQ(Text(setup, "txtDataFile").toStdString(), handed);
    EXPECT_EQ(Text(setup, "txtLastCh"), QStringLiteral("40"));
    Click(setup, "cmdBtnCancel");
  });
  Click(&Main(), "btnAddDataSet");
  // The start, a finished analysis and a notice (the readme is missing) each sound.
  Main().UpdateStatus("Analysis complete.");
  Trigger("mnuHelpReadme");
  EXPECT_EQ(gui::SoundLog::Played(), (QStringList{"TurnOn.wav", "Ping.wav", "Attention.wav"}));

  const std::string settings = dataHome.File("Vorlantic/Tarvenix.ini");
  MessageBoxes::SetNextAnswer(QMessageBox::No);
  Main().close();
  EXPECT_TRUE(Main().isVisible());
  EXPECT_EQ(LastMessage(), "Are you sure you want to quit Tarvenix?");
  EXPECT_FALSE(std::filesystem::exists(settings));
  Trigger("mnuUtilsEnableSounds");
  gui::SoundLog::Clear();
  Main().UpdateStatus("Analysis complete.");
  EXPECT_TRUE(gui::SoundLog::Played().isEmpty());
  app->Debug().show();
  MessageBoxes::SetNextAnswer(QMessageBox::Yes);
  Trigger("mnuUtilsExit");
  EXPECT_FALSE(Main().isVisible());
  EXPECT_FALSE(app->Debug().isVisible());
  EXPECT_NE(ReadAll(settings).find("Sound Status=False"), std::string::npos);
}

TEST_F(MainWindowTest, AFileNamedOnTheCommandLineOpensTheSetupWithItOverAHandOff) {
  const std::string handed = dataHome.Write("handed.txt", "x");
  const std::string named = dataHome.Write("named.txt", "x");
  for (const std::string& file : {named, dataHome.File("gone.txt")}) {
    SCOPED_TRACE(file);
    const bool exists = file == named;
    programFolder.Write("Dortemp.ini", "\"" + handed + "\",40\r\n");
    bool shown = false;
    auto expectFilled = [&](QWidget* setup) {
      shown = true;
      EXPECT_EQ(Find<QLineEdit>(setup, "txtDataFile")->text().toStdString(), exists ? named : handed);
      EXPECT_EQ(Find<QLineEdit>(setup, "txtLastCh")->text(), QStringLiteral("40"));
      Click(setup, "cmdBtnCancel");
    };
    if (exists) WhenModal("frmTarvenixSetup", expectFilled);
    StartApp(file);
    // A file that is not there names nothing: the program starts as without it.
    EXPECT_EQ(QTest::qWaitFor([&] { return shown; }, exists ? 5000 : 100), exists);
    if (!exists) {
      WhenModal("frmTarvenixSetup", expectFilled);
      Click(&Main(), "btnAddDataSet");
    }
  }
}

TEST_F(MainWindowTest, CommandsFollowTheNumberOfDataSetsAndAltF10TogglesDebugMode) {
  for (int loaded : {0, 1, 4, 5}) {
    LoadDataSets(loaded);
    EXPECT_EQ(Enabled("btnAddDataSet"), loaded < 5) << loaded;
    for (const char* name : {"btnEdit", "btnReAnalyze", "btnClear", "CmdPlot", "CmdSave", "CmdPrint", "CmdViewDataFile"})
      EXPECT_EQ(Enabled(name), loaded > 0) << name << " " << loaded;
  }
  QWidget* label = Find(&Main(), "lblDebug");
  for (bool on : {true, false}) {
    QTest::keyClick(&Main(), Qt::Key_F10, Qt::AltModifier);
    EXPECT_EQ(static_cast<bool>(app->session.bDebug), on);
    EXPECT_EQ(label->isVisible(), on);
  }
  // The setup dialog takes the key too, and the main window shows its effect.
  LoadDataSets(1);
  WhenModal("frmTarvenixSetup", [&](QWidget* setup) {
    QTest::keyClick(setup, Qt::Key_F10, Qt::AltModifier);
    EXPECT_TRUE(Find(setup, "lblDebug")->isVisible());
    Click(setup, "cmdBtnCancel");
  });
  Click(&Main(), "btnEdit");
  EXPECT_TRUE(label->isVisible());
}

TEST_F(MainWindowTest, OptionsAreTakenUntilAnAnalysisAndClearStartsAfresh) {
  const char* chosen[] = {"btnN63", "btnMedianFraction", "btn95Percent"};
  WhenModal("frmTarvenixOptions", [&](QWidget* options) {
    EXPECT_TRUE(Find<QRadioButton>(options, "btnN50")->isChecked());
    EXPECT_TRUE(Find<QRadioButton>(options, "btnUnadjustedFraction")->isChecked());
    for (const char* choice : chosen) Choose(options, choice);
    Click(options, "CmdBtnOK");
  });
  Trigger("mnuOptionsTarvenixOptions");
  EXPECT_EQ(app->session.iAnalysisOptions, (std::array<int16_t, 3>{1, 2, 1}));

  LoadDataSets(3);
  app->session.sDataFile = "/some/file.txt";
  Type(&app->Setup(), "txtLastCh", "12");
  Main().UpdateTextBox("Data Set #3");
  Main().UpdateTextBox("BETA = 2.03");
  EXPECT_EQ(Main().ResultsText(), "Data Set #3\r\nBETA = 2.03\r\n");
  EXPECT_TRUE(Find<QPlainTextEdit>(&Main(), "TextBox1")->textCursor().atEnd()) << "the newest line in view";
  Main().UpdateStatus("Analysis complete.");
  Trigger("mnuOptionsTarvenixOptions");
  EXPECT_EQ(LastMessage(),
            "Options changes can only be made before the 1st data set is analyzed.\n"
            "Click the 'Clear' button to reset the analysis, and then make the desired changes.");

  Click(&Main(), "btnClear");
  EXPECT_EQ(Log(), QString());
  EXPECT_EQ(Status(), QStringLiteral(" "));
  EXPECT_EQ(app->session.iNumDataSets + app->session.iDataSetNum, 0);
  EXPECT_TRUE(app->session.sDataFile.empty());
  EXPECT_EQ(app->session.sngNParam(2), 0.0f);
  EXPECT_FALSE(Enabled("btnClear"));
  EXPECT_TRUE(Find<QLineEdit>(&app->Setup(), "txtLastCh")->text().isEmpty());
  WhenModal("frmTarvenixOptions", [&](QWidget* options) {
    for (const char* choice : chosen) EXPECT_TRUE(Find<QRadioButton>(options, choice)->isChecked()) << choice;
    Click(options, "CmdBtnOK");
  });
  Trigger("mnuOptionsTarvenixOptions");
}

TEST_F(MainWindowTest, ViewDatafileAndEditAskWhichDataSetOnlyWhenThereAreSeveral) {
  LoadDataSets(1);
  Click(&Main(), "CmdViewDataFile");
  EXPECT_EQ(LastMessage(), NotThere(app->session.sDataFiles(1)));
  dataHome.Write("set1.txt", "data");
  Click(&Main(), "CmdViewDataFile");
  EXPECT_EQ(LastMessage(), "Can't find Quillet.exe. Try reinstalling Vorlantic.");
  // The companion viewer gets the file and "090".
  const std::string args = programFolder.File("viewer-args.txt");
  programFolder.Write("quillet.exe", "#!/bin/sh\nprintf '%s|' \"$@\" > '" + args + "'\n");
  std::filesystem::permissions(programFolder.File("quillet.exe"), std::filesystem::perms::owner_all);
  Click(&Main(), "CmdViewDataFile");
  const std::string expected = app->session.sDataFiles(1) + "|090|";
  for (int i = 0; i < 500 && ReadAll(args) != expected; ++i) QTest::qWait(10);
  EXPECT_EQ(ReadAll(args), expected);
  // Editing the only data set opens its setup at once.
  app->session.iDataSetNum = 0;
  WhenModal("frmTarvenixSetup", [&](QWidget* setup) {
    EXPECT_EQ(setup->windowTitle(), QStringLiteral("Tarvenix Setup for Data Set #1"));
    Click(setup, "cmdBtnCancel");
  });
  Click(&Main(), "btnEdit");

  // With the IPC/JEDEC limit chosen, the event array file of the data set chosen.
  LoadDataSets(3);
  Choose(&app->Setup(), "btnIPCOccurrences");
  WhenModal("frmTarvenixSelectDataSet", [&](QWidget* chooser) {
    auto* list = Find<QComboBox>(chooser, "cmbBoxDataSet");
    EXPECT_EQ(list->count(), 3);
    EXPECT_EQ(list->itemText(0), QStringLiteral("1 - A"));
    EXPECT_EQ(list->currentIndex(), 2);
    list->setCurrentIndex(1);
    Click(chooser, "cmdBtnOK");
  });
  Click(&Main(), "CmdViewDataFile");
  EXPECT_EQ(LastMessage(), NotThere(app->session.sIPCFiles(2)));
  MessageBoxes::Clear();
  WhenModal("frmTarvenixSelectDataSet", [&](QWidget* chooser) { Click(chooser, "cmdBtnCancel"); });
  Click(&Main(), "CmdViewDataFile");
  EXPECT_TRUE(MessageBoxes::History().empty());

  WhenModal("frmTarvenixEdit", [&](QWidget* chooser) {
    Find<QComboBox>(chooser, "cmbBoxDataSet")->setCurrentIndex(0);
    WhenModal("frmTarvenixSetup", [&](QWidget* setup) {
      EXPECT_EQ(setup->windowTitle(), QStringLiteral("Tarvenix Setup for Data Set #1"));
      Click(setup, "cmdBtnCancel");
    });
    Click(chooser, "cmdBtnOK");
  });
  Click(&Main(), "btnEdit");
  app->session.iDataSetNum = 3;
  WhenModal("frmTarvenixEdit", [&](QWidget* chooser) { Click(chooser, "cmdBtnCancel"); });
  Click(&Main(), "btnEdit");
  EXPECT_EQ(app->session.iDataSetNum, 3) << "cancelling the chooser changes nothing";
}

TEST_F(MainWindowTest, HelpReadmeExplorerAndAbout) {
  const std::string help = programFolder.File("Vorlantic.chm");
  Click(&Main(), "CmdHelp");
  EXPECT_EQ(Documents::Opened(), QStringList{QString::fromStdString(help)});
  Documents::SetOpenSucceeds(false);
  Trigger("mnuHelpContents");
  EXPECT_EQ(LastMessage(), "Could not open the file " + help);
  Documents::SetOpenSucceeds(true);
#ifndef Q_OS_WIN
  // Where compiled help has no viewer, its pages as HTML.
  std::filesystem::create_directories(programFolder.File("help"));
  programFolder.Write("help/index.html", "<html></html>");
  Click(&Main(), "CmdHelp");
  EXPECT_EQ(Documents::Opened().back().toStdString(), programFolder.File("help/index.html"));
#endif
  Trigger("mnuHelpReadme");
  EXPECT_EQ(LastMessage(), "The file " + programFolder.File("readme.txt") + " could not be found.");
  programFolder.Write("readme.txt", "read me");
  Trigger("mnuHelpReadme");
  EXPECT_EQ(Documents::Opened().back().toStdString(), programFolder.File("readme.txt"));

  // The data folder does not exist yet: the explorer opens the home folder.
  Trigger("mnuUtilsExplore");
  EXPECT_EQ(Documents::Opened().back(), QDir::toNativeSeparators(QDir::homePath()));
  app->session.sDataDir = dataHome.Path();
  Trigger("mnuUtilsExplore");
  EXPECT_EQ(Documents::Opened().back().toStdString(), dataHome.Path());

  WhenModal("frmAbout", [&](QWidget* about) {
    EXPECT_EQ(static_cast<frmAbout*>(about)->LabelText(),
              QStringLiteral("Tarvenix v1.0.0\nCopyright \u00A9 Quorvane. All rights reserved."));
    QTest::mouseClick(about, Qt::LeftButton);
  });
  Trigger("mnuHelpAbout");
  EXPECT_FALSE(app->About().isVisible());
}

TEST_F(MainWindowTest, SaveWritesTheReportAndPrintPrintsItOrTheSelection) {
  LoadDataSets(1);
  app->session.sDataDir = dataHome.Path();
  gui::FileDialogs::SetNextFileName(QString());
  Click(&Main(), "CmdSave");
  EXPECT_EQ(gui::FileDialogs::LastDefaultName().toStdString(), dataHome.File("analysis.txt"));
  EXPECT_TRUE(MessageBoxes::History().empty());
  Type(&Main(), "MaskEdBoxGrHeader", "Lot 7 drop test");
  for (bool view : {false, true}) {
    const std::string report = dataHome.File(view ? "b.txt" : "a.txt");
    gui::FileDialogs::SetNextFileName(QString::fromStdString(report));
    MessageBoxes::SetNextAnswer(view ? QMessageBox::Yes : QMessageBox::No);
    Documents::Clear();
    Click(&Main(), "CmdSave");
    EXPECT_NE(ReadAll(report).find("\r\nPlot Title: Lot 7 drop test\r\n"), std::string::npos);
    EXPECT_EQ(LastMessage(), "Data saved to disk.  Would you like to view the file?");
    EXPECT_EQ(Documents::Opened(), view ? QStringList{QString::fromStdString(report)} : QStringList{});
  }

  // The printed report goes through a scratch file that must not outlive the job.
  MessageBoxes::Clear();
  TempDir scratch;
  const bool hadTmp = qEnvironmentVariableIsSet("TMPDIR");
  const QByteArray tmp = qgetenv("TMPDIR");
  qputenv("TMPDIR", QByteArray::fromStdString(scratch.Path()));
  gui::PrintDialogs::SetNextAnswer({true, 1, false, QString::fromStdString(dataHome.File("report.pdf"))});
  Click(&Main(), "CmdPrint");
  hadTmp ? qputenv("TMPDIR", tmp) : qunsetenv("TMPDIR");
  EXPECT_FALSE(gui::PrintDialogs::LastOfferedSelection());
  EXPECT_EQ(ReadAll(dataHome.File("report.pdf")).substr(0, 5), "%PDF-");
  EXPECT_TRUE(std::filesystem::is_empty(scratch.Path()));
  EXPECT_TRUE(MessageBoxes::History().empty());

  Main().UpdateTextBox("BETA = 2.03");
  Find<QPlainTextEdit>(&Main(), "TextBox1")->selectAll();
  gui::PrintDialogs::SetNextAnswer({true, 1, true, QString::fromStdString(dataHome.File("no/such/folder/a.pdf"))});
  Click(&Main(), "CmdPrint");
  EXPECT_TRUE(gui::PrintDialogs::LastOfferedSelection());
  EXPECT_EQ(LastMessage().rfind("Error in modTarvenix.PrintRawData - Error #57", 0), 0u) << LastMessage();
  gui::PrintDialogs::SetPrinterInstalled(false);
  Click(&Main(), "CmdPrint");
  EXPECT_EQ(LastMessage(), gui::kNoPrinterMessage);
}

}  // namespace
}  // namespace tarvenix::test
