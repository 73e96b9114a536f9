// Icons from the SVG drawings of the icons folder, drawn with QSvgRenderer.
#pragma once

#include <QIcon>
#include <QImage>
#include <QString>

namespace vt::app {

// Draws an SVG text at the given pixel size; a null image when the text is
// not an SVG drawing this reader understands.
QImage RenderSvg(const QByteArray& svg, const QSize& size);
// An icon that draws the file at any size when a size is first shown (16,
// 22, 24, 32 and 48 pixels are offered); one icon per file for the whole run.
// A null icon when the file is missing or unreadable.
QIcon LoadSvgIcon(const QString& path);
// A stand-in icon that shows the first letters of a text, for an icon file
// that is missing.
QIcon LetterIcon(const QString& text);

}  // namespace vt::app
