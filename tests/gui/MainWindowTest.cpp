// The desktop program from its main window: start-up, the command states, the
// commands that need no analysis, and quitting.

#include <QAction>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProcess>
#include <QRadioButton>
#include <QTest>

#include <filesystem>

#include "frmDebug.h"
#include "Dialogs.h"
#include "frmAbout.h"
#include "frmTarvenixData.h"
#include "frmTarvenixSetup.h"
#include "support/FailurePoints.h"
#include "support/GuiTest.h"

namespace tarvenix::test {
namespace {

using gui::MessageBoxes;

class MainWindowTest : public GuiTest {
 protected:
  frmTarvenixData& Main() { return app->MainWindow(); }
  QString Status() { return Find<QLabel>(&Main(), "StatusBar1")->text(); }
  QString Log() { return Find<QPlainTextEdit>(&Main(), "TextBox1")->toPlainText(); }
  bool Enabled(const char* name) { return Find<QWidget>(&Main(), name)->isEnabled(); }
  void Trigger(const char* action) {
    auto* a = Main().findChild<QAction*>(QString::fromLatin1(action));
    ASSERT_NE(a, nullptr) << action;
    a->trigger();
  }
  // Data sets as a finished analysis leaves them, with IDs A, B, C... and last channels 10, 20, 30...
  void LoadDataSets(int count) {
    Session& s = app->session;
    for (int n = 1; n <= count; ++n) {
      const std::string name = "set" + std::to_string(n);
      s.sDataIDs(n) = std::string(1, static_cast<char>('A' + n - 1));
      s.sDataFiles(n) = dataHome.File(name + ".txt");
      s.sIPCFiles(n) = dataHome.File(name + ".ipc");
      s.sngNParam(n) = 1000.0f * static_cast<float>(n);
      s.dataSetSettings(n) = RangeSetup(s.sDataIDs(n), s.sDataFiles(n));
      s.dataSetSettings(n).sLastCh = std::to_string(10 * n);
    }
    s.iNumDataSets = static_cast<int16_t>(count);
    s.iDataSetNum = static_cast<int16_t>(count);
    Main().Activate();
  }
  std::string LastMessage() {
    return MessageBoxes::History().empty() ? "" : MessageBoxes::History().back().text.toStdString();
  }
  static std::string NotThere(const std::string& file) {
    return "The file " + file + "\ncould not be opened for editing because it does not exist.";
  }
};

TEST_F(MainWindowTest, StartsWithNoSettingsFileSoundsWhileOnAndQuittingWritesTheSettings) {
  std::filesystem::create_directories(programFolder.File("Sounds"));
  for (const char* name : {"TurnOn.wav", "Ping.wav", "Attention.wav", "Floop.wav"})
    programFolder.Write(std::string("Sounds/") + name, "RIFF");
  StartApp();
  EXPECT_TRUE(Main().isVisible());
  EXPECT_EQ(Main().windowTitle(), QStringLiteral("Quorvane Tarvenix v1.0.0"));
  EXPECT_EQ(Status(), QStringLiteral("Press 'Add Data Set' to begin."));
  EXPECT_FALSE(app->About().isVisible());
  EXPECT_EQ(app->session.iMinFailures, 5);
  EXPECT_FALSE(std::filesystem::exists(SettingsFile()));
  // The start, a finished analysis and a notice (the readme is missing) each sound.
  Main().UpdateStatus("Analysis complete.");
  Trigger("mnuHelpReadme");
  EXPECT_EQ(gui::SoundLog::Played(), (QStringList{"TurnOn.wav", "Ping.wav", "Attention.wav"}));

  MessageBoxes::SetNextAnswer(QMessageBox::No);
  Main().close();
  EXPECT_TRUE(Main().isVisible());
  EXPECT_FALSE(std::filesystem::exists(SettingsFile()));
  EXPECT_EQ(LastMessage(), "Are you sure you want to quit Tarvenix?");

  Trigger("mnuUtilsEnableSounds");
  EXPECT_FALSE(Main().findChild<QAction*>(QStringLiteral("mnuUtilsEnableSounds"))->isChecked());
  gui::SoundLog::Clear();
  Main().UpdateStatus("Analysis complete.");
  Trigger("mnuHelpReadme");
  EXPECT_TRUE(gui::SoundLog::Played().isEmpty());
  app->Debug().show();
  MessageBoxes::SetNextAnswer(QMessageBox::Yes);
  Trigger("mnuUtilsExit");
  EXPECT_FALSE(Main().isVisible());
  EXPECT_FALSE(app->Debug().isVisible());
  EXPECT_EQ(ReadAll(SettingsFile()),
            "[General]\r\nN50/N63 Parameter=0\r\nFailure Fraction=0\r\nConfidence Level=0\r\nSound Status=False\r\n");
}

TEST_F(MainWindowTest, ASecondCopyIsRefusedAndACrashedCopysLockIsNot) {
  MakeApp();
  QProcess holder;
  holder.start(QStringLiteral(TARVENIX_LOCK_HOLDER), {app->LockFilePath()});
  ASSERT_TRUE(holder.waitForReadyRead(10000)) << holder.errorString().toStdString() << " "
                                              << holder.readAllStandardError().toStdString();
  ASSERT_EQ(holder.readAllStandardOutput().trimmed(), QByteArray("locked"));

  EXPECT_EQ(app->Main(), App::StartResult::Refused);
  ASSERT_EQ(MessageBoxes::History().size(), 1u);
  EXPECT_EQ(MessageBoxes::History()[0].title, QStringLiteral("Multiple Tarvenix Instance Warning"));
  EXPECT_EQ(MessageBoxes::History()[0].text, QStringLiteral("Error: Only one Tarvenix session allowed!"));
  EXPECT_TRUE(app->session.sAppPath.empty());  // nothing of the session was touched

  // The first copy dies without cleaning up: its lock no longer counts.
  holder.kill();
  holder.waitForFinished();
  ASSERT_TRUE(QFile::exists(app->LockFilePath()));
  StartApp();
  EXPECT_TRUE(Main().isVisible());
}

TEST_F(MainWindowTest, AHandOffFileIsConsumedAndFillsTheFirstSetup) {
  const std::string data = dataHome.Write("handed.txt", "x");
  programFolder.Write("Dortemp.ini", "\"" + data + "\",40\r\n");
  StartApp();
  WhenModal("frmTarvenixSetup", [&](QWidget* setup) {
    EXPECT_EQ(Find<QLineEdit>(setup, "txtDataFile")->text().toStdString(), data);
    EXPECT_EQ(Find<QLineEdit>(setup, "txtLastCh")->text(), QStringLiteral("40"));
    Click(setup, "cmdBtnCancel");
  });
  Click(&Main(), "btnAddDataSet");
  EXPECT_EQ(app->session.iDataSetNum, 0);
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

TEST_F(MainWindowTest, CommandsFollowTheNumberOfDataSets) {
  StartApp();
  const char* others[] = {"btnEdit", "btnReAnalyze", "btnClear", "CmdPlot", "CmdSave", "CmdPrint", "CmdViewDataFile"};
  struct Case {
    int loaded;
    bool add;
    bool rest;
  };
  for (Case c : {Case{0, true, false}, Case{1, true, true}, Case{4, true, true}, Case{5, false, true}}) {
    SCOPED_TRACE(c.loaded);
    LoadDataSets(c.loaded);
    EXPECT_EQ(Enabled("btnAddDataSet"), c.add);
    for (const char* name : others) EXPECT_EQ(Enabled(name), c.rest) << name;
    EXPECT_TRUE(Enabled("CmdHelp") && Enabled("CmdExit"));
  }
  Main().SetCommandState("no such state");
  EXPECT_FALSE(Enabled("btnAddDataSet"));
}

TEST_F(MainWindowTest, AltF10TogglesDebugModeOnTheMainWindowAndTheSetupDialog) {
  StartApp();
  QLabel* label = Find<QLabel>(&Main(), "lblDebug");
  QTest::keyClick(&Main(), Qt::Key_F10, Qt::AltModifier);
  EXPECT_TRUE(static_cast<bool>(app->session.bDebug));
  EXPECT_TRUE(label->isVisible());
  QTest::keyClick(&Main(), Qt::Key_F10, Qt::AltModifier);
  EXPECT_FALSE(static_cast<bool>(app->session.bDebug));
  EXPECT_FALSE(label->isVisible());

  WhenModal("frmTarvenixSetup", [&](QWidget* setup) {
    QLabel* engaged = Find<QLabel>(setup, "lblDebug");
    EXPECT_FALSE(engaged->isVisible());
    QTest::keyClick(setup, Qt::Key_F10, Qt::AltModifier);
    EXPECT_TRUE(engaged->isVisible());
    EXPECT_EQ(engaged->text(), QStringLiteral("Debug mode engaged"));
    Click(setup, "cmdBtnCancel");
  });
  Click(&Main(), "btnAddDataSet");
  EXPECT_TRUE(static_cast<bool>(app->session.bDebug));
  EXPECT_TRUE(label->isVisible());
}

TEST_F(MainWindowTest, OptionsAreRefusedAfterAnAnalysisUntilClear) {
  StartApp();
  WhenModal("frmTarvenixOptions", [&](QWidget* options) {
    EXPECT_TRUE(Find<QRadioButton>(options, "btnN50")->isChecked());
    EXPECT_TRUE(Find<QRadioButton>(options, "btnUnadjustedFraction")->isChecked());
    Find<QRadioButton>(options, "btnN63")->setChecked(true);
    Find<QRadioButton>(options, "btnMedianFraction")->setChecked(true);
    Find<QRadioButton>(options, "btn95Percent")->setChecked(true);
    Click(options, "CmdBtnOK");
  });
  Trigger("mnuOptionsTarvenixOptions");
  EXPECT_EQ(app->session.iAnalysisOptions, (std::array<int16_t, 3>{1, 2, 1}));

  LoadDataSets(1);
  Main().UpdateStatus("Analysis complete.");
  EXPECT_TRUE(Main().AnalysisDone());
  Trigger("mnuOptionsTarvenixOptions");
  EXPECT_EQ(LastMessage(),
            "Options changes can only be made before the 1st data set is analyzed.\n"
            "Click the 'Clear' button to reset the analysis, and then make the desired changes.");

  Click(&Main(), "btnClear");
  EXPECT_FALSE(Main().AnalysisDone());
  WhenModal("frmTarvenixOptions", [&](QWidget* options) {
    EXPECT_TRUE(Find<QRadioButton>(options, "btnN63")->isChecked());
    EXPECT_TRUE(Find<QRadioButton>(options, "btnMedianFraction")->isChecked());
    EXPECT_TRUE(Find<QRadioButton>(options, "btn95Percent")->isChecked());
    Click(options, "CmdBtnOK");
  });
  Trigger("mnuOptionsTarvenixOptions");
}

TEST_F(MainWindowTest, ClearEmptiesTheSession) {
  StartApp();
  LoadDataSets(3);
  app->session.sDataFile = "/some/file.txt";
  Main().UpdateTextBox("Data Set #3");
  Main().UpdateStatus("Analysis complete.");
  Click(&Main(), "btnClear");
  EXPECT_EQ(Log(), QString());
  EXPECT_EQ(Status(), QStringLiteral(" "));
  EXPECT_EQ(app->session.iNumDataSets, 0);
  EXPECT_EQ(app->session.iDataSetNum, 0);
  EXPECT_TRUE(app->session.sDataFile.empty());
  EXPECT_EQ(app->session.sngNParam(2), 0.0f);
  EXPECT_TRUE(Enabled("btnAddDataSet"));
  EXPECT_FALSE(Enabled("btnClear"));
  EXPECT_TRUE(Find<QLineEdit>(&app->Setup(), "txtLastCh")->text().isEmpty());
}

TEST_F(MainWindowTest, ResultsBoxKeepsEveryLineAndShowsTheNewest) {
  StartApp();
  for (int i = 0; i < 200; ++i) Main().UpdateTextBox("line " + std::to_string(i));
  EXPECT_EQ(Main().ResultsText().substr(0, 16), "line 0\r\nline 1\r\n");
  auto* box = Find<QPlainTextEdit>(&Main(), "TextBox1");
  EXPECT_TRUE(box->textCursor().atEnd());
  EXPECT_TRUE(QFontInfo(box->font()).fixedPitch());
}

TEST_F(MainWindowTest, ViewDatafileAsksWhichDataSetOnlyWhenThereAreSeveral) {
  StartApp();
  LoadDataSets(1);
  Click(&Main(), "CmdViewDataFile");
  EXPECT_EQ(LastMessage(), NotThere(app->session.sDataFiles(1)));

  dataHome.Write("set1.txt", "data");
  Click(&Main(), "CmdViewDataFile");
  EXPECT_EQ(LastMessage(), "Can't find Quillet.exe. Try reinstalling Vorlantic.");

  // With the IPC/JEDEC limit chosen in the setup dialog, the event array file.
  Find<QRadioButton>(&app->Setup(), "btnIPCOccurrences")->setChecked(true);
  Click(&Main(), "CmdViewDataFile");
  EXPECT_EQ(LastMessage(), NotThere(app->session.sIPCFiles(1)));

  LoadDataSets(3);
  WhenModal("frmTarvenixSelectDataSet", [&](QWidget* chooser) {
    auto* list = Find<QComboBox>(chooser, "cmbBoxDataSet");
    EXPECT_EQ(list->count(), 3);
    EXPECT_EQ(list->itemText(0), QStringLiteral("1 - A"));
    EXPECT_EQ(list->itemText(2), QStringLiteral("3 - C"));
    EXPECT_EQ(list->currentIndex(), 2);
    list->setCurrentIndex(1);
    Click(chooser, "cmdBtnOK");
  });
  Click(&Main(), "CmdViewDataFile");
  EXPECT_EQ(app->session.iDataSetNum, 2);
  EXPECT_EQ(LastMessage(), NotThere(app->session.sIPCFiles(2)));

  MessageBoxes::Clear();
  WhenModal("frmTarvenixSelectDataSet", [&](QWidget* chooser) { Click(chooser, "cmdBtnCancel"); });
  Click(&Main(), "CmdViewDataFile");
  EXPECT_TRUE(MessageBoxes::History().empty());
}

TEST_F(MainWindowTest, EditOpensTheSetupAfterAChoiceAmongSeveralAndCancelStepsBack) {
  StartApp();
  const auto cancelTheFirst = [&](QWidget* setup) {
    EXPECT_EQ(setup->windowTitle(), QStringLiteral("Tarvenix Setup for Data Set #1"));
    EXPECT_EQ(Find<QLineEdit>(setup, "txtLastCh")->text(), QStringLiteral("10"));
    Click(setup, "cmdBtnCancel");
  };
  LoadDataSets(1);
  WhenModal("frmTarvenixSetup", cancelTheFirst);
  Click(&Main(), "btnEdit");
  EXPECT_EQ(app->session.iDataSetNum, 0);

  LoadDataSets(3);
  WhenModal("frmTarvenixEdit", [&](QWidget* chooser) {
    auto* list = Find<QComboBox>(chooser, "cmbBoxDataSet");
    EXPECT_EQ(list->currentText(), QStringLiteral("3 - C"));
    list->setCurrentIndex(0);
    WhenModal("frmTarvenixSetup", cancelTheFirst);
    Click(chooser, "cmdBtnOK");
  });
  Click(&Main(), "btnEdit");
  EXPECT_EQ(app->session.iDataSetNum, 0);

  // Cancelling the chooser changes nothing.
  app->session.iDataSetNum = 3;
  WhenModal("frmTarvenixEdit", [&](QWidget* chooser) { Click(chooser, "cmdBtnCancel"); });
  Click(&Main(), "btnEdit");
  EXPECT_EQ(app->session.iDataSetNum, 3);
}

TEST_F(MainWindowTest, HelpReadmeAboutAndExplorer) {
  StartApp();
  Click(&Main(), "CmdHelp");
  ASSERT_EQ(gui::Documents::Opened().size(), 1);
  EXPECT_EQ(gui::Documents::Opened()[0].toStdString(), programFolder.File("Vorlantic.chm"));

  gui::Documents::SetOpenSucceeds(false);
  Trigger("mnuHelpContents");
  EXPECT_EQ(LastMessage(), "Could not open the file " + programFolder.File("Vorlantic.chm"));
  gui::Documents::SetOpenSucceeds(true);

  Trigger("mnuHelpReadme");
  EXPECT_EQ(LastMessage(), "The file " + programFolder.File("readme.txt") + " could not be found.");
  programFolder.Write("readme.txt", "read me");
  Trigger("mnuHelpReadme");
  EXPECT_EQ(gui::Documents::Opened().back().toStdString(), programFolder.File("readme.txt"));

  // The data folder does not exist yet: the explorer opens the home folder.
  Trigger("mnuUtilsExplore");
  EXPECT_EQ(gui::Documents::Opened().back(), QDir::toNativeSeparators(QDir::homePath()));
  app->session.sDataDir = dataHome.Path();
  Trigger("mnuUtilsExplore");
  EXPECT_EQ(gui::Documents::Opened().back().toStdString(), dataHome.Path());

  WhenModal("frmAbout", [&](QWidget* about) {
    EXPECT_EQ(static_cast<frmAbout*>(about)->LabelText(),
              QStringLiteral("Tarvenix v1.0.0\nCopyright \u00A9 Quorvane. All rights reserved."));
    QTest::mouseClick(about, Qt::LeftButton);
  });
  Trigger("mnuHelpAbout");
  EXPECT_FALSE(app->About().isVisible());

  // Where compiled help has no viewer, its pages as HTML.
  std::filesystem::create_directories(programFolder.File("help"));
  programFolder.Write("help/index.html", "<html></html>");
  Click(&Main(), "CmdHelp");
#ifdef Q_OS_WIN
  EXPECT_EQ(gui::Documents::Opened().back().toStdString(), programFolder.File("Vorlantic.chm"));
#else
  EXPECT_EQ(gui::Documents::Opened().back().toStdString(), programFolder.File("help/index.html"));
#endif
}

TEST_F(MainWindowTest, SaveWritesTheReportAndOffersToShowIt) {
  StartApp();
  LoadDataSets(1);
  app->session.sDataDir = dataHome.Path();
  gui::FileDialogs::SetNextFileName(QString());
  Click(&Main(), "CmdSave");
  EXPECT_EQ(gui::FileDialogs::LastDefaultName().toStdString(), dataHome.File("analysis.txt"));
  EXPECT_TRUE(MessageBoxes::History().empty());

  Find<QLineEdit>(&Main(), "MaskEdBoxGrHeader")->setText("Lot 7 drop test");
  for (auto answer : {QMessageBox::No, QMessageBox::Yes}) {
    const std::string report = dataHome.File(answer == QMessageBox::No ? "a.txt" : "b.txt");
    gui::FileDialogs::SetNextFileName(QString::fromStdString(report));
    MessageBoxes::SetNextAnswer(answer);
    gui::Documents::Clear();
    Click(&Main(), "CmdSave");
    EXPECT_EQ(ReadAll(report).substr(0, 23), "Created using Tarvenix ");
    EXPECT_NE(ReadAll(report).find("\r\nPlot Title: Lot 7 drop test\r\n"), std::string::npos);
    EXPECT_EQ(LastMessage(), "Data saved to disk.  Would you like to view the file?");
    EXPECT_EQ(gui::Documents::Opened(),
              answer == QMessageBox::Yes ? QStringList{QString::fromStdString(report)} : QStringList{});
  }
}

TEST_F(MainWindowTest, PrintOffersTheLogSelectionOrSaysThereIsNoPrinter) {
  StartApp();
  LoadDataSets(1);
  Main().UpdateTextBox("BETA = 2.03");
  const std::string pdf = dataHome.File("report.pdf");
  gui::PrintDialogs::SetNextAnswer({true, 1, false, QString::fromStdString(pdf)});
  Click(&Main(), "CmdPrint");
  EXPECT_FALSE(gui::PrintDialogs::LastOfferedSelection());
  EXPECT_EQ(ReadAll(pdf).substr(0, 5), "%PDF-");
  EXPECT_TRUE(Find<QPlainTextEdit>(&Main(), "TextBox1")->hasFocus() || !Main().isActiveWindow());

  Find<QPlainTextEdit>(&Main(), "TextBox1")->selectAll();
  gui::PrintDialogs::SetNextAnswer({false, 1, false, {}});
  Click(&Main(), "CmdPrint");
  EXPECT_TRUE(gui::PrintDialogs::LastOfferedSelection());

  gui::PrintDialogs::SetPrinterInstalled(false);
  Click(&Main(), "CmdPrint");
  EXPECT_EQ(LastMessage(), gui::kNoPrinterMessage);
}

}  // namespace
}  // namespace tarvenix::test
