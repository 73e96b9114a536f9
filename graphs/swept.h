// Swept surfaces: CSurRot (tag "SR") turns a profile object about an axis
// line or a centre point, CStretch (tag "SS") moves it along a vector given
// by three formulas. Both keep only the ids of what they rest on and rebuild
// their mesh from them in GetPoints; the mesh is drawn as a CSurface mesh is
// (face and vertex normals with the seam test, colouring, texture,
// transparency).
//
// The mesh Vert3D has (StepU + 1) x (StepV + 1) positions, (i, j) at
// GridIndex(i, j, StepV): i runs over the profile's vertices, j over the
// steps of the sweep.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "geometry/position.h"
#include "graphs/color_ramp.h"
#include "graphs/surface.h"

namespace vt {

// A formula of the parameters alone; false (after the compiler's box for a
// bad text) when it does not give a value.
bool ParameterValue(const std::string& text, float& value);

class RecordReader;
class RecordWriter;

// The vertices of a profile object by the head of its id: "PT" one, "LN" the
// two ends, "CR", "AR", "C2", "C3" their GetRotPoints, "RG" the corners (as a
// closed outline), "FA", "RB" their outline. False when the id names nothing
// of these kinds.
bool ProfileVertices(const std::string& id, std::vector<Position>& out);

// What CSurRot and CStretch share: the look of a surface and the mesh.
class CSweptSurface : public DocObject {
 public:
  CSweptSurface();

  std::string NameS = "Untitled";
  int FillStyle = 5;
  std::uint32_t FirstColor = RGB(0, 128, 255), SecondColor = RGB(255, 0, 0), LineColor = 0;
  int LineWidth = 1;
  int Material = 0;
  int Show = 3;
  int Smoothness = 3;
  ColorRamp Ramp;  // ColorName; the stops follow the name
  int StepU = 1, StepV = 20, StepW = 0;
  float MinW = 0, MaxW = 0;
  bool ShowTex = false;
  std::string TexName;
  int TexMode = 1;
  bool ShowTrans = false;
  float TransAlpha = 0.5f;

  // The profile as copied from its object (PointsNum = Points.size()).
  std::vector<Position> Points;
  int PointsNum() const { return static_cast<int>(Points.size()); }
  std::vector<Position> Vert3D;
  // The box of the mesh.
  float MinX = 0, MaxX = 0, MinY = 0, MaxY = 0, MinZ = 0, MaxZ = 0;

  // Rebuilds the mesh from the profile and the sweep. False, with the mesh
  // untouched, when a formula fails or an object is gone.
  virtual bool GetPoints() = 0;
  // Whether GetPoints has run since the object was made or read.
  bool Sampled() const { return sampled_; }
  // The ids this surface rests on (profile and axis).
  virtual std::vector<std::string> SourceIds() const = 0;

  void Draw() override;
  void SetDrawMode(int mode) override { DrawMode = mode; }
  void GetBox(CBox& box) const override;
  bool Pick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint) override;
  bool BoxSel(float x1, float y1, float x2, float y2) const;
  // The mesh as quads (holes left out).
  int GetRGNum() const { return StepU * StepV; }
  std::vector<std::vector<Position>> GetRegions() const;
  // The mesh points (holes left out).
  std::vector<Position> MeshPoints() const;

  // Normals as Draw computes them.
  void ComputeNormals();
  const std::vector<Vec3>& FaceNormalsOf() const { return faceN_; }
  const std::vector<Vec3>& VertexNormalsOf() const { return vertN_; }
  QuadLook Look() const;

 protected:
  // Fills Vert3D from the profile: place(i, j) gives vertex i at step j.
  template <class F>
  void BuildMesh(const std::vector<Position>& profile, int steps, F place);
  void UpdateBox();
  // The ramp by name; a leading "@" is passed over.
  void SelectRamp();
  // The shared fields of the record, in their order, up to ColorName.
  void SaveHead(RecordWriter& w) const;
  void LoadHead(RecordReader& r);
  // ShowTex, TexMode, ShowTrans, TransAlpha, TexName, Selected, Hide.
  void SaveTail(RecordWriter& w) const;
  void LoadTail(RecordReader& r);

  bool sampled_ = false;
  std::vector<Vec3> faceN_, vertN_;
};

class CSurRot : public CSweptSurface {
 public:
  std::string RotObjID;     // the profile
  std::string RotCenterID;  // the axis: a line or a point
  std::string RotAngle = "6.2832";

  bool GetPoints() override;
  std::vector<std::string> SourceIds() const override { return {RotObjID, RotCenterID}; }
  std::string Save() const override;
  static std::unique_ptr<CSurRot> Load(RecordReader& r);
};

class CStretch : public CSweptSurface {
 public:
  CStretch() { StepV = 10; }
  std::string ObjID;  // the profile
  std::string DX = "0", DY = "0", DZ = "1";

  bool GetPoints() override;
  std::vector<std::string> SourceIds() const override { return {ObjID}; }
  std::string Save() const override;
  static std::unique_ptr<CStretch> Load(RecordReader& r);
};

// Every swept surface rebuilds (parameters changed).
void RefreshSweptSurfaces();

}  // namespace vt
