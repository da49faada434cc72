// The debug log window: lines arrive through the UI port, and the log is
// saved, printed, cleared and thrown away on close.

#include <QPlainTextEdit>
#include <QTextCursor>

#include "session/Utils.h"
#include "frmDebug.h"
#include "Dialogs.h"
#include "support/GuiTest.h"

namespace tarvenix::test {
namespace {

using gui::FileDialogs;
using gui::MessageBoxes;

class DebugWindowTest : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    StartApp();
    app->session.sDataDir = dataHome.Path();
  }
  frmDebug& Log() { return app->Debug(); }
  void SelectFirstLine() {
    QTextCursor cursor = Log().TextBox()->textCursor();
    cursor.setPosition(1);
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    Log().TextBox()->setTextCursor(cursor);
  }
};

TEST_F(DebugWindowTest, TraceLinesOpenTheWindowAfterAnEmptyLine) {
  EXPECT_FALSE(Log().isVisible());
  modUtils::DebugPrint(app->ui, "Pass 1: 120 lines");
  modUtils::DebugPrint(app->ui, "Pass 2: 3 channels");
  EXPECT_TRUE(Log().isVisible());
  EXPECT_EQ(Log().windowTitle(), QStringLiteral("Debug Window for Tarvenix"));
  EXPECT_EQ(Log().Text(), "\r\nPass 1: 120 lines\r\nPass 2: 3 channels");
  EXPECT_TRUE(Log().TextBox()->textCursor().atEnd());

  Click(&Log(), "btnClear");
  EXPECT_EQ(Log().Text(), "");
  modUtils::DebugPrint(app->ui, "again");
  Click(&Log(), "btnClose");
  EXPECT_FALSE(Log().isVisible());
  modUtils::DebugPrint(app->ui, "fresh");
  EXPECT_EQ(Log().Text(), "\r\nfresh");
}

TEST_F(DebugWindowTest, SavesTheWholeLogOrTheSelection) {
  modUtils::DebugPrint(app->ui, "first");
  modUtils::DebugPrint(app->ui, "second");
  struct Case {
    bool select;
    QMessageBox::StandardButton answer;
    std::string saved;
  };
  const Case cases[] = {
      {false, QMessageBox::NoButton, "\r\nfirst\r\nsecond\r\n"},
      {true, QMessageBox::No, "\r\nfirst\r\nsecond\r\n"},
      {true, QMessageBox::Yes, "first\r\n"},
  };
  int n = 0;
  for (const Case& c : cases) {
    SCOPED_TRACE(n);
    MessageBoxes::Clear();
    if (c.select) {
      SelectFirstLine();
      MessageBoxes::SetNextAnswer(c.answer);
    } else {
      Log().TextBox()->moveCursor(QTextCursor::End);
    }
    const std::string file = dataHome.File("log" + std::to_string(n++) + ".txt");
    FileDialogs::SetNextFileName(QString::fromStdString(file));
    Click(&Log(), "btnSave");
    EXPECT_EQ(FileDialogs::LastDefaultName().toStdString(), dataHome.File("debug.txt"));
    EXPECT_EQ(MessageBoxes::Texts(), c.select ? QStringList{"Save selected text only?"} : QStringList{});
    EXPECT_EQ(ReadAll(file), c.saved);
  }
}

TEST_F(DebugWindowTest, PrintsToThePrinterOrSaysThereIsNone) {
  modUtils::DebugPrint(app->ui, "a trace line");
  const std::string pdf = dataHome.File("log.pdf");
  gui::PrintDialogs::SetNextAnswer({true, 2, false, QString::fromStdString(pdf)});
  Click(&Log(), "btnPrint");
  EXPECT_FALSE(gui::PrintDialogs::LastOfferedSelection());
  EXPECT_EQ(ReadAll(pdf).substr(0, 5), "%PDF-");
  EXPECT_TRUE(MessageBoxes::History().empty());

  SelectFirstLine();
  gui::PrintDialogs::SetNextAnswer({false, 1, false, {}});
  Click(&Log(), "btnPrint");
  EXPECT_TRUE(gui::PrintDialogs::LastOfferedSelection());

  gui::PrintDialogs::SetPrinterInstalled(false);
  Click(&Log(), "btnPrint");
  EXPECT_EQ(MessageBoxes::Texts(), QStringList{gui::kNoPrinterMessage});
}

}  // namespace
}  // namespace tarvenix::test
