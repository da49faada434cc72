#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QCheckBox>

#include "WeibullSamples.h"
#include "session/FileUtils.h"
#include "Dialogs.h"
#include "frmTarvenixData.h"
#include "TChart.h"
#include "frmSystemSaveOptions.h"
#include "frmTarvenixPlot.h"
#include "support/GuiTest.h"

namespace tarvenix::test {
namespace {

class PlotWindowTest : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    frmTarvenixPlot::SetScreenSizeOverride(QSize(1920, 1080));
    StartApp();
    Session& s = app->session;
    s.bDataCycles = true;
    samples::AddSampleDataSets(s, 2);
    s.sDataDir = data.Path();
    s.sDataFile = data.File("run7.txt");
    app->MainWindow().Activate();  // the commands follow the loaded data sets
  }
  void TearDown() override {
    frmTarvenixPlot::SetScreenSizeOverride(QSize());
    GuiTest::TearDown();
  }

  frmTarvenixPlot& OpenPlot(const QString& title = {}) {
    Find<QLineEdit>(&app->MainWindow(), "MaskEdBoxGrHeader")->setText(title);
    Click(&app->MainWindow(), "CmdPlot");
    frmTarvenixPlot& plot = app->Plot();
    EXPECT_TRUE(plot.isVisible());
    return plot;
  }

  // Saves through the save options dialog: the name (empty: as proposed), the
  // type button, the negative box.
  void Save(frmTarvenixPlot& plot, const char* typeButton, bool negative, bool ok = true, const char* name = "") {
    WhenModal("frmSystemSaveOptions", [&](QWidget* d) {
      auto* box = Find<QLineEdit>(d, "txtSaveFilename");
      EXPECT_EQ(box->text(), QStringLiteral("run7_weibull"));
      if (*name) box->setText(QString::fromLatin1(name));
      Find<QRadioButton>(d, typeButton)->setChecked(true);
      Find<QCheckBox>(d, "chkBoxNegativeImage")->setChecked(negative);
      Click(d, ok ? "CmdBtnOK" : "cmdBtnCancel");
    });
    Click(&plot, "CmdSave");
  }

  TempDir data;
};

TEST_F(PlotWindowTest, PlotCommandOpensTheWindowWithTheTitleFromTheMainWindow) {
  frmTarvenixPlot& plot = OpenPlot(QStringLiteral("Lot 7 thermal cycling"));
  ChartModel& chart = plot.Chart().Model();
  EXPECT_EQ(chart.title, "Lot 7 thermal cycling");
  EXPECT_EQ(plot.ColorScheme(), 6);
  ASSERT_EQ(chart.series.size(), 2u);
  EXPECT_EQ(chart.series[0].title.rfind("Board A, SAC305: Beta = ", 0), 0u);
  plot.hide();
  OpenPlot();
  EXPECT_EQ(chart.title.rfind("Quorvane Weibull Probability Plot            ", 0), 0u);
  // A data set without a finished analysis keeps the window closed.
  plot.hide();
  app->session.sngNParam(2) = 0;
  Click(&app->MainWindow(), "CmdPlot");
  EXPECT_FALSE(plot.isVisible());
  EXPECT_EQ(gui::MessageBoxes::Texts(),
            QStringList{"Cannot generate plot because analysis was not completed successfully on Data Set #2.\n"
                        "Edit the data set and try again."});
}

TEST_F(PlotWindowTest, ResizeKeepsFourToThreeAndLaysOutChartButtonsAndLabel) {
  frmTarvenixPlot& plot = OpenPlot();
  struct Case {
    int width;
    bool large;
  } cases[] = {{800, false}, {1344, true}, {1000, false}};
  for (const Case& c : cases) {
    plot.resize(c.width, 300);
    QApplication::processEvents();
    EXPECT_EQ(plot.height(), c.width * 3 / 4) << c.width;
    EXPECT_EQ(plot.LargePlot(), c.large) << c.width;
    const QWidget& chart = plot.Chart();
    EXPECT_EQ(chart.geometry(), QRect(3, 3, plot.width() - 13, plot.height() - 80)) << c.width;
    auto* save = Find<QPushButton>(&plot, "CmdSave");
    auto* exit = Find<QPushButton>(&plot, "CmdExit");
    EXPECT_EQ(save->y(), plot.height() - 66) << c.width;
    EXPECT_NEAR((save->x() + exit->x() + exit->width()) / 2.0, plot.width() / 2.0, 1.0) << c.width;
    EXPECT_GE(Find<QLabel>(&plot, "Label1")->y(), chart.geometry().bottom());
  }
}

