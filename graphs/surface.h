// CSurface: a graph in space given by formula text: a space curve
// (GraphType 1, tag "C3") or a surface (GraphType 2, tag "SF"; 12 to 15 are
// further surface kinds, 13 to 15 sampling as 2), in Cartesian (CoordType
// 3), cylindrical (4) or spherical (5) coordinates, implicit (FunForm 1),
// explicit (2) or parametric (3).
//
// Positions are in the user's axes, the same frame as points, lines and
// regions: z is the height. GetPoints samples once; Draw computes the
// normals (and meshes an implicit surface) at each call.
//
// The mesh routines below the class (normals with the seam test, the quad
// drawing with colour, texture and transparency) serve the swept surfaces as
// well.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "expr/expression.h"
#include "geometry/position.h"
#include "graphs/color_ramp.h"
#include "graphs/isosurface.h"

namespace vt {

class RecordReader;

// The variable table of a surface: the parameters, then U, V, W, X, Y, Z,
// A, B, R, all 0 (slot 0 when the table had no room). The variables that a
// cylindrical or spherical form gives values (a and r, or a and b, of the
// explicit forms; a, r or a, b, r of the implicit ones) hide a parameter of
// the same name, as a polar curve's do (OwnNames of curve_analysis.h).
struct SurfaceTable {
  VariableTable vars;
  int U = 0, V = 0, W = 0, X = 0, Y = 0, Z = 0, A = 0, B = 0, R = 0;
  // Fills the table anew (LoadParameterTable and the nine names).
  void Load(int own = 0);
};

// A normal or a direction.
struct Vec3 {
  float x = 0, y = 0, z = 0;
};

// ---- mesh routines shared by the surfaces ----------------------------------------

// A grid of (su + 1) x (sv + 1) positions, (i, j) at index i * (sv + 1) + j.
inline size_t GridIndex(int i, int j, int sv) {
  return static_cast<size_t>(i) * static_cast<size_t>(sv + 1) + static_cast<size_t>(j);
}
bool IsHolePosition(const Position& p);

// Unit face normals of the su x sv quads (index i * sv + j): the cross
// product of the quad's diagonals; a quad with a hole at a corner gets 0.
void FaceNormals(const std::vector<Position>& grid, int su, int sv, std::vector<Vec3>& face);
// Vertex normals: the sum of the face normals of the quads around each
// vertex; where the first and last rows (columns) meet within 8/10 of the
// box's step on every axis, the normals of both edges are added, so a closed
// surface shows no seam.
void VertexNormals(const std::vector<Position>& grid, int su, int sv, const std::vector<Vec3>& face,
                   const CBox& box, std::vector<Vec3>& vertex);

// The quads of a grid as corner lists (holes passed by): the faces a
// surface offers to intersection lines.
std::vector<std::vector<Position>> GridQuads(const std::vector<Position>& grid, int su, int sv);

// How the quads of a surface look.
struct QuadLook {
  int Show = 3;        // 1 points, 2 wire, 3 filled
  int Smoothness = 3;  // 3: vertex normals, below: face normals
  int Material = 0;    // 1 to 13 a scheme; 5 lets the colour drive emission
  CornerColoring Coloring;
  bool ShowTex = false;
  std::string TexName;
  int TexMode = 1;  // 1 the texture alone (white), 2 the surface colour with it
  bool ShowTrans = false;
  float TransAlpha = 1;
  bool Lit = true;
  std::uint32_t OverrideColor = 0;  // with UseOverride, every corner
  bool UseOverride = false;
  // Selected or under the mouse: the surface's own colours, a fifth of this
  // colour mixed in, and the rim of a grid drawn in it.
  std::uint32_t MarkColor = 0;
  bool Marked = false;
};
// Emits the quads of the grid (needs a current context): holes skipped,
// per corner texture coordinate (i / su, j / sv), normal and colour.
void DrawQuadGrid(const std::vector<Position>& grid, int su, int sv, const std::vector<Vec3>& face,
                  const std::vector<Vec3>& vertex, const QuadLook& look);
// Sets material, colour tracking, polygon mode, blending and the texture for
// a surface; EndSurfaceLook undoes the texture.
void BeginSurfaceLook(const QuadLook& look);
void EndSurfaceLook(const QuadLook& look);

// The look and the normals of any surface kind: each keeps the same fields
// (Show, Smoothness, Material, FillStyle, the colours and ramp, its box,
// texture, transparency and DrawMode; Vert3D with StepU x StepV quads).
template <class S>
QuadLook SurfaceLookOf(const S& s) {
  QuadLook look;
  look.Show = s.Show;
  look.Smoothness = s.Smoothness;
  look.Material = s.Material;
  look.Coloring.FillStyle = s.FillStyle;
  look.Coloring.FirstColor = s.FirstColor;
  look.Coloring.SecondColor = s.SecondColor;
  look.Coloring.Ramp = &s.Ramp;
  look.Coloring.MinX = s.MinX, look.Coloring.MaxX = s.MaxX;
  look.Coloring.MinY = s.MinY, look.Coloring.MaxY = s.MaxY;
  look.Coloring.MinZ = s.MinZ, look.Coloring.MaxZ = s.MaxZ;
  look.ShowTex = s.ShowTex;
  look.TexName = s.TexName;
  look.TexMode = s.TexMode;
  look.ShowTrans = s.ShowTrans;
  look.TransAlpha = s.TransAlpha;
  if (s.DrawMode == 2 || s.DrawMode == 3) {  // selected
    look.Marked = true;
    look.MarkColor = RGB(255, 0, 0);
  } else if (s.DrawMode == 4) {  // highlighted
    look.Marked = true;
    look.MarkColor = RGB(0, 255, 0);
  }
  return look;
}
template <class S>
void SurfaceNormalsOf(const S& s, std::vector<Vec3>& face, std::vector<Vec3>& vertex) {
  CBox box;
  box.MinX = s.MinX, box.MaxX = s.MaxX, box.MinY = s.MinY, box.MaxY = s.MaxY;
  box.MinZ = s.MinZ, box.MaxZ = s.MaxZ;
  FaceNormals(s.Vert3D, s.StepU, s.StepV, face);
  VertexNormals(s.Vert3D, s.StepU, s.StepV, face, box, vertex);
}

class CSurface : public DocObject {
 public:
  static constexpr int kMaxSteps = 1000;
  static constexpr int kMaxImplicitSteps = 100;
  static constexpr int kMaxPositions = 1000;

