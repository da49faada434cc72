// The channel selection file editor: ticks kept over pages, OK's refusals in
// order, the bytes of the file it writes, and Create on the setup dialog
// running a data set on exactly the channels of the file.

#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>

#include <filesystem>
#include <functional>
#include <numeric>
#include <vector>

#include "Dialogs.h"
#include "frmTarvenixChSelFile.h"
#include "frmTarvenixSetup.h"
#include "support/GuiTest.h"

namespace tarvenix::test {
namespace {

using gui::FileDialogs;
using gui::MessageBoxes;

class ChSelFileDialogTest : public GuiTest {
 protected:
  frmTarvenixChSelFile& Editor() { return app->ChSelFile(); }
  QCheckBox* Box(int i) { return Find<QCheckBox>(&Editor(), ("Check1_" + std::to_string(i)).c_str()); }
  // The editor as the setup dialog opens it for a data history file.
  void Open(const std::string& dataFile = "/lab/board 7.txt") {
    app->session.sDataDir = folder.Path();
    Editor().Activate(dataFile);
    Editor().show();
  }
  void Tick(std::vector<int> boxes, bool on = true) {
    for (int i : boxes) Box(i)->setChecked(on);
  }
  // The page shown: its first and last channels, and the boxes ticked.
  std::string Shown() {
    std::string shown = Box(0)->text().toStdString() + "-" + Box(63)->text().toStdString() + ":";
    for (int i = 0; i < 64; ++i)
      if (Box(i)->isChecked()) shown += " " + std::to_string(i);
    return shown;
  }
  void Page(const char* arrow, int presses = 1) {
    for (int i = 0; i < presses; ++i) Click(&Editor(), arrow);
  }
  void EnterRange(const char* first, const char* last) {
    Choose(&Editor(), "Option1_1");
    Type(&Editor(), "txtFirstCh", first);
    Type(&Editor(), "txtLastCh", last);
  }
  std::string FileName() { return Text(&Editor(), "txtChSelFile").toStdString(); }

  TempDir folder;
};

TEST_F(ChSelFileDialogTest, TicksSurvivePagingUntilTheirPageIsClearedAndOkWritesThemForTheSetup) {
  Open();
  Page("CmdBtnScrollLeft");
  Tick({0, 1, 2, 3, 4});
  Page("CmdBtnScrollRight");
  EXPECT_EQ(Shown(), "65-128:");
  Tick({0});
  Click(&Editor(), "CmdBtnClearPage");
  EXPECT_EQ(Shown(), "65-128:");
  Page("CmdBtnScrollLeft");
  EXPECT_EQ(Shown(), "1-64: 0 1 2 3 4") << "Clear Page leaves the other pages";
  // Unticking a stored channel's box does not take the channel out.
  Tick({2}, false);
  Page("CmdBtnScrollRight");
  Page("CmdBtnScrollLeft");
  EXPECT_EQ(Shown(), "1-64: 0 1 2 3 4");
  Page("CmdBtnScrollRight", 20);
  Tick({59, 60, 61, 62});
  Page("CmdBtnScrollRight");
  Tick({63});
  EXPECT_EQ(Shown(), "961-1024: 59 60 61 62 63");

  const std::string path = FileName();
  Click(&Editor(), "cmdBtnOK");
  EXPECT_FALSE(Editor().isVisible());
  EXPECT_TRUE(MessageBoxes::Texts().isEmpty());
  // One channel a line in the numeric print form, nothing else.
  EXPECT_EQ(ReadAll(path), " 1\r\n 2\r\n 3\r\n 4\r\n 5\r\n 1020\r\n 1021\r\n 1022\r\n 1023\r\n 1024\r\n");
  EXPECT_EQ(Text(&app->Setup(), "txtChSelFile").toStdString(), path);
}

TEST_F(ChSelFileDialogTest, EachRefusalInOrderKeepsTheEditorOpenAndAnAllowedRangeReplacesTheFile) {
  long long now = 0;
  Editor().SetRetryClock({[&now] { return now; }, [&now] { ++now; }});
  const std::string existing = folder.Write("existing.txt", " 7\r\n 8\r\n");
  const std::string fresh = folder.File("fresh.txt");
  const std::string aFolder = folder.File("a folder.txt");
  std::filesystem::create_directory(aFolder);
  const QString overwrite = "Channel Selection File already exists. OK to Overwrite?";
  const QString tooFew = "5 or more channels are required.";
  const QString noFolder = "The specified directory is invalid.";
  const char* name = "txtChSelFile";
  const auto named = [&](const std::string& file, QMessageBox::StandardButton answer = QMessageBox::NoButton) {
    return [&, file, answer] {
      Type(&Editor(), name, file);
      MessageBoxes::SetNextAnswer(answer);
    };
  };
  struct Case {
    const char* what;
    std::function<void()> enter;
    QStringList messages;  // the boxes shown, questions included
    const char* focus;     // nullptr: no box named
  };
  const Case cases[] = {
      {"no file name", named(""), {"Please type in a name for the channel selection file."}, name},
      {"overwrite answered No", named(existing, QMessageBox::No), {overwrite}, name},
      {"no such folder", named(folder.File("gone/list.txt")), {noFolder}, name},
      {"four channels ticked", [&] { Tick({4}, false); }, {tooFew}, nullptr},
      {"overwrite answered Yes, then too few channels", [&] { named(existing, QMessageBox::Yes)(); Tick({4}, false); },
       {overwrite, tooFew}, nullptr},
      // The range is checked as the setup dialog checks it; these show the
      // editor's boxes take the focus.
      {"last channel empty", [&] { EnterRange("3", ""); }, {"The entry for last channel is invalid."}, "txtLastCh"},
      {"a range of three", [&] { EnterRange("10", "12"); }, {tooFew}, "txtFirstCh"},
      {"the name is a folder", named(aFolder),
       {"The file, '" + QString::fromStdString(aFolder) + "' could not be opened.\nThe file may be in use by another program.",
        "The specified Channel Selection File could not be opened."},
       name},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.what);
    Open();
    MessageBoxes::Clear();
    Type(&Editor(), name, fresh);
    Tick({0, 1, 2, 3, 4});
    c.enter();
    Box(10)->setFocus();
    Click(&Editor(), "cmdBtnOK");
    EXPECT_TRUE(Editor().isVisible());
    EXPECT_EQ(MessageBoxes::Texts(), c.messages);
    const QWidget* focus = Editor().focusWidget();
    EXPECT_EQ(c.focus && focus ? focus->objectName() : QString(), QString::fromLatin1(c.focus));
    EXPECT_EQ(ReadAll(existing), " 7\r\n 8\r\n") << "the old file stays byte for byte";
    EXPECT_FALSE(std::filesystem::exists(fresh));
    Click(&Editor(), "cmdBtnCancel");
  }