TEST_F(PlotWindowTest, WarningLabelShowsADataSetWithoutVisiblePoints) {
  Session& s = app->session;
  for (int j = 1; j <= s.iNumEvents(2); ++j) s.sngWeiY(2, j) = 3.0f;  // all above 99.6 %
  frmTarvenixPlot& plot = OpenPlot();
  plot.grab();
  auto* label = Find<QLabel>(&plot, "Label1");
  EXPECT_TRUE(label->isVisibleTo(&plot));
  EXPECT_EQ(label->text(), QStringLiteral("Warning: there are no visible points in data set 2"));
  s.sngWeiY(2, 1) = 0.0f;
  plot.grab();
  EXPECT_FALSE(label->isVisibleTo(&plot));
}

TEST_F(PlotWindowTest, SaveWritesBitmapOrNegativeJpegInTheDataFolderAndCancelWritesNothing) {
  frmTarvenixPlot& plot = OpenPlot();
  Save(plot, "optImgType_0", false, false);
  EXPECT_FALSE(modUtils::IsFile(data.File("run7_weibull.bmp")));
  Save(plot, "optImgType_0", false);
  EXPECT_EQ(ReadAll(data.File("run7_weibull.bmp")).substr(0, 2), "BM");
  Save(plot, "optImgType_1", true);
  EXPECT_EQ(ReadAll(data.File("run7_weibull_inv.jpg")).substr(0, 3), "\xFF\xD8\xFF");
  Save(plot, "optImgType_0", false, true, "lot 12");
  EXPECT_EQ(ReadAll(data.File("lot 12.bmp")).substr(0, 2), "BM");
  EXPECT_EQ(plot.ColorScheme(), 6);
  EXPECT_TRUE(plot.Chart().Model().bevel);
  EXPECT_TRUE(gui::MessageBoxes::Texts().isEmpty());
}

TEST_F(PlotWindowTest, AShortDataFileNameCannotGiveADefaultName) {
  app->session.sDataFile = data.File("ab");
  frmTarvenixPlot& plot = OpenPlot();
  Click(&plot, "CmdSave");
  ASSERT_EQ(gui::MessageBoxes::Texts().size(), 1);
  EXPECT_TRUE(gui::MessageBoxes::Texts()[0].startsWith(
      QStringLiteral("Error in frmTarvenixPlot.CmdSave_Click - Error #5  Invalid procedure call or argument")));
}

TEST_F(PlotWindowTest, PrintPlaysTheRecordingOntoThePrinterOrSaysItCouldNotBeWritten) {
  frmTarvenixPlot& plot = OpenPlot();
  gui::PrintDialogs::Answer answer;
  answer.pdfFile = QString::fromStdString(data.File("printed.pdf"));
  gui::PrintDialogs::SetNextAnswer(answer);
  Click(&plot, "CmdPrint");
  EXPECT_TRUE(gui::MessageBoxes::Texts().isEmpty()) << gui::MessageBoxes::Texts().join("|").toStdString();
  EXPECT_EQ(ReadAll(data.File("printed.pdf")).substr(0, 4), "%PDF");
  EXPECT_TRUE(modUtils::IsFile(data.File("weibull.emf")));
  EXPECT_EQ(plot.ColorScheme(), 6);

  app->session.sDataDir = data.File("missing");
  gui::PrintDialogs::SetNextAnswer(answer);
  Click(&plot, "CmdPrint");
  EXPECT_EQ(gui::MessageBoxes::Texts(), QStringList{"Print Error: Enhanced metafile was not exported."});
}

// The save options dialog on its own.
class SaveOptionsTest : public GuiTest {};

TEST_F(SaveOptionsTest, CancelOrClosingKeepsTheNameAndSaysCancelled) {
  for (bool byButton : {true, false}) {
    frmSystemSaveOptions dialog;
    dialog.SetSaveFilename("run7_weibull");
    WhenModal("frmSystemSaveOptions", [&](QWidget* d) {
      Find<QLineEdit>(d, "txtSaveFilename")->setText(QStringLiteral("changed"));
      if (byButton) {
        Click(d, "cmdBtnCancel");
      } else {
        d->close();
      }
    });
    dialog.exec();
    EXPECT_TRUE(dialog.Canceled());
    EXPECT_EQ(dialog.SaveFilename(), "run7_weibull");
  }
}

}  // namespace
}  // namespace tarvenix::test
