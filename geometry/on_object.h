// Points on objects (ptype 7): finding the carrier under the mouse, making a
// new point on it, and keeping a dragged point on it. A carrier is a line,
// circle, arc, region or function curve; the first four keep the point as a
// structure point with its parameter (StruPercB, StruAngle, the region's
// frame), a function curve only names it by the point's parent id.
#pragma once

#include <string>
#include <vector>

#include "geometry/position.h"

namespace vt {

// The first line, circle, arc, region or function curve (kinds in that order,
// objects in collection order) that the mouse ray hits, or nullptr. Hidden
// objects and `skip` (an object in the making) are passed over; a region is
// not taken while one of its corners is under the mouse.
DocObject* FindCarrierUnderRay(const Position& scenePoint, const Position& farPoint, const Position& nearPoint,
                               const DocObject* skip = nullptr);

// The place on the carrier for a point near `target`, and the parameter
// stored for it: a line's fraction from pBegin (limited by lt), the angle on
// a circle or an arc (limited to the arc), the frame of a region (nearest
// point of its edges), the nearest sample of a curve. False for an object
// that is not a carrier or has nothing to stand on.
bool PlaceOnCarrier(const DocObject& carrier, const Position& target, Position& place, float& parameter);

// The ids of the real points that define a carrier, each once.
std::vector<std::string> DefiningPointIds(const DocObject& carrier);

// Makes a new point of ptype 7 on the carrier at the place for `click`: a new
// id and label, draw mode 5, the carrier as its one parent, a structure point
// of the carrier, a child of each defining point. The bounds (30 structure
// points, 30 children) are checked first: a full carrier or point throws
// RunTimeError before anything changes.
Position* MakePointOn(DocObject& carrier, const Position& click);

// Keeps a dragged point on its carrier: the point goes to the place for
// `target` and its stored parameter is rewritten. False (nothing changed)
// when the carrier is not found.
bool ConstrainToParent(Position& point, const std::string& parentID, const Position& target);

}  // namespace vt