  Open();
  named(existing, QMessageBox::Yes)();
  EnterRange("10", "14");
  Click(&Editor(), "cmdBtnOK");
  EXPECT_FALSE(Editor().isVisible());
  EXPECT_EQ(ReadAll(existing), " 10\r\n 11\r\n 12\r\n 13\r\n 14\r\n");
}

TEST_F(ChSelFileDialogTest, OpeningProposesANameInTheDataFolderAndStartsAfresh) {
  Open("/elsewhere/lot 4.txt");
  const std::string proposed = folder.File("lot 4_ChSelFile.txt");
  EXPECT_EQ(FileName(), proposed);
  FileDialogs::SetNextFileName(QStringLiteral("/lab/lists/chosen.txt"));
  Click(&Editor(), "cmdChSelFile");
  EXPECT_EQ(FileDialogs::LastFilter(), QStringLiteral("Channel Selection Files (*.txt)"));
  EXPECT_EQ(FileDialogs::LastDefaultName().toStdString(), proposed);
  FileDialogs::SetNextFileName(QString());
  Click(&Editor(), "cmdChSelFile");
  EXPECT_EQ(FileName(), "/lab/lists/chosen.txt") << "a cancelled dialog keeps the chosen name";

  EnterRange("1", "9");
  EXPECT_FALSE(Find(&Editor(), "FrameIndividual")->isEnabled());
  Choose(&Editor(), "Option1_0");
  EXPECT_FALSE(Find(&Editor(), "FrameRange")->isEnabled());
  Tick({3});
  Page("CmdBtnScrollRight");
  Tick({7});
  Click(&Editor(), "CmdBtnClearAll");
  Page("CmdBtnScrollLeft");
  EXPECT_EQ(Shown(), "1-64:") << "Clear All clears every page";
  Tick({3});
  Page("CmdBtnScrollRight");
  EnterRange("1", "9");
  Editor().hide();
  Open();
  EXPECT_TRUE(Find<QRadioButton>(&Editor(), "Option1_0")->isChecked());
  EXPECT_FALSE(Find(&Editor(), "FrameRange")->isEnabled());
  EXPECT_EQ(Shown(), "1-64:");
}

TEST_F(ChSelFileDialogTest, CreateOnTheSetupDialogAnalysesExactlyTheChannelsOfTheFile) {
  const std::string data = Simulate("board.txt", {.channels = 24, .firstChannel = 9, .seed = 11});
  const std::string written = folder.File("board_ChSelFile.txt");
  app->session.sDataDir = folder.Path();
  AddDataSet(data, [&](QWidget* setup) {
    Choose(setup, "btnSelDataFile");
    Type(setup, "txtChSelFile", "/lab/kept.txt");
    WhenModal("frmTarvenixChSelFile", [&](QWidget* editor) {
      Tick({0, 1, 2, 3, 4, 5});
      Click(editor, "cmdBtnCancel");
    });
    Click(setup, "CmdCreateChSelFile");
    EXPECT_TRUE(MessageBoxes::Texts().isEmpty());
    EXPECT_EQ(Text(setup, "txtChSelFile"), QStringLiteral("/lab/kept.txt"));
    EXPECT_FALSE(std::filesystem::exists(written));

    WhenModal("frmTarvenixChSelFile", [&](QWidget* editor) {
      for (int i = 8; i < 32; ++i) Tick({i});  // channels 9..32, the ones under test
      Click(editor, "CmdBtnScrollRight");
      Tick({35});  // channel 100: selected, never failing
      Click(editor, "cmdBtnOK");
    });
    Click(setup, "CmdCreateChSelFile");
    EXPECT_EQ(MessageBoxes::Texts(), QStringList{"Channel Selection File was created successfully."});
    EXPECT_EQ(MessageBoxes::History().back().icon, QMessageBox::Information) << "a confirmation, not a warning";
    EXPECT_EQ(Text(setup, "txtChSelFile").toStdString(), written);
  });
  std::vector<int> expected(24);
  std::iota(expected.begin(), expected.end(), 9);
  expected.push_back(100);
  std::vector<int> selected;
  for (int ch = 1; ch <= kMaxChannels; ++ch)
    if (app->session.iChSelected(ch) == 1) selected.push_back(ch);
  EXPECT_EQ(selected, expected);
  EXPECT_EQ(app->session.iGroupSize(1), 25);
  EXPECT_EQ(Status(), QStringLiteral("Analysis complete."));
}

}  // namespace
}  // namespace tarvenix::test
