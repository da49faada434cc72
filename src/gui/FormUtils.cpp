#include "FormUtils.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QWidget>

#include <algorithm>
#include <climits>

#include "session/Help.h"
#include "base/RuntimeError.h"
#include "session/Utils.h"
#include "App.h"

namespace tarvenix::gui {

QPushButton* MakeButton(QWidget* parent, const char* objectName, const char* caption, const char* toolTip) {
  return Named(new QPushButton(QString::fromLatin1(caption), parent), objectName, toolTip);
}

QPushButton* MakeHelpButton(App& app, QWidget* parent, const char* objectName) {
  QPushButton* button = MakeButton(parent, objectName, "Help", "Press for help");
  button->setAutoDefault(false);
  QObject::connect(button, &QPushButton::clicked, parent, [&app] { ShowHelp(app); });
  return button;
}

QHBoxLayout* ButtonRow(std::initializer_list<QWidget*> buttons) {
  auto* row = new QHBoxLayout;
  row->addStretch();
  for (QWidget* b : buttons) row->addWidget(b);
  return row;
}

bool IsDebugToggleKey(const QKeyEvent* event) {
  return event->key() == Qt::Key_F10 && (event->modifiers() & Qt::AltModifier);
}

void ShowHelp(App& app) { modHelp::ShowHelp(app.session, app.ui); }

void CenterControls(App& app, const std::initializer_list<QWidget*>& row) {
  modUtils::Trapped(app.session, app.ui, "modUtils.CenterControls", [&] {
    if (row.size() == 0) return;
    QWidget* parent = (*row.begin())->parentWidget();
    if (!parent) Raise(err::kInvalidCall);
    int left = INT_MAX;
    int right = INT_MIN;
    for (QWidget* w : row) {
      left = std::min(left, w->x());
      right = std::max(right, w->x() + w->width());
    }
    const int shift = (parent->width() - (right - left)) / 2 - left;
    for (QWidget* w : row) w->move(w->x() + shift, w->y());
  });
}

}  // namespace tarvenix::gui
