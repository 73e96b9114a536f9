#include "tools/notes.h"

#include <GL/gl.h>

#include <cmath>
#include <memory>
#include <vector>

#include "document/command_table.h"
#include "document/document.h"
#include "document/frame_commands.h"
#include "document/host.h"
#include "document/numtext.h"
#include "document/undo.h"
#include "expr/expression.h"
#include "expr/parameters.h"
#include "geometry/geom.h"
#include "graphs/follow.h"
#include "persist/docio.h"
#include "persist/record.h"
#include "render/frame.h"
#include "render/text.h"
#include "tools/buttons.h"
#include "tools/constructions.h"
#include "tools/name_rules.h"
#include "tools/note_properties.h"
#include "tools/screen_place.h"
#include "render/strokes.h"

namespace vt {

int NoteCounter = 0;
ComputeDialogFn ComputeDialog = nullptr;

const char* const kMsgLength = "Please select at least 1 segment. ";
const char* const kMsgAngle = "Please select 3 points, or 2 segments, or 2 polygons, or 1 polygon and 1 segment first. ";
const char* const kMsgCircle = "Please select at least 1 circle. ";
const char* const kMsgArea = "Please select at least one circle. ";
const char* const kMsgArc = "Please select at least 1 arc. ";
const char* const kMsgCoord = "Please select 1 point first. ";
const char* const kMsgCoordXYZ = "Please select a point first. ";
const char* const kMsgDistance = "Please select at least 2 points, 1 segment or 1 polygon. ";
const char* const kMsgDistanceOne = "Please select 1 segment or 1 polygon. ";
const char* const kMsgExpressionInvalid = "The expression is invalid.";

std::string NoteFormat(int decim) { return "0." + std::string(static_cast<size_t>(decim < 0 ? 0 : decim), '0'); }

namespace {

constexpr double kShortPi = 3.1416;

struct Vec {
  double x, y, z;
};
Vec Dir(const Position& a, const Position& b) { return Vec{static_cast<double>(b.x) - a.x, static_cast<double>(b.y) - a.y, static_cast<double>(b.z) - a.z}; }
double Dot(const Vec& a, const Vec& b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
Vec Cross(const Vec& a, const Vec& b) { return Vec{a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x}; }
double Len(const Vec& a) { return std::sqrt(Dot(a, a)); }

// The angle between two directions, radians 0 to pi; 0 for a direction of no
// length.
double AngleBetween(const Vec& a, const Vec& b) {
  const double la = Len(a), lb = Len(b);
  if (la == 0 || lb == 0) return 0;
  double c = Dot(a, b) / (la * lb);
  if (c > 1) c = 1;
  if (c < -1) c = -1;
  return std::acos(c);
}

bool RegionNormal(const CRegion& g, Vec& n) {
  if (g.Points.size() < 3) return false;
  n = Cross(Dir(g.Points[0], g.Points[1]), Dir(g.Points[0], g.Points[2]));
  return Len(n) > 0;
}

std::string LabelOf(const std::string& id) {
  const std::string head = id.substr(0, 2);
  if (head == "PT") {
    if (const Position* p = FindPoint(id)) return p->PLabel;
  } else if (head == "LN") {
    if (const CLine* l = Doc.Lines.FindById(id)) return l->LLabel;
  } else if (head == "CR") {
    if (const CCircle* c = Doc.Circles.FindById(id)) return c->CLabel;
  } else if (head == "AR") {
    if (const CArc* a = Doc.Arcs.FindById(id)) return a->Label;
  } else if (head == "RG") {
    if (const CRegion* g = Doc.Regions.FindById(id)) return g->Label;
  }
  return {};
}

bool Exists(const std::string& id) {
  if (id.empty()) return true;
  return GetObjectById(id) != nullptr;
}

const char* TypeLabel(int t) {
  switch (t) {
    case 1: return "dis ";
    case 2: return "len ";
    case 3: return "slope ";
    case 4: return "angle ";
    case 5: return "r ";
    case 6: return "circum ";
    case 7: return "radius angle ";
    case 8: return "area ";
    case 10: return "arc length ";
    case 11: return "Coord ";
    case 12: return "CoordX ";
    case 13: return "CoordY ";
    case 14: return "CoordZ ";
    default: return "";
  }
}

}  // namespace

// ---- CNote -------------------------------------------------------------------------------------

bool CNote::Measure() {
  const std::string fmt = NoteFormat(Decim);
  if (NoteType == 0) {
    VariableTable vars;
    LoadParameterTable(vars);
    Cls6 calc;
    std::string postfix;
    float result = 0;
    bool ok = false;
    try {
      if (calc.InfixToPostfix(Para1, vars, postfix) != 0) return false;
      RecordFormulaInputs(ID, {Para1});
      calc.DoEvaluate(postfix, false, vars, result, ok);
    } catch (const std::exception&) {
      ok = false;
    }
    if (!ok) return false;
    Value = result;
    Note = Para3 + " = " + FormatPattern(Value, "0.00");
    return true;
  }
  if (Para1.empty() || !Exists(Para1) || !Exists(Para2) || !Exists(Para3)) return false;
  const std::string h1 = Para1.substr(0, 2), h2 = Para2.size() >= 2 ? Para2.substr(0, 2) : std::string();
  std::string label;
  double v = 0;
  switch (NoteType) {
    case 1: {  // distance
      if (h1 == "PT" && h2 == "PT") {
        v = DistanceBetween(*FindPoint(Para1), *FindPoint(Para2));
        label = LabelOf(Para1) + LabelOf(Para2);
      } else if (h1 == "PT" && h2 == "LN") {
        const Position& p = *FindPoint(Para1);
        const CLine& l = *Doc.Lines.FindById(Para2);
        v = DistanceBetween(p, FootOnLine(p, l.pBegin, l.pEnd));
        label = LabelOf(Para1) + "(" + LabelOf(Para2);
      } else if (h1 == "PT" && h2 == "RG") {
        const Position& p = *FindPoint(Para1);
        v = DistanceBetween(p, FootOnPlane(p, *Doc.Regions.FindById(Para2)));
        label = LabelOf(Para1) + "(" + LabelOf(Para2);
      } else if (h1 == "LN" && h2 == "LN") {
        const CLine& a = *Doc.Lines.FindById(Para1);
        const CLine& b = *Doc.Lines.FindById(Para2);
        v = DistanceBetween(b.pBegin, FootOnLine(b.pBegin, a.pBegin, a.pEnd));
        label = LabelOf(Para1) + LabelOf(Para2);
      } else {
        return false;
      }
      break;
    }
    case 2:
    case 3: {
      const CLine* l = Doc.Lines.FindById(Para1);
      if (!l) return false;
      if (NoteType == 2) {
        v = DistanceBetween(l->pBegin, l->pEnd);
      } else {
        const double dx = static_cast<double>(l->pEnd.x) - l->pBegin.x;
        v = dx == 0 ? 10000.0 : (static_cast<double>(l->pEnd.y) - l->pBegin.y) / dx;
      }
      label = l->LLabel;
      break;
    }
    case 4: {
      double rad = 0;
      if (h1 == "PT") {
        const Position* a = FindPoint(Para1);
        const Position* b = FindPoint(Para2);
        const Position* c = FindPoint(Para3);
        if (!a || !b || !c) return false;
        rad = AngleBetween(Dir(*b, *a), Dir(*b, *c));
        label = a->PLabel + b->PLabel + c->PLabel;
      } else if (h1 == "LN" && h2 == "LN") {
        const CLine& a = *Doc.Lines.FindById(Para1);
        const CLine& b = *Doc.Lines.FindById(Para2);
        rad = AngleBetween(Dir(a.pBegin, a.pEnd), Dir(b.pBegin, b.pEnd));
        label = a.LLabel + b.LLabel;
      } else if ((h1 == "RG" && h2 == "RG") || (h1 == "RG" && h2 == "LN") || (h1 == "LN" && h2 == "RG")) {
        const std::string rg = h1 == "RG" ? Para1 : Para2;
        const std::string other = h1 == "RG" ? Para2 : Para1;
        Vec n1;
        if (!RegionNormal(*Doc.Regions.FindById(rg), n1)) return false;
        if (other.substr(0, 2) == "RG") {
          Vec n2;
          if (!RegionNormal(*Doc.Regions.FindById(other), n2)) return false;
          rad = AngleBetween(n1, n2);
        } else {
          const CLine& l = *Doc.Lines.FindById(other);
          const double a = AngleBetween(n1, Dir(l.pBegin, l.pEnd));
          rad = std::fabs(kShortPi / 2 - a);
        }
        label = LabelOf(Para1) + LabelOf(Para2);
      } else {
        ShowNote("Please select objects first.");
        return false;
      }
      v = rad * 180 / kShortPi;
      break;
    }
    case 5:
    case 6:
    case 8: {
      const CCircle* c = Doc.Circles.FindById(Para1);
      if (!c) return false;
      const double r = c->Radius();
      v = NoteType == 5 ? r : NoteType == 6 ? 6.2832 * r : 3.1416 * r * r;
      label = c->CLabel;
      break;
    }
    case 7:
    case 10: {
      const CArc* a = Doc.Arcs.FindById(Para1);
      if (!a) return false;
      const double angle = a->RadiusAngle();
      v = NoteType == 7 ? angle * 180 / kShortPi : a->Radius() * angle;
      label = a->Label;
      break;
    }
    case 11:
    case 12:
    case 13:
    case 14: {
      const Position* p = FindPoint(Para1);
      if (!p) return false;
      const std::string x = "x= " + FormatPattern(p->x, fmt), y = "y= " + FormatPattern(p->y, fmt),
                        z = "z= " + FormatPattern(p->z, fmt);
      std::string text = std::string(TypeLabel(NoteType)) + p->PLabel + ": ";
      if (NoteType == 11) text += x + "  " + y + "  " + z;
      else if (NoteType == 12) text += x, Value = p->x;
      else if (NoteType == 13) text += y, Value = p->y;
      else text += z, Value = p->z;
      Note = text;
      return true;
    }
    default:
      return false;
  }
  Value = static_cast<float>(v);
  Note = std::string(TypeLabel(NoteType)) + label + " = " + FormatPattern(Value, fmt);
  if (NoteType == 4 || NoteType == 7) Note += "\u00B0";  // degrees
  return true;
}

std::string CNote::ShownText() {
  // A note whose objects are gone shows its last text. A formula that cannot
  // be worked out shows a mark in the note's place; its message was given
  // when the formula was entered, and drawing opens no box.
  if (Measure() || NoteType != 0) return Note;
  return (Para3.empty() ? VarName : Para3) + " = ?  (formula error)";
}

void CNote::Draw() {
  if (Hide) return;
  DrawNoteText(*this, ShownText());
  if (AngleMark && CanMarkAngle()) DrawAngleMark(*this);
  if (Selected) {
    glDisable(GL_LIGHTING);
    DrawSelectionFrame(PosX, PosY, 1);
    glEnable(GL_LIGHTING);
  }
}

std::string CNote::Save() const {
  RecordWriter w(ID);
  w.Add(NoteType).Add(PosX).Add(PosY).Add(Decim).AddText(VarName.empty() ? std::string("VAR") : VarName);
  w.AddFramed(Para1).AddFramed(Para2).AddFramed(Para3).Add(BoolField(Hide)).Add(BoolField(Selected));
  // A colour or font size of its own follows, only when there is one.
  if (ForeColor != 0 || FontSize != 0 || AngleMark) w.Add(static_cast<long>(ForeColor)).Add(FontSize);
  if (AngleMark) w.Add(1);
  // Every field is followed by a blank, the last one too.
  return w.Add("").Close();
}

namespace {

// The NT record. The first reading makes the note; the second, when every
// object of the document exists, brings its text and value up to date.
void ReadNote(RecordReader& r, int pass) {
  if (pass == 2) {
    if (CNote* n = Doc.Notes.FindById(r.OwnId())) {
      n->Measure();
    }
    return;
  }
  auto n = std::make_unique<CNote>();
  n->ID = r.OwnId();
  n->NoteType = r.Int();
  n->PosX = r.Single();
  n->PosY = r.Single();
  n->Decim = r.Short();
  if (n->Decim < 0 || n->Decim > 10) n->Decim = 2;
  n->VarName = r.FramedText();
  if (n->NoteType == 0) {
    n->Para1 = r.FramedText();
    n->Para2 = r.FramedText();
    n->Para3 = r.FramedText();
  } else {
    n->Para1 = r.FramedId();
    n->Para2 = r.FramedId();
    n->Para3 = r.FramedId();
  }
  if (!r.AtEnd()) n->Hide = r.Bool();
  if (!r.AtEnd()) n->Selected = r.Bool();
  ReadNoteLook(r, *n);
  // The counter goes on from the highest "VAR" number read.
  if (n->VarName.size() > 3 && n->VarName.compare(0, 3, "VAR") == 0) {
    // A damaged name may hold any number; only one a counter can reach counts.
    const double k = Val(n->VarName.substr(3));
    if (k > NoteCounter && k < 1e6) NoteCounter = static_cast<int>(k);
  }
  const std::string key = n->ID;
  Doc.Notes.Add(std::move(n), key);
}

}  // namespace

void RegisterNoteReader() { RegisterRecordReader("NT", &ReadNote); }

// ---- commands ----------------------------------------------------------------------------------

CNote* AddNote(int noteType, const std::string& para1, const std::string& para2, const std::string& para3) {
  auto n = std::make_unique<CNote>();
  n->ID = NewObjectId("NT");
  ++NoteCounter;
  n->VarName = "VAR" + ZeroPad(NoteCounter, 2);
  n->NoteType = noteType;
  n->Decim = 2;
  FreeScreenPlace(15, 3, n->PosX, n->PosY);
  n->Para1 = para1;
  n->Para2 = para2;
  n->Para3 = para3;
  n->AngleMark = n->CanMarkAngle();
  CNote* made = Doc.Notes.Add(std::move(n));
  made->Measure();
  return made;
}

namespace {

template <class T, class C>
std::vector<std::string> SelIds(C& selSet, C& docSet) {
  std::vector<std::string> out;
  for (T* s : selSet)
    if (docSet.FindById(s->ID)) out.push_back(s->ID);
  return out;
}
std::vector<std::string> Pts() { return SelIds<Position>(Sel.Points, Doc.Points); }
std::vector<std::string> Lns() { return SelIds<CLine>(Sel.Lines, Doc.Lines); }
std::vector<std::string> Crs() { return SelIds<CCircle>(Sel.Circles, Doc.Circles); }
std::vector<std::string> Ars() { return SelIds<CArc>(Sel.Arcs, Doc.Arcs); }
std::vector<std::string> Rgs() { return SelIds<CRegion>(Sel.Regions, Doc.Regions); }

void Finish() {
  PushSnapshot();
  RedrawScene();
}

// One note for each selected object of a kind.
void Each(const std::vector<std::string>& ids, int noteType, const char* message) {
  if (ids.empty()) {
    ShowNote(message);
    return;
  }
  for (const std::string& id : ids) AddNote(noteType, id);
  Finish();
}

void PointNote(int noteType, const char* message) {
  std::vector<std::string> p = Pts();
  if (p.empty()) {
    ShowNote(message);
    return;
  }
  for (const std::string& id : p) AddNote(noteType, id);
  Finish();
}

}  // namespace

void mnuDis_Click() {
  std::vector<std::string> p = Pts(), l = Lns(), g = Rgs();
  if (p.size() >= 2) {
    AddNote(1, p[0], p[1]);
  } else if (p.size() == 1 && l.size() == 1) {
    AddNote(1, p[0], l[0]);
  } else if (p.size() == 1 && g.size() == 1) {
    AddNote(1, p[0], g[0]);
  } else if (p.empty() && l.size() == 2) {
    AddNote(1, l[0], l[1]);
  } else if (p.size() == 1) {
    ShowNote(kMsgDistanceOne);
    return;
  } else {
    ShowNote(kMsgDistance);
    return;
  }
  Finish();
}

void mnuLength_Click() { Each(Lns(), 2, kMsgLength); }
void mnuXL_Click() { Each(Lns(), 3, kMsgLength); }
void mnuRadius_Click() { Each(Crs(), 5, kMsgCircle); }
void mnuZC_Click() { Each(Crs(), 6, kMsgCircle); }
void mnuArea_Click() { Each(Crs(), 8, kMsgArea); }
void mnuYXJ_Click() { Each(Ars(), 7, kMsgArc); }
void mnuHC_Click() { Each(Ars(), 10, kMsgArc); }
void mnuMCoord_Click() { PointNote(11, kMsgCoord); }
void mnuMX_Click() { PointNote(12, kMsgCoordXYZ); }
void mnuMY_Click() { PointNote(13, kMsgCoordXYZ); }
void mnuMZ_Click() { PointNote(14, kMsgCoordXYZ); }

void mnuAngle_Click() {
  std::vector<std::string> p = Pts(), l = Lns(), g = Rgs();
  if (p.size() == 3 && l.empty() && g.empty()) AddNote(4, p[0], p[1], p[2]);
  else if (p.empty() && l.size() == 2 && g.empty()) AddNote(4, l[0], l[1]);
  else if (p.empty() && l.empty() && g.size() == 2) AddNote(4, g[0], g[1]);
  else if (p.empty() && l.size() == 1 && g.size() == 1) AddNote(4, g[0], l[0]);
  else {
    ShowNote(kMsgAngle);
    return;
  }
  Finish();
}

bool ComputeFormulaOK(const std::string& expression, const std::string& editId, int* position) {
  VariableTable vars;
  LoadParameterTable(vars);
  // The note does not read itself.
  if (const CNote* self = editId.empty() ? nullptr : Doc.Notes.FindById(editId))
    if (const int i = vars.Find(self->VarName)) vars.SetName(i, "");
  int pos = 0;
  if (position) *position = 0;
  if (!FormulaCompiles(expression, vars, &pos)) {
    if (position) *position = pos;
    return false;
  }
  Cls6 calc;
  std::string postfix;
  float result = 0;
  bool ok = false;
  try {
    calc.InfixToPostfix(expression, vars, postfix);
    calc.DoEvaluate(postfix, false, vars, result, ok);
  } catch (const std::exception&) {
    ok = false;
  }
  if (!ok) ShowNote(kMsgExpressionInvalid);
  return ok;
}

bool ComputeNoteOK(std::string name, const std::string& expression, const std::string& describe,
                   const std::string& editId) {
  if (!CheckParameterName(name, editId)) return false;
  if (!ComputeFormulaOK(expression, editId)) return false;
  CNote* n = editId.empty() ? nullptr : Doc.Notes.FindById(editId);
  if (n && n->NoteType == 0) {
    n->Para1 = expression;
    n->Para3 = describe;
    n->VarName = name;
  } else {
    n = AddNote(0, expression, "", describe);
    n->VarName = name;
  }
  Finish();
  return true;
}

void RegisterNoteCommands() {
  RegisterNoteReader();
  auto reg = [](const char* name, void (*fn)()) { RegisterHandler(name, [fn] { RunGuarded(fn); }); };
  reg("mnuDis", mnuDis_Click);
  reg("mnuLength", mnuLength_Click);
  reg("mnuXL", mnuXL_Click);
  reg("mnuAngle", mnuAngle_Click);
  reg("mnuRadius", mnuRadius_Click);
  reg("mnuZC", mnuZC_Click);
  reg("mnuArea", mnuArea_Click);
  reg("mnuYXJ", mnuYXJ_Click);
  reg("mnuHC", mnuHC_Click);
  reg("mnuMCoord", mnuMCoord_Click);
  reg("mnuMX", mnuMX_Click);
  reg("mnuMY", mnuMY_Click);
  reg("mnuMZ", mnuMZ_Click);
  RegisterHandler("mnuMCompute", [] {
    if (ComputeDialog) ComputeDialog(nullptr);
  });
}

}  // namespace vt
