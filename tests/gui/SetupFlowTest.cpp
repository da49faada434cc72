// Adding, editing and re-analysing data sets from the main window, end to end:
// the setup dialog's OK reads a data history file written here and analyses it.

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>

#include <filesystem>
#include <vector>

#include "HistorySimulator.h"
#include "Dialogs.h"
#include "frmTarvenixData.h"
#include "frmTarvenixSetup.h"
#include "support/GuiTest.h"

namespace tarvenix::test {
namespace {

using gui::MessageBoxes;

// A simulated 32-channel test of 1000 cycles; `firstCycleFailures` channels fail at once.
sim::SimOptions Board(int firstCycleFailures = 0) { return {.seed = 7, .firstCycleFailures = firstCycleFailures}; }

class SetupFlowTest : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    StartApp();
    dataFile = Simulate("board.txt", Board());
  }
  std::string Simulate(const char* name, const sim::SimOptions& o) {
    test = sim::PlanTest(o);
    const std::string path = dataHome.File(name);
    sim::WriteHistoryFile(o, test, path);
    return path;
  }
  // How many channels fail under a limit of 1 in data cycles.
  std::size_t Failures(const sim::SimOptions& o, bool withoutFirstCycle) {
    return sim::ExpectedFailureCycles(o, test, 1, true, withoutFirstCycle).size();
  }
  frmTarvenixData& Main() { return app->MainWindow(); }
  QString Status() { return Find<QLabel>(&Main(), "StatusBar1")->text(); }
  QString Log() { return Find<QPlainTextEdit>(&Main(), "TextBox1")->toPlainText(); }

  // Fills the dialog for channels 1..32 of `file`, occurrence limit 1.
  void Fill(QWidget* setup, const std::string& file, const char* first = "1", const char* last = "32") {
    Find<QLineEdit>(setup, "txtDataFile")->setText(QString::fromStdString(file));
    Find<QRadioButton>(setup, "btnFirstLastCh")->setChecked(true);
    Find<QLineEdit>(setup, "txtFirstCh")->setText(QString::fromLatin1(first));
    Find<QLineEdit>(setup, "txtLastCh")->setText(QString::fromLatin1(last));
    Find<QLabel>(setup, "LblOccurrenceLimit")->setText(QStringLiteral("1"));
  }
  // Add Data Set, filled as above, OK.
  void AddDataSet(const std::string& id) {
    WhenModal("frmTarvenixSetup", [&](QWidget* setup) {
      Fill(setup, dataFile);
      Find<QLineEdit>(setup, "MaskEdBoxDataID")->setText(QString::fromStdString(id));
      Click(setup, "cmdBtnOK");
    });
    Click(&Main(), "btnAddDataSet");
  }

  std::string dataFile;
  sim::SimTest test;
};

TEST_F(SetupFlowTest, AddReadsAndAnalysesEditChangesInPlaceAndReanalyzeRepeatsWithoutAsking) {
  AddDataSet("Board A");
  EXPECT_FALSE(app->Setup().isVisible());
  EXPECT_EQ(Status(), QStringLiteral("Analysis complete."));
  EXPECT_EQ(app->session.iNumDataSets, 1);
  EXPECT_EQ(app->session.sDataIDs(1), "Board A");
  EXPECT_TRUE(Log().contains(QStringLiteral("Number of analyzed events = %1").arg(Failures(Board(), false))));

  WhenModal("frmTarvenixSetup", [&](QWidget* setup) {
    EXPECT_EQ(Find<QLineEdit>(setup, "MaskEdBoxDataID")->text(), QStringLiteral("Board A"));
    Find<QLineEdit>(setup, "MaskEdBoxDataID")->setText("Board A, retested");
    Click(setup, "cmdBtnOK");
  });
  Click(&Main(), "btnEdit");
  EXPECT_EQ(app->session.sDataIDs(1), "Board A, retested");

  const qsizetype blocks = Log().count(QStringLiteral("BETA ="));
  Find<QPushButton>(&Main(), "btnReAnalyze")->click();
  EXPECT_FALSE(app->Setup().isVisible());
  EXPECT_EQ(Log().count(QStringLiteral("BETA =")), blocks + 1);
  EXPECT_EQ(app->session.iNumDataSets, 1);
  EXPECT_EQ(app->session.iDataSetNum, 1);
  EXPECT_EQ(Status(), QStringLiteral("Analysis complete."));
}

