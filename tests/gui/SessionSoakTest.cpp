// The main window's commands in random order against the real windows, with
// what must hold after every step: no internal error box, the current data set
// among the loaded ones, the commands as the session allows them, the open plot
// showing exactly the analysed data sets, and every result under the data set
// it belongs to. `make test` runs a short sequence; `make soak` runs one for
// TARVENIX_SOAK_SECONDS (600 there).

#include <QApplication>
#include <QComboBox>
#include <QDialog>
#include <QPointer>
#include <QTimer>

#include <chrono>
#include <functional>
#include <random>

#include "Dialogs.h"
#include "analysis/Weibull.h"
#include "frmTarvenixData.h"
#include "TChart.h"
#include "frmTarvenixPlot.h"
#include "plot/TGraph.h"
#include "support/GuiTest.h"
#include "support/RecordingUi.h"

namespace tarvenix::test {
namespace {

using gui::MessageBoxes;

// What the next dialogs that come up are answered with; a dialog nobody
// planned for is cancelled (and counts as a fault when it is the setup).
struct Plan {
  std::function<void(QWidget*)> setup;  // fills and presses OK or Cancel
  int chooserIndex = -1;                // -1: Cancel
  std::optional<bool> firstCycle;       // nothing: Escape
  std::function<void(QWidget*)> options;
};

class SessionSoakTest : public GuiTest {
 protected:
  void SetUp() override {
    GuiTest::SetUp();
    good_ = Simulate("good.txt", {.channels = 32, .seed = 3});
    few_ = Simulate("few.txt", {.channels = 3, .seed = 4});
    early_ = Simulate("early.txt", {.channels = 32, .seed = 5, .firstCycleFailures = 2});
    badChSel_ = dataHome.Write("bad-channels.txt", "1\r\n2\r\n2\r\n");
  }

  // A fresh program, with a hand that answers whatever dialog is up from
  // inside its own event loop.
  void Restart() {
    StartApp();
    auto* answerer = new QTimer(&Main());
    QObject::connect(answerer, &QTimer::timeout, [this] { AnswerDialog(); });
    answerer->start(2);
  }

  // Each dialog that comes up gets its answer posted once; the answer runs
  // from the event loop, so the dialogs it opens in turn are answered too.
  void AnswerDialog() {
    QWidget* modal = QApplication::activeModalWidget();
    if (modal == answered_) return;
    answered_ = modal;
    if (!modal || !modal->isVisible()) return;
    const QString name = modal->objectName();
    std::function<void()> answer = [modal] { static_cast<QDialog*>(modal)->reject(); };
    if (name == "frmTarvenixSetup" && plan_.setup) {
      answer = [modal, fill = std::exchange(plan_.setup, nullptr)] { fill(modal); };
    } else if (name == "frmTarvenixEdit" || name == "frmTarvenixSelectDataSet") {
      answer = [this, modal, index = plan_.chooserIndex] {
        if (index < 0) return Click(modal, "cmdBtnCancel");
        auto* list = Find<QComboBox>(modal, "cmbBoxDataSet");
        list->setCurrentIndex(std::min(index, list->count() - 1));
        Click(modal, "cmdBtnOK");
      };
    } else if (name == "frmTarvenixFirstCycFailures" && plan_.firstCycle) {
      answer = [modal, yes = *plan_.firstCycle] { Click(modal, yes ? "cmdBtnYes" : "cmdBtnNo"); };
    } else if (name == "frmTarvenixOptions" && plan_.options) {
      answer = [modal, choose = std::exchange(plan_.options, nullptr)] { choose(modal); };
    }
    QTimer::singleShot(0, modal, answer);
  }

  // The setup dialog's entries for one of the prepared files.
  std::function<void(QWidget*)> Entries(std::string file, bool ok, bool badChannels = false, bool badRange = false) {
    return [=, this](QWidget* setup) {
      Type(setup, "txtDataFile", file);
      if (badChannels) {
        Choose(setup, "btnSelDataFile");
        Type(setup, "txtChSelFile", badChSel_);
      } else {
        Choose(setup, "btnFirstLastCh");
        Type(setup, "txtFirstCh", badRange ? "30" : "1");
        Type(setup, "txtLastCh", "32");
      }
      Click(setup, ok ? "cmdBtnOK" : "cmdBtnCancel");
      // A refused entry leaves the dialog open: it is cancelled then.
      if (setup->isVisible()) Click(setup, "cmdBtnCancel");
    };
  }

