// CLine: segments, lines, rays and vectors, drawn or derived. The two end
// points are private copies of the real points, with their ids.
#pragma once

#include <string>
#include <vector>

#include "geometry/position.h"

namespace vt {

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
};

}  // namespace vt
