// Where a new note, button or player goes on the canvas.
#pragma once

namespace vt {

// The first free place for an item that reaches `width` to the right of its
// position and `height` up from it (per cent of the canvas, y from the
// bottom): columns from the top left, each filled downwards, leaving a gap to
// every text, note, button and player already there. The place is always on
// the canvas; when the canvas is full it is the top left corner.
void FreeScreenPlace(float width, float height, float& x, float& y);

}  // namespace vt
