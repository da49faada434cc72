// The channel selection file editor as a user drives it: ticking channels over
// pages, the range, OK's refusals in order, the bytes of the file it writes,
// and the setup dialog's Create running a data set end to end on the file.

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>

#include <filesystem>
#include <functional>
#include <numeric>
#include <vector>

#include "HistorySimulator.h"
#include "Dialogs.h"
#include "frmTarvenixData.h"
#include "frmTarvenixSetup.h"
#include "setup/ChSelFileEditor.h"
#include "frmTarvenixChSelFile.h"
#include "support/GuiTest.h"

namespace tarvenix::test {
namespace {

using gui::FileDialogs;
using gui::MessageBoxes;


class ChSelFileDialogTest : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    StartApp();
    app->session.sDataDir = folder.Path();
  }

  frmTarvenixChSelFile& Editor() { return app->ChSelFile(); }
  template <typename W = QWidget>
  W* Control(const char* name) {
    return Find<W>(&Editor(), name);
  }
  QCheckBox* Box(int index) {
    return Control<QCheckBox>(QStringLiteral("Check1_%1").arg(index).toLatin1().constData());
  }
  // The editor as the setup dialog opens it for a data history file.
  void Open(const std::string& dataFile = "/lab/board 7.txt") {
    Editor().Activate(dataFile);
    Editor().show();
  }
  void Tick(std::initializer_list<int> boxes, bool on = true) {
    for (int i : boxes) Box(i)->setChecked(on);
  }
  std::vector<int> TickedBoxes() {
    std::vector<int> ticked;
    for (int i = 0; i < chselfile::kBoxesPerPage; ++i)
      if (Box(i)->isChecked()) ticked.push_back(i);
    return ticked;
  }
  QString Caption(int index) { return Box(index)->text(); }
  void EnterRange(const char* first, const char* last) {
    Control<QRadioButton>("Option1_1")->setChecked(true);
    Control<QLineEdit>("txtFirstCh")->setText(QString::fromLatin1(first));
    Control<QLineEdit>("txtLastCh")->setText(QString::fromLatin1(last));
  }
  void SetFileName(const std::string& path) { Control<QLineEdit>("txtChSelFile")->setText(QString::fromStdString(path)); }
  std::string FileName() { return Control<QLineEdit>("txtChSelFile")->text().toStdString(); }

  TempDir folder;
};

TEST_F(ChSelFileDialogTest, TickedChannelsSurviveScrollingBetweenPagesThatStopAtOneAnd1024) {
  Open();
  Click(&Editor(), "CmdBtnScrollLeft");
  EXPECT_EQ(Editor().Pages().PageStart(), 0);
  Tick({0, 1, 2, 3, 4});
  Click(&Editor(), "CmdBtnScrollRight");
  EXPECT_EQ(Caption(0), QStringLiteral("65"));
  EXPECT_EQ(Caption(63), QStringLiteral("128"));
  EXPECT_TRUE(TickedBoxes().empty());
  Click(&Editor(), "CmdBtnScrollLeft");
  EXPECT_EQ(Caption(0), QStringLiteral("1"));
  EXPECT_EQ(TickedBoxes(), (std::vector<int>{0, 1, 2, 3, 4}));

  for (int i = 0; i < 20; ++i) Click(&Editor(), "CmdBtnScrollRight");
  EXPECT_EQ(Editor().Pages().PageStart(), 960);
  EXPECT_EQ(Caption(0), QStringLiteral("961"));
  EXPECT_EQ(Caption(63), QStringLiteral("1024"));
  // A press at the end still stores the page.
  Tick({60, 61, 62, 63});
  Click(&Editor(), "CmdBtnScrollRight");
  EXPECT_TRUE(Editor().Pages().IsFlagged(1024));
  EXPECT_EQ(Caption(63), QStringLiteral("1024"));
  Tick({59});

  const std::string path = FileName();
  Click(&Editor(), "cmdBtnOK");
  EXPECT_FALSE(Editor().isVisible());
  EXPECT_TRUE(MessageBoxes::Texts().isEmpty());
  // One channel a line in the numeric print form, nothing else.
  EXPECT_EQ(ReadAll(path), " 1\r\n 2\r\n 3\r\n 4\r\n 5\r\n 1020\r\n 1021\r\n 1022\r\n 1023\r\n 1024\r\n");
  // The setup dialog has the file, its end in view.
  auto* setupBox = Find<QLineEdit>(&app->Setup(), "txtChSelFile");
  EXPECT_EQ(setupBox->text().toStdString(), path);
  EXPECT_EQ(setupBox->cursorPosition(), static_cast<int>(setupBox->text().size()));
}

