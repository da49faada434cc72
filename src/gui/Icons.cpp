#include "Icons.h"

#include <QPainter>
#include <QPainterPath>
#include <QSvgRenderer>

namespace tarvenix::gui {
namespace {

// 32 x 32 drawings in one palette: dark slate outlines, a blue accent.
const char* SvgSource(IconId id) {
  switch (id) {
    case IconId::Plot:
      return R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 32 32">
        <rect x="3" y="3" width="26" height="26" rx="2" fill="#ffffff" stroke="#33414e" stroke-width="2"/>
        <path d="M7 9h18M7 14h18M7 19h18M7 24h18" stroke="#c8ced4" stroke-width="1"/>
        <path d="M6 27L27 5" stroke="#1f6fb8" stroke-width="2.5" stroke-linecap="round"/>
        <circle cx="10" cy="22" r="2" fill="#d9534f"/><circle cx="15" cy="18" r="2" fill="#d9534f"/>
        <circle cx="19" cy="12" r="2" fill="#d9534f"/><circle cx="23" cy="10" r="2" fill="#d9534f"/>
      </svg>)";
    case IconId::Print:
      return R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 32 32">
        <rect x="9" y="3" width="14" height="9" fill="#ffffff" stroke="#33414e" stroke-width="2"/>
        <rect x="3" y="11" width="26" height="12" rx="2" fill="#7b8a97" stroke="#33414e" stroke-width="2"/>
        <circle cx="25" cy="15" r="1.5" fill="#7fdc7f"/>
        <rect x="9" y="19" width="14" height="10" fill="#ffffff" stroke="#33414e" stroke-width="2"/>
        <path d="M12 23h8M12 26h6" stroke="#1f6fb8" stroke-width="1.5"/>
      </svg>)";
    case IconId::Save:
      return R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 32 32">
        <path d="M4 4h20l4 4v20H4z" fill="#1f6fb8" stroke="#33414e" stroke-width="2" stroke-linejoin="round"/>
        <rect x="9" y="5" width="13" height="8" fill="#e8eef4"/>
        <rect x="18" y="6.5" width="2.5" height="5" fill="#33414e"/>
        <rect x="8" y="17" width="16" height="10" fill="#ffffff"/>
        <path d="M10 20.5h12M10 23.5h12" stroke="#7b8a97" stroke-width="1.2"/>
      </svg>)";
    case IconId::ViewDataFile:
      return R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 32 32">
        <path d="M5 3h14l6 6v20H5z" fill="#ffffff" stroke="#33414e" stroke-width="2" stroke-linejoin="round"/>
        <path d="M19 3v6h6" fill="none" stroke="#33414e" stroke-width="2" stroke-linejoin="round"/>
        <path d="M9 12h9M9 16h7M9 20h5" stroke="#7b8a97" stroke-width="1.5"/>
        <circle cx="20" cy="20" r="5" fill="#d8e9f8" stroke="#1f6fb8" stroke-width="2.5"/>
        <path d="M23.5 23.5L29 29" stroke="#1f6fb8" stroke-width="3" stroke-linecap="round"/>
      </svg>)";
    case IconId::Help:
      return R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 32 32">
        <circle cx="16" cy="16" r="13" fill="#1f6fb8" stroke="#33414e" stroke-width="2"/>
        <path d="M11.5 12.5a4.5 4.5 0 1 1 6.5 4c-1.4.8-2 1.6-2 3.2v1" fill="none" stroke="#ffffff"
              stroke-width="3" stroke-linecap="round"/>
        <circle cx="16" cy="25" r="1.9" fill="#ffffff"/>
      </svg>)";
    case IconId::Exit:
      return R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 32 32">
        <path d="M4 3h15v26H4z" fill="#e8eef4" stroke="#33414e" stroke-width="2" stroke-linejoin="round"/>
        <path d="M4 3l9 3v26l-9-3z" fill="#7b8a97" stroke="#33414e" stroke-width="2" stroke-linejoin="round"/>
        <path d="M17 16h12M24 11l5 5-5 5" fill="none" stroke="#d9534f" stroke-width="3"
              stroke-linecap="round" stroke-linejoin="round"/>
      </svg>)";
    case IconId::PageLeft:
      return R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 32 32">
        <path d="M25 3L5 16l20 13z" fill="#1f6fb8" stroke="#33414e" stroke-width="2" stroke-linejoin="round"/>
      </svg>)";
    case IconId::PageRight:
      return R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 32 32">
        <path d="M7 3l20 13-20 13z" fill="#1f6fb8" stroke="#33414e" stroke-width="2" stroke-linejoin="round"/>
      </svg>)";
  }
  return "";
}

}  // namespace

