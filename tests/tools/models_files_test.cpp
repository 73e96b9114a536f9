// The documents of the Models folder as the model commands merge them: each
// opens, two merges give disjoint ids and labels that go on, and every point
// the user can drag keeps the figure what its name says, checked by numbers.
// The committed files are what the generator writes, byte for byte.
#include <cmath>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "document/document.h"
#include "document/globals.h"
#include "graphs/curve_form.h"
#include "render/view_state.h"
#include "persist/docio.h"
#include "tool_fixture.h"
#include "tools/model_gen.h"
#include "tools/models.h"
#include "tools/select.h"

namespace vt {
namespace {

using test::ToolTest;

const std::string kData = VT_SOURCE_DATA_DIR;

struct V {
  double x, y, z;
};
V Of(const Position* p) { return {p->x, p->y, p->z}; }
V Of(const Position& p) { return {p.x, p.y, p.z}; }
V operator-(V a, V b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
V operator+(V a, V b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
double Dot(V a, V b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
double Len(V a) { return std::sqrt(Dot(a, a)); }
double Dist(const Position* a, const Position* b) { return Len(Of(a) - Of(b)); }
// Cosine of the angle between two vectors: 0 for a right angle.
double Cos(V a, V b) { return Dot(a, b) / (Len(a) * Len(b)); }

constexpr double kTol = 2e-3;  // world units, and cosines

// One merged copy of a model: where its points and circles begin.
struct Copy {
  int pointBase = 0, circleBase = 0, count = 0;
  Position* P(int k) const { return Doc.Points.Item(pointBase + k); }  // k from 1, file order
  CCircle* Circle(int k) const { return Doc.Circles.Item(circleBase + k); }
  std::vector<V> Places() const {
    std::vector<V> out;
    for (int k = 1; k <= count; ++k) out.push_back(Of(P(k)));
    return out;
  }
};

class ModelFilesTest : public ToolTest {
 protected:
  void SetUp() override {
    ToolTest::SetUp();
    savedFolder_ = SystemFolder;
    SystemFolder = kData;
  }
  void TearDown() override {
    SystemFolder = savedFolder_;
    ToolTest::TearDown();
  }

  Copy Merge(const std::string& file) {
    Copy c;
    c.pointBase = Doc.Points.count();
    c.circleBase = Doc.Circles.count();
    OpenModelCommand(file);
    c.count = Doc.Points.count() - c.pointBase;
    return c;
  }

  // Every holder's copies stand where their real points stand.
  static void ExpectCopiesFollow(const std::string& where) {
    auto same = [&](const Position& copy, const std::string& holder) {
      if (copy.ID.empty()) return;
      const Position* real = FindPoint(copy.ID);
      ASSERT_NE(real, nullptr) << holder;
      EXPECT_NEAR(Dist(&copy, real), 0, kTol) << where << ": " << holder << " keeps " << copy.ID;
    };
    for (CLine* l : Doc.Lines) {
      same(l->pBegin, l->ID);
      same(l->pEnd, l->ID);
    }
    for (CCircle* c : Doc.Circles) {
      if (c->CType == 1) same(c->PCenter, c->ID);
      for (const Position* s : {&c->PCircleR, &c->PCircleR2, &c->PCircleR3}) same(*s, c->ID);
    }
  }

  static void ExpectSquare(const Copy& m, int a, int b, int c, int d, const std::string& where) {
    const double side = Dist(m.P(a), m.P(b));
    EXPECT_GT(side, 0.1) << where;
    const int sides[3][2] = {{b, c}, {c, d}, {d, a}};
    for (const auto& s : sides) EXPECT_NEAR(Dist(m.P(s[0]), m.P(s[1])), side, kTol) << where;
    EXPECT_NEAR(Cos(Of(m.P(b)) - Of(m.P(a)), Of(m.P(d)) - Of(m.P(a))), 0, kTol) << where;
    EXPECT_NEAR(Cos(Of(m.P(a)) - Of(m.P(b)), Of(m.P(c)) - Of(m.P(b))), 0, kTol) << where;
    EXPECT_NEAR(Len(Of(m.P(a)) + Of(m.P(c)) - Of(m.P(b)) - Of(m.P(d))), 0, kTol) << where;
  }

  // What each figure's name says, on one merged copy.
  static void ExpectShape(const std::string& file, const Copy& m, const std::string& where) {
    auto P = [&](int k) { return m.P(k); };
    if (file == "Triangle.vtd") {
      ASSERT_EQ(m.count, 3);
      EXPECT_GT(Len(Of(P(2)) - Of(P(1))), 0.1);
    } else if (file == "Equilateral.vtd") {
      const double ab = Dist(P(1), P(2));
      EXPECT_NEAR(Dist(P(2), P(3)), ab, kTol) << where;
      EXPECT_NEAR(Dist(P(3), P(1)), ab, kTol) << where;
    } else if (file == "TriRightAngled.vtd") {
      EXPECT_NEAR(Cos(Of(P(1)) - Of(P(3)), Of(P(2)) - Of(P(3))), 0, kTol) << where;
    } else if (file == "Parallelogram.vtd") {
      EXPECT_NEAR(Len(Of(P(1)) + Of(P(3)) - Of(P(2)) - Of(P(4))), 0, kTol) << where;
    } else if (file == "Rectangle.vtd") {
      EXPECT_NEAR(Len(Of(P(1)) + Of(P(3)) - Of(P(2)) - Of(P(4))), 0, kTol) << where;
      EXPECT_NEAR(Cos(Of(P(1)) - Of(P(2)), Of(P(3)) - Of(P(2))), 0, kTol) << where;
    } else if (file == "Square.vtd") {
      ExpectSquare(m, 1, 2, 3, 4, where);
    } else if (file == "Trapezoid.vtd") {
      const V ab = Of(P(2)) - Of(P(1)), dc = Of(P(3)) - Of(P(4));
      EXPECT_NEAR((ab.x * dc.y - ab.y * dc.x) / (Len(ab) * Len(dc)), 0, kTol) << where;
    } else if (file == "Cube.vtd") {
      // A B C D below, E F G H above them.
      static const int edges[12][2] = {{1, 2}, {2, 3}, {3, 4}, {4, 1}, {5, 6}, {6, 7},
                                       {7, 8}, {8, 5}, {1, 5}, {2, 6}, {3, 7}, {4, 8}};
      const double side = Dist(P(1), P(2));
      std::map<int, std::vector<V>> at;
      for (const auto& e : edges) {
        EXPECT_NEAR(Dist(P(e[0]), P(e[1])), side, kTol) << where << " edge " << e[0] << e[1];
        at[e[0]].push_back(Of(P(e[1])) - Of(P(e[0])));
        at[e[1]].push_back(Of(P(e[0])) - Of(P(e[1])));
      }
      for (auto& [corner, arms] : at) {
        ASSERT_EQ(arms.size(), 3u);
        for (int i = 0; i < 3; ++i) EXPECT_NEAR(Cos(arms[i], arms[(i + 1) % 3]), 0, kTol) << where << " at " << corner;
      }
      EXPECT_GT(P(5)->z, P(1)->z) << where;
    } else if (file == "Pyramid.vtd") {
      ExpectSquare(m, 1, 2, 3, 4, where);
      const double side = Dist(P(1), P(2));
      for (int k = 1; k <= 4; ++k) EXPECT_NEAR(Dist(P(5), P(k)), side, kTol) << where;
      EXPECT_GT(P(5)->z, P(1)->z) << where;
    } else if (file == "Cone.vtd" || file == "Sphere.vtd" || file == "Cylinder.vtd") {
      // A the centre, B on the rim or sphere, C a quarter turn on, D over A.
      const V axis = Of(P(4)) - Of(P(1));
      const double r = Dist(P(1), P(2));
      EXPECT_GT(r, 0.1) << where;
      EXPECT_NEAR(Cos(axis, Of(P(2)) - Of(P(1))), 0, kTol) << where;
      EXPECT_NEAR(Cos(axis, Of(P(3)) - Of(P(1))), 0, kTol) << where;
      EXPECT_GT(axis.z, 0.1) << where;
      EXPECT_NEAR(Dist(P(1), P(3)), r, kTol) << where;
      // The base circle about A through B.
      const CCircle* base = m.Circle(1);
      EXPECT_NEAR(Len(Of(base->PCenter) - Of(P(1))), 0, kTol) << where;
      EXPECT_NEAR(base->Radius(), r, kTol) << where;
      if (file == "Cone.vtd") {
        for (int k : {5, 6}) {
          EXPECT_NEAR(Dist(P(1), P(k)), r, kTol) << where;
          EXPECT_NEAR(P(k)->z, P(1)->z, kTol) << where;
        }
      } else if (file == "Sphere.vtd") {
        for (int k = 2; k <= 6; ++k) EXPECT_NEAR(Dist(P(1), P(k)), r, kTol) << where << " point " << k;
        for (int c : {2, 3}) {
          const CCircle* meridian = m.Circle(c);
          EXPECT_NEAR(Len(Of(meridian->Centre()) - Of(P(1))), 0, kTol) << where;
          EXPECT_NEAR(meridian->Radius(), r, kTol) << where;
        }
      } else {
        // The top circle through E, F, G about D, as wide as the base; E and
        // F stand over B and C.
        EXPECT_NEAR(Len(Of(P(5)) - Of(P(2)) - axis), 0, kTol) << where;
        EXPECT_NEAR(Len(Of(P(6)) - Of(P(3)) - axis), 0, kTol) << where;
        const CCircle* top = m.Circle(2);
        EXPECT_NEAR(Len(Of(top->Centre()) - Of(P(4))), 0, kTol) << where;
        EXPECT_NEAR(top->Radius(), r, kTol) << where;
        EXPECT_NEAR(Dist(P(1), P(8)), r, kTol) << where;
      }
    } else {
      ADD_FAILURE() << "no check for " << file;
    }
  }

  std::string savedFolder_;
};

bool IsSpace(const std::string& file) {
  for (const ModelRecipe& r : ModelRecipes())
    if (file == r.file) return r.space;
  return false;
}

std::set<std::string> AllIds() {
  std::set<std::string> ids;
  for (Kind k : kAllKinds) {
    CollectionBase& c = Doc.Of(k);
    for (int i = 1; i <= c.count(); ++i) EXPECT_TRUE(ids.insert(c.ItemBase(i)->ID).second) << c.ItemBase(i)->ID;
  }
  return ids;
}

class EachModel : public ModelFilesTest, public ::testing::WithParamInterface<std::string> {};

TEST_P(EachModel, MergesTwiceAndKeepsItsShapeWhileEachDraggablePointIsDragged) {
  const std::string file = GetParam();
  std::string text;
  ASSERT_TRUE(ReadDocumentFile(kData + "/Models/" + file, text)) << file;
  const bool space = IsSpace(file);
  SceneMode = space ? 3 : 1;

  const Copy first = Merge(file);
  ASSERT_GE(first.count, 3) << file;
  const int afterFirst = DocumentObjectCount();
  const std::set<std::string> idsFirst = AllIds();
  const Copy second = Merge(file);
  EXPECT_EQ(second.count, first.count);
  EXPECT_EQ(DocumentObjectCount(), 2 * afterFirst);
  EXPECT_EQ(AllIds().size(), 2 * idsFirst.size());  // no id twice
  EXPECT_TRUE(host_.messages.empty()) << host_.LastMessage();

  // A, B, ... for the first copy, and on from there for the second.
  std::string label = "0";
  for (const Copy* c : {&first, &second})
    for (int k = 1; k <= c->count; ++k) {
      label = NextPointLabel(label);
      EXPECT_EQ(c->P(k)->PLabel, label) << file;
    }
  EXPECT_EQ(first.P(1)->PLabel, "A");
  // The objects name the new labels, and lean on their own copy's points.
  for (int i = 1; i <= Doc.Lines.count(); ++i) {
    const CLine* l = Doc.Lines.Item(i);
    const Position* b = FindPoint(l->pBegin.ID);
    ASSERT_NE(b, nullptr);
    EXPECT_EQ(l->pBegin.PLabel, b->PLabel);
    const bool inSecond = Doc.Points.FindId(l->pBegin.ID) > second.pointBase;
    EXPECT_EQ(Doc.Points.FindId(l->pEnd.ID) > second.pointBase, inSecond) << l->ID;
  }
  ExpectShape(file, first, file + " first copy");
  ExpectShape(file, second, file + " second copy");
  ExpectCopiesFollow(file);

  // Every point the user can drag, dragged twice: the figure keeps its shape
  // and the other copy stays.
  const std::vector<V> secondBefore = second.Places();

  int dragged = 0;
  const V moves[] = {{0.9, 0.6, 0}, {-1.4, 0.8, 0}};
  for (const V& move : moves) {
    for (int k = 1; k <= first.count; ++k) {
      Position* p = first.P(k);
      if (p->Hide || (p->ptype != 1 && p->ptype != 7)) continue;
      const std::string where = file + " dragging " + p->PLabel;
      const Position from(p->x, p->y, p->z);
      const Position to(static_cast<float>(p->x + move.x), static_cast<float>(p->y + move.y), p->z);
      SelectKind(18);
      if (space) DragSlanted(from, to);
      else Drag(from.x, from.y, to.x, to.y);
      ASSERT_EQ(PickedPointID, p->ID) << where;
      if (p->ptype == 1) {
        EXPECT_NEAR(p->x, to.x, 1e-4) << where;
        EXPECT_NEAR(p->y, to.y, 1e-4) << where;
        EXPECT_NEAR(p->z, from.z, 1e-6) << where;
      } else {
        EXPECT_GT(Dist(p, &from), 0.05) << where << " (it should slide along its carrier)";
      }
      ++dragged;
      ExpectShape(file, first, where);
      ExpectCopiesFollow(where);
    }
  }
  EXPECT_GE(dragged, 4) << file;
  EXPECT_TRUE(host_.messages.empty()) << host_.LastMessage();
  // The other copy stays where it was.
  const std::vector<V> secondAfter = second.Places();
  for (size_t i = 0; i < secondBefore.size(); ++i)
    EXPECT_NEAR(Len(secondAfter[i] - secondBefore[i]), 0, 1e-6) << file << " second copy, point " << i + 1;
}

// Repeated models land apart: in the plane inside the view (the view fitted
// once the view is full), in space side by side along x.
TEST_F(ModelFilesTest, RepeatedModelsLandApartInView) {
  const std::pair<bool, std::vector<std::string>> scenes[] = {{false, std::vector<std::string>(9, "Square.vtd")},
                                                              {true, {"Cube.vtd", "Pyramid.vtd", "Cone.vtd"}}};
  for (const auto& [space, files] : scenes) {
    ClearDocument();
    SceneMode = space ? 3 : 1;
    View.SetRef(0, 0, 0), View.SetEye(0, 0, 50), View.SetViewRect(0, 12);  // as at start-up
    std::vector<CBox> boxes;
    for (const std::string& f : files) {
      const Copy c = Merge(f);
      boxes.push_back(PointsBox(c.pointBase + 1, Doc.Points.count()));
      CBox view{-1e9f, 1e9f, -1e9f, 1e9f, 0, 0};
      ASSERT_TRUE(space || VisiblePlaneArea(view));
      for (size_t i = 0; i < boxes.size(); ++i) {
        const CBox& a = boxes[i];
        EXPECT_TRUE(a.MinX >= view.MinX && a.MaxX <= view.MaxX && a.MinY >= view.MinY && a.MaxY <= view.MaxY)
            << f << " copy " << i + 1 << " of " << boxes.size() << " is out of view";
        for (size_t j = 0; j < i; ++j) {
          const CBox& b = boxes[j];
          EXPECT_TRUE(a.MinX >= b.MaxX + 0.99f || a.MaxX <= b.MinX - 0.99f || a.MinY >= b.MaxY + 0.99f ||
                      a.MaxY <= b.MinY - 0.99f) << f << " copies " << j + 1 << " and " << i + 1 << " overlap";
          if (space) EXPECT_GT(a.MinX, b.MaxX);  // side by side, to the right
        }
      }
    }
  }
}

std::vector<std::string> ModelFiles() {
  std::vector<std::string> files;
  for (const ModelEntry& e : ModelTable()) files.push_back(e.file);
  return files;
}

INSTANTIATE_TEST_SUITE_P(Models, EachModel, ::testing::ValuesIn(ModelFiles()),
                         [](const ::testing::TestParamInfo<std::string>& info) {
                           return info.param.substr(0, info.param.size() - 4);
                         });

// The committed models and start document are what the generator writes.
TEST_F(ModelFilesTest, WritesTheFilesAndSaysWhenItCannot) {
  std::string start;
  ASSERT_TRUE(ReadDocumentFile(kData + "/Tutorials/T000.vtd", start));
  BuildStartDocument();
  EXPECT_EQ(GetUndoVar(), start) << "regenerate Tutorials/T000.vtd with vantrel-cli models";
  ClearDocument();
  test::TempDir dir;
  std::string error;
  ASSERT_TRUE(WriteModelFiles(dir.dir(), error)) << error;
  for (const ModelEntry& e : ModelTable()) {
    std::string written, committed;
    ASSERT_TRUE(ReadDocumentFile(dir.path(e.file), written)) << e.file;
    ASSERT_TRUE(ReadDocumentFile(kData + "/Models/" + e.file, committed));
    EXPECT_EQ(written, committed) << e.file;
  }
  EXPECT_EQ(DocumentObjectCount(), 0);
  EXPECT_FALSE(WriteModelFiles(dir.path("no/such/folder"), error));
  EXPECT_NE(error.find("Triangle.vtd"), std::string::npos) << error;
  EXPECT_FALSE(WriteStartDocument(dir.path("no/such/T000.vtd"), error));
  EXPECT_NE(error.find("T000.vtd"), std::string::npos) << error;
}

}  // namespace
}  // namespace vt
