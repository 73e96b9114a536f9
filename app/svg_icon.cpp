#include "app/svg_icon.h"

#include <QFile>
#include <QFont>
#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

namespace vt::app {

QImage RenderSvg(const QByteArray& svg, const QSize& size) {
  // QSvgRenderer accepts some texts that are not drawings at all (an empty
  // document renders nothing), so a drawing must also start with an svg tag.
  if (!svg.contains("<svg")) return QImage();
  QSvgRenderer renderer(svg);
  if (!renderer.isValid()) return QImage();
  QImage img(size, QImage::Format_ARGB32_Premultiplied);
  img.fill(Qt::transparent);
  QPainter p(&img);
  p.setRenderHint(QPainter::Antialiasing);
  renderer.render(&p);
  p.end();
  return img;
}

QIcon LoadSvgIcon(const QString& path) {
  QFile f(path);
  if (!f.open(QIODevice::ReadOnly)) return QIcon();
  const QByteArray svg = f.readAll();
  QIcon icon;
  for (int s : {16, 22, 24, 32, 48}) {
    const QImage img = RenderSvg(svg, QSize(s, s));
    if (img.isNull()) return QIcon();
    icon.addPixmap(QPixmap::fromImage(img));
  }
  return icon;
}

QIcon LetterIcon(const QString& text) {
  QIcon icon;
  QString letters;
  for (const QString& w : text.split(' ', Qt::SkipEmptyParts)) {
    if (letters.size() < 2 && w[0].isLetterOrNumber()) letters += w[0].toUpper();
  }
  for (int s : {16, 24, 32}) {
    QImage img(s, s, QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    p.setBrush(QColor(0xe3, 0xea, 0xf2));
    p.setPen(QPen(QColor(0x45, 0x5a, 0x64), 1));
    p.drawRoundedRect(QRectF(0.5, 0.5, s - 1, s - 1), s / 6.0, s / 6.0);
    QFont font("DejaVu Sans");
    font.setPixelSize(s / 2);
    font.setBold(true);
    p.setFont(font);
    p.drawText(QRect(0, 0, s, s), Qt::AlignCenter, letters);
    p.end();
    icon.addPixmap(QPixmap::fromImage(img));
  }
  return icon;
}

}  // namespace vt::app
