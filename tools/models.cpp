#include "tools/models.h"

#include <cmath>

#include "document/command_table.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/undo.h"
#include "geometry/propagation.h"
#include "persist/docio.h"
#include "render/frame.h"

namespace vt {

const std::vector<ModelEntry>& ModelTable() {
  static const std::vector<ModelEntry> table = {
      {"mnuDraw2Tri", "Triangle.vtd"},       {"mnuDraw2TriEqual", "Equilateral.vtd"},
      {"mnuDraw2Tri90", "TriRightAngled.vtd"}, {"mnuDraw2Para4", "Parallelogram.vtd"},
      {"mnuDraw2Rect", "Rectangle.vtd"},     {"mnuDraw2E4", "Square.vtd"},
      {"mnuDraw2TX", "Trapezoid.vtd"},       {"mnuDrawCube", "Cube.vtd"},
      {"mnuDrawPrism", "Pyramid.vtd"},       {"mnuDrawCone", "Cone.vtd"},
      {"mnuDrawCylinder", "Cylinder.vtd"},   {"mnuDrawSphere", "Sphere.vtd"},
  };
  return table;
}

namespace {

// The labels of the copies a holder keeps, from the real points.
void RelabelCopy(Position& copy) {
  if (const Position* real = FindPoint(copy.ID)) copy.PLabel = real->PLabel;
}

constexpr float kBig = 3.0e38f;

void Widen(CBox& box, const CBox& b) {
  box = CBox{std::fmin(box.MinX, b.MinX), std::fmax(box.MaxX, b.MaxX), std::fmin(box.MinY, b.MinY),
             std::fmax(box.MaxY, b.MaxY), std::fmin(box.MinZ, b.MinZ), std::fmax(box.MaxZ, b.MaxZ)};
}

bool HasExtent(const CBox& b) { return b.MinX <= b.MaxX && std::isfinite(b.MinX) && std::isfinite(b.MaxX); }

}  // namespace

CBox PointsBox(int from, int to) {
  CBox box{kBig, -kBig, kBig, -kBig, kBig, -kBig};
  for (int i = from; i <= to && i <= Doc.Points.count(); ++i) {
    const Position* p = Doc.Points.Item(i);
    if (!p->Hide) Widen(box, CBox{p->x, p->x, p->y, p->y, p->z, p->z});
  }
  return box;
}

void PlaceApart(const CollectionMark& before) {
  CBox taken = PointsBox(1, before.points);
  // In space the surfaces and solids of other kinds take room too (a model
  // adds none of them); in the plane a graph's box is the whole view.
  if (SceneMode == 3)
    for (Kind k : kAllKinds) {
      if (k == Kind::PT || k == Kind::LN || k == Kind::CR || k == Kind::AR || k == Kind::RG) continue;
      CollectionBase& c = Doc.Of(k);
      for (int i = 1; i <= c.count(); ++i) {
        DocObject* o = c.ItemBase(i);
        CBox b{kBig, -kBig, kBig, -kBig, kBig, -kBig};
        if (!o->Hide) o->GetBox(b);
        if (HasExtent(b) && b.MinY <= b.MaxY) Widen(taken, b);
      }
    }
  const CBox added = PointsBox(before.points + 1, Doc.Points.count());
  if (!HasExtent(taken) || !HasExtent(added)) return;
  constexpr float gap = 1;
  const bool apart = added.MinX >= taken.MaxX + gap || added.MaxX <= taken.MinX - gap ||
                     added.MinY >= taken.MaxY + gap || added.MaxY <= taken.MinY - gap;
  if (apart) return;
  // Along x to the right of what is there. The free points move as a drag
  // of all of them moves them; what is built on them follows.
  const float dx = taken.MaxX + gap - added.MinX;
  PropagationTrace trace;
  for (int i = before.points + 1; i <= Doc.Points.count(); ++i) {
    Position& p = *Doc.Points.Item(i);
    if (p.ptype != 1) continue;
    p.Set(p.x + dx, p.y, p.z);
    p.UpdateLinked(dx, 0, 0, 0);
  }
  RepropagateAfterMove();
}

CollectionMark MarkCollections() {
  CollectionMark m;
  m.points = Doc.Points.count();
  m.lines = Doc.Lines.count();
  m.circles = Doc.Circles.count();
  m.arcs = Doc.Arcs.count();
  m.regions = Doc.Regions.count();
  return m;
}

void RelabelSince(const CollectionMark& mark) {
  for (int i = mark.points + 1; i <= Doc.Points.count(); ++i) AssignNextPointLabel(*Doc.Points.Item(i));
  for (int i = mark.lines + 1; i <= Doc.Lines.count(); ++i) {
    CLine* l = Doc.Lines.Item(i);
    RelabelCopy(l->pBegin);
    RelabelCopy(l->pEnd);
    if (!l->LLabel.empty()) l->LLabel = l->pBegin.PLabel + l->pEnd.PLabel;
  }
  for (int i = mark.circles + 1; i <= Doc.Circles.count(); ++i) {
    CCircle* c = Doc.Circles.Item(i);
    for (Position* s : {&c->PCenter, &c->PCircleR, &c->PCircleR2, &c->PCircleR3}) RelabelCopy(*s);
    if (!c->CLabel.empty())
      c->CLabel = c->CType == 2 ? c->PCircleR.PLabel + c->PCircleR2.PLabel + c->PCircleR3.PLabel
                                : c->PCenter.PLabel + c->PCircleR.PLabel;
  }
  for (int i = mark.arcs + 1; i <= Doc.Arcs.count(); ++i) {
    CArc* a = Doc.Arcs.Item(i);
    for (Position* s : {&a->pBegin, &a->PCenter, &a->pMid, &a->pEnd}) RelabelCopy(*s);
    if (!a->Label.empty())
      a->Label = a->pBegin.PLabel + (a->AType == 2 ? a->pMid.PLabel : a->PCenter.PLabel) + a->pEnd.PLabel;
  }
  for (int i = mark.regions + 1; i <= Doc.Regions.count(); ++i) {
    CRegion* g = Doc.Regions.Item(i);
    std::string label;
    for (Position& c : g->Points) {
      RelabelCopy(c);
      label += c.PLabel;
    }
    if (!g->Label.empty()) g->Label = label;
  }
}

void OpenModelCommand(const std::string& file) {
  const CollectionMark before = MarkCollections();
  const std::string lastLabel = LastPointLabel;
  OpenModel(ProgramPath("Models/" + file));
  // New labels in file order, going on from the last one used.
  LastPointLabel = lastLabel;
  RelabelSince(before);
  PlaceApart(before);
  PushSnapshot();
  RedrawScene();
}

void RegisterModelCommands() {
  for (const ModelEntry& e : ModelTable()) {
    const std::string file = e.file;
    RegisterHandler(e.command, [file] { RunGuarded([&] { OpenModelCommand(file); }); });
  }
}

}  // namespace vt
