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

using gui::MessageBoxes;

class DebugWindowTest : public GuiTest {
 protected:
  frmDebug& Window() { return app->Debug(); }
  void Trace(const char* line) { modUtils::DebugPrint(app->ui, line); }
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
  app->session.sDataDir = dataHome.Path();
  Trace("first");
  Trace("second");
  // Whether the first line is selected, the answer to "selected only?", what is saved.
  const std::tuple<bool, QMessageBox::StandardButton, std::string> cases[] = {
      {false, QMessageBox::NoButton, "\r\nfirst\r\nsecond\r\n"},
      {true, QMessageBox::No, "\r\nfirst\r\nsecond\r\n"},
      {true, QMessageBox::Yes, "first\r\n"}};
  for (const auto& [select, answer, saved] : cases) {
    SCOPED_TRACE(saved);
    MessageBoxes::Clear();
    QTextCursor cursor = Window().TextBox()->textCursor();
    cursor.setPosition(select ? 1 : cursor.document()->characterCount() - 1);
    cursor.movePosition(QTextCursor::EndOfBlock, select ? QTextCursor::KeepAnchor : QTextCursor::MoveAnchor);
    Window().TextBox()->setTextCursor(cursor);
    MessageBoxes::SetNextAnswer(answer);
    const std::string file = dataHome.File("log.txt");
    gui::FileDialogs::SetNextFileName(QString::fromStdString(file));
    Click(&Window(), "btnSave");
    EXPECT_EQ(gui::FileDialogs::LastDefaultName().toStdString(), dataHome.File("debug.txt"));
    EXPECT_EQ(MessageBoxes::Texts(), select ? QStringList{"Save selected text only?"} : QStringList{});
    EXPECT_EQ(ReadAll(file), saved);

    const std::string pdf = dataHome.File("log.pdf");
    gui::PrintDialogs::SetNextAnswer({true, 2, select, QString::fromStdString(pdf)});
    Click(&Window(), "btnPrint");
    EXPECT_EQ(gui::PrintDialogs::LastOfferedSelection(), select);
    EXPECT_EQ(ReadAll(pdf).substr(0, 5), "%PDF-");
  }
  MessageBoxes::Clear();
  gui::PrintDialogs::SetNextAnswer({true, 1, false, QString::fromStdString(dataHome.File("no/such/folder/log.pdf"))});
  Click(&Window(), "btnPrint");
  gui::PrintDialogs::SetPrinterInstalled(false);
  Click(&Window(), "btnPrint");
  ASSERT_EQ(MessageBoxes::Texts().size(), 2);
  EXPECT_TRUE(MessageBoxes::Texts()[0].startsWith(QStringLiteral("Error in frmDebug.btnPrint_Click - Error #57")));
  EXPECT_EQ(MessageBoxes::Texts()[1], gui::kNoPrinterMessage);
}

}  // namespace
}  // namespace tarvenix::test
