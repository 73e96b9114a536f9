// Translucent surfaces built on other objects, and the line where two faceted
// objects cross.
//
// CFan ("FA", a sector: the rim of a circle, arc, curve or polygon closed to
// an apex), CRibbon ("RB", the strip between two rims) and CSphere ("SP", a
// spherical surface about a centre point through a second point) hold the
// ids of what they rest on and a mesh that InitPos rebuilds, when a point
// they use moves too. CInterLine ("IL") is the set of segments where the
// faces of two regions, sectors, ribbons or surfaces cross, rebuilt at each
// refresh pass.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "geometry/position.h"
#include "graphs/color_ramp.h"

namespace vt {

class RecordReader;
class RecordWriter;

// A face: the corners of a flat polygon, in order.
using Face = std::vector<Position>;

// What sectors, ribbons and spheres share: colour, translucency and a mesh of
// quads (a sector's quads are triangles with a repeated corner).
class CMeshSurface : public DocObject {
 public:
  CMeshSurface();

  float Alpha = 0.3f;
  std::uint32_t ForeColor2 = RGB(255, 0, 0);
  int FillStyle = 4;  // 4 ForeColor alone; 1 to 3 and 5 as the surfaces colour
  ColorRamp Ramp;     // ColorName

  // The mesh: (Cols + 1) x (Rows + 1) positions, (i, j) at i * (Rows + 1) + j.
  std::vector<Position> Mesh;
  int Cols = 0, Rows = 0;

  // Rebuilds the mesh from the objects named by LKID and LKID2. False, with
  // the mesh emptied, when they are gone or give no samples.
  virtual bool InitPos() = 0;
  bool Built() const { return built_; }
  // InitPos unless it has run since the object was made or read.
  void EnsureBuilt() {
    if (!built_) InitPos();
  }

  // Number of faces and the faces (for intersection lines).
  int GetRGNum() const;
  std::vector<Face> GetRegions() const;

  void Draw() override;
  void SetDrawMode(int mode) override { DrawMode = mode; }
  void GetBox(CBox& box) const override;
  bool Pick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint) override;
  bool BoxSel(float x1, float y1, float x2, float y2) const;

 protected:
  // The corner colour by FillStyle over the mesh's box (DrawMode 1).
  CornerColoring Coloring(CBox& box) const;
  // The head of the record: ID, Alpha, ForeColor, ForeColor2, FillStyle,
  // ColorName, DrawMode.
  void SaveHead(RecordWriter& w) const;
  void LoadHead(RecordReader& r);
  void FaceAt(int i, int j, Face& f) const;

  bool built_ = false;
};

class CFan : public CMeshSurface {
 public:
  // The apex (LKID, when it names a point; the rim object is the other id):
  // the centre of an arc or circle when there is no point, else the mean of
  // the rim samples. The mesh is one column per rim step, apex and rim.
  bool InitPos() override;
  // The outline: apex, rim, apex.
  std::vector<Position> GetRotPoints() const;

  std::string Save() const override;
  static std::unique_ptr<CFan> Load(RecordReader& r);

  // The rim object and the apex as InitPos found them.
  Position Apex;
  std::vector<Position> Rim;
};

class CRibbon : public CMeshSurface {
 public:
  // The rims of LKID and LKID2, each taken to the same count of samples
  // (evenly along its polyline), the strip between them sample by sample.
  static constexpr int kSamples = 51;
  bool InitPos() override;
  // The outline: the first rim, the second backwards, closed.
  std::vector<Position> GetRotPoints() const;

  std::string Save() const override;
  static std::unique_ptr<CRibbon> Load(RecordReader& r);
};

class CSphere : public CMeshSurface {
 public:
  static constexpr int kSteps = 25;
  Position Center;
  float R = 0;
  float AngleAFrom = 0, AngleATo = 6.2832f, AngleBFrom = 0, AngleBTo = 3.1416f;

  // LKID the centre, LKID2 a point on the surface (both points).
  bool InitPos() override;

  std::string Save() const override;
  static std::unique_ptr<CSphere> Load(RecordReader& r);
};

// A piece of the intersection line.
struct Segment3 {
  Position a, b;
};

// Where two flat polygons cross: the section of each by the other's plane,
// clipped against the section of the other; the pieces go to `out` (a
// concave polygon may give more than one). False when they do not cross
// (parallel planes, no overlap, or a degenerate polygon).
bool FaceFaceSegment(const Face& first, const Face& second, std::vector<Segment3>& out);

// The faces of a region, sector, ribbon or surface by the head of its id
// ("RG", "FA", "RB", "SF"); false for anything else or a missing object.
bool FacesOfObject(const std::string& id, std::vector<Face>& out);

class CInterLine : public DocObject {
 public:
  CInterLine();
  std::vector<Segment3> Lines;
  bool Initialised() const { return initialised_; }

  // Every face of LKID against every face of LKID2.
  void InitLines();

  void Draw() override;
  void SetDrawMode(int mode) override { DrawMode = mode; }
  void GetBox(CBox& box) const override;
  bool Pick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint) override;
  bool BoxSel(float x1, float y1, float x2, float y2) const;
  // The record as the reader reads it (the writer leaves these out).
  std::string Save() const override;
  static std::unique_ptr<CInterLine> Load(RecordReader& r);

 private:
  bool initialised_ = false;
};

// Installs the re-initialisation of swept and derived surfaces after a point
// moves, and the intersection lines' step of the refresh pass (the objects'
// constructors call it).
void RegisterDerivedSurfaceUpdates();

}  // namespace vt
