#pragma once
// The about window, also the splash screen at start-up: a picture and one
// label with the program's name, version and the publisher's notice. A click
// anywhere closes it.

#include <QDialog>

#include <string>

class QLabel;

namespace tarvenix {

class frmAbout : public QDialog {
  Q_OBJECT
 public:
  explicit frmAbout(QWidget* parent = nullptr);

  // The label: sTitle, " v", major.minor.revision, a line break, the notice.
  void setTitle(const std::string& sTitle);
  QString LabelText() const;

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QLabel* picture_;
  QLabel* label_;
};

inline constexpr const char* kPublisherNotice = "Copyright \xA9 Quorvane. All rights reserved.";

}  // namespace tarvenix
