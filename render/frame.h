// The frame: the one display list of the scene (DrawScene) and one frame
// drawn with it (Display). Both work on whatever GL context is current; the
// canvas or the offscreen context (offscreen.h) makes it current first and
// calls Initialize once for it.
//
// What lives here and what it may call: render/ draws the document's objects
// through their Draw, the reference (reference.h), text (text.h) and the
// shared strokes (strokes.h); it reads the document and the scene flags and
// never changes them, apart from SceneMatrix and SceneQuat.
//
// Context rule: whoever destroys the current context, or makes another one
// current in its place, calls ReleaseContext first, so that the names of the
// scene list, the glyph lists and the ball list are forgotten with it.
#pragma once

namespace vt {

class Position;

// Sets up the current context: clear colour white, dithering, depth test
// with less-or-equal, clear depth 1, and the glyph and ball lists (built once
// per context). True when a context is current; without one it shows
// "ChoosePixelFormat failed" and returns false, and DrawScene and Display do
// nothing until a later Initialize succeeds.
bool Initialize();
// Forgets the context and the names made in it.
void ReleaseContext();
bool HaveContext();

// Compiles the scene into the display list (deleting the previous one, so
// one list is alive at any time): the scene matrix, grid, axes, the objects
// in their fixed order, the creation tool's cursor point, the coordinate
// lines of the selected points, the ground in space, and the overlay.
// Nothing while ViewGraph is busy.
void DrawScene();
// Says that the next DrawScene follows a step that changed nothing but the
// objects themselves (a drag step, a move without a button): it then
// compiles again only the objects whose drawing changed, with the same
// picture as a whole compile. Any DrawScene without it compiles everything.
void ObjectStep();
// True when the last DrawScene was such a step and found nothing to compile:
// the scene list, and the frame drawn with it, are the ones before.
bool SceneKept();
// One frame: lights, smooth shading, View.Projection, clear, the scene list,
// finish, and the host's buffer swap. Nothing while frames are held.
void Display();
// While held, Display draws nothing (the scene lists are still compiled): the
// program's start builds its document through several redraws before the
// window is on the screen, and its first paint draws the one frame seen.
void HoldFrames(bool hold);
// The same frame without the buffer swap (for captures).
void DrawFrame();

// The name of the scene list (0 before the first DrawScene).
unsigned int SceneList();

// The matrices and viewport the scene list being compiled (or last compiled)
// is drawn with: the view's projection and look-at times SceneMatrix. Texts
// placed in window space are placed with them; Display compiles the list
// again when the view no longer matches.
struct WindowProjection;
const WindowProjection& CompiledProjection();
// The same without the space scene's axis scales: the matrices the head of
// the scene (grid and axes) and the balls are drawn with.
WindowProjection UnscaledProjection();

// The snapped cursor point of an active creation tool, drawn after the
// objects in its own draw mode; nullptr when there is none.
extern Position* ToolCursorPoint;

}  // namespace vt
