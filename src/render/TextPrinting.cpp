#include "TextPrinting.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QPrinter>
#include <QTextLayout>

#include <algorithm>

namespace tarvenix::gui {

bool PrintLines(QPrinter& printer, const QStringList& lines, const QFont& font, int copies) {
  QPainter painter;
  if (!painter.begin(&printer)) return false;
  QFont printFont(font, &printer);
  painter.setFont(printFont);
  const QFontMetricsF metrics(printFont, &printer);
  const QRectF page = printer.pageLayout().paintRectPixels(printer.resolution());
  const QRectF area(0, 0, page.width(), page.height());
  const qreal lineHeight = metrics.lineSpacing();
  qreal y = 0;
  bool pageHasText = false;

  auto newPage = [&] {
    printer.newPage();
    y = 0;
    pageHasText = false;
  };
  for (int copy = 0; copy < std::max(1, copies); ++copy) {
    if (copy > 0) newPage();
    for (const QString& line : lines) {
      // Wrap a long line at the page edge rather than cut it off.
      QTextLayout layout(line, printFont, &printer);
      layout.beginLayout();
      for (QTextLine textLine = layout.createLine(); textLine.isValid(); textLine = layout.createLine())
        textLine.setLineWidth(area.width());
      layout.endLayout();
      const int count = std::max(1, layout.lineCount());
      for (int i = 0; i < count; ++i) {
        if (y + lineHeight > area.height() && pageHasText) newPage();
        if (layout.lineCount() > 0) layout.lineAt(i).draw(&painter, QPointF(area.left(), area.top() + y));
        y += lineHeight;
        pageHasText = true;
      }
    }
  }
  return painter.end();
}

}  // namespace tarvenix::gui
