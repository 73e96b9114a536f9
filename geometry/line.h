// CLine: segments, lines, rays and vectors, drawn or derived. The two end
// points are private copies of the real points, with their ids; the points
// that lie on the line are its structure points, placed by StruPercB.
#pragma once

#include <string>
#include <vector>

#include "geometry/position.h"

namespace vt {

class RecordReader;

class CLine : public CCarrier {
 public:
  CLine() {
    GELineWidth = 2;
    GELineStyle = 1;
  }
  Position pBegin, pEnd;
  std::string LLabel;
  int lt = 1;     // 1 segment, 2 line, 3 ray, 4 vector
  int LType = 0;  // 0 drawn, 1 perpendicular, 2 parallel, 3 tangent, 4 angle bisector
  std::vector<float> StruPercB;  // parallel to StruP
  float Para1 = 0, Para2 = 0, Para3 = 0;

  // Both ends from the points of these ids (a missing point leaves its end
  // empty), or from values.
  void Line1(const std::string& beginId, const std::string& endId);
  void Line2(const Position& begin, const Position& end);

  std::string Save() const override;
  static std::unique_ptr<CLine> Load(RecordReader& r);

  void Draw() override;
  void GetBox(CBox& box) const override;
  bool Pick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint) override;
  bool Pick(const Position& rayStart, const Position& rayEnd) const;
  bool BoxSel(float x1, float y1, float x2, float y2) const;
  // 51 samples from pBegin to pEnd at equal steps.
  std::vector<Position> Points() const;
  std::vector<Position> GetRotPoints() const { return Points(); }
  // y = k x + b; a vertical line gives k = 10000.
  void LineKX(float& k, float& b) const;
  void UpdateStru() override;
  // Adds a structure point at the given fraction along the line.
  void AddStruPoint(const Position& p, float fraction);

  // Transforms: with flag 1 the line itself moves; otherwise a new line is
  // made whose ends are the last two points of the document (the images of
  // the ends, made just before) and returned.
  CLine* Move(int moveType, float a, float b, float c, const std::string& id3, const std::string& id4, int flag);
  CLine* RotateP(const std::string& centreId, float angle, int flag);
  CLine* RotL3D(const std::string& lineId, float angle, int flag);
  CLine* MirrorP(const std::string& pointId, int flag);
  CLine* MirrorL(const std::string& lineId, int flag);
  CLine* MirrorR(const std::string& regionId, int flag);
  CLine* Zoom(float factor, int flag);
  // The same in place, used when the source of an image moves.
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
  CLine* MakeImage(const Position& b, const Position& e, int flag, int transType, const std::string& paramId,
                   int moveType = 0, float p1 = 0, float p2 = 0, float p3 = 0);
};

// The copy a holder keeps of a real point: id, place and kind.
Position HolderCopy(const Position& real);
// The holder copy of the point with this id, or an empty copy when the
// document has no such point.
Position HolderCopyOf(const std::string& id);

}  // namespace vt
