// Drawing of arcs.
#include <cmath>

#include "geometry/arc.h"
#include "render/gl_batch.h"
#include "render/strokes.h"

namespace vt {

void CArc::Draw() {
  if (Hide) return;
  std::vector<Position> s = Samples();
  Position c = Centre();
  std::uint32_t color = LineColorOf(ForeColor, DrawMode);
  glb::Enable(GL_LIGHTING, false);
  glb::Enable(GL_LINE_SMOOTH, true);
  glb::Enable(GL_BLEND, true);
  glb::BlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glb::Hint(GL_LINE_SMOOTH_HINT, GL_NICEST);
  glb::Enable(GL_POLYGON_OFFSET_FILL, false);

  if (AT == 2 || AT == 3) {
    // Sector (to the centre) or bow face (over the chord), at the alpha of
    // a filled circle.
    glb::Enable(GL_DEPTH_TEST, false);
    SetColor(color, 0.3f);
    glb::Begin(GL_TRIANGLES);
    if (AT == 2) {
      // The sector is the centre and the rim; a sweep over half a turn is
      // two convex halves.
      const size_t half = s.size() / 2;
      EmitConvexFill(c, s.data(), half + 1);
      EmitConvexFill(c, s.data() + half, s.size() - half);
    } else {
      EmitConvexFill(s.front(), s.data() + 1, s.size() - 1);
    }
    glb::End();
    glb::Enable(GL_DEPTH_TEST, true);
  }

  SetColor(color);
  glb::LineWidth(GELineWidth);
  int factor = 1;
  unsigned short pattern = 0xFFFF;
  bool stippled = DrawMode == 1 && LineStippleOf(GELineStyle, factor, pattern);
  DashPen pen(stippled, factor, pattern);
  // The arc is one strip, so that a dash pattern runs along it unbroken.
  pen.Strip(s.data(), s.size());
  glb::Begin(GL_LINES);
  if (AT == 2) {
    pen.Segment(s.front(), c, false);
    pen.Segment(c, s.back(), false);
  } else if (AT == 3) {
    pen.Segment(s.front(), s.back(), false);
  }
  glb::End();
  pen.Finish();
  glb::Enable(GL_LINE_SMOOTH, false);
  glb::Enable(GL_BLEND, false);
  glb::Enable(GL_LIGHTING, true);

  if (!HideLabel && !Label.empty()) {
    // Half way along the arc, a tenth of a unit outside it.
    double start, sweep;
    Sweep(start, sweep);
    const double a = start + sweep / 2, r = Radius() + 0.1;
    QueueLabel(static_cast<float>(c.x + r * std::cos(a)), static_cast<float>(c.y + r * std::sin(a)), c.z, Label);
  }
}

}  // namespace vt