TEST_F(ChSelFileDialogTest, AStoredChannelStaysUntilItsPageOrAllAreCleared) {
  Open();
  Tick({9, 20});  // channels 10 and 21
  Click(&Editor(), "CmdBtnScrollRight");
  Tick({0});  // channel 65
  Click(&Editor(), "CmdBtnScrollLeft");
  EXPECT_EQ(TickedBoxes(), (std::vector<int>{9, 20}));

  // Unticking a stored channel's box does not take the channel out.
  Tick({9}, false);
  Click(&Editor(), "CmdBtnScrollRight");
  Click(&Editor(), "CmdBtnScrollLeft");
  EXPECT_EQ(TickedBoxes(), (std::vector<int>{9, 20}));

  Click(&Editor(), "CmdBtnClearPage");
  EXPECT_TRUE(TickedBoxes().empty());
  Click(&Editor(), "CmdBtnScrollRight");
  EXPECT_EQ(TickedBoxes(), std::vector<int>{0}) << "Clear Page leaves the other pages";
  EXPECT_EQ(Editor().Pages().Channels(), std::vector<int16_t>{65});

  Click(&Editor(), "CmdBtnClearAll");
  EXPECT_TRUE(TickedBoxes().empty());
  EXPECT_TRUE(Editor().Pages().Channels().empty());

  // OK keeps a stored channel whose box was unticked, too.
  Tick({0, 1, 2, 3, 4});
  Click(&Editor(), "CmdBtnScrollLeft");
  Click(&Editor(), "CmdBtnScrollRight");
  Tick({2}, false);
  const std::string path = FileName();
  Click(&Editor(), "cmdBtnOK");
  EXPECT_EQ(ReadAll(path), " 65\r\n 66\r\n 67\r\n 68\r\n 69\r\n");
}

TEST_F(ChSelFileDialogTest, EachRefusalInOrderKeepsTheEditorOpen) {
  long long now = 0;
  Editor().SetRetryClock({[&now] { return now; }, [&now] { ++now; }});
  const std::string existing = folder.Write("existing.txt", " 7\r\n 8\r\n");
  const std::string fresh = folder.File("fresh.txt");
  const QString aFolder = QString::fromStdString(folder.File("a folder.txt"));
  std::filesystem::create_directory(aFolder.toStdString());
  const QString overwrite = "Channel Selection File already exists. OK to Overwrite?";
  const QString tooFew = "5 or more channels are required.";
  const QString noFolder = "The specified directory is invalid.";
  const char* name = "txtChSelFile";
  struct Case {
    const char* what;
    std::function<void()> enter;
    QStringList messages;  // the boxes shown, questions included
    const char* focus;     // nullptr: no box named
  };
  const Case cases[] = {
      {"no file name", [&] { SetFileName(""); }, {"Please type in a name for the channel selection file."}, name},
      {"overwrite answered No", [&] { SetFileName(existing); MessageBoxes::SetNextAnswer(QMessageBox::No); },
       {overwrite}, name},
      {"overwrite answered Yes, then too few channels",
       [&] { SetFileName(existing); Tick({0, 1, 2, 3}, false); MessageBoxes::SetNextAnswer(QMessageBox::Yes); },
       {overwrite, tooFew}, nullptr},
      {"no such folder", [&] { SetFileName(folder.File("gone/list.txt")); }, {noFolder}, name},
      {"a name without a folder", [&] { SetFileName("list.txt"); }, {noFolder}, name},
      {"four channels ticked", [&] { Tick({4}, false); }, {tooFew}, nullptr},
      // The range is checked as the setup dialog checks it (its own table has
      // every case); these show the editor's boxes take the focus.
      {"last channel empty", [&] { EnterRange("3", ""); }, {"The entry for last channel is invalid."}, "txtLastCh"},
      {"a range of three", [&] { EnterRange("10", "12"); }, {tooFew}, "txtFirstCh"},
      {"the name is a folder", [&] { SetFileName(aFolder.toStdString()); },
       {"The file, '" + aFolder + "' could not be opened.\nThe file may be in use by another program.",
        "The specified Channel Selection File could not be opened."},
       name},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    MessageBoxes::Clear();
    Open();
    SetFileName(fresh);
    Tick({0, 1, 2, 3, 4});
    c.enter();
    Control<QWidget>("Check1_10")->setFocus();
    Click(&Editor(), "cmdBtnOK");
    EXPECT_TRUE(Editor().isVisible());
    EXPECT_EQ(MessageBoxes::Texts(), c.messages);
    const QWidget* focus = Editor().focusWidget();
    EXPECT_EQ(c.focus && focus ? focus->objectName() : QString(), QString::fromLatin1(c.focus));
    EXPECT_EQ(ReadAll(existing), " 7\r\n 8\r\n") << "the old file stays byte for byte";
    EXPECT_FALSE(std::filesystem::exists(fresh));
    Click(&Editor(), "cmdBtnCancel");
  }
}

