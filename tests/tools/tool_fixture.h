// Fixtures of the tool tests: a fresh plane document, mouse events made from
// world points (the pick ray straight down through the point in a plane
// scene, a slanted one in space), and small builders of constructions linked
// the way the tools and commands link them.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "document/document.h"
#include "document/undo.h"
#include "geometry/geom.h"
#include "persist/docio.h"
#include "support/fixtures.h"
#include "tools/ccommand.h"

namespace vt::test {

// One mouse event: the four points and the pixel.
struct Mouse {
  Position view, scene, farPoint, nearPoint;
  float X = 0, Y = 0;
};

class ToolTest : public DocumentTest {
 public:  // the construction tables build through it
  static constexpr int kCanvas = 400;  // pixels; the world -10..10 across
  void SetUp() override;
  void TearDown() override;

  // The event over world (x, y) of a plane scene.
  static Mouse At(float x, float y);
  // The event over (x, y, z) of a space scene: the ray comes in slanted.
  static Mouse Slanted(float x, float y, float z);

  static void Press(CCommand& tool, Mouse m);
  static void Move(CCommand& tool, Mouse m);
  static void Release(CCommand& tool, Mouse m);
  // A left click of a creation tool at (x, y).
  static void Click(CCommand& tool, float x, float y) { Press(tool, At(x, y)); }

  // A drag with the select tool as the canvas hands it on: a press, `steps`
  // moves on the way, the release; a drag that hit something is an undo step.
  void Drag(float x0, float y0, float x1, float y1, int steps = 4);
  void DragSlanted(const Position& from, const Position& to, int steps = 4);
  // Deselects every point, line, circle, arc and region (a drag moves all
  // that is selected along with what it picks).
  static void DeselectAll();
  // Selects the objects in the order given (commands read selection order).
  static void Select(std::initializer_list<DocObject*> objs) {
    for (DocObject* o : objs) SelectObject(*o);
  }

  // Constructions.
  Position* Free(float x, float y, const std::string& label = std::string());
  CCircle* Circle(Position* centre, Position* rim);
  Position* Midpoint(Position* a, Position* b);
  Position* Derived(int ptype, const std::string& lk1, const std::string& lk2, short pos = 1);

  static void ExpectAt(const Position* p, float x, float y, float tol = 1e-4f);

  // A drag of the one point it picks, as after a fresh press on the canvas.
  void DragAlone(float x0, float y0, float x1, float y1) {
    DeselectAll();
    Drag(x0, y0, x1, y1);
  }
  // Runs a command on the given selection and leaves nothing selected.
  static void Command(std::initializer_list<DocObject*> objs, void (*command)()) {
    Select(objs);
    command();
    DeselectAll();
  }
  // The newest point of the document.
  static Position* Last() { return Doc.Points.Item(Doc.Points.count()); }
  static float DistanceToLine(const Position& p, const Position& a, const Position& b) {
    return DistanceBetween(p, FootOnLine(p, a, b));
  }
  // Runs `body` and checks that it said `message` and left the document and
  // the undo steps as they were.
  template <class F>
  void ExpectRefused(F body, const char* message) {
    const std::string before = GetUndoVar();
    const int undo = UndoCount;
    host_.messages.clear();
    body();
    EXPECT_EQ(host_.LastMessage(), message);
    EXPECT_EQ(GetUndoVar(), before);
    EXPECT_EQ(UndoCount, undo);
  }
};

}  // namespace vt::test