  CSurface();

  std::string NameS;
  int GraphType = 2;
  int FunForm = 2;
  int CoordType = 3;
  int FillStyle = 5;
  std::uint32_t FirstColor = RGB(0, 128, 255), SecondColor = RGB(255, 0, 0), LineColor = 0;
  int LineWidth = 1;
  int Material = 0;
  int Show = 3;
  int Smoothness = 3;
  std::string ExpressX, ExpressY, ExpressZ;
  int StepU = 20, StepV = 20, StepW = 20;
  std::string MinU = "-5", MaxU = "5", MinV = "-5", MaxV = "5";
  float MinW = -5, MaxW = 5;
  bool Clip = false;
  float ClipMinX = -5, ClipMaxX = 5, ClipMinY = -5, ClipMaxY = 5, ClipMinZ = -5, ClipMaxZ = 5;
  ColorRamp Ramp;  // ColorName, ColorNum, ColorPos, ColorR, ColorG, ColorB
  bool ShowTex = false;
  std::string TexName;
  int TexMode = 1;
  bool ShowTrans = false;
  float TransAlpha = 0.5f;
  bool ShowContour = false, ShowVector = false, ShowColormap = false;
  int ContourLevel = 10;
  bool ShowTangent = false;
  std::vector<float> TangentX, TangentY;
  bool ShowNormal = false;
  std::vector<float> NormalX, NormalY;
  int TangentNum() const { return static_cast<int>(TangentX.size()); }
  int NormalNum() const { return static_cast<int>(NormalX.size()); }

  // The mesh (surfaces): (StepU + 1) x (StepV + 1), (i, j) at GridIndex.
  std::vector<Position> Vert3D;
  // The samples of a space curve, 0 to StepU.
  std::vector<Position> CurveVert;
  // The field of the implicit form: (StepU + 1) x (StepV + 1) x (StepW + 1)
  // samples, (i, j, k) at (k * (StepV + 1) + j) * (StepU + 1) + i.
  std::vector<float> FieldX, FieldY, FieldZ, FieldF;
  float MinF = 1e8f, MaxF = -1e8f;
  // The box of GetBox.
  float MinX = 0, MaxX = 0, MinY = 0, MaxY = 0, MinZ = 0, MaxZ = 0;

