#include "graphs/curve_form.h"

#include <GL/glu.h>

#include <algorithm>
#include <cmath>

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
#include "render/frame.h"
#include "render/text.h"
#include "render/view_state.h"
#include "tools/canvas_input.h"

namespace vt {

const char* const kInputAllParams = "Input all parameters please.";

// ---- forms and labels ----------------------------------------------------------------

std::vector<std::string> CurveFormNames(int coordType) {
  if (coordType == 2) return {"r=f(a)", "a=f1(u),r=f2(u)", "f(a,r)=0", "f(a,r)<=0"};
  return {"y=f(x)", "x=f1(u),y=f2(u)", "f(x,y)=0", "f(x,y)<=0"};
}

int FunFormOfListIndex(int index) {
  static const int forms[4] = {2, 3, 1, 4};
  return index >= 0 && index < 4 ? forms[index] : 2;
}

int ListIndexOfFunForm(int funForm) {
  switch (funForm) {
    case 3: return 1;
    case 1: return 2;
    case 4: return 3;
    default: return 0;
  }
}

CurveFieldLabels CurveLabels(int coordType, int funForm) {
  const bool polar = coordType == 2;
  CurveFieldLabels l;
  switch (funForm) {
    case 3:
      l.formula1 = polar ? "a(u)" : "x(u)";
      l.formula2 = polar ? "r(u)" : "y(u)";
      l.minU = "Min u";
      l.maxU = "Max u";
      l.steps = "Steps u";
      break;
    case 1:
    case 4:
      l.formula1 = polar ? "f(a,r)" : "f(x,y)";
      l.minU = polar ? "Min a" : "Min x";
      l.maxU = polar ? "Max a" : "Max x";
      l.minV = polar ? "Min r" : "Min y";
      l.maxV = polar ? "Max r" : "Max y";
      break;
    default:
      l.formula1 = polar ? "r(a)" : "y(x)";
      l.minU = polar ? "Min a" : "Min x";
      l.maxU = polar ? "Max a" : "Max x";
      l.steps = polar ? "Steps a" : "Steps x";
      break;
  }
  return l;
}

// ---- the fields --------------------------------------------------------------------

namespace {

std::string Num(float v) { return SingleToText(v); }
std::string Whole(long v) { return IntToText(v); }

std::string JoinPositions(const std::vector<float>& list) {
  std::string s;
  for (float v : list) {
    if (!s.empty()) s += ";";
    s += Num(v);
  }
  return s;
}

}  // namespace

CurveForm NewCurveForm() {
  CurveForm f = LoadCurveForm(CFunCurve());
  float x0, x1, y0, y1;
  if (VisiblePlaneRange(x0, x1, y0, y1)) {
    f.minU = Num(x0), f.maxU = Num(x1);
    f.minV = Num(y0), f.maxV = Num(y1);
  }
  return f;
}

namespace {
// Where the ray through a window point of the compiled frame meets z = 0
// inside the volume.
bool OnPlane(const WindowProjection& m, double wx, double wy, double& x, double& y) {
  double n[3], f[3];
  if (!gluUnProject(wx, wy, 0, m.model, m.proj, m.viewport, &n[0], &n[1], &n[2]) ||
      !gluUnProject(wx, wy, 1, m.model, m.proj, m.viewport, &f[0], &f[1], &f[2]) || std::fabs(f[2] - n[2]) < 1e-12)
    return false;
  const double t = -n[2] / (f[2] - n[2]);
  x = n[0] + t * (f[0] - n[0]);
  y = n[1] + t * (f[1] - n[1]);
  return t >= 0 && t <= 1;
}
}  // namespace

bool VisiblePlaneArea(CBox& area) {
  if (SceneMode == 3) return false;
  const WindowProjection& m = CompiledProjection();
  if (!m.valid || m.viewport[2] <= 0 || m.viewport[3] <= 0) {
    // No frame yet: the orthographic volume about the camera's reference.
    if (View.ProjectType != 1 || View.VolWidth <= 0 || View.VolHeight <= 0) return false;
    area = CBox{View.RefPos.x - View.VolWidth / 2, View.RefPos.x + View.VolWidth / 2,
                View.RefPos.y - View.VolHeight / 2, View.RefPos.y + View.VolHeight / 2, 0, 0};
    return true;
  }
  double lo[2] = {1e30, 1e30}, hi[2] = {-1e30, -1e30};
  const double left = m.viewport[0], bottom = m.viewport[1];
  for (double wx : {left, left + m.viewport[2]})
    for (double wy : {bottom, bottom + m.viewport[3]}) {
      double x, y;
      if (!OnPlane(m, wx, wy, x, y)) return false;
      lo[0] = std::min(lo[0], x), hi[0] = std::max(hi[0], x);
      lo[1] = std::min(lo[1], y), hi[1] = std::max(hi[1], y);
    }
  area = CBox{static_cast<float>(lo[0]), static_cast<float>(hi[0]), static_cast<float>(lo[1]),
              static_cast<float>(hi[1]), 0, 0};
  return true;
}

bool VisiblePlaneRange(float& minX, float& maxX, float& minY, float& maxY) {
  const WindowProjection& m = CompiledProjection();
  if (!m.valid || m.viewport[2] <= 0 || m.viewport[3] <= 0) return false;
  const double left = m.viewport[0], bottom = m.viewport[1];
  const double width = m.viewport[2], height = m.viewport[3];
  double lo[2] = {1e30, 1e30}, hi[2] = {-1e30, -1e30};
  auto take = [&](double x, double y) {
    lo[0] = std::min(lo[0], x), hi[0] = std::max(hi[0], x);
    lo[1] = std::min(lo[1], y), hi[1] = std::max(hi[1], y);
  };
  double cx, cy;
  if (!OnPlane(m, left + width / 2, bottom + height / 2, cx, cy)) return false;
  if (SceneMode != 3) {
    CBox area;
    if (!VisiblePlaneArea(area)) return false;
    take(area.MinX, area.MinY);
    take(area.MaxX, area.MaxY);
  } else {
    // The nearer edge at the depth of the centre's point.
    double wx, wy, wz, ex, ey, ez, fx, fy, fz;
    if (!gluProject(cx, cy, 0, m.model, m.proj, m.viewport, &wx, &wy, &wz) ||
        !gluUnProject(left, wy, wz, m.model, m.proj, m.viewport, &ex, &ey, &ez) ||
        !gluUnProject(wx, bottom, wz, m.model, m.proj, m.viewport, &fx, &fy, &fz))
      return false;
    const double r = std::min(std::hypot(ex - cx, ey - cy, ez), std::hypot(fx - cx, fy - cy, fz));
    take(cx - r, cy - r);
    take(cx + r, cy + r);
  }
  const double span = std::max(hi[0] - lo[0], hi[1] - lo[1]);
  if (!std::isfinite(span) || span <= 1e-6 || span > 1e6) return false;
  const double step = std::pow(10.0, std::floor(std::log10(span))) / 10;
  auto down = [step](double v) { return static_cast<float>(std::floor(v / step + 1e-6) * step); };
  auto up = [step](double v) { return static_cast<float>(std::ceil(v / step - 1e-6) * step); };
  minX = down(lo[0]), maxX = up(hi[0]);
  minY = down(lo[1]), maxY = up(hi[1]);
  return true;
}

CurveForm LoadCurveForm(const CFunCurve& c) {
  CurveForm f;
  f.coordType = c.CoordType == 2 ? 2 : 1;
  f.listIndex = ListIndexOfFunForm(c.FunForm);
  if (c.FunForm == 3) {
    f.formula1 = c.ExpressX;
    f.formula2 = c.ExpressY;
  } else {
    f.formula1 = c.ExpressY;
  }
  f.minU = c.MinU;
  f.maxU = c.MaxU;
  f.steps = Whole(c.StepU);
  f.minV = Num(c.MinV);
  f.maxV = Num(c.MaxV);
  f.lineColor = c.LineColor;
  f.lineWidth = Whole(c.LineWidth);
  f.lineStyle = c.LineStyle >= 1 && c.LineStyle <= 4 ? c.LineStyle : 1;
  f.showCurve = c.Show2DCurve;
  f.inverse = {c.ShowInverse, c.InvColor, Whole(c.InvWidth)};
  f.derivative = {c.ShowDev, c.DevColor, Whole(c.DevWidth)};
  f.parity = {c.ShowJO, c.JOColor, Whole(c.JOWidth)};
  f.showIntegral = c.ShowInt;
  f.intColor = c.IntColor;
  f.intFrom = Num(c.IntFrom);
  f.intTo = Num(c.IntTo);
  f.showLength = c.ShowLen;
  f.lenFrom = Num(c.LenFrom);
  f.lenTo = Num(c.LenTo);
  f.roots = {c.ShowRoot, c.RootColor, Whole(c.RootSize), c.RootSymbol};
  f.maxima = {c.ShowMax, c.MaxColor, Whole(c.MaxSize), c.MaxSymbol};
  f.minima = {c.ShowMin, c.MinColor, Whole(c.MinSize), c.MinSymbol};
  f.inflexions = {c.ShowGuai, c.GuaiColor, Whole(c.GuaiSize), c.GuaiSymbol};
  f.tangents = {c.ShowQie, c.QieColor, Whole(c.QieWidth), c.QiePosType, JoinPositions(c.QieX), c.QiePosExp};
  f.normals = {c.ShowNml, c.NmlColor, Whole(c.NmlWidth), c.NmlPosType, JoinPositions(c.NmlX), c.NmlPosExp};
  f.curvature = {c.ShowCurv, c.CurvColor, Whole(c.CurvWidth), c.CurvPosType, JoinPositions(c.CurvX), c.CurvPosExp};
  return f;
}

// ---- confirmation ----------------------------------------------------------------------

namespace {

void Message(const char* text, const char* title) {
  host().MsgBox(text, title, MsgButtons::OK, title[0] == 'E' ? MsgIcon::Critical : MsgIcon::Exclamation);
}

// The fields of the form that the dialog shows, each with its filter.
class FieldWalk {
 public:
  // False at the first refused text; the texts before it are cleaned.
  bool Expr(std::string& text) { return Run(text, true); }
  bool Number(std::string& text) { return Run(text, false); }
  // Numbers separated by ";" (blanks between them dropped).
  bool List(std::string& text, std::vector<float>& values) {
    values.clear();
    std::string out, piece;
    auto flush = [&]() {
      bool blank = piece.find_first_not_of(' ') == std::string::npos;
      if (blank) return true;
      if (!Number(piece)) return false;
      values.push_back(Sng(Val(piece)));
      if (!out.empty()) out += ";";
      out += piece;
      return true;
    };
    for (char ch : text) {
      if (ch == ';') {
        if (!flush()) return false;
        piece.clear();
      } else {
        piece += ch;
      }
    }
    if (!flush()) return false;
    text = out;
    return true;
  }

