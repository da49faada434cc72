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
#include "app/Dialogs.h"
#include "app/frmTarvenixData.h"
#include "app/frmTarvenixSetup.h"
#include "support/GuiTest.h"

namespace tarvenix::test {
namespace {

using gui::MessageBoxes;

// A simulated 32-channel test; `firstCycleFailures` channels fail at once.
sim::SimOptions Board(int firstCycleFailures = 0) {
  sim::SimOptions o;
  o.channels = 32;
  o.cycles = 1000;
  o.seed = 7;
  o.firstCycleFailures = firstCycleFailures;
  return o;
}

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

TEST_F(SetupFlowTest, AddingADataSetReadsAndAnalysesIt) {
  AddDataSet("Board A");
  EXPECT_FALSE(app->Setup().isVisible());
  EXPECT_EQ(Status(), QStringLiteral("Analysis complete."));
  EXPECT_EQ(app->session.iNumDataSets, 1);
  EXPECT_EQ(app->session.iDataSetNum, 1);
  EXPECT_EQ(app->session.sDataIDs(1), "Board A");
  EXPECT_TRUE(Log().contains(QStringLiteral("Number of analyzed events = %1").arg(Failures(Board(), false))));
  EXPECT_TRUE(Log().contains(QStringLiteral("BETA =")));
  EXPECT_TRUE(Log().contains(QStringLiteral("N50 =")));
  EXPECT_TRUE(Find<QPushButton>(&Main(), "btnEdit")->isEnabled());
  EXPECT_TRUE(Main().AnalysisDone());
  EXPECT_EQ(app->session.dataSetSettings(1).sDataID, "Board A");
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
    const char* what;
    std::function<void(QWidget*)> change;
    std::string message;
    const char* focus;  // nullptr: no box named
  };
  const std::string missing = dataHome.File("missing.txt");
  const Case cases[] = {
      {"channel selection file missing",
       [&](QWidget* d) {
         Find<QRadioButton>(d, "btnSelDataFile")->setChecked(true);
         Find<QLineEdit>(d, "txtChSelFile")->setText(QString::fromStdString(dataHome.File("none.chs")));
       },
       "The specified channel selection file could not be found.", "txtChSelFile"},
      {"data history file missing",
       [&](QWidget* d) { Find<QLineEdit>(d, "txtDataFile")->setText(QString::fromStdString(missing)); },
       "The specified data history file could not be found.", "txtDataFile"},
      {"event array file missing",
       [&](QWidget* d) { Find<QRadioButton>(d, "btnIPCOccurrences")->setChecked(true); },
       "The specified IPC/JEDEC file could not be found.", "txtDataFile"},
      {"first channel not whole", [&](QWidget* d) { Find<QLineEdit>(d, "txtFirstCh")->setText("3.5"); },
       "The entry for first channel is invalid.", "txtFirstCh"},
      {"first channel empty", [&](QWidget* d) { Find<QLineEdit>(d, "txtFirstCh")->clear(); },
       "The entry for first channel is invalid.", "txtFirstCh"},
      {"last channel invalid", [&](QWidget* d) { Find<QLineEdit>(d, "txtLastCh")->setText("ten"); },
       "The entry for last channel is invalid.", "txtLastCh"},
      {"first channel equal to the last", [&](QWidget* d) { Find<QLineEdit>(d, "txtFirstCh")->setText("32"); },
       "The first channel number may not be greater than or\nequal to the last channel.", "txtFirstCh"},
      {"four channels", [&](QWidget* d) { Find<QLineEdit>(d, "txtLastCh")->setText("4"); },
       "5 or more channels are required.", "txtFirstCh"},
      {"occurrence limit 0", [&](QWidget* d) { Find<QLabel>(d, "LblOccurrenceLimit")->setText("0"); },
       "The Occurrence Limit may not be 0.", nullptr},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    MessageBoxes::Clear();
    WhenModal("frmTarvenixSetup", [&](QWidget* setup) {
      Fill(setup, dataFile);
      c.change(setup);
      Find<QLineEdit>(setup, "MaskEdBoxDataID")->setFocus();
      Click(setup, "cmdBtnOK");
      EXPECT_TRUE(setup->isVisible());
      EXPECT_EQ(MessageBoxes::Texts(), QStringList{QString::fromStdString(c.message)});
      if (c.focus) {
        ASSERT_NE(setup->focusWidget(), nullptr);
        EXPECT_EQ(setup->focusWidget()->objectName(), QString::fromLatin1(c.focus));
      }
      Click(setup, "cmdBtnCancel");
    });
    Click(&Main(), "btnAddDataSet");
    EXPECT_EQ(app->session.iNumDataSets, 0);
    EXPECT_EQ(app->session.iDataSetNum, 0);
  }
}

TEST_F(SetupFlowTest, FiveDataSetsFillTheSession) {
  for (int n = 1; n <= 5; ++n) AddDataSet("Lot " + std::to_string(n));
  EXPECT_EQ(app->session.iNumDataSets, 5);
  EXPECT_FALSE(Find<QPushButton>(&Main(), "btnAddDataSet")->isEnabled());
  EXPECT_TRUE(Find<QPushButton>(&Main(), "btnReAnalyze")->isEnabled());
}

TEST_F(SetupFlowTest, ReanalyzeRepeatsTheSavedSetupWithoutAsking) {
  AddDataSet("Board A");
  const qsizetype blocks = Log().count(QStringLiteral("BETA ="));
  Find<QPushButton>(&Main(), "btnReAnalyze")->click();
  EXPECT_FALSE(app->Setup().isVisible());
  EXPECT_EQ(Log().count(QStringLiteral("BETA =")), blocks + 1);
  EXPECT_EQ(app->session.iNumDataSets, 1);
  EXPECT_EQ(app->session.iDataSetNum, 1);
  EXPECT_EQ(Status(), QStringLiteral("Analysis complete."));
}

TEST_F(SetupFlowTest, EditChangesADataSetInPlace) {
  AddDataSet("Board A");
  WhenModal("frmTarvenixSetup", [&](QWidget* setup) {
    EXPECT_EQ(Find<QLineEdit>(setup, "MaskEdBoxDataID")->text(), QStringLiteral("Board A"));
    Find<QLineEdit>(setup, "MaskEdBoxDataID")->setText("Board A, retested");
    Click(setup, "cmdBtnOK");
  });
  Click(&Main(), "btnEdit");
  EXPECT_EQ(app->session.iNumDataSets, 1);
  EXPECT_EQ(app->session.sDataIDs(1), "Board A, retested");
}

TEST_F(SetupFlowTest, FirstCycleEventsAreIgnoredOnYesAndStopTheAnalysisOnNo) {
  const sim::SimOptions early = Board(2);
  dataFile = Simulate("early.txt", early);
  QString listed;
  for (int ch = 1; ch <= 32; ++ch) {
    for (const sim::SimEvent& e : test.events) {
      if (e.channel == ch && e.occurrence == 1 && e.dataCycle < 2) {
        listed += QStringLiteral(" %1").arg(ch);
        break;
      }
    }
  }
  ASSERT_FALSE(listed.isEmpty());
  for (bool ignore : {false, true}) {
    SCOPED_TRACE(ignore);
    WhenModal("frmTarvenixSetup", [&](QWidget* setup) {
      Fill(setup, dataFile);
      WhenModal("frmTarvenixFirstCycFailures", [&](QWidget* question) {
        EXPECT_EQ(question->windowTitle(), QStringLiteral("First Data Cycle Events Found"));
        EXPECT_EQ(Find<QLineEdit>(question, "txtBox1")->text(), listed);
        Click(question, ignore ? "cmdBtnYes" : "cmdBtnNo");
      });
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
  sim::SimOptions o = Board(2);
  o.cycleLines = sim::CycleLines::Temperature;
  o.dataPerCycle = 2;
  o.ipc = true;
  o.ipcNoise = 1;
  o.eta = 600;
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
    WhenModal("frmTarvenixFirstCycFailures", [&](QWidget* question) {
      EXPECT_EQ(question->windowTitle(), QStringLiteral("First Temp. or Mech. Cycle Events Found"));
      Click(question, "cmdBtnYes");
    });
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
