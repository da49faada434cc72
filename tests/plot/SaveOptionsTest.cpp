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

namespace tarvenix {
namespace {

// The application lives from before the first test to after the last one.
class QtEnvironment : public ::testing::Environment {
 public:
  void SetUp() override {
    static int argc = 1;
    static char name[] = "plot_save_options_test";
    static char* argv[] = {name, nullptr};
    app_ = std::make_unique<QApplication>(argc, argv);
  }
  void TearDown() override { app_.reset(); }

 private:
  std::unique_ptr<QApplication> app_;
};
const auto* const kEnvironment = ::testing::AddGlobalTestEnvironment(new QtEnvironment);

// Shows the dialog modally, as the plot window does, and lets `answer` work
// its controls once it is up.
void ShowModal(frmSystemSaveOptions& dialog, const std::function<void(frmSystemSaveOptions&)>& answer) {
  QTimer::singleShot(0, &dialog, [&] { answer(dialog); });
  dialog.exec();
}

template <typename W>
W* Find(frmSystemSaveOptions& d, const char* name) {
  W* w = d.findChild<W*>(QString::fromLatin1(name));
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
    ShowModal(dialog, [&](frmSystemSaveOptions& d) {
      QLineEdit* name = Find<QLineEdit>(d, "txtSaveFilename");
      shown = name->text();
      name->setText(QStringLiteral("lot 12"));
      Find<QRadioButton>(d, c.typeButton)->setChecked(true);
      Find<QCheckBox>(d, "chkBoxNegativeImage")->setChecked(c.negative);
      Find<QPushButton>(d, "CmdBtnOK")->click();
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
    ShowModal(dialog, [&](frmSystemSaveOptions& d) {
      Find<QLineEdit>(d, "txtSaveFilename")->setText(QStringLiteral("changed"));
      if (byButton) {
        Find<QPushButton>(d, "cmdBtnCancel")->click();
      } else {
        d.close();
      }
    });
    EXPECT_TRUE(dialog.Canceled());
    EXPECT_EQ(dialog.SaveFilename(), "run7_weibull");
  }
}

}  // namespace
}  // namespace tarvenix
