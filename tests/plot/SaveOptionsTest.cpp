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
