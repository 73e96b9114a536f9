// The triangle tool (tool 7, Draw > Triangle and the toolbar's "Add a
// triangle"): three clicks give the corners, each an existing point under the
// mouse or a new free point; the three sides follow the mouse while the
// corners are placed, and the third click closes the triangle as three
// segments with one undo step. The right button, Escape and a change of tool
// drop the triangle in the making with the points it made, and give their
// labels back.
#pragma once

#include <string>
#include <vector>

#include "tools/ccommand.h"

namespace vt {

class CCreateTriangle : public CCommand {
 public:
  void RButtonDown(Position& viewPoint, Position& scenePoint, float& X, float& Y, Position& farPoint,
                   Position& nearPoint) override;
  void MouseMove(Position& viewPoint, Position& scenePoint, float& X, float& Y, Position& farPoint,
                 Position& nearPoint) override;
  void LButtonDown(Position& viewPoint, Position& scenePoint, float& X, float& Y, Position& farPoint,
                   Position& nearPoint) override;
  void Cancel() override;

  // The corners placed so far (0 to 2 between gestures' clicks).
  int Corners() const { return static_cast<int>(corners_.size()); }

 private:
  // True while every corner and side of the gesture is still in the document
  // (undo or a new document may take them away between clicks).
  bool Intact() const;
  void Follow(const Position& at);
  void Close();

  std::vector<std::string> corners_;  // point ids, in click order
  std::vector<bool> madeHere_;        // the corner is a point this gesture made
  std::vector<std::string> sides_;    // segment ids: first-second, second-mouse, mouse-first
  std::string labelBefore_;
};

// Chooses the triangle tool.
void mnuDraw2Tri_Click();
// Escape: drops what a creation tool has in the making.
void DropToolGesture();
// Installs the tool and the commands "mnuDraw2Tri" (in place of the ready-made
// triangle). Called by RegisterAllCommands after the construction commands.
void RegisterTriangleTool();

}  // namespace vt