 private:
  bool Run(std::string& text, bool expr) {
    std::string source = text, result;
    const bool ok = expr ? FilterExprText(source, result) : FilterNumberText(source, result);
    if (!ok) return false;
    text = result;
    return true;
  }
};

struct Numbers {
  int steps = 1;
  int lineWidth = 1;
  int invWidth = 1, devWidth = 1, joWidth = 1;
  float intFrom = 0, intTo = 0, lenFrom = 0, lenTo = 0;
  int rootSize = 1, maxSize = 1, minSize = 1, guaiSize = 1;
  int qieWidth = 1, nmlWidth = 1, curvWidth = 1;
  std::vector<float> qie, nml, curv;
};

int WholeOf(const std::string& text) {
  const double v = Val(text);
  if (!(v > -1e9 && v < 1e9)) return 0;
  return static_cast<int>(RoundToLong(v));
}

// Step 1: every visible field through its filter.
bool FilterFields(CurveForm& f, Numbers& n) {
  FieldWalk w;
  const int form = f.funForm();
  const bool sampled = form == 2 || form == 3;
  bool ok = w.Expr(f.formula1) && (form != 3 || w.Expr(f.formula2)) && w.Expr(f.minU) && w.Expr(f.maxU) &&
            (!sampled || w.Number(f.steps)) && (sampled || (w.Expr(f.minV) && w.Expr(f.maxV))) &&
            w.Number(f.lineWidth);
  if (ok && sampled) {
    auto place = [&w](CurvePlaceOverlay& p, std::vector<float>& list) {
      return w.Number(p.width) && w.List(p.positions, list) &&
             (p.posType != CFunCurve::kPosByFormula || w.Expr(p.formula));
    };
    ok = w.Number(f.inverse.width) && w.Number(f.derivative.width) && w.Number(f.parity.width) &&
         w.Number(f.intFrom) && w.Number(f.intTo) && w.Number(f.lenFrom) && w.Number(f.lenTo) &&
         w.Number(f.roots.size) && w.Number(f.maxima.size) && w.Number(f.minima.size) &&
         w.Number(f.inflexions.size) && place(f.tangents, n.qie) && place(f.normals, n.nml) &&
         place(f.curvature, n.curv);
  }
  if (!ok) return false;
  n.steps = WholeOf(f.steps);
  n.lineWidth = WholeOf(f.lineWidth);
  n.invWidth = WholeOf(f.inverse.width);
  n.devWidth = WholeOf(f.derivative.width);
  n.joWidth = WholeOf(f.parity.width);
  n.intFrom = Sng(Val(f.intFrom));
  n.intTo = Sng(Val(f.intTo));
  n.lenFrom = Sng(Val(f.lenFrom));
  n.lenTo = Sng(Val(f.lenTo));
  n.rootSize = WholeOf(f.roots.size);
  n.maxSize = WholeOf(f.maxima.size);
  n.minSize = WholeOf(f.minima.size);
  n.guaiSize = WholeOf(f.inflexions.size);
  n.qieWidth = WholeOf(f.tangents.width);
  n.nmlWidth = WholeOf(f.normals.width);
  n.curvWidth = WholeOf(f.curvature.width);
  return true;
}

// The value of a range text (parameters allowed); false after the
// compiler's message.
bool RangeValue(const std::string& text, float& v) {
  bool ok = false;
  v = FormulaValue(InsertImplicitProducts(text), 0, FormulaVar::X, &ok);
  return ok && v != BreakValue;
}

// Step 2: the checks of the form.
CurveConfirm CheckFields(const CurveForm& f, const Numbers& n, float& minV, float& maxV) {
  const int form = f.funForm();
  const bool sampled = form == 2 || form == 3;
  const bool empty = f.formula1.empty() || (form == 3 && f.formula2.empty()) || f.minU.empty() || f.maxU.empty() ||
                     (sampled && f.steps.empty()) || (!sampled && (f.minV.empty() || f.maxV.empty())) ||
                     f.lineWidth.empty();
  if (empty) {
    Message(kInputAllParams, "Note");
    return CurveConfirm::Stay;
  }
  float lo, hi;
  if (!RangeValue(f.minU, lo) || !RangeValue(f.maxU, hi)) return CurveConfirm::Stay;
  if (!(lo < hi)) {
    Message(form == 3 ? "Min u must be less than Max u." : "Min x must be less than Max x.", "Note");
    return CurveConfirm::Stay;
  }
  if (!sampled) {
    if (!RangeValue(f.minV, minV) || !RangeValue(f.maxV, maxV)) return CurveConfirm::Stay;
    if (!(minV < maxV)) {
      Message("Min y must be less than Max y.", "Note");
      return CurveConfirm::Stay;
    }
  } else if (n.steps < 1) {
    Message(form == 3 ? "Steps u must be larger than 1." : "Steps x must be larger than 1.", "Note");
    return CurveConfirm::Stay;
  }
  if (sampled && n.steps > CFunCurve::kMaxSteps) {
    Message(kIllegalData, "Error");
    return CurveConfirm::Stay;
  }
  return CurveConfirm::Done;
}

// Step 3: the curve of the fields.
void FillCurve(const CurveForm& f, const Numbers& n, float minV, float maxV, const std::string& id, CFunCurve& c) {
  const int form = f.funForm();
  const bool sampled = form == 2 || form == 3;
  const int steps = sampled ? n.steps : (form == 1 ? 90 : 20);
  c.Init(id, "", 0, f.coordType, form == 3 ? f.formula1 : std::string(), form == 3 ? f.formula2 : f.formula1, "",
         steps, steps, f.minU, f.maxU, sampled ? -5.0f : minV, sampled ? 5.0f : maxV, f.lineColor, n.lineWidth);
  c.FunForm = form;
  c.LineStyle = f.lineStyle;
  c.GELineStyle = f.lineStyle;
  c.Show2DCurve = f.showCurve;
  c.ShowInverse = f.inverse.show;
  c.InvColor = f.inverse.color;
  c.InvWidth = n.invWidth;
  c.ShowDev = f.derivative.show;
  c.DevColor = f.derivative.color;
  c.DevWidth = n.devWidth;
  c.ShowJO = f.parity.show;
  c.JOColor = f.parity.color;
  c.JOWidth = n.joWidth;
  c.ShowInt = f.showIntegral;
  c.IntColor = f.intColor;
  c.IntFrom = n.intFrom;
  c.IntTo = n.intTo;
  c.ShowLen = f.showLength;
  c.LenFrom = n.lenFrom;
  c.LenTo = n.lenTo;
  c.ShowRoot = f.roots.show;
  c.RootColor = f.roots.color;
  c.RootSize = n.rootSize;
  c.RootSymbol = f.roots.symbol;
  c.ShowMax = f.maxima.show;
  c.MaxColor = f.maxima.color;
  c.MaxSize = n.maxSize;
  c.MaxSymbol = f.maxima.symbol;
  c.ShowMin = f.minima.show;
  c.MinColor = f.minima.color;
  c.MinSize = n.minSize;
  c.MinSymbol = f.minima.symbol;
  c.ShowGuai = f.inflexions.show;
  c.GuaiColor = f.inflexions.color;
  c.GuaiSize = n.guaiSize;
  c.GuaiSymbol = f.inflexions.symbol;
  c.ShowQie = f.tangents.show;
  c.QieColor = f.tangents.color;
  c.QieWidth = n.qieWidth;
  c.QiePosType = f.tangents.posType;
  c.QiePosExp = f.tangents.formula;
  c.QieX = n.qie;
  c.ShowNml = f.normals.show;
  c.NmlColor = f.normals.color;
  c.NmlWidth = n.nmlWidth;
  c.NmlPosType = f.normals.posType;
  c.NmlPosExp = f.normals.formula;
  c.NmlX = n.nml;
  c.ShowCurv = f.curvature.show;
  c.CurvColor = f.curvature.color;
  c.CurvWidth = n.curvWidth;
  c.CurvPosType = f.curvature.posType;
  c.CurvPosExp = f.curvature.formula;
  c.CurvX = n.curv;
}

}  // namespace

CurveConfirm ConfirmCurveForm(CurveForm& form, const std::string& editId, std::string* id) {
  Numbers n;
  if (!FilterFields(form, n)) {
    Message(kIllegalData, "Error");
    return CurveConfirm::Stay;
  }
  float minV = 0, maxV = 0;
  if (CheckFields(form, n, minV, maxV) != CurveConfirm::Done) return CurveConfirm::Stay;

  CFunCurve* target = nullptr;
  if (!editId.empty()) {
    target = Doc.FunCurves.FindById(editId);
    if (!target) {
      Message(kObjectNotExist, "Error");
      return CurveConfirm::Gone;
    }
  }
  // The curve is tried first; the document changes only when it samples.
  auto made = std::make_unique<CFunCurve>();
  FillCurve(form, n, minV, maxV, editId, *made);
  if (!made->GetPoints()) return CurveConfirm::Stay;

  if (target) {
    // What the dialog does not show stays as it was.
    const std::string keepId = target->ID;
    const std::vector<Position> keepStru = target->StruP;
    const bool keepSelected = target->Selected, keepHide = target->Hide;
    const int keepMode = target->DrawMode, keepType = target->GraphType;
    *target = *made;
    target->ID = keepId;
    target->StruP = keepStru;
    target->Selected = keepSelected;
    target->Hide = keepHide;
    target->DrawMode = keepMode;
    target->GraphType = keepType;
    target->GetPoints();
  } else {
    made->ID = NewObjectId("C2");
    target = Doc.FunCurves.Add(std::move(made));
  }
  if (id) *id = target->ID;
  PushSnapshot();
  RedrawScene();
  return CurveConfirm::Done;
}

// ---- the command ------------------------------------------------------------------------

namespace {

CurveFormOpener& Opener() {
  static CurveFormOpener opener;
  return opener;
}

}  // namespace

void SetCurveFormOpener(CurveFormOpener opener) { Opener() = std::move(opener); }
bool CurveFormAvailable() { return static_cast<bool>(Opener()); }

void mnuDraw2Curve_Click() {
  if (!Opener()) return;
  EditMode = false;
  EditObjectId.clear();
  CurveFormOpener opener = Opener();  // a copy: the opener may replace itself
  opener(std::string());
}

void RegisterCurveCommands() {
  RegisterHandler("mnuDraw2Curve", mnuDraw2Curve_Click, CurveFormAvailable);
  // The double click has set EditMode and EditObjectId already.
  RegisterEditDialog(Kind::C2, [](DocObject& object) {
    if (!Opener()) {
      EditMode = false;
      return;
    }
    CurveFormOpener opener = Opener();
    opener(object.ID);
  });
  RegisterBoxSelTest(Kind::C2, [](DocObject& object, float x1, float y1, float x2, float y2) {
    return static_cast<CFunCurve&>(object).BoxSel(x1, y1, x2, y2);
  });
}

}  // namespace vt
