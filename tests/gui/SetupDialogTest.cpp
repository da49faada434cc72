// The setup dialog's own behaviour: activation in each mode, the choices that
// enable and disable their controls, and the file buttons.

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include <tuple>

#include "Dialogs.h"
#include "UpDown.h"
#include "frmTarvenixSetup.h"
#include "support/GuiTest.h"

namespace tarvenix::test {
namespace {

using gui::FileDialogs;
using gui::MessageBoxes;

class SetupDialogTest : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    StartApp();
  }
  frmTarvenixSetup& Dialog() { return app->Setup(); }
  template <typename W = QWidget>
  W* Control(const char* name) {
    return Find<W>(&Dialog(), name);
  }
  void Open(bool add) {
    Dialog().SetAddMode(add);
    Dialog().SetReAnalyzeMode(false);
    Dialog().Activate();
  }
};

TEST_F(SetupDialogTest, AddModeWorksOnTheNextNumberWithDefaults) {
  app->session.iNumDataSets = 2;
  app->session.iDataSetNum = 2;
  Control<QRadioButton>("btnTempCycles")->setChecked(true);
  Control<QRadioButton>("btnIPCOccurrences")->setChecked(true);
  Control<QLineEdit>("txtLastCh")->setText("12");
  Open(true);
  EXPECT_EQ(app->session.iDataSetNum, 3);
  EXPECT_EQ(app->session.iNumDataSets, 2);
  EXPECT_EQ(Dialog().windowTitle(), QStringLiteral("Tarvenix Setup for Data Set #3"));
  EXPECT_EQ(Control<QLineEdit>("MaskEdBoxDataID")->text(), QStringLiteral("Data Set #3"));
  EXPECT_TRUE(Control<QRadioButton>("btnDataCycles")->isChecked());
  EXPECT_TRUE(Control<QRadioButton>("btnNumOccurrences")->isChecked());
  // What add mode does not reset stays for the next data set.
  EXPECT_EQ(Control<QLineEdit>("txtLastCh")->text(), QStringLiteral("12"));
}

TEST_F(SetupDialogTest, EditModeRestoresTheRecord) {
  const DataSetSettings r{.sDataFile = "/data/run.txt", .sDataID = "Lot 7", .bNumOccurrences = false,
                          .bIPCOccurrences = true, .sOccurrenceLimit = "3", .bDataCycles = false, .bTempCycles = true,
                          .bFirstLastCh = false, .sFirstCh = "", .sLastCh = "", .bChSelFile = true,
                          .sChSelFile = "/data/channels.txt"};
  app->session.dataSetSettings(2) = r;
  app->session.iNumDataSets = 2;
  app->session.iDataSetNum = 2;
  Open(false);
  EXPECT_EQ(app->session.iDataSetNum, 2);
  EXPECT_EQ(Dialog().windowTitle(), QStringLiteral("Tarvenix Setup for Data Set #2"));
  const auto choices = [](const DataSetSettings& d) {
    return std::tuple(d.sDataFile, d.sDataID, bool(d.bNumOccurrences), bool(d.bIPCOccurrences), d.sOccurrenceLimit,
                      bool(d.bDataCycles), bool(d.bTempCycles), bool(d.bFirstLastCh), bool(d.bChSelFile), d.sChSelFile);
  };
  EXPECT_EQ(choices(Dialog().ControlValues()), choices(r));
  EXPECT_EQ(Control<QLineEdit>("txtDataFile")->cursorPosition(), static_cast<int>(r.sDataFile.size()));
  EXPECT_FALSE(Control<QLabel>("LblOccurrenceLimit")->isEnabled());
  EXPECT_TRUE(Control<QLineEdit>("txtChSelFile")->isEnabled());
}

