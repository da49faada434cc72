// Steps across windows that once showed an internal error or another data
// set's numbers, each as it was found.

#include <QApplication>
#include <QComboBox>
#include <QTest>

#include "Dialogs.h"
#include "TChart.h"
#include "frmTarvenixData.h"
#include "frmTarvenixPlot.h"
#include "support/GuiTest.h"

namespace tarvenix::test {
namespace {

using gui::MessageBoxes;

class SessionStepsTest : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    good_ = Simulate("good.txt", {.channels = 32, .seed = 3});
    few_ = Simulate("few.txt", {.channels = 3, .seed = 4});
  }
  std::vector<int> Drawn() {
    std::vector<int> sets;
    for (const ChartSeries& series : app->Plot().Chart().Model().series) sets.push_back(series.dataSet);
    return sets;
  }
  bool Enabled(const char* name) { return Find(&Main(), name)->isEnabled(); }
  std::string good_, few_;
};

// Edit, choose 1, Cancel, Reanalyze twice: the current data set stays the one chosen.
TEST_F(SessionStepsTest, CancelledEditsNeverLeaveTheLoadedDataSets) {
  AddDataSet(good_);
  AddDataSet(good_);
  for (int round = 0; round < 2; ++round) {
    WhenModal("frmTarvenixEdit", [&](QWidget* chooser) {
      WhenModal("frmTarvenixSetup", [&](QWidget* setup) { Click(setup, "cmdBtnCancel"); });
      static_cast<QComboBox*>(Find(chooser, "cmbBoxDataSet"))->setCurrentIndex(0);
      Click(chooser, "cmdBtnOK");
    });
    Click(&Main(), "btnEdit");
    EXPECT_EQ(app->session.iDataSetNum, 1);
    Click(&Main(), "btnReAnalyze");
    EXPECT_EQ(app->session.iDataSetNum, 1);
  }
  EXPECT_EQ(Status(), QStringLiteral("Analysis complete."));
  EXPECT_FALSE(MessageBoxes::Texts().join("").contains(QStringLiteral("Error #")));
}

// The open plot follows every change: a second Add draws two data sets, a
// failed re-analysis leaves one out and names it, Clear closes it.
TEST_F(SessionStepsTest, TheOpenPlotFollowsTheSession) {
  AddDataSet(good_);
  Click(&Main(), "CmdPlot");
  EXPECT_EQ(Drawn(), std::vector<int>{1});
  AddDataSet(good_);
  EXPECT_EQ(Drawn(), (std::vector<int>{1, 2}));
  WhenModal("frmTarvenixEdit", [&](QWidget* chooser) {
    WhenModal("frmTarvenixSetup", [&](QWidget* setup) {
      Type(setup, "txtDataFile", few_);
      Click(setup, "cmdBtnOK");
    });
    Click(chooser, "cmdBtnOK");
  });
  Click(&Main(), "btnEdit");
  EXPECT_EQ(Status(), QStringLiteral("Analysis did not complete successfully."));
  EXPECT_EQ(Drawn(), std::vector<int>{1});
  app->Plot().grab();
  EXPECT_EQ(Text(&app->Plot(), "Label1"), QStringLiteral("Data set 2 was not analysed successfully and is not drawn."));
  Click(&Main(), "btnClear");
  EXPECT_FALSE(app->Plot().isVisible());
}

// A refused channel selection file, then Cancel: nothing was loaded.
TEST_F(SessionStepsTest, ARefusedAddLeavesTheCommandsAsTheyWere) {
  const std::string bad = dataHome.Write("bad.chs", "1\r\n2\r\n2\r\n");
  WhenModal("frmTarvenixSetup", [&](QWidget* setup) {
    Type(setup, "txtDataFile", good_);
    Choose(setup, "btnSelDataFile");
    Type(setup, "txtChSelFile", bad);
    Click(setup, "cmdBtnOK");
    EXPECT_TRUE(setup->isVisible());
    EXPECT_EQ(LastMessage(), "Error in channel selection file:\n" + bad + "\nat line number: 3\n\nDuplicate channel number.");
    Click(setup, "cmdBtnCancel");
  });
  Click(&Main(), "btnAddDataSet");
  EXPECT_EQ(app->session.iNumDataSets, 0);
  EXPECT_FALSE(Enabled("btnEdit") || Enabled("btnReAnalyze") || Enabled("btnClear"));
}

// A box raised by the plot window belongs to it; the first-cycle question
// answers Enter with Yes whatever was clicked before.
TEST_F(SessionStepsTest, BoxesBelongToTheirWindowAndReusedDialogsStartAfresh) {
  AddDataSet(good_);
  Click(&Main(), "CmdPlot");
  app->Plot().activateWindow();
  QApplication::setActiveWindow(&app->Plot());
  gui::PrintDialogs::SetPrinterInstalled(false);
  Click(&app->Plot(), "CmdPrint");
  ASSERT_FALSE(MessageBoxes::History().empty());
  EXPECT_EQ(MessageBoxes::History().back().owner, QStringLiteral("frmTarvenixPlot"));
  app->Plot().hide();

  const std::string early = Simulate("early.txt", {.channels = 32, .seed = 5, .firstCycleFailures = 2});
  for (bool enter : {false, true}) {
    AddDataSet(early, [&](QWidget*) {
      WhenModal("frmTarvenixFirstCycFailures", [&](QWidget* question) {
        if (enter) {
          QTest::keyClick(question, Qt::Key_Return);
        } else {
          Click(question, "cmdBtnNo");
        }
      });
    });
    EXPECT_EQ(static_cast<bool>(app->session.bIgnoreFirstCycles), enter);
    EXPECT_EQ(Status(), enter ? QStringLiteral("Analysis complete.") : QStringLiteral("Analysis did not complete successfully."));
  }
}

}  // namespace
}  // namespace tarvenix::test
