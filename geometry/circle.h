// CCircle: full circles in the plane and in space. The defining points are
// private copies of the real points; the points that lie on the circle are
// its structure points, placed by StruAngle.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "geometry/position.h"

namespace vt {

class RecordReader;

class CCircle : public CCarrier {
 public:
  CCircle() {
    GELineWidth = 2;
    GELineStyle = 1;
  }
  // 1 centre and rim point; 2 through three points; 3 centre and radius;
  // 4 internally tangent; 5 normal-direction spatial circle; 10 rebuilt from
  // a source.
  int CType = 1;
  Position PCenter, PCircleR, PCircleR2, PCircleR3;
  float R = 0;
  bool Filled = false;
  std::string CLabel;
  std::vector<float> StruAngle;  // parallel to StruP
  float Para1 = 0, Para2 = 0, Para3 = 0;
  // The rim of the last Draw (or pick): DrawSegments pieces, DrawSegments + 1
  // samples.
  int DrawSegments = 0;
  std::vector<Position> Rim;

  // The defining points from ids (a missing point leaves its copy empty).
  void Circle1(const std::string& centreId, const std::string& rimId);
  void Circle2(const std::string& id1, const std::string& id2, const std::string& id3);

  std::string Save() const override;
  static std::unique_ptr<CCircle> Load(RecordReader& r);

  // The centre and radius the circle has now (three-point circles from their
  // points, centre-and-rim circles from the distance).
  Position Centre() const;
  float Radius() const;
  // How many pieces the rim is drawn with: 60 when solid, fewer for a small
  // dashed circle.
  int SegmentCount() const;
  // Recomputes Rim and DrawSegments.
  void ComputeRim();
  // 51 samples around the circle.
  std::vector<Position> Points() const;
  std::vector<Position> GetRotPoints() const { return Points(); }

  void Draw() override;
  void GetBox(CBox& box) const override;
  bool Pick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint) override;
  bool Pick(const Position& rayStart, const Position& rayEnd);
  // The ray against the disc alone, and against the rim alone.
  bool Pick1(const Position& rayStart, const Position& rayEnd);
  bool Pick2(const Position& rayStart, const Position& rayEnd);
  bool BoxSel(float x1, float y1, float x2, float y2) const;
  void UpdateStru() override;
  void AddStruPoint(const Position& p, float angle);

  // Transforms, as the line's: flag 1 moves this circle, else a new circle on
  // the images of the centre and the rim point (the last two points of the
  // document, centre first) is made and returned.
  CCircle* Move(int moveType, float a, float b, float c, const std::string& id3, const std::string& id4, int flag);
  CCircle* RotateP(const std::string& centreId, float angle, int flag);
  CCircle* RotL3D(const std::string& lineId, float angle, int flag);
  CCircle* MirrorP(const std::string& pointId, int flag);
  CCircle* MirrorL(const std::string& lineId, int flag);
  CCircle* MirrorR(const std::string& regionId, int flag);
  CCircle* Zoom(float factor, int flag);
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
  CCircle* Transform(const std::function<Position(const Position&)>& map, float radiusScale, int flag,
                     int transType, const std::string& paramId, int moveType = 0, float p1 = 0, float p2 = 0,
                     float p3 = 0, int imageCType = 1);
};

}  // namespace vt