QIcon MakeIcon(IconId id) {
  QSvgRenderer renderer(QByteArray(SvgSource(id)));
  QIcon icon;
  // Pixmaps for the usual button sizes at 100 %, 150 % and 200 % scaling.
  for (int size : {16, 24, 32, 36, 48, 64, 96}) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    renderer.render(&painter);
    icon.addPixmap(pixmap);
  }
  return icon;
}

QPixmap AboutPicture(int size, qreal devicePixelRatio) {
  const int device = qRound(size * devicePixelRatio);
  QPixmap pixmap(device, device);
  pixmap.setDevicePixelRatio(devicePixelRatio);
  pixmap.fill(Qt::transparent);
  QPainter p(&pixmap);
  PaintAboutPicture(p, size);
  return pixmap;
}

void PaintAboutPicture(QPainter& p, qreal s) {
  p.setRenderHint(QPainter::Antialiasing);
  QRectF paper(s * 0.06, s * 0.06, s * 0.88, s * 0.88);
  p.setPen(QPen(QColor(0x33, 0x41, 0x4e), s * 0.02));
  p.setBrush(Qt::white);
  p.drawRoundedRect(paper, s * 0.05, s * 0.05);
  // Probability paper: rulings crowd towards the top and bottom, decades evenly.
  p.setPen(QPen(QColor(0xc0, 0xc6, 0xcc), s * 0.006));
  const qreal rows[] = {0.10, 0.16, 0.24, 0.34, 0.46, 0.58, 0.68, 0.76, 0.82, 0.86};
  for (qreal r : rows) {
    qreal y = paper.top() + paper.height() * r;
    p.drawLine(QPointF(paper.left() + s * 0.04, y), QPointF(paper.right() - s * 0.04, y));
  }
  for (int decade = 1; decade < 4; ++decade) {
    qreal x = paper.left() + paper.width() * decade / 4.0;
    p.drawLine(QPointF(x, paper.top() + s * 0.04), QPointF(x, paper.bottom() - s * 0.04));
  }
  // Two data sets with their fitted lines.
  struct Series {
    QColor colour;
    QPointF from, to;
    qreal points[5][2];
  };
  const Series series[] = {
      {QColor(0x1f, 0x6f, 0xb8), {0.14, 0.86}, {0.70, 0.12}, {{0.22, 0.74}, {0.30, 0.66}, {0.37, 0.55}, {0.46, 0.44}, {0.55, 0.30}}},
      {QColor(0xd9, 0x53, 0x4f), {0.36, 0.88}, {0.88, 0.16}, {{0.44, 0.78}, {0.52, 0.66}, {0.60, 0.57}, {0.68, 0.46}, {0.76, 0.34}}},
  };
  auto at = [&](qreal x, qreal y) { return QPointF(paper.left() + paper.width() * x, paper.top() + paper.height() * y); };
  for (const Series& line : series) {
    p.setPen(QPen(line.colour, s * 0.025, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(at(line.from.x(), line.from.y()), at(line.to.x(), line.to.y()));
    p.setBrush(line.colour);
    p.setPen(Qt::NoPen);
    for (const auto& pt : line.points) p.drawEllipse(at(pt[0], pt[1]), s * 0.022, s * 0.022);
  }
}

}  // namespace tarvenix::gui
