#include "frmAbout.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QScreen>

#include "QtStrings.h"
#include "Icons.h"
#include "tarvenix/Version.h"

namespace tarvenix {

frmAbout::frmAbout(QWidget* parent) : QDialog(parent, Qt::Dialog | Qt::FramelessWindowHint) {
  setObjectName(QStringLiteral("frmAbout"));
  setWindowTitle(QStringLiteral("About Tarvenix"));
  picture_ = new QLabel(this);
  picture_->setObjectName(QStringLiteral("Picture1"));
  const qreal ratio = screen() ? screen()->devicePixelRatio() : 1.0;
  picture_->setPixmap(gui::AboutPicture(128, ratio));
  label_ = new QLabel(this);
  label_->setObjectName(QStringLiteral("Label1"));
  QFont font = label_->font();
  font.setPointSizeF(font.pointSizeF() * 1.15);
  label_->setFont(font);
  label_->setTextFormat(Qt::PlainText);
  label_->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(28, 24, 36, 24);
  layout->setSpacing(24);
  layout->addWidget(picture_);
  layout->addWidget(label_);
  setTitle("Tarvenix");
}

void frmAbout::setTitle(const std::string& sTitle) {
  std::string text = sTitle + " v" + std::to_string(version::kMajor) + "." + std::to_string(version::kMinor) + "." +
                     std::to_string(version::kRevision) + "\r\n" + kPublisherNotice;
  label_->setText(ToQt(text));
  adjustSize();
}

QString frmAbout::LabelText() const { return label_->text(); }

void frmAbout::mousePressEvent(QMouseEvent* event) {
  QDialog::mousePressEvent(event);
  close();
}

void frmAbout::paintEvent(QPaintEvent* event) {
  QDialog::paintEvent(event);
  // Without a window frame the window draws its own edge.
  QPainter p(this);
  p.setPen(QPen(palette().color(QPalette::Mid), 1));
  p.drawRect(rect().adjusted(0, 0, -1, -1));
}

}  // namespace tarvenix
