// Update propagation: how the drawing stays true while points are dragged or
// animated. There is no solver and no dependency graph; three plain
// mechanisms carry every change:
//
// 1. Copies with back-links. A line, circle, arc or region keeps private
//    Position copies of its defining points; the real point lists each holder
//    in LinkObjs. Position::UpdateLinked and its family write a real point's
//    change through to those copies (the members are declared in
//    geometry/position.h and defined here).
// 2. Structure points. A point lying on a carrier is a copy in the carrier's
//    StruP with a parameter (StruPercB, StruAngle, the region's frame); the
//    carrier's UpdateStru recomputes the copies and writes them to the real
//    points, and UpdateStru(id, x, y, z) hands that on, one level only.
// 3. The refresh pass (RefreshPass): everything else (intersections,
//    tangent points, triangle centres, images, division, epitaxial and
//    extension points, bisectors, derived lines) is recomputed from ids in one
//    fixed order.
//
// All references are ids resolved through the indexed lookups of the
// document (first match kept); a failed lookup skips that one dependent.
//
// Kinds that arrive later plug in without touching this file:
// - objects that rest on points without holding copies (surfaces of rotation,
//   extrusions, sectors, ribbons, spheres) register a PointDependentHook in
//   their slot; UpdateLinked calls the slots in their fixed order;
// - kinds the refresh pass recomputes (intersection lines, further derived
//   kinds) register a RefreshHook at their stage of the pass.
#pragma once

#include <functional>
#include <string>
#include <unordered_set>
#include <vector>

#include "geometry/position.h"

namespace vt {

class CLine;
class CCircle;
class CArc;
class CRegion;

// ---- dependents re-initialised after a point's links --------------------------

// The slots, in the order UpdateLinked and UpdateLinked1 call them.
enum class DependentSlot { SurRots, Stretchs, Fans, Ribbons, Spheres };
// Called with the real point that moved; re-initialises every object of the
// slot's kind that rests on it (use IdRestsOnPoint for the tests by id head).
using PointDependentHook = std::function<void(const Position& moved)>;
// Installs (or, with an empty hook, removes) the hook of a slot.
void RegisterPointDependents(DependentSlot slot, PointDependentHook hook);

// The heads IdRestsOnPoint accepts, as a set of bits.
enum IdHeads : unsigned {
  kHeadPT = 1,  // the id is the point's own
  kHeadLN = 2,  // the point is pBegin or pEnd of that line
  kHeadCR = 4,  // PCenter, PCircleR, PCircleR2 or PCircleR3 of that circle
  kHeadAR = 8,  // pBegin, pEnd, pMid or PCenter of that arc
  kHeadRG = 16, // a corner of that region
  kAllHeads = 31,
};
// Whether the object named by `id` rests on the point with id `pointId`,
// judged by the head of `id` among the allowed heads.
bool IdRestsOnPoint(const std::string& id, const std::string& pointId, unsigned heads = kAllHeads);

// ---- the refresh pass -------------------------------------------------------------

// The places where a later kind joins the refresh pass; each stage runs after
// the numbered step of the pass that it names.
enum class RefreshStage {
  AfterPoints,         // 1. the loop over points (triangle centres, images, division, epitaxial)
  AfterCircleImages,   // 2. circles rebuilt from a source
  AfterArcs,           // 3. arcs on a circle and arcs rebuilt from a source
  AfterRegionImages,   // 4. regions rebuilt from a source
  InterLines,          // 5. intersection lines (CInterLine.InitLines)
  AfterBisectors,      // 6. angle bisectors
  AfterIntersections,  // 7. intersection points
  End,                 // 8. tangent points; the remaining derived kinds come here
};
using RefreshHook = std::function<void()>;
// Installs a hook under a name at a stage (the same name replaces it; an
// empty hook removes it). Hooks of one stage run in the order installed.
void RegisterRefreshHook(RefreshStage stage, const std::string& name, RefreshHook hook);

// The fixed refresh pass: after each drag step and each animation step.
void RefreshPass();

// A drag step's repropagation, after the moved points have had their
// UpdateLinked: carriers touched by the step recompute their structure points
// and carry each one's change on (lines, circles, arcs, regions), derived
// lines recompute their ends (perpendiculars, images, parallels), then the
// refresh pass.
void RepropagateAfterMove();

// Moves a real point to a computed place and carries the change to its
// copies (UpdateLinked with the change, flag 0); nothing when it stays.
void MovePointTo(Position& real, float x, float y, float z);

// The image of a point under the transformation an image object records
// (TransType 1 move by MoveType, Para1..3, LKID3, LKID4; 2 rotation about the
// point LKID2, or about the line LKID2 in space, by Para1; 3 scaling by Para1
// about the point LKID2, about the origin when there is none; 4 reflection in
// the point, line or region LKID2). Other values: the point.
Position ImageUnder(const Position& source, const DocObject& image, float para1, float para2, float para3);

// Places a new intersection point (ptype 4) at once: on the root that its
// Pos names where the two objects meet, else where their carriers meet taken
// whole (a segment as its line, an arc as its circle), so that it waits on
// the figure rather than at the origin. False (the point stays) when even
// the carriers do not meet.
bool PlaceNewIntersection(Position& p);

// Scaling by `factor` about the point `centreId`: C + factor (P - C). Position::Zoom
// scales about the origin; without a centre point this is the same.
Position ZoomAbout(const Position& p, const std::string& centreId, float factor);

// ---- the trace of one drag step ---------------------------------------------------
// While a trace is open, the UpdateLinked family records every holder whose
// copies it wrote; RepropagateAfterMove reads it. Opened and closed by the
// drag step (tools/select.cpp); nested opens are not allowed.
class PropagationTrace {
 public:
  PropagationTrace();
  ~PropagationTrace();
  PropagationTrace(const PropagationTrace&) = delete;
  PropagationTrace& operator=(const PropagationTrace&) = delete;
  // The holders touched so far.
  static bool Touched(const DocObject* holder);
  static bool Active();
};

}  // namespace vt
