// Getting about the view: the wheel's zoom about the cursor, zoom in and out
// by keys, Fit All and Reset View. Each changes the camera View (the scene
// rotation only for Reset View) and redraws.
#pragma once

namespace vt {

// Zooms the view by `factor` (below 1: closer) about a point of the canvas
// given as fractions of its width and height from the top left: the point of
// the view's reference plane under it stays under it (in the plane scene, the
// point of the plane itself).
void ZoomViewAt(float factor, float fx, float fy);

// The wheel: Steps notches away from the user (negative: towards it) zoom in
// by 1.2 a notch about the canvas pixel (X, Y), Y down.
void picDraw_MouseWheel(float Steps, int Shift, float X, float Y);

// Zoom in and out by 1.25 about the canvas centre.
void mnuViewZoomIn_Click();
void mnuViewZoomOut_Click();
// The view centred on what the document shows, all of it in the canvas with a
// tenth to spare on each side; an empty document gets the square from -10 to
// 10. The viewing direction and the scene rotation stay.
void mnuViewFitAll_Click();
// Free turns in space by the track ball rather than the turntable, and back.
void mnuViewFreeBall_Click();
// The start view: the camera on +z at 50 from the origin, y up, a volume 12
// high; the plane unturned, a space scene at the ISO angles.
void mnuViewReset_Click();

}  // namespace vt
