#pragma once
// What the window tests share: an offscreen QApplication for the whole test
// program, a fresh App per test with its own program folder, settings folder
// and lock folder, and a way to act on a modal dialog once it is up.

#include <gtest/gtest.h>

#include <QString>
#include <QWidget>

#include <functional>
#include <memory>
#include <string>

#include "App.h"
#include "support/TempDir.h"

namespace tarvenix::test {

class GuiTest : public ::testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  // A new App (the old one goes first), not yet started; `dataFile` as if
  // named on the command line.
  App& MakeApp(const std::string& dataFile = {});
  // MakeApp, then start-up with the splash kept short.
  App& StartApp(const std::string& dataFile = {});

  // The settings folder's "Tarvenix.ini".
  std::string SettingsFile() const;

  template <typename W>
  W* Find(const QWidget* parent, const char* name) {
    W* w = parent->findChild<W*>(QString::fromLatin1(name));
    EXPECT_NE(w, nullptr) << "no control " << name;
    return w;
  }

  TempDir programFolder;
  TempDir dataHome;  // the common application data folder (XDG_DATA_HOME, PROGRAMDATA)
  TempDir lockFolder;
  std::unique_ptr<App> app;
};

// Runs `action` on the first modal dialog named `objectName` that comes up,
// from inside its own event loop. A dialog that never shows fails the test;
// `action` must close the dialog (or the test closes it after 5 seconds).
void WhenModal(const char* objectName, std::function<void(QWidget*)> action);

// Clicks a button found by name in `parent`.
void Click(QWidget* parent, const char* buttonName);

}  // namespace tarvenix::test
