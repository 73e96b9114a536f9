// CAnimation: the points a track drives, the frame it shows, its record and
// its row of text.
#include <GL/gl.h>

#include <algorithm>
#include <cmath>

#include "animation/player_objects.h"
#include "document/document.h"
#include "document/globals.h"
#include "document/numtext.h"
#include "expr/expression.h"
#include "geometry/geom.h"
#include "geometry/on_object.h"
#include "geometry/propagation.h"
#include "persist/record.h"
#include "render/text.h"
#include "render/strokes.h"

namespace vt {

short AniDialogKind = 0;

namespace {

bool Drivable(const Position& p) { return p.ptype == 1 || (p.ptype == 7 && p.ParentNum() == 1); }

// Moves a driven point to its place for the frame: a point on an object is
// put back on it, as a drag does; the copies follow.
void PlacePoint(Position& p, float x, float y, float z) {
  if (p.ptype == 7 && !p.Parent.empty()) {
    const float ox = p.x, oy = p.y, oz = p.z;
    if (ConstrainToParent(p, p.Parent.front(), Position(x, y, z))) {
      const float dx = p.x - ox, dy = p.y - oy, dz = p.z - oz;
      if (dx != 0 || dy != 0 || dz != 0) p.UpdateLinked(dx, dy, dz, 0);
      return;
    }
  }
  MovePointTo(p, x, y, z);
}

// The place at fraction t of the length of a polyline (closed: back to the
// first corner). Holes of sampled curves are left out.
bool AlongPolyline(std::vector<Position> pts, bool closed, float t, Position& out) {
  pts.erase(std::remove_if(pts.begin(), pts.end(),
                           [](const Position& q) { return q.x == BreakValue || q.y == BreakValue; }),
            pts.end());
  if (pts.empty()) return false;
  if (closed) pts.push_back(pts.front());
  double total = 0;
  for (size_t i = 1; i < pts.size(); ++i) total += DistanceBetween(pts[i - 1], pts[i]);
  if (total <= 0) {
    out = Position(pts.front().x, pts.front().y, pts.front().z);
    return true;
  }
  double want = std::clamp(static_cast<double>(t), 0.0, 1.0) * total;
  for (size_t i = 1; i < pts.size(); ++i) {
    const double d = DistanceBetween(pts[i - 1], pts[i]);
    if (want <= d || i + 1 == pts.size()) {
      const double f = d > 0 ? std::min(1.0, want / d) : 0.0;
      const Position& a = pts[i - 1];
      const Position& b = pts[i];
      out = Position(Sng(a.x + f * (b.x - a.x)), Sng(a.y + f * (b.y - a.y)), Sng(a.z + f * (b.z - a.z)));
      return true;
    }
    want -= d;
  }
  return false;
}

std::string IdList(const std::vector<std::string>& ids) {
  std::string s;
  for (const std::string& id : ids) {
    if (!s.empty()) s += ",";
    s += id;
  }
  return s;
}

}  // namespace

namespace {
// The integer part of Steps x fraction, kept in range for values of a damaged record.
int StepOf(short steps, float fraction) {
  const double v = static_cast<double>(steps) * fraction;
  if (!std::isfinite(v)) return 0;
  return static_cast<int>(IntPart(std::clamp(v, -1.0e6, 1.0e6)));
}
}  // namespace

int CAnimation::StartStep() const { return StepOf(Steps, TimeFrom); }
int CAnimation::EndStep() const { return StepOf(Steps, TimeTo); }

void CAnimation::Init() {
  if (AniType == 5) {
    InitColor.clear();
    for (const std::string& id : Para2) {
      const DocObject* o = GetObjectById(id);
      InitColor.push_back(o ? o->ForeColor : 0);
    }
    return;
  }
  if (AniType == 4 || AniType == 20 || AniType == 21) return;
  IndexP.clear();
  InitX.clear();
  InitY.clear();
  InitZ.clear();
  auto take = [&](const std::string& id) {
    const Position* p = FindPoint(id);
    if (!p || !Drivable(*p) || SelNum() >= kMaxPoints) return;
    if (std::find(IndexP.begin(), IndexP.end(), p->ID) != IndexP.end()) return;
    IndexP.push_back(p->ID);
    InitX.push_back(p->x);
    InitY.push_back(p->y);
    InitZ.push_back(p->z);
  };
  const int n = std::min(Para2Num(), kMaxBound);
  for (int i = 0; i < n; ++i) {
    const std::string& id = Para2[static_cast<size_t>(i)];
    const std::string tag = id.substr(0, 2);
    if (tag == "PT") {
      take(id);
    } else if (tag == "LN") {
      if (const CLine* l = Doc.Lines.FindById(id)) {
        take(l->pBegin.ID);
        take(l->pEnd.ID);
      }
    } else if (tag == "CR") {
      if (const CCircle* c = Doc.Circles.FindById(id))
        for (const std::string& pid : DefiningPointIds(*c)) take(pid);
    } else if (tag == "RG") {
      if (const CRegion* g = Doc.Regions.FindById(id))
        for (const Position& corner : g->Points) take(corner.ID);
    }
  }
}

void CAnimation::Update() {
  const int start = StartStep(), end = EndStep();
  // The fraction of the run for the frame: 0 before the time range, 1 after.
  float frac;
  if (Step <= 0) frac = 0;
  else if (Step > Steps) frac = 1;
  else if (start < Step && Step <= end) frac = static_cast<float>(Step - start) / static_cast<float>(end - start);
  else if (Step <= start) frac = 0;
  else frac = 1;

  switch (AniType) {
    case 1: {
      const float span = static_cast<float>(end - start);
      const float incX = (RangeTo1 - RangeFrom1) / span;
      const float incY = (RangeTo2 - RangeFrom2) / span;
      const float incZ = (RangeTo3 - RangeFrom3) / span;
      for (int i = 0; i < SelNum(); ++i) {
        Position* p = FindPoint(IndexP[static_cast<size_t>(i)]);
        if (!p) continue;
        const float x0 = InitX[static_cast<size_t>(i)], y0 = InitY[static_cast<size_t>(i)],
                    z0 = InitZ[static_cast<size_t>(i)];
        float dx, dy, dz;
        if (Step <= 0) {
          dx = dy = dz = 0;
        } else if (Step > Steps) {
          dx = RangeTo1, dy = RangeTo2, dz = RangeTo3;
        } else if (start < Step && Step <= end) {
          const float k = static_cast<float>(Step - start);
          dx = k * incX, dy = k * incY, dz = k * incZ;
        } else if (Step <= start) {
          dx = RangeFrom1, dy = RangeFrom2, dz = RangeFrom3;
        } else {
          dx = RangeTo1, dy = RangeTo2, dz = RangeTo3;
        }
        PlacePoint(*p, x0 + dx, y0 + dy, z0 + dz);
      }
      break;
    }
    case 2: {
      const float angle = RangeTo1 * frac * 3.1416f / 180.0f;
      const bool axis = Para1.compare(0, 2, "LN") == 0;
      for (int i = 0; i < SelNum(); ++i) {
        Position* p = FindPoint(IndexP[static_cast<size_t>(i)]);
        if (!p) continue;
        const Position init(InitX[static_cast<size_t>(i)], InitY[static_cast<size_t>(i)], InitZ[static_cast<size_t>(i)]);
        const Position q = axis ? init.RotL3D(Para1, angle) : init.RotateP(Para1, angle);
        PlacePoint(*p, q.x, q.y, q.z);
      }
      break;
    }
    case 3: {
      const Position* c = FindPoint(Para1);
      if (!c) break;
      const float cx = c->x, cy = c->y, cz = c->z;
      const float scale = 1.0f + (RangeTo1 - 1.0f) * frac;
      for (int i = 0; i < SelNum(); ++i) {
        Position* p = FindPoint(IndexP[static_cast<size_t>(i)]);
        if (!p || p->ID == Para1) continue;
        PlacePoint(*p, cx + (InitX[static_cast<size_t>(i)] - cx) * scale, cy + (InitY[static_cast<size_t>(i)] - cy) * scale,
                   cz + (InitZ[static_cast<size_t>(i)] - cz) * scale);
      }
      break;
    }
    case 4: {
      if (Para2.empty()) break;
      Position* p = FindPoint(Para2.front());
      if (!p) break;
      const std::string tag = Para1.substr(0, 2);
      Position q;
      bool ok = false;
      if (tag == "LN") {
        if (const CLine* l = Doc.Lines.FindById(Para1)) {
          q = Position(l->pBegin.x + frac * (l->pEnd.x - l->pBegin.x), l->pBegin.y + frac * (l->pEnd.y - l->pBegin.y),
                       l->pBegin.z + frac * (l->pEnd.z - l->pBegin.z));
          ok = true;
        }
      } else if (tag == "CR") {
        if (const CCircle* c = Doc.Circles.FindById(Para1)) {
          const Position centre = c->Centre();
          const float r = c->Radius();
          const float a = AngleOfSegment(centre, c->PCircleR) + 6.2832f * frac;
          q = Position(centre.x + r * std::cos(a), centre.y + r * std::sin(a), 0);
          ok = true;
        }
      } else if (tag == "AR") {
        if (const CArc* a = Doc.Arcs.FindById(Para1)) {
          const float a0 = AngleOfSegment(a->PCenter, a->pBegin);
          float a1 = AngleOfSegment(a->PCenter, a->pEnd);
          if (a1 < a0) a1 += 6.2832f;
          const float r = a->Radius();
          const float ang = a0 + (a1 - a0) * frac;
          q = Position(a->PCenter.x + r * std::cos(ang), a->PCenter.y + r * std::sin(ang), a->PCenter.z);
          ok = true;
        }
      } else if (tag == "RG") {
        if (const CRegion* g = Doc.Regions.FindById(Para1)) ok = AlongPolyline(g->Points, true, frac, q);
      } else if (tag == "C2") {
        if (const CFunCurve* f = Doc.FunCurves.FindById(Para1)) ok = AlongPolyline(f->GetPathAniPoints(), false, frac, q);
      }
      if (ok) PlacePoint(*p, q.x, q.y, q.z);
      break;
    }
    case 5: {
      if (InitColor.size() != Para2.size()) Init();
      for (size_t i = 0; i < Para2.size(); ++i) {
        const std::string tag = Para2[i].substr(0, 2);
        if (tag != "PT" && tag != "LN" && tag != "CR" && tag != "RG") continue;
        DocObject* o = GetObjectById(Para2[i]);
        if (!o) continue;
        if (Step <= 0) {
          o->ForeColor = InitColor[i];
          continue;
        }
        auto channel = [&](float from, float to) {
          return static_cast<int>(std::clamp(std::lround(from + (to - from) * frac), 0L, 255L));
        };
        o->ForeColor = RGB(channel(RangeFrom1, RangeTo1), channel(RangeFrom2, RangeTo2), channel(RangeFrom3, RangeTo3));
      }
      break;
    }
    case 20:
      RangeTo2 = ParamValueAt(Step);
      BuildNote();
      break;
    default: break;
  }
}

float CAnimation::ParamStep() const {
  if (Para0 > 0) return Para0;
  return (RangeTo1 - RangeFrom1) / static_cast<float>(std::max(1, EndStep() - StartStep()));
}

int CAnimation::ParamIntervals() const {
  const double step = ParamStep();
  if (!(step > 0)) return 1;
  const double n = std::ceil((static_cast<double>(RangeTo1) - RangeFrom1) / step - 1e-4);
  return static_cast<int>(std::clamp(n, 1.0, 32767.0));
}

float CAnimation::ParamValueAt(int step) const {
  const int start = StartStep(), end = EndStep();
  if (step <= start || end <= start) return step > start && end <= start ? RangeTo1 : RangeFrom1;
  if (step > end) return RangeTo1;
  const double frac = static_cast<double>(step - start) / static_cast<double>(end - start);
  if (Para0 <= 0) return static_cast<float>(RangeFrom1 + (RangeTo1 - RangeFrom1) * frac);
  // On the grid of the step, the last frame at the maximum.
  const double k = std::round(frac * ParamIntervals());
  return static_cast<float>(std::min<double>(RangeTo1, RangeFrom1 + k * static_cast<double>(Para0)));
}

int CAnimation::ParamFrame() const {
  const int start = StartStep(), end = EndStep();
  const double step = ParamStep();
  if (end <= start || !(step > 0)) return std::clamp(start, 0, static_cast<int>(Steps));
  const double k = std::clamp(std::round((static_cast<double>(RangeTo2) - RangeFrom1) / step), 0.0,
                              static_cast<double>(ParamIntervals()));
  const long frame = start + std::lround(k / ParamIntervals() * (end - start));
  return static_cast<int>(std::clamp(frame, 0L, static_cast<long>(Steps)));
}

void CAnimation::BuildNote() {
  switch (AniType) {
    case 1:
      Note = IdList(Para2) + " move x: " + SingleToText(RangeTo1) + " y: " + SingleToText(RangeTo2) + " z: " +
             SingleToText(RangeTo3);
      break;
    case 2: Note = IdList(Para2) + " rotate about " + Para1; break;
    case 3: Note = IdList(Para2) + " zoom in(out) " + SingleToText(RangeTo1); break;
    case 4: Note = (Para2.empty() ? std::string() : Para2.front()) + " traces " + Para1; break;
    case 5: Note = IdList(Para2) + " color animation"; break;
    case 20: {
      const int decimals = std::clamp(static_cast<int>(RangeFrom2), 0, 15);
      Note = Para1 + " = " + FormatPattern(RangeTo2, "0." + std::string(static_cast<size_t>(decimals), '0'));
      break;
    }
    default: break;
  }
}

std::string CAnimation::Save() const {
  RecordWriter w(ID);
  w.Add(ACID).Add(AniDialogKind).Add(AniType).Add(TimeFrom).Add(TimeTo).Add(RangeFrom1).Add(RangeTo1);
  w.Add(PosX).Add(PosY).AddFramed(Note);
  w.Add(RangeFrom2).Add(RangeTo2).Add(RangeFrom3).Add(RangeTo3).Add(Steps).Add(Step).Add(Para0);
  w.AddFramed(Para1).Add(Para2Num());
  for (const std::string& id : Para2) w.Add(id);
  w.AddFramed(Para3).AddFramed(Para4).Add(SelNum());
  for (int i = 0; i < SelNum(); ++i) {
    const size_t k = static_cast<size_t>(i);
    w.Add(IndexP[k]).Add(InitX[k]).Add(InitY[k]).Add(InitZ[k]);
  }
  // The player's record goes on after the track: no closing ";;".
  std::string s = w.Close();
  s.resize(s.size() - 2);
  return s;
}

std::unique_ptr<CAnimation> CAnimation::Load(RecordReader& r) {
  auto a = std::make_unique<CAnimation>();
  a->ID = r.Id();
  if (a->ID.size() < 2 || a->ID.compare(0, 2, "AN") != 0) throw RecordError("not a track");
  a->ACID = r.Id();
  r.Short();  // the dialog kind at save time
  a->AniType = r.Int();
  a->TimeFrom = r.Single();
  a->TimeTo = r.Single();
  a->RangeFrom1 = r.Single();
  a->RangeTo1 = r.Single();
  a->PosX = r.Single();
  a->PosY = r.Single();
  a->Note = r.FramedText();
  a->RangeFrom2 = r.Single();
  a->RangeTo2 = r.Single();
  a->RangeFrom3 = r.Single();
  a->RangeTo3 = r.Single();
  a->Steps = r.Short();
  a->Step = r.Short();
  a->Para0 = r.Single();
  a->Para1 = r.FramedText();
  // Para1 names an object for rotation, zoom and path tracks.
  if (a->AniType >= 2 && a->AniType <= 4 && !a->Para1.empty()) a->Para1 = ShiftId(a->Para1, r.base());
  const long bound = r.Long();
  if (bound < 0 || bound > kMaxBound) throw RecordError("bad bound count");
  for (long i = 0; i < bound; ++i) a->Para2.push_back(r.Id());
  a->Para3 = r.FramedText();
  a->Para4 = r.FramedText();
  const long sel = r.Long();
  if (sel < 0 || sel > kMaxPoints) throw RecordError("bad point count");
  for (long i = 0; i < sel; ++i) {
    a->IndexP.push_back(r.Id());
    a->InitX.push_back(r.Single());
    a->InitY.push_back(r.Single());
    a->InitZ.push_back(r.Single());
  }
  if (a->AniType == 5) a->Init();
  if (a->AniType == 20 && a->Para0 <= 0) {
    // Written before parameters kept a step: the value is the frame's, and
    // the step is one frame of its time range.
    a->Update();
    const float step = a->ParamStep();
    if (step > 0) a->Para0 = step;
  }
  return a;
}

void CAnimation::Draw() {
  if (Hide) return;
  glColor3f(0, 0, 0);
  DrawTextAt(PosX + 0.5f, PosY + 0.8f, 0, Note);
  if (Selected) {
    DrawSelectionFrame(PosX, PosY, 1);
  }
}

bool CAnimation::PickRow(float pctX, float pctY) const {
  return !Hide && pctX >= PosX && pctX <= PosX + 15 && pctY >= PosY && pctY <= PosY + 3;
}

bool CAnimation::Pick(const Position&, const Position&, const Position&) {
  const float w = static_cast<float>(std::max(1, CanvasWidth)), h = static_cast<float>(std::max(1, CanvasHeight));
  return PickRow(LastX / w * 100.0f, 100.0f - LastY / h * 100.0f);
}

}  // namespace vt
