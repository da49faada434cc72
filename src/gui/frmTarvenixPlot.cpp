#include "frmTarvenixPlot.h"

#include <exception>

#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QResizeEvent>
#include <QScreen>

#include "base/Basic.h"
#include "session/FileUtils.h"
#include "session/Utils.h"
#include "App.h"
#include "Dialogs.h"
#include "FormUtils.h"
#include "PlotExport.h"
#include "QtStrings.h"
#include "TChart.h"
#include "frmSystemSaveOptions.h"

namespace tarvenix {
namespace {

QSize g_screenOverride;

constexpr const char* kNotExported = "Enhanced metafile was not exported.";
constexpr const char* kDidNotPlay = "Enhanced metafile did not play.";

}  // namespace

void frmTarvenixPlot::SetScreenSizeOverride(QSize size) { g_screenOverride = size; }

frmTarvenixPlot::frmTarvenixPlot(App& app, QWidget* parent) : QWidget(parent, Qt::Window), app_(app) {
  setObjectName(QStringLiteral("frmTarvenixPlot"));
  setWindowTitle(QStringLiteral("Tarvenix Weibull Plot"));

  TChart1_ = new TChart(app_.session, this);
  Label1_ = gui::Named(new QLabel(this), "Label1");
  Label1_->setStyleSheet(QStringLiteral("color: #b00020; font-weight: bold;"));
  Label1_->setVisible(false);
  CmdSave_ = gui::MakeButton(this, "CmdSave", "&Save", "Save the plot as an image");
  CmdPrint_ = gui::MakeButton(this, "CmdPrint", "&Print", "Print the plot");
  CmdHelp_ = gui::MakeButton(this, "CmdHelp", "&Help", "Press for help");
  CmdExit_ = gui::MakeButton(this, "CmdExit", "E&xit", "Close the plot window");
  for (QPushButton* b : {CmdSave_, CmdPrint_, CmdHelp_, CmdExit_}) {
    b->setAutoDefault(false);
    b->resize(std::max(b->sizeHint().width(), 90), b->sizeHint().height());
  }
  connect(CmdSave_, &QPushButton::clicked, this, &frmTarvenixPlot::CmdSave_Click);
  connect(CmdPrint_, &QPushButton::clicked, this, &frmTarvenixPlot::CmdPrint_Click);
  connect(CmdHelp_, &QPushButton::clicked, this, &frmTarvenixPlot::CmdHelp_Click);
  connect(CmdExit_, &QPushButton::clicked, this, &frmTarvenixPlot::CmdExit_Click);
  saveOptions_ = new frmSystemSaveOptions(this);

  TChart1_->SetAfterDraw([this](const std::string& warning) { ShowWarning(warning); });
  setMinimumSize(400, 300);
  resize(960, 720);
  SelectScheme(kSchemeScreen, true);
}

frmTarvenixPlot::~frmTarvenixPlot() = default;

void frmTarvenixPlot::setTitle(const std::string& title) { app_.session.sPlotTitle = title; }

int frmTarvenixPlot::Twips(int twips) const { return twips * logicalDpiX() / 1440; }

void frmTarvenixPlot::Redraw() {
  // A hidden window draws nothing: it is loaded at start-up, before any data set.
  if (redrawing_ || !isVisible()) return;
  redrawing_ = true;
  modUtils::Trapped(app_.session, app_.ui, "frmTarvenixPlot.Redraw", [&] {
    QSize screen = g_screenOverride;
    if (!screen.isValid()) {
      const QScreen* s = this->screen() ? this->screen() : QGuiApplication::primaryScreen();
      screen = s ? s->size() : QSize(1920, 1080);
    }
    bLargePlot_ = modTGraph::IsLargePlot(width(), height(), screen.width(), screen.height());
    modTGraph::BuildWeibullPlot(app_.session, TChart1_->Graph(), TChart1_->Model(), grInfo_, scheme_, bLargePlot_,
                                basic::Now());
  });
  TChart1_->update();
  redrawing_ = false;
}

void frmTarvenixPlot::SelectScheme(int32_t scheme, bool bevel) {
  scheme_ = scheme;
  TChart1_->Model().bevel = bevel;
  Redraw();
}

void frmTarvenixPlot::ShowWarning(const std::string& warning) {
  // The data sets left out for a failed analysis, then those without a visible point.
  std::string text = modTGraph::NotDrawnNote(app_.session);
  if (!text.empty() && !warning.empty()) text += "\n";
  text += warning;
  Label1_->setText(ToQt(text));
  Label1_->setVisible(!text.empty());
}

void frmTarvenixPlot::FollowSession() {
  if (!isVisible()) return;
  if (modTarvenix::CompletedDataSets(app_.session).empty()) {
    hide();  // nothing analysed is left to draw
  } else {
    Redraw();
  }
}

void frmTarvenixPlot::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Form_Resize();
}

