// Animation players and their tracks, as the document holds them.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "document/objects.h"

namespace vt {

// One track of a player; has an id of its own but lives inside its player.
class CAnimation : public DocObject {
 public:
  std::string ACID;
  int AniType = 0;  // 20: a parameter named Para1 with the value RangeTo2
  float TimeFrom = 0, TimeTo = 1;
  float RangeFrom1 = 0, RangeTo1 = 0, RangeFrom2 = 0, RangeTo2 = 0, RangeFrom3 = 0, RangeTo3 = 0;
  float Para0 = 0;
  std::string Para1;
};

class CAniControl : public DocObject {
 public:
  static constexpr int kMaxTracks = 50;
  float PosX = 0, PosY = 0;
  short Steps = 40;
  int RunTimes = 4000;
  int AniRunMode = 2;
  short Step = 0;
  short Status = 1;
  std::vector<std::unique_ptr<CAnimation>> anis;  // AniNum = anis.size()
  int AniNum() const { return static_cast<int>(anis.size()); }
};

}  // namespace vt
