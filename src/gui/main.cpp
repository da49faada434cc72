// tarvenix: the desktop program. `tarvenix FILE` (also how the file manager
// opens a file with it) starts with the setup dialog for that data history file.

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>

#include "App.h"
#include "Icons.h"
#include "tarvenix/Version.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setApplicationName(QStringLiteral("Tarvenix"));
  QApplication::setOrganizationName(QStringLiteral("Quorvane"));
  QApplication::setApplicationVersion(QString::fromLatin1(tarvenix::version::kText));
  // Lets the desktop match the windows to the menu entry and its icon.
  QGuiApplication::setDesktopFileName(QString::fromLatin1(tarvenix::version::kDesktopId));
  QApplication::setWindowIcon(QIcon(tarvenix::gui::AboutPicture(256, 1.0)));

  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral("Weibull failure analysis of event-logger data"));
  parser.addHelpOption();
  parser.addVersionOption();
  parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("a data history file to set up as the first data set"),
                               QStringLiteral("[FILE]"));
  parser.process(application);

  tarvenix::StartupOptions options;
  if (!parser.positionalArguments().isEmpty())
    options.dataFile = QFileInfo(parser.positionalArguments().constFirst()).absoluteFilePath();
  tarvenix::App app(options);
  if (app.Main() == tarvenix::App::StartResult::Refused) return 1;
  return QApplication::exec();
}