TEST_F(SetupFlowTest, AFileInAFolderWithAccentsIsChosenAndRead) {
  std::filesystem::create_directories(dataHome.File("Pr\u00fcfung 85\u00b0C"));
  const std::string file = Simulate("Pr\u00fcfung 85\u00b0C/board.txt", Board());
  WhenModal("frmTarvenixSetup", [&](QWidget* setup) {
    Fill(setup, "");
    gui::FileDialogs::SetNextFileName(QString::fromUtf8(file.c_str()));
    Click(setup, "cmdDataFile");
    EXPECT_EQ(Find<QLineEdit>(setup, "txtDataFile")->text(), QString::fromUtf8(file.c_str()));
    Click(setup, "cmdBtnOK");
  });
  Click(&Main(), "btnAddDataSet");
  EXPECT_EQ(Status(), QStringLiteral("Analysis complete."));
  EXPECT_EQ(app->session.sDataFiles(1), file);
  EXPECT_EQ(app->session.sDataDir, dataHome.File("Pr\u00fcfung 85\u00b0C"));
}

TEST_F(SetupFlowTest, EachRefusalKeepsTheDialogOpenOnItsBox) {
  struct Case {
    const char* choice;  // a radio button checked first, or nullptr
    const char* box;     // the box or label that gets `text`
    std::string text;
    QString message;
    const char* focus;  // nullptr: no box named
  };
  const QString first = "The entry for first channel is invalid.";
  const QString last = "The entry for last channel is invalid.";
  const QString order = "The first channel number may not be greater than or\nequal to the last channel.";
  const QString zeroLimit = "The Occurrence Limit may not be 0.";
  const Case cases[] = {
      {"btnSelDataFile", "txtChSelFile", dataHome.File("none.chs"),
       "The specified channel selection file could not be found.", "txtChSelFile"},
      {nullptr, "txtDataFile", dataHome.File("missing.txt"), "The specified data history file could not be found.",
       "txtDataFile"},
      {"btnIPCOccurrences", "txtDataFile", dataFile, "The specified IPC/JEDEC file could not be found.", "txtDataFile"},
      {nullptr, "txtFirstCh", "3.5", first, "txtFirstCh"},
      {nullptr, "txtFirstCh", "", first, "txtFirstCh"},
      {nullptr, "txtFirstCh", "0", first, "txtFirstCh"},
      {nullptr, "txtFirstCh", "x1", first, "txtFirstCh"},
      {nullptr, "txtLastCh", "ten", last, "txtLastCh"},
      {nullptr, "txtLastCh", "1025", last, "txtLastCh"},
      {nullptr, "txtFirstCh", "32", order, "txtFirstCh"},
      {nullptr, "txtFirstCh", "33", order, "txtFirstCh"},
      {nullptr, "txtLastCh", "4", "5 or more channels are required.", "txtFirstCh"},
      {nullptr, "LblOccurrenceLimit", "0", zeroLimit, nullptr},
      {nullptr, "LblOccurrenceLimit", "-0", zeroLimit, nullptr},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(std::string(c.box) + " = " + c.text);
    MessageBoxes::Clear();
    WhenModal("frmTarvenixSetup", [&](QWidget* setup) {
      Fill(setup, dataFile);
      if (c.choice) Find<QRadioButton>(setup, c.choice)->setChecked(true);
      Find<QWidget>(setup, c.box)->setProperty("text", QString::fromStdString(c.text));
      Find<QLineEdit>(setup, "MaskEdBoxDataID")->setFocus();
      Click(setup, "cmdBtnOK");
      EXPECT_TRUE(setup->isVisible());
      EXPECT_EQ(MessageBoxes::Texts(), QStringList{c.message});
      const QWidget* focus = setup->focusWidget();
      EXPECT_EQ(c.focus && focus ? focus->objectName() : QString(), QString::fromLatin1(c.focus));
      Click(setup, "cmdBtnCancel");
    });
    Click(&Main(), "btnAddDataSet");
    EXPECT_EQ(app->session.iNumDataSets, 0);
    EXPECT_EQ(app->session.iDataSetNum, 0);
  }
}

