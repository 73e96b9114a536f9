// Drawing of arcs.
#include <cmath>

#include "geometry/arc.h"
#include "render/gl_batch.h"
#include "render/strokes.h"

namespace vt {

namespace {

// A convex polygon (first, then rim[0..n)) as zig-zag triangles. Each
// triangle is as wide as the shape allows: a fan of slivers from one corner
// covers the same pixels but makes the rasteriser visit the blocks near that
// corner once per sliver.
void EmitConvexFill(const Position& first, const Position* rim, size_t n) {
  if (n < 2) return;
  std::vector<const Position*> v;
  v.reserve(n + 1);
  v.push_back(&first);
  for (size_t i = 0; i < n; ++i) v.push_back(rim + i);
  size_t lo = 0, hi = v.size() - 1;
  bool fromLow = true;
  while (hi - lo >= 2) {
    const Position* a = v[lo];
    const Position* b = fromLow ? v[lo + 1] : v[hi - 1];
    const Position* d = v[hi];
    glVertex3f(a->x, a->y, a->z);
    glVertex3f(b->x, b->y, b->z);
    glVertex3f(d->x, d->y, d->z);
    if (fromLow) ++lo; else --hi;
    fromLow = !fromLow;
  }
}

}  // namespace

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
  int factor;
  unsigned short pattern;
  bool stippled = DrawMode == 1 && LineStippleOf(GELineStyle, factor, pattern);
  if (stippled) glb::LineStipple(factor, pattern);
  glb::Enable(GL_LINE_STIPPLE, stippled);
  // The arc is one strip, so that a dash pattern runs along it unbroken.
  glb::Begin(GL_LINE_STRIP);
  for (const Position& p : s) glVertex3f(p.x, p.y, p.z);
  glb::End();
  glb::Begin(GL_LINES);
  if (AT == 2) {
    glVertex3f(s.front().x, s.front().y, s.front().z);
    glVertex3f(c.x, c.y, c.z);
    glVertex3f(c.x, c.y, c.z);
    glVertex3f(s.back().x, s.back().y, s.back().z);
  } else if (AT == 3) {
    glVertex3f(s.front().x, s.front().y, s.front().z);
    glVertex3f(s.back().x, s.back().y, s.back().z);
  }
  glb::End();
  glb::Enable(GL_LINE_STIPPLE, false);
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
