#pragma once
// What the window tests share: an offscreen QApplication for the whole test
// program, a fresh App per test with its own program, settings and lock
// folders, a way to act on a modal dialog once it is up, and the main window's
// ways in: its controls, its menu items, data sets loaded or added through the
// setup dialog.

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
  void SetUp() override;
  void TearDown() override;

  // A new App (the old one goes first), not yet started.
  App& MakeApp();
  // MakeApp, then start-up with the splash kept short.
  App& StartApp();

  // The settings folder's "Tarvenix.ini".
  std::string SettingsFile() const;

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

  // Data sets as a finished analysis leaves them, IDs A, B, C..., last channels 10, 20, 30...
  void LoadDataSets(int count);
  // A simulated test's data history file in dataHome.
  std::string Simulate(const std::string& name, const sim::SimOptions& options);
  // Add Data Set: channels 1..32 of `file`, limit 1, then `more` on the dialog, then OK.
  void AddDataSet(const std::string& file, const std::function<void(QWidget*)>& more = {});

  TempDir programFolder;
  TempDir dataHome;  // XDG_DATA_HOME: the common application data folder
  TempDir lockFolder;
  std::unique_ptr<App> app;
};

// Runs `action` on the first modal dialog named `objectName` that comes up,
// from inside its own event loop. A dialog that never shows fails the test;
// `action` must close the dialog (or the test closes it after 5 seconds).
void WhenModal(const char* objectName, std::function<void(QWidget*)> action);

// Clicks a button found by name in `parent`.
void Click(QWidget* parent, const char* buttonName);

// Sets a line edit's, label's or radio button's state by name.
void Type(QWidget* parent, const char* name, const std::string& text);
void Choose(QWidget* parent, const char* radioButtonName);

}  // namespace tarvenix::test