TEST_F(ChSelFileDialogTest, ARangeIsWrittenAndReplacesAnOldFileWhenAllowed) {
  Open();
  const std::string path = folder.Write("range.txt", "START: 5\r\n 3\r\n");
  SetFileName(path);
  EnterRange("10", "14");
  MessageBoxes::SetNextAnswer(QMessageBox::Yes);
  Click(&Editor(), "cmdBtnOK");
  EXPECT_FALSE(Editor().isVisible());
  EXPECT_EQ(ReadAll(path), " 10\r\n 11\r\n 12\r\n 13\r\n 14\r\n");
}

TEST_F(ChSelFileDialogTest, OpeningProposesANameInTheDataFolderAndStartsAfresh) {
  Open("/elsewhere/lot 4.txt");
  const std::string proposed = modUtils::JoinPath(folder.Path(), "lot 4_ChSelFile.txt");
  auto* name = Control<QLineEdit>("txtChSelFile");
  EXPECT_EQ(FileName(), proposed);
  EXPECT_EQ(name->cursorPosition(), static_cast<int>(name->text().size()));
  EXPECT_EQ(Editor().windowTitle(), QStringLiteral("Create Channel Selection File"));

  FileDialogs::SetNextFileName(QStringLiteral("/lab/lists/chosen.txt"));
  Click(&Editor(), "cmdChSelFile");
  EXPECT_EQ(FileDialogs::LastFilter(), QStringLiteral("Channel Selection Files (*.txt)"));
  EXPECT_EQ(FileDialogs::LastDefaultName().toStdString(), proposed);
  EXPECT_EQ(FileName(), "/lab/lists/chosen.txt");
  FileDialogs::SetNextFileName(QString());
  Click(&Editor(), "cmdChSelFile");
  EXPECT_EQ(FileName(), "/lab/lists/chosen.txt") << "a cancelled dialog keeps the name";

  const char* pageControls[] = {"Check1_0", "Check1_63", "CmdBtnScrollLeft", "CmdBtnScrollRight", "CmdBtnClearAll",
                                "CmdBtnClearPage"};
  const char* rangeControls[] = {"txtFirstCh", "UpDownFirstCh", "txtLastCh", "UpDownLastCh"};
  for (int option : {0, 1, 0}) {
    Control<QRadioButton>(option == 0 ? "Option1_0" : "Option1_1")->setChecked(true);
    for (const char* c : pageControls) EXPECT_EQ(Control(c)->isEnabled(), option == 0) << c;
    for (const char* c : rangeControls) EXPECT_EQ(Control(c)->isEnabled(), option == 1) << c;
  }

  Tick({3});
  Click(&Editor(), "CmdBtnScrollRight");
  Tick({7});
  EnterRange("1", "9");
  Editor().hide();
  Open();
  EXPECT_TRUE(Control<QRadioButton>("Option1_0")->isChecked());
  EXPECT_TRUE(Control("FrameIndividual")->isEnabled());
  EXPECT_FALSE(Control("FrameRange")->isEnabled());
  EXPECT_EQ(Caption(0), QStringLiteral("1"));
  EXPECT_TRUE(TickedBoxes().empty());
  EXPECT_TRUE(Editor().Pages().Channels().empty());
}

TEST_F(ChSelFileDialogTest, TheBoxesStandInAnEightByEightGridThatFitsEveryCaption) {
  Open();
  for (int i = 0; i < 20; ++i) Click(&Editor(), "CmdBtnScrollRight");
  Editor().adjustSize();
  for (int i = 0; i < chselfile::kBoxesPerPage; ++i) {
    SCOPED_TRACE(i);
    const QRect r = Box(i)->geometry();
    EXPECT_EQ(r.x(), Box(i % 8)->geometry().x()) << "columns aligned";
    EXPECT_EQ(r.y(), Box(i / 8 * 8)->geometry().y()) << "rows aligned";
    EXPECT_GE(r.width(), Box(i)->sizeHint().width()) << "caption not cut";
    if (i % 8 != 7) {
      EXPECT_LT(r.right(), Box(i + 1)->geometry().left());
    }
  }
}

