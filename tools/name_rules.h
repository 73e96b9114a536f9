// The rules for the name of a parameter or a computed note.
#pragma once

#include <string>

namespace vt {

// Trims the name, then checks it: not empty, a capital A to Z first, then only
// letters, digits and "_". Gives the empty text when the name is good, else the
// message to show. Taken names and function names are not refused.
std::string ParameterNameError(std::string& name);

// Checks the name as above and, when it is refused, says why in a message box.
bool CheckParameterName(std::string& name);

}  // namespace vt
