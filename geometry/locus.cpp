// CLocus: recording a point's path while its player runs, and drawing it.
#include "geometry/locus.h"

#include <GL/gl.h>

#include <algorithm>
#include <cmath>

#include "document/document.h"
#include "document/numtext.h"
#include "persist/record.h"

namespace vt {

void CLocus::Record() {
  if (Created || PTNum() >= kMaxSamples) return;
  const Position* p = FindPoint(LKID);
  if (!p) return;
  Points.emplace_back(p->x, p->y, p->z);
}

void RecordLoci(const std::string& playerId, bool runEnded) {
  for (CLocus* l : Doc.Locuses) {
    if (l->ACID != playerId || l->Created) continue;
    l->Record();
    if (runEnded) l->Created = true;
  }
}

std::string CLocus::Save() const {
  RecordWriter w(ID);
  w.AddFramed(ACID).Add(static_cast<long>(ForeColor)).Add(static_cast<long>(ForeColor2)).Add(FillStyle);
  w.AddFramed(ColorName).Add(DrawMode).Add(PTNum());
  for (const Position& p : Points) w.Add(p.x).Add(p.y).Add(p.z);
  w.Add(Selected).Add(Hide).Add(!Created).AddFramed(LKID).AddFramed(LKID2);
  return w.Close();
}

std::unique_ptr<CLocus> CLocus::Load(RecordReader& r) {
  auto l = std::make_unique<CLocus>();
  l->ID = r.OwnId();
  l->ACID = r.FramedId();
  l->ForeColor = static_cast<std::uint32_t>(r.Long());
  l->ForeColor2 = static_cast<std::uint32_t>(r.Long());
  l->FillStyle = r.Int();
  l->ColorName = r.FramedText();
  l->DrawMode = r.Int();
  const long n = r.Long();
  if (n < 0 || n > kMaxSamples) throw RecordError("bad sample count");
  l->Points.reserve(static_cast<size_t>(n));
  for (long i = 0; i < n; ++i) {
    const float x = r.Single(), y = r.Single(), z = r.Single();
    l->Points.emplace_back(x, y, z);
  }
  l->Selected = r.Bool();
  l->Hide = r.Bool();
  l->Created = !r.Bool();
  l->LKID = r.FramedId();
  l->LKID2 = r.FramedId();
  return l;
}

void CLocus::Draw() {
  if (Hide || Points.size() < 2) return;
  glPushAttrib(GL_ENABLE_BIT | GL_LINE_BIT | GL_COLOR_BUFFER_BIT);
  glDisable(GL_LIGHTING);
  glEnable(GL_LINE_SMOOTH);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  glHint(GL_LINE_SMOOTH_HINT, GL_NICEST);
  glLineWidth(DrawMode == 2 || DrawMode == 3 ? 2.0f : 1.0f);
  const std::uint32_t c = DrawMode == 4 || DrawMode == 3 ? RGB(255, 0, 0) : ForeColor;
  glColor3ub(static_cast<GLubyte>(c & 0xFF), static_cast<GLubyte>((c >> 8) & 0xFF), static_cast<GLubyte>((c >> 16) & 0xFF));
  glBegin(GL_LINE_STRIP);
  for (const Position& p : Points) glVertex3f(p.x, p.y, p.z);
  glEnd();
  glPopAttrib();
}

void CLocus::GetBox(CBox& box) const {
  for (const Position& p : Points) {
    box.MinX = std::min(box.MinX, p.x);
    box.MaxX = std::max(box.MaxX, p.x);
    box.MinY = std::min(box.MinY, p.y);
    box.MaxY = std::max(box.MaxY, p.y);
    box.MinZ = std::min(box.MinZ, p.z);
    box.MaxZ = std::max(box.MaxZ, p.z);
  }
}

namespace {
// Distance between the segment a-b and the ray through r0, r1 (closest
// approach of the two, the segment clamped).
float SegmentRayDistance(const Position& a, const Position& b, const Position& r0, const Position& r1) {
  const double ux = b.x - a.x, uy = b.y - a.y, uz = b.z - a.z;
  const double vx = r1.x - r0.x, vy = r1.y - r0.y, vz = r1.z - r0.z;
  const double wx = a.x - r0.x, wy = a.y - r0.y, wz = a.z - r0.z;
  const double A = ux * ux + uy * uy + uz * uz, B = ux * vx + uy * vy + uz * vz, C = vx * vx + vy * vy + vz * vz;
  const double D = ux * wx + uy * wy + uz * wz, E = vx * wx + vy * wy + vz * wz;
  const double den = A * C - B * B;
  double s = den > 1e-12 ? (B * E - C * D) / den : 0.0;
  s = std::clamp(s, 0.0, 1.0);
  const double t = C > 1e-12 ? (E + B * s) / C : 0.0;
  const double dx = wx + s * ux - t * vx, dy = wy + s * uy - t * vy, dz = wz + s * uz - t * vz;
  return static_cast<float>(std::sqrt(dx * dx + dy * dy + dz * dz));
}
}  // namespace

bool CLocus::Pick(const Position&, const Position& farPoint, const Position& nearPoint) {
  for (size_t i = 1; i < Points.size(); ++i)
    if (SegmentRayDistance(Points[i - 1], Points[i], nearPoint, farPoint) < 0.12f) return true;
  return false;
}

bool CLocus::BoxSel(float x1, float y1, float x2, float y2) const {
  for (const Position& p : Points)
    if (p.BoxSel(x1, y1, x2, y2)) return true;
  return false;
}

}  // namespace vt
