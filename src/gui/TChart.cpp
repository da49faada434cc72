#include "TChart.h"

#include <QPainter>

#include "WeibullPainter.h"

namespace tarvenix {

TChart::TChart(const Session& session, QWidget* parent) : QWidget(parent), session_(session) {
  setObjectName(QStringLiteral("TChart1"));
  setAttribute(Qt::WA_OpaquePaintEvent);
  setMinimumSize(120, 90);
}

void TChart::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const std::string warning = plot::PaintChart(painter, QSizeF(size()), session_, graph_, chart_);
  painter.end();
  if (afterDraw_) afterDraw_(warning);
}

void TChart::Export(const std::string& path, plot::ImageFormat format) {
  plot::ExportChart(path, format, size(), session_, graph_, chart_);
}

bool TChart::ExportRecording(const std::string& path) {
  return plot::ExportRecording(path, size(), session_, graph_, chart_);
}

}  // namespace tarvenix
