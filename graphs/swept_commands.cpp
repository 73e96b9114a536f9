#include "graphs/swept_commands.h"

#include "graphs/surface_form.h"

#include <algorithm>
#include <cmath>
#include <memory>
#include <vector>

#include "document/command_table.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/host.h"
#include "document/numtext.h"
#include "document/undo.h"
#include "expr/parameters.h"
#include "expr/text_prep.h"
#include "geometry/derived_surfaces.h"
#include "geometry/properties.h"
#include "graphs/curve_analysis.h"
#include "graphs/curve_form.h"
#include "tools/canvas_input.h"

namespace vt {

const char* const kMsgRotAxis = "Please select a rotating axis or center point first.";
const char* const kMsgTwoPointsSphere = "Please select 2 points, the first one is the center point. ";

namespace {

void Message(const std::string& text, const char* title) {
  host().MsgBox(text, title, MsgButtons::OK, title[0] == 'E' ? MsgIcon::Critical : MsgIcon::Exclamation);
}

void Done() {
  PushSnapshot();
  RedrawScene();
}

// The ids of a selection set, in selection order.
template <class C>
void IdsOf(C& set, std::vector<std::string>& out) {
  for (auto* o : set) out.push_back(o->ID);
}

bool ProfileKind(const std::string& id) {
  static const char* const kHeads[] = {"PT", "LN", "CR", "AR", "C2", "C3", "RG", "FA", "RB"};
  const std::string head = id.substr(0, 2);
  for (const char* h : kHeads)
    if (head == h) return true;
  return false;
}

void LoadLook(const CSweptSurface& s, SweptForm& f) {
  f.steps = IntToText(s.StepV);
  LoadLookFields(s, f);
}

void StoreLook(const SweptForm& f, CSweptSurface& s) {
  s.StepV = WholeField(f.steps);
  StoreLookFields(f, s);
}

// The first two ids of the sets, in the order given.
std::vector<std::string> FirstTwo(std::initializer_list<CollectionBase*> sets) {
  std::vector<std::string> ids;
  for (CollectionBase* c : sets)
    for (int i = 1; i <= c->count(); ++i) ids.push_back(c->ItemBase(i)->ID);
  if (ids.size() > 2) ids.resize(2);
  return ids;
}

}  // namespace

// ---- sectors, ribbons, intersection lines --------------------------------------------------

void MakeFanFromSelection() {
  auto f = std::make_unique<CFan>();
  if (Sel.Points.count() > 0) f->LKID = Sel.Points.Item(1)->ID;
  std::vector<std::string> rim = FirstTwo({&Sel.Circles, &Sel.Arcs, &Sel.FunCurves, &Sel.Regions});
  if (rim.empty()) return;
  f->LKID2 = rim[0];
  f->Alpha = 0.3f;
  f->ID = NewObjectId("FA");
  CFan* fan = Doc.Fans.Add(std::move(f));
  fan->InitPos();
  Done();
}

void MakeRibbonFromSelection() {
  std::vector<std::string> ids =
      FirstTwo({&Sel.Lines, &Sel.Arcs, &Sel.FunCurves, &Sel.Surfaces, &Sel.Circles, &Sel.Regions});
  if (ids.size() < 2) return;
  auto r = std::make_unique<CRibbon>();
  r->LKID = ids[0];
  r->LKID2 = ids[1];
  r->Alpha = 0.3f;
  r->ID = NewObjectId("RB");
  CRibbon* rb = Doc.Ribbons.Add(std::move(r));
  rb->InitPos();
  Done();
}

void MakeInterLineFromSelection() {
  std::vector<std::string> ids = FirstTwo({&Sel.Regions, &Sel.Fans, &Sel.Ribbons, &Sel.Surfaces});
  if (ids.size() < 2) return;
  auto l = std::make_unique<CInterLine>();
  l->LKID = ids[0];
  l->LKID2 = ids[1];
  l->ForeColor = 0xff0000;
  l->ID = NewObjectId("IL");
  CInterLine* il = Doc.InterLines.Add(std::move(l));
  il->InitLines();
  Done();
}

// ---- frmRot and frmStretch ----------------------------------------------------------------------

SweptForm NewSweptForm(bool rotation) {
  SweptForm f;
  f.rotation = rotation;
  if (!rotation) f.steps = "10";
  // The candidates in kind order; for a rotation the last selected line, or
  // failing that the last selected point, is the axis.
  std::vector<std::string> ids;
  IdsOf(Sel.Points, ids);
  IdsOf(Sel.Lines, ids);
  IdsOf(Sel.Circles, ids);
  IdsOf(Sel.Arcs, ids);
  IdsOf(Sel.FunCurves, ids);
  for (CSurface* s : Sel.Surfaces)
    if (s->ID.substr(0, 2) == "C3") ids.push_back(s->ID);
  IdsOf(Sel.Regions, ids);
  IdsOf(Sel.Fans, ids);
  IdsOf(Sel.Ribbons, ids);
  if (rotation) {
    if (ids.size() >= 2) {
      if (Sel.Lines.count() > 0) f.centerId = Sel.Lines.Item(Sel.Lines.count())->ID;
      else if (Sel.Points.count() > 0) f.centerId = Sel.Points.Item(Sel.Points.count())->ID;
    }
    for (const std::string& id : ids)
      if (id != f.centerId) {
        f.objId = id;
        break;
      }
    if (f.centerId.empty()) f.objId = ids.empty() ? std::string() : ids[0];
    return f;
  }
  // An extrusion along a selected vector.
  std::string vectorId;
  if (ids.size() >= 2)
    for (CLine* l : Sel.Lines)
      if (const CLine* real = Doc.Lines.FindById(l->ID); real && real->lt == 4) vectorId = real->ID;
  for (const std::string& id : ids)
    if (id != vectorId) {
      f.objId = id;
      break;
    }
  if (const CLine* v = vectorId.empty() ? nullptr : Doc.Lines.FindById(vectorId)) {
    f.dx = SingleToText(v->pEnd.x - v->pBegin.x);
    f.dy = SingleToText(v->pEnd.y - v->pBegin.y);
    f.dz = SingleToText(v->pEnd.z - v->pBegin.z);
  }
  return f;
}

SweptForm LoadSweptForm(const CSurRot& s) {
  SweptForm f;
  f.rotation = true;
  f.objId = s.RotObjID;
  f.centerId = s.RotCenterID;
  f.angle = s.RotAngle;
  LoadLook(s, f);
  return f;
}

SweptForm LoadSweptForm(const CStretch& s) {
  SweptForm f;
  f.rotation = false;
  f.objId = s.ObjID;
  f.dx = s.DX;
  f.dy = s.DY;
  f.dz = s.DZ;
  LoadLook(s, f);
  return f;
}

SweptConfirm ConfirmSweptForm(SweptForm& f, const std::string& editId, std::string* id) {
  CSweptSurface* target = nullptr;
  if (!editId.empty()) {
    target = f.rotation ? static_cast<CSweptSurface*>(Doc.SurRots.FindById(editId))
                        : static_cast<CSweptSurface*>(Doc.Stretchs.FindById(editId));
    if (!target) {
      Message(kObjectNotExist, "Error");
      return SweptConfirm::Gone;
    }
  }
  if (f.rotation) {
    const std::string axisHead = f.centerId.substr(0, 2);
    if (f.objId.empty() || f.centerId.empty() || (axisHead != "LN" && axisHead != "PT")) {
      Message(kMsgRotAxis, "Note");
      return SweptConfirm::Stay;
    }
  }
  if (f.objId.empty() || !ProfileKind(f.objId) || !GetObjectById(f.objId) ||
      (f.rotation && !GetObjectById(f.centerId))) {
    Message(kObjectNotExist, "Error");
    return SweptConfirm::Stay;
  }
  const bool empty = f.steps.empty() || (f.rotation ? f.angle.empty() : (f.dx.empty() || f.dy.empty() || f.dz.empty()));
  if (empty) {
    Message(kInputAllParams, "Note");
    return SweptConfirm::Stay;
  }
  const bool filtered = FilterField(f.steps, false) &&
                        (f.rotation ? FilterField(f.angle, true)
                                    : FilterField(f.dx, true) && FilterField(f.dy, true) && FilterField(f.dz, true)) &&
                        (!f.showTrans || FilterField(f.transAlpha, false));
  const int steps = WholeField(f.steps);
  if (!filtered || steps > CSurface::kMaxSteps) {
    Message(kIllegalData, "Error");
    return SweptConfirm::Stay;
  }
  if (steps < 1) {
    Message("Steps must be larger than 1.", "Note");
    return SweptConfirm::Stay;
  }
  float value = 0;
  if (f.rotation) {
    if (!ParameterValue(f.angle, value)) return SweptConfirm::Stay;
  } else if (!ParameterValue(f.dx, value) || !ParameterValue(f.dy, value) || !ParameterValue(f.dz, value)) {
    return SweptConfirm::Stay;
  }

  // The object is tried as a copy; an edit starts from the object as it
  // stands, so what the dialog does not show (name, line colour and width,
  // a ramp of its own) stays.
  std::unique_ptr<CSweptSurface> made;
  if (f.rotation) {
    auto r = target ? std::make_unique<CSurRot>(*static_cast<CSurRot*>(target)) : std::make_unique<CSurRot>();
    r->RotObjID = f.objId;
    r->RotCenterID = f.centerId;
    r->RotAngle = f.angle;
    made = std::move(r);
  } else {
    auto s = target ? std::make_unique<CStretch>(*static_cast<CStretch*>(target)) : std::make_unique<CStretch>();
    s->ObjID = f.objId;
    s->DX = f.dx;
    s->DY = f.dy;
    s->DZ = f.dz;
    made = std::move(s);
  }
  StoreLook(f, *made);
  if (!made->GetPoints()) {
    Message(kObjectNotExist, "Error");
    return SweptConfirm::Stay;
  }
  if (target) {
    if (f.rotation) *static_cast<CSurRot*>(target) = *static_cast<CSurRot*>(made.get());
    else *static_cast<CStretch*>(target) = *static_cast<CStretch*>(made.get());
  } else {
    made->NameS = "Untitled";
    if (f.rotation) {
      std::unique_ptr<CSurRot> r(static_cast<CSurRot*>(made.release()));
      r->ID = NewObjectId("SR");
      target = Doc.SurRots.Add(std::move(r));
    } else {
      std::unique_ptr<CStretch> s(static_cast<CStretch*>(made.release()));
      s->ID = NewObjectId("SS");
      target = Doc.Stretchs.Add(std::move(s));
    }
  }
  if (id) *id = target->ID;
  Done();
  return SweptConfirm::Done;
}

// ---- frmSphere ---------------------------------------------------------------------------------------

SphereForm NewSphereForm() {
  SphereForm f;
  if (Sel.Points.count() >= 1) f.centerId = Sel.Points.Item(1)->ID;
  if (Sel.Points.count() >= 2) f.pointId = Sel.Points.Item(2)->ID;
  return f;
}

SweptConfirm ConfirmSphereForm(SphereForm& f, std::string* id) {
  if (f.centerId.empty() || f.pointId.empty() || f.centerId == f.pointId) {
    Message(kMsgTwoPointsSphere, "Note");
    return SweptConfirm::Stay;
  }
  if (!FindPoint(f.centerId) || !FindPoint(f.pointId)) {
    Message(kObjectNotExist, "Error");
    return SweptConfirm::Stay;
  }
  if (f.aFrom.empty() || f.aTo.empty() || f.bFrom.empty() || f.bTo.empty() || f.alpha.empty()) {
    Message(kInputAllParams, "Note");
    return SweptConfirm::Stay;
  }
  if (!FilterField(f.aFrom, true) || !FilterField(f.aTo, true) || !FilterField(f.bFrom, true) || !FilterField(f.bTo, true) ||
      !FilterField(f.alpha, false)) {
    Message(kIllegalData, "Error");
    return SweptConfirm::Stay;
  }
  float a0 = 0, a1 = 0, b0 = 0, b1 = 0;
  if (!ParameterValue(f.aFrom, a0) || !ParameterValue(f.aTo, a1) || !ParameterValue(f.bFrom, b0) ||
      !ParameterValue(f.bTo, b1))
    return SweptConfirm::Stay;
  const float alpha = static_cast<float>(Val(f.alpha));
  if (!(alpha >= 0 && alpha <= 1)) {
    Message(kIllegalData, "Error");
    return SweptConfirm::Stay;
  }
  auto s = std::make_unique<CSphere>();
  s->LKID = f.centerId;
  s->LKID2 = f.pointId;
  s->AngleAFrom = a0;
  s->AngleATo = a1;
  s->AngleBFrom = b0;
  s->AngleBTo = b1;
  s->Alpha = alpha;
  s->ForeColor = f.color;
  s->ID = NewObjectId("SP");
  CSphere* added = Doc.Spheres.Add(std::move(s));
  added->InitPos();
  if (id) *id = added->ID;
  Done();
  return SweptConfirm::Done;
}

// ---- commands ---------------------------------------------------------------------------------------

namespace {

SweptFormOpener& RotOpener() {
  static SweptFormOpener opener;
  return opener;
}
SweptFormOpener& StretchOpener() {
  static SweptFormOpener opener;
  return opener;
}
SweptFormOpener& SphereOpener() {
  static SweptFormOpener opener;
  return opener;
}

void OpenOrConfirm(SweptFormOpener& opener, bool rotation) {
  EditMode = false;
  EditObjectId.clear();
  if (opener) {
    // A surface of rotation starts from a picked profile and axis.
    if (rotation) {
      const SweptForm f = NewSweptForm(true);
      if (f.objId.empty() || f.centerId.empty()) {
        Message(kMsgRotAxis, "Note");
        return;
      }
    }
    SweptFormOpener copy = opener;
    copy(std::string());
    return;
  }
  SweptForm f = NewSweptForm(rotation);
  ConfirmSweptForm(f, std::string());
}

}  // namespace

void SetRotFormOpener(SweptFormOpener opener) { RotOpener() = std::move(opener); }
void SetStretchFormOpener(SweptFormOpener opener) { StretchOpener() = std::move(opener); }
void SetSphereFormOpener(SweptFormOpener opener) { SphereOpener() = std::move(opener); }

void mnuDrawRot_Click() { OpenOrConfirm(RotOpener(), true); }
void mnuDraw2Stretch_Click() { OpenOrConfirm(StretchOpener(), false); }

void mnuDraw2Sphere_Click() {
  if (SphereOpener()) {
    SweptFormOpener copy = SphereOpener();
    copy(std::string());
    return;
  }
  SphereForm f = NewSphereForm();
  ConfirmSphereForm(f);
}

void RegisterSweptCommands() {
  RegisterHandler("mnuDrawRot", [] { RunGuarded(mnuDrawRot_Click); });
  RegisterHandler("mnuDraw2Stretch", [] { RunGuarded(mnuDraw2Stretch_Click); });
  RegisterHandler("mnuDraw2Sphere", [] { RunGuarded(mnuDraw2Sphere_Click); });
  auto editor = [](SweptFormOpener& (*opener)()) {
    return [opener](DocObject& object) {
      if (!opener()) {
        EditMode = false;
        return;
      }
      SweptFormOpener copy = opener();
      copy(object.ID);
    };
  };
  RegisterEditDialog(Kind::SR, editor(&RotOpener));
  RegisterEditDialog(Kind::SS, editor(&StretchOpener));
  RegisterBoxSelTest(Kind::SR, [](DocObject& object, float x1, float y1, float x2, float y2) {
    return static_cast<CSweptSurface&>(object).BoxSel(x1, y1, x2, y2);
  });
  RegisterBoxSelTest(Kind::SS, [](DocObject& object, float x1, float y1, float x2, float y2) {
    return static_cast<CSweptSurface&>(object).BoxSel(x1, y1, x2, y2);
  });
}

}  // namespace vt