TEST_F(SetupFlowTest, FirstCycleEventsAreIgnoredOnYesAndStopTheAnalysisOnNo) {
  const sim::SimOptions early = Board(2);
  dataFile = Simulate("early.txt", early);
  for (bool ignore : {false, true}) {
    SCOPED_TRACE(ignore);
    WhenModal("frmTarvenixSetup", [&](QWidget* setup) {
      Fill(setup, dataFile);
      WhenModal("frmTarvenixFirstCycFailures", [&](QWidget* q) { Click(q, ignore ? "cmdBtnYes" : "cmdBtnNo"); });
      Click(setup, "cmdBtnOK");
    });
    Click(&Main(), "btnAddDataSet");
    if (ignore) {
      EXPECT_TRUE(Log().contains(QStringLiteral("User has chosen to re-run analysis and ignore first data-cycle events.")));
      EXPECT_TRUE(Log().endsWith(QStringLiteral("\n")));
      EXPECT_TRUE(Log().contains(QStringLiteral("Number of analyzed events = %1").arg(Failures(early, true))));
      EXPECT_EQ(Status(), QStringLiteral("Analysis complete."));
    } else {
      EXPECT_TRUE(Log().contains(
          QStringLiteral("User has chosen not to ignore first data-cycle events. Analysis stopped.")));
      EXPECT_NE(Status(), QStringLiteral("Analysis complete."));
    }
  }
}

TEST_F(SetupFlowTest, TheIpcJedecChoiceAnalysesTheEventArrayFile) {
  const sim::SimOptions o{.eta = 600, .seed = 7, .cycleLines = sim::CycleLines::Temperature, .dataPerCycle = 2,
                         .firstCycleFailures = 2, .ipc = true, .ipcNoise = 1};
  test = sim::PlanTest(o);
  // Only the event array file is there: the IPC/JEDEC limit does not need the
  // data history file.
  const std::string history = dataHome.File("ipc-board.txt");
  sim::WriteEventArrayFile(o, test, sim::EventArrayPath(history));
  const std::vector<int64_t> failures = sim::ExpectedIpcFailureCycles(o, test, false, true);
  int rows = 0;
  for (std::size_t i = 0; i < failures.size(); ++i) rows += i == 0 || failures[i] != failures[i - 1];
  ASSERT_GE(rows, 5);
  ASSERT_LT(failures.size(), 30u) << "some channels must survive";

  WhenModal("frmTarvenixSetup", [&](QWidget* setup) {
    Fill(setup, history);
    Find<QRadioButton>(setup, "btnTempCycles")->setChecked(true);
    Find<QRadioButton>(setup, "btnIPCOccurrences")->setChecked(true);
    EXPECT_FALSE(Find<QWidget>(setup, "LblOccurrenceLimit")->isEnabled());
    EXPECT_FALSE(Find<QWidget>(setup, "UpDownOccrLimit")->isEnabled());
    WhenModal("frmTarvenixFirstCycFailures", [&](QWidget* question) { Click(question, "cmdBtnYes"); });
    Click(setup, "cmdBtnOK");
  });
  Click(&Main(), "btnAddDataSet");

  EXPECT_EQ(Status(), QStringLiteral("Analysis complete."));
  EXPECT_TRUE(Log().contains(QStringLiteral("Occurrence limit to be considered: IPC/JEDEC Limit")));
  EXPECT_TRUE(Log().contains(QStringLiteral("Channels failed under the IPC/JEDEC rule = %1").arg(failures.size())));
  EXPECT_TRUE(Log().contains(QStringLiteral("Number of analyzed events = %1").arg(rows)));
  EXPECT_EQ(app->session.iGroupSize(1), 30);
  EXPECT_EQ(app->session.iCycleType, 1);
  EXPECT_TRUE(static_cast<bool>(app->session.dataSetSettings(1).bIPCOccurrences));
}

}  // namespace
}  // namespace tarvenix::test
