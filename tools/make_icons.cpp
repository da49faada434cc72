// tarvenix-icons FOLDER: the program's icon for the desktop's menu, drawn by
// the same code as the about window's picture, as a hicolor theme tree:
// FOLDER/<n>x<n>/apps/<id>.png for each size the menu asks for, and
// FOLDER/scalable/apps/<id>.svg.

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QSvgGenerator>

#include <cstdio>

#include "Icons.h"
#include "tarvenix/Version.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "Usage: tarvenix-icons FOLDER\n");
    return 2;
  }
  const QDir root(QString::fromLocal8Bit(argv[1]));
  const QString name = QString::fromLatin1(tarvenix::version::kDesktopId);
  for (int size : {48, 128, 256}) {
    const QString folder = QStringLiteral("%1x%1/apps").arg(size);
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    {
      QPainter painter(&image);
      tarvenix::gui::PaintAboutPicture(painter, size);
    }
    if (!root.mkpath(folder) || !image.save(root.filePath(folder + QLatin1Char('/') + name + QStringLiteral(".png")))) {
      std::fprintf(stderr, "tarvenix-icons: cannot write the %d px icon\n", size);
      return 1;
    }
  }
  const QString folder = QStringLiteral("scalable/apps");
  QSvgGenerator svg;
  svg.setFileName(root.filePath(folder + QLatin1Char('/') + name + QStringLiteral(".svg")));
  svg.setSize(QSize(256, 256));
  svg.setViewBox(QRect(0, 0, 256, 256));
  svg.setTitle(QStringLiteral("Tarvenix"));
  if (!root.mkpath(folder)) return 1;
  QPainter painter;
  if (!painter.begin(&svg)) {
    std::fprintf(stderr, "tarvenix-icons: cannot write the scalable icon\n");
    return 1;
  }
  tarvenix::gui::PaintAboutPicture(painter, 256);
  painter.end();
  return 0;
}
