// A locus: the path a point takes while a player runs, recorded one sample a
// frame. The document reads loci but never writes them, so they vanish on
// save and on undo.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "geometry/position.h"

namespace vt {

class RecordReader;

class CLocus : public DocObject {
 public:
  static constexpr int kMaxSamples = 100000;

  std::string ACID;  // the player that drives it
  // LKID: the traced point; LKID2: spare.
  std::uint32_t ForeColor2 = 0;
  int FillStyle = 0;
  std::string ColorName;
  bool Created = false;  // the run has ended; nothing more is recorded
  std::vector<Position> Points;

  int PTNum() const { return static_cast<int>(Points.size()); }

  // Adds the traced point's place, unless the locus is complete.
  void Record();

  std::string Save() const override;
  static std::unique_ptr<CLocus> Load(RecordReader& r);
  void Draw() override;
  void GetBox(CBox& box) const override;
  bool Pick(const Position& scenePoint, const Position& farPoint, const Position& nearPoint) override;
  bool BoxSel(float x1, float y1, float x2, float y2) const;
};

// Every locus of the player records the place of its point; when the run has
// reached its end the loci are complete.
void RecordLoci(const std::string& playerId, bool runEnded);

}  // namespace vt
