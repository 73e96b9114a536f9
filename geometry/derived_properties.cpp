// The property dialogs of sectors, ribbons, spheres, intersection lines and
// loci, without their windows (see properties.h).
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/numtext.h"
#include "document/undo.h"
#include "geometry/derived_surfaces.h"
#include "geometry/locus.h"
#include "geometry/properties.h"

namespace vt {

namespace {

CMeshSurface* FindMeshSurface(const std::string& id) {
  if (CFan* f = Doc.Fans.FindById(id)) return f;
  if (CRibbon* b = Doc.Ribbons.FindById(id)) return b;
  return Doc.Spheres.FindById(id);
}

// A field showing `current` as Load wrote it keeps the exact value.
bool ReadField(std::string& text, float current, float& value) {
  if (text == SingleToText(current)) {
    value = current;
    return true;
  }
  return ReadNumberField(text, value);
}

}  // namespace

bool LoadMeshSurfaceProps(const std::string& id, MeshSurfaceProps& p) {
  const CMeshSurface* s = FindMeshSurface(id);
  if (!s) return false;
  p.color = s->ForeColor;
  p.color2 = s->ForeColor2;
  p.fillStyle = s->FillStyle;
  const int ramp = RampIndexOf(s->Ramp.ColorName);
  p.customRamp = ramp < 0 ? s->Ramp.ColorName : std::string();
  p.ramp = ramp < 0 ? kRampCount : ramp;
  p.alpha = SingleToText(s->Alpha);
  p.visible = !s->Hide;
  p.sphere = false;
  if (const CSphere* sp = Doc.Spheres.FindById(id)) {
    p.sphere = true;
    p.radius = SingleToText(sp->R);
    p.aFrom = SingleToText(sp->AngleAFrom);
    p.aTo = SingleToText(sp->AngleATo);
    p.bFrom = SingleToText(sp->AngleBFrom);
    p.bTo = SingleToText(sp->AngleBTo);
  }
  return true;
}

std::string ApplyMeshSurfaceProps(const std::string& id, MeshSurfaceProps& p) {
  CMeshSurface* s = FindMeshSurface(id);
  if (!s) return kObjectNotExist;
  float alpha;
  if (!ReadField(p.alpha, s->Alpha, alpha) || !(alpha >= 0 && alpha <= 1) || p.fillStyle < 1 || p.fillStyle > 5 ||
      p.ramp < 0 || p.ramp > kRampCount)
    return kIllegalData;
  CSphere* sp = Doc.Spheres.FindById(id);
  float a0 = 0, a1 = 0, b0 = 0, b1 = 0;
  if (sp && !(ReadField(p.aFrom, sp->AngleAFrom, a0) && ReadField(p.aTo, sp->AngleATo, a1) &&
              ReadField(p.bFrom, sp->AngleBFrom, b0) && ReadField(p.bTo, sp->AngleBTo, b1)))
    return kIllegalData;
  // Past the five ramps stands the object's own name, kept as it is.
  const std::string ramp = p.ramp < kRampCount ? std::string(kRampNames[p.ramp]) : s->Ramp.ColorName;
  const bool reshaped =
      sp && (a0 != sp->AngleAFrom || a1 != sp->AngleATo || b0 != sp->AngleBFrom || b1 != sp->AngleBTo);
  if (!reshaped && p.color == s->ForeColor && p.color2 == s->ForeColor2 && p.fillStyle == s->FillStyle &&
      ramp == s->Ramp.ColorName && alpha == s->Alpha && p.visible == !s->Hide)
    return {};
  s->ForeColor = p.color;
  s->ForeColor2 = p.color2;
  s->FillStyle = p.fillStyle;
  s->Ramp.ColorName = ramp;
  s->Ramp.SetByName();
  s->Alpha = alpha;
  s->Hide = !p.visible;
  if (reshaped) {
    sp->AngleAFrom = a0;
    sp->AngleATo = a1;
    sp->AngleBFrom = b0;
    sp->AngleBTo = b1;
    sp->InitPos();
  }
  PushSnapshot();
  RedrawScene();
  return {};
}

bool LoadTraceProps(const std::string& id, TraceProps& p) {
  if (const CInterLine* l = Doc.InterLines.FindById(id)) {
    p.color = l->ForeColor;
    p.visible = !l->Hide;
    p.info = "where " + l->LKID + " and " + l->LKID2 + " cross";
    return true;
  }
  if (const CLocus* l = Doc.Locuses.FindById(id)) {
    p.color = l->ForeColor;
    p.visible = !l->Hide;
    p.info = std::to_string(l->PTNum()) + " samples of " + l->LKID + ", player " + l->ACID;
    return true;
  }
  return false;
}

std::string ApplyTraceProps(const std::string& id, TraceProps& p) {
  DocObject* o = Doc.InterLines.FindById(id);
  if (!o) o = Doc.Locuses.FindById(id);
  if (!o) return kObjectNotExist;
  if (p.color == o->ForeColor && p.visible == !o->Hide) return {};
  o->ForeColor = p.color;
  o->Hide = !p.visible;
  PushSnapshot();
  RedrawScene();
  return {};
}

}  // namespace vt
