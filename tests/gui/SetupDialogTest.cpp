// The setup dialog from the main window: adding, editing and re-analysing a
// simulated test's data set, the choices it keeps, its controls, a refusal,
// and the first-cycle question it leads to.

#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include <filesystem>
#include <tuple>

#include "Dialogs.h"
#include "frmTarvenixData.h"
#include "frmTarvenixSetup.h"
#include "support/GuiTest.h"

namespace tarvenix::test {
namespace {

using gui::FileDialogs;
using gui::MessageBoxes;

class SetupDialogTest : public GuiTest {
 protected:
  frmTarvenixSetup& Dialog() { return app->Setup(); }
  bool Enabled(const char* name) { return Find(&Dialog(), name)->isEnabled(); }
};

TEST_F(SetupDialogTest, AddAnalysesAFileChosenInAnyFolderEditRenamesAndReanalyzeRepeats) {
  std::filesystem::create_directories(dataHome.File("Pr\u00fcfung 85\u00b0C"));
  const std::string file = Simulate("Pr\u00fcfung 85\u00b0C/board.txt", {.seed = 7});
  app->session.sDataDir = dataHome.Path();
  AddDataSet("", [&](QWidget* setup) {
    Type(setup, "MaskEdBoxDataID", "Board A");
    FileDialogs::SetNextFileName(QString::fromStdString(file));
    Click(setup, "cmdDataFile");
    EXPECT_EQ(FileDialogs::LastFilter(), QStringLiteral("Vorlantic Data History files (*.txt)"));
    EXPECT_EQ(FileDialogs::LastDefaultName().toStdString(), dataHome.Path());
    FileDialogs::SetNextFileName(QString());
    Click(setup, "cmdDataFile");
    EXPECT_EQ(Text(&Dialog(), "txtDataFile"), QString::fromStdString(file)) << "a cancelled dialog keeps the box";
    EXPECT_EQ(app->session.sDataDir, dataHome.File("Pr\u00fcfung 85\u00b0C")) << "the next browse starts there";
  });
  EXPECT_FALSE(Dialog().isVisible());
  EXPECT_EQ(Status(), QStringLiteral("Analysis complete."));
  EXPECT_EQ(app->session.sDataIDs(1), "Board A");

  WhenModal("frmTarvenixSetup", [&](QWidget* setup) {
    EXPECT_EQ(Text(&Dialog(), "MaskEdBoxDataID"), QStringLiteral("Board A"));
    Type(setup, "MaskEdBoxDataID", "Board A, retested");
    Click(setup, "cmdBtnOK");
  });
  Click(&Main(), "btnEdit");
  EXPECT_EQ(app->session.sDataIDs(1), "Board A, retested");

  const qsizetype blocks = Log().count(QStringLiteral("BETA ="));
  Click(&Main(), "btnReAnalyze");
  EXPECT_FALSE(Dialog().isVisible());
  EXPECT_EQ(Log().count(QStringLiteral("BETA =")), blocks + 1);
  EXPECT_EQ(app->session.iNumDataSets, 1);
  EXPECT_EQ(Status(), QStringLiteral("Analysis complete."));
}

TEST_F(SetupDialogTest, EditShowsEveryChoiceOfTheRecordAndAddStartsTheNextWithDefaults) {
  const DataSetSettings r{.sDataFile = "/data/run.txt", .sDataID = "Lot 7", .bNumOccurrences = false,
                          .bIPCOccurrences = true, .sOccurrenceLimit = "3", .bDataCycles = false, .bTempCycles = true,
                          .bFirstLastCh = false, .sFirstCh = "2", .sLastCh = "9", .bChSelFile = true,
                          .sChSelFile = "/data/channels.txt"};
  app->session.dataSetSettings(2) = r;
  app->session.iNumDataSets = 2;
  app->session.iDataSetNum = 2;
  Dialog().SetAddMode(false);
  Dialog().SetReAnalyzeMode(false);
  Dialog().Activate();
  EXPECT_EQ(Dialog().windowTitle(), QStringLiteral("Tarvenix Setup for Data Set #2"));
  const auto choices = [](const DataSetSettings& d) {
    return std::tuple(d.sDataFile, d.sDataID, bool(d.bNumOccurrences), bool(d.bIPCOccurrences), d.sOccurrenceLimit,
                      bool(d.bDataCycles), bool(d.bTempCycles), bool(d.bFirstLastCh), d.sFirstCh, d.sLastCh,
                      bool(d.bChSelFile), d.sChSelFile);
  };
  EXPECT_EQ(choices(Dialog().ControlValues()), choices(r));

  Dialog().SetAddMode(true);
  Dialog().Activate();
  EXPECT_EQ(Text(&Dialog(), "MaskEdBoxDataID"), QStringLiteral("Data Set #3"));
  const DataSetSettings added = Dialog().ControlValues();
  EXPECT_TRUE(added.bDataCycles && added.bNumOccurrences) << "add mode's defaults";
  EXPECT_EQ(added.sLastCh, "9") << "what add mode does not reset stays for the next data set";
}

TEST_F(SetupDialogTest, ChoicesDisableTheOtherControlsAndUpDownsStepWithinRange) {
  Choose(&Dialog(), "btnSelDataFile");
  Choose(&Dialog(), "btnIPCOccurrences");
  EXPECT_FALSE(Enabled("txtFirstCh") || Enabled("UpDownLastCh") || Enabled("LblOccurrenceLimit"));
  Choose(&Dialog(), "btnFirstLastCh");
  Choose(&Dialog(), "btnNumOccurrences");
  EXPECT_FALSE(Enabled("txtChSelFile") || Enabled("cmdChSelFile"));
  // The up/down, its box, the text before, the arrow, how often, the text after.
  const std::tuple<const char*, const char*, const char*, const char*, int, const char*> cases[] = {
      {"UpDownOccrLimit", "LblOccurrenceLimit", "1", "up", 2, "3"},
      {"UpDownOccrLimit", "LblOccurrenceLimit", "1", "down", 5, "0"},  // 0 can be reached; OK refuses it
      {"UpDownFirstCh", "txtFirstCh", "", "up", 1, "1"},
      {"UpDownFirstCh", "txtFirstCh", "1024", "up", 1, "1024"},
      {"UpDownFirstCh", "txtFirstCh", "3.5", "down", 1, "3"},  // a typed text that is no channel moves to a whole one
  };
  for (const auto& [upDown, box, before, arrow, presses, after] : cases) {
    Type(&Dialog(), box, before);
    for (int i = 0; i < presses; ++i)
      QTest::mouseClick(Find(&Dialog(), upDown)->findChild<QWidget*>(QString::fromLatin1(arrow)), Qt::LeftButton);
    EXPECT_EQ(Text(&Dialog(), box), QString::fromLatin1(after)) << box << " from '" << before << "'";
  }
}

TEST_F(SetupDialogTest, RefusalsShowAndKeepTheDialogOpenOnTheirBox) {
  const std::string file = Simulate("board.txt", {.seed = 7});
  AddDataSet(file, [&](QWidget* setup) {
    // The channel selection file buttons need the data file first.
    Type(setup, "txtDataFile", "");
    Choose(setup, "btnSelDataFile");
    Click(setup, "cmdChSelFile");
    Click(setup, "CmdCreateChSelFile");
    EXPECT_EQ(MessageBoxes::Texts(),
              (QStringList{"You must select a Data History file before browsing for a Channel Selection file!",
                           "You must select a Data History file before creating a Channel Selection file!"}));
    Type(setup, "txtDataFile", file);
    FileDialogs::SetNextFileName(QStringLiteral("/data/channels.txt"));
    Click(setup, "cmdChSelFile");
    EXPECT_EQ(Text(&Dialog(), "txtChSelFile"), QStringLiteral("/data/channels.txt"));

    // Every entry is checked in the core; this one shows the box and the focus.
    MessageBoxes::Clear();
    Choose(setup, "btnFirstLastCh");
    Type(setup, "txtLastCh", "4");
    Find(setup, "MaskEdBoxDataID")->setFocus();
    Click(setup, "cmdBtnOK");
    EXPECT_TRUE(setup->isVisible());
    EXPECT_EQ(MessageBoxes::Texts(), QStringList{"5 or more channels are required."});
    ASSERT_NE(setup->focusWidget(), nullptr);
    EXPECT_EQ(setup->focusWidget()->objectName(), QStringLiteral("txtFirstCh"));
    Click(setup, "cmdBtnCancel");
  });
  EXPECT_EQ(app->session.iNumDataSets, 0);
  EXPECT_EQ(app->session.iDataSetNum, 0);
}

TEST_F(SetupDialogTest, TheFirstCycleAnswerReachesTheAnalysis) {
  const sim::SimOptions early{.seed = 7, .firstCycleFailures = 2};
  const std::string file = Simulate("early.txt", early);
  const std::size_t withoutFirst = sim::ExpectedFailureCycles(early, sim::PlanTest(early), 1, true, true).size();
  for (bool ignore : {false, true}) {
    SCOPED_TRACE(ignore);
    AddDataSet(file, [&](QWidget*) {
      WhenModal("frmTarvenixFirstCycFailures", [&](QWidget* question) {
        EXPECT_EQ(question->windowTitle(), QStringLiteral("First Data Cycle Events Found"));
        Click(question, ignore ? "cmdBtnYes" : "cmdBtnNo");
      });
    });
    EXPECT_EQ(static_cast<bool>(app->session.bIgnoreFirstCycles), ignore);
    // Ignored, they leave the analysis the other events; not ignored, they stop it.
    EXPECT_EQ(Status() == QStringLiteral("Analysis complete."), ignore);
    EXPECT_EQ(Log().contains(QStringLiteral("Number of analyzed events = %1").arg(withoutFirst)), ignore);
  }

  // In temperature or mechanical cycles the question says so; its answer is
  // kept in the session, and closing it without one leaves that in place.
  FirstCycleFlags flags{};
  flags[1024] = flags[3] = true;
  for (const char* button : {"cmdBtnNo", static_cast<const char*>(nullptr)}) {
    WhenModal("frmTarvenixFirstCycFailures", [&](QWidget* question) {
      EXPECT_EQ(question->windowTitle(), QStringLiteral("First Temp. or Mech. Cycle Events Found"));
      EXPECT_EQ(Text(question, "LblCycleType"),
                QStringLiteral("The following channels have first temp./mech.-cycle events:"));
      EXPECT_EQ(Text(question, "txtBox1"), QStringLiteral(" 3 1024"));
      button ? Click(question, button) : QTest::keyClick(question, Qt::Key_Escape);
    });
    EXPECT_EQ(app->ui.AskIgnoreFirstCycleEvents(flags, false), button ? std::optional(false) : std::nullopt);
    EXPECT_FALSE(static_cast<bool>(app->session.bIgnoreFirstCycles));
  }
}

}  // namespace
}  // namespace tarvenix::test
