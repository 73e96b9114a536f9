// A gallery of small space scenes, each drawn headless in the space view of
// a new 3D document (z up the screen) and checked by two independent paths:
// pixels where the view projects user points that lie on the object (and
// background where it projects points that do not), and a second picture or
// the object's own numbers: a twin built another way must cover the same
// pixels, a switch must change what it should, a computed line must lie where
// the formula puts it.
#include <GL/glu.h>

#include <cmath>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "geometry/derived_surfaces.h"
#include "geometry/line.h"
#include "geometry/region.h"
#include "graphs/surface.h"
#include "graphs/swept.h"
#include "persist/docio.h"
#include "render/frame.h"
#include "render/text.h"
#include "render/view_state.h"
#include "graphs/graphs_test_util.h"
#include "render_fixture.h"

namespace vt {
namespace {

using test::RenderTest;
using test::Rgb;

struct P3 {
  float x, y, z;
};

class SpaceGallery : public RenderTest {
 public:
  using RenderTest::At;
  using RenderTest::Frame;
  using RenderTest::AddPoint;
  static constexpr std::uint32_t kBlue = RGB(0, 0, 255);

  CSurface* Surface(int funForm, int coordType, const std::string& fx, const std::string& fy, const std::string& fz,
                    int steps, const std::string& minU, const std::string& maxU, const std::string& minV,
                    const std::string& maxV) {
    CSurface* s = Doc.Surfaces.Add(test::MakeSurface(2, funForm, coordType, fx, fy, fz, steps, minU, maxU, minV, maxV));
    Blue(*s);
    return s;
  }
  CRegion* Region(const std::vector<P3>& corners) {
    auto g = std::make_unique<CRegion>();
    g->ID = NewObjectId("RG");
    for (const P3& c : corners) g->Points.emplace_back(c.x, c.y, c.z);
    g->ForeColor = kBlue;
    g->Alpha = 1;
    return Doc.Regions.Add(std::move(g));
  }
  CLine* Segment(P3 a, P3 b) {
    Position* p = AddPoint(a.x, a.y, a.z);
    Position* q = AddPoint(b.x, b.y, b.z);
    p->Hide = q->Hide = true;
    CLine* l = DocumentTest::Segment(p, q);
    l->Hide = true;
    return l;
  }
  template <class S>
  static void Blue(S& s) {
    s.FillStyle = 4, s.FirstColor = kBlue;
  }

