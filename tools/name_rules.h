// The rules for the name of a parameter or a computed note.
#pragma once

#include <string>

namespace vt {

// Trims the name, then checks it: not empty, a letter first (either case),
// then only letters, digits and "_"; not a word of the formulas (a function,
// pi, e), not a variable of curves and surfaces (x, y, z, t, u, v, w), and
// not the name of another parameter or note (names are read without regard
// to case). `ownId` is the parameter track or note being edited, whose own
// name does not count as taken. Gives the empty text when the name is good,
// else the message to show.
std::string ParameterNameError(std::string& name, const std::string& ownId = std::string());

// Checks the name as above and, when it is refused, says why in a message box.
bool CheckParameterName(std::string& name, const std::string& ownId = std::string());

}  // namespace vt
