// CArc: arcs from a centre, through three points, on a circle, and corner
// marks; shown as arc, sector or bow face.
#pragma once

#include <string>
#include <vector>

#include "geometry/position.h"

namespace vt {

class CArc : public CCarrier {
 public:
  CArc() {
    GELineWidth = 2;
    GELineStyle = 1;
  }
  int AType = 1;
  int AT = 1;
  Position pBegin, pEnd, pMid, PCenter;
  float R = 0;
  std::string Label;
  std::vector<float> StruAngle;  // parallel to StruP
  float Para1 = 0, Para2 = 0, Para3 = 0;
};

}  // namespace vt
