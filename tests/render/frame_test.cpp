// The frame drawn offscreen: the one scene list, the reference, the overlay,
// lights and projection, the repaint after a resize, canvas input, and what
// happens without a context.
#include <EGL/egl.h>
#include <GL/gl.h>
#include <GL/glu.h>

#include <cmath>
#include <cstdlib>
#include <random>
#include <string>

#include "document/globals.h"
#include "geometry/arc.h"
#include "geometry/circle.h"
#include "geometry/line.h"
#include "geometry/region.h"
#include "render/strokes.h"
#include "render/canvas_input.h"
#include "render/frame.h"
#include "render/text.h"
#include "render/view_state.h"
#include "render_fixture.h"

namespace vt {
namespace {

using test::RenderTest;
using test::Rgb;

// A text of the overlay, drawn by the shared text routine at its place in
// per cent of the canvas.
class OverlayText : public CText {
 public:
  void Draw() override { DrawTextAt(PosX, PosY, 0, "Note"); }
};

class FrameTest : public RenderTest {};

// The crowded figure of the frame benchmark, smaller: lines, rays, segments
// and vectors, circles (every fifth filled), arcs, sectors and bows, in
// every dash style, and see-through regions over them.
void AddCrowdedFigure() {
  std::mt19937 rng(11);
  std::uniform_real_distribution<float> coord(-12, 12), radius(0.3f, 4);
  auto pt = [&] { return Doc.Points.Add(NewObjectId("PT"), coord(rng), coord(rng), 0, 1, "", "", 0); };
  for (int i = 0; i < 48; ++i) {
    auto l = std::make_unique<CLine>();
    l->ID = NewObjectId("LN"), l->lt = 1 + i % 4, l->GELineStyle = 1 + i / 4 % 4;
    l->Line1(pt()->ID, pt()->ID);
    Doc.Lines.Add(std::move(l));
  }
  for (int i = 0; i < 24; ++i) {
    auto c = std::make_unique<CCircle>();
    c->ID = NewObjectId("CR"), c->CType = 3, c->PCenter = HolderCopy(*pt()), c->R = radius(rng);
    c->GELineStyle = 1 + i % 4, c->Filled = i % 5 == 0;
    Doc.Circles.Add(std::move(c));
  }
  for (int i = 0; i < 12; ++i) {
    auto a = std::make_unique<CArc>();
    a->ID = NewObjectId("AR"), a->AT = 1 + i % 3, a->GELineStyle = 1 + i / 3 % 4;
    Position *b = pt(), *c = pt(), *e = pt();
    a->Arc1(b->ID, c->ID, e->ID);
    Doc.Arcs.Add(std::move(a));
  }
  for (int i = 0; i < 6; ++i) {
    auto g = std::make_unique<CRegion>();
    g->ID = NewObjectId("RG"), g->Alpha = 0.3f, g->ForeColor = RGB(0, 128, 255);
    for (int k = 0; k < 3 + i % 3; ++k) g->Points.push_back(HolderCopy(*pt()));
    Doc.Regions.Add(std::move(g));
  }
}

// The crowded figure as the frame draws it (8-bit colour, dashes from the
// dash texture) against GL's own stipple on the deepest colour EGL offers:
// each 16 x 16 block within 12 levels of the other on average (a dash may
// sit a pixel or two along), the whole picture within 1.25 levels (solid
// strokes for dashed ones are 1.8 darker).
TEST_F(FrameTest, CrowdedFigureDrawsWithinItsToleranceOfGLsStipple) {
  SetCanvas(320, 240, 12);
  AddCrowdedFigure();
  Frame();
  const Image now = image_;
  OffscreenContext deep;
  std::string error;
  ASSERT_TRUE(deep.Create(320, 240, error, true)) << error;
  ASSERT_TRUE(Initialize());
  TextureDashes = false;
  DrawScene();
  Display();
  const Image before = deep.ReadPixels();
  TextureDashes = true;
  deep.Destroy();
  ASSERT_EQ(now.rgb.size(), before.rgb.size());
  long total = 0, differing = 0;
  double worst = 0;
  for (int by = 0; by < 240; by += 16) {
    for (int bx = 0; bx < 320; bx += 16) {
      for (int ch = 0; ch < 3; ++ch) {
        long sum = 0;
        for (int y = by; y < by + 16; ++y) {
          for (int x = bx; x < bx + 16; ++x) {
            const size_t i = (static_cast<size_t>(y) * 320 + static_cast<size_t>(x)) * 3 + static_cast<size_t>(ch);
            sum += now.rgb[i] - before.rgb[i];
            differing += std::abs(now.rgb[i] - before.rgb[i]) > 3;
          }
        }
        worst = std::max(worst, std::abs(sum) / 256.0);
        total += sum;
      }
    }
  }
  EXPECT_LE(worst, 12) << "worst 16 x 16 block";
  EXPECT_LE(std::abs(total) / (320.0 * 240 * 3), 1.25) << "whole picture";
  EXPECT_GT(differing, 0);  // the two ways differ where dashes meet pixels
}

// One scene list lives at a time, the glyph lists untouched by its
// turnover; while the view is busy the old list stays and nothing is drawn.
TEST_F(FrameTest, OneSceneListIsAliveAtATimeAndABusyViewDrawsNothing) {
  AddPoint(0.33f, 0.27f)->Size = 9;
  DrawScene();
  const unsigned first = SceneList();
  DrawScene();
  const unsigned second = SceneList();
  EXPECT_TRUE(first != 0 && glIsList(second) && glIsList(FontBitmapBase + 'A'));
  if (second != first) {
    EXPECT_FALSE(glIsList(first));
  }
  ViewGraph.Busy = true;
  DrawScene();
  EXPECT_EQ(SceneList(), second);
  Repaint();
  EXPECT_TRUE(IsWhite(At(0.33f, 0.27f)));
  ViewGraph.Busy = false;
  Repaint();
  EXPECT_TRUE(Near(At(0.33f, 0.27f), 255, 0, 0, 10));
}

TEST_F(FrameTest, GridIsOchreAndLeavesTheAxesAlone) {
  ShowAxis = true;
  Frame();
  const Image axesOnly = image_;
  ShowGrid = true;
  Frame();
  // A grid line away from the axes: x = 3.
  bool ochre = false;
  double wx, wy;
  ASSERT_TRUE(WindowOf(3, 2.5f, 0, wx, wy));
  for (int dx = -1; dx <= 1; ++dx)
    ochre = ochre || Near(Pixel(static_cast<int>(wx) + dx, static_cast<int>(wy)), 200, 150, 0, 12);
  EXPECT_TRUE(ochre);
  // Whatever the axes drew dark is drawn dark with the grid too.
  int axisPixels = 0, lost = 0;
  for (size_t i = 0; i < axesOnly.rgb.size(); i += 3) {
    const Rgb before = {axesOnly.rgb[i], axesOnly.rgb[i + 1], axesOnly.rgb[i + 2]};
    const Rgb after = {image_.rgb[i], image_.rgb[i + 1], image_.rgb[i + 2]};
    axisPixels += IsDark(before);
    lost += IsDark(before) && !IsDark(after);
  }
  EXPECT_GT(axisPixels, 100);
  EXPECT_EQ(lost, 0);
}

TEST_F(FrameTest, AxesCarryTickNumbersAndNames) {
  SetCanvas(kW, kH, 4);  // 30 pixels to the unit: the numbers clear the axes
  // Regions of "1" under the x axis, "-1" left of the y axis, "O" at the
  // origin, and one between the numbers.
  auto one = [&] { return DarkPixelsAround(0.92f, -0.38f, 1.3f, -0.12f); };
  auto minusOne = [&] { return DarkPixelsAround(-0.48f, -1.08f, -0.05f, -0.82f); };
  auto origin = [&] { return DarkPixelsAround(-0.28f, -0.38f, -0.05f, -0.12f); };
  auto between = [&] { return DarkPixelsAround(0.35f, -0.38f, 0.7f, -0.12f); };
  Frame();
  EXPECT_EQ(one() + minusOne() + origin(), 0);
  ShowAxis = true;
  Frame();
  EXPECT_TRUE(one() > 4 && minusOne() > 4 && origin() > 4) << one() << " " << minusOne() << " " << origin();
  EXPECT_EQ(between(), 0);
  // Ticks 0.2 long on the upper side of the x axis and the right of the y axis.
  EXPECT_TRUE(DarkNear(1, 0.1f) && DarkNear(0.1f, 1));
  EXPECT_TRUE(IsWhite(At(1.5f, -0.07f)) && IsWhite(At(-0.1f, 1.5f)));
}

TEST_F(FrameTest, ZoomedOutToFiftyThePlaneGridAndAxesCoverTheCanvas) {
  SetCanvas(kW, kH, 100);  // -50 to 50 up the canvas
  ShowGrid = ShowAxis = true;
  Frame();
  auto ochre = [](const Rgb& c) { return Near(c, 200, 150, 0, 12); };
  EXPECT_TRUE(AnyNear(40, 25, 0, 1, ochre) && AnyNear(-60, -35, 0, 1, ochre));  // lines at x = 40, -60
  EXPECT_FALSE(AnyNear(43.5f, 25, 0, 1, ochre));  // but not one a unit (1.2 pixels)
  EXPECT_TRUE(DarkNear(0, 45) && DarkNear(60, 0));
}

TEST_F(FrameTest, AxesReachFurtherUpInSpaceAndGainAZAxis) {
  SetCanvas(kW, kH, 24);  // 5 pixels to the unit
  ShowAxis = true;
  Frame();
  EXPECT_TRUE(DarkNear(0, 5.5f));
  EXPECT_TRUE(DarkNear(0, 11.0f) && DarkNear(-15.0f, 0));  // the plane axes reach the canvas's edges
  EXPECT_TRUE(DarkNear(9.5f, 0));
  SceneMode = 3;
  Frame();
  EXPECT_TRUE(DarkNear(0, 9.5f));   // in space the y axis reaches 10
  // A pitch of 90 degrees turns the scene's z axis up the screen: it runs to
  // 6, with ticks to the right of it.
  ViewGraph.RotPitch = 90;
  Frame();
  EXPECT_TRUE(DarkNear(0, 0, 5.5f));
  EXPECT_FALSE(DarkNear(0, 0, 7.5f));
  EXPECT_FALSE(DarkNear(0, 0, -7.5f));
  EXPECT_TRUE(DarkNear(0.15f, 0, 4));
  EXPECT_FALSE(DarkNear(-0.6f, 0, 4.5f));  // ticks stand on one side
}

TEST_F(FrameTest, CoordinateLinesRunFromTheSelectedPointToTheAxes) {
  SetCanvas(kW, kH, 8);
  // Both guides run through the middles of pixels (15 pixels to the unit).
  Position* p = AddPoint(30.5f / 15, 2.5f);
  SelectObject(*p);
  Frame();
  EXPECT_EQ(DarkPixelsAround(1.9f, 0.3f, 2.1f, 2.2f), 0);
  ShowCoordLines = true;
  Frame();
  EXPECT_GT(DarkPixelsAround(1.9f, 0.3f, 2.1f, 2.2f), 5);   // down to the x axis
  EXPECT_GT(DarkPixelsAround(0.3f, 2.4f, 1.7f, 2.6f), 5);   // across to the y axis
  EXPECT_EQ(DarkPixelsAround(2.3f, 0.3f, 3.5f, 2.2f), 0);
  p->Hide = true;  // a hidden point has no guides
  Frame();
  EXPECT_EQ(DarkPixelsAround(1.9f, 0.3f, 2.1f, 2.2f), 0);
}

TEST_F(FrameTest, RepaintAfterAResizePlacesLabelsForTheNewView) {
  AddPoint(2, 1, 0, "M");
  Frame();
  // The canvas grows; the handler gives the size to the view and repaints.
  SetCanvas(200, 150, 12);
  Repaint();
  const Image repainted = image_;
  Frame();
  ASSERT_EQ(repainted.rgb.size(), image_.rgb.size());
  EXPECT_TRUE(repainted.rgb == image_.rgb);
  EXPECT_GT(DarkPixelsAround(2.1f, 1.1f, 3.0f, 2.2f), 3);
}

// The mouse ray through a point's pixel picks it, in the plane and in a
// turned space (where the depth read finds the ball's near side).
TEST_F(FrameTest, RayThroughAPointPixelPicksIt) {
  struct Case {
    int mode;
    float x, y, z, tol;
  };
  for (const Case& c : {Case{1, 1.53f, -2.04f, 0, 0.1f}, Case{3, 1, 2, 0.5f, 0.35f}}) {
    SCOPED_TRACE(c.mode);
    ClearDocument();
    SceneMode = c.mode;
    ViewGraph.RotRoll = c.mode == 3 ? 111 : 0;
    ViewGraph.RotPitch = c.mode == 3 ? -41 : 0;
    ViewGraph.RotYaw = c.mode == 3 ? 60 : 0;
    Position* p = AddPoint(c.x, c.y, c.z);
    p->Size = 9;  // in space a ball of radius 0.3, a few pixels across
    Frame();
    double wx, wy;
    ASSERT_TRUE(WindowOf(c.x, c.y, c.z, wx, wy));
    Position viewPoint, scenePoint, farPoint, nearPoint;
    const float X = static_cast<float>(wx), Y = static_cast<float>(kH - wy);
    ScreenToWorld(X, Y, viewPoint, scenePoint);
    ScreenToRay(X, Y, farPoint, nearPoint);
    EXPECT_NEAR(scenePoint.x, c.x, c.tol);
    EXPECT_NEAR(scenePoint.y, c.y, c.tol);
    EXPECT_NEAR(scenePoint.z, c.z, c.mode == 1 ? 0.01f : c.tol);
    EXPECT_TRUE(p->Pick(scenePoint, farPoint, nearPoint));
    if (c.mode != 1) continue;
    EXPECT_GT(nearPoint.z, farPoint.z);
    ScreenToRay(X + 5, Y, farPoint, nearPoint);  // half a unit off
    EXPECT_FALSE(p->Pick(scenePoint, farPoint, nearPoint));
  }
}

// No current context: Initialize says so, and nothing else touches GL.
TEST_F(FrameTest, WithoutAContextNothingIsDrawnAndNothingBreaks) {
  EGLDisplay d = eglGetCurrentDisplay();
  ReleaseContext();
  ASSERT_TRUE(eglMakeCurrent(d, EGL_NO_SURFACE, EGL_NO_SURFACE, EGL_NO_CONTEXT));
  EXPECT_FALSE(Initialize());
  EXPECT_EQ(host_.LastMessage(), "ChoosePixelFormat failed");
  Position* p = AddPoint(0, 0, 0, "A");
  DrawScene();
  Display();
  View.SetScreen(0, 0);
  View.Projection(1, 0, 0, 0, 0);
  EXPECT_FALSE(p->BoxSel(-1000, -1000, 1000, 1000));
  Position a, b;
  ScreenToRay(1, 1, a, b);
  EXPECT_EQ(SceneList(), 0u);
  EXPECT_TRUE(std::isfinite(View.VolWidth));
}

}  // namespace
}  // namespace vt
