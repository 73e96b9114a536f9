#include "app/svg_icon.h"

#include <QApplication>
#include <QFile>
#include <QHash>
#include <QIconEngine>
#include <QStyle>
#include <QStyleOption>
#include <map>
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

namespace {

// An icon that parses its drawing once and draws each size when it is first
// asked for: menus that are never opened cost no pictures.
class SvgIconEngine : public QIconEngine {
 public:
  explicit SvgIconEngine(const QByteArray& svg) : svg_(svg), renderer_(svg) {}
  bool valid() const { return svg_.contains("<svg") && renderer_.isValid(); }

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override {
    painter->drawPixmap(rect, pixmap(rect.size(), mode, state));
  }
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override {
    const quint64 key = (quint64(size.width()) << 32) | quint64(size.height()) | (quint64(mode) << 60);
    auto it = cache_.find(key);
    if (it != cache_.end()) return it->second;
    QImage img(size, QImage::Format_ARGB32_Premultiplied);
    img.fill(Qt::transparent);
    QPainter p(&img);
    p.setRenderHint(QPainter::Antialiasing);
    renderer_.render(&p);
    p.end();
    QPixmap pm = QPixmap::fromImage(img);
    if (mode == QIcon::Disabled) {
      QStyleOption option;
      pm = QApplication::style()->generatedIconPixmap(QIcon::Disabled, pm, &option);
    }
    return cache_[key] = pm;
  }
  QSize actualSize(const QSize& size, QIcon::Mode, QIcon::State) override { return size; }
  QList<QSize> availableSizes(QIcon::Mode, QIcon::State) override {
    return {QSize(16, 16), QSize(22, 22), QSize(24, 24), QSize(32, 32), QSize(48, 48)};
  }
  QIconEngine* clone() const override { return new SvgIconEngine(svg_); }
  QString key() const override { return QStringLiteral("vantrel-svg"); }

 private:
  QByteArray svg_;
  QSvgRenderer renderer_;
  std::map<quint64, QPixmap> cache_;
};

}  // namespace

QIcon LoadSvgIcon(const QString& path) {
  // The buttons and menu items of one picture share one icon.
  static QHash<QString, QIcon> loaded;
  if (auto it = loaded.constFind(path); it != loaded.constEnd()) return *it;
  QFile f(path);
  if (!f.open(QIODevice::ReadOnly)) return QIcon();
  auto* engine = new SvgIconEngine(f.readAll());
  if (!engine->valid()) {
    delete engine;
    return QIcon();
  }
  QIcon icon(engine);
  loaded.insert(path, icon);
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
