#pragma once
// The pictures on the main window's buttons, the channel editor's page
// buttons and the about window, drawn from
// vector sources so they stay crisp at any screen scaling.

#include <QIcon>
#include <QPixmap>

class QPainter;

namespace tarvenix::gui {

enum class IconId { Plot, Print, Save, ViewDataFile, Help, Exit, PageLeft, PageRight };

QIcon MakeIcon(IconId id);
// The about window's picture: Weibull probability paper with a fitted line,
// `size` device-independent pixels square, sharp at the screen's scaling.
QPixmap AboutPicture(int size, qreal devicePixelRatio);
// The same picture painted `size` units square from the painter's origin; also
// the program's icon in the desktop's menu.
void PaintAboutPicture(QPainter& painter, qreal size);

}  // namespace tarvenix::gui
