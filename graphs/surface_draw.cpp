// Drawing of CSurface: the space curve, the quads of a surface with their
// normals, colours, texture and transparency, the implicit surface through
// marching cubes, the field displays and the tangent planes and normals.
// The mesh routines at the top serve the swept surfaces too.
#include <GL/gl.h>

#include <algorithm>
#include <cmath>

#include "document/globals.h"
#include "graphs/contour.h"
#include "graphs/surface.h"
#include "render/frame.h"
#include "render/material.h"
#include "render/strokes.h"
#include "render/texture.h"

namespace vt {

// ---- mesh routines ---------------------------------------------------------------------

void FaceNormals(const std::vector<Position>& grid, int su, int sv, std::vector<Vec3>& face) {
  face.assign(static_cast<size_t>(std::max(su, 0)) * static_cast<size_t>(std::max(sv, 0)), Vec3{});
  if (grid.size() < GridIndex(su, sv, sv) + 1) return;
  for (int i = 0; i < su; ++i) {
    for (int j = 0; j < sv; ++j) {
      const Position& p00 = grid[GridIndex(i, j, sv)];
      const Position& p11 = grid[GridIndex(i + 1, j + 1, sv)];
      const Position& p10 = grid[GridIndex(i + 1, j, sv)];
      const Position& p01 = grid[GridIndex(i, j + 1, sv)];
      if (IsHolePosition(p00) || IsHolePosition(p11) || IsHolePosition(p10) || IsHolePosition(p01)) continue;
      // The diagonals (i, j) -> (i + 1, j + 1) and (i + 1, j) -> (i, j + 1).
      const double ax = p11.x - p00.x, ay = p11.y - p00.y, az = p11.z - p00.z;
      const double bx = p01.x - p10.x, by = p01.y - p10.y, bz = p01.z - p10.z;
      const double nx = ay * bz - az * by, ny = az * bx - ax * bz, nz = ax * by - ay * bx;
      double len = std::sqrt(nx * nx + ny * ny + nz * nz);
      if (len == 0) len = 0.0001;
      face[static_cast<size_t>(i) * static_cast<size_t>(sv) + static_cast<size_t>(j)] =
          Vec3{static_cast<float>(nx / len), static_cast<float>(ny / len), static_cast<float>(nz / len)};
    }
  }
}

void VertexNormals(const std::vector<Position>& grid, int su, int sv, const std::vector<Vec3>& face,
                   const CBox& box, std::vector<Vec3>& vertex) {
  vertex.assign(static_cast<size_t>(su + 1) * static_cast<size_t>(sv + 1), Vec3{});
  if (grid.size() < vertex.size() || face.size() < static_cast<size_t>(su) * static_cast<size_t>(sv)) return;
  auto add = [](Vec3& d, const Vec3& s) {
    d.x += s.x;
    d.y += s.y;
    d.z += s.z;
  };
  for (int i = 0; i < su; ++i) {
    for (int j = 0; j < sv; ++j) {
      const Vec3& n = face[static_cast<size_t>(i) * static_cast<size_t>(sv) + static_cast<size_t>(j)];
      add(vertex[GridIndex(i, j, sv)], n);
      add(vertex[GridIndex(i + 1, j, sv)], n);
      add(vertex[GridIndex(i, j + 1, sv)], n);
      add(vertex[GridIndex(i + 1, j + 1, sv)], n);
    }
  }
  // The seam: where the first and last rows (columns) meet, both get the sum.
  const int most = std::max(su, sv);
  const float sx = (box.MaxX - box.MinX) / static_cast<float>(most);
  const float sy = (box.MaxY - box.MinY) / static_cast<float>(sv);
  const float sz = (box.MaxZ - box.MinZ) / static_cast<float>(most);
  auto closed = [&](const Position& a, const Position& b) {
    return std::fabs(a.x - b.x) < sx * 8 / 10 && std::fabs(a.y - b.y) < sy * 8 / 10 &&
           std::fabs(a.z - b.z) < sz * 8 / 10;
  };
  auto join = [&](size_t a, size_t b) {
    if (IsHolePosition(grid[a]) || IsHolePosition(grid[b]) || !closed(grid[a], grid[b])) return;
    const Vec3 s{vertex[a].x + vertex[b].x, vertex[a].y + vertex[b].y, vertex[a].z + vertex[b].z};
    vertex[a] = s;
    vertex[b] = s;
  };
  for (int j = 0; j <= sv; ++j) join(GridIndex(0, j, sv), GridIndex(su, j, sv));
  for (int i = 0; i <= su; ++i) join(GridIndex(i, 0, sv), GridIndex(i, sv, sv));
  for (Vec3& v : vertex) {
    double len = std::sqrt(static_cast<double>(v.x) * v.x + static_cast<double>(v.y) * v.y +
                           static_cast<double>(v.z) * v.z);
    if (len == 0) continue;
    v.x = static_cast<float>(v.x / len);
    v.y = static_cast<float>(v.y / len);
    v.z = static_cast<float>(v.z / len);
  }
}

void BeginSurfaceLook(const QuadLook& look) {
  if (look.Lit) {
    glEnable(GL_LIGHTING);
    if (look.Material < 1 || look.Material > kMaterialSchemeCount) {
      // No scheme: the pipeline's own defaults, whatever was set before.
      const float ambient[4] = {0.2f, 0.2f, 0.2f, 1}, diffuse[4] = {0.8f, 0.8f, 0.8f, 1}, none[4] = {0, 0, 0, 1};
      glMaterialfv(GL_FRONT_AND_BACK, GL_AMBIENT, ambient);
      glMaterialfv(GL_FRONT_AND_BACK, GL_DIFFUSE, diffuse);
      glMaterialfv(GL_FRONT_AND_BACK, GL_SPECULAR, none);
      glMaterialfv(GL_FRONT_AND_BACK, GL_EMISSION, none);
      glMaterialf(GL_FRONT_AND_BACK, GL_SHININESS, 0);
    } else {
      Cls11 material;
      material.SetMaterial(look.Material);
      if (look.Material == 5 && look.ShowTrans) {
        // The colour drives the emission here, so the transparency goes to
        // the diffuse alpha, which is the alpha lighting gives.
        const float diffuse[4] = {material.Diffuse[0], material.Diffuse[1], material.Diffuse[2], look.TransAlpha};
        glMaterialfv(GL_FRONT_AND_BACK, GL_DIFFUSE, diffuse);
      }
    }
    glColorMaterial(GL_FRONT_AND_BACK, look.Material == 5 ? GL_EMISSION : GL_DIFFUSE);
    glEnable(GL_COLOR_MATERIAL);
  } else {
    glDisable(GL_LIGHTING);
  }
  glEnable(GL_NORMALIZE);
  glEnable(GL_DEPTH_TEST);
  glPolygonMode(GL_FRONT_AND_BACK, look.Show == 1 ? GL_POINT : look.Show == 2 ? GL_LINE : GL_FILL);
  glEnable(GL_BLEND);
  glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
  if (look.ShowTex) {
    Cls15 texture;
    int w = 0, h = 0;
    if (texture.CreateMapImage(look.TexName, w, h)) {
      glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
      glEnable(GL_TEXTURE_2D);
    }
  }
}

void EndSurfaceLook(const QuadLook& look) {
  if (look.ShowTex) glDisable(GL_TEXTURE_2D);
  glDisable(GL_COLOR_MATERIAL);
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
}

namespace {

void ColorRgb(std::uint32_t color, float rgb[3]) {
  rgb[0] = static_cast<float>(color & 255u) / 255.0f;
  rgb[1] = static_cast<float>((color >> 8) & 255u) / 255.0f;
  rgb[2] = static_cast<float>((color >> 16) & 255u) / 255.0f;
}

// The colour of a corner by the look (channels 0 to 1), alpha apart.
void CornerRgb(const QuadLook& look, const Position& p, float rgb[3]) {
  if (look.UseOverride) {
    ColorRgb(look.OverrideColor, rgb);
    return;
  }
  if (look.ShowTex && look.TexMode != 2) {
    rgb[0] = rgb[1] = rgb[2] = 1;  // the texture alone
  } else {
    look.Coloring.Color(p.x, p.y, p.z, rgb);
  }
  if (look.Marked) {
    float mark[3];
    ColorRgb(look.MarkColor, mark);
    for (int c = 0; c < 3; ++c) rgb[c] = 0.8f * rgb[c] + 0.2f * mark[c];
  }
}

// The four edges of a grid as lines of the colour, 3 wide, unlit, on top of
// the faces they bound; holes break them.
void DrawGridRim(const std::vector<Position>& grid, int su, int sv, std::uint32_t color) {
  glPushAttrib(GL_ENABLE_BIT | GL_LINE_BIT | GL_CURRENT_BIT | GL_DEPTH_BUFFER_BIT);
  glDisable(GL_LIGHTING);
  glDisable(GL_TEXTURE_2D);
  glDepthFunc(GL_LEQUAL);
  float rgb[3];
  ColorRgb(color, rgb);
  glColor3fv(rgb);
  glLineWidth(3);
  glBegin(GL_LINES);
  auto edge = [&](int i0, int j0, int i1, int j1) {
    const Position& a = grid[GridIndex(i0, j0, sv)];
    const Position& b = grid[GridIndex(i1, j1, sv)];
    if (IsHolePosition(a) || IsHolePosition(b)) return;
    glVertex3f(a.x, a.y, a.z);
    glVertex3f(b.x, b.y, b.z);
  };
  for (int i = 0; i < su; ++i) edge(i, 0, i + 1, 0), edge(i, sv, i + 1, sv);
  for (int j = 0; j < sv; ++j) edge(0, j, 0, j + 1), edge(su, j, su, j + 1);
  glEnd();
  glPopAttrib();
}

}  // namespace

void DrawQuadGrid(const std::vector<Position>& grid, int su, int sv, const std::vector<Vec3>& face,
                  const std::vector<Vec3>& vertex, const QuadLook& look) {
  if (su < 1 || sv < 1 || grid.size() < GridIndex(su, sv, sv) + 1) return;
  const bool smooth = look.Smoothness >= 3 && vertex.size() >= grid.size();
  const float alpha = look.ShowTrans ? look.TransAlpha : 1.0f;
  float rgb[3] = {1, 1, 1};
  glBegin(GL_QUADS);
  for (int i = 0; i < su; ++i) {
    for (int j = 0; j < sv; ++j) {
      const int ci[4] = {i, i + 1, i + 1, i};
      const int cj[4] = {j, j, j + 1, j + 1};
      bool hole = false;
      for (int c = 0; c < 4 && !hole; ++c) hole = IsHolePosition(grid[GridIndex(ci[c], cj[c], sv)]);
      if (hole) continue;
      const Vec3& fn = face[static_cast<size_t>(i) * static_cast<size_t>(sv) + static_cast<size_t>(j)];
      for (int c = 0; c < 4; ++c) {
        const size_t at = GridIndex(ci[c], cj[c], sv);
        const Position& p = grid[at];
        glTexCoord2f(static_cast<float>(ci[c]) / static_cast<float>(su),
                     static_cast<float>(cj[c]) / static_cast<float>(sv));
        const Vec3& n = smooth ? vertex[at] : fn;
        glNormal3f(n.x, n.y, n.z);
        CornerRgb(look, p, rgb);
        glColor4f(rgb[0], rgb[1], rgb[2], alpha);
        glVertex3f(p.x, p.y, p.z);
      }
    }
  }
  glEnd();
  if (look.Marked) DrawGridRim(grid, su, sv, look.MarkColor);
}

// ---- CSurface ----------------------------------------------------------------------------

QuadLook CSurface::Look() const { return SurfaceLookOf(*this); }

void CSurface::ComputeNormals() { SurfaceNormalsOf(*this, faceN_, vertN_); }

void CSurface::MeshImplicit() {
  IsoGrid g;
  g.nu = StepU + 1;
  g.nv = StepV + 1;
  g.nw = StepW + 1;
  const size_t n = static_cast<size_t>(g.nu) * static_cast<size_t>(g.nv) * static_cast<size_t>(g.nw);
  if (FieldF.size() != n) {
    iso_.Clear();
    return;
  }
  g.X = FieldX.data();
  g.Y = FieldY.data();
  g.Z = FieldZ.data();
  g.F = FieldF.data();
  MarchCubes(g, 0.0f, iso_);
}

void CSurface::Draw() {
  if (Hide) return;
  // A surface read from a document samples at its first draw, when every
  // parameter it may name has been read too.
  if (!sampled_) GetPoints();
  glPushAttrib(GL_ENABLE_BIT | GL_POLYGON_BIT | GL_LIGHTING_BIT | GL_CURRENT_BIT | GL_LINE_BIT | GL_TEXTURE_BIT |
               GL_COLOR_BUFFER_BIT);
  if (IsCurve()) DrawCurve();
  else if (IsSurfaceKind()) DrawSurface();
  glPopAttrib();
}

void CSurface::DrawCurve() {
  glDisable(GL_LIGHTING);
  std::uint32_t color = FirstColor;
  float width = 2;
  if (DrawMode == 2 || DrawMode == 3) color = RGB(255, 0, 0);
  else if (DrawMode == 4) color = RGB(0, 255, 0), width = 5;
  SetColor(color);
  glLineWidth(width);
  glBegin(GL_LINES);
  for (size_t i = 0; i + 1 < CurveVert.size(); ++i) {
    const Position& a = CurveVert[i];
    const Position& b = CurveVert[i + 1];
    if (IsHolePosition(a) || IsHolePosition(b)) continue;
    glVertex3f(a.x, a.y, a.z);
    glVertex3f(b.x, b.y, b.z);
  }
  glEnd();
}

void CSurface::DrawSurface() {
  GetBox();
  if (Ramp.ColorNum == 0) Ramp.SetByName();
  if (Clip) {
    // The clip box: a plane on each of its six sides, in the surface's own
    // axes (x, y and z as the user gives them).
    const double planes[6][4] = {{1, 0, 0, -static_cast<double>(ClipMinX)}, {-1, 0, 0, ClipMaxX},
                                 {0, 1, 0, -static_cast<double>(ClipMinY)}, {0, -1, 0, ClipMaxY},
                                 {0, 0, 1, -static_cast<double>(ClipMinZ)}, {0, 0, -1, ClipMaxZ}};
    for (int k = 0; k < 6; ++k) {
      glClipPlane(static_cast<GLenum>(GL_CLIP_PLANE0 + k), planes[k]);
      glEnable(static_cast<GLenum>(GL_CLIP_PLANE0 + k));
    }
  }
  const QuadLook look = Look();
  BeginSurfaceLook(look);
  // The level lines run on the surface: its faces step back a little so
  // that the lines are not lost in them.
  const bool contours = FunForm == 2 && ShowContour;
  if (contours) {
    glPolygonOffset(1, 1);
    glEnable(GL_POLYGON_OFFSET_FILL);
  }
  if (FunForm == 1) {
    MeshImplicit();
    std::vector<float> colors(iso_.pos.size());
    float rgb[3] = {1, 1, 1};
    for (size_t v = 0; v + 2 < iso_.pos.size(); v += 3) {
      Position p(iso_.pos[v], iso_.pos[v + 1], iso_.pos[v + 2]);
      CornerRgb(look, p, rgb);
      colors[v] = rgb[0], colors[v + 1] = rgb[1], colors[v + 2] = rgb[2];
    }
    DrawIsoMesh(iso_, colors, look.ShowTrans ? look.TransAlpha : 1.0f);
  } else {
    ComputeNormals();
    DrawQuadGrid(Vert3D, StepU, StepV, faceN_, vertN_, look);
  }
  EndSurfaceLook(look);
  if (contours) glDisable(GL_POLYGON_OFFSET_FILL);
  if (FunForm == 2 && (ShowContour || ShowVector || ShowColormap)) {
    DrawFieldDisplays();
    DrawLegend();
  }
  for (int k = 0; k < 6; ++k) glDisable(static_cast<GLenum>(GL_CLIP_PLANE0 + k));
  if (ShowTangent || ShowNormal) DrawTangents();
}

namespace {

// Where a point of the mesh's index grid lies: (a, b) counts columns and
// rows from (0, 0) and falls between four vertices (on a cell's edge, as the
// traced points of a contour do, between two).
void GridPlace(const std::vector<Position>& grid, int su, int sv, float a, float b, float& x, float& y) {
  const int i = std::clamp(static_cast<int>(std::floor(a)), 0, std::max(su - 1, 0));
  const int j = std::clamp(static_cast<int>(std::floor(b)), 0, std::max(sv - 1, 0));
  const float s = std::clamp(a - static_cast<float>(i), 0.0f, 1.0f);
  const float t = std::clamp(b - static_cast<float>(j), 0.0f, 1.0f);
  const Position& p00 = grid[GridIndex(i, j, sv)];
  const Position& p10 = grid[GridIndex(std::min(i + 1, su), j, sv)];
  const Position& p01 = grid[GridIndex(i, std::min(j + 1, sv), sv)];
  const Position& p11 = grid[GridIndex(std::min(i + 1, su), std::min(j + 1, sv), sv)];
  x = (1 - s) * (1 - t) * p00.x + s * (1 - t) * p10.x + (1 - s) * t * p01.x + s * t * p11.x;
  y = (1 - s) * (1 - t) * p00.y + s * (1 - t) * p10.y + (1 - s) * t * p01.y + s * t * p11.y;
}

}  // namespace

namespace {

// The heights over the mesh's own grid of parameters, whatever the system:
// traced points are then placed between the vertices they fall between.
ContourGrid HeightGrid(const std::vector<Position>& vert, int su, int sv) {
  ContourGrid grid(su + 1, sv + 1);
  for (int i = 0; i <= su; ++i)
    for (int j = 0; j <= sv; ++j) {
      const Position& p = vert[GridIndex(i, j, sv)];
      grid(i + 1, j + 1) = IsHolePosition(p) ? std::nanf("") : p.z;
    }
  return grid;
}

// The height of level k of `levels` evenly spaced inside the range.
float LevelHeight(float minZ, float range, int k, int levels) {
  return minZ + range * static_cast<float>(k) / static_cast<float>(levels + 1);
}

// The level line of one height as segments of (x, y, z) triples.
void TraceLevel(const ContourGrid& grid, const std::vector<Position>& vert, int su, int sv, float level,
                std::vector<float>& out) {
  out.clear();
  std::vector<float> segs;
  ContourGrid heights = grid;  // the tracer nudges heights that equal the level
  CContour::Trace(heights, level, ContourFrame{}, segs);
  out.reserve(segs.size() / 2 * 3);
  for (size_t m = 0; m + 1 < segs.size(); m += 2) {
    float x, y;
    GridPlace(vert, su, sv, segs[m], segs[m + 1], x, y);
    out.push_back(x);
    out.push_back(y);
    out.push_back(level);
  }
}

}  // namespace

void CSurface::ContourSegments(int k, float& level, std::vector<float>& out) const {
  out.clear();
  const float range = MaxZ - MinZ;
  level = LevelHeight(MinZ, range, k, ContourLevel);
  if (Vert3D.size() < GridIndex(StepU, StepV, StepV) + 1 || !(range > 0)) return;
  TraceLevel(HeightGrid(Vert3D, StepU, StepV), Vert3D, StepU, StepV, level, out);
}

void CSurface::DrawFieldDisplays() {
  if (Vert3D.size() < GridIndex(StepU, StepV, StepV) + 1) return;
  glDisable(GL_LIGHTING);
  glDisable(GL_TEXTURE_2D);
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
  const float range = MaxZ - MinZ;
  const float base = MinZ - 0.01f;  // the base plane under the surface
  float rgb[3] = {1, 1, 1};
  if (ShowColormap) {
    glBegin(GL_QUADS);
    for (int i = 0; i < StepU; ++i) {
      for (int j = 0; j < StepV; ++j) {
        const int ci[4] = {i, i + 1, i + 1, i};
        const int cj[4] = {j, j, j + 1, j + 1};
        bool hole = false;
        for (int c = 0; c < 4 && !hole; ++c) hole = IsHolePosition(Vert3D[GridIndex(ci[c], cj[c], StepV)]);
        if (hole) continue;
        for (int c = 0; c < 4; ++c) {
          const Position& p = Vert3D[GridIndex(ci[c], cj[c], StepV)];
          Ramp.Lookup(p.z, MinZ, range, rgb);
          glColor3fv(rgb);
          glVertex3f(p.x, p.y, base);
        }
      }
    }
    glEnd();
  }
  if (ShowVector) {
    // The downhill direction of the height at each node, as a short stroke:
    // the gradient over the ground that the two mesh steps from the node
    // climb as they do.
    const float len = std::max(MaxX - MinX, MaxY - MinY) / static_cast<float>(std::max(StepU, StepV)) * 0.8f;
    glBegin(GL_LINES);
    for (int i = 0; i + 1 <= StepU; ++i) {
      for (int j = 0; j + 1 <= StepV; ++j) {
        const Position& p = Vert3D[GridIndex(i, j, StepV)];
        const Position& pu = Vert3D[GridIndex(i + 1, j, StepV)];
        const Position& pv = Vert3D[GridIndex(i, j + 1, StepV)];
        if (IsHolePosition(p) || IsHolePosition(pu) || IsHolePosition(pv)) continue;
        const double ax = pu.x - p.x, ay = pu.y - p.y, az = pu.z - p.z;
        const double bx = pv.x - p.x, by = pv.y - p.y, bz = pv.z - p.z;
        const double det = ax * by - ay * bx;
        if (std::fabs(det) < 1e-12) continue;
        double gx = -(az * by - ay * bz) / det, gy = -(ax * bz - az * bx) / det;
        const double g = std::hypot(gx, gy);
        if (g == 0) continue;
        gx *= len / g;
        gy *= len / g;
        Ramp.Lookup(p.z, MinZ, range, rgb);
        glColor3fv(rgb);
        glVertex3f(p.x, p.y, base);
        glVertex3f(static_cast<float>(p.x + gx), static_cast<float>(p.y + gy), base);
      }
    }
    glEnd();
  }
  if (ShowContour && ContourLevel > 0 && range > 0) {
    // Each level line on the surface at its height, and its trace on the
    // base plane beside the colour map and the vectors.
    glEnable(GL_LINE_SMOOTH);
    glEnable(GL_BLEND);
    glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
    glLineWidth(1);
    std::vector<float> pts;
    const ContourGrid grid = HeightGrid(Vert3D, StepU, StepV);  // one grid for every level
    for (int k = 1; k <= ContourLevel; ++k) {
      const float level = LevelHeight(MinZ, range, k, ContourLevel);
      TraceLevel(grid, Vert3D, StepU, StepV, level, pts);
      if (pts.empty()) continue;
      Ramp.Lookup(level, MinZ, range, rgb);
      glColor3fv(rgb);
      glBegin(GL_LINES);
      for (size_t m = 0; m + 2 < pts.size(); m += 3) glVertex3f(pts[m], pts[m + 1], pts[m + 2]);
      for (size_t m = 0; m + 2 < pts.size(); m += 3) glVertex3f(pts[m], pts[m + 1], base + 0.01f);
      glEnd();
    }
  }
}

void CSurface::DrawLegend() const {
  // Beside the box, standing along the height, its top raised by 3 for the
  // scale.
  const float h = std::max(MaxZ + 3 - MinZ, 1.0f);
  vt::DrawLegend(Ramp, MinZ, MaxZ, MaxX + 1, MinY, MinZ, 0.5f, h);
}

void CSurface::DrawTangents() {
  glDisable(GL_LIGHTING);
  glDisable(GL_TEXTURE_2D);
  glPolygonMode(GL_FRONT_AND_BACK, GL_FILL);
  if (ShowTangent) {
    Position c[4];
    for (size_t k = 0; k < TangentX.size() && k < TangentY.size(); ++k) {
      if (!TangentPlaneAt(TangentX[k], TangentY[k], c)) continue;
      SetColor(LineColor, 0.5f);
      glBegin(GL_QUADS);
      for (const Position& p : c) glVertex3f(p.x, p.y, p.z);
      glEnd();
    }
  }
  if (ShowNormal) {
    Position e[2];
    SetColor(LineColor);
    glLineWidth(2);
    for (size_t k = 0; k < NormalX.size() && k < NormalY.size(); ++k) {
      if (!NormalAt(NormalX[k], NormalY[k], e)) continue;
      glBegin(GL_LINES);
      glVertex3f(e[0].x, e[0].y, e[0].z);
      glVertex3f(e[1].x, e[1].y, e[1].z);
      glEnd();
    }
  }
}

}  // namespace vt
