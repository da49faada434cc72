// tarvenix-screenshots: renders every window of the desktop program to PNG
// files in a folder, so layouts can be looked at under any screen scaling
// (QT_SCALE_FACTOR=1.5). Usage: tarvenix-screenshots OUTPUT_FOLDER [DATA_FILE...]
// With data history files (channels 1 to 32 of each, up to five), the main
// window shows their real analysis instead of sample lines, and the plot window
// is grabbed at two sizes.

#include <QAbstractButton>
#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTimer>

#include <cstdio>

#include "frmDebug.h"
#include "App.h"
#include "DataSetChoosers.h"
#include "Dialogs.h"
#include "frmAbout.h"
#include "frmTarvenixData.h"
#include "frmTarvenixOptions.h"
#include "frmTarvenixSetup.h"
#include "frmTarvenixChSelFile.h"
#include "frmTarvenixFirstCycFailures.h"
#include "frmTarvenixPlot.h"

namespace {

void Save(QWidget& w, const QDir& folder, const char* name) {
  w.show();
  QApplication::processEvents();
  QString path = folder.filePath(QString::fromLatin1(name) + QStringLiteral(".png"));
  if (!w.grab().save(path)) std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
  w.hide();
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  if (argc < 2) {
    std::fprintf(stderr, "Usage: tarvenix-screenshots OUTPUT_FOLDER [DATA_FILE...]\n");
    return 2;
  }
  QDir folder(QString::fromLocal8Bit(argv[1]));
  folder.mkpath(QStringLiteral("."));
  tarvenix::gui::SetDialogTestMode(true);
  tarvenix::StartupOptions options;
  options.lockFolder = folder.absolutePath();
  options.splashSeconds = 0;
  tarvenix::App app(options);
  app.LoadWindows();
  tarvenix::Session& s = app.session;
  s.sDataIDs(1) = "Board A, 85 C";
  s.sDataIDs(2) = "Board B, 125 C";
  s.sDataIDs(3) = "Board C";
  s.iNumDataSets = 3;
  s.iDataSetNum = 3;
  s.bDebug = true;
  tarvenix::DataSetSettings& record = s.dataSetSettings(3);
  record.sDataFile = "/home/lab/vorlantic/data/board-c-thermal-cycling.txt";
  record.sDataID = "Board C";
  record.bNumOccurrences = true;
  record.sOccurrenceLimit = "1";
  record.bTempCycles = true;
  record.bFirstLastCh = true;
  record.sFirstCh = "1";
  record.sLastCh = "32";

  auto& main = app.MainWindow();
  if (argc >= 3) {
    // Real data sets through the setup dialog's OK, one for each file (up to five).
    s.iNumDataSets = 0;
    s.iDataSetNum = 0;
    s.bDebug = false;
    auto& setup = app.Setup();
    const char* ids[] = {"Board A, 85 C", "Board B, 125 C", "Board C", "Board D", "Board E"};
    for (int i = 2; i < argc && i < 7; ++i) {
      setup.SetAddMode(true);
      setup.SetReAnalyzeMode(false);
      setup.Activate();
      setup.findChild<QLineEdit*>(QStringLiteral("txtDataFile"))->setText(QString::fromLocal8Bit(argv[i]));
      setup.findChild<QLineEdit*>(QStringLiteral("txtFirstCh"))->setText(QStringLiteral("1"));
      setup.findChild<QLineEdit*>(QStringLiteral("txtLastCh"))->setText(QStringLiteral("32"));
      setup.findChild<QLineEdit*>(QStringLiteral("MaskEdBoxDataID"))->setText(QString::fromLatin1(ids[i - 2]));
      setup.FinishUp();
    }
    s.bDebug = true;
  } else {
    main.UpdateTextBox("Reading data history file ...");
    main.UpdateTextBox("Data Set #1");
    main.UpdateTextBox("BETA = 2.41");
    main.UpdateTextBox("N50 = 1834 (1602 - 2099)");
    main.UpdateTextBox("R-Squared = 0.97");
    main.UpdateStatus("Analysis complete.");
  }
  main.Activate();
  Save(main, folder, "main-window");
  if (argc >= 3) {
    // The plot window at a small and a large size: the large one switches to
    // the large fonts and markers.
    auto& plot = app.Plot();
    plot.setTitle("");
    for (auto [width, name] : {std::pair{800, "plot-window"}, std::pair{1400, "plot-window-large"}}) {
      plot.show();
      plot.resize(width, width * 3 / 4);
      QApplication::processEvents();
      Save(plot, folder, name);
    }
  }

  auto& setup = app.Setup();
  setup.SetAddMode(false);
  setup.SetReAnalyzeMode(false);
  setup.Activate();
  Save(setup, folder, "setup");
  app.Options().Activate();
  Save(app.Options(), folder, "options");
  app.Edit().Activate();
  Save(app.Edit(), folder, "edit-chooser");
  app.SelectDataSet().Activate();
  Save(app.SelectDataSet(), folder, "select-chooser");
  app.About().setTitle("Tarvenix");
  Save(app.About(), folder, "about");
  tarvenix::FirstCycleFlags flags{};
  flags[3] = flags[17] = flags[1024] = true;
  app.FirstCycFailures().UpdateData(flags);
  app.FirstCycFailures().UpdateCycleMsg(false);
  Save(app.FirstCycFailures(), folder, "first-cycle");
  // The channel selection editor on its first page and on its last, whose
  // four-digit captions are the widest.
  auto& editor = app.ChSelFile();
  s.sDataDir = "/home/lab/vorlantic/data";
  editor.Activate(record.sDataFile);
  for (int box : {0, 1, 2, 3, 4, 9, 17, 40, 63})
    editor.findChild<QCheckBox*>(QStringLiteral("Check1_%1").arg(box))->setChecked(true);
  Save(editor, folder, "chsel-editor");
  for (int page = 0; page < 15; ++page)
    editor.findChild<QAbstractButton*>(QStringLiteral("CmdBtnScrollRight"))->click();
  for (int box : {58, 59, 60, 61, 62, 63})
    editor.findChild<QCheckBox*>(QStringLiteral("Check1_%1").arg(box))->setChecked(true);
  Save(editor, folder, "chsel-editor-last-page");
  editor.findChild<QAbstractButton*>(QStringLiteral("Option1_1"))->click();
  editor.findChild<QLineEdit*>(QStringLiteral("txtFirstCh"))->setText(QStringLiteral("17"));
  editor.findChild<QLineEdit*>(QStringLiteral("txtLastCh"))->setText(QStringLiteral("1024"));
  Save(editor, folder, "chsel-editor-range");
  for (const char* line : {"First pass: 1,204 lines", "Channel 3: event at data cycle 1", "Second pass done"})
    app.Debug().UpdateText(line);
  Save(app.Debug(), folder, "debug-log");
  return 0;
}
