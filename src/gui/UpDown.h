#pragma once
// An up/down control: two small arrow buttons that step the number shown in a
// buddy (a text box or a label) within a range. The buddy keeps the text, so a
// user may still type anything into a text box and the checks see it as typed.

#include <QWidget>

class QToolButton;

namespace tarvenix::gui {

class UpDown : public QWidget {
  Q_OBJECT
 public:
  UpDown(QWidget* buddy, int minimum, int maximum, QWidget* parent = nullptr);

  // The buddy's number stepped by `delta` and kept in range; a buddy without a
  // number starts from the end of the range it moves away from.
  void Step(int delta);
  int Minimum() const { return minimum_; }
  int Maximum() const { return maximum_; }

 private:
  QString BuddyText() const;
  void SetBuddyText(const QString& text);

  QWidget* buddy_;
  int minimum_;
  int maximum_;
  QToolButton* up_;
  QToolButton* down_;
};

}  // namespace tarvenix::gui
