// CRegion: a filled polygon in the plane or in space; its corners are private
// copies of the real points.
#pragma once

#include <string>
#include <vector>

#include "geometry/position.h"

namespace vt {

class CRegion : public CCarrier {
 public:
  std::vector<Position> Points;  // the corners; PTNum = Points.size()
  float Alpha = 0;
  std::string Texture;
  std::string Label;
  int RType = 0;
  std::vector<float> StruXScale, StruYScale, StruZScale;  // parallel to StruP
  float Para1 = 0, Para2 = 0, Para3 = 0;

  int PTNum() const { return static_cast<int>(Points.size()); }
};

}  // namespace vt
