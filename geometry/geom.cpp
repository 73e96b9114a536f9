#include "geometry/geom.h"

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
Position At(V3 v) { return Position(static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)); }
}  // namespace

float DistanceBetween(const Position& p, const Position& q) {
  V3 d = Sub(Of(p), Of(q));
  return static_cast<float>(std::sqrt(Dot(d, d)));
}

Position PointBeyond(const Position& a, const Position& b, float d) {
  V3 dir = Sub(Of(b), Of(a));
  double len = std::sqrt(Dot(dir, dir));
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

Position RotateAboutLine(const Position& p, const CLine& line, float angle) {
  V3 a = Of(line.pBegin);
  V3 k = Sub(Of(line.pEnd), a);
  double len = std::sqrt(Dot(k, k));
  if (len == 0) return At(Of(p));
  k = Mul(k, 1.0 / len);
  V3 v = Sub(Of(p), a);
  double c = std::cos(angle), s = std::sin(angle);
  // Rodrigues: v c + (k x v) s + k (k . v)(1 - c).
  V3 r = Add(Add(Mul(v, c), Mul(Cross(k, v), s)), Mul(k, Dot(k, v) * (1 - c)));
  return At(Add(a, r));
}

}  // namespace vt
