// Extension points: the 2D directed extension of a segment (ptype 11) and the
// vertical extension off a region (ptype 12), each with a hidden far point of
// ptype 2 (its LKID3). The base points name the extension point in LKID4, so
// that moving a base recomputes it.
#pragma once

#include <string>

#include "geometry/position.h"

namespace vt {

class CRegion;

// "The start point and end point of the given line must have the same z value."
extern const char* const kExtensionNeedsSameZ;

// The point `distance` beyond `end` on the ray from `start`, turned about
// `end` by `angle` (radians) in the plane of constant z, and the far point
// the same with distance + 500. The two base points must have the same z:
// otherwise the message is shown and false comes back with the results
// untouched. A base of no length gives false too, silently.
bool DirectedExtension(const Position& start, const Position& end, float angle, float distance, Position& point,
                       Position& farPoint);

// The point at `height` from `base` along the normal of the region's plane
// (its first three corners), on the side of rising z, and the far point at
// 100. False when the region has no plane.
bool VerticalExtension(const CRegion& region, const Position& base, float height, Position& point,
                       Position& farPoint);

// Recomputes an extension point (ptype 11 from LKID, LKID2, Para1, Para2;
// ptype 12 from LKID, the region LKID2 and Para1), and its far point LKID3,
// moving both with their copies. False when a base is missing or the routine
// refused.
bool RefreshExtensionPoint(Position& ext);

// After a point has moved: the extension point its LKID4 names, if any.
void RefreshExtensionOf(const Position& moved);

}  // namespace vt
