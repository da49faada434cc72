#pragma once
// What the window tests share: an offscreen QApplication for the whole test
// program; per test a started App with its own program, settings and lock
// folders; modal dialogs acted on from their own event loop; controls found
// by object name; data sets loaded as an analysis leaves them, or added from a
// simulated test through the setup dialog.

#include <gtest/gtest.h>

#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <string>

#include "App.h"
#include "HistorySimulator.h"
#include "support/TempDir.h"

namespace tarvenix::test {

class GuiTest : public ::testing::Test {
 protected:
  void SetUp() override;  // starts an App
  void TearDown() override;

  // A new App (the old one goes first), not yet started; `dataFile` as if
  // named on the command line.
  App& MakeApp(const std::string& dataFile = {});
  // MakeApp, then start-up with the splash kept short.
  App& StartApp(const std::string& dataFile = {});

  template <typename W = QWidget>
  W* Find(const QWidget* parent, const char* name) {
    W* w = parent->findChild<W*>(QString::fromLatin1(name));
    EXPECT_NE(w, nullptr) << "no control " << name;
    return w;
  }

  frmTarvenixData& Main();
  QString Status();
  QString Log();  // the results box
  void Trigger(const char* menuItem);
  // The text of the last message box ("" when none was shown).
  std::string LastMessage();

  // Data sets IDs A, B, C..., last channels 10, 20, 30..., each with an N parameter.
  void LoadDataSets(int count);
  // A simulated test's data history file in dataHome.
  std::string Simulate(const std::string& name, const sim::SimOptions& options);
  // Add Data Set: channels 1..32 of `file`, limit 1, then `more` on the dialog, then OK.
  void AddDataSet(const std::string& file, const std::function<void(QWidget*)>& more = {});

  TempDir programFolder;
  TempDir dataHome;  // the common application data folder (XDG_DATA_HOME, PROGRAMDATA)
  TempDir lockFolder;
  std::unique_ptr<App> app;
};

// Runs `action` on the first modal dialog named `objectName` that comes up,
// from inside its own event loop; `action` must close it. A dialog that never
// comes up fails the test at its end; one nobody waits for fails it and is
// closed after 5 seconds.
void WhenModal(const char* objectName, std::function<void(QWidget*)> action);

// A control found by name in `parent`: clicked (it must be enabled), its text
// property set or read, a radio button chosen.
void Click(QWidget* parent, const char* buttonName);
void Type(QWidget* parent, const char* name, const std::string& text);
QString Text(const QWidget* parent, const char* name);
void Choose(QWidget* parent, const char* radioButtonName);

}  // namespace tarvenix::test
