// Icons from the small SVG drawings of the icons folder, drawn with QPainter.
//
// The drawings use a plain subset of SVG, which this reader covers: the
// elements svg (viewBox, width, height), g, rect (rx), circle, ellipse, line,
// polyline, polygon, path (all commands, arcs included) and text; the
// attributes fill, stroke, stroke-width, stroke-linecap, stroke-linejoin,
// stroke-dasharray, fill-rule, opacity, fill-opacity, stroke-opacity,
// font-size, font-weight, font-style, text-anchor, transform (translate,
// scale, rotate, matrix), and the same properties inside style="...".
// Anything else is skipped.
#pragma once

#include <QIcon>
#include <QImage>
#include <QString>

namespace vt::app {

// Draws an SVG text at the given pixel size; a null image when the text is
// not an SVG drawing this reader understands.
QImage RenderSvg(const QByteArray& svg, const QSize& size);
// An icon with pictures at 16, 22, 24, 32 and 48 pixels; a null icon when
// the file is missing or unreadable.
QIcon LoadSvgIcon(const QString& path);
// A stand-in icon that shows the first letters of a text, for an icon file
// that is missing.
QIcon LetterIcon(const QString& text);

}  // namespace vt::app
