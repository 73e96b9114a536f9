// Drawing pieces shared by the objects' Draw code: the colour split, the
// canvas background, a straight stroke in the look of a line, the vector with
// its arrow head, the filled polygon of a region, and the ball of a point in
// space. Everything here issues GL calls into whatever is being compiled or
// drawn; the caller owns the context.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "document/objects.h"

namespace vt {

class Position;
class CLine;
class CRegion;

// The colour the canvas is cleared to; draw mode 3 paints with it.
constexpr std::uint32_t kCanvasBackColor = RGB(255, 255, 255);

// True in the plane view (every scene but the space scene).
bool PlaneView();

// The colour split by whole division by 256 into red, green and blue, each
// scaled to 0..1.
void ColorParts(std::uint32_t color, float& r, float& g, float& b);
void SetColor(std::uint32_t color);
void SetColor(std::uint32_t color, float alpha);

// The colour of a line in a draw mode: 1 its own, 2 red, 3 the background,
// 4 green; any other mode its own.
std::uint32_t LineColorOf(std::uint32_t foreColor, int drawMode);

// The stipple of a line style: 2 factor 2 pattern 16191, 3 factor 1 pattern
// 21845, 4 factor 1 pattern 10239. False for solid (1 and unknown styles).
bool LineStippleOf(int lineStyle, int& factor, unsigned short& pattern);

// The dashes of a stroke. While the plane scene compiles (and no picture is
// being captured) a dashed stroke takes its pattern from a row of the dash
// texture, its texture coordinate counting window pixels along the stroke
// from where it enters the canvas, as GL's stipple counts them: the software
// renderer cuts a stippled line into one primitive per dash (a dotted line
// across the canvas is hundreds), a textured line stays one primitive.
// Otherwise, and for a pattern the texture has no row for, it is GL's
// stipple. Segments go inside the caller's GL_LINES; a strip is drawn by
// Strip (as GL_LINES with textured dashes, its pattern running on from one
// segment to the next).
class DashPen {
 public:
  // Sets the dash state; stippled false: a solid stroke (stipple off).
  DashPen(bool stippled, int factor, unsigned short pattern);
  // The vertices of a segment; runOn: the pattern runs on from the segment
  // before (a strip), else it starts again (GL_LINES).
  void Segment(const Position& a, const Position& b, bool runOn);
  // A whole strip through the points, its own primitive (GL_LINES of its
  // segments with textured dashes, so that the pattern runs on along it).
  void Strip(const Position* points, std::size_t count);
  // Switches the texture or the stipple off again.
  void Finish();

