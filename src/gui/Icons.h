#pragma once
// The pictures on the main window's buttons, the channel editor's page
// buttons and the about window, drawn from
// vector sources so they stay crisp at any screen scaling.

#include <QIcon>
#include <QPixmap>

namespace tarvenix::gui {

enum class IconId { Plot, Print, Save, ViewDataFile, Help, Exit, PageLeft, PageRight };

QIcon MakeIcon(IconId id);
// The about window's picture: Weibull probability paper with a fitted line,
// `size` device-independent pixels square, sharp at the screen's scaling.
QPixmap AboutPicture(int size, qreal devicePixelRatio);

}  // namespace tarvenix::gui
