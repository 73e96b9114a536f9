// Free routines on points, lines, circles and regions: the vocabulary in which
// the refresh pass and the construction commands compute. No state. Singles
// in and out, doubles inside; pi is written 3.1416 and 2 pi 6.2832 wherever an
// angle is measured, and those short values are part of the results.
//
// Routines that find no solution leave their result arguments as they were, so
// a caller keeps the old position.
#pragma once

#include <vector>

#include "geometry/position.h"

namespace vt {

class CLine;
class CRegion;

constexpr double kPi = 3.1416;     // the short pi of all geometry
constexpr double kTwoPi = 6.2832;  // and its double

// Root of the sum of squares of the x, y and z differences.
float DistanceBetween(const Position& p, const Position& q);
// Direction of the vector from Q to P in the xy plane, 0 to 6.2832.
float AngleOfSegment(const Position& p, const Position& q);
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
// The place of a point dragged along a line of shape lt: the foot of P,
// limited to the segment (lt 1, 4) or the ray (lt 3). t gives the parameter
// of the foot along A -> B before the limit.
Position ProjectOnLine(const Position& p, const Position& a, const Position& b, int lt, double* t = nullptr);
// True when P, already on the carrier line, lies within the line's shape.
bool PointOnObject(const CLine& line, const Position& p);

// Crossing of two lines in the xy plane: 1 and the result, or 0 with the
// result untouched when they are parallel (|det| not above one millionth).
// The result's z is not computed.
int LineLine(const CLine& l1, const CLine& l2, Position& result);
int LineLine(const Position& a1, const Position& b1, const Position& a2, const Position& b2, Position& result);
// Crossing of the line A, B with the plane of the region's first three
// corners: 1 and the result, or 0 when parallel or there is no plane.
int LineRegion(const Position& a, const Position& b, const CRegion& region, Position& result);
int LineRegion(const Position& a, const Position& b, const Position& p0, const Position& p1,
               const Position& p2, Position& result);
// Crossing of a line with a circle of the given centre and radius in the xy
// plane. Codes: 0 no root on the line's shape; 1 one touching root on it;
// 2 two roots, only the first on it; 3 only the second; 4 both.
int LineCircle(const CLine& line, float radius, const Position& centre, Position& first, Position& second);
// 1 apart, 2 touching outside, 3 crossing, 4 touching inside, 5 one inside
// the other (distance of the centres in the xy plane, exact comparisons).
int CircleRelation(const Position& c1, float r1, const Position& c2, float r2);
// Count 0, 1 or 2 of crossing points of two circles in the xy plane.
int CircleCircle(const Position& c1, float r1, const Position& c2, float r2, Position& first, Position& second);
// The two points of tangency on the circle (C, R) of the tangents from P;
// the count of points found.
int TangentPoints(const Position& c, float r, const Position& p, Position& first, Position& second);
// Centre and radius of the circle through three points in space; false when
// they lie on one line.
bool CircleFromThreePoints(const Position& a, const Position& b, const Position& c, Position& centre, float& radius);
// count + 1 samples of the circle about the centre in the plane normal to the
// axis, the last equal to the first.
std::vector<Position> SpatialCirclePoints(const Position& centre, const Position& axis, float radius, int count);

// Triangle centres. ok (when given) is false for a degenerate triangle; the
// result is then the mean of the corners.
Position TriCircumcenter(const Position& a, const Position& b, const Position& c, bool* ok = nullptr);
Position TriIncenter(const Position& a, const Position& b, const Position& c, bool* ok = nullptr);
Position TriOrthocenter(const Position& a, const Position& b, const Position& c, bool* ok = nullptr);
Position TriBarycenter(const Position& a, const Position& b, const Position& c, bool* ok = nullptr);
// A numeric search in the xy plane to about 0.001.
Position TriFermatPoint(const Position& a, const Position& b, const Position& c, bool* ok = nullptr);

// P turned by the angle (radians) about the axis through the line's two end
// points, right-handed about pBegin -> pEnd; P itself for a line of no length.
Position RotateAboutLine(const Position& p, const CLine& line, float angle);
// Shortest distance between the straight line through R1, R2 (the mouse ray)
// and the straight line through A, B.
double DistanceRayLine(const Position& r1, const Position& r2, const Position& a, const Position& b);
// True when the segment R1 R2 passes through the box widened by margin.
bool RayMeetsBox(const Position& r1, const Position& r2, const CBox& box, double margin);
// True when the mouse ray hits the polygon (crossing with its plane, then the
// sum of signed angles about the hit).
bool RayHitsPolygon(const Position& r1, const Position& r2, const std::vector<Position>& corners);

}  // namespace vt
