// Picking on a quad mesh of (su + 1) x (sv + 1) positions (GridIndex order):
// whether the mouse ray passes within tol of one of the mesh's chords (the
// grid lines between neighbouring samples; holes left out).
#pragma once

#include <vector>

#include "geometry/position.h"

namespace vt {

bool RayNearMeshChords(const std::vector<Position>& grid, int su, int sv, const Position& nearPoint,
                       const Position& farPoint, double tol);

}  // namespace vt