// Create on the setup dialog, end to end: the editor writes the file, the setup
// dialog takes it, and the data set is analysed on exactly its channels.
class CreateFromSetupTest : public ChSelFileDialogTest {
 protected:
  void SetUp() override {
    ChSelFileDialogTest::SetUp();
    sim::WriteHistoryFile(board, test, dataFile);
  }
  QWidget& Main() { return app->MainWindow(); }
  std::vector<int> SelectedChannels() {
    std::vector<int> channels;
    for (int ch = 1; ch <= kMaxChannels; ++ch)
      if (app->session.iChSelected(ch) == 1) channels.push_back(ch);
    return channels;
  }
  void PrepareSetup(QWidget* setup) {
    Find<QLineEdit>(setup, "txtDataFile")->setText(QString::fromStdString(dataFile));
    Find<QRadioButton>(setup, "btnSelDataFile")->setChecked(true);
    Find<QLabel>(setup, "LblOccurrenceLimit")->setText(QStringLiteral("1"));
  }

  const sim::SimOptions board{.channels = 24, .firstChannel = 9, .seed = 11};  // channels 9..32 under test
  const sim::SimTest test = sim::PlanTest(board);
  const std::string dataFile = folder.File("board.txt");
};

TEST_F(CreateFromSetupTest, TheWrittenFileDrivesTheAnalysis) {
  const std::string expectedFile = modUtils::JoinPath(folder.Path(), "board_ChSelFile.txt");
  WhenModal("frmTarvenixSetup", [&](QWidget* setup) {
    PrepareSetup(setup);
    WhenModal("frmTarvenixChSelFile", [&](QWidget* editor) {
      for (int i = 8; i < 32; ++i) Tick({i});
      Click(editor, "CmdBtnScrollRight");
      Tick({35});  // channel 100: selected, never failing
      Click(editor, "cmdBtnOK");
    });
    Click(setup, "CmdCreateChSelFile");
    EXPECT_EQ(MessageBoxes::Texts(), QStringList{QStringLiteral("Channel Selection File was created successfully.")});
    EXPECT_EQ(Find<QLineEdit>(setup, "txtChSelFile")->text().toStdString(), expectedFile);
    Click(setup, "cmdBtnOK");
  });
  Click(&Main(), "btnAddDataSet");

  std::vector<int> expected(24);
  std::iota(expected.begin(), expected.end(), 9);
  expected.push_back(100);
  EXPECT_EQ(SelectedChannels(), expected);
  EXPECT_EQ(app->session.iNumDataSets, 1);
  EXPECT_EQ(app->session.iGroupSize(1), 25);
  EXPECT_EQ(app->session.dataSetSettings(1).sChSelFile, expectedFile);
  EXPECT_EQ(Find<QLabel>(&Main(), "StatusBar1")->text(), QStringLiteral("Analysis complete."));
  const std::size_t failures = sim::ExpectedFailureCycles(board, test, 1, true, false).size();
  EXPECT_TRUE(Find<QPlainTextEdit>(&Main(), "TextBox1")
                  ->toPlainText()
                  .contains(QStringLiteral("Number of analyzed events = %1").arg(failures)));
}

TEST_F(CreateFromSetupTest, CancelWritesNothingAndKeepsTheSetupAsItWas) {
  WhenModal("frmTarvenixSetup", [&](QWidget* setup) {
    PrepareSetup(setup);
    Find<QLineEdit>(setup, "txtChSelFile")->setText(QStringLiteral("/lab/kept.txt"));
    WhenModal("frmTarvenixChSelFile", [&](QWidget* editor) {
      for (int i = 0; i < 8; ++i) Tick({i});
      Click(editor, "cmdBtnCancel");
    });
    Click(setup, "CmdCreateChSelFile");
    EXPECT_TRUE(MessageBoxes::Texts().isEmpty());
    EXPECT_EQ(Find<QLineEdit>(setup, "txtChSelFile")->text(), QStringLiteral("/lab/kept.txt"));
    Click(setup, "cmdBtnCancel");
  });
  Click(&Main(), "btnAddDataSet");
  EXPECT_FALSE(std::filesystem::exists(folder.File("board_ChSelFile.txt")));
  EXPECT_EQ(app->session.iNumDataSets, 0);
}

}  // namespace
}  // namespace tarvenix::test
