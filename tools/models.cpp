#include "tools/models.h"

#include "document/command_table.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/undo.h"
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

}  // namespace

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
