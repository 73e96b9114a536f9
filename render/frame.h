// The frame: the one display list of the scene (DrawScene) and one frame
// drawn with it (Display). Both work on whatever GL context is current; the
// canvas or the offscreen context makes it current first.
#pragma once

namespace vt {

// Sets up the current context (clear colour, depth test, fonts); true when
// a context exists. Until it has run, DrawScene and Display do nothing.
bool Initialize();
// Forgets the context (its lists die with it).
void ReleaseContext();
bool HaveContext();

void DrawScene();
void Display();

}  // namespace vt