  bool Covered(const P3& p) const { return !IsWhite(At(p.x, p.y, p.z)); }
  // A colour within one pixel of where p falls.
  bool ColourNear(const P3& p, const std::function<bool(const Rgb&)>& is) const { return AnyNear(p.x, p.y, p.z, 1, is); }
  std::vector<bool> Mask() const {
    std::vector<bool> m;
    for (int y = 0; y < height_; ++y)
      for (int x = 0; x < width_; ++x) m.push_back(!IsWhite(Pixel(x, y)));
    return m;
  }
  // The mouse ray through the pixel of p picks the object.
  bool PickedAt(DocObject& object, const P3& p) const {
    const WindowProjection& m = CompiledProjection();
    double wx, wy, nx, ny, nz, fx, fy, fz;
    if (!WindowOf(p.x, p.y, p.z, wx, wy)) return false;
    gluUnProject(wx, wy, 0, m.model, m.proj, m.viewport, &nx, &ny, &nz);
    gluUnProject(wx, wy, 1, m.model, m.proj, m.viewport, &fx, &fy, &fz);
    const Position nearP(static_cast<float>(nx), static_cast<float>(ny), static_cast<float>(nz));
    const Position farP(static_cast<float>(fx), static_cast<float>(fy), static_cast<float>(fz));
    return object.Pick(Position(p.x, p.y, p.z), farP, nearP);
  }
  void NewSpaceScene(bool lit) {
    ClearDocument();
    mnuFileNew3D_Click();
    ResetSceneSettings();
    ShowAxis = ShowGrid = false;
    MainLight.LightingOn = lit;
    SetCanvas(kW, kH, 7);
  }
};

struct Scene {
  const char* name;
  bool lit;
  std::function<void(SpaceGallery&)> build;
  std::vector<P3> on, off;
    // Drawn alone instead, it must cover the same pixels.
  std::function<void(SpaceGallery&)> twin;
  // The second path: a check of its own after the first picture (before
  // the twin's).
  std::function<void(SpaceGallery&)> more;
};

TEST_F(SpaceGallery, EachSceneStandsInTheUsersAxes) {
  const float pi = 3.14159265f;
  auto square = [](float z) { return std::vector<P3>{{-1, -1, z}, {1, -1, z}, {1, 1, z}, {-1, 1, z}}; };
  const std::vector<Scene> scenes = {
      {"plane z=2 over [-1,1]^2", false,
       [](SpaceGallery& g) { g.Surface(2, 3, "", "", "2", 4, "-1", "1", "-1", "1"); },
       {{0, 0, 2}, {0.8f, -0.8f, 2}, {-0.8f, 0.8f, 2}},
       {{0, 2, 0}, {0, 0, 0}, {2, 0, 0}},
       [square](SpaceGallery& g) { g.Region(square(2)); },
       [](SpaceGallery& g) {
         CSurface& s = *Doc.Surfaces.Item(1);
         EXPECT_TRUE(g.PickedAt(s, {0.5f, 0.5f, 2}));
         EXPECT_FALSE(g.PickedAt(s, {0, 2, 0}));
       }},
      {"z scale 0.5: z=4 drawn where z=2 is, picked there, kept with the document", false,
       [](SpaceGallery& g) {
         ScaleZ = 0.5f;
         g.Surface(2, 3, "", "", "4", 4, "-1", "1", "-1", "1");
       },
       {{0, 0, 4}, {0.8f, -0.8f, 4}},
       {{0, 2, 0}, {0, 0, 0}},
       [](SpaceGallery& g) { g.Surface(2, 3, "", "", "2", 4, "-1", "1", "-1", "1"); },
       [](SpaceGallery& g) {
         EXPECT_TRUE(g.PickedAt(*Doc.Surfaces.Item(1), {0.5f, 0.5f, 4}));
         Position* p = g.AddPoint(-1.5f, 2, 0);
         g.Frame();
         EXPECT_TRUE(g.PickedAt(*p, {-1.5f, 2, 0}));
         AxisObject.ShowShadow = true;
         const std::string text = GetUndoVar();
         g.NewSpaceScene(false);
         EXPECT_EQ(GetUndoVar().find("VS1"), std::string::npos);  // defaults add nothing
         ASSERT_TRUE(OpenDocumentText(text));
         EXPECT_TRUE(ScaleZ == 0.5f && ScaleX == 1 && AxisObject.ShowShadow);
       }},
      {"shadow of a square at z=2 on the floor z=0", false,
       [square](SpaceGallery& g) {
         AxisObject.ShowShadow = true;
         g.Region(square(2));
       },
       {{0, 0, 2}},
       {{-1.8f, -1.8f, 0}},
       nullptr,
       [](SpaceGallery& g) {
         // Dark where the shadow falls (aside from the square), and only there.
         const P3 in{1.5f, 1.3f, 0}, out{-1.5f, 1.3f, 0};
         const Rgb dark = g.At(in.x, in.y, in.z);
         EXPECT_TRUE(dark[0] < 170 && !g.Covered(out)) << dark[0];
         AxisObject.ShowShadow = false;
         g.Frame();
         EXPECT_FALSE(g.Covered(in));
       }},
      {"cylinder a=u, r=1, z=v and a segment turned about the z axis", false,
       [](SpaceGallery& g) { g.Surface(3, 4, "u", "1", "v", 24, "0", "6.2832", "0", "2"); },
       {{0, 0, 1}, {1, 0, 1}, {0, -1, 0.5f}},
       {{0, 0, 3}, {0, 0, -1}, {0, 2.5f, 0}},
       [](SpaceGallery& g) {
         CSurRot* s = test::AddRotation(g.Segment({1, 0, 0}, {1, 0, 2})->ID, g.Segment({0, 0, 0}, {0, 0, 1})->ID, "6.2832", 24);
         Blue(*s);
         ASSERT_TRUE(s->GetPoints());
       },
       nullptr},
      {"half sphere through (0,0,1) and the upper half of the isosurface x^2+y^2+z^2=1", false,
       [](SpaceGallery& g) {
         Position* c = g.AddPoint(0, 0, 0);
         Position* top = g.AddPoint(0, 0, 1);
         c->Hide = top->Hide = true;
         auto s = std::make_unique<CSphere>();
         s->ID = NewObjectId("SP"), s->LKID = c->ID, s->LKID2 = top->ID;
         s->AngleBTo = 1.5708f, s->ForeColor = RGB(255, 0, 0), s->Alpha = 0.3f;
         ASSERT_TRUE(Doc.Spheres.Add(std::move(s))->InitPos());
       },
       {{0, 0, 0.9f}, {0, 0, 0.3f}},
       {{0, 0, -0.9f}, {0, 0, 1.5f}},
       [](SpaceGallery& g) {
         CSurface* s = g.Surface(1, 3, "", "", "x^2+y^2+z^2-1", 20, "-1.2", "1.2", "-1.2", "1.2");
         s->StepW = 20, s->MinW = 0, s->MaxW = 1.2f;
       },
       [](SpaceGallery& g) {
         // The canvas shows through the red; opaque the sphere hides it,
         // hidden it draws nothing.
         CSphere& s = *Doc.Spheres.Item(1);
         const Rgb mid = g.At(0, 0, 0.5f);
         EXPECT_TRUE(mid[0] > 230 && mid[1] > 60 && mid[1] < 215 && std::abs(mid[1] - mid[2]) < 12);
         s.Alpha = 1;
         g.Frame();
         EXPECT_TRUE(Near(g.At(0, 0, 0.5f), 255, 0, 0, 20));
         s.Hide = true;
         g.Frame();
         EXPECT_TRUE(IsWhite(g.At(0, 0, 0.5f)));
       }},
      {"a segment extruded by (0,0,2) and the wall as a region", false,
       [](SpaceGallery& g) {
         CStretch* s = test::AddExtrusion(g.Segment({-1, 0, 0}, {1, 0, 0})->ID, "0", "0", "2", 4);
         Blue(*s);
         ASSERT_TRUE(s->GetPoints());
       },
       {{0, 0, 1}, {0.8f, 0, 1.8f}},
       {{0, 0, -0.7f}, {0, 0, 2.7f}, {0, 2, 0}},
       [](SpaceGallery& g) { g.Region({{-1, 0, 0}, {1, 0, 0}, {1, 0, 2}, {-1, 0, 2}}); },
       nullptr},
      {"ramp by height on z=-x", false,
       [](SpaceGallery& g) {
         CSurface* s = g.Surface(2, 3, "", "", "-x", 10, "-1", "1", "-1", "1");
         s->FillStyle = 5;
       },
       {{-0.5f, 0, 0.5f}, {0.5f, 0, -0.5f}},
       {{0, 0, 2}, {0, 0, -2}},
       nullptr,
       [](SpaceGallery& g) {
         // Red at the top of the rainbow, blue to violet at the bottom (lit).
         const Rgb top = g.At(-0.9f, 0, 0.9f), bottom = g.At(0.9f, 0, -0.9f);
         EXPECT_TRUE(top[0] > top[1] + 60 && top[0] > top[2] + 100) << top[0] << " " << top[1] << " " << top[2];
         EXPECT_TRUE(bottom[2] > bottom[1] + 50 && bottom[2] + 10 > bottom[0])
             << bottom[0] << " " << bottom[1] << " " << bottom[2];
       }},
      {"contour of the cone z=r in cylindrical form", false,
       [](SpaceGallery& g) {
         CSurface* s = g.Surface(2, 4, "", "", "r", 24, "0", "6.2832", "0", "2");
         s->FirstColor = RGB(200, 200, 200), s->ShowContour = true, s->ContourLevel = 1;
       },
       {{0, 0, 0.1f}, {1.5f, 0, 1.5f}},
       {{0, 0, -0.8f}},
       nullptr,
       [pi](SpaceGallery& g) {
         // The one level is the middle height, 1: a circle of radius 1 there.
         CSurface& s = *Doc.Surfaces.Item(1);
         float level = 0;
         std::vector<float> pts;
         s.ContourSegments(1, level, pts);
         EXPECT_NEAR(level, 1, 1e-5);
         ASSERT_GE(pts.size(), 3u * 40);
         for (size_t k = 0; k + 2 < pts.size(); k += 3)
           EXPECT_TRUE(pts[k + 2] == 1 && std::fabs(std::hypot(pts[k], pts[k + 1]) - 1) < 0.02) << k;
         // Drawn in the ramp's middle colour (yellow-green) where it is seen.
         int seen = 0;
         for (int k = 0; k < 12; ++k) {
           const float a = 2 * pi * static_cast<float>(k) / 12;
           seen += g.ColourNear({std::cos(a), std::sin(a), 1},
                                [](const Rgb& c) { return c[1] > 200 && c[2] < 90 && c[0] > 60 && c[0] < 200; });
         }
         EXPECT_GE(seen, 6);
       }},
      {"clip box x in [-1,1] on z=-x over [-2,2]^2", false,
       [](SpaceGallery& g) {
         CSurface* s = g.Surface(2, 3, "", "", "-x", 8, "-2", "2", "-2", "2");
         s->Clip = true, s->ClipMinX = -1, s->ClipMaxX = 1;
       },
       {{0.5f, 0, -0.5f}, {-0.5f, 0.5f, 0.5f}},
       {{1.7f, 0, -1.7f}, {-1.7f, 0, 1.7f}},
       nullptr,
       [](SpaceGallery& g) {
         Doc.Surfaces.Item(1)->Clip = false;
         g.Frame();
         EXPECT_TRUE(g.Covered({1.7f, 0, -1.7f}) && g.Covered({-1.7f, 0, 1.7f}));
       }},
      {"Neon material, lit", true,
       [](SpaceGallery& g) { g.Surface(2, 3, "", "", "1", 4, "-1", "1", "-1", "1")->Material = 5; },
       {{0, 0, 1}, {0.7f, 0.7f, 1}},
       {{0, 0, -1}},
       [square](SpaceGallery& g) { g.Region(square(1)); },
       nullptr},
      {"tangent plane of z=x^2+y^2 at (1,0)", false,
       [](SpaceGallery& g) { g.Surface(2, 3, "", "", "x^2+y^2", 10, "-1", "1", "-1", "1"); },
       {{0, 0, 0}, {0.5f, 0.5f, 0.5f}},
       {{0, 0, -1}},
       nullptr,
       [](SpaceGallery& g) {
         // The plane z = 2x - 1, darkening the picture where it is drawn.
         CSurface& s = *Doc.Surfaces.Item(1);
         Position c[4];
         ASSERT_TRUE(s.TangentPlaneAt(1, 0, c));
         for (const Position& p : c) EXPECT_NEAR(p.z, 2 * p.x - 1, 1e-4);
         const P3 far{1.8f, 0.8f, 2.6f};
         const Rgb before = g.At(far.x, far.y, far.z);
         s.ShowTangent = true, s.TangentX = {1}, s.TangentY = {0};
         g.Frame();
         const Rgb after = g.At(far.x, far.y, far.z);
         EXPECT_LT(after[0] + after[1] + after[2], before[0] + before[1] + before[2] - 150);
       }},
  };
  for (const Scene& scene : scenes) {
    SCOPED_TRACE(scene.name);
    NewSpaceScene(scene.lit);
    scene.build(*this);
    Frame();
    // The view of a new 3D document stands z up the screen.
    double ox, oy, zx, zy;
    ASSERT_TRUE(WindowOf(0, 0, 0, ox, oy) && WindowOf(0, 0, 1 / ScaleZ, zx, zy));
    ASSERT_GT(zy - oy, 8);
    for (const P3& p : scene.on) EXPECT_TRUE(Covered(p)) << "on " << p.x << "," << p.y << "," << p.z;
    for (const P3& p : scene.off) EXPECT_FALSE(Covered(p)) << "off " << p.x << "," << p.y << "," << p.z;
    if (scene.more) scene.more(*this);
    if (scene.twin) {
      NewSpaceScene(scene.lit);
      scene.build(*this);
      Frame();
      const std::vector<bool> first = Mask();
      NewSpaceScene(scene.lit);
      scene.twin(*this);
      Frame();
      const std::vector<bool> second = Mask();
      int both = 0, either = 0;
      for (size_t k = 0; k < first.size(); ++k) {
        both += first[k] && second[k];
        either += first[k] || second[k];
      }
      ASSERT_GT(either, 100);
      EXPECT_GT(static_cast<double>(both) / either, 0.9) << both << " / " << either;
    }
  }
  MainLight.LightingOn = true;
}

}  // namespace
}  // namespace vt
