// The edges of solids that the solid itself hides, for the dashed look of a
// space scene.
//
// A solid is a set of segments joined at their points (a cube's twelve
// edges, a pyramid's eight). Its faces are taken as those of the convex hull
// of its corners, which is what a cube, a prism or a pyramid is. An edge is
// hidden when no face it lies on turns towards the viewer: it lies on back
// faces only, or inside the solid. Segments whose corners lie in one plane
// form no solid and are never hidden.
#pragma once

#include <vector>

#include "geometry/position.h"

namespace vt {

class CLine;

// A face of a hull: the points x with n . x = d, the solid on the side where
// n . x < d.
struct HullPlane {
  double n[3];
  double d;
};

// The planes of the faces of the convex hull of the points (coplanar faces
// once each); empty when the points lie in one plane or there are too many
// of them to look at (more than 48).
std::vector<HullPlane> HullPlanes(const std::vector<Position>& points);

// Whether the point lies, within eps, on a face whose outside faces
// `towardViewer` (a direction from the solid towards the eye).
bool OnFrontFace(const std::vector<HullPlane>& planes, const Position& p, const double towardViewer[3], double eps);

// Whether the segment is a hidden edge of a solid in the frame being
// compiled: only in a space scene, with the matrices of CompiledProjection.
// The solids are found once for a frame (the answer is kept while the
// matrices and the segments stay the same).
bool SolidEdgeHidden(const CLine& segment);

}  // namespace vt