  void Step(std::mt19937& rng) {
    auto pick = [&](int n) { return static_cast<int>(rng() % static_cast<unsigned>(n)); };
    const std::string files[] = {good_, few_, early_};
    const std::string file = files[pick(3)];
    plan_ = Plan{};
    answered_ = nullptr;  // a dialog of the step before may come up again
    plan_.firstCycle = pick(3) == 0 ? std::nullopt : std::optional<bool>(pick(2) == 0);
    plan_.chooserIndex = pick(6) - 1;
    const Session& s = app->session;
    switch (pick(9)) {
      case 0:
      case 1:
        if (s.iNumDataSets >= kMaxDataSets) break;
        plan_.setup = Entries(file, pick(5) != 0, pick(6) == 0, pick(6) == 0);
        Click(&Main(), "btnAddDataSet");
        break;
      case 2:
        if (s.iNumDataSets == 0) break;
        plan_.setup = Entries(file, pick(3) != 0);
        Click(&Main(), "btnEdit");
        break;
      case 3:
        if (s.iNumDataSets == 0) break;
        plan_.setup = Entries(file, false);  // only if the saved entries are refused
        Click(&Main(), "btnReAnalyze");
        break;
      case 4:
        if (pick(4) == 0 && s.iNumDataSets > 0) Click(&Main(), "btnClear");
        break;
      case 5:
        if (s.iNumDataSets > 0) Click(&Main(), "CmdPlot");
        break;
      case 6:
        app->Plot().hide();
        break;
      case 7:
        if (s.iNumDataSets == 0) break;
        gui::FileDialogs::SetNextFileName(QString::fromStdString(dataHome.File("analysis.txt")));
        MessageBoxes::SetNextAnswer(QMessageBox::No);
        Click(&Main(), "CmdSave");
        break;
      case 8:
        plan_.options = [&, choice = pick(2)](QWidget* options) {
          Choose(options, choice ? "btnN63" : "btnN50");
          Choose(options, pick(2) ? "btnMedianFraction" : "btnUnadjustedFraction");
          Click(options, "CmdBtnOK");
        };
        Trigger("mnuOptionsTarvenixOptions");
        break;
    }
    QApplication::processEvents();
  }

  // What must hold whenever no dialog is open.
  void CheckInvariants(int step) {
    SCOPED_TRACE("after step " + std::to_string(step));
    const Session& s = app->session;
    for (const auto& box : MessageBoxes::History())
      ASSERT_FALSE(box.text.contains(QStringLiteral(" - Error #"))) << box.text.toStdString();
    MessageBoxes::Clear();
    ASSERT_GE(s.iNumDataSets, 0);
    ASSERT_LE(s.iNumDataSets, kMaxDataSets);
    ASSERT_EQ(s.iDataSetNum == 0, s.iNumDataSets == 0) << s.iDataSetNum;
    ASSERT_LE(s.iDataSetNum, s.iNumDataSets);
    EXPECT_EQ(Find(&Main(), "btnAddDataSet")->isEnabled(), s.iNumDataSets < kMaxDataSets);
    for (const char* name : {"btnEdit", "btnReAnalyze", "btnClear", "CmdPlot", "CmdSave", "CmdViewDataFile"})
      ASSERT_EQ(Find(&Main(), name)->isEnabled(), s.iNumDataSets > 0) << name;

    const std::vector<int> completed = modTarvenix::CompletedDataSets(s);
    frmTarvenixPlot& plot = app->Plot();
    if (plot.isVisible()) {
      std::vector<int> drawn;
      for (const ChartSeries& series : plot.Chart().Model().series) drawn.push_back(series.dataSet);
      ASSERT_EQ(drawn, completed);
    }
    for (int k = 1; k <= s.iNumDataSets; ++k) {
      if (!s.bAnalysisComplete(k)) {
        ASSERT_EQ(s.iNumEvents(k), 0) << k;
        ASSERT_EQ(s.sBetaResult(k) + s.sNResult(k), "") << k;
        continue;
      }
      // Analysing data set k again from its own points gives what it shows.
      Session again = s;
      again.iDataSetNum = static_cast<int16_t>(k);
      RecordingUi quiet;
      modTarvenix::AnalyzeData(again, quiet, false);
      ASSERT_EQ(again.sngBeta(k), s.sngBeta(k)) << k;
      ASSERT_EQ(again.sngNParam(k), s.sngNParam(k)) << k;
      ASSERT_NE(s.sBetaResult(k).find(again.sBetaResult(k)), std::string::npos) << k;
      ASSERT_NE(s.sNResult(k).find(again.sNResult(k)), std::string::npos) << k;
    }
  }

  void Run(unsigned seed, int steps, double seconds) {
    std::mt19937 rng(seed);
    const auto end = std::chrono::steady_clock::now() + std::chrono::duration<double>(seconds);
    int step = 0;
    for (; step < steps || std::chrono::steady_clock::now() < end; ++step) {
      Step(rng);
      CheckInvariants(step);
      if (HasFatalFailure()) break;
    }
    std::printf("seed %u: %d steps\n", seed, step);
  }

  std::string good_, few_, early_, badChSel_;
  Plan plan_;
  QPointer<QWidget> answered_;
};

TEST_F(SessionSoakTest, RandomCommandsKeepEverySessionRule) {
  const char* soak = std::getenv("TARVENIX_SOAK_SECONDS");
  const double seconds = soak ? std::atof(soak) : 0;
  for (unsigned seed : {1u, 2u, 3u}) {
    Restart();
    Run(seed, 150, seconds / 3);
    if (HasFatalFailure()) return;
  }
}

}  // namespace
}  // namespace tarvenix::test
