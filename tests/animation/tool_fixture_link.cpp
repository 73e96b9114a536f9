// The construction builders of the tool tests, shared with the animation tests.
#include "../tools/tool_fixture.cpp"
