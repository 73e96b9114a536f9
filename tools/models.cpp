#include "tools/models.h"

#include <cmath>
#include <vector>

#include "document/command_table.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/undo.h"
#include "geometry/propagation.h"
#include "graphs/curve_form.h"
#include "persist/docio.h"
#include "render/frame.h"
#include "tools/navigate.h"

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

namespace {

// Moves the free points added since the mark by (dx, dy), as a drag of all
// of them moves them; what is built on them follows.
void MoveAdded(const CollectionMark& before, float dx, float dy) {
  PropagationTrace trace;
  for (int i = before.points + 1; i <= Doc.Points.count(); ++i) {
    Position& p = *Doc.Points.Item(i);
    if (p.ptype != 1) continue;
    p.Set(p.x + dx, p.y + dy, p.z);
    p.UpdateLinked(dx, dy, 0, 0);
  }
  RepropagateAfterMove();
}

bool Overlap(const CBox& a, const CBox& b, float gap) {
  return !(a.MinX >= b.MaxX + gap || a.MaxX <= b.MinX - gap || a.MinY >= b.MaxY + gap || a.MaxY <= b.MinY - gap);
}

// In the plane: the figure at the first free place of a grid of its own size
// inside the view, the middle row first, from the centre outwards (right
// before left), then the rows below and above. With no free place in view,
// the nearest free one beyond it, and the view is fitted to show all.
// False when the view is not known.
bool PlaceInView(const CollectionMark& before, const CBox& added, float gap) {
  CBox view;
  if (!VisiblePlaneArea(view)) return false;
  // The figures there were: each shown point, line, circle, arc and region.
  std::vector<CBox> taken;
  const Kind kinds[] = {Kind::PT, Kind::LN, Kind::CR, Kind::AR, Kind::RG};
  const int counts[] = {before.points, before.lines, before.circles, before.arcs, before.regions};
  for (int n = 0; n < 5; ++n) {
    CollectionBase& c = Doc.Of(kinds[n]);
    for (int i = 1; i <= counts[n] && i <= c.count(); ++i) {
      DocObject* o = c.ItemBase(i);
      CBox b{kBig, -kBig, kBig, -kBig, kBig, -kBig};
      if (!o->Hide) o->GetBox(b);
      if (HasExtent(b) && b.MinY <= b.MaxY) taken.push_back(b);
    }
  }
  const float w = added.MaxX - added.MinX, h = added.MaxY - added.MinY;
  const float margin = 0.01f * std::fmin(view.MaxX - view.MinX, view.MaxY - view.MinY);
  const CBox inner{view.MinX + margin, view.MaxX - margin, view.MinY + margin, view.MaxY - margin, 0, 0};
  auto free = [&](const CBox& b) {
    for (const CBox& t : taken)
      if (Overlap(b, t, gap)) return false;
    return true;
  };
  auto inside = [&](const CBox& b) {
    return b.MinX >= inner.MinX && b.MaxX <= inner.MaxX && b.MinY >= inner.MinY && b.MaxY <= inner.MaxY;
  };
  if (free(added) && inside(added)) return true;
  // The grid: cells of the figure's size and a gap from where the file puts
  // it, so copies of one model line up; counted from the cell nearest the
  // view's centre.
  const float sx = w + gap, sy = h + gap;
  const int i0 = static_cast<int>(std::lround(((view.MinX + view.MaxX) - (added.MinX + added.MaxX)) / 2 / sx));
  const int j0 = static_cast<int>(std::lround(((view.MinY + view.MaxY) - (added.MinY + added.MaxY)) / 2 / sy));
  for (int reach : {1, 3}) {  // in view, then up to three views wide
    const int ni = static_cast<int>((view.MaxX - view.MinX) * reach / sx / 2) + 1;
    const int nj = static_cast<int>((view.MaxY - view.MinY) * reach / sy / 2) + 1;
    for (int dj = 0; dj <= nj; ++dj)
      for (int j : {dj, -dj})
        for (int di = 0; di <= ni; ++di)
          for (int i : {di, -di}) {
            const float dx = (i0 + i) * sx, dy = (j0 - j) * sy;
            const CBox b{added.MinX + dx, added.MaxX + dx, added.MinY + dy, added.MaxY + dy, 0, 0};
            if (!free(b) || (reach == 1 && !inside(b))) continue;
            MoveAdded(before, dx, dy);
            if (reach > 1) mnuViewFitAll_Click();
            return true;
          }
  }
  return false;
}

}  // namespace

void PlaceApart(const CollectionMark& before) {
  const CBox added = PointsBox(before.points + 1, Doc.Points.count());
  if (!HasExtent(added)) return;
  constexpr float gap = 1;
  if (SceneMode != 3 && PlaceInView(before, added, gap)) return;
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
  if (!HasExtent(taken) || !Overlap(added, taken, gap)) return;
  // In space, or a plane view not known: along x to the right of what is there.
  MoveAdded(before, taken.MaxX + gap - added.MinX, 0);
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
