// A point in space is drawn as the cap of its ball that faces the eye. Its
// picture is checked against the ball itself: the same points drawn as GLU
// spheres of 16 slices and stacks, unlit in the same colour, with the
// matrices of the compiled frame. The two may differ only on the ball's rim
// (the sphere's outline is a polygon of 16 sides, the cap's a finer one).
#include <GL/gl.h>
#include <GL/glu.h>

#include <cmath>
#include <vector>

#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "render/frame.h"
#include "render/text.h"
#include "render/view_state.h"
#include "render_fixture.h"

namespace vt {
namespace {

using test::RenderTest;
using test::Rgb;

class BallCapTest : public RenderTest {
 protected:
  // Red pixels of the picture read last, row by row from the bottom.
  std::vector<bool> RedMask() const {
    std::vector<bool> m(static_cast<size_t>(width_ * height_));
    for (int y = 0; y < height_; ++y)
      for (int x = 0; x < width_; ++x) m[static_cast<size_t>(y * width_ + x)] = Near(Pixel(x, y), 255, 0, 0, 60);
    return m;
  }
  // The points as spheres, over a cleared canvas.
  void DrawSpheres() {
    const WindowProjection& m = CompiledProjection();
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glMatrixMode(GL_PROJECTION);
    glLoadMatrixd(m.proj);
    glMatrixMode(GL_MODELVIEW);
    glLoadMatrixd(m.model);
    glDisable(GL_LIGHTING);
    glDisable(GL_BLEND);
    glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
    glColor3f(1, 0, 0);
    GLUquadric* q = gluNewQuadric();
    for (int i = 1; i <= Doc.Points.count(); ++i) {
      const Position* p = Doc.Points.Item(i);
      glPushMatrix();
      glTranslatef(p->x, p->y, p->z);
      gluSphere(q, p->Size / 30.0, 16, 16);
      glPopMatrix();
    }
    gluDeleteQuadric(q);
    glFinish();
    image_ = Context().ReadPixels();
  }
};

TEST_F(BallCapTest, CoversTheBallsPixelsUpToItsRim) {
  struct View3 {
    int projectType;
    float quat[4];  // x, y, z, w
  };
  const float h = std::sqrt(0.5f);
  const std::vector<View3> views = {{1, {0, 0, 0, 1}}, {1, {0.5f, 0.2f, 0.1f, 0.84f}}, {2, {h, 0, 0, h}},
                                    {2, {0.3f, -0.4f, 0.2f, 0.84f}}};
  for (const View3& v : views) {
    ClearDocument();
    mnuFileNew3D_Click();
    ShowAxis = ShowGrid = false;
    SetCanvas(kW, kH, 7);
    View.ProjectType = v.projectType;
    const float n = std::sqrt(v.quat[0] * v.quat[0] + v.quat[1] * v.quat[1] + v.quat[2] * v.quat[2] +
                              v.quat[3] * v.quat[3]);
    for (int i = 0; i < 4; ++i) SceneQuat[i] = v.quat[i] / n;
    SceneChanged = true;
    // Sizes from a few pixels across to a fifth of the canvas, apart and in
    // front of one another.
    const std::vector<std::pair<Position, short>> balls = {
        {{-2.2f, -1.5f, 0}, 2}, {{-1, 1.2f, 0.5f}, 5}, {{1.5f, 1.5f, -0.5f}, 12}, {{0.5f, -1, 1}, 30}, {{0.8f, -0.6f, 0}, 20}};
    for (const auto& [at, size] : balls) {
      Position* p = AddPoint(at.x, at.y, at.z, "");
      p->Size = size;
      p->HideLabel = true;
      p->ForeColor = RGB(255, 0, 0);
    }
    Frame();
    const std::vector<bool> cap = RedMask();
    DrawSpheres();
    const std::vector<bool> ball = RedMask();
    int covered = 0, differ = 0, offRim = 0;
    for (int y = 0; y < height_; ++y) {
      for (int x = 0; x < width_; ++x) {
        const size_t i = static_cast<size_t>(y * width_ + x);
        covered += ball[i];
        if (cap[i] == ball[i]) continue;
        ++differ;
        // On the rim: the sphere covers some of the 3 x 3 pixels and leaves
        // some.
        bool in = false, out = false;
        for (int dy = -1; dy <= 1; ++dy)
          for (int dx = -1; dx <= 1; ++dx) {
            const int px = x + dx, py = y + dy;
            const bool b = px >= 0 && py >= 0 && px < width_ && py < height_ &&
                           ball[static_cast<size_t>(py * width_ + px)];
            (b ? in : out) = true;
          }
        offRim += !(in && out);
      }
    }
    const std::string where = "view " + std::to_string(&v - views.data());
    EXPECT_GT(covered, 800) << where;
    EXPECT_EQ(offRim, 0) << where;
    EXPECT_LE(differ * 100, covered * 3) << where << ": " << differ << " of " << covered;
  }
}

}  // namespace
}  // namespace vt
