#include "geometry/properties.h"

#include "document/document.h"
#include "document/frame_commands.h"
#include "document/numtext.h"
#include "document/undo.h"
#include "expr/text_prep.h"
#include "geometry/extension.h"
#include "geometry/propagation.h"

namespace vt {

const char* const kIllegalData = "Illegal data exist.";
const char* const kObjectNotExist = "The selected object is not exist.";

const std::vector<std::string>& SymbolNames() {
  static const std::vector<std::string> names = {"Solid Circle", "Hollow Circle", "Solid Rectangle",
                                                 "Solid Triangle", "Pyramid", "Crosshair"};
  return names;
}

const std::vector<std::string>& LineStyleNames() {
  static const std::vector<std::string> names = {"Solid", "Dash", "Dot", "Dot Dash"};
  return names;
}

const std::vector<std::string>& LineKindNames() {
  static const std::vector<std::string> names = {"Segment", "Line", "Ray", "Vector"};
  return names;
}

const std::vector<std::string>& ArcShowNames() {
  static const std::vector<std::string> names = {"Arc", "Sector", "Bow Face"};
  return names;
}

bool ReadNumberField(std::string& text, float& value) { return ReadNumberText(text, value, &text); }

bool LabelAcceptable(const std::string& label) {
  return label.find_first_of("@;\r\n") == std::string::npos;
}

namespace {

// Ends an OK that changed something: one snapshot, one redraw.
void Changed() {
  PushSnapshot();
  RedrawScene();
}

// A number field of an object's value `current`: the text Load wrote for it
// gives `current` itself, any other text is read.
bool ReadValueField(std::string& text, float current, float& value) {
  if (text == SingleToText(current)) {
    value = current;
    return true;
  }
  return ReadNumberField(text, value);
}

bool ReadWidth(std::string& text, float current, float& width) {
  return ReadValueField(text, current, width) && width > 0 && width <= 100;
}

}  // namespace

// ---- points ------------------------------------------------------------------------

void WriteThroughCopies(const Position& real) {
  // The update propagation: the copies the holders keep, their structure
  // points, and all that the refresh pass recomputes from them.
  Position* p = FindPoint(real.ID);
  if (!p) return;
  PropagationTrace trace;
  p->UpdateLinked1(p->x, p->y, p->z, 0);
  RepropagateAfterMove();
}

namespace {

// A point typed to a new place moves as a drag would move it: its copies, the
// points that follow it (by the same step) and the extension points built on
// it or on them, then one repropagation.
void MoveAsDragged(Position& p, float x, float y, float z) {
  const float dx = x - p.x, dy = y - p.y, dz = z - p.z;
  PropagationTrace trace;
  p.Set(x, y, z);
  p.UpdateLinked1(x, y, z, 0);
  for (const std::string& childId : p.Child) {
    Position* c = FindPoint(childId);
    if (!c || c->ptype != 8 || c->Parent.empty() || c->Parent.front() != p.ID) continue;
    c->Set(c->x + dx, c->y + dy, c->z + dz);
    c->UpdateLinked(dx, dy, dz, 0);
    RefreshExtensionOf(*c);
  }
  RefreshExtensionOf(p);
  RepropagateAfterMove();
}

}  // namespace

bool LoadPointProps(const std::string& id, PointProps& p) {
  const Position* pt = FindPoint(id);
  if (!pt) return false;
  p.label = pt->PLabel;
  p.x = SingleToText(pt->x);
  p.y = SingleToText(pt->y);
  p.z = SingleToText(pt->z);
  p.coordsEditable = pt->ptype == 1 || pt->ptype == 8;
  p.color = pt->ForeColor;
  p.size = pt->Size;
  p.symbol = pt->Symbol;
  p.hideLabel = pt->HideLabel;
  return true;
}

std::string ApplyPointProps(const std::string& id, PointProps& p) {
  Position* pt = FindPoint(id);
  if (!pt) return kObjectNotExist;
  const bool editable = pt->ptype == 1 || pt->ptype == 8;
  float x = pt->x, y = pt->y, z = pt->z;
  if (editable && !(ReadValueField(p.x, pt->x, x) && ReadValueField(p.y, pt->y, y) && ReadValueField(p.z, pt->z, z)))
    return kIllegalData;
  if (p.size < 1 || p.size > 9 || p.symbol < 1 || p.symbol > 6 || !LabelAcceptable(p.label)) return kIllegalData;
  bool moved = editable && (x != pt->x || y != pt->y || z != pt->z);
  bool changed = moved || p.label != pt->PLabel || p.color != pt->ForeColor || p.size != pt->Size ||
                 p.symbol != pt->Symbol || p.hideLabel != pt->HideLabel;
  if (!changed) return {};
  pt->PLabel = p.label;
  pt->ForeColor = p.color;
  pt->Size = static_cast<short>(p.size);
  pt->Symbol = p.symbol;
  pt->HideLabel = p.hideLabel;
  if (moved) MoveAsDragged(*pt, x, y, z);
  Changed();
  return {};
}

bool LoadPointStyleFromSelection(PointStyle& s) {
  for (Position* shadow : Sel.Points)
    if (const Position* pt = FindPoint(shadow->ID)) {
      s.color = pt->ForeColor;
      s.size = pt->Size;
      s.symbol = pt->Symbol;
      return true;
    }
  return false;
}

std::string ApplyPointStyleToSelection(const PointStyle& s) {
  if (s.size < 1 || s.size > 9 || s.symbol < 1 || s.symbol > 6) return kIllegalData;
  bool any = false;
  for (Position* shadow : Sel.Points)
    if (Position* pt = FindPoint(shadow->ID)) {
      pt->ForeColor = s.color;
      pt->Size = static_cast<short>(s.size);
      pt->Symbol = s.symbol;
      any = true;
    }
  if (any) Changed();
  return {};
}

// ---- lines, circles, arcs, regions ----------------------------------------------------

bool LoadLineProps(const std::string& id, LineProps& p) {
  const CLine* l = Doc.Lines.FindById(id);
  if (!l) return false;
  p.label = l->LLabel;
  p.lt = l->lt;
  p.style = l->GELineStyle;
  p.width = SingleToText(l->GELineWidth);
  p.color = l->ForeColor;
  p.hideLabel = l->HideLabel;
  return true;
}

std::string ApplyLineProps(const std::string& id, LineProps& p) {
  CLine* l = Doc.Lines.FindById(id);
  if (!l) return kObjectNotExist;
  float width;
  if (!ReadWidth(p.width, l->GELineWidth, width) || p.lt < 1 || p.lt > 4 || p.style < 1 || p.style > 4 ||
      !LabelAcceptable(p.label))
    return kIllegalData;
  if (p.label == l->LLabel && p.lt == l->lt && p.style == l->GELineStyle && width == l->GELineWidth &&
      p.color == l->ForeColor && p.hideLabel == l->HideLabel)
    return {};
  l->LLabel = p.label;
  l->lt = p.lt;
  l->GELineStyle = p.style;
  l->GELineWidth = width;
  l->ForeColor = p.color;
  l->HideLabel = p.hideLabel;
  Changed();
  return {};
}

bool LoadCircleProps(const std::string& id, CircleProps& p) {
  const CCircle* c = Doc.Circles.FindById(id);
  if (!c) return false;
  p.label = c->CLabel;
  p.radiusEditable = c->CType == 3 || c->CType == 5;
  p.radius = SingleToText(c->Radius());
  p.style = c->GELineStyle;
  p.width = SingleToText(c->GELineWidth);
  p.color = c->ForeColor;
  p.filled = c->Filled;
  p.hideLabel = c->HideLabel;
  return true;
}

std::string ApplyCircleProps(const std::string& id, CircleProps& p) {
  CCircle* c = Doc.Circles.FindById(id);
  if (!c) return kObjectNotExist;
  const bool radiusEditable = c->CType == 3 || c->CType == 5;
  float width, radius = c->R;
  if (!ReadWidth(p.width, c->GELineWidth, width) || p.style < 1 || p.style > 4 || !LabelAcceptable(p.label))
    return kIllegalData;
  if (radiusEditable && (!ReadValueField(p.radius, c->R, radius) || !(radius > 0))) return kIllegalData;
  if (p.label == c->CLabel && radius == c->R && p.style == c->GELineStyle && width == c->GELineWidth &&
      p.color == c->ForeColor && p.filled == c->Filled && p.hideLabel == c->HideLabel)
    return {};
  c->CLabel = p.label;
  const bool resized = radius != c->R;
  c->R = radius;
  c->GELineStyle = p.style;
  c->GELineWidth = width;
  c->ForeColor = p.color;
  c->Filled = p.filled;
  c->HideLabel = p.hideLabel;
  if (resized) {
    // The points on the rim follow the new radius, and so do the copies that
    // other objects keep of them; then, as after a drag, whatever is computed
    // from the circle (intersections, tangent points, images, measurements).
    PropagationTrace trace;
    c->UpdateStru();
    for (const Position& s : c->StruP)
      if (Position* real = FindPoint(s.ID)) real->UpdateLinked1(real->x, real->y, real->z, 0);
    RepropagateAfterMove();
  }
  Changed();
  return {};
}

bool LoadArcProps(const std::string& id, ArcProps& p) {
  const CArc* a = Doc.Arcs.FindById(id);
  if (!a) return false;
  p.label = a->Label;
  p.show = a->AT;
  p.style = a->GELineStyle;
  p.width = SingleToText(a->GELineWidth);
  p.color = a->ForeColor;
  p.hideLabel = a->HideLabel;
  return true;
}

std::string ApplyArcProps(const std::string& id, ArcProps& p) {
  CArc* a = Doc.Arcs.FindById(id);
  if (!a) return kObjectNotExist;
  float width;
  if (!ReadWidth(p.width, a->GELineWidth, width) || p.show < 1 || p.show > 3 || p.style < 1 || p.style > 4 ||
      !LabelAcceptable(p.label))
    return kIllegalData;
  if (p.label == a->Label && p.show == a->AT && p.style == a->GELineStyle && width == a->GELineWidth &&
      p.color == a->ForeColor && p.hideLabel == a->HideLabel)
    return {};
  a->Label = p.label;
  a->AT = p.show;
  a->GELineStyle = p.style;
  a->GELineWidth = width;
  a->ForeColor = p.color;
  a->HideLabel = p.hideLabel;
  Changed();
  return {};
}

bool LoadRegionProps(const std::string& id, RegionProps& p) {
  const CRegion* g = Doc.Regions.FindById(id);
  if (!g) return false;
  p.label = g->Label;
  p.color = g->ForeColor;
  p.alpha = SingleToText(g->Alpha);
  p.hideLabel = g->HideLabel;
  return true;
}

std::string ApplyRegionProps(const std::string& id, RegionProps& p) {
  CRegion* g = Doc.Regions.FindById(id);
  if (!g) return kObjectNotExist;
  float alpha;
  if (!ReadValueField(p.alpha, g->Alpha, alpha) || !(alpha >= 0 && alpha <= 1) || !LabelAcceptable(p.label))
    return kIllegalData;
  if (p.label == g->Label && p.color == g->ForeColor && alpha == g->Alpha && p.hideLabel == g->HideLabel) return {};
  g->Label = p.label;
  g->ForeColor = p.color;
  g->Alpha = alpha;
  g->HideLabel = p.hideLabel;
  Changed();
  return {};
}

}  // namespace vt
