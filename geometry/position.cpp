#include "geometry/position.h"

#include <cmath>

#include "document/document.h"
#include "document/numtext.h"
#include "geometry/geom.h"
#include "geometry/line.h"
#include "geometry/region.h"
#include "persist/record.h"
#include "render/view_state.h"

namespace vt {

std::string CLinkObj::Save() const {
  return ID + " " + IntToText(GEType) + " " + IntToText(Pos) + " " + IntToText(CType) + " " +
         IntToText(AType) + " ";
}

bool DocObject::Pick(const Position&, const Position&, const Position&) { return false; }

Position::Position() { ForeColor = RGB(255, 0, 0); }

Position::Position(float x_, float y_, float z_) : x(x_), y(y_), z(z_) { ForeColor = RGB(255, 0, 0); }

void Position::AddLink(const CLinkObj& link) {
  if (LinkNum() >= kMaxLinks) throw RunTimeError("A point can be held by at most 20 objects.");
  LinkObjs.push_back(link);
}

void Position::AddChild(const std::string& id) {
  if (ChildNum() >= kMaxChildren) throw RunTimeError("A point can carry at most 30 points.");
  Child.push_back(id);
}

void Position::AddParent(const std::string& id) {
  if (ParentNum() >= kMaxParents) throw RunTimeError("A point can hang on at most 30 points.");
  Parent.push_back(id);
}

Position& CCarrier::AddStruP(const Position& p) {
  if (StruPNum() >= kMaxStru) throw RunTimeError("An object can carry at most 30 points.");
  StruP.push_back(p);
  return StruP.back();
}

// ---- record -------------------------------------------------------------------

std::string Position::Save() const {
  RecordWriter w(ID);
  w.Add(x).Add(y).Add(z).Add(ptype).Add(Size).Add(static_cast<long>(ForeColor)).Add(PointAuxWord)
      .Add(Symbol).Add(DrawMode).AddFramed(PLabel).Add(Selected).Add(Hide).Add(HideLabel)
      .Add(LinkNum());
  for (const CLinkObj& l : LinkObjs) {
    w.Add(l.ID).Add(l.GEType).Add(l.Pos).Add(l.CType).Add(l.AType);
  }
  w.AddFramed(LKID).AddFramed(LKID2).AddFramed(LKID3).AddFramed(LKID4).Add(Pos).Add(ChildNum());
  for (const std::string& c : Child) w.Add(c);
  w.Add(ParentNum());
  for (const std::string& p : Parent) w.Add(p);
  w.Add(Para1).Add(Para2).Add(Para3).Add(MoveType).Add(TransType);
  return w.Close();
}

std::unique_ptr<Position> Position::Load(RecordReader& r) {
  auto p = std::make_unique<Position>();
  p->ID = r.OwnId();
  p->x = r.Single();
  p->y = r.Single();
  p->z = r.Single();
  p->ptype = r.Int();
  p->Size = r.Short();
  p->ForeColor = static_cast<std::uint32_t>(r.Long());
  p->PointAuxWord = r.Int();
  p->Symbol = r.Int();
  p->DrawMode = r.Int();
  p->PLabel = r.FramedText();
  p->Selected = r.Bool();
  p->Hide = r.Bool();
  p->HideLabel = r.Bool();
  int links = r.Int();
  if (links < 0 || links > kMaxLinks) throw RecordError("too many links");
  for (int i = 0; i < links; ++i) {
    CLinkObj l;
    l.ID = r.Id();
    l.GEType = r.Short();
    l.Pos = r.Short();
    l.CType = r.Int();
    l.AType = r.Int();
    p->LinkObjs.push_back(l);
  }
  p->LKID = r.FramedId();
  p->LKID2 = r.FramedId();
  p->LKID3 = r.FramedId();
  p->LKID4 = r.FramedId();
  p->Pos = r.Short();
  int children = r.Int();
  if (children < 0 || children > kMaxChildren) throw RecordError("too many children");
  for (int i = 0; i < children; ++i) p->Child.push_back(r.Id());
  int parents = r.Int();
  if (parents < 0 || parents > kMaxParents) throw RecordError("too many parents");
  for (int i = 0; i < parents; ++i) p->Parent.push_back(r.Id());
  p->Para1 = r.Single();
  p->Para2 = r.Single();
  p->Para3 = r.Single();
  p->MoveType = r.Int();
  p->TransType = r.Int();
  return p;
}

// ---- box and pick -------------------------------------------------------------

void Position::GetBox(CBox& box) const {
  if (x < box.MinX) box.MinX = x;
  if (x > box.MaxX) box.MaxX = x;
  if (y < box.MinY) box.MinY = y;
  if (y > box.MaxY) box.MaxY = y;
}

bool Position::Pick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint) {
  return Pick(nearPoint, farPoint);
}

bool Position::Pick(const Position& rayStart, const Position& rayEnd) const {
  // A z of magnitude above 900 (the far end of the ray in a flat view) counts
  // as 0 in the distance; measured as drawn, so that a space scene's z scale
  // does not push the far end of its ray past the mark.
  const double drawnZ = DrawnScale(2);
  auto zOf = [drawnZ](float v) { return std::fabs(v * drawnZ) > 900 ? 0.0 : static_cast<double>(v); };
  const double sz = zOf(rayStart.z), ez = zOf(rayEnd.z), pz = zOf(z);
  double dx = rayEnd.x - rayStart.x, dy = rayEnd.y - rayStart.y, dz = ez - sz;
  double ox = x - rayStart.x, oy = y - rayStart.y, oz = pz - sz;
  double len2 = dx * dx + dy * dy + dz * dz;
  double t = len2 > 0 ? (ox * dx + oy * dy + oz * dz) / len2 : 0.0;
  double cx = ox - t * dx, cy = oy - t * dy, cz = oz - t * dz;
  return std::sqrt(cx * cx + cy * cy + cz * cz) < 0.2;
}

