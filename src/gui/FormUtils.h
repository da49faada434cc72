#pragma once
// Small pieces every window builds with: named controls, tool tips, the help
// button, and centring a row of controls.

#include <QString>

#include <initializer_list>

class QAbstractButton;
class QHBoxLayout;
class QKeyEvent;
class QPushButton;
class QWidget;

namespace tarvenix {
class App;
}

namespace tarvenix::gui {

// A control named as the program names it, with its tool tip.
template <typename W>
W* Named(W* widget, const char* objectName, const char* toolTip = nullptr) {
  widget->setObjectName(QString::fromLatin1(objectName));
  if (toolTip) widget->setToolTip(QString::fromLatin1(toolTip));
  return widget;
}

QPushButton* MakeButton(QWidget* parent, const char* objectName, const char* caption, const char* toolTip);
// "Help" with "Press for help", opening the help file.
QPushButton* MakeHelpButton(App& app, QWidget* parent, const char* objectName = "btnHelp");

// Alt+F10, the key that turns debug mode on and off.
bool IsDebugToggleKey(const QKeyEvent* event);

// The row of command buttons at the foot of a dialog, right-aligned.
QHBoxLayout* ButtonRow(std::initializer_list<QWidget*> buttons);

// Opens the help file (F1 and every Help button).
void ShowHelp(App& app);

// Moves the widgets so that, as a row with their current gaps, they are centred
// horizontally in their parent (CenterControls). Errors: "modUtils.CenterControls".
void CenterControls(App& app, const std::initializer_list<QWidget*>& row);

}  // namespace tarvenix::gui
