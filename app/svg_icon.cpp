#include "app/svg_icon.h"

#include <QFile>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QTransform>
#include <QXmlStreamReader>
#include <cmath>
#include <vector>

namespace vt::app {

namespace {

constexpr double kPi = 3.14159265358979323846;

struct Style {
  QString fill = "black";
  QString stroke = "none";
  double strokeWidth = 1;
  Qt::PenCapStyle cap = Qt::FlatCap;
  Qt::PenJoinStyle join = Qt::MiterJoin;
  QVector<qreal> dashes;
  Qt::FillRule fillRule = Qt::WindingFill;
  double opacity = 1, fillOpacity = 1, strokeOpacity = 1;
  double fontSize = 10;
  bool bold = false, italic = false;
  QString anchor = "start";
};

// ---- numbers -------------------------------------------------------------------

class NumberReader {
 public:
  explicit NumberReader(const QString& s) : s_(s) {}
  void SkipSeparators() {
    while (i_ < s_.size() && (s_[i_].isSpace() || s_[i_] == ',')) ++i_;
  }
  bool AtNumber() {
    SkipSeparators();
    if (i_ >= s_.size()) return false;
    const QChar c = s_[i_];
    return c.isDigit() || c == '-' || c == '+' || c == '.';
  }
  bool Number(double& v) {
    if (!AtNumber()) return false;
    int start = i_;
    if (s_[i_] == '-' || s_[i_] == '+') ++i_;
    bool dot = false;
    while (i_ < s_.size() && (s_[i_].isDigit() || (s_[i_] == '.' && !dot))) {
      if (s_[i_] == '.') dot = true;
      ++i_;
    }
    if (i_ < s_.size() && (s_[i_] == 'e' || s_[i_] == 'E')) {
      int save = i_++;
      if (i_ < s_.size() && (s_[i_] == '-' || s_[i_] == '+')) ++i_;
      if (i_ < s_.size() && s_[i_].isDigit()) {
        while (i_ < s_.size() && s_[i_].isDigit()) ++i_;
      } else {
        i_ = save;
      }
    }
    bool ok = false;
    v = s_.mid(start, i_ - start).toDouble(&ok);
    return ok;
  }
  // An arc flag: one character 0 or 1, with or without separators.
  bool Flag(bool& f) {
    SkipSeparators();
    if (i_ >= s_.size() || (s_[i_] != '0' && s_[i_] != '1')) return false;
    f = s_[i_++] == '1';
    return true;
  }
  bool AtEnd() {
    SkipSeparators();
    return i_ >= s_.size();
  }
  QChar Next() { return s_[i_++]; }

