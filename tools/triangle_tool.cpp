#include "tools/triangle_tool.h"

#include "document/command_table.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/numtext.h"
#include "document/undo.h"
#include "geometry/line.h"
#include "render/frame.h"
#include "tools/canvas_input.h"
#include "tools/create_tools.h"

namespace vt {

namespace {

constexpr int kTriangleTool = 7;

void RemoveById(CollectionBase& coll, const std::string& id) {
  if (CollectionBase* set = Sel.OfId(id))
    while (int i = set->FindId(id)) set->Remove(i);
  if (int n = coll.FindId(id)) coll.Remove(n);
}

CLine& AddSide(const Position& from, const Position& to) { return AddLineRecord(1, from, to); }

}  // namespace

bool CCreateTriangle::Intact() const {
  for (const std::string& id : corners_)
    if (!FindPoint(id)) return false;
  for (const std::string& id : sides_)
    if (!Doc.Lines.FindById(id)) return false;
  return true;
}

void CCreateTriangle::LButtonDown(Position&, Position& scenePoint, float&, float&, Position& farPoint,
                                  Position& nearPoint) {
  SelectPressed = false;
  RunGuarded([&] {
    if (!corners_.empty() && !Intact()) Cancel();
    ClickTarget target = ResolveClick(scenePoint, farPoint, nearPoint, nullptr, -1);
    if (target.kind == ClickKind::ExistingPoint) {
      for (const std::string& id : corners_)
        if (id == target.point->ID) return;  // a corner twice makes no triangle
      if (target.point->LinkNum() + 2 > Position::kMaxLinks)
        throw RunTimeError("A point can be held by at most 20 objects.");
    } else if (target.kind == ClickKind::PointOnObject) {
      // Corners stand free: the click makes a free point where it landed.
      target.kind = ClickKind::FreePoint;
      if (SnapToGrid)
        target.at.Set(static_cast<float>(RoundHalfEven(target.at.x)), static_cast<float>(RoundHalfEven(target.at.y)),
                      0);
      if (SceneMode != 3) target.at.z = 0;
    }
    if (corners_.empty()) labelBefore_ = LastPointLabel;
    Position* p = TakeClickPoint(target);
    corners_.push_back(p->ID);
    madeHere_.push_back(target.kind != ClickKind::ExistingPoint);
    const Position corner = HolderCopy(*p);
    if (corners_.size() == 1) {
      sides_.push_back(AddSide(corner, corner).ID);
    } else if (corners_.size() == 2) {
      Doc.Lines.FindById(sides_[0])->pEnd = corner;
      sides_.push_back(AddSide(corner, corner).ID);
      sides_.push_back(AddSide(corner, HolderCopyOf(corners_[0])).ID);
    } else {
      Close();
    }
  });
}

void CCreateTriangle::Close() {
  Position* p[3] = {FindPoint(corners_[0]), FindPoint(corners_[1]), FindPoint(corners_[2])};
  for (int i = 0; i < 3; ++i) {
    CLine& side = *Doc.Lines.FindById(sides_[static_cast<size_t>(i)]);
    Position& a = *p[i];
    Position& b = *p[(i + 1) % 3];
    a.AddLink(CLinkObj{side.ID, 2, 1, 0, 0});
    b.AddLink(CLinkObj{side.ID, 2, 2, 0, 0});
    side.pBegin = HolderCopy(a);
    side.pEnd = HolderCopy(b);
    side.LLabel = a.PLabel + b.PLabel;
  }
  corners_.clear();
  madeHere_.clear();
  sides_.clear();
  PushSnapshot();
}

void CCreateTriangle::Follow(const Position& at) {
  if (corners_.size() == 1) {
    Doc.Lines.FindById(sides_[0])->pEnd.Set(at.x, at.y, at.z);
  } else if (corners_.size() == 2) {
    Doc.Lines.FindById(sides_[1])->pEnd.Set(at.x, at.y, at.z);
    Doc.Lines.FindById(sides_[2])->pBegin.Set(at.x, at.y, at.z);
  }
}

void CCreateTriangle::MouseMove(Position&, Position& scenePoint, float&, float&, Position& farPoint,
                                Position& nearPoint) {
  RunGuarded([&] {
    if (corners_.empty()) return;
    if (!Intact()) {
      Cancel();
      return;
    }
    // The sides run to the point a click would snap to.
    const ClickTarget target = ResolveClick(scenePoint, farPoint, nearPoint, nullptr, -1);
    Position at = target.at;
    if (SceneMode != 3) at.z = 0;
    Follow(at);
  });
}

void CCreateTriangle::RButtonDown(Position&, Position&, float&, float&, Position&, Position&) { Cancel(); }

void CCreateTriangle::Cancel() {
  if (corners_.empty()) return;
  for (const std::string& id : sides_) RemoveById(Doc.Lines, id);
  bool made = false;
  for (size_t i = 0; i < corners_.size(); ++i)
    if (madeHere_[i]) {
      RemoveById(Doc.Points, corners_[i]);
      made = true;
    }
  if (made) LastPointLabel = labelBefore_;
  corners_.clear();
  madeHere_.clear();
  sides_.clear();
}

void mnuDraw2Tri_Click() {
  ResetToolGestures();
  ActiveTool = kTriangleTool;
  RefreshControls();
}

void DropToolGesture() {
  for (ToolSlot s : {ToolSlot::Line, ToolSlot::Circle, ToolSlot::Triangle})
    if (CCommand* t = ToolObject(s)) t->Cancel();
  RedrawScene();
}

void RegisterTriangleTool() {
  RegisterTool(ToolSlot::Triangle, [] { return std::make_unique<CCreateTriangle>(); });
  RegisterHandler(
      "mnuDraw2Tri", mnuDraw2Tri_Click, [] { return ToolRegistered(ToolSlot::Triangle); },
      [] { return ActiveTool == kTriangleTool; });
}

}  // namespace vt
