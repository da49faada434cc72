#pragma once
// The chart control of the plot window: it holds what the chart shows and
// repaints it through the same painter as the exported files, telling its
// owner the data drawing's warning after every repaint.

#include <functional>
#include <string>

#include <QWidget>

#include "PlotExport.h"
#include "plot/TGraph.h"

namespace tarvenix {

class TChart : public QWidget {
  Q_OBJECT

 public:
  explicit TChart(const Session& session, QWidget* parent = nullptr);

  ChartModel& Model() { return chart_; }
  modTGraph::Graph& Graph() { return graph_; }

  // Called after each repaint with the data drawing's warning ("" when none).
  void SetAfterDraw(std::function<void(const std::string&)> afterDraw) { afterDraw_ = std::move(afterDraw); }

  // The chart as it stands, at its size on the screen, written to `path`.
  // Raises the classic file errors.
  void Export(const std::string& path, plot::ImageFormat format);
  // The vector recording of the chart at its size; false when not written.
  bool ExportRecording(const std::string& path);

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const Session& session_;
  ChartModel chart_;
  modTGraph::Graph graph_;
  std::function<void(const std::string&)> afterDraw_;
};

}  // namespace tarvenix