void frmTarvenixPlot::Form_Resize() {
  if (resizing_) return;
  resizing_ = true;
  modUtils::Trapped(app_.session, app_.ui, "frmTarvenixPlot.Form_Resize", [&] {
    // The plot keeps its 4:3 shape while the window is neither maximised nor minimised.
    if (windowState() == Qt::WindowNoState && height() != width() * 3 / 4) resize(width(), width() * 3 / 4);
    const int innerWidth = width();
    const int innerHeight = height();
    const int chartHeight = innerHeight > Twips(1000) ? innerHeight - Twips(1200) : TChart1_->height();
    TChart1_->setGeometry(Twips(50), Twips(50), std::max(1, innerWidth - Twips(200)), std::max(1, chartHeight));
    const int buttonsTop = innerHeight - Twips(1000);
    int x = 0;
    for (QPushButton* b : {CmdSave_, CmdPrint_, CmdHelp_, CmdExit_}) {
      b->move(x, buttonsTop);
      x += b->width() + Twips(150);
    }
    gui::CenterControls(app_, {CmdSave_, CmdPrint_, CmdHelp_, CmdExit_});
    // The warning goes in the band under the buttons, which the chart leaves free.
    const int labelTop = buttonsTop + CmdSave_->height() + Twips(60);
    Label1_->setGeometry(TChart1_->x(), labelTop, TChart1_->width(), Label1_->sizeHint().height());
  });
  resizing_ = false;
  Redraw();
}

void frmTarvenixPlot::CmdSave_Click() {
  Session& s = app_.session;
  modUtils::Trapped(s, app_.ui, "frmTarvenixPlot.CmdSave_Click", [&] {
    // The data file's name without its folder and its four-character extension.
    std::string name = basic::Mid(s.sDataFile, static_cast<long long>(s.sDataDir.size()) + 2);
    name = basic::Left(name, static_cast<long long>(name.size()) - 4);
    saveOptions_->SetSaveFilename(name + "_weibull");
    saveOptions_->exec();
    if (saveOptions_->Canceled() || saveOptions_->SaveFilename().empty()) return;
    const bool bitmap = saveOptions_->ImgType() == 0;
    const std::string extension = bitmap ? ".bmp" : ".jpg";
    const plot::ImageFormat format = bitmap ? plot::ImageFormat::Bmp : plot::ImageFormat::Jpg;
    const bool negative = saveOptions_->UseNegImage();
    std::string path;
    if (negative) {
      SelectScheme(kSchemeColourPrint, false);
      path = modUtils::JoinPath(s.sDataDir, saveOptions_->SaveFilename() + "_inv" + extension);
    } else {
      path = modUtils::JoinPath(s.sDataDir, saveOptions_->SaveFilename() + extension);
    }
    try {
      TChart1_->Export(path, format);
    } catch (const std::exception&) {
      if (negative) SelectScheme(kSchemeScreen, true);
      throw;
    }
    if (negative) SelectScheme(kSchemeScreen, true);
  });
}

void frmTarvenixPlot::CmdPrint_Click() {
  Session& s = app_.session;
  modUtils::Trapped(s, app_.ui, "frmTarvenixPlot.CmdPrint_Click", [&] {
    if (!gui::PrintDialogs::PrinterInstalled()) {
      modUtils::ShowMessage(s, app_.ui, modUtils::kMsgNotice, "", gui::kNoPrinterMessage);
      return;
    }
    std::optional<gui::PrintJob> job = gui::PrintDialogs::Ask(this, false);
    if (!job) return;
    QPrinter& printer = *job->printer;
    printer.setCopyCount(job->copies);
    const bool monochrome = printer.colorMode() == QPrinter::GrayScale;
    SelectScheme(monochrome ? kSchemeMonochromePrint : kSchemeColourPrint, false);
    const std::string path = modUtils::JoinPath(s.sDataDir, "weibull.emf");
    const char* error = nullptr;
    if (!TChart1_->ExportRecording(path)) {
      error = kNotExported;
    } else if (!plot::PlayRecording(path, printer)) {
      error = kDidNotPlay;
    }
    if (error) {
      // The chart shows the printing scheme until its next redraw, which is
      // back in the screen's.
      scheme_ = kSchemeScreen;
      TChart1_->Model().bevel = true;
      modUtils::ShowMessage(s, app_.ui, modUtils::kMsgNotice, "", std::string("Print Error: ") + error);
      return;
    }
    SelectScheme(kSchemeScreen, true);
  });
}

void frmTarvenixPlot::CmdHelp_Click() { gui::ShowHelp(app_); }

void frmTarvenixPlot::CmdExit_Click() { hide(); }

}  // namespace tarvenix
