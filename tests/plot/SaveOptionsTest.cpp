#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTimer>

#include "plot/frmSystemSaveOptions.h"
#include "support/GuiTest.h"

namespace tarvenix {
namespace {

using test::Click;
using test::WhenModal;

// Shows the dialog modally, as the plot window does, and lets `answer` work
// its controls once it is up.
void ShowModal(frmSystemSaveOptions& dialog, const std::function<void(QWidget*)>& answer) {
  WhenModal("frmSystemSaveOptions", answer);
  dialog.exec();
}

template <typename W>
W* Find(QWidget* d, const char* name) {
  W* w = d->findChild<W*>(QString::fromLatin1(name));
  EXPECT_NE(w, nullptr) << name;
  return w;
}

TEST(SaveOptions, OkTakesNameTypeAndNegativeImage) {
  struct Case {
    const char* typeButton;
    bool negative;
    int16_t type;
  } cases[] = {{"optImgType_0", false, 0}, {"optImgType_1", true, 1}};
  for (const Case& c : cases) {
    frmSystemSaveOptions dialog;
    dialog.SetSaveFilename("run7_weibull");
    QString shown;
    ShowModal(dialog, [&](QWidget* d) {
      QLineEdit* name = Find<QLineEdit>(d, "txtSaveFilename");
      shown = name->text();
      name->setText(QStringLiteral("lot 12"));
      Find<QRadioButton>(d, c.typeButton)->setChecked(true);
      Find<QCheckBox>(d, "chkBoxNegativeImage")->setChecked(c.negative);
      Click(d, "CmdBtnOK");
    });
    EXPECT_EQ(shown, QStringLiteral("run7_weibull"));
    EXPECT_FALSE(dialog.Canceled());
    EXPECT_EQ(dialog.SaveFilename(), "lot 12");
    EXPECT_EQ(dialog.ImgType(), c.type);
    EXPECT_EQ(dialog.UseNegImage(), c.negative);
    EXPECT_FALSE(dialog.isVisible());
  }
}

TEST(SaveOptions, CancelOrClosingKeepsTheNameAndSaysCancelled) {
  for (bool byButton : {true, false}) {
    frmSystemSaveOptions dialog;
    dialog.SetSaveFilename("run7_weibull");
    ShowModal(dialog, [&](QWidget* d) {
      Find<QLineEdit>(d, "txtSaveFilename")->setText(QStringLiteral("changed"));
      if (byButton) {
        Click(d, "cmdBtnCancel");
      } else {
        d->close();
      }
    });
    EXPECT_TRUE(dialog.Canceled());
    EXPECT_EQ(dialog.SaveFilename(), "run7_weibull");
  }
}

}  // namespace
}  // namespace tarvenix
