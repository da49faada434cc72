#include "WeibullPainter.h"

#include <algorithm>
#include <cmath>

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

#include "base/RuntimeError.h"
#include "QtStrings.h"

namespace tarvenix::plot {
namespace {

using modTGraph::Graph;

// Sizes in logical pixels. The percent labels keep their 10 and 5 point sizes
// (13 and 7 pixels at 96 dots per inch) so that the close rows at the top of
// the paper never run into each other.
struct Style {
  double margin;
  double gap;
  int titlePx;
  int axisTitlePx;
  int axisLabelPx;
  int percentPx;
  int legendPx;
  double majorTick;
  double minorTick;
  double legendStub;  // the line drawn through a legend entry's marker
};

Style StyleFor(bool large) {
  if (large) return {14, 8, 20, 15, 13, 13, 13, 6, 3, 30};
  return {7, 4, 12, 10, 9, 7, 9, 4, 2, 20};
}

QFont Arial(int pixels, bool bold = false) {
  QFont f(QStringLiteral("Arial"));
  f.setStyleHint(QFont::SansSerif);
  f.setPixelSize(pixels);
  f.setBold(bold);
  return f;
}

constexpr OleColor kSilver = 0xC0C0C0;
constexpr OleColor kMinorGrid = 0xE6E6E6;

double MarkerRadius(const ChartSeries& series) { return series.markerSize * 0.6; }

struct Layout {
  QRectF title;
  QRectF inner;
  QRectF legend;
  int legendColumns = 1;
  double legendRow = 0;
  double legendColumn = 0;
  double horizontalTitleY = 0;  // centre row of the cycles axis title
  double verticalTitleX = 0;    // centre column of the percent axis title
};

double LegendEntryWidth(const ChartSeries& series, const QFontMetricsF& fm, const Style& st) {
  return st.legendStub + st.gap + fm.horizontalAdvance(ToQt(series.title));
}

Layout LayOut(const QSizeF& size, const ChartModel& chart, const Style& st) {
  Layout l;
  const double w = size.width();
  const double h = size.height();
  QFontMetricsF titleFm(Arial(st.titlePx, true));
  QFontMetricsF axisTitleFm(Arial(st.axisTitlePx));
  QFontMetricsF axisLabelFm(Arial(st.axisLabelPx));
  QFontMetricsF percentFm(Arial(st.percentPx));
  QFontMetricsF legendFm(Arial(st.legendPx));

  l.title = QRectF(st.margin, st.margin, w - 2 * st.margin, titleFm.height());

  double legendTop = h - st.margin;
  if (!chart.series.empty()) {
    double widest = 0;
    double tallestMarker = 0;
    for (const ChartSeries& series : chart.series) {
      widest = std::max(widest, LegendEntryWidth(series, legendFm, st));
      tallestMarker = std::max(tallestMarker, 2 * MarkerRadius(series) + 2);
    }
    const double pad = st.gap;
    // A long ID is cut short (with an ellipsis) rather than run off the panel.
    widest = std::min(widest, w - 2 * st.margin - 2 * pad - 3 * st.gap);
    l.legendColumn = widest + 3 * st.gap;
    const int n = static_cast<int>(chart.series.size());
    l.legendColumns = std::clamp(static_cast<int>((w - 2 * st.margin - 2 * pad) / l.legendColumn), 1, n);
    const int rows = (n + l.legendColumns - 1) / l.legendColumns;
    l.legendRow = std::max(legendFm.height(), tallestMarker) + 2;
    const double legendWidth = l.legendColumns * l.legendColumn - 3 * st.gap + 2 * pad;
    const double legendHeight = rows * l.legendRow + 2 * pad;
    legendTop = h - st.margin - legendHeight;
    l.legend = QRectF((w - legendWidth) / 2, legendTop, legendWidth, legendHeight);
    legendTop -= st.gap;
  }
  l.horizontalTitleY = legendTop - axisTitleFm.height() / 2;
  const double innerBottom = legendTop - axisTitleFm.height() - st.gap - axisLabelFm.height() - st.majorTick - 2;
  const double innerTop = l.title.bottom() + st.gap;
  l.verticalTitleX = st.margin + axisTitleFm.height() / 2;
  const double innerLeft =
      st.margin + axisTitleFm.height() + st.gap + percentFm.horizontalAdvance(QStringLiteral("99.6")) + 10;
  const double innerRight = w - st.margin - axisLabelFm.horizontalAdvance(QStringLiteral("1E-10")) / 2;
  l.inner = QRectF(QPointF(std::ceil(innerLeft), std::ceil(innerTop)),
                   QPointF(std::floor(innerRight), std::floor(innerBottom)));
  return l;
}

void DrawBevel(QPainter& p, const QSizeF& size) {
  const QRectF r(0.5, 0.5, size.width() - 1, size.height() - 1);
  p.setPen(QPen(QColor(255, 255, 255), 1));
  p.drawLine(r.topLeft(), r.topRight());
  p.drawLine(r.topLeft(), r.bottomLeft());
  p.setPen(QPen(QColor(128, 128, 128), 1));
  p.drawLine(r.bottomLeft(), r.bottomRight());
  p.drawLine(r.topRight(), r.bottomRight());
}

// The cycles axis: decade lines and the 2..9 lines between them across the
// paper, ticks below it and a "1E<n>" label under each decade that has room.
void DrawCyclesAxis(QPainter& p, const Graph& g, const ChartModel& chart, const Layout& l, const Style& st) {
  const ChartAxis& axis = chart.axes[kAxisBottom];
  const double top = g.sngPlotTop;
  const double bottom = g.sngPlotBottom;
  p.setRenderHint(QPainter::Antialiasing, false);
  for (int k = 0; k < g.iDecades; ++k) {
    for (int m = 2; m <= 9; ++m) {
      double x = modTGraph::ColumnAtDecade(g, k + std::log10(m));
      p.setPen(QPen(ToQColor(kMinorGrid), 1));
      p.drawLine(QLineF(x, top, x, bottom));
      p.setPen(QPen(ToQColor(axis.penColor), 1));
      p.drawLine(QLineF(x, l.inner.bottom(), x, l.inner.bottom() + st.minorTick));
    }
  }
  QFont font = Arial(st.axisLabelPx);
  QFontMetricsF fm(font);
  p.setFont(font);
  const double labelWidth = fm.horizontalAdvance(ToQt(modTGraph::PowerOfTenLabel(g.iLowDecade + g.iDecades)));
  const int every = std::max(1, static_cast<int>(std::ceil((labelWidth + 8) / std::max(1.0f, g.sngDecadeWidth))));
  for (int k = 0; k <= g.iDecades; ++k) {
    double x = modTGraph::ColumnAtDecade(g, k);
    p.setPen(QPen(ToQColor(kSilver), 1));
    if (k > 0 && k < g.iDecades) p.drawLine(QLineF(x, top, x, bottom));
    p.setPen(QPen(ToQColor(axis.penColor), 1));
    p.drawLine(QLineF(x, l.inner.bottom(), x, l.inner.bottom() + st.majorTick));
    if (k % every != 0) continue;
    QString label = ToQt(modTGraph::PowerOfTenLabel(g.iLowDecade + k));
    double width = fm.horizontalAdvance(label);
    p.setPen(ToQColor(axis.labelColor));
    p.drawText(QRectF(x - width / 2 - 1, l.inner.bottom() + st.majorTick + 2, width + 2, fm.height()),
               Qt::AlignCenter, label);
  }
}

// The silver rows of the probability paper.
void DrawProbabilityGrid(QPainter& p, const Graph& g, const std::vector<modTGraph::ProbabilityRow>& rows) {
  p.setRenderHint(QPainter::Antialiasing, false);
  p.setPen(QPen(ToQColor(kSilver), 1, Qt::SolidLine));
  for (const auto& row : rows) p.drawLine(QLineF(g.sngPlotLeft, row.y, g.sngPlotRight, row.y));
}

// Ticks left of the paper and the percent labels, centred on their rows with
// their right edges 10 pixels left of the paper.
void DrawProbabilityLabels(QPainter& p, const Graph& g, const ChartModel& chart,
                           const std::vector<modTGraph::ProbabilityRow>& rows, const Style& st) {
  p.setRenderHint(QPainter::Antialiasing, false);
  QFont font = Arial(st.percentPx);
  QFontMetricsF fm(font);
  p.setFont(font);
  for (const auto& row : rows) {
    p.setPen(QPen(Qt::black, 1, Qt::SolidLine));
    p.drawLine(QLineF(g.sngPlotLeft - g.sngTickLen, row.y, g.sngPlotLeft, row.y));
    QString label = ToQt(row.label);
    double width = fm.horizontalAdvance(label);
    double height = fm.height();
    p.setPen(ToQColor(chart.axes[kAxisLeft].labelColor));
    p.drawText(QRectF(g.sngPlotLeft - width - 10, row.y - height * 0.5, width + 1, height),
               Qt::AlignLeft | Qt::AlignVCenter, label);
  }
}

void DrawAxisTitles(QPainter& p, const ChartModel& chart, const Layout& l, const Style& st, const QSizeF& size) {
  QFont font = Arial(st.axisTitlePx);
  QFontMetricsF fm(font);
  p.setFont(font);
  p.setRenderHint(QPainter::Antialiasing, true);
  const ChartAxis& bottom = chart.axes[kAxisBottom];
  p.setPen(ToQColor(bottom.titleColor));
  p.drawText(QRectF(l.inner.left(), l.horizontalTitleY - fm.height() / 2, l.inner.width(), fm.height()),
             Qt::AlignCenter, ToQt(bottom.title));
  const ChartAxis& left = chart.axes[kAxisLeft];
  p.save();
  p.translate(l.verticalTitleX, (l.inner.top() + l.inner.bottom()) / 2);
  p.rotate(-90);
  p.setPen(ToQColor(left.titleColor));
  const double length = size.height();
  p.drawText(QRectF(-length / 2, -fm.height() / 2, length, fm.height()), Qt::AlignCenter, ToQt(left.title));
  p.restore();
}

}  // namespace

QColor ToQColor(OleColor c) { return QColor(c & 0xFF, (c >> 8) & 0xFF, (c >> 16) & 0xFF); }

void DrawMarker(QPainter& p, const QPointF& c, int16_t style, double r, const QColor& colour, double penWidth) {
  p.setPen(QPen(colour.darker(135), 1));
  p.setBrush(colour);
  switch (style) {
    case kMarkerRectangle:
      p.drawRect(QRectF(c.x() - r, c.y() - r, 2 * r, 2 * r));
      break;
    case kMarkerCircle:
      p.drawEllipse(c, r, r);
      break;
    case kMarkerTriangle:
      p.drawPolygon(QPolygonF({QPointF(c.x(), c.y() - r * 1.15), QPointF(c.x() + r * 1.15, c.y() + r),
                               QPointF(c.x() - r * 1.15, c.y() + r)}));
      break;
    case kMarkerDownTriangle:
      p.drawPolygon(QPolygonF({QPointF(c.x(), c.y() + r * 1.15), QPointF(c.x() + r * 1.15, c.y() - r),
                               QPointF(c.x() - r * 1.15, c.y() - r)}));
      break;
    case kMarkerDiamond:
      p.drawPolygon(QPolygonF({QPointF(c.x(), c.y() - r * 1.3), QPointF(c.x() + r * 1.3, c.y()),
                               QPointF(c.x(), c.y() + r * 1.3), QPointF(c.x() - r * 1.3, c.y())}));
      break;
    case kMarkerSmallDot:
      p.drawEllipse(c, r * 0.5, r * 0.5);
      break;
    default: {  // the crosses and the star are drawn in lines of the series' width
      p.setPen(QPen(colour, std::max(1.5, penWidth), Qt::SolidLine, Qt::FlatCap));
      const double d = r * 1.1;
      if (style == kMarkerCross || style == kMarkerStar) {
        p.drawLine(QLineF(c.x() - d, c.y(), c.x() + d, c.y()));
        p.drawLine(QLineF(c.x(), c.y() - d, c.x(), c.y() + d));
      }
      if (style == kMarkerDiagCross || style == kMarkerStar) {
        const double e = style == kMarkerStar ? d * 0.75 : d;
        p.drawLine(QLineF(c.x() - e, c.y() - e, c.x() + e, c.y() + e));
        p.drawLine(QLineF(c.x() - e, c.y() + e, c.x() + e, c.y() - e));
      }
      break;
    }
  }
}

namespace {

void DrawData(QPainter& p, const ChartModel& chart, const modTGraph::WeibullDrawing& drawing, const Layout& l) {
  p.save();
  p.setClipRect(l.inner.adjusted(-0.5, -0.5, 1.5, 1.5));
  p.setRenderHint(QPainter::Antialiasing, true);
  // Pixel (x, y) is the square from (x, y) to (x + 1, y + 1): draw through its centre.
  p.translate(0.5, 0.5);
  for (const auto& set : drawing.sets) {
    auto found = std::find_if(chart.series.begin(), chart.series.end(),
                              [&](const ChartSeries& series) { return series.dataSet == set.dataSet; });
    if (found == chart.series.end()) continue;
    const ChartSeries& series = *found;
    const QColor colour = ToQColor(series.color);
    p.setPen(QPen(colour, series.penWidth, Qt::SolidLine, Qt::RoundCap));
    for (const auto& seg : set.line) p.drawLine(QLineF(seg.from.x, seg.from.y, seg.to.x, seg.to.y));
    for (const auto& pt : set.points) {
      DrawMarker(p, QPointF(pt.x, pt.y), series.markerStyle, MarkerRadius(series), colour, series.penWidth);
    }
  }
  p.restore();
}

void DrawLegend(QPainter& p, const ChartModel& chart, const Layout& l, const Style& st) {
  if (chart.series.empty()) return;
  p.setRenderHint(QPainter::Antialiasing, false);
  p.setPen(QPen(ToQColor(chart.axes[kAxisBottom].penColor), 1));
  p.setBrush(ToQColor(chart.panelColor));
  p.drawRect(l.legend);
  QFont font = Arial(st.legendPx);
  QFontMetricsF fm(font);
  p.setFont(font);
  p.setRenderHint(QPainter::Antialiasing, true);
  for (std::size_t k = 0; k < chart.series.size(); ++k) {
    const ChartSeries& series = chart.series[k];
    const int column = static_cast<int>(k) % l.legendColumns;
    const int row = static_cast<int>(k) / l.legendColumns;
    const double x = l.legend.left() + st.gap + column * l.legendColumn;
    const double y = l.legend.top() + st.gap + row * l.legendRow + l.legendRow / 2;
    const QColor colour = ToQColor(series.color);
    p.setPen(QPen(colour, series.penWidth));
    p.drawLine(QLineF(x, y, x + st.legendStub, y));
    DrawMarker(p, QPointF(x + st.legendStub / 2, y), series.markerStyle, MarkerRadius(series), colour,
               series.penWidth);
    p.setPen(ToQColor(chart.titleColor));
    const double textWidth = l.legendColumn - 4 * st.gap - st.legendStub;
    p.drawText(QRectF(x + st.legendStub + st.gap, y - fm.height() / 2, textWidth + st.gap, fm.height()),
               Qt::AlignLeft | Qt::AlignVCenter, fm.elidedText(ToQt(series.title), Qt::ElideRight, textWidth));
  }
}

}  // namespace

std::string PaintChart(QPainter& painter, const QSizeF& size, const Session& s, Graph& g, ChartModel& chart) {
  QPainter& p = painter;
  p.save();
  const Style st = StyleFor(static_cast<bool>(g.bLargePlot));
  const QRectF panel(QPointF(0, 0), size);
  p.setClipRect(panel);
  p.fillRect(panel, ToQColor(chart.panelColor));
  if (chart.bevel) DrawBevel(p, size);

  const Layout l = LayOut(size, chart, st);
  chart.inner = {l.inner.left(), l.inner.top(), l.inner.right(), l.inner.bottom()};

  p.setRenderHint(QPainter::TextAntialiasing, true);
  p.setRenderHint(QPainter::Antialiasing, true);
  p.setFont(Arial(st.titlePx, true));
  p.setPen(ToQColor(chart.titleColor));
  p.drawText(l.title, Qt::AlignCenter,
             QFontMetricsF(p.font()).elidedText(ToQt(chart.title), Qt::ElideRight, l.title.width()));

  // The cycles axis needs a finished build; the probability scale does not.
  bool cyclesKnown = false;
  if (g.bPlotReady) {
    try {
      modTGraph::SetWeibullAxes(s, g, chart);
      cyclesKnown = true;
    } catch (const RuntimeError&) {
      cyclesKnown = false;
    }
  }
  if (!cyclesKnown) modTGraph::SetProbabilityScale(g, chart);

  std::string warning;
  if (l.inner.width() > 0 && l.inner.height() > 0) {
    const auto rows = modTGraph::ProbabilityRows(g);
    if (cyclesKnown) DrawCyclesAxis(p, g, chart, l, st);
    DrawProbabilityGrid(p, g, rows);
    p.setRenderHint(QPainter::Antialiasing, false);
    p.setPen(QPen(ToQColor(chart.axes[kAxisLeft].penColor), 1));
    p.setBrush(Qt::NoBrush);
    p.drawRect(l.inner);
    DrawProbabilityLabels(p, g, chart, rows, st);
    DrawAxisTitles(p, chart, l, st, size);
    const modTGraph::WeibullDrawing drawing = modTGraph::DrawWeibullData(s, g, chart);
    DrawData(p, chart, drawing, l);
    warning = drawing.warning;
  }
  DrawLegend(p, chart, l, st);
  p.restore();
  return warning;
}

}  // namespace tarvenix::plot
