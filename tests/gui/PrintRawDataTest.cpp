// Printing the report: the lines that reach the printer, the scratch file that
// must not outlive the job, and a real print job written as PDF.

#include <QPrinter>
#include <QStringList>

#include <filesystem>

#include "PrintRawData.h"
#include "session/Session.h"
#include "support/FailurePoints.h"
#include "support/GuiTest.h"
#include "support/RecordingUi.h"

namespace tarvenix::test {
namespace {

class PrintRawDataTest : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    hadTmp_ = qEnvironmentVariableIsSet("TMPDIR");
    oldTmp_ = qgetenv("TMPDIR");
    qputenv("TMPDIR", QByteArray::fromStdString(scratchHome.Path()));
    AddAnalysedDataSet(s, ui, RangeSetup("Board A", "/lab/run1.txt"), 10, PublishedExample());
    ui = RecordingUi();
  }
  void TearDown() override {
    // An empty TMPDIR is not an unset one: the next test could not make its folders.
    if (hadTmp_) {
      qputenv("TMPDIR", oldTmp_);
    } else {
      qunsetenv("TMPDIR");
    }
    GuiTest::TearDown();
  }
  bool ScratchHomeEmpty() const { return std::filesystem::is_empty(scratchHome.Path()); }

  TempDir scratchHome;
  Session s;
  RecordingUi ui;
  bool hadTmp_ = false;
  QByteArray oldTmp_;
};

TEST_F(PrintRawDataTest, TheReportPrintsOneItemALineAndLeavesNoScratchFile) {
  int16_t iErr = 5;
  QStringList lines = modTarvenix::RawDataLines(s, ui, "", iErr);
  EXPECT_EQ(iErr, 0);
  ASSERT_GT(lines.size(), 20);
  EXPECT_TRUE(lines[0].startsWith(QStringLiteral("Created using Tarvenix v")));
  EXPECT_TRUE(lines.contains(QStringLiteral("Data Set #1 - 'Board A'")));
  EXPECT_TRUE(lines.contains(QStringLiteral("Test Data History File: /lab/run1.txt")));
  // The first point's row: count, cycle, fraction and ordinate on lines of their own.
  const qsizetype row = lines.indexOf(QStringLiteral("25"));
  ASSERT_GT(row, 0);
  EXPECT_EQ(lines[row - 1], QStringLiteral("1"));
  EXPECT_EQ(lines[row + 1], QStringLiteral("0.1000"));
  EXPECT_TRUE(lines[row + 2].startsWith(QLatin1Char('-')));
  EXPECT_TRUE(ScratchHomeEmpty());
  EXPECT_TRUE(ui.messages.empty());
}

TEST_F(PrintRawDataTest, AGivenTextPrintsAsItStands) {
  int16_t iErr = 0;
  EXPECT_EQ(modTarvenix::RawDataLines(s, ui, "BETA = 2.03, at 90%\r\nN50 = 80\rlast\n", iErr),
            (QStringList{"BETA = 2.03, at 90%", "N50 = 80", "last", ""}));
}

TEST_F(PrintRawDataTest, APrinterThatCannotStartIsReported) {
  QPrinter printer;
  printer.setOutputFormat(QPrinter::PdfFormat);
  printer.setOutputFileName(QString::fromStdString(dataHome.File("no/such/folder/report.pdf")));
  int16_t iErr = 0;
  modTarvenix::PrintRawData(s, ui, printer, "", 1, iErr);
  EXPECT_EQ(iErr, 1);
  ASSERT_EQ(ui.messages.size(), 1u);
  EXPECT_EQ(ui.messages[0].text.rfind("Error in modTarvenix.PrintRawData - Error #57", 0), 0u);
  EXPECT_TRUE(ScratchHomeEmpty());
}

}  // namespace
}  // namespace tarvenix::test