TEST_F(SetupDialogTest, ChoicesEnableTheirControls) {
  Open(true);
  const char* range[] = {"LblFirstChannel", "txtFirstCh", "UpDownFirstCh", "LblLastChannel", "txtLastCh", "UpDownLastCh"};
  const char* file[] = {"txtChSelFile", "cmdChSelFile", "CmdCreateChSelFile"};
  for (bool useRange : {false, true, false}) {
    Control<QRadioButton>(useRange ? "btnFirstLastCh" : "btnSelDataFile")->setChecked(true);
    for (const char* name : range) EXPECT_EQ(Control(name)->isEnabled(), useRange) << name;
    for (const char* name : file) EXPECT_EQ(Control(name)->isEnabled(), !useRange) << name;
  }
  for (bool count : {false, true}) {
    Control<QRadioButton>(count ? "btnNumOccurrences" : "btnIPCOccurrences")->setChecked(true);
    EXPECT_EQ(Control("LblOccurrenceLimit")->isEnabled(), count);
    EXPECT_EQ(Control("UpDownOccrLimit")->isEnabled(), count);
  }
}

TEST_F(SetupDialogTest, UpDownsStepTheirBoxesWithinRange) {
  Open(true);
  auto step = [&](const char* upDown, const char* direction, int times) {
    for (int i = 0; i < times; ++i)
      QTest::mouseClick(Control(upDown)->findChild<QWidget*>(QString::fromLatin1(direction)), Qt::LeftButton);
  };
  auto* limit = Control<QLabel>("LblOccurrenceLimit");
  limit->setText("1");
  step("UpDownOccrLimit", "up", 2);
  EXPECT_EQ(limit->text(), QStringLiteral("3"));
  step("UpDownOccrLimit", "down", 5);
  EXPECT_EQ(limit->text(), QStringLiteral("0"));  // 0 can be reached; OK refuses it

  auto* first = Control<QLineEdit>("txtFirstCh");
  first->clear();
  step("UpDownFirstCh", "up", 1);
  EXPECT_EQ(first->text(), QStringLiteral("1"));
  first->setText("1024");
  step("UpDownFirstCh", "up", 1);
  EXPECT_EQ(first->text(), QStringLiteral("1024"));
  first->setText("3.5");  // a typed text that is no channel moves to a whole one
  step("UpDownFirstCh", "down", 1);
  EXPECT_EQ(first->text(), QStringLiteral("3"));
}

TEST_F(SetupDialogTest, FileButtons) {
  Open(true);
  app->session.sDataDir = dataHome.Path();
  // Channel selection files are chosen only once the data file is known.
  Control<QLineEdit>("txtDataFile")->clear();
  Control<QRadioButton>("btnSelDataFile")->setChecked(true);
  Click(&Dialog(), "cmdChSelFile");
  Click(&Dialog(), "CmdCreateChSelFile");
  EXPECT_EQ(MessageBoxes::Texts(),
            (QStringList{"You must select a Data History file before browsing for a Channel Selection file!",
                         "You must select a Data History file before creating a Channel Selection file!"}));

  const std::string data = programFolder.File("lot 4.txt");
  FileDialogs::SetNextFileName(QString::fromStdString(data));
  Click(&Dialog(), "cmdDataFile");
  EXPECT_EQ(FileDialogs::LastFilter(), QStringLiteral("Vorlantic Data History files (*.txt)"));
  EXPECT_EQ(FileDialogs::LastDefaultName().toStdString(), dataHome.Path());
  EXPECT_EQ(Control<QLineEdit>("txtDataFile")->text().toStdString(), data);
  EXPECT_EQ(app->session.sDataDir, programFolder.Path());

  FileDialogs::SetNextFileName(QStringLiteral("/data/channels.txt"));
  Click(&Dialog(), "cmdChSelFile");
  EXPECT_EQ(Control<QLineEdit>("txtChSelFile")->text(), QStringLiteral("/data/channels.txt"));

  // Cancelling a file dialog keeps what was there.
  FileDialogs::SetNextFileName(QString());
  Click(&Dialog(), "cmdDataFile");
  EXPECT_EQ(Control<QLineEdit>("txtDataFile")->text().toStdString(), data);
}

}  // namespace
}  // namespace tarvenix::test
