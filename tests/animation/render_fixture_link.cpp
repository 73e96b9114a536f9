// The offscreen fixture of the render tests, shared with the panel tests.
#include "../render/render_fixture.cpp"
