// CArc: arcs from a centre, through three points, on a circle, and corner
// marks; shown as arc, sector or bow face.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "geometry/position.h"

namespace vt {

class RecordReader;

// True when the map, seen from above, turns the sense of rotation about `at`
// round: a reflection in a line, or in a plane nearer upright than flat. An
// arc's image under such a map runs from the image of its end to the image
// of its begin.
bool ReversesTurn(const std::function<Position(const Position&)>& map, const Position& at);

class CArc : public CCarrier {
 public:
  CArc() {
    GELineWidth = 2;
    GELineStyle = 1;
  }
  // 1 from a centre, begin and end; 2 through three points; 3 corner mark;
  // 4 on a circle; 10 rebuilt from a source.
  int AType = 1;
  int AT = 1;  // 1 arc, 2 "Sector", 3 "Bow Face"
  Position pBegin, pEnd, pMid, PCenter;
  float R = 0;
  std::string Label;
  std::vector<float> StruAngle;  // parallel to StruP
  float Para1 = 0, Para2 = 0, Para3 = 0;

  // The colour of an arc is called GEColor; it is the common ForeColor.
  std::uint32_t GEColor() const { return ForeColor; }

  // The three defining points from ids (begin, centre, end), or for a
  // three-point arc (begin, middle, end).
  void Arc1(const std::string& beginId, const std::string& centreId, const std::string& endId);
  void arc2(const std::string& beginId, const std::string& midId, const std::string& endId);

  std::string Save() const override;
  static std::unique_ptr<CArc> Load(RecordReader& r);

  // The centre and radius the arc has now.
  Position Centre() const;
  float Radius() const;
  // The angle swept from pBegin to pEnd about the centre, 0 to 6.2832.
  float RadiusAngle() const;
  // Start angle and sweep as drawn (a three-point arc may run the other way).
  void Sweep(double& start, double& sweep) const;
  // True when the arc runs counterclockwise from pBegin to pEnd (always but
  // for a three-point arc whose middle point says otherwise).
  bool RunsUp() const;
  // The samples of the arc as drawn, from its start to its end:
  // PieceCount(Radius(), sweep) + 1 of them.
  std::vector<Position> Samples() const;
  // How many pieces an arc of this radius and sweep is drawn with: by the
  // radius as a dashed circle (6, 10, 16 or 20 per unit of radius a whole
  // turn, at least 3), bounded by what the canvas can show, so that a nearly
  // straight arc of a huge radius costs no more than a few chords.
  static int PieceCount(double radius, double sweep);
  // 51 samples along the arc.
  std::vector<Position> Points() const;
  std::vector<Position> GetRotPoints() const { return Points(); }
  // The place of a point on the arc under P: at P's angle from the centre
  // when that lies on the arc, else the nearer end.
  Position ProjectOnArc(const Position& p, float* angle = nullptr) const;

  void Draw() override;
  void GetBox(CBox& box) const override;
  bool Pick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint) override;
  bool Pick(const Position& rayStart, const Position& rayEnd) const;
  bool BoxSel(float x1, float y1, float x2, float y2) const;
  void UpdateStru() override;
  void AddStruPoint(const Position& p, float angle);

  // Transforms, as the line's: flag 1 moves this arc, else a new arc on the
  // images of begin, centre (or middle) and end (the last three points of the
  // document, in that order) is made and returned.
  CArc* Move(int moveType, float a, float b, float c, const std::string& id3, const std::string& id4, int flag);
  CArc* RotateP(const std::string& centreId, float angle, int flag);
  CArc* RotL3D(const std::string& lineId, float angle, int flag);
  CArc* MirrorP(const std::string& pointId, int flag);
  CArc* MirrorL(const std::string& lineId, int flag);
  CArc* MirrorR(const std::string& regionId, int flag);
  CArc* Zoom(float factor, int flag);
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
  CArc* Transform(const std::function<Position(const Position&)>& map, int flag, int transType,
                  const std::string& paramId, int moveType = 0, float p1 = 0, float p2 = 0, float p3 = 0);
};

}  // namespace vt
