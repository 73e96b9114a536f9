#include "graphs/surface_form.h"

#include <memory>
#include <sstream>

#include "document/command_table.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/host.h"
#include "document/numtext.h"
#include "document/undo.h"
#include "expr/text_prep.h"
#include "geometry/properties.h"
#include "graphs/curve_analysis.h"
#include "graphs/curve_form.h"
#include "tools/canvas_input.h"

namespace vt {

const char* const kTextureFilter = "(*.bmp)|*.bmp|*.jpg|*.jpg|*.gif|*.gif";

std::vector<std::string> SurfaceFormNames(int graphType, int coordType) {
  std::vector<std::string> out;
  if (graphType == 1) {
    for (int f : {2, 3}) out.push_back(SurfaceFormLabel(1, f, coordType));
  } else {
    for (int f : {2, 3, 1}) out.push_back(SurfaceFormLabel(2, f, coordType));
  }
  return out;
}

int SurfaceFunFormOfListIndex(int graphType, int index) {
  if (graphType == 1) return index == 1 ? 3 : 2;
  return index == 1 ? 3 : index == 2 ? 1 : 2;
}

int SurfaceListIndexOfFunForm(int graphType, int funForm) {
  if (funForm == 3) return 1;
  if (funForm == 1 && graphType != 1) return 2;
  return 0;
}

SurfaceFieldLabels SurfaceLabels(int graphType, int coordType, int funForm) {
  // The names of the three coordinates of each system, in formula order.
  const char* const names[3][3] = {{"x", "y", "z"}, {"a", "r", "z"}, {"a", "b", "r"}};
  const int s = coordType >= 3 && coordType <= 5 ? coordType - 3 : 0;
  const std::string n0 = names[s][0], n1 = names[s][1], n2 = names[s][2];
  SurfaceFieldLabels l;
  if (graphType == 1) {
    if (funForm == 3) {
      l.formula1 = n0 + "(u)";
      l.formula2 = n1 + "(u)";
      l.formula3 = n2 + "(u)";
      l.varU = "u";
    } else {
      l.formula1 = n2 + "(" + n0 + ") or " + n2 + "(" + n1 + ")";
      l.varU = n0;
    }
    return l;
  }
  switch (funForm) {
    case 3:
      l.formula1 = n0 + "(u,v)";
      l.formula2 = n1 + "(u,v)";
      l.formula3 = n2 + "(u,v)";
      l.varU = "u";
      l.varV = "v";
      break;
    case 1:
      l.formula1 = "f(" + n0 + "," + n1 + "," + n2 + ")";
      l.varU = n0;
      l.varV = n1;
      l.varW = n2;
      break;
    default:
      l.formula1 = n2 + "(" + n0 + "," + n1 + ")";
      l.varU = n0;
      l.varV = n1;
      break;
  }
  return l;
}

namespace {

std::string Num(float v) { return SingleToText(v); }
std::string Whole(long v) { return IntToText(v); }

void Message(const std::string& text, const char* title) {
  host().MsgBox(text, title, MsgButtons::OK, title[0] == 'E' ? MsgIcon::Critical : MsgIcon::Exclamation);
}


bool RangeValue(const std::string& text, float& v) {
  bool ok = false;
  v = FormulaValue(InsertImplicitProducts(text), 0, FormulaVar::X, &ok);
  return ok && v != BreakValue;
}

}  // namespace

bool FilterField(std::string& text, bool expr) {
  std::string source = text, result;
  if (!(expr ? FilterExprText(source, result) : FilterNumberText(source, result))) return false;
  text = result;
  return true;
}

int WholeField(const std::string& text) {
  const double v = Val(text);
  if (!(v > -1e9 && v < 1e9)) return 0;
  return static_cast<int>(RoundToLong(v));
}

std::string PlacesText(const std::vector<float>& xs, const std::vector<float>& ys) {
  std::string out;
  for (size_t k = 0; k < xs.size() && k < ys.size(); ++k) {
    if (k) out += "; ";
    out += SingleToText(xs[k]) + "," + SingleToText(ys[k]);
  }
  return out;
}

bool ParsePlaces(const std::string& text, std::vector<float>& xs, std::vector<float>& ys) {
  std::vector<float> px, py;
  std::istringstream in(text);
  std::string pair;
  auto number = [](const std::string& t, float& v) {
    const size_t a = t.find_first_not_of(" \t"), b = t.find_last_not_of(" \t");
    return a != std::string::npos && TextToSingle(std::string_view(t).substr(a, b - a + 1), v) && v > -1e9f && v < 1e9f;
  };
  while (std::getline(in, pair, ';')) {
    if (pair.find_first_not_of(" \t") == std::string::npos) continue;
    const size_t comma = pair.find(',');
    float x, y;
    if (comma == std::string::npos || !number(pair.substr(0, comma), x) || !number(pair.substr(comma + 1), y))
      return false;
    px.push_back(x);
    py.push_back(y);
  }
  if (static_cast<int>(px.size()) > CSurface::kMaxPositions) return false;
  xs = std::move(px);
  ys = std::move(py);
  return true;
}

SurfaceForm NewSurfaceForm() {
  SurfaceForm f = LoadSurfaceForm(CSurface());
  // z = f(x, y) over what the view shows of the ground plane.
  float x0, x1, y0, y1;
  if (VisiblePlaneRange(x0, x1, y0, y1)) {
    f.minU = Num(x0), f.maxU = Num(x1);
    f.minV = Num(y0), f.maxV = Num(y1);
  }
  return f;
}

SurfaceForm LoadSurfaceForm(const CSurface& s) {
  SurfaceForm f;
  f.graphType = s.GraphType == 1 ? 1 : 2;
  f.coordType = s.CoordType >= 3 && s.CoordType <= 5 ? s.CoordType : 3;
  f.listIndex = SurfaceListIndexOfFunForm(f.graphType, s.FunForm);
  if (s.FunForm == 3) {
    f.formula1 = s.ExpressX;
    f.formula2 = s.ExpressY;
    f.formula3 = s.ExpressZ;
  } else {
    f.formula1 = s.ExpressZ;
  }
  f.minU = s.MinU;
  f.maxU = s.MaxU;
  f.stepsU = Whole(s.StepU);
  f.minV = s.MinV;
  f.maxV = s.MaxV;
  f.stepsV = Whole(s.StepV);
  f.minW = Num(s.MinW);
  f.maxW = Num(s.MaxW);
  f.stepsW = Whole(s.StepW);
  LoadLookFields(s, f);
  f.showContour = s.ShowContour;
  f.showVector = s.ShowVector;
  f.showColormap = s.ShowColormap;
  f.contourLevel = Whole(s.ContourLevel);
  f.clip = s.Clip;
  f.clipMinX = Num(s.ClipMinX), f.clipMaxX = Num(s.ClipMaxX);
  f.clipMinY = Num(s.ClipMinY), f.clipMaxY = Num(s.ClipMaxY);
  f.clipMinZ = Num(s.ClipMinZ), f.clipMaxZ = Num(s.ClipMaxZ);
  f.showTangent = s.ShowTangent;
  f.tangentAt = PlacesText(s.TangentX, s.TangentY);
  f.showNormal = s.ShowNormal;
  f.normalAt = PlacesText(s.NormalX, s.NormalY);
  return f;
}

SurfaceConfirm ConfirmSurfaceForm(SurfaceForm& f, const std::string& editId, std::string* id) {
  const int form = f.funForm();
  const bool curve = f.graphType == 1;
  const bool param = form == 3, implicit = !curve && form == 1;
  const bool hasV = !curve, hasW = implicit;
  // Step 2 before step 1: the filters turn an empty field into "0", which
  // would hide it from the check for empty fields.
  const bool empty = f.formula1.empty() || (param && (f.formula2.empty() || f.formula3.empty())) ||
                     f.minU.empty() || f.maxU.empty() || f.stepsU.empty() ||
                     (hasV && (f.minV.empty() || f.maxV.empty() || f.stepsV.empty())) ||
                     (hasW && (f.minW.empty() || f.maxW.empty() || f.stepsW.empty()));
  if (empty) {
    Message(kInputAllParams, "Note");
    return SurfaceConfirm::Stay;
  }
  // Step 1: every visible field through its filter.
  const bool filtered = FilterField(f.formula1, true) && (!param || (FilterField(f.formula2, true) && FilterField(f.formula3, true))) &&
                        FilterField(f.minU, true) && FilterField(f.maxU, true) && FilterField(f.stepsU, false) &&
                        (!hasV || (FilterField(f.minV, true) && FilterField(f.maxV, true) && FilterField(f.stepsV, false))) &&
                        (!hasW || (FilterField(f.minW, true) && FilterField(f.maxW, true) && FilterField(f.stepsW, false))) &&
                        (!f.showTrans || FilterField(f.transAlpha, false)) &&
                        (!f.showContour || FilterField(f.contourLevel, false)) &&
                        (!f.clip || (FilterField(f.clipMinX, false) && FilterField(f.clipMaxX, false) &&
                                     FilterField(f.clipMinY, false) && FilterField(f.clipMaxY, false) &&
                                     FilterField(f.clipMinZ, false) && FilterField(f.clipMaxZ, false)));
  std::vector<float> tangentX, tangentY, normalX, normalY;
  if (!filtered || !ParsePlaces(f.tangentAt, tangentX, tangentY) || !ParsePlaces(f.normalAt, normalX, normalY)) {
    Message(kIllegalData, "Error");
    return SurfaceConfirm::Stay;
  }
  const SurfaceFieldLabels labels = SurfaceLabels(f.graphType, f.coordType, form);
  auto ordered = [](const std::string& var, float lo, float hi) {
    if (lo < hi) return true;
    Message("Min " + var + " must be less than Max " + var + ".", "Note");
    return false;
  };
  auto enough = [](const std::string& var, int steps, int limit) {
    if (steps < 1) {
      Message("Steps " + var + " must be larger than 1.", "Note");
      return false;
    }
    if (steps > limit) {
      Message(kIllegalData, "Error");
      return false;
    }
    return true;
  };
  const int limit = implicit ? CSurface::kMaxImplicitSteps : CSurface::kMaxSteps;
  float lo, hi;
  if (!RangeValue(f.minU, lo) || !RangeValue(f.maxU, hi)) return SurfaceConfirm::Stay;
  if (!ordered(labels.varU, lo, hi) || !enough(labels.varU, WholeField(f.stepsU), limit)) return SurfaceConfirm::Stay;
  if (hasV) {
    if (!RangeValue(f.minV, lo) || !RangeValue(f.maxV, hi)) return SurfaceConfirm::Stay;
    if (!ordered(labels.varV, lo, hi) || !enough(labels.varV, WholeField(f.stepsV), limit))
      return SurfaceConfirm::Stay;
  }
  float minW = 0, maxW = 0;
  if (hasW) {
    if (!RangeValue(f.minW, minW) || !RangeValue(f.maxW, maxW)) return SurfaceConfirm::Stay;
    if (!ordered(labels.varW, minW, maxW) || !enough(labels.varW, WholeField(f.stepsW), limit))
      return SurfaceConfirm::Stay;
  }

  if (f.clip) {
    const char* const axis[3] = {"x", "y", "z"};
    const std::string* lo3[3] = {&f.clipMinX, &f.clipMinY, &f.clipMinZ};
    const std::string* hi3[3] = {&f.clipMaxX, &f.clipMaxY, &f.clipMaxZ};
    for (int k = 0; k < 3; ++k)
      if (!ordered(std::string("clip ") + axis[k], Sng(Val(*lo3[k])), Sng(Val(*hi3[k])))) return SurfaceConfirm::Stay;
  }

  CSurface* target = nullptr;
  if (!editId.empty()) {
    target = Doc.Surfaces.FindById(editId);
    if (!target) {
      Message(kObjectNotExist, "Error");
      return SurfaceConfirm::Gone;
    }
  }
  // Step 3: the object is tried first, as a copy; the document changes only
  // when it samples. An edit starts from the object as it stands, so what the
  // dialog does not show (name, line colour and width, a ramp of its
  // own, a surface kind beyond 2) stays.
  CSurface trial;
  if (target) trial = *target;
  const int graphType = target && !curve && target->GraphType >= 12 ? target->GraphType : f.graphType;
  trial.Init(trial.ID, trial.NameS, graphType, form, f.coordType, param ? f.formula1 : std::string(),
             param ? f.formula2 : std::string(), param ? f.formula3 : f.formula1, WholeField(f.stepsU),
             hasV ? WholeField(f.stepsV) : WholeField(f.stepsU), f.minU, f.maxU, hasV ? f.minV : "-5",
             hasV ? f.maxV : "5");
  if (hasW) {
    trial.StepW = WholeField(f.stepsW);
    trial.MinW = minW;
    trial.MaxW = maxW;
  }
  StoreLookFields(f, trial);
  trial.ForeColor = f.firstColor;
  trial.ShowContour = f.showContour;
  trial.ShowVector = f.showVector;
  trial.ShowColormap = f.showColormap;
  if (f.showContour) trial.ContourLevel = WholeField(f.contourLevel);
  trial.Clip = f.clip;
  if (f.clip) {
    trial.ClipMinX = Sng(Val(f.clipMinX)), trial.ClipMaxX = Sng(Val(f.clipMaxX));
    trial.ClipMinY = Sng(Val(f.clipMinY)), trial.ClipMaxY = Sng(Val(f.clipMaxY));
    trial.ClipMinZ = Sng(Val(f.clipMinZ)), trial.ClipMaxZ = Sng(Val(f.clipMaxZ));
  }
  trial.ShowTangent = f.showTangent;
  trial.TangentX = tangentX, trial.TangentY = tangentY;
  trial.ShowNormal = f.showNormal;
  trial.NormalX = normalX, trial.NormalY = normalY;
  if (!trial.GetPoints()) return SurfaceConfirm::Stay;

  if (target) {
    *target = trial;
  } else {
    trial.ID = NewObjectId(curve ? "C3" : "SF");
    target = Doc.Surfaces.Add(std::make_unique<CSurface>(trial));
  }
  if (id) *id = target->ID;
  PushSnapshot();
  RedrawScene();
  return SurfaceConfirm::Done;
}

std::string PickTextureFile() { return host().OpenFileDialog("Open File", kTextureFilter); }

namespace {

SurfaceFormOpener& Opener() {
  static SurfaceFormOpener opener;
  return opener;
}

}  // namespace

void SetSurfaceFormOpener(SurfaceFormOpener opener) { Opener() = std::move(opener); }
bool SurfaceFormAvailable() { return static_cast<bool>(Opener()); }

void mnuDraw2Sur_Click() {
  if (!Opener()) return;
  EditMode = false;
  EditObjectId.clear();
  SurfaceFormOpener opener = Opener();
  opener(std::string());
}

void RegisterSurfaceCommands() {
  RegisterHandler("mnuDraw2Sur", mnuDraw2Sur_Click, SurfaceFormAvailable);
  RegisterEditDialog(Kind::SF, [](DocObject& object) {
    if (!Opener()) {
      EditMode = false;
      return;
    }
    SurfaceFormOpener opener = Opener();
    opener(object.ID);
  });
  RegisterBoxSelTest(Kind::SF, [](DocObject& object, float x1, float y1, float x2, float y2) {
    return static_cast<CSurface&>(object).BoxSel(x1, y1, x2, y2);
  });
}

}  // namespace vt
