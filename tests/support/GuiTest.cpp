#include "support/GuiTest.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>

#include <cstdlib>

#include "Dialogs.h"

namespace tarvenix::test {
namespace {

// One QApplication for the whole test program, made before any test runs.
class QtEnvironment : public ::testing::Environment {
 public:
  void SetUp() override {
    static int argc = 1;
    static char name[] = "tarvenix-gui-test";
    static char* argv[] = {name, nullptr};
    qputenv("QT_QPA_PLATFORM", "offscreen");
    application_ = std::make_unique<QApplication>(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Tarvenix"));
  }
  void TearDown() override { application_.reset(); }

 private:
  std::unique_ptr<QApplication> application_;
};

const auto* const kEnvironment = ::testing::AddGlobalTestEnvironment(new QtEnvironment);

}  // namespace

void GuiTest::SetUp() {
  // The common application data folder, on Linux and on Windows.
  SetEnvironment("XDG_DATA_HOME", dataHome.Path());
  SetEnvironment("PROGRAMDATA", dataHome.Path());
  gui::SetDialogTestMode(true);
  gui::MessageBoxes::Clear();
  gui::Documents::Clear();
  gui::SoundLog::Clear();
  gui::PrintDialogs::SetPrinterInstalled(true);
}

void GuiTest::TearDown() {
  app.reset();
  gui::MessageBoxes::Clear();
}

App& GuiTest::MakeApp(const std::string& dataFile) {
  app.reset();
  StartupOptions options;
  options.programFolder = QString::fromStdString(programFolder.Path());
  options.lockFolder = QString::fromStdString(lockFolder.Path());
  options.splashSeconds = 0.05;
  options.dataFile = QString::fromStdString(dataFile);
  app = std::make_unique<App>(options);
  return *app;
}

App& GuiTest::StartApp(const std::string& dataFile) {
  MakeApp(dataFile);
  EXPECT_EQ(app->Main(), App::StartResult::Running);
  return *app;
}

std::string GuiTest::SettingsFile() const { return dataHome.File("Vorlantic/Tarvenix.ini"); }

void WhenModal(const char* objectName, std::function<void(QWidget*)> action) {
  const QString name = QString::fromLatin1(objectName);
  auto* timer = new QTimer;
  auto waited = std::make_shared<int>(0);
  timer->setInterval(10);
  QObject::connect(timer, &QTimer::timeout, [timer, name, action, waited] {
    QWidget* modal = QApplication::activeModalWidget();
    if (modal && modal->objectName() == name && modal->isVisible()) {
      timer->stop();
      timer->deleteLater();
      action(modal);
      return;
    }
    if (++*waited > 500) {
      timer->stop();
      timer->deleteLater();
      ADD_FAILURE() << "the dialog " << name.toStdString() << " did not come up";
      if (auto* dialog = qobject_cast<QDialog*>(modal)) dialog->done(QDialog::Rejected);
    }
  });
  timer->start();
}

void Click(QWidget* parent, const char* buttonName) {
  auto* button = parent->findChild<QAbstractButton*>(QString::fromLatin1(buttonName));
  ASSERT_NE(button, nullptr) << "no button " << buttonName;
  ASSERT_TRUE(button->isEnabled()) << buttonName << " is disabled";
  QTest::mouseClick(button, Qt::LeftButton);
}

}  // namespace tarvenix::test
