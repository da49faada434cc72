#pragma once
// The plot window: the Weibull plot of every analysed data set, redrawn when
// the window changes size, saved as a bitmap or JPEG image, printed through a
// vector recording.

#include <string>

#include <QSize>
#include <QWidget>

#include "plot/ColorScheme.h"

class QLabel;
class QPushButton;

namespace tarvenix {

class App;
class TChart;
class frmSystemSaveOptions;

class frmTarvenixPlot : public QWidget {
  Q_OBJECT

 public:
  explicit frmTarvenixPlot(App& app, QWidget* parent = nullptr);
  ~frmTarvenixPlot() override;

  // The plot title from the main window; an empty one gets the dated default.
  void setTitle(const std::string& title);
  // Builds the plot in the current colour scheme and repaints it. A redraw
  // asked for while one runs, or while the window is hidden, does nothing.
  void Redraw();
  // After data sets were added, edited, re-analysed or cleared: an open plot
  // draws what the session now holds, or closes when nothing is left to draw.
  void FollowSession();

  int32_t ColorScheme() const { return scheme_; }
  bool LargePlot() const { return bLargePlot_; }
  TChart& Chart() { return *TChart1_; }
  frmSystemSaveOptions& SaveOptions() { return *saveOptions_; }

  // The screen size the large-plot rule compares with; tests set their own.
  static void SetScreenSizeOverride(QSize size);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Form_Resize();
  void CmdSave_Click();
  void CmdPrint_Click();
  void CmdHelp_Click();
  void CmdExit_Click();
  void SelectScheme(int32_t scheme, bool bevel);
  void ShowWarning(const std::string& warning);
  int Twips(int twips) const;

  App& app_;
  TChart* TChart1_;
  QLabel* Label1_;
  QPushButton* CmdSave_;
  QPushButton* CmdPrint_;
  QPushButton* CmdHelp_;
  QPushButton* CmdExit_;
  frmSystemSaveOptions* saveOptions_;

  clsGrInfo grInfo_;
  int32_t scheme_ = kSchemeScreen;
  bool redrawing_ = false;
  bool resizing_ = false;
  bool bLargePlot_ = false;
};

}  // namespace tarvenix
