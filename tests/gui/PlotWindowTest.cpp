// The plot window from the main window's Plot command, with its save options
// dialog and its print.

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>

#include <filesystem>

#include "Dialogs.h"
#include "TChart.h"
#include "WeibullSamples.h"
#include "frmTarvenixData.h"
#include "frmTarvenixPlot.h"
#include "support/GuiTest.h"

namespace tarvenix::test {
namespace {

using gui::MessageBoxes;

class PlotWindowTest : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    frmTarvenixPlot::SetScreenSizeOverride(QSize(1920, 1080));
    Session& s = app->session;
    s.bDataCycles = true;
    samples::AddSampleDataSets(s, 2);
    s.sDataDir = data.Path();
    s.sDataFile = data.File("run7.txt");
    Main().Activate();
  }
  void TearDown() override {
    frmTarvenixPlot::SetScreenSizeOverride(QSize());
    GuiTest::TearDown();
  }
  frmTarvenixPlot& OpenPlot(const std::string& title = "") {
    Type(&Main(), "MaskEdBoxGrHeader", title);
    Click(&Main(), "CmdPlot");
    EXPECT_TRUE(app->Plot().isVisible());
    return app->Plot();
  }
  // Save on the plot window: the name (empty: as proposed), the type, the
  // negative box, and how the dialog is left: a button, or closed.
  void Save(const char* typeButton, bool negative, const char* button = "CmdBtnOK", const char* name = "") {
    WhenModal("frmSystemSaveOptions", [&](QWidget* d) {
      EXPECT_EQ(Text(d, "txtSaveFilename"), QStringLiteral("run7_weibull"));
      EXPECT_EQ(QApplication::focusWidget(), Find(d, "txtSaveFilename")) << "typing goes to the name each time";
      if (*name) Type(d, "txtSaveFilename", name);
      Choose(d, typeButton);
      Find<QCheckBox>(d, "chkBoxNegativeImage")->setChecked(negative);
      button ? Click(d, button) : void(d->close());
    });
    Click(&app->Plot(), "CmdSave");
  }

  TempDir data;
};

TEST_F(PlotWindowTest, OpensWithTheTitleKeepsFourToThreeWarnsAndRefusesAnUnfinishedDataSet) {
  frmTarvenixPlot& plot = OpenPlot("Lot 7 thermal cycling");
  ChartModel& chart = plot.Chart().Model();
  EXPECT_EQ(chart.title, "Lot 7 thermal cycling");
  ASSERT_EQ(chart.series.size(), 2u);
  EXPECT_EQ(chart.series[0].title.rfind("Board A, SAC305: Beta = ", 0), 0u);
  for (int width : {800, 1344}) {
    plot.resize(width, 300);
    QApplication::processEvents();
    EXPECT_EQ(plot.height(), width * 3 / 4);
    EXPECT_EQ(plot.LargePlot(), width > 1000);
  }
  Click(&plot, "CmdExit");
  EXPECT_FALSE(plot.isVisible());

  // A data set whose points all lie above the paper is named under the plot.
  Session& s = app->session;
  for (int j = 1; j <= s.iNumEvents(2); ++j) s.sngWeiY(2, j) = 3.0f;
  OpenPlot();
  EXPECT_EQ(chart.title.rfind("Quorvane Weibull Probability Plot", 0), 0u);
  plot.grab();
  auto* label = Find<QLabel>(&plot, "Label1");
  EXPECT_TRUE(label->isVisibleTo(&plot));
  EXPECT_EQ(label->text(), QStringLiteral("Warning: there are no visible points in data set 2"));
  s.sngWeiY(2, 1) = 0.0f;
  plot.grab();
  EXPECT_FALSE(label->isVisibleTo(&plot));

  // A data set whose analysis did not complete is left out and named; with
  // none analysed there is no plot.
  plot.hide();
  s.bAnalysisComplete(2) = false;
  Click(&Main(), "CmdPlot");
  plot.grab();
  EXPECT_EQ(label->text(), QStringLiteral("Data set 2 was not analysed successfully and is not drawn."));
  EXPECT_EQ(chart.series.size(), 1u);
  plot.hide();
  s.bAnalysisComplete(1) = false;
  Click(&Main(), "CmdPlot");
  EXPECT_FALSE(plot.isVisible());
  EXPECT_EQ(MessageBoxes::Texts(),
            QStringList{"Cannot generate plot because analysis was not completed successfully on Data Set #1.\n"
                        "Edit the data set and try again."});
}

TEST_F(PlotWindowTest, SaveWritesBitmapOrNegativeJpegInTheDataFolderAndCancelWritesNothing) {
  frmTarvenixPlot& plot = OpenPlot();
  for (const char* button : {"cmdBtnCancel", static_cast<const char*>(nullptr)}) Save("optImgType_0", false, button, "x");
  EXPECT_TRUE(std::filesystem::is_empty(data.Path())) << "cancelled or closed, nothing is saved";
  Save("optImgType_0", false);
  EXPECT_EQ(ReadAll(data.File("run7_weibull.bmp")).substr(0, 2), "BM");
  Save("optImgType_1", true);
  EXPECT_EQ(ReadAll(data.File("run7_weibull_inv.jpg")).substr(0, 3), "\xFF\xD8\xFF");
  Save("optImgType_1", false);
  EXPECT_NE(ReadAll(data.File("run7_weibull_inv.jpg")), ReadAll(data.File("run7_weibull.jpg"))) << "the negative's colours";
  Save("optImgType_0", false, "CmdBtnOK", "lot 12");
  EXPECT_EQ(ReadAll(data.File("lot 12.bmp")).substr(0, 2), "BM");
  EXPECT_EQ(plot.ColorScheme(), 6) << "back in the screen's colours";
  EXPECT_TRUE(plot.Chart().Model().bevel);
  EXPECT_TRUE(MessageBoxes::Texts().isEmpty());

  // A data file name too short to lose its extension gives no default name.
  app->session.sDataFile = data.File("ab");
  Click(&plot, "CmdSave");
  ASSERT_EQ(MessageBoxes::Texts().size(), 1);
  EXPECT_TRUE(MessageBoxes::Texts()[0].startsWith(
      QStringLiteral("Error in frmTarvenixPlot.CmdSave_Click - Error #5  Invalid procedure call or argument")));
}

TEST_F(PlotWindowTest, PrintPlaysTheRecordingOntoThePrinterOrSaysWhyNot) {
  frmTarvenixPlot& plot = OpenPlot();
  gui::PrintDialogs::Answer answer;
  answer.pdfFile = QString::fromStdString(data.File("printed.pdf"));
  gui::PrintDialogs::SetNextAnswer(answer);
  Click(&plot, "CmdPrint");
  EXPECT_TRUE(MessageBoxes::Texts().isEmpty()) << MessageBoxes::Texts().join("|").toStdString();
  EXPECT_EQ(ReadAll(data.File("printed.pdf")).substr(0, 4), "%PDF");
  EXPECT_TRUE(std::filesystem::exists(data.File("weibull.emf")));
  EXPECT_EQ(plot.ColorScheme(), 6);

  app->session.sDataDir = data.File("missing");
  gui::PrintDialogs::SetNextAnswer(answer);
  Click(&plot, "CmdPrint");
  gui::PrintDialogs::SetPrinterInstalled(false);
  Click(&plot, "CmdPrint");
  EXPECT_EQ(MessageBoxes::Texts(),
            (QStringList{"Print Error: Enhanced metafile was not exported.", gui::kNoPrinterMessage}));
}

}  // namespace
}  // namespace tarvenix::test
