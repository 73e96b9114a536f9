#include "geometry/geom.h"

#include <algorithm>
#include <cmath>

#include "geometry/line.h"
#include "geometry/region.h"

namespace vt {

namespace {

struct V3 {
  double x, y, z;
};
V3 Of(const Position& p) { return {p.x, p.y, p.z}; }
V3 Sub(V3 a, V3 b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
V3 Add(V3 a, V3 b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
V3 Mul(V3 a, double k) { return {a.x * k, a.y * k, a.z * k}; }
double Dot(V3 a, V3 b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
V3 Cross(V3 a, V3 b) { return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x}; }
double Len(V3 a) { return std::sqrt(Dot(a, a)); }
Position At(V3 v) {
  return Position(static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z));
}
Position Mean3(const Position& a, const Position& b, const Position& c) {
  return At(Mul(Add(Add(Of(a), Of(b)), Of(c)), 1.0 / 3.0));
}

// Roots of A x + B y + C = 0 with x^2 + y^2 = R^2 (the circle about the
// origin), first root first: the count, 0 to 2.
int CenteredLineCircle(double A, double B, double C, double R, bool touching, double& x1, double& y1,
                       double& x2, double& y2) {
  if (A == 0 && B == 0) return 0;
  if (A == 0) {
    double y = -C / B;
    double x2sq = R * R - y * y;
    if (touching && x2sq < 0) x2sq = 0;
    if (x2sq < 0) return 0;
    y1 = y2 = y;
    if (x2sq == 0) {
      x1 = 0;
      return 1;
    }
    x1 = std::sqrt(x2sq);
    x2 = -x1;
    return 2;
  }
  if (B == 0) {
    double x = -C / A;
    double y2sq = R * R - x * x;
    if (touching && y2sq < 0) y2sq = 0;
    if (y2sq < 0) return 0;
    x1 = x2 = x;
    if (y2sq == 0) {
      y1 = 0;
      return 1;
    }
    y1 = std::sqrt(y2sq);
    y2 = -y1;
    return 2;
  }
  double ab = A * A + B * B;
  double disc = B * B * C * C - (C * C - A * A * R * R) * ab;
  if (touching && disc < 0) disc = 0;
  if (disc < 0) return 0;
  if (disc == 0) {
    y1 = -B * C / ab;
    x1 = (-C - B * y1) / A;
    return 1;
  }
  double root = std::sqrt(disc);
  y1 = (-B * C + root) / ab;
  y2 = (-B * C - root) / ab;
  x1 = (-C - B * y1) / A;
  x2 = (-C - B * y2) / A;
  return 2;
}

}  // namespace

float DistanceBetween(const Position& p, const Position& q) {
  return static_cast<float>(Len(Sub(Of(p), Of(q))));
}

float AngleOfSegment(const Position& p, const Position& q) {
  double dy = static_cast<double>(p.y) - q.y;
  double dx = static_cast<double>(p.x) - q.x;
  if (dx == 0) dx = 0.0001;  // a vertical segment: the denominator is 0.0001
  double a = std::atan(std::fabs(dy) / std::fabs(dx));
  if (dy >= 0 && dx >= 0) return static_cast<float>(a);
  if (dy >= 0 && dx < 0) return static_cast<float>(kPi - a);
  if (dy < 0 && dx < 0) return static_cast<float>(a + kPi);
  return static_cast<float>(kTwoPi - a);
}

Position PointBeyond(const Position& a, const Position& b, float d) {
  V3 dir = Sub(Of(b), Of(a));
  double len = Len(dir);
  if (len == 0) return At(Of(b));
  return At(Add(Of(b), Mul(dir, d / len)));
}

Position FootOnLine(const Position& p, const Position& a, const Position& b) {
  V3 dir = Sub(Of(b), Of(a));
  double len2 = Dot(dir, dir);
  if (len2 == 0) return At(Of(a));
  double t = Dot(Sub(Of(p), Of(a)), dir) / len2;
  return At(Add(Of(a), Mul(dir, t)));
}

Position FootOnPlane(const Position& p, const CRegion& region) {
  if (region.PTNum() < 3) return At(Of(p));
  V3 a = Of(region.Points[0]);
  V3 n = Cross(Sub(Of(region.Points[1]), a), Sub(Of(region.Points[2]), a));
  double n2 = Dot(n, n);
  if (n2 == 0) return At(Of(p));
  double t = Dot(Sub(Of(p), a), n) / n2;
  return At(Sub(Of(p), Mul(n, t)));
}

Position ProjectOnLine(const Position& p, const Position& a, const Position& b, int lt, double* tOut) {
  V3 dir = Sub(Of(b), Of(a));
  double len2 = Dot(dir, dir);
  double t = len2 == 0 ? 0.0 : Dot(Sub(Of(p), Of(a)), dir) / len2;
  if (tOut) *tOut = t;
  if (t < 0 && (lt == 1 || lt == 3 || lt == 4)) return At(Of(a));
  if (t > 1 && (lt == 1 || lt == 4)) return At(Of(b));
  return At(Add(Of(a), Mul(dir, t)));
}

bool PointOnObject(const CLine& line, const Position& p) {
  V3 dir = Sub(Of(line.pEnd), Of(line.pBegin));
  double len2 = Dot(dir, dir);
  if (line.lt == 2) return true;
  if (len2 == 0) return Len(Sub(Of(p), Of(line.pBegin))) == 0;
  double t = Dot(Sub(Of(p), Of(line.pBegin)), dir) / len2;
  const double eps = 1e-6;  // roots computed in single precision
  if (line.lt == 3) return t >= -eps;
  return t >= -eps && t <= 1 + eps;
}

int LineLine(const Position& a1, const Position& b1, const Position& a2, const Position& b2, Position& result) {
  double A1 = static_cast<double>(b1.y) - a1.y, B1 = static_cast<double>(a1.x) - b1.x;
  double C1 = A1 * a1.x + B1 * a1.y;
  double A2 = static_cast<double>(b2.y) - a2.y, B2 = static_cast<double>(a2.x) - b2.x;
  double C2 = A2 * a2.x + B2 * a2.y;
  double det = A1 * B2 - A2 * B1;
  if (std::fabs(det) <= 1e-6) return 0;
  result.x = static_cast<float>((C1 * B2 - C2 * B1) / det);
  result.y = static_cast<float>((A1 * C2 - A2 * C1) / det);
  return 1;
}

int LineLine(const CLine& l1, const CLine& l2, Position& result) {
  return LineLine(l1.pBegin, l1.pEnd, l2.pBegin, l2.pEnd, result);
}

int LineRegion(const Position& a, const Position& b, const Position& p0, const Position& p1,
               const Position& p2, Position& result) {
  V3 n = Cross(Sub(Of(p1), Of(p0)), Sub(Of(p2), Of(p0)));
  if (Dot(n, n) == 0) return 0;
  V3 d = Sub(Of(b), Of(a));
  double denom = Dot(n, d);
  if (denom == 0) return 0;
  double t = Dot(n, Sub(Of(p0), Of(a))) / denom;
  result = At(Add(Of(a), Mul(d, t)));
  return 1;
}

int LineRegion(const Position& a, const Position& b, const CRegion& region, Position& result) {
  if (region.PTNum() < 3) return 0;
  return LineRegion(a, b, region.Points[0], region.Points[1], region.Points[2], result);
}

int LineCircle(const CLine& line, float radius, const Position& centre, Position& first, Position& second) {
  double cx = centre.x, cy = centre.y;
  double x1 = line.pBegin.x - cx, y1 = line.pBegin.y - cy;
  double x2 = line.pEnd.x - cx, y2 = line.pEnd.y - cy;
  double A = y2 - y1, B = x1 - x2;
  double C = -(A * x1 + B * y1);
  double rx1 = 0, ry1 = 0, rx2 = 0, ry2 = 0;
  int n = CenteredLineCircle(A, B, C, radius, false, rx1, ry1, rx2, ry2);
  if (n == 0) return 0;
  Position r1(static_cast<float>(rx1 + cx), static_cast<float>(ry1 + cy), centre.z);
  if (n == 1) {
    if (!PointOnObject(line, r1)) return 0;
    first.Set(r1.x, r1.y, r1.z);
    return 1;
  }
  Position r2(static_cast<float>(rx2 + cx), static_cast<float>(ry2 + cy), centre.z);
  bool on1 = PointOnObject(line, r1), on2 = PointOnObject(line, r2);
  if (on1) first.Set(r1.x, r1.y, r1.z);
  if (on2) second.Set(r2.x, r2.y, r2.z);
  if (on1 && on2) return 4;
  if (on1) return 2;
  if (on2) return 3;
  return 0;
}

int CircleRelation(const Position& c1, float r1, const Position& c2, float r2) {
  float dx = c1.x - c2.x, dy = c1.y - c2.y;
  float d = std::sqrt(dx * dx + dy * dy);
  float sum = r1 + r2, diff = std::fabs(r1 - r2);
  if (d > sum) return 1;
  if (d == sum) return 2;
  if (d < diff) return 5;
  if (d == diff) return 4;
  return 3;
}

int CircleCircle(const Position& c1, float r1, const Position& c2, float r2, Position& first, Position& second) {
  int rel = CircleRelation(c1, r1, c2, r2);
  if (rel == 1 || rel == 5) return 0;
  bool touching = rel == 2 || rel == 4;
  double x1 = c1.x, y1 = c1.y, x2 = c2.x, y2 = c2.y;
  // The radical line A x + B y = K, moved so that c1 is the origin.
  double A = 2 * (x2 - x1), B = 2 * (y2 - y1);
  double K = x2 * x2 + y2 * y2 - x1 * x1 - y1 * y1 + static_cast<double>(r1) * r1 - static_cast<double>(r2) * r2;
  double C = A * x1 + B * y1 - K;
  double rx1 = 0, ry1 = 0, rx2 = 0, ry2 = 0;
  int n = CenteredLineCircle(A, B, C, r1, touching, rx1, ry1, rx2, ry2);
  if (n == 0) return 0;
  first.Set(static_cast<float>(rx1 + x1), static_cast<float>(ry1 + y1), c1.z);
  if (n == 1 || touching) return 1;
  second.Set(static_cast<float>(rx2 + x1), static_cast<float>(ry2 + y1), c1.z);
  return 2;
}

int TangentPoints(const Position& c, float r, const Position& p, Position& first, Position& second) {
  Position m((p.x + c.x) / 2, (p.y + c.y) / 2, c.z);
  float dx = p.x - c.x, dy = p.y - c.y;
  float rm = std::sqrt(dx * dx + dy * dy) / 2;
  return CircleCircle(m, rm, c, r, first, second);
}

bool CircleFromThreePoints(const Position& a, const Position& b, const Position& c, Position& centre, float& radius) {
  V3 u = Sub(Of(a), Of(c)), v = Sub(Of(b), Of(c));
  V3 n = Cross(u, v);
  double n2 = Dot(n, n);
  if (n2 == 0) return false;
  V3 w = Sub(Mul(v, Dot(u, u)), Mul(u, Dot(v, v)));
  V3 o = Add(Of(c), Mul(Cross(w, n), 1.0 / (2 * n2)));
  centre = At(o);
  radius = static_cast<float>(Len(Sub(Of(a), o)));
  return true;
}

std::vector<Position> SpatialCirclePoints(const Position& centre, const Position& axis, float radius, int count) {
  std::vector<Position> out;
  if (count < 1) return out;
  V3 k = Of(axis);
  double kl = Len(k);
  k = kl > 0 ? Mul(k, 1 / kl) : V3{0, 0, 1};
  // A first direction in the circle's plane: across the axis and z, or x
  // when the axis is z itself.
  V3 u = Cross(k, V3{0, 0, 1});
  if (Len(u) < 1e-9) u = V3{1, 0, 0};
  u = Mul(u, 1 / Len(u));
  V3 v = Cross(k, u);
  double step = kTwoPi / count;
  for (int i = 0; i <= count; ++i) {
    double a = i * step;
    out.push_back(At(Add(Of(centre), Add(Mul(u, radius * std::cos(a)), Mul(v, radius * std::sin(a))))));
  }
  return out;
}

Position TriCircumcenter(const Position& a, const Position& b, const Position& c, bool* ok) {
  Position centre;
  float r;
  bool good = CircleFromThreePoints(a, b, c, centre, r);
  if (ok) *ok = good;
  return good ? centre : Mean3(a, b, c);
}

Position TriIncenter(const Position& a, const Position& b, const Position& c, bool* ok) {
  // The bisectors of two corners cross where each corner weighs with the
  // length of the side facing it.
  double la = Len(Sub(Of(b), Of(c))), lb = Len(Sub(Of(c), Of(a))), lc = Len(Sub(Of(a), Of(b)));
  double sum = la + lb + lc;
  bool good = Len(Cross(Sub(Of(b), Of(a)), Sub(Of(c), Of(a)))) > 0;
  if (ok) *ok = good;
  if (!good || sum == 0) return Mean3(a, b, c);
  return At(Mul(Add(Add(Mul(Of(a), la), Mul(Of(b), lb)), Mul(Of(c), lc)), 1 / sum));
}

Position TriOrthocenter(const Position& a, const Position& b, const Position& c, bool* ok) {
  bool good;
  Position o = TriCircumcenter(a, b, c, &good);
  if (ok) *ok = good;
  if (!good) return Mean3(a, b, c);
  // The altitudes cross at A + B + C - 2 O.
  return At(Sub(Add(Add(Of(a), Of(b)), Of(c)), Mul(Of(o), 2)));
}

Position TriBarycenter(const Position& a, const Position& b, const Position& c, bool* ok) {
  if (ok) *ok = Len(Cross(Sub(Of(b), Of(a)), Sub(Of(c), Of(a)))) > 0;
  return Mean3(a, b, c);
}

Position TriFermatPoint(const Position& a, const Position& b, const Position& c, bool* ok) {
  if (ok) *ok = true;
  auto total = [&](double x, double y) {
    auto d = [&](const Position& p) { return std::hypot(x - p.x, y - p.y); };
    return d(a) + d(b) + d(c);
  };
  double x = (static_cast<double>(a.x) + b.x + c.x) / 3.0;
  double y = (static_cast<double>(a.y) + b.y + c.y) / 3.0;
  double z = (static_cast<double>(a.z) + b.z + c.z) / 3.0;
  // First step: half the longest side.
  double step = std::max({std::hypot(double(a.x) - b.x, double(a.y) - b.y), std::hypot(double(b.x) - c.x, double(b.y) - c.y),
                          std::hypot(double(c.x) - a.x, double(c.y) - a.y)}) / 2;
  while (step >= 0.001) {
    for (int round = 0; round < 10; ++round) {
      double bestX = x, bestY = y, best = total(x, y);
      for (int i = -1; i <= 1; ++i)
        for (int j = -1; j <= 1; ++j) {
          double s = total(x + i * step, y + j * step);
          if (s < best) {
            best = s;
            bestX = x + i * step;
            bestY = y + j * step;
          }
        }
      if (bestX == x && bestY == y) break;
      x = bestX;
      y = bestY;
    }
    step /= 2;
  }
  return Position(static_cast<float>(x), static_cast<float>(y), static_cast<float>(z));
}

Position RotateAboutLine(const Position& p, const CLine& line, float angle) {
  V3 a = Of(line.pBegin);
  V3 k = Sub(Of(line.pEnd), a);
  double len = Len(k);
  if (len == 0) return At(Of(p));
  k = Mul(k, 1.0 / len);
  V3 v = Sub(Of(p), a);
  double c = std::cos(angle), s = std::sin(angle);
  // Rodrigues: v c + (k x v) s + k (k . v)(1 - c).
  V3 r = Add(Add(Mul(v, c), Mul(Cross(k, v), s)), Mul(k, Dot(k, v) * (1 - c)));
  return At(Add(a, r));
}

double DistanceRayLine(const Position& r1, const Position& r2, const Position& a, const Position& b) {
  V3 d1 = Sub(Of(r2), Of(r1)), d2 = Sub(Of(b), Of(a));
  V3 w = Sub(Of(a), Of(r1));
  double l1 = Len(d1), l2 = Len(d2);
  if (l1 == 0 && l2 == 0) return Len(w);
  if (l1 == 0) return Len(Cross(Sub(Of(r1), Of(a)), d2)) / l2;
  if (l2 == 0) return Len(Cross(w, d1)) / l1;
  V3 n = Cross(d1, d2);
  double nl = Len(n);
  if (nl < 1e-12 * l1 * l2) return Len(Cross(w, d1)) / l1;  // parallel
  return std::fabs(Dot(w, n)) / nl;
}

bool RayMeetsBox(const Position& r1, const Position& r2, const CBox& box, double margin) {
  const double lo[3] = {box.MinX - margin, box.MinY - margin, box.MinZ - margin};
  const double hi[3] = {box.MaxX + margin, box.MaxY + margin, box.MaxZ + margin};
  const double p[3] = {r1.x, r1.y, r1.z};
  const double d[3] = {static_cast<double>(r2.x) - r1.x, static_cast<double>(r2.y) - r1.y,
                       static_cast<double>(r2.z) - r1.z};
  double t0 = 0, t1 = 1;
  for (int i = 0; i < 3; ++i) {
    if (d[i] == 0) {
      if (p[i] < lo[i] || p[i] > hi[i]) return false;
      continue;
    }
    double ta = (lo[i] - p[i]) / d[i], tb = (hi[i] - p[i]) / d[i];
    if (ta > tb) std::swap(ta, tb);
    t0 = std::max(t0, ta);
    t1 = std::min(t1, tb);
    if (t0 > t1) return false;
  }
  return true;
}

bool RayHitsPolygon(const Position& r1, const Position& r2, const std::vector<Position>& corners) {
  if (corners.size() < 3) return false;
  Position hit;
  if (!LineRegion(r1, r2, corners[0], corners[1], corners[2], hit)) return false;
  V3 n = Cross(Sub(Of(corners[1]), Of(corners[0])), Sub(Of(corners[2]), Of(corners[0])));
  double sum = 0;
  for (size_t i = 0; i < corners.size(); ++i) {
    V3 u = Sub(Of(corners[i]), Of(hit));
    V3 v = Sub(Of(corners[(i + 1) % corners.size()]), Of(hit));
    if (Len(u) == 0 || Len(v) == 0) return true;  // on a corner
    sum += std::atan2(Dot(n, Cross(u, v)) / Len(n), Dot(u, v));
  }
  return std::fabs(sum) > M_PI;
}

}  // namespace vt
