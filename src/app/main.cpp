// tarvenix: the desktop program.

#include <QApplication>
#include <QMainWindow>

#include "tarvenix/Version.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QApplication::setApplicationName("Tarvenix");
  QMainWindow window;
  window.setWindowTitle(QString("Quorvane Tarvenix v%1").arg(tarvenix::version::kText));
  window.resize(800, 600);
  window.show();
  return QApplication::exec();
}