// ---- images -------------------------------------------------------------------

Position Position::Move(int moveType, float a, float b, float c, const std::string& id3,
                        const std::string& id4) const {
  Position r(x, y, z);
  switch (moveType) {
    case 1:
      r.x = Sng(x + b * std::cos(a));
      r.y = Sng(y + b * std::sin(a));
      break;
    case 2:
      r.x = x + a;
      r.y = y + b;
      r.z = z + c;
      break;
    case 3: {
      const Position* p3 = FindPoint(id3);
      const Position* p4 = FindPoint(id4);
      if (p3 && p4) {
        r.x = x + (p4->x - p3->x);
        r.y = y + (p4->y - p3->y);
        r.z = z + (p4->z - p3->z);
      }
      break;
    }
    default:
      break;
  }
  return r;
}

Position Position::Zoom(float factor) const { return Position(x * factor, y * factor, z * factor); }

Position Position::RotateP(const std::string& centreId, float angle) const {
  const Position* c = FindPoint(centreId);
  if (!c) return Position(x, y, z);
  double ca = std::cos(angle), sa = std::sin(angle);
  double cx = c->x, cy = c->y;
  double nx = x * ca - y * sa + (1 - ca) * cx + cy * sa;
  double ny = y * ca + x * sa + (1 - ca) * cy - cx * sa;
  return Position(Sng(nx), Sng(ny), z);
}

namespace {
// The point as far beyond the centre as it lies before it.
Position ReflectThrough(const Position& p, const Position& centre) {
  float d = DistanceBetween(p, centre);
  if (d == 0) return Position(centre.x, centre.y, centre.z);
  return PointBeyond(p, centre, d);
}
}  // namespace

Position Position::MirrorP(const std::string& pointId) const {
  const Position* c = FindPoint(pointId);
  if (!c) return Position(x, y, z);
  return ReflectThrough(*this, *c);
}

Position Position::MirrorL(const std::string& lineId) const {
  const CLine* l = Doc.Lines.FindById(lineId);
  if (!l) return Position(x, y, z);
  return ReflectThrough(*this, FootOnLine(*this, l->pBegin, l->pEnd));
}

Position Position::MirrorR(const std::string& regionId) const {
  const CRegion* rg = Doc.Regions.FindById(regionId);
  if (!rg) return Position(x, y, z);
  return ReflectThrough(*this, FootOnPlane(*this, *rg));
}

Position Position::RotL3D(const std::string& lineId, float angle) const {
  const CLine* l = Doc.Lines.FindById(lineId);
  if (!l) return Position(x, y, z);
  return RotateAboutLine(*this, *l, angle);
}

Position* Position::MakeImage(int flag, const Position& image, int transType, int moveType,
                              float p1, float p2, float p3, const std::string& lk2,
                              const std::string& lk3, const std::string& lk4) {
  if (flag == 1) {
    Set(image.x, image.y, image.z);
    return nullptr;
  }
  // The source's child list is checked first, so a full list leaves no
  // half-made image behind.
  if (ChildNum() >= kMaxChildren) throw RunTimeError("A point can carry at most 30 points.");
  std::string id = NewObjectId("PT");
  Position* img = Doc.Points.Add(id, image.x, image.y, image.z, 10, ID, lk2, 0, id);
  img->PLabel = PLabel + "'";
  img->DrawMode = 1;
  img->TransType = transType;
  img->MoveType = moveType;
  img->Para1 = p1;
  img->Para2 = p2;
  img->Para3 = p3;
  img->LKID3 = lk3;
  img->LKID4 = lk4;
  AddChild(id);
  return img;
}

Position* Position::Move0(int flag, int moveType, float a, float b, float c, const std::string& id3,
                          const std::string& id4) {
  return MakeImage(flag, Move(moveType, a, b, c, id3, id4), 1, moveType, a, b, c, "", id3, id4);
}

Position* Position::Zoom0(int flag, float factor) {
  return MakeImage(flag, Zoom(factor), 3, 0, factor, 0, 0, "", "", "");
}

Position* Position::RotateP0(int flag, const std::string& centreId, float angle) {
  return MakeImage(flag, RotateP(centreId, angle), 2, 0, angle, 0, 0, centreId, "", "");
}

Position* Position::RotL3D0(int flag, const std::string& lineId, float angle) {
  return MakeImage(flag, RotL3D(lineId, angle), 2, 0, angle, 0, 0, lineId, "", "");
}

Position* Position::MirrorP0(int flag, const std::string& pointId) {
  return MakeImage(flag, MirrorP(pointId), 4, 0, 0, 0, 0, pointId, "", "");
}

Position* Position::MirrorL0(int flag, const std::string& lineId) {
  return MakeImage(flag, MirrorL(lineId), 4, 0, 0, 0, 0, lineId, "", "");
}

Position* Position::MirrorR0(int flag, const std::string& regionId) {
  return MakeImage(flag, MirrorR(regionId), 4, 0, 0, 0, 0, regionId, "", "");
}

}  // namespace vt
