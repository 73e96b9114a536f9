// The chain figure of the drag and large-document benchmarks: free points,
// segments between neighbours, the midpoints of the segments, circles about
// the midpoints through the points, and the crossings of each circle with the
// next segment, linked as the tools and commands link them.
#pragma once

#include <memory>
#include <string>

#include "bench/bench_context.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "geometry/propagation.h"
#include "render/frame.h"
#include "render/view_state.h"
#include "tools/canvas_input.h"
#include "tools/create_tools.h"
#include "tools/select.h"

namespace vt::bench {

inline Position* AddFree(float x, float y) {
  const std::string id = NewObjectId("PT");
  Position* p = Doc.Points.Add(id, x, y, 0, 1, "", "", 0, id);
  AssignNextPointLabel(*p);
  return p;
}

inline Position* AddDerived(int ptype, const std::string& a, const std::string& b, short pos) {
  const std::string id = NewObjectId("PT");
  Position* p = Doc.Points.Add(id, 0, 0, 0, ptype, a, b, pos, id);
  p->DrawMode = 5;
  return p;
}

inline CLine* AddSegment(Position* a, Position* b) {
  auto l = std::make_unique<CLine>();
  l->ID = NewObjectId("LN");
  l->Line1(a->ID, b->ID);
  a->AddLink(CLinkObj{l->ID, 2, 1, 0, 0});
  b->AddLink(CLinkObj{l->ID, 2, 2, 0, 0});
  return Doc.Lines.Add(std::move(l));
}

inline CCircle* AddCircle(Position* centre, Position* rim) {
  auto c = std::make_unique<CCircle>();
  c->ID = NewObjectId("CR");
  c->Circle1(centre->ID, rim->ID);
  centre->AddLink(CLinkObj{c->ID, 3, 1, 1, 0});
  rim->AddLink(CLinkObj{c->ID, 3, 2, 1, 0});
  return Doc.Circles.Add(std::move(c));
}

inline int ObjectCount() { return Doc.Points.count() + Doc.Lines.count() + Doc.Circles.count(); }

// The chain, laid out in rows inside the view, until it has n objects.
inline void BuildChain(int n) {
  Position* prev = AddFree(-10, -8);
  CLine* prevSeg = nullptr;
  CCircle* prevCircle = nullptr;
  for (int i = 1; ObjectCount() < n; ++i) {
    const float x = -10 + 0.5f * static_cast<float>(i % 40);
    const float y = -8 + 0.6f * static_cast<float>(i / 40) + 0.3f * static_cast<float>(i % 2);
    Position* p = AddFree(x, y);
    CLine* seg = AddSegment(prev, p);
    Position* mid = AddDerived(9, prev->ID, p->ID, 1);
    mid->Para1 = 2;
    mid->Set((prev->x + p->x) / 2, (prev->y + p->y) / 2, 0);
    if (prevCircle) AddDerived(4, seg->ID, prevCircle->ID, 2);
    prevCircle = AddCircle(mid, p);
    prevSeg = seg;
    prev = p;
  }
  (void)prevSeg;
  RefreshPass();
}

inline void Setup(int n) {
  Context().MakeCurrent();
  ResetGlobals();
  Initialize();
  RegisterToolCommands();
  MakeTools();
  ResetSelectState();
  mnuFileNew2D_Click();
  View.Zoom(0.7f);
  View.SetScreen(kWidth, kHeight);
  BuildChain(n);
  RedrawScene();
}

// The mouse events of the drag: a press on the first point, then moves back
// and forth by a little.
struct DragEvents {
  Position view, scene, farPoint, nearPoint;
  float X = 0, Y = 0;
  void At(float x, float y) {
    scene = Position(x, y, 0);
    view = scene;
    nearPoint = Position(x, y, 10);
    farPoint = Position(x, y, -10);
  }
};

inline void Press() {
  DragEvents e;
  const Position* first = Doc.Points.Item(1);
  e.At(first->x, first->y);
  CSelect s;
  s.LButtonDown(e.view, e.scene, e.X, e.Y, e.farPoint, e.nearPoint);
}

inline void MoveOnce(int i) {
  DragEvents e;
  e.At(-10 + 0.05f * static_cast<float>(i % 2), -8 - 0.05f * static_cast<float>(i % 2));
  e.Y = static_cast<float>(i % 2);
  CSelect s;
  s.MouseMove(e.view, e.scene, e.X, e.Y, e.farPoint, e.nearPoint);
}

}  // namespace vt::bench
