// Drawing of circles.
#include <algorithm>
#include <cmath>

#include "geometry/circle.h"
#include "render/gl_batch.h"
#include "render/strokes.h"

namespace vt {

namespace {
// A circle's dashes are not a line's: style 2 is factor 1, pattern 255.
bool CircleStippleOf(int style, GLint& factor, GLushort& pattern) {
  switch (style) {
    case 2: factor = 1, pattern = 255; return true;
    case 3: factor = 1, pattern = 21845; return true;
    case 4: factor = 1, pattern = 10239; return true;
    default: return false;
  }
}
}  // namespace

void CCircle::Draw() {
  if (Hide) return;
  ComputeRim();
  std::uint32_t color = LineColorOf(ForeColor, DrawMode);
  glb::Enable(GL_LIGHTING, false);
  glb::Enable(GL_LINE_SMOOTH, true);
  glb::Enable(GL_BLEND, true);
  glb::BlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glb::Hint(GL_LINE_SMOOTH_HINT, GL_NICEST);
  glb::Enable(GL_POLYGON_OFFSET_FILL, false);
  glb::LineWidth(GELineWidth);
  GLint factor = 1;
  GLushort pattern = 0xFFFF;
  bool stippled = DrawMode == 1 && CircleStippleOf(GELineStyle, factor, pattern);

  // The rim is one strip, so that a dash pattern runs round it unbroken
  // (restarted on every piece, a circle of more than a few pixels a piece
  // would look solid).
  bool planar = !(CType == 2 || CType == 5);
  Position centre = Centre();
  if (planar) centre.z = 0;
  if (Filled) {
    // The disc is painted piece by piece under a blend, the outline after it.
    glb::Enable(GL_DEPTH_TEST, false);
    SetColor(color, 0.3f);
    glb::Begin(GL_TRIANGLES);
    if (DrawSegments > 0) EmitConvexFill(Rim[0], Rim.data() + 1, static_cast<size_t>(DrawSegments) - 1);
    glb::End();
  }
  SetColor(color);
  DashPen pen(stippled, factor, pattern);
  pen.Strip(Rim.data(), static_cast<size_t>(DrawSegments) + 1);
  if (Filled) glb::Enable(GL_DEPTH_TEST, true);
  pen.Finish();
  glb::Enable(GL_LINE_SMOOTH, false);
  glb::Enable(GL_BLEND, false);
  glb::Enable(GL_LIGHTING, true);

  if (!HideLabel && !CLabel.empty() && !Rim.empty()) {
    // On the rim, an eighth of a turn up (the text runs outwards from there);
    // a circle in the plane a tenth of a unit outside its rim.
    if (planar) {
      const double out = (Radius() + 0.1) * std::sqrt(0.5);
      QueueLabel(static_cast<float>(centre.x + out), static_cast<float>(centre.y + out), 0.0f, CLabel);
    } else {
      const Position& at = Rim[std::min(Rim.size() - 1, static_cast<size_t>(DrawSegments) / 8)];
      QueueLabel(at.x, at.y, at.z, CLabel);
    }
  }
}

}  // namespace vt
