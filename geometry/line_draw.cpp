// Drawing of lines.
#include <cmath>

#include "geometry/geom.h"
#include "geometry/line.h"
#include "geometry/solid_edges.h"
#include "render/strokes.h"

namespace vt {

void CLine::Draw() {
  if (Hide) return;
  if (lt == 4) {
    DrawVector(*this);
  } else {
    // Lines and rays are not clipped to the view: they are made long enough.
    Position a = pBegin, b = pEnd;
    if (lt == 2) {
      a = PointBeyond(pEnd, pBegin, 500);
      b = PointBeyond(pBegin, pEnd, 500);
    } else if (lt == 3) {
      b = PointBeyond(pBegin, pEnd, 500);
    }
    // An edge a solid hides is dashed (a style of its own stays).
    const int style = GELineStyle <= 1 && SolidEdgeHidden(*this) ? 2 : GELineStyle;
    DrawLineStroke(a, b, ForeColor, DrawMode, style, GELineWidth);
    EndLineLook();
  }
  if (!HideLabel && !LLabel.empty() && PlaneView()) {
    // The label stands 0.4 from the end, 0.1 off the line, on its outer side.
    double dx = static_cast<double>(pEnd.x) - pBegin.x, dy = static_cast<double>(pEnd.y) - pBegin.y;
    double len = std::sqrt(dx * dx + dy * dy);
    if (len > 0) {
      double ux = dx / len, uy = dy / len;
      double along = std::sqrt(0.16 - 0.01);
      QueueLabel(static_cast<float>(pEnd.x + ux * along - uy * 0.1), static_cast<float>(pEnd.y + uy * along + ux * 0.1),
                 pEnd.z, LLabel);
    }
  }
}

}  // namespace vt
