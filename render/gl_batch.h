// Drawing state for the scene's display list, kept in a shadow so that only
// real changes are recorded, and primitives of one kind kept open across
// objects.
//
// Why: the software renderer pays for every draw it is given, and any state
// call recorded between two glBegin/glEnd pairs (even one that sets the value
// already in force) ends one draw and starts another. So object drawing says
// what state it wants through these calls; the state is applied just before
// the next primitive, only where it differs, and independent primitives of
// the same kind (GL_LINES, GL_TRIANGLES, GL_QUADS) join one glBegin/glEnd,
// colours travelling as vertex colours. The picture is the same: GL_LINES
// restarts the stipple at every segment anyway. Any change of switch, width,
// stipple, blend, hint or polygon mode closes the open primitive first; a
// colour never does, but every primitive that is (re)opened issues the
// wanted colour before its first vertex, so no object depends on a colour
// left behind by the one before it.
//
// Rules for code that draws into the list:
// - state through Enable/LineWidth/LineStipple/BlendFunc/Hint/PolygonMode/
//   BindTexture,
//   colours through Color, primitives through Begin/End;
// - before any other GL call (text, matrices, call lists, quadrics, raw
//   state) call Sync(); after a call that may have changed state, Forget().
// The frame calls Reset at the start of the list and Sync before it ends.
#pragma once

#include <GL/gl.h>

namespace vt::glb {

// The list begins: the state in force is unknown, nothing is open.
void Reset();
// True between Reset and the end of the list (the frame's compile). Outside
// it every call goes straight to GL.
bool Active();
void SetActive(bool on);

void Enable(GLenum cap, bool on);
void LineWidth(float width);
void LineStipple(GLint factor, GLushort pattern);
void BlendFunc(GLenum src, GLenum dst);
void Hint(GLenum target, GLenum mode);
void PolygonMode(GLenum mode);  // front and back
// The 2D texture bound (with the texture environment GL_MODULATE).
void BindTexture(GLuint name);
// Between Begin and End: the colour of the following vertices. Elsewhere:
// the colour of the next primitive (a joined primitive that is still open
// takes it as a vertex colour).
void Color(float r, float g, float b, float a = 1.0f);

// The colour the next primitive will be given, and setting it without
// issuing anything (to compile a part of the list as it would be compiled
// after what came before it).
void ColorShadow(float out[4]);
void SetColorShadow(const float in[4]);

// Starts a primitive; continues the open one when it is of the same kind,
// can be joined, and no state changed in between.
void Begin(GLenum mode);
// Ends a primitive (it stays open in the batch until something needs it
// closed).
void End();
// Closes an open primitive and applies the wanted state, so that raw GL
// calls may follow.
void Sync();
// Raw calls changed the state: what is in force is unknown again.
void Forget();

}  // namespace vt::glb
