#include "support/GuiTest.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTest>
#include <QTimer>

#include <cstdlib>

#include "Dialogs.h"
#include "frmTarvenixData.h"
#include "support/FailurePoints.h"

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
    // A modal dialog nobody waits for would hang the test: after 5 seconds
    // it fails the test and is closed.
    auto* watchdog = new QTimer(application_.get());
    QObject::connect(watchdog, &QTimer::timeout, [] {
      static QWidget* last = nullptr;
      static int ticks = 0;
      QWidget* modal = QApplication::activeModalWidget();
      ticks = modal && modal == last ? ticks + 1 : 0;
      last = modal;
      if (ticks < 50) return;
      ADD_FAILURE() << "the dialog " << modal->objectName().toStdString() << " stayed open";
      if (auto* dialog = qobject_cast<QDialog*>(modal)) dialog->done(QDialog::Rejected);
    });
    watchdog->start(100);
  }
  void TearDown() override { application_.reset(); }

 private:
  std::unique_ptr<QApplication> application_;
};

const auto* const kEnvironment = ::testing::AddGlobalTestEnvironment(new QtEnvironment);

// The WhenModal actions still waiting for their dialog.
std::vector<QTimer*>& Waiting() {
  static std::vector<QTimer*> waiting;
  return waiting;
}

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
  StartApp();
}

void GuiTest::TearDown() {
  for (QTimer* timer : Waiting()) {
    ADD_FAILURE() << "the dialog " << timer->objectName().toStdString() << " did not come up";
    delete timer;
  }
  Waiting().clear();
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

frmTarvenixData& GuiTest::Main() { return app->MainWindow(); }
QString GuiTest::Status() { return Find<QLabel>(&Main(), "StatusBar1")->text(); }
QString GuiTest::Log() { return Find<QPlainTextEdit>(&Main(), "TextBox1")->toPlainText(); }

void GuiTest::Trigger(const char* menuItem) {
  auto* action = Main().findChild<QAction*>(QString::fromLatin1(menuItem));
  ASSERT_NE(action, nullptr) << menuItem;
  action->trigger();
}

std::string GuiTest::LastMessage() {
  const auto& shown = gui::MessageBoxes::History();
  return shown.empty() ? "" : shown.back().text.toStdString();
}

void GuiTest::LoadDataSets(int count) {
  Session& s = app->session;
  for (int n = 1; n <= count; ++n) {
    const std::string name = "set" + std::to_string(n);
    s.sDataIDs(n) = std::string(1, static_cast<char>('A' + n - 1));
    s.sDataFiles(n) = dataHome.File(name + ".txt");
    s.sIPCFiles(n) = dataHome.File(name + ".ipc");
    s.sngNParam(n) = 1000.0f * static_cast<float>(n);
    s.bAnalysisComplete(n) = true;
    s.dataSetSettings(n) = RangeSetup(s.sDataIDs(n), s.sDataFiles(n));
    s.dataSetSettings(n).sLastCh = std::to_string(10 * n);
  }
  s.iNumDataSets = static_cast<int16_t>(count);
  s.iDataSetNum = static_cast<int16_t>(count);
  Main().Activate();
}

std::string GuiTest::Simulate(const std::string& name, const sim::SimOptions& options) {
  const std::string path = dataHome.File(name);
  sim::WriteHistoryFile(options, sim::PlanTest(options), path);
  return path;
}

void GuiTest::AddDataSet(const std::string& file, const std::function<void(QWidget*)>& more) {
  WhenModal("frmTarvenixSetup", [&](QWidget* setup) {
    Type(setup, "txtDataFile", file);
    Choose(setup, "btnFirstLastCh");
    Type(setup, "txtFirstCh", "1");
    Type(setup, "txtLastCh", "32");
    Type(setup, "LblOccurrenceLimit", "1");
    if (more) more(setup);
    Click(setup, "cmdBtnOK");
  });
  Click(&Main(), "btnAddDataSet");
}

void WhenModal(const char* objectName, std::function<void(QWidget*)> action) {
  auto* timer = new QTimer;
  timer->setObjectName(QString::fromLatin1(objectName));
  Waiting().push_back(timer);
  auto ticks = std::make_shared<int>(0);
  QObject::connect(timer, &QTimer::timeout, [timer, action, ticks] {
    QWidget* modal = QApplication::activeModalWidget();
    const bool up = modal && modal->objectName() == timer->objectName() && modal->isVisible();
    if (!up && ++*ticks < 500) return;
    std::erase(Waiting(), timer);
    timer->deleteLater();
    timer->stop();
    if (up) return action(modal);
    // Whatever dialog holds the test up instead goes, so the test ends.
    ADD_FAILURE() << "the dialog " << timer->objectName().toStdString() << " did not come up";
    for (QWidget* w : QApplication::topLevelWidgets())
      if (auto* dialog = qobject_cast<QDialog*>(w); dialog && dialog->isVisible()) dialog->done(QDialog::Rejected);
  });
  timer->start(10);
}

void Click(QWidget* parent, const char* buttonName) {
  auto* button = parent->findChild<QAbstractButton*>(QString::fromLatin1(buttonName));
  ASSERT_NE(button, nullptr) << "no button " << buttonName;
  ASSERT_TRUE(button->isEnabled()) << buttonName << " is disabled";
  QTest::mouseClick(button, Qt::LeftButton);
}

void Type(QWidget* parent, const char* name, const std::string& text) {
  auto* w = parent->findChild<QWidget*>(QString::fromLatin1(name));
  ASSERT_NE(w, nullptr) << "no control " << name;
  w->setProperty("text", QString::fromStdString(text));
}

QString Text(const QWidget* parent, const char* name) {
  const auto* w = parent->findChild<const QWidget*>(QString::fromLatin1(name));
  EXPECT_NE(w, nullptr) << "no control " << name;
  return w ? w->property("text").toString() : QString();
}

void Choose(QWidget* parent, const char* radioButtonName) {
  auto* button = parent->findChild<QAbstractButton*>(QString::fromLatin1(radioButtonName));
  ASSERT_NE(button, nullptr) << "no choice " << radioButtonName;
  button->setChecked(true);
}

}  // namespace tarvenix::test
