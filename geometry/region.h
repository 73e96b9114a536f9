// CRegion: a filled polygon in the plane or in space; its corners are private
// copies of the real points.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "geometry/position.h"

namespace vt {

class RecordReader;

class CRegion : public CCarrier {
 public:
  std::vector<Position> Points;  // the corners; PTNum = Points.size()
  float Alpha = 0;
  std::string Texture;
  std::string Label;
  int RType = 0;  // 0 drawn, 1 an image made by a transform, 2 rebuilt from a source
  // The place of each structure point in the frame of the first three
  // corners; parallel to StruP.
  std::vector<float> StruXScale, StruYScale, StruZScale;
  float Para1 = 0, Para2 = 0, Para3 = 0;

  int PTNum() const { return static_cast<int>(Points.size()); }
  int GetRGNum() const { return PTNum(); }
  // The corners as a closed list (the first again at the end).
  std::vector<Position> GetRotPoints() const;
  // The faces of the region for surfaces built from it: itself.
  std::vector<CRegion> GetRegions() const;

  std::string Save() const override;
  static std::unique_ptr<CRegion> Load(RecordReader& r);

  void Draw() override;
  // As Draw, with the depth test left on (solids that hide each other).
  void Draw2();
  void GetBox(CBox& box) const override;
  bool Pick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint) override;
  bool Pick(const Position& rayStart, const Position& rayEnd) const;
  bool BoxSel(float x1, float y1, float x2, float y2) const;
  void UpdateStru() override;
  // Coordinates of P in the frame of the first three corners (x along the
  // first edge, y along the second, z along the normal); false without a
  // plane.
  bool FrameCoords(const Position& p, float& fx, float& fy, float& fz) const;
  void AddStruPoint(const Position& p);

  // Transforms, as the line's: flag 1 moves this region, else a new region on
  // the images of the corners (the last PTNum points of the document, in
  // order) is made and returned.
  CRegion* Move(int moveType, float a, float b, float c, const std::string& id3, const std::string& id4, int flag);
  CRegion* RotateP(const std::string& centreId, float angle, int flag);
  CRegion* RotL3D(const std::string& lineId, float angle, int flag);
  CRegion* MirrorP(const std::string& pointId, int flag);
  CRegion* MirrorL(const std::string& lineId, int flag);
  CRegion* MirrorR(const std::string& regionId, int flag);
  CRegion* Zoom(float factor, int flag);
  void Move0(int moveType, float a, float b, float c, const std::string& id3, const std::string& id4) {
    Move(moveType, a, b, c, id3, id4, 1);
  }
  void RotateP0(const std::string& centreId, float angle) { RotateP(centreId, angle, 1); }
  void RotL3D0(const std::string& lineId, float angle) { RotL3D(lineId, angle, 1); }
  void MirrorP0(const std::string& pointId) { MirrorP(pointId, 1); }
  void MirrorL0(const std::string& lineId) { MirrorL(lineId, 1); }
  void MirrorR0(const std::string& regionId) { MirrorR(regionId, 1); }
  void Zoom0(float factor) { Zoom(factor, 1); }

 private:
  CRegion* Transform(const std::function<Position(const Position&)>& map, int flag, int transType,
                     const std::string& paramId, int moveType = 0, float p1 = 0, float p2 = 0, float p3 = 0);
};

}  // namespace vt
