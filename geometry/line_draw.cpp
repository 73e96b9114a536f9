// Drawing of lines.
#include "geometry/geom.h"
#include "geometry/line.h"
#include "render/strokes.h"

namespace vt {

void CLine::Draw() {
  if (Hide) return;
  if (lt == 4) {
    DrawVector(*this);
    return;
  }
  // Lines and rays are not clipped to the view: they are made long enough.
  Position a = pBegin, b = pEnd;
  if (lt == 2) {
    a = PointBeyond(pEnd, pBegin, 500);
    b = PointBeyond(pBegin, pEnd, 500);
  } else if (lt == 3) {
    b = PointBeyond(pBegin, pEnd, 500);
  }
  DrawLineStroke(a, b, ForeColor, DrawMode, GELineStyle, GELineWidth);
  EndLineLook();
}

}  // namespace vt