  void Init(const std::string& id, const std::string& name, int graphType, int funForm, int coordType,
            const std::string& expressX, const std::string& expressY, const std::string& expressZ, int stepU,
            int stepV, const std::string& minU, const std::string& maxU, const std::string& minV,
            const std::string& maxV);

  bool IsCurve() const { return GraphType == 1; }
  // The own names of the form and coordinate system (SurfaceTable).
  int OwnNames() const;
  bool IsSurfaceKind() const { return GraphType == 2 || (GraphType >= 12 && GraphType <= 15); }
  bool IsImplicit() const { return IsSurfaceKind() && FunForm == 1; }

  // Samples anew. False when a formula or a range does not compile or a
  // value fails (not for the implicit form, whose failing cells stay 0).
  bool GetPoints();
  bool Sampled() const { return sampled_; }

  void Draw() override;
  void SetDrawMode(int mode) override { DrawMode = mode; }
  // Recomputes the own box from the samples.
  void GetBox();
  void GetBox(CBox& box) const override;
  bool Pick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint) override;
  // True as soon as a sample lies in the window rectangle (pixels, any corner
  // order) by the compiled projection.
  bool BoxSel(float x1, float y1, float x2, float y2) const;
  // Vertices for dependent objects: the samples of a curve, the mesh of a
  // surface (holes left out).
  std::vector<Position> Points() const;
  // The profile a swept surface or a sector takes: a space curve sampled at 50
  // intervals whatever its own steps (51 vertices, holes kept as holes so
  // that a clipped curve leaves a gap), a surface's Points.
  std::vector<Position> GetRotPoints() const;
  // The mesh as StepU x StepV quads, four corners each (quads with a hole
  // left out), for area and intersection queries.
  int GetRGNum() const;
  std::vector<std::vector<Position>> GetRegions() const;

  // What Draw computes: normals of the mesh (face and vertex) and the mesh
  // of an implicit surface.
  void ComputeNormals();
  const std::vector<Vec3>& FaceNormalsOf() const { return faceN_; }
  const std::vector<Vec3>& VertexNormalsOf() const { return vertN_; }
  void MeshImplicit();
  const IsoMesh& ImplicitMesh() const { return iso_; }
  // The look of the quads from the properties and the draw mode.
  QuadLook Look() const;
  // The legend of the ramp beside the box (field displays).
  void DrawLegend() const;
  // The level line k (1 to ContourLevel) of the height z of an explicit
  // surface in any system: level is MinZ + k / (ContourLevel + 1) of the
  // range, and out gets the segments on the surface, x y z for each end.
  void ContourSegments(int k, float& level, std::vector<float>& out) const;
  // The tangent plane (as 4 corners) or the normal (2 ends) of an explicit
  // Cartesian surface at user (x, y), from the partial derivatives; false
  // when the form has none or a value fails.
  bool TangentPlaneAt(float x, float y, Position corners[4]) const;
  bool NormalAt(float x, float y, Position ends[2]) const;

  std::string Save() const override;
  static std::unique_ptr<CSurface> Load(RecordReader& r);

 private:
  bool SampleCurve(const std::string& px, const std::string& py, const std::string& pz, SurfaceTable& t,
                   float su, float eu);
  bool SampleSurface(const std::string& px, const std::string& py, const std::string& pz, SurfaceTable& t,
                     float su, float eu, float sv, float ev);
  void ClipMesh();
  void DrawCurve();
  void DrawSurface();
  void DrawFieldDisplays();
  void DrawTangents();
  bool Derivatives(std::string& dx, std::string& dy) const;

  bool sampled_ = false;
  std::vector<Vec3> faceN_, vertN_;
  IsoMesh iso_;
};

// The user's point (x, y, z) as the Position a surface stores: the same
// axes as every other object of the scene.
Position RenderingPoint(double ux, double uy, double uz);
// A cylindrical (a, r, z) or spherical (a, b, r) triple as user x, y, z.
void CylindricalToUser(double a, double r, double z, double& x, double& y, double& zz);
void SphericalToUser(double a, double b, double r, double& x, double& y, double& z);

// The label of a form as the dialog lists it.
std::string SurfaceFormLabel(int graphType, int funForm, int coordType);

// Every surface of the document samples again.
void RefreshSurfaces();

}  // namespace vt
