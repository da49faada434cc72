// The first-cycle question as the reader asks it through the UI port.

#include <QLabel>
#include <QLineEdit>
#include <QTest>

#include "frmTarvenixData.h"
#include "frmTarvenixFirstCycFailures.h"
#include "support/GuiTest.h"

namespace tarvenix::test {
namespace {

class FirstCycleDialogTest : public GuiTest {};

TEST_F(FirstCycleDialogTest, ListsTheChannelsAndTakesTheAnswer) {
  StartApp();
  FirstCycleFlags flags{};
  flags[1024] = flags[3] = true;
  struct Case {
    bool dataCycles;
    const char* button;  // nullptr: closed with Escape
    std::optional<bool> answer;
    const char* caption;
    const char* label;
  };
  const Case cases[] = {
      {true, "cmdBtnYes", true, "First Data Cycle Events Found", "The following channels have first data-cycle events:"},
      {false, "cmdBtnNo", false, "First Temp. or Mech. Cycle Events Found",
       "The following channels have first temp./mech.-cycle events:"},
      {true, nullptr, std::nullopt, "First Data Cycle Events Found",
       "The following channels have first data-cycle events:"},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.caption);
    app->session.bIgnoreFirstCycles = true;
    WhenModal("frmTarvenixFirstCycFailures", [&](QWidget* dialog) {
      EXPECT_EQ(dialog->windowTitle(), QString::fromLatin1(c.caption));
      EXPECT_EQ(Find<QLabel>(dialog, "LblCycleType")->text(), QString::fromLatin1(c.label));
      EXPECT_EQ(Find<QLineEdit>(dialog, "txtBox1")->text(), QStringLiteral(" 3 1024"));
      if (c.button) {
        Click(dialog, c.button);
      } else {
        QTest::keyClick(dialog, Qt::Key_Escape);
      }
    });
    EXPECT_EQ(app->ui.AskIgnoreFirstCycleEvents(flags, c.dataCycles), c.answer);
    // Closing without an answer leaves the previous one.
    EXPECT_EQ(static_cast<bool>(app->session.bIgnoreFirstCycles), c.answer.value_or(true));
  }
}

}  // namespace
}  // namespace tarvenix::test