 private:
  bool textured_ = false;
  bool started_ = false;
  float row_ = 0;        // t of the pattern's row
  double perTexel_ = 1;  // window pixels per bit of the pattern (the factor)
  double along_ = 0;     // GL's count so far
};

// False: dashes are always GL's stipple (to compare with the textured ones).
extern bool TextureDashes;
// The dash texture for the current context; Forget when the context goes.
void EnsureDashTexture();
void ForgetDashTexture();

// A straight stroke from a to b in the look of a line: lighting off, line
// smoothing and blending on (nicest), polygon offset fill off, the colour of
// the draw mode, the width, and the stipple of the style in draw mode 1 only
// (stipple switched off again after the stroke). Leaves smoothing and
// blending on and lighting off for what follows (an arrow head); EndLineLook
// puts them back.
void DrawLineStroke(const Position& a, const Position& b, std::uint32_t foreColor, int drawMode,
                    int lineStyle, float lineWidth);
void EndLineLook();

// The arrow head of the vector a -> b at b, in the plane, in the current
// colour: the head is 0.45 long, or the vector's plane length when that is
// shorter; the wings leave the tip at 15 degrees to the shaft. Two filled
// triangles, then four lines of width 1 around the wings and the base. A
// vector of no length in the plane has no head.
void DrawArrowHead(const Position& a, const Position& b);

// A vector: the stroke from a to b and, in the plane view only, the arrow
// head at b; smoothing, blending and lighting are put back after it.
void DrawVector(const Position& a, const Position& b, std::uint32_t foreColor, int drawMode, int lineStyle,
                float lineWidth);
// The same for a line object (its ends, colour, draw mode, style and width);
// nothing while it is hidden.
void DrawVector(const CLine& line);

// A convex polygon (`first`, then rim[0..rimCount)) as GL_TRIANGLES vertices (the caller has begun the
// primitive): the triangle over its corners n/3 apart, then each cap left
// between two of them halved the same way. It covers the pixels a fan does,
// each once, but with about log n long edges inside the polygon instead of n:
// the rasteriser shades the blocks along every edge once per triangle, so a
// fan of slivers costs it nearly twice the polygon's area.
void EmitConvexFill(const Position& first, const Position* rim, std::size_t rimCount);

// A region's fill: the colour of its draw mode (1 its own at its Alpha, 2 blue
// at 0.5, 3 the background, 4 green at 0.5), lighting off, blending on,
// filled polygons, one polygon over the corners in order. With depthTest
// false the depth test is off while it draws (the plain fill), with true it
// stays on (solids and the ground). Nothing while the region is hidden.
void DrawRegionFill(const CRegion& region, bool depthTest);

// A GLU sphere of the radius about the current origin, 16 slices and 16
// stacks, filled.
void DrawBall(float radius);

// An axis-parallel rectangle of the overlay from (x1, y1) to (x2, y2) at depth
// z, drawn as `mode` (GL_QUADS for a face, GL_LINE_LOOP for its outline) in the
// current colour.
void DrawOverlayRect(unsigned int mode, float x1, float y1, float x2, float y2, float z);
// The red frame of a selected screen item: 15 by 3 units from (x, y), line
// width 1.
void DrawSelectionFrame(float x, float y, float z);

// The batch of the document's points. While the frame draws them it opens a
// batch: the look they share (lighting off; in the plane line smoothing and
// blending on with the nicest hint; filled polygons) is set once for all
// (before the first point that shows; a batch of hidden points sets nothing),
// and each point's label is queued and written after the last symbol in one
// text pass. Consecutive symbols then reach the driver as one stream of
// primitives. Outside a batch each point sets and restores that state
// itself and writes its own label.
void BeginPointBatch();
// Sets the shared look, once per batch, before the first point that shows.
void SetPointBatchState();
void EndPointBatch();
bool InPointBatch();

// The batch of the document's labels: while the frame draws the objects,
// labels are queued and written after the last object in one text pass (as
// textured glyphs placed where the bitmap glyphs would go).
void BeginLabelBatch();
void EndLabelBatch();
// Ends the batch without writing its labels (a second pass of the objects).
void DropLabelBatch();
bool InLabelBatch();
// Queues a label at a place (the text must live until EndLabelBatch);
// outside a label batch it is written at once.
void QueueLabel(float x, float y, float z, const std::string& text);
// glBegin and glEnd of a point's symbol. In a batch the primitive stays open
// across points of the same primitive mode, so a thousand solid circles are
// one primitive; any other GL state call of a symbol comes after
// ClosePointPrimitive.
void BeginPointPrimitive(unsigned int mode);
void EndPointPrimitive();
void ClosePointPrimitive();

// The ball of a point in space as an unlit ball looks: the cap of it that
// faces the eye of the compiled view (CompiledProjection), its rim where the
// lines of sight touch the ball, so that it covers the ball's pixels and
// stands at its depth, with detail by its size on the screen (a disc of rim
// chords within a fifth of a pixel of the circle, rings of depth by radius).
// Triangles in the current colour, joined into the point batch's primitive.
// False (nothing drawn) without a compiled view, or with the eye inside the
// ball; the caller then draws the ball itself.
constexpr int kMinCapSegments = 8;
constexpr int kMaxCapSegments = 64;
bool DrawBallCap(float x, float y, float z, float radius);

// Builds the unit ball list for the current context (once); ForgetBall drops
// the name when the context goes.
void EnsureBallList();
void ForgetBallList();

}  // namespace vt
