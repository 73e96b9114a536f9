#include "geometry/extension.h"

#include <cmath>

#include "document/document.h"
#include "document/host.h"
#include "document/numtext.h"
#include "geometry/propagation.h"
#include "geometry/region.h"

namespace vt {

const char* const kExtensionNeedsSameZ = "The start point and end point of the given line must have the same z value.";

namespace {

// Q turned about C by the angle in the plane of constant z, by the formula of
// Position::RotateP.
Position TurnAbout(const Position& q, const Position& c, double a) {
  const double ca = std::cos(a), sa = std::sin(a);
  const double nx = q.x * ca - q.y * sa + (1 - ca) * c.x + c.y * sa;
  const double ny = q.y * ca + q.x * sa + (1 - ca) * c.y - c.x * sa;
  return Position(Sng(nx), Sng(ny), q.z);
}

Position Beyond(const Position& start, const Position& end, double distance, double length) {
  const double k = distance / length;
  return Position(Sng(end.x + (static_cast<double>(end.x) - start.x) * k),
                  Sng(end.y + (static_cast<double>(end.y) - start.y) * k),
                  Sng(end.z + (static_cast<double>(end.z) - start.z) * k));
}

}  // namespace

bool DirectedExtension(const Position& start, const Position& end, float angle, float distance, Position& point,
                       Position& farPoint) {
  if (start.z != end.z) {
    host().MsgBox(kExtensionNeedsSameZ, "Note", MsgButtons::OK, MsgIcon::Exclamation);
    return false;
  }
  const double dx = static_cast<double>(end.x) - start.x, dy = static_cast<double>(end.y) - start.y;
  const double length = std::sqrt(dx * dx + dy * dy);
  if (length == 0) return false;
  const Position q = TurnAbout(Beyond(start, end, distance, length), end, angle);
  const Position f = TurnAbout(Beyond(start, end, static_cast<double>(distance) + 500, length), end, angle);
  point.Set(q.x, q.y, q.z);
  farPoint.Set(f.x, f.y, f.z);
  return true;
}

bool VerticalExtension(const CRegion& region, const Position& base, float height, Position& point,
                       Position& farPoint) {
  if (region.PTNum() < 3) return false;
  const Position& p0 = region.Points[0];
  const Position& p1 = region.Points[1];
  const Position& p2 = region.Points[2];
  const double ux = static_cast<double>(p1.x) - p0.x, uy = static_cast<double>(p1.y) - p0.y,
               uz = static_cast<double>(p1.z) - p0.z;
  const double vx = static_cast<double>(p2.x) - p0.x, vy = static_cast<double>(p2.y) - p0.y,
               vz = static_cast<double>(p2.z) - p0.z;
  // The plane's coefficients A x + B y + C z = D.
  const double A = uy * vz - uz * vy, B = uz * vx - ux * vz, C = ux * vy - uy * vx;
  double nx, ny, nz;
  if (C != 0) {
    // The second point on the normal: z raised by 0.1, x and y solved.
    const double t = 0.1 / C;
    nx = A * t;
    ny = B * t;
    nz = 0.1;
  } else {
    // A vertical plane: straight along the normal.
    nx = A;
    ny = B;
    nz = 0;
  }
  const double len = std::sqrt(nx * nx + ny * ny + nz * nz);
  if (len == 0) return false;
  auto along = [&](double d) {
    const double k = d / len;
    return Position(Sng(base.x + nx * k), Sng(base.y + ny * k), Sng(base.z + nz * k));
  };
  const Position q = along(height), f = along(100);
  point.Set(q.x, q.y, q.z);
  farPoint.Set(f.x, f.y, f.z);
  return true;
}

bool RefreshExtensionPoint(Position& ext) {
  Position q(ext.x, ext.y, ext.z);
  Position far(0, 0, 0);
  if (ext.ptype == 11) {
    const Position* start = FindPoint(ext.LKID);
    const Position* end = FindPoint(ext.LKID2);
    if (!start || !end || !DirectedExtension(*start, *end, ext.Para1, ext.Para2, q, far)) return false;
  } else if (ext.ptype == 12) {
    const Position* base = FindPoint(ext.LKID);
    const CRegion* g = Doc.Regions.FindById(ext.LKID2);
    if (!base || !g || !VerticalExtension(*g, *base, ext.Para1, q, far)) return false;
  } else {
    return false;
  }
  MovePointTo(ext, q.x, q.y, q.z);
  if (Position* f = FindPoint(ext.LKID3)) MovePointTo(*f, far.x, far.y, far.z);
  return true;
}

void RefreshExtensionOf(const Position& moved) {
  if (moved.LKID4.empty() || moved.LKID4 == moved.ID) return;
  Position* ext = FindPoint(moved.LKID4);
  if (ext && (ext->ptype == 11 || ext->ptype == 12)) RefreshExtensionPoint(*ext);
}

}  // namespace vt
