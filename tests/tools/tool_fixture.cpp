#include "tool_fixture.h"

#include <vector>

#include "document/globals.h"
#include "document/undo.h"
#include "geometry/geom.h"
#include "render/frame.h"
#include "tools/create_tools.h"
#include "tools/select.h"

namespace vt::test {

void ToolTest::SetUp() {
  DocumentTest::SetUp();
  SceneMode = 1;
  host_.canvasWidth = kCanvas;
  host_.canvasHeight = kCanvas;
  CanvasWidth = CanvasHeight = kCanvas;
  ResetSelectState();
}

void ToolTest::TearDown() {
  ResetSelectState();
  SelectToolHooks = SelectHooks{};
  TextToolDialog = {};
  ToolCursorPoint = nullptr;
  DocumentTest::TearDown();
}

Mouse ToolTest::At(float x, float y) {
  Mouse m;
  m.scene = Position(x, y, 0);
  m.view = m.scene;
  m.nearPoint = Position(x, y, 10);
  m.farPoint = Position(x, y, -10);
  m.X = (x + 10) * kCanvas / 20.0f;
  m.Y = (10 - y) * kCanvas / 20.0f;
  return m;
}

Mouse ToolTest::Slanted(float x, float y, float z) {
  Mouse m = At(x, y);
  m.scene = Position(x, y, z);
  m.nearPoint = Position(x - 3, y - 4, z + 10);
  m.farPoint = Position(x + 3, y + 4, z - 10);
  return m;
}

void ToolTest::Press(CCommand& tool, Mouse m) { tool.LButtonDown(m.view, m.scene, m.X, m.Y, m.farPoint, m.nearPoint); }
void ToolTest::Move(CCommand& tool, Mouse m) { tool.MouseMove(m.view, m.scene, m.X, m.Y, m.farPoint, m.nearPoint); }
void ToolTest::Release(CCommand& tool, Mouse m) { tool.RButtonDown(m.view, m.scene, m.X, m.Y, m.farPoint, m.nearPoint); }

void ToolTest::Drag(float x0, float y0, float x1, float y1, int steps) {
  DragSlanted(Position(x0, y0, 0), Position(x1, y1, 0), steps);
}

void ToolTest::DragSlanted(const Position& from, const Position& to, int steps) {
  const bool space = SceneMode == 3;
  auto event = [&](float t) {
    const float x = from.x + (to.x - from.x) * t, y = from.y + (to.y - from.y) * t, z = from.z + (to.z - from.z) * t;
    return space ? Slanted(x, y, z) : At(x, y);
  };
  {
    CSelect s;
    Press(s, event(0));
  }
  for (int i = 1; i <= steps; ++i) {
    CSelect s;
    Move(s, event(static_cast<float>(i) / steps));
  }
  if (SelectPressed) {
    CSelect s;
    Release(s, event(1));
    if (DragMoved) PushSnapshot();
  }
}

void ToolTest::DeselectAll() {
  std::vector<DocObject*> still;
  auto collect = [&still](auto& collection) {
    for (DocObject* o : collection)
      if (o->Selected) still.push_back(o);
  };
  collect(Doc.Points);
  collect(Doc.Lines);
  collect(Doc.Circles);
  collect(Doc.Arcs);
  collect(Doc.Regions);
  for (DocObject* o : still) DeselectObject(*o);
}

Position* ToolTest::Free(float x, float y, const std::string& label) {
  Position* p = AddPoint(x, y, 0, label);
  p->ptype = 1;
  return p;
}

CCircle* ToolTest::Circle(Position* centre, Position* rim) {
  auto c = std::make_unique<CCircle>();
  c->ID = NewObjectId("CR");
  c->CType = 1;
  c->Circle1(centre->ID, rim->ID);
  c->R = DistanceBetween(*centre, *rim);
  centre->AddLink(CLinkObj{c->ID, 3, 1, 1, 0});
  rim->AddLink(CLinkObj{c->ID, 3, 2, 1, 0});
  return Doc.Circles.Add(std::move(c));
}

Position* ToolTest::Midpoint(Position* a, Position* b) {
  Position* m = Derived(9, a->ID, b->ID, 1);
  m->Para1 = 2;
  m->Set((a->x + b->x) / 2, (a->y + b->y) / 2, (a->z + b->z) / 2);
  return m;
}

Position* ToolTest::Derived(int ptype, const std::string& lk1, const std::string& lk2, short pos) {
  const std::string id = NewObjectId("PT");
  Position* p = Doc.Points.Add(id, 0, 0, 0, ptype, lk1, lk2, pos, id);
  p->DrawMode = 5;
  return p;
}

void ToolTest::ExpectAt(const Position* p, float x, float y, float tol) {
  ASSERT_NE(p, nullptr);
  EXPECT_NEAR(p->x, x, tol) << p->ID;
  EXPECT_NEAR(p->y, y, tol) << p->ID;
}

}  // namespace vt::test
