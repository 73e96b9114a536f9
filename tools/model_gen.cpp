#include "tools/model_gen.h"

#include <algorithm>
#include <memory>
#include <stdexcept>

#include "animation/animation.h"
#include "document/document.h"
#include "document/globals.h"
#include "document/host.h"
#include "geometry/on_object.h"
#include "graphs/curve_form.h"
#include "persist/docio.h"
#include "tools/buttons.h"
#include "tools/constructions.h"
#include "tools/create_tools.h"
#include "tools/models.h"
#include "tools/notes.h"
#include "tools/screen_items.h"
#include "tools/transform.h"

namespace vt {

namespace {

// ---- the construction steps ---------------------------------------------------------------
// Each step runs the routine a command or tool runs; a step that shows a
// message has been refused, and the build stops with that message.

RecordingHost* g_host = nullptr;

void Check(const char* step) {
  if (g_host && !g_host->messages.empty())
    throw std::runtime_error(std::string(step) + ": " + g_host->messages.front().text);
}

// Degrees as the transformation dialogs turn them into radians.
float Deg(float degrees) { return degrees * 3.1416f / 180.0f; }

void ClearSelectionSets() {
  for (Kind k : kAllKinds) {
    CollectionBase& c = Doc.Of(k);
    for (int i = 1; i <= c.count(); ++i) c.ItemBase(i)->Selected = false;
    Sel.Of(k).Clear();
  }
}

// Selects the objects in this order, alone.
void Choose(std::initializer_list<DocObject*> objects) {
  ClearSelectionSets();
  for (DocObject* o : objects) SelectObject(*o);
}

template <class T>
T* Last(Collection<T>& c, int countBefore, const char* step) {
  if (c.count() != countBefore + 1) throw std::runtime_error(std::string(step) + ": nothing was made");
  return c.Item(c.count());
}

// A free point as the point tool makes it.
Position* Free(float x, float y, float z = 0) {
  const std::string id = NewObjectId("PT");
  Position* p = Doc.Points.Add(id, x, y, z, 1, "", "", 0, id);
  AssignNextPointLabel(*p);
  p->SetDrawMode(1);
  return p;
}

// "Connecting Line".
CLine* Segment(Position* a, Position* b, int style = 1) {
  const int before = Doc.Lines.count();
  Choose({a, b});
  mnuLinkLine_Click();
  Check("Connecting Line");
  CLine* l = Last(Doc.Lines, before, "Connecting Line");
  l->GELineStyle = style;
  l->HideLabel = true;  // the corners name the figure
  return l;
}

CLine* HiddenSegment(Position* a, Position* b) {
  CLine* l = Segment(a, b);
  l->Hide = true;
  return l;
}

void Hide(Position* p) {
  p->Hide = true;
  p->HideLabel = true;
}

// "Middle Point" of a segment: a point on it.
Position* MiddleOf(CLine* segment) {
  const int before = Doc.Points.count();
  Choose({segment});
  mnuMiddleP_Click();
  Check("Middle Point");
  return Last(Doc.Points, before, "Middle Point");
}

// "Paralell Line" through the point; its far end is the last point made.
CLine* ParallelThrough(Position* p, CLine* reference) {
  const int before = Doc.Lines.count();
  Choose({p, reference});
  mnuParaLine_Click();
  Check("Paralell Line");
  return Last(Doc.Lines, before, "Paralell Line");
}

// "Circle Through 3 Points".
CCircle* CircleThrough(Position* a, Position* b, Position* c, int style = 1) {
  const int before = Doc.Circles.count();
  Choose({a, b, c});
  mnuDraw3PC_Click();
  Check("Circle Through 3 Points");
  CCircle* made = Last(Doc.Circles, before, "Circle Through 3 Points");
  made->GELineStyle = style;
  return made;
}

// A click of a creation tool right on a point: the ray comes straight down
// through it.
void ClickOn(CCommand& tool, const Position& at) {
  Position view(at.x, at.y, at.z), scene(at.x, at.y, at.z);
  Position farPoint(at.x, at.y, at.z - 10), nearPoint(at.x, at.y, at.z + 10);
  float X = 0, Y = 0;
  tool.LButtonDown(view, scene, X, Y, farPoint, nearPoint);
}

// "Circle With Center Through Point": the circle tool, clicked on the centre
// and then on the rim point.
CCircle* CircleTool(Position* centre, Position* rim) {
  const int before = Doc.Circles.count();
  CCreateCircle tool;
  ClickOn(tool, *centre);
  ClickOn(tool, *rim);
  Check("Circle With Center Through Point");
  CCircle* c = Last(Doc.Circles, before, "Circle With Center Through Point");
  if (c->PCenter.ID != centre->ID || c->PCircleR.ID != rim->ID)
    throw std::runtime_error("Circle With Center Through Point: the clicks missed their points");
  return c;
}

// A point put on a line or circle, as the tools put one there.
Position* PointOn(DocObject* carrier, float x, float y, float z = 0) {
  Position* p = MakePointOn(*carrier, Position(x, y, z));
  Check("Point on object");
  if (!p) throw std::runtime_error("Point on object: nothing was made");
  return p;
}

// "Generate a new object" of a transformation run over the points, in
// order; the images come back in the same order.
std::vector<Position*> Images(const std::vector<Position*>& sources, const TransformParams& t) {
  const int before = Doc.Points.count();
  std::vector<std::string> ids;
  for (Position* p : sources) ids.push_back(p->ID);
  ClearSelectionSets();
  ApplyTransform(ids, t, true);
  Check("Transformation");
  if (Doc.Points.count() != before + static_cast<int>(sources.size()))
    throw std::runtime_error("Transformation: not every image was made");
  std::vector<Position*> out;
  for (int i = before + 1; i <= Doc.Points.count(); ++i) out.push_back(Doc.Points.Item(i));
  return out;
}

// The rotation about a point in the plane of the source.
Position* Rotated(Position* p, Position* centre, float degrees) {
  TransformParams t;
  t.op = TransformOp::Rotate;
  t.a = Deg(degrees);
  t.centre = centre->ID;
  return Images({p}, t).front();
}

// The quarter turn about a line in space that lifts the point above the
// ground (z grows).
Position* LiftedAbout(Position* p, CLine* axis) {
  const float up = Deg(90);
  const float angle = p->RotL3D(axis->ID, up).z >= p->RotL3D(axis->ID, -up).z ? up : -up;
  TransformParams t;
  t.op = TransformOp::Rotate;
  t.a = angle;
  t.centre = axis->ID;
  return Images({p}, t).front();
}

// The translation by the vector from `from` to `to`, which follows them.
std::vector<Position*> Translated(const std::vector<Position*>& points, Position* from, Position* to) {
  TransformParams t;
  t.op = TransformOp::Move;
  t.moveType = 3;
  t.id3 = from->ID;
  t.id4 = to->ID;
  return Images(points, t);
}

// The reflection in a point.
Position* Mirrored(Position* p, Position* centre) {
  TransformParams t;
  t.op = TransformOp::Mirror;
  t.centre = centre->ID;
  return Images({p}, t).front();
}

// The points a figure draws, in the order of their labels, ahead of the
// helpers: the document text is read back with the point records of
// `vertices` first, in that order, and the other points behind them as they
// stood. (The refresh pass walks the points in this order too, so a vertex
// may lean only on free points, structure points and vertices before it.)
void PointsInOrder(const std::vector<Position*>& vertices) {
  std::vector<std::string> ids;
  for (Position* p : vertices) ids.push_back(p->ID);
  ClearSelectionSets();
  const std::string text = GetUndoVar();
  std::vector<std::string> records, listed(ids.size()), others;
  size_t start = 0;
  while (start < text.size()) {
    size_t end = text.find(";;", start);
    if (end == std::string::npos) end = text.size();
    const std::string record = text.substr(start, end - start);
    start = end + 2;
    if (record.empty()) continue;
    const std::string head = record.substr(0, record.find(' '));
    const auto it = std::find(ids.begin(), ids.end(), head);
    if (it != ids.end()) listed[static_cast<size_t>(it - ids.begin())] = record;
    else if (head.compare(0, 2, "PT") == 0) others.push_back(record);
    else records.push_back(record);
  }
  // The scene record stays first, the points follow it.
  std::string joined = records.empty() ? std::string() : records.front() + ";;";
  for (const std::vector<std::string>* part : {&listed, &others})
    for (const std::string& r : *part)
      if (!r.empty()) joined += r + ";;";
  for (size_t i = 1; i < records.size(); ++i) joined += records[i] + ";;";
  OpenUnRe(joined);
}

// Labels A, B, ... in collection order, as a merge gives them.
void LabelInOrder() {
  LastPointLabel = "0";
  RelabelSince(CollectionMark{});
}

// ---- the plane figures ---------------------------------------------------------------------

void Sides(std::initializer_list<Position*> corners) {
  std::vector<Position*> c(corners);
  for (size_t i = 0; i < c.size(); ++i) Segment(c[i], c[(i + 1) % c.size()]);
}

// Three free corners.
void BuildTriangle() {
  Position* a = Free(-2.5f, -1.5f);
  Position* b = Free(2.5f, -1.5f);
  Position* c = Free(0.5f, 2);
  Sides({a, b, c});
}

// C is B turned by 60 degrees about A.
void BuildEquilateral() {
  Position* a = Free(-2, -1.5f);
  Position* b = Free(2, -1.5f);
  Position* c = Rotated(b, a, 60);
  Sides({a, b, c});
}

// The right angle at C: C runs on the circle over the side AB (its centre,
// the middle point of AB, and the circle are hidden helpers).
void BuildTriRightAngled() {
  Position* a = Free(-2.5f, -1.5f);
  Position* b = Free(2.5f, -1.5f);
  CLine* ab = Segment(a, b);
  Position* m = MiddleOf(ab);
  CCircle* thales = CircleTool(m, b);
  Hide(m);
  thales->Hide = true;
  const float r = 2.5f;
  Position* c = PointOn(thales, m->x - r * 0.5f, m->y + r * 0.8660254f);
  Segment(b, c);
  Segment(c, a);
  PointsInOrder({a, b, c});
}

// D = C + (A - B): the translation of C by the vector from B to A.
void BuildParallelogram() {
  Position* a = Free(-3, -1.5f);
  Position* b = Free(2, -1.5f);
  Position* c = Free(3, 1.5f);
  Position* d = Translated({c}, b, a).front();
  Sides({a, b, c, d});
}

// A and C free at the ends of a diagonal; B runs on the circle over that
// diagonal, and D = A + (C - B). The diagonal, its middle point and the
// circle are hidden helpers.
void BuildRectangle() {
  Position* a = Free(-2.5f, -1.5f);
  Position* c = Free(2.5f, 1.5f);
  CLine* ac = HiddenSegment(a, c);
  Position* m = MiddleOf(ac);
  CCircle* circle = CircleTool(m, a);
  Hide(m);
  circle->Hide = true;
  Position* b = PointOn(circle, 2.5f, -1.5f);
  Position* d = Translated({a}, b, c).front();
  Sides({a, b, c, d});
  PointsInOrder({a, b, c, d});
}

// C is A turned by -90 degrees about B, D is B turned by 90 degrees about A.
void BuildSquare() {
  Position* a = Free(-2, -2);
  Position* b = Free(2, -2);
  Position* c = Rotated(a, b, -90);
  Position* d = Rotated(b, a, 90);
  Sides({a, b, c, d});
}

// D runs on the parallel to AB through C (hidden, with its far end).
void BuildTrapezoid() {
  Position* a = Free(-3, -1.5f);
  Position* b = Free(3, -1.5f);
  Position* c = Free(1.5f, 1.5f);
  CLine* ab = Segment(a, b);
  CLine* parallel = ParallelThrough(c, ab);
  parallel->Hide = true;
  Position* far = FindPoint(parallel->pEnd.ID);
  Hide(far);
  Position* d = PointOn(parallel, -1.5f, 1.5f);
  Segment(b, c);
  Segment(c, d);
  Segment(d, a);
  PointsInOrder({a, b, c, d});
}

// ---- the space figures ---------------------------------------------------------------------
// The ground square ABCD stands on the free points A and B; what rises over
// it is turned up about a line of the figure.

struct Ground {
  Position *a, *b, *c, *d;
};
Ground GroundSquare(float half) {
  Ground g;
  g.a = Free(-half, -half);
  g.b = Free(half, -half);
  g.c = Rotated(g.a, g.b, -90);
  g.d = Rotated(g.b, g.a, 90);
  return g;
}

// E is B turned up about the edge AD; F, G, H are B, C, D carried by AE.
void BuildCube() {
  Ground g = GroundSquare(1.5f);
  Segment(g.a, g.b);
  Segment(g.b, g.c);
  Segment(g.c, g.d);
  CLine* da = Segment(g.d, g.a);
  Position* e = LiftedAbout(g.b, da);
  std::vector<Position*> top = Translated({g.b, g.c, g.d}, g.a, e);
  Position *f = top[0], *gg = top[1], *h = top[2];
  Sides({e, f, gg, h});
  Segment(g.a, e);
  Segment(g.b, f);
  Segment(g.c, gg);
  Segment(g.d, h);
}

// The apex E is A turned up about the diagonal BD (hidden): it stands over
// the centre, as far from each corner as the side is long.
void BuildPyramid() {
  Ground g = GroundSquare(1.5f);
  Sides({g.a, g.b, g.c, g.d});
  CLine* bd = HiddenSegment(g.b, g.d);
  Position* e = LiftedAbout(g.a, bd);
  for (Position* corner : {g.a, g.b, g.c, g.d}) Segment(e, corner);
}

// The base circle about the free centre A through the free point B; C is B
// turned by 90 degrees about A, and the apex D is B turned up about the
// radius AC; E and F are B and C reflected in A.
void BuildCone() {
  Position* a = Free(0, 0);
  Position* b = Free(2, 0);
  CircleTool(a, b);
  Position* c = Rotated(b, a, 90);
  CLine* ac = Segment(a, c, 2);
  Position* d = LiftedAbout(b, ac);
  Position* e = Mirrored(b, a);
  Position* f = Mirrored(c, a);
  Segment(a, b, 2);
  Segment(a, d, 2);
  for (Position* rim : {b, c, e, f}) Segment(d, rim);
}

// The base circle about A through B; the top centre D is B turned up about
// the radius AC; E and F are B and C carried by AD, G is E reflected in D,
// and the top circle runs through E, F and G; H is B reflected in A.
void BuildCylinder() {
  Position* a = Free(0, 0);
  Position* b = Free(2, 0);
  CircleTool(a, b);
  Position* c = Rotated(b, a, 90);
  CLine* ac = Segment(a, c, 2);
  Position* d = LiftedAbout(b, ac);
  std::vector<Position*> top = Translated({b, c}, a, d);
  Position *e = top[0], *f = top[1];
  Position* g = Mirrored(e, d);
  CircleThrough(e, f, g);
  Position* h = Mirrored(b, a);
  Segment(a, d, 2);
  Segment(a, b, 2);
  Segment(d, e, 2);
  Segment(b, e);
  Segment(c, f);
  Segment(h, g);
}

// The centre A and the point B; the equator about A through B, C a quarter
// turn on, D (the pole) B turned up about the radius AC, E and F the points
// opposite B and C; the two meridians run through B, D, E and C, D, F.
void BuildSphere() {
  Position* a = Free(0, 0);
  Position* b = Free(2, 0);
  CircleTool(a, b);
  Position* c = Rotated(b, a, 90);
  CLine* ac = Segment(a, c, 2);
  Position* d = LiftedAbout(b, ac);
  Position* e = Mirrored(b, a);
  Position* f = Mirrored(c, a);
  CircleThrough(b, d, e);
  CircleThrough(c, d, f);
  Segment(a, b, 2);
  Segment(a, d, 2);
}

// ---- building and writing -------------------------------------------------------------------

// Runs a build on an emptied document with a host of its own, then leaves the
// figure as a document of its own: nothing selected, labels in order.
template <class Fn>
void Build(bool space, Fn&& fn) {
  Host* previous = &host();
  RecordingHost quiet;
  ResetGlobals();
  // What a new document does not reset by itself: the note counter.
  NoteCounter = 0;
  SetHost(&quiet);
  g_host = &quiet;
  SceneMode = space ? 3 : 1;
  ShowAxis = true;
  ShowGrid = !space;
  SnapToGrid = false;
  ShowCoordLines = false;
  try {
    fn();
    ClearSelectionSets();
    SceneMode = space ? 3 : 1;
    LabelInOrder();
  } catch (...) {
    g_host = nullptr;
    SetHost(previous);
    throw;
  }
  g_host = nullptr;
  SetHost(previous);
}

bool WriteCurrent(const std::string& path, std::string& error) {
  std::string why;
  if (!WriteDocumentFile(path, GetUndoVar(), why)) {
    error = path + ": " + why;
    return false;
  }
  return true;
}

// ---- the start document ---------------------------------------------------------------------

CText* AddText(const std::string& content, float x, float y, int size, bool bold, std::uint32_t colour) {
  auto t = std::make_unique<CText>();
  t->ID = NewObjectId("TT");
  t->Content = content;
  t->TType = 1;
  t->FontName = "Arial";
  t->FontSize = size;
  t->FontBold = bold;
  t->ForeColor = colour;
  t->PosX = x;
  t->PosY = y;
  return Doc.Texts.Add(std::move(t));
}

void StartDocument() {
  AddText("Welcome to Vantrel", 36, 92, 20, true, RGB(0, 0, 160));
  AddText("Drag A, B or C: the circle and the angle follow. Slide K: the curve follows.", 18, 86, 11, false,
          RGB(64, 64, 64));

  // A triangle with its circumcircle and the angle at A measured.
  Position* a = Free(-7, -2);
  Position* b = Free(-2, -2.5f);
  Position* c = Free(-4.5f, 2);
  Sides({a, b, c});
  CCircle* circle = CircleThrough(a, b, c);
  circle->ForeColor = RGB(0, 128, 0);
  Choose({b, a, c});
  mnuAngle_Click();
  Check("Angle");
  Choose({circle});
  mnuRadius_Click();
  Check("Radius");

  // The parameter K on a player, and a curve that reads it.
  CAniControl* player = NewPlayer();
  Check("Animation Player");
  ParameterForm kForm;
  kForm.name = "K";
  kForm.value = 1.5f;
  kForm.min = 0.5f;
  kForm.max = 2.5f;
  kForm.step = 0.05f;
  CAnimation* k = CreateParameter(player->ID, kForm);
  Check("Parameter");
  if (!k) throw std::runtime_error("Parameter: nothing was made");

  CurveForm form = NewCurveForm();
  form.coordType = 1;
  form.listIndex = 0;
  form.formula1 = "K*sin(x)";
  form.minU = "0";
  form.maxU = "7.5";
  form.steps = "150";
  form.lineColor = RGB(0, 0, 255);
  form.lineWidth = "2";
  ClearSelectionSets();
  if (ConfirmCurveForm(form, "") != CurveConfirm::Done) {
    Check("Curve");
    throw std::runtime_error("Curve: nothing was made");
  }
  Check("Curve");
}

}  // namespace

const std::vector<ModelRecipe>& ModelRecipes() {
  static const std::vector<ModelRecipe> recipes = {
      {"Triangle.vtd", false, BuildTriangle},
      {"Equilateral.vtd", false, BuildEquilateral},
      {"TriRightAngled.vtd", false, BuildTriRightAngled},
      {"Parallelogram.vtd", false, BuildParallelogram},
      {"Rectangle.vtd", false, BuildRectangle},
      {"Square.vtd", false, BuildSquare},
      {"Trapezoid.vtd", false, BuildTrapezoid},
      {"Cube.vtd", true, BuildCube},
      {"Pyramid.vtd", true, BuildPyramid},
      {"Cone.vtd", true, BuildCone},
      {"Cylinder.vtd", true, BuildCylinder},
      {"Sphere.vtd", true, BuildSphere},
  };
  return recipes;
}

bool BuildModel(const std::string& file) {
  for (const ModelRecipe& r : ModelRecipes())
    if (file == r.file) {
      Build(r.space, r.build);
      return true;
    }
  return false;
}

void BuildStartDocument() { Build(false, StartDocument); }

bool WriteModelFiles(const std::string& dir, std::string& error) {
  try {
    for (const ModelRecipe& r : ModelRecipes()) {
      Build(r.space, r.build);
      if (!WriteCurrent(dir + "/" + r.file, error)) {
        ResetGlobals();
        return false;
      }
    }
  } catch (const std::exception& e) {
    error = e.what();
    ResetGlobals();
    return false;
  }
  ResetGlobals();
  return true;
}

bool WriteStartDocument(const std::string& path, std::string& error) {
  bool ok = false;
  try {
    BuildStartDocument();
    ok = WriteCurrent(path, error);
  } catch (const std::exception& e) {
    error = e.what();
  }
  ResetGlobals();
  return ok;
}

}  // namespace vt
