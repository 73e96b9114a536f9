// From a canvas pixel to world points, for the mouse handlers of the canvas:
// the point under the mouse (from the depth buffer) and the pick ray. Both
// read the current matrices and viewport, so they run after a frame was
// drawn in the current context. X and Y are canvas pixels, Y down.
#pragma once

namespace vt {

class Position;

// viewPoint: the pixel unprojected at the depth the depth buffer holds there,
// with the current modelview. scenePoint: the same after the modelview is
// multiplied by SceneMatrix and the axis scales; that modelview stays current for ScreenToRay
// (the next frame loads the view again).
void ScreenToWorld(float X, float Y, Position& viewPoint, Position& scenePoint);

// The pick ray through the pixel: farPoint at window depth 1, nearPoint at
// window depth 0, with the current matrices.
void ScreenToRay(float X, float Y, Position& farPoint, Position& nearPoint);

// The other way: the canvas pixel (Y down) of a scene point, through the
// current modelview multiplied by SceneMatrix (left as it was). False without
// a context or when the point does not project.
bool SceneToScreen(float x, float y, float z, float& X, float& Y);

}  // namespace vt
