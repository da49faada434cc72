// tarvenix: the desktop program.

#include <QApplication>

#include "App.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Tarvenix"));
  QApplication::setOrganizationName(QStringLiteral("Quorvane"));
  tarvenix::App app;
  if (app.Main() == tarvenix::App::StartResult::Refused) return 1;
  return QApplication::exec();
}
