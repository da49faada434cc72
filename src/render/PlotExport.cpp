#include "PlotExport.h"

#include <QBuffer>
#include <QByteArray>
#include <QPagedPaintDevice>
#include <QPainter>
#include <QPdfWriter>
#include <QPicture>
#include <QSvgGenerator>

#include "base/Basic.h"
#include "session/FileUtils.h"
#include "base/RuntimeError.h"
#include "QtStrings.h"
#include "WeibullPainter.h"

namespace tarvenix::plot {
namespace {

// The picture recording keeps a header of its own; a file that lacks it is not ours.
constexpr int kRecordingFormat = 19;  // QDataStream::Qt_6_0

QByteArray EncodeRaster(ImageFormat format, const QSize& size, const Session& s, modTGraph::Graph& g,
                        ChartModel& chart) {
  QImage image = RenderChartImage(s, g, chart, size);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  const char* name = format == ImageFormat::Png ? "PNG" : format == ImageFormat::Bmp ? "BMP" : "JPG";
  if (!image.save(&buffer, name, format == ImageFormat::Jpg ? 95 : -1)) Raise(err::kPathFileAccess);
  return bytes;
}

QByteArray EncodeSvg(const QSize& size, const Session& s, modTGraph::Graph& g, ChartModel& chart) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QSvgGenerator svg;
  svg.setOutputDevice(&buffer);
  svg.setSize(size);
  svg.setViewBox(QRect(QPoint(0, 0), size));
  svg.setResolution(96);
  svg.setTitle(ToQt(chart.title));
  QPainter p;
  if (!p.begin(&svg)) Raise(err::kPathFileAccess);
  PaintChart(p, QSizeF(size), s, g, chart);
  p.end();
  return bytes;
}

QByteArray EncodePdf(const QSize& size, const Session& s, modTGraph::Graph& g, ChartModel& chart) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  QPdfWriter pdf(&buffer);
  pdf.setResolution(96);
  pdf.setPageMargins(QMarginsF(0, 0, 0, 0));
  pdf.setPageSize(QPageSize(QSizeF(size.width() * 0.75, size.height() * 0.75), QPageSize::Point));
  pdf.setTitle(ToQt(chart.title));
  pdf.setCreator(QStringLiteral("Tarvenix"));
  QPainter p;
  if (!p.begin(&pdf)) Raise(err::kPathFileAccess);
  PaintChart(p, QSizeF(size), s, g, chart);
  p.end();
  return bytes;
}

}  // namespace

std::optional<ImageFormat> FormatForPath(const std::string& path) {
  const std::size_t dot = path.find_last_of('.');
  if (dot == std::string::npos || path.find_first_of("/\\", dot) != std::string::npos) return std::nullopt;
  const std::string ext = basic::LCase(path.substr(dot + 1));
  if (ext == "png") return ImageFormat::Png;
  if (ext == "bmp") return ImageFormat::Bmp;
  if (ext == "jpg" || ext == "jpeg") return ImageFormat::Jpg;
  if (ext == "svg") return ImageFormat::Svg;
  if (ext == "pdf") return ImageFormat::Pdf;
  return std::nullopt;
}

QImage RenderChartImage(const Session& s, modTGraph::Graph& g, ChartModel& chart, const QSize& size,
                        std::string* warning) {
  QImage image(size, QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter p(&image);
  std::string w = PaintChart(p, QSizeF(size), s, g, chart);
  p.end();
  if (warning) *warning = w;
  return image;
}

void ExportChart(const std::string& path, ImageFormat format, const QSize& size, const Session& s,
                 modTGraph::Graph& g, ChartModel& chart) {
  QByteArray bytes;
  switch (format) {
    case ImageFormat::Svg: bytes = EncodeSvg(size, s, g, chart); break;
    case ImageFormat::Pdf: bytes = EncodePdf(size, s, g, chart); break;
    default: bytes = EncodeRaster(format, size, s, g, chart); break;
  }
  modUtils::WriteFileAtomically(path, std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

bool ExportRecording(const std::string& path, const QSize& size, const Session& s, modTGraph::Graph& g,
                     ChartModel& chart) {
  QPicture picture(kRecordingFormat);
  QPainter p;
  if (!p.begin(&picture)) return false;
  PaintChart(p, QSizeF(size), s, g, chart);
  p.end();
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  if (!picture.save(&buffer)) return false;
  try {
    modUtils::WriteFileAtomically(path, std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
  } catch (const std::exception&) {  // whatever the reason, printing reports it as a recording it could not make
    return false;
  }
  return true;
}

bool PlayRecording(const std::string& path, QPagedPaintDevice& device) {
  std::string bytes;
  try {
    bytes = modUtils::ReadFileBytes(path, 256u << 20);
  } catch (const std::exception&) {  // a recording that cannot be read, for any reason, is not played
    return false;
  }
  QByteArray data(bytes.data(), static_cast<qsizetype>(bytes.size()));
  QBuffer buffer(&data);
  buffer.open(QIODevice::ReadOnly);
  QPicture picture(kRecordingFormat);
  if (!picture.load(&buffer)) return false;
  const QRect bounds = picture.boundingRect();
  if (bounds.isEmpty()) return false;
  QPainter p;
  if (!p.begin(&device)) return false;
  const QRectF page(0, 0, device.width(), device.height());
  const double scale = std::min(page.width() / bounds.width(), page.height() / bounds.height());
  // Playing a recording scales it by the device's resolution over the one it
  // was recorded at; the fit to the page comes on top of that.
  const double playScale = static_cast<double>(device.logicalDpiX()) / picture.logicalDpiX();
  p.translate(page.center().x() - bounds.width() * scale / 2, page.center().y() - bounds.height() * scale / 2);
  p.scale(scale / playScale, scale / playScale);
  p.drawPicture(-bounds.topLeft(), picture);
  return p.end();
}

}  // namespace tarvenix::plot
