// CCircle: full circles in the plane and in space.
#pragma once

#include <string>
#include <vector>

#include "geometry/position.h"

namespace vt {

class CCircle : public CCarrier {
 public:
  CCircle() {
    GELineWidth = 2;
    GELineStyle = 1;
  }
  int CType = 1;
  Position PCenter, PCircleR, PCircleR2, PCircleR3;
  float R = 0;
  bool Filled = false;
  std::string CLabel;
  std::vector<float> StruAngle;  // parallel to StruP
  float Para1 = 0, Para2 = 0, Para3 = 0;
};

}  // namespace vt
