// Free routines on points, lines, circles and regions: distances, feet of
// perpendiculars, rotations. No state. Singles in and out, double inside.
#pragma once

#include "geometry/position.h"

namespace vt {

class CLine;
class CRegion;

// Root of the sum of squares of the x, y and z differences.
float DistanceBetween(const Position& p, const Position& q);
// B + (B - A) * d / |B - A|: the point d beyond B on the ray from A through B.
// With A and B equal the result is B.
Position PointBeyond(const Position& a, const Position& b, float d);
// Foot of the perpendicular from P on the line through A and B, in all three
// coordinates; A when A and B coincide.
Position FootOnLine(const Position& p, const Position& a, const Position& b);
// Foot of the perpendicular from P on the plane of the region's first three
// corners; P itself when the region has fewer than three corners or they lie
// on one line.
Position FootOnPlane(const Position& p, const CRegion& region);
// P turned by the angle (radians) about the axis through the line's two end
// points, right-handed about pBegin -> pEnd; P itself for a line of no length.
Position RotateAboutLine(const Position& p, const CLine& line, float angle);

}  // namespace vt
