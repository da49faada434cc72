#include "UpDown.h"

#include <QLabel>
#include <QLineEdit>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

#include "base/Basic.h"
#include "QtStrings.h"

namespace tarvenix::gui {

UpDown::UpDown(QWidget* buddy, int minimum, int maximum, QWidget* parent)
    : QWidget(parent), buddy_(buddy), minimum_(minimum), maximum_(maximum) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  up_ = new QToolButton(this);
  down_ = new QToolButton(this);
  up_->setObjectName(QStringLiteral("up"));
  down_->setObjectName(QStringLiteral("down"));
  up_->setArrowType(Qt::UpArrow);
  down_->setArrowType(Qt::DownArrow);
  for (QToolButton* b : {up_, down_}) {
    b->setAutoRepeat(true);
    b->setFocusPolicy(Qt::NoFocus);
    b->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    b->setFixedWidth(18);
    layout->addWidget(b);
  }
  connect(up_, &QToolButton::clicked, this, [this] { Step(1); });
  connect(down_, &QToolButton::clicked, this, [this] { Step(-1); });
}

QString UpDown::BuddyText() const {
  if (auto* edit = qobject_cast<QLineEdit*>(buddy_)) return edit->text();
  if (auto* label = qobject_cast<QLabel*>(buddy_)) return label->text();
  return {};
}

void UpDown::SetBuddyText(const QString& text) {
  if (auto* edit = qobject_cast<QLineEdit*>(buddy_)) edit->setText(text);
  if (auto* label = qobject_cast<QLabel*>(buddy_)) label->setText(text);
}

void UpDown::Step(int delta) {
  const std::string text = FromQt(BuddyText().trimmed());
  long long value = 0;
  if (basic::IsNumeric(text)) {
    value = std::llround(std::clamp(basic::Val(text), static_cast<double>(minimum_) - 1.0,
                                    static_cast<double>(maximum_) + 1.0));
    value += delta;
  } else {
    value = delta > 0 ? minimum_ : maximum_;
  }
  value = std::clamp<long long>(value, minimum_, maximum_);
  SetBuddyText(QString::number(value));
}

}  // namespace tarvenix::gui
