// The debug log window: trace lines open it, and the log is saved, printed,
// cleared and thrown away on close.

#include <QPlainTextEdit>
#include <QTextCursor>

#include "Dialogs.h"
#include "frmDebug.h"
#include "session/Utils.h"
#include "support/GuiTest.h"

namespace tarvenix::test {
namespace {

using gui::FileDialogs;
using gui::MessageBoxes;

class DebugWindowTest : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    app->session.sDataDir = dataHome.Path();
  }
  frmDebug& Window() { return app->Debug(); }
  void Trace(const char* line) { modUtils::DebugPrint(app->ui, line); }
  void SelectFirstLine() {
    QTextCursor cursor = Window().TextBox()->textCursor();
    cursor.setPosition(1);
    cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
    Window().TextBox()->setTextCursor(cursor);
  }
};

TEST_F(DebugWindowTest, TraceLinesOpenTheWindowAfterAnEmptyLineAndCloseThrowsThemAway) {
  EXPECT_FALSE(Window().isVisible());
  Trace("Pass 1: 120 lines");
  Trace("Pass 2: 3 channels");
  EXPECT_TRUE(Window().isVisible());
  EXPECT_EQ(Window().Text(), "\r\nPass 1: 120 lines\r\nPass 2: 3 channels");
  Click(&Window(), "btnClear");
  EXPECT_EQ(Window().Text(), "");
  Trace("again");
  Click(&Window(), "btnClose");
  EXPECT_FALSE(Window().isVisible());
  Trace("fresh");
  EXPECT_EQ(Window().Text(), "\r\nfresh");
}

TEST_F(DebugWindowTest, SavesOrPrintsTheWholeLogOrTheSelection) {
  Trace("first");
  Trace("second");
  struct Case {
    bool select;
    QMessageBox::StandardButton answer;
    std::string saved;
  };
  const Case cases[] = {{false, QMessageBox::NoButton, "\r\nfirst\r\nsecond\r\n"},
                        {true, QMessageBox::No, "\r\nfirst\r\nsecond\r\n"},
                        {true, QMessageBox::Yes, "first\r\n"}};
  int n = 0;
  for (const Case& c : cases) {
    SCOPED_TRACE(n);
    MessageBoxes::Clear();
    if (c.select) {
      SelectFirstLine();
      MessageBoxes::SetNextAnswer(c.answer);
    } else {
      Window().TextBox()->moveCursor(QTextCursor::End);
    }
    const std::string file = dataHome.File("log" + std::to_string(n++) + ".txt");
    FileDialogs::SetNextFileName(QString::fromStdString(file));
    Click(&Window(), "btnSave");
    EXPECT_EQ(FileDialogs::LastDefaultName().toStdString(), dataHome.File("debug.txt"));
    EXPECT_EQ(MessageBoxes::Texts(), c.select ? QStringList{"Save selected text only?"} : QStringList{});
    EXPECT_EQ(ReadAll(file), c.saved);

    const std::string pdf = dataHome.File("log" + std::to_string(n) + ".pdf");
    gui::PrintDialogs::SetNextAnswer({true, 2, c.select, QString::fromStdString(pdf)});
    Click(&Window(), "btnPrint");
    EXPECT_EQ(gui::PrintDialogs::LastOfferedSelection(), c.select);
    EXPECT_EQ(ReadAll(pdf).substr(0, 5), "%PDF-");
  }
  MessageBoxes::Clear();
  gui::PrintDialogs::SetNextAnswer({true, 1, false, QString::fromStdString(dataHome.File("no/such/folder/log.pdf"))});
  Click(&Window(), "btnPrint");
  gui::PrintDialogs::SetPrinterInstalled(false);
  Click(&Window(), "btnPrint");
  ASSERT_EQ(MessageBoxes::Texts().size(), 2);
  EXPECT_TRUE(MessageBoxes::Texts()[0].startsWith(QStringLiteral("Error in frmDebug.btnPrint_Click - Error #57")))
      << MessageBoxes::Texts()[0].toStdString();
  EXPECT_EQ(MessageBoxes::Texts()[1], gui::kNoPrinterMessage);
}

}  // namespace
}  // namespace tarvenix::test
