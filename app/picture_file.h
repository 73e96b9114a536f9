// Pictures of the scene as files: PNG at any scale, SVG and PDF, chosen by the
// file's extension, all drawn by one painter routine from a captured picture
// (render/picture.h), so lines, circles, polygons and curves stay paths and
// labels stay text in the vector formats. Plain C++ on the outside, so that
// vantrel-cli writes the same files as the desktop program.
#pragma once

#include <string>

#include "render/picture.h"

class QPainter;
class QRectF;

namespace vt {

// The formats by extension: "png", "svg", "pdf", or "" for another one.
std::string PictureFormat(const std::string& path);

// Paints the picture into `target` of the painter (a page, a file), scaled
// to that rectangle and clipped to it, on white.
void PaintPicture(QPainter& painter, const Picture& picture, const QRectF& target);

// Writes the picture; `scale` is the PNG's pixels per canvas pixel (the
// vector formats keep the canvas size as their own). False with `error` set
// when the file cannot be written or the extension is not one of the three.
bool WritePictureFile(const Picture& picture, const std::string& path, double scale, std::string& error);

}  // namespace vt
