#include "tools/navigate.h"

#include <algorithm>
#include <cmath>

#include "document/document.h"
#include "document/frame_commands.h"
#include "document/globals.h"
#include "document/host.h"
#include "render/trackball.h"
#include "render/view_state.h"

namespace vt {

void ZoomViewAt(float factor, float fx, float fy) {
  if (!(factor > 0)) return;
  // The reference plane's point under (fx, fy) lies (fx - 1/2, 1/2 - fy) of
  // the volume from its centre; after the zoom it would lie factor times as
  // far, so the centre moves by the difference (MoveView moves the camera
  // against the fractions it is given).
  const float k = 1 - factor;
  View.MoveView(-(fx - 0.5f) * k, -(0.5f - fy) * k);
  View.Zoom(factor);
}

void picDraw_MouseWheel(float Steps, int Shift, float X, float Y) {
  (void)Shift;
  host().CanvasSize(CanvasWidth, CanvasHeight);
  const float w = static_cast<float>(std::max(1, CanvasWidth)), h = static_cast<float>(std::max(1, CanvasHeight));
  ZoomViewAt(std::pow(1.2f, -Steps), X / w, Y / h);
  RedrawScene();
}

void mnuViewZoomIn_Click() {
  View.Zoom(1 / 1.25f);
  RedrawScene();
}

void mnuViewZoomOut_Click() {
  View.Zoom(1.25f);
  RedrawScene();
}

void mnuViewFitAll_Click() {
  // The box of the visible objects that have an extent.
  bool any = false;
  CBox b;
  for (Kind k : kAllKinds) {
    CollectionBase& c = Doc.Of(k);
    for (int i = 1; i <= c.count(); ++i) {
      DocObject* o = c.ItemBase(i);
      if (o->Hide) continue;
      const float big = 3.0e38f;
      CBox ob{big, -big, big, -big, big, -big};
      o->GetBox(ob);
      if (ob.MinX > ob.MaxX || !std::isfinite(ob.MinX) || !std::isfinite(ob.MaxX)) continue;
      if (ob.MinZ > ob.MaxZ) ob.MinZ = ob.MaxZ = 0;
      b = any ? CBox{std::fmin(b.MinX, ob.MinX), std::fmax(b.MaxX, ob.MaxX), std::fmin(b.MinY, ob.MinY),
                     std::fmax(b.MaxY, ob.MaxY), std::fmin(b.MinZ, ob.MinZ), std::fmax(b.MaxZ, ob.MaxZ)}
              : ob;
      any = true;
    }
  }
  if (!any) b = CBox{-10, 10, -10, 10, 0, 0};
  // The box as the camera sees it: its corners (as the axis scales draw
  // them) through the scene rotation as GL applies the matrix.
  UpdateSceneMatrix();
  const float* m = SceneMatrix;
  const float big = 3.0e38f;
  CBox v{big, -big, big, -big, big, -big};
  for (int i = 0; i < 8; ++i) {
    const float x = (i & 1 ? b.MaxX : b.MinX) * DrawnScale(0), y = (i & 2 ? b.MaxY : b.MinY) * DrawnScale(1),
                z = (i & 4 ? b.MaxZ : b.MinZ) * DrawnScale(2);
    const float vx = m[0] * x + m[4] * y + m[8] * z, vy = m[1] * x + m[5] * y + m[9] * z,
                vz = m[2] * x + m[6] * y + m[10] * z;
    v = CBox{std::fmin(v.MinX, vx), std::fmax(v.MaxX, vx), std::fmin(v.MinY, vy),
             std::fmax(v.MaxY, vy), std::fmin(v.MinZ, vz), std::fmax(v.MaxZ, vz)};
  }
  const float w = v.MaxX - v.MinX, h = v.MaxY - v.MinY;
  // ZoomAll centres the camera, which looks along -z with y up, on the box;
  // then the height that holds both extents at the canvas's aspect.
  View.SetEye(0, 0, 50);
  View.SetRef(0, 0, 0);
  View.SetVecup(0, 1, 0);
  View.ZoomAll(CBox{v.MinX * ScaleX, v.MaxX * ScaleX, v.MinY * ScaleY, v.MaxY * ScaleY, v.MinZ * ScaleZ,
                    v.MaxZ * ScaleZ});
  const float aspect = View.ScreenWidth / std::fmax(1.0f, View.ScreenHeight);
  float height = std::fmax(h, w / aspect);
  if (any) height = std::fmax(height * 1.2f, 1.0f);
  View.SetViewRect(0, height);
  RedrawScene();
}

void mnuViewFreeBall_Click() {
  FreeTrackBall = !FreeTrackBall;
  RefreshControls();
}

void mnuViewReset_Click() {
  View.SetEye(0, 0, 50);
  View.SetRef(0, 0, 0);
  View.SetVecup(0, 1, 0);
  View.SetViewRect(0, 40 * 0.3f);  // the start volume, zoomed by 0.3 at start-up
  SceneChanged = false;
  if (SceneMode == 3) {
    ViewGraph.RotRoll = 111;
    ViewGraph.RotPitch = -41;
    ViewGraph.RotYaw = 60;
  } else {
    ViewGraph.RotRoll = ViewGraph.RotPitch = ViewGraph.RotYaw = 0;
  }
  RedrawScene();
}

}  // namespace vt
