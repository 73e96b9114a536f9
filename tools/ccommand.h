// CCommand: the interface of the canvas tools (the select tool and the
// creation tools). The canvas turns every mouse event into four points and
// hands them, with the pixel position, to the current tool (see
// tools/canvas_input.h for who gets which call).
//
// The four points are fresh temporaries for the one call; a tool may change
// them (a snapped cursor point), and the press handler keeps what the tool
// left in scenePoint, farPoint and nearPoint for the double click. X and Y are
// canvas pixels with the origin at the top left, passed by reference like the
// points.
#pragma once

#include "geometry/position.h"

namespace vt {

class CCommand {
 public:
  virtual ~CCommand() = default;

  // The end of a gesture: a right press with a creation tool, and the release
  // of the left button after a press that began a gesture.
  virtual void RButtonDown(Position& viewPoint, Position& scenePoint, float& X, float& Y, Position& farPoint,
                           Position& nearPoint) = 0;
  // Every mouse move over the canvas, with or without a button down.
  virtual void MouseMove(Position& viewPoint, Position& scenePoint, float& X, float& Y, Position& farPoint,
                         Position& nearPoint) = 0;
  // A press of the left button.
  virtual void LButtonDown(Position& viewPoint, Position& scenePoint, float& X, float& Y, Position& farPoint,
                           Position& nearPoint) = 0;
  // Drops a gesture under way (another tool chosen, a new document); what
  // the gesture made so far goes with it.
  virtual void Cancel() {}
};

}  // namespace vt
