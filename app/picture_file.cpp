#include "app/picture_file.h"

#include <QFileInfo>
#include <QFont>
#include <QGuiApplication>
#include <QImage>
#include <QPageSize>
#include <QPainter>
#include <QPainterPath>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace vt {

namespace {

// Painting text and writing PDF need a GUI application; a program without a
// window (vantrel-cli) gets one on the offscreen platform.
void EnsureApplication() {
  if (QCoreApplication::instance()) return;
  if (!std::getenv("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  static int argc = 1;
  static char name[] = "vantrel";
  static char* argv[] = {name, nullptr};
  static std::unique_ptr<QGuiApplication> app(new QGuiApplication(argc, argv));
}

// A stipple pattern (bit 0 first, each bit `factor` pixels) as a dash list in
// units of the pen width, starting with a dash.
QVector<qreal> Dashes(std::uint16_t pattern, int factor, float width, qreal& offset) {
  QVector<qreal> runs;
  int start = 0;
  while (start < 16 && !((pattern >> start) & 1)) ++start;  // begin on a dash
  offset = 0;
  if (start == 16) return runs;
  bool on = true;
  int length = 0;
  for (int k = 0; k < 16; ++k) {
    const bool bit = (pattern >> ((start + k) % 16)) & 1;
    if (bit != on) {
      runs << length * factor / static_cast<qreal>(std::max(0.1f, width));
      on = bit;
      length = 0;
    }
    ++length;
  }
  runs << length * factor / static_cast<qreal>(std::max(0.1f, width));
  if (runs.size() % 2) runs << 0;
  offset = -start * factor / static_cast<qreal>(std::max(0.1f, width));
  return runs;
}

}  // namespace

void PaintPicture(QPainter& p, const Picture& pic, const QRectF& target) {
  if (pic.width <= 0 || pic.height <= 0) return;
  p.save();
  p.translate(target.topLeft());
  p.scale(target.width() / pic.width, target.height() / pic.height);
  p.setClipRect(QRectF(0, 0, pic.width, pic.height), Qt::IntersectClip);
  p.setRenderHint(QPainter::Antialiasing);
  p.fillRect(QRectF(0, 0, pic.width, pic.height), Qt::white);
  if (!pic.raster.empty()) {
    const QImage image(pic.raster.rgb.data(), pic.raster.width, pic.raster.height, pic.raster.width * 3,
                       QImage::Format_RGB888);
    p.drawImage(QRectF(0, 0, pic.width, pic.height), image);
  }
  for (const PictureShape& s : pic.shapes) {
    const QColor colour(s.r, s.g, s.b, s.a);
    if (s.kind == PictureShape::Dot) {
      p.setPen(Qt::NoPen);
      p.setBrush(colour);
      p.drawEllipse(QPointF(s.xy[0], s.xy[1]), s.width / 2, s.width / 2);
      continue;
    }
    QPainterPath path;
    path.moveTo(s.xy[0], s.xy[1]);
    for (size_t k = 2; k + 1 < s.xy.size(); k += 2) path.lineTo(s.xy[k], s.xy[k + 1]);
    if (s.closed) path.closeSubpath();
    if (s.kind == PictureShape::Fill) {
      // Opaque fills get a hair of their own colour round them, so that the
      // triangles of one region show no seams where they meet.
      if (s.a == 255) p.setPen(QPen(colour, 0.5));
      else p.setPen(Qt::NoPen);
      p.setBrush(colour);
      p.drawPath(path);
      continue;
    }
    QPen pen(colour, s.width, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin);
    if (s.dash && s.dash != 0xFFFF) {
      qreal offset = 0;
      const QVector<qreal> dashes = Dashes(s.dash, s.dashFactor, s.width, offset);
      if (!dashes.isEmpty()) {
        pen.setDashPattern(dashes);
        pen.setDashOffset(offset);
      }
    }
    p.setPen(pen);
    p.setBrush(Qt::NoBrush);
    p.drawPath(path);
  }
  for (const PictureText& t : pic.texts) {
    QFont font(QString::fromStdString(t.font.empty() ? std::string("DejaVu Sans") : t.font));
    font.setPixelSize(std::max(1, static_cast<int>(t.pixelSize + 0.5f)));
    font.setBold(t.bold);
    font.setItalic(t.italic);
    p.setFont(font);
    p.setPen(QColor(t.r, t.g, t.b));
    p.drawText(QPointF(t.x, t.y), QString::fromUtf8(t.text.c_str()));
  }
  p.restore();
}

std::string PictureFormat(const std::string& path) {
  const std::string ext = QFileInfo(QString::fromStdString(path)).suffix().toLower().toStdString();
  return ext == "png" || ext == "svg" || ext == "pdf" ? ext : std::string();
}

bool WritePictureFile(const Picture& picture, const std::string& path, double scale, std::string& error) {
  const std::string format = PictureFormat(path);
  if (format.empty()) {
    error = "a picture is written as .png, .svg or .pdf";
    return false;
  }
  if (picture.width <= 0 || picture.height <= 0) {
    error = "the picture is empty";
    return false;
  }
  EnsureApplication();
  const QString file = QString::fromStdString(path);
  bool ok = true;
  if (format == "png") {
    scale = std::clamp(scale, 0.1, 16.0);
    const int w = std::max(1, static_cast<int>(picture.width * scale + 0.5));
    const int h = std::max(1, static_cast<int>(picture.height * scale + 0.5));
    QImage image(w, h, QImage::Format_RGB32);
    QPainter p(&image);
    PaintPicture(p, picture, QRectF(0, 0, w, h));
    p.end();
    ok = image.save(file, "PNG");
  } else if (format == "svg") {
    QSvgGenerator svg;
    svg.setFileName(file);
    svg.setSize(QSize(picture.width, picture.height));
    svg.setViewBox(QRect(0, 0, picture.width, picture.height));
    svg.setTitle("Vantrel picture");
    QPainter p;
    ok = p.begin(&svg);
    if (ok) {
      PaintPicture(p, picture, QRectF(0, 0, picture.width, picture.height));
      ok = p.end();
    }
  } else {
    QPdfWriter pdf(file);
    pdf.setCreator("Vantrel");
    pdf.setResolution(96);  // one canvas pixel, one painter unit
    pdf.setPageSize(QPageSize(QSizeF(picture.width * 0.75, picture.height * 0.75), QPageSize::Point));
    pdf.setPageMargins(QMarginsF(0, 0, 0, 0));
    QPainter p;
    ok = p.begin(&pdf);
    if (ok) {
      PaintPicture(p, picture, QRectF(0, 0, picture.width, picture.height));
      ok = p.end();
    }
  }
  if (!ok || !QFileInfo(file).isFile() || QFileInfo(file).size() == 0) {
    error = "cannot write " + path;
    return false;
  }
  return true;
}

}  // namespace vt