 private:
  QString s_;
  int i_ = 0;
};

std::vector<double> Numbers(const QString& s) {
  NumberReader r(s);
  std::vector<double> out;
  double v;
  while (r.Number(v)) out.push_back(v);
  return out;
}

double Attr(const QXmlStreamAttributes& a, const char* name, double fallback = 0) {
  const QString v = a.value(QLatin1String(name)).toString();
  if (v.isEmpty()) return fallback;
  std::vector<double> n = Numbers(v);
  return n.empty() ? fallback : n[0];
}

// ---- path data -------------------------------------------------------------------

// The arc from the current point to (x2, y2) by the endpoint form of SVG,
// as short straight pieces.
void ArcTo(QPainterPath& path, double rx, double ry, double angleDeg, bool large, bool sweep, double x2,
           double y2) {
  const QPointF p1 = path.currentPosition();
  if (rx == 0 || ry == 0 || (p1.x() == x2 && p1.y() == y2)) {
    path.lineTo(x2, y2);
    return;
  }
  rx = std::fabs(rx);
  ry = std::fabs(ry);
  const double phi = angleDeg * kPi / 180, c = std::cos(phi), s = std::sin(phi);
  const double dx = (p1.x() - x2) / 2, dy = (p1.y() - y2) / 2;
  const double x1p = c * dx + s * dy, y1p = -s * dx + c * dy;
  const double lambda = x1p * x1p / (rx * rx) + y1p * y1p / (ry * ry);
  if (lambda > 1) {
    rx *= std::sqrt(lambda);
    ry *= std::sqrt(lambda);
  }
  const double num = rx * rx * ry * ry - rx * rx * y1p * y1p - ry * ry * x1p * x1p;
  const double den = rx * rx * y1p * y1p + ry * ry * x1p * x1p;
  double coef = den > 0 ? std::sqrt(std::max(0.0, num / den)) : 0;
  if (large == sweep) coef = -coef;
  const double cxp = coef * rx * y1p / ry, cyp = -coef * ry * x1p / rx;
  const double cx = c * cxp - s * cyp + (p1.x() + x2) / 2, cy = s * cxp + c * cyp + (p1.y() + y2) / 2;
  auto angle = [](double ux, double uy, double vx, double vy) {
    return std::atan2(ux * vy - uy * vx, ux * vx + uy * vy);
  };
  const double t1 = angle(1, 0, (x1p - cxp) / rx, (y1p - cyp) / ry);
  double dt = angle((x1p - cxp) / rx, (y1p - cyp) / ry, (-x1p - cxp) / rx, (-y1p - cyp) / ry);
  if (!sweep && dt > 0) dt -= 2 * kPi;
  if (sweep && dt < 0) dt += 2 * kPi;
  const int steps = std::max(2, static_cast<int>(std::ceil(std::fabs(dt) / (kPi / 16))));
  for (int i = 1; i <= steps; ++i) {
    const double t = t1 + dt * i / steps;
    path.lineTo(cx + rx * c * std::cos(t) - ry * s * std::sin(t), cy + rx * s * std::cos(t) + ry * c * std::sin(t));
  }
}

bool ParsePath(const QString& d, QPainterPath& path) {
  NumberReader r(d);
  QChar cmd;
  QPointF start, ctrl;  // the subpath's start, the last control point
  QChar lastCmd;
  while (!r.AtEnd()) {
    if (!r.AtNumber()) cmd = r.Next();
    if (cmd.isNull()) return false;
    const bool rel = cmd.isLower();
    const QChar up = cmd.toUpper();
    const QPointF cur = path.currentPosition();
    const double ox = rel ? cur.x() : 0, oy = rel ? cur.y() : 0;
    double a[7];
    auto read = [&](int n) {
      for (int i = 0; i < n; ++i)
        if (!r.Number(a[i])) return false;
      return true;
    };
    if (up == 'Z') {
      path.closeSubpath();
      path.moveTo(start);
      lastCmd = up;
      cmd = QChar();
      continue;
    }
    if (up == 'M') {
      if (!read(2)) return false;
      start = QPointF(ox + a[0], oy + a[1]);
      path.moveTo(start);
      cmd = rel ? 'l' : 'L';  // further pairs are lines
    } else if (up == 'L') {
      if (!read(2)) return false;
      path.lineTo(ox + a[0], oy + a[1]);
    } else if (up == 'H') {
      if (!read(1)) return false;
      path.lineTo(ox + a[0], cur.y());
    } else if (up == 'V') {
      if (!read(1)) return false;
      path.lineTo(cur.x(), oy + a[0]);
    } else if (up == 'C') {
      if (!read(6)) return false;
      ctrl = QPointF(ox + a[2], oy + a[3]);
      path.cubicTo(QPointF(ox + a[0], oy + a[1]), ctrl, QPointF(ox + a[4], oy + a[5]));
    } else if (up == 'S') {
      if (!read(4)) return false;
      const QPointF c1 = (lastCmd == 'C' || lastCmd == 'S') ? 2 * cur - ctrl : cur;
      ctrl = QPointF(ox + a[0], oy + a[1]);
      path.cubicTo(c1, ctrl, QPointF(ox + a[2], oy + a[3]));
    } else if (up == 'Q') {
      if (!read(4)) return false;
      ctrl = QPointF(ox + a[0], oy + a[1]);
      path.quadTo(ctrl, QPointF(ox + a[2], oy + a[3]));
    } else if (up == 'T') {
      if (!read(2)) return false;
      ctrl = (lastCmd == 'Q' || lastCmd == 'T') ? 2 * cur - ctrl : cur;
      path.quadTo(ctrl, QPointF(ox + a[0], oy + a[1]));
    } else if (up == 'A') {
      bool large = false, sweep = false;
      if (!r.Number(a[0]) || !r.Number(a[1]) || !r.Number(a[2]) || !r.Flag(large) || !r.Flag(sweep) ||
          !r.Number(a[5]) || !r.Number(a[6]))
        return false;
      ArcTo(path, a[0], a[1], a[2], large, sweep, ox + a[5], oy + a[6]);
    } else {
      return false;
    }
    lastCmd = up;
  }
  return true;
}

// ---- style and transform ------------------------------------------------------------

void ApplyProperty(Style& st, const QString& name, const QString& value) {
  const QString v = value.trimmed();
  if (name == "fill") st.fill = v;
  else if (name == "stroke") st.stroke = v;
  else if (name == "stroke-width") st.strokeWidth = Numbers(v).empty() ? st.strokeWidth : Numbers(v)[0];
  else if (name == "stroke-linecap")
    st.cap = v == "round" ? Qt::RoundCap : v == "square" ? Qt::SquareCap : Qt::FlatCap;
  else if (name == "stroke-linejoin")
    st.join = v == "round" ? Qt::RoundJoin : v == "bevel" ? Qt::BevelJoin : Qt::MiterJoin;
  else if (name == "stroke-dasharray") {
    st.dashes.clear();
    if (v != "none")
      for (double d : Numbers(v)) st.dashes << d;
  } else if (name == "fill-rule") st.fillRule = v == "evenodd" ? Qt::OddEvenFill : Qt::WindingFill;
  else if (name == "opacity") st.opacity *= v.toDouble();
  else if (name == "fill-opacity") st.fillOpacity = v.toDouble();
  else if (name == "stroke-opacity") st.strokeOpacity = v.toDouble();
  else if (name == "font-size") st.fontSize = Numbers(v).empty() ? st.fontSize : Numbers(v)[0];
  else if (name == "font-weight") st.bold = v == "bold" || v.toInt() >= 600;
  else if (name == "font-style") st.italic = v == "italic" || v == "oblique";
  else if (name == "text-anchor") st.anchor = v;
}

void ApplyStyle(Style& st, const QXmlStreamAttributes& attrs) {
  for (const QXmlStreamAttribute& a : attrs) ApplyProperty(st, a.name().toString(), a.value().toString());
  const QString inline_ = attrs.value(QLatin1String("style")).toString();
  for (const QString& decl : inline_.split(';', Qt::SkipEmptyParts)) {
    const int colon = decl.indexOf(':');
    if (colon > 0) ApplyProperty(st, decl.left(colon).trimmed(), decl.mid(colon + 1));
  }
}

QTransform ParseTransform(const QString& text) {
  QTransform t;
  int i = 0;
  while (i < text.size()) {
    const int open = text.indexOf('(', i);
    if (open < 0) break;
    const int close = text.indexOf(')', open);
    if (close < 0) break;
    const QString name = text.mid(i, open - i).trimmed().remove(',').trimmed();
    const std::vector<double> n = Numbers(text.mid(open + 1, close - open - 1));
    QTransform step;
    if (name == "translate" && !n.empty()) step.translate(n[0], n.size() > 1 ? n[1] : 0);
    else if (name == "scale" && !n.empty()) step.scale(n[0], n.size() > 1 ? n[1] : n[0]);
    else if (name == "rotate" && !n.empty()) {
      if (n.size() >= 3) {
        step.translate(n[1], n[2]);
        step.rotate(n[0]);
        step.translate(-n[1], -n[2]);
      } else {
        step.rotate(n[0]);
      }
    } else if (name == "matrix" && n.size() >= 6) {
      step = QTransform(n[0], n[1], n[2], n[3], n[4], n[5]);
    }
    // Transforms listed left to right apply right to left to the points.
    t = step * t;
    i = close + 1;
  }
  return t;
}

QColor Colour(const QString& v, double opacity) {
  if (v.isEmpty() || v == "none") return QColor();
  QColor c = v == "currentColor" ? QColor(Qt::black) : QColor::fromString(v);
  if (!c.isValid()) return QColor();
  c.setAlphaF(static_cast<float>(c.alphaF() * opacity));
  return c;
}

void Paint(QPainter& p, const Style& st, const QPainterPath& shape) {
  const QColor fill = Colour(st.fill, st.fillOpacity * st.opacity);
  const QColor stroke = Colour(st.stroke, st.strokeOpacity * st.opacity);
  QPainterPath path = shape;
  path.setFillRule(st.fillRule);
  if (fill.isValid()) p.fillPath(path, fill);
  if (stroke.isValid() && st.strokeWidth > 0) {
    QPen pen(stroke, st.strokeWidth, Qt::SolidLine, st.cap, st.join);
    if (!st.dashes.isEmpty()) {
      QVector<qreal> pattern;
      for (qreal d : st.dashes) pattern << d / st.strokeWidth;
      if (pattern.size() % 2) pattern += pattern;
      pen.setDashPattern(pattern);
    }
    p.strokePath(path, pen);
  }
}

QPainterPath PointsPath(const QString& text, bool close) {
  const std::vector<double> n = Numbers(text);
  QPainterPath path;
  for (size_t i = 0; i + 1 < n.size(); i += 2) {
    if (i == 0) path.moveTo(n[0], n[1]);
    else path.lineTo(n[i], n[i + 1]);
  }
  if (close) path.closeSubpath();
  return path;
}

}  // namespace

QImage RenderSvg(const QByteArray& svg, const QSize& size) {
  QXmlStreamReader xml(svg);
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  image.fill(Qt::transparent);
  QPainter p(&image);
  p.setRenderHint(QPainter::Antialiasing);
  p.setRenderHint(QPainter::TextAntialiasing);
  std::vector<Style> styles(1);
  bool sawRoot = false;
  int depth = 0;
  while (!xml.atEnd()) {
    xml.readNext();
    if (xml.isEndElement()) {
      if (depth > 0) {
        --depth;
        styles.pop_back();
        p.restore();
      }
      continue;
    }
    if (!xml.isStartElement()) continue;
    const QString name = xml.name().toString();
    const QXmlStreamAttributes a = xml.attributes();
    if (!sawRoot) {
      if (name != "svg") return QImage();
      sawRoot = true;
      std::vector<double> vb = Numbers(a.value(QLatin1String("viewBox")).toString());
      if (vb.size() < 4) vb = {0, 0, Attr(a, "width", 24), Attr(a, "height", 24)};
      if (vb[2] <= 0 || vb[3] <= 0) return QImage();
      p.scale(size.width() / vb[2], size.height() / vb[3]);
      p.translate(-vb[0], -vb[1]);
    }
    ++depth;
    p.save();
    styles.push_back(styles.back());
    Style& st = styles.back();
    ApplyStyle(st, a);
    if (a.hasAttribute(QLatin1String("transform")))
      p.setTransform(ParseTransform(a.value(QLatin1String("transform")).toString()), true);

    QPainterPath shape;
    if (name == "rect") {
      const double rx = Attr(a, "rx", Attr(a, "ry")), ry = Attr(a, "ry", rx);
      shape.addRoundedRect(Attr(a, "x"), Attr(a, "y"), Attr(a, "width"), Attr(a, "height"), rx, ry);
    } else if (name == "circle") {
      const double r = Attr(a, "r");
      shape.addEllipse(QPointF(Attr(a, "cx"), Attr(a, "cy")), r, r);
    } else if (name == "ellipse") {
      shape.addEllipse(QPointF(Attr(a, "cx"), Attr(a, "cy")), Attr(a, "rx"), Attr(a, "ry"));
    } else if (name == "line") {
      shape.moveTo(Attr(a, "x1"), Attr(a, "y1"));
      shape.lineTo(Attr(a, "x2"), Attr(a, "y2"));
    } else if (name == "polyline" || name == "polygon") {
      shape = PointsPath(a.value(QLatin1String("points")).toString(), name == "polygon");
    } else if (name == "path") {
      if (!ParsePath(a.value(QLatin1String("d")).toString(), shape)) shape = QPainterPath();
    } else if (name == "text") {
      QFont font("DejaVu Sans");
      font.setPixelSize(std::max(1, static_cast<int>(std::lround(st.fontSize))));
      font.setBold(st.bold);
      font.setItalic(st.italic);
      const QString text = xml.readElementText(QXmlStreamReader::IncludeChildElements).simplified();
      double x = Attr(a, "x");
      const double width = QFontMetricsF(font).horizontalAdvance(text);
      if (st.anchor == "middle") x -= width / 2;
      else if (st.anchor == "end") x -= width;
      shape.addText(QPointF(x, Attr(a, "y")), font, text);
      // readElementText consumed the end tag.
      Paint(p, st, shape);
      --depth;
      styles.pop_back();
      p.restore();
      continue;
    }
    if (!shape.isEmpty()) Paint(p, st, shape);
  }
  if (xml.hasError() || !sawRoot) return QImage();
  return image;
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
